// Converts files one after the other in this process: mova_one_process FOLDER FORMAT INPUT...
// What `mova convert INPUT... --output-dir FOLDER` does, without worker processes.
#include <cstdio>
#include <filesystem>

#include "cli/Heap.h"
#include "cli/Job.h"

using namespace mova::cli;

int main(int argc, char** argv) {
  if (argc < 3) return 64;
  prepareHeap();
  const std::filesystem::path folder = argv[1];
  const Format& target = findFormat(argv[2]);
  const MOVASettings settings = getDefaultSettings();
  for (int i = 3; i < argc; ++i) {
    const std::filesystem::path name = std::filesystem::path(argv[i]).stem();
    const Outcome outcome = convertTo((folder / name += target.extension), argv[i], target, settings);
    if (outcome.status == 0) continue;
    std::fprintf(stderr, "%s\n", outcome.message.c_str());
    return outcome.status;
  }
}
