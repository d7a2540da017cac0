#include <gtest/gtest.h>

#include "text/Color.h"

namespace mova {

static void PrintTo(const Color& c, std::ostream* out) {
  *out << int{c.alpha} << ' ' << int{c.red} << ' ' << int{c.green} << ' ' << int{c.blue} << ' ' << c.valid;
}

namespace {

constexpr Color zeroBytes{0, 0, 0, 0, true};
constexpr Color invalid{0, 0, 0, 0, false};

TEST(Color, HasNames) {
  EXPECT_EQ(colorBlack, (Color{255, 0, 0, 0, true}));
  EXPECT_EQ(colorGreen, (Color{255, 0, 128, 0, true}));
  EXPECT_EQ(colorYellow, (Color{255, 255, 255, 0, true}));
  EXPECT_EQ(colorWhite, (Color{255, 255, 255, 255, true}));
  EXPECT_EQ(colorBlue, (Color{255, 0, 0, 255, true}));
  EXPECT_EQ(colorCyan, (Color{255, 0, 255, 255, true}));
  EXPECT_EQ(colorRed, (Color{255, 255, 0, 0, true}));
  EXPECT_EQ(colorMagenta, (Color{255, 255, 0, 255, true}));
  EXPECT_EQ(colorTransparent, (Color{15, 255, 255, 255, true}));
}

TEST(Color, EqualsOnlyInAllFiveFields) {
  EXPECT_FALSE(zeroBytes == invalid);
  EXPECT_FALSE(colorBlack == zeroBytes);
}

TEST(ColorFromHtml, LosesTheContentOfSixDigits) {
  EXPECT_EQ(colorFromHtml(u"#FF0000"), zeroBytes);
  EXPECT_EQ(colorFromHtml(u"#ffffff"), zeroBytes);
  EXPECT_EQ(colorFromHtml(u"#999999"), zeroBytes);
}

TEST(ColorFromHtml, KeepsTheTopByteOfADecimalNumberAsAlpha) {
  EXPECT_EQ(colorFromHtml(u"#16777215"), zeroBytes);
  EXPECT_EQ(colorFromHtml(u"#16777216"), (Color{1, 0, 0, 0, true}));
  EXPECT_EQ(colorFromHtml(u"#2147483647"), (Color{127, 0, 0, 0, true}));
}

TEST(ColorFromHtml, StopsAtTheLimitOfTheNumber) {
  EXPECT_EQ(colorFromHtml(u"#99999999999999999999"), (Color{127, 0, 0, 0, true}));
}

TEST(ColorFromHtml, DropsTheFirstUnitWhateverItIs) {
  EXPECT_EQ(colorFromHtml(u"x16777216"), (Color{1, 0, 0, 0, true}));
  EXPECT_EQ(colorFromHtml(u"red"), zeroBytes);       // "ed" begins with a hexadecimal digit.
  EXPECT_EQ(colorFromHtml(u"white"), invalid);       // "hite" doesn't.
  EXPECT_EQ(colorFromHtml(u"16777216"), zeroBytes);  // 6777216 is below 2^24.
}

TEST(ColorFromHtml, IsNotValidWithoutAHexadecimalDigitInSecondPlace) {
  EXPECT_EQ(colorFromHtml(u""), invalid);
  EXPECT_EQ(colorFromHtml(u"#"), invalid);
  EXPECT_EQ(colorFromHtml(u"# 12345"), invalid);
  EXPECT_EQ(colorFromHtml(u"#-16777216"), invalid);
  EXPECT_EQ(colorFromHtml(u"#g00000"), invalid);
}

TEST(SsaColorToColor, GivesZeroBytesForHexadecimalDigits) {
  EXPECT_EQ(ssaColorToColor(u"&h0000ff&", colorWhite), zeroBytes);
  EXPECT_EQ(ssaColorToColor(u"h0000ff", colorWhite), zeroBytes);
  EXPECT_EQ(ssaColorToColor(u"&h000000ff", colorWhite), zeroBytes);
  EXPECT_EQ(ssaColorToColor(u" &hffffff& ", colorWhite), zeroBytes);
  EXPECT_EQ(ssaColorToColor(u"&hff&", colorWhite), zeroBytes);
  EXPECT_EQ(ssaColorToColor(u"&h&", colorWhite), zeroBytes);
}

TEST(SsaColorToColor, IsNotValidRatherThanTheFallbackIfSixUnitsAreNoDigits) {
  EXPECT_EQ(ssaColorToColor(u"&h0000g0&", colorWhite), invalid);    // "#g0" + "00" + "00"
  EXPECT_EQ(ssaColorToColor(u"&h00000g&", colorWhite), zeroBytes);  // "#0g" + ...: only the first digit counts.
  EXPECT_EQ(ssaColorToColor(u"hello", colorWhite), invalid);        // "h00ello": "#" + "lo" + "el" + "00"
}

TEST(SsaColorToColor, ReadsDecimalNumbersBlueFirst) {
  EXPECT_EQ(ssaColorToColor(u"255", colorWhite), colorRed);
  EXPECT_EQ(ssaColorToColor(u"65535", colorWhite), colorYellow);
  EXPECT_EQ(ssaColorToColor(u"16711680", colorWhite), colorBlue);
  EXPECT_EQ(ssaColorToColor(u"0", colorWhite), colorBlack);
  EXPECT_EQ(ssaColorToColor(u"197121", colorWhite), (Color{255, 1, 2, 3, true}));
  EXPECT_EQ(ssaColorToColor(u"4294967295", colorBlack), colorWhite);  // 0x7FFFFFFF
  EXPECT_EQ(ssaColorToColor(u"", colorWhite), colorBlack);
}

TEST(SsaColorToColor, GivesTheFallbackForAnythingElse) {
  EXPECT_EQ(ssaColorToColor(u"xyz", colorCyan), colorCyan);
  EXPECT_EQ(ssaColorToColor(u"-1", colorCyan), colorCyan);
  EXPECT_EQ(ssaColorToColor(u" 255", colorCyan), colorCyan);
  EXPECT_EQ(ssaColorToColor(u"&255&", colorCyan), colorCyan);
  EXPECT_EQ(ssaColorToColor(u"&h0000000&", colorCyan), colorCyan);    // eight units
  EXPECT_EQ(ssaColorToColor(u"&h000000000&", colorCyan), colorCyan);  // ten
  EXPECT_EQ(ssaColorToColor(u"&H0000FF&", colorCyan), colorCyan);     // callers pass lower case
}

TEST(ColorToSsaHex, PadsWithBlanksAndHasBlueFirst) {
  EXPECT_EQ(colorToSsaHex(colorWhite), u"&H00FFFFFF");
  EXPECT_EQ(colorToSsaHex(Color{1, 0xAB, 15, 0, true}), u"&H00 0 FAB");
  EXPECT_EQ(colorToSsaHex(colorBlack), u"&H00 0 0 0");
}

TEST(ColorToHexString, PadsWithZerosAndHasRedFirst) {
  EXPECT_EQ(colorToHexString(colorWhite), u"#FFFFFF");
  EXPECT_EQ(colorToHexString(Color{1, 0xAB, 15, 0, true}), u"#AB0F00");
}

}  // namespace
}  // namespace mova
