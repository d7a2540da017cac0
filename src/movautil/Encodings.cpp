#include <algorithm>
#include <cstring>

#include "movautil/MovaUtil.h"
#include "movautil/Utf.h"

using mova::WStringView;

uint32_t movaStr_UTF16_to_UTF8(char* destination, const char16_t* source, uint32_t count) {
  if (!destination) {
    const char16_t* const end = std::find(source, source + count, u'\0');
    return static_cast<uint32_t>(mova::utf8Size({source, end}));
  }
  return static_cast<uint32_t>(mova::encodeUtf8(WStringView(source), destination, count));
}

uint32_t movaStr_UTF8_to_UTF16(char16_t* destination, const char* source, uint32_t count) {
  if (count == 0) return 0;
  const auto units = mova::decodeUtf8({source, std::strlen(source)}, destination, count - 1);
  destination[units.value_or(0)] = 0;
  return units ? static_cast<uint32_t>(*units + 1) : 0;
}
