#include <gtest/gtest.h>

#include <limits>

#include "formats/scc/ScenaristClosedCaptions.h"
#include "formats/scc/ScenaristClosedCaptionsDropFrame.h"
#include "model/GlobalSettings.h"

namespace mova {
namespace {

struct Caption {
  double start;
  double end;
  WString text;
  int32_t number = 0;
  bool operator==(const Caption&) const = default;
  friend void PrintTo(const Caption& c, std::ostream* out) {
    *out << c.number << ' ' << c.start << ' ' << c.end << ' ' << std::string(c.text.begin(), c.text.end());
  }
};
using Captions = std::vector<Caption>;

template <typename Format = ScenaristClosedCaptions>
WString written(const Captions& captions) {
  Subtitle subtitle;
  for (const Caption& caption : captions) subtitle.Append({caption.text, caption.start, caption.end});
  return Format().WriteText(subtitle, u"title");
}

struct Loaded {
  Captions captions;
  int32_t errors;
};

template <typename Format = ScenaristClosedCaptions>
Loaded loaded(const Lines& lines) {
  Format format;
  format.ErrorCount = 7;
  Subtitle subtitle;
  format.LoadSubtitle(subtitle, lines, u"film.scc");
  Captions captions;
  for (const auto& p : subtitle.Paragraphs) {
    captions.push_back({p->StartTime.TotalMilliseconds, p->EndTime.TotalMilliseconds, p->Text, p->Number});
  }
  return {captions, format.ErrorCount};
}

template <typename Format = ScenaristClosedCaptions>
bool recognizes(const Lines& lines) {
  return Format().Recognizes(lines, u"film.txt");
}

class ScenaristClosedCaptionsTest : public testing::Test {
 protected:
  void SetUp() override { GlobalSettings = getDefaultSettings(); }

  /// The time code that a caption of that start is written with.
  template <typename Format = ScenaristClosedCaptions>
  static WString timeCode(double milliseconds) {
    const WString text = written<Format>({{milliseconds, 0, u""}});
    return text.substr(22, text.find(u'\t') - 22);
  }
};

TEST_F(ScenaristClosedCaptionsTest, HaveTheirNames) {
  const ScenaristClosedCaptions plain;
  EXPECT_EQ(plain.Name(), u"DVD_SCC");
  EXPECT_EQ(plain.Extension(), u".scc");
  EXPECT_TRUE(plain.IsTimeBased());
  EXPECT_TRUE(plain.IsTextBased());
  EXPECT_FALSE(plain.SupportsStyles());
  const ScenaristClosedCaptionsDropFrame dropFrame;
  EXPECT_EQ(dropFrame.Name(), u"DVD_SCCDF");
  EXPECT_EQ(dropFrame.Extension(), u".scc");
  EXPECT_FALSE(dropFrame.SupportsStyles());
}

// --- Writing

TEST_F(ScenaristClosedCaptionsTest, WritesACaptionAndItsClear) {
  EXPECT_EQ(written({{1000, 2500, u"<i>Hi</i>"}}),
            u"Scenarist_SCC V1.0\r\n\r\n"
            u"00:00:01:00\t94ae 94ae 9420 9420 94f4 94f4 9723 9723 91ae 91ae c8e9 9120 942f 942f\r\n\r\n"
            u"00:00:02:15\t942c 942c\r\n\r\n");
}

TEST_F(ScenaristClosedCaptionsTest, WritesASemicolonForDropFrame) {
  EXPECT_EQ(written<ScenaristClosedCaptionsDropFrame>({{1000, 2500, u"<i>Hi</i>"}}),
            u"Scenarist_SCC V1.0\r\n\r\n"
            u"00:00:01;00\t94ae 94ae 9420 9420 94f4 94f4 9723 9723 91ae 91ae c8e9 9120 942f 942f\r\n\r\n"
            u"00:00:02;15\t942c 942c\r\n\r\n");
}

TEST_F(ScenaristClosedCaptionsTest, WritesAnEmptySubtitleAsItsHeader) {
  EXPECT_EQ(written({}), u"Scenarist_SCC V1.0\r\n\r\n");
}

TEST_F(ScenaristClosedCaptionsTest, WritesACaptionWithoutWords) {
  EXPECT_EQ(written({{0, 1000, u" \r\n "}}),
            u"Scenarist_SCC V1.0\r\n\r\n"
            u"00:00:00:00\t94ae 94ae 9420 9420  942f 942f\r\n\r\n"
            u"00:00:01:00\t942c 942c\r\n\r\n");
}

TEST_F(ScenaristClosedCaptionsTest, WritesNoClearInAShortGap) {
  const WString first =
      u"Scenarist_SCC V1.0\r\n\r\n"
      u"00:00:00:00\t94ae 94ae 9420 9420 9476 9476 9723 9723 c180 942f 942f\r\n\r\n";
  const WString clear = u"00:00:01:00\t942c 942c\r\n\r\n";
  const WString second =
      u"\t94ae 94ae 9420 9420 9476 9476 9723 9723 c280 942f 942f\r\n\r\n"
      u"00:00:02:00\t942c 942c\r\n\r\n";
  EXPECT_EQ(written({{0, 1000, u"A"}, {1100, 2000, u"B"}}), first + u"00:00:01:03" + second);
  EXPECT_EQ(written({{0, 1000, u"A"}, {1101, 2000, u"B"}}), first + clear + u"00:00:01:03" + second);
  EXPECT_EQ(written({{0, 1000, u"A"}, {900, 2000, u"B"}}), first + u"00:00:00:27" + second);
  EXPECT_EQ(written({{0, 1000, u"A"}, {899, 2000, u"B"}}), first + clear + u"00:00:00:27" + second);
}

TEST_F(ScenaristClosedCaptionsTest, WritesFramesRoundedAndBelowThirty) {
  EXPECT_EQ(timeCode(16), u"00:00:00:00");   // 0.48 frames
  EXPECT_EQ(timeCode(17), u"00:00:00:01");   // 0.51 frames
  EXPECT_EQ(timeCode(984), u"00:00:00:29");  // 29.49 frames
  EXPECT_EQ(timeCode(999), u"00:00:00:29");  // 29.94 frames, rounded to 30
  EXPECT_EQ(timeCode<ScenaristClosedCaptionsDropFrame>(60999), u"00:01:00;29");
  EXPECT_EQ(timeCode<ScenaristClosedCaptionsDropFrame>(60000), u"00:01:00;00");
}

TEST_F(ScenaristClosedCaptionsTest, HoldsFramesToThirtyAtEveryRate) {
  GlobalSettings.FrameRate = 25;
  EXPECT_EQ(timeCode(999), u"00:00:00:25");
  GlobalSettings.FrameRate = 30;
  EXPECT_EQ(timeCode(999), u"00:00:00:29");
  GlobalSettings.FrameRate = 60;
  EXPECT_EQ(timeCode(500), u"00:00:00:59");
}

TEST_F(ScenaristClosedCaptionsTest, WritesHoursModulo24) {
  EXPECT_EQ(timeCode(90061001), u"01:01:01:00");
}

TEST_F(ScenaristClosedCaptionsTest, WritesTimesOfAnySize) {
  EXPECT_EQ(timeCode(-3723500), u"-1:-2:-3:-14");  // -14.985 frames, cut towards zero
  EXPECT_EQ(timeCode(-0.4), u"00:00:00:00");
  EXPECT_EQ(timeCode(std::numeric_limits<double>::quiet_NaN()), u"-7:-12:-55:-24");
  GlobalSettings.FrameRate = 0;
  EXPECT_EQ(timeCode(999), u"00:00:00:00");
}

// --- Reading

TEST_F(ScenaristClosedCaptionsTest, ReadsWhatItWrites) {
  const Loaded result = loaded({u"Scenarist_SCC V1.0", u"",
                                u"00:00:01:00\t94ae 94ae 9420 9420 94f4 94f4 9723 9723 91ae 91ae c8e9 9120 942f 942f",
                                u"", u"00:00:02:15\t942c 942c", u""});
  EXPECT_EQ(result.captions, (Captions{{1000, 2500, u"<i>Hi</i>", 1}}));
  EXPECT_EQ(result.errors, 0);
}

TEST_F(ScenaristClosedCaptionsTest, LosesSomeCharactersOnTheWayThereAndBack) {
  const auto thereAndBack = [](const WString& text) {
    const WString file = written({{0, 1000, text}});
    const size_t begin = file.find(u"00:");
    return loaded({WStringView(file).substr(begin, file.find(u'\r', begin) - begin)}).captions[0].text;
  };
  EXPECT_EQ(thereAndBack(u"(\u00AE)"), u"(\u00AE)");
  EXPECT_EQ(thereAndBack(u"(\u00C7)"), u"(2)");
  EXPECT_EQ(thereAndBack(u"(\u00F4)"), u"(\u00F4)");
  EXPECT_EQ(thereAndBack(u"(\u00F9\u00C8)"), u"(\u00B9\u00B9)");
  EXPECT_EQ(thereAndBack(u"(\u00F7)"), u"()");
  EXPECT_EQ(thereAndBack(u"(\u00D8)"), u"()");
}

TEST_F(ScenaristClosedCaptionsTest, SkipsLinesWithoutATimeCode) {
  const Loaded result = loaded({u"c180", u"00:00:01:00 c180", u"x00:00:01:00\tc180", u"00:00:01:0\tc180",
                                u"00:00:01.00\tc180", u"00:0:01:00\tc180", u":00:01:00\tc180", u"00:00:01:00\t"});
  EXPECT_EQ(result.captions, Captions{});
  EXPECT_EQ(result.errors, 0);
}

TEST_F(ScenaristClosedCaptionsTest, TrimsLines) {
  EXPECT_EQ(loaded({u" \t00:00:01:00\tc180 "}).captions, (Captions{{1000, 1000, u"A", 1}}));
}

TEST_F(ScenaristClosedCaptionsTest, TakesTheTimeFromAClear) {
  EXPECT_EQ(loaded({u"00:00:01:00\tc180", u"00:00:02:00\t942c 942c"}).captions, (Captions{{1000, 2000, u"A", 1}}));
  EXPECT_EQ(loaded({u"00:00:01:00\tc180", u"00:00:02:00\t942c 942c", u"00:00:03:00\t942c 942c"}).captions,
            (Captions{{1000, 3000, u"A", 1}}));
  EXPECT_EQ(loaded({u"00:00:02:00\tc180", u"00:00:01:00\t942c 942c"}).captions, (Captions{{2000, 1000, u"A", 1}}));
}

TEST_F(ScenaristClosedCaptionsTest, TakesAClearThatCharactersSpell) {
  EXPECT_EQ(loaded({u"00:00:01:00\tc180", u"00:00:02:00\tb934 b232 e380"}).captions, (Captions{{1000, 2000, u"A", 1}}));
  EXPECT_EQ(loaded({u"00:00:01:00\tc180", u"00:00:02:00\tb934 b232 e320 b934 b232 e380"}).captions,
            (Captions{{1000, 2000, u"A", 1}}));
}

TEST_F(ScenaristClosedCaptionsTest, IgnoresAClearBeforeAnyCaption) {
  EXPECT_EQ(loaded({u"00:00:01:00\t942c 942c", u"00:00:02:00\tc180", u"00:00:03:00\t942c 942c"}).captions,
            (Captions{{2000, 3000, u"A", 1}}));
  EXPECT_EQ(loaded({u"00:00:01:00\t942c 942c"}).captions, Captions{});
}

TEST_F(ScenaristClosedCaptionsTest, EndsACaptionWhereTheNextBegins) {
  EXPECT_EQ(loaded({u"00:00:01:00\tc180", u"00:00:02:00\tc280", u"00:00:03:00\t4380"}).captions,
            (Captions{{1000, 2000, u"A", 1}, {2000, 3000, u"B", 2}, {3000, 3000, u"C", 3}}));
}

TEST_F(ScenaristClosedCaptionsTest, EndsACaptionAtAnEmptyOneAndRemovesThat) {
  EXPECT_EQ(loaded({u"00:00:01:00\tc180", u"00:00:02:00\t942c", u"00:00:03:00\tc280"}).captions,
            (Captions{{1000, 2000, u"A", 1}, {3000, 3000, u"B", 2}}));
  EXPECT_EQ(loaded({u"00:00:01:00\tc180", u"00:00:02:00\t942c", u"00:00:03:00\t942c"}).captions,
            (Captions{{1000, 2000, u"A", 1}}));
}

TEST_F(ScenaristClosedCaptionsTest, RemovesEmptyCaptionsAtTheTop) {
  EXPECT_EQ(loaded({u"00:00:01:00\t942c", u"00:00:02:00\tc180"}).captions, (Captions{{2000, 2000, u"A", 1}}));
  EXPECT_EQ(loaded({u"00:00:01:00\t942c", u"00:00:02:00\t9420", u"00:00:03:00\t8080", u"00:00:04:00\tc180"}).captions,
            (Captions{{4000, 4000, u"A", 1}}));
  EXPECT_EQ(loaded({u"00:00:01:00\t942c"}).captions, Captions{});
}

TEST_F(ScenaristClosedCaptionsTest, CountsBadWords) {
  EXPECT_EQ(loaded({u"00:00:01:00\tc18 c180", u"00:00:02:00\tc1 c2 c3"}).errors, 4);
}

TEST_F(ScenaristClosedCaptionsTest, AreToldApartByTheSeparatorOfFrames) {
  const Lines colon{u"00:00:01:15\tc180"};
  const Lines semicolon{u"00:00:01;15\tc180"};
  const Lines comma{u"00:00:01,15\tc180"};
  EXPECT_TRUE(recognizes(colon));
  EXPECT_FALSE(recognizes<ScenaristClosedCaptionsDropFrame>(colon));
  EXPECT_FALSE(recognizes(semicolon));
  EXPECT_TRUE(recognizes<ScenaristClosedCaptionsDropFrame>(semicolon));
  EXPECT_TRUE(recognizes(comma));
  EXPECT_TRUE(recognizes<ScenaristClosedCaptionsDropFrame>(comma));

  const Captions expected{{1500, 1500, u"A", 1}};
  EXPECT_EQ(loaded(colon).captions, expected);
  EXPECT_EQ(loaded<ScenaristClosedCaptionsDropFrame>(semicolon).captions, expected);
  EXPECT_EQ(loaded(comma).captions, expected);
  EXPECT_EQ(loaded<ScenaristClosedCaptionsDropFrame>(comma).captions, expected);
}

TEST_F(ScenaristClosedCaptionsTest, AreRecognizedByMoreCaptionsThanErrors) {
  EXPECT_FALSE(recognizes({}));
  EXPECT_FALSE(recognizes({u"Scenarist_SCC V1.0"}));
  EXPECT_FALSE(recognizes({u"00:00:01:00\t942c 942c"}));
  EXPECT_FALSE(recognizes({u"00:00:01:00\tc180 c28"}));
  EXPECT_TRUE(recognizes({u"00:00:01:00\tc180 c28", u"00:00:02:00\tc280"}));
}

TEST_F(ScenaristClosedCaptionsTest, ReadTimeCodes) {
  EXPECT_EQ(parseSccTimeCode(u"00:00:01:00").TotalMilliseconds, 1000);
  EXPECT_EQ(parseSccTimeCode(u"01:02:03;04").TotalMilliseconds, 3723133);
  EXPECT_EQ(parseSccTimeCode(u"00:00:01,15").TotalMilliseconds, 1500);
  EXPECT_EQ(parseSccTimeCode(u"100:00:00:00").TotalMilliseconds, 360000000);
  EXPECT_EQ(parseSccTimeCode(u"00:99:99:99").TotalMilliseconds, 6039999);  // frames give at most 999 ms
}

TEST_F(ScenaristClosedCaptionsTest, ReadTimeCodesInWrapping32Bits) {
  EXPECT_EQ(parseSccTimeCode(u"597:00:00:00").TotalMilliseconds, -2145767296);
  EXPECT_EQ(parseSccTimeCode(u"99999999999:00:00:00").TotalMilliseconds, -3600000);
}

TEST_F(ScenaristClosedCaptionsTest, ReadFramesAtTheRateInForce) {
  GlobalSettings.FrameRate = 25;
  EXPECT_EQ(parseSccTimeCode(u"00:00:00:12").TotalMilliseconds, 480);
  EXPECT_EQ(parseSccTimeCode(u"00:00:00:25").TotalMilliseconds, 999);
  GlobalSettings.FrameRate = 0;
  EXPECT_EQ(parseSccTimeCode(u"00:00:01:12").TotalMilliseconds, 1000);
}

TEST_F(ScenaristClosedCaptionsTest, TakeManyEmptyCaptionsInLinearTime) {
  const size_t count = 100000;
  const WString line = u"00:00:01:00\t942c";
  WString units;
  std::vector<size_t> ends;
  for (size_t i = 0; i < count; ++i) {
    units += line;
    ends.push_back(units.size());
  }
  EXPECT_EQ(loaded(Lines(units, ends)).captions, Captions{});
}

TEST_F(ScenaristClosedCaptionsTest, TakeLongLinesInLinearTime) {
  EXPECT_EQ(loaded({WString(1000000, u'1')}).captions, Captions{});
  EXPECT_EQ(loaded({WString(1000000, u'1') + u":00:00:00\tc180"}).captions.size(), 1u);
  EXPECT_EQ(loaded({u"00:00:01:00\t" + WString(1000000, u' ') + u"c180"}).captions, (Captions{{1000, 1000, u"A", 1}}));
}

}  // namespace
}  // namespace mova
