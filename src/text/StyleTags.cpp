#include "text/StyleTags.h"

#include <algorithm>

#include "movautil/MovaUtil.h"
#include "text/Strings.h"

namespace mova {
namespace {

/// How many font tags, blocks of each kind and overrides within a block are translated; what lies behind stays, or, of
/// the overrides, is dropped.
constexpr int maxRounds = 10;

// --- From tags to override blocks.

struct FontAttribute {
  WStringView opening;
  WStringView closing;
  WStringView prefix;
  WStringView suffix;
  bool isColor;
};
// Each block is inserted in front of those before it, so they come out as colour, size, face.
constexpr FontAttribute fontAttributes[] = {
    {uR"(face=")", u"\"", u"fn", u"}", false},   {u"face='", u"'", u"fn", u"}", false},
    {uR"(size=")", u"\"", u"fs", u"}", false},   {u"size='", u"'", u"fs", u"}", false},
    {uR"(color=")", u"\"", u"c&H", u"&}", true}, {u"color='", u"'", u"c&H", u"&}", true},
};

/// The last six units from "rrggbb" to "bbggrr", and the way back. A shorter text stays.
void swapRedAndBlue(WString& color) {
  if (color.size() < 6) return;
  const auto last = color.end();
  std::swap_ranges(last - 6, last - 4, last - 2);
}

/// Moves the attribute's value, if there is one, from the attributes to a block at `position` of the text.
void translateAttribute(const FontAttribute& row, WString& attributes, WString& text, size_t position) {
  size_t begin = attributes.find(row.opening);
  if (begin == WString::npos) return;
  begin += row.opening.size();
  const size_t end = attributes.find(row.closing, begin);
  if (end == WString::npos) return;
  WString value = attributes.substr(begin, end - begin);
  attributes.erase(begin, end - begin);
  if (row.isColor) {
    replaceAllInPlace(value, u"#", u"");
    swapRedAndBlue(value);
  }
  const WString block = WString(u"{\\").append(row.prefix).append(value).append(row.suffix);
  if (position < text.size()) text.insert(position, block);
}

/// Translates the first font tag. False if there is none that ends.
bool translateFontTag(WString& text) {
  constexpr WStringView opening = u"<font";
  const size_t start = findText(text, u"<font ");
  if (start == WString::npos) return false;
  const size_t end = text.find(u'>', start);
  if (end == WString::npos) return false;
  WString attributes = text.substr(start + opening.size(), end - start - opening.size());
  text.erase(start, end + 1 - start);

  constexpr WStringView closing = u"</font>";
  const size_t close = text.find(closing, start);
  if (close != WString::npos && close > 0) {
    text.erase(close, closing.size());
    if (text.size() - close > 9) text.insert(close, u"{\\c}");  // Near the end the colour isn't set back, on purpose.
  }
  for (const FontAttribute& row : fontAttributes) translateAttribute(row, attributes, text, start);
  return true;
}

// --- From override blocks to tags.

/// "#" and the digits of a colour as a script has it, red first. The zeros in front are kept on purpose:
/// "&H00FF00&" gives "#00000000ff00".
WString htmlColor(WString value) {
  replaceAllInPlace(value, u"&", u"");
  WString color = u"#000000";
  color += trimStartView(value, u'H');
  swapRedAndBlue(color);
  return wStrToLower(std::move(color));
}

/// The first block of a kind, and what its value says.
struct Block {
  size_t begin = 0;  ///< Of the block in the text.
  size_t end = 0;    ///< Of its closing brace.
  WString value;
  WString attributes;  ///< From further overrides within the block.
  bool italic = false;
};

/// Finds the first block that begins with `opening`. Not found if it has no end or if it is `closing`; the value starts
/// `valueOffset` units behind the block's begin.
bool findBlock(const WString& text, WStringView opening, WStringView closing, size_t valueOffset, Block& block) {
  block.begin = text.find(opening);
  if (block.begin == WString::npos) return false;
  block.end = text.find(u'}', block.begin);
  if (block.end == WString::npos || WStringView(text).substr(block.begin).starts_with(closing)) return false;
  const size_t valueBegin = std::min(block.begin + valueOffset, block.end);
  block.value = text.substr(valueBegin, block.end - valueBegin);
  splitOverrideTags(block.value, block.attributes, block.italic);
  return true;
}

/// Puts `<font name="value" attributes>` in the block's place.
void replaceByFontTag(WString& text, const Block& block, WStringView name, WStringView value) {
  WString tag = u"<font ";
  tag.append(name).append(u"=\"").append(value).append(u"\"").append(block.attributes).append(u">");
  if (block.italic) tag += u"<i>";
  text.replace(block.begin, block.end + 1 - block.begin, tag);
}

/// Ends a font at the closing block behind `from`, or at the end of the text.
void closeFont(WString& text, WStringView closing, size_t from) {
  const size_t close = text.find(closing, from);
  if (close == WString::npos) {
    text += u"</font>";
  } else {
    text.replace(close, closing.size(), u"</font>");
  }
}

bool translateFontName(WString& text) {
  Block block;
  if (!findBlock(text, u"{\\fn", u"{\\fn}", 4, block)) return false;
  replaceByFontTag(text, block, u"face", block.value);
  closeFont(text, u"{\\fn}", block.begin);
  return true;
}

/// The opening holds a form feed where "\f" would be expected, on purpose: "{\fs20}" of an ordinary script stays.
bool translateFontSize(WString& text) {
  Block block;
  if (!findBlock(text, u"{\x0Cs", u"{\\fs}", 3, block) || !isAllDigits(block.value)) return false;
  replaceByFontTag(text, block, u"size", block.value);
  closeFont(text, u"{\\fs}", block.begin);
  return true;
}

bool translateColor(WString& text) {
  Block block;
  if (!findBlock(text, u"{\\c", u"{\\c}", 4, block)) return false;
  replaceByFontTag(text, block, u"color", htmlColor(std::move(block.value)));
  const size_t close = text.find(u"{\\c}", block.begin);
  const size_t next = text.find(u"{\\c&", block.begin);
  if (next < close) {  // Both are "nowhere", which is above every position, if not found.
    text.insert(next, u"</font>");
  } else {
    closeFont(text, u"{\\c}", block.begin);
  }
  return true;
}

/// The opening holds the unit 1 where "\1" would be expected, on purpose: "{\1c&H...&}" of an ordinary script stays.
/// The font always ends at the end of the text.
bool translatePrimaryColor(WString& text) {
  Block block;
  if (!findBlock(text,
                 u"{\x01"
                 u"c",
                 u"{\\1c}", 5, block))
    return false;
  replaceByFontTag(text, block, u"color", htmlColor(std::move(block.value)));
  text += u"</font>";
  return true;
}

/// "{\i1}" and its like to "<i>" and "</i>". If more are opened than closed, one is closed at the end, on purpose no
/// more than one.
void translateLetterTag(WString& text, char16_t letter) {
  const WString opening = {u'<', letter, u'>'};
  const WString closing = {u'<', u'/', letter, u'>'};
  replaceAllInPlace(text, WString{u'{', u'\\', letter, u'1', u'}'}, opening);
  replaceAllInPlace(text, WString{u'{', u'\\', letter, u'0', u'}'}, closing);
  replaceAllInPlace(text, WString{u'{', u'\\', letter, u'}'}, closing);
  if (countText(text, opening) > countText(text, closing)) text += closing;
}

}  // namespace

WString modelToSsaText(const Paragraph& paragraph) {
  WString text = replaceAll(paragraph.Text, u"\r\n", u"\\N");
  if (text.find_first_of(u"<{}@") == WString::npos) return text;
  replaceAllInPlace(text, u"<i>", u"{\\i1}");
  replaceAllInPlace(text, u"</i>", u"{\\i0}");
  replaceAllInPlace(text, u"<u>", u"{\\u1}");
  replaceAllInPlace(text, u"</u>", u"{\\u0}");
  replaceAllInPlace(text, u"<b>", u"{\\b1}");
  replaceAllInPlace(text, u"</b>", u"{\\b0}");
  for (int round = 0; round < maxRounds && translateFontTag(text); ++round) {
  }
  // Adjacent blocks become one, except that an end of colour stays a block of its own.
  replaceAllInPlace(text, u"{\\c}", u"@___@@");
  replaceAllInPlace(text, u"}{", u"");
  replaceAllInPlace(text, u"@___@@", u"{\\c}");
  replaceAllInPlace(text, u"{\\c}{\\c&", u"{\\c&");
  return text;
}

WString ssaToModelText(WStringView scriptText) {
  WString text = replaceAll(scriptText, u"\\N", u"\r\n");
  replaceAllInPlace(text, u"\\n", u"\r\n");
  if (text.find_first_of(u"<{") == WString::npos) return text;
  // A round that finds nothing leaves nothing for the next one.
  for (int round = 0; round < maxRounds; ++round) {
    const bool name = translateFontName(text);
    const bool size = translateFontSize(text);
    const bool color = translateColor(text);
    const bool primary = translatePrimaryColor(text);
    if (!name && !size && !color && !primary) break;
  }
  for (char16_t letter : {u'i', u'u', u'b'}) translateLetterTag(text, letter);
  return text;
}

void splitOverrideTags(WString& value, WString& attributes, bool& italic) {
  italic = false;
  const size_t backslash = value.find(u'\\');
  if (backslash == WString::npos || backslash == 0) return;
  const WString overrides = value.substr(backslash);
  value.resize(backslash);

  const auto addAttribute = [&attributes](WStringView name, WStringView setting) {
    attributes.append(u" ").append(name).append(u"=\"").append(setting).append(u"\"");
  };
  WStringView rest = trimStartView(overrides, u'\\');
  for (int round = 0; round < maxRounds && !rest.empty(); ++round) {
    const WStringView item = rest.substr(0, rest.find(u'\\'));
    rest = trimStartView(rest.substr(item.size()), u'\\');
    if (item.starts_with(u"fs") && item.size() >= 3) {
      addAttribute(u"size", item.substr(2));
    } else if (item.starts_with(u"fn") && item.size() >= 3) {
      addAttribute(u"face", item.substr(2));
    } else if (item.starts_with(u'c') && item.size() >= 3) {
      addAttribute(u"color", htmlColor(WString(item.substr(2))));
    } else if (item.starts_with(u"i1")) {
      italic = true;
    }
  }
}

}  // namespace mova
