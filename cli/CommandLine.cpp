#include "CommandLine.h"

#include <fmt/format.h>

#include <iostream>

#include "Failure.h"
#include "Settings.h"
#include "Text.h"

namespace mova::cli {

namespace {

constexpr const char* kExamples =
    "Examples:\n"
    "  mova convert film.srt --to WebVTT        writes film.vtt beside the input\n"
    "  mova detect film.srt                     tells the format of a file\n"
    "  mova formats                             lists the formats\n"
    "  mova convert --help                      tells all about converting\n";

constexpr const char* kConvertHelp =
    "FORMAT is a name that `mova formats` lists, case and blanks ignored, or an extension that only one format has.\n"
    "Without --to the extension of PATH decides. The output always gets the extension of its format.\n"
    "Without --output the output goes beside the input, under its name with the extension of FORMAT; if that is the\n"
    "input itself, \".converted\" is put in front of the extension. An existing file is replaced once the whole "
    "output\n"
    "is there. The input is never overwritten.\n"
    "\n"
    "Examples:\n"
    "  mova convert film.srt --to WebVTT                  writes film.vtt\n"
    "  mova convert film.srt --output subs/film.vtt       the extension names the format\n"
    "  mova convert film.srt --to \"JSON Type 2\" --output out/\n"
    "  mova convert film.scc --to SubRip --set FrameRate=25\n"
    "  mova convert old.srt --to SubRip --set CodePage=1251\n"
    "  mova convert film.srt --to WebVTT --output /dev/stdout\n"
    "\n"
    "Exit status: 0 converted, 1 nothing to write in that format, 2 input in no known format, 64 wrong arguments,\n"
    "66 input can't be opened, 70 failure inside the library, 73 output can't be written in full.\n";

constexpr const char* kDetectHelp =
    "Examples:\n"
    "  mova detect film.srt\n"
    "  mova detect *.xml\n"
    "  mova detect --json film.srt                        one JSON object a line\n"
    "\n"
    "Exit status: 0 all recognised, 2 a file in no known format, 64 wrong arguments, 66 a file that can't be opened;\n"
    "of several the highest.\n";

constexpr const char* kFormatsHelp =
    "Examples:\n"
    "  mova formats\n"
    "  mova formats --json\n";

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
  CLI::App* command = app_.add_subcommand("convert", "Convert a caption file to another format");
  command->add_option("INPUT", convert_.input, "The file to read; its format is found out")->type_name("")->required();
  command->add_option("--to", convert_.target, "The format to write: its name, or an extension that only it has")
      ->type_name("FORMAT");
  command->add_option("--output", convert_.output, "The file to write, or a directory for it")->type_name("PATH");
  command->add_option("--set", convert_.assignments, "Change a setting (see below); may be repeated")
      ->type_name("FIELD=VALUE")
      ->allow_extra_args(false);
  command->add_flag("--quiet", convert_.quiet, "Say nothing on success");
  command->add_flag("--json", convert_.json, "Tell the result as a JSON object on standard output");
  command->footer([] { return kConvertHelp + ("\n" + describeFields()); });
}

void CommandLine::addDetect() {
  CLI::App* command = app_.add_subcommand("detect", "Tell which format files are in");
  command->add_option("INPUT", inputs_, "The files to look at")->type_name("")->required();
  command->add_flag("--json", json_, "Print a JSON object for each file");
  command->footer(kDetectHelp);
}

void CommandLine::addFormats() {
  CLI::App* command = app_.add_subcommand("formats", "List the formats");
  command->add_flag("--json", json_, "Print a JSON array");
  command->footer(kFormatsHelp);
}

}  // namespace mova::cli
