#include "Inputs.h"

#include <dirent.h>
#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>
#include <filesystem>
#include <memory>

#include "Failure.h"
#include "Sorting.h"
#include "Text.h"

namespace mova::cli {

namespace {

/// Names of a folder that are sorted at a time.
constexpr size_t kSortMemory = 1 << 22;

size_t beginOfName(const std::string& path) {
  const size_t slash = path.find_last_of('/');
  return slash == std::string::npos ? 0 : slash + 1;
}

bool isFolder(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

using Folder = std::unique_ptr<DIR, int (*)(DIR*)>;

/// Walks through a folder, all the way down.
class FolderWalk {
 public:
  explicit FolderWalk(const InputOptions& options) : names_(kSortMemory) {
    for (const std::string& output : {options.outputFolder, options.report.value_or("")}) {
      struct stat status {};
      if (::stat(output.c_str(), &status) == 0) outputs_.push_back(status);
    }
  }

  void addTo(InputList& list, const std::string& path) {
    const std::string root = path.ends_with('/') ? path : path + '/';
    if (!walk(root, "")) list.add({path, beginOfName(path)});
    names_.forEach([&](const std::string& name) { list.add({root + name, root.size()}); });
  }

 private:
  /// Takes the names of the files below `root`, from `below` on. False if the folder can't be read.
  bool walk(const std::string& root, const std::string& below) {
    const Folder folder(::opendir((root + below).c_str()), ::closedir);
    if (!folder) return false;
    for (;;) {
      errno = 0;
      const dirent* entry = ::readdir(folder.get());
      if (!entry) return errno == 0;
      const std::string_view name = entry->d_name;
      if (name == "." || name == "..") continue;
      const std::string path = below + entry->d_name;
      // A folder that can't be read stands in the list as itself. Links to folders are not followed: they may lead
      // round.
      struct stat status {};
      if (::fstatat(::dirfd(folder.get()), entry->d_name, &status, AT_SYMLINK_NOFOLLOW) != 0) status.st_mode = 0;
      if (isOutput(status)) continue;
      if (!S_ISDIR(status.st_mode) || !walk(root, path + '/')) names_.add(path);
    }
  }

  bool isOutput(const struct stat& status) const {
    return std::any_of(outputs_.begin(), outputs_.end(), [&](const struct stat& output) {
      return status.st_dev == output.st_dev && status.st_ino == output.st_ino;
    });
  }

  NameSorter names_;
  std::vector<struct stat> outputs_;
};

void addInput(InputList& list, const std::string& path, const InputOptions& options) {
  if (path == "-") {
    throw Failure(kUsage, "standard input has no name that an output in --output-dir could get; use --output");
  }
  if (!isFolder(path)) {
    list.add({path, beginOfName(path)});
  } else if (options.recursive) {
    FolderWalk(options).addTo(list, path);
  } else {
    throw Failure(kUsage, fmt::format("{}: is a folder; --recursive takes the files in it", printable(path)));
  }
}

[[noreturn]] void refuseList(const std::string& path) {
  throw Failure(kNoInput, fmt::format("{}: the list can't be read: {}", shownInput(path), std::strerror(errno)));
}

/// Copies the list, and tells whether there is a zero byte in it.
bool spoolNames(const std::string& path, Spool& spool) {
  const FileDescriptor opened(path == "-" ? -1 : ::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (path != "-" && !opened.isOpen()) refuseList(path);
  const int fd = path == "-" ? STDIN_FILENO : opened.get();
  bool hasZero = false;
  std::string buffer(1 << 16, '\0');
  for (;;) {
    const ssize_t count = ::read(fd, buffer.data(), buffer.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) refuseList(path);
    if (count == 0) return hasZero;
    const std::string_view bytes(buffer.data(), static_cast<size_t>(count));
    hasZero = hasZero || bytes.find('\0') != std::string_view::npos;
    spool.append(bytes);
  }
}

void addListed(InputList& list, const std::string& path, const InputOptions& options) {
  Spool names;
  const char separator = spoolNames(path, names) ? '\0' : '\n';
  SpoolReader reader(names);
  for (std::string name; reader.readUntil(separator, PATH_MAX, name);) {
    if (name.size() >= PATH_MAX) {
      throw Failure(kUsage, fmt::format("{}: the list has a name of more than {} bytes: {}...", shownInput(path),
                                        PATH_MAX - 1, printable(name.substr(0, 60))));
    }
    if (!name.empty()) addInput(list, name, options);
  }
}

}  // namespace

std::string InputFile::outputPath(const std::string& folder, const std::string& extension) const {
  const std::filesystem::path kept = path.substr(keptFrom);
  return std::filesystem::path(folder) / kept.parent_path() / kept.stem() += extension;
}

void InputList::add(const InputFile& file) {
  const uint32_t head[] = {static_cast<uint32_t>(file.path.size()), static_cast<uint32_t>(file.keptFrom)};
  spool_.append({reinterpret_cast<const char*>(head), sizeof head});
  spool_.append(file.path);
  ++size_;
}

InputFile InputList::at(uint64_t place) {
  InputReader reader(*this, place);
  return reader.next().value();
}

std::optional<InputFile> InputReader::next() {
  uint32_t head[2];
  if (!reader_.read(reinterpret_cast<char*>(head), sizeof head)) return std::nullopt;
  InputFile file{std::string(head[0], '\0'), head[1]};
  reader_.read(file.path.data(), file.path.size());
  return file;
}

InputList collectInputs(const InputOptions& options) {
  InputList list;
  for (const std::string& input : options.inputs) addInput(list, input, options);
  if (options.filesFrom) addListed(list, *options.filesFrom, options);
  return list;
}

}  // namespace mova::cli
