#include <regex>
#include <set>

#include "formats/line/JsonType4.h"
#include "unit/formats/Captions.h"

namespace mova {
namespace {

TEST(JsonType4, HasItsNames) {
  const JsonType4 format;
  EXPECT_EQ(format.Name(), u"JSON Type 4");
  EXPECT_EQ(format.Extension(), u".json");
  EXPECT_TRUE(format.ExtraExtensions().empty());
  EXPECT_FALSE(format.SupportsStyles());
}

TEST(JsonType4, WritesTags) {
  std::string json = written<JsonType4>({{1, 1000, 2500, u"Hi"}, {2, -1500, 0, u"a\r\n\"b\""}});
  json = std::regex_replace(
      json, std::regex(R"("guid":"[0-9a-f]{8}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{12}")"), R"("guid":"G")");
  json = std::regex_replace(json, std::regex(R"("segmentTypeId":"[0-9a-f]{24}")"), R"("segmentTypeId":"T")");
  json = std::regex_replace(json, std::regex(R"("id":"[0-9a-f]{24}")"), R"("id":"I")");
  EXPECT_EQ(json, R"([{"hitType":"tag","subTrack":null,"tags":[],"track":"Closed Captioning","startTime":1.000000,)"
                  R"("guid":"G","segmentTypeId":"T","endTime":2.500000,"id":"I",)"
                  R"("metadata":{"Text":"Hi","ID":"","Language":"en"}},)"
                  R"({"hitType":"tag","subTrack":null,"tags":[],"track":"Closed Captioning","startTime":-1.500000,)"
                  R"("guid":"G","segmentTypeId":"T","endTime":0.000000,"id":"I",)"
                  R"("metadata":{"Text":"a<br />\"b\"","ID":"","Language":"en"}}])");
  EXPECT_EQ(written<JsonType4>({}), "[]");
}

std::set<std::string> valuesOf(const std::string& json, const std::string& key) {
  std::set<std::string> values;
  const std::regex pattern("\"" + key + "\":\"([^\"]*)\"");
  for (std::sregex_iterator match(json.begin(), json.end(), pattern), end; match != end; ++match) {
    values.insert((*match)[1]);
  }
  return values;
}

TEST(JsonType4, GivesEachTagAnIdentifierOfItsOwnAndTheFileTwo) {
  const Captions captions{{1, 0, 1, u"a"}, {2, 1, 2, u"b"}, {3, 2, 3, u"c"}};
  const std::string first = written<JsonType4>(captions);
  EXPECT_EQ(valuesOf(first, "guid").size(), 1u);
  EXPECT_EQ(valuesOf(first, "segmentTypeId").size(), 1u);
  EXPECT_EQ(valuesOf(first, "id").size(), 3u);
  const std::string second = written<JsonType4>(captions);
  EXPECT_NE(valuesOf(first, "guid"), valuesOf(second, "guid"));
  EXPECT_NE(valuesOf(first, "segmentTypeId"), valuesOf(second, "segmentTypeId"));
}

TEST(JsonType4, ReadsBackWhatItWrites) {
  const Captions captions{{1, 1000, 2500, u"Hi, \"you\""}, {2, 3000, 4000, u"a\r\nb"}};
  const std::string json = written<JsonType4>(captions);
  EXPECT_EQ(load<JsonType4>({WString(json.begin(), json.end())}), (Loaded{captions, 0}));
}

TEST(JsonType4, FindsTheTextByItsCapitalLetter) {
  EXPECT_EQ(load<JsonType4>({u"[{\"hitType\":\"tag\",\"startTime\":1,\"endTime\":2,\"text\":\"a\",\"Text\":\"b\"}]"})
                .captions,
            (Captions{{1, 1000, 2000, u"b"}}));
}

TEST(JsonType4, IsRecognizedInAFile) {
  EXPECT_EQ(recognized("\n"
                       R"([{"hitType":"tag","startTime":1,"endTime":2,"metadata":{"Text":"a","ID":""}}])"),
            (Recognized{"JSON Type 4", 1}));
}

}  // namespace
}  // namespace mova
