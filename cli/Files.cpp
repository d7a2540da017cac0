#include "Files.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <utility>

#include "Failure.h"
#include "FileDescriptor.h"
#include "Text.h"
#include "api/Output.h"

namespace fs = std::filesystem;

namespace mova::cli {

namespace {

/// The library opens paths whose UTF-8 form is shorter than this.
constexpr size_t kLongestPath = 260;

constexpr std::string_view kStandardOutput = "/dev/stdout";

/// No caption file comes near it, and a pipe that never ends is to be noticed before the memory is full.
constexpr size_t kLongestStandardInput = size_t{1} << 30;

/// See noteTemporaryFile().
char* temporaryNote = nullptr;

/// Notes names of temporary files; at its end there is none.
class TemporaryNote {
 public:
  TemporaryNote() = default;
  TemporaryNote(const TemporaryNote&) = delete;
  TemporaryNote& operator=(const TemporaryNote&) = delete;
  ~TemporaryNote() { set(""); }
  void set(const std::string& name) {
    if (temporaryNote && name.size() < PATH_MAX) std::memcpy(temporaryNote, name.c_str(), name.size() + 1);
  }
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
  throw Failure(kNoInput, fmt::format("{}: {}", shownInput(path), reason));
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

/// Copies what is left of a stream.
void copyAll(int from, int to) {
  std::string buffer(1 << 16, '\0');
  for (size_t total = 0;;) {
    const ssize_t count = ::read(from, buffer.data(), buffer.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) refuseInput("-", "can't be read: " + lastError());
    if (count == 0) return;
    total += static_cast<size_t>(count);
    if (total > kLongestStandardInput) refuseInput("-", "is longer than 1 GiB; no caption file is");
    if (!writeAll(to, {buffer.data(), static_cast<size_t>(count)})) refuseInput("-", "can't be kept: " + lastError());
  }
}

/// Puts a file in memory in place of standard input: the library reads a file more than once.
Input takeStandardInput() {
  struct stat original {};
  if (::fstat(STDIN_FILENO, &original) != 0) refuseInput("-", "can't be read: " + lastError());
  const FileDescriptor copy(::memfd_create("mova", MFD_CLOEXEC));
  if (!copy.isOpen()) refuseInput("-", "can't be kept: " + lastError());
  copyAll(STDIN_FILENO, copy.get());
  ::dup2(copy.get(), STDIN_FILENO);
  Input input{"/dev/stdin", {}};
  ::fstat(copy.get(), &input.file);
  input.file.st_dev = original.st_dev;  // It is still the file that a redirection named.
  input.file.st_ino = original.st_ino;
  return input;
}

/// Creates a file of a new name in the directory of `path`. It gets the rights that a new file has there.
std::pair<int, std::string> createBeside(const fs::path& path, TemporaryNote& note) {
  for (int attempt = 0;; ++attempt) {
    std::string name = path.parent_path() / fmt::format(".mova-{}-{}", getpid(), attempt);
    note.set(name);
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

Input openInput(const std::string& path) {
  if (path == "-") return takeStandardInput();
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
  return {path, status};
}

Destination chooseDestination(const Input& input, const std::string& output, const Format& target) {
  if (output == "-") return {std::string(kStandardOutput), true};
  const fs::path stem = fs::path(input.path).stem();
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
  path = fs::path(input.path).parent_path() / stem;
  struct stat beside {};
  const bool isInput = ::stat((path.string() + target.extension).c_str(), &beside) == 0 && sameFile(beside, input.file);
  if (isInput) path += ".converted";
  return {path += target.extension};
}

void refuseInputAsOutput(const std::string& path, const std::string& name, const Input& input) {
  struct stat existing {};
  if (::stat(path.c_str(), &existing) != 0 || !sameFile(existing, input.file)) return;
  const std::string what = path == name ? "" : fmt::format(" ({})", printable(path));
  throw Failure(kUsage, fmt::format("{}: the output{} would replace the input; name another with --output",
                                    shownInput(name), what));
}

LinkEnd followLinks(fs::path path) {
  for (int links = 0;; ++links) {
    struct stat file {};
    if (::lstat(path.c_str(), &file) != 0) return {path, std::nullopt};
    if (!S_ISLNK(file.st_mode)) return {path, file};
    if (links == 40) refuseOutput(path, "too many levels of symbolic links");
    std::error_code error;
    path = path.parent_path() / fs::read_symlink(path, error);
  }
}

void writeFile(const std::string& name, std::u16string_view text) {
  const auto [path, existing] = followLinks(name);
  if (existing && S_ISDIR(existing->st_mode)) refuseOutput(name, "is a directory");
  if (existing && !S_ISREG(existing->st_mode)) refuseOutput(name, "is not a file");
  if (existing && ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0) refuseOutput(name, lastError());

  const SignalsHeld held;
  TemporaryNote note;
  auto [fd, temporary] = createBeside(path, note);
  if (fd < 0) refuseOutput(name, errno == ENOENT ? "there is no such directory" : lastError());
  FileDescriptor file(fd);
  if (existing) copyRights(fd, *existing);
  if (!writeUtf8(fd, text) || !file.close() || std::rename(temporary.c_str(), path.c_str()) != 0) {
    const std::string reason = lastError();
    ::unlink(temporary.c_str());
    refuseOutput(name, reason);
  }
}

void noteTemporaryFile(char* note) {
  temporaryNote = note;
}

void makeFoldersFor(const std::string& path) {
  const fs::path folder = fs::path(path).parent_path();
  std::error_code error;
  if (folder.empty() || fs::is_directory(folder, error)) return;
  fs::create_directories(folder, error);
  if (error) refuseOutput(path, error.message());
}

void writeStream(const std::string& path, std::u16string_view text) {
  // Opened anew, a file that standard output is redirected to would be written from its start again.
  FileDescriptor stream(path == kStandardOutput ? ::dup(STDOUT_FILENO) : ::open(path.c_str(), O_WRONLY | O_CLOEXEC));
  if (!stream.isOpen() || !writeUtf8(stream.get(), text) || !stream.close()) refuseOutput(path, lastError());
}

}  // namespace mova::cli
