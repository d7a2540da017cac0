/// iTunes Timed Text: Timed Text with a fixed set of styles and two regions, which carry positions.
#pragma once

#include "formats/xml/TimedText10.h"

namespace mova {

class ItunesTimedText : public TimedText10 {
 public:
  WString Extension() const override { return u".itt"; }
  WString Name() const override { return u"iTunes Timed Text"; }

  /// Timed Text in a file named .itt, or in no file.
  bool Recognizes(const Lines& lines, const WString& fileName) override;
  /// The title is not used.
  WString WriteText(const Subtitle& subtitle, const WString& title) override;
};

}  // namespace mova
