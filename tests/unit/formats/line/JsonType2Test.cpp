#include "formats/line/JsonType2.h"
#include "unit/formats/Captions.h"

namespace mova {
namespace {

TEST(JsonType2, HasItsNames) {
  const JsonType2 format;
  EXPECT_EQ(format.Name(), u"JSON Type 2");
  EXPECT_EQ(format.Extension(), u".json");
  EXPECT_TRUE(format.ExtraExtensions().empty());
  EXPECT_FALSE(format.SupportsStyles());
}

TEST(JsonType2, WritesMilliseconds) {
  EXPECT_EQ(written<JsonType2>({{1, 1000, 2500.5, u"Hi"}, {2, -1, 0, u"a\r\nb"}}),
            R"([{"startMillis":1000.000000,"endMillis":2500.500000,"text":"Hi"},)"
            R"({"startMillis":-1.000000,"endMillis":0.000000,"text":"a<br />b"}])");
  EXPECT_EQ(written<JsonType2>({}), "[]");
}

TEST(JsonType2, ReadsMilliseconds) {
  EXPECT_EQ(load<JsonType2>({u"[{\"startMillis\":1000,\"endMillis\":2000.25,\"text\":\"a\"}]"}),
            (Loaded{{{1, 1000, 2000.25, u"a"}}, 0}));
}

TEST(JsonType2, NeedsItsOwnStartOfFile) {
  EXPECT_EQ(load<JsonType2>({u"[{\"start\":1,\"startMillis\":1000,\"endMillis\":2000,\"text\":\"a\"}]"}),
            (Loaded{{}, 0}));
}

TEST(JsonType2, IsRecognizedInAFile) {
  EXPECT_EQ(recognized("\n"
                       R"([{"startMillis":1,"endMillis":2,"text":"a"},{"startMillis":3,"endMillis":4,"text":"b"}])"),
            (Recognized{"JSON Type 2", 2}));
}

}  // namespace
}  // namespace mova
