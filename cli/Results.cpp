#include "Results.h"

#include <fmt/format.h>

#include "Text.h"

namespace mova::cli {

namespace {

Json textOrNull(const std::string& text) {
  return text.empty() ? Json() : Json(text);
}

std::string countCaptions(size_t captions) {
  return fmt::format("{} caption{}", captions, captions == 1 ? "" : "s");
}

}  // namespace

std::string oneLine(const Json& json) {
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

Json convertedJson(const Outcome& outcome, const Format& target) {
  return {{"input", outcome.input},
          {"format", textOrNull(outcome.format)},
          {"captions", outcome.captions},
          {"target", target.name},
          {"output", textOrNull(outcome.output)},
          {"status", outcome.status},
          {"message", textOrNull(outcome.message)}};
}

Json detectedJson(const Outcome& outcome) {
  return {{"input", outcome.input},
          {"format", textOrNull(outcome.format)},
          {"captions", outcome.captions},
          {"status", outcome.status},
          {"message", textOrNull(outcome.message)}};
}

std::string convertedLine(const Outcome& outcome, const Format& target) {
  return fmt::format("{}: {}, {} -> {}: {}", shownInput(outcome.input), outcome.format, countCaptions(outcome.captions),
                     target.name, printable(outcome.output));
}

std::string detectedLine(const Outcome& outcome) {
  return fmt::format("{}: {}, {}", shownInput(outcome.input), outcome.format, countCaptions(outcome.captions));
}

}  // namespace mova::cli
