/// One file: what is to be done with it and what became of it.
#pragma once

#include <cstddef>
#include <string>

#include "Formats.h"
#include "mova/mova.h"

namespace mova::cli {

struct Outcome {
  std::string input;   ///< as the user named it; "-" is standard input
  std::string format;  ///< the format that recognised the input; empty if none did
  size_t captions = 0;
  std::string output;   ///< the path that was written; empty if none was
  int status = 0;       ///< the library's return code, or an ExitStatus
  std::string message;  ///< what went wrong or is worth knowing; empty if nothing
};

/// Converts one file. `output` is the text of --output, empty if there is none. Failures are told by the outcome.
Outcome convertOne(const std::string& input, const Format& target, const std::string& output,
                   const MOVASettings& settings);

/// The same with `path` as the output, which has the target's extension; the folders that it goes through are made.
Outcome convertTo(const std::string& path, const std::string& input, const Format& target,
                  const MOVASettings& settings);

/// Finds out the format of one file. Failures are told by the outcome.
Outcome detectOne(const std::string& input);

}  // namespace mova::cli
