#include <gtest/gtest.h>

#include "text/LineBreaking.h"

namespace mova {
namespace {

WString repeated(WStringView piece, size_t times) {
  WString text;
  text.reserve(piece.size() * times);
  for (size_t i = 0; i < times; ++i) text += piece;
  return text;
}

/// With the limits of closed captions.
WString breakCaption(WStringView text) {
  return breakLines(text, 1, 4, u"en");
}

// --- Texts that are not broken.

TEST(LineBreaking, ATextOfUnderThreeUnitsStays) {
  EXPECT_EQ(breakLinesDefault(u""), u"");
  EXPECT_EQ(breakLinesDefault(u"ab"), u"ab");
  EXPECT_EQ(breakCaption(u"\n "), u"\n ");
}

TEST(LineBreaking, AShortTextBecomesOneLine) {
  EXPECT_EQ(breakLines(u"Hello\r\nWorld", 80, 20, u""), u"Hello World");
  EXPECT_EQ(breakLines(u"Hello\nWorld", 80, 20, u""), u"Hello World");
}

TEST(LineBreaking, FormattingDoesNotCountForTheMergeLimit) {
  EXPECT_EQ(breakLinesDefault(u"{\\an8}<i>Hello</i>\r\n<b>you</b>"), u"{\\an8}<i>Hello</i> <b>you</b>");
  EXPECT_EQ(breakLinesDefault(u"Hello\r\nyou"), u"Hello you");
  EXPECT_EQ(breakLinesDefault(u"Hello\r\nall!"), u"Hello\r\nall!");
}

TEST(LineBreaking, TwoLinesStayWhenTheFirstEndsInAnEnDash) {
  EXPECT_EQ(breakLinesDefault(u"I was going –\r\nWhat?"), u"I was going –\r\nWhat?");
  EXPECT_EQ(breakLines(u"I –\r\nWhat?", 80, 40, u""), u"I –\r\nWhat?");
  EXPECT_EQ(breakCaption(u"<i>I was going –</i>\r\n\r\n<i>What?</i>"), u"<i>I was going –</i>\r\n\r\n<i>What?</i>");
}

TEST(LineBreaking, QuotationMarksMayFollowTheEnDash) {
  EXPECT_EQ(breakLinesDefault(u"\"I was –'\" \r\nWhat?"), u"\"I was –'\" \r\nWhat?");
  // Double quotes go before apostrophes, so these hide it.
  EXPECT_EQ(breakLinesDefault(u"\"I was –\"'\r\nWhat?"), u"\"I was –\"'\r\nWhat?");
  EXPECT_EQ(breakLines(u"\"I was –'\"\r\nWhat?", 80, 40, u""), u"\"I was –'\"\r\nWhat?");
  EXPECT_EQ(breakLines(u"\"I was –\"'\r\nWhat?", 80, 40, u""), u"\"I was –\"' What?");
}

TEST(LineBreaking, ThreeLinesAreBrokenAnewInSpiteOfAnEnDash) {
  EXPECT_EQ(breakLinesDefault(u"I was going –\r\nWhat?\r\nNo."), u"I was going – What?\r\nNo.");
}

TEST(LineBreaking, ShortDialoguesWithEmDashesStay) {
  EXPECT_EQ(breakLinesDefault(u"— A\r\n— B"), u"— A\r\n— B");
  EXPECT_EQ(breakLinesDefault(u"<i>— A</i>\n\n — B"), u"<i>— A</i>\n\n — B");
  EXPECT_EQ(breakLinesDefault(u"— A\r\nB"), u"— A B");
  EXPECT_EQ(breakLinesDefault(u"— A, B"), u"— A, B");
}

TEST(LineBreaking, LongDialoguesWithEmDashesAreBrokenAnew) {
  EXPECT_EQ(breakLinesDefault(u"— You and I\r\n— What?"), u"— You and\r\nI — What?");
  EXPECT_EQ(breakLinesDefault(u"— You\r\n— What is it now?"), u"— You — What\r\nis it now?");
}

// --- Joining lines.

TEST(LineBreaking, ItalicLinesAreJoinedToOnePair) {
  for (WStringView between : {u"</i>\r\n<i>", u"</i> \r\n<i>", u"</i>\r\n <i>"}) {
    EXPECT_EQ(breakLinesDefault(u"<i>Hello there," + WString(between) + u"my good friend.</i>"),
              u"<i>Hello there, my\r\ngood friend.</i>");
  }
  EXPECT_EQ(breakLinesDefault(u"<i>Hello there,</i> \r\n <i>my good friend.</i>"),
            u"<i>Hello there,</i> <i>my\r\ngood friend.</i>");
}

TEST(LineBreaking, RunsOfBlanksAreShortenedInFourPasses) {
  EXPECT_EQ(breakLines(u"one     two", 80, 20, u""), u"one two");
  EXPECT_EQ(breakLines(u"one" + repeated(u" ", 40) + u"two", 80, 20, u""), u"one  two");
}

// --- Change of speaker.

TEST(LineBreaking, BreaksBeforeTheDashOfASpeaker) {
  EXPECT_EQ(breakLinesDefault(u"Go home. - No, you go home."), u"Go home.\r\n- No, you go home.");
  EXPECT_EQ(breakLinesDefault(u"I like it so very much - Bob too"), u"I like it so very much\r\n- Bob too");
}

TEST(LineBreaking, InTheFirstHalfASentenceHasToEndBeforeTheDash) {
  EXPECT_EQ(breakLinesDefault(u"Bob too! - I like it so very much"), u"Bob too!\r\n- I like it so very much");
  EXPECT_EQ(breakLinesDefault(u"Bob too - I like it so very much"), u"Bob too - I like\r\nit so very much");
}

TEST(LineBreaking, AnUpperCaseLetterHasToFollowTheDash) {
  EXPECT_EQ(breakLinesDefault(u"one two three four - Five six"), u"one two three four\r\n- Five six");
  EXPECT_EQ(breakLinesDefault(u"one two three four - five six"), u"one two three\r\nfour - five six");
  EXPECT_EQ(breakLinesDefault(u"one two three four - Éve six"), u"one two three\r\nfour - Éve six");
}

TEST(LineBreaking, ADashNeedsThreeUnitsBehindTheBlank) {
  EXPECT_EQ(breakLines(u"one - Alf", 80, 4, u""), u"one\r\n- Alf");
  EXPECT_EQ(breakLines(u"one - Al", 80, 4, u""), u"one -\r\nAl");
}

TEST(LineBreaking, ADashTooFarFromTheMiddleIsNoBreak) {
  // The reach is 5 and half of the maximum: 7 units. The dash is unit 6, the middle 13, then 14.
  EXPECT_EQ(breakLines(u"abcd. - Xyzzyxw efghijk lmn", 5, 4, u""), u"abcd.\r\n- Xyzzyxw efghijk lmn");
  EXPECT_EQ(breakLines(u"abcd. - Xyzzyxw efghijk lmno", 5, 4, u""), u"abcd. - Xyzzyxw\r\nefghijk lmno");
}

TEST(LineBreaking, AChangeOfSpeakerHasToGiveLinesThatFit) {
  // The dash is unit 9. One too many but for the blank in front of it, and the second line doesn't count.
  EXPECT_EQ(breakLines(u"Bob too! - I like it so very much", 8, 4, u""), u"Bob too!\r\n- I like it so very much");
  EXPECT_EQ(breakLines(u"Bob too! - I like it so very much", 7, 4, u""), u"Bob too! - I like\r\nit so very much");
  EXPECT_EQ(breakLines(u"Bob too! - I like it so very much", 9, 4, u""), u"Bob too! - I like\r\nit so very much");
  EXPECT_EQ(breakLines(u"Bob too! - I like it so very much", 24, 4, u""), u"Bob too!\r\n- I like it so very much");
  EXPECT_EQ(breakLines(u"Bob too! - I like it so very much", 23, 4, u""), u"Bob too! - I like\r\nit so very much");
  EXPECT_EQ(breakCaption(u"Go home. - No, you go home."), u"Go home. - No,\r\nyou go home.");
}

// --- End of a sentence.

TEST(LineBreaking, BreaksBehindASentence) {
  EXPECT_EQ(breakLinesDefault(u"one two. three four five"), u"one two.\r\nthree four five");
  EXPECT_EQ(breakLinesDefault(u"one two three four! five"), u"one two three four!\r\nfive");
}

TEST(LineBreaking, AMarkOrDigitBehindASentenceMovesTheBreakByTwo) {
  EXPECT_EQ(breakLinesDefault(u"one two three four?! Five six."), u"one two three four?!\r\nFive six.");
  EXPECT_EQ(breakLinesDefault(u"one two three four.5 Five six."), u"one two three four.5\r\nFive six.");
  EXPECT_EQ(breakLinesDefault(u"one two three four?!Five six."), u"one two three four?!F\r\nive six.");
}

TEST(LineBreaking, ABreakMovedBehindTheTextIsNone) {
  EXPECT_EQ(breakLinesDefault(u"abcdefghij kl.5"), u"abcdefghij kl.5");
}

TEST(LineBreaking, ASentenceHasToEndWithinFourteenUnitsOfTheMiddle) {
  EXPECT_EQ(breakLinesDefault(repeated(u"a", 24) + u" " + repeated(u"b", 14) + u". " + repeated(u"c", 9)),
            repeated(u"a", 24) + u" " + repeated(u"b", 14) + u".\r\n" + repeated(u"c", 9));
  EXPECT_EQ(breakLinesDefault(repeated(u"a", 24) + u" " + repeated(u"b", 15) + u". " + repeated(u"c", 8)),
            repeated(u"a", 24) + u"\r\n" + repeated(u"b", 15) + u". " + repeated(u"c", 8));
}

TEST(LineBreaking, NeverBreaksAtADecimalPoint) {
  EXPECT_EQ(breakLinesDefault(u"3.5 million or 3.5 billion"), u"3.5 million or\r\n3.5 billion");
  EXPECT_EQ(breakCaption(u"ab 3.5 cd"), u"ab 3.5\r\ncd");
}

// --- Gaps between words.

TEST(LineBreaking, BreaksAtTheBlankNearestTheMiddle) {
  EXPECT_EQ(breakLinesDefault(u"<i>one two three four</i>"), u"<i>one two\r\nthree four</i>");
  EXPECT_EQ(breakCaption(u"Hello World"), u"Hello\r\nWorld");
}

TEST(LineBreaking, AGapForwardTakesMarksAndBlanksAlong) {
  EXPECT_EQ(breakCaption(u"abcde, fghij"), u"abcde,\r\nfghij");
  EXPECT_EQ(breakCaption(u"abcde?!fghij"), u"abcde?\r\n!fghij");
  EXPECT_EQ(breakCaption(u"abcdef?!.hij"), u"abcdef?!\r\n.hij");
}

TEST(LineBreaking, AGapBackwardGivesUpToThreeMarksToTheSecondLine) {
  EXPECT_EQ(breakCaption(u"abcd?!. efghijklmn"), u"abcd?!.\r\nefghijklmn");
  EXPECT_EQ(breakCaption(u"abcd?!.efghijklmn"), u"abc\r\nd?!.efghijklmn");
  EXPECT_EQ(breakCaption(u"abcd,efghijklmn"), u"abcd\r\n,efghijklmn");
}

TEST(LineBreaking, NothingIsBrokenBehindMarksAlone) {
  EXPECT_EQ(breakCaption(u".!?abcd"), u".!?abcd");
}

TEST(LineBreaking, AGapHasToBeWithinTwentyFourUnitsOfTheMiddle) {
  EXPECT_EQ(breakLinesDefault(repeated(u"a", 54) + u" " + repeated(u"b", 5)),
            repeated(u"a", 54) + u"\r\n" + repeated(u"b", 5));
  EXPECT_EQ(breakLinesDefault(repeated(u"a", 55) + u" " + repeated(u"b", 4)),
            repeated(u"a", 29) + u"-\r\n" + repeated(u"a", 26) + u" " + repeated(u"b", 4));
}

// --- Words that are cut.

TEST(LineBreaking, ALongWordIsCutWithAHyphen) {
  EXPECT_EQ(breakLinesDefault(repeated(u"x", 30)), repeated(u"x", 14) + u"-\r\n" + repeated(u"x", 16));
  EXPECT_EQ(breakCaption(repeated(u"x", 40)), repeated(u"x", 19) + u"-\r\n" + repeated(u"x", 21));
  EXPECT_EQ(breakCaption(u"abcd"), u"a-\r\nbcd");
}

TEST(LineBreaking, AGapAtTheEndIsNone) {
  EXPECT_EQ(breakCaption(u"a\r\nbc"), u"a-\r\nbc");
}

TEST(LineBreaking, ACutWordInTagsIsBrokenWhereItsMiddleWasWithoutThem) {
  EXPECT_EQ(breakLinesDefault(u"<i>" + repeated(u"x", 30) + u"</i>"),
            u"<i>" + repeated(u"x", 12) + u"\r\nxx-" + repeated(u"x", 16) + u"</i>");
  EXPECT_EQ(breakCaption(u"<font color=\"red\">abcd</font>"), u"<f\r\nont color=\"red\">a-bcd</font>");
}

TEST(LineBreaking, TagsWithoutTextAreCutAtTheStart) {
  EXPECT_EQ(breakLinesDefault(u"<font color=\"red\"></font>"), u"\r\n-<font color=\"red\"></font>");
  EXPECT_EQ(breakLinesDefault(u"<font color=\"red\">a</font>"), u"\r\n-<font color=\"red\">a</font>");
}

// --- Tags.

TEST(LineBreaking, FormattingTagsOfAnyCaseKeepTheirPlaces) {
  EXPECT_EQ(breakLinesDefault(u"<I>one <FONT face=\"a b\">two three</font> <b>four</B></i>"),
            u"<I>one <FONT face=\"a b\">two\r\nthree</font> <b>four</B></i>");
}

TEST(LineBreaking, ATagThatOnlyBeginsLikeAFormattingTagIsOne) {
  EXPECT_EQ(breakLinesDefault(u"<update>one two <img x>three four"), u"<update>one two\r\n<img x>three four");
}

TEST(LineBreaking, OtherTagsAreText) {
  // Unit 9 of 22 is the blank nearest the middle.
  EXPECT_EQ(breakLinesDefault(u"<s>a b</s> <p>c d</p>e"), u"<s>a b</s>\r\n<p>c d</p>e");
}

TEST(LineBreaking, AnUnclosedTagIsText) {
  EXPECT_EQ(breakLinesDefault(u"one two <i three four"), u"one two <i\r\nthree four");
}

TEST(LineBreaking, ATagAtTheBreakGoesToTheSecondLine) {
  EXPECT_EQ(breakLinesDefault(u"<b>one two</b> three four"), u"<b>one two\r\n</b> three four");
}

TEST(LineBreaking, BlanksAroundTheBreakAndAtTheEndGo) {
  EXPECT_EQ(breakLinesDefault(u"one two. three four five \t"), u"one two.\r\nthree four five");
}

// --- Helpers.

TEST(LineBreaking, TheSeparatorInsideANumberIsPartOfIt) {
  for (WStringView number : {u"3.5", u"3,5", u"3(5", u"3)5", u" 3.5 "}) {
    EXPECT_TRUE(isPartOfNumber(number, static_cast<int32_t>(number.find(u'5')) - 1));
  }
  EXPECT_FALSE(isPartOfNumber(u"3:5", 1));
  EXPECT_FALSE(isPartOfNumber(u"a.5", 1));
  EXPECT_FALSE(isPartOfNumber(u"3.a", 1));
  EXPECT_FALSE(isPartOfNumber(u"3.", 1));
  EXPECT_FALSE(isPartOfNumber(u".5", 0));
}

TEST(LineBreaking, APositionOutsideTheTextIsNoPartOfANumber) {
  for (int32_t position : {-2147483647 - 1, -1, 0, 2, 3, 4, 2147483646, 2147483647}) {
    EXPECT_FALSE(isPartOfNumber(u"3.5", position)) << position;
    EXPECT_FALSE(isPartOfNumber(u"", position)) << position;
  }
}

TEST(LineBreaking, TagsAreReinsertedWithoutCountingLineBreaks) {
  const TagMap tags = {{0, u"<i>"}, {2, u"</i><b>"}, {4, u"</b>"}};
  EXPECT_EQ(reinsertTags(u"abcd", tags), u"<i>ab</i><b>cd</b>");
  EXPECT_EQ(reinsertTags(u"\r\nab\r\ncd\r\n", tags), u"\r\n<i>ab\r\n</i><b>cd\r\n</b>");
  EXPECT_EQ(reinsertTags(u"a\rb\nc", tags), u"<i>a\rb\n</i><b>c");
  EXPECT_EQ(reinsertTags(u"", tags), u"<i>");
  EXPECT_EQ(reinsertTags(u"abc", {}), u"abc");
}

// --- Bad input.

TEST(LineBreaking, BreaksHugeTextsInLinearTime) {
  for (WStringView piece :
       {u"<", u"<i", u"<i>", u"<b> ", u" ", u" - ", u" - A", u"\r\n", u"\n", u".", u"a", u"{", u"<i>\r"}) {
    const WString text = repeated(piece, 20000);
    EXPECT_FALSE(breakLines(text + u"x", 1, 4, u"").empty());
    EXPECT_FALSE(breakLines(u"x" + text + u">", 2147483647, 4, u"").empty());
    EXPECT_FALSE(breakLines(u"x" + text, -2147483647 - 1, -2147483647 - 1, u"").empty());
  }
  EXPECT_EQ(breakLinesDefault(repeated(u" ", 100000)), u"");
}

}  // namespace
}  // namespace mova
