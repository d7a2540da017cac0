#include <cmath>

#include "formats/line/Csv2.h"
#include "unit/formats/Captions.h"

namespace mova {
namespace {

const std::string header = "Number,Start time (hh:mm:ss:ff),End time (hh:mm:ss:ff),\"Text\"";

class Csv2Test : public testing::Test {
 protected:
  FrameRateScope rate_{25};
};

Loaded loaded(const Lines& lines) {
  return load<Csv2>(lines);
}

/// The start of a record with this time code.
double timeOf(WStringView timeCode) {
  const Loaded one = loaded({u"1," + WString(timeCode) + u",00:00:00:00,a"});
  return one.captions.size() == 1 ? one.captions[0].start : NAN;
}

TEST(Csv2, HasItsNames) {
  const Csv2 format;
  EXPECT_EQ(format.Name(), u"Csv2");
  EXPECT_EQ(format.Extension(), u".csv");
  EXPECT_TRUE(format.ExtraExtensions().empty());
  EXPECT_FALSE(format.SupportsStyles());
}

// --- Writing

TEST_F(Csv2Test, WritesRecords) {
  EXPECT_EQ(written<Csv2>({{1, 1000, 2040, u"Hello"}, {7, 3723120, 360000000, u" a,\"b\"\r\nc "}}),
            header + "\n1,00:00:01:00,00:00:02:01,\"Hello\"\n7,01:02:03:03,100:00:00:00,\"a,\"b\"\nc\"");
  EXPECT_EQ(written<Csv2>({}), header);
}

TEST_F(Csv2Test, RoundsFrames) {
  // A frame is 40 ms: half a frame counts as one.
  EXPECT_EQ(written<Csv2>({{1, 1019, 1020, u"a"}, {2, 999, 979, u"b"}}),
            header + "\n1,00:00:01:00,00:00:01:01,\"a\"\n2,00:00:00:25,00:00:00:24,\"b\"");
}

TEST(Csv2, ReducesFramesFrom30On) {
  const FrameRateScope rate(29.97);
  // 985 ms are 29.52 frames, which is 30, which becomes 29.97 less 0.01, cut.
  EXPECT_EQ(written<Csv2>({{1, 984, 985, u"a"}}), header + "\n1,00:00:00:29,00:00:00:29,\"a\"");
  const FrameRateScope fast(60);
  EXPECT_EQ(written<Csv2>({{1, 480, 500, u"a"}}), header + "\n1,00:00:00:29,00:00:00:59,\"a\"");
}

TEST_F(Csv2Test, WritesTheSignOfANegativeTimeAtEachField) {
  EXPECT_EQ(written<Csv2>({{1, -1500, -3661040, u"a"}}), header + "\n1,00:00:-1:-12,-1:-1:-1:-1,\"a\"");
}

TEST_F(Csv2Test, EndsATextAtAZeroUnitWhenWriting) {
  EXPECT_EQ(written<Csv2>({{1, 0, 0, WString(u"a\0b", 3)}}), header + "\n1,00:00:00:00,00:00:00:00,\"a\"");
}

TEST(Csv2, WritesAndReadsAtAnyFrameRate) {
  const Captions half{{1, 500, 500, u"a"}};
  struct Case {
    double rate;
    const char* frames;
    double milliseconds;  ///< of frame 12
  };
  for (const Case& c : {Case{0, "00", 1}, Case{-25, "-12", -480}, Case{0.001, "00", 999}, Case{1e9, "999999999", 0},
                        Case{NAN, "01", 1}}) {
    const FrameRateScope rate(c.rate);
    EXPECT_EQ(written<Csv2>(half), header + "\n1,00:00:00:" + c.frames + ",00:00:00:" + c.frames + ",\"a\"") << c.rate;
    EXPECT_EQ(timeOf(u"00:00:00:12"), c.milliseconds) << c.rate;
  }
}

// --- Records

TEST_F(Csv2Test, ReadsARecord) {
  EXPECT_EQ(loaded({u"5,00:00:01:00,01:02:03:24,\"Hello\""}), (Loaded{{{1, 1000, 3723960, u"Hello"}}, 0}));
}

TEST_F(Csv2Test, ReadsFrames) {
  EXPECT_EQ(timeOf(u"00:00:01:30"), 1999);  // at most 999 ms
  EXPECT_EQ(timeOf(u"00:00:01:24"), 1960);
  EXPECT_EQ(timeOf(u"99:99:99:99"), 362439999);
  const FrameRateScope rate(29.97);
  EXPECT_EQ(timeOf(u"00:00:01:29"), 1968);  // 967.6 rounded
}

TEST_F(Csv2Test, TakesCommasInATextAndLeavesQuotesWithinIt) {
  EXPECT_EQ(
      loaded({u"1,00:00:00:00,00:00:01:00,a, b,,c", u"2,00:00:00:00,00:00:01:00,\"\"say \"\"hi\"\", x\"\"\"",
              u"3,00:00:00:00,00:00:01:00,", u"4,00:00:00:00,00:00:01:00, \"a\" "})
          .captions,
      (Captions{
          {1, 0, 1000, u"a, b,,c"}, {2, 0, 1000, u"say \"\"hi\"\", x"}, {3, 0, 1000, u""}, {4, 0, 1000, u" \"a\" "}}));
}

TEST_F(Csv2Test, CountsOtherLinesAsErrorsButNotBlankOnes) {
  EXPECT_EQ(loaded({u"Number,Start,End,\"Text\"", u"", u" \t", u"1,00:00:01:00,00:00:02:00,a",
                    u"\"1\",00:00:01:00,00:00:02:00,a", u",00:00:01:00,00:00:02:00,a", u"1,00:00:01.00,00:00:02:00,a",
                    u"1,0:00:01:00,00:00:02:00,a", u"1,00:00:01:00,00:00:02:00", u"-1,00:00:01:00,00:00:02:00,a",
                    u"1,-0:00:01:00,00:00:02:00,a"}),
            (Loaded{{{1, 1000, 2000, u"a"}}, 8}));
}

// --- Texts of several lines

TEST_F(Csv2Test, ReadsATextOfSeveralLines) {
  EXPECT_EQ(loaded({u"1,00:00:00:00,00:00:01:00,\"a", u" b ", u"", u"c\"", u"d"}),
            (Loaded{{{1, 0, 1000, u"a\r\n b\r\nc"}}, 1}));
}

TEST_F(Csv2Test, TrimsATextThatGrows) {
  EXPECT_EQ(loaded({u"1,00:00:00:00,00:00:01:00,\" a", u"b\"", u"c"}), (Loaded{{{1, 0, 1000, u"a\r\nb"}}, 1}));
  EXPECT_EQ(loaded({u"1,00:00:00:00,00:00:01:00,\"  ", u"b\""}).captions, (Captions{{1, 0, 1000, u"b"}}));
  EXPECT_EQ(loaded({u"1,00:00:00:00,00:00:01:00,\"a", u"\"", u"c"}), (Loaded{{{1, 0, 1000, u"a"}}, 1}));
}

TEST_F(Csv2Test, TakesALoneQuoteForAClosedText) {
  EXPECT_EQ(loaded({u"1,00:00:00:00,00:00:01:00,\"", u"b\""}), (Loaded{{{1, 0, 1000, u""}}, 1}));
}

TEST_F(Csv2Test, ForgivesBlanksBehindTheClosingQuoteButKeepsTheQuote) {
  EXPECT_EQ(loaded({u"1,00:00:00:00,00:00:01:00,\"a", u"b\" ", u"c"}), (Loaded{{{1, 0, 1000, u"a\r\nb\""}}, 1}));
}

TEST_F(Csv2Test, DropsFurtherLinesOfATextAfter300Units) {
  const WString units299(299, u'a');
  const WString units300(300, u'a');
  EXPECT_EQ(loaded({u"1,00:00:00:00,00:00:01:00,\"" + units299, u"b", u"c\"", u"d"}),
            (Loaded{{{1, 0, 1000, units299 + u"\r\nb"}}, 1}));
  EXPECT_EQ(loaded({u"1,00:00:00:00,00:00:01:00,\"" + units300, u"b", u"c\"", u"d"}),
            (Loaded{{{1, 0, 1000, units300}}, 1}));
}

// --- Recognising

TEST_F(Csv2Test, RecognizesMoreRecordsThanOtherLines) {
  EXPECT_TRUE(recognizes<Csv2>({u"1,00:00:01:00,00:00:02:00,a"}));
  EXPECT_FALSE(recognizes<Csv2>({u"Number,x", u"1,00:00:01:00,00:00:02:00,a"}));
  EXPECT_TRUE(recognizes<Csv2>({u"1,00:00:01:00,00:00:02:00,\"a\"", u"", u"b"}));
  EXPECT_FALSE(recognizes<Csv2>({u"1,00:00:01:00,00:00:02:00,a", u"b"}));
  EXPECT_FALSE(recognizes<Csv2>({}));
}

TEST_F(Csv2Test, IsRecognizedInAFile) {
  EXPECT_EQ(recognized("Number,x\n1,00:00:01:00,00:00:02:00,a\n2,00:00:03:00,00:00:04:00,b\n"),
            (Recognized{"Csv2", 2}));
}

TEST_F(Csv2Test, StandsBetweenTheOtherCsvForms) {
  // A line behind a quoted text is forgiven, so the next form would take these files too.
  EXPECT_EQ(recognized("\n1,00:00:01:00,00:00:02:00,\"a\"\n00:00:01:00,00:00:02:00,\"b\",\"\"\n"
                       "2,00:00:01:00,00:00:02:00,\"c\"\n00:00:03:00,00:00:04:00,\"d\",\"\"\n"),
            (Recognized{"Csv2", 2}));
  EXPECT_EQ(recognized("\n1,00:00:01:00,00:00:02:00,\"a\"\n1;1;2;\"b\"\n2,00:00:01:00,00:00:02:00,\"c\"\n"),
            (Recognized{"Csv2", 2}));
}

// --- Hostile input

TEST_F(Csv2Test, ReadsAnOpenTextOverManyLines) {
  WString units = u"1,00:00:01:00,00:00:02:00,\"a";
  std::vector<size_t> ends{units.size()};
  for (size_t i = 0; i < 1000000; ++i) ends.push_back((units += u"0123456789").size());
  const Loaded open = loaded(Lines(units, ends));
  EXPECT_EQ(open.errors, 0);
  ASSERT_EQ(open.captions.size(), 1u);
  EXPECT_EQ(open.captions[0].text.size(), 301u);
}

TEST_F(Csv2Test, ReadsLongNumbersAndLines) {
  const WString number(1000000, u'9');
  EXPECT_EQ(loaded({number + u",00:00:01:00,00:00:02:00,a", number, number + u","}),
            (Loaded{{{1, 1000, 2000, u"a"}}, 2}));
}

}  // namespace
}  // namespace mova
