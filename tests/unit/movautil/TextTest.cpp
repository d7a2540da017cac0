#include <gtest/gtest.h>

#include <string>

#include "movautil/MovaUtil.h"

using mova::WString;
using namespace std::string_literals;

TEST(MovaUtilText, CaseOfAsciiLetters) {
  EXPECT_EQ(wStrToLower(u"@AZ[`az{ <FONT Color=\"#FFAB09\">"), u"@az[`az{ <font color=\"#ffab09\">");
  EXPECT_EQ(wStrToUpper(u"@AZ[`az{ <font color=\"#ffab09\">"), u"@AZ[`AZ{ <FONT COLOR=\"#FFAB09\">");
  EXPECT_EQ(wStrToLower(u""), u"");
  EXPECT_EQ(wStrToUpper(u""), u"");
}

TEST(MovaUtilText, OtherLettersKeepTheirCase) {
  EXPECT_EQ(wStrToLower(u"ÄÉİЖ"), u"ÄÉİЖ");
  EXPECT_EQ(wStrToUpper(u"äéßıж"), u"äéßıж");
  EXPECT_EQ(wStrToUpper(u"I i"), u"I I");  // in a Turkish locale too
}

TEST(MovaUtilText, WideTextBecomesUtf8) {
  EXPECT_EQ(wideToString(u""), "");
  EXPECT_EQ(wideToString(u"00:00:01,000 --> 00:00:02,000"), "00:00:01,000 --> 00:00:02,000");
  EXPECT_EQ(wideToString(u"caf\u00E9 \u20AC \U0001F3AC!"), "caf\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x8E\xAC!");
}

TEST(MovaUtilText, ALoneSurrogateBecomesTheReplacementCharacter) {
  EXPECT_EQ(wideToString(u"a\xD83C"
                         u"b"),
            "a\xEF\xBF\xBD"
            "b");
  EXPECT_EQ(wideToString(u"a\xDFAC"), "a\xEF\xBF\xBD");
}

TEST(MovaUtilText, AZeroUnitBecomesAZeroByte) {
  EXPECT_EQ(wideToString(u"a\0b"s), "a\0b"s);
}

TEST(MovaUtilText, EachNarrowByteBecomesOneUnit) {
  const signed char text[] = {'a', -61, -87, -1, -128, 0, 'x', 0};
  EXPECT_EQ(stringToWide(text), u"a\u00C3\u00A9\u00FF\u0080");
  const unsigned char field[] = {'S', 'T', 'L', '2', '5', '.', '0', '1', 0xE9, 0xFF, 0, 'x', 0};
  EXPECT_EQ(stringToWide(field), u"STL25.01\u00E9\u00FF");
  const unsigned char empty[] = {0};
  EXPECT_EQ(stringToWide(empty), u"");
}
