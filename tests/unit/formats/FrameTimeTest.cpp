#include <gtest/gtest.h>

#include <limits>

#include "formats/FrameTime.h"
#include "movautil/MovaUtil.h"
#include "unit/formats/Captions.h"

namespace mova {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

std::string formatted(double milliseconds, double frameRate) {
  const FrameRateScope rate(frameRate);
  return wideToString(formatFrameTime({milliseconds}));
}

double timeOf(const std::vector<WStringView>& parts, double frameRate) {
  const FrameRateScope rate(frameRate);
  return timeCodeFromParts(parts).TotalMilliseconds;
}

TEST(FrameTime, DoesNotWrapHours) {
  EXPECT_EQ(formatted(90000000, 25), "25:00:00:00");
  EXPECT_EQ(formatted(360000000, 25), "100:00:00:00");
}

TEST(FrameTime, PutsTheGivenUnitInFrontOfTheFrames) {
  const FrameRateScope rate(25);
  EXPECT_EQ(formatFrameTime({3723480}, u'.'), u"01:02:03.12");
  WString text = u"at ";
  appendFrameTime(text, {480});
  EXPECT_EQ(text, u"at 00:00:00:12");
}

TEST(FrameTime, PutsAnyLastFieldBehindTheSeconds) {
  WString text;
  appendClock(text, {1, 2, 3, 4}, u';', 56, 3);
  EXPECT_EQ(text, u"01:02:03;056");
}

TEST(FrameTime, RoundsFramesUpToTheLastOfTheSecond) {
  EXPECT_EQ(formatted(1000, 29.97), "00:00:01:00");
  EXPECT_EQ(formatted(999, 29.97), "00:00:00:29");
  EXPECT_EQ(formatted(500, 29.97), "00:00:00:15");  // 14.985
}

TEST(FrameTime, LimitsFramesAt30Only) {
  EXPECT_EQ(formatted(990, 25), "00:00:00:25");  // 24.75 frames: one that the rate doesn't have
  EXPECT_EQ(formatted(480, 60), "00:00:00:29");  // 28.8
  EXPECT_EQ(formatted(500, 60), "00:00:00:59");  // 30 becomes 60 less 0.01, cut
}

TEST(FrameTime, CutsTheTimeToMilliseconds) {
  EXPECT_EQ(formatted(499.9, 25), "00:00:00:12");  // 12.475, not 12.5
}

TEST(FrameTime, WritesTheSignOfANegativeTimeAtEachField) {
  EXPECT_EQ(formatted(-1500, 25), "00:00:-1:-12");
  EXPECT_EQ(formatted(-3723480, 25), "-1:-2:-3:-12");
}

TEST(FrameTime, WritesFramesAtStrangeRates) {
  EXPECT_EQ(formatted(500, 0), "00:00:00:00");
  EXPECT_EQ(formatted(500, -25), "00:00:00:-12");
  EXPECT_EQ(formatted(500, 0.001), "00:00:00:00");
  EXPECT_EQ(formatted(500, 1e9), "00:00:00:999999999");
  EXPECT_EQ(formatted(500, nan), "00:00:00:01");
}

TEST(FrameTime, ReadsFourParts) {
  EXPECT_EQ(timeOf({u"01", u"02", u"03", u"12"}, 25), 3723480);
  EXPECT_EQ(timeOf({u"00", u"00", u"00", u"12"}, 29.97), 400);  // 400.4
  EXPECT_EQ(timeOf({u"00", u"00", u"00", u"21"}, 29.97), 701);  // 700.7
}

TEST(FrameTime, LimitsTheMillisecondsOfFrames) {
  EXPECT_EQ(timeOf({u"00", u"00", u"01", u"25"}, 25), 1999);
  EXPECT_EQ(timeOf({u"00", u"00", u"01", u"99"}, 25), 1999);
}

TEST(FrameTime, ReadsPartsThatAreNoNumbersAsZero) {
  EXPECT_EQ(timeOf({u"", u"x", u"3y", u"-1"}, 25), 2960);
}

TEST(FrameTime, WrapsSumsBeyond32Bits) {
  EXPECT_EQ(timeOf({u"99999999999", u"0", u"0", u"0"}, 25), -3600000);
}

TEST(FrameTime, ReadsFramesAtStrangeRates) {
  EXPECT_EQ(timeOf({u"0", u"0", u"1", u"12"}, 0), 1001);
  EXPECT_EQ(timeOf({u"0", u"0", u"1", u"12"}, -25), 520);
  EXPECT_EQ(timeOf({u"0", u"0", u"1", u"12"}, 0.001), 1999);
  EXPECT_EQ(timeOf({u"0", u"0", u"1", u"12"}, 1e9), 1000);
  EXPECT_EQ(timeOf({u"0", u"0", u"1", u"12"}, nan), 1001);
}

}  // namespace
}  // namespace mova
