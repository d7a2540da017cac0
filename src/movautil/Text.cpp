#include <cstring>

#include "movautil/MovaUtil.h"
#include "movautil/Utf.h"

using mova::WString;
using mova::WStringView;

WString wStrToLower(WString text) {
  for (char16_t& unit : text)
    if (unit >= 'A' && unit <= 'Z') unit = static_cast<char16_t>(unit + ('a' - 'A'));
  return text;
}

WString wStrToUpper(WString text) {
  for (char16_t& unit : text)
    if (unit >= 'a' && unit <= 'z') unit = static_cast<char16_t>(unit - ('a' - 'A'));
  return text;
}

std::string wideToString(WStringView text) {
  std::string bytes(mova::utf8Size(text), '\0');
  mova::encodeUtf8(text, bytes.data(), bytes.size());
  return bytes;
}

WString stringToWide(const signed char* text) {
  return stringToWide(reinterpret_cast<const unsigned char*>(text));
}

WString stringToWide(const unsigned char* text) {
  return WString(text, text + std::strlen(reinterpret_cast<const char*>(text)));
}
