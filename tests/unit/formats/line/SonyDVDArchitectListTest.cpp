#include <gtest/gtest.h>

#include <random>

#include "formats/line/SonyDVDArchitect.h"
#include "formats/line/SonyDVDArchitectExplicitDuration.h"
#include "formats/line/SonyDVDArchitectLineAndDuration.h"
#include "formats/line/SonyDVDArchitectList.h"
#include "formats/line/SonyDVDArchitectTabs.h"
#include "text/Regex.h"
#include "text/Strings.h"
#include "unit/formats/Captions.h"

namespace mova {
namespace {

TEST(OpenCaption, TakesNoLineBeforeItIsOpened) {
  EXPECT_FALSE(OpenCaption().AddLine(u"a"));
}

TEST(OpenCaption, TakesLinesUntilItHasFive) {
  Paragraph paragraph(u"1\r\n2\r\n3", 0, 0);
  OpenCaption caption;
  caption.Open(paragraph);
  EXPECT_TRUE(caption.AddLine(u"4"));
  EXPECT_TRUE(caption.AddLine(u"5"));
  EXPECT_FALSE(caption.AddLine(u"6"));
  EXPECT_EQ(paragraph.Text, u"1\r\n2\r\n3\r\n4\r\n5");
}

TEST(OpenCaption, CountsLineBreaksAndNotLines) {
  Paragraph paragraph(u"\r\n\r\n\r\na", 0, 0);  // three breaks, of which the next line trims all away
  OpenCaption caption;
  caption.Open(paragraph);
  for (WStringView line : {u"b", u"c", u"d", u"e"}) EXPECT_TRUE(caption.AddLine(line));
  EXPECT_FALSE(caption.AddLine(u"f"));
  EXPECT_EQ(paragraph.Text, u"a\r\nb\r\nc\r\nd\r\ne");
}

/// A line of digits, separators and text with a few units replaced, put in or taken out.
WString nearly(WString line, std::mt19937& random) {
  using namespace std::string_view_literals;
  constexpr WStringView units = u"0123456789:.-|x \t\t  \u00E9\0"sv;
  for (size_t change = random() % 4; change > 0; --change) {
    const size_t at = random() % line.size();
    const char16_t unit = units[random() % units.size()];
    switch (random() % 3) {
      case 0:
        line[at] = unit;
        break;
      case 1:
        line.insert(at, 1, unit);
        break;
      default:
        line.erase(at, 1);
    }
  }
  return line;
}

/// Loads lines that are nearly time lines, each behind a good one: a time line opens a caption or is an error, any
/// other line becomes text of the first caption.
template <typename Format>
void compareWithExpression(WStringView model, WStringView expression) {
  const Regex regex = createRegex(expression);
  std::mt19937 random(1);
  size_t timeLines = 0;
  for (int i = 0; i < 10000; ++i) {
    const WString line = nearly(WString(model), random);
    if (trimView(line).empty()) continue;
    const bool isTimeLine = line.size() >= 27 && line[2] == u':' && regex.Matches(line);
    const Loaded loaded = load<Format>({model, line});
    ASSERT_EQ(loaded.captions.size() + static_cast<size_t>(loaded.errors), isTimeLine ? 2u : 1u) << wideToString(line);
    timeLines += isTimeLine;
  }
  EXPECT_GT(timeLines, 1000u);
}

TEST(SonyDVDArchitect, TakesTheLinesThatItsExpressionMatches) {
  compareWithExpression<SonyDVDArchitect>(u"00:00:01:50  - 00:00:02:00  \tHello",
                                          u"^\\d\\d:\\d\\d:\\d\\d:\\d\\d[ ]+-[ ]+\\d\\d:\\d\\d:\\d\\d:\\d\\d");
}

TEST(SonyDVDArchitectTabs, TakesTheLinesThatItsExpressionMatches) {
  compareWithExpression<SonyDVDArchitectTabs>(u"00:00:01:50\t00:00:02:00\tHello",
                                              u"^\\d\\d:\\d\\d:\\d\\d:\\d\\d[ \t]+\\d\\d:\\d\\d:\\d\\d:\\d\\d[ \t]+");
}

TEST(SonyDVDArchitectExplicitDuration, TakesTheLinesThatItsExpressionMatches) {
  compareWithExpression<SonyDVDArchitectExplicitDuration>(
      u"00:00:01.500\t00:00:02.000\t00:00:00.500\tHello",
      u"^\\d\\d:\\d\\d:\\d\\d\\.\\d\\d\\d[ \t]+\\d\\d:\\d\\d:\\d\\d\\.\\d\\d\\d[ \t]+\\d\\d:\\d\\d:\\d\\d\\.\\d\\d\\d[ "
      u"\t]+");
}

TEST(SonyDVDArchitectLineAndDuration, TakesTheLinesThatItsExpressionMatches) {
  const FrameRateScope rate(25);
  const Regex regex =
      createRegex(u"^\\d+\t\\d\\d:\\d\\d:\\d\\d:\\d\\d\t\\d\\d:\\d\\d:\\d\\d:\\d\\d\t\\d\\d:\\d\\d:\\d\\d:\\d\\d$");
  std::mt19937 random(1);
  size_t timeLines = 0;
  for (int i = 0; i < 10000; ++i) {
    const WString line = nearly(u"12\t00:00:01:12\t00:00:02:00\t00:00:00:13", random);
    const bool isTimeLine = regex.Matches(trimView(line));
    const Loaded loaded = load<SonyDVDArchitectLineAndDuration>({line});
    ASSERT_EQ(loaded.captions.size(), isTimeLine ? 1u : 0u) << wideToString(line);
    timeLines += isTimeLine;
  }
  EXPECT_GT(timeLines, 1000u);
}

// --- Which of the lists takes a file that several would take: the first of them in the order of the formats.

std::string file(std::string_view lines) {
  return std::string(utf8Mark) + std::string(lines);
}

constexpr std::string_view dashLine = "00:00:01:00 - 00:00:02:00  \tdash\r\n";
constexpr std::string_view durationLine = "00:00:01.000\t00:00:02.000\t00:00:01.000\tduration\r\n";
constexpr std::string_view numberLine = "1\t00:00:01:00\t00:00:02:00\t00:00:01:00\r\nnumber\r\n";
constexpr std::string_view tabLine = "00:00:01:00\t00:00:02:00\ttabs\r\n";

std::string concat(std::initializer_list<std::string_view> parts) {
  std::string whole;
  for (std::string_view part : parts) whole += part;
  return whole;
}

TEST(SonyDVDArchitectList, TakesEachListByItself) {
  EXPECT_EQ(recognized(file(dashLine)), (Recognized{"Sony DVDArchitect", 1}));
  EXPECT_EQ(recognized(file(durationLine)), (Recognized{"Sony DVD Exp dur", 1}));
  EXPECT_EQ(recognized(file(numberLine)), (Recognized{"Sony DVD line/dur", 1}));
  EXPECT_EQ(recognized(file(tabLine)), (Recognized{"Sony DVD Tabs", 1}));
}

TEST(SonyDVDArchitectList, TakesForeignLinesForText) {
  EXPECT_EQ(recognized(file(concat({dashLine, durationLine, numberLine, tabLine}))),
            (Recognized{"Sony DVDArchitect", 1}));
  EXPECT_EQ(recognized(file(concat({durationLine, numberLine, tabLine}))), (Recognized{"Sony DVD Exp dur", 1}));
  EXPECT_EQ(recognized(file(concat({numberLine, tabLine}))), (Recognized{"Sony DVD line/dur", 1}));
}

TEST(SonyDVDArchitectList, CountsForeignLinesAheadOfTheFirstCaption) {
  // One error against one caption: not for the list that stands first, but for the next.
  EXPECT_EQ(recognized(file(concat({tabLine, dashLine}))), (Recognized{"Sony DVD Tabs", 1}));
  EXPECT_EQ(recognized(file(concat({durationLine, dashLine}))), (Recognized{"Sony DVD Exp dur", 1}));
  EXPECT_EQ(recognized(file(concat({tabLine, dashLine, dashLine}))), (Recognized{"Sony DVDArchitect", 2}));
}

TEST(SonyDVDArchitectList, RefusesALineForEachCaption) {
  EXPECT_EQ(recognized(file(concat({"title\r\n", dashLine}))), (Recognized{"", 0}));
  EXPECT_EQ(recognized(file(concat({"title\r\n", tabLine}))), (Recognized{"", 0}));
}

}  // namespace
}  // namespace mova
