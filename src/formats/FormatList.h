/// The ordered list of all formats.
#pragma once

#include <memory>
#include <vector>

#include "formats/SubtitleFormat.h"

namespace mova {

using FormatList = std::vector<std::unique_ptr<SubtitleFormat>>;

/// Replaces the list by one new instance of each format, in the order in which an input is tried and in which the
/// targets are reported.
void buildFormatList(FormatList& list);

}  // namespace mova
