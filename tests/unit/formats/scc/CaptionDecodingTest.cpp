#include <gtest/gtest.h>

#include "formats/scc/CaptionDecoding.h"

namespace mova {
namespace {

/// The text of a line with these words behind its time code.
WString decoded(const WString& words, int32_t expectedErrors = 0) {
  int32_t errors = 0;
  WString text = decodeCaptionWords(u"00:00:01:00\t" + words, errors);
  EXPECT_EQ(errors, expectedErrors);
  return text;
}

TEST(CaptionDecoding, ReadsTwoCharactersInAWord) {
  EXPECT_EQ(decoded(u"94ae 94ae 9420 9420 9476 9476 97a2 97a2 c7ef ef64 942f 942f"), u"Good");
  EXPECT_EQ(decoded(u"c180"), u"A");
}

TEST(CaptionDecoding, TrimsTheText) {
  EXPECT_EQ(decoded(u"c8e9 2080"), u"Hi");
  EXPECT_EQ(decoded(u"2020 c8e9 2020"), u"Hi");
}

TEST(CaptionDecoding, SplitsWordsAtBlanksAndTabs) {
  EXPECT_EQ(decoded(u"\t c1c2 \t\t c1c2  "), u"ABAB");
}

TEST(CaptionDecoding, KnowsAClearByItsExactWords) {
  EXPECT_EQ(decoded(u"942c 942c"), u"942c 942c");
  EXPECT_EQ(decoded(u"942c"), u"");
  EXPECT_EQ(decoded(u"942c 942c 942c"), u"");
  EXPECT_EQ(decoded(u"942C 942C"), u",");
  EXPECT_EQ(decoded(u"942c 942c c180"), u"A");
  EXPECT_EQ(decoded(u"c180 942c 942c c280"), u"AB");
}

TEST(CaptionDecoding, CanReadTheWordsOfAClearFromCharacters) {
  EXPECT_EQ(decoded(u"b934 b232 e320 b934 b232 e380"), u"942c 942c");
  EXPECT_EQ(decoded(u"b934 b232 e380"), u"942c");
}

TEST(CaptionDecoding, CountsWordsOfAnotherLengthThanFour) {
  EXPECT_EQ(decoded(u"c1 c18 c1c1c c280", 3), u"B");
  int32_t errors = 0;
  EXPECT_EQ(decodeCaptionWords(u"1:00:00:01:00\tc180", errors), u"A");
  EXPECT_EQ(errors, 0);
}

TEST(CaptionDecoding, BreaksLinesOnTheWayDown) {
  EXPECT_EQ(decoded(u"94d0 94d0 c180 9470 9470 c280"), u"A\r\nB");
  // There is no character "c3", and the way back up breaks nothing.
  EXPECT_EQ(decoded(u"1340 c180 1360 c280 1340 c380"), u"A\r\nB");
  EXPECT_EQ(decoded(u"1340 c180 1360 c280 1340 4380"), u"A\r\nBC");
  EXPECT_EQ(decoded(u"9470 c180 9470 c280"), u"AB");
  // The way down from the upper row breaks again.
  EXPECT_EQ(decoded(u"1340 c180 1360 c280 1340 1360 4380"), u"A\r\nB\r\nC");
}

TEST(CaptionDecoding, BreaksNoLineInFrontOfTheFirstText) {
  EXPECT_EQ(decoded(u"1140 94d0 c180"), u"A");
  EXPECT_EQ(decoded(u"94d0 2020 9470 c180"), u"A");
  EXPECT_EQ(decoded(u"94d0 c180 9440 9470 c280"), u"A\r\nB");  // one break is enough
}

TEST(CaptionDecoding, BreaksLinesAtPreamblesThatAreNotKnown) {
  EXPECT_EQ(decoded(u"9440 9440 c180 9440 9440 c280 94e0 4380"), u"A\r\nB\r\nC");
  EXPECT_EQ(decoded(u"c180 9440 94e0 c280"), u"A\r\nB");
  EXPECT_EQ(decoded(u"c180 94E0 c280"), u"A\u00FAB");  // in upper case it is two bytes
}

TEST(CaptionDecoding, BreaksNoLineAtACarriageReturn) {
  EXPECT_EQ(decoded(u"9426 9426 94ad 94ad c180 94ad 94ad c280"), u"AB");
}

TEST(CaptionDecoding, ReadsADoubledControlWordOnce) {
  EXPECT_EQ(decoded(u"92b5 92b5"), u"\u00CB");
  EXPECT_EQ(decoded(u"92b5 92b5 92b5"), u"\u00CB\u00CB");
  EXPECT_EQ(decoded(u"92b5 92B5"), u"\u00CB\u00CB");
  EXPECT_EQ(decoded(u"1130 1130"), u"\u00AE\u00AE");
  EXPECT_EQ(decoded(u"80c1 80c1"), u"A");
}

TEST(CaptionDecoding, ReadsItalic) {
  EXPECT_EQ(decoded(u"91ae 91ae c180 9120 9120"), u"<i>A</i>");
  EXPECT_EQ(decoded(u"91ae 91ae c180"), u"<i>A</i>");
  EXPECT_EQ(decoded(u"134e c180"), u"<i>A</i>");  // a preamble can be italic
  EXPECT_EQ(decoded(u"912f c180 9120"), u"<i>A</i>");
  EXPECT_EQ(decoded(u"91ae c180 912f c280 9120"), u"<i>AB</i>");
  EXPECT_EQ(decoded(u"912a 91AE c180"), u"<i>A</i>");
}

TEST(CaptionDecoding, EndsItalicAtPlainCodes) {
  EXPECT_EQ(decoded(u"91ae c180 91a2 c280"), u"<i>A</i>B");
  EXPECT_EQ(decoded(u"91ae c180 94a8 c280"), u"<i>A</i>B");
  EXPECT_EQ(decoded(u"94d0 91ae c180 9470 c280"), u"<i>A\r\n</i>B");
  EXPECT_EQ(decoded(u"91ae c180 91a1 c280 9120"), u"<i>AB</i>");  // underlined leaves it open
}

TEST(CaptionDecoding, JoinsItalicThatEndsAndBeginsAgain) {
  EXPECT_EQ(decoded(u"91ae 91ae c180 9120 9120 91ae 91ae c280"), u"<i>AB</i>");
  EXPECT_EQ(decoded(u"91ae 9120 c180"), u"A");
}

TEST(CaptionDecoding, RepairsTagsThatWereSpelledOut) {
  EXPECT_EQ(decoded(u"bce9 3e80 c1bc 2fe9 3e80"), u"<i>A</i>");
  EXPECT_EQ(decoded(u"c1bc 2fe9 3e80"), u"<i>A</i>");
}

TEST(CaptionDecoding, ReducesRunsOfBlanks) {
  EXPECT_EQ(decoded(u"c120 20c2"), u"A B");
  EXPECT_EQ(decoded(u"c120 2020 20c2"), u"A B");
  EXPECT_EQ(decoded(u"c120 2020 2020 20c2"), u"A  B");  // two passes only
  EXPECT_EQ(decoded(u"c180 9440 20c2"), u"A\r\nB");
  EXPECT_EQ(decoded(u"c120 9440 c280"), u"A \r\nB");
}

TEST(CaptionDecoding, ReadsSpecialAndExtendedCharacters) {
  EXPECT_EQ(decoded(u"9137 91ba 92a1 92a1 13a2"), u"\u266A\u00E8\u00C9\u00CD");
  EXPECT_EQ(decoded(u"92b3 92b3"), u"\u00B9");
  EXPECT_EQ(decoded(u"92B3 92B3"), u"\u00C8");
}

TEST(CaptionDecoding, LosesACommaInFrontOfSomeLetters) {
  EXPECT_EQ(decoded(u"2c75 2cf2 2c6f 2c6e 2c6d 2c6c 2c6b 2c6a 2c69 2c68 2c67 2c66 2c65 2c64 2c63 2c62 2c61"),
            u"uronmlkjihgfedcba");
  EXPECT_EQ(decoded(u"2ce5 2c72"), u",e,r");
}

TEST(CaptionDecoding, ReadsNothingFromSomeWords) {
  EXPECT_EQ(decoded(u"2c52 c180 2c94 942f 942f"), u"A");
}

TEST(CaptionDecoding, ReadsOtherControlWordsAsTwoBytes) {
  EXPECT_EQ(decoded(u"9425 13e0 91b0 9232"), u"%\u00FA02");
  EXPECT_EQ(decoded(u"94AE 94AE"), u".");
  EXPECT_EQ(decoded(u"15e3"), u"c");
  EXPECT_EQ(decoded(u"133A"), u"");
}

TEST(CaptionDecoding, ReadsNothingFromWhatIsNoCode) {
  EXPECT_EQ(decoded(u"zzzz c1zz ,,,, \u4E00\u4E00\u4E00\u4E00"), u"A");
}

TEST(CaptionDecoding, ReadsWordsWithoutParity) {
  EXPECT_EQ(decoded(u"9470 6365 6669 6a6c 6e6f 7172 7477 787b"), u"cefijlnoqrtwx\u00E7");
}

TEST(CaptionDecoding, TakesLinesOfManyWordsInLinearTime) {
  WString characters;
  for (int i = 0; i < 1000000; ++i) characters += u"c1c1 ";
  EXPECT_EQ(decoded(characters), WString(2000000, u'A'));

  WString blanks;
  for (int i = 0; i < 100000; ++i) blanks += u"2020 1340 1360 ";
  EXPECT_EQ(decoded(blanks), u"");

  WString italics;
  for (int i = 0; i < 100000; ++i) italics += u"91ae 9120 ";
  EXPECT_EQ(decoded(italics), u"");

  WString lineBreaks;
  WString lines;
  for (int i = 0; i < 100000; ++i) {
    lineBreaks += u"9440 c180 ";
    lines += i == 0 ? u"A" : u"\r\nA";
  }
  EXPECT_EQ(decoded(lineBreaks), lines);
}

TEST(CaptionDecoding, TakesAWordOfAnyLength) {
  EXPECT_EQ(decoded(WString(1000000, u'9') + u" c180", 1), u"A");
}

}  // namespace
}  // namespace mova
