/// From the words of a Scenarist Closed Caption line to the text of a caption.
#pragma once

#include <cstdint>

#include "movautil/WideString.h"

namespace mova {

/// What decodeCaptionWords makes of a line that clears the screen.
inline constexpr WStringView clearScreenWords = u"942c 942c";

/// The text of a line's words, the first of which is the time code, with CR LF between lines and italic tags. Words
/// whose length is not four are skipped and counted in `errorCount`, except the first. A line whose only words are
/// "942c 942c" gives clearScreenWords.
WString decodeCaptionWords(WStringView line, int32_t& errorCount);

}  // namespace mova
