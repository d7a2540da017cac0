// Prints one of the texts that are made from the command's own tables of options and of settings:
// mova_texts man|bash|zsh|fish|settings
#include <cstdio>
#include <string>

#include "Completions.h"
#include "ManPage.h"
#include "SettingsTable.h"
#include "cli/CommandLine.h"

using namespace mova::cli;

int main(int argc, char** argv) {
  const CommandLine commandLine;
  const std::vector<Command> commands = readCommands(commandLine);
  const std::string wanted = argc == 2 ? argv[1] : "";
  const std::string text = wanted == "man"        ? manPage(commands, commandLine.table().version())
                           : wanted == "bash"     ? bashCompletion(commands)
                           : wanted == "zsh"      ? zshCompletion(commands)
                           : wanted == "fish"     ? fishCompletion(commands)
                           : wanted == "settings" ? settingsTable()
                                                  : "";
  if (text.empty()) return 64;
  std::fputs(text.c_str(), stdout);
  return std::fflush(stdout) == 0 ? 0 : 73;
}
