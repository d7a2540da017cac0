/// The command line of `mova`: every option once, with its help.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "Commands.h"

namespace mova::cli {

class CommandLine {
 public:
  CommandLine();
  CommandLine(const CommandLine&) = delete;  // the options point into it
  CommandLine& operator=(const CommandLine&) = delete;

  /// Does what the arguments ask for. Returns the exit status; arguments that make no sense end it by a Failure.
  int run(int argc, char** argv);

  /// Every command with its options.
  const CLI::App& table() const { return app_; }

 private:
  [[noreturn]] void refuseCommand(const std::string& name);
  void addConvert();
  void addManyFiles(CLI::App* command);
  void addDetect();
  void addFormats();

  CLI::App app_{"Convert closed-caption and subtitle files", "mova"};
  ConvertOptions convert_;
  std::vector<std::string> inputs_;
  bool json_ = false;
};

}  // namespace mova::cli
