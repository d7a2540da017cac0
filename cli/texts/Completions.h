#pragma once

#include <string>
#include <vector>

#include "CommandTable.h"

namespace mova::cli {

/// What a shell reads to complete the command's words: commands, options, formats, fields, files.
std::string bashCompletion(const std::vector<Command>& commands);
std::string zshCompletion(const std::vector<Command>& commands);
std::string fishCompletion(const std::vector<Command>& commands);

}  // namespace mova::cli
