/// Mends damaged italic tags.
#pragma once

#include "movautil/WideString.h"

namespace mova {

/// The text with its italic tags in the plain forms "<i>" and "</i>", and in pairs where that can be made out.
WString repairItalicTags(WStringView text);

}  // namespace mova
