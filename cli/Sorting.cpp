#include "Sorting.h"

#include <algorithm>
#include <limits>
#include <queue>

namespace mova::cli {

namespace {

constexpr size_t kAnyLength = std::numeric_limits<size_t>::max();

/// A run that is merged, with its first name.
struct Run {
  SpoolReader reader;
  std::string name;
  bool next() { return reader.readUntil('\0', kAnyLength, name); }
};

}  // namespace

void NameSorter::add(std::string_view name) {
  names_.emplace_back(name);
  bytes_ += name.size() + sizeof(std::string);
  if (bytes_ >= memory_) spill();
}

void NameSorter::sortNames() {
  std::sort(names_.begin(), names_.end());
}

void NameSorter::spill() {
  sortNames();
  if (!spool_) spool_.emplace();
  const uint64_t begin = spool_->size();
  for (std::string& name : names_) spool_->append(name += '\0');
  runs_.emplace_back(begin, spool_->size());
  names_.clear();
  bytes_ = 0;
}

void NameSorter::forEach(const std::function<void(const std::string&)>& use) {
  if (runs_.empty()) {
    sortNames();
    for (const std::string& name : names_) use(name);
    return;
  }
  spill();
  std::vector<Run> runs;
  for (const auto& [begin, end] : runs_) {
    if (Run run{{*spool_, begin, end}, {}}; run.next()) runs.push_back(std::move(run));
  }
  const auto later = [](const Run* a, const Run* b) { return a->name > b->name; };
  std::priority_queue<Run*, std::vector<Run*>, decltype(later)> queue(later);
  for (Run& run : runs) queue.push(&run);
  while (!queue.empty()) {
    Run* first = queue.top();
    queue.pop();
    use(first->name);
    if (first->next()) queue.push(first);
  }
}

}  // namespace mova::cli
