#include "Completions.h"

#include <fmt/format.h>

#include <string_view>

#include "cli/Formats.h"
#include "cli/Settings.h"

namespace mova::cli {

namespace {

std::string replaceAll(std::string text, std::string_view from, std::string_view to) {
  for (size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
    text.replace(at, from.size(), to);
  }
  return text;
}

/// One word of bash or zsh.
std::string shellWord(std::string_view text) {
  return "'" + replaceAll(std::string(text), "'", "'\\''") + "'";
}

/// One word of fish, which knows two escapes between single quotes.
std::string fishWord(std::string_view text) {
  return "'" + replaceAll(replaceAll(std::string(text), "\\", "\\\\"), "'", "\\'") + "'";
}

std::vector<std::string> writableFormats() {
  std::vector<std::string> names;
  for (const Format& format : allFormats()) {
    if (format.canWrite) names.push_back(format.name);
  }
  return names;
}

std::vector<std::string> shellWords(const std::vector<std::string>& words) {
  std::vector<std::string> result;
  result.reserve(words.size());
  for (const std::string& word : words) result.push_back(shellWord(word));
  return result;
}

std::vector<std::string> optionNames(const Command& command) {
  std::vector<std::string> names;
  for (const Argument& argument : command.arguments) {
    if (!argument.positional) names.push_back(argument.names.back());
  }
  return names;
}

std::vector<std::string> commandNames(const std::vector<Command>& commands) {
  std::vector<std::string> names;
  for (const Command& command : commands) {
    if (!command.name.empty()) names.push_back(command.name);
  }
  return names;
}

/// Its positional arguments are files, or it has none.
bool takesFiles(const Command& command) {
  for (const Argument& argument : command.arguments) {
    if (argument.positional) return true;
  }
  return false;
}

// --- bash.

/// What the function below does for the value of an option.
std::string bashValue(const Argument& argument) {
  switch (argument.kind) {
    case ValueKind::Format:
      return R"(_mova_offer "$word" "${formats[@]}")";
    case ValueKind::Field:
      return R"(_mova_offer "$word" "${fields[@]}"; compopt -o nospace 2>/dev/null)";
    case ValueKind::Choice:
      return fmt::format(R"(_mova_offer "$word" {})", fmt::join(shellWords(argument.choices), " "));
    case ValueKind::Folder:
      return "compopt +o default -o dirnames 2>/dev/null";
    case ValueKind::File:
      return ":";
    default:
      return "compopt +o default 2>/dev/null";
  }
}

std::string bashCases(const std::vector<Command>& commands) {
  std::string cases;
  for (const Command& command : commands) {
    for (const Argument& argument : command.arguments) {
      if (argument.positional || argument.kind == ValueKind::None) continue;
      for (const std::string& name : argument.names) {
        cases += fmt::format("    '{} {}') {} ;;\n", command.name, name, bashValue(argument));
      }
    }
  }
  for (const Command& command : commands) {
    cases += fmt::format("    '{} '*) _mova_words {} \"$word\" {}", command.name,
                         takesFiles(command) ? "files" : "words", fmt::join(optionNames(command), " "));
    if (command.name.empty()) cases += fmt::format(" {}", fmt::join(commandNames(commands), " "));
    cases += " ;;\n";
  }
  return cases;
}

// --- zsh.

/// The text between brackets or behind a colon of an argument of _arguments.
std::string zshText(std::string text) {
  for (const std::string_view special : {"\\", "[", "]", ":"}) {
    text = replaceAll(text, special, "\\" + std::string(special));
  }
  return text;
}

std::string zshValue(const Argument& argument) {
  if (argument.kind == ValueKind::None) return "";
  std::string action;
  switch (argument.kind) {
    case ValueKind::Format:
      action = "_mova_formats";
      break;
    case ValueKind::Field:
      action = "_mova_fields";
      break;
    case ValueKind::Choice:
      action = fmt::format("({})", fmt::join(argument.choices, " "));
      break;
    case ValueKind::Folder:
      action = "_files -/";
      break;
    case ValueKind::File:
      action = "_files";
      break;
    default:
      action = " ";
  }
  return fmt::format(":{}:{}", zshText(argument.value), action);
}

std::string zshArguments(const Command& command) {
  std::string result;
  for (const Argument& argument : command.arguments) {
    if (argument.positional) {
      result += " \\\n        " + shellWord((argument.repeatable ? "*" : "1") + zshValue(argument));
      continue;
    }
    for (const std::string& name : argument.names) {
      const char* repeat = argument.repeatable ? "*" : "";
      const char* equals = argument.kind != ValueKind::None && name.starts_with("--") ? "=" : "";
      const std::string text =
          fmt::format("{}{}{}[{}]{}", repeat, name, equals, zshText(argument.help), zshValue(argument));
      result += " \\\n        " + shellWord(text);
    }
  }
  return result;
}

// --- fish.

std::string fishValue(const Argument& argument) {
  switch (argument.kind) {
    case ValueKind::None:
      return "";
    case ValueKind::Format:
      return " -x -a '(__mova_formats)'";
    case ValueKind::Field:
      return " -x -a '(__mova_fields)'";
    case ValueKind::Choice:
      return " -x -a " + fishWord(fmt::format("{}", fmt::join(argument.choices, " ")));
    case ValueKind::Folder:
      return " -x -a '(__fish_complete_directories)'";
    case ValueKind::File:
      return " -r -F";
    default:
      return " -x";
  }
}

std::string fishOption(const Command& command, const Argument& argument) {
  std::string names;
  for (const std::string& name : argument.names) {
    names += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
  }
  const std::string condition =
      command.name.empty() ? "__fish_use_subcommand" : "__fish_seen_subcommand_from " + command.name;
  return fmt::format("complete -c mova -n '{}'{}{} -d {}\n", condition, names, fishValue(argument),
                     fishWord(argument.help));
}

}  // namespace

std::string bashCompletion(const std::vector<Command>& commands) {
  std::vector<std::string> fields;
  for (const FieldHelp& field : usedFields()) fields.push_back(std::string(field.name) + "=");
  return fmt::format(
      R"(# Completion of mova for bash.

# _mova_offer TYPED WORD...: offers the words that begin with what is typed, case ignored. Blanks get a backslash, unless
# a quote was opened.
_mova_offer() {{
  local typed=$1 word quote=
  shift
  case $typed in
    [\'\"]*) typed=${{typed:1}} quote=1 ;;
    *) typed=${{typed//\\/}} ;;
  esac
  for word; do
    [[ ${{word,,}} == "${{typed,,}}"* ]] || continue
    [[ $quote ]] || printf -v word %q "$word"
    COMPREPLY+=("$word")
  done
}}

# _mova_words files|words TYPED WORD...: offers words; where files may stand, only once a dash is typed.
_mova_words() {{
  local kind=$1
  shift
  [[ $kind == words ]] && compopt +o default 2>/dev/null
  [[ $kind == words || $1 == -* ]] && _mova_offer "$@"
}}

_mova() {{
  local formats=({0})
  local fields=({1})
  local word=${{COMP_WORDS[COMP_CWORD]}} option=${{COMP_WORDS[COMP_CWORD - 1]}} command= i
  COMPREPLY=()
  # --to=WebVTT comes as three words.
  if [[ $word == = ]]; then
    word=
  elif [[ $option == = ]]; then
    option=${{COMP_WORDS[COMP_CWORD - 2]}}
  fi
  for ((i = 1; i < COMP_CWORD; ++i)); do
    case ${{COMP_WORDS[i]}} in
      {2}) command=${{COMP_WORDS[i]}}; break ;;
    esac
  done
  case "$command $option" in
{3}  esac
}}

complete -o default -F _mova mova
)",
      fmt::join(shellWords(writableFormats()), " "), fmt::join(shellWords(fields), " "),
      fmt::join(commandNames(commands), "|"), bashCases(commands));
}

std::string zshCompletion(const std::vector<Command>& commands) {
  std::vector<std::string> fields;
  for (const FieldHelp& field : usedFields()) {
    fields.push_back(shellWord(fmt::format("{}:{}", field.name, zshText(std::string(field.help)))));
  }
  std::string names;
  std::string cases;
  for (const Command& command : commands) {
    if (command.name.empty()) continue;
    names += fmt::format("    {}\n", shellWord(command.name + ":" + zshText(command.help)));
    cases += fmt::format("    {})\n      _arguments{}\n      ;;\n", command.name, zshArguments(command));
  }
  return fmt::format(
      R"(#compdef mova
# Completion of mova for zsh.

_mova_formats() {{
  local -a formats=({0})
  local expl
  _wanted formats expl format compadd -M 'm:{{a-zA-Z}}={{A-Za-z}}' -a formats
}}

_mova_fields() {{
  local -a fields=({1})
  if compset -P '*='; then
    _message value
  else
    _describe field fields -S = -M 'm:{{a-zA-Z}}={{A-Za-z}}'
  fi
}}

_mova_commands() {{
  local -a commands=(
{2}  )
  _describe command commands
}}

_mova() {{
  local curcontext=$curcontext state state_descr line
  typeset -A opt_args
  _arguments -C{3} \
        '1:command:_mova_commands' '*::argument:->argument'
  [[ $state == argument ]] || return
  case $words[1] in
{4}  esac
}}

_mova "$@"
)",
      fmt::join(shellWords(writableFormats()), " "), fmt::join(fields, " "), names, zshArguments(commands.front()),
      cases);
}

std::string fishCompletion(const std::vector<Command>& commands) {
  std::string formats;
  for (const Format& format : allFormats()) {
    if (format.canWrite) formats += fmt::format(" \\\n    {}\\t{}", fishWord(format.name), format.extension);
  }
  std::string fields;
  for (const FieldHelp& field : usedFields()) {
    fields += fmt::format(" \\\n    {}=\\t{}", field.name, fishWord(field.help));
  }
  std::string text = fmt::format(
      "# Completion of mova for fish.\n"
      "\n"
      "function __mova_formats\n  printf '%s\\n'{}\nend\n"
      "\n"
      "function __mova_fields\n  printf '%s\\n'{}\nend\n"
      "\n",
      formats, fields);
  for (const Command& command : commands) {
    for (const Argument& argument : command.arguments) {
      if (!argument.positional) text += fishOption(command, argument);
    }
    if (command.name.empty()) continue;
    text +=
        fmt::format("complete -c mova -n __fish_use_subcommand -f -a {} -d {}\n", command.name, fishWord(command.help));
    if (!takesFiles(command))
      text += fmt::format("complete -c mova -n '__fish_seen_subcommand_from {}' -f\n", command.name);
  }
  return text;
}

}  // namespace mova::cli
