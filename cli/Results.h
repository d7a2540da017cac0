/// What became of files, as users read it and as programs do.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "Formats.h"
#include "Job.h"

namespace mova::cli {

using Json = nlohmann::ordered_json;

/// The object on one line. A name that is not UTF-8 gets U+FFFD for its strange bytes.
std::string oneLine(const Json& json);

Json convertedJson(const Outcome& outcome, const Format& target);
Json detectedJson(const Outcome& outcome);

/// The line for a file that was converted and that needs no message.
std::string convertedLine(const Outcome& outcome, const Format& target);
std::string detectedLine(const Outcome& outcome);

}  // namespace mova::cli
