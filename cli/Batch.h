/// Many files in one run.
#pragma once

#include <functional>
#include <string>

#include "Commands.h"
#include "Formats.h"
#include "Job.h"
#include "mova/mova.h"

namespace mova::cli {

/// What a worker does with one input: see convertTo().
using FileJob = std::function<Outcome(const std::string& path, const std::string& input, const Format& target,
                                      const MOVASettings& settings)>;

/// Converts all inputs into the output folder. Returns the highest exit status of all. An interruption ends the process
/// by the signal that asked for it.
int convertBatch(const ConvertOptions& options, const Format& target, const MOVASettings& settings,
                 const FileJob& job = convertTo);

}  // namespace mova::cli
