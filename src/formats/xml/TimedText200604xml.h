/// Timed Text of April 2006 under the extension .xml.
#pragma once

#include "formats/xml/TimedText200604.h"

namespace mova {

class TimedText200604xml : public TimedText200604 {
 public:
  WString Extension() const override { return u".xml"; }
  WString Name() const override { return u"TT 2006-04 .xml"; }
};

}  // namespace mova
