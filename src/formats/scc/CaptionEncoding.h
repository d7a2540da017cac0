/// From the text of a caption to the words of a Scenarist Closed Caption line.
#pragma once

#include <cstdint>

#include "movautil/WideString.h"

namespace mova {

/// The text with at most four lines of at most 32 units, tags counted. Lines may end in LF or CR LF.
WString fitCaptionText(WStringView text, WStringView language);

/// Wraps at blanks, to at most four lines of at most 32 units where there are blanks enough. Text that doesn't fit may
/// be lost, and a short text is cut at its last blank, on purpose. A text without a usable blank comes back as it is.
WString wrapCaptionText(WStringView text);

/// The hexadecimal words of one caption, separated by blanks: each line at the bottom of the picture, centred. Italic
/// is the only style; other tags are spelled out.
WString encodeCaptionText(WStringView text, WStringView language);

/// The words before a line of at most 32 units, with a blank at their end. Lines are numbered from 1; a caption has at
/// most 15.
WString positionCodeForLine(WStringView line, int32_t lineNumber, int32_t lineCount);

}  // namespace mova
