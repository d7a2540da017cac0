/// The library's formats as users name them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace mova::cli {

struct Format {
  std::string name;
  std::string extension;  ///< with its dot
  bool canWrite;          ///< false: the writer gives a notice instead of captions
};

/// All formats, in the order in which an input is tried.
const std::vector<Format>& allFormats();

/// The format that `text` names: by its name, case and blanks ignored, or by an extension, with or without the dot,
/// that no other format bears. Throws a Failure with status kUsage that gives the likely meanings.
const Format& findFormat(std::string_view text);

}  // namespace mova::cli
