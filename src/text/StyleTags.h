/// Translates inline styling between the model's HTML-like tags and the override blocks of Sub Station Alpha.
#pragma once

#include "model/Paragraph.h"
#include "movautil/WideString.h"

namespace mova {

/// The paragraph's text with override blocks for its tags and "\N" for its line breaks. At most ten font tags are
/// translated, an eleventh stays.
WString modelToSsaText(const Paragraph& paragraph);

/// The text with tags for its override blocks and CR LF for its line breaks. At most ten of each kind of block are
/// translated; blocks that have no tag stay, and so do "{\fs...}" and "{\1c...}", on purpose.
WString ssaToModelText(WStringView text);

/// Cuts the overrides behind the first backslash off a value such as "Arial\fs20\i1" and appends them as attributes
/// (` size="20"`). `italic` becomes whether one of them was "i1".
void splitOverrideTags(WString& value, WString& attributes, bool& italic);

}  // namespace mova
