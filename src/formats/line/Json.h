/// JSON: records of start and end in seconds, and text.
#pragma once

#include "formats/SubtitleFormat.h"

namespace mova {

class Json : public SubtitleFormat {
 public:
  WString Extension() const override { return u".json"; }
  WString Name() const override { return u"JSON"; }

  /// All in one line. The title is not used.
  WString WriteText(const Subtitle& subtitle, const WString& title) override;
  void LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString& fileName) override;
};

}  // namespace mova
