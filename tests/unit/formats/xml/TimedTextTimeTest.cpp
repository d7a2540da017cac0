#include <gtest/gtest.h>

#include <limits>

#include "formats/xml/TimedTextTime.h"
#include "model/GlobalSettings.h"

namespace mova {
namespace {

class TimedTextTime : public testing::Test {
 protected:
  void SetUp() override {
    GlobalSettings = getDefaultSettings();
    GlobalSettings.FrameRate = 25;
    timedTextTimeFormat = TimedTextTimeFormat::Frames;
  }
  void TearDown() override { timedTextTimeFormat = TimedTextTimeFormat::Frames; }

  static double Parsed(WStringView text, bool frameBased = true) {
    const auto time = parseTimeExpression(text, frameBased);
    return time ? time->TotalMilliseconds : -1e9;
  }
  static WString Written(TimedTextTimeFormat format, double milliseconds) {
    timedTextTimeFormat = format;
    return formatTimeExpression({milliseconds});
  }
};

TEST_F(TimedTextTime, ReadsMilliseconds) {
  EXPECT_EQ(Parsed(u"1500ms"), 1500);
  EXPECT_EQ(timedTextTimeFormat, TimedTextTimeFormat::Milliseconds);
  EXPECT_EQ(Parsed(u"1,5ms"), 1.5);
  EXPECT_EQ(Parsed(u"7mmss"), 7000);  // ends in "s", but not in "ms"
  EXPECT_EQ(timedTextTimeFormat, TimedTextTimeFormat::Seconds);
}

TEST_F(TimedTextTime, ReadsSeconds) {
  EXPECT_EQ(Parsed(u"12.5s"), 12500);
  EXPECT_EQ(timedTextTimeFormat, TimedTextTimeFormat::Seconds);
  EXPECT_EQ(Parsed(u"12,5sss"), 12500);
  EXPECT_EQ(Parsed(u"s"), 0);
}

TEST_F(TimedTextTime, ReadsTicksOfATenThousandthOfAMillisecond) {
  EXPECT_EQ(Parsed(u"15000000t"), 1500);
  EXPECT_EQ(timedTextTimeFormat, TimedTextTimeFormat::Ticks);
  EXPECT_EQ(Parsed(u"19999t"), 1);
  EXPECT_EQ(Parsed(u"-19999t"), -1);
  EXPECT_EQ(Parsed(u"4294977296t"), 1);  // 2^32 + 10000 wraps
}

TEST_F(TimedTextTime, ReadsClockTimesInFramesOrMilliseconds) {
  EXPECT_EQ(Parsed(u"00:00:01:12"), 1480);
  EXPECT_EQ(Parsed(u"01:02:03.500", false), 3723500);
  EXPECT_EQ(Parsed(u"00:00:01.50"), 1999);  // 50 frames
  EXPECT_EQ(Parsed(u"00:00:01,5", false), 1005);
  EXPECT_EQ(Parsed(u"1000:00:00:00"), -694967296);
}

TEST_F(TimedTextTime, RemembersAClockWithMillisecondsAndNoOtherClock) {
  timedTextTimeFormat = TimedTextTimeFormat::Seconds;
  Parsed(u"00:00:01:12");
  EXPECT_EQ(timedTextTimeFormat, TimedTextTimeFormat::Seconds);
  Parsed(u"00:00:01,500");
  EXPECT_EQ(timedTextTimeFormat, TimedTextTimeFormat::Seconds);
  Parsed(u"00:00:01.500");
  EXPECT_EQ(timedTextTimeFormat, TimedTextTimeFormat::ClockMilliseconds);
}

TEST_F(TimedTextTime, RefusesAClockTimeOfFewerThanFourFields) {
  for (WStringView text : {u"", u"00", u"00:01", u"00:00:01"}) EXPECT_FALSE(parseTimeExpression(text, true));
  EXPECT_EQ(Parsed(u"::::"), 0);
}

TEST_F(TimedTextTime, WritesFrames) {
  EXPECT_EQ(Written(TimedTextTimeFormat::Frames, 1480), u"00:00:01:12");
  EXPECT_EQ(Written(TimedTextTimeFormat::Frames, 90061000), u"25:01:01:00");
  EXPECT_EQ(Written(TimedTextTimeFormat::Frames, 999), u"00:00:00:25");  // the limit is 30 at every rate
  GlobalSettings.FrameRate = 60;
  EXPECT_EQ(Written(TimedTextTimeFormat::Frames, 500), u"00:00:00:59");
}

TEST_F(TimedTextTime, WritesClockMilliseconds) {
  EXPECT_EQ(Written(TimedTextTimeFormat::ClockMilliseconds, 3723004.9), u"01:02:03.004");
  EXPECT_EQ(Written(TimedTextTimeFormat::ClockMilliseconds, -1500), u"00:00:-1.-500");
}

TEST_F(TimedTextTime, WritesDecimalsUntilTheNumberIsAMultipleOfTheLast) {
  EXPECT_EQ(Written(TimedTextTimeFormat::Milliseconds, 1500), u"1500ms");
  EXPECT_EQ(Written(TimedTextTimeFormat::Seconds, 0), u"0.0s");
  // A tenth is no exact double, so that the search for a last decimal usually ends at its limit of 15.
  EXPECT_EQ(Written(TimedTextTimeFormat::Milliseconds, 1500.5), u"1500.500000000000000ms");
  EXPECT_EQ(Written(TimedTextTimeFormat::Seconds, 12500), u"12.500000000000000s");
}

TEST_F(TimedTextTime, WritesAnyDouble) {
  EXPECT_EQ(Written(TimedTextTimeFormat::Seconds, std::numeric_limits<double>::infinity()), u"infs");
  EXPECT_GT(Written(TimedTextTimeFormat::Milliseconds, 1e308).size(), 300u);
}

TEST_F(TimedTextTime, WritesTicksAsTheLetterAlone) {
  EXPECT_EQ(Written(TimedTextTimeFormat::Ticks, 1500), u"t");
}

TEST_F(TimedTextTime, KnowsTheParametersOfItsRates) {
  const auto rate = [](double frameRate) {
    GlobalSettings.FrameRate = frameRate;
    const TimedTextRate r = timedTextRate();
    return r.frameRate + u"|" + r.multiplier;
  };
  EXPECT_EQ(rate(25), u"25.000000|1 1");
  EXPECT_EQ(rate(23.98), u"24|1000 1001");
  EXPECT_EQ(rate(29.97), u"30|1000 1001");
  EXPECT_EQ(rate(59.94), u"60|1000 1001");
  EXPECT_EQ(rate(15.152), u"1|1000 66");
  EXPECT_EQ(rate(24.5), u"|");
  EXPECT_EQ(rate(0), u"0.000000|1 1");
  EXPECT_EQ(rate(std::numeric_limits<double>::quiet_NaN()), u"|");
  EXPECT_EQ(timedTextRate().dropMode, u"nonDrop");
  GlobalSettings.DropFrame = true;
  EXPECT_EQ(timedTextRate().dropMode, u"dropNTSC");
}

}  // namespace
}  // namespace mova
