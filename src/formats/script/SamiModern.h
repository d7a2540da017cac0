/// SAMI with quoted attributes and closed tags. It is read as Sami is.
#pragma once

#include "formats/script/Sami.h"

namespace mova {

class SamiModern : public Sami {
 public:
  WString Name() const override { return u"SAMI modern"; }

  /// The usual trial, so that a file that closes its sync tags is taken too.
  bool Recognizes(const Lines& lines, const WString& fileName) override;
  WString WriteText(const Subtitle& subtitle, const WString& title) override;
};

}  // namespace mova
