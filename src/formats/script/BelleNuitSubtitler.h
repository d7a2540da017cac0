/// Belle Nuit Subtitler: an XML dictionary of settings, which holds all captions as one text under the key "titlelist",
/// in plain text with "/tc" lines.
#pragma once

#include "formats/SubtitleFormat.h"

namespace mova {

class BelleNuitSubtitler : public SubtitleFormat {
 public:
  WString Extension() const override { return u".stp"; }
  WString Name() const override { return u"Belle Nuit Subtitler"; }

  /// All settings of the written file are fixed. The title is not used.
  WString WriteText(const Subtitle& subtitle, const WString& title) override;
  /// Only the title list is read. Lines of a text are separated by a line feed alone.
  void LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString& fileName) override;

 protected:
  /// Times depend on the frame rate of the settings, which neither trial nor load changes.
  bool LoadDependsOnLinesOnly() const override { return true; }

 private:
  void ReadTitleList(Subtitle& subtitle, WStringView titleList);
};

/// The text with the position tag at its start turned into a "/STYLE" line, without bold, underline and font tags.
WString textToNativeStyle(WStringView text);

/// The text with a "/STYLE" line at its start turned into a position tag, and with fewer blank lines.
WString nativeStyleToText(WStringView text);

}  // namespace mova
