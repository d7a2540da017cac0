#include <gtest/gtest.h>

#include <random>

#include "movautil/MovaUtil.h"
#include "text/Regex.h"
#include "text/Shape.h"

namespace mova {
namespace {

TEST(Shape, TakesAnyDigitForAZeroAndOtherUnitsForThemselves) {
  EXPECT_TRUE(startsWithShape(u"12:34,567 and more", u"00:00,000"));
  EXPECT_TRUE(startsWithShape(u"", u""));
  EXPECT_FALSE(startsWithShape(u"12:34,56", u"00:00,000"));
  EXPECT_FALSE(startsWithShape(u"1a:34,567", u"00:00,000"));
  EXPECT_FALSE(startsWithShape(u"12.34,567", u"00:00,000"));
}

TEST(Shape, KnowsNoDigitsBeyondAscii) {
  EXPECT_FALSE(startsWithShape(u"\u0661", u"0"));
  EXPECT_FALSE(startsWithShape(u"\uFF11", u"0"));
}

TEST(Shape, EndsTheTextInFrontOfAZeroUnit) {
  EXPECT_TRUE(hasShape(u"1:2", u"0:0"));
  EXPECT_TRUE(hasShape(WStringView(u"1:2\0x", 5), u"0:0"));
  EXPECT_FALSE(hasShape(u"1:23", u"0:0"));
  EXPECT_FALSE(hasShape(u"1:", u"0:0"));
}

TEST(Shape, WalksOverShapesAndRuns) {
  ShapeWalk walk(u"12  - 3x");
  EXPECT_TRUE(walk.Shape(u"00"));
  EXPECT_FALSE(walk.Shape(u"00"));
  EXPECT_TRUE(walk.Run(u" "));
  EXPECT_EQ(walk.Position(), 4u);
  EXPECT_FALSE(walk.Run(u" "));
  EXPECT_TRUE(walk.Shape(u"-"));
  EXPECT_TRUE(walk.Run(u" \t"));
  EXPECT_TRUE(walk.Run(u"0123456789"));
  EXPECT_FALSE(walk.AtEnd());
  EXPECT_TRUE(walk.Shape(u"x"));
  EXPECT_TRUE(walk.AtEnd());
  EXPECT_FALSE(walk.Run(u"x"));
}

/// Texts that match nearly: the model with up to two units replaced, put in or taken out.
WString nearly(WString text, std::mt19937& random) {
  using namespace std::string_view_literals;
  constexpr WStringView units = u"0123456789:;.,-[] \t\r\\tn\u00E9\0\xD800"sv;
  const auto below = [&random](size_t limit) { return random() % limit; };
  for (size_t change = below(3); change > 0; --change) {
    const size_t at = below(text.size());
    const char16_t unit = units[below(units.size())];
    switch (below(3)) {
      case 0:
        text[at] = unit;
        break;
      case 1:
        text.insert(at, 1, unit);
        break;
      default:
        text.erase(at, 1);
    }
  }
  return text;
}

TEST(Shape, SaysTheSameAsTheExpressionThatItStandsFor) {
  const Regex prefix = createRegex(u"^\\d\\d:\\d\\d:\\d\\d\\.\\d\\d\t\\[\\d\\d\\]");
  const Regex whole = createRegex(u"^\\d\\d:\\d\\d:\\d\\d\\.\\d\\d\t\\[\\d\\d\\]$");
  constexpr WStringView shape = u"00:00:00.00\t[00]";
  std::mt19937 random(1);
  size_t matches = 0;
  for (int i = 0; i < 20000; ++i) {
    const WString text = nearly(u"01:23:45.67\t[89] ", random);
    ASSERT_EQ(startsWithShape(text, shape), prefix.Matches(text)) << wideToString(text);
    ASSERT_EQ(hasShape(text, shape), whole.Matches(text)) << wideToString(text);
    matches += hasShape(text, shape);
  }
  EXPECT_GT(matches, 100u);
}

}  // namespace
}  // namespace mova
