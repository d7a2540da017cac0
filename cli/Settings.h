/// The fields of MOVASettings as users write them: --set FIELD=VALUE.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "mova/mova.h"

namespace mova::cli {

/// Sets one field from "FIELD=VALUE"; the case of FIELD is ignored. Throws a Failure with status kUsage that tells what
/// is wrong: the form, the name or the value.
void assignField(MOVASettings& settings, std::string_view assignment);

/// A field, as helps tell of it.
struct FieldHelp {
  std::string_view name;
  std::string_view help;  ///< empty for a field that nothing reads
  std::string values;     ///< what may be assigned
  std::string defaultValue;
};

/// In the order of the record.
std::vector<FieldHelp> allFields();

/// Those that the library reads.
std::vector<FieldHelp> usedFields();

/// The list of all fields with what they hold, their defaults and units, for --help.
std::string describeFields();

}  // namespace mova::cli
