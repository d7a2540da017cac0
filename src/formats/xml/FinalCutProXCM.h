/// Final Cut Pro X: every caption is a chapter marker of one clip.
#pragma once

#include "formats/SubtitleFormat.h"

namespace mova {

class FinalCutProXCM : public SubtitleFormat {
 public:
  WString Extension() const override { return u".fcpxml"; }
  WString Name() const override { return u"Final Cut Pro XCM"; }

  /// Takes a file if it has any marker, or any clip.
  bool Recognizes(const Lines& lines, const WString& fileName) override;
  WString WriteText(const Subtitle& subtitle, const WString& title) override;
  /// Reads the markers at their usual place. Where there are none, every "clip" is read as if it were a marker, on
  /// purpose.
  void LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString& fileName) override;

 protected:
  bool LoadDependsOnLinesOnly() const override { return true; }
};

}  // namespace mova
