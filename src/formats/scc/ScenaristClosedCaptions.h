/// Scenarist Closed Captions: lines of a time code, a tab and the hexadecimal words of CEA-608 captions.
#pragma once

#include "formats/SubtitleFormat.h"
#include "text/Regex.h"

namespace mova {

/// With a colon before the frames of a time code. There is no drop-frame arithmetic, here or in the derived class.
class ScenaristClosedCaptions : public SubtitleFormat {
 public:
  WString Extension() const override { return u".scc"; }
  WString Name() const override { return u"DVD_SCC"; }

  bool Recognizes(const Lines& lines, const WString& fileName) override;
  /// Pop-on captions at the bottom of the picture. The title is not used.
  WString WriteText(const Subtitle& subtitle, const WString& title) override;
  /// Each line with a time code is a caption or clears the screen; no screen memory is kept. Other lines, the header
  /// among them, are skipped and are no errors.
  void LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString& fileName) override;

  /// The beginning of a line with a time code, up to the tab.
  virtual const Regex& TimeCodeRegex() const;

 protected:
  bool LoadDependsOnLinesOnly() const override { return true; }

  bool UsesDropFrameSeparator = false;

 private:
  void AppendSccTimeCode(WString& out, double milliseconds) const;
};

/// Hours, minutes, seconds and frames with ":", ";" or "," between them.
TimeCode parseSccTimeCode(WStringView text);

}  // namespace mova
