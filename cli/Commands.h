/// What `mova` does, one function for each of its commands. Each returns the exit status; arguments that make no sense
/// end it by a Failure.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace mova::cli {

struct ConvertOptions {
  std::string input;
  std::optional<std::string> target;     ///< --to; without it the extension of `output` decides
  std::optional<std::string> output;     ///< --output; without it the output goes beside the input
  std::vector<std::string> assignments;  ///< --set, each "FIELD=VALUE"
  bool quiet = false;
  bool json = false;
};

int convertCommand(const ConvertOptions& options);

int detectCommand(const std::vector<std::string>& inputs, bool json);

int formatsCommand(bool json);

}  // namespace mova::cli
