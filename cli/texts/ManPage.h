#pragma once

#include <string>
#include <vector>

#include "CommandTable.h"

namespace mova::cli {

/// The manual page of the command in the man macros of roff. `version` is what --version says.
std::string manPage(const std::vector<Command>& commands, const std::string& version);

}  // namespace mova::cli
