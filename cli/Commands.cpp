#include "Commands.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "Failure.h"
#include "Formats.h"
#include "Job.h"
#include "Settings.h"
#include "Text.h"

namespace mova::cli {

namespace {

using Json = nlohmann::ordered_json;

/// One object on a line. A name that is not UTF-8 gets U+FFFD for its strange bytes.
void printJson(const Json& json) {
  printLine(stdout, json.dump(-1, ' ', false, Json::error_handler_t::replace));
}

Json textOrNull(const std::string& text) {
  return text.empty() ? Json() : Json(text);
}

std::string count(size_t captions) {
  return fmt::format("{} caption{}", captions, captions == 1 ? "" : "s");
}

const Format& chooseTarget(const ConvertOptions& options) {
  if (options.target) return findFormat(*options.target);
  const std::string extension = std::filesystem::path(options.output.value_or("")).extension();
  if (extension.size() <= 1) {
    throw Failure(kUsage, "--to is missing: name the format to convert to, as in --to WebVTT (mova formats lists all)");
  }
  return findFormat(extension);
}

void report(const Outcome& outcome, const Format& target, const ConvertOptions& options) {
  if (!outcome.message.empty()) printMessage(outcome.message);
  if (options.json) {
    printJson({{"input", outcome.input},
               {"format", textOrNull(outcome.format)},
               {"captions", outcome.captions},
               {"target", target.name},
               {"output", textOrNull(outcome.output)},
               {"status", outcome.status},
               {"message", textOrNull(outcome.message)}});
  } else if (outcome.message.empty() && !options.quiet) {
    printLine(stderr, fmt::format("{}: {}, {} -> {}: {}", printable(outcome.input), outcome.format,
                                  count(outcome.captions), target.name, printable(outcome.output)));
  }
}

}  // namespace

int convertCommand(const ConvertOptions& options) {
  if (options.output == "") throw Failure(kUsage, "--output is empty: name a file or a directory");
  const Format& target = chooseTarget(options);
  MOVASettings settings = getDefaultSettings();
  for (const std::string& assignment : options.assignments) assignField(settings, assignment);
  const Outcome outcome = convertOne(options.input, target, options.output.value_or(""), settings);
  report(outcome, target, options);
  return outcome.status;
}

int detectCommand(const std::vector<std::string>& inputs, bool json) {
  int worst = 0;
  for (const std::string& input : inputs) {
    const Outcome outcome = detectOne(input);
    worst = std::max(worst, outcome.status);
    if (!outcome.message.empty()) printMessage(outcome.message);
    if (json) {
      printJson({{"input", input},
                 {"format", textOrNull(outcome.format)},
                 {"captions", outcome.captions},
                 {"status", outcome.status},
                 {"message", textOrNull(outcome.message)}});
    } else if (outcome.status == 0) {
      printLine(stdout, fmt::format("{}: {}, {}", printable(input), outcome.format, count(outcome.captions)));
    }
  }
  return worst;
}

int formatsCommand(bool json) {
  if (json) {
    Json list = Json::array();
    for (const Format& format : allFormats()) {
      list.push_back(
          {{"name", format.name}, {"extension", format.extension}, {"read", true}, {"write", format.canWrite}});
    }
    printLine(stdout, list.dump(2));
    return 0;
  }
  printLine(stdout, fmt::format("{:<22}{:<11}{}", "NAME", "EXTENSION", "USE"));
  for (const Format& format : allFormats()) {
    printLine(stdout,
              fmt::format("{:<22}{:<11}{}", format.name, format.extension, format.canWrite ? "read, write" : "read"));
  }
  return 0;
}

}  // namespace mova::cli
