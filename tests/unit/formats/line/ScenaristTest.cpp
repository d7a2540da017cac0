#include <gtest/gtest.h>

#include <limits>

#include "formats/line/Scenarist.h"
#include "unit/formats/Captions.h"

namespace mova {
namespace {

Loaded loaded(const Lines& lines, double frameRate = 25) {
  const FrameRateScope rate(frameRate);
  return load<Scenarist>(lines);
}

std::string writtenAt(double frameRate, const Captions& captions) {
  const FrameRateScope rate(frameRate);
  return written<Scenarist>(captions);
}

TEST(Scenarist, HasItsNames) {
  const Scenarist format;
  EXPECT_EQ(format.Name(), u"Scenarist");
  EXPECT_EQ(format.Extension(), u".txt");
  EXPECT_TRUE(format.ExtraExtensions().empty());
  EXPECT_FALSE(format.SupportsStyles());
  EXPECT_TRUE(format.IsTimeBased());
  EXPECT_TRUE(format.IsTextBased());
}

// --- Writing

TEST(Scenarist, WritesNothingForAnEmptySubtitle) {
  EXPECT_EQ(writtenAt(25, {}), "");
}

TEST(Scenarist, WritesALineForEachCaption) {
  EXPECT_EQ(writtenAt(25, {{7, 1000, 3480, u"First line\r\nSecond line"}, {7, 90000000, 0, u"<i>b</i>"}}),
            "0001\t00:00:01:00\t00:00:03:12\tFirst line\tSecond line\n"
            "0002\t25:00:00:00\t00:00:00:00\tb\n");
}

TEST(Scenarist, WritesNumbersBeyondFourDigits) {
  EXPECT_TRUE(writtenAt(25, Captions(10000, {0, 0, 0, u"a"})).ends_with("\n10000\t00:00:00:00\t00:00:00:00\ta\n"));
}

TEST(Scenarist, KeepsSingleLineFeeds) {
  EXPECT_EQ(writtenAt(25, {{1, 0, 0, u"a\nb\rc\r\n"}}), "0001\t00:00:00:00\t00:00:00:00\ta\nb\rc\t\n");
}

TEST(Scenarist, WritesFrames) {
  EXPECT_EQ(writtenAt(29.97, {{1, 999, 1000, u"a"}}), "0001\t00:00:00:29\t00:00:01:00\ta\n");
}

TEST(Scenarist, WritesTheSignOfANegativeTimeAtEachField) {
  EXPECT_EQ(writtenAt(25, {{1, -1500, -3723480, u"a"}}), "0001\t00:00:-1:-12\t-1:-2:-3:-12\ta\n");
}

TEST(Scenarist, EndsATextAtAZeroUnit) {
  EXPECT_EQ(writtenAt(25, {{1, 0, 0, WString(u"a\0b", 3)}}), "0001\t00:00:00:00\t00:00:00:00\ta\n");
}

TEST(Scenarist, WritesAtStrangeRates) {
  EXPECT_EQ(writtenAt(0, {{1, 500, 1000, u"a"}}), "0001\t00:00:00:00\t00:00:01:00\ta\n");
  EXPECT_EQ(writtenAt(-25, {{1, 500, 1000, u"a"}}), "0001\t00:00:00:-12\t00:00:01:00\ta\n");
  EXPECT_EQ(writtenAt(0.001, {{1, 500, 1000, u"a"}}), "0001\t00:00:00:00\t00:00:01:00\ta\n");
  EXPECT_EQ(writtenAt(1e9, {{1, 500, 1000, u"a"}}), "0001\t00:00:00:999999999\t00:00:01:00\ta\n");
  EXPECT_EQ(writtenAt(std::numeric_limits<double>::quiet_NaN(), {{1, 500, 1000, u"a"}}),
            "0001\t00:00:00:01\t00:00:01:01\ta\n");
}

// --- Reading

TEST(Scenarist, ReadsTabsInTheTextAsLineBreaks) {
  EXPECT_EQ(loaded({u"0001\t00:00:01:00\t00:00:03:12\tFirst line\tSecond line"}),
            (Loaded{{{1, 1000, 3480, u"First line\r\nSecond line"}}, 0}));
}

TEST(Scenarist, KeepsEveryTabWithinTheText) {
  EXPECT_EQ(loaded({u"0001\t00:00:01:00\t00:00:03:12\t\t a\t\tb \t"}).captions,
            (Captions{{1, 1000, 3480, u"a\r\n\r\nb"}}));
}

TEST(Scenarist, KeepsTabsOfATextThatHasLineBreaks) {
  EXPECT_EQ(loaded({u"0001\t00:00:01:00\t00:00:03:12\ta\tb\r\nc"}).captions, (Captions{{1, 1000, 3480, u"a\tb\r\nc"}}));
}

TEST(Scenarist, NumbersFromOne) {
  EXPECT_EQ(loaded({u"0007\t00:00:03:00\t00:00:04:00\tb", u"0007\t00:00:01:00\t00:00:02:00\ta"}).captions,
            (Captions{{1, 3000, 4000, u"b"}, {2, 1000, 2000, u"a"}}));
}

TEST(Scenarist, RefusesNumbersOfOtherLengths) {
  EXPECT_EQ(loaded({u"000001\t00:00:01:00\t00:00:03:12\ta"}), (Loaded{{}, 1}));
  EXPECT_EQ(loaded({u"001\t00:00:01:00\t00:00:03:12\ta"}), (Loaded{{}, 1}));
}

TEST(Scenarist, CountsEveryOtherLineAsAnErrorEmptyOnesToo) {
  EXPECT_EQ(loaded({u"", u"0001\t00:00:01:00\t00:00:03:12\ta", u"stray", u"  ", u""}),
            (Loaded{{{1, 1000, 3480, u"a"}}, 4}));
}

TEST(Scenarist, RefusesACaptionWithoutText) {
  // Trimming takes the tab that has to stand behind the end.
  EXPECT_EQ(loaded({u"0001\t00:00:01:00\t00:00:03:12\t"}), (Loaded{{}, 1}));
}

TEST(Scenarist, TrimsTheLine) {
  EXPECT_EQ(loaded({u"  0001\t00:00:01:00\t00:00:03:12\ta  "}), (Loaded{{{1, 1000, 3480, u"a"}}, 0}));
}

TEST(Scenarist, NeedsRealTabsBetweenTheFields) {
  EXPECT_EQ(loaded({u"0001t00:00:01:00t00:00:03:12ta"}), (Loaded{{}, 1}));
  EXPECT_EQ(loaded({u"0001 00:00:01:00\t00:00:03:12\ta"}), (Loaded{{}, 1}));
  EXPECT_EQ(loaded({u"0001\t\t00:00:01:00\t00:00:03:12\ta"}), (Loaded{{}, 1}));
  EXPECT_EQ(loaded({u"0001\t00:00:01:00 00:00:03:12\ta"}), (Loaded{{}, 1}));
  EXPECT_EQ(loaded({u"0001\t00:00:01:00\t00:00:03:12 a"}), (Loaded{{}, 1}));
}

TEST(Scenarist, RefusesHoursOfThreeDigitsAndSigns) {
  EXPECT_EQ(loaded({u"0001\t100:00:01:00\t100:00:03:12\ta"}), (Loaded{{}, 1}));
  EXPECT_EQ(loaded({u"0001\t00:00:-1:-12\t00:00:03:12\ta"}), (Loaded{{}, 1}));
}

TEST(Scenarist, ReadsTimesAsTheyStand) {
  EXPECT_EQ(loaded({u"0001\t99:99:99:99\t00:00:00:25\ta"}).captions, (Captions{{1, 362439999, 999, u"a"}}));
  EXPECT_EQ(loaded({u"0001\t00:00:00:01\t00:00:00:29\ta"}, 29.97).captions, (Captions{{1, 33, 968, u"a"}}));
}

TEST(Scenarist, ReadsAtStrangeRates) {
  const Lines lines = {u"0001\t00:00:01:00\t00:00:02:12\ta"};
  EXPECT_EQ(loaded(lines, 0).captions, (Captions{{1, 1001, 2001, u"a"}}));
  EXPECT_EQ(loaded(lines, -25).captions, (Captions{{1, 1000, 1520, u"a"}}));
  EXPECT_EQ(loaded(lines, 0.001).captions, (Captions{{1, 1000, 2999, u"a"}}));
  EXPECT_EQ(loaded(lines, 1e9).captions, (Captions{{1, 1000, 2000, u"a"}}));
  EXPECT_EQ(loaded(lines, std::numeric_limits<double>::quiet_NaN()).captions, (Captions{{1, 1001, 2001, u"a"}}));
}

TEST(Scenarist, ReadsWhatItWrites) {
  const FrameRateScope rate(25);
  EXPECT_EQ(recognized(std::string(utf8Mark) + written<Scenarist>({{1, 1000, 3480, u"a\r\nb"}})),
            (Recognized{"Scenarist", 1}));
  EXPECT_EQ(loaded({u"0001\t00:00:01:00\t00:00:03:12\ta\tb"}).captions, (Captions{{1, 1000, 3480, u"a\r\nb"}}));
}

TEST(Scenarist, IsRefusedWithAStrayLineForEachCaption) {
  EXPECT_FALSE(recognizes<Scenarist>({u"0001\t00:00:01:00\t00:00:03:12\ta", u"stray"}));
  EXPECT_TRUE(recognizes<Scenarist>({u"0001\t00:00:01:00\t00:00:03:12\ta"}));
  EXPECT_FALSE(recognizes<Scenarist>({}));
}

}  // namespace
}  // namespace mova
