#include "text/Markup.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "text/ItalicRepair.h"
#include "text/Strings.h"

namespace mova {
namespace {

/// The text as it comes back from UTF-8.
WString throughUtf8(WStringView text) {
  WString units(cText(text));
  for (size_t i = 0; i < units.size(); ++i) {
    const bool leads = (units[i] & 0xFC00) == 0xD800;
    const bool trails = (units[i] & 0xFC00) == 0xDC00;
    if (leads && i + 1 < units.size() && (units[i + 1] & 0xFC00) == 0xDC00) {
      ++i;
    } else if (leads || trails) {
      units[i] = u'\uFFFD';
    }
  }
  return units;
}

/// The brackets [^\s>] of tagRegex, for a unit between "<" and ">".
bool isNameUnit(char16_t unit) {
  return unit != u's' && unit != u'\\';
}

size_t skipSpace(WStringView text, size_t at) {
  while (at < text.size() && isSpace(text[at])) ++at;
  return at;
}

/// Group 1 of tagRegex for what stands between a "<" and the next ">"; nothing if that is no tag.
///
/// Blanks, slash and blanks in front of the name take what they can, the first of them first. But the name needs one
/// unit: where none is left for it, the last of the three that took anything gives one unit back.
std::optional<WStringView> tagName(WStringView inside) {
  if (inside.empty() || !isNameUnit(inside[0])) return std::nullopt;
  size_t begin = skipSpace(inside, 0);
  if (begin < inside.size() && inside[begin] == u'/') begin = skipSpace(inside, begin + 1);
  if (begin == inside.size() || !isNameUnit(inside[begin])) --begin;
  size_t end = begin;
  while (end < inside.size() && isNameUnit(inside[end])) ++end;
  return inside.substr(begin, end - begin);
}

}  // namespace

WString& decodeHtmlEntities(WString& text) {
  replaceAllInPlace(text, u"&amp;", u"&");
  replaceAllInPlace(text, u"&quot;", u"\"");
  replaceAllInPlace(text, u"&apos;", u"'");
  replaceAllInPlace(text, u"&lt;", u"<");
  replaceAllInPlace(text, u"&gt;", u">");
  return replaceAllInPlace(text, u"&nbsp;", u" ");
}

const Regex& tagRegex() {
  static const Regex regex = createRegex(uR"(<\s*/?\s*([^\s>]+)[^>]*>)");
  return regex;
}

// One pass does what erasing and searching on from the same place would: whether a "<" begins a tag is told by the unit
// behind it and by a ">" further on, and both are the same before and after the removal of a later tag.
WString removeTagsNamed(WStringView text, std::initializer_list<WStringView> names) {
  const WString units = throughUtf8(text);
  const WStringView source = units;
  WString result;
  result.reserve(source.size());
  size_t copied = 0;
  size_t close = 0;
  for (size_t open = findUnit(source, u'<'); open != WString::npos;) {
    if (close <= open) close = findUnit(source, u'>', open);
    if (close == WString::npos) break;
    const std::optional<WStringView> name = tagName(source.substr(open + 1, close - open - 1));
    if (name && std::any_of(names.begin(), names.end(), [&](auto listed) { return equalsIgnoreCase(*name, listed); })) {
      result += source.substr(copied, open - copied);
      copied = close + 1;
    }
    open = findUnit(source, u'<', name ? close + 1 : open + 1);
  }
  result += source.substr(copied);
  return result;
}

WString removeHtmlTags(WStringView text) {
  if (findUnit(text, u'<') == WStringView::npos) return WString(text);
  // The last name is six plain characters, of which a tag's name can't hold the first: it never counts.
  const std::initializer_list<WStringView> names = {u"i", u"b", u"u", u"p", u"font", u"\\u4056"};
  if (findText(text, u"< ") == WStringView::npos) return removeTagsNamed(text, names);
  return removeTagsNamed(repairItalicTags(text), names);
}

WString& removeBraceTags(WString& text) {
  const WStringView source = text;
  WString kept;
  size_t copied = 0;
  for (size_t open; (open = findUnit(source, u'{', copied)) != WString::npos;) {
    const size_t close = findUnit(source, u'}', open);
    if (close == WString::npos) break;
    kept += source.substr(copied, open - copied);
    copied = close + 1;
  }
  if (copied == 0) return text;
  kept += source.substr(copied);
  return text = std::move(kept);
}

WString removeAllFormatting(WStringView text) {
  WString result = removeHtmlTags(text);
  removeBraceTags(result);
  return result;
}

double calculateDurationMs(WStringView text, double charactersPerSecond) {
  if (charactersPerSecond < 2.0 || charactersPerSecond > 100.0) charactersPerSecond = 14.7;
  const double length = static_cast<double>(removeAllFormatting(text).size());
  return std::clamp(length / charactersPerSecond * 1000.0, 1000.0, 8000.0);
}

}  // namespace mova
