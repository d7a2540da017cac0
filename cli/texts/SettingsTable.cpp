#include "SettingsTable.h"

#include <fmt/format.h>

#include "cli/Settings.h"

namespace mova::cli {

std::string settingsTable() {
  std::string table = "| Field | What it does | Values | Default |\n|---|---|---|---|\n";
  for (const FieldHelp& field : allFields()) {
    table += fmt::format("| `{}` | {} | {} | {} |\n", field.name, field.help.empty() ? "read by nothing" : field.help,
                         field.values, field.defaultValue);
  }
  return table;
}

}  // namespace mova::cli
