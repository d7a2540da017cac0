#include "text/Strings.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <iterator>

namespace mova {
namespace {

bool isTrimmed(char16_t candidate, char16_t unit) {
  return unit == 0 ? isSpace(candidate) : candidate == unit;
}

}  // namespace

size_t findUnit(WStringView text, char16_t unit, size_t start) {
  // By vectors, four at a time where the text is long: the standard search goes one by one.
  using Vector = uint16_t __attribute__((vector_size(16)));
  constexpr size_t block = sizeof(Vector) / sizeof(char16_t);
  const auto hits = [&text, unit](size_t position) {
    Vector units;
    std::memcpy(&units, text.data() + position, sizeof units);
    return units == static_cast<uint16_t>(unit);
  };
  const auto isAny = [](auto found) {
    uint64_t halves[2];
    std::memcpy(halves, &found, sizeof halves);
    return (halves[0] | halves[1]) != 0;
  };
  for (; start + 4 * block <= text.size(); start += 4 * block) {
    if (isAny(hits(start) | hits(start + block) | hits(start + 2 * block) | hits(start + 3 * block))) break;
  }
  for (; start + block <= text.size(); start += block) {
    if (isAny(hits(start))) break;
  }
  return text.find(unit, start);
}

size_t findText(WStringView text, WStringView what, size_t start) {
  while ((start = findUnit(text, what.front(), start)) != WStringView::npos) {
    if (text.substr(start, what.size()) == what) return start;
    ++start;
  }
  return WStringView::npos;
}

bool isAllDigits(WStringView text) {
  return std::all_of(text.begin(), text.end(), isDigit);
}

WStringView trimStartView(WStringView text, char16_t unit) {
  while (!text.empty() && isTrimmed(text.front(), unit)) text.remove_prefix(1);
  return text;
}

WStringView trimEndView(WStringView text, char16_t unit) {
  while (!text.empty() && isTrimmed(text.back(), unit)) text.remove_suffix(1);
  return text;
}

WStringView trimView(WStringView text, char16_t unit) {
  return trimStartView(trimEndView(text, unit), unit);
}

WString trimStart(WStringView text, char16_t unit) {
  return WString(trimStartView(text, unit));
}

WString trimEnd(WStringView text, char16_t unit) {
  return WString(trimEndView(text, unit));
}

WString trim(WStringView text, char16_t unit) {
  return WString(trimView(text, unit));
}

void addLineAndTrim(WString& text, WStringView line) {
  text += u"\r\n";
  text += line;
  text.resize(trimEndView(text).size());
  text.erase(0, text.size() - trimStartView(text).size());
}

std::vector<WStringView> splitViews(WStringView text, WStringView delimiters, bool removeEmpty) {
  std::vector<WStringView> pieces;
  size_t start = 0;
  for (size_t end; (end = text.find_first_of(delimiters, start)) != WStringView::npos; start = end + 1) {
    if (!removeEmpty || end != start) pieces.push_back(text.substr(start, end - start));
  }
  const WStringView rest = text.substr(start);
  // Delimiters alone give one empty piece even when empty pieces are removed, on purpose; an empty text gives none.
  if (!removeEmpty || !rest.empty() || (pieces.empty() && !text.empty())) pieces.push_back(rest);
  return pieces;
}

std::vector<WString> split(WStringView text, WStringView delimiters, bool removeEmpty) {
  const std::vector<WStringView> views = splitViews(text, delimiters, removeEmpty);
  return {views.begin(), views.end()};
}

std::vector<WString> splitOnChar(WStringView text, char16_t delimiter, bool removeEmpty) {
  std::vector<WString> pieces;
  for (size_t start = 0; start < text.size();) {
    const size_t end = std::min(text.find(delimiter, start), text.size());
    if (!removeEmpty || end != start) pieces.emplace_back(text.substr(start, end - start));
    start = end + 1;
  }
  return pieces;
}

size_t countText(WStringView text, WStringView what) {
  size_t count = 0;
  for (size_t at = findText(text, what); at != WStringView::npos; at = findText(text, what, at + what.size())) ++count;
  return count;
}

WString replaceAll(WStringView text, WStringView what, WStringView with) {
  WString result;
  size_t start = 0;
  for (size_t hit; (hit = findText(text, what, start)) != WStringView::npos; start = hit + what.size()) {
    result += text.substr(start, hit - start);
    result += with;
  }
  result += text.substr(start);
  return result;
}

WString& replaceAllInPlace(WString& text, WStringView what, WStringView with) {
  if (findText(text, what) != WString::npos) text = replaceAll(text, what, with);
  return text;
}

WString replaceWithChar(WStringView text, WStringView what, char16_t with) {
  return replaceAll(text, what, WStringView(&with, 1));
}

bool equalsIgnoreCase(WStringView a, WStringView b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char16_t x, char16_t y) { return toUpper(x) == toUpper(y); });
}

bool startsWithIgnoreCase(WStringView text, WStringView start) {
  return equalsIgnoreCase(text.substr(0, start.size()), start);
}

size_t findIgnoreCase(WStringView text, WStringView what, size_t start) {
  for (; (start = findText(text, what.substr(0, 1), start)) != WStringView::npos; ++start) {
    if (startsWithIgnoreCase(text.substr(start), what)) return start;
  }
  return WStringView::npos;
}

void appendNumber(WString& out, int64_t value, int width) {
  if (width == 2 && value >= 0 && value < 100) {  // the fields of nearly all times
    const char16_t pair[] = {static_cast<char16_t>(u'0' + value / 10), static_cast<char16_t>(u'0' + value % 10)};
    out.append(pair, 2);
    return;
  }
  uint64_t magnitude = value < 0 ? 0 - static_cast<uint64_t>(value) : static_cast<uint64_t>(value);
  char16_t digits[24];
  char16_t* const end = std::end(digits);
  char16_t* begin = end;
  do {
    *--begin = static_cast<char16_t>(u'0' + magnitude % 10);
  } while ((magnitude /= 10) != 0);
  const auto missing = width - static_cast<int>(end - begin) - (value < 0 ? 1 : 0);
  if (value < 0) out += u'-';
  if (missing > 0) out.append(static_cast<size_t>(missing), u'0');
  out.append(begin, end);
}

void appendWhole(WString& out, double value) {
  constexpr size_t longest = 1 + 309;  // "-" and the digits of the greatest double
  char digits[longest];
  const char* const end = std::to_chars(digits, std::end(digits), value, std::chars_format::fixed, 0).ptr;
  out.append(std::cbegin(digits), end);
}

WString fileBaseName(WStringView path) {
  const size_t separator = path.find_last_of(u"/\\");
  if (separator != WStringView::npos) path.remove_prefix(separator + 1);
  return WString(path.substr(0, path.rfind(u'.')));
}

WString changeExtension(WStringView path, WStringView extension) {
  WString changed(path.substr(0, path.rfind(u'.')));
  changed += extension;
  return changed;
}

WString takeEverySecondChar(WStringView text, size_t start) {
  WString taken;
  for (size_t i = start; i < text.size(); i += 2) taken += text[i];
  return taken;
}

WString stripByteOrderMark(WStringView text) {
  if (text.starts_with(u"\u00EF\u00BB\u00BF")) {
    text.remove_prefix(3);
  } else if (text.starts_with(u"\u00FF\u00FE")) {
    text.remove_prefix(2);
  }
  return WString(text);
}

WString latin1UnitsToUtf8Units(WStringView text) {
  WString units;
  units.reserve(text.size());
  for (char16_t unit : text) {
    if (unit < 128) {
      units += unit;
    } else if (unit < 192) {
      units += {u'\u00C2', unit};
    } else {
      units += {u'\u00C3', char16_t(unit & 0xBF)};
    }
  }
  return units;
}

WString utf8UnitsToLatin1Units(WStringView text) {
  WString units;
  for (size_t i = 0; i < text.size(); ++i) {
    const bool hasNext = i + 1 < text.size();
    if (hasNext && text[i] == 0xC2) {
      units += text[++i];
    } else if (hasNext && text[i] == 0xC3) {
      units += char16_t(text[++i] | 0x40);
    } else {
      units += text[i];
    }
  }
  return units;
}

WString newGuid() {
  WString guid;
  guid.reserve(36);
  for (int digit = 0; digit < 32; ++digit) {
    guid += u"0123456789abcdef"[std::rand() % 16];
    if (digit == 7 || digit == 11 || digit == 15 || digit == 19) guid += u'-';
  }
  return guid;
}

}  // namespace mova
