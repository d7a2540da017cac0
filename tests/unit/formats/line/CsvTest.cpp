#include <cmath>

#include "formats/line/Csv.h"
#include "unit/formats/Captions.h"

namespace mova {
namespace {

const std::string header = "Number;Start time in milliseconds;End time in milliseconds;\"Text\"";

Loaded loaded(const Lines& lines) {
  return load<Csv>(lines);
}

TEST(Csv, HasItsNames) {
  const Csv format;
  EXPECT_EQ(format.Name(), u"Csv");
  EXPECT_EQ(format.Extension(), u".csv");
  EXPECT_TRUE(format.ExtraExtensions().empty());
  EXPECT_FALSE(format.SupportsStyles());
}

// --- Writing

TEST(Csv, WritesRecords) {
  EXPECT_EQ(written<Csv>({{1, 1000, 2000, u"Hello"}, {7, 3000, 4000, u"a;\"b\""}}),
            header + "\n1;1000;2000;\"Hello\"\n7;3000;4000;\"a;\"b\"\"");
  EXPECT_EQ(written<Csv>({}), header);
}

TEST(Csv, WritesABareLineFeedWithinAText) {
  EXPECT_EQ(written<Csv>({{1, 1, 2, u" a\r\nb\rc\nd \r\n"}}), header + "\n1;1;2;\"a\nb\rc\nd\"");
}

TEST(Csv, RoundsTimesToTheEvenNeighbour) {
  EXPECT_EQ(written<Csv>({{1, 0.5, 1.5, u"a"}, {2, 2.5, 3.49, u"b"}, {3, -0.4, -1.5, u"c"}}),
            header + "\n1;0;2;\"a\"\n2;2;3;\"b\"\n3;-0;-2;\"c\"");
}

TEST(Csv, WritesTimesBeyondAllRanges) {
  EXPECT_EQ(written<Csv>({{1, HUGE_VAL, 1e22, u"a"}}), header + "\n1;inf;10000000000000000000000;\"a\"");
}

TEST(Csv, EndsATextAtAZeroUnitWhenWriting) {
  EXPECT_EQ(written<Csv>({{1, 0, 1, WString(u"a\0b", 3)}, {2, 1, 2, u"c"}}), header + "\n1;0;1;\"a\"\n2;1;2;\"c\"");
}

// --- Records

TEST(Csv, ReadsARecord) {
  EXPECT_EQ(loaded({u"1;1000;2000;\"Hello\""}), (Loaded{{{1, 1000, 2000, u"Hello"}}, 0}));
  EXPECT_EQ(loaded({u"9;1000;2000;Hello"}), (Loaded{{{1, 1000, 2000, u"Hello"}}, 0}));
}

TEST(Csv, ReadsNumbersInQuotes) {
  EXPECT_EQ(loaded({u"\"1\";\"1000\";\"2000\";\"Hello\"", u"\"1;1000\";\"2000;x"}),
            (Loaded{{{1, 1000, 2000, u"Hello"}, {2, 1000, 2000, u"x"}}, 0}));
}

TEST(Csv, CountsOtherLinesAsErrorsBlankOnesToo) {
  EXPECT_EQ(loaded({u"Number;Start;End;\"Text\"", u"", u" ", u"1;1000;2000;Hello", u"1;-1000;2000;a", u";1;2;a",
                    u"1;2;a", u" 1;2;3;a", u"1 ;2;3;a", u"\"\";1;2;a", u"1;1.5;2;a", u"1,1000,2000,a"}),
            (Loaded{{{1, 1000, 2000, u"Hello"}}, 11}));
}

TEST(Csv, PassesOverARecordWithoutExactlyFourFields) {
  EXPECT_EQ(loaded({u"1;1000;2000;Hello;there", u"1;1000;2000;", u"1;1000;2000;;;a;"}),
            (Loaded{{{1, 1000, 2000, u"a"}}, 0}));
}

TEST(Csv, StopsAtTheLimitsOf32Bits) {
  EXPECT_EQ(loaded({u"1;99999999999;2147483648;a"}).captions, (Captions{{1, 2147483647, 2147483647, u"a"}}));
}

TEST(Csv, KeepsUnsortedTimes) {
  EXPECT_EQ(loaded({u"2;3000;1000;a", u"1;500;0;b"}).captions, (Captions{{1, 3000, 1000, u"a"}, {2, 500, 0, u"b"}}));
}

TEST(Csv, TakesTheQuotesOffATextAndHalvesThoseWithinIt) {
  EXPECT_EQ(
      loaded({u"1;1;2;\"say \"\"hi\"\" now\"", u"1;1;2;\"", u"1;1;2;\"\"", u"1;1;2;a\"", u"1;1;2;\"\"\"\""}).captions,
      (Captions{{1, 1, 2, u"say \"hi\" now"}, {2, 1, 2, u""}, {3, 1, 2, u""}, {4, 1, 2, u"a"}, {5, 1, 2, u"\""}}));
}

// --- Texts of several lines

TEST(Csv, ReadsATextOfSeveralLines) {
  EXPECT_EQ(loaded({u"1;1000;2000;\"a", u" b ", u"", u"c\"", u"2;3000;4000;d"}),
            (Loaded{{{1, 1000, 2000, u"a\r\nb\r\n\r\nc"}, {2, 3000, 4000, u"d"}}, 0}));
}

TEST(Csv, ReadsBackWhatItWrites) {
  const Captions captions{{1, 1000, 2000, u"a\r\nb"}, {2, 3000, 4000, u"c"}};
  EXPECT_EQ(loaded({u"1;1000;2000;\"a", u"b\"", u"2;3000;4000;\"c\""}), (Loaded{captions, 0}));
  EXPECT_EQ(written<Csv>(captions), header + "\n1;1000;2000;\"a\nb\"\n2;3000;4000;\"c\"");
}

TEST(Csv, ForgivesBlanksBehindTheClosingQuoteButKeepsTheQuote) {
  EXPECT_EQ(loaded({u"1;1;2;\"a", u"b\" \t", u"c"}), (Loaded{{{1, 1, 2, u"a\r\nb\""}}, 1}));
}

TEST(Csv, GoesOnReadingATextBehindARecordThatIsPassedOver) {
  EXPECT_EQ(loaded({u"1;1;2;\"a", u"2;1;2;b;c", u"d\""}), (Loaded{{{1, 1, 2, u"a\r\nd"}}, 0}));
}

TEST(Csv, EndsAnOpenTextAtTheNextRecord) {
  EXPECT_EQ(loaded({u"1;1;2;\"a", u"2;3;4;b", u"c\""}), (Loaded{{{1, 1, 2, u"a"}, {2, 3, 4, u"b"}}, 1}));
}

TEST(Csv, DropsFurtherLinesOfATextAfter300Units) {
  const WString units299(299, u'a');
  const WString units300(300, u'a');
  EXPECT_EQ(loaded({u"1;1;2;\"" + units299, u"b", u"c", u"d\"", u"2;3;4;e"}),
            (Loaded{{{1, 1, 2, units299 + u"\r\nb"}, {2, 3, 4, u"e"}}, 0}));
  EXPECT_EQ(loaded({u"1;1;2;\"" + units300, u"b", u"c\"", u"2;3;4;e"}),
            (Loaded{{{1, 1, 2, units300}, {2, 3, 4, u"e"}}, 0}));
}

// --- Recognising

TEST(Csv, RecognizesMoreRecordsThanOtherLines) {
  EXPECT_TRUE(recognizes<Csv>({u"1;1;2;a"}));
  EXPECT_FALSE(recognizes<Csv>({u"Number;x", u"1;1;2;a"}));
  EXPECT_TRUE(recognizes<Csv>({u"Number;x", u"", u" ", u"1;1;2;a", u"2;1;2;b"}));
  EXPECT_FALSE(recognizes<Csv>({}));
  EXPECT_FALSE(recognizes<Csv>({u"", u""}));
}

TEST(Csv, CountsRecordsThatAreNotRead) {
  EXPECT_TRUE(recognizes<Csv>({u"1;1;2;a;b"}));
  EXPECT_EQ(loaded({u"1;1;2;a;b"}), (Loaded{{}, 0}));
}

TEST(Csv, ForgivesOneLineBehindAQuotedText) {
  EXPECT_TRUE(recognizes<Csv>({u"1;1;2;\"a", u"b"}));
  EXPECT_TRUE(recognizes<Csv>({u"1;1;2;\"a\"", u"", u"b"}));  // closed or not
  EXPECT_FALSE(recognizes<Csv>({u"1;1;2;\"a", u"b", u"c"}));
  EXPECT_FALSE(recognizes<Csv>({u"1;1;2;a", u"b"}));
}

TEST(Csv, IsRecognizedInAFile) {
  EXPECT_EQ(recognized("Number;Start;End;Text\n1;1;2;a\n2;1;2;b\n"), (Recognized{"Csv", 2}));
  EXPECT_EQ(recognized(std::string(utf8Mark) + "Number;Start;End;Text\n1;1;2;a\n2;1;2;b\n"), (Recognized{"Csv", 2}));
  EXPECT_EQ(recognized(std::string(utf8Mark) + "Number;Start;End;Text\n1;1;2;a\n"), (Recognized{"", 0}));
}

TEST(Csv, StandsBeforeTheOtherCsvForms) {
  // A line behind a quoted text is forgiven, so each of the forms would take this file.
  const std::string mixed = "1;1;2;\"a\"\n1,00:00:01:00,00:00:02:00,\"b\"\n00:00:01:00,00:00:02:00,\"c\"\n";
  EXPECT_EQ(recognized(std::string(utf8Mark) + mixed), (Recognized{"", 0}));
  EXPECT_EQ(recognized(std::string(utf8Mark) + "1;1;2;\"a\"\n1,00:00:01:00,00:00:02:00,\"b\"\n2;3;4;\"c\"\n"
                                               "2,00:00:03:00,00:00:04:00,\"d\"\n"),
            (Recognized{"Csv", 2}));
}

// --- Hostile input

TEST(Csv, ReadsAnOpenTextOverManyLines) {
  WString units = u"1;1;2;\"a";
  std::vector<size_t> ends{units.size()};
  for (size_t i = 0; i < 1000000; ++i) ends.push_back((units += u"0123456789").size());
  const Lines lines(units, ends);
  EXPECT_FALSE(recognizes<Csv>(lines));
  const Loaded open = loaded(lines);
  EXPECT_EQ(open.errors, 0);
  ASSERT_EQ(open.captions.size(), 1u);
  EXPECT_EQ(open.captions[0].text.size(), 301u);  // 1 and 25 lines of 12 reach 300
}

TEST(Csv, ReadsSeparatorsAndQuotesInEveryPosition) {
  const WString record = u"1;1000;2000;\"a\"";
  for (size_t i = 0; i <= record.size(); ++i) {
    for (const WStringView inserted : {u";", u"\"", u"\"\"", u";;", u"\";\""}) {
      const Loaded one = loaded({WString(record).insert(i, inserted)});
      EXPECT_LE(one.captions.size() + one.errors, 1u);
    }
  }
  EXPECT_EQ(loaded({WString(1000000, u'"'), WString(1000000, u';'), WString(1000000, u'1')}), (Loaded{{}, 3}));
}

}  // namespace
}  // namespace mova
