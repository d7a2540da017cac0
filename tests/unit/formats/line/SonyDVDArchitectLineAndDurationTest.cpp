#include <gtest/gtest.h>

#include <ctime>
#include <limits>

#include "formats/line/SonyDVDArchitectLineAndDuration.h"
#include "unit/formats/Captions.h"

namespace mova {
namespace {

Loaded loaded(const Lines& lines, double frameRate = 25) {
  const FrameRateScope rate(frameRate);
  return load<SonyDVDArchitectLineAndDuration>(lines);
}

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
    date.assign(buffer, std::strftime(buffer, sizeof buffer, "%d.%m.%Y", &local));
    text = written<SonyDVDArchitectLineAndDuration>(captions);
  } while (text.find("Date: " + date) == std::string::npos);
  return text.replace(text.find(date), date.size(), "{date}");
}

TEST(SonyDVDArchitectLineAndDuration, HasItsNames) {
  const SonyDVDArchitectLineAndDuration format;
  EXPECT_EQ(format.Name(), u"Sony DVD line/dur");
  EXPECT_EQ(format.Extension(), u".txt");
}

// --- Writing

TEST(SonyDVDArchitectLineAndDuration, WritesTheHeaderAloneForAnEmptySubtitle) {
  EXPECT_EQ(writtenAt(25, {}),
            "Title: title\n"
            "Translator: No Author\n"
            "Date: {date}\n"
            "Duration: 00:00:00:00\n"
            "Program start: 00:00:00:00\n"
            "Title count: 0\n"
            "\n"
            "#\tIn\tOut\tDuration\r\n\r\n\r\n");
}

TEST(SonyDVDArchitectLineAndDuration, WritesMixedLineEndsAndNumbersOfItsOwn) {
  EXPECT_EQ(writtenAt(25, {{9, 1480, 3000, u"<i>Hello</i>\r\nWorld"}, {9, 4000, 90005960, u"b\n"}}),
            "Title: title\n"
            "Translator: No Author\n"
            "Date: {date}\n"
            "Duration: 25:00:05:24\n"
            "Program start: 00:00:00:00\n"
            "Title count: 2\n"
            "\n"
            "#\tIn\tOut\tDuration\n"
            "\n"
            "1\t00:00:01:12\t00:00:03:00\t00:00:01:13\r\nHello\r\nWorld\r\n\n"
            "2\t00:00:04:00\t25:00:05:24\t25:00:01:24\r\nb\r\n\r\n\r\n");
}

TEST(SonyDVDArchitectLineAndDuration, LimitsFramesAt30Only) {
  const std::string text = writtenAt(29.97, {{1, 999, 1000, u"a"}});
  EXPECT_NE(text.find("\n1\t00:00:00:29\t00:00:01:00\t00:00:00:00\r\na\r\n"), std::string::npos) << text;
  const std::string fast = writtenAt(60, {{1, 480, 500, u"a"}});
  EXPECT_NE(fast.find("\n1\t00:00:00:29\t00:00:00:59\t00:00:00:01\r\na\r\n"), std::string::npos) << fast;
  const std::string slow = writtenAt(25, {{1, 990, 2000, u"a"}});
  EXPECT_NE(slow.find("\n1\t00:00:00:25\t00:00:02:00\t00:00:01:00\r\na\r\n"), std::string::npos) << slow;
}

TEST(SonyDVDArchitectLineAndDuration, WritesTheSignOfANegativeDurationAtEachField) {
  const std::string text = writtenAt(25, {{1, 3480, 2000, u"a"}});
  EXPECT_NE(text.find("\n1\t00:00:03:12\t00:00:02:00\t00:00:-1:-12\r\na\r\n"), std::string::npos) << text;
}

TEST(SonyDVDArchitectLineAndDuration, EndsATextAtAZeroUnit) {
  const std::string text = writtenAt(25, {{1, 0, 0, WString(u"a\0b", 3)}, {2, 0, 0, u"c"}});
  EXPECT_NE(text.find("\r\na\r\n\n2\t"), std::string::npos) << text;
}

TEST(SonyDVDArchitectLineAndDuration, WritesAtStrangeRates) {
  for (const double rate : {0.0, -25.0, 0.001, 1e9, std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_TRUE(writtenAt(rate, {{1, 1000, 2000, u"a"}}).ends_with("\r\na\r\n\r\n\r\n")) << rate;
  }
}

// --- Reading

TEST(SonyDVDArchitectLineAndDuration, ReadsTimesInFrames) {
  EXPECT_EQ(loaded({u"1\t00:00:01:12\t01:02:03:24\t00:00:01:13", u"Hello", u"World"}),
            (Loaded{{{1, 1480, 3723960, u"Hello\r\nWorld"}}, 0}));
  EXPECT_EQ(loaded({u"1\t00:00:01:12\t00:00:03:29\t00:00:01:13", u"Hello"}, 29.97),
            (Loaded{{{1, 1400, 3968, u"Hello"}}, 0}));  // 400.4 and 967.63
  EXPECT_EQ(loaded({u"1\t00:00:00:25\t00:00:01:99\t00:00:01:13", u"Hello"}), (Loaded{{{1, 999, 1999, u"Hello"}}, 0}));
}

TEST(SonyDVDArchitectLineAndDuration, TheEndCountsAndNotTheDuration) {
  EXPECT_EQ(loaded({u"1\t00:00:01:00\t00:00:03:00\t99:99:99:99", u"a"}).captions, (Captions{{1, 1000, 3000, u"a"}}));
}

TEST(SonyDVDArchitectLineAndDuration, TakesNumbersOfAnyLengthAndNumbersFromOne) {
  EXPECT_EQ(loaded({u"99999999999999999999\t00:00:01:00\t00:00:03:00\t00:00:02:00", u"a",
                    u"0\t00:00:04:00\t00:00:05:00\t00:00:01:00", u"b"}),
            (Loaded{{{1, 1000, 3000, u"a"}, {2, 4000, 5000, u"b"}}, 0}));
  EXPECT_EQ(loaded({u"\t00:00:01:00\t00:00:03:00\t00:00:02:00"}), (Loaded{{}, 1}));
}

TEST(SonyDVDArchitectLineAndDuration, TrimsEveryLine) {
  EXPECT_EQ(loaded({u"  1\t00:00:01:00\t00:00:03:00\t00:00:02:00 \t", u"  a ", u" \t b"}),
            (Loaded{{{1, 1000, 3000, u"a\r\nb"}}, 0}));
}

TEST(SonyDVDArchitectLineAndDuration, TakesNothingBehindTheDuration) {
  EXPECT_EQ(loaded({u"1\t00:00:01:00\t00:00:03:00\t00:00:02:00\tx"}), (Loaded{{}, 1}));
  EXPECT_EQ(loaded({u"1\t00:00:01:00\t00:00:03:00\t00:00:02:000"}), (Loaded{{}, 1}));
  // A zero unit ends the line for the search.
  EXPECT_EQ(loaded({WStringView(u"1\t00:00:01:00\t00:00:03:00\t00:00:02:00\0\tx", 40), u"a"}).captions,
            (Captions{{1, 1000, 3000, u"a"}}));
}

TEST(SonyDVDArchitectLineAndDuration, NeedsSingleTabsBetweenTheFields) {
  EXPECT_EQ(loaded({u"1 00:00:01:00 00:00:03:00 00:00:02:00"}), (Loaded{{}, 1}));
  EXPECT_EQ(loaded({u"1\t\t00:00:01:00\t00:00:03:00\t00:00:02:00"}), (Loaded{{}, 1}));
  EXPECT_EQ(loaded({u"1\t00:00:01:00\t\t00:00:03:00\t00:00:02:00"}), (Loaded{{}, 1}));
}

TEST(SonyDVDArchitectLineAndDuration, KeepsBarsAndMarks) {
  EXPECT_EQ(loaded({u"1\t00:00:01:00\t00:00:03:00\t00:00:02:00", u"a|b"}).captions,
            (Captions{{1, 1000, 3000, u"a|b"}}));
  EXPECT_EQ(loaded({u"\u00EF\u00BB\u00BF1\t00:00:01:00\t00:00:03:00\t00:00:02:00"}), (Loaded{{}, 1}));
}

TEST(SonyDVDArchitectLineAndDuration, LimitsACaptionToFiveLines) {
  EXPECT_EQ(loaded({u"1\t00:00:01:00\t00:00:03:00\t00:00:02:00", u"1", u"2", u"", u"3", u"4", u"5", u"6"}),
            (Loaded{{{1, 1000, 3000, u"1\r\n2\r\n3\r\n4\r\n5"}}, 1}));
}

TEST(SonyDVDArchitectLineAndDuration, KeepsCaptionsWithoutText) {
  EXPECT_EQ(loaded({u"1\t00:00:01:00\t00:00:03:00\t00:00:02:00", u"2\t00:00:04:00\t00:00:05:00\t00:00:01:00"}),
            (Loaded{{{1, 1000, 3000, u""}, {2, 4000, 5000, u""}}, 0}));
}

TEST(SonyDVDArchitectLineAndDuration, CountsTheHeaderAsErrors) {
  EXPECT_EQ(loaded({u"Title: t", u"Translator: No Author", u"Date: 01.02.2003", u"Duration: 00:00:03:00",
                    u"Program start: 00:00:00:00", u"Title count: 1", u"", u"#\tIn\tOut\tDuration", u"",
                    u"1\t00:00:01:00\t00:00:03:00\t00:00:02:00", u"a"}),
            (Loaded{{{1, 1000, 3000, u"a"}}, 7}));
}

TEST(SonyDVDArchitectLineAndDuration, IsRecognizedWithMoreCaptionsThanHeaderLines) {
  const FrameRateScope rate(25);
  Captions captions;
  for (int i = 0; i < 7; ++i) captions.push_back({0, i * 2000.0, i * 2000.0 + 1000, u"a"});
  const std::string seven = written<SonyDVDArchitectLineAndDuration>(captions);
  captions.push_back({0, 14000, 15000, u"b"});
  const std::string eight = written<SonyDVDArchitectLineAndDuration>(captions);
  EXPECT_EQ(recognized(utf8Mark.data() + seven), (Recognized{"", 0}));
  EXPECT_EQ(recognized(utf8Mark.data() + eight), (Recognized{"Sony DVD line/dur", 8}));
  EXPECT_EQ(recognized(seven), (Recognized{"Sony DVD line/dur", 7}));  // without a mark the title is not seen
}

TEST(SonyDVDArchitectLineAndDuration, LosesLinesOfFourDigitsToScenarist) {
  // The duration is the text there.
  EXPECT_EQ(recognized("\xEF\xBB\xBF"
                       "1000\t00:00:01:00\t00:00:03:00\t00:00:02:00\r\n"),
            (Recognized{"Scenarist", 1}));
  EXPECT_EQ(recognized("\xEF\xBB\xBF"
                       "1000\t00:00:01:00\t00:00:03:00\t00:00:02:00\r\na\r\n"),
            (Recognized{"Sony DVD line/dur", 1}));
}

}  // namespace
}  // namespace mova
