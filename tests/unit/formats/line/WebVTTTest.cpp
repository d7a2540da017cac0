#include <cmath>

#include "formats/line/SubRip.h"
#include "formats/line/WebVTT.h"
#include "unit/formats/Captions.h"

namespace mova {
namespace {

Loaded loaded(const Lines& lines) {
  return load<WebVTT>(lines);
}

/// The times of one cue head that stands above a text; no caption if the line is no cue head.
Captions timesOf(WStringView line) {
  return loaded({line, u"x"}).captions;
}

TEST(WebVTT, HasItsNames) {
  const WebVTT format;
  EXPECT_EQ(format.Name(), u"WebVTT");
  EXPECT_EQ(format.Extension(), u".vtt");
  EXPECT_TRUE(format.ExtraExtensions().empty());
  EXPECT_FALSE(format.SupportsStyles());
  EXPECT_TRUE(format.IsTimeBased());
  EXPECT_TRUE(format.IsTextBased());
}

// --- Writing

TEST(WebVTT, WritesTheHeaderAloneForAnEmptySubtitle) {
  EXPECT_EQ(written<WebVTT>({}), "WEBVTT");
}

TEST(WebVTT, WritesMixedLineEnds) {
  EXPECT_EQ(written<WebVTT>({{1, 1000, 2500, u"Hi"}, {2, 3000, 4000, u"a\r\nb"}}),
            "WEBVTT\n\n"
            "00:01.000 --> 00:02.500\r\nHi\r\n\n"
            "00:03.000 --> 00:04.000\r\na\r\nb");
}

TEST(WebVTT, DecidesForEachCueWhetherToWriteHours) {
  EXPECT_EQ(written<WebVTT>({{1, 3598000, 3599000, u"a"}, {2, 3599000, 3601000, u"b"}, {3, 3600000, 0, u"c"}}),
            "WEBVTT\n\n"
            "59:58.000 --> 59:59.000\r\na\r\n\n"
            "00:59:59.000 --> 01:00:01.000\r\nb\r\n\n"
            "01:00:00.000 --> 00:00:00.000\r\nc");
}

TEST(WebVTT, DoesNotWrapHours) {
  EXPECT_EQ(written<WebVTT>({{1, 90000000, 360000000, u"a"}}), "WEBVTT\n\n25:00:00.000 --> 100:00:00.000\r\na");
}

TEST(WebVTT, CutsTimesToMilliseconds) {
  EXPECT_EQ(written<WebVTT>({{1, 999.9, 1000.9999, u"a"}}), "WEBVTT\n\n00:00.999 --> 00:01.000\r\na");
}

TEST(WebVTT, WritesTheSignOfANegativeTimeAtEachField) {
  EXPECT_EQ(written<WebVTT>({{1, -1500, -61005, u"a"}}), "WEBVTT\n\n00:-1.-500 --> -1:-1.-05\r\na");
  // Hours below 1 are not written, and so are negative ones.
  EXPECT_EQ(written<WebVTT>({{1, -7200000, 0, u"a"}}), "WEBVTT\n\n00:00.000 --> 00:00.000\r\na");
  EXPECT_EQ(written<WebVTT>({{1, -7261005, 3600000, u"a"}}), "WEBVTT\n\n-2:-1:-1.-05 --> 01:00:00.000\r\na");
}

TEST(WebVTT, WritesTimesBeyondAllRangesAsTheSmallestInteger) {
  EXPECT_EQ(written<WebVTT>({{1, HUGE_VAL, 0, u"a"}}), "WEBVTT\n\n-12:-55.-808 --> 00:00.000\r\na");
}

TEST(WebVTT, WritesNoBlankLinesWithinATextHoweverMany) {
  EXPECT_EQ(written<WebVTT>({{1, 0, 1, u"a\r\n\r\nb\r\n\r\n\r\n\r\n\r\nc\n\nd"}}),
            "WEBVTT\n\n00:00.000 --> 00:00.001\r\na\r\nb\r\nc\n\nd");
}

TEST(WebVTT, TrimsTheEndOfTheWholeFileOnly) {
  EXPECT_EQ(written<WebVTT>({{1, 0, 1, u" a "}, {2, 0, 1, u" b \t\r\n"}}),
            "WEBVTT\n\n00:00.000 --> 00:00.001\r\n a \r\n\n00:00.000 --> 00:00.001\r\n b");
  EXPECT_EQ(written<WebVTT>({{1, 0, 1, u""}, {2, 0, 1, u""}}),
            "WEBVTT\n\n00:00.000 --> 00:00.001\r\n\r\n\n00:00.000 --> 00:00.001");
}

TEST(WebVTT, EndsATextAtAZeroUnitWhenWriting) {
  EXPECT_EQ(written<WebVTT>({{1, 0, 1, WString(u"a\0b", 3)}, {2, 0, 1, u"c"}}),
            "WEBVTT\n\n00:00.000 --> 00:00.001\r\na\r\n\n00:00.000 --> 00:00.001\r\nc");
}

TEST(WebVTT, WritesTheExtraLabelBehindTheTextIfTheHeaderIsItsOwn) {
  Subtitle subtitle = subtitleOf({{1, 0, 1, u"a"}, {2, 0, 1, u"b"}});
  subtitle.Paragraphs[0]->Extra = u" align:start";
  EXPECT_EQ(WebVTT().WriteText(subtitle, u""),
            u"WEBVTT\n\n00:00.000 --> 00:00.001\r\na\r\n\n00:00.000 --> 00:00.001\r\nb");
  subtitle.Header = u"WEBVTT";
  EXPECT_EQ(WebVTT().WriteText(subtitle, u""),
            u"WEBVTT\n\n00:00.000 --> 00:00.001\r\na align:start\r\n\n00:00.000 --> 00:00.001\r\nb");
  subtitle.Header = u"WEBVTT x";
  EXPECT_EQ(WebVTT().WriteText(subtitle, u""),
            u"WEBVTT\n\n00:00.000 --> 00:00.001\r\na\r\n\n00:00.000 --> 00:00.001\r\nb");
}

// --- Cue heads

TEST(WebVTT, ReadsTimesWithoutHours) {
  EXPECT_EQ(timesOf(u"00:01.000 --> 00:02.000"), (Captions{{1, 1000, 2000, u"x"}}));
}

TEST(WebVTT, ReadsTimesWithHoursAndDropsSettings) {
  EXPECT_EQ(timesOf(u"01:00:00.000 --> 01:00:02.000 align:start"), (Captions{{1, 3600000, 3602000, u"x"}}));
  EXPECT_EQ(timesOf(u"00:01.000 --> 00:02.000 line:1 --> 5"), (Captions{{1, 1000, 2000, u"x"}}));
  EXPECT_EQ(timesOf(u"00:01.000 --> 00:02.000:7"), (Captions{{1, 1000, 2000, u"x"}}));
  EXPECT_EQ(timesOf(u"00:01.000 --> 00:02.000@7"), (Captions{{1, 1000, 2000, u"x"}}));
}

TEST(WebVTT, ReadsTimesWithHoursInTheSecondOnly) {
  EXPECT_EQ(timesOf(u"59:59.500 --> 01:00:02.000"), (Captions{{1, 3599500, 3602000, u"x"}}));
}

TEST(WebVTT, TakesHoursInTheFirstTimeOnlyForText) {
  EXPECT_EQ(timesOf(u"00:59:59.500 --> 59:60.000"), Captions{});
}

TEST(WebVTT, NeedsABlankBehindTheArrowOfShortTimes) {
  EXPECT_EQ(timesOf(u"00:01.000-->00:02.000"), Captions{});
  EXPECT_EQ(timesOf(u"00:01.000 -->00:02.000"), Captions{});
  EXPECT_EQ(timesOf(u"00:01.000 -->\t00:02.000"), Captions{});
  EXPECT_EQ(timesOf(u"00:01.000 -->  00:02.000"), Captions{});  // The second blank ends up within the time.
  EXPECT_EQ(timesOf(u"00:01.000--> 00:02.000"), (Captions{{1, 1000, 2000, u"x"}}));
}

TEST(WebVTT, NeedsNoBlankAroundTheArrowOfLongTimes) {
  EXPECT_EQ(timesOf(u"00:00:01.000-->00:00:02.000"), (Captions{{1, 1000, 2000, u"x"}}));
  EXPECT_EQ(timesOf(u"00:01.000-->00:00:02.000"), (Captions{{1, 1000, 2000, u"x"}}));
  EXPECT_EQ(timesOf(u"00:00:01.000 \t -->\t  00:00:02.000"), (Captions{{1, 1000, 2000, u"x"}}));
}

TEST(WebVTT, LetsALineThatIsNoCueHeadGoOnUnchanged) {
  EXPECT_EQ(loaded({u"00:01.000 --> 00:02.000", u" 00:01.000 -->\t00:02.000 ", u"a --> b"}).captions,
            (Captions{{1, 1000, 2000, u"00:01.000 -->\t00:02.000\r\na --> b"}}));
}

TEST(WebVTT, ReadsNumbersOfAnyLength) {
  EXPECT_EQ(timesOf(u"1:2.3 --> 1:2:3.4"), (Captions{{1, 62003, 3723004, u"x"}}));
  EXPECT_EQ(timesOf(u"00:01.000 --> 00:02.0005"), (Captions{{1, 1000, 2005, u"x"}}));
  EXPECT_EQ(timesOf(u"00:00:01.5000 --> 00:90:02.0"), (Captions{{1, 6000, 5402000, u"x"}}));
}

TEST(WebVTT, AppliesASignToItsOwnFieldOnly) {
  EXPECT_EQ(timesOf(u"-1:00:01.000 --> 00:-1:00.-500"), (Captions{{1, -3599000, -60500, u"x"}}));
  EXPECT_EQ(timesOf(u"-1:01.000 --> 00:02.000"), (Captions{{1, -59000, 2000, u"x"}}));
}

TEST(WebVTT, NeedsAPointBeforeTheMilliseconds) {
  EXPECT_EQ(timesOf(u"00:00:01,000 --> 00:00:02,000"), Captions{});
}

TEST(WebVTT, ReadsCueHeadsBetweenBlanks) {
  EXPECT_EQ(timesOf(u" \t00:01.000 --> 00:02.000\r"), (Captions{{1, 1000, 2000, u"x"}}));
}

TEST(WebVTT, LooksAtALineUpToAZeroUnitForTimes) {
  EXPECT_EQ(timesOf(WStringView(u"00:01.000 --> 00:02.000\0 5", 26)), (Captions{{1, 1000, 2000, u"x"}}));
  EXPECT_EQ(timesOf(WStringView(u"00:01.000 --> \00000:02.000", 24)), Captions{});
}

TEST(WebVTT, WrapsTimesBeyond32Bits) {
  EXPECT_EQ(timesOf(u"99999999999:00:00.000 --> 00:00:00.99999999999"), (Captions{{1, -3600000, 2147483647, u"x"}}));
}

// --- Cues

TEST(WebVTT, ReadsCuesAndNumbersThem) {
  EXPECT_EQ(loaded({u"WEBVTT", u"", u"00:01.000 --> 00:02.000", u"a", u"b", u"", u"00:03.000 --> 00:04.000", u"c"}),
            (Loaded{{{1, 1000, 2000, u"a\r\nb"}, {2, 3000, 4000, u"c"}}, 0}));
}

TEST(WebVTT, SkipsIdentifiersNotesAndStyles) {
  EXPECT_EQ(loaded({u"WEBVTT - a title", u"", u"STYLE", u"::cue {}", u"", u"id 1", u"00:01.000 --> 00:02.000", u"a",
                    u"", u"NOTE", u"a note", u"", u"id 2", u"00:03.000 --> 00:04.000", u"b"}),
            (Loaded{{{1, 1000, 2000, u"a"}, {2, 3000, 4000, u"b"}}, 0}));
}

TEST(WebVTT, TakesAnIdentifierWithoutABlankLineInFrontForText) {
  EXPECT_EQ(loaded({u"00:01.000 --> 00:02.000", u"a", u"id 2", u"00:03.000 --> 00:04.000", u"b"}).captions,
            (Captions{{1, 1000, 2000, u"a\r\nid 2"}, {2, 3000, 4000, u"b"}}));
}

TEST(WebVTT, EndsATextAtAnEmptyLineButNotAtABlankOne) {
  EXPECT_EQ(loaded({u"00:01.000 --> 00:02.000", u"a", u" \t", u"b", u"", u"c"}).captions,
            (Captions{{1, 1000, 2000, u"a\r\nb"}}));
}

TEST(WebVTT, TrimsTheLinesOfAText) {
  EXPECT_EQ(loaded({u"00:01.000 --> 00:02.000", u" a\t", u"\u00A0b "}).captions,
            (Captions{{1, 1000, 2000, u"a\r\n\u00A0b"}}));
}

TEST(WebVTT, KeepsACueWithoutText) {
  EXPECT_EQ(loaded({u"00:01.000 --> 00:02.000", u"", u"00:03.000 --> 00:04.000"}).captions,
            (Captions{{1, 1000, 2000, u""}, {2, 3000, 4000, u""}}));
}

TEST(WebVTT, ReadsNothingFromOtherText) {
  EXPECT_EQ(loaded({}), (Loaded{{}, 0}));
  EXPECT_EQ(loaded({u"WEBVTT", u"", u"a", u"1 --> 2", u"-->"}), (Loaded{{}, 0}));
}

// --- The header

WString headerOf(const Lines& lines) {
  Subtitle subtitle;
  WebVTT().LoadSubtitle(subtitle, lines, u"");
  return subtitle.Header;
}

TEST(WebVTT, KeepsTheHeaderLineAsHeader) {
  EXPECT_EQ(headerOf({u" WEBVTT ", u"", u"00:01.000 --> 00:02.000", u"a"}), u"WEBVTT");
  EXPECT_EQ(headerOf({u"WEBVTT a comment", u"", u"00:01.000 --> 00:02.000", u"a"}), u"");
  EXPECT_EQ(headerOf({u"webvtt", u"", u"00:01.000 --> 00:02.000", u"a"}), u"");
}

TEST(WebVTT, LooksForTheHeaderUntilTheFirstCueIsComplete) {
  const Lines first{u"00:01.000 --> 00:02.000", u"a", u"WEBVTT", u"b"};
  EXPECT_EQ(headerOf(first), u"WEBVTT");
  EXPECT_EQ(loaded(first).captions, (Captions{{1, 1000, 2000, u"a\r\nb"}}));

  const Lines second{u"00:01.000 --> 00:02.000", u"a", u"00:03.000 --> 00:04.000", u"WEBVTT"};
  EXPECT_EQ(headerOf(second), u"");
  EXPECT_EQ(loaded(second).captions, (Captions{{1, 1000, 2000, u"a"}, {2, 3000, 4000, u"WEBVTT"}}));
}

// --- Formatting

WString stripped(WStringView text) {
  Subtitle subtitle = subtitleOf({{1, 0, 1, WString(text)}});
  SubRip target;
  WebVTT().StripNativeFormatting(subtitle, target);
  return subtitle.Paragraphs[0]->Text;
}

TEST(WebVTT, StripsTheFirstOpeningTagAndAllClosingOnesOfAName) {
  EXPECT_EQ(stripped(u"<v Ann>Hi</v> <v Bob>you</v>"), u"Hi <v Bob>you");
  EXPECT_EQ(stripped(u"<c red>a</c><span x>b</span><ruby y>c<rt z>d</rt></ruby>"), u"abcd");
}

TEST(WebVTT, StripsNothingElse) {
  EXPECT_EQ(stripped(u"<v>a</v> <i>b</i>"), u"<v>a</v> <i>b</i>");
  EXPECT_EQ(stripped(u"</v> <v Ann"), u"</v> <v Ann");
  EXPECT_EQ(stripped(u"plain"), u"plain");
}

// --- Recognising

TEST(WebVTT, RecognizesAnyCue) {
  EXPECT_TRUE(recognizes<WebVTT>({u"WEBVTT", u"", u"00:01.000 --> 00:02.000"}));
  EXPECT_FALSE(recognizes<WebVTT>({u"WEBVTT", u"", u"00:01.000"}));
  EXPECT_FALSE(recognizes<WebVTT>({}));
}

TEST(WebVTT, IsRecognizedByItsHeaderInAFileWithAMark) {
  EXPECT_EQ(recognized(std::string(utf8Mark) + "WEBVTT\n\n00:00:01.000 --> 00:00:02.000\nHi\n\n"
                                               "00:00:03.000 --> 00:00:04.000\nthere\n"),
            (Recognized{"WebVTT", 2}));
}

TEST(WebVTT, StandsBehindSubRipWithoutAMarkIfItsTimesHaveHours) {
  // The header line is gone, and SubRip forgives the points; all else becomes text of the first caption.
  EXPECT_EQ(recognized("WEBVTT\n\n00:00:01.000 --> 00:00:02.000\nHi\n\n00:00:03.000 --> 00:00:04.000\nthere\n"),
            (Recognized{"SubRip", 1}));
  EXPECT_EQ(recognized("WEBVTT\n\n00:01.000 --> 00:02.000\nHi\n\n00:03.000 --> 00:04.000\nthere\n"),
            (Recognized{"WebVTT", 2}));
}

TEST(WebVTT, LeavesSubRipFilesToSubRip) {
  EXPECT_EQ(recognized("1\n00:00:01,000 --> 00:00:02,000\n00:01.000 --> 00:02.000\n"), (Recognized{"SubRip", 1}));
}

// --- Hostile input

TEST(WebVTT, ReadsLongTextsAndLinesInLinearTime) {
  constexpr size_t count = 1000000;
  WString arrows;
  for (size_t i = 0; i < count; ++i) arrows += u"-->";
  EXPECT_EQ(timesOf(u"00:01.000 --> 00:02.000 " + arrows), (Captions{{1, 1000, 2000, u"x"}}));
  EXPECT_EQ(timesOf(u"00:00:01.000 " + arrows), Captions{});

  WString units = u"00:01.000 --> 00:02.000";
  std::vector<size_t> ends{units.size()};
  for (size_t i = 0; i < count; ++i) {
    units += u'a';
    ends.push_back(units.size());
  }
  const Loaded long_ = loaded(Lines(units, ends));
  ASSERT_EQ(long_.captions.size(), 1u);
  EXPECT_EQ(long_.captions[0].text.size(), count * 3 - 2);
}

}  // namespace
}  // namespace mova
