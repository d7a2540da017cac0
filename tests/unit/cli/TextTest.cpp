#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/Text.h"

namespace mova::cli {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(CliText, Utf8BecomesUtf16) {
  EXPECT_EQ(toUtf16("a\xC3\xA9\xE6\x97\xA5\xF0\x9F\x8E\xAC"), u"aé日🎬");
  EXPECT_EQ(toUtf16(""), u"");
}

TEST(CliText, WhatIsNotUtf8IsRefused) {
  EXPECT_EQ(toUtf16("caf\xE9"), std::nullopt);
  EXPECT_EQ(toUtf16("\xC0\x80"), std::nullopt) << "overlong";
  EXPECT_EQ(toUtf16("\xED\xA0\x80"), std::nullopt) << "a surrogate";
  EXPECT_EQ(toUtf16("\xE6\x97"), std::nullopt) << "cut short";
}

TEST(CliText, Utf16BecomesUtf8) {
  EXPECT_EQ(toUtf8(u"aé日🎬"), "a\xC3\xA9\xE6\x97\xA5\xF0\x9F\x8E\xAC");
}

TEST(CliText, LoneSurrogatesBecomeReplacementCharacters) {
  const char16_t units[] = {'a', 0xD83C, 'b', 0xDFAC, 0xD83C};
  EXPECT_EQ(toUtf8({units, 5}),
            "a\xEF\xBF\xBD"
            "b\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(CliText, FoldedNamesDifferNeitherByCaseNorByBlanks) {
  EXPECT_EQ(foldName(" TT 2006-04 .XML"), "tt2006-04.xml");
  EXPECT_EQ(foldName("É"), "É") << "only ASCII letters have a case";
}

TEST(CliText, NearestNamesAreTheFewestChangesAway) {
  const std::vector<std::string> names = {"SubRip", "SAMI", "SAMI modern", "WebVTT", "DVD_SCC"};
  EXPECT_THAT(nearestNames("subrib", names), ElementsAre("SubRip"));
  EXPECT_THAT(nearestNames("web vt", names), ElementsAre("WebVTT"));
  EXPECT_THAT(nearestNames("webvttt", names), ElementsAre("WebVTT"));
  EXPECT_THAT(nearestNames("wbevtt", names), ElementsAre("WebVTT"));
}

TEST(CliText, ANameThatContainsTheTextIsNear) {
  EXPECT_THAT(nearestNames("modern", {"SubRip", "SAMI", "SAMI modern"}), ElementsAre("SAMI modern"));
}

TEST(CliText, NoNameIsNearToSomethingElseOrNothing) {
  EXPECT_THAT(nearestNames("quux", {"SubRip", "SAMI"}), IsEmpty());
  EXPECT_THAT(nearestNames("", {"SubRip", "SAMI"}), IsEmpty());
}

TEST(CliText, OnlyTheNearestFewAreNamed) {
  EXPECT_THAT(nearestNames("csv", {"Csv2x", "Csv3", "Csvv", "Csv4", "Csv5"}),
              ElementsAre("Csv2x", "Csv3", "Csvv", "Csv4"));
}

TEST(CliText, ControlCharactersAreNotPrinted) {
  EXPECT_EQ(printable("a\n\x1B[1m\x7F é"), "a??[1m? é");
}

}  // namespace
}  // namespace mova::cli
