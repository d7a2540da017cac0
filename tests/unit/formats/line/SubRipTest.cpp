#include <gtest/gtest.h>

#include "formats/line/SubRip.h"

namespace mova {
namespace {

struct Caption {
  int32_t number;
  double start;
  double end;
  WString text;
  bool operator==(const Caption&) const = default;
  friend void PrintTo(const Caption& c, std::ostream* out) {
    *out << c.number << ' ' << c.start << ' ' << c.end << ' ' << std::string(c.text.begin(), c.text.end());
  }
};
using Captions = std::vector<Caption>;

Captions captions(const Subtitle& subtitle) {
  Captions result;
  for (const auto& p : subtitle.Paragraphs) {
    result.push_back({p->Number, p->StartTime.TotalMilliseconds, p->EndTime.TotalMilliseconds, p->Text});
  }
  return result;
}

struct Loaded {
  Captions captions;
  int32_t errors;
};

Loaded load(const Lines& lines) {
  SubRip format;
  Subtitle subtitle;
  format.LoadSubtitle(subtitle, lines, u"film.srt");
  return {captions(subtitle), format.ErrorCount};
}

/// The times that a line gives between a number and a text.
Captions timesOf(WStringView line) {
  return load({u"1", line, u"x", u""}).captions;
}

WString written(std::vector<Caption> captions) {
  Subtitle subtitle;
  for (const Caption& c : captions) subtitle.Append({c.text, c.start, c.end}).Number = c.number;
  return SubRip().WriteText(subtitle, u"title");
}

TEST(SubRip, HasItsNames) {
  const SubRip format;
  EXPECT_EQ(format.Name(), u"SubRip");
  EXPECT_EQ(format.Extension(), u".srt");
  EXPECT_EQ(format.ExtraExtensions(), std::vector<WString>{u".wsrt"});
  EXPECT_FALSE(format.SupportsStyles());
}

// --- Writing

TEST(SubRip, WritesAColonBeforeTheMilliseconds) {
  EXPECT_EQ(written({{1, 1500, 2500, u"Hi"}, {2, 3000, 4000, u"a\r\nb"}}),
            u"1\r\n00:00:01:500 --> 00:00:02:500\r\nHi\r\n\r\n2\r\n00:00:03:000 --> 00:00:04:000\r\na\r\nb\r\n\r\n");
}

TEST(SubRip, WritesLineEndsForAnEmptySubtitle) {
  EXPECT_EQ(written({}), u"\r\n\r\n");
}

TEST(SubRip, WritesNumbersAsTheyStand) {
  EXPECT_EQ(written({{-7, 0, 1, u"a"}}), u"-7\r\n00:00:00:000 --> 00:00:00:001\r\na\r\n\r\n");
}

TEST(SubRip, WritesNegativeTimes) {
  EXPECT_EQ(written({{1, -1000, 1, u"a"}}), u"1\r\n-00:00:01:000 --> 00:00:00:001\r\na\r\n\r\n");
}

TEST(SubRip, HalvesBlankLinesOfATextTwiceWhenWriting) {
  // Eight line ends become four, and those two.
  EXPECT_EQ(written({{1, 0, 1, u"a\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\nb"}}),
            u"1\r\n00:00:00:000 --> 00:00:00:001\r\na\r\n\r\nb\r\n\r\n");
}

TEST(SubRip, TrimsTheEndOfTheWholeFile) {
  EXPECT_EQ(written({{1, 0, 1, u"a \t"}}), u"1\r\n00:00:00:000 --> 00:00:00:001\r\na\r\n\r\n");
  EXPECT_EQ(written({{1, 0, 1, u"a "}, {2, 0, 1, u""}}),
            u"1\r\n00:00:00:000 --> 00:00:00:001\r\na \r\n\r\n2\r\n00:00:00:000 --> 00:00:00:001\r\n\r\n");
}

TEST(SubRip, EndsATextAtAZeroUnitWhenWriting) {
  EXPECT_EQ(written({{1, 0, 1, WString(u"a\0b", 3)}, {2, 0, 1, u"c"}}),
            u"1\r\n00:00:00:000 --> 00:00:00:001\r\na\r\n\r\n2\r\n00:00:00:000 --> 00:00:00:001\r\nc\r\n\r\n");
}

// --- Blocks

TEST(SubRip, ReadsABlock) {
  const Loaded loaded = load({u"1", u"00:00:01,000 --> 00:00:02,500", u"Hi", u"there", u""});
  EXPECT_EQ(loaded.captions, (Captions{{1, 1000, 2500, u"Hi\r\nthere"}}));
  EXPECT_EQ(loaded.errors, 0);
}

TEST(SubRip, AcceptsABlockWithoutItsNumberAndRenumbers) {
  const Loaded loaded =
      load({u"00:00:01,000 --> 00:00:02,500", u"Hi", u"", u"7", u"00:00:03,000 --> 00:00:04,000", u"there", u""});
  EXPECT_EQ(loaded.captions, (Captions{{1, 1000, 2500, u"Hi"}, {2, 3000, 4000, u"there"}}));
  EXPECT_EQ(loaded.errors, 0);
}

TEST(SubRip, KeepsTheNumbersOfTheFile) {
  const Loaded loaded =
      load({u"9", u"00:00:01,000 --> 00:00:02,500", u"Hi", u"", u"3", u"00:00:03,000 --> 00:00:04,000", u"there", u""});
  EXPECT_EQ(loaded.captions, (Captions{{9, 1000, 2500, u"Hi"}, {3, 3000, 4000, u"there"}}));
}

TEST(SubRip, CountsOneErrorForTwoBlankLinesBetweenBlocksAndRenumbers) {
  const Loaded loaded = load(
      {u"5", u"00:00:01,000 --> 00:00:02,500", u"Hi", u"", u"", u"6", u"00:00:03,000 --> 00:00:04,000", u"there", u""});
  EXPECT_EQ(loaded.captions, (Captions{{1, 1000, 2500, u"Hi"}, {2, 3000, 4000, u"there"}}));
  EXPECT_EQ(loaded.errors, 1);
}

TEST(SubRip, TakesDigitsBehindATextLineAsText) {
  EXPECT_EQ(load({u"1", u"00:00:01,000 --> 00:00:02,500", u"Hi", u"1984", u""}).captions,
            (Captions{{1, 1000, 2500, u"Hi\r\n1984"}}));
}

TEST(SubRip, TakesDigitsBehindABlankLineAsTheNextNumber) {
  const Loaded loaded = load({u"1", u"00:00:01,000 --> 00:00:02,500", u"Hi", u"", u"1984", u"more", u""});
  EXPECT_EQ(loaded.captions, (Captions{{1, 1000, 2500, u"Hi"}}));
  EXPECT_EQ(loaded.errors, 1);  // "more" is no time line.
}

TEST(SubRip, KeepsABlankLineWithinAText) {
  EXPECT_EQ(load({u"1", u"00:00:01,000 --> 00:00:02,500", u"Hi", u"", u"there", u""}).captions,
            (Captions{{1, 1000, 2500, u"Hi\r\nthere"}}));
}

TEST(SubRip, JoinsBlankLinesWithinATextOnce) {
  // Two blank lines leave three line ends in a row, of which the first two become one.
  EXPECT_EQ(load({u"1", u"00:00:01,000 --> 00:00:02,500", u"Hi", u"", u"a", u"", u"b", u""}).captions,
            (Captions{{1, 1000, 2500, u"Hi\r\na\r\nb"}}));
}

TEST(SubRip, JoinsAStrayLineToTheBlockBeforeWhenTheNextNumberFollows) {
  const Loaded loaded = load({u"1", u"00:00:01,000 --> 00:00:02,000", u"Hi", u"", u"3", u"x", u"stray", u"and", u"2",
                              u"00:00:03,000 --> 00:00:04,000", u"there", u""});
  EXPECT_EQ(loaded.captions, (Captions{{1, 1000, 2000, u"Hi\r\nstray"}, {2, 3000, 4000, u"there"}}));
  EXPECT_EQ(loaded.errors, 1);  // "x" is no time line; the stray lines are no errors.
}

TEST(SubRip, CountsStrayLinesAsErrorsBeforeTheFirstBlockOnly) {
  EXPECT_EQ(load({u"a", u"b", u"1", u"00:00:01,000 --> 00:00:02,000", u"Hi", u""}).errors, 2);
}

TEST(SubRip, KeepsTheLastBlockOfATrialForTheLoadThatFollows) {
  SubRip format;
  const Lines lines{u"stray", u"1", u"00:00:01,000 --> 00:00:02,000", u"Hi", u""};
  {
    Subtitle trial;
    format.LoadSubtitle(trial, lines, u"");
    EXPECT_EQ(format.ErrorCount, 1);
  }
  Subtitle subtitle;
  format.LoadSubtitle(subtitle, lines, u"");
  EXPECT_EQ(format.ErrorCount, 0);
  // A stray line that belongs to the trial's last block changes nothing here.
  format.LoadSubtitle(subtitle, {u"stray", u"more", u"2", u"00:00:01,000 --> 00:00:02,000", u"Ho", u""}, u"");
  EXPECT_EQ(captions(subtitle), (Captions{{2, 1000, 2000, u"Ho"}}));
}

TEST(SubRip, KeepsALastBlockWithoutABlankLineIfItLasts) {
  EXPECT_EQ(load({u"1", u"00:00:01,000 --> 00:00:02,500", u"Hi"}).captions, (Captions{{1, 1000, 2500, u"Hi"}}));
  EXPECT_EQ(load({u"1", u"00:00:01,000 --> 00:00:01,000", u"Hi"}).captions, Captions{});
  EXPECT_EQ(load({u"1", u"00:00:01,000 --> 00:00:01,000", u"Hi", u""}).captions, (Captions{{1, 1000, 1000, u"Hi"}}));
}

TEST(SubRip, KeepsABlockWithoutTextWhenANumberOrTimesFollow) {
  const Loaded numbered =
      load({u"1", u"00:00:01,000 --> 00:00:02,000", u"", u"2", u"00:00:03,000 --> 00:00:04,000", u"Hi", u""});
  EXPECT_EQ(numbered.captions, (Captions{{1, 1000, 2000, u""}, {2, 3000, 4000, u"Hi"}}));
  const Loaded timed =
      load({u"1", u"00:00:01,000 --> 00:00:02,000", u"", u"00:00:03,000 --> 00:00:04,000", u"Hi", u""});
  EXPECT_EQ(timed.captions, (Captions{{1, 1000, 2000, u""}, {2, 3000, 4000, u"Hi"}}));
}

TEST(SubRip, SkipsBlankLinesInFrontOfAText) {
  EXPECT_EQ(load({u"1", u"00:00:01,000 --> 00:00:02,000", u"", u"", u"Hi", u""}).captions,
            (Captions{{1, 1000, 2000, u"Hi"}}));
}

TEST(SubRip, TrimsDeleteCharactersAroundALine) {
  EXPECT_EQ(load({u"\x7F"
                  u"1\x7F",
                  u"\x7F"
                  u"00:00:01,000 --> 00:00:02,000\x7F  ",
                  u"\x7FHi\x7F", u""})
                .captions,
            (Captions{{1, 1000, 2000, u"Hi"}}));
}

TEST(SubRip, TurnsZeroUnitsOfATextIntoBlanks) {
  EXPECT_EQ(load({u"1", u"00:00:01,000 --> 00:00:02,000", WStringView(u"a\0b\0", 4), u""}).captions,
            (Captions{{1, 1000, 2000, u"a b"}}));
}

TEST(SubRip, JoinsTheBlankLineThatALineOfZeroUnitsLeaves) {
  EXPECT_EQ(load({u"1", u"00:00:01,000 --> 00:00:02,000", u"a", WStringView(u"\0\0", 2), u"b", u""}).captions,
            (Captions{{1, 1000, 2000, u"a\r\nb"}}));
}

TEST(SubRip, ReadsNumbersUpToTheLimitOf32Bits) {
  EXPECT_EQ(load({u"99999999999999999999", u"00:00:01,000 --> 00:00:02,000", u"Hi", u""}).captions,
            (Captions{{2147483647, 1000, 2000, u"Hi"}}));
}

// --- Time lines

TEST(SubRip, AcceptsCommaColonAndDotBeforeTheMilliseconds) {
  EXPECT_EQ(timesOf(u"00:00:01.500 --> 00:00:02:500"), (Captions{{1, 1500, 2500, u"x"}}));
  EXPECT_EQ(timesOf(u"0:00:01.500 --> 0:00:02,500"), (Captions{{1, 1500, 2500, u"x"}}));
}

TEST(SubRip, AcceptsASemicolonWithTwoDigitHoursOnly) {
  EXPECT_EQ(timesOf(u"00:00:01;500 --> 00:00:02;500"), (Captions{{1, 1500, 2500, u"x"}}));
  EXPECT_EQ(timesOf(u"0:00:01;500 --> 0:00:02;500"), Captions{});
}

TEST(SubRip, CutsCoordinatesBehindTheTimes) {
  EXPECT_EQ(timesOf(u"00:00:01,500 --> 00:00:02,500 X1:40 X2:600 Y1:20 Y2:50"), (Captions{{1, 1500, 2500, u"x"}}));
  EXPECT_EQ(timesOf(u"0:00:01,500 --> 0:00:02,500 X1:40 X2:600 Y1:20 Y2:50"), Captions{});
}

TEST(SubRip, AcceptsOddArrows) {
  for (WStringView arrow : {u" -> ", u" - > ", u" ->> ", u" -- > ", u" -->> ", u" ---> ", u"-->", u"  -- >"}) {
    WString line = u"00:00:01,500";
    line += arrow;
    line += u"00:00:02,500";
    EXPECT_EQ(timesOf(line), (Captions{{1, 1500, 2500, u"x"}})) << std::string(arrow.begin(), arrow.end());
  }
  EXPECT_EQ(timesOf(u"00:00:01,500->00:00:02,500"), Captions{});
  // " - -> " holds " -> ", which is replaced first.
  EXPECT_EQ(timesOf(u"00:00:01,500 - -> 00:00:02,500"), Captions{});
}

TEST(SubRip, AcceptsMisDecodedCommas) {
  EXPECT_EQ(timesOf(u"00:00:01\u00D8\u0152500 --> 00:00:02\u00EF\u0178\u02C6500"), (Captions{{1, 1500, 2500, u"x"}}));
  EXPECT_EQ(timesOf(u"00:00:01\u00C2\u00A1500 --> 00:00:02,500"), (Captions{{1, 1500, 2500, u"x"}}));
}

TEST(SubRip, AcceptsTheLettersOfItsPatternAroundTheArrow) {
  EXPECT_EQ(timesOf(u"00:00:01,500tnr\\-->00:00:02,500"), (Captions{{1, 1500, 2500, u"x"}}));
  // Behind the arrow the letters become part of the hours, which are then no number.
  EXPECT_EQ(timesOf(u"00:00:01,500-->t01:00:02,500"), (Captions{{1, 1500, 2500, u"x"}}));
}

TEST(SubRip, AcceptsTabsAroundTheArrowWithCommasAndPlainDigitsOnly) {
  EXPECT_EQ(timesOf(u"00:00:01,500\t-->\t00:00:02,500"), (Captions{{1, 1500, 2500, u"x"}}));
  EXPECT_EQ(timesOf(u"00:00:01:500\t-->\t0:00:02:500"), Captions{});
}

TEST(SubRip, ReadsMillisecondsAsANumber) {
  EXPECT_EQ(timesOf(u"00:00:01,5 --> 00:00:02,50"), (Captions{{1, 1005, 2050, u"x"}}));
}

TEST(SubRip, ReadsNegativeTimes) {
  EXPECT_EQ(timesOf(u"-00:00:01,000 --> 00:00:02,000"), (Captions{{1, -1000, 2000, u"x"}}));
  EXPECT_EQ(timesOf(u"-00:00:03,000 --> -00:00:02,000"), (Captions{{1, -3000, -2000, u"x"}}));
  EXPECT_EQ(timesOf(u"-01:00:00,000 --> 00:00:02,000"), (Captions{{1, -3600000, 2000, u"x"}}));
  EXPECT_EQ(timesOf(u"00:-1:00,000 --> 00:00:02,000"), (Captions{{1, -60000, 2000, u"x"}}));
}

TEST(SubRip, WrapsTimesAt32Bits) {
  EXPECT_EQ(timesOf(u"1000:00:00,000 --> 99999999999:00:00,000"), (Captions{{1, -694967296, -3600000, u"x"}}));
}

TEST(SubRip, CountsALineThatIsNoTimeLine) {
  const Loaded loaded = load({u"1", u"00:00:01 --> 00:00:02", u"x", u""});
  EXPECT_EQ(loaded.captions, Captions{});
  EXPECT_EQ(loaded.errors, 2);  // the times, and the text that is no number
}

// --- Recognising

TEST(SubRip, RefusesWhatStartsAsWebVttDoes) {
  SubRip format;
  EXPECT_FALSE(format.Recognizes({u"webvtt file", u"00:00:01,000 --> 00:00:02,000", u"Hi", u""}, u""));
  EXPECT_TRUE(format.Recognizes(
      {u"WEBVT", u"", u"00:00:01,000 --> 00:00:02,000", u"Hi", u"", u"2", u"00:00:01,000 --> 00:00:02,000", u"Hi", u""},
      u""));
}

TEST(SubRip, AcceptsMoreParagraphsThanErrors) {
  SubRip format;
  EXPECT_FALSE(format.Recognizes({}, u""));
  EXPECT_TRUE(format.Recognizes({u"00:00:01,000 --> 00:00:02,000", u"Hi"}, u""));
  EXPECT_FALSE(format.Recognizes({u"junk", u"00:00:01,000 --> 00:00:02,000", u"Hi"}, u""));
}

TEST(SubRip, AcceptsAWebVttFileWithHoursBehindItsFirstLine) {
  SubRip format;
  EXPECT_TRUE(format.Recognizes(
      {u"", u"00:00:01.000 --> 00:00:02.000", u"Hi", u"", u"00:00:03.000 --> 00:00:04.000", u"there"}, u""));
}

// --- Hostile input

TEST(SubRip, ReadsAMillionStrayLinesInLinearTime) {
  WString units;
  std::vector<size_t> ends;
  const auto add = [&](WStringView line) {
    units += line;
    ends.push_back(units.size());
  };
  add(u"00:00:01,000 --> 00:00:02,000");
  add(u"Hi");
  add(u"");
  add(u"1");
  for (int i = 0; i < 300000; ++i) {
    add(u"no time");
    add(u"stray");
    add(u"and");
    add(u"1");
  }
  SubRip format;
  Subtitle subtitle;
  format.LoadSubtitle(subtitle, Lines(std::move(units), std::move(ends)), u"");
  ASSERT_EQ(subtitle.Paragraphs.size(), 1u);
  EXPECT_EQ(subtitle.Paragraphs[0]->Text.size(), 2u + 300000 * 7);
}

}  // namespace
}  // namespace mova
