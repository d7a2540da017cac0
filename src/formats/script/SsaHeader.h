/// Headers of Sub Station Alpha v4 scripts: all that stands above the events, up to and including their Format line,
/// with no line break behind it.
#pragma once

#include "movautil/WideString.h"

namespace mova {

inline constexpr WStringView ssaEventsFormat =
    u"Format: Marked, Start, End, Style, Name, MarginL, MarginR, MarginV, Effect, Text";

/// With the one style of the settings.
WString defaultSsaHeader(WStringView title);

/// With the styles of an advanced (v4+) header; without any, the one of the settings. Bold and the search for a style
/// go against the script's meaning, see SsaStyles.
WString advancedHeaderToSsaHeader(WStringView header, WStringView title);

/// With the styles in the head of a Timed Text document, perhaps none.
WString timedTextHeaderToSsaHeader(WStringView header, WStringView title);

}  // namespace mova
