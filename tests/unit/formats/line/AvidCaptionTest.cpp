#include <gtest/gtest.h>

#include <limits>

#include "formats/line/AvidCaption.h"
#include "unit/formats/Captions.h"

namespace mova {
namespace {

Loaded loaded(const Lines& lines, double frameRate = 25) {
  const FrameRateScope rate(frameRate);
  return load<AvidCaption>(lines);
}

std::string writtenAt(double frameRate, const Captions& captions) {
  const FrameRateScope rate(frameRate);
  return written<AvidCaption>(captions);
}

TEST(AvidCaption, HasItsNames) {
  const AvidCaption format;
  EXPECT_EQ(format.Name(), u"Avid Caption");
  EXPECT_EQ(format.Extension(), u".txt");
  EXPECT_TRUE(format.ExtraExtensions().empty());
  EXPECT_FALSE(format.SupportsStyles());
  EXPECT_TRUE(format.IsTimeBased());
  EXPECT_TRUE(format.IsTextBased());
}

// --- Writing

TEST(AvidCaption, WritesTheMarkersAloneForAnEmptySubtitle) {
  EXPECT_EQ(writtenAt(25, {}),
            "@ This file written with the Avid Caption plugin, version 1\n\n<begin subtitles>\n<end subtitles>\r\n");
}

TEST(AvidCaption, WritesMixedLineEndsAndKeepsTags) {
  EXPECT_EQ(writtenAt(25, {{1, 1000, 3480, u"<i>Hello</i>\r\n{\\an8}World "}, {2, 4000, 90000000, u""}}),
            "@ This file written with the Avid Caption plugin, version 1\n\n<begin subtitles>\n"
            "00:00:01:00 00:00:03:12\r\n<i>Hello</i>\r\n{\\an8}World \r\n"
            "00:00:04:00 25:00:00:00\r\n\r\n"
            "<end subtitles>\r\n");
}

TEST(AvidCaption, KeepsAZeroUnit) {
  const std::string text = writtenAt(25, {{1, 0, 0, WString(u"a\0b", 3)}});
  EXPECT_NE(text.find(std::string("\r\na\0b\r\n<end", 11)), std::string::npos);
}

TEST(AvidCaption, WritesTheSignOfANegativeTimeAtEachField) {
  EXPECT_NE(writtenAt(25, {{1, -1500, -40, u"a"}}).find("\n00:00:-1:-12 00:00:00:-1\r\na\r\n"), std::string::npos);
}

TEST(AvidCaption, WritesAtStrangeRates) {
  EXPECT_NE(writtenAt(0, {{1, 500, 1000, u"a"}}).find("\n00:00:00:00 00:00:01:00\r\n"), std::string::npos);
  EXPECT_NE(writtenAt(1e9, {{1, 500, 1000, u"a"}}).find("\n00:00:00:999999999 00:00:01:00\r\n"), std::string::npos);
}

// --- Reading

TEST(AvidCaption, ReadsCaptionsBetweenTheMarkers) {
  EXPECT_EQ(loaded({u"@ comment", u"", u"<begin subtitles>", u"00:00:01:00 00:00:03:12", u"Hello", u"World",
                    u"00:00:04:00 00:00:05:00", u"again", u"<end subtitles>"}),
            (Loaded{{{0, 1000, 3480, u"Hello\r\nWorld"}, {0, 4000, 5000, u"again"}}, 0}));
}

TEST(AvidCaption, KnowsTheMarkersInAnyCaseAndBlanksAround) {
  EXPECT_EQ(loaded({u" <Begin SUBTITLES>\t", u"00:00:01:00 00:00:03:12", u"a", u"<END Subtitles> "}),
            (Loaded{{{0, 1000, 3480, u"a"}}, 0}));
  EXPECT_EQ(loaded({u"<begin  subtitles>", u"00:00:01:00 00:00:03:12", u"a", u"<end subtitles"}).errors, 2);
}

TEST(AvidCaption, StopsAtTheEnd) {
  EXPECT_EQ(loaded({u"<begin subtitles>", u"00:00:01:00 00:00:03:12", u"a", u"<end subtitles>", u"b",
                    u"00:00:04:00 00:00:05:00", u"c"}),
            (Loaded{{{0, 1000, 3480, u"a"}}, 0}));
}

TEST(AvidCaption, CountsEachMissingMarker) {
  EXPECT_EQ(loaded({u"00:00:01:00 00:00:03:12", u"a"}), (Loaded{{{0, 1000, 3480, u"a"}}, 2}));
  EXPECT_EQ(loaded({u"<begin subtitles>", u"00:00:01:00 00:00:03:12", u"a"}), (Loaded{{{0, 1000, 3480, u"a"}}, 1}));
  EXPECT_EQ(loaded({u"00:00:01:00 00:00:03:12", u"a", u"<end subtitles>"}), (Loaded{{{0, 1000, 3480, u"a"}}, 1}));
  EXPECT_EQ(loaded({}), (Loaded{{}, 2}));
}

TEST(AvidCaption, ReadsCaptionsAheadOfTheBegin) {
  EXPECT_EQ(loaded({u"00:00:01:00 00:00:03:12", u"a", u"<begin subtitles>", u"b", u"<end subtitles>"}),
            (Loaded{{{0, 1000, 3480, u"a\r\nb"}}, 0}));
}

TEST(AvidCaption, TakesALineWithAnAtSignForACommentEverywhere) {
  EXPECT_EQ(loaded({u"@ a", u"<begin subtitles>", u"00:00:01:00 00:00:03:12", u"@ b", u"c", u"  @ d", u"e@",
                    u"<end subtitles>"}),
            (Loaded{{{0, 1000, 3480, u"c\r\ne@"}}, 0}));
}

TEST(AvidCaption, ReadsOnBehindBlankLines) {
  EXPECT_EQ(
      loaded({u"<begin subtitles>", u"00:00:01:00 00:00:03:12", u"", u"a", u"", u"  ", u"b", u"", u"<end subtitles>"}),
      (Loaded{{{0, 1000, 3480, u"a\r\nb"}}, 0}));
}

TEST(AvidCaption, KeepsBlanksOfTheFirstLineUntilAnotherFollows) {
  EXPECT_EQ(loaded({u"00:00:01:00 00:00:03:12", u"  a  "}).captions, (Captions{{0, 1000, 3480, u"  a  "}}));
  EXPECT_EQ(loaded({u"00:00:01:00 00:00:03:12", u"  a  ", u"  b  "}).captions,
            (Captions{{0, 1000, 3480, u"  a\r\nb"}}));
}

TEST(AvidCaption, KeepsCaptionsWithoutText) {
  EXPECT_EQ(loaded({u"<begin subtitles>", u"00:00:01:00 00:00:03:12", u"00:00:04:00 00:00:05:00", u"<end subtitles>"}),
            (Loaded{{{0, 1000, 3480, u""}, {0, 4000, 5000, u""}}, 0}));
}

TEST(AvidCaption, TakesTextAheadOfTheFirstTimesForNothing) {
  EXPECT_EQ(loaded({u"<begin subtitles>", u"stray", u"00:00:01:00 00:00:03:12", u"a", u"<end subtitles>"}),
            (Loaded{{{0, 1000, 3480, u"a"}}, 0}));
}

TEST(AvidCaption, NeedsOneBlankBetweenTheTimesAndNothingElse) {
  for (WStringView line : {u"00:00:01:00  00:00:03:12", u"00:00:01:00\t00:00:03:12", u"00:00:01:00 00:00:03:12 x",
                           u"100:00:01:00 00:00:03:12", u"00:00:01:00 00:00:03:121", u"00:00:01.00 00:00:03.12",
                           u"0:00:01:00 00:00:03:12"}) {
    EXPECT_EQ(loaded({u"00:00:01:00 00:00:03:12", line}).captions, (Captions{{0, 1000, 3480, WString(line)}}));
  }
}

TEST(AvidCaption, TrimsTheTimeLineAndEndsItAtAZeroUnit) {
  EXPECT_EQ(loaded({u" \t00:00:01:00 00:00:03:12  ", u"a"}).captions, (Captions{{0, 1000, 3480, u"a"}}));
  EXPECT_EQ(loaded({WStringView(u"00:00:01:00 00:00:03:12\0x", 25), u"a"}).captions, (Captions{{0, 1000, 3480, u"a"}}));
}

TEST(AvidCaption, ReadsAtStrangeRates) {
  const Lines lines = {u"00:00:01:00 00:00:02:12", u"a"};
  EXPECT_EQ(loaded(lines, 0).captions, (Captions{{0, 1001, 2001, u"a"}}));
  EXPECT_EQ(loaded(lines, -25).captions, (Captions{{0, 1000, 1520, u"a"}}));
  EXPECT_EQ(loaded(lines, 0.001).captions, (Captions{{0, 1000, 2999, u"a"}}));
  EXPECT_EQ(loaded(lines, 1e9).captions, (Captions{{0, 1000, 2000, u"a"}}));
  EXPECT_EQ(loaded(lines, std::numeric_limits<double>::quiet_NaN()).captions, (Captions{{0, 1001, 2001, u"a"}}));
}

// --- Recognising

TEST(AvidCaption, IsRecognizedWithMoreCaptionsThanMissingMarkers) {
  EXPECT_FALSE(recognizes<AvidCaption>({}));
  EXPECT_FALSE(recognizes<AvidCaption>({u"<begin subtitles>", u"<end subtitles>"}));
  EXPECT_FALSE(recognizes<AvidCaption>({u"00:00:01:00 00:00:03:12", u"a"}));
  EXPECT_FALSE(recognizes<AvidCaption>({u"00:00:01:00 00:00:03:12", u"a", u"00:00:04:00 00:00:05:00", u"b"}));
  EXPECT_TRUE(
      recognizes<AvidCaption>({u"00:00:01:00 00:00:03:12", u"00:00:04:00 00:00:05:00", u"00:00:06:00 00:00:07:00"}));
  EXPECT_TRUE(recognizes<AvidCaption>({u"<begin subtitles>", u"00:00:01:00 00:00:03:12", u"<end subtitles>"}));
}

TEST(AvidCaption, ReadsWhatItWrites) {
  const FrameRateScope rate(25);
  EXPECT_EQ(recognized(written<AvidCaption>({{1, 1000, 3480, u"a\r\nb"}})), (Recognized{"Avid Caption", 1}));
}

TEST(AvidCaption, StandsAheadOfTheFormatsWhoseLinesItTakesForText) {
  constexpr std::string_view avid = "<begin subtitles>\n00:00:01:00 00:00:03:12\na\n<end subtitles>\n";
  const std::string quickTime = "[00:00:01.00]\na\n[00:00:02.00]\n";
  const std::string list = "00:00:01:00\t00:00:02:00\tlist\n";
  const std::string scenarist = "0001\t00:00:01:00\t00:00:02:00\tscenarist\n";
  const std::string subRip = "1\n00:00:01,000 --> 00:00:02,000\na\n\n2\n00:00:03,000 --> 00:00:04,000\nb\n";
  for (const std::string& other : {quickTime, list, scenarist, subRip}) {
    EXPECT_EQ(recognized("first line\n" + other + std::string(avid)), (Recognized{"Avid Caption", 1})) << other;
    EXPECT_NE(recognized("first line\n" + other).format, "Avid Caption") << other;
  }
}

}  // namespace
}  // namespace mova
