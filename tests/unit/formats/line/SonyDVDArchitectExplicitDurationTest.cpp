#include <gtest/gtest.h>

#include "formats/line/SonyDVDArchitectExplicitDuration.h"
#include "unit/formats/Captions.h"

namespace mova {
namespace {

Loaded loaded(const Lines& lines) {
  return load<SonyDVDArchitectExplicitDuration>(lines);
}

TEST(SonyDVDArchitectExplicitDuration, HasItsNames) {
  const SonyDVDArchitectExplicitDuration format;
  EXPECT_EQ(format.Name(), u"Sony DVD Exp dur");
  EXPECT_EQ(format.Extension(), u".sub");
}

TEST(SonyDVDArchitectExplicitDuration, WritesThreeLineEndsForAnEmptySubtitle) {
  EXPECT_EQ(written<SonyDVDArchitectExplicitDuration>({}), "\r\n\r\n\r\n");
}

TEST(SonyDVDArchitectExplicitDuration, WritesStartEndAndDuration) {
  EXPECT_EQ(
      written<SonyDVDArchitectExplicitDuration>({{1, 1500, 2005, u"<b>Hello</b>\r\nWorld"}, {2, 3000, 90003001, u"b"}}),
      "00:00:01.500\t00:00:02.005\t00:00:00.505\tHello\rWorld\n"
      "00:00:03.000\t25:00:03.001\t25:00:00.001\tb\r\n\r\n\r\n");
}

TEST(SonyDVDArchitectExplicitDuration, WritesANegativeDuration) {
  EXPECT_EQ(written<SonyDVDArchitectExplicitDuration>({{1, 2500, 1000, u"a"}}),
            "00:00:02.500\t00:00:01.000\t00:00:-1.-500\ta\r\n\r\n\r\n");
}

TEST(SonyDVDArchitectExplicitDuration, CutsTheDurationOfTheUncutTimes) {
  EXPECT_EQ(written<SonyDVDArchitectExplicitDuration>({{1, 0.6, 1000.5, u"a"}}),
            "00:00:00.000\t00:00:01.000\t00:00:00.999\ta\r\n\r\n\r\n");
}

TEST(SonyDVDArchitectExplicitDuration, ReadsItsOwnLines) {
  EXPECT_EQ(loaded({u"00:00:01.500\t00:00:02.005\t00:00:00.505\tHello|World", u"again"}),
            (Loaded{{{1, 1500, 2005, u"Hello\r\nWorld\r\nagain"}}, 0}));
}

TEST(SonyDVDArchitectExplicitDuration, TheEndCountsAndNotTheDuration) {
  EXPECT_EQ(loaded({u"00:00:01.500\t00:00:02.005\t00:00:09.999\tHello"}), (Loaded{{{1, 1500, 2005, u"Hello"}}, 0}));
}

TEST(SonyDVDArchitectExplicitDuration, CountsTheTabsOfBothGapsTogether) {
  // Two tabs, then none: the empty field takes the place of the end's hours, and the rest moves on by one.
  EXPECT_EQ(loaded({u"00:00:01.500\t\t01:02:03.004 00:00:01.000\tHello"}), (Loaded{{{1, 1500, 62003, u"Hello"}}, 0}));
  // None, then two: the start's milliseconds are 500 and 01 run together.
  EXPECT_EQ(loaded({u"00:00:01.500 01:02:03.004\t\t00:00:01.000\tHello"}),
            (Loaded{{{1, 51001, 7384000, u"Hello"}}, 0}));
}

TEST(SonyDVDArchitectExplicitDuration, NeedsTwoTabsBetweenTheTimes) {
  EXPECT_EQ(loaded({u"00:00:01.500 00:00:02.005 00:00:00.505 Hello"}), (Loaded{{}, 1}));
  EXPECT_EQ(loaded({u"00:00:01.500\t00:00:02.005 00:00:00.505\tHello"}), (Loaded{{}, 1}));
  EXPECT_EQ(loaded({u"00:00:01.500\t\t00:00:02.005\t00:00:00.505\tHello"}), (Loaded{{}, 1}));
  EXPECT_EQ(loaded({u"00:00:01.500 \t 00:00:02.005 \t 00:00:00.505 \t\t Hello"}),
            (Loaded{{{1, 1500, 2005, u"Hello"}}, 0}));
}

TEST(SonyDVDArchitectExplicitDuration, TakesADotOnlyAheadOfTheMilliseconds) {
  EXPECT_EQ(loaded({u"00:00:01:500\t00:00:02:005\t00:00:00:505\tHello"}), (Loaded{{}, 1}));
  EXPECT_EQ(loaded({u"00:00:01,500\t00:00:02,005\t00:00:00,505\tHello"}), (Loaded{{}, 1}));
}

TEST(SonyDVDArchitectExplicitDuration, TakesNoTextAsLongAsAGapFollowsTheTimes) {
  EXPECT_EQ(loaded({u"00:00:01.500\t00:00:02.005\t00:00:00.505\t"}), (Loaded{{{1, 1500, 2005, u""}}, 0}));
  EXPECT_EQ(loaded({u"00:00:01.500\t00:00:02.005\t00:00:00.505"}), (Loaded{{}, 1}));
}

TEST(SonyDVDArchitectExplicitDuration, TakesAMarkOffTheFirstLine) {
  EXPECT_EQ(loaded({u"\u00EF\u00BB\u00BF00:00:01.500\t00:00:02.005\t00:00:00.505\tHello"}),
            (Loaded{{{1, 1500, 2005, u"Hello"}}, 0}));
}

}  // namespace
}  // namespace mova
