/// Mends damaged italic tags.
#pragma once

#include "movautil/WideString.h"

namespace mova {

/// The text with its italic tags in the plain forms "<i>" and "</i>", and in pairs where that can be made out.
///
/// The spelling of the tags is made regular first; then each combination of up to two opening and up to two closing
/// tags is treated in a way of its own, other combinations stay; last, dialogue dashes go inside the tags of two-line
/// texts and empty pairs go. Several cases give unbalanced or surprising tags on purpose: readers and writers of
/// formats rely on the exact results.
WString repairItalicTags(WStringView text);

/// Whether the line holds `close`, begins with `open` (perhaps behind a dialogue dash) and ends with `close` (perhaps
/// with a mark behind it). Double blanks count as single ones.
bool isLineWhollyItalic(WStringView line, WStringView open, WStringView close);

}  // namespace mova
