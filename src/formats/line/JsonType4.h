/// JSON of a fourth kind: tags with identifiers, start and end in seconds, and the text in an object of its own.
#pragma once

#include "formats/SubtitleFormat.h"

namespace mova {

class JsonType4 : public SubtitleFormat {
 public:
  WString Extension() const override { return u".json"; }
  WString Name() const override { return u"JSON Type 4"; }

  /// All in one line. The identifiers differ from file to file; one of them from tag to tag. The title is not used.
  WString WriteText(const Subtitle& subtitle, const WString& title) override;
  void LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString& fileName) override;
};

}  // namespace mova
