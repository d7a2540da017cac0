/// Guesses the language of captions by counting words.
#pragma once

#include <array>
#include <cstdint>

#include "model/Subtitle.h"
#include "movautil/WideString.h"

namespace mova {

/// The two-letter code of the language of all paragraphs, "en" when none is found. The more paragraphs, the more words
/// it takes: more than one for every 14 paragraphs.
WString detectLanguageOfSubtitle(const Subtitle& subtitle);

/// The two-letter code, or nothing. The languages are tried in a fixed order; the first that has more than `limit`
/// matches, and passes the tests against its neighbours, is the result. Japanese is "jp", not "ja".
WString detectLanguage(WStringView text, int32_t limit);

/// The matches of all six words as whole words. Word characters are ASCII's: a word that begins or ends in any other
/// letter is found only where that touches one of those.
int32_t countWords(WStringView text, const std::array<WStringView, 6>& words);

/// The matches of all six texts, wherever they stand.
int32_t countPatterns(WStringView text, const std::array<WStringView, 6>& patterns);

}  // namespace mova
