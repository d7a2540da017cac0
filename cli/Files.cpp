#include "Files.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <utility>

#include "Failure.h"
#include "Text.h"

namespace fs = std::filesystem;

namespace mova::cli {

namespace {

/// The library opens paths whose UTF-8 form is shorter than this.
constexpr size_t kLongestPath = 260;

constexpr std::string_view kStandardOutput = "/dev/stdout";

class FileDescriptor {
 public:
  explicit FileDescriptor(int fd) : fd_(fd) {}
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  ~FileDescriptor() {
    if (fd_ >= 0) ::close(fd_);
  }
  bool isOpen() const { return fd_ >= 0; }
  int get() const { return fd_; }
  /// Some file systems tell only here that bytes were lost.
  bool close() { return ::close(std::exchange(fd_, -1)) == 0; }

 private:
  int fd_;
};

/// Keeps the usual signals waiting, so that an interrupted command leaves no temporary file behind.
class SignalsHeld {
 public:
  SignalsHeld() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&signals, signal);
    sigprocmask(SIG_BLOCK, &signals, &before_);
  }
  SignalsHeld(const SignalsHeld&) = delete;
  SignalsHeld& operator=(const SignalsHeld&) = delete;
  ~SignalsHeld() { sigprocmask(SIG_SETMASK, &before_, nullptr); }

 private:
  sigset_t before_;
};

[[noreturn]] void refuseInput(const std::string& path, const std::string& reason) {
  throw Failure(kNoInput, fmt::format("{}: {}", printable(path), reason));
}

[[noreturn]] void refuseOutput(const std::string& path, const std::string& reason) {
  throw Failure(kCantCreate, fmt::format("{}: can't be written: {}", printable(path), reason));
}

std::string lastError() {
  return std::strerror(errno);
}

bool sameFile(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

/// Writes all bytes; false leaves the reason in errno.
bool writeAll(int fd, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(fd, bytes.data(), bytes.size());
    if (written < 0 && errno != EINTR) return false;
    if (written > 0) bytes.remove_prefix(static_cast<size_t>(written));
  }
  return true;
}

/// The file that a chain of links ends at, whether it exists or not; so an output that is a link stays one.
fs::path followLinks(fs::path path) {
  std::error_code error;
  for (int links = 0; fs::is_symlink(fs::symlink_status(path, error)); ++links) {
    if (links == 40) refuseOutput(path, "too many levels of symbolic links");
    path = path.parent_path() / fs::read_symlink(path, error);
  }
  return path;
}

/// Creates a file of a new name in the directory of `path`. It gets the rights that a new file has there.
std::pair<int, std::string> createBeside(const fs::path& path) {
  for (int attempt = 0;; ++attempt) {
    std::string name = path.parent_path() / fmt::format(".mova-{}-{}", getpid(), attempt);
    const int fd = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (fd >= 0 || errno != EEXIST) return {fd, std::move(name)};
  }
}

/// As cp does for a file that it replaces. A file of another owner may become ours: only root can give files away.
void copyRights(int fd, const struct stat& from) {
  if (::fchown(fd, from.st_uid, from.st_gid) != 0) {
    [[maybe_unused]] const int ownerStays = ::fchown(fd, static_cast<uid_t>(-1), from.st_gid);
  }
  ::fchmod(fd, from.st_mode & 07777);
}

}  // namespace

struct stat checkInput(const std::string& path) {
  if (path.empty()) throw Failure(kNoInput, "the name of the input is empty");
  if (!toUtf16(path)) refuseInput(path, "the name is not UTF-8; rename the file or link to it by another name");
  if (path.size() >= kLongestPath) {
    refuseInput(path, fmt::format("the path has {} bytes, and at most {} can be opened; go into its folder and name it "
                                  "from there, or link to it by a shorter path",
                                  path.size(), kLongestPath - 1));
  }
  // Not blocking: a pipe without a writer must not hold the command up.
  const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  struct stat status {};
  if (!file.isOpen() || ::fstat(file.get(), &status) != 0) refuseInput(path, "can't be opened: " + lastError());
  if (S_ISDIR(status.st_mode)) refuseInput(path, "is a directory; name a caption file in it");
  if (!S_ISREG(status.st_mode)) refuseInput(path, "is a device or a pipe; save its content to a file first");
  return status;
}

Destination chooseDestination(const std::string& input, const struct stat& inputFile, const std::string& output,
                              const Format& target) {
  const fs::path stem = fs::path(input).stem();
  fs::path path = output;
  struct stat existing {};
  const bool exists = !output.empty() && ::stat(output.c_str(), &existing) == 0;

  if (output == kStandardOutput || (exists && (S_ISCHR(existing.st_mode) || S_ISFIFO(existing.st_mode)))) {
    return {output, true};
  }
  if (exists && S_ISDIR(existing.st_mode)) return {path / stem += target.extension};
  if (!output.empty()) {
    if (!path.has_filename()) refuseOutput(output, "there is no such directory");
    // The library looks for the extension in the whole path: with one of the name's own it never finds a dot of a
    // directory instead.
    if (!path.has_extension()) path += target.extension;
    return {path};
  }
  path = fs::path(input).parent_path() / stem;
  struct stat beside {};
  const bool isInput = ::stat((path.string() + target.extension).c_str(), &beside) == 0 && sameFile(beside, inputFile);
  if (isInput) path += ".converted";
  return {path += target.extension};
}

void refuseInputAsOutput(const std::string& path, const std::string& input, const struct stat& inputFile) {
  struct stat existing {};
  if (::stat(path.c_str(), &existing) != 0 || !sameFile(existing, inputFile)) return;
  const std::string what = path == input ? "" : fmt::format(" ({})", printable(path));
  throw Failure(kUsage, fmt::format("{}: the output{} would replace the input; name another with --output",
                                    printable(input), what));
}

void writeFile(const std::string& name, std::string_view bytes) {
  const fs::path path = followLinks(name);
  struct stat existing {};
  const bool exists = ::stat(path.c_str(), &existing) == 0;
  if (exists && S_ISDIR(existing.st_mode)) refuseOutput(name, "is a directory");
  if (exists && !S_ISREG(existing.st_mode)) refuseOutput(name, "is not a file");
  if (exists && ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0) refuseOutput(name, lastError());

  const SignalsHeld held;
  auto [fd, temporary] = createBeside(path);
  if (fd < 0) refuseOutput(name, errno == ENOENT ? "there is no such directory" : lastError());
  FileDescriptor file(fd);
  if (exists) copyRights(fd, existing);
  if (!writeAll(fd, bytes) || !file.close() || std::rename(temporary.c_str(), path.c_str()) != 0) {
    const std::string reason = lastError();
    ::unlink(temporary.c_str());
    refuseOutput(name, reason);
  }
}

void writeStream(const std::string& path, std::string_view bytes) {
  // Opened anew, a file that standard output is redirected to would be written from its start again.
  FileDescriptor stream(path == kStandardOutput ? ::dup(STDOUT_FILENO) : ::open(path.c_str(), O_WRONLY | O_CLOEXEC));
  if (!stream.isOpen() || !writeAll(stream.get(), bytes) || !stream.close()) refuseOutput(path, lastError());
}

}  // namespace mova::cli
