/// Many files in one run.
#pragma once

#include "Commands.h"
#include "Formats.h"
#include "mova/mova.h"

namespace mova::cli {

/// Converts all inputs into the output folder. Returns the highest exit status of all. An interruption ends the process
/// by the signal that asked for it.
int convertBatch(const ConvertOptions& options, const Format& target, const MOVASettings& settings);

}  // namespace mova::cli
