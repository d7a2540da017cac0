#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string>

#include "api/Output.h"

namespace mova {
namespace {

std::string written(WStringView text) {
  std::FILE* file = std::tmpfile();
  EXPECT_TRUE(writeUtf8(fileno(file), text));
  std::string bytes(static_cast<size_t>(lseek(fileno(file), 0, SEEK_END)), '\0');
  EXPECT_EQ(pread(fileno(file), bytes.data(), bytes.size(), 0), static_cast<ssize_t>(bytes.size()));
  std::fclose(file);
  return bytes;
}

TEST(WriteUtf8, WritesNothingOfAnEmptyText) {
  EXPECT_EQ(written(u""), "");
}

TEST(WriteUtf8, WritesCharactersOfAllLengths) {
  EXPECT_EQ(written(u"a\u00e9\u20ac\U0001F600"), "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
}

TEST(WriteUtf8, KeepsAPairOfSurrogatesTogetherWhereverItStands) {
  // Around the ends of the pieces, which are powers of two.
  for (size_t end : {4096, 8192, 16384, 32768, 65536, 131072}) {
    for (size_t before : {end - 2, end - 1, end}) {
      EXPECT_EQ(written(WString(before, u'a') + u"\U0001F600z"), std::string(before, 'a') + "\xF0\x9F\x98\x80z")
          << before;
    }
  }
}

TEST(WriteUtf8, ReplacesLoneSurrogatesWhereverTheyStand) {
  const WString lead(1, char16_t{0xD83D});
  for (size_t before : {size_t{0}, size_t{65534}, size_t{65535}, size_t{65536}}) {
    const WString text(before, u'a');
    const std::string bytes(before, 'a');
    EXPECT_EQ(written(text + lead), bytes + "\xEF\xBF\xBD") << before;
    EXPECT_EQ(written(text + lead + u"z"), bytes + "\xEF\xBF\xBDz") << before;
    EXPECT_EQ(written(text + lead + lead + u"\xDE00"), bytes + "\xEF\xBF\xBD\xF0\x9F\x98\x80") << before;
  }
}

TEST(WriteUtf8, TellsWhyItFailed) {
  const int full = open("/dev/full", O_WRONLY | O_CLOEXEC);
  ASSERT_GE(full, 0);
  errno = 0;
  EXPECT_FALSE(writeUtf8(full, u"a"));
  EXPECT_EQ(errno, ENOSPC);
  close(full);
}

}  // namespace
}  // namespace mova
