/// UTF-8 and UTF-16: the loops behind the encoding conversions. Runs of ASCII, which is what caption files mostly are,
/// go through in blocks.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>
#include <type_traits>

#include "movautil/WideString.h"

namespace mova {

constexpr size_t asciiBlock = 8;

inline bool isAsciiBlock(const char* bytes) {
  uint64_t block;
  std::memcpy(&block, bytes, sizeof block);
  return (block & 0x8080808080808080) == 0;
}

inline bool isAsciiBlock(const char16_t* units) {
  uint64_t halves[2];
  std::memcpy(halves, units, sizeof halves);
  return ((halves[0] | halves[1]) & 0xFF80FF80FF80FF80) == 0;
}

inline bool isAscii(char byte) {
  return static_cast<unsigned char>(byte) < 0x80;
}
inline bool isAscii(char16_t unit) {
  return unit < 0x80;
}

template <typename Unit>
using Block __attribute__((vector_size(asciiBlock * sizeof(Unit)))) =
    std::conditional_t<sizeof(Unit) == 1, uint8_t, uint16_t>;

/// Copies the ASCII at the start of the source, at most `count` units, and gives its length.
template <typename To, typename From>
size_t copyAscii(const From* source, size_t count, To* destination) {
  size_t done = 0;
  while (count - done >= asciiBlock && isAsciiBlock(source + done)) {
    // As vectors: bytes may be anywhere, so the compiler would copy one by one.
    Block<From> from;
    std::memcpy(&from, source + done, sizeof from);
    const auto to = __builtin_convertvector(from, Block<To>);
    std::memcpy(destination + done, &to, sizeof to);
    done += asciiBlock;
  }
  for (; done < count && isAscii(source[done]); ++done) destination[done] = static_cast<To>(source[done]);
  return done;
}

/// The number of bytes that encodeUtf8 needs for the whole text.
size_t utf8Size(WStringView text);

/// Writes the UTF-8 of as many characters as fit and gives the number of bytes. Lone surrogates become U+FFFD.
size_t encodeUtf8(WStringView text, char* destination, size_t room);

/// Writes the UTF-16 of the text and gives the number of units; nothing if the text is not strict UTF-8 or doesn't fit.
std::optional<size_t> decodeUtf8(std::string_view text, char16_t* destination, size_t room);

}  // namespace mova
