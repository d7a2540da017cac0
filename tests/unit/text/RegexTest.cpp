#include <gtest/gtest.h>

#include "text/Regex.h"

namespace mova {
namespace {

TEST(Regex, MatchesDigitsAtTheEndsOfTheWholeText) {
  const Regex regex = createRegex(u"^\\d\\d$");
  EXPECT_TRUE(regex.Matches(u"12"));
  EXPECT_FALSE(regex.Matches(u"12\n"));
  EXPECT_FALSE(regex.Matches(u"1a"));
  EXPECT_FALSE(regex.Matches(u"x\n12"));
}

TEST(Regex, MatchesByByte) {
  EXPECT_FALSE(createRegex(u"^.$").Matches(u"\u00E9"));
  EXPECT_TRUE(createRegex(u"^..$").Matches(u"\u00E9"));
}

TEST(Regex, KnowsAsciiLettersOnly) {
  EXPECT_FALSE(createRegex(u"[[:alpha:]]").Matches(u"\u00E9"));
  EXPECT_FALSE(createRegex(u"\\w").Matches(u"\u00E9\u044F"));
  EXPECT_FALSE(createRegex(u"\\s").Matches(u"\u00A0\u2003"));
  EXPECT_TRUE(createRegex(u"\\s").Matches(u"\v"));
}

TEST(Regex, TakesABackslashInBracketsAsItself) {
  EXPECT_TRUE(createRegex(u"^[ \\t\\n\\r]$").Matches(u"\\"));
  EXPECT_TRUE(createRegex(u"^[ \\t\\n\\r]$").Matches(u"t"));
  EXPECT_FALSE(createRegex(u"^[ \\t\\n\\r]$").Matches(u"\t"));
  EXPECT_TRUE(createRegex(u"^[^\\s>]$").Matches(u" "));
  EXPECT_FALSE(createRegex(u"^[^\\s>]$").Matches(u"s"));
}

TEST(Regex, ReplacesDigitEscapesWithinBracketsToo) {
  // "[\d:]" becomes "[[0-9]:]": one of "[0-9", then ":]".
  EXPECT_TRUE(createRegex(u"^[\\d:]$").Matches(u"5:]"));
  EXPECT_FALSE(createRegex(u"^[\\d:]$").Matches(u"5"));
}

TEST(Regex, TakesOtherEscapesAsTheCharacterItself) {
  EXPECT_TRUE(createRegex(u"^\\t$").Matches(u"t"));
  EXPECT_FALSE(createRegex(u"^\\t$").Matches(u"\t"));
}

TEST(Regex, LetsADotMatchALineFeed) {
  EXPECT_TRUE(createRegex(u"^a.b$").Matches(u"a\nb"));
}

TEST(Regex, PrefersTheLongestOfTheLeftmostMatches) {
  regmatch_t match;
  ASSERT_TRUE(createRegex(u"a|ab|abc").Search("xabcabcd", &match, 1));
  EXPECT_EQ(match.rm_so, 1);
  EXPECT_EQ(match.rm_eo, 4);
}

TEST(Regex, GivesGroups) {
  regmatch_t matches[2];
  ASSERT_TRUE(createRegex(u"<([a-z]+)>").Search("x<b>", matches, 2));
  EXPECT_EQ(matches[1].rm_so, 2);
  EXPECT_EQ(matches[1].rm_eo, 3);
}

TEST(Regex, SeesTheTextUpToItsFirstZeroUnit) {
  EXPECT_TRUE(createRegex(u"^ab$").Matches(WStringView(u"ab\0c", 4)));
}

TEST(Regex, SaysThatAPatternCannotBeCompiled) {
  testing::internal::CaptureStdout();
  const Regex regex = createRegex(u"(");
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "UtilityFunctions: createRegex: could not compile regular expression\n");
  EXPECT_FALSE(regex.Matches(u"("));
}

TEST(CountRegexMatches, CountsMatchesThatDoNotOverlap) {
  EXPECT_EQ(countRegexMatches(createRegex(u"aa"), u"aaaaa"), 2);
  EXPECT_EQ(countRegexMatches(createRegex(u"b"), u"aaaaa"), 0);
}

TEST(CountRegexMatches, StopsBehindAMatchAtTheLastByte) {
  EXPECT_EQ(countRegexMatches(createRegex(u"\u00E9"), u"x\u00E9"), 1);
}

TEST(CountRegexMatches, AnchorsTheStartOfTheTextOnly) {
  EXPECT_EQ(countRegexMatches(createRegex(u"^a"), u"aaa"), 1);
}

TEST(CountRegexMatches, EndsForAPatternThatMatchesNothing) {
  EXPECT_EQ(countRegexMatches(createRegex(u"x*"), u"aaa"), 0);
}

TEST(CountRegexMatches, CountsAMillionMatchesInOneText) {
  EXPECT_EQ(countRegexMatches(createRegex(u"ab"), WString(1000000, u'a') + u"b"), 1);
  WString text;
  for (int i = 0; i < 100000; ++i) text += u"you and me ";
  EXPECT_EQ(countRegexMatches(createRegex(u"\\byou\\b"), text), 100000);
}

}  // namespace
}  // namespace mova
