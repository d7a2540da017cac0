#include <gtest/gtest.h>

#include "formats/scc/CaptionEncoding.h"

namespace mova {
namespace {

WString encoded(WStringView text) {
  return encodeCaptionText(text, u"en");
}
WString fitted(WStringView text) {
  return fitCaptionText(text, u"en");
}

TEST(CaptionEncoding, PutsTwoCharactersInAWord) {
  EXPECT_EQ(encoded(u"Good"), u"9476 9476 97a2 97a2 c7ef ef64");
}

TEST(CaptionEncoding, FillsAHalfWordAtTheEndOfALine) {
  EXPECT_EQ(encoded(u"A"), u"9476 9476 9723 9723 c180");
}

TEST(CaptionEncoding, FillsAHalfWordBeforeAControlWord) {
  EXPECT_EQ(encoded(u"A<i>B</i>"), u"94f4 94f4 9723 9723 c180 91ae 91ae c280 9120");
}

TEST(CaptionEncoding, FillsAHalfWordBeforeATwoByteCharacter) {
  EXPECT_EQ(encoded(u"A\u00AE"), u"9476 9476 9723 9723 c180 1130");
  // A dropped character in between changes nothing.
  EXPECT_EQ(encoded(u"A\u00BC\u00AE"), u"9476 9476 97a2 97a2 c180 1130");
}

TEST(CaptionEncoding, DoublesControlWordsOnly) {
  EXPECT_EQ(encoded(u"\u00C8A"), u"9476 9476 9723 9723 92b3 92b3 c180");
  EXPECT_EQ(encoded(u"\u00AEA"), u"9476 9476 9723 9723 1130 c180");
  EXPECT_EQ(encoded(u"\u2014A"), u"9476 9476 9723 9723 ADAD c180");
}

TEST(CaptionEncoding, DoesNotDoubleTheLastWordOfALine) {
  EXPECT_EQ(encoded(u"\u00A1\u00A1"), u"9476 9476 9723 9723 92a7 92a7 92a7");
  EXPECT_EQ(encoded(u"A<i>"), u"9476 9476 97a2 97a2 c180 91ae");
  EXPECT_EQ(encoded(u"<i>A</i>\r\nB"), u"94d6 94d6 91ae 91ae c180 9120 9476 9476 9723 9723 c280");
}

TEST(CaptionEncoding, ContinuesItalicOnTheNextLine) {
  EXPECT_EQ(encoded(u"<i>A\r\nB</i>"), u"94d6 94d6 97a2 97a2 91ae 91ae c180 9476 9476 97a1 97a1 91ae 91ae c280 9120");
}

TEST(CaptionEncoding, CountsNestedItalic) {
  EXPECT_EQ(encoded(u"<i><i>A</i>\r\nB"),
            u"9454 9454 97a2 97a2 91ae 91ae 91ae 91ae c180 9120 9476 9476 9723 9723 91ae 91ae c280");
}

TEST(CaptionEncoding, SpellsOutAClosingTagThatNothingOpened) {
  EXPECT_EQ(encoded(u"</i>A"), u"9476 9476 97a1 97a1 bc2f e93e c180");
  EXPECT_EQ(encoded(u"<i></i></i>"), u"94f4 94f4 97a2 97a2 91ae 91ae 9120 9120 bc2f e93e");
}

TEST(CaptionEncoding, SpellsOutOtherTags) {
  EXPECT_EQ(encoded(u"<b>"), u"9476 9476 97a2 97a2 bc62 3e80");
  EXPECT_EQ(encoded(u"<I>"), u"9476 9476 97a2 97a2 bc49 3e80");
}

TEST(CaptionEncoding, WritesABlankForAnUnknownCharacter) {
  EXPECT_EQ(encoded(u"a\u4E00b"), u"9476 9476 97a2 97a2 6120 6280");
  EXPECT_EQ(encoded(u"a\U0001F600"), u"9476 9476 97a2 97a2 6120 2080");  // two units
}

TEST(CaptionEncoding, DropsCharactersWithAnEmptyCode) {
  EXPECT_EQ(encoded(u"A\u00BCB"), u"9476 9476 97a2 97a2 c1c2");
  EXPECT_EQ(encoded(u"\u00BC"), u"9476 9476 9723 9723");
  // A word that is whole is written when the dropped character comes.
  EXPECT_EQ(encoded(u"AB\u00BC<i>"), u"9476 9476 97a1 97a1 c1c2 91ae");
  EXPECT_EQ(encoded(u"\u00AE\u00BC"), u"9476 9476 9723 9723 1130");
}

TEST(CaptionEncoding, GivesNothingForATextOfBlanks) {
  EXPECT_EQ(encoded(u""), u"");
  EXPECT_EQ(encoded(u"   "), u"");
  EXPECT_EQ(encoded(u"\r\n \r\n"), u"");
  EXPECT_EQ(encoded(WString(100000, u' ')), u"");
}

TEST(CaptionEncoding, PlacesLinesFromTheBottomUp) {
  EXPECT_EQ(encoded(u"A\r\nB\r\nC\r\nD"),
            u"13d6 13d6 9723 9723 c180 1376 1376 9723 9723 c280 "
            u"94d6 94d6 9723 9723 4380 9476 9476 9723 9723 c480");
}

TEST(CaptionEncoding, DropsEmptyLinesAndKeepsBlankOnes) {
  EXPECT_EQ(encoded(u"A\n\r\r\nB"), encoded(u"A\r\nB"));
  EXPECT_EQ(encoded(u"A\r\n \r\nB"), u"1376 1376 9723 9723 c180 9458 9458  9476 9476 9723 9723 c280");
}

TEST(CaptionEncoding, TrimsEachLineBeforeItIsCentred) {
  EXPECT_EQ(encoded(u" A \r\n\tB\t"), encoded(u"A\r\nB"));
}

TEST(CaptionEncoding, CentresByIndentAndTabOffset) {
  EXPECT_EQ(positionCodeForLine(WString(32, u'x'), 1, 1), u"9470 9470 ");
  EXPECT_EQ(positionCodeForLine(WString(31, u'x'), 1, 1), u"9470 9470 ");
  EXPECT_EQ(positionCodeForLine(WString(30, u'x'), 1, 1), u"9470 9470 97a1 97a1 ");
  EXPECT_EQ(positionCodeForLine(WString(28, u'x'), 1, 2), u"94d0 94d0 97a2 97a2 ");
  EXPECT_EQ(positionCodeForLine(WString(26, u'x'), 2, 3), u"94d0 94d0 9723 9723 ");
  EXPECT_EQ(positionCodeForLine(WString(24, u'x'), 1, 3), u"13f2 13f2 ");
  EXPECT_EQ(positionCodeForLine(WString(16, u'x'), 1, 4), u"1354 1354 ");
  EXPECT_EQ(positionCodeForLine(WString(8, u'x'), 1, 1), u"9476 9476 ");
  EXPECT_EQ(positionCodeForLine(u"", 1, 1), u"94f8 94f8 ");
}

TEST(CaptionFitting, LeavesATextThatFits) {
  EXPECT_EQ(fitted(u""), u"");
  EXPECT_EQ(fitted(u" a\nb\r\n\r\nc\rd "), u" a\nb\r\n\r\nc\rd ");
  EXPECT_EQ(fitted(WString(32, u'x')), WString(32, u'x'));
}

TEST(CaptionFitting, BreaksFiveLinesAnew) {
  EXPECT_EQ(fitted(u"one\r\ntwo\r\nthree\r\nfour\r\nfive"), u"one two three\r\nfour five");
}

TEST(CaptionFitting, WrapsWhatIsStillTooLong) {
  // The line breaking gives two lines of 40 and more units; the wrapping makes three of them.
  EXPECT_EQ(fitted(u"We walked along the river for hours, and nobody said a word until the bridge came."),
            u"We walked along the river for\r\nhours, and nobody said a word\r\nuntil the bridge came.");
}

TEST(CaptionFitting, BreaksAWordOfFortyLettersInTwo) {
  EXPECT_EQ(fitted(WString(40, u'x')), WString(19, u'x') + u"-\r\n" + WString(21, u'x'));
}

TEST(CaptionFitting, CutsLinesThatStayTooLong) {
  EXPECT_EQ(fitted(WString(80, u'x')), WString(32, u'x') + u"\r\n" + WString(32, u'x'));
}

TEST(CaptionFitting, MixesLineEndsWhereItCuts) {
  // Six lines between lone CRs, which the wrapping doesn't know, and no blank in the first 33 units.
  EXPECT_EQ(fitted(u"a\rb\r" + WString(33, u'x') + u"\rd\re  " + WString(80, u'f')),
            u"a\nb\n" + WString(32, u'x') + u"\r\nd");
}

TEST(CaptionWrapping, CutsAShortTextAtItsLastBlank) {
  EXPECT_EQ(wrapCaptionText(u"one two three"), u"one two\r\nthree");
  EXPECT_EQ(wrapCaptionText(u"a b"), u"a\r\nb");
}

TEST(CaptionWrapping, ReturnsATextWithoutAUsableBlankAsItIs) {
  EXPECT_EQ(wrapCaptionText(u""), u"");
  EXPECT_EQ(wrapCaptionText(u"a"), u"a");
  EXPECT_EQ(wrapCaptionText(u" a"), u" a");
  EXPECT_EQ(wrapCaptionText(u"\r\na"), u"\r\na");
  const WString late = WString(33, u'x') + u" \r\n y";
  EXPECT_EQ(wrapCaptionText(late), late);
}

TEST(CaptionWrapping, TakesABlankBehind32Units) {
  const WString word(32, u'x');
  EXPECT_EQ(wrapCaptionText(word + u" y z"), word + u"\r\ny z");
}

TEST(CaptionWrapping, LosesARestThatTheSecondLineCannotTake) {
  EXPECT_EQ(wrapCaptionText(u"short " + WString(40, u'y')), u"short");
}

TEST(CaptionWrapping, KeepsARestThatTheThirdLineCannotTake) {
  const WString longWord(40, u'y');
  EXPECT_EQ(wrapCaptionText(u"aa aa aa aa aa aa aa aa aa aa aa aa " + longWord),
            u"aa aa aa aa aa aa aa aa aa aa aa\r\naa\r\n" + longWord);
}

TEST(CaptionWrapping, KeepsARestThatTheFourthLineCannotTake) {
  const WString line = u"abcdefghijklmnopqrstuvwxyz01234";
  const WString longWord(40, u'y');
  EXPECT_EQ(wrapCaptionText(line + u" " + line + u" " + line + u" " + longWord),
            line + u"\r\n" + line + u"\r\n" + line + u"\r\n" + longWord);
}

TEST(CaptionWrapping, LosesWhatRemainsBehindAFourthLine) {
  const WString line = u"abcdefghijklmnopqrstuvwxyz01234";
  const WString wrapped = line + u"\r\n" + line + u"\r\n" + line + u"\r\n" + line;
  EXPECT_EQ(wrapCaptionText(line + u" " + line + u" " + line + u" " + line + u" lost"), wrapped);
}

TEST(CaptionWrapping, TurnsLineEndsAndDoubleBlanksIntoBlanks) {
  EXPECT_EQ(wrapCaptionText(u"one\r\ntwo  three"), u"one two\r\nthree");
  // One pass only: of three blanks two stay.
  EXPECT_EQ(wrapCaptionText(u"one   two three"), u"one  two\r\nthree");
}

TEST(CaptionEncoding, TakesTextsOfAnyLength) {
  WString half = u"bcbc";
  for (int word = 1; word < 16; ++word) half += u" bcbc";
  EXPECT_EQ(encoded(WString(100000, u'<')), u"94d0 94d0 " + half + u" 9470 9470 " + half);

  WString letters;
  for (int i = 0; i < 20000; ++i) letters += u"<i>ab ";
  EXPECT_LT(encoded(letters).size(), 1000u);
}

}  // namespace
}  // namespace mova
