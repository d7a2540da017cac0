#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "cli/Sorting.h"

namespace mova::cli {
namespace {

std::vector<std::string> sorted(const std::vector<std::string>& names, size_t memory) {
  NameSorter sorter(memory);
  for (const std::string& name : names) sorter.add(name);
  std::vector<std::string> result;
  sorter.forEach([&](const std::string& name) { result.push_back(name); });
  return result;
}

TEST(NameSorter, SortsByBytes) {
  EXPECT_EQ(sorted({"b", "a\xFF", "a", "B", "a/b", "a.b", ""}, 1 << 20),
            (std::vector<std::string>{"", "B", "a", "a.b", "a/b", "a\xFF", "b"}));
}

TEST(NameSorter, NothingIsNothing) {
  EXPECT_TRUE(sorted({}, 1 << 20).empty());
}

TEST(NameSorter, TheMemoryChangesNothing) {
  std::mt19937 random(1);
  std::vector<std::string> names;
  for (int i = 0; i < 5000; ++i) names.push_back(std::string(random() % 40, 'x') + std::to_string(random() % 1000));
  std::vector<std::string> expected = names;
  std::sort(expected.begin(), expected.end());
  for (const size_t memory : {1, 100, 5000, 1 << 16, 1 << 24}) EXPECT_EQ(sorted(names, memory), expected) << memory;
}

}  // namespace
}  // namespace mova::cli
