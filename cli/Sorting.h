/// Sorting of more names than the memory should hold.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Spool.h"

namespace mova::cli {

class NameSorter {
 public:
  /// `memory`: how many bytes of names are sorted at a time.
  explicit NameSorter(size_t memory) : memory_(memory) {}
  void add(std::string_view name);
  /// Hands all names out in the order of their bytes. Call it once.
  void forEach(const std::function<void(const std::string&)>& use);

 private:
  void sortNames();
  void spill();

  size_t memory_;
  size_t bytes_ = 0;
  std::vector<std::string> names_;
  std::optional<Spool> spool_;                       ///< the sorted runs, each name with a zero byte behind it
  std::vector<std::pair<uint64_t, uint64_t>> runs_;  ///< begin and end of each
};

}  // namespace mova::cli
