#include <gtest/gtest.h>

#include "formats/line/ClockLines.h"

namespace mova {
namespace {

TEST(ClockLines, AreFoundByTheirColonsAndLength) {
  EXPECT_TRUE(holdClockLines({u"x", u"00:00:01:00 00:00:02:00"}));
  EXPECT_TRUE(holdClockLines({u" \t00:00:01:00 00:00:02:00"}));
  EXPECT_TRUE(holdClockLines({u"00:00:01.000 00:00:02.000 00:00:01.000 x"}));
  EXPECT_TRUE(holdClockLines({u"00:00:01:00\t00:00:02:00\tx"}));
  EXPECT_FALSE(holdClockLines({u"00:00:01,000 --> 00:00:02,000"}));
  EXPECT_FALSE(holdClockLines({u"00:00:01:000 --> 00:00:02:000"}));
  EXPECT_FALSE(holdClockLines({u"00:00:01:00 00:00:02:0"}));
  EXPECT_FALSE(holdClockLines({}));
}

TEST(ClockLines, AreFoundBehindAMarkInTheFirstLine) {
  EXPECT_TRUE(
      holdClockLines({u"\u00EF\u00BB\u00BF"
                      u"00:00:01:00 - 00:00:02:00  \tx"}));
}

}  // namespace
}  // namespace mova
