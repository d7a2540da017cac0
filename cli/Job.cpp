#include "Job.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <cstdio>
#include <exception>

#include "Failure.h"
#include "Files.h"
#include "Text.h"
#include "api/Conversion.h"

namespace mova::cli {

namespace {

/// The library prints a notice for some kinds of damage. Standard output is for results, so that notices go to standard
/// error for as long as this lives.
class NoticesOnStandardError {
 public:
  NoticesOnStandardError() : output_(::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1)) {
    std::fflush(stdout);
    ::dup2(STDERR_FILENO, STDOUT_FILENO);
  }
  NoticesOnStandardError(const NoticesOnStandardError&) = delete;
  NoticesOnStandardError& operator=(const NoticesOnStandardError&) = delete;
  ~NoticesOnStandardError() {
    std::fflush(stdout);
    if (output_ < 0) {  // It was closed, and so it stays.
      ::close(STDOUT_FILENO);
      return;
    }
    ::dup2(output_, STDOUT_FILENO);
    ::close(output_);
  }

 private:
  int output_;
};

Conversion callLibrary(const std::string& input, const std::string& target, const std::string& output,
                       const MOVASettings& settings) {
  const std::optional<MOVAString> outputPath = toUtf16(output);
  if (!outputPath) throw Failure(kCantCreate, fmt::format("{}: the name is not UTF-8", printable(output)));
  const NoticesOnStandardError notices;
  return convertFile(*toUtf16(input), *toUtf16(target), *outputPath, &settings);
}

/// Runs the steps of one file; whatever ends them early becomes a part of the outcome.
template <class Steps>
Outcome outcomeOf(const std::string& input, Steps steps) {
  Outcome outcome;
  outcome.input = input;
  try {
    steps(outcome);
  } catch (const Failure& failure) {
    outcome.status = failure.status;
    outcome.message = failure.what();
  } catch (const std::bad_alloc&) {
    outcome.status = kSoftware;
    outcome.message = fmt::format("{}: there is not enough memory to convert it", shownInput(input));
  } catch (const std::exception& exception) {
    outcome.status = kSoftware;
    outcome.message = fmt::format("{}: the conversion failed: {}", shownInput(input), exception.what());
  }
  return outcome;
}

std::string unrecognised(const std::string& input, const struct stat& file, const MOVASettings& settings) {
  if (file.st_size == 0) return fmt::format("{}: the file is empty", shownInput(input));
  std::string message =
      fmt::format("{}: not in any format that can be read (mova formats lists them)", shownInput(input));
  if (settings.CodePage == 0) message += "; is it text in an old encoding? Name that, as in --set CodePage=1251";
  return message;
}

void convert(Outcome& outcome, const Input& source, const Destination& destination, const Format& target,
             const MOVASettings& settings) {
  const std::string& input = outcome.input;
  const Conversion conversion =
      callLibrary(source.path, target.name, destination.isStream ? "" : destination.path, settings);
  outcome.status = static_cast<int>(conversion.code);
  outcome.format = toUtf8(conversion.recognizedFormat);
  outcome.captions = conversion.captions;
  if (conversion.code == 2) {
    outcome.message = unrecognised(input, source.file, settings);
    return;
  }

  const std::string path = destination.isStream ? destination.path : toUtf8(conversion.outputPath);
  refuseInputAsOutput(path, input, source);
  if (destination.makeFolders) makeFoldersFor(path);
  destination.isStream ? writeStream(path, conversion.text) : writeFile(path, conversion.text);
  outcome.output = path;
  if (conversion.code == 1) {
    outcome.message = fmt::format("{}: there is nothing to write as {}; {} is empty", shownInput(input), target.name,
                                  printable(path));
  } else if (!target.canWrite) {
    outcome.message = fmt::format("{}: {} can only be read; {} holds a notice instead of captions", shownInput(input),
                                  target.name, printable(path));
  }
}

}  // namespace

Outcome convertOne(const std::string& input, const Format& target, const std::string& output,
                   const MOVASettings& settings) {
  return outcomeOf(input, [&](Outcome& outcome) {
    const Input source = openInput(input);
    convert(outcome, source, chooseDestination(source, output, target), target, settings);
  });
}

Outcome convertTo(const std::string& path, const std::string& input, const Format& target,
                  const MOVASettings& settings) {
  return outcomeOf(input, [&](Outcome& outcome) {
    const Input source = openInput(input);
    convert(outcome, source, {path, false, true}, target, settings);
  });
}

Outcome detectOne(const std::string& input) {
  return outcomeOf(input, [&](Outcome& outcome) {
    const Input source = openInput(input);
    const MOVASettings settings = getDefaultSettings();
    // No format has an empty name: the file is loaded, and nothing is made of it.
    const Conversion conversion = callLibrary(source.path, "", "", settings);
    outcome.format = toUtf8(conversion.recognizedFormat);
    outcome.captions = conversion.captions;
    if (conversion.code == 2) {
      outcome.status = 2;
      outcome.message = unrecognised(input, source.file, settings);
    }
  });
}

}  // namespace mova::cli
