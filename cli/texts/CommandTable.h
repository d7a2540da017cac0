/// The option table of the command as plain data, for the texts that are made from it.
#pragma once

#include <string>
#include <vector>

namespace mova::cli {

class CommandLine;

/// What stands behind an option, or for a positional argument. Told by the value's name in the table: FORMAT,
/// FIELD=VALUE, FILE, PATH and INPUT, DIR; a name in small letters is the value itself; any other is something that
/// nobody can list.
enum class ValueKind { None, Format, Field, File, Folder, Choice, Other };

struct Argument {
  std::vector<std::string> names;  ///< "-h", "--help"; a positional argument has one name without dashes
  std::string help;
  std::string group;  ///< the heading that --help puts it under
  ValueKind kind = ValueKind::None;
  std::string value;                 ///< the value's name, such as FORMAT; empty for a flag
  std::vector<std::string> choices;  ///< for ValueKind::Choice
  bool positional = false;
  bool required = false;
  bool repeatable = false;
};

struct Command {
  std::string name;  ///< empty for `mova` itself
  std::string help;
  std::string footer;  ///< what --help says below the options
  std::vector<Argument> arguments;
};

/// `mova` itself, and then its commands in the order of --help.
std::vector<Command> readCommands(const CommandLine& commandLine);

}  // namespace mova::cli
