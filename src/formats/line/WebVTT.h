/// WebVTT: cues of a time line and text lines. Settings behind the times, cue identifiers and notes are skipped on
/// reading, and nothing of them is written.
#pragma once

#include "formats/SubtitleFormat.h"

namespace mova {

class WebVTT : public SubtitleFormat {
 public:
  WString Extension() const override { return u".vtt"; }
  WString Name() const override { return u"WebVTT"; }

  /// Line feeds end the header, CR LF the lines of a cue and a line feed the cue, on purpose. The title is not used.
  WString WriteText(const Subtitle& subtitle, const WString& title) override;
  /// Counts no errors: what is not understood is skipped, and a cue without text stays.
  void LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString& fileName) override;
  /// Removes voice, ruby, class and span tags: for each of these names the first opening tag and all closing ones.
  void StripNativeFormatting(Subtitle& subtitle, SubtitleFormat& newFormat) override;
};

}  // namespace mova
