#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "text/Strings.h"

namespace mova {
namespace {

using Texts = std::vector<WString>;

TEST(Trim, RemovesAsciiWhiteSpace) {
  EXPECT_EQ(trim(u"  x\t\r\n"), u"x");
  EXPECT_EQ(trim(u"\v\fx y\v\f"), u"x y");
  EXPECT_EQ(trim(u" \r\n"), u"");
}

TEST(Trim, KeepsNoBreakSpacesAndZeroUnits) {
  EXPECT_EQ(trim(u"\u00A0x"), u"\u00A0x");
  EXPECT_EQ(trim(WString(u"\0x\0", 3)), WString(u"\0x\0", 3));
}

TEST(Trim, RemovesAGivenUnitAndLeavesWhiteSpace) {
  EXPECT_EQ(trim(u"\"x\"", u'"'), u"x");
  EXPECT_EQ(trim(u" \"x\"", u'"'), u" \"x");
}

TEST(Trim, WorksOnEitherEnd) {
  EXPECT_EQ(trimStart(u" x "), u"x ");
  EXPECT_EQ(trimEnd(u" x "), u" x");
}

TEST(Split, GivesOneEmptyPieceForAnEmptyText) {
  EXPECT_EQ(split(u"", u",", false), Texts{u""});
}

TEST(Split, GivesNoPieceForAnEmptyTextWhenEmptiesAreRemoved) {
  EXPECT_EQ(split(u"", u",", true), Texts{});
}

TEST(Split, GivesOneEmptyPieceForDelimitersAloneWhenEmptiesAreRemoved) {
  EXPECT_EQ(split(u",,", u",", true), Texts{u""});
}

TEST(Split, KeepsAnEmptyRemainderUnlessEmptiesAreRemoved) {
  EXPECT_EQ(split(u"a,b,", u",", false), (Texts{u"a", u"b", u""}));
  EXPECT_EQ(split(u"a,b,", u",", true), (Texts{u"a", u"b"}));
}

TEST(Split, TakesEveryUnitOfTheSetAsDelimiter) {
  EXPECT_EQ(split(u"1:2,3", u":,", false), (Texts{u"1", u"2", u"3"}));
  EXPECT_EQ(split(u"plain", u":,", true), Texts{u"plain"});
}

TEST(SplitOnChar, KeepsInnerEmptiesAndNoTrailingOne) {
  EXPECT_EQ(splitOnChar(u"a//b/", u'/', false), (Texts{u"a", u"", u"b"}));
  EXPECT_EQ(splitOnChar(u"a//b/", u'/', true), (Texts{u"a", u"b"}));
  EXPECT_EQ(splitOnChar(u"/", u'/', false), Texts{u""});
  EXPECT_EQ(splitOnChar(u"", u'/', false), Texts{});
}

TEST(ReplaceAll, GoesOnBehindTheInsertedText) {
  EXPECT_EQ(replaceAll(u"aaa", u"a", u"aa"), u"aaaaaa");
  EXPECT_EQ(replaceAll(u"aaa", u"aa", u"b"), u"ba");
}

TEST(ReplaceAll, ChangesAStringInPlace) {
  WString text = u"a b c";
  EXPECT_EQ(replaceAllInPlace(text, u" ", u""), u"abc");
  EXPECT_EQ(text, u"abc");
  EXPECT_EQ(replaceWithChar(u"a--b", u"--", u'+'), u"a+b");
}

TEST(FindText, FindsWhatTheStandardSearchFinds) {
  std::mt19937 random(1);
  for (int round = 0; round < 2000; ++round) {
    WString text;
    for (size_t i = random() % 70; i > 0; --i) text += u"ab\r\n"[random() % 4];
    for (WStringView what : {u"\r\n\r\n", u"a", u"ab", u"bbb"}) {
      const size_t start = random() % 75;
      EXPECT_EQ(findText(text, what, start), text.find(what, start));
    }
  }
}

TEST(CountText, CountsWithoutOverlaps) {
  EXPECT_EQ(countText(u"aaaa", u"aa"), 2u);
  EXPECT_EQ(countText(u"<i>a</i><i>", u"<i>"), 2u);
  EXPECT_EQ(countText(u"", u"a"), 0u);
}

TEST(AddLineAndTrim, PutsALineBreakBetweenTextAndLineOnly) {
  WString text;
  addLineAndTrim(text, u" a ");
  EXPECT_EQ(text, u"a");
  addLineAndTrim(text, u" b\t");
  EXPECT_EQ(text, u"a\r\n b");
  addLineAndTrim(text, u"  ");
  EXPECT_EQ(text, u"a\r\n b");
}

TEST(EqualsIgnoreCase, FoldsAsciiLettersOnly) {
  EXPECT_TRUE(equalsIgnoreCase(u"SubRip", u"sUBrIP"));
  EXPECT_FALSE(equalsIgnoreCase(u"SubRip", u"SubRi"));
  EXPECT_FALSE(equalsIgnoreCase(u"\u00E9", u"\u00C9"));
  EXPECT_FALSE(equalsIgnoreCase(u"I", u"\u0131"));
  EXPECT_FALSE(equalsIgnoreCase(u"[", u"{"));
}

TEST(StartsWithIgnoreCase, FoldsLettersOnBothSides) {
  EXPECT_TRUE(startsWithIgnoreCase(u"<Style>", u"<sTYLE"));
  EXPECT_TRUE(startsWithIgnoreCase(u"x", u""));
  EXPECT_FALSE(startsWithIgnoreCase(u"<sty", u"<style"));
}

TEST(FindIgnoreCase, GivesTheFirstPlaceFromTheStartOn) {
  EXPECT_EQ(findIgnoreCase(u"<<SYNC a<sync b", u"<sYnc "), 1u);
  EXPECT_EQ(findIgnoreCase(u"<<SYNC a<sync b", u"<sYnc ", 2), 8u);
  EXPECT_EQ(findIgnoreCase(u"<sync", u"<sync "), WString::npos);
  EXPECT_EQ(findIgnoreCase(u"", u"<sync "), WString::npos);
}

WString number(int64_t value, int width) {
  WString text;
  appendNumber(text, value, width);
  return text;
}

TEST(AppendNumber, PadsWithZerosAndCountsTheSign) {
  EXPECT_EQ(number(7, 2), u"07");
  EXPECT_EQ(number(-1, 2), u"-1");
  EXPECT_EQ(number(-1, 3), u"-01");
  EXPECT_EQ(number(0, 1), u"0");
  EXPECT_EQ(number(1234, 2), u"1234");
  EXPECT_EQ(number(std::numeric_limits<int64_t>::min(), 2), u"-9223372036854775808");
}

WString whole(double value) {
  WString text;
  appendWhole(text, value);
  return text;
}

TEST(AppendWhole, RoundsHalvesToTheEvenNeighbour) {
  EXPECT_EQ(whole(0.5), u"0");
  EXPECT_EQ(whole(1.5), u"2");
  EXPECT_EQ(whole(2.5), u"2");
  EXPECT_EQ(whole(1500.4999), u"1500");
  EXPECT_EQ(whole(3723450.0), u"3723450");
}

TEST(AppendWhole, KeepsTheSignOfWhatRoundsToZero) {
  EXPECT_EQ(whole(-0.0), u"-0");
  EXPECT_EQ(whole(-0.4), u"-0");
  EXPECT_EQ(whole(-1500.5), u"-1500");
}

TEST(AppendWhole, WritesEveryDigitOfHugeValues) {
  EXPECT_EQ(whole(9223372036854775807.0), u"9223372036854775808");
  EXPECT_EQ(whole(-std::numeric_limits<double>::max()).size(), 310u);
  EXPECT_EQ(whole(std::numeric_limits<double>::infinity()), u"inf");
  EXPECT_EQ(whole(-std::numeric_limits<double>::quiet_NaN()), u"-nan");
}

TEST(Paths, GiveTheirBaseName) {
  EXPECT_EQ(fileBaseName(u"/a/b.c/film.de.srt"), u"film.de");
  EXPECT_EQ(fileBaseName(u"C:\\a.b\\film"), u"film");
  EXPECT_EQ(fileBaseName(u"a/b\\c.srt"), u"c");
  EXPECT_EQ(fileBaseName(u""), u"");
}

TEST(Paths, ChangeWhateverFollowsTheLastDot) {
  EXPECT_EQ(changeExtension(u"out.txt", u".srt"), u"out.srt");
  EXPECT_EQ(changeExtension(u"out", u".srt"), u"out.srt");
  EXPECT_EQ(changeExtension(u"C:\\a.b\\out", u".srt"), u"C:\\a.srt");
}

TEST(ByteUnits, GiveEverySecondUnit) {
  EXPECT_EQ(takeEverySecondChar(u"abcde", 0), u"ace");
  EXPECT_EQ(takeEverySecondChar(u"abcde", 1), u"bd");
  EXPECT_EQ(takeEverySecondChar(u"", 1), u"");
}

TEST(ByteUnits, LoseOneByteOrderMark) {
  EXPECT_EQ(stripByteOrderMark(u"\u00EF\u00BB\u00BFx"), u"x");
  EXPECT_EQ(stripByteOrderMark(u"\u00FF\u00FEx"), u"x");
  EXPECT_EQ(stripByteOrderMark(u"\u00EF\u00BBx"), u"\u00EF\u00BBx");
  EXPECT_EQ(stripByteOrderMark(u"\u00FE\u00FFx"), u"\u00FE\u00FFx");
}

TEST(ByteUnits, TurnLatin1IntoUtf8AndBack) {
  EXPECT_EQ(latin1UnitsToUtf8Units(u"a\u0080\u00BF\u00C0\u00FF"), u"a\u00C2\u0080\u00C2\u00BF\u00C3\u0080\u00C3\u00BF");
  for (char16_t unit = 0; unit < 256; ++unit) {
    const WString text(1, unit);
    EXPECT_EQ(utf8UnitsToLatin1Units(latin1UnitsToUtf8Units(text)), text);
  }
  EXPECT_EQ(utf8UnitsToLatin1Units(u"a\u00C3"), u"a\u00C3");
}

TEST(Strings, FindsAUnitAtAnyPlaceOfAnyText) {
  for (size_t size = 0; size < 80; ++size) {
    for (size_t place = 0; place <= size; ++place) {  // at the last turn nowhere
      WString text(size, u'a');
      if (place < size) text[place] = u'\u2019';
      for (size_t start : {size_t{0}, size_t{1}, size_t{7}, place, place + 1}) {
        ASSERT_EQ(findUnit(text, u'\u2019', start), text.find(u'\u2019', start))
            << size << " " << place << " " << start;
      }
      ASSERT_EQ(findUnit(text, u'\u0119'), WString::npos);  // the low byte alone is the same
    }
  }
}

TEST(CText, EndsAtTheFirstZeroUnit) {
  EXPECT_EQ(cText(WString(u"ab\0c", 4)), u"ab");
  EXPECT_EQ(cText(u"ab"), u"ab");
}

TEST(NewGuid, HasHyphensAtTheirPlaces) {
  const WString guid = newGuid();
  ASSERT_EQ(guid.size(), 36u);
  for (size_t i = 0; i < guid.size(); ++i) {
    if (i == 8 || i == 13 || i == 18 || i == 23) {
      EXPECT_EQ(guid[i], u'-');
    } else {
      EXPECT_NE(WStringView(u"0123456789abcdef").find(guid[i]), WStringView::npos);
    }
  }
}

}  // namespace
}  // namespace mova
