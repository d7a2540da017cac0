#include "movautil/Utf.h"

#include <utf8.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace mova {
namespace {

size_t asciiLength(const char16_t* units, size_t count) {
  size_t done = 0;
  while (count - done >= asciiBlock && isAsciiBlock(units + done)) done += asciiBlock;
  while (done < count && isAscii(units[done])) ++done;
  return done;
}

bool isLeadSurrogate(char16_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}
bool isTrailSurrogate(char16_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

/// The character at a place of the text, which moves behind it.
char32_t nextCharacter(WStringView text, size_t& position) {
  const char16_t unit = text[position++];
  if (!isLeadSurrogate(unit) && !isTrailSurrogate(unit)) return unit;
  if (isTrailSurrogate(unit) || position == text.size() || !isTrailSurrogate(text[position])) return 0xFFFD;
  return 0x10000 + ((unit - char32_t{0xD800}) << 10) + (text[position++] - char32_t{0xDC00});
}

size_t utf8Length(char32_t character) {
  return character < 0x80 ? 1 : character < 0x800 ? 2 : character < 0x10000 ? 3 : 4;
}

}  // namespace

size_t utf8Size(WStringView text) {
  size_t size = 0;
  for (size_t position = 0; position < text.size();) {
    const size_t ascii = asciiLength(text.data() + position, text.size() - position);
    position += ascii;
    size += ascii;
    while (position < text.size() && !isAscii(text[position])) size += utf8Length(nextCharacter(text, position));
  }
  return size;
}

size_t encodeUtf8(WStringView text, char* destination, size_t room) {
  size_t written = 0;
  for (size_t position = 0; position < text.size() && written < room;) {
    const size_t ascii =
        copyAscii(text.data() + position, std::min(text.size() - position, room - written), destination + written);
    position += ascii;
    written += ascii;
    while (position < text.size() && !isAscii(text[position])) {
      const char32_t character = nextCharacter(text, position);
      if (utf8Length(character) > room - written) return written;
      written = static_cast<size_t>(utf8::append(character, destination + written) - destination);
    }
  }
  return written;
}

std::optional<size_t> decodeUtf8(std::string_view text, char16_t* destination, size_t room) {
  const char* next = text.data();
  const char* const end = next + text.size();
  size_t written = 0;
  try {
    while (next != end) {
      const size_t ascii =
          copyAscii(next, std::min(static_cast<size_t>(end - next), room - written), destination + written);
      next += ascii;
      written += ascii;
      if (next != end && isAscii(*next)) return std::nullopt;  // no room left
      while (next != end && !isAscii(*next)) {
        const uint32_t character = utf8::next(next, end);
        const size_t units = character > 0xFFFF ? 2 : 1;
        if (units > room - written) return std::nullopt;
        if (units == 2) {
          destination[written++] = static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10));
          destination[written++] = static_cast<char16_t>(0xDC00 + (character & 0x3FF));
        } else {
          destination[written++] = static_cast<char16_t>(character);
        }
      }
    }
  } catch (const utf8::exception&) {
    return std::nullopt;
  }
  return written;
}

}  // namespace mova
