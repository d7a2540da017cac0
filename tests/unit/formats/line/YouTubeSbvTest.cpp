#include <cmath>

#include "formats/line/YouTubeSbv.h"
#include "unit/formats/Captions.h"

namespace mova {
namespace {

Loaded loaded(const Lines& lines) {
  return load<YouTubeSbv>(lines);
}

/// The times of a line above a text; no caption if it holds none.
Captions timesOf(WStringView line) {
  return loaded({line, u"x"}).captions;
}

TEST(YouTubeSbv, HasItsNames) {
  const YouTubeSbv format;
  EXPECT_EQ(format.Name(), u"YouTube sbv");
  EXPECT_EQ(format.Extension(), u".sbv");
  EXPECT_TRUE(format.ExtraExtensions().empty());
  EXPECT_FALSE(format.SupportsStyles());
}

// --- Writing

TEST(YouTubeSbv, WritesBlocksAndNoLineEndBehindTheLast) {
  EXPECT_EQ(written<YouTubeSbv>({{1, 1000, 2500, u"Hi"}, {2, 3723004, 360000000, u"a\r\nb"}}),
            "0:00:01.000,0:00:02.500\r\nHi\r\n\r\n1:02:03.004,100:00:00.000\r\na\r\nb");
}

TEST(YouTubeSbv, WritesNothingForAnEmptySubtitle) {
  EXPECT_EQ(written<YouTubeSbv>({}), "");
}

TEST(YouTubeSbv, WritesTheSignOfANegativeTimeAtEachField) {
  EXPECT_EQ(written<YouTubeSbv>({{1, -1500, -3661005.9, u"a"}}), "0:00:-1.-500,-1:-1:-1.-05\r\na");
}

TEST(YouTubeSbv, WritesTimesBeyondAllRangesAsTheSmallestInteger) {
  EXPECT_EQ(written<YouTubeSbv>({{1, HUGE_VAL, 0, u"a"}}), "-2562047788015:-12:-55.-808,0:00:00.000\r\na");
}

TEST(YouTubeSbv, WritesATextAsItStandsAndTrimsTheEndOfTheFile) {
  EXPECT_EQ(written<YouTubeSbv>({{1, 0, 1, u" a\r\n\r\nb "}, {2, 0, 1, u"c \r\n"}}),
            "0:00:00.000,0:00:00.001\r\n a\r\n\r\nb \r\n\r\n0:00:00.000,0:00:00.001\r\nc");
}

TEST(YouTubeSbv, EndsATextAtAZeroUnitWhenWriting) {
  EXPECT_EQ(written<YouTubeSbv>({{1, 0, 1, WString(u"a\0b", 3)}, {2, 0, 1, u"c"}}),
            "0:00:00.000,0:00:00.001\r\na\r\n\r\n0:00:00.000,0:00:00.001\r\nc");
}

// --- Times

TEST(YouTubeSbv, ReadsTimes) {
  EXPECT_EQ(timesOf(u"0:00:01.000,0:00:02.000"), (Captions{{1, 1000, 2000, u"x"}}));
  EXPECT_EQ(timesOf(u"1:2:3.4,100:59:59.9999"), (Captions{{1, 3723004, 363608999, u"x"}}));
}

TEST(YouTubeSbv, AcceptsAPointAColonOrACommaBeforeTheMilliseconds) {
  EXPECT_EQ(timesOf(u"0:00:01,000,0:00:02,000"), (Captions{{1, 1000, 2000, u"x"}}));
  EXPECT_EQ(timesOf(u"0:00:01:000,0:00:02.000"), (Captions{{1, 1000, 2000, u"x"}}));
  EXPECT_EQ(timesOf(u"0:00:01;000,0:00:02.000"), Captions{});
}

TEST(YouTubeSbv, AcceptsPointsInPlaceOfColons) {
  EXPECT_EQ(timesOf(u"0.00.01.000,0.00.02.000"), (Captions{{1, 1000, 2000, u"x"}}));
}

TEST(YouTubeSbv, ReadsMisdecodedSeparators) {
  EXPECT_EQ(timesOf(u"0:00:01\u00D8\u0152000\u00D8\u01520:00:02\u00C2\u00A1000"), (Captions{{1, 1000, 2000, u"x"}}));
}

TEST(YouTubeSbv, AppliesASignToItsOwnFieldOnly) {
  EXPECT_EQ(timesOf(u"-1:00:01.000,0:-1:-2.-3"), (Captions{{1, -3599000, -62003, u"x"}}));
  EXPECT_EQ(timesOf(u"-0:00:01.000,0:00:02.000"), (Captions{{1, 1000, 2000, u"x"}}));
}

TEST(YouTubeSbv, AcceptsNoSignBeforeTheHoursOfTheSecondTime) {
  EXPECT_EQ(timesOf(u"0:00:01.000,-0:00:02.000"), Captions{});
}

TEST(YouTubeSbv, AcceptsNothingElseInATimeLine) {
  for (WStringView line :
       {u"0:00:01.000 0:00:02.000", u"0:00:01.000, 0:00:02.000", u" 0:00:01.000,0:00:02.000",
        u"0:00:01.000,0:00:02.000 x", u"0:00:01.000,0:00:02", u"00:01.000,00:02.000", u"0:00:01.000,0:00:02.000.",
        u"0:00:01.000,0:00:02.", u"0:00:01.--1,0:00:02.000", u"0:00:01.,0:00:02.000", u"-", u",", u""}) {
    EXPECT_EQ(timesOf(line), Captions{}) << wideToString(line);
  }
}

TEST(YouTubeSbv, ForgivesBlanksBehindATimeLine) {
  EXPECT_EQ(timesOf(u"0:00:01.000,0:00:02.000 \t\r"), (Captions{{1, 1000, 2000, u"x"}}));
}

TEST(YouTubeSbv, LooksAtALineUpToAZeroUnitForTimes) {
  EXPECT_EQ(timesOf(WStringView(u"0:00:01.000,0:00:02.000\0,9", 26)), (Captions{{1, 1000, 2000, u"x"}}));
}

TEST(YouTubeSbv, WrapsTimesBeyond32Bits) {
  EXPECT_EQ(timesOf(u"99999999999:00:00.000,0:00:00.99999999999"), (Captions{{1, -3600000, 2147483647, u"x"}}));
}

// --- Blocks

TEST(YouTubeSbv, ReadsBlocksAndNumbersThem) {
  EXPECT_EQ(loaded({u"0:00:01.000,0:00:02.000", u"a", u" b ", u"", u"0:00:03.000,0:00:04.000", u"c", u""}),
            (Loaded{{{1, 1000, 2000, u"a\r\n b"}, {2, 3000, 4000, u"c"}}, 0}));
}

TEST(YouTubeSbv, ReadsABlockWithoutABlankLineInFront) {
  EXPECT_EQ(loaded({u"0:00:01.000,0:00:02.000", u"Hi", u"0:00:03.000,0:00:04.000", u"there"}),
            (Loaded{{{1, 1000, 2000, u"Hi"}, {2, 3000, 4000, u"there"}}, 0}));
}

TEST(YouTubeSbv, TakesATimeLineForTextWhereItCannotBeginABlock) {
  // As the last line of a file, where there is no text yet, and with blanks behind it.
  EXPECT_EQ(loaded({u"0:00:01.000,0:00:02.000", u"Hi", u"0:00:03.000,0:00:04.000"}).captions,
            (Captions{{1, 1000, 2000, u"Hi\r\n0:00:03.000,0:00:04.000"}}));
  EXPECT_EQ(loaded({u"0:00:01.000,0:00:02.000", u"0:00:03.000,0:00:04.000", u"there"}).captions,
            (Captions{{1, 1000, 2000, u"0:00:03.000,0:00:04.000\r\nthere"}}));
  EXPECT_EQ(loaded({u"0:00:01.000,0:00:02.000", u"Hi", u"0:00:03.000,0:00:04.000 ", u"there"}).captions,
            (Captions{{1, 1000, 2000, u"Hi\r\n0:00:03.000,0:00:04.000\r\nthere"}}));
}

TEST(YouTubeSbv, CountsASecondBlankLineBetweenBlocksAsAnError) {
  EXPECT_EQ(loaded({u"0:00:01.000,0:00:02.000", u"Hi", u"", u"", u"0:00:03.000,0:00:04.000", u"there"}),
            (Loaded{{{1, 1000, 2000, u"Hi"}, {2, 3000, 4000, u"there"}}, 1}));
}

TEST(YouTubeSbv, CountsEveryLineInFrontOfTheTimesAsAnError) {
  EXPECT_EQ(loaded({u"", u"junk", u" ", u"0:00:01.000,0:00:02.000", u"Hi"}), (Loaded{{{1, 1000, 2000, u"Hi"}}, 3}));
}

TEST(YouTubeSbv, KeepsABlankLineWithinAText) {
  // One blank line is a line break of its own that the end of the reading halves; more of them stay partly.
  EXPECT_EQ(loaded({u"0:00:01.000,0:00:02.000", u"a", u"", u"b", u""}).captions,
            (Captions{{1, 1000, 2000, u"a\r\nb"}}));
  EXPECT_EQ(loaded({u"0:00:01.000,0:00:02.000", u"", u"b", u""}).captions, (Captions{{1, 1000, 2000, u"b"}}));
}

TEST(YouTubeSbv, EndsATextBeforeALineOfDigits) {
  EXPECT_EQ(loaded({u"0:00:01.000,0:00:02.000", u"a", u"", u"12", u"0:00:03.000,0:00:04.000", u"b"}),
            (Loaded{{{1, 1000, 2000, u"a"}, {2, 3000, 4000, u"b"}}, 1}));
  EXPECT_EQ(loaded({u"0:00:01.000,0:00:02.000", u"a", u"12", u""}).captions, (Captions{{1, 1000, 2000, u"a\r\n12"}}));
}

TEST(YouTubeSbv, KeepsABlockWithoutTextUnlessItIsTheLast) {
  EXPECT_EQ(loaded({u"0:00:01.000,0:00:02.000", u"", u"0:00:03.000,0:00:04.000", u"b"}).captions,
            (Captions{{1, 1000, 2000, u""}, {2, 3000, 4000, u"b"}}));
  EXPECT_EQ(loaded({u"0:00:01.000,0:00:02.000"}).captions, Captions{});
  EXPECT_EQ(loaded({u"0:00:01.000,0:00:02.000", u""}).captions, (Captions{{1, 1000, 2000, u""}}));
}

TEST(YouTubeSbv, StartsAfreshAtEveryLoad) {
  YouTubeSbv format;
  Subtitle subtitle;
  format.LoadSubtitle(subtitle, {u"junk", u"0:00:01.000,0:00:02.000", u"a"}, u"");
  format.LoadSubtitle(subtitle, {u"0:00:03.000,0:00:04.000", u"b"}, u"");
  EXPECT_EQ(captionsOf(subtitle), (Captions{{1, 3000, 4000, u"b"}}));
  EXPECT_EQ(format.ErrorCount, 0);
}

// --- Recognising

TEST(YouTubeSbv, RecognizesMoreCaptionsThanErrors) {
  EXPECT_TRUE(recognizes<YouTubeSbv>({u"0:00:01.000,0:00:02.000", u"a"}));
  EXPECT_FALSE(recognizes<YouTubeSbv>({u"junk", u"0:00:01.000,0:00:02.000", u"a"}));
  EXPECT_FALSE(recognizes<YouTubeSbv>({}));
}

TEST(YouTubeSbv, IsRecognizedInAFile) {
  EXPECT_EQ(recognized(std::string(utf8Mark) + "0:00:01.000,0:00:02.000\r\nHi\r\n\r\n0:00:03.000,0:00:04.000\r\nyou"),
            (Recognized{"YouTube sbv", 2}));
  // Without a mark the first times are lost, and the text below them is an error.
  EXPECT_EQ(recognized("0:00:01.000,0:00:02.000\nHi\n\n0:00:03.000,0:00:04.000\na\n\n0:00:05.000,0:00:06.000\nb\n\n"
                       "0:00:07.000,0:00:08.000\nc\n"),
            (Recognized{"YouTube sbv", 3}));
}

TEST(YouTubeSbv, StandsBehindWebVttAndBeforeTheTranscript) {
  EXPECT_EQ(recognized(std::string(utf8Mark) + "0:00:01.000,0:00:02.000\na\n00:01.000 --> 00:02.000\n0:05\n"),
            (Recognized{"WebVTT", 1}));
  EXPECT_EQ(recognized(std::string(utf8Mark) + "0:00:01.000,0:00:02.000\na\n0:05\nb\n"),
            (Recognized{"YouTube sbv", 1}));
}

// --- Hostile input

TEST(YouTubeSbv, ReadsAMillionBlankLinesWithinAText) {
  constexpr size_t count = 1000000;
  WString units = u"0:00:01.000,0:00:02.000a";
  std::vector<size_t> ends{units.size() - 1, units.size()};
  for (size_t i = 0; i < count; ++i) ends.push_back(units.size());
  EXPECT_EQ(loaded(Lines(units, ends)), (Loaded{{{1, 1000, 2000, u"a"}}, static_cast<int32_t>(count - 1)}));
}

TEST(YouTubeSbv, ReadsALongTextInLinearTime) {
  constexpr size_t count = 1000000;
  WString units = u"0:00:01.000,0:00:02.000";
  std::vector<size_t> ends{units.size()};
  for (size_t i = 0; i < count; ++i) ends.push_back((units += u"1:").size());
  const Loaded long_ = loaded(Lines(units, ends));
  ASSERT_EQ(long_.captions.size(), 1u);
  EXPECT_EQ(long_.captions[0].text.size(), count * 4 - 2);
}

}  // namespace
}  // namespace mova
