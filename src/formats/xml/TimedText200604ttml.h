/// Timed Text of April 2006 under the extension .ttml.
#pragma once

#include "formats/xml/TimedText200604.h"

namespace mova {

class TimedText200604ttml : public TimedText200604 {
 public:
  WString Extension() const override { return u".ttml"; }
  WString Name() const override { return u"TT 2006-04 .ttml"; }
};

}  // namespace mova
