#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>
#include <string>
#include <system_error>

#include "movautil/MovaUtil.h"

using mova::WString;
using mova::WStringView;

namespace {

bool isDigit(char16_t unit) {
  return unit >= '0' && unit <= '9';
}
bool isSpace(char16_t unit) {
  return unit == ' ' || (unit >= 9 && unit <= 13);
}

/// The text behind leading white space and a sign.
WStringView readSign(WStringView text, bool& isNegative) {
  text.remove_prefix(static_cast<size_t>(std::find_if_not(text.begin(), text.end(), isSpace) - text.begin()));
  isNegative = !text.empty() && text[0] == '-';
  if (isNegative || (!text.empty() && text[0] == '+')) text.remove_prefix(1);
  return text;
}

template <typename Integer>
Integer readInteger(WStringView text) {
  bool isNegative = false;
  text = readSign(text, isNegative);
  constexpr Integer Smallest = std::numeric_limits<Integer>::min();
  constexpr Integer Largest = std::numeric_limits<Integer>::max();
  Integer value = 0;  // counted downwards, where the type reaches one further
  for (size_t i = 0; i < text.size() && isDigit(text[i]); ++i) {
    const Integer digit = text[i] - '0';
    if (value < (Smallest + digit) / 10) return isNegative ? Smallest : Largest;
    value = value * 10 - digit;
  }
  if (isNegative) return value;
  return value == Smallest ? Largest : -value;
}

size_t digitsEnd(WStringView text, size_t position) {
  while (position < text.size() && isDigit(text[position])) ++position;
  return position;
}

/// How much of the text is an unsigned decimal number; 0 without a digit in front of the exponent.
size_t decimalLength(WStringView text) {
  const size_t whole = digitsEnd(text, 0);
  size_t length = whole;
  if (length < text.size() && text[length] == '.') length = digitsEnd(text, length + 1);
  const bool hasDigits = whole > 0 || length > 1;
  if (!hasDigits) return 0;
  if (length < text.size() && (text[length] == 'e' || text[length] == 'E')) {
    size_t exponent = length + 1;
    if (exponent < text.size() && (text[exponent] == '+' || text[exponent] == '-')) ++exponent;
    if (const size_t end = digitsEnd(text, exponent); end > exponent) length = end;
  }
  return length;
}

/// Of a decimal number outside the range of doubles: whether it is too large for them, rather than too small.
bool isTooLarge(WStringView number) {
  const size_t mantissaEnd = std::min(number.find_first_of(u"eE"), number.size());
  const size_t point = std::min(number.find('.'), mantissaEnd);
  const size_t firstSignificant = number.find_first_of(u"123456789");
  const int64_t exponent = mantissaEnd < number.size() ? wideToInt(number.substr(mantissaEnd + 1)) : 0;
  return static_cast<int64_t>(point) - static_cast<int64_t>(firstSignificant) + exponent > 0;
}

/// The digits of the magnitude, filled up with zeros so that the whole, the sign included, is `width` units long.
WString integerText(uint64_t magnitude, bool isNegative, uint64_t base, size_t width) {
  char16_t digits[std::numeric_limits<uint64_t>::digits10 + 1];
  char16_t* const end = std::end(digits);
  char16_t* first = end;
  do {
    *--first = u"0123456789ABCDEF"[magnitude % base];
    magnitude /= base;
  } while (magnitude != 0);

  WString text(isNegative ? 1 : 0, u'-');
  const size_t length = text.size() + static_cast<size_t>(end - first);
  if (length < width) text.append(width - length, u'0');
  return text.append(first, end);
}

uint64_t magnitudeOf(int64_t value) {
  return value < 0 ? 0 - static_cast<uint64_t>(value) : static_cast<uint64_t>(value);
}

}  // namespace

int32_t wideToInt(WStringView text) {
  return readInteger<int32_t>(text);
}

int64_t wideToLongLong(WStringView text) {
  return readInteger<int64_t>(text);
}

double wideToDouble(WStringView text) {
  bool isNegative = false;
  text = readSign(text, isNegative);
  text = text.substr(0, decimalLength(text));
  if (text.empty()) return 0;
  const std::string number(text.begin(), text.end());
  double value = 0;
  const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
  if (result.ec == std::errc::result_out_of_range) value = isTooLarge(text) ? HUGE_VAL : 0.0;
  return isNegative ? -value : value;
}

WString intToWStr(int32_t value, const char16_t* format) {
  WStringView pattern(format);
  if (pattern.starts_with('%')) pattern.remove_prefix(1);
  const auto width = static_cast<size_t>(std::max(0, wideToInt(pattern)));
  if (pattern.ends_with('X')) return integerText(static_cast<uint32_t>(value), false, 16, width);
  return integerText(magnitudeOf(value), value < 0, 10, width);
}

WString longLongToWStr(int64_t value, const char16_t*) {
  return integerText(magnitudeOf(value), value < 0, 10, 0);
}

WString doubleToWStr(double value, const char16_t*) {
  constexpr int Decimals = 6;
  char text[1 + std::numeric_limits<double>::max_exponent10 + 1 + 1 + Decimals];
  const auto result = std::to_chars(std::begin(text), std::end(text), value, std::chars_format::fixed, Decimals);
  return WString(text, result.ptr);
}
