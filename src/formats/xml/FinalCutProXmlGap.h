/// Final Cut Pro X: every caption is a title in a gap.
#pragma once

#include "formats/SubtitleFormat.h"

namespace mova {

class FinalCutProXmlGap : public SubtitleFormat {
 public:
  WString Extension() const override { return u".fcpxml"; }
  WString Name() const override { return u"Final Cut Xml Gap"; }

  /// Takes a file if any title can be read.
  bool Recognizes(const Lines& lines, const WString& fileName) override;
  WString WriteText(const Subtitle& subtitle, const WString& title) override;
  /// Takes the titles of every role.
  void LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString& fileName) override;

 protected:
  bool LoadDependsOnLinesOnly() const override { return true; }
};

}  // namespace mova
