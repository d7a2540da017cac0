#include <gtest/gtest.h>

#include <limits>

#include "formats/line/SoftNiSub.h"
#include "unit/formats/Captions.h"

namespace mova {
namespace {

Loaded loaded(const Lines& lines, double frameRate = 25) {
  const FrameRateScope rate(frameRate);
  return load<SoftNiSub>(lines);
}

constexpr std::string_view head = "*PART 1*\n00:00:00.00\\00:00:00.00\n";

// Each byte of the ellipses and letters is a character of its own, so that the file spells it in two bytes.
constexpr std::string_view tail =
    "*END*\n"
    "\u00E2\u0080\u00A6\u00E2\u0080\u00A6\u00E2\u0080\u00A6..\\\u00E2\u0080\u00A6\u00E2\u0080\u00A6\u00E2\u0080\u00A6.."
    "\n"
    "*CODE*\n"
    "0000000000000000\n"
    "*CAST*\n"
    "*GENERATOR*\n"
    "*FONTS*\n"
    "*READ*\n"
    "0,300 15,000 130,000 100,000 25,000\n"
    "*TIMING*\n"
    "1 25 0\n"
    "*TIMED BACKUP NAME*\n"
    "C:\\\n"
    "*FORMAT SAMPLE "
    "\u00C3\u0085\u00C3\u00A5\u00C3\u0089\u00C3\u00A9\u00C3\u008C\u00C3\u00AC\u00C3\u0095\u00C3\u00B5\u00C3\u009B\u00C3"
    "\u00BB\u00C3\u00BF*\n"
    "*READ ADVANCED*\n"
    "< > 1 1 0,300\n"
    "*MARKERS*\n";

/// What is written between the head and the tail.
std::string writtenAt(double frameRate, const Captions& captions) {
  const FrameRateScope rate(frameRate);
  const std::string text = written<SoftNiSub>(captions);
  EXPECT_TRUE(text.starts_with(head));
  EXPECT_TRUE(text.ends_with(tail));
  return text.substr(head.size(), text.size() - head.size() - tail.size());
}

/// How the text of one caption is written.
std::string textOf(WStringView text) {
  const std::string entry = writtenAt(25, {{1, 1000, 3480, WString(text)}});
  constexpr std::string_view times = "\r\n00:00:01.00\\00:00:03.12\n";
  EXPECT_TRUE(entry.ends_with(times));
  return entry.substr(0, entry.size() - times.size());
}

/// How lines of text are read.
WString readText(std::initializer_list<WStringView> lines) {
  WString units = u"00:00:00.00\\00:00:00.00";
  std::vector<size_t> ends = {units.size()};
  for (WStringView line : lines) ends.push_back((units += line).size());
  ends.push_back((units += u"00:00:01.00\\00:00:03.12").size());
  const Loaded result = loaded(Lines(std::move(units), std::move(ends)));
  return result.captions.empty() ? u"(no caption)" : result.captions[0].text;
}

TEST(SoftNiSub, HasItsNames) {
  const SoftNiSub format;
  EXPECT_EQ(format.Name(), u"SoftNi sub");
  EXPECT_EQ(format.Extension(), u".sub");
  EXPECT_TRUE(format.ExtraExtensions().empty());
  EXPECT_FALSE(format.SupportsStyles());
  EXPECT_TRUE(format.IsTimeBased());
  EXPECT_TRUE(format.IsTextBased());
}

// --- Writing

TEST(SoftNiSub, WritesTheSectionsAloneForAnEmptySubtitle) {
  EXPECT_EQ(written<SoftNiSub>({}), std::string(head) + std::string(tail));
}

TEST(SoftNiSub, WritesTextAboveTimesAndMixedLineEnds) {
  EXPECT_EQ(writtenAt(25, {{1, 1000, 3480, u"first caption line\r\nsecond caption line"}, {2, 4000, 5000, u"b"}}),
            "first caption line\r\nsecond caption line\r\n00:00:01.00\\00:00:03.12\n"
            "b\r\n00:00:04.00\\00:00:05.00\n");
}

TEST(SoftNiSub, WrapsHoursAt24) {
  EXPECT_EQ(writtenAt(25, {{1, 90000000, 86400000, u"a"}}), "a\r\n01:00:00.00\\00:00:00.00\n");
}

TEST(SoftNiSub, WritesFramesAtStrangeRates) {
  EXPECT_EQ(writtenAt(29.97, {{1, 999, 1000, u"a"}}), "a\r\n00:00:00.29\\00:00:01.00\n");
  EXPECT_EQ(writtenAt(0, {{1, 999, 1000, u"a"}}), "a\r\n00:00:00.00\\00:00:01.00\n");
  EXPECT_EQ(writtenAt(-25, {{1, 500, 1000, u"a"}}), "a\r\n00:00:00.-12\\00:00:01.00\n");
  EXPECT_EQ(writtenAt(std::numeric_limits<double>::quiet_NaN(), {{1, 500, 1000, u"a"}}),
            "a\r\n00:00:00.01\\00:00:01.01\n");
}

TEST(SoftNiSub, WritesTheSignOfANegativeTimeAtEachField) {
  EXPECT_EQ(writtenAt(25, {{1, -1500, -3723480, u"a"}}), "a\r\n00:00:-1.-12\\-1:-2:-3.-12\n");
}

TEST(SoftNiSub, WritesAnItalicLineWithoutAClosingMark) {
  EXPECT_EQ(textOf(u"<i>a</i>"), "[a");
  EXPECT_EQ(textOf(u"<i>a</i>\r\n<i>b</i>"), "[a\r\n[b");
  EXPECT_EQ(textOf(u"<i></i>"), "[");
}

TEST(SoftNiSub, CarriesAnOpenTagToTheNextLine) {
  EXPECT_EQ(textOf(u"<i>a\r\nb</i>"), "[a\r\n[b]");
  EXPECT_EQ(textOf(u"<i>a\r\nb\r\nc</i>"), "[a\r\n[b\r\n[c]");
  EXPECT_EQ(textOf(u"<i>a</i> <i>b\r\nc</i>"), "[a] [b\r\n[c]");
  EXPECT_EQ(textOf(u"<i>a\r\nb"), "[a\r\n[b");
}

TEST(SoftNiSub, CarriesNothingFromALineThatDoesNotBeginWithATag) {
  EXPECT_EQ(textOf(u"a <i>b\r\nc</i>"), "a [b\r\nc]");
  EXPECT_EQ(textOf(u"<i>a</i> b\r\nc"), "[a] b\r\nc");
}

TEST(SoftNiSub, AsksForAnItalicLineWithoutTheCarriedTag) {
  EXPECT_EQ(textOf(u"<i>a\r\n<i>b</i>\r\nc"), "[a\r\n[[b\r\nc");
}

TEST(SoftNiSub, MarksOtherItalicsByBrackets) {
  EXPECT_EQ(textOf(u"a <i>b</i> c"), "a [b] c");
  EXPECT_EQ(textOf(u"<i>a</i> b <i>c</i>"), "[a] b [c");
}

TEST(SoftNiSub, RemovesOtherTags) {
  EXPECT_EQ(textOf(u"<b>a</b> <font color=\"#FF0000\">b</font> <u>c</u>"), "a <font color=\"#FF0000\">b c");
}

TEST(SoftNiSub, MarksACaptionAtTheTop) {
  EXPECT_EQ(textOf(u"{\\an8}a\r\nb"), "}a\r\nb");
  EXPECT_EQ(textOf(u"{\\an8}<i>a</i>"), "}[a");
  EXPECT_EQ(textOf(u"{\\an8}"), "}");
}

TEST(SoftNiSub, KeepsOtherPositions) {
  EXPECT_EQ(textOf(u"{\\an7}a"), "{\\an7}a");
  EXPECT_EQ(textOf(u"a{\\an8}"), "a{\\an8}");
}

TEST(SoftNiSub, CutsLinesAtAnyLineEnd) {
  EXPECT_EQ(textOf(u"a\nb\rc\r\n\r\nd\r\n"), "a\r\nb\r\nc\r\nd");
  EXPECT_EQ(textOf(u"\r\n"), "");
  EXPECT_EQ(textOf(u""), "");
}

TEST(SoftNiSub, EndsATextAtAZeroUnit) {
  EXPECT_EQ(textOf(WStringView(u"a\0b", 3)), "a");
}

// --- Reading

TEST(SoftNiSub, ReadsTheTextAboveATimeLine) {
  EXPECT_EQ(loaded({u"*PART 1*", u"00:00:00.00\\00:00:00.00", u"first", u"second", u"00:00:01.00\\00:00:03.12",
                    u"third", u"00:00:04.00\\00:00:05.00", u"*END*", u"behind"}),
            (Loaded{{{1, 1000, 3480, u"first\r\nsecond"}, {2, 4000, 5000, u"third"}}, 0}));
}

TEST(SoftNiSub, TakesTextAheadOfTheFirstTimesForNothing) {
  EXPECT_EQ(loaded({u"a", u"00:00:01.00\\00:00:03.12", u"b", u"00:00:04.00\\00:00:05.00"}),
            (Loaded{{{1, 4000, 5000, u"b"}}, 0}));
}

TEST(SoftNiSub, SkipsBlankLinesAndSections) {
  EXPECT_EQ(readText({u"", u"*END*", u"a", u"  ", u"*b", u" *c", u"d*"}), u"a\r\n *c\r\nd*");
}

TEST(SoftNiSub, TrimsTheTextAndNotItsLines) {
  EXPECT_EQ(readText({u"  a ", u"  b  "}), u"a \r\n  b");
}

TEST(SoftNiSub, DropsACaptionWithoutText) {
  EXPECT_EQ(readText({}), u"(no caption)");
  EXPECT_EQ(loaded({u"00:00:00.00\\00:00:00.00", u"00:00:01.00\\00:00:02.00", u"a", u"00:00:03.00\\00:00:04.00"}),
            (Loaded{{{1, 3000, 4000, u"a"}}, 0}));
}

TEST(SoftNiSub, ClosesItalicsWithTheLine) {
  EXPECT_EQ(readText({u"[a"}), u"<i>a</i>");
  EXPECT_EQ(readText({u"[a", u"b"}), u"<i>a</i>\r\nb");
  EXPECT_EQ(readText({u"a [b] c"}), u"a <i>b</i> c");
  EXPECT_EQ(readText({u"a]"}), u"a</i>");
  EXPECT_EQ(readText({u"[[a"}), u"<i><i>a</i>");
}

TEST(SoftNiSub, JoinsItalicsOfLinesThatFollowEachOther) {
  EXPECT_EQ(readText({u"[a", u"[b"}), u"<i>a\r\nb</i>");
  EXPECT_EQ(readText({u"[a", u"[b]"}), u"<i>a\r\nb</i>");
  EXPECT_EQ(readText({u"[a", u" [b"}), u"<i>a</i>\r\n <i>b</i>");
}

TEST(SoftNiSub, ReadsAMarkAtTheTop) {
  EXPECT_EQ(readText({u"}a", u"b"}), u"{\\an8}a\r\nb");
  EXPECT_EQ(readText({u"  }[a"}), u"{\\an8}<i>a</i>");
  EXPECT_EQ(readText({u"a}"}), u"a}");
  EXPECT_EQ(readText({u"}}a"}), u"{\\an8}}a");
}

TEST(SoftNiSub, KeepsACaptionOfAMarkAtTheTopAlone) {
  EXPECT_EQ(readText({u"}"}), u"{\\an8}");
}

TEST(SoftNiSub, ReadsCarriageReturnsAsLineEnds) {
  EXPECT_EQ(readText({u"a\rb", u"c\r"}), u"a\r\nb\r\nc");
}

TEST(SoftNiSub, TrimsTheTimeLine) {
  EXPECT_EQ(loaded({u"00:00:00.00\\00:00:00.00", u"a", u"  00:00:01.00\\00:00:03.12\t"}),
            (Loaded{{{1, 1000, 3480, u"a"}}, 0}));
}

TEST(SoftNiSub, TakesOtherFormsForText) {
  for (WStringView line : {u"00:00:01:00\\00:00:03:12", u"00:00:01.00/00:00:03.12", u"00:00:01.00 \\00:00:03.12",
                           u"00:00:01.00\\00:00:03.12 x", u"0:00:01.00\\00:00:03.12", u"100:00:01.00\\00:00:03.12",
                           u"00:00:-1.00\\00:00:03.12", u"00:00:01.00\t00:00:03.12"}) {
    EXPECT_EQ(readText({line}), line);
  }
}

TEST(SoftNiSub, PassesOverTimesThatHideMoreBehindAZeroUnit) {
  EXPECT_EQ(loaded({u"00:00:00.00\\00:00:00.00", u"a", WStringView(u"00:00:01.00\\00:00:03.12\0x", 25)}),
            (Loaded{{{1, 1000, 3480, u"a"}}, 0}));
  EXPECT_EQ(loaded({u"00:00:00.00\\00:00:00.00", u"a", WStringView(u"00:00:01.00\\00:00:03.12\0:x", 26), u"b",
                    u"00:00:04.00\\00:00:05.00"}),
            (Loaded{{{1, 4000, 5000, u"a\r\nb"}}, 0}));
}

TEST(SoftNiSub, ReadsAtStrangeRates) {
  const Lines lines = {u"00:00:00.00\\00:00:00.00", u"a", u"00:00:01.00\\00:00:02.12"};
  EXPECT_EQ(loaded(lines, 0).captions, (Captions{{1, 1001, 2001, u"a"}}));
  EXPECT_EQ(loaded(lines, -25).captions, (Captions{{1, 1000, 1520, u"a"}}));
  EXPECT_EQ(loaded(lines, 0.001).captions, (Captions{{1, 1000, 2999, u"a"}}));
  EXPECT_EQ(loaded(lines, 1e9).captions, (Captions{{1, 1000, 2000, u"a"}}));
}

TEST(SoftNiSub, ReadsWhatItWrites) {
  const FrameRateScope rate(25);
  const std::string file = written<SoftNiSub>({{1, 1000, 3480, u"{\\an8}<i>a\r\nb</i>"}, {2, 4000, 5000, u"c"}});
  EXPECT_EQ(recognized(file), (Recognized{"SoftNi sub", 2}));
  EXPECT_EQ(recognized(utf8Mark.data() + file), (Recognized{"SoftNi sub", 2}));
}

TEST(SoftNiSub, NeedsACaption) {
  EXPECT_FALSE(recognizes<SoftNiSub>({}));
  EXPECT_FALSE(recognizes<SoftNiSub>({u"*PART 1*", u"00:00:00.00\\00:00:00.00", u"*END*"}));
}

TEST(SoftNiSub, StandsAheadOfTheDvdLists) {
  const std::string softNi = "00:00:00.00\\00:00:00.00\na\n00:00:01.00\\00:00:03.12\n";
  const std::string list = "00:00:01:00 - 00:00:02:00  \tlist\n";
  EXPECT_EQ(recognized("first line\n" + list + softNi), (Recognized{"SoftNi sub", 1}));
  EXPECT_EQ(recognized("first line\n" + list), (Recognized{"Sony DVDArchitect", 1}));
}

}  // namespace
}  // namespace mova
