// What a host program does with setlocale, before or after the library's first use, changes nothing.
#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <string>

#include "movautil/MovaUtil.h"
#include "text/Regex.h"
#include "text/Strings.h"

namespace mova {
namespace {

class HostLocale : public testing::TestWithParam<const char*> {
 protected:
  void SetUp() override {
    setenv("LOCPATH", MOVA_LOCALES_DIR, 1);
    ASSERT_NE(std::setlocale(LC_ALL, GetParam()), nullptr);
  }
  void TearDown() override { std::setlocale(LC_ALL, "C"); }
};

TEST_P(HostLocale, IsReallySet) {
  EXPECT_STREQ(std::localeconv()->decimal_point, ",");
}

TEST_P(HostLocale, DoesNotReachPatterns) {
  EXPECT_FALSE(createRegex(u"^.$").Matches(u"\u00E9"));
  EXPECT_TRUE(createRegex(u"^..$").Matches(u"\u00E9"));
  const Regex letter = createRegex(u"[[:alpha:]]");
  for (const char* byte : {"\xE4", "\xFD", "\xC3\xA4"}) EXPECT_FALSE(letter.Search(byte)) << byte;
  EXPECT_TRUE(createRegex(u"\\bi\\b").Search("\xE4i\xE4 "));
  EXPECT_FALSE(createRegex(u"[a-z]").Search("\xE4"));
}

TEST_P(HostLocale, DoesNotReachPatternsThatWereCompiledBefore) {
  std::setlocale(LC_ALL, "C");
  const Regex letter = createRegex(u"^\\w$");
  std::setlocale(LC_ALL, GetParam());
  EXPECT_FALSE(letter.Search("\xE4"));
  EXPECT_TRUE(letter.Search("i"));
}

TEST_P(HostLocale, DoesNotReachNumbersAndLetters) {
  EXPECT_EQ(wideToDouble(u"1.5"), 1.5);
  EXPECT_EQ(wideToDouble(u"1,5"), 1.0);
  EXPECT_EQ(doubleToWStr(1.5, u"%f"), u"1.500000");
  EXPECT_EQ(wStrToUpper(u"title"), u"TITLE");
  EXPECT_EQ(wStrToLower(u"TITLE"), u"title");
  EXPECT_TRUE(equalsIgnoreCase(u"title", u"TITLE"));
}

TEST_P(HostLocale, IsLeftAsTheHostSetIt) {
  createRegex(u"a").Matches(u"a");
  EXPECT_STREQ(std::localeconv()->decimal_point, ",");
}

std::string testName(const testing::TestParamInfo<const char*>& locale) {
  std::string name = locale.param;
  for (char& c : name) {
    if (c == '.' || c == '-') c = '_';
  }
  return name;
}

INSTANTIATE_TEST_SUITE_P(Locales, HostLocale,
                         testing::Values("de_DE.UTF-8", "tr_TR.UTF-8", "de_DE.ISO-8859-1", "tr_TR.ISO-8859-9"),
                         testName);

}  // namespace
}  // namespace mova
