#include <gtest/gtest.h>

#include <bit>
#include <cfloat>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <string>

#include "movautil/MovaUtil.h"

using mova::WString;

TEST(MovaUtilNumbers, ReadsDecimalIntegers) {
  EXPECT_EQ(wideToInt(u"0"), 0);
  EXPECT_EQ(wideToInt(u"7"), 7);
  EXPECT_EQ(wideToInt(u"007"), 7);
  EXPECT_EQ(wideToInt(u"123456789"), 123456789);
  EXPECT_EQ(wideToLongLong(u"123456789012345678"), 123456789012345678);
}

TEST(MovaUtilNumbers, ReadsOneSign) {
  EXPECT_EQ(wideToInt(u"-12"), -12);
  EXPECT_EQ(wideToInt(u"+12"), 12);
  EXPECT_EQ(wideToInt(u"+-12"), 0);
  EXPECT_EQ(wideToInt(u"--12"), 0);
  EXPECT_EQ(wideToInt(u"- 12"), 0);
  EXPECT_EQ(wideToLongLong(u"-12"), -12);
}

TEST(MovaUtilNumbers, SkipsLeadingWhiteSpaceOnly) {
  EXPECT_EQ(wideToInt(u" \t\n\v\f\r-12"), -12);
  EXPECT_EQ(wideToLongLong(u" \t\n\v\f\r+12"), 12);
  EXPECT_EQ(wideToDouble(u" \t\n\v\f\r1.5"), 1.5);
  EXPECT_EQ(wideToInt(u"1 2"), 1);
  EXPECT_EQ(wideToInt(u"\u00A012"), 0);  // a no-break space is no white space
  EXPECT_EQ(wideToInt(u"\u300012"), 0);  // nor is an ideographic one
  EXPECT_EQ(wideToInt(u"\x001F"
                      u"12"),
            0);
  EXPECT_EQ(wideToInt(u"\x0008"
                      u"12"),
            0);
  EXPECT_EQ(wideToInt(u"\x000E"
                      u"12"),
            0);
}

TEST(MovaUtilNumbers, StopsAtTheFirstUnitThatIsNoDigit) {
  EXPECT_EQ(wideToInt(u"12abc"), 12);
  EXPECT_EQ(wideToInt(u"12.9"), 12);
  EXPECT_EQ(wideToInt(u"12,9"), 12);
  EXPECT_EQ(wideToInt(u"1e3"), 1);
  EXPECT_EQ(wideToInt(u"0x1F"), 0);
  EXPECT_EQ(wideToInt(u"1\u0662"), 1);  // Arabic digits are no digits here
  EXPECT_EQ(wideToInt(u"1\uFF12"), 1);  // nor are full-width ones
  EXPECT_EQ(wideToInt(u"1\u0132"), 1);  // whose low byte would be "2"
  EXPECT_EQ(wideToInt(mova::WStringView(u"1\0"
                                        u"2",
                                        3)),
            1);
}

TEST(MovaUtilNumbers, TextWithoutDigitsIsZero) {
  for (const WString text : {u"", u" ", u"-", u"+", u"abc", u"-abc", u".", u",5"}) {
    EXPECT_EQ(wideToInt(text), 0);
    EXPECT_EQ(wideToLongLong(text), 0);
    EXPECT_EQ(wideToDouble(text), 0.0);
    EXPECT_FALSE(std::signbit(wideToDouble(text)));
  }
}

TEST(MovaUtilNumbers, IntegersStopAtTheLimitsOfTheirType) {
  EXPECT_EQ(wideToInt(u"2147483647"), 2147483647);
  EXPECT_EQ(wideToInt(u"2147483648"), 2147483647);
  EXPECT_EQ(wideToInt(u"2147483650"), 2147483647);
  EXPECT_EQ(wideToInt(u"-2147483647"), -2147483647);
  EXPECT_EQ(wideToInt(u"-2147483648"), INT32_MIN);
  EXPECT_EQ(wideToInt(u"-2147483649"), INT32_MIN);
  EXPECT_EQ(wideToInt(u"99999999999999999999999999"), INT32_MAX);
  EXPECT_EQ(wideToInt(u"-99999999999999999999999999"), INT32_MIN);
  EXPECT_EQ(wideToInt(u"00000000000000000000000000000000042"), 42);
  EXPECT_EQ(wideToLongLong(u"9223372036854775807"), INT64_MAX);
  EXPECT_EQ(wideToLongLong(u"9223372036854775808"), INT64_MAX);
  EXPECT_EQ(wideToLongLong(u"-9223372036854775808"), INT64_MIN);
  EXPECT_EQ(wideToLongLong(u"-9223372036854775809"), INT64_MIN);
  EXPECT_EQ(wideToLongLong(u"99999999999999999999999999"), INT64_MAX);
  EXPECT_EQ(wideToLongLong(WString(1000000, u'9')), INT64_MAX);
}

TEST(MovaUtilNumbers, ReadsDecimalFractions) {
  EXPECT_EQ(wideToDouble(u"0"), 0.0);
  EXPECT_EQ(wideToDouble(u"29.97"), 29.97);
  EXPECT_EQ(wideToDouble(u"-1.25"), -1.25);
  EXPECT_EQ(wideToDouble(u"+1.25"), 1.25);
  EXPECT_EQ(wideToDouble(u".5"), 0.5);
  EXPECT_EQ(wideToDouble(u"-.5"), -0.5);
  EXPECT_EQ(wideToDouble(u"5."), 5.0);
  EXPECT_EQ(wideToDouble(u"0.1"), 0.1);
  EXPECT_EQ(wideToDouble(u"123456789.123456789"), 123456789.123456789);
  EXPECT_EQ(wideToDouble(u"9007199254740993"), 9007199254740992.0);  // half way: to the even one
}

TEST(MovaUtilNumbers, FractionsStopAtTheFirstUnitThatDoesNotBelong) {
  EXPECT_EQ(wideToDouble(u"29,97"), 29.0);  // a comma is never the separator
  EXPECT_EQ(wideToDouble(u"1.2.3"), 1.2);
  EXPECT_EQ(wideToDouble(u"12.5s"), 12.5);
  EXPECT_EQ(wideToDouble(u"1 000"), 1.0);
  EXPECT_EQ(wideToDouble(u"1'000"), 1.0);
  EXPECT_EQ(wideToDouble(u"1\u0662"), 1.0);
}

TEST(MovaUtilNumbers, ReadsExponents) {
  EXPECT_EQ(wideToDouble(u"1e5"), 100000.0);
  EXPECT_EQ(wideToDouble(u"1E5"), 100000.0);
  EXPECT_EQ(wideToDouble(u"1e+5"), 100000.0);
  EXPECT_EQ(wideToDouble(u"25e-1"), 2.5);
  EXPECT_EQ(wideToDouble(u"-.5e1x"), -5.0);
  EXPECT_EQ(wideToDouble(u"5.e1"), 50.0);
  EXPECT_EQ(wideToDouble(u"1e"), 1.0);
  EXPECT_EQ(wideToDouble(u"1e+"), 1.0);
  EXPECT_EQ(wideToDouble(u"1e x"), 1.0);
  EXPECT_EQ(wideToDouble(u"e5"), 0.0);
  EXPECT_EQ(wideToDouble(u".e5"), 0.0);
}

TEST(MovaUtilNumbers, WordsAndHexadecimalFormsAreNoNumbers) {
  for (const WString text : {u"inf", u"-inf", u"INF", u"infinity", u"nan", u"NaN", u"-nan", u"nan(1)"})
    EXPECT_EQ(wideToDouble(text), 0.0);
  EXPECT_EQ(wideToDouble(u"0x10"), 0.0);
  EXPECT_EQ(wideToDouble(u"0x1p4"), 0.0);
  EXPECT_EQ(wideToDouble(u"1p4"), 1.0);
}

TEST(MovaUtilNumbers, NumbersOutsideTheRangeOfDoubles) {
  EXPECT_EQ(wideToDouble(u"1.7976931348623157e308"), DBL_MAX);
  EXPECT_EQ(wideToDouble(u"1.8e308"), HUGE_VAL);
  EXPECT_EQ(wideToDouble(u"-1e400"), -HUGE_VAL);
  EXPECT_EQ(wideToDouble(u"1e99999999999999999999999"), HUGE_VAL);
  EXPECT_EQ(wideToDouble(WString(400, u'9')), HUGE_VAL);
  EXPECT_EQ(wideToDouble(u"0.000000001e315"), 1e306);
  EXPECT_EQ(wideToDouble(u"5e-324"), std::numeric_limits<double>::denorm_min());
  EXPECT_EQ(wideToDouble(u"1e-400"), 0.0);
  EXPECT_EQ(wideToDouble(u"123456.789e-99999999999999999999"), 0.0);
  EXPECT_EQ(wideToDouble(u"." + WString(400, u'0') + u"1"), 0.0);
  EXPECT_EQ(wideToDouble(u"0e99999999999999999999"), 0.0);
  EXPECT_EQ(wideToDouble(u"0." + WString(400, u'0') + u"1e401"), 1.0);
}

TEST(MovaUtilNumbers, PrintsIntegers) {
  EXPECT_EQ(intToWStr(0, u"%d"), u"0");
  EXPECT_EQ(intToWStr(42, u"%d"), u"42");
  EXPECT_EQ(intToWStr(-42, u"%d"), u"-42");
  EXPECT_EQ(intToWStr(INT32_MAX, u"%d"), u"2147483647");
  EXPECT_EQ(intToWStr(INT32_MIN, u"%d"), u"-2147483648");
}

TEST(MovaUtilNumbers, FillsUpWithZeros) {
  EXPECT_EQ(intToWStr(0, u"%02d"), u"00");
  EXPECT_EQ(intToWStr(7, u"%02d"), u"07");
  EXPECT_EQ(intToWStr(42, u"%02d"), u"42");
  EXPECT_EQ(intToWStr(100, u"%02d"), u"100");
  EXPECT_EQ(intToWStr(7, u"%03d"), u"007");
  EXPECT_EQ(intToWStr(42, u"%04d"), u"0042");
  EXPECT_EQ(intToWStr(42, u"%05d"), u"00042");
  EXPECT_EQ(intToWStr(123456, u"%05d"), u"123456");
}

TEST(MovaUtilNumbers, TheSignBelongsToTheWidth) {
  EXPECT_EQ(intToWStr(-1, u"%02d"), u"-1");
  EXPECT_EQ(intToWStr(-1, u"%03d"), u"-01");
  EXPECT_EQ(intToWStr(-500, u"%03d"), u"-500");
  EXPECT_EQ(intToWStr(INT32_MIN, u"%02d"), u"-2147483648");
}

TEST(MovaUtilNumbers, PrintsHexadecimalWithCapitals) {
  EXPECT_EQ(intToWStr(0, u"%04X"), u"0000");
  EXPECT_EQ(intToWStr(0x94AE, u"%04X"), u"94AE");
  EXPECT_EQ(intToWStr(0xABCDEF, u"%04X"), u"ABCDEF");
  EXPECT_EQ(intToWStr(-1, u"%04X"), u"FFFFFFFF");
  EXPECT_EQ(intToWStr(INT32_MIN, u"%04X"), u"80000000");
}

TEST(MovaUtilNumbers, PrintsLongIntegers) {
  EXPECT_EQ(longLongToWStr(0, u"%I64d"), u"0");
  EXPECT_EQ(longLongToWStr(-5, u"%I64d"), u"-5");
  EXPECT_EQ(longLongToWStr(INT64_MAX, u"%I64d"), u"9223372036854775807");
  EXPECT_EQ(longLongToWStr(INT64_MIN, u"%I64d"), u"-9223372036854775808");
}

TEST(MovaUtilNumbers, PrintsDoublesWithSixDecimals) {
  EXPECT_EQ(doubleToWStr(0, u"%f"), u"0.000000");
  EXPECT_EQ(doubleToWStr(29.97, u"%f"), u"29.970000");
  EXPECT_EQ(doubleToWStr(-1.5, u"%f"), u"-1.500000");
  EXPECT_EQ(doubleToWStr(1e15, u"%f"), u"1000000000000000.000000");
  EXPECT_EQ(doubleToWStr(1.0 / 3, u"%f"), u"0.333333");
  EXPECT_EQ(doubleToWStr(2.0 / 3, u"%f"), u"0.666667");
  EXPECT_EQ(doubleToWStr(-0.0, u"%f"), u"-0.000000");
  EXPECT_EQ(doubleToWStr(-1e-9, u"%f"), u"-0.000000");
}

TEST(MovaUtilNumbers, RoundsExactTiesToTheEvenDigit) {
  EXPECT_EQ(doubleToWStr(0.0000005, u"%f"), u"0.000000");  // just below the tie in binary
  EXPECT_EQ(doubleToWStr(1.0 / 128, u"%f"), u"0.007812");  // 0.0078125
  EXPECT_EQ(doubleToWStr(3.0 / 128, u"%f"), u"0.023438");  // 0.0234375
  EXPECT_EQ(doubleToWStr(0.9999999, u"%f"), u"1.000000");
}

TEST(MovaUtilNumbers, PrintsWhatIsNoNumber) {
  EXPECT_EQ(doubleToWStr(HUGE_VAL, u"%f"), u"inf");
  EXPECT_EQ(doubleToWStr(-HUGE_VAL, u"%f"), u"-inf");
  EXPECT_EQ(doubleToWStr(std::copysign(NAN, 1), u"%f"), u"nan");
  EXPECT_EQ(doubleToWStr(std::copysign(NAN, -1), u"%f"), u"-nan");
}

TEST(MovaUtilNumbers, PrintsTheLargestDoublesInFull) {
  EXPECT_EQ(doubleToWStr(std::ldexp(1.0, 100), u"%f"), u"1267650600228229401496703205376.000000");
  const WString largest = doubleToWStr(-DBL_MAX, u"%f");
  EXPECT_EQ(largest.size(), 1u + 309 + 7);
  EXPECT_EQ(largest.substr(0, 18), u"-17976931348623157");
  EXPECT_EQ(doubleToWStr(1e308, u"%f").size(), 309u + 7);
}

TEST(MovaUtilNumbers, PrintsDoublesAsTheCLibraryDoes) {
  std::mt19937_64 random(1);  // the same numbers in every run
  for (int i = 0; i < 20000; ++i) {
    const double values[] = {std::bit_cast<double>(random()), static_cast<double>(random() % 100000000) / 1000,
                             static_cast<double>(static_cast<int64_t>(random())) / 128};
    for (const double value : values) {
      char expected[400];
      const int length = std::snprintf(expected, sizeof expected, "%f", value);
      ASSERT_EQ(doubleToWStr(value, u"%f"), WString(expected, expected + length));
    }
  }
}
