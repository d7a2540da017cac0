#include "ManPage.h"

#include <fmt/format.h>

#include <algorithm>
#include <sstream>
#include <string_view>

#include "cli/Formats.h"

namespace mova::cli {

namespace {

/// A text as roff shows it letter by letter. Hyphens are minus signs: what users copy from a page is mostly options.
std::string roff(std::string_view text) {
  std::string result;
  for (const char c : text) {
    switch (c) {
      case '\\':
        result += "\\e";
        break;
      case '-':
        result += "\\-";
        break;
      case '\'':
        result += "\\(aq";
        break;
      case '`':
        result += "\\(ga";
        break;
      case '^':
        result += "\\(ha";
        break;
      case '~':
        result += "\\(ti";
        break;
      default:
        result += c;
    }
  }
  return result.starts_with('.') ? "\\&" + result : result;
}

std::string bold(std::string_view text) {
  return "\\fB" + roff(text) + "\\fR";
}

std::string italic(std::string_view text) {
  return "\\fI" + roff(text) + "\\fR";
}

std::string nameOf(const Command& command) {
  return command.name.empty() ? "mova" : "mova " + command.name;
}

/// An item of a list: "name   meaning" as a help has it, or a name alone.
std::string listItem(std::string_view item) {
  const size_t gap = item.find("  ");
  if (gap == std::string_view::npos) return ".TP\n" + bold(item) + "\n";
  const std::string_view meaning = item.substr(item.find_first_not_of(' ', gap));
  return ".TP\n" + bold(item.substr(0, gap)) + "\n" + roff(meaning) + "\n";
}

/// The parts of a help below its options. They go to different sections of the page.
struct Footer {
  std::string prose;  ///< what explains the options
  std::string examples;
  std::string exitStatus;
};

Footer readFooter(const std::string& text) {
  constexpr std::string_view examples = "Examples:";
  constexpr std::string_view exitStatus = "Exit status: ";
  Footer footer;
  std::string* part = &footer.prose;
  bool newParagraph = true;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    if (line.empty()) {
      part = &footer.prose;
      newParagraph = true;
    } else if (line == examples) {
      part = &footer.examples;
    } else if (line.starts_with(exitStatus)) {
      part = &footer.exitStatus;
      *part += roff(line.substr(exitStatus.size())) + "\n";
    } else if (line.starts_with(' ')) {
      *part += listItem(std::string_view(line).substr(line.find_first_not_of(' ')));
      newParagraph = true;
    } else {
      if (newParagraph && part == &footer.prose) *part += ".PP\n";
      newParagraph = false;
      *part += roff(line) + "\n";
    }
  }
  return footer;
}

std::string synopsis(const Command& command) {
  std::string result = bold(nameOf(command)) + " [" + italic("OPTION") + "]...";
  for (const Argument& argument : command.arguments) {
    if (!argument.positional) continue;
    const std::string name = italic(argument.value);
    result += argument.required ? " " + name : " [" + name + "]";
    if (argument.repeatable) result += "...";
  }
  return result;
}

std::string argumentItem(const Argument& argument) {
  std::vector<std::string> names;
  for (const std::string& name : argument.names) names.push_back(argument.positional ? italic(name) : bold(name));
  std::string result = fmt::format(".TP\n{}", fmt::join(names, ", "));
  if (!argument.positional && !argument.value.empty()) {
    result += " " + (argument.kind == ValueKind::Choice ? bold(argument.value) : italic(argument.value));
  }
  return result + "\n" + roff(argument.help) + ".\n";
}

std::string argumentItems(const Command& command) {
  std::vector<std::string> groups = {"Positionals"};  // in the order of --help
  for (const Argument& argument : command.arguments) {
    if (std::find(groups.begin(), groups.end(), argument.group) == groups.end()) groups.push_back(argument.group);
  }
  std::string result;
  for (const std::string& group : groups) {
    if (group != "Options" && group != "Positionals") result += ".PP\n" + roff(group) + ":\n";
    for (const Argument& argument : command.arguments) {
      if (argument.group == group) result += argumentItem(argument);
    }
  }
  return result;
}

std::string formatList() {
  std::vector<std::string> names;
  for (const Format& format : allFormats()) {
    names.push_back(
        fmt::format("{} ({}{})", bold(format.name), roff(format.extension), format.canWrite ? "" : ", read only"));
  }
  return fmt::format("{}.\n", fmt::join(names, ",\n"));
}

std::string lowerFirst(std::string text) {
  if (!text.empty() && text[0] >= 'A' && text[0] <= 'Z') text[0] = static_cast<char>(text[0] - 'A' + 'a');
  return text;
}

}  // namespace

std::string manPage(const std::vector<Command>& commands, const std::string& version) {
  // No date: the page is the same whenever it is built.
  std::string page = fmt::format(".TH MOVA 1 \"\" \"{}\" \"User Commands\"\n", version);
  page += fmt::format(".SH NAME\nmova \\- {}\n", roff(lowerFirst(commands.front().help)));

  std::vector<std::string> synopses;
  for (const Command& command : commands) {
    if (!command.name.empty()) synopses.push_back(synopsis(command));
  }
  synopses.push_back(synopsis(commands.front()));
  page += fmt::format(".SH SYNOPSIS\n{}\n", fmt::join(synopses, "\n.br\n"));

  page +=
      ".SH DESCRIPTION\n"
      "Mova converts closed captions and subtitles from one file format to another.\n"
      "It finds out by itself which format a file is in, and reads it into one model of timed captions.\n"
      "From that it writes any other format.\n";

  std::string examples;
  std::string exitStatus;
  page += ".SH COMMANDS\n";
  for (const Command& command : commands) {
    const Footer footer = readFooter(command.footer);
    page += fmt::format(".SS {}\n{}.\n{}{}", roff(nameOf(command)), roff(command.help), argumentItems(command),
                        footer.prose);
    if (!command.name.empty()) examples += footer.examples;  // those of `mova` itself are some of these
    if (!footer.exitStatus.empty()) exitStatus += ".TP\n" + bold(nameOf(command)) + "\n" + footer.exitStatus;
  }
  page += ".SH FORMATS\n" + formatList();
  page += ".SH EXIT STATUS\n" + exitStatus;
  page += ".SH EXAMPLES\n" + examples;
  page += ".SH SEE ALSO\nThe header\n.I mova/mova.h\ndocuments the library that the command is made from.\n";
  return page;
}

}  // namespace mova::cli
