/// JSON of a third kind: records of duration, text and start, with times in milliseconds.
#pragma once

#include "formats/SubtitleFormat.h"

namespace mova {

class JsonType3 : public SubtitleFormat {
 public:
  WString Extension() const override { return u".json"; }
  WString Name() const override { return u"JSON Type 3"; }

  /// All in one line. The title is not used.
  WString WriteText(const Subtitle& subtitle, const WString& title) override;
  void LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString& fileName) override;
};

}  // namespace mova
