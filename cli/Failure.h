#pragma once

#include <stdexcept>
#include <string>

namespace mova::cli {

/// Exit statuses beside the library's own 0, 1 and 2, as <sysexits.h> numbers them.
enum ExitStatus : int {
  kUsage = 64,       ///< wrong arguments
  kNoInput = 66,     ///< an input that can't be opened
  kSoftware = 70,    ///< the library failed in a way that it doesn't report by code
  kCantCreate = 73,  ///< an output that can't be created or written in full
};

/// Ends a command or one of its files: what to tell the user, and the exit status.
struct Failure : std::runtime_error {
  Failure(ExitStatus exitStatus, const std::string& message) : std::runtime_error(message), status(exitStatus) {}
  ExitStatus status;
};

}  // namespace mova::cli
