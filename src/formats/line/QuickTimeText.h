/// QuickTime text tracks: a start time, lines of text and an end time for each caption, times in frames.
#pragma once

#include "formats/SubtitleFormat.h"

namespace mova {

class QuickTimeText : public SubtitleFormat {
 public:
  WString Extension() const override { return u".txt"; }
  WString Name() const override { return u"QuickTime text"; }

  /// Refuses rich text, else the usual trial.
  bool Recognizes(const Lines& lines, const WString& fileName) override;
  /// The header states 30 frames a second whatever `FrameRate` is. The title is not used.
  WString WriteText(const Subtitle& subtitle, const WString& title) override;
  /// A caption without a time behind it is not kept. The lines of the header count as errors.
  void LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString& fileName) override;
};

}  // namespace mova
