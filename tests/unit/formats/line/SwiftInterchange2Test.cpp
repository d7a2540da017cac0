#include <gtest/gtest.h>

#include <ctime>
#include <limits>

#include "formats/line/SwiftInterchange2.h"
#include "text/Strings.h"
#include "unit/formats/Captions.h"

namespace mova {
namespace {

Loaded loaded(const Lines& lines, double frameRate = 25) {
  const FrameRateScope rate(frameRate);
  return load<SwiftInterchange2>(lines);
}

constexpr std::string_view header =
    "# SWIFT INTERCHANGE FILE V2\n"
    "# DO NOT EDIT LINES BEGINNING WITH '#' SIGN\n"
    "# Originating Swift: Line21 30 DROP English (USA)\n"
    "# VIDEO CLIP : title.mpg\n"
    "# BROADCAST DATE : {date}\n"
    "# REVISION DATE : {date}\n"
    "# CREATION DATE : {date}\n"
    "# COUNTRY OF ORIGIN : ENG\n"
    "# EPISODE NUMBER : 0\n"
    "# DEADLINE DATE : {date}\n"
    "# AUTO TX : false\n"
    "# CURRENT STYLE : None\n"
    "# STYLE DATE : None\n"
    "# STYLE Time : None\n"
    "# SUBTITLE [1] RU3\n"
    "# TIMEIN 01:00:00:06\n"
    "# DURATION 03:21 AUTO\n"
    "# TIMEOUT --:--:--:--\n"
    "# START ROW BOTTOM\n"
    "# ALIGN CENTRE JUSTIFY LEFT\n"
    "# ROW 0";

/// What is written, with "{date}" in place of today's date.
std::string writtenAt(double frameRate, const Captions& captions) {
  const FrameRateScope rate(frameRate);
  std::string text;
  std::string date;
  do {  // until no midnight lies between the two looks at the clock
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char buffer[20];
    date.assign(buffer, std::strftime(buffer, sizeof buffer, "%d/%m/%Y", &local));
    text = written<SwiftInterchange2>(captions);
  } while (text.find(" : " + date) == std::string::npos);
  for (size_t at; (at = text.find(date)) != std::string::npos;) text.replace(at, date.size(), "{date}");
  return text;
}

/// What is written of one caption behind the header, up to its text.
std::string blockAt(double frameRate, double start, double end) {
  const std::string text = writtenAt(frameRate, {{1, start, end, u"a"}});
  constexpr std::string_view open = "\n\n\n\n";
  constexpr std::string_view close =
      " AUTO\n# TIMEOUT --:--:--:--\n# START ROW BOTTOM\n# ALIGN CENTRE JUSTIFY LEFT\n# ROW 0\na";
  EXPECT_TRUE(text.starts_with(std::string(header) + std::string(open)));
  EXPECT_TRUE(text.ends_with(close));
  const size_t begin = header.size() + open.size();
  return text.substr(begin, text.size() - begin - close.size());
}

/// The times of a caption with the given lines, behind the sample that every file begins with.
Captions timesOf(std::initializer_list<WStringView> timeLines, double frameRate = 25) {
  WString units = u"# SUBTITLE [1] RU3";
  std::vector<size_t> ends = {units.size()};
  ends.push_back((units += u"# SUBTITLE [2] RU3").size());
  for (WStringView line : timeLines) ends.push_back((units += line).size());
  ends.push_back((units += u"a").size());
  return loaded(Lines(std::move(units), std::move(ends)), frameRate).captions;
}

TEST(SwiftInterchange2, HasItsNames) {
  const SwiftInterchange2 format;
  EXPECT_EQ(format.Name(), u"Swift V2");
  EXPECT_EQ(format.Extension(), u".sif");
  EXPECT_TRUE(format.ExtraExtensions().empty());
  EXPECT_FALSE(format.SupportsStyles());
  EXPECT_TRUE(format.IsTimeBased());
  EXPECT_TRUE(format.IsTextBased());
}

// --- Writing

TEST(SwiftInterchange2, WritesTheHeaderAloneForAnEmptySubtitle) {
  EXPECT_EQ(writtenAt(25, {}), header);
}

TEST(SwiftInterchange2, WritesCaptionsFromNumberTwoOnInOneRow) {
  EXPECT_EQ(writtenAt(25, {{7, 1000, 3480, u"<i>Hello</i>\r\nWorld"}, {7, 90000000, 90001000, u"b "}}),
            std::string(header) +
                "\n\n\n\n"
                "# SUBTITLE [2] RU3\n"
                "# TIMEIN 00:00:01.00\n"
                "# DURATION 02:12 AUTO\n"
                "# TIMEOUT --:--:--:--\n"
                "# START ROW BOTTOM\n"
                "# ALIGN CENTRE JUSTIFY LEFT\n"
                "# ROW 0\n"
                "Hello World\n\n\n"
                "# SUBTITLE [3] RU3\n"
                "# TIMEIN 25:00:00.00\n"
                "# DURATION 01:00 AUTO\n"
                "# TIMEOUT --:--:--:--\n"
                "# START ROW BOTTOM\n"
                "# ALIGN CENTRE JUSTIFY LEFT\n"
                "# ROW 0\n"
                "b");
}

TEST(SwiftInterchange2, NamesTheVideoAfterTheTitleAsItStands) {
  const WString text = SwiftInterchange2().WriteText(Subtitle(), u"[DATE] [VIDEO_FILE]");
  EXPECT_NE(text.find(u"# VIDEO CLIP : [DATE] [VIDEO_FILE].mpg\n"), WString::npos);
}

TEST(SwiftInterchange2, LosesTheMinutesOfADuration) {
  EXPECT_EQ(blockAt(25, 1000, 63520), "# SUBTITLE [2] RU3\n# TIMEIN 00:00:01.00\n# DURATION 02:13");
}

TEST(SwiftInterchange2, WritesFrames) {
  EXPECT_EQ(blockAt(29.97, 999, 4700), "# SUBTITLE [2] RU3\n# TIMEIN 00:00:00.29\n# DURATION 03:21");
  EXPECT_EQ(blockAt(0, 500, 1000), "# SUBTITLE [2] RU3\n# TIMEIN 00:00:00.00\n# DURATION 00:00");
  EXPECT_EQ(blockAt(-25, 500, 1000), "# SUBTITLE [2] RU3\n# TIMEIN 00:00:00.-12\n# DURATION 00:-12");
  EXPECT_EQ(blockAt(1e9, 500, 1000), "# SUBTITLE [2] RU3\n# TIMEIN 00:00:00.999999999\n# DURATION 00:999999999");
  EXPECT_EQ(blockAt(std::numeric_limits<double>::quiet_NaN(), 500, 1000),
            "# SUBTITLE [2] RU3\n# TIMEIN 00:00:00.01\n# DURATION 00:01");
}

TEST(SwiftInterchange2, WritesTheSignOfANegativeTimeAtEachField) {
  EXPECT_EQ(blockAt(25, -1500, -3040), "# SUBTITLE [2] RU3\n# TIMEIN 00:00:-1.-12\n# DURATION -1:-13");
}

TEST(SwiftInterchange2, EndsATextAtAZeroUnit) {
  EXPECT_TRUE(writtenAt(25, {{1, 0, 0, WString(u"a\0b", 3)}, {2, 0, 0, u"c"}}).find("# ROW 0\na\n\n\n# SUBTITLE [3]") !=
              std::string::npos);
}

// --- Reading

TEST(SwiftInterchange2, LeavesTheFirstCaptionOutAndNumbersFromTwo) {
  EXPECT_EQ(loaded({u"# SUBTITLE [1] RU3", u"# TIMEIN 00:00:01.00", u"sample", u"# SUBTITLE [2] RU3",
                    u"# TIMEIN 00:00:01.12", u"# DURATION 02:00 AUTO", u"Hello", u"World", u"# SUBTITLE [3] RU3",
                    u"# TIMEIN 00:00:04.00", u"# TIMEOUT 00:00:05.24", u"again"}),
            (Loaded{{{2, 1480, 3480, u"Hello\r\nWorld"}, {3, 4000, 5960, u"again"}}, 0}));
}

TEST(SwiftInterchange2, ReadsOnlyAHeaderAsNothing) {
  const Lines lines = {u"# SWIFT INTERCHANGE FILE V2", u"# SUBTITLE [1] RU3",    u"# TIMEIN 01:00:00:06",
                       u"# DURATION 03:21 AUTO",       u"# TIMEOUT --:--:--:--", u"# ROW 0"};
  EXPECT_EQ(loaded(lines), (Loaded{{}, 0}));
  EXPECT_FALSE(recognizes<SwiftInterchange2>(lines));
  EXPECT_EQ(loaded({}), (Loaded{{}, 0}));
}

TEST(SwiftInterchange2, DropsCaptionsWithoutTextAndKeepsTheNumbersWithoutGaps) {
  EXPECT_EQ(loaded({u"# SUBTITLE [1] RU3", u"# SUBTITLE [2] RU3", u"# TIMEIN 00:00:01.00", u"# SUBTITLE [3] RU3",
                    u"# TIMEIN 00:00:02.00", u"a", u"# SUBTITLE [4] RU3", u"   ", u"# SUBTITLE [5] RU3", u"b"}),
            (Loaded{{{2, 2000, 0, u"a"}, {3, 0, 0, u"b"}}, 0}));
}

TEST(SwiftInterchange2, KnowsItsKeysAtTheStartOfALineOnly) {
  // "to 00" counts as 0 hours.
  EXPECT_EQ(loaded({u"# SUBTITLE [1]", u"# SUBTITLES", u"# TIMEINto 00:00:01.00", u"a # TIMEIN 00:00:09.00",
                    u" # SUBTITLE [3]", u"#SUBTITLE", u"# subtitle", u"b"}),
            (Loaded{{{2, 1000, 0, u"a # TIMEIN 00:00:09.00\r\n # SUBTITLE [3]\r\nb"}}, 0}));
}

TEST(SwiftInterchange2, TakesLinesAheadOfTheFirstCaptionForNothing) {
  EXPECT_EQ(loaded({u"text", u"# TIMEIN 00:00:01.00", u"", u"# SUBTITLE [1]", u"# SUBTITLE [2]", u"a"}),
            (Loaded{{{2, 0, 0, u"a"}}, 0}));
}

TEST(SwiftInterchange2, TrimsTheTextAsAWhole) {
  EXPECT_EQ(loaded({u"# SUBTITLE [1]", u"# SUBTITLE [2]", u"  a  ", u"", u"# comment", u"  b  "}).captions,
            (Captions{{2, 0, 0, u"a\r\n  b"}}));
}

TEST(SwiftInterchange2, ReadsTimesWithColonsAndDots) {
  EXPECT_EQ(timesOf({u"# TIMEIN 01:02:03.12", u"# TIMEOUT 01.02.04:13"}), (Captions{{2, 3723480, 3724520, u"a"}}));
  EXPECT_EQ(timesOf({u"# TIMEIN\t 01:02:03.12 "}), (Captions{{2, 3723480, 0, u"a"}}));
  EXPECT_EQ(timesOf({u"# TIMEIN 00:00:00.21"}, 29.97), (Captions{{2, 701, 0, u"a"}}));
  EXPECT_EQ(timesOf({u"# TIMEIN 00:00:00.99"}), (Captions{{2, 999, 0, u"a"}}));
}

TEST(SwiftInterchange2, KeepsATimeThatIsNotGiven) {
  EXPECT_EQ(timesOf({u"# TIMEIN 00:00:01.00", u"# TIMEIN --:--:--:--", u"# TIMEOUT 00:00:02.00",
                     u"# TIMEOUT --:--:--:-- ", u"# DURATION --:-- AUTO"}),
            (Captions{{2, 1000, 2000, u"a"}}));
}

TEST(SwiftInterchange2, ReplacesTheFieldsThatATimeGives) {
  EXPECT_EQ(timesOf({u"# TIMEIN 01:02:03.12", u"# TIMEIN 02:05"}), (Captions{{2, 7503480, 0, u"a"}}));
  EXPECT_EQ(timesOf({u"# TIMEIN 01:02:03.12", u"# TIMEIN 00:00:00.00.99"}), (Captions{{2, 0, 0, u"a"}}));
  EXPECT_EQ(timesOf({u"# TIMEIN 01:02:03.12", u"# TIMEIN"}), (Captions{{2, 123480, 0, u"a"}}));
}

TEST(SwiftInterchange2, TakesWhatIsNoNumberForZero) {
  EXPECT_EQ(timesOf({u"# TIMEIN x:1y::2"}), (Captions{{2, 60080, 0, u"a"}}));
}

TEST(SwiftInterchange2, CarriesFieldsThatAreTooLargeOver) {
  EXPECT_EQ(timesOf({u"# TIMEIN 00:90:61.00"}), (Captions{{2, 5461000, 0, u"a"}}));
  EXPECT_EQ(timesOf({u"# TIMEIN 99999999999:00:00.00"}), (Captions{{2, 2147483647.0 * 3600000, 0, u"a"}}));
  // The minute that "-1" left goes when the seconds come: -00:01:00 has no seconds, and the minute stays.
  EXPECT_EQ(timesOf({u"# TIMEIN 00:-1:30.00"}), (Captions{{2, -30000, 0, u"a"}}));
}

TEST(SwiftInterchange2, AddsTheDurationToTheStart) {
  EXPECT_EQ(timesOf({u"# TIMEIN 00:00:01.00", u"# DURATION 03:12 AUTO"}), (Captions{{2, 1000, 4480, u"a"}}));
  EXPECT_EQ(timesOf({u"# DURATION 03:21 AUTO"}, 29.97), (Captions{{2, 0, 3701, u"a"}}));
  // The start counts as it stands when the duration comes.
  EXPECT_EQ(timesOf({u"# DURATION 03:00 AUTO", u"# TIMEIN 00:00:01.00"}), (Captions{{2, 1000, 3000, u"a"}}));
}

TEST(SwiftInterchange2, AddsTheDurationInSecondsAsDoubles) {
  // 1.64 + 1 is a little less than 2.64, and what is written of it is cut to 2639 ms.
  EXPECT_EQ(timesOf({u"# TIMEIN 00:00:01.00", u"# DURATION 01:16 AUTO"}),
            (Captions{{2, 1000, 2639.9999999999995, u"a"}}));
}

TEST(SwiftInterchange2, ReadsDurationsInOtherForms) {
  const Captions three = {{2, 0, 3480, u"a"}};
  EXPECT_EQ(timesOf({u"# DURATION 03:12"}), three);
  EXPECT_EQ(timesOf({u"# DURATION 03 12 AUTO"}), three);
  EXPECT_EQ(timesOf({u"# DURATION AUTO03:12AUTO"}), three);
  EXPECT_EQ(timesOf({u"# DURATION03:12:99:x"}), three);
  EXPECT_EQ(timesOf({u"# DURATION 3:99"}), (Captions{{2, 0, 3999, u"a"}}));
  EXPECT_EQ(timesOf({u"# DURATION 99999999999:00"}), (Captions{{2, 0, 2147483647000.0, u"a"}}));
}

TEST(SwiftInterchange2, IgnoresDurationsOfAnythingButDigits) {
  for (WStringView line : {u"# DURATION", u"# DURATION 03", u"# DURATION -3:12", u"# DURATION 03.12",
                           u"# DURATION x:12", u"# DURATION 03:1x", u"# DURATION 03:+1"}) {
    EXPECT_EQ(timesOf({u"# TIMEOUT 00:00:07.00", line}), (Captions{{2, 0, 7000, u"a"}}));
  }
}

TEST(SwiftInterchange2, TakesAnEmptyFieldOfADurationForZero) {
  EXPECT_EQ(timesOf({u"# DURATION 03:"}), (Captions{{2, 0, 3000, u"a"}}));
  EXPECT_EQ(timesOf({u"# DURATION 03: 12"}), (Captions{{2, 0, 3000, u"a"}}));
  EXPECT_EQ(timesOf({u"# DURATION :12"}), (Captions{{2, 0, 480, u"a"}}));
}

TEST(SwiftInterchange2, ReadsAtStrangeRates) {
  const std::initializer_list<WStringView> lines = {u"# TIMEIN 00:00:01.12", u"# DURATION 02:12"};
  EXPECT_EQ(timesOf(lines, 0), (Captions{{2, 1001, 3002, u"a"}}));
  EXPECT_EQ(timesOf(lines, 0.001), (Captions{{2, 1999, 4998, u"a"}}));
  EXPECT_EQ(timesOf(lines, 1e9), (Captions{{2, 1000, 3000, u"a"}}));
}

TEST(SwiftInterchange2, StopsAtALineBehindMoreThan500Units) {
  const WString full(500, u'x');
  EXPECT_EQ(loaded({u"# SUBTITLE [1]", u"# SUBTITLE [2]", full, u"y", u"# SUBTITLE [3]", u"b"}),
            (Loaded{{{2, 0, 0, full + u"\r\ny"}, {3, 0, 0, u"b"}}, 0}));
  // One unit more: the sample and all captions so far stay as they are, the one with the text is lost.
  EXPECT_EQ(loaded({u"# SUBTITLE [1]", u"# SUBTITLE [2]", u"a", u"# SUBTITLE [3]", full + u"x", u"y", u"# SUBTITLE [4]",
                    u"b"}),
            (Loaded{{{0, 0, 0, u""}, {0, 0, 0, u"a"}}, 10}));
  // A long text is one as long as no line follows.
  EXPECT_EQ(loaded({u"# SUBTITLE [1]", u"# SUBTITLE [2]", full + full, u"", u"# SUBTITLE [3]", u"b"}),
            (Loaded{{{2, 0, 0, full + full}, {3, 0, 0, u"b"}}, 0}));
}

// --- Recognising

TEST(SwiftInterchange2, RefusesRichText) {
  EXPECT_TRUE(recognizes<SwiftInterchange2>({u"{\\rtf", u"# SUBTITLE [1]", u"# SUBTITLE [2]", u"a"}));
  EXPECT_FALSE(recognizes<SwiftInterchange2>({u"{\\rtf1", u"# SUBTITLE [1]", u"# SUBTITLE [2]", u"a"}));
}

TEST(SwiftInterchange2, ReadsWhatItWrites) {
  const FrameRateScope rate(25);
  const std::string file = written<SwiftInterchange2>({{1, 1000, 3480, u"a\r\nb"}, {2, 4000, 5000, u"c"}});
  EXPECT_EQ(recognized(file), (Recognized{"Swift V2", 2}));
  EXPECT_EQ(recognized(utf8Mark.data() + file), (Recognized{"Swift V2", 2}));
}

TEST(SwiftInterchange2, StandsBehindSubRip) {
  const std::string swift = "# SUBTITLE [1]\n# SUBTITLE [2]\na\n";
  const std::string subRip = "1\n00:00:01,000 --> 00:00:02,000\na\n\n";
  EXPECT_EQ(recognized("first line\n" + swift), (Recognized{"Swift V2", 1}));
  EXPECT_EQ(recognized("first line\n" + subRip + swift), (Recognized{"SubRip", 1}));
}

}  // namespace
}  // namespace mova
