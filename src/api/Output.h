/// The last step of a conversion: text becomes the bytes of a file.
#pragma once

#include <string_view>

#include "movautil/WideString.h"

namespace mova {

/// Writes all bytes. False, with errno, if that fails.
bool writeAll(int file, std::string_view bytes);

/// Writes the text as UTF-8, piece by piece, so that its bytes are never in memory as a whole. Lone surrogates become
/// U+FFFD. False, with errno, if it can't be written in full.
bool writeUtf8(int file, WStringView text);

}  // namespace mova
