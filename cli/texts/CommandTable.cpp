#include "CommandTable.h"

#include <string_view>

#include "cli/CommandLine.h"

namespace mova::cli {

namespace {

/// A value's name in small letters is the value itself: "plain", or "plain|bar" for either of two.
bool isLiteral(std::string_view value) {
  return !value.empty() && value.front() >= 'a' && value.front() <= 'z';
}

ValueKind kindOf(std::string_view value) {
  if (isLiteral(value)) return ValueKind::Choice;
  if (value == "FORMAT") return ValueKind::Format;
  if (value == "FIELD=VALUE") return ValueKind::Field;
  if (value == "DIR") return ValueKind::Folder;
  if (value == "FILE" || value == "PATH" || value == "INPUT") return ValueKind::File;
  return ValueKind::Other;
}

Argument readArgument(const CLI::Option& option) {
  Argument argument;
  argument.positional = option.get_positional();
  if (argument.positional) argument.names.push_back(option.get_name(true));
  for (const std::string& name : option.get_snames()) argument.names.push_back("-" + name);
  for (const std::string& name : option.get_lnames()) argument.names.push_back("--" + name);
  argument.help = option.get_description();
  argument.group = argument.positional ? "Positionals" : option.get_group();
  argument.required = option.get_required();
  if (option.get_items_expected_max() == 0) return argument;  // a flag
  const std::string type = option.get_type_name();            // with what the value is checked for behind a colon
  argument.value = argument.positional ? argument.names.front() : type.substr(0, type.find(':'));
  argument.kind = kindOf(argument.value);
  if (argument.kind == ValueKind::Choice) argument.choices = CLI::detail::split(argument.value, '|');
  argument.repeatable = option.get_items_expected_max() > 1;
  return argument;
}

Command readCommand(const CLI::App& app, const std::string& name) {
  Command command{name, app.get_description(), app.get_footer(), {}};
  for (const CLI::Option* option : app.get_options()) {
    if (!option->get_group().empty()) command.arguments.push_back(readArgument(*option));  // else it is hidden
  }
  return command;
}

}  // namespace

std::vector<Command> readCommands(const CommandLine& commandLine) {
  std::vector<Command> commands{readCommand(commandLine.table(), "")};
  for (const CLI::App* app : commandLine.table().get_subcommands([](const CLI::App*) { return true; })) {
    commands.push_back(readCommand(*app, app->get_name()));
  }
  return commands;
}

}  // namespace mova::cli
