/// CSV with semicolons: number, start and end in milliseconds, text.
#pragma once

#include "formats/SubtitleFormat.h"

namespace mova {

class Csv : public SubtitleFormat {
 public:
  WString Extension() const override { return u".csv"; }
  WString Name() const override { return u"Csv"; }

  /// Counts lines: more must begin a record than not.
  bool Recognizes(const Lines& lines, const WString& fileName) override;
  /// The title is not used.
  WString WriteText(const Subtitle& subtitle, const WString& title) override;
  /// A record whose text holds a semicolon is passed over.
  void LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString& fileName) override;
};

}  // namespace mova
