#include "Clashes.h"

#include <fmt/format.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <tuple>
#include <utility>
#include <vector>

#include "Failure.h"
#include "Files.h"
#include "Text.h"

namespace fs = std::filesystem;

namespace mova::cli {

namespace {

enum class Kind : uint8_t {
  kPlace,  ///< the folder and the name that are written to
  kFile,   ///< the file that is there already
  kInput,  ///< the file that an input is
};

/// What two files may have in common, by its hash. There may be millions of keys.
class Key {
 public:
  Key() = default;
  /// `owner`: whose it is, a place in the list of inputs or kReport.
  Key(Kind kind, uint64_t owner, const std::string& text)
      : hash_(std::hash<std::string>()(text)), tag_(owner << 2 | static_cast<uint64_t>(kind)) {}
  uint64_t hash() const { return hash_; }
  Kind kind() const { return static_cast<Kind>(tag_ & 3); }
  uint64_t owner() const { return tag_ >> 2; }

 private:
  uint64_t hash_ = 0;
  uint64_t tag_ = 0;
};

constexpr uint64_t kReport = (uint64_t{1} << 62) - 1;

/// So many keys are compared at a time.
constexpr size_t kMostKeys = 1 << 17;

std::string identity(const struct stat& status) {
  return fmt::format("{}:{}", status.st_dev, status.st_ino);
}

std::optional<std::string> fileAt(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return std::nullopt;
  return identity(status);
}

/// Names the places that outputs are written to. Folders are told apart as such, not by their names.
class Places {
 public:
  std::string of(const LinkEnd& end) {
    if (const fs::path folder = end.path.parent_path(); folder != folder_ || identity_.empty()) {
      folder_ = folder;
      identity_ = identify(folder);
    }
    return identity_ + '/' + end.path.filename().string();
  }

 private:
  /// A folder that is not there yet is one in the nearest that is.
  static std::string identify(const fs::path& folder) {
    if (const auto file = fileAt(folder.empty() ? "." : folder.string())) return *file;
    if (!folder.has_relative_path()) return folder;
    return identify(folder.parent_path()) + '/' + folder.filename().string();
  }

  fs::path folder_;
  std::string identity_;
};

class ClashCheck {
 public:
  ClashCheck(InputList& inputs, const Outputs& outputs) : inputs_(inputs), outputs_(outputs) {}

  void run() {
    if (outputs_.report) addOutput(kReport, *outputs_.report);
    InputReader reader(inputs_);
    for (uint64_t place = reader.place(); const auto input = reader.next(); place = reader.place()) {
      addOutput(place, outputOf(*input));
    }
    if (isAnyThere_) addInputs();
    compare();
  }

 private:
  std::string outputOf(const InputFile& input) const { return input.outputPath(outputs_.folder, outputs_.extension); }

  void addOutput(uint64_t owner, const std::string& path) {
    const LinkEnd end = followLinks(path);
    addKey(Kind::kPlace, owner, places_.of(end));
    if (end.file) {
      isAnyThere_ = true;
      addKey(Kind::kFile, owner, identity(*end.file));
    }
  }

  void addInputs() {
    InputReader reader(inputs_);
    for (uint64_t place = reader.place(); const auto input = reader.next(); place = reader.place()) {
      if (const auto file = fileAt(input->path)) addKey(Kind::kInput, place, *file);
    }
  }

  void addKey(Kind kind, uint64_t owner, const std::string& text) {
    const Key key(kind, owner, text);
    keys_.append({reinterpret_cast<const char*>(&key), sizeof key});
  }

  /// Keys of the same hash are in the same class, and each class fits into the memory.
  void compare() {
    const uint64_t classes = keys_.size() / sizeof(Key) / (kMostKeys / 2) + 1;
    std::vector<Key> chosen;
    for (uint64_t chosenClass = 0; chosenClass < classes; ++chosenClass) {
      chosen.clear();
      SpoolReader reader(keys_);
      for (Key key; reader.read(reinterpret_cast<char*>(&key), sizeof key);) {
        if (key.hash() % classes != chosenClass) continue;
        chosen.push_back(key);
        if (chosen.size() == kMostKeys) compareAll(chosen);
      }
      compareAll(chosen);
    }
  }

  /// Leaves one key of those that mean the same file: there may be any number of links to it.
  void compareAll(std::vector<Key>& keys) {
    const auto order = [](const Key& key) { return std::tuple(key.hash(), key.kind(), key.owner()); };
    const auto same = [](const Key& a, const Key& b) { return a.hash() == b.hash() && a.kind() == b.kind(); };
    std::sort(keys.begin(), keys.end(), [&](const Key& a, const Key& b) { return order(a) < order(b); });
    for (auto key = keys.begin(); (key = std::adjacent_find(key, keys.end(), same)) != keys.end(); ++key) {
      if (key->kind() == Kind::kPlace) refuseIfSamePlace(key[0].owner(), key[1].owner());
    }
    keys.erase(std::unique(keys.begin(), keys.end(), same), keys.end());
    const auto meet = [](const Key& a, const Key& b) {
      return a.hash() == b.hash() && a.kind() == Kind::kFile && b.kind() == Kind::kInput;
    };
    for (auto key = keys.begin(); (key = std::adjacent_find(key, keys.end(), meet)) != keys.end(); ++key) {
      refuseIfSameFile(key[0].owner(), key[1].owner());
    }
  }

  void refuseIfSamePlace(uint64_t first, uint64_t second) {
    const auto [firstName, firstPath] = describe(first);
    const auto [secondName, secondPath] = describe(second);
    // Else the hash alone is the same.
    if (places_.of(followLinks(firstPath)) != places_.of(followLinks(secondPath))) return;
    throw Failure(kUsage, fmt::format("{} and {} would both be written to {}; convert them into different folders",
                                      firstName, secondName, printable(secondPath)));
  }

  void refuseIfSameFile(uint64_t output, uint64_t input) {
    const auto [name, path] = describe(output);
    const std::string inputPath = inputs_.at(input).path;
    if (fileAt(path) != fileAt(inputPath)) return;
    const std::string what = output == kReport ? name : name + ": the output";
    throw Failure(kUsage, fmt::format("{} {} would replace the input {}; name another place", what, printable(path),
                                      printable(inputPath)));
  }

  /// What the user calls it, and the path that is written.
  std::pair<std::string, std::string> describe(uint64_t owner) {
    if (owner == kReport) return {"the report", *outputs_.report};
    const InputFile input = inputs_.at(owner);
    return {printable(input.path), outputOf(input)};
  }

  InputList& inputs_;
  const Outputs& outputs_;
  Places places_;
  Spool keys_;
  bool isAnyThere_ = false;
};

}  // namespace

void refuseClashes(InputList& inputs, const Outputs& outputs) {
  ClashCheck(inputs, outputs).run();
}

}  // namespace mova::cli
