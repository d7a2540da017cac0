#pragma once

#include <string>

namespace mova::cli {

/// The table of docs/settings.md: all fields with the values that --set takes, their defaults and what they do.
std::string settingsTable();

}  // namespace mova::cli
