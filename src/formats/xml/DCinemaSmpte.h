/// Digital cinema subtitle reels (SMPTE 428-7), as far as the editions of the standard have them in common.
///
/// What a reel states about itself lives in the D-Cinema group of `GlobalSettings`: loading stores it there and writing
/// takes it from there, so that a reel that is read and written keeps its identifiers.
#pragma once

#include <optional>
#include <vector>

#include "formats/SubtitleFormat.h"
#include "xml/TiXMLDocument.h"

namespace mova {

class DCinemaSmpte : public SubtitleFormat {
 public:
  WString Extension() const override { return u".xml"; }

  /// Whether there is a reel with a subtitle in it, and the other edition is not named. Loads nothing, and so leaves
  /// the settings alone.
  bool Recognizes(const Lines& lines, const WString& fileName) override;
  /// Takes `frameRate` from the settings, and stores in the settings what it had to make up.
  WString WriteText(const Subtitle& subtitle, const WString& title) override;
  void LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString& fileName) override;

  /// "HH:MM:SS:FF" at `frameRate`. Hours don't wrap.
  WString timeCodeToText(TimeCode timeCode) const;
  /// Nothing if there are fewer than four pieces between ":", "." and ",".
  std::optional<TimeCode> textToTimeCode(WStringView text) const;

  /// The rate of all time codes, read and written. Only writing sets it, and it stays.
  double frameRate = 24.0;

 protected:
  DCinemaSmpte(WStringView year, WStringView otherYear) : year_(year), otherYear_(otherYear) {}

  // --- Where the editions differ.

  /// Whether a number of `DCinemaEditRate` is looked at as one.
  virtual bool IsRateNumber(WStringView text) const = 0;
  /// The element that states one of the reel's own properties, or null.
  virtual const XMLElement* FindProperty(const XMLElement* root, const char* name) const = 0;
  virtual const XMLElement* FindFont(const XMLElement* root) const = 0;
  virtual std::vector<const XMLElement*> FindSubtitles(const XMLElement* root) const = 0;
  /// Puts the markup of a line into its element.
  virtual void PutMarkup(XMLElement& text, WStringView markup) const = 0;

 private:
  void TakeEditRate();
  XMLElement* NewSubtitle(TiXMLDocument& document, const Paragraph& paragraph, int32_t spotNumber) const;
  void LoadSettings(const XMLElement* root) const;
  std::optional<Paragraph> ParagraphOf(const XMLElement& element) const;

  WStringView year_;
  WStringView otherYear_;
};

/// The colour of a reel as the model has it: "#" and lower-case digits. What is no hexadecimal number stays as it is.
WString normalizeColor(WStringView text);

/// The setting for a colour such as "#FFFF0000", which is read as colorFromHtml does: a decimal number, of which the
/// top byte is kept, as the setting's byte 0. What can't be read gives 0.
uint32_t parseHexColor(WStringView text);

}  // namespace mova
