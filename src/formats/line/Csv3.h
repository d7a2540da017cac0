/// CSV with commas: start and end as time codes with frames, and two lines of text in fields of their own.
#pragma once

#include "formats/SubtitleFormat.h"

namespace mova {

class Csv3 : public SubtitleFormat {
 public:
  WString Extension() const override { return u".csv"; }
  WString Name() const override { return u"Csv3"; }

  /// Counts lines: more must begin a record than not, and no more than 20 may fail to. Another format's marker at the
  /// beginning of any line rules it out.
  bool Recognizes(const Lines& lines, const WString& fileName) override;
  /// Captions of three lines and more are broken into two anew. The title is not used.
  WString WriteText(const Subtitle& subtitle, const WString& title) override;
  /// A record is one line.
  void LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString& fileName) override;
};

}  // namespace mova
