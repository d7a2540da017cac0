#include "formats/line/Csv3.h"
#include "unit/formats/Captions.h"

namespace mova {
namespace {

const std::string header = "Start time (hh:mm:ss:ff),End time (hh:mm:ss:ff),\"Line 1\",\"Line 2\"";

class Csv3Test : public testing::Test {
 protected:
  FrameRateScope rate_{25};
};

Loaded loaded(const Lines& lines) {
  return load<Csv3>(lines);
}

/// The text of a record that ends in these fields.
std::string textOf(WStringView fields) {
  const Loaded one = loaded({u"00:00:01:00,00:00:02:00," + WString(fields)});
  return one.captions.size() == 1 ? wideToString(one.captions[0].text) : "no record";
}

TEST(Csv3, HasItsNames) {
  const Csv3 format;
  EXPECT_EQ(format.Name(), u"Csv3");
  EXPECT_EQ(format.Extension(), u".csv");
  EXPECT_TRUE(format.ExtraExtensions().empty());
  EXPECT_FALSE(format.SupportsStyles());
}

// --- Writing

TEST_F(Csv3Test, WritesTwoLinesInFieldsOfTheirOwn) {
  EXPECT_EQ(written<Csv3>({{1, 1000, 2040, u"A\r\nB"}, {2, 3723120, 360000000, u"C"}, {3, 0, 0, u""}}),
            header +
                "\n00:00:01:00,00:00:02:01,\"A\",\"B\""
                "\n01:02:03:03,100:00:00:00,\"C\",\"\""
                "\n00:00:00:00,00:00:00:00,\"\",\"\"");
  EXPECT_EQ(written<Csv3>({}), header);
}

TEST_F(Csv3Test, DoublesQuotesWhenWriting) {
  EXPECT_EQ(written<Csv3>({{1, 0, 0, u"say \"hi\"\r\n\""}}),
            header + "\n00:00:00:00,00:00:00:00,\"say \"\"hi\"\"\",\"\"\"\"");
}

TEST_F(Csv3Test, SplitsAtLoneLineEndsAndDropsEmptyLines) {
  EXPECT_EQ(written<Csv3>({{1, 0, 0, u" \r\n a \r\r\n\nb \r\n"}}), header + "\n00:00:00:00,00:00:00:00,\"a \",\"b\"");
}

TEST_F(Csv3Test, BreaksACaptionOfThreeLinesIntoTwo) {
  EXPECT_EQ(written<Csv3>({{1, 0, 0, u"The first line,\r\nthe second line\r\nand the third line."}}),
            header + "\n00:00:00:00,00:00:00:00,\"The first line, the second\",\"line and the third line.\"");
  // Below ten units they become one.
  EXPECT_EQ(written<Csv3>({{1, 0, 0, u"a\r\nb\r\nc"}}), header + "\n00:00:00:00,00:00:00:00,\"a b c\",\"\"");
}

TEST_F(Csv3Test, DropsFurtherLinesOfACaptionThatStaysUnbroken) {
  // Short lines of several speakers are left as they are.
  EXPECT_EQ(written<Csv3>({{1, 0, 0, u"\u2014A\r\n\u2014B\r\n\u2014C"}}), header +
                                                                              "\n00:00:00:00,00:00:00:00,\"\xE2\x80\x94"
                                                                              "A\",\"\xE2\x80\x94"
                                                                              "B\"");
}

TEST_F(Csv3Test, EndsALineAtAZeroUnitWhenWriting) {
  EXPECT_EQ(written<Csv3>({{1, 0, 0, WString(u"a\0b\r\nc", 6)}}), header + "\n00:00:00:00,00:00:00:00,\"a\",\"c\"");
}

// --- Texts

TEST_F(Csv3Test, ReadsARecord) {
  EXPECT_EQ(loaded({u"00:00:01:00,00:00:02:12,\"A\",\"B\""}), (Loaded{{{1, 1000, 2480, u"A\r\nB"}}, 0}));
}

TEST_F(Csv3Test, ReadsARecordWithoutASecondLine) {
  EXPECT_EQ(textOf(u"\"A\",\"\""), "A");
  EXPECT_EQ(textOf(u"\"A\""), "A");
  EXPECT_EQ(textOf(u"A"), "A");
  EXPECT_EQ(textOf(u""), "");
}

TEST_F(Csv3Test, ReadsARecordWithoutAFirstLine) {
  // The pair of quotes becomes one, which is cut off, and the comma stays.
  EXPECT_EQ(textOf(u"\"\",\"B\""), ",B");
  EXPECT_EQ(textOf(u"\"\",\"\""), ",");
}

TEST_F(Csv3Test, DropsBlanksBetweenTheLines) {
  EXPECT_EQ(textOf(u" \"A\" , \"B\" "), "A\r\nB");
  EXPECT_EQ(textOf(u"\"A\" x,\"B\""), "Ax,B");
  EXPECT_EQ(textOf(u"\"A\"\t,\"B\""), "A\t,B");
}

TEST_F(Csv3Test, KeepsCommasWithinALine) {
  EXPECT_EQ(textOf(u"\"a, b\",\"c, d\""), "a, b\r\nc, d");
  EXPECT_EQ(textOf(u"a, b"), "a, b");
}

TEST_F(Csv3Test, MakesALineBreakOfEveryCommaBetweenTheLines) {
  EXPECT_EQ(textOf(u"\"a\",,\"b\""), "a\r\n\r\nb");
}

TEST_F(Csv3Test, LosesAQuoteWithinALineForTheEndOfIt) {
  // A pair becomes one quote first, and that ends line 1 if it stands alone. Blanks behind it go.
  EXPECT_EQ(textOf(u"\"say \"\"hi\"\" now\""), "say hinow");
  EXPECT_EQ(textOf(u"\"a\"\", b\",\"c\""), "a\r\nb\r\nc");
}

TEST_F(Csv3Test, TreatsTheSecondQuoteOfAPairByItself) {
  // Three quotes become two: the first is text, the second the end of line 1.
  EXPECT_EQ(textOf(u"\"say \"\"hi\"\"\",\"B\""), "say hi\"\r\nB");
  EXPECT_EQ(textOf(u"\"A\",\"\"\"B\"\""), "A\r\n\"B");
}

TEST_F(Csv3Test, TakesAQuoteAtTheEndsAndBehindALineBreakForText) {
  EXPECT_EQ(textOf(u"\"\"\"\"a"), "\"a");
  EXPECT_EQ(textOf(u"a\"\"\"\""), "a\"");
  EXPECT_EQ(textOf(u"\"a\", b\"c"), "a\r\nbc");
  EXPECT_EQ(textOf(u"a\r\n\"b"), "a\r\n\"b");
}

// --- Records

TEST_F(Csv3Test, CountsOtherLinesAsErrorsButNotBlankOnes) {
  EXPECT_EQ(
      loaded({u"Start,End,\"Line 1\"", u"", u" \t", u"00:00:01:00,00:00:02:00,\"a", u"b\"", u"0:00:01:00,00:00:02:00,a",
              u"00:00:01:00,00:00:02:00", u"00:00:01:00;00:00:02:00;a", u"1,00:00:01:00,00:00:02:00,a"}),
      (Loaded{{{1, 1000, 2000, u"a"}}, 6}));
}

TEST_F(Csv3Test, CapsFrames) {
  EXPECT_EQ(loaded({u"00:00:01:30,99:99:99:99,a"}).captions, (Captions{{1, 1999, 362439999, u"a"}}));
}

// --- Recognising

TEST_F(Csv3Test, RecognizesMoreRecordsThanOtherLines) {
  EXPECT_TRUE(recognizes<Csv3>({u"00:00:01:00,00:00:02:00,a"}));
  EXPECT_FALSE(recognizes<Csv3>({u"Start,x", u"00:00:01:00,00:00:02:00,a"}));
  EXPECT_TRUE(recognizes<Csv3>({u"00:00:01:00,00:00:02:00,\"a", u"b\""}));
  EXPECT_FALSE(recognizes<Csv3>({u"00:00:01:00,00:00:02:00,a", u"b"}));
  EXPECT_FALSE(recognizes<Csv3>({}));
}

Lines recordsAnd(size_t misses, WStringView last = u"") {
  WString units;
  std::vector<size_t> ends;
  for (size_t i = 0; i < 100; ++i) ends.push_back((units += u"00:00:01:00,00:00:02:00,a").size());
  for (size_t i = 0; i < misses; ++i) ends.push_back((units += u"x").size());
  ends.push_back((units += last).size());
  return Lines(units, ends);
}

TEST_F(Csv3Test, RecognizesNothingWith21OtherLines) {
  EXPECT_TRUE(recognizes<Csv3>(recordsAnd(20)));
  EXPECT_FALSE(recognizes<Csv3>(recordsAnd(21)));
}

TEST_F(Csv3Test, RecognizesNothingWithAMarkerOfAnotherFormat) {
  EXPECT_TRUE(recognizes<Csv3>(recordsAnd(0, u"$Fontname = Arial")));
  EXPECT_TRUE(recognizes<Csv3>(recordsAnd(0, u" $FontName = Arial")));
  EXPECT_TRUE(recognizes<Csv3>(recordsAnd(0, u"$ColorIndex2 = 1")));
  EXPECT_FALSE(recognizes<Csv3>(recordsAnd(0, u"$FontName = Arial")));
  EXPECT_FALSE(recognizes<Csv3>(recordsAnd(0, u"$ColorIndex1 = 1")));
}

TEST_F(Csv3Test, IsRecognizedInAFile) {
  EXPECT_EQ(recognized("Start,x\n00:00:01:00,00:00:02:00,\"A\",\"B\"\n"), (Recognized{"Csv3", 1}));
}

TEST_F(Csv3Test, StandsBehindTheOtherCsvForms) {
  EXPECT_EQ(recognized("\n00:00:01:00,00:00:02:00,\"a\",\"\"\n1,00:00:01:00,00:00:02:00,\"b\"\n"
                       "00:00:03:00,00:00:04:00,\"c\",\"\"\n"),
            (Recognized{"Csv3", 2}));
}

// --- Hostile input

TEST_F(Csv3Test, ReadsLongLinesOfQuotesAndSeparators) {
  EXPECT_EQ(textOf(WString(1000000, u',')), std::string(1000000, ','));
  // A million quotes are half a million after pairing; each but the last two stays, and the ends are cut off.
  EXPECT_EQ(textOf(WString(1000000, u'"')).size(), 499998u);
}

}  // namespace
}  // namespace mova
