#include "CommandLine.h"

#include <fmt/format.h>

#include <charconv>
#include <cstdint>
#include <iostream>
#include <optional>

#include "Failure.h"
#include "Settings.h"
#include "Text.h"

namespace mova::cli {

namespace {

constexpr const char* kExamples =
    "Examples:\n"
    "  mova convert film.srt --to WebVTT        writes film.vtt beside the input\n"
    "  mova convert *.srt --to WebVTT --output-dir out\n"
    "  mova detect film.srt                     tells the format of a file\n"
    "  mova formats                             lists the formats\n"
    "  mova convert --help                      tells all about converting\n";

constexpr const char* kConvertHelp =
    "FORMAT is a name that `mova formats` lists, case and blanks ignored, or an extension that only one format has.\n"
    "Without --to the extension of PATH decides. The output always gets the extension of its format.\n"
    "Without --output the output goes beside the input, under its name with the extension of FORMAT; if that is the\n"
    "input itself, \".converted\" is put in front of the extension. An existing file is replaced once the whole\n"
    "output is there. The input is never overwritten.\n"
    "\n"
    "\"-\" as INPUT is standard input, and goes to standard output unless --output names another place.\n"
    "\"-\" as PATH is standard output.\n"
    "\n"
    "Many files go to the folder of --output-dir, which is made if it is missing. A file lands there under its own\n"
    "name; the files of a folder that is an INPUT keep their subfolders. Worker processes convert them, so a file\n"
    "that makes a conversion crash or hang costs no other file. Results come in the order of the inputs, those of a\n"
    "folder sorted by name. Two inputs that would write the same output are refused before anything is written. The\n"
    "names of --files-from stand one on a line; if the list has any zero byte, a zero byte ends each name instead\n"
    "(find -print0). --resume passes over inputs whose output is there and not older than the input, so an\n"
    "interrupted run can go on.\n"
    "\n"
    "Examples:\n"
    "  mova convert film.srt --to WebVTT                  writes film.vtt\n"
    "  mova convert film.srt --output subs/film.vtt       the extension names the format\n"
    "  mova convert film.srt --to \"JSON Type 2\" --output out/\n"
    "  mova convert film.scc --to SubRip --set FrameRate=25\n"
    "  mova convert old.srt --to SubRip --set CodePage=1251\n"
    "  cat film.srt | mova convert - --to WebVTT | less\n"
    "  mova convert *.srt --to WebVTT --output-dir out\n"
    "  mova convert archive --recursive --to SubRip --output-dir out --report report.jsonl\n"
    "  find . -name '*.scc' -print0 | mova convert --files-from - --to WebVTT --output-dir out --resume\n"
    "\n"
    "Exit status: 0 converted, 1 nothing to write in that format, 2 input in no known format, 64 wrong arguments,\n"
    "66 input can't be opened, 70 failure inside the library, 73 output can't be written in full; of many files the\n"
    "highest.\n";

constexpr const char* kDetectHelp =
    "Examples:\n"
    "  mova detect film.srt\n"
    "  mova detect *.xml\n"
    "  mova detect --json film.srt                        one JSON object a line\n"
    "  cat film.srt | mova detect -\n"
    "\n"
    "Exit status: 0 all recognised, 2 a file in no known format, 64 wrong arguments, 66 a file that can't be opened;\n"
    "of several the highest.\n";

constexpr const char* kFormatsHelp =
    "Examples:\n"
    "  mova formats\n"
    "  mova formats --json\n";

/// Turns "500M" into the number of bytes. Returns what is wrong with it, nothing if all is well.
std::string toBytes(std::string& size) {
  constexpr uint64_t least = 1 << 20;
  uint64_t number = 0;
  const auto [rest, error] = std::from_chars(size.data(), size.data() + size.size(), number);
  const std::string unit = foldName({rest, static_cast<size_t>(size.data() + size.size() - rest)});
  const size_t power = unit.empty() ? 0 : std::string_view("kmgt").find(unit) + 1;  // npos + 1 is 0, too
  if (error != std::errc() || unit.size() > 1 || (power == 0 && !unit.empty())) {
    return fmt::format("\"{}\" is not a size such as 500M or 2G", printable(size));
  }
  if (number > UINT64_MAX >> (10 * power)) return fmt::format("{} is too much", printable(size));
  if (number << (10 * power) < least) return fmt::format("{} is not enough", printable(size));
  size = std::to_string(number << (10 * power));
  return "";
}

/// Returns what is wrong with a time limit, nothing if all is well.
std::string checkSeconds(const std::string& text) {
  const std::optional<double> seconds = parseNumber<double>(text);
  if (seconds && *seconds >= 0.001 && *seconds <= 1e6) return "";  // "nan" is neither.
  return fmt::format("\"{}\" is not a number of seconds from 0.001 to 1000000", printable(text));
}

}  // namespace

CommandLine::CommandLine() {
  app_.set_version_flag("--version", "mova " MOVA_VERSION);
  app_.require_subcommand(1);
  addConvert();
  addDetect();
  addFormats();
  app_.footer(kExamples);  // after the commands, which would take it over
}

int CommandLine::run(int argc, char** argv) {
  try {
    app_.parse(argc, argv);
  } catch (const CLI::Success& wish) {  // --help or --version
    return app_.exit(wish, std::cout, std::cerr);
  } catch (const CLI::ParseError& error) {
    if (app_.get_subcommands().empty() && argc > 1 && argv[1][0] != '-') refuseCommand(argv[1]);
    const CLI::App* command = app_.get_subcommands().empty() ? &app_ : app_.get_subcommands().front();
    const std::string name = command == &app_ ? "mova" : "mova " + command->get_name();
    throw Failure(kUsage, fmt::format("{} ({} --help tells how)", error.what(), name));
  }
  if (app_.got_subcommand("convert")) return convertCommand(convert_);
  if (app_.got_subcommand("detect")) return detectCommand(inputs_, json_);
  return formatsCommand(json_);
}

void CommandLine::refuseCommand(const std::string& name) {
  std::vector<std::string> names;
  for (const CLI::App* command : app_.get_subcommands({})) names.push_back(command->get_name());
  throw Failure(kUsage, fmt::format("there is no command \"{}\"; the commands are {} (mova --help tells how)",
                                    printable(name), fmt::join(names, ", ")));
}

void CommandLine::addConvert() {
  CLI::App* command = app_.add_subcommand("convert", "Convert caption files to another format");
  command->add_option("INPUT", convert_.inputs, "The file to read; its format is found out. - is standard input")
      ->type_name("");
  command->add_option("--to", convert_.target, "The format to write: its name, or an extension that only it has")
      ->type_name("FORMAT");
  command->add_option("--output", convert_.output, "The file to write, or a directory for it. - is standard output")
      ->type_name("PATH");
  command->add_option("--set", convert_.assignments, "Change a setting (see below); may be repeated")
      ->type_name("FIELD=VALUE")
      ->allow_extra_args(false);
  command->add_flag("--quiet", convert_.quiet, "Say nothing on success");
  command->add_flag("--json", convert_.json, "Tell results as JSON objects, one a line, on standard output");
  addManyFiles(command);
  command->footer([] { return kConvertHelp + ("\n" + describeFields()); });
}

void CommandLine::addManyFiles(CLI::App* command) {
  const auto option = [command](const std::string& name, auto& value, const char* type, const std::string& help) {
    return command->add_option(name, value, help)->type_name(type)->group("Many files");
  };
  option("--output-dir", convert_.outputFolder, "DIR", "Convert any number of inputs into this folder");
  command
      ->add_flag("--recursive", convert_.recursive,
                 "Take the files of folders that are named as INPUT, all the way down")
      ->group("Many files");
  option("--files-from", convert_.filesFrom, "FILE", "Take the names of more inputs from a file. - is standard input");
  option("--jobs", convert_.jobs, "N", "Convert so many files at a time; default: one for each core")
      ->check(CLI::Range(1, 1000).description(""));
  option("--timeout", convert_.timeout, "SECONDS", "Give a file up that takes longer; default: 60")
      ->check(checkSeconds);
  option("--memory", convert_.memory, "SIZE", "Give a file up that takes more memory, as in 500M or 2G")
      ->transform(CLI::Validator(toBytes, "", "size"));
  command->add_flag("--resume", convert_.resume, "Pass over inputs whose output is there and not older")
      ->group("Many files");
  option("--report", convert_.report, "FILE", "Write the fate of each input to a file, one JSON object a line");
  option("--progress", convert_.progress, "plain",
         "Tell how far it is by a line every few seconds, instead of a bar on a terminal")
      ->check(CLI::IsMember({"plain"}).description(""));
}

void CommandLine::addDetect() {
  CLI::App* command = app_.add_subcommand("detect", "Tell which format files are in");
  command->add_option("INPUT", inputs_, "The files to look at. - is standard input")->type_name("")->required();
  command->add_flag("--json", json_, "Print a JSON object for each file");
  command->footer(kDetectHelp);
}

void CommandLine::addFormats() {
  CLI::App* command = app_.add_subcommand("formats", "List the formats");
  command->add_flag("--json", json_, "Print a JSON array");
  command->footer(kFormatsHelp);
}

}  // namespace mova::cli
