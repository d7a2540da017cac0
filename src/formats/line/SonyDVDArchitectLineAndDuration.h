/// Sony DVD Architect, numbered: a title, and captions of a line with number, in, out and duration, in frames at
/// `FrameRate` and set apart by tabs, above their lines of text.
#pragma once

#include "formats/SubtitleFormat.h"

namespace mova {

class SonyDVDArchitectLineAndDuration : public SubtitleFormat {
 public:
  WString Extension() const override { return u".txt"; }
  WString Name() const override { return u"Sony DVD line/dur"; }

  bool Recognizes(const Lines& lines, const WString& fileName) override;
  /// Numbers the captions from 1, whatever their own numbers are.
  WString WriteText(const Subtitle& subtitle, const WString& title) override;
  /// The lines of the header count as errors, as no caption is open yet; so does a sixth line of text. The duration is
  /// not read. What is in the subtitle stays.
  void LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString& fileName) override;
};

}  // namespace mova
