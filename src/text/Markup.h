/// Takes the inline markup out of texts: HTML-like tags and brace overrides.
#pragma once

#include <initializer_list>

#include "movautil/WideString.h"
#include "text/Regex.h"

namespace mova {

/// Replaces "&amp;" by "&", then the double quote, apostrophe, "<", ">" and blank of their entities, in this order on
/// purpose: "&amp;lt;" ends up as "<". Numeric references stay. Changes the text and returns it.
WString& decodeHtmlEntities(WString& text);

/// What counts as a tag: `<\s*/?\s*([^\s>]+)[^>]*>`. Group 1 is the tag's name. In the brackets "\" and "s" are
/// excluded characters and blanks are not, so the name runs up to the first "s", "\" or ">", attributes included:
/// `<font size="2">` bears the name "font ", `<span>` is no tag, and `</span>` bears the name "/".
const Regex& tagRegex();

/// The text without the tags that bear one of the names, ASCII case ignored. What is a tag and what is its name are as
/// `tagRegex` has it, found in one linear pass. The text is taken as UTF-8: it ends at its first zero unit, and lone
/// surrogates become U+FFFD.
WString removeTagsNamed(WStringView text, std::initializer_list<WStringView> names);

/// The text without "<i>", "<b>", "<u>", "<p>" and "<font>" in their plain forms. A text that holds "< " goes through
/// the repair of italic tags first.
WString removeHtmlTags(WStringView text);

/// The text without "{...}" blocks; an unclosed brace stays with all that follows, nesting is not understood. Changes
/// the text and returns it.
WString& removeBraceTags(WString& text);

/// removeHtmlTags, then removeBraceTags.
WString removeAllFormatting(WStringView text);

/// Display time in milliseconds of a text at so many characters a second (outside 2 to 100: 14.7), at least 1000, at
/// most 8000.
double calculateDurationMs(WStringView text, double charactersPerSecond);

}  // namespace mova
