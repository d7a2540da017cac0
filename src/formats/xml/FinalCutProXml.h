/// Final Cut Pro 7 "xmeml": a sequence in which every caption is a generator item on a video track.
#pragma once

#include "formats/SubtitleFormat.h"

namespace mova {

class FinalCutProXml : public SubtitleFormat {
 public:
  WString Extension() const override { return u".xml"; }
  WString Name() const override { return u"Final Cut Pro Xml"; }

  /// Takes a file if any generator item can be read.
  bool Recognizes(const Lines& lines, const WString& fileName) override;
  /// Keeps the "uuid" of a sequence in the header. The text of a caption goes to the first parameter that has a value,
  /// while reading looks at the text parameter, which keeps "[TEXT]": files written here read back as that, on purpose.
  WString WriteText(const Subtitle& subtitle, const WString& title) override;
  /// Stores the rate of the last item that states one, or of the sequence, in `FrameRate`, cut to a whole number. Where
  /// the document states none, and even where it has no sequence at all, `FrameRate` itself is cut: 29.97 becomes 29
  /// for every format behind this one in the list, and for writing.
  void LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString& fileName) override;
};

/// "24", "25", "30", "50" or "60" for the rate of the running conversion.
WString fcpTimebase();
/// "TRUE" or "FALSE"; 25 frames a second count as NTSC, on purpose.
WString fcpNtsc();

}  // namespace mova
