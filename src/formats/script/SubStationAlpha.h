/// Sub Station Alpha: scripts of a header with styles and an [Events] section with one line for each caption. Reads v4
/// and advanced v4+ scripts, writes v4.
#pragma once

#include <optional>

#include "formats/SubtitleFormat.h"

namespace mova {

class SubStationAlpha : public SubtitleFormat {
 public:
  WString Extension() const override { return u".ssa"; }
  WString Name() const override { return u"Sub Station Alpha"; }
  bool SupportsStyles() const override { return true; }

  bool Recognizes(const Lines& lines, const WString& fileName) override;
  /// Keeps the header of a script, and translates that of a v4+ script or of a Timed Text document. Line ends are LF,
  /// but CR LF within a header made here; the file ends without one.
  WString WriteText(const Subtitle& subtitle, const WString& title) override;
  /// Every line of the events that is neither blank nor a comment is taken for an event. All lines up to "[Events]"
  /// become the subtitle's header.
  void LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString& fileName) override;

  /// Takes the override blocks out of all texts and puts the last position among them in front. Does nothing for the
  /// format "Advanced Sub Station Alpha", which such callers bring along.
  void StripNativeFormatting(Subtitle& subtitle, SubtitleFormat& newFormat) override;

 protected:
  bool LoadDependsOnLinesOnly() const override { return true; }

 private:
  /// Where the fields of an event stand. A name that a Format line leaves out stays where it was.
  struct Columns {
    void Read(WStringView formatLine);

    size_t Layer = 0;
    size_t Start = 1;
    size_t End = 2;
    size_t Style = 3;
    size_t Effect = 8;
    size_t Text = 9;
  };

  static std::optional<Paragraph> ReadEvent(WStringView line, const Columns& columns);
};

/// "h:m:s.c" with hundredths of a second, as a number each; nothing for fewer than four pieces.
std::optional<TimeCode> parseSsaTime(WStringView text);

}  // namespace mova
