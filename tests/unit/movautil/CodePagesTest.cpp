#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "movautil/MovaUtil.h"

using mova::WString;
using namespace std::string_literals;

namespace {

constexpr char16_t Untouched = 0x5555;

/// What lands in `room` units, and the result; nothing may change behind them.
std::pair<uint32_t, WString> decode(const std::string& bytes, uint32_t codePage, uint32_t room) {
  WString units(room + 8, Untouched);
  const uint32_t written = movaStr_CodePage_to_UTF16(units.data(), bytes.c_str(), room, codePage);
  EXPECT_EQ(units.substr(room), WString(8, Untouched));
  return {written, units.substr(0, written)};
}

/// The text of the bytes, with room for all of it.
WString textOf(const std::string& bytes, uint32_t codePage) {
  auto [written, units] = decode(bytes, codePage, static_cast<uint32_t>(bytes.size() + 1));
  EXPECT_GT(written, 0u);
  EXPECT_TRUE(units.ends_with(u'\0'));
  units.pop_back();
  return units;
}

constexpr uint32_t SingleBytePages[] = {437,   850,   852,   866,   874,   1250,  1251,  1252,  1253,  1254,
                                        1255,  1256,  1257,  1258,  28591, 28592, 28593, 28594, 28595, 28596,
                                        28597, 28598, 28599, 28600, 28601, 28603, 28604, 28605};

}  // namespace

TEST(MovaUtilCodePages, LettersOfSingleBytePages) {
  EXPECT_EQ(textOf("\x81\x9B\xE1\xFB", 437), u"ü¢ß√");
  EXPECT_EQ(textOf("\x9B\xD5\xE1", 850), u"øıß");
  EXPECT_EQ(textOf("\xA5\x88\x9C", 852), u"ąłť");
  EXPECT_EQ(textOf("\x80\xA0\xEF\xF0", 866), u"АаяЁ");
  EXPECT_EQ(textOf("\x80\xA1\xFB", 874), u"€ก๛");
  EXPECT_EQ(textOf("\x8A\xB9\xF8", 1250), u"Šąř");
  EXPECT_EQ(textOf("\xC0\xFF\xA8", 1251), u"АяЁ");
  EXPECT_EQ(textOf("\x80\x93\x94\x9F\xE9", 1252), u"€“”Ÿé");
  EXPECT_EQ(textOf("\xE1\xD9\xA2", 1253), u"αΩΆ");
  EXPECT_EQ(textOf("\xFE\xD0\xFD\xDD", 1254), u"şĞıİ");
  EXPECT_EQ(textOf("\xE0\xFA\xA4", 1255), u"את₪");
  EXPECT_EQ(textOf("\xC7\x81\xED", 1256), u"اپي");
  EXPECT_EQ(textOf("\xE0\xFE\xA8", 1257), u"ąžØ");
  EXPECT_EQ(textOf("\xF0\xFE\xE3", 1258), u"đ₫ă");
}

TEST(MovaUtilCodePages, LettersOfIso8859) {
  EXPECT_EQ(textOf("\x80\xA4\xE9\xFF", 28591), u"\u0080¤éÿ");
  EXPECT_EQ(textOf("\xB1\xF8", 28592), u"ąř");
  EXPECT_EQ(textOf("\xA1\xFD", 28593), u"Ħŭ");
  EXPECT_EQ(textOf("\xBF\xE0", 28594), u"ŋā");
  EXPECT_EQ(textOf("\xA1\xD0\xF0", 28595), u"Ёа№");
  EXPECT_EQ(textOf("\xC7\xEA", 28596), u"اي");
  EXPECT_EQ(textOf("\xE1\xD9", 28597), u"αΩ");
  EXPECT_EQ(textOf("\xE0\xFA", 28598), u"את");
  EXPECT_EQ(textOf("\xF0\xFD", 28599), u"ğı");
  EXPECT_EQ(textOf("\xA1\xFF", 28600), u"Ąĸ");
  EXPECT_EQ(textOf("\xA1\xFB", 28601), u"ก๛");
  EXPECT_EQ(textOf("\xE0\xFF", 28603), u"ą’");
  EXPECT_EQ(textOf("\xA1\xF0", 28604), u"Ḃŵ");
  EXPECT_EQ(textOf("\xA4\xBD\xBE", 28605), u"€œŸ");
}

TEST(MovaUtilCodePages, AsciiIsTheSameInEverySingleBytePage) {
  std::string bytes;
  WString units;
  for (int value = 1; value < 0x80; ++value) {
    bytes += static_cast<char>(value);
    units += static_cast<char16_t>(value);
  }
  for (const uint32_t page : SingleBytePages) EXPECT_EQ(textOf(bytes, page), units) << page;
  EXPECT_EQ(textOf(bytes, 65001), units);
}

TEST(MovaUtilCodePages, EveryByteOfASingleBytePageIsOneUnit) {
  const std::string bytes(200, '\xE9');
  for (const uint32_t page : SingleBytePages) {
    EXPECT_EQ(textOf(bytes, page).size(), 200u) << page;
    for (int value = 0x80; value <= 0xFF; ++value) {
      const WString text = textOf(std::string(1, static_cast<char>(value)), page);
      ASSERT_EQ(text.size(), 1u) << page;
      EXPECT_NE(text[0], 0xFFFD) << page;
      EXPECT_NE(text[0], 0) << page;
    }
  }
}

TEST(MovaUtilCodePages, AnUndefinedByteBecomesTheUnitOfTheSameValue) {
  EXPECT_EQ(textOf("\x81\x8D\x8F\x90\x9D", 1252), u"\u0081\u008D\u008F\u0090\u009D");
  EXPECT_EQ(textOf("\x81\x83\x88\x90\x98", 1250), u"\u0081\u0083\u0088\u0090\u0098");
  EXPECT_EQ(textOf("\x98", 1251), u"\u0098");
  EXPECT_EQ(textOf("\x81\xAA\xD2\xFF", 1253), u"\u0081\u00AA\u00D2\u00FF");
  EXPECT_EQ(textOf("\x81\x8E\x9E", 1254), u"\u0081\u008E\u009E");
  EXPECT_EQ(textOf("\x81\xD9\xDF\xFB\xFC\xFF", 1255), u"\u0081\u00D9\u00DF\u00FB\u00FC\u00FF");
  EXPECT_EQ(textOf("\x81\xA1\xA5", 1257), u"\u0081\u00A1\u00A5");
  EXPECT_EQ(textOf("\x81\x8A\x9E", 1258), u"\u0081\u008A\u009E");
  EXPECT_EQ(textOf("\x81\xDB\xDE\xFC\xFF", 874), u"\u0081\u00DB\u00DE\u00FC\u00FF");
  EXPECT_EQ(textOf("\xA5\xAE\xBE\xC3\xD0\xE3\xF0", 28593), u"\u00A5\u00AE\u00BE\u00C3\u00D0\u00E3\u00F0");
  EXPECT_EQ(textOf("\xA1\xC0\xDB\xFF", 28596), u"\u00A1\u00C0\u00DB\u00FF");
  EXPECT_EQ(textOf("\xAE\xD2\xFF", 28597), u"\u00AE\u00D2\u00FF");
  EXPECT_EQ(textOf("\xA1\xBF\xDE\xFB\xFF", 28598), u"\u00A1\u00BF\u00DE\u00FB\u00FF");
  EXPECT_EQ(textOf("\xDB\xDE\xFC\xFF", 28601), u"\u00DB\u00DE\u00FC\u00FF");
}

TEST(MovaUtilCodePages, MarksAreNotJoinedToTheirLetters) {
  EXPECT_EQ(textOf("a\xCC"
                   "e\xEC",
                   1258),
            u"a\u0300e\u0301");
  EXPECT_EQ(textOf("\xE9\xC4", 1255), u"\u05D9\u05B4");
}

TEST(MovaUtilCodePages, Number5IsWindows1252) {
  EXPECT_EQ(textOf("\x80\x81\x9F\xE9z", 5), u"€\u0081Ÿéz");
  EXPECT_EQ(decode("\x92", 5, 1), std::pair(1u, u"’"s));  // a single byte, as the binary formats ask for
}

TEST(MovaUtilCodePages, LettersOfMultiBytePages) {
  EXPECT_EQ(textOf("a\x93\xFA\x96\x7B\xB1\\~", 932), u"a日本ｱ\\~");
  EXPECT_EQ(textOf("a\xD6\xD0\xCE\xC4z", 936), u"a中文z");
  EXPECT_EQ(textOf("a\xC7\xD1\xB1\xB9z", 949), u"a한국z");
  EXPECT_EQ(textOf("\x81\x41", 949), u"갂");  // outside the older KS X 1001
  EXPECT_EQ(textOf("a\xA4\xA4\xA4\xE5z", 950), u"a中文z");
}

TEST(MovaUtilCodePages, UndecodableBytesOfMultiBytePagesBecomeReplacementCharacters) {
  for (const uint32_t page : {932u, 936u, 949u, 950u}) {
    SCOPED_TRACE(page);
    EXPECT_EQ(textOf("a\xB0\x01z", page).substr(2), u"\u0001z");  // the byte behind a bad lead is kept
    EXPECT_EQ(textOf("a\xFF\xFFz", page), u"a\uFFFD\uFFFDz");
    EXPECT_EQ(textOf("a\x90", page), u"a\uFFFD");  // cut off
    EXPECT_EQ(textOf("abc", page), u"abc");        // and no trace of it in the next text
  }
  EXPECT_EQ(textOf("a\x93 z", 932), u"a\uFFFD z");
  EXPECT_EQ(textOf("a\xD6 z", 936), u"a\uFFFD z");
  EXPECT_EQ(textOf("a\xC7 z", 949), u"a\uFFFD z");
  EXPECT_EQ(textOf("a\xA4 z", 950), u"a\uFFFD z");
  EXPECT_EQ(textOf(std::string(10000, '\xFF'), 936), WString(10000, 0xFFFD));
}

TEST(MovaUtilCodePages, Utf8IsReadLeniently) {
  EXPECT_EQ(textOf("caf\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x8E\xAC!", 65001), u"café € \xD83C\xDFAC!");
  EXPECT_EQ(textOf("\xEF\xBB\xBFz", 65001), u"\uFEFFz");
  EXPECT_EQ(textOf("a\xFFz", 65001), u"a\uFFFDz");
  EXPECT_EQ(textOf("a\xE9 z", 65001), u"a\uFFFD z");
  EXPECT_EQ(textOf("a\xE2\x82", 65001), u"a\uFFFD\uFFFD");
  EXPECT_EQ(textOf("a\xE2\x82z", 65001), u"a\uFFFD\uFFFDz");
  EXPECT_EQ(textOf("a\xC0\x80z", 65001), u"a\uFFFD\uFFFDz");
  EXPECT_EQ(textOf("a\xED\xA0\x80z", 65001), u"a\uFFFD\uFFFD\uFFFDz");
  EXPECT_EQ(textOf("a\xF4\x90\x80\x80z", 65001), u"a\uFFFD\uFFFD\uFFFD\uFFFDz");
  EXPECT_EQ(textOf("\x80\x80\xC3\xA9", 65001), u"\uFFFD\uFFFDé");
}

TEST(MovaUtilCodePages, UnknownPagesGiveNothing) {
  for (const uint32_t page : {0u, 1u, 4u, 1249u, 1259u, 1200u, 28590u, 28602u, 28606u, 65000u, 0xFFFFFFFFu}) {
    SCOPED_TRACE(page);
    char16_t units[] = {Untouched, Untouched};
    EXPECT_EQ(movaStr_CodePage_to_UTF16(units, "abc", 2, page), 0u);
    EXPECT_EQ(units[0], 0);
    EXPECT_EQ(units[1], Untouched);
  }
}

TEST(MovaUtilCodePages, TheTerminatorIsCountedWhereThereIsRoom) {
  for (const uint32_t page : {1252u, 932u, 65001u}) {
    SCOPED_TRACE(page);
    EXPECT_EQ(decode("", page, 1), std::pair(1u, u"\0"s));
    EXPECT_EQ(decode("abc", page, 260), std::pair(4u, u"abc\0"s));
    EXPECT_EQ(decode("abc", page, 3), std::pair(3u, u"abc"s));
    EXPECT_EQ(decode("abc", page, 2), std::pair(2u, u"ab"s));
    EXPECT_EQ(decode("abc", page, 0), std::pair(0u, u""s));
  }
}

TEST(MovaUtilCodePages, DecodingEndsAtTheFirstZeroByte) {
  for (const uint32_t page : {1252u, 932u, 65001u}) EXPECT_EQ(textOf("ab\0cd"s, page), u"ab") << page;
}

TEST(MovaUtilCodePages, CountedBytesOfASingleBytePageNeedNoTerminator) {
  const std::vector<char> bytes = {'a', 'b', 'c'};
  char16_t units[3];
  EXPECT_EQ(movaStr_CodePage_to_UTF16(units, bytes.data(), 3, 5), 3u);
  EXPECT_EQ(WString(units, 3), u"abc");
}

TEST(MovaUtilCodePages, TheRoomCountsUnitsWhateverTheirBytes) {
  const auto repeated = [](const std::string& bytes, int times) {
    std::string text;
    for (int i = 0; i < times; ++i) text += bytes;
    return text;
  };
  EXPECT_EQ(decode(repeated("\xC3\xA9", 300), 65001, 260), std::pair(260u, WString(260, u'é')));
  EXPECT_EQ(decode(repeated("\xE2\x82\xAC", 300), 65001, 260), std::pair(260u, WString(260, u'€')));
  EXPECT_EQ(decode(repeated("\xD6\xD0", 300), 936, 260), std::pair(260u, WString(260, u'中')));
  EXPECT_EQ(decode(repeated("\xFF", 300), 936, 260), std::pair(260u, WString(260, 0xFFFD)));
}

TEST(MovaUtilCodePages, NoSurrogatePairIsCutInTwo) {
  EXPECT_EQ(decode("a\xF0\x9F\x8E\xAC", 65001, 2), std::pair(2u, u"a\0"s));
  EXPECT_EQ(decode("a\xF0\x9F\x8E\xAC", 65001, 3), std::pair(3u, u"a\xD83C\xDFAC"s));
}

TEST(MovaUtilCodePages, AnsiIsWindows1252) {
  char16_t units[260];
  const uint32_t written = movaStr_ANSI_to_UTF16(units, "\x80\x81\xE9z", 260);
  EXPECT_EQ(WString(units, written), u"€\u0081éz\0"s);
  EXPECT_EQ(movaStr_ANSI_to_UTF16(units, "", 260), 1u);
  EXPECT_EQ(units[0], 0);
}

TEST(MovaUtilCodePages, AnsiIsCutAtTheRoom) {
  const auto ansi = [](size_t length) {
    WString units(268, Untouched);
    const uint32_t written = movaStr_ANSI_to_UTF16(units.data(), std::string(length, '\xE9').c_str(), 260);
    EXPECT_EQ(units.substr(260), WString(8, Untouched));
    return units.substr(0, written);
  };
  EXPECT_EQ(ansi(258), WString(258, u'é') + u'\0');
  EXPECT_EQ(ansi(259), WString(259, u'é') + u'\0');
  EXPECT_EQ(ansi(260), WString(260, u'é'));  // 260 units of text leave the terminator no room
  EXPECT_EQ(ansi(300), WString(260, u'é'));
}
