#include "formats/scc/ScenaristClosedCaptionsDropFrame.h"

namespace mova {

const Regex& ScenaristClosedCaptionsDropFrame::TimeCodeRegex() const {
  static const Regex regex = createRegex(u"^\\d+:\\d\\d:\\d\\d[;,]\\d\\d\t");
  return regex;
}

}  // namespace mova
