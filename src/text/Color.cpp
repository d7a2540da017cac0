#include "text/Color.h"

#include "movautil/MovaUtil.h"
#include "text/Strings.h"

namespace mova {
namespace {

/// Two hexadecimal digits, the first of them `padding` for a value below 16.
void appendHex(WString& out, uint8_t value, char16_t padding) {
  constexpr WStringView digits = u"0123456789ABCDEF";
  out += value < 16 ? padding : digits[value / 16];
  out += digits[value % 16];
}

}  // namespace

Color colorFromHtml(WStringView text) {
  if (text.empty()) return {};
  text.remove_prefix(1);
  constexpr WStringView hexDigits = u"0123456789abcdefABCDEF";
  if (text.empty() || hexDigits.find(text.front()) == WStringView::npos) return {};
  // A decimal reading, cut to the top byte, on purpose: callers rely on zero bytes for "#rrggbb".
  return Color{static_cast<uint8_t>(wideToInt(text) >> 24), 0, 0, 0, true};
}

Color ssaColorToColor(WStringView text, const Color& fallback) {
  WString digits = trim(trimView(text), u'&');
  if (digits.starts_with(u'h')) {
    if (digits.size() < 7) digits.insert(1, 7 - digits.size(), u'0');
    if (digits.size() == 7 || digits.size() == 9) {
      const WStringView bbggrr = WStringView(digits).substr(digits.size() - 6);
      return colorFromHtml(WString(u"#").append(bbggrr, 4, 2).append(bbggrr, 2, 2).append(bbggrr, 0, 2));
    }
  }
  if (!isAllDigits(text)) return fallback;  // The text as it came: blanks around a number make it no number.
  const int32_t number = wideToInt(text);
  return Color{255, static_cast<uint8_t>(number), static_cast<uint8_t>(number >> 8), static_cast<uint8_t>(number >> 16),
               true};
}

WString colorToSsaHex(const Color& color) {
  WString hex = u"&H00";
  for (uint8_t part : {color.blue, color.green, color.red}) appendHex(hex, part, u' ');
  return hex;
}

WString colorToHexString(const Color& color) {
  WString hex = u"#";
  for (uint8_t part : {color.red, color.green, color.blue}) appendHex(hex, part, u'0');
  return hex;
}

}  // namespace mova
