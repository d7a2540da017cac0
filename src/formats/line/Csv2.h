/// CSV with commas: number, start and end as time codes with frames, text.
#pragma once

#include "formats/SubtitleFormat.h"

namespace mova {

class Csv2 : public SubtitleFormat {
 public:
  WString Extension() const override { return u".csv"; }
  WString Name() const override { return u"Csv2"; }

  /// Counts lines: more must begin a record than not.
  bool Recognizes(const Lines& lines, const WString& fileName) override;
  /// The title is not used.
  WString WriteText(const Subtitle& subtitle, const WString& title) override;
  /// A comma in a text does no harm, and quotes within it are left as they are.
  void LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString& fileName) override;
};

}  // namespace mova
