/// SoftNi: lines of text above the line with the times of a caption, in frames, between fixed sections.
#pragma once

#include "formats/SubtitleFormat.h"

namespace mova {

class SoftNiSub : public SubtitleFormat {
 public:
  WString Extension() const override { return u".sub"; }
  WString Name() const override { return u"SoftNi sub"; }

  bool Recognizes(const Lines& lines, const WString& fileName) override;
  /// Italics become "[" and "]", a position at the top a "}" in front. The title is not used.
  WString WriteText(const Subtitle& subtitle, const WString& title) override;
  /// The text of a caption is what stands between its time line and the one before it. Counts no errors.
  void LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString& fileName) override;
};

}  // namespace mova
