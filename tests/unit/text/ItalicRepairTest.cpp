#include <gtest/gtest.h>

#include "movautil/MovaUtil.h"
#include "text/ItalicRepair.h"

namespace mova {
namespace {

WString repeated(WStringView piece, size_t times) {
  WString text;
  text.reserve(piece.size() * times);
  for (size_t i = 0; i < times; ++i) text += piece;
  return text;
}

// --- The spelling of the tags.

TEST(ItalicRepair, ATextWithoutTagsStays) {
  EXPECT_EQ(repairItalicTags(u""), u"");
  EXPECT_EQ(repairItalicTags(u"  - Who?\r\n1 < 2 > 0\n"), u"  - Who?\r\n1 < 2 > 0\n");
  EXPECT_EQ(repairItalicTags(u"<b>a</b> <I>b</I>"), u"<b>a</b> <I>b</I>");
}

TEST(ItalicRepair, SpacedTagsBecomePlain) {
  EXPECT_EQ(repairItalicTags(u"< i >text< / i >"), u"<i>text</i>");
}

TEST(ItalicRepair, KnowsFiveSpellingsOfTheOpeningTag) {
  for (WStringView tag : {u"< i >", u"< i>", u"<i >", u"< I>", u"<I >"}) {
    EXPECT_EQ(repairItalicTags(WString(tag) + u"a</i>"), u"<i>a</i>") << wideToString(tag);
  }
  // Not among them: the closing tag is alone here, and gets an opening one in front of all.
  EXPECT_EQ(repairItalicTags(u"<I>a</i>"), u"<i><I>a</i>");
  EXPECT_EQ(repairItalicTags(u"< I >a</i>"), u"<i>< I >a</i>");
}

TEST(ItalicRepair, KnowsTenSpellingsOfTheClosingTag) {
  for (WStringView tag :
       {u"< / i >", u"< /i>", u"</ i>", u"< /i >", u"</i >", u"</ i >", u"< / i>", u"< /I>", u"</ I>", u"< / I >"}) {
    EXPECT_EQ(repairItalicTags(u"<i>a" + WString(tag)), u"<i>a</i>") << wideToString(tag);
  }
  // Not among them: the opening tag is alone here, and gets a closing one behind all.
  EXPECT_EQ(repairItalicTags(u"<i>a</I>"), u"<i>a</I></i>");
  EXPECT_EQ(repairItalicTags(u"<i>a</I >"), u"<i>a</I ></i>");
}

TEST(ItalicRepair, AClosingABlankAndAnOpeningTagBecomeABlank) {
  EXPECT_EQ(repairItalicTags(u"<i>a</i> <i>b</i>"), u"<i>a b</i>");
  EXPECT_EQ(repairItalicTags(u"<i>a </i> <i>b</i>"), u"<i>a b</i>");
  // One blank in front goes, then another if there is one behind too.
  EXPECT_EQ(repairItalicTags(u"<i>a  </i> <i> b</i>"), u"<i>a b</i>");
  EXPECT_EQ(repairItalicTags(u"<i>a  </i> <i>b</i>"), u"<i>a  b</i>");
  EXPECT_EQ(repairItalicTags(u"<i>a</i> <i> b</i>"), u"<i>a  b</i>");
}

TEST(ItalicRepair, TheMarkerOfThatStepIsABlankWhereverItStands) {
  EXPECT_EQ(repairItalicTags(u"a _@_b"), u"a b");
}

TEST(ItalicRepair, AnEmptyTagClosesWhatAnOpeningTagBegan) {
  EXPECT_EQ(repairItalicTags(u"<i>a<i/>b"), u"<i>a</i>b");
  EXPECT_EQ(repairItalicTags(u"a<i/>b"), u"ab");
}

TEST(ItalicRepair, DoubledTagsBecomeOne) {
  EXPECT_EQ(repairItalicTags(u"<i><i>a</i></i>"), u"<i>a</i>");
  // Pairwise and once only: of three opening tags two are left, and the second one becomes a closing tag.
  EXPECT_EQ(repairItalicTags(u"<i><i><i>ab"), u"ab");
  EXPECT_EQ(repairItalicTags(u"<i><i><i>a"), u"");
}

// --- No opening and two closing tags.

TEST(ItalicRepair, TwoClosingTagsAtTheEndsOfLinesBecomeOnePair) {
  EXPECT_EQ(repairItalicTags(u"a</i>\r\nb</i>"), u"<i>a\r\nb</i>");
  EXPECT_EQ(repairItalicTags(u"</i>\r\nb</i>"), u"<i>\r\nb</i>");
}

TEST(ItalicRepair, TwoClosingTagsAroundATextBecomeAPair) {
  EXPECT_EQ(repairItalicTags(u"</i>a</i>"), u"<i>a</i>");
}

TEST(ItalicRepair, OtherwiseTwoClosingTagsStay) {
  EXPECT_EQ(repairItalicTags(u"a</i>b</i>"), u"a</i>b</i>");
  EXPECT_EQ(repairItalicTags(u"a</i>\r\nb</i>c"), u"a</i>\r\nb</i>c");
}

// --- No opening and one closing tag.

TEST(ItalicRepair, AClosingTagAtTheEndGetsAnOpeningOne) {
  EXPECT_EQ(repairItalicTags(u"a</i>"), u"<i>a</i>");
  EXPECT_EQ(repairItalicTags(u"a\r\nb</i>"), u"<i>a\r\nb</i>");
}

TEST(ItalicRepair, WithADialogueDashOnlyTheLineOfTheClosingTagIsItalic) {
  EXPECT_EQ(repairItalicTags(u"- a\r\n- b</i>"), u"- a\r\n<i>- b</i>");
  EXPECT_EQ(repairItalicTags(u"a \r\n -b</i>"), u"<i>a \r\n -b</i>");
  EXPECT_EQ(repairItalicTags(u"a \r\n-b</i>"), u"a\r\n<i>-b</i>");
  EXPECT_EQ(repairItalicTags(u"<b>- a</b>\r\nb</i>"), u"<b>- a</b>\r\n<i>b</i>");
}

TEST(ItalicRepair, AClosingTagAtTheEndOfTheFirstLineGetsAnOpeningOne) {
  EXPECT_EQ(repairItalicTags(u" a</i> \r\n b "), u"<i>a</i>\r\nb");
}

TEST(ItalicRepair, AClosingTagInsideALineGoes) {
  EXPECT_EQ(repairItalicTags(u"a</i>b"), u"ab");
  EXPECT_EQ(repairItalicTags(u"- a</i>"), u"- a");
  EXPECT_EQ(repairItalicTags(u"a\r\n-b\r\nc</i>"), u"a\r\n-b\r\nc");
  EXPECT_EQ(repairItalicTags(u"\r\n-b</i>"), u"\r\n-b");
}

TEST(ItalicRepair, LinesAreTrimmedBeforeAClosingTagInsideThemGoes) {
  EXPECT_EQ(repairItalicTags(u" a</i>b \r\n c "), u"ab\r\nc");
}

// --- Two opening tags and one closing.

TEST(ItalicRepair, AnOpenSecondLineIsClosedAndJoined) {
  EXPECT_EQ(repairItalicTags(u"<i>a</i>\r\n<i>b \r\n"), u"<i>a\r\nb</i>");
  // Blank lines are not counted but keep the pairs apart.
  EXPECT_EQ(repairItalicTags(u"<i>a</i>\r\n\r\n<i>b"), u"<i>a</i>\r\n\r\n<i>b</i>");
}

TEST(ItalicRepair, ASecondOpeningTagAtTheEndTakesTheUnitBeforeItAlong) {
  EXPECT_EQ(repairItalicTags(u"<i>a</i>b <i>"), u"<i>a</i>b</i>");
  EXPECT_EQ(repairItalicTags(u"<i>a</i>b <i>c"), u"<i>a</i>b</i>");
}

TEST(ItalicRepair, ASecondOpeningTagInsideGoes) {
  EXPECT_EQ(repairItalicTags(u"<i>a<i>bc</i>"), u"<i>abc</i>");
  EXPECT_EQ(repairItalicTags(u"a <i>b</i> c <i>de"), u"a <i>b</i> c de");
}

// --- Two opening tags.

TEST(ItalicRepair, TwoOpenLinesGetClosingTagsAroundTheLineBreak) {
  EXPECT_EQ(repairItalicTags(u"<i>a\r\n<i>b"), u"<i>a</i>\r\n</i><i>b");
  EXPECT_EQ(repairItalicTags(u"-<i>a\r\n<i>b"), u"-<i>a</i>\r\n</i><i>b");
}

TEST(ItalicRepair, ASecondOpeningTagAtTheEndBecomesAClosingOne) {
  EXPECT_EQ(repairItalicTags(u"<i>a<i>"), u"<i>a</i>");
  EXPECT_EQ(repairItalicTags(u"<i>a<i>b"), u"<i>a</i>");
  EXPECT_EQ(repairItalicTags(u"- <i>a\r\n<i>b"), u"- <i>a\r\n</i>");
}

TEST(ItalicRepair, ASecondOpeningTagInsideBecomesAClosingOne) {
  EXPECT_EQ(repairItalicTags(u"<i>a<i>bc"), u"<i>a</i>bc");
  EXPECT_EQ(repairItalicTags(u"<i>a\r\n<i>b\r\nc"), u"<i>a\r\n</i>b\r\nc");
}

// --- One opening tag.

TEST(ItalicRepair, AnOpeningTagAtTheStartIsClosedAtTheEnd) {
  EXPECT_EQ(repairItalicTags(u"<i>a"), u"<i>a</i>");
  EXPECT_EQ(repairItalicTags(u"<i>a\r\nb"), u"<i>a\r\nb</i>");
}

TEST(ItalicRepair, AnOpeningTagAtTheStartOfTheSecondLineIsClosedAtTheEnd) {
  EXPECT_EQ(repairItalicTags(u"a\r\n<i>b"), u"a\r\n<i>b</i>");
  EXPECT_EQ(repairItalicTags(u"a\r\nb\r\n<i>c"), u"a\r\nb\r\nc");
}

TEST(ItalicRepair, AnOpeningTagInsideALineGoes) {
  EXPECT_EQ(repairItalicTags(u"a<i>b"), u"ab");
  EXPECT_EQ(repairItalicTags(u"a\r\n <i>b"), u"a\r\n b");
}

// --- One opening tag and two closing.

TEST(ItalicRepair, AClosingTagBeforeADialogueGoesWithItsDash) {
  EXPECT_EQ(repairItalicTags(u"</i>-<i>-a</i>"), u"<i>-a</i>");
  EXPECT_EQ(repairItalicTags(u"</i>- <i>-a</i>"), u" <i>-a</i>");
  EXPECT_EQ(repairItalicTags(u"</i>- <i> -a</i>"), u" <i> -a</i>");
  EXPECT_EQ(repairItalicTags(u"</i>-<i> -a</i>"), u"<i> -a</i>");
}

TEST(ItalicRepair, TheFirstOfTwoClosingTagsGoes) {
  EXPECT_EQ(repairItalicTags(u"</i>-<i>a</i>"), u"-<i>a</i>");
  EXPECT_EQ(repairItalicTags(u"<i>a</i>b</i>"), u"<i>ab</i>");
}

// --- One of each.

TEST(ItalicRepair, ATurnedPairIsTurnedBack) {
  EXPECT_EQ(repairItalicTags(u"</i>a<i>"), u"<i>a</i>");
}

TEST(ItalicRepair, APairStays) {
  EXPECT_EQ(repairItalicTags(u"a <i>b</i>\r\nc"), u"a <i>b</i>\r\nc");
}

TEST(ItalicRepair, TheMarkerOfTheTurnBecomesAClosingTag) {
  EXPECT_EQ(repairItalicTags(u"</i>a<i>____________@"), u"<i>a</i>_</i>");
  EXPECT_EQ(repairItalicTags(u"<i>a</i>___________@"), u"<i>a</i>___________@");
}

// --- Two pairs.

TEST(ItalicRepair, TwoItalicLinesBecomeOnePair) {
  EXPECT_EQ(repairItalicTags(u"<i>a</i>\r\n<i>bcd</i>"), u"<i>a\r\nbcd</i>");
  EXPECT_EQ(repairItalicTags(u"<i>a</i> \r\n <i>b</i>"), u"<i>a \r\n b</i>");
}

TEST(ItalicRepair, DialogueDashesGoInsideTheTags) {
  EXPECT_EQ(repairItalicTags(u"- <i>aa</i>\r\n- <i>bb</i>"), u"<i>- aa\r\n- bb</i>");
  EXPECT_EQ(repairItalicTags(u"- <i> aa</i>\r\nb <i>c</i> d"), u"<i>- aa</i>\r\nb <i>c</i> d");
  EXPECT_EQ(repairItalicTags(u"b <i>c</i> d \r\n - <i>  aa</i>"), u"b <i>c</i> d\r\n<i>-  aa</i>");
}

TEST(ItalicRepair, ALineOfUnderElevenUnitsKeepsItsDashOutside) {
  EXPECT_EQ(repairItalicTags(u"- <i>a</i>\r\nb <i>c</i> d"), u"- <i>a</i>\r\nb <i>c</i> d");
  // Such lines count as wholly italic all the same.
  EXPECT_EQ(repairItalicTags(u"- <i>a</i>\r\n- <i>b</i>"), u"<i>- a\r\n- b</i>");
}

TEST(ItalicRepair, TwoPairsInOneOrThreeLinesStay) {
  EXPECT_EQ(repairItalicTags(u"<i>a</i>, <i>b</i>"), u"<i>a</i>, <i>b</i>");
  EXPECT_EQ(repairItalicTags(u"<i>a</i>\r\n<i>b</i>\r\nc"), u"<i>a</i>\r\n<i>b</i>\r\nc");
  EXPECT_EQ(repairItalicTags(u"\r\n<i>a</i> b <i>c</i>"), u"\r\n<i>a</i> b <i>c</i>");
}

TEST(ItalicRepair, ASecondLineOfUnderSixUnitsLeavesTheTextAlone) {
  EXPECT_EQ(repairItalicTags(u"<i>a</i><i>b</i>\r\nabcde"), u"<i>a</i><i>b</i>\r\nabcde");
  EXPECT_EQ(repairItalicTags(u"- <i>aaa</i><i>b</i>\r\nabcde"), u"- <i>aaa</i><i>b</i>\r\nabcde");
  EXPECT_EQ(repairItalicTags(u"- <i>aaa</i><i>b</i>\r\nabcdef"), u"<i>- aaa</i><i>b</i>\r\nabcdef");
}

// --- Other counts and empty pairs.

TEST(ItalicRepair, OtherCountsStay) {
  EXPECT_EQ(repairItalicTags(u"<i>a<i>b<i>c</i>"), u"<i>a<i>b<i>c</i>");
  EXPECT_EQ(repairItalicTags(u"a</i>b</i>c</i>"), u"a</i>b</i>c</i>");
}

TEST(ItalicRepair, EmptyPairsGo) {
  EXPECT_EQ(repairItalicTags(u"<i></i>"), u"");
  EXPECT_EQ(repairItalicTags(u"a<i> </i>b"), u"ab");
  EXPECT_EQ(repairItalicTags(u"a<i>  </i>b"), u"ab");
  EXPECT_EQ(repairItalicTags(u"a<i>   </i>b"), u"a<i>   </i>b");
  // In this order, once each.
  EXPECT_EQ(repairItalicTags(u"<i><i>x"), u"<i>x</i>");
  EXPECT_EQ(repairItalicTags(u"a<i> <i></i></i>b"), u"ab");
}

TEST(ItalicRepair, RepairsHugeTextsInLinearTime) {
  for (WStringView piece : {u"<", u"< ", u"<i>", u"</i>", u"< i >", u"< / i >", u"</i> <i>", u"<i/>", u" ", u"\r\n",
                            u"_@_", u" _@_", u"_"}) {
    const WString text = repairItalicTags(repeated(piece, 10000));
    EXPECT_LE(text.size(), 10000 * piece.size() + 4) << wideToString(piece);
    repairItalicTags(u"<i>" + text);
    repairItalicTags(text + u"</i>");
  }
}

// --- Wholly italic lines.

bool isWhollyItalic(WStringView line) {
  return isLineWhollyItalic(line, u"<i>", u"</i>");
}

TEST(ItalicRepair, ALineInTagsIsWhollyItalic) {
  EXPECT_TRUE(isWhollyItalic(u"<i>a</i>"));
  EXPECT_TRUE(isWhollyItalic(u"<i></i>"));
  EXPECT_FALSE(isWhollyItalic(u"a<i>b</i>"));
  EXPECT_FALSE(isWhollyItalic(u"<i>a</i>b"));
  EXPECT_FALSE(isWhollyItalic(u" <i>a</i>"));
}

TEST(ItalicRepair, ALineWithoutTextOrClosingTagIsNotWhollyItalic) {
  EXPECT_FALSE(isWhollyItalic(u""));
  EXPECT_FALSE(isWhollyItalic(u" \t"));
  EXPECT_FALSE(isWhollyItalic(u"<i>a"));
}

TEST(ItalicRepair, AWhollyItalicLineMayBeginWithADash) {
  for (WStringView start : {u"<i>", u"- <i>", u"-<i>", u"- ...<i>", u"- <i>...", u"-  <i>"}) {
    EXPECT_TRUE(isWhollyItalic(WString(start) + u"a</i>")) << wideToString(start);
  }
  for (WStringView start : {u"-...<i>", u"...<i>", u"– <i>", u"--<i>", u"-   <i>"}) {
    EXPECT_FALSE(isWhollyItalic(WString(start) + u"a</i>")) << wideToString(start);
  }
}

TEST(ItalicRepair, AWhollyItalicLineMayEndWithAMark) {
  for (WStringView end : {u"</i>", u"</i>.", u"</i>!", u"</i>?", u"</i>...", u"</i>-"}) {
    EXPECT_TRUE(isWhollyItalic(u"<i>a" + WString(end))) << wideToString(end);
  }
  for (WStringView end : {u"</i>,", u"</i>..", u"</i> ", u"</i>!?", u"</i> -"}) {
    EXPECT_FALSE(isWhollyItalic(u"<i>a" + WString(end))) << wideToString(end);
  }
}

TEST(ItalicRepair, AWhollyItalicLineIsToldWithAnyTags) {
  EXPECT_TRUE(isLineWhollyItalic(u"- <b>a</b>!", u"<b>", u"</b>"));
  EXPECT_FALSE(isLineWhollyItalic(u"- <b>a</b>!", u"<i>", u"</i>"));
}

}  // namespace
}  // namespace mova
