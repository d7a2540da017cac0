#include <gtest/gtest.h>

#include <limits>

#include "model/GlobalSettings.h"
#include "model/TimeCode.h"

namespace mova {
namespace {

class TimeCodeTest : public testing::Test {
 protected:
  void SetUp() override { GlobalSettings = getDefaultSettings(); }
};

TEST_F(TimeCodeTest, WritesHoursBeyondTwentyFour) {
  EXPECT_EQ(TimeCode{90061001}.ToString(), u"25:01:01:001");
}

TEST_F(TimeCodeTest, WritesOneSignInFrontOfANegativeTime) {
  EXPECT_EQ(TimeCode{-1500}.ToString(), u"-00:00:01:500");
  EXPECT_EQ(TimeCode{-3723004}.ToString(), u"-01:02:03:004");
}

TEST_F(TimeCodeTest, KeepsTheSignOfATimeThatIsCutToZero) {
  EXPECT_EQ(TimeCode{-0.4}.ToString(), u"-00:00:00:000");
  EXPECT_EQ(TimeCode{0.9}.ToString(), u"00:00:00:000");
}

TEST_F(TimeCodeTest, WritesTimesOfAnySize) {
  EXPECT_EQ(TimeCode{360000000.0}.ToString(), u"100:00:00:000");
  EXPECT_EQ(TimeCode{std::numeric_limits<double>::quiet_NaN()}.ToString(), u"2562047788015:12:55:808");
}

TEST_F(TimeCodeTest, SplitsATimeIntoFieldsThatEachBearItsSign) {
  const TimeFields fields = TimeCode{-90061001.9}.Fields();
  EXPECT_EQ(fields.hours, -25);
  EXPECT_EQ(fields.minutes, -1);
  EXPECT_EQ(fields.seconds, -1);
  EXPECT_EQ(fields.milliseconds, -1);
}

TEST_F(TimeCodeTest, WritesFramesBehindADotAndHoursModulo24) {
  GlobalSettings.FrameRate = 25;
  EXPECT_EQ(TimeCode{90061480}.ToFrameString(), u"01:01:01.12");
}

TEST_F(TimeCodeTest, KeepsFramesBelowTheRate) {
  // 990 ms are 29.67 frames, rounded to 30, which becomes 29.97 in single precision less 0.01, cut.
  EXPECT_EQ(TimeCode{990}.ToFrameString(), u"00:00:00.29");
  // The limit is 30 at 60 frames a second as well.
  GlobalSettings.FrameRate = 60;
  EXPECT_EQ(TimeCode{500}.ToFrameString(), u"00:00:00.59");
}

TEST_F(TimeCodeTest, SurvivesAFrameRateOfZero) {
  GlobalSettings.FrameRate = 0;
  EXPECT_EQ(TimeCode{500}.ToFrameString(), u"00:00:00.00");
}

TEST_F(TimeCodeTest, TurnsFramesIntoMillisecondsUpTo999) {
  GlobalSettings.FrameRate = 25;
  EXPECT_EQ(framesToMilliseconds(12), 480);
  EXPECT_EQ(framesToMilliseconds(25), 999);
  GlobalSettings.FrameRate = 29.97;
  EXPECT_EQ(framesToMilliseconds(1), 33);
  EXPECT_EQ(framesToMilliseconds(2), 67);
  EXPECT_EQ(framesToMilliseconds(-1), -33);
}

TEST_F(TimeCodeTest, GivesAMillisecondForAnyFrameAtARateOfZero) {
  GlobalSettings.FrameRate = 0;
  EXPECT_EQ(framesToMilliseconds(5), 1);  // infinity, rounded through 64 bits
}

}  // namespace
}  // namespace mova
