/// Breaks the text of a caption into two balanced lines.
#pragma once

#include <cstdint>
#include <map>

#include "movautil/WideString.h"

namespace mova {

/// All formatting tags at a position of a text that holds none, in their order.
using TagMap = std::map<int32_t, WString>;

/// The text in at most two lines: at a change of speaker near the middle, else behind a sentence, else in a gap between
/// words, else in the middle of a word with a hyphen. Tags keep their places.
///
/// A text that counts less than `mergeLimit` units without its formatting becomes one line. `maximumLength` decides
/// which changes of speaker and ends of sentences are taken; a gap between words is taken however long the lines are.
/// Stays as it is: a text of two lines whose first ends in an en dash (interrupted speech), and one below the limit
/// whose lines all begin with an em dash. The language is not used.
WString breakLines(WStringView text, int32_t maximumLength, int32_t mergeLimit, WStringView language);

/// Lines of up to 80 units, one line below 10.
WString breakLinesDefault(WStringView text);

/// Whether the unit at the position stands between two digits and is one of "(,.)".
bool isPartOfNumber(WStringView text, int32_t position);

/// The text with the tags in front of the units that they stood at. Line breaks, CR and LF units, are not counted.
WString reinsertTags(WStringView text, const TagMap& tags);

}  // namespace mova
