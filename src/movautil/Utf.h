/// UTF-8 and UTF-16: the loops behind the encoding conversions. Runs of ASCII, which is what caption files mostly are,
/// go through in blocks.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "movautil/WideString.h"

namespace mova {

/// The number of bytes that encodeUtf8 needs for the whole text.
size_t utf8Size(WStringView text);

/// Writes the UTF-8 of as many characters as fit and gives the number of bytes. Lone surrogates become U+FFFD.
size_t encodeUtf8(WStringView text, char* destination, size_t room);

/// Writes the UTF-16 of the text and gives the number of units; nothing if the text is not strict UTF-8 or doesn't fit.
std::optional<size_t> decodeUtf8(std::string_view text, char16_t* destination, size_t room);

}  // namespace mova
