/// Outputs that would get in each other's way or in that of an input.
#pragma once

#include <optional>
#include <string>

#include "Inputs.h"

namespace mova::cli {

/// What a run is going to write.
struct Outputs {
  const std::string& folder;
  const std::string& extension;
  const std::optional<std::string>& report;
};

/// Throws a Failure with status kUsage that names both if two outputs would be written to the same place, or if one is
/// among the inputs, by whatever name or link. Takes no more memory for more inputs.
void refuseClashes(InputList& inputs, const Outputs& outputs);

}  // namespace mova::cli
