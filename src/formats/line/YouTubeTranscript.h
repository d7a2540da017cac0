/// YouTube's transcript: a start time on a line of its own, followed by text. There are no end times.
#pragma once

#include "formats/SubtitleFormat.h"

namespace mova {

class YouTubeTranscript : public SubtitleFormat {
 public:
  WString Extension() const override { return u".txt"; }
  WString Name() const override { return u"YouTube Transcript"; }

  /// One line for the time, one for the text. The title is not used.
  WString WriteText(const Subtitle& subtitle, const WString& title) override;
  /// A caption ends where the next one starts, the last one at 0. A caption of more than 800 units ends the reading:
  /// the file is something else.
  void LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString& fileName) override;
};

}  // namespace mova
