#include <gtest/gtest.h>

#include "formats/line/SonyDVDArchitect.h"
#include "unit/formats/Captions.h"

namespace mova {
namespace {

Loaded loaded(const Lines& lines) {
  return load<SonyDVDArchitect>(lines);
}

TEST(SonyDVDArchitect, HasItsNames) {
  const SonyDVDArchitect format;
  EXPECT_EQ(format.Name(), u"Sony DVDArchitect");
  EXPECT_EQ(format.Extension(), u".sub");
  EXPECT_TRUE(format.ExtraExtensions().empty());
  EXPECT_FALSE(format.SupportsStyles());
  EXPECT_TRUE(format.IsTimeBased());
  EXPECT_TRUE(format.IsTextBased());
}

// --- Writing

TEST(SonyDVDArchitect, WritesThreeLineEndsForAnEmptySubtitle) {
  EXPECT_EQ(written<SonyDVDArchitect>({}), "\r\n\r\n\r\n");
}

TEST(SonyDVDArchitect, WritesALineForEachCaptionAndMixedLineEnds) {
  EXPECT_EQ(written<SonyDVDArchitect>({{7, 1500, 2000, u"Hello"}, {7, 3661230, 3662999, u"World"}}),
            "00:00:01:50 - 00:00:02:00  \tHello\n"
            "01:01:01:23 - 01:01:02:99  \tWorld\r\n\r\n\r\n");
}

TEST(SonyDVDArchitect, WritesABareCarriageReturnBetweenTheLinesOfACaption) {
  EXPECT_EQ(written<SonyDVDArchitect>({{1, 0, 1000, u"a\r\nb\nc"}}),
            "00:00:00:00 - 00:00:01:00  \ta\rb\nc\r\n\r\n\r\n");
}

TEST(SonyDVDArchitect, RemovesTags) {
  EXPECT_EQ(written<SonyDVDArchitect>({{1, 0, 1000, u"<i>a</i> <font color=\"#FF0000\">b</font>{\\an8}"}}),
            "00:00:00:00 - 00:00:01:00  \ta <font color=\"#FF0000\">b{\\an8}\r\n\r\n\r\n");
}

TEST(SonyDVDArchitect, TrimsTheEndOfTheLastCaption) {
  EXPECT_EQ(written<SonyDVDArchitect>({{1, 0, 1000, u""}, {2, 0, 1000, u""}}),
            "00:00:00:00 - 00:00:01:00  \t\n00:00:00:00 - 00:00:01:00\r\n\r\n\r\n");
}

TEST(SonyDVDArchitect, CutsHundredthsAndDoesNotWrapHours) {
  EXPECT_EQ(written<SonyDVDArchitect>({{1, 19.9, 90000999.9, u"a"}}), "00:00:00:01 - 25:00:00:99  \ta\r\n\r\n\r\n");
}

TEST(SonyDVDArchitect, WritesTheSignOfANegativeTimeAtEachField) {
  EXPECT_EQ(written<SonyDVDArchitect>({{1, -1500, -3723045, u"a"}}), "00:00:-1:-50 - -1:-2:-3:-4  \ta\r\n\r\n\r\n");
}

TEST(SonyDVDArchitect, EndsATextAtAZeroUnit) {
  EXPECT_EQ(written<SonyDVDArchitect>({{1, 0, 0, WString(u"a\0b", 3)}, {2, 0, 0, u"c"}}),
            "00:00:00:00 - 00:00:00:00  \ta\n00:00:00:00 - 00:00:00:00  \tc\r\n\r\n\r\n");
}

TEST(SonyDVDArchitect, DoesNotSortCaptions) {
  EXPECT_EQ(written<SonyDVDArchitect>({{2, 2000, 1000, u"b"}, {1, 0, 0, u"a"}}),
            "00:00:02:00 - 00:00:01:00  \tb\n00:00:00:00 - 00:00:00:00  \ta\r\n\r\n\r\n");
}

// --- Reading

TEST(SonyDVDArchitect, ReadsABarAsALineBreak) {
  EXPECT_EQ(loaded({u"00:00:01:50 - 00:00:02:00  \tHello|World"}), (Loaded{{{1, 1500, 2000, u"Hello\r\nWorld"}}, 0}));
}

TEST(SonyDVDArchitect, AddsLinesWithoutTimesToTheTextUpToFiveLines) {
  EXPECT_EQ(
      loaded({u"00:00:01:50 - 00:00:02:00  \t1", u"2", u"3", u"4", u"5", u"6", u"00:00:03:00 - 00:00:04:00  \tnext"}),
      (Loaded{{{1, 1500, 2000, u"1\r\n2\r\n3\r\n4\r\n5"}, {2, 3000, 4000, u"next"}}, 1}));
}

TEST(SonyDVDArchitect, CountsTheLinesThatBarsMake) {
  EXPECT_EQ(loaded({u"00:00:01:50 - 00:00:02:00  \t1|2|3|4|5|6", u"7"}),
            (Loaded{{{1, 1500, 2000, u"1\r\n2\r\n3\r\n4\r\n5\r\n6"}}, 1}));
}

TEST(SonyDVDArchitect, KeepsBarsOfFurtherLines) {
  EXPECT_EQ(loaded({u"00:00:01:50 - 00:00:02:00  \ta", u"b|c"}), (Loaded{{{1, 1500, 2000, u"a\r\nb|c"}}, 0}));
}

TEST(SonyDVDArchitect, TrimsTheTextWhenALineIsAdded) {
  EXPECT_EQ(loaded({u"00:00:01:50 - 00:00:02:00  \t | a  ", u" b  "}).captions,
            (Captions{{1, 1500, 2000, u"a  \r\n b"}}));
}

TEST(SonyDVDArchitect, KeepsBlanksBehindATextOfOneLine) {
  EXPECT_EQ(loaded({u"00:00:01:50 - 00:00:02:00 \t a  "}).captions, (Captions{{1, 1500, 2000, u"a  "}}));
}

TEST(SonyDVDArchitect, SkipsBlankLines) {
  EXPECT_EQ(loaded({u"", u" \t", u"00:00:01:50 - 00:00:02:00  \ta", u"", u"\t", u"b"}),
            (Loaded{{{1, 1500, 2000, u"a\r\nb"}}, 0}));
}

TEST(SonyDVDArchitect, CountsLinesAheadOfTheFirstCaption) {
  EXPECT_EQ(loaded({u"Title", u"00:00:01:50 - 00:00:02:00  \ta"}), (Loaded{{{1, 1500, 2000, u"a"}}, 1}));
}

TEST(SonyDVDArchitect, NeedsTwentySevenUnits) {
  EXPECT_EQ(loaded({u"00:00:01:50 - 00:00:02:00"}), (Loaded{{}, 1}));
  EXPECT_EQ(loaded({u"00:00:01:50 - 00:00:02:00 "}), (Loaded{{}, 1}));
  EXPECT_EQ(loaded({u"00:00:01:50 - 00:00:02:00a"}), (Loaded{{}, 1}));
  EXPECT_EQ(loaded({u"00:00:01:50 - 00:00:02:00  "}), (Loaded{{{1, 1500, 2000, u""}}, 0}));
  EXPECT_EQ(loaded({u"00:00:01:50  -  00:00:02:00"}), (Loaded{{{1, 1500, 2000, u""}}, 0}));
}

TEST(SonyDVDArchitect, TakesAnyNumberOfBlanksAroundTheDash) {
  EXPECT_EQ(loaded({u"00:00:01:50     -   00:00:02:00text"}), (Loaded{{{1, 1500, 2000, u"text"}}, 0}));
  EXPECT_EQ(loaded({u"00:00:01:50-00:00:02:00  \ttext"}), (Loaded{{}, 1}));
  EXPECT_EQ(loaded({u"00:00:01:50\t-\t00:00:02:00  \ttext"}), (Loaded{{}, 1}));
}

TEST(SonyDVDArchitect, RefusesABlankAheadOfTheTimes) {
  EXPECT_EQ(loaded({u" 00:00:01:50 - 00:00:02:00  \ta"}), (Loaded{{}, 1}));
}

TEST(SonyDVDArchitect, TakesAMarkOffTheFirstLineOnly) {
  EXPECT_EQ(loaded({u"\u00EF\u00BB\u00BF00:00:01:50 - 00:00:02:00  \ta"}), (Loaded{{{1, 1500, 2000, u"a"}}, 0}));
  EXPECT_EQ(loaded({u"\u00FF\u00FE00:00:01:50 - 00:00:02:00  \ta"}), (Loaded{{{1, 1500, 2000, u"a"}}, 0}));
  EXPECT_EQ(loaded({u"", u"\u00EF\u00BB\u00BF00:00:01:50 - 00:00:02:00  \ta"}), (Loaded{{}, 1}));
}

TEST(SonyDVDArchitect, ReadsTimesAsTheyStand) {
  EXPECT_EQ(loaded({u"99:99:99:99 - 00:00:00:01  \ta"}).captions, (Captions{{1, 362439990, 10, u"a"}}));
}

TEST(SonyDVDArchitect, DoesNotSplitItsOwnCarriageReturns) {
  EXPECT_EQ(loaded({u"00:00:01:50 - 00:00:02:00  \ta\rb"}).captions, (Captions{{1, 1500, 2000, u"a\rb"}}));
}

TEST(SonyDVDArchitect, KeepsWhatTheSubtitleHolds) {
  SonyDVDArchitect format;
  Subtitle subtitle = subtitleOf({{9, 1, 2, u"before"}});
  format.LoadSubtitle(subtitle, {u"00:00:01:50 - 00:00:02:00  \ta"}, u"input");
  EXPECT_EQ(captionsOf(subtitle), (Captions{{1, 1, 2, u"before"}, {2, 1500, 2000, u"a"}}));
}

TEST(SonyDVDArchitect, ReadsLongTextsInNoTime) {
  // Four line breaks at the end of a long text, and a million lines that come too late.
  const WString head = u"00:00:01:50 - 00:00:02:00  \t" + WString(1000000, u'x') + u"|2|3|4|5";
  WString units = head;
  std::vector<size_t> ends = {units.size()};
  for (int i = 0; i < 1000000; ++i) ends.push_back((units += u'y').size());
  const Loaded result = load<SonyDVDArchitect>(Lines(std::move(units), std::move(ends)));
  EXPECT_EQ(result.captions.size(), 1u);
  EXPECT_EQ(result.errors, 1000000);
}

}  // namespace
}  // namespace mova
