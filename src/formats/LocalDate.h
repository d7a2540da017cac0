/// Today, as files note it.
#pragma once

#include "movautil/WideString.h"

namespace mova {

/// Appends the local date: day and month in two digits, year in four, with the separator between them.
void appendLocalDate(WString& out, char16_t separator);

}  // namespace mova
