#include "formats/line/JsonRecords.h"
#include "unit/formats/Captions.h"

namespace mova {
namespace {

/// UTF-8, so that a failed comparison can be read.
std::string tag(WStringView record, WStringView key) {
  return wideToString(readJsonTag(record, key));
}

/// The value of a record's only key.
std::string textOf(WStringView json) {
  return tag(WString(u"{\"text\":").append(json).append(u"}"), u"text");
}

std::string decoded(WStringView value) {
  return wideToString(jsonDecodeText(value));
}

// --- Keys

TEST(JsonRecords, FindsAKeyInDoubleQuotesElseInSingleOnes) {
  EXPECT_EQ(tag(u"{\"a\":1,\"b\":2}", u"b"), "2");
  EXPECT_EQ(tag(u"{'a':1,'b':2}", u"a"), "1");
  EXPECT_EQ(tag(u"{'a':1,\"a\":2}", u"a"), "2");
  EXPECT_EQ(tag(u"{a:1}", u"a"), "");
  EXPECT_EQ(tag(u"{\"ab\":1}", u"a"), "");
  EXPECT_EQ(tag(u"", u"a"), "");
}

TEST(JsonRecords, TakesTheFirstPlaceOfAKeyEvenIfItIsAValue) {
  EXPECT_EQ(tag(u"{\"kind\":\"text\",\"text\":\"x\"}", u"text"), "text\":\"x");
}

TEST(JsonRecords, PassesOverTheUnitBehindAKeyAndThenColons) {
  EXPECT_EQ(tag(u"{\"a\":1}", u"a"), "1");
  EXPECT_EQ(tag(u"{\"a\" \t: 1}", u"a"), "1");
  EXPECT_EQ(tag(u"{\"a\"=1}", u"a"), "1");
  EXPECT_EQ(tag(u"{\"a\"12}", u"a"), "2");
  EXPECT_EQ(tag(u"{\"a\"::: 1}", u"a"), "1");
  EXPECT_EQ(tag(u"{\"a\"}", u"a"), "");
  EXPECT_EQ(tag(u"\"a\"", u"a"), "");
}

// --- Values without quotes

TEST(JsonRecords, EndsANumberAtACommaElseAtABrace) {
  EXPECT_EQ(tag(u"{\"a\":1.5}", u"a"), "1.5");
  EXPECT_EQ(tag(u"{\"a\":1 ,\"b\":2}", u"a"), "1 ");
  EXPECT_EQ(tag(u"{\"a\":1},\"b\":2}", u"a"), "1}");
  EXPECT_EQ(tag(u"{\"a\":1", u"a"), "");
}

// --- Values in quotes

TEST(JsonRecords, EndsATextAtAQuoteBeforeABraceOrComma) {
  EXPECT_EQ(textOf(u"\"Hi\""), "Hi");
  EXPECT_EQ(textOf(u"\"Hi\",\"x\":1"), "Hi");
  EXPECT_EQ(textOf(u"\"a \"b\" c\""), "a \"b\" c");
  EXPECT_EQ(textOf(u"\"a} , {b\""), "a} , {b");
  EXPECT_EQ(textOf(u"\"Hi\" "), "");
  EXPECT_EQ(textOf(u"\"Hi"), "");
  EXPECT_EQ(tag(u"\"text\":\"", u"text"), "");
}

TEST(JsonRecords, DoesNotEndATextAtAnEscapedQuote) {
  EXPECT_EQ(textOf(u"\"a\\\",b\""), "a\",b");
  EXPECT_EQ(textOf(u"\"a\\\"}b\""), "a\"}b");
  EXPECT_EQ(textOf(u"\"a\\\"\""), "a\"");
  EXPECT_EQ(textOf(u"\"a\",b\""), "a");
  // A backslash that is escaped itself hides the quote all the same.
  EXPECT_EQ(textOf(u"\"a\\\\\",\"x\":\"y\""), "a\\\",\"x\":\"y");
}

TEST(JsonRecords, GivesNothingForAnEmptyText) {
  EXPECT_EQ(textOf(u"\"\""), "");
  EXPECT_EQ(textOf(u"\"\",\"x\":\"y\""), "");
}

TEST(JsonRecords, LooksOnlyAtTheFirstQuoteWithACommaAndNotAtTheStart) {
  EXPECT_EQ(textOf(u"\", and then\""), ", and then");
  EXPECT_EQ(textOf(u"\", and then\",\"x\":\"y\""), ", and then\",\"x\":\"y");
  EXPECT_EQ(textOf(u"\", and then\",\"x\":1"), "");
}

TEST(JsonRecords, FindsNothingBetweenAnOpeningQuoteAndABrace) {
  EXPECT_EQ(textOf(u"\"} x\""), "");
}

TEST(JsonRecords, TurnsItsStandInIntoAQuote) {
  EXPECT_EQ(textOf(u"\"a@__1b\""), "a\"b");
  EXPECT_EQ(textOf(u"\"a@__\\\"b\""), "a@__\"b");
}

TEST(JsonRecords, KeepsOtherEscapes) {
  EXPECT_EQ(textOf(u"\"a\\nb\\/c\\\\d\""), "a\\nb\\/c\\\\d");
}

// --- Unicode escapes

TEST(JsonRecords, TurnsUnicodeEscapesIntoDecimalDigits) {
  EXPECT_EQ(textOf(u"\"caf\\u00e9\""), "caf233");
  EXPECT_EQ(textOf(u"\"\\u0021\\u00c7\\u0022\""), "3319934");
}

TEST(JsonRecords, KeepsEscapesOfOtherNumbers) {
  EXPECT_EQ(textOf(u"\"\\u0020\\u00c8\\u00e8\\u00ea\\u2019\""), "\\u0020\\u00c8\\u00e8\\u00ea\\u2019");
  EXPECT_EQ(textOf(u"\"\\u00E9\\u00C7\\u00\\u004\""), "\\u00E9\\u00C7\\u00\\u004");
}

TEST(JsonRecords, TakesAnEscapedQuoteForDigitsAndNotForTheEnd) {
  EXPECT_EQ(textOf(u"\"a\\u0022,b\""), "a34,b");
}

TEST(JsonRecords, ReplacesEscapesNumberByNumber) {
  // 65 goes first and completes the number 0x65, which is 101.
  EXPECT_EQ(textOf(u"\"\\u00\\u0041\""), "101");
  // 65 completes 0x26, which is 38 and has had its turn.
  EXPECT_EQ(textOf(u"\"\\u002\\u0041\""), "\\u00265");
  EXPECT_EQ(textOf(u"\"\\u00\\u00\\u0021\""), "81");
  EXPECT_EQ(textOf(u"\"\\u00\\u00e9\""), "\\u00233");
  EXPECT_EQ(textOf(u"\"x\\u0041\\u00\\u0041\\u00e9\""), "x65101233");
}

// --- Texts

TEST(JsonRecords, DecodesBreaks) {
  EXPECT_EQ(decoded(u"a<br />b<br>c<br/>d\\ne"), "a\r\nb\r\nc\r\nd\r\ne");
  EXPECT_EQ(decoded(u"a<BR />b<br  />c"), "a<BR />b<br  />c");
}

TEST(JsonRecords, DropsTheBackslashOfAnEscape) {
  EXPECT_EQ(decoded(u"a\\\\b"), "a\\b");
  EXPECT_EQ(decoded(u"\\/\\t\\u2019"), "/tu2019");
  EXPECT_EQ(decoded(u"\\\\\\\\"), "\\\\");
  EXPECT_EQ(decoded(u"a\\"), "a");
  // Breaks are found first.
  EXPECT_EQ(decoded(u"a\\\\nb"), "a\r\nb");
}

TEST(JsonRecords, EncodesQuotesBackslashesAndLineEnds) {
  EXPECT_EQ(wideToString(jsonEscapeText(u"a\"b\\c\r\nd\ne\rf\r\r\ng")), "a\\\"b\\\\c<br />d<br />e\rf\r<br />g");
  EXPECT_EQ(wideToString(jsonEscapeText(u"caf\u00E9/\t")), "caf\xC3\xA9/\t");
  EXPECT_EQ(wideToString(jsonEscapeText(u"")), "");
}

TEST(JsonRecords, ReadBackWhatIsWritten) {
  const WString text = u"a \"b\" \\c\\\\ d\r\ne";
  const WString json = u"{\"text\":\"" + jsonEscapeText(text) + u"\"}";
  EXPECT_EQ(jsonDecodeText(readJsonTag(json, u"text")), text);
}

// --- Files

constexpr JsonLayout layout = {
    .FileStart = u"[{\"s", .StartKey = u"s", .EndKey = u"e", .TextKey = u"t", .MillisecondsPerUnit = 10};

Loaded loaded(const Lines& lines) {
  Subtitle subtitle;
  const int32_t errors = loadJsonRecords(subtitle, lines, layout);
  return {captionsOf(subtitle), errors};
}

TEST(JsonRecords, ReadsRecordsAndNumbersThem) {
  EXPECT_EQ(loaded({u"[{\"s\":1,\"e\":2,\"t\":\"a\"},{\"s\":3.5,\"e\":4,\"t\":\"b\"}]"}),
            (Loaded{{{1, 10, 20, u"a"}, {2, 35, 40, u"b"}}, 0}));
}

TEST(JsonRecords, ReadsDurations) {
  JsonLayout durations = layout;
  durations.EndIsDuration = true;
  Subtitle subtitle;
  EXPECT_EQ(loadJsonRecords(subtitle, {u"[{\"s\":1,\"e\":2,\"t\":\"a\"}]"}, durations), 0);
  EXPECT_EQ(captionsOf(subtitle), (Captions{{1, 10, 30, u"a"}}));
}

TEST(JsonRecords, KeepsTheCaptionsThatAreThere) {
  Subtitle subtitle = subtitleOf({{7, 1, 2, u"a"}});
  loadJsonRecords(subtitle, {u"[{\"s\":1,\"e\":2,\"t\":\"b\"}]"}, layout);
  EXPECT_EQ(captionsOf(subtitle), (Captions{{1, 1, 2, u"a"}, {2, 10, 20, u"b"}}));
}

TEST(JsonRecords, JoinsLinesWithNothingBetweenThem) {
  EXPECT_EQ(
      loaded({u"[", u"{\"s\":1,", u"\"e\":2,\"t\":\"one ", u"text\"", u"}", u",", u"{\"s\":3,\"e\":4,\"t\":\"b\"}]"}),
      (Loaded{{{1, 10, 20, u"one text"}, {2, 30, 40, u"b"}}, 0}));
}

TEST(JsonRecords, CutsAMarkAndWhiteSpaceInFront) {
  const Loaded one{{{1, 10, 20, u"a"}}, 0};
  EXPECT_EQ(loaded({u"\u00EF\u00BB\u00BF \t[{\"s\":1,\"e\":2,\"t\":\"a\"}]"}), one);
  EXPECT_EQ(loaded({u"\u00FF\u00FE[{\"s\":1,\"e\":2,\"t\":\"a\"}]"}), one);
  EXPECT_EQ(loaded({u"", u"\u00EF", u"\u00BB\u00BF", u"", u" [{\"s\":1,\"e\":2,\"t\":\"a\"}]"}), one);
  EXPECT_EQ(loaded({u" ", u"\t[{\"s\":1,\"e\":2,\"t\":\"a\"}]"}), one);
  EXPECT_EQ(loaded({u" \u00EF\u00BB\u00BF[{\"s\":1,\"e\":2,\"t\":\"a\"}]"}), (Loaded{{}, 0}));
}

TEST(JsonRecords, NeedTheStartOfTheFile) {
  for (WStringView line : {u"{\"s\":1,\"e\":2,\"t\":\"a\"}", u"[ {\"s\":1,\"e\":2,\"t\":\"a\"}]",
                           u"[{ \"s\":1,\"e\":2,\"t\":\"a\"}]", u"[{\"e\":2,\"s\":1,\"t\":\"a\"}]", u"[", u" ", u""}) {
    EXPECT_EQ(loaded({line}), (Loaded{{}, 0})) << wideToString(line);
  }
  EXPECT_EQ(loaded({}), (Loaded{{}, 0}));
}

TEST(JsonRecords, TakeKeysInAnyOrder) {
  EXPECT_EQ(loaded({u"[{\"s\":1,\"t\":\"a\",\"e\":2},{\"t\":\"b\",\"e\":4,\"s\":3}]"}).captions,
            (Captions{{1, 10, 20, u"a"}, {2, 30, 40, u"b"}}));
}

TEST(JsonRecords, AreCutAtBracesWithACommaOnly) {
  EXPECT_EQ(loaded({u"[{\"s\":1,\"e\":2,\"t\":\"a\"}, {\"s\":3,\"e\":4,\"t\":\"b\"}]"}),
            (Loaded{{{1, 10, 20, u"a"}}, 0}));
  EXPECT_EQ(loaded({u"[{\"s\":1,\"e\":2,\"t\":\"a\"},", u" {\"s\":3,\"e\":4,\"t\":\"b\"}]"}).captions.size(), 1u);
}

TEST(JsonRecords, AreCutAtLineEndsToo) {
  EXPECT_EQ(loaded({u"[{\"s\":1,\"e\":2,\"t\":\"a\"}\r\n\r\n{\"s\":3,\"e\":4,\"t\":\"b\"}]"}).captions.size(), 2u);
  EXPECT_EQ(loaded({u"[{\"s\":1,\"e\":2,\r\"t\":\"a\"}]"}), (Loaded{{}, 2}));
}

TEST(JsonRecords, AreTrimmedBeforeTheyAreClosed) {
  EXPECT_EQ(loaded({u"[{\"s\":1,\"e\":2,\"t\":\"a\" },{\"s\":3,\"e\":4,\"t\":\"b\"}]"}).captions,
            (Captions{{1, 10, 20, u"a"}, {2, 30, 40, u"b"}}));
}

TEST(JsonRecords, CountRecordsThatLackAValue) {
  EXPECT_EQ(
      loaded({u"[{\"s\":1,\"e\":2},{\"s\":1,\"t\":\"a\"},{\"e\":2,\"t\":\"a\"},{},{\"s\":1,\"e\":2,\"t\":\"\"}]"}),
      (Loaded{{}, 4}));  // Nothing at all between two cuts is no record.
}

TEST(JsonRecords, CountRecordsWhoseTimesAreMoreThanDigitsAndPoints) {
  EXPECT_EQ(loaded({u"[{\"s\":-1,\"e\":2,\"t\":\"a\"},{\"s\":1e3,\"e\":2,\"t\":\"a\"},{\"s\":1,\"e\":2 ,\"t\":\"a\"},"
                    u"{\"s\":+1,\"e\":2,\"t\":\"a\"},{\"s\":null,\"e\":2,\"t\":\"a\"}]"}),
            (Loaded{{}, 5}));
  EXPECT_EQ(loaded({u"[{\"s\":.,\"e\":1.2.3,\"t\":\"a\"},{\"s\":\"1\",\"e\":\"2\",\"t\":\"a\"}]"}),
            (Loaded{{{1, 0, 12, u"a"}, {2, 10, 20, u"a"}}, 0}));
}

TEST(JsonRecords, KeepCaptionsWhoseTextIsAnEscapeOnly) {
  EXPECT_EQ(loaded({u"[{\"s\":1,\"e\":2,\"t\":\"\\\"}]"}), (Loaded{{}, 1}));
  EXPECT_EQ(loaded({u"[{\"s\":1,\"t\":\"<br>\",\"e\":2}]"}).captions, (Captions{{1, 10, 20, u"\r\n"}}));
}

TEST(JsonRecords, TakeNumbersBeyondAllRanges) {
  const Loaded huge = loaded(
      {WString(u"[{\"s\":").append(1000, u'9').append(u",\"e\":0.").append(1000, u'0').append(u"1,\"t\":\"a\"}]")});
  ASSERT_EQ(huge.captions.size(), 1u);
  EXPECT_GT(huge.captions[0].start, 1e308);
  EXPECT_EQ(huge.captions[0].end, 0);
}

// --- Hostile input

WString repeated(WStringView text, size_t count) {
  WString result;
  result.reserve(text.size() * count);
  for (size_t i = 0; i < count; ++i) result += text;
  return result;
}

TEST(JsonRecords, ReadAMillionEmptyRecords) {
  constexpr size_t count = 1000000;
  EXPECT_EQ(loaded({u"[{\"s\":1" + repeated(u"},{", count)}), (Loaded{{}, 1}));
  EXPECT_EQ(loaded({u"[{\"s\":1" + repeated(u"},{ ", 100000)}), (Loaded{{}, 100001}));
}

TEST(JsonRecords, ReadAnUnclosedTextOfManyQuotes) {
  EXPECT_EQ(loaded({u"[{\"s\":1,\"e\":2,\"t\":\"" + repeated(u"a\\\"", 500000)}), (Loaded{{}, 1}));
  EXPECT_EQ(loaded({u"[{\"s\":1,\"e\":2,\"t\":\"" + repeated(u"\"", 2000000)}).errors, 0);
}

TEST(JsonRecords, ReadAFileOfWhiteSpace) {
  const WString units(1000000, u' ');
  std::vector<size_t> ends;
  for (size_t i = 1; i <= units.size(); ++i) ends.push_back(i);
  EXPECT_EQ(loaded(Lines(units, ends)), (Loaded{{}, 0}));
}

TEST(JsonRecords, ReadManyUnicodeEscapes) {
  const Loaded plain = loaded({u"[{\"s\":1,\"e\":2,\"t\":\"" + repeated(u"\\u0041", 100000) + u"\"}]"});
  ASSERT_EQ(plain.captions.size(), 1u);
  EXPECT_EQ(plain.captions[0].text.size(), 200000u);
  const Loaded nested = loaded({u"[{\"s\":1,\"e\":2,\"t\":\"" + repeated(u"\\u00\\u0041", 10000) + u"\"}]"});
  ASSERT_EQ(nested.captions.size(), 1u);
  EXPECT_EQ(nested.captions[0].text.size(), 30000u);
}

}  // namespace
}  // namespace mova
