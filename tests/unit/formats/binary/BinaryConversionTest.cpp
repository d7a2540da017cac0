/// Binary files all the way through the exported call, to the bytes of several targets.
#include <iterator>

#include "BinaryFixture.h"
#include "mova/mova.h"

namespace mova {
namespace {

using namespace std::string_literals;

class BinaryConversionTest : public BinaryFormatTest {
 protected:
  /// The bytes of the target's file.
  std::string Converted(const WString& input, const WString& format, const std::string& extension) const {
    EXPECT_EQ(movaConvertCC(input, format, (folder_ / "out.x").u16string(), nullptr), 0u);
    std::ifstream file(folder_ / ("out" + extension), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
};

std::string filled(std::string text, size_t size, char unit) {
  text.resize(size, unit);
  return text;
}

TEST_F(BinaryConversionTest, TakesEbuToOtherFormats) {
  const auto block = [](char ebn, const std::string& times, const std::string& position, const std::string& text) {
    return "\0\1\0"s + ebn + '\0' + times + position + '\0' + filled(text, 112, '\x8F');
  };
  const std::string header = filled(filled("850STL25.01000"
                                           "0",
                                           253, ' ') +
                                        "23",
                                    1024, ' ');
  const WString film =
      File("film.stl", header + block('\xFF', "\0\0\1\0\0\0\3\x0C"s, "\x14\2", "\x80Where is \x8Athe boat?\x81") +
                           block('\0', "\0\0\4\0\0\0\6\x18"s, "\x16\2", "\x0B\2\x0B\x0BGone") +
                           block('\xFF', "\1\0\4\0\1\0\6\0"s, "\x16\2",
                                 "over \xC1"
                                 "a c\xF4te") +
                           block('\xFF', "\1\2\3\4\1\2\5\0"s, "\1\1", "Top"));
  // A mark and its letter, and Latin-1 letters, come out encoded more than once.
  const std::string a = "\xC3\x83\xC2\x83\xC3\x82\xC2\xA0";
  const std::string o = "\xC3\x83\xC2\xB4";
  EXPECT_EQ(Converted(film, u"SubRip", ".srt"),
            "1\r\n00:00:01:000 --> 00:00:03:480\r\n<i>Where is \nthe boat?</i>\r\n\r\n"
            "2\r\n00:00:04:000 --> 00:00:06:960\r\n<font color=\"Green\">Gone</font>over " +
                a + " c" + o +
                "te\r\n\r\n"
                "3\r\n01:02:03:160 --> 01:02:05:000\r\n{\\an7}Top\r\n\r\n");
  EXPECT_EQ(Converted(film, u"Csv", ".csv"),
            "Number;Start time in milliseconds;End time in milliseconds;\"Text\"\n"
            "1;1000;3480;\"<i>Where is \nthe boat?</i>\"\n"
            "2;4000;6960;\"<font color=\"Green\">Gone</font>over " +
                a + " c" + o +
                "te\"\n"
                "3;3723160;3725000;\"{\\an7}Top\"");
  EXPECT_EQ(Converted(film, u"JSON", ".json"),
            "[{\"start\":1.000000,\"end\":3.480000,\"text\":\"<i>Where is <br />the boat?</i>\"},"
            "{\"start\":4.000000,\"end\":6.960000,\"text\":\"<font color=\\\"Green\\\">Gone</font>over " +
                a + " c" + o +
                "te\"},"
                "{\"start\":3723.160000,\"end\":3725.000000,\"text\":\"{\\\\an7}Top\"}]");
  EXPECT_EQ(
      Converted(film, u"JSON Type 2", ".json"),
      "[{\"startMillis\":1000.000000,\"endMillis\":3480.000000,\"text\":\"<i>Where is <br />the boat?</i>\"},"
      "{\"startMillis\":4000.000000,\"endMillis\":6960.000000,\"text\":\"<font color=\\\"Green\\\">Gone</font>over " +
          a + " c" + o +
          "te\"},"
          "{\"startMillis\":3723160.000000,\"endMillis\":3725000.000000,\"text\":\"{\\\\an7}Top\"}]");
}

TEST_F(BinaryConversionTest, WritesEbuUpToItsFirstZeroByte) {
  const WString film = File("film.srt", "1\n00:00:01,000 --> 00:00:02,000\nHello\n");
  const std::string bytes = Converted(film, u"EBU STL", ".stl");
  EXPECT_EQ(bytes.size(), 1024u);
  EXPECT_EQ(bytes.substr(0, 24), "437STL25.010000ANo Title");
  EXPECT_EQ(bytes.substr(236, 41),
            "01"
            "00001"
            "00001"
            "001"
            "40"
            "23"
            "1"
            "00000000"
            "00000100"
            "1"
            "1"
            "USA");
}

TEST_F(BinaryConversionTest, TakesCheetahCaptionToOtherFormats) {
  const auto record = [](const std::string& times, const std::string& text) {
    const std::string rest = "\0"s + times + std::string(9, '\0') + text + '\0';
    return static_cast<char>(rest.size() + 1) + rest;
  };
  const WString film =
      File("film.cap", filled("\xEA\x22\x03", 128, '\0') + record("\0\0\1\x0F\0\0\3\0"s, "Caf\x83\0\xD0now"s) +
                           record("\0\0\2\x0F\0\0\4\0"s, "Then") + std::string(20, '\0'));
  EXPECT_EQ(Converted(film, u"SubRip", ".srt"),
            "1\r\n00:00:01:501 --> 00:00:02:477\r\nCaf\xC3\xA9\n<i>now</i>\r\n\r\n"
            "2\r\n00:00:02:501 --> 00:00:04:000\r\nThen\r\n\r\n");
  EXPECT_EQ(Converted(film, u"Csv", ".csv"),
            "Number;Start time in milliseconds;End time in milliseconds;\"Text\"\n"
            "1;1501;2477;\"Caf\xC3\xA9\n<i>now</i>\"\n2;2501;4000;\"Then\"");
  EXPECT_EQ(Converted(film, u"JSON", ".json"),
            "[{\"start\":1.501000,\"end\":2.477000,\"text\":\"Caf\xC3\xA9<br /><i>now</i>\"},"
            "{\"start\":2.501000,\"end\":4.000000,\"text\":\"Then\"}]");
  EXPECT_EQ(Converted(film, u"JSON Type 2", ".json"),
            "[{\"startMillis\":1501.000000,\"endMillis\":2477.000000,\"text\":\"Caf\xC3\xA9<br /><i>now</i>\"},"
            "{\"startMillis\":2501.000000,\"endMillis\":4000.000000,\"text\":\"Then\"}]");
  EXPECT_EQ(Converted(film, u"CapMaker Plus", ".cap"), "Not supported!");
}

TEST_F(BinaryConversionTest, TakesCapMakerPlusToOtherFormatsWithoutCaptions) {
  std::string bytes = filled("+", 700, '\0');
  bytes.replace(160, 12,
                "\x0B"
                "00:00:01:00");
  bytes.replace(185, 5, "Hello");
  const WString film = File("film.cap", bytes);
  EXPECT_EQ(Converted(film, u"SubRip", ".srt"), "\r\n\r\n");
  EXPECT_EQ(Converted(film, u"Csv", ".csv"), "Number;Start time in milliseconds;End time in milliseconds;\"Text\"");
  EXPECT_EQ(Converted(film, u"JSON", ".json"), "[]");
  EXPECT_EQ(Converted(film, u"Cheetah Caption", ".cap"), "Not supported!");
}

}  // namespace
}  // namespace mova
