/// Operations on wide strings. Positions and lengths are in units. Letters and digits are ASCII's, whatever the locale.
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "movautil/WideString.h"

namespace mova {

// --- Units.

/// Blank, tab, line feed, vertical tab, form feed, carriage return. No-break spaces and other Unicode blanks are not.
constexpr bool isSpace(char16_t unit) {
  return unit == u' ' || (unit >= 9 && unit <= 13);
}
constexpr bool isDigit(char16_t unit) {
  return unit >= u'0' && unit <= u'9';
}
constexpr bool isUpper(char16_t unit) {
  return unit >= u'A' && unit <= u'Z';
}
constexpr char16_t toUpper(char16_t unit) {
  return unit >= u'a' && unit <= u'z' ? char16_t(unit - 32) : unit;
}
constexpr char16_t toLower(char16_t unit) {
  return isUpper(unit) ? char16_t(unit + 32) : unit;
}

/// Whether every unit is a digit; true for an empty text.
bool isAllDigits(WStringView text);

// --- Trimming. Without a unit white space goes, with a unit that unit only.

WString trimStart(WStringView text, char16_t unit = 0);
WString trimEnd(WStringView text, char16_t unit = 0);
WString trim(WStringView text, char16_t unit = 0);

/// The same as part of the given text, which must outlive the result.
WStringView trimStartView(WStringView text, char16_t unit = 0);
WStringView trimEndView(WStringView text, char16_t unit = 0);
WStringView trimView(WStringView text, char16_t unit = 0);

/// Adds a line behind CR LF and trims the whole.
void addLineAndTrim(WString& text, WStringView line);

// --- Splitting.

/// Every unit of `delimiters` is a delimiter. With `removeEmpty` empty pieces are left out, except that a text that has
/// no other piece but is not empty itself gives one empty piece: callers index the first piece.
std::vector<WString> split(WStringView text, WStringView delimiters, bool removeEmpty);
/// The same pieces as parts of the given text.
std::vector<WStringView> splitViews(WStringView text, WStringView delimiters, bool removeEmpty);

/// Pieces as lines are read from a stream: an empty text gives none, and a delimiter at the end no empty piece behind
/// it.
std::vector<WString> splitOnChar(WStringView text, char16_t delimiter, bool removeEmpty);
/// Calls `use(index, piece)` for each piece that splitOnChar gives, empty ones included, as parts of the given text.
template <typename Use>
void forEachPiece(WStringView text, char16_t delimiter, Use use) {
  size_t begin = 0;
  for (size_t index = 0; begin < text.size(); ++index) {
    const size_t end = std::min(text.find(delimiter, begin), text.size());
    use(index, text.substr(begin, end - begin));
    begin = end + 1;
  }
}

// --- Searching and replacing. From the left; the scan goes on behind an inserted text. `what` is never
// empty.

/// As WStringView::find, much faster on long texts.
size_t findUnit(WStringView text, char16_t unit, size_t start = 0);
size_t findText(WStringView text, WStringView what, size_t start = 0);
/// How often `what` occurs, without overlaps.
size_t countText(WStringView text, WStringView what);

WString replaceAll(WStringView text, WStringView what, WStringView with);
/// Changes the string and also returns a copy of it, so that replacements can be chained; use the reference instead
/// where the copy would be thrown away.
WString& replaceAllInPlace(WString& text, WStringView what, WStringView with);
WString replaceWithChar(WStringView text, WStringView what, char16_t with);

// --- Comparing.

/// Equal lengths, and equal units after a to z are folded to A to Z.
bool equalsIgnoreCase(WStringView a, WStringView b);
/// Whether the text begins with the given one, compared in the same way.
bool startsWithIgnoreCase(WStringView text, WStringView start);
/// The first place from `start` on where the text goes on with `what`, compared in the same way. The first unit of
/// `what` is no letter.
size_t findIgnoreCase(WStringView text, WStringView what, size_t start = 0);

// --- Numbers.

/// Appends a number as "%0<width>d" prints it: the sign counts towards the width.
void appendNumber(WString& out, int64_t value, int width = 1);

/// Appends a double as "%.0f" prints it: a half goes to the even neighbour, and what rounds to zero keeps its "-".
void appendWhole(WString& out, double value);

// --- Paths.

/// The part after the last "/" or "\" and before the last "." of what remains.
WString fileBaseName(WStringView path);
/// The path up to its last ".", wherever that stands, followed by the extension, which brings its dot along.
WString changeExtension(WStringView path, WStringView extension);

// --- Texts of one file byte for each unit.

/// The units at start, start + 2, start + 4 and so on.
WString takeEverySecondChar(WStringView text, size_t start);
/// Without leading units EF BB BF, or else without leading units FF FE.
WString stripByteOrderMark(WStringView text);
/// Below 128 a unit stays; to 191 it becomes C2 and the unit; from 192 on C3 and the unit without bit 6.
WString latin1UnitsToUtf8Units(WStringView text);
/// The way back: after C2 the next unit is copied, after C3 the next one with bit 6 set, anything else is copied.
WString utf8UnitsToLatin1Units(WStringView text);

// --- Texts as C strings.

/// The text up to its first zero unit: what a text amounts to where a caller hands it on as a C string.
inline WStringView cText(WStringView text) {
  return text.substr(0, findUnit(text, u'\0'));
}

// --- Identifiers.

/// 36 units, 8-4-4-4-12 lower-case hexadecimal digits from the C library's rand(), which is never seeded: identifiers
/// only have to differ within one file.
WString newGuid();

}  // namespace mova
