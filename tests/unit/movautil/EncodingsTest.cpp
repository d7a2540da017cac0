#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "movautil/MovaUtil.h"

using mova::WString;
using namespace std::string_literals;

namespace {

constexpr char16_t Untouched = 0x5555;

uint32_t sizeOfUtf8(const WString& text) {
  return movaStr_UTF16_to_UTF8(nullptr, text.c_str(), static_cast<uint32_t>(text.size()));
}

/// As callers do it: a sizing call, then one with that room.
std::string toUtf8(const WString& text) {
  const uint32_t size = sizeOfUtf8(text);
  std::string bytes(size, '?');
  EXPECT_EQ(movaStr_UTF16_to_UTF8(bytes.data(), text.c_str(), size), size);
  return bytes;
}

/// What lands in `room` bytes; nothing may change behind them.
std::string toUtf8WithRoom(const WString& text, uint32_t room) {
  std::string bytes(room + 8, '?');
  const uint32_t written = movaStr_UTF16_to_UTF8(bytes.data(), text.c_str(), room);
  EXPECT_LE(written, room);
  EXPECT_EQ(bytes.substr(written), std::string(bytes.size() - written, '?'));
  return bytes.substr(0, written);
}

/// As the line reader does it: room for each byte and the terminator. Nothing may change behind it.
std::pair<uint32_t, WString> toUtf16(const std::string& text) {
  const size_t room = text.size() + 1;
  WString units(2 * room + 2, Untouched);
  const uint32_t written = movaStr_UTF8_to_UTF16(units.data(), text.c_str(), static_cast<uint32_t>(room));
  EXPECT_EQ(units.find_first_not_of(Untouched, room), WString::npos);
  return {written, units.substr(0, units.find(u'\0'))};
}

void expectUtf16(const std::string& bytes, const WString& text) {
  const auto [written, units] = toUtf16(bytes);
  EXPECT_EQ(units, text);
  EXPECT_EQ(written, text.size() + 1);
}

void expectInvalid(const std::string& bytes) {
  SCOPED_TRACE(testing::PrintToString(bytes));
  for (const std::string& text : {bytes, "some ASCII before" + bytes, bytes + "some ASCII behind"}) {
    const auto [written, units] = toUtf16(text);
    EXPECT_EQ(written, 0u);
    EXPECT_EQ(units, u"");
  }
}

/// The first and the last character of each UTF-8 length, and the neighbours of the surrogates.
struct Sample {
  WString Units;
  std::string Bytes;
};

const std::vector<Sample>& samples() {
  static const std::vector<Sample> all = {
      {u"\u0001", "\x01"},
      {u"\u007F", "\x7F"},
      {u"\u0080", "\xC2\x80"},
      {u"\u07FF", "\xDF\xBF"},
      {u"\u0800", "\xE0\xA0\x80"},
      {u"\uD7FF", "\xED\x9F\xBF"},
      {u"\uE000", "\xEE\x80\x80"},
      {u"\uFEFF", "\xEF\xBB\xBF"},
      {u"\uFFFD", "\xEF\xBF\xBD"},
      {u"\uFFFF", "\xEF\xBF\xBF"},
      {u"\xD800\xDC00", "\xF0\x90\x80\x80"},
      {u"\xD83C\xDFAC", "\xF0\x9F\x8E\xAC"},
      {u"\xDBFF\xDFFF", "\xF4\x8F\xBF\xBF"},
  };
  return all;
}

}  // namespace

TEST(MovaUtilEncodings, CharactersOfEachLengthThereAndBack) {
  for (const Sample& sample : samples()) {
    EXPECT_EQ(toUtf8(sample.Units), sample.Bytes);
    expectUtf16(sample.Bytes, sample.Units);
  }
}

TEST(MovaUtilEncodings, CharactersAmongAsciiOfAnyLengthThereAndBack) {
  const std::string ascii = "The quick brown fox jumps over";
  for (const Sample& sample : samples()) {
    for (size_t before = 0; before <= ascii.size(); ++before) {
      for (size_t behind = 0; behind <= ascii.size(); ++behind) {
        const std::string head = ascii.substr(0, before), tail = ascii.substr(0, behind);
        const WString text = WString(head.begin(), head.end()) + sample.Units + WString(tail.begin(), tail.end());
        ASSERT_EQ(toUtf8(text), head + sample.Bytes + tail);
        ASSERT_EQ(wideToString(text), head + sample.Bytes + tail);
        expectUtf16(head + sample.Bytes + tail, text);
      }
    }
  }
}

TEST(MovaUtilEncodings, SizingCountsTheBytesWithoutATerminator) {
  EXPECT_EQ(sizeOfUtf8(u""), 0u);
  EXPECT_EQ(sizeOfUtf8(u"abc"), 3u);
  EXPECT_EQ(sizeOfUtf8(u"\u00E9\u20AC\xD83C\xDFAC"), 9u);
  EXPECT_EQ(movaStr_UTF16_to_UTF8(nullptr, u"abcdef", 3), 3u);
}

TEST(MovaUtilEncodings, EncodingEndsAtTheFirstZeroUnit) {
  EXPECT_EQ(toUtf8(u"ab\0cd"s), "ab");
  EXPECT_EQ(toUtf8(u"\0cd"s), "");
  EXPECT_EQ(toUtf8WithRoom(u"ab\0cd"s, 100), "ab");
}

TEST(MovaUtilEncodings, EncodingKeepsToTheRoom) {
  EXPECT_EQ(toUtf8WithRoom(u"abc", 0), "");
  EXPECT_EQ(toUtf8WithRoom(u"abc", 2), "ab");
  EXPECT_EQ(toUtf8WithRoom(u"abc", 3), "abc");
  EXPECT_EQ(toUtf8WithRoom(u"0123456789abcdefghijklmn", 17), "0123456789abcdefg");
}

TEST(MovaUtilEncodings, EncodingCutsNoCharacterInTwo) {
  EXPECT_EQ(toUtf8WithRoom(u"a\u00E9", 2), "a");
  EXPECT_EQ(toUtf8WithRoom(u"a\u00E9", 3), "a\xC3\xA9");
  EXPECT_EQ(toUtf8WithRoom(u"\u20AC", 2), "");
  EXPECT_EQ(toUtf8WithRoom(u"\xD83C\xDFAC", 3), "");
  EXPECT_EQ(toUtf8WithRoom(u"\xD83C\xDFAC", 4), "\xF0\x9F\x8E\xAC");
  EXPECT_EQ(toUtf8WithRoom(u"a\u20ACb", 2), "a");  // and skips none to go on with a shorter one
}

TEST(MovaUtilEncodings, LoneSurrogatesBecomeReplacementCharacters) {
  const std::string mark = "\xEF\xBF\xBD";
  EXPECT_EQ(toUtf8(u"\xD800"), mark);
  EXPECT_EQ(toUtf8(u"\xDC00"), mark);
  EXPECT_EQ(toUtf8(u"\xD800"
                   u"a"),
            mark + "a");
  EXPECT_EQ(toUtf8(u"a\xDFFF"
                   u"b"),
            "a" + mark + "b");
  EXPECT_EQ(toUtf8(u"\xDC00\xD800"), mark + mark);
  EXPECT_EQ(toUtf8(u"\xD800\xD83C\xDFAC"), mark + "\xF0\x9F\x8E\xAC");
  EXPECT_EQ(toUtf8(u"\xD83C\xDFAC\xDFAC"), "\xF0\x9F\x8E\xAC" + mark);
  EXPECT_EQ(toUtf8(u"\xD800\u00E9"), mark + "\xC3\xA9");
  // A pair is one only inside the text: the count of the sizing call may end between its halves.
  EXPECT_EQ(movaStr_UTF16_to_UTF8(nullptr, u"\xD83C\xDFAC", 1), 3u);
}

TEST(MovaUtilEncodings, DecodingCountsTheTerminator) {
  char16_t unit = Untouched;
  EXPECT_EQ(movaStr_UTF8_to_UTF16(&unit, "", 1), 1u);
  EXPECT_EQ(unit, 0);
  expectUtf16("abc", u"abc");
}

TEST(MovaUtilEncodings, DecodingEndsAtTheFirstZeroByte) {
  expectUtf16("ab\0cd"s, u"ab");
  expectUtf16("ab\0\xFF\xFF"s, u"ab");  // whatever stands behind it
  expectUtf16("\0cd"s, u"");
}

TEST(MovaUtilEncodings, DecodingWithTooLittleRoomFails) {
  const auto decode = [](const char* text, uint32_t room) {
    std::vector<char16_t> units(40, Untouched);
    const uint32_t written = movaStr_UTF8_to_UTF16(units.data(), text, room);
    EXPECT_EQ(std::count(units.begin() + room, units.end(), Untouched), 40 - room);
    if (written == 0 && room > 0) {
      EXPECT_EQ(units[0], 0);
    }
    return written;
  };
  EXPECT_EQ(decode("", 0), 0u);
  EXPECT_EQ(decode("abc", 3), 0u);
  EXPECT_EQ(decode("abc", 4), 4u);
  EXPECT_EQ(decode("0123456789abcdef", 16), 0u);
  EXPECT_EQ(decode("0123456789abcdef", 17), 17u);
  EXPECT_EQ(decode("\xC3\xA9", 1), 0u);
  EXPECT_EQ(decode("\xC3\xA9", 2), 2u);
  EXPECT_EQ(decode("\xF0\x9F\x8E\xAC", 2), 0u);
  EXPECT_EQ(decode("\xF0\x9F\x8E\xAC", 3), 3u);
  EXPECT_EQ(decode("\xC3\xA9"
                   "a",
                   2),
            0u);
}

TEST(MovaUtilEncodings, BytesThatStartNoCharacterAreInvalid) {
  for (const int byte : {0x80, 0xBF, 0xF8, 0xFB, 0xFC, 0xFD, 0xFE, 0xFF}) expectInvalid({static_cast<char>(byte)});
}

TEST(MovaUtilEncodings, TruncatedSequencesAreInvalid) {
  for (const std::string bytes : {"\xC3", "\xE2", "\xE2\x82", "\xF0", "\xF0\x9F", "\xF0\x9F\x8E", "\xE2\x82\xC3\xA9"})
    expectInvalid(bytes);
}

TEST(MovaUtilEncodings, OverlongFormsAreInvalid) {
  for (const std::string bytes : {"\xC0\x80", "\xC0\xAF", "\xC1\xBF", "\xE0\x80\xAF", "\xE0\x9F\xBF",
                                  "\xF0\x80\x80\xAF", "\xF0\x8F\xBF\xBF", "\xF8\x88\x80\x80\x80"})
    expectInvalid(bytes);
}

TEST(MovaUtilEncodings, CodedSurrogatesAreInvalid) {
  for (const std::string bytes : {"\xED\xA0\x80", "\xED\xBF\xBF", "\xED\xA0\xBC\xED\xBE\xAC"}) expectInvalid(bytes);
}

TEST(MovaUtilEncodings, ValuesAboveTheLastCharacterAreInvalid) {
  for (const std::string bytes : {"\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xF7\xBF\xBF\xBF"}) expectInvalid(bytes);
}
