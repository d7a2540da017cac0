// The command `mova`.
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <exception>
#include <iostream>

#include "CommandLine.h"
#include "Failure.h"
#include "Heap.h"
#include "Text.h"

using namespace mova::cli;

namespace {

/// The number of a standard stream that is closed stays one that can't be read or written: the next file to be opened
/// would get it otherwise.
void reserveStandardStreams() {
  int fd = 0;
  do {
    fd = ::open("/", O_PATH | O_CLOEXEC);
  } while (fd >= 0 && fd <= STDERR_FILENO);
  if (fd >= 0) ::close(fd);
}

}  // namespace

int main(int argc, char** argv) {
  prepareHeap();
  reserveStandardStreams();
  // Beyond a size limit a write is to fail, so that the command can tell of it.
  std::signal(SIGXFSZ, SIG_IGN);
  int status = 0;
  try {
    status = CommandLine().run(argc, argv);
  } catch (const Failure& failure) {
    printMessage(failure.what());
    status = failure.status;
  } catch (const std::exception& exception) {
    printMessage(exception.what());
    status = kSoftware;
  }
  std::cout.flush();
  if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
    const int error = standardOutputError() != 0 ? standardOutputError() : errno;
    printMessage(std::string("standard output can't be written: ") + std::strerror(error));
    status = std::max(status, static_cast<int>(kCantCreate));
  }
  return status;
}
