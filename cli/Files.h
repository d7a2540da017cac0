/// The files around a conversion: inputs are looked at before, outputs are replaced only as a whole.
#pragma once

#include <sys/stat.h>

#include <string>
#include <string_view>

#include "Formats.h"

namespace mova::cli {

/// The file can be handed to the library: it exists, is readable, a regular file, and has a path that the library can
/// open. Throws a Failure with status kNoInput. Returns what is known of the file.
struct stat checkInput(const std::string& path);

/// Where an output goes.
struct Destination {
  std::string path;
  /// The path is that of a device or pipe and is written to as it is; otherwise it is a file name with an extension.
  bool isStream = false;
};

/// The place that `output`, the text of --output, means for this input and target. Empty means beside the input. A
/// directory means a file in it, which is named after the input.
Destination chooseDestination(const std::string& input, const struct stat& inputFile, const std::string& output,
                              const Format& target);

/// Throws a Failure with status kUsage if `path` is, by whatever name or link, the input.
void refuseInputAsOutput(const std::string& path, const std::string& input, const struct stat& inputFile);

/// Writes the file as a whole or not at all: an existing one stays as it was until all bytes of the new one are there.
/// Throws a Failure with status kCantCreate.
void writeFile(const std::string& path, std::string_view bytes);

/// Writes to a device or pipe. Throws a Failure with status kCantCreate.
void writeStream(const std::string& path, std::string_view bytes);

}  // namespace mova::cli
