#include "Commands.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <utility>

#include "Batch.h"
#include "Failure.h"
#include "Formats.h"
#include "Job.h"
#include "Results.h"
#include "Settings.h"
#include "Text.h"

namespace mova::cli {

namespace {

const Format& chooseTarget(const ConvertOptions& options) {
  if (options.target) return findFormat(*options.target);
  const std::string extension = std::filesystem::path(options.output.value_or("")).extension();
  if (extension.size() <= 1) {
    throw Failure(kUsage, "--to is missing: name the format to convert to, as in --to WebVTT (mova formats lists all)");
  }
  return findFormat(extension);
}

MOVASettings chooseSettings(const ConvertOptions& options) {
  MOVASettings settings = getDefaultSettings();
  for (const std::string& assignment : options.assignments) assignField(settings, assignment);
  return settings;
}

/// Options that would do nothing are refused, so that nobody counts on them.
void refuseOptionsOfManyFiles(const ConvertOptions& options) {
  const std::pair<const char*, bool> given[] = {
      {"--recursive", options.recursive},       {"--files-from", options.filesFrom.has_value()},
      {"--jobs", options.jobs.has_value()},     {"--timeout", options.timeout.has_value()},
      {"--memory", options.memory.has_value()}, {"--resume", options.resume},
      {"--report", options.report.has_value()}, {"--progress", options.progress.has_value()},
  };
  for (const auto& [name, isGiven] : given) {
    if (isGiven) throw Failure(kUsage, fmt::format("{} goes with --output-dir: name a folder for the outputs", name));
  }
  if (options.inputs.size() > 1) {
    throw Failure(kUsage, "several inputs need --output-dir: name a folder for the outputs");
  }
}

int convertOneFile(const ConvertOptions& options) {
  refuseOptionsOfManyFiles(options);
  if (options.output == "") throw Failure(kUsage, "--output is empty: name a file or a directory");
  const Format& target = chooseTarget(options);
  const MOVASettings settings = chooseSettings(options);
  const std::string& input = options.inputs.front();
  const std::string output = options.output.value_or(input == "-" ? "-" : "");
  if (output == "-" && options.json) throw Failure(kUsage, "--json and the captions can't both go to standard output");
  const Outcome outcome = convertOne(input, target, output, settings);
  if (!outcome.message.empty()) printMessage(outcome.message);
  if (options.json) {
    printLine(stdout, oneLine(convertedJson(outcome, target)));
  } else if (outcome.message.empty() && !options.quiet) {
    printLine(stderr, convertedLine(outcome, target));
  }
  return outcome.status;
}

}  // namespace

int convertCommand(const ConvertOptions& options) {
  if (options.inputs.empty() && !options.filesFrom) {
    throw Failure(kUsage, "INPUT is required (mova convert --help tells how)");
  }
  if (!options.outputFolder) return convertOneFile(options);
  if (options.output) throw Failure(kUsage, "--output and --output-dir can't go together");
  return convertBatch(options, chooseTarget(options), chooseSettings(options));
}

int detectCommand(const std::vector<std::string>& inputs, bool json) {
  if (std::count(inputs.begin(), inputs.end(), "-") > 1) throw Failure(kUsage, "standard input can be read once only");
  int worst = 0;
  for (const std::string& input : inputs) {
    const Outcome outcome = detectOne(input);
    worst = std::max(worst, outcome.status);
    if (!outcome.message.empty()) printMessage(outcome.message);
    if (json) {
      printLine(stdout, oneLine(detectedJson(outcome)));
    } else if (outcome.status == 0) {
      printLine(stdout, detectedLine(outcome));
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
