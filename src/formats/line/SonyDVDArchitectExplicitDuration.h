/// Sony DVD Architect, with durations: a list of captions with start, end, duration and text on one line, set apart by
/// tabs, times in milliseconds.
#pragma once

#include "formats/SubtitleFormat.h"

namespace mova {

class SonyDVDArchitectExplicitDuration : public SubtitleFormat {
 public:
  WString Extension() const override { return u".sub"; }
  WString Name() const override { return u"Sony DVD Exp dur"; }

  bool Recognizes(const Lines& lines, const WString& fileName) override;
  /// The title is not used.
  WString WriteText(const Subtitle& subtitle, const WString& title) override;
  /// "|" in a text starts a new line; so do up to four lines without times. The duration is not read: the end counts.
  /// What is in the subtitle stays.
  void LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString& fileName) override;
};

}  // namespace mova
