/// One conversion in memory: what the exported call does apart from writing the file.
#pragma once

#include <cstddef>
#include <cstdint>

#include "mova/mova.h"
#include "movautil/WideString.h"

namespace mova {

struct Conversion {
  uint32_t code = 2;         ///< The return code of movaConvertCC().
  WString recognizedFormat;  ///< Name of the input's format; empty with code 2.
  size_t captions = 0;       ///< Paragraphs that were read.
  WString outputPath;        ///< With the target's extension, if there is such a target.
  WString text;              ///< What the output file holds, as UTF-8.
};

/// `settings` may be null, which means the defaults.
Conversion convertFile(const WString& inputPath, const WString& formatName, const WString& outputPath,
                       const MOVASettings* settings);

/// Undoes what earlier conversions left behind in the process: the next one begins as in a new process. The library
/// itself never does that, and its callers rely on it; the command does.
void forgetConversions();

}  // namespace mova
