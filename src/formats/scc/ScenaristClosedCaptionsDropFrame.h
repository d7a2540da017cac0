#pragma once

#include "formats/scc/ScenaristClosedCaptions.h"

namespace mova {

/// Scenarist Closed Captions with a semicolon before the frames of a time code.
class ScenaristClosedCaptionsDropFrame : public ScenaristClosedCaptions {
 public:
  ScenaristClosedCaptionsDropFrame() { UsesDropFrameSeparator = true; }

  WString Name() const override { return u"DVD_SCCDF"; }
  const Regex& TimeCodeRegex() const override;
};

}  // namespace mova
