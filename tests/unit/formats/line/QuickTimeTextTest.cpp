#include <gtest/gtest.h>

#include <limits>

#include "formats/line/QuickTimeText.h"
#include "text/Regex.h"
#include "unit/formats/Captions.h"

namespace mova {
namespace {

Loaded loaded(const Lines& lines, double frameRate = 25) {
  const FrameRateScope rate(frameRate);
  return load<QuickTimeText>(lines);
}

std::string writtenAt(double frameRate, const Captions& captions) {
  const FrameRateScope rate(frameRate);
  return written<QuickTimeText>(captions);
}

constexpr std::string_view header =
    "{QTtext} {font:Tahoma}\r\n"
    "{plain} {size:20}\r\n"
    "{timeScale:30}\r\n"
    "{width:160} {height:32}\r\n"
    "{timestamps:absolute} {language:0}\r\n"
    "\n";

std::string withHeader(std::string_view text) {
  return std::string(header) + std::string(text);
}

TEST(QuickTimeText, HasItsNames) {
  const QuickTimeText format;
  EXPECT_EQ(format.Name(), u"QuickTime text");
  EXPECT_EQ(format.Extension(), u".txt");
  EXPECT_TRUE(format.ExtraExtensions().empty());
  EXPECT_FALSE(format.SupportsStyles());
  EXPECT_TRUE(format.IsTimeBased());
  EXPECT_TRUE(format.IsTextBased());
}

// --- Writing

TEST(QuickTimeText, WritesTheHeaderAloneForAnEmptySubtitle) {
  EXPECT_EQ(writtenAt(25, {}), header);
}

TEST(QuickTimeText, WritesMixedLineEndsAndNoTags) {
  EXPECT_EQ(writtenAt(25, {{1, 1000, 3480, u"<i>Hello</i>\r\nWorld"}, {2, 90000000, 0, u""}}),
            withHeader("[00:00:01.00]\r\nHello\r\nWorld\r\n[00:00:03.12]\r\n\n"
                       "[25:00:00.00]\r\n\r\n[00:00:00.00]\r\n\n"));
}

TEST(QuickTimeText, WritesATimeScaleOf30AtEveryRate) {
  EXPECT_EQ(writtenAt(60, {{1, 480, 500, u"a"}}), withHeader("[00:00:00.29]\r\na\r\n[00:00:00.59]\r\n\n"));
}

TEST(QuickTimeText, WritesTheSignOfANegativeTimeAtEachField) {
  EXPECT_EQ(writtenAt(25, {{1, -1500, -3723480, u"a"}}), withHeader("[00:00:-1.-12]\r\na\r\n[-1:-2:-3.-12]\r\n\n"));
}

TEST(QuickTimeText, EndsATextAtAZeroUnit) {
  EXPECT_EQ(writtenAt(25, {{1, 0, 0, WString(u"a\0b", 3)}}), withHeader("[00:00:00.00]\r\na\r\n[00:00:00.00]\r\n\n"));
}

TEST(QuickTimeText, WritesAtStrangeRates) {
  EXPECT_EQ(writtenAt(0, {{1, 500, 1000, u"a"}}), withHeader("[00:00:00.00]\r\na\r\n[00:00:01.00]\r\n\n"));
  EXPECT_EQ(writtenAt(std::numeric_limits<double>::quiet_NaN(), {{1, 500, 1000, u"a"}}),
            withHeader("[00:00:00.01]\r\na\r\n[00:00:01.01]\r\n\n"));
}

// --- Reading

TEST(QuickTimeText, ReadsTextBetweenTwoTimes) {
  EXPECT_EQ(loaded({u"[00:00:01.00]", u"Hello", u"World", u"[00:00:03.12]", u"", u"[00:00:04.00]", u"again",
                    u"[00:00:05.00]"}),
            (Loaded{{{1, 1000, 3480, u"Hello\r\nWorld"}, {2, 4000, 5000, u"again"}}, 0}));
}

TEST(QuickTimeText, LetsTheEndOfACaptionStartTheNext) {
  EXPECT_EQ(loaded({u"[00:00:01.00]", u"a", u"[00:00:03.00]", u"b", u"[00:00:05.00]"}),
            (Loaded{{{1, 1000, 3000, u"a"}, {2, 3000, 5000, u"b"}}, 0}));
}

TEST(QuickTimeText, StartsACaptionWithTheTextBehindATime) {
  EXPECT_EQ(loaded({u"[00:00:01.00]Hello", u"World", u"[00:00:03.00] behind ]", u"[00:00:04.00]"}),
            (Loaded{{{1, 1000, 3000, u"Hello\r\nWorld"}, {2, 3000, 4000, u" behind ]"}}, 0}));
}

TEST(QuickTimeText, DropsACaptionWithoutText) {
  EXPECT_EQ(loaded({u"[00:00:01.00]", u"[00:00:02.00]", u"a", u"[00:00:03.00]"}), (Loaded{{{1, 2000, 3000, u"a"}}, 0}));
}

TEST(QuickTimeText, DropsALastCaptionWithoutAnEnd) {
  EXPECT_EQ(loaded({u"[00:00:01.00]", u"a", u"[00:00:02.00]", u"b"}), (Loaded{{{1, 1000, 2000, u"a"}}, 0}));
}

TEST(QuickTimeText, TrimsLinesAndSkipsBlankOnes) {
  EXPECT_EQ(loaded({u"  [00:00:01.00]  ", u"", u"  a  ", u" \t", u"\tb", u"[00:00:03.00]"}),
            (Loaded{{{1, 1000, 3000, u"a\r\nb"}}, 0}));
}

TEST(QuickTimeText, CountsTextAheadOfTheFirstTime) {
  EXPECT_EQ(loaded({u"{QTtext} {font:Tahoma}", u"{plain} {size:20}", u"", u"[00:00:01.00]", u"a", u"[00:00:03.00]"}),
            (Loaded{{{1, 1000, 3000, u"a"}}, 2}));
}

TEST(QuickTimeText, TakesASeparatorAheadOfTheFramesThatItCutsAt) {
  EXPECT_EQ(loaded({u"[00:00:01:02]", u"a", u"[00:00:03[04]", u"b", u"[00:00:05]06]", u"[00:00:06.00]"}),
            (Loaded{{{1, 1080, 3160, u"a"}, {2, 3160, 5240, u"b"}, {3, 5240, 6000, u"06]"}}, 0}));
}

TEST(QuickTimeText, PassesOverATimeWithAnotherSeparator) {
  EXPECT_EQ(loaded({u"[00:00:01;02]", u"[00:00:01 02]", u"[00:00:01302]"}), (Loaded{{}, 0}));
  EXPECT_EQ(loaded({u"[00:00:01.00]", u"a", u"[00:00:02;00]lost", u"b", u"[00:00:03.00]"}),
            (Loaded{{{1, 1000, 3000, u"a\r\nb"}}, 0}));
}

TEST(QuickTimeText, TakesOtherFormsForText) {
  for (WStringView line : {u"[00:00:01\u00E902]", u"[0:00:01.02]", u"[000:00:01.02]", u"[00:00:01.02", u"00:00:01.02",
                           u"[00:00:01.002]", u"[00:00:-1.02]", u"[00:00:01]"}) {
    EXPECT_EQ(loaded({u"[00:00:01.00]", line, u"[00:00:03.00]"}), (Loaded{{{1, 1000, 3000, WString(line)}}, 0}));
  }
}

TEST(QuickTimeText, TakesTheTimesThatItsExpressionMatches) {
  const Regex regex = createRegex(u"^\\[\\d\\d:\\d\\d:\\d\\d.\\d\\d\\]");
  for (char16_t unit = 0; unit < 0x300; ++unit) {
    WString line = u"[00:00:02.00]lost";
    line[9] = unit;
    // A time is passed over or opens the next caption; text stays text.
    const Loaded result = loaded({u"[00:00:01.00]", line, u"[00:00:03.00]"});
    EXPECT_EQ(result.captions.size() == 1 && result.captions[0].text == line, !regex.Matches(line)) << int{unit};
  }
}

TEST(QuickTimeText, ReadsAtStrangeRates) {
  const Lines lines = {u"[00:00:01.00]", u"a", u"[00:00:02.12]"};
  EXPECT_EQ(loaded(lines, 0).captions, (Captions{{1, 1001, 2001, u"a"}}));
  EXPECT_EQ(loaded(lines, -25).captions, (Captions{{1, 1000, 1520, u"a"}}));
  EXPECT_EQ(loaded(lines, 0.001).captions, (Captions{{1, 1000, 2999, u"a"}}));
  EXPECT_EQ(loaded(lines, 1e9).captions, (Captions{{1, 1000, 2000, u"a"}}));
}

// --- Recognising

TEST(QuickTimeText, RefusesRichText) {
  EXPECT_TRUE(recognizes<QuickTimeText>({u"[00:00:01.00]", u"a", u"[00:00:02.00]", u"b", u"[00:00:03.00]"}));
  EXPECT_FALSE(
      recognizes<QuickTimeText>({u"{\\rtf1", u"[00:00:01.00]", u"a", u"[00:00:02.00]", u"b", u"[00:00:03.00]"}));
  EXPECT_TRUE(
      recognizes<QuickTimeText>({u"{\\RTF1", u"[00:00:01.00]", u"a", u"[00:00:02.00]", u"b", u"[00:00:03.00]"}));
  EXPECT_FALSE(recognizes<QuickTimeText>({}));
}

TEST(QuickTimeText, NeedsSixCaptionsBehindItsWholeHeader) {
  const FrameRateScope rate(25);
  Captions captions(5, {0, 1000, 2000, u"a"});
  const std::string five = written<QuickTimeText>(captions);
  captions.resize(6, captions[0]);
  const std::string six = written<QuickTimeText>(captions);
  EXPECT_EQ(recognized(utf8Mark.data() + five), (Recognized{"", 0}));
  EXPECT_EQ(recognized(utf8Mark.data() + six), (Recognized{"QuickTime text", 6}));
  EXPECT_EQ(recognized(five), (Recognized{"QuickTime text", 5}));  // without a mark the first line is not seen
}

TEST(QuickTimeText, StandsAheadOfTheFormatsWhoseLinesItTakesForText) {
  const std::string quickTime = "[00:00:01.00]\nquick\n";
  const std::string list = "00:00:01:00\t00:00:02:00\tlist\n";
  const std::string scenarist = "0001\t00:00:01:00\t00:00:02:00\tscenarist\n";
  const std::string subRip = "1\n00:00:01,000 --> 00:00:02,000\na\n\n2\n00:00:03,000 --> 00:00:04,000\nb\n";
  for (const std::string& other : {list, scenarist, subRip}) {
    EXPECT_EQ(recognized("first line\n" + quickTime + other + quickTime), (Recognized{"QuickTime text", 1})) << other;
    EXPECT_NE(recognized("first line\n" + other).format, "QuickTime text") << other;
  }
}

}  // namespace
}  // namespace mova
