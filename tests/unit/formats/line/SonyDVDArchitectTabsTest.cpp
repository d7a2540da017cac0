#include <gtest/gtest.h>

#include "formats/line/SonyDVDArchitectTabs.h"
#include "unit/formats/Captions.h"

namespace mova {
namespace {

Loaded loaded(const Lines& lines) {
  return load<SonyDVDArchitectTabs>(lines);
}

TEST(SonyDVDArchitectTabs, HasItsNames) {
  const SonyDVDArchitectTabs format;
  EXPECT_EQ(format.Name(), u"Sony DVD Tabs");
  EXPECT_EQ(format.Extension(), u".sub");
}

TEST(SonyDVDArchitectTabs, WritesThreeLineEndsForAnEmptySubtitle) {
  EXPECT_EQ(written<SonyDVDArchitectTabs>({}), "\r\n\r\n\r\n");
}

TEST(SonyDVDArchitectTabs, WritesTabsBetweenTimesAndText) {
  EXPECT_EQ(written<SonyDVDArchitectTabs>({{1, 1500, 2000, u"<i>Hello</i>\r\nWorld"}, {2, -1500, 90000000, u"b"}}),
            "00:00:01:50\t00:00:02:00\tHello\rWorld\n00:00:-1:-50\t25:00:00:00\tb\r\n\r\n\r\n");
}

TEST(SonyDVDArchitectTabs, ReadsItsOwnLines) {
  EXPECT_EQ(loaded({u"00:00:01:50\t00:00:02:00\tHello|World", u"again"}),
            (Loaded{{{1, 1500, 2000, u"Hello\r\nWorld\r\nagain"}}, 0}));
}

TEST(SonyDVDArchitectTabs, NeedsTwentySevenUnits) {
  EXPECT_EQ(loaded({u"00:00:01:50\t00:00:02:00\tHi"}), (Loaded{{}, 1}));
  EXPECT_EQ(loaded({u"00:00:01:50\t00:00:02:00\tHi!"}), (Loaded{{{1, 1500, 2000, u"Hi!"}}, 0}));
}

TEST(SonyDVDArchitectTabs, NeedsExactlyOneTabBetweenTheTimes) {
  EXPECT_EQ(loaded({u"00:00:01:50 \t 00:00:02:00\tHello"}), (Loaded{{{1, 1500, 2000, u"Hello"}}, 0}));
  EXPECT_EQ(loaded({u"00:00:01:50 00:00:02:00\tHello"}), (Loaded{{}, 1}));     // the fields run together
  EXPECT_EQ(loaded({u"00:00:01:50\t\t00:00:02:00\tHello"}), (Loaded{{}, 1}));  // an empty field between
  EXPECT_EQ(loaded({u"00:00:01:50t00:00:02:00\tHello"}), (Loaded{{}, 1}));     // no time line: the tab is a real one
}

TEST(SonyDVDArchitectTabs, TakesAnyTabsAndBlanksAheadOfTheText) {
  EXPECT_EQ(loaded({u"00:00:01:50\t00:00:02:00 \t\t  \tHello"}), (Loaded{{{1, 1500, 2000, u"Hello"}}, 0}));
  EXPECT_EQ(loaded({u"00:00:01:50\t00:00:02:00    "}), (Loaded{{{1, 1500, 2000, u""}}, 0}));
  EXPECT_EQ(loaded({u"00:00:01:50\t00:00:02:00Hello"}), (Loaded{{}, 1}));
}

TEST(SonyDVDArchitectTabs, ABadTimeLineEndsNoCaption) {
  EXPECT_EQ(loaded({u"00:00:01:50\t00:00:02:00\tHello", u"00:00:03:00\t\t00:00:04:00\tlost", u"World"}),
            (Loaded{{{1, 1500, 2000, u"Hello\r\nWorld"}}, 1}));
}

TEST(SonyDVDArchitectTabs, LeavesAMarkInTheFirstLine) {
  EXPECT_EQ(loaded({u"\u00EF\u00BB\u00BF00:00:01:50\t00:00:02:00\tHello"}), (Loaded{{}, 1}));
}

TEST(SonyDVDArchitectTabs, LimitsACaptionToFiveLines) {
  EXPECT_EQ(loaded({u"00:00:01:50\t00:00:02:00\t1|2", u"3", u"4", u"5", u"6"}),
            (Loaded{{{1, 1500, 2000, u"1\r\n2\r\n3\r\n4\r\n5"}}, 1}));
}

TEST(SonyDVDArchitectTabs, WritesTimesThatNoReaderTakesForNegativeOnes) {
  EXPECT_EQ(loaded({u"00:00:-1:-50\t25:00:00:00\tHello"}), (Loaded{{}, 1}));
}

}  // namespace
}  // namespace mova
