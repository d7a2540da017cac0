/// Final Cut Pro X: every caption is a clip with a title.
#pragma once

#include "formats/SubtitleFormat.h"

namespace mova {

class FinalCutProXXml : public SubtitleFormat {
 public:
  WString Extension() const override { return u".fcpxml"; }
  WString Name() const override { return u"Final Cut Pro X Xml"; }

  /// Takes a file if any title can be read.
  bool Recognizes(const Lines& lines, const WString& fileName) override;
  WString WriteText(const Subtitle& subtitle, const WString& title) override;
  /// Takes the titles whose role is "Subtitles".
  void LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString& fileName) override;

 protected:
  bool LoadDependsOnLinesOnly() const override { return true; }
};

}  // namespace mova
