/// Flash XML: a "tt" document whose paragraphs hold their text in a CDATA section with "sub" tags, as Flash players
/// use.
#pragma once

#include "formats/SubtitleFormat.h"

namespace mova {

class FlashXml : public SubtitleFormat {
 public:
  WString Extension() const override { return u".xml"; }
  WString Name() const override { return u"Flash Xml"; }

  bool Recognizes(const Lines& lines, const WString& fileName) override;
  WString WriteText(const Subtitle& subtitle, const WString& title) override;
  void LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString& fileName) override;
};

/// "HH:MM:SS." and the milliseconds, in two digits or three. Hours don't wrap.
WString flashClock(TimeCode timeCode);

}  // namespace mova
