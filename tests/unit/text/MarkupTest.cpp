#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

#include "movautil/MovaUtil.h"
#include "text/Markup.h"
#include "text/Strings.h"

namespace mova {
namespace {

using Names = std::initializer_list<WStringView>;

WString repeated(WStringView piece, size_t times) {
  WString text;
  text.reserve(piece.size() * times);
  for (size_t i = 0; i < times; ++i) text += piece;
  return text;
}

WString decoded(WString text) {
  return decodeHtmlEntities(text);
}

WString withoutBraces(WString text) {
  return removeBraceTags(text);
}

// --- Entities.

TEST(Markup, DecodesTheSixKnownEntities) {
  EXPECT_EQ(decoded(u"&amp;|&quot;|&apos;|&lt;|&gt;|&nbsp;"), u"&|\"|'|<|>| ");
}

TEST(Markup, DecodesAnAmpersandOnceOnly) {
  EXPECT_EQ(decoded(u"&amp;amp;"), u"&amp;");
}

TEST(Markup, DecodesWhatADecodedAmpersandSpells) {
  EXPECT_EQ(decoded(u"&amp;lt;&amp;nbsp;"), u"< ");
}

TEST(Markup, KeepsOtherEntities) {
  EXPECT_EQ(decoded(u"&#60; &copy; &AMP; &lt"), u"&#60; &copy; &AMP; &lt");
}

TEST(Markup, DecodesTheTextInPlace) {
  WString text = u"a&lt;b";
  EXPECT_EQ(&decodeHtmlEntities(text), &text);
  EXPECT_EQ(text, u"a<b");
}

// --- Formatting tags.

TEST(Markup, EmptyTextHasNoTags) {
  EXPECT_EQ(removeHtmlTags(u""), u"");
}

TEST(Markup, RemovesPlainFormattingTags) {
  EXPECT_EQ(removeHtmlTags(u"<i>a</i> <b>b</b>"), u"a b");
  EXPECT_EQ(removeHtmlTags(u"<u>a</u><p>b</p><font>c</font>"), u"abc");
  EXPECT_EQ(removeHtmlTags(u"<I>a</I> <FONT>b</Font>"), u"a b");
}

TEST(Markup, RepairsItalicTagsOfATextWithABlankBehindABracket) {
  EXPECT_EQ(removeHtmlTags(u"1 < 2"), u"1 < 2");
  EXPECT_EQ(removeHtmlTags(u"< i >a< / i >"), u"a");
  EXPECT_EQ(removeHtmlTags(u"< i >a</i> <i>b"), u"a b");
}

TEST(Markup, KeepsASpacedTagWhereNoBlankFollowsABracket) {
  EXPECT_EQ(removeHtmlTags(u"<i >a</i >"), u"<i >a</i >");
}

TEST(Markup, KeepsAFontTagWithAttributes) {
  EXPECT_EQ(removeHtmlTags(u"<font color=\"#FF0000\">a</font>"), u"<font color=\"#FF0000\">a");
  EXPECT_EQ(removeHtmlTags(u"<font size=\"2\">a</font>"), u"<font size=\"2\">a");
}

TEST(Markup, KeepsTagsWhoseNameBeginsWithS) {
  EXPECT_EQ(removeHtmlTags(u"<span>a</span>"), u"<span>a</span>");
  EXPECT_EQ(removeHtmlTags(u"<s>a</s>"), u"<s>a</s>");
}

TEST(Markup, KeepsLineBreakTags) {
  EXPECT_EQ(removeHtmlTags(u"a<br />b<br>"), u"a<br />b<br>");
}

TEST(Markup, ANameEndsAtAnSOrABackslash) {
  EXPECT_EQ(removeHtmlTags(u"<is>a</bs x>b<font\\z>c"), u"abc");
}

TEST(Markup, ATagMaySpanALineBreak) {
  // The name of this one is "i" and the line break, so no list of names takes it out.
  EXPECT_EQ(removeHtmlTags(u"x<i\r\n>y"), u"x<i\r\n>y");
  EXPECT_EQ(removeTagsNamed(u"x<i\r\n>y", {u"i\r\n"}), u"xy");
  EXPECT_EQ(removeTagsNamed(u"x<\r\ni>y", {u"i"}), u"xy");
  EXPECT_EQ(removeTagsNamed(u"x<is\r\n>y", {u"i"}), u"xy");
}

TEST(Markup, ABracketInsideATagBelongsToItsName) {
  EXPECT_EQ(removeHtmlTags(u"a<<i>b"), u"a<<i>b");
  EXPECT_EQ(removeTagsNamed(u"a<<i>b", {u"<i"}), u"ab");
}

TEST(Markup, AnUnmatchedBracketDoesNotHideTheTagBehindIt) {
  EXPECT_EQ(removeHtmlTags(u"<><i>a<s <i>b<\\<i>"), u"<>a<s b<\\");
}

TEST(Markup, RemovalDoesNotMakeNewTags) {
  EXPECT_EQ(removeHtmlTags(u"<s<i>i>a"), u"<si>a");
}

TEST(Markup, ANameGivesBackWhatItNeeds) {
  EXPECT_EQ(removeTagsNamed(u"a</>b</s>c", {u"/"}), u"abc");
  EXPECT_EQ(removeTagsNamed(u"a< >b<  >c< s>d</ >e</ s>f", {u" "}), u"abcdef");
}

TEST(Markup, RemovesOnlyTheNamesOfTheList) {
  EXPECT_EQ(removeTagsNamed(u"<i>a</i><b>b</b>", {u"b", u"u", u"font"}), u"<i>a</i>b");
  EXPECT_EQ(removeTagsNamed(u"<i>a</i>", Names{}), u"<i>a</i>");
}

TEST(Markup, ANameWithABackslashIsNeverFound) {
  EXPECT_EQ(removeTagsNamed(u"<\\u4056>a</\\u4056>", {u"\\u4056"}), u"<\\u4056>a</\\u4056>");
}

TEST(Markup, TagsAreLookedForInUtf8) {
  EXPECT_EQ(removeTagsNamed(u"<i>a\xD800</i>b\xDC00 \U0001F600", {u"i"}), u"a\uFFFDb\uFFFD \U0001F600");
  EXPECT_EQ(removeTagsNamed(u"\xD83D<i>\xDE00", {u"i"}), u"\uFFFD\uFFFD");
  EXPECT_EQ(removeTagsNamed(WString(u"<i>a\0</i>", 9), {u"i"}), u"a");
}

TEST(Markup, ATextWithoutABracketStaysAsItIs) {
  EXPECT_EQ(removeHtmlTags(WString(u"a\0b\xD800", 4)), WString(u"a\0b\xD800", 4));
}

TEST(Markup, RemovesTagsOfHugeTextsInLinearTime) {
  for (WStringView piece : {u"<", u"< ", u"<s", u"<\\", u"<>", u"</", u"< i >", u"<i>", u"\n", u" "}) {
    const WString text = repeated(piece, 30000);
    const bool isItalic = piece.find(u'i') != WStringView::npos;
    EXPECT_EQ(removeHtmlTags(text), isItalic ? WString() : text) << wideToString(piece);
    EXPECT_EQ(removeHtmlTags(text + u">"), isItalic ? WString(u">") : text + u">") << wideToString(piece);
  }
}

/// What removeTagsNamed stands for: the engine's matches, each erased where it stands.
WString erasedByRegex(WStringView text, Names names) {
  std::string narrow = wideToString(cText(text));
  size_t position = 0;
  int flags = 0;
  regmatch_t matches[2];
  while (tagRegex().Search(std::string_view(narrow).substr(position), matches, 2, flags)) {
    flags = REG_NOTBOL;
    const WString name = [&] {
      WString units;
      for (auto i = matches[1].rm_so; i < matches[1].rm_eo; ++i) {
        units += static_cast<unsigned char>(narrow[position + static_cast<size_t>(i)]);
      }
      return units;
    }();
    const bool listed =
        std::any_of(names.begin(), names.end(), [&](WStringView each) { return equalsIgnoreCase(each, name); });
    if (listed) {
      narrow.erase(position + static_cast<size_t>(matches[0].rm_so),
                   static_cast<size_t>(matches[0].rm_eo - matches[0].rm_so));
    } else {
      position += static_cast<size_t>(matches[0].rm_eo);
    }
  }
  WString units(narrow.size() + 1, u'\0');
  const uint32_t count = movaStr_UTF8_to_UTF16(units.data(), narrow.c_str(), static_cast<uint32_t>(units.size()));
  units.resize(count - 1);
  return units;
}

TEST(Markup, FindsTheTagsThatTheRegexFinds) {
  const WStringView pieces[] = {u"<",    u"<", u"<",          u">",      u">",      u"/",  u"s",    u"S",
                                u"i",    u"I", u"b",          u"\\",     u" ",      u" ",  u"\t",   u"font",
                                u"\r\n", u"é", u"\U0001F600", u"\xD800", u"\xDC00", u"</", u"</i>", u"<i>"};
  std::mt19937 random(20240607);
  for (int round = 0; round < 30000; ++round) {
    WString text;
    for (auto length = random() % 16; length > 0; --length) text += pieces[random() % std::size(pieces)];
    for (const Names& names : {Names{u"i", u"b", u"u", u"p", u"font", u"\\u4056"},
                               Names{u" ", u"/", u"//", u"<", u"i ", u"<i", u"\t", u"\r\n", u"/ "}}) {
      ASSERT_EQ(removeTagsNamed(text, names), erasedByRegex(text, names)) << wideToString(text);
    }
  }
}

// --- Braces.

TEST(Markup, RemovesBraceBlocks) {
  EXPECT_EQ(withoutBraces(u"{\\an8}x"), u"x");
  EXPECT_EQ(withoutBraces(u"a{1}b{2}{3}c"), u"abc");
  EXPECT_EQ(withoutBraces(u"{a}"), u"");
  EXPECT_EQ(withoutBraces(u""), u"");
}

TEST(Markup, KeepsAnUnclosedBrace) {
  EXPECT_EQ(withoutBraces(u"x{"), u"x{");
  EXPECT_EQ(withoutBraces(u"{a}b{c"), u"b{c");
  EXPECT_EQ(withoutBraces(u"}x"), u"}x");
}

TEST(Markup, DoesNotUnderstandNestedBraces) {
  EXPECT_EQ(withoutBraces(u"{a{b}c}"), u"c}");
}

TEST(Markup, BracesThatMeetByARemovalStay) {
  EXPECT_EQ(withoutBraces(u"a}{b}{c}d"), u"a}d");
  EXPECT_EQ(withoutBraces(u"{{a}}"), u"}");
}

TEST(Markup, RemovesBraceBlocksInPlace) {
  WString text = u"{a}b";
  EXPECT_EQ(&removeBraceTags(text), &text);
  EXPECT_EQ(text, u"b");
}

TEST(Markup, RemovesBracesOfHugeTextsInLinearTime) {
  EXPECT_EQ(withoutBraces(repeated(u"{a}", 30000)), u"");
  EXPECT_EQ(withoutBraces(repeated(u"{", 30000)), repeated(u"{", 30000));
}

TEST(Markup, AllFormattingIsTagsAndBraces) {
  EXPECT_EQ(removeAllFormatting(u"{\\an8}<i>a</i> {b}c"), u"a c");
  // Tags go first, and this one is named "i}": only the block goes.
  EXPECT_EQ(removeAllFormatting(u"{<i}>x"), u">x");
}

// --- Durations.

TEST(Markup, DurationFollowsTheLength) {
  EXPECT_DOUBLE_EQ(calculateDurationMs(repeated(u"x", 30), 20), 1500.0);
  EXPECT_DOUBLE_EQ(calculateDurationMs(u"<i>" + repeated(u"x", 13) + u"\r\n" + repeated(u"x", 15) + u"</i>", 20),
                   1500.0);
}

TEST(Markup, DurationAtAnImpossibleSpeedTakesAUsualOne) {
  EXPECT_NEAR(calculateDurationMs(repeated(u"x", 30), 0.5), 2040.816326530612, 1e-9);
  EXPECT_NEAR(calculateDurationMs(repeated(u"x", 30), 100.5), 2040.816326530612, 1e-9);
  EXPECT_DOUBLE_EQ(calculateDurationMs(repeated(u"x", 4), 2), 2000.0);
  EXPECT_DOUBLE_EQ(calculateDurationMs(repeated(u"x", 150), 100), 1500.0);
}

TEST(Markup, DurationHasLimits) {
  EXPECT_DOUBLE_EQ(calculateDurationMs(u"a", 20), 1000.0);
  EXPECT_DOUBLE_EQ(calculateDurationMs(repeated(u"x", 500), 20), 8000.0);
}

}  // namespace
}  // namespace mova
