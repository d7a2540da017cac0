/// What `mova` does, one function for each of its commands. Each returns the exit status; arguments that make no sense
/// end it by a Failure.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace mova::cli {

struct ConvertOptions {
  std::vector<std::string> inputs;
  std::optional<std::string> target;     ///< --to; without it the extension of `output` decides
  std::optional<std::string> output;     ///< --output; without it the output goes beside the input
  std::vector<std::string> assignments;  ///< --set, each "FIELD=VALUE"
  bool quiet = false;
  bool json = false;

  // Many files.
  std::optional<std::string> outputFolder;  ///< --output-dir
  std::optional<std::string> filesFrom;     ///< --files-from: a file with names of inputs, "-" for standard input
  std::optional<unsigned> jobs;             ///< --jobs; without it as many as there are cores
  std::optional<double> timeout;            ///< --timeout: seconds for each file
  std::optional<uint64_t> memory;           ///< --memory: bytes for each file
  std::optional<std::string> report;        ///< --report: a file for one JSON object for each input
  std::optional<std::string> progress;      ///< --progress: "plain"
  bool recursive = false;
  bool resume = false;
};

int convertCommand(const ConvertOptions& options);

int detectCommand(const std::vector<std::string>& inputs, bool json);

int formatsCommand(bool json);

}  // namespace mova::cli
