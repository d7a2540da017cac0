#include <gtest/gtest.h>

#include <vector>

#include "cli/Spool.h"

namespace mova::cli {
namespace {

std::vector<std::string> split(const std::string& text, char separator, size_t limit = 100) {
  Spool spool;
  spool.append(text);
  SpoolReader reader(spool);
  std::vector<std::string> parts;
  for (std::string part; reader.readUntil(separator, limit, part);) parts.push_back(part);
  return parts;
}

TEST(SpoolReader, SplitsAtSeparators) {
  EXPECT_EQ(split("a\nb\n", '\n'), (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(split("a\n\nb", '\n'), (std::vector<std::string>{"a", "", "b"}));
  EXPECT_EQ(split(std::string("a\nb\0c\0", 6), '\0'), (std::vector<std::string>{"a\nb", "c"}));
  EXPECT_TRUE(split("", '\n').empty());
}

TEST(SpoolReader, StopsAtTheLimit) {
  EXPECT_EQ(split("abcdef\ng", '\n', 4), (std::vector<std::string>{"abcd", "ef", "g"}));
}

TEST(SpoolReader, PartsGoOnBeyondItsBuffer) {
  const std::string longPart(200'000, 'x');
  EXPECT_EQ(split(longPart + "\n" + longPart, '\n', 1 << 20), (std::vector<std::string>{longPart, longPart}));
}

TEST(SpoolReader, TellsThePlaceOfWhatComesNext) {
  Spool spool;
  for (int i = 0; i < 100'000; ++i) spool.append("1234567890");
  SpoolReader reader(spool);
  char room[10];
  for (uint64_t i = 0; i < 100'000; ++i) {
    ASSERT_EQ(reader.place(), 10 * i);
    ASSERT_TRUE(reader.read(room, sizeof room));
    ASSERT_EQ(std::string(room, sizeof room), "1234567890");
  }
  EXPECT_FALSE(reader.read(room, 1));
}

TEST(Spool, IsReadAnywhereWhileItGrows) {
  Spool spool;
  spool.append("hello");
  char room[4];
  EXPECT_EQ(spool.readAt(1, room, 4), 4u);
  EXPECT_EQ(std::string(room, 4), "ello");
  spool.append(" there");
  EXPECT_EQ(spool.size(), 11u);
  EXPECT_EQ(spool.readAt(9, room, 4), 2u);
}

}  // namespace
}  // namespace mova::cli
