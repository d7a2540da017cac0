/// Sony DVD Architect: a list of captions with start, end and text on one line, times in hundredths.
#pragma once

#include "formats/SubtitleFormat.h"

namespace mova {

class SonyDVDArchitect : public SubtitleFormat {
 public:
  WString Extension() const override { return u".sub"; }
  WString Name() const override { return u"Sony DVDArchitect"; }

  bool Recognizes(const Lines& lines, const WString& fileName) override;
  /// The title is not used.
  WString WriteText(const Subtitle& subtitle, const WString& title) override;
  /// "|" in a text starts a new line; so do up to four lines without times. What is in the subtitle stays.
  void LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString& fileName) override;
};

}  // namespace mova
