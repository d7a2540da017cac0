#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "formats/scc/CaptionCodes.h"
#include "movautil/MovaUtil.h"
#include "text/Strings.h"

namespace mova {
namespace {

CaptionCodeInfo info(Color color, int32_t style, int32_t column, int32_t row) {
  return {color, style, column, row};
}

TEST(CaptionCodes, HasEveryCodeAsItIs) {
  // FNV-1a of lines such as "91d0 255,255,255,255 2 0 1".
  uint64_t hash = 0xcbf29ce484222325;
  for (const CaptionCode& code : captionCodes()) {
    const CaptionCodeInfo& meaning = code.Info;
    EXPECT_TRUE(meaning.Color.valid);
    WString line = code.Word;
    const char16_t* separator = u" ";
    for (int32_t value : {int32_t{meaning.Color.alpha}, int32_t{meaning.Color.red}, int32_t{meaning.Color.green},
                          int32_t{meaning.Color.blue}, meaning.Style, meaning.Column, meaning.Row}) {
      line += separator;
      appendNumber(line, value);
      separator = std::count(line.begin(), line.end(), u',') < 3 ? u"," : u" ";
    }
    line += u'\n';
    for (char16_t unit : line) hash = (hash ^ unit) * 0x100000001b3;
  }
  EXPECT_EQ(hash, 0xe631a0c9c8ab9cee);
}

TEST(CaptionCodes, Has634DifferentWordsInFourGroups) {
  const auto& codes = captionCodes();
  ASSERT_EQ(codes.size(), 240u + 167 + 210 + 17);
  std::set<WString> words;
  for (const CaptionCode& code : codes) words.insert(code.Word);
  EXPECT_EQ(words.size(), codes.size());

  EXPECT_EQ(codes[0].Word, u"1140");
  EXPECT_EQ(codes[239].Word, u"146f");
  EXPECT_EQ(codes[240].Word, u"91d0");
  EXPECT_EQ(codes[406].Word, u"946d");
  EXPECT_EQ(codes[407].Word, u"9152");
  EXPECT_EQ(codes[616].Word, u"947f");
  EXPECT_EQ(codes[617].Word, u"9120");
  EXPECT_EQ(codes[633].Word, u"94a8");
}

TEST(CaptionCodes, FindsWhatASearchThroughTheListFinds) {
  for (const CaptionCode& code : captionCodes()) {
    const auto first = std::find_if(captionCodes().begin(), captionCodes().end(),
                                    [&code](const CaptionCode& candidate) { return candidate.Word == code.Word; });
    EXPECT_EQ(lookupCaptionCode(code.Word), first->Info) << wideToString(code.Word);
    EXPECT_EQ(lookupCaptionCode(wStrToUpper(code.Word)), first->Info) << wideToString(code.Word);
  }
  int found = 0;
  for (int word = 0; word < 0x10000; ++word) found += lookupCaptionCode(intToWStr(word, u"%04X")).has_value();
  EXPECT_EQ(found, 634);
}

TEST(CaptionCodes, KnowsPreamblesWithoutParity) {
  EXPECT_EQ(lookupCaptionCode(u"1140"), info(colorWhite, 2, 0, 1));
  EXPECT_EQ(lookupCaptionCode(u"1760"), info(colorWhite, 2, 0, 10));
  EXPECT_EQ(lookupCaptionCode(u"124b"), info(colorYellow, 4, 0, 3));
  EXPECT_EQ(lookupCaptionCode(u"134e"), info(colorWhite, 1, 0, 12));
  EXPECT_EQ(lookupCaptionCode(u"146f"), info(colorWhite, 5, 0, 15));
}

TEST(CaptionCodes, KnowsPreamblesWithParity) {
  EXPECT_EQ(lookupCaptionCode(u"91d0"), info(colorWhite, 2, 0, 1));
  EXPECT_EQ(lookupCaptionCode(u"9151"), info(colorWhite, 4, 0, 1));
  EXPECT_EQ(lookupCaptionCode(u"91c2"), info(colorGreen, 2, 0, 1));
  EXPECT_EQ(lookupCaptionCode(u"926d"), info(colorMagenta, 4, 0, 4));
}

TEST(CaptionCodes, KnowsIndentCodes) {
  EXPECT_EQ(lookupCaptionCode(u"9152"), info(colorTransparent, 2, 4, 1));
  EXPECT_EQ(lookupCaptionCode(u"1058"), info(colorTransparent, 2, 16, 11));
  EXPECT_EQ(lookupCaptionCode(u"10d9"), info(colorTransparent, 4, 16, 11));
  EXPECT_EQ(lookupCaptionCode(u"1059"), std::nullopt);  // without parity
  EXPECT_EQ(lookupCaptionCode(u"947f"), info(colorTransparent, 4, 28, 15));
}

TEST(CaptionCodes, KnowsMidRowCodesAndFlashWithoutAPosition) {
  EXPECT_EQ(lookupCaptionCode(u"9120"), info(colorWhite, 2, -1, -1));
  EXPECT_EQ(lookupCaptionCode(u"912c"), info(colorMagenta, 2, -1, -1));
  EXPECT_EQ(lookupCaptionCode(u"91ae"), info(colorTransparent, 1, -1, -1));
  EXPECT_EQ(lookupCaptionCode(u"912f"), info(colorTransparent, 5, -1, -1));
  EXPECT_EQ(lookupCaptionCode(u"94a8"), info(colorTransparent, 2, -1, -1));
}

TEST(CaptionCodes, IgnoresCase) {
  EXPECT_EQ(lookupCaptionCode(u"94D0"), info(colorWhite, 2, 0, 14));
  EXPECT_EQ(lookupCaptionCode(u"94d0"), info(colorWhite, 2, 0, 14));
}

TEST(CaptionCodes, LeavesSomePreamblesToItsCaller) {
  EXPECT_EQ(lookupCaptionCode(u"15e3"), std::nullopt);
  EXPECT_EQ(lookupCaptionCode(u"9440"), std::nullopt);
  EXPECT_EQ(lookupCaptionCode(u"94e0"), std::nullopt);
  EXPECT_EQ(lookupCaptionCode(u"94ce"), std::nullopt);
  EXPECT_EQ(lookupCaptionCode(u"946e"), std::nullopt);
}

TEST(CaptionCodes, FindsNothingForOtherWords) {
  EXPECT_EQ(lookupCaptionCode(u""), std::nullopt);
  EXPECT_EQ(lookupCaptionCode(u"9420"), std::nullopt);
  EXPECT_EQ(lookupCaptionCode(u"91d00"), std::nullopt);
  EXPECT_EQ(lookupCaptionCode(u"\u00C9\u00C9\u00C9\u00C9"), std::nullopt);
}

TEST(CaptionCodes, PlacesLinesByRow) {
  const WStringView codes[] = {u"91d0", u"9170", u"92d0", u"9270", u"15d0", u"1570", u"16d0", u"1670",
                               u"97d0", u"9770", u"10d0", u"13d0", u"1370", u"94d0", u"9470"};
  for (int32_t row = 1; row <= 15; ++row) EXPECT_EQ(captionPositionCode(row, 0), codes[row - 1]);
}

TEST(CaptionCodes, PlacesLinesByIndent) {
  const WStringView odd[] = {u"94d0", u"9452", u"9454", u"94d6", u"9458", u"94da", u"94dc", u"945e"};
  const WStringView even[] = {u"9470", u"94f2", u"94f4", u"9476", u"94f8", u"947a", u"947c", u"94fe"};
  for (int32_t indent = 0; indent <= 28; indent += 4) {
    EXPECT_EQ(captionPositionCode(14, indent), odd[indent / 4]);
    EXPECT_EQ(captionPositionCode(15, indent), even[indent / 4]);
  }
}

TEST(CaptionCodes, MovesByTabOffsets) {
  EXPECT_EQ(tabOffsetCode(1), u"97a1");
  EXPECT_EQ(tabOffsetCode(2), u"97a2");
  EXPECT_EQ(tabOffsetCode(3), u"9723");
}

}  // namespace
}  // namespace mova
