/// The inputs of a run over many files: files, the files of folders, and lists of names.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Spool.h"

namespace mova::cli {

struct InputFile {
  std::string path;
  /// What of the path is kept below the output folder begins here: its file name, or for a file of a folder that was
  /// named all that is below that folder.
  size_t keptFrom = 0;

  /// Where in the output folder the file goes.
  std::string outputPath(const std::string& folder, const std::string& extension) const;
};

/// A list of any length in order; it takes up no memory.
class InputList {
 public:
  void add(const InputFile& file);
  uint64_t size() const { return size_; }
  /// The file at a place that an InputReader gave.
  InputFile at(uint64_t place);

 private:
  friend class InputReader;
  Spool spool_;
  uint64_t size_ = 0;
};

class InputReader {
 public:
  explicit InputReader(InputList& list, uint64_t begin = 0) : reader_(list.spool_, begin, list.spool_.size()) {}
  uint64_t place() const { return reader_.place(); }
  std::optional<InputFile> next();

 private:
  SpoolReader reader_;
};

struct InputOptions {
  const std::vector<std::string>& inputs;
  const std::optional<std::string>& filesFrom;
  bool recursive;
  const std::string& outputFolder;           ///< not looked into on the way through another
  const std::optional<std::string>& report;  ///< that of an earlier run is no input
};

/// All that the options name, in order; the files of a folder are sorted by their bytes. What can't be read is in the
/// list, too, so that its turn tells why. Throws a Failure with status kUsage for what makes no sense.
InputList collectInputs(const InputOptions& options);

}  // namespace mova::cli
