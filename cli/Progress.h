/// How far a run over many files is.
#pragma once

#include <cstdint>
#include <string>

#include "Workers.h"

namespace mova::cli {

struct Tally {
  uint64_t total = 0;
  uint64_t converted = 0;
  uint64_t failed = 0;
  uint64_t skipped = 0;
  uint64_t done() const { return converted + failed + skipped; }
};

/// "8 converted, 1 failed, 2 skipped"; what there is none of is left out, but for the first.
std::string describeTally(const Tally& tally);
/// The bar of a terminal of so many columns.
std::string progressBar(const Tally& tally, double seconds, size_t columns);
/// The same in words.
std::string progressLine(const Tally& tally, double seconds);

enum class ProgressForm {
  kNone,
  kBar,   ///< on a terminal, redrawn in its place
  kLines  ///< a line every few seconds
};

/// Shows progress on standard error.
class Progress {
 public:
  explicit Progress(ProgressForm form);
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress() { hide(); }

  /// When it is to be shown next.
  Clock::time_point due() const { return due_; }
  /// Shows how far it is, if that is due.
  void show(const Tally& tally);
  /// Makes room for another line.
  void hide();

 private:
  ProgressForm form_;
  Clock::time_point begin_ = Clock::now();
  Clock::time_point due_;
  bool isShown_ = false;
};

}  // namespace mova::cli
