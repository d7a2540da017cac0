#include <cmath>

#include "formats/line/YouTubeTranscript.h"
#include "unit/formats/Captions.h"

namespace mova {
namespace {

Loaded loaded(const Lines& lines) {
  return load<YouTubeTranscript>(lines);
}

TEST(YouTubeTranscript, HasItsNames) {
  const YouTubeTranscript format;
  EXPECT_EQ(format.Name(), u"YouTube Transcript");
  EXPECT_EQ(format.Extension(), u".txt");
  EXPECT_TRUE(format.ExtraExtensions().empty());
  EXPECT_FALSE(format.SupportsStyles());
}

// --- Writing

TEST(YouTubeTranscript, WritesStartTimesAndTextsInOneLineEach) {
  EXPECT_EQ(written<YouTubeTranscript>({{1, 5999, 70000, u"Hello"}, {2, 70000, 0, u"a\r\nb\r\n\r\nc"}}),
            "0:05\r\nHello\r\n1:10\r\na b  c\r\n");
}

TEST(YouTubeTranscript, WritesHoursAsMinutes) {
  EXPECT_EQ(written<YouTubeTranscript>({{1, 6000000, 0, u"a"}, {2, 60000000, 0, u"b"}}),
            "100:00\r\na\r\n1000:00\r\nb\r\n");
}

TEST(YouTubeTranscript, WritesNothingForAnEmptySubtitle) {
  EXPECT_EQ(written<YouTubeTranscript>({}), "");
}

TEST(YouTubeTranscript, TrimsNothing) {
  EXPECT_EQ(written<YouTubeTranscript>({{1, 0, 0, u" a\n "}, {2, 0, 0, u""}}), "0:00\r\n a\n \r\n0:00\r\n\r\n");
}

TEST(YouTubeTranscript, WritesTheSignOfANegativeTimeAtEachField) {
  EXPECT_EQ(written<YouTubeTranscript>({{1, -1500, 0, u"a"}, {2, -61000, 0, u"b"}, {3, -HUGE_VAL, 0, u"c"}}),
            "0:-1\r\na\r\n-1:-1\r\nb\r\n-153722867280912:-55\r\nc\r\n");
}

TEST(YouTubeTranscript, KeepsAZeroUnit) {
  EXPECT_EQ(written<YouTubeTranscript>({{1, 0, 0, WString(u"a\0b", 3)}}), std::string("0:00\r\na\0b\r\n", 11));
}

// --- Reading

TEST(YouTubeTranscript, EndsACaptionWhereTheNextOneStarts) {
  const Loaded read = loaded({u"0:05", u"Hello", u"1:10", u"World"});
  EXPECT_EQ(read, (Loaded{{{1, 5000, 70000, u"Hello"}, {2, 70000, 0, u"World"}}, 0}));
  EXPECT_EQ(written<YouTubeTranscript>(read.captions), "0:05\r\nHello\r\n1:10\r\nWorld\r\n");
}

TEST(YouTubeTranscript, ReadsUpToThreeDigitsOfMinutes) {
  EXPECT_EQ(loaded({u"100:00", u"a"}).captions, (Captions{{1, 6000000, 0, u"a"}}));
  EXPECT_EQ(loaded({u"999:99", u"a"}).captions, (Captions{{1, 60039000, 0, u"a"}}));
  for (WStringView line :
       {u"1000:00", u"1:00:00", u"-1:00", u"1:0", u"1:000", u":00", u"1.00", u"1:00.0", u"1: 00", u"a", u""}) {
    EXPECT_EQ(loaded({line, u"a"}).captions, Captions{}) << wideToString(line);
  }
}

TEST(YouTubeTranscript, ReadsATimeBetweenBlanks) {
  EXPECT_EQ(loaded({u" \t0:05\r", u"a"}).captions, (Captions{{1, 5000, 0, u"a"}}));
}

TEST(YouTubeTranscript, LooksAtALineUpToAZeroUnitForATime) {
  EXPECT_EQ(loaded({WStringView(u"0:05\0x", 6), u"a"}).captions, (Captions{{1, 5000, 0, u"a"}}));
}

TEST(YouTubeTranscript, TakesOtherTimesForText) {
  EXPECT_EQ(loaded({u"0:05", u"1:00:00", u"1000:00"}).captions, (Captions{{1, 5000, 0, u"1:00:00\r\n1000:00"}}));
}

TEST(YouTubeTranscript, KeepsLinesUntrimmedAndDropsBlankOnes) {
  EXPECT_EQ(loaded({u"0:05", u"", u" a ", u" \t", u"b", u""}).captions, (Captions{{1, 5000, 0, u" a \r\nb"}}));
}

TEST(YouTubeTranscript, SkipsTextInFrontOfTheFirstTimeWithoutAnError) {
  EXPECT_EQ(loaded({u"A title", u"", u"0:05", u"a"}), (Loaded{{{1, 5000, 0, u"a"}}, 0}));
}

TEST(YouTubeTranscript, KeepsUnsortedTimesAndCaptionsWithoutText) {
  EXPECT_EQ(loaded({u"1:10", u"0:05", u"a"}).captions, (Captions{{1, 70000, 5000, u""}, {2, 5000, 0, u"a"}}));
}

TEST(YouTubeTranscript, StopsAtATextOfMoreThan800Units) {
  const WString units800(800, u'a');
  EXPECT_EQ(loaded({u"0:05", u"a", u"0:06", units800, u"0:07", u"b"}),
            (Loaded{{{1, 5000, 6000, u"a"}, {2, 6000, 7000, units800}, {3, 7000, 0, u"b"}}, 0}));
  const WString units801(801, u'a');
  EXPECT_EQ(loaded({u"0:05", u"a", u"0:06", units801, u"0:07", u"b"}),
            (Loaded{{{0, 5000, 6000, u"a"}, {0, 6000, 0, units801}}, 1}));
  // Line breaks count.
  const WString units797(797, u'a');
  EXPECT_EQ(loaded({u"0:05", units797, u"b"}).errors, 0);
  EXPECT_EQ(loaded({u"0:05", units797, u"bc"}).errors, 1);
}

// --- Recognising

TEST(YouTubeTranscript, RecognizesMoreCaptionsThanErrors) {
  const WString units801(801, u'a');
  EXPECT_TRUE(recognizes<YouTubeTranscript>({u"0:05"}));
  EXPECT_TRUE(recognizes<YouTubeTranscript>({u"0:05", u"a", u"0:06", units801}));
  EXPECT_FALSE(recognizes<YouTubeTranscript>({u"0:05", units801}));
  EXPECT_FALSE(recognizes<YouTubeTranscript>({u"a"}));
  EXPECT_FALSE(recognizes<YouTubeTranscript>({}));
}

TEST(YouTubeTranscript, IsRecognizedInAFile) {
  EXPECT_EQ(recognized("A title\n0:05\nHello\n1:10\nWorld\n"), (Recognized{"YouTube Transcript", 2}));
  EXPECT_EQ(recognized("0:05\nHello\n1:10\nWorld\n"), (Recognized{"YouTube Transcript", 1}));
  EXPECT_EQ(recognized("A title\nHello\n"), (Recognized{"", 0}));
}

// --- Hostile input

TEST(YouTubeTranscript, ReadsLongLinesAndManyTimes) {
  EXPECT_EQ(loaded({u"0:05", WString(10000000, u'a'), u"b"}).errors, 1);
  constexpr size_t count = 100000;
  WString units;
  std::vector<size_t> ends;
  for (size_t i = 0; i < count; ++i) ends.push_back((units += u"0:05").size());
  EXPECT_EQ(loaded(Lines(units, ends)).captions.size(), count);
}

}  // namespace
}  // namespace mova
