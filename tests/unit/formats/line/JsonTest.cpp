#include <cmath>

#include "formats/line/Json.h"
#include "unit/formats/Captions.h"

namespace mova {
namespace {

TEST(Json, HasItsNames) {
  const Json format;
  EXPECT_EQ(format.Name(), u"JSON");
  EXPECT_EQ(format.Extension(), u".json");
  EXPECT_TRUE(format.ExtraExtensions().empty());
  EXPECT_FALSE(format.SupportsStyles());
}

TEST(Json, WritesSecondsWithSixDecimals) {
  EXPECT_EQ(written<Json>({{1, 1000, 2500, u"Hi"}}), R"([{"start":1.000000,"end":2.500000,"text":"Hi"}])");
  EXPECT_EQ(written<Json>({{1, 0.0004, 1234567.8, u"a\r\nb"}, {2, -1500, 0, u"\"\\"}}),
            R"([{"start":0.000000,"end":1234.567800,"text":"a<br />b"},)"
            R"({"start":-1.500000,"end":0.000000,"text":"\"\\"}])");
}

TEST(Json, WritesAnEmptyArrayForAnEmptySubtitle) {
  EXPECT_EQ(written<Json>({}), "[]");
}

TEST(Json, WritesTimesBeyondAllRanges) {
  EXPECT_EQ(written<Json>({{1, HUGE_VAL, 1e20, u"a"}}),
            R"([{"start":inf,"end":100000000000000000.000000,"text":"a"}])");
}

TEST(Json, KeepsAZeroUnit) {
  EXPECT_EQ(written<Json>({{1, 0, 0, WString(u"a\0b", 3)}}),
            R"([{"start":0.000000,"end":0.000000,"text":"a)" + std::string(1, '\0') + R"(b"}])");
}

TEST(Json, ReadsSeconds) {
  EXPECT_EQ(load<Json>({u"[{\"start\":1,\"end\":2,\"text\":\"a\"},{\"start\":2.5,\"end\":3.25,\"text\":\"b\\\",c\"}]"}),
            (Loaded{{{1, 1000, 2000, u"a"}, {2, 2500, 3250, u"b\",c"}}, 0}));
}

TEST(Json, ReadsKeysInAnyOrderBehindTheFirst) {
  EXPECT_EQ(load<Json>({u"[{\"start\":1,\"text\":\"a\",\"end\":2},{\"text\":\"b\",\"end\":4,\"start\":3}]"}).captions,
            (Captions{{1, 1000, 2000, u"a"}, {2, 3000, 4000, u"b"}}));
  EXPECT_EQ(load<Json>({u"[{\"end\":2,\"start\":1,\"text\":\"a\"}]"}), (Loaded{{}, 0}));
}

TEST(Json, CountsACaptionWithoutTextAsAnError) {
  EXPECT_EQ(load<Json>({u"[{\"start\":1,\"end\":2,\"text\":\"\"},{\"start\":3,\"end\":4,\"text\":\"a\"}]"}),
            (Loaded{{{1, 3000, 4000, u"a"}}, 1}));
}

TEST(Json, ReadsOnlyTheFirstValuesOfSpacedRecords) {
  EXPECT_EQ(
      load<Json>({u"[{\"start\":1,\"end\":2,\"text\":\"a\"},", u" {\"start\":3,\"end\":4,\"text\":\"b\"}]"}).captions,
      (Captions{{1, 1000, 2000, u"a"}}));
}

TEST(Json, RecognizesMoreCaptionsThanErrors) {
  EXPECT_TRUE(recognizes<Json>({u"[{\"start\":1,\"end\":2,\"text\":\"a\"}]"}));
  EXPECT_FALSE(recognizes<Json>({u"[{\"start\":1,\"end\":2,\"text\":\"a\"},{\"start\":-1,\"end\":2,\"text\":\"a\"}]"}));
  EXPECT_FALSE(recognizes<Json>({u"[]"}));
  EXPECT_FALSE(recognizes<Json>({}));
}

TEST(Json, IsRecognizedInAFileWhoseFirstLineIsNotNeeded) {
  const std::string json = R"([{"start":1,"end":2,"text":"a"}])";
  EXPECT_EQ(recognized(std::string(utf8Mark) + json), (Recognized{"JSON", 1}));
  EXPECT_EQ(recognized("\n" + json), (Recognized{"JSON", 1}));
  // The first line of a file without a mark is lost, and with it the array or its opening.
  EXPECT_EQ(recognized(json), (Recognized{"", 0}));
  EXPECT_EQ(recognized("[\n{\"start\":1,\"end\":2,\"text\":\"a\"}]"), (Recognized{"", 0}));
  EXPECT_EQ(recognized(std::string(utf8Mark) + "[\n{\"start\":1,\"end\":2,\"text\":\"a\"}]"), (Recognized{"JSON", 1}));
}

TEST(Json, LeavesRecordsInMillisecondsToTheSecondKind) {
  // A file of the second kind begins as one of this does.
  EXPECT_EQ(recognized(std::string(utf8Mark) + R"([{"startMillis":1000,"endMillis":2000,"text":"a"}])"),
            (Recognized{"JSON Type 2", 1}));
  EXPECT_EQ(
      recognized(std::string(utf8Mark) + R"([{"startMillis":1000,"endMillis":2000,"start":1,"end":2,"text":"a"}])"),
      (Recognized{"JSON", 1}));
}

}  // namespace
}  // namespace mova
