#include "formats/line/Json.h"
#include "formats/line/JsonType3.h"
#include "unit/formats/Captions.h"

namespace mova {
namespace {

TEST(JsonType3, HasItsNames) {
  const JsonType3 format;
  EXPECT_EQ(format.Name(), u"JSON Type 3");
  EXPECT_EQ(format.Extension(), u".json");
  EXPECT_TRUE(format.ExtraExtensions().empty());
  EXPECT_FALSE(format.SupportsStyles());
}

TEST(JsonType3, WritesDurationAndStartInMilliseconds) {
  EXPECT_EQ(written<JsonType3>({{1, 1000, 2500, u"Hi"}, {2, 5000, 4000, u"a\r\nb"}}),
            R"([{"duration":1500.000000,"content":"Hi","startOfParagraph":false,"startTime":1000.000000},)"
            R"({"duration":-1000.000000,"content":"a<br />b","startOfParagraph":false,"startTime":5000.000000}])");
  EXPECT_EQ(written<JsonType3>({}), "[]");
}

TEST(JsonType3, ReadsDurationAndStartInMilliseconds) {
  EXPECT_EQ(load<JsonType3>({u"[{\"duration\":1500,\"content\":\"a\",\"startOfParagraph\":false,\"startTime\":1000}]"}),
            (Loaded{{{1, 1000, 2500, u"a"}}, 0}));
}

TEST(JsonType3, WritesTheTimesOfOtherFormatsWithoutRoundingThem) {
  EXPECT_EQ(written<JsonType3>(load<Json>({u"[{\"start\":0.5004,\"end\":1.25,\"text\":\"a\"}]"}).captions),
            R"([{"duration":749.600000,"content":"a","startOfParagraph":false,"startTime":500.400000}])");
}

TEST(JsonType3, IsRecognizedInAFile) {
  EXPECT_EQ(recognized("\n"
                       R"([{"duration":1,"content":"a","startTime":2}])"),
            (Recognized{"JSON Type 3", 1}));
}

}  // namespace
}  // namespace mova
