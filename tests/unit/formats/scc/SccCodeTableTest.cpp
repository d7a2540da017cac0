#include <gtest/gtest.h>

#include <algorithm>

#include "formats/scc/SccCodeTable.h"
#include "movautil/MovaUtil.h"

namespace mova {
namespace {

/// What codeToText and textToCode stand for, row by row.
WStringView firstText(WStringView word) {
  const WString lower = wStrToLower(WString(word));
  const auto row = std::find_if(SccCodeTable.begin(), SccCodeTable.end(),
                                [&lower](const SccCodeRow& candidate) { return candidate.Code == lower; });
  return row == SccCodeTable.end() ? WStringView() : row->Text;
}

WStringView firstCode(char16_t unit) {
  const auto row = std::find_if(SccCodeTable.begin(), SccCodeTable.end(), [unit](const SccCodeRow& candidate) {
    return candidate.Text == WStringView(&unit, 1);
  });
  return row == SccCodeTable.end() ? SccCodeTable[0].Code : row->Code;
}

TEST(SccCodeTable, HasEveryRowAsItIs) {
  // FNV-1a of lines such as "00E1 2a", with "-" for an empty text or code.
  uint64_t hash = 0xcbf29ce484222325;
  const auto add = [&hash](WStringView text) {
    for (char16_t unit : text) hash = (hash ^ unit) * 0x100000001b3;
  };
  for (const SccCodeRow& row : SccCodeTable) {
    ASSERT_LE(row.Text.size(), 1u);
    add(row.Text.empty() ? WString(u"-") : intToWStr(row.Text[0], u"%04X"));
    add(u" ");
    add(row.Code.empty() ? WStringView(u"-") : row.Code);
    add(u"\n");
  }
  EXPECT_EQ(hash, 0x981159bc5a8a6c12);
}

TEST(SccCodeTable, IsEmptyFromRow312On) {
  EXPECT_EQ(SccCodeTable.size(), 350u);
  EXPECT_EQ(SccCodeTable[311].Text, u"\u00FF");
  EXPECT_EQ(SccCodeTable[311].Code, u"79");
  for (size_t row = 312; row < SccCodeTable.size(); ++row) {
    EXPECT_EQ(SccCodeTable[row].Text, u"");
    EXPECT_EQ(SccCodeTable[row].Code, u"");
  }
}

TEST(SccCodeTable, ReadsTheFirstRowOfACode) {
  for (const SccCodeRow& row : SccCodeTable) {
    for (const WString& word : {WString(row.Code), wStrToLower(WString(row.Code)), wStrToUpper(WString(row.Code))}) {
      EXPECT_EQ(codeToText(word), word == u"92b3" ? u"\u00B9" : firstText(word)) << wideToString(word);
    }
  }
  for (int byte = 0; byte < 256; ++byte) {
    const WString word = intToWStr(byte, u"%02X");
    EXPECT_EQ(codeToText(word), firstText(word)) << wideToString(word);
  }
}

TEST(SccCodeTable, WritesTheFirstRowOfAText) {
  for (int unit = 0; unit < 0x10000; ++unit) {
    ASSERT_EQ(textToCode(static_cast<char16_t>(unit)), firstCode(static_cast<char16_t>(unit))) << unit;
  }
}

TEST(SccCodeTable, ReadsSpecialCharactersInTheirUsableSpellingsOnly) {
  EXPECT_EQ(codeToText(u"91b0"), u"");
  EXPECT_EQ(codeToText(u"1130"), u"\u00AE");
  EXPECT_EQ(codeToText(u"9130"), u"\u00AE");
}

TEST(SccCodeTable, NeverReadsACodeWithUpperCaseDigits) {
  EXPECT_EQ(codeToText(u"133a"), u"");
  EXPECT_EQ(codeToText(u"133A"), u"");
  EXPECT_EQ(textToCode(u'\u00D8'), u"133A");
}

TEST(SccCodeTable, ReadsASuperscriptOneInOneSpellingOnly) {
  EXPECT_EQ(codeToText(u"92b3"), u"\u00B9");
  EXPECT_EQ(codeToText(u"92B3"), u"\u00C8");
}

TEST(SccCodeTable, ReadsAnInvertedExclamationMarkAsTheLetterI) {
  EXPECT_EQ(codeToText(u"92a7"), u"i");
  EXPECT_EQ(textToCode(u'\u00A1'), u"92a7");
}

TEST(SccCodeTable, WritesABlankForAnUnknownUnit) {
  EXPECT_EQ(textToCode(u'\u4E00'), u"20");
  EXPECT_EQ(textToCode(u'\u0192'), u"20");
  EXPECT_EQ(textToCode(u'\xD83D'), u"20");
  EXPECT_EQ(textToCode(u'\0'), u"20");
}

TEST(SccCodeTable, WritesNothingForThreeCharacters) {
  EXPECT_EQ(textToCode(u'\u00A8'), u"");
  EXPECT_EQ(textToCode(u'\u00BC'), u"");
  EXPECT_EQ(textToCode(u'\u00BE'), u"");
}

TEST(SccCodeTable, ReadsTabOffsetsAsBlanks) {
  EXPECT_EQ(codeToText(u"97a1"), u" ");
  EXPECT_EQ(codeToText(u"97a2"), u" ");
  EXPECT_EQ(codeToText(u"9723"), u" ");
}

TEST(SccCodeTable, ReadsNothingForWordsThatAreNoCodes) {
  EXPECT_EQ(codeToText(u"80"), u"");
  EXPECT_EQ(codeToText(u"zz"), u"");
  EXPECT_EQ(codeToText(u"0020"), u"");
  EXPECT_EQ(codeToText(WStringView(u"20\0", 3)), u"");
}

}  // namespace
}  // namespace mova
