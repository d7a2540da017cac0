#include <ctime>

#include "BinaryFixture.h"
#include "formats/binary/Ebu.h"
#include "text/Strings.h"

namespace mova {
namespace {

using namespace std::string_literals;

std::string narrow(WStringView units) {
  return {units.begin(), units.end()};
}

std::string gsi(const std::string& cct = "00", const std::string& dfc = "STL25.01", const std::string& mnr = "23",
                const std::string& cpn = "437", const std::string& dsc = "0") {
  GsiBlock block;
  block.CCT.assign(cct.begin(), cct.end());
  block.DFC.assign(dfc.begin(), dfc.end());
  block.MNR.assign(mnr.begin(), mnr.end());
  block.CPN.assign(cpn.begin(), cpn.end());
  block.DSC.assign(dsc.begin(), dsc.end());
  return narrow(gsiToText(block));
}

/// A block from 1 s to 2 s and 12 frames.
std::string tti(const std::string& text, char ebn = '\xFF', char vp = 22, char jc = 2,
                const std::string& start = "\0\0\1\0"s, const std::string& end = "\0\0\2\x0C"s) {
  std::string block = "\0\1\0"s + ebn + '\0' + start + end + vp + jc + '\0' + text.substr(0, 112);
  block.resize(128, '\x8F');
  return block;
}

Subtitle read(const std::string& bytes) {
  const std::vector<unsigned char> exact(bytes.begin(), bytes.end());
  Subtitle subtitle;
  Ebu().ReadFile(subtitle, exact);
  return subtitle;
}

/// The text of a single block.
WString textOf(const std::string& text, const std::string& cct = "00") {
  return read(gsi(cct) + tti(text)).Paragraphs.at(0)->Text;
}

/// The text field that a paragraph becomes under a header, without its filling.
WString fieldOf(const WString& text, const WString& dsc = u"0", const WString& cct = u"00") {
  GsiBlock header;
  header.DSC = dsc;
  header.CCT = cct;
  TtiBlock block;
  block.TF = text;
  const WString units = buildTtiBlock(block, header);
  EXPECT_EQ(units.size(), 128u);
  return trimEnd(WStringView(units).substr(16), u'\u008F');
}

WString written(const std::vector<Paragraph>& paragraphs, const WString& header = u"") {
  Subtitle subtitle;
  subtitle.Header = header;
  for (const Paragraph& paragraph : paragraphs) subtitle.Append(paragraph);
  return Ebu().WriteText(subtitle, u"title");
}

class EbuTest : public BinaryFormatTest {
 protected:
  bool Recognizes(const std::string& name, const std::string& bytes) { return Ebu().Recognizes({}, File(name, bytes)); }
};

// --- The header block

TEST_F(EbuTest, HasItsNames) {
  EXPECT_EQ(Ebu().Name(), u"EBU STL");
  EXPECT_EQ(Ebu().Extension(), u".stl");
}

TEST_F(EbuTest, HasAHeaderOfDefaults) {
  const WString blanks(32, u' ');
  const WString expected = u"437STL25.010000ANo Title" + WString(24, u' ') + blanks + blanks + blanks + blanks +
                           blanks + u"0" + WString(15, u' ') +
                           u"101021101021010072500725001"
                           u"40"
                           u"23"
                           u"1"
                           u"00000000"
                           u"00000001"
                           u"11USA" +
                           blanks + blanks + blanks + WString(75, u' ') + WString(576, u' ');
  EXPECT_EQ(expected.size(), 1024u);
  EXPECT_EQ(gsiToText(GsiBlock()), expected);
}

TEST_F(EbuTest, ReadsEveryFieldButSix) {
  std::string bytes;
  for (size_t i = 0; i < 1024; ++i) bytes += static_cast<char>('a' + i % 26);
  const std::vector<unsigned char> units(bytes.begin(), bytes.end());
  const GsiBlock block = parseGsiBlock(units);
  EXPECT_EQ(block.CPN, u"abc");
  EXPECT_EQ(block.TCP.size(), 8u);
  EXPECT_EQ(block.TCF, u"00000001");
  EXPECT_EQ(block.TND, u"1");
  EXPECT_EQ(block.DSN, u"1");
  EXPECT_EQ(block.CO, u"opq");
  EXPECT_EQ(block.PUB, WString(32, u' '));
  EXPECT_EQ(block.EN, WString(32, u' '));
  EXPECT_EQ(block.ECD, WString(32, u' '));
  EXPECT_EQ(narrow(block.Spare), bytes.substr(373, 75));
  EXPECT_EQ(narrow(block.UDA), bytes.substr(448, 576));
}

TEST_F(EbuTest, EndsAFieldAtAZeroByteAndThenWritesAMessageInTheHeadersPlace) {
  std::string bytes = gsi();
  bytes[18] = '\0';
  const std::vector<unsigned char> units(bytes.begin(), bytes.end());
  const GsiBlock block = parseGsiBlock(units);
  EXPECT_EQ(block.OPT, u"No");
  EXPECT_EQ(gsiToText(block), u"Length must be 1024 but is 994");
}

TEST_F(EbuTest, KnowsItsFrameRates) {
  GsiBlock block;
  const auto rate = [&block](const WString& dfc) {
    block.DFC = dfc;
    return frameRateOfGsi(block);
  };
  EXPECT_EQ(rate(u"STL23.01"), 23);
  EXPECT_EQ(rate(u"STL24.01"), 24);
  EXPECT_EQ(rate(u"STL25.01"), 25);
  EXPECT_EQ(rate(u"STL29.01"), 29);
  EXPECT_EQ(rate(u"STL30.01"), 30);
  EXPECT_EQ(rate(u"STL35.01"), 35);
  EXPECT_EQ(rate(u"STL48.01"), 48);
  EXPECT_EQ(rate(u"STL50.01"), 50);
  EXPECT_EQ(rate(u"STL60.01"), 60);
  EXPECT_EQ(rate(u"stl25.01"), 30);
  EXPECT_EQ(rate(u""), 30);
}

// --- Recognising

TEST_F(EbuTest, IsLargerThanOneBlockAndSmallerThanAMegabyte) {
  const std::string valid = gsi() + tti("a");
  EXPECT_FALSE(Recognizes("a.stl", valid));
  EXPECT_TRUE(Recognizes("b.stl", valid + "x"));
  EXPECT_TRUE(Recognizes("c.stl", valid + std::string(1023999 - 1152, 'x')));
  EXPECT_FALSE(Recognizes("d.stl", valid + std::string(1024000 - 1152, 'x')));
}

TEST_F(EbuTest, HasADiskFormatCodeOfAKnownRate) {
  for (const char* rate : {"23", "24", "25", "29", "30", "35", "48", "50", "60"}) {
    EXPECT_TRUE(Recognizes("a"s + rate, gsi("00", "STL"s + rate + ".01") + tti("a") + "x"));
  }
  EXPECT_FALSE(Recognizes("b.stl", gsi("00", "STL26.01") + tti("a") + "x"));
  EXPECT_FALSE(Recognizes("c.stl", gsi("00", "stl25.01") + tti("a") + "x"));
}

TEST_F(EbuTest, HasACodePageInDigitsOrAName) {
  const auto file = [](const std::string& cpn) { return gsi("00", "STL25.01", "23", cpn) + tti("a") + "x"; };
  EXPECT_TRUE(Recognizes("a.bin", file("850")));
  EXPECT_TRUE(Recognizes("a.STL", file("   ")));
  EXPECT_TRUE(Recognizes("astl", file("   ")));
  EXPECT_FALSE(Recognizes("b.bin", file("   ")));
  EXPECT_FALSE(Recognizes("c.bin", file("85x")));
  EXPECT_FALSE(Ebu().Recognizes({}, u""));
  EXPECT_FALSE(Ebu().Recognizes({}, (folder_ / "none.stl").u16string()));
}

// --- Reading

TEST_F(EbuTest, ReadsTimesAndNumbers) {
  const Subtitle subtitle = read(gsi() + tti("a", '\xFF', 22, 2, "\x01\x02\x03\x00"s, "\x01\x02\x05\x0C"s) + tti("b"));
  ASSERT_EQ(subtitle.Paragraphs.size(), 2u);
  EXPECT_EQ(subtitle.Paragraphs[0]->StartTime.TotalMilliseconds, 3723000);
  EXPECT_EQ(subtitle.Paragraphs[0]->EndTime.TotalMilliseconds, 3725480);
  EXPECT_EQ(subtitle.Paragraphs[0]->Number, 1);
  EXPECT_EQ(subtitle.Paragraphs[1]->Number, 2);
}

TEST_F(EbuTest, CutsMillisecondsOfFramesAtTheRateOfTheHeader) {
  GlobalSettings.FrameRate = 24;
  const auto end = [](const std::string& dfc, char frames) {
    return read(gsi("00", dfc) + tti("a", '\xFF', 22, 2, "\0\0\0\0"s, "\0\0\0"s + frames))
        .Paragraphs[0]
        ->EndTime.TotalMilliseconds;
  };
  EXPECT_EQ(end("STL25.01", 0), 0);
  EXPECT_EQ(end("STL25.01", 12), 480);
  EXPECT_EQ(end("STL29.01", 28), 965);
  EXPECT_EQ(end("STL30.01", 1), 33);
  EXPECT_EQ(end("STL25.01", '\xFF'), 10200);
}

TEST_F(EbuTest, KeepsTheFileUpToItsFirstZeroByteAsHeader) {
  EXPECT_EQ(read(gsi() + tti("a")).Header.size(), 1024u);
  EXPECT_EQ(narrow(read("\x01\xFF\0x"s).Header), "\x01\xFF");
}

TEST_F(EbuTest, JoinsBlocksOfOneSubtitleWithTheTimesOfTheFirst) {
  const Subtitle subtitle =
      read(gsi() + tti("ab", 0) + tti("cd", '\xFF', 22, 2, "\0\0\7\0"s, "\0\0\x08\0"s) + tti("e"));
  ASSERT_EQ(subtitle.Paragraphs.size(), 2u);
  EXPECT_EQ(subtitle.Paragraphs[0]->Text, u"abcd");
  EXPECT_EQ(subtitle.Paragraphs[0]->EndTime.TotalMilliseconds, 2480);
  EXPECT_EQ(subtitle.Paragraphs[1]->Text, u"e");
}

TEST_F(EbuTest, PassesOverUserDataWithoutDisturbingAContinuation) {
  const Subtitle subtitle =
      read(gsi() + tti("ab", 0) + tti("user", '\xFE') + tti("cd") + tti("user", '\xFE') + tti("e"));
  ASSERT_EQ(subtitle.Paragraphs.size(), 2u);
  EXPECT_EQ(subtitle.Paragraphs[0]->Text, u"abcd");
  EXPECT_EQ(subtitle.Paragraphs[1]->Text, u"e");
}

TEST_F(EbuTest, StopsBeforeABlockThatIsNotWhole) {
  EXPECT_EQ(read(gsi() + tti("a") + tti("b").substr(0, 127)).Paragraphs.size(), 1u);
  EXPECT_EQ(read(gsi() + tti("a").substr(0, 127)).Paragraphs.size(), 0u);
  EXPECT_EQ(read("").Paragraphs.size(), 0u);
}

TEST_F(EbuTest, RemembersPositionsAndCodesOfAllBlocks) {
  const std::string bytes = gsi() + tti("a", '\xFE', 3, 1) + tti("b", '\xFF', 20, 2);
  const std::vector<unsigned char> units(bytes.begin(), bytes.end());
  Ebu format;
  Subtitle subtitle;
  format.ReadFile(subtitle, units);
  EXPECT_EQ(format.VerticalPositions, (std::vector<int32_t>{3, 20}));
  EXPECT_EQ(format.JustificationCodes, (std::vector<int32_t>{1, 2}));
  ASSERT_TRUE(format.Header);
  EXPECT_EQ(format.Header->DFC, u"STL25.01");
}

TEST_F(EbuTest, PutsThePositionInFrontOfTheText) {
  const auto text = [](char vp, char jc, const std::string& mnr = "23") {
    return read(gsi("00", "STL25.01", mnr) + tti("a", '\xFF', vp, jc)).Paragraphs[0]->Text;
  };
  EXPECT_EQ(text(1, 2), u"{\\an8}a");
  EXPECT_EQ(text(2, 1), u"{\\an7}a");
  EXPECT_EQ(text(0, 3), u"{\\an9}a");
  EXPECT_EQ(text(3, 1), u"{\\an4}a");
  EXPECT_EQ(text(12, 2), u"{\\an5}a");
  EXPECT_EQ(text(12, 3), u"{\\an6}a");
  EXPECT_EQ(text(13, 1), u"{\\an1}a");
  EXPECT_EQ(text(13, 3), u"{\\an3}a");
  EXPECT_EQ(text(20, 2), u"a");
  EXPECT_EQ(text(20, 0), u"a");
  EXPECT_EQ(text(7, 2, "11"), u"a");
  EXPECT_EQ(text(6, 2, "11"), u"{\\an5}a");
  EXPECT_EQ(text(12, 2, "x1"), u"{\\an5}a");  // 23 rows
  EXPECT_EQ(text(3, 2, "\0\0"s), u"a");       // no digits at all are 0 rows
}

TEST_F(EbuTest, ReadsTagsOfTheTextField) {
  EXPECT_EQ(textOf("\x80"
                   "a\x81 \x82"
                   "b\x83"),
            u"<i>a</i> <u>b</u>");
}

TEST_F(EbuTest, BreaksRowsWithALineFeedAlone) {
  EXPECT_EQ(textOf("a\x8A"
                   "b\x8A\x8A"
                   "c\x8A"),
            u"a\nb\n\nc");
}

TEST_F(EbuTest, EndsTheTextAt8F) {
  EXPECT_EQ(textOf("a\x8F"
                   "b"),
            u"a");
}

TEST_F(EbuTest, PassesOverControlBytes) {
  EXPECT_EQ(textOf("a\x08\x1F\x84\x9F\xA0"
                   "b\x0D\x0B"),
            u"ab");
}

TEST_F(EbuTest, TakesTheBytesOfAnUnmarkedTextAsLatin1) {
  EXPECT_EQ(textOf("\x7F\xA1\xC0\xC9\xCC\xD0\xFF"),
            u"\u007F\u00C2\u00A1\u00C3\u0080\u00C3\u0089\u00C3\u008C\u00C3\u0090\u00C3\u00BF");
}

TEST_F(EbuTest, OpensAFontAtTheCharacterBehindAColour) {
  EXPECT_EQ(textOf("a\2"
                   "a"),
            u"a<font color=\"Green\">a</font>");
  EXPECT_EQ(textOf("x\2 \2a"), u"x <font color=\"Green\">a</font>");
}

TEST_F(EbuTest, KnowsAllColoursInBothForms) {
  constexpr WStringView names[] = {u"Black", u"Red", u"Green", u"Yellow", u"Blue", u"Magenta", u"Cyan", u"White"};
  for (char color = 0; color < 8; ++color) {
    const WString expected = u"x<font color=\"" + WString(names[static_cast<size_t>(color)]) + u"\">a</font>";
    EXPECT_EQ(textOf("x"s + color + "a"), expected);
    EXPECT_EQ(textOf("x"s + static_cast<char>(16 + color) + "a"), expected);
  }
}

TEST_F(EbuTest, ClosesAFontAtTheNextColourAndAtTheEnd) {
  EXPECT_EQ(textOf("x\1"
                   "a\1"
                   "b\2"
                   "c "),
            u"x<font color=\"Red\">ab</font><font color=\"Green\">c</font>");
}

TEST_F(EbuTest, PassesOverControlsAtThreePlacesOfARowsStart) {
  // Places 0, 2 and 3, but not 1.
  EXPECT_EQ(textOf("\1\2\3\4"
                   "a"),
            u"<font color=\"Green\">a</font>");
  EXPECT_EQ(textOf("\x11"
                   "a"),
            u"<font color=\"Red\">a</font>");
}

TEST_F(EbuTest, TreatsAccentedLettersTwice) {
  // A with grave accent is C3 80 in UTF-8, which are U+00C3 and U+20AC in Windows-1252.
  EXPECT_EQ(textOf("\xC1"
                   "A"),
            u"\u00C3\u0083\u00C3\u00AC");
  EXPECT_EQ(textOf("\xC1"
                   "a"),
            u"\u00C3\u0083\u00C2\u00A0");
}

TEST_F(EbuTest, DropsAMarkWithoutALetterOfItsOwn) {
  EXPECT_EQ(textOf("a\xC1"
                   "bc"),
            u"abc");
  EXPECT_EQ(textOf("a\xC1\xC1"
                   "bc"),
            u"abc");
}

TEST_F(EbuTest, TakesTheLetterOfTheLastMarkFromTheNextBlock) {
  const std::string full = std::string(111, 'a') + "\xC1";
  EXPECT_EQ(read(gsi() + tti(full) + "A" + tti("x").substr(1)).Paragraphs[0]->Text,
            WString(111, u'a') + u"\u00C3\u0083\u00C3\u00AC");
  EXPECT_EQ(read(gsi() + tti(full)).Paragraphs[0]->Text, WString(111, u'a'));
}

struct MarkRow {
  unsigned char byte;
  std::string letters;
  std::u16string accented;
};

const MarkRow markRows[] = {
    {193, "AEIOUaeiou", u"ÀÈÌÒÙàèìòù"},
    {194, "ACEILNORSUYZacegilnorsuyz", u"ÁĆÉÍĹŃÓŔŚÚÝŹáćéģíĺńóŕśúýź"},
    {195, "ACEGHIJOSUWYaceghijosuwy", u"ÂĈÊĜĤÎĴÔŜÛŴŶâĉêĝĥîĵôŝûŵŷ"},
    {196, "AINOUainou", u"ÃĨÑÕŨãĩñõũ"},
    {197, "AEIOUaeiou", u"ĀĒĪŌŪāēīōū"},
    {198, "AGUagu", u"ĂĞŬăğŭ"},
    {199, "CEGIZcegiz", u"ĊĖĠİŻċėġıż"},
    {200, "AEIOUYaeiouy", u"ÄËÏÖÜŸäëïöüÿ"},
    {202, "AUau", u"ÅŮåů"},
    {203, "CGKLNRSTcklnrst", u"ÇĢĶĻŅŖŞŢçķļņŗşţ"},
    {205, "OUou", u"ŐŰőű"},
    {206, "AEIUaeiu", u"ĄĘĮŲąęįų"},
    {207, "CDELNRSTZcdelnrstz", u"ČĎĚĽŇŘŠŤŽčďěľňřšťž"},
};

/// What Windows-1252 makes of a byte, worked out apart from the code pages of the library.
char16_t windows1252(unsigned char byte) {
  constexpr char16_t special[] =
      u"\u20AC\u0081\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\u008D\u017D\u008F"
      u"\u0090\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\u009D\u017E\u0178";
  return byte >= 0x80 && byte < 0xA0 ? special[byte - 0x80] : byte;
}

TEST_F(EbuTest, ReadsEveryMarkWithEveryLetter) {
  for (int byte = 193; byte <= 207; ++byte) {
    if (byte == 201 || byte == 204) continue;
    const auto row =
        std::find_if(std::begin(markRows), std::end(markRows), [byte](const MarkRow& r) { return r.byte == byte; });
    ASSERT_NE(row, std::end(markRows));
    for (int letter = 32; letter < 127; ++letter) {
      const size_t index = row->letters.find(static_cast<char>(letter));
      WString expected(1, static_cast<char16_t>(letter));
      if (index != std::string::npos) {
        const char16_t accented = row->accented[index];
        const WString units = {windows1252(static_cast<unsigned char>(0xC0 | accented >> 6)),
                               windows1252(static_cast<unsigned char>(0x80 | (accented & 0x3F)))};
        expected = latin1UnitsToUtf8Units(units);
      }
      EXPECT_EQ(textOf(std::string("x") + static_cast<char>(byte) + static_cast<char>(letter) + "y"),
                u"x" + expected + u"y")
          << byte << ' ' << static_cast<char>(letter);
    }
  }
}

TEST_F(EbuTest, ReadsEveryByteUnderEveryCharacterTable) {
  for (const char* cct : {"00", "01", "02", "03", "04", "05", "  "}) {
    const std::string table = cct;
    for (int byte = 32; byte < 256; ++byte) {
      if (byte >= 128 && byte <= 160) continue;
      const bool isMark = byte >= 193 && byte <= 207 && byte != 201 && byte != 204;
      const bool isLatin = table == "01" || table == "02" || table == "03" || table == "04";
      const WString expected =
          isLatin || (table == "00" && !isMark) ? latin1UnitsToUtf8Units(WString(1, static_cast<char16_t>(byte))) : u"";
      EXPECT_EQ(textOf("\x80" + std::string(1, static_cast<char>(byte)) + "\x81", cct), u"<i>" + expected + u"</i>")
          << cct << ' ' << byte;
    }
  }
}

TEST_F(EbuTest, ReadsEveryControlByteUnderEveryCharacterTable) {
  const WString colors[] = {u"Black", u"Red", u"Green", u"Yellow", u"Blue", u"Magenta", u"Cyan", u"White"};
  for (const char* cct : {"00", "01", "04"}) {
    for (int byte = 0; byte <= 160; ++byte) {
      if (byte >= 32 && byte < 128) continue;
      WString expected = u"ab";
      if (byte < 24 && byte % 16 < 8) expected = u"a<font color=\"" + colors[byte % 16] + u"\">b</font>";
      if (byte == 0x80) expected = u"a<i>b";
      if (byte == 0x81) expected = u"a</i>b";
      if (byte == 0x82) expected = u"a<u>b";
      if (byte == 0x83) expected = u"a</u>b";
      if (byte == 0x8A) expected = u"a\nb";
      if (byte == 0x8F) expected = u"a";
      EXPECT_EQ(textOf("a"s + static_cast<char>(byte) + "b", cct), expected) << cct << ' ' << byte;
    }
  }
}

TEST_F(EbuTest, ReadsTheFieldsOfABlockAtTheirLimits) {
  const std::string latest = "\xFF\xFF\xFF\xFF";
  std::string block = tti("a", '\xFF', '\xFF', '\xFF', "\0\0\0\0"s, latest);
  block[0] = block[1] = block[2] = block[4] = block[15] = '\xFF';
  Ebu format;
  const std::string bytes = gsi() + block;
  const std::vector<unsigned char> units(bytes.begin(), bytes.end());
  const auto blocks = format.readTtiBlocks(units, parseGsiBlock(units));
  ASSERT_EQ(blocks.size(), 1u);
  EXPECT_EQ(blocks[0].SGN, 255);
  EXPECT_EQ(blocks[0].SN, 65535);
  EXPECT_EQ(blocks[0].CS, 255);
  EXPECT_EQ(blocks[0].VP, 255);
  EXPECT_EQ(blocks[0].JC, 255);
  EXPECT_EQ(blocks[0].CF, 255);
  EXPECT_EQ(blocks[0].TF, u"a");
  EXPECT_EQ(read(bytes).Paragraphs.at(0)->EndTime.TotalMilliseconds, 933565200);

  // Rows 99 and 0: the middle ends at 50 and at 1.
  const auto text = [](const std::string& mnr, char vp) {
    return read(gsi("00", "STL25.01", mnr) + tti("a", '\xFF', vp)).Paragraphs.at(0)->Text;
  };
  EXPECT_EQ(text("99", 50), u"{\\an5}a");
  EXPECT_EQ(text("99", 51), u"a");
  EXPECT_EQ(text("00", 2), u"{\\an8}a");
  EXPECT_EQ(text("00", 3), u"a");
  EXPECT_EQ(text("x9", 12), u"{\\an5}a");
  EXPECT_EQ(text("x9", 13), u"a");
}

TEST_F(EbuTest, OpensAFontForACharacterThatBecomesNothing) {
  EXPECT_EQ(textOf("x\x11q", "05"), u"<font color=\"Red\"></font>");
}

/// A small file that has italics, a mark, a break, a colour and a chain of two blocks.
std::string smallFile() {
  return gsi() +
         tti("\x80"
             "ab\xC1"
             "A\x8A\2c",
             0) +
         tti("d\xC1");
}

void loadSmallFile(Subtitle& subtitle, std::span<const unsigned char> bytes) {
  Ebu().ReadFile(subtitle, bytes);
  EXPECT_LE(subtitle.Paragraphs.size(), 2u);
  Ebu().WriteText(subtitle, u"");  // picks the header of the file up
}

TEST_F(EbuTest, SurvivesEveryTruncationAndEveryChangedByteOfTheBlocks) {
  const std::string whole = smallFile();
  convertEveryTruncation(whole, loadSmallFile);
  convertEveryChange(whole, gsiSize, whole.size(), loadSmallFile);
}

TEST_F(EbuTest, SurvivesEveryChangedByteOfTheHeader) {
  convertEveryChange(smallFile().substr(0, gsiSize + ttiSize), 0, gsiSize, loadSmallFile);
}

// --- Writing

WString dateToday() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  char text[16];
  std::strftime(text, sizeof text, "%y%m%d", &local);
  return WString(text, text + 6);
}

TEST_F(EbuTest, WritesCountsDatesAndTheFirstInCue) {
  const WString before = dateToday();
  const WString text = written({{u"a", 3723480, 3725000}, {u"b", 4000000, 4001000}});
  ASSERT_EQ(text.size(), 1024u + 2 * 128u);
  EXPECT_EQ(text.substr(238, 10), u"0000200002");
  EXPECT_EQ(text.substr(264, 8), u"01020312");
  EXPECT_TRUE(text.substr(224, 12) == before + before || text.substr(224, 12) == dateToday() + dateToday());
}

TEST_F(EbuTest, KeepsTheDefaultInCueWhenThereIsNone) {
  EXPECT_EQ(written({}).substr(238, 10), u"0000000000");
  EXPECT_EQ(written({}).substr(264, 8), u"00000001");
  EXPECT_EQ(written({{u"a", 360000000, 360001000}}).substr(264, 8), u"00000001");  // "100000000" is too long
}

TEST_F(EbuTest, WritesABlock) {
  const WString block = written({{u"a", 3723480, 3725960}, {u"b\r\nc", 4000000, 4001000}}).substr(1024 + 128, 128);
  // 4000 s are 1:06:40.
  const WString expected = {0, 1, 0, 255, 0, 1, 6, 40, 0, 1, 6, 41, 0, 20, 2, 0, u'b', 0x8A, u'c'};
  EXPECT_EQ(block, expected + WString(128 - expected.size(), u'\u008F'));
}

TEST_F(EbuTest, WritesFramesAtTheRateOfTheHeader) {
  const WString block = written({{u"a", 480, 999}}).substr(1024, 16);
  EXPECT_EQ(block, (WString{0, 0, 0, 255, 0, 0, 0, 0, 12, 0, 0, 0, 24, 22, 2, 0}));
}

TEST_F(EbuTest, DerivesTheVerticalPositionFromTheText) {
  const auto vp = [](const WString& text) { return int{written({{text, 0, 1}})[1024 + 13]}; };
  EXPECT_EQ(vp(u"a"), 22);
  EXPECT_EQ(vp(u"a\r\nb"), 20);
  EXPECT_EQ(vp(u"{\\an7}a"), 1);
  EXPECT_EQ(vp(u"{\\an8}a"), 1);
  EXPECT_EQ(vp(u"{\\an9}a"), 1);
  EXPECT_EQ(vp(u"{\\an4}a"), 11);
  EXPECT_EQ(vp(u"{\\an5}a"), 11);
  EXPECT_EQ(vp(u"{\\an6}a"), 11);
  EXPECT_EQ(vp(u"{\\an1}a"), 22);
  WString many;
  for (int i = 0; i < 12; ++i) many += u"a\r\n";
  EXPECT_EQ(vp(many), 0);
}

WString keptHeader(const std::string& mnr, const std::string& dsc, const std::string& dfc = "STL25.01") {
  const std::string bytes = gsi("00", dfc, mnr, "437", dsc) + "x";
  return WString(bytes.begin(), bytes.end());
}

TEST_F(EbuTest, TakesTheNumberOfRowsFromAKeptHeader) {
  const auto vp = [](const std::string& mnr, const std::string& dsc) {
    return int{written({{u"a", 0, 1}}, keptHeader(mnr, dsc))[1024 + 13]};
  };
  EXPECT_EQ(vp("11", "0"), 10);
  EXPECT_EQ(vp("11", "1"), 22);
  EXPECT_EQ(vp("11", "2"), 22);
  EXPECT_EQ(vp("02", "0"), 14);
  EXPECT_EQ(vp("02", " "), 1);
  EXPECT_EQ(vp("x1", "0"), 22);
}

TEST_F(EbuTest, KeepsTheHeaderOfFourRatesOnly) {
  const auto dfc = [](const std::string& code) {
    return written({{u"a", 0, 1}}, keptHeader("23", "0", code)).substr(3, 8);
  };
  EXPECT_EQ(dfc("STL24.01"), u"STL24.01");
  EXPECT_EQ(dfc("STL25.99"), u"STL25.99");
  EXPECT_EQ(dfc("STL29.01"), u"STL29.01");
  EXPECT_EQ(dfc("STL30.01"), u"STL30.01");
  EXPECT_EQ(dfc("STL50.01"), u"STL25.01");
  EXPECT_EQ(written({}, keptHeader("11", "0").substr(0, 1024)).substr(253, 2), u"23");  // one unit too short
}

TEST_F(EbuTest, BringsAKeptHeaderBackAsUtf8) {
  WString header = keptHeader("23", "0");
  header[16] = u'\u00E9';
  const WString text = written({}, header);
  EXPECT_EQ(text.substr(16, 5), u"\u00C3\u00A9o T");
  EXPECT_EQ(text.size(), 1024u);
}

TEST_F(EbuTest, DerivesTheJustificationFromTheText) {
  const auto jc = [](const WString& text) { return int{written({{text, 0, 1}})[1024 + 14]}; };
  for (const char16_t* tag : {u"{\\an1}", u"{\\an4}", u"{\\an7}"}) EXPECT_EQ(jc(tag), 1);
  for (const char16_t* tag : {u"{\\an3}", u"{\\an6}", u"{\\an9}"}) EXPECT_EQ(jc(tag), 3);
  for (const char16_t* tag : {u"{\\an2}", u"{\\an5}", u"{\\an8}", u"a", u""}) EXPECT_EQ(jc(tag), 2);
}

TEST_F(EbuTest, RemovesALeadingOverride) {
  const auto text = [](const WString& t) { return trimEnd(written({{t, 0, 1}}).substr(1040, 112), u'\u008F'); };
  EXPECT_EQ(text(u"{\\an8}a"), u"a");
  // Later overrides go as formatting, and so does a long one, when the rows are not coloured.
  EXPECT_EQ(text(u"a{\\i1}b"), u"ab");
}

TEST_F(EbuTest, PacksUtf8UnitsIntoBytes) {
  EXPECT_EQ(trimEnd(written({{u"\u00C3\u00A9", 0, 1}}).substr(1040, 112), u'\u008F'), u"\u00E9");
}

TEST_F(EbuTest, LetsTrueAccentedLettersPassAsBytes) {
  EXPECT_EQ(fieldOf(u"\u00E9\u0159"), u"\u00E9Y");
}

TEST_F(EbuTest, TakesCharactersApartThatOccurInTheLists) {
  // The list of the grave accent begins C3 20AC C3 2C6 C3 152: a lead unit is at place 0, the euro sign at place 1.
  EXPECT_EQ(fieldOf(u"\u00C3"),
            u"\u00C1"
            u"A");
  EXPECT_EQ(fieldOf(u"\u20AC"),
            u"\u00C1"
            u"E");
  // U+2019 is the 0x92 of O with grave accent: C3 92, at place 7.
  EXPECT_EQ(fieldOf(u"a\u2019b"),
            u"a\u00C1"
            u"ib");
  // The trade mark sign, 0x99, is that of U with grave accent, at place 9.
  EXPECT_EQ(fieldOf(u"\u2122"),
            u"\u00C1"
            u"u");
  // The no-break space is at place 11 of a list with ten letters: it stays, and no later list is asked.
  EXPECT_EQ(fieldOf(u"x\u00A0y"), u"x\u00A0y");
}

TEST_F(EbuTest, TakesNothingApartUnderOtherCharacterTables) {
  EXPECT_EQ(fieldOf(u"\u00C3", u"0", u"01"), u"\u00C3");
}

TEST_F(EbuTest, DropsFormattingOfOpenSubtitles) {
  EXPECT_EQ(fieldOf(u"<b>a</b>{\\i1}b"), u"ab");
  EXPECT_EQ(fieldOf(u"<i>a</i> <u>b</u>"), u"\u0080a\u0081 \u0082b\u0083");
  EXPECT_EQ(fieldOf(u"<I>a</I> <U>b</U>"), u"\u0080a\u0081 \u0082b\u0083");
}

TEST_F(EbuTest, OpensItalicsInEachRow) {
  EXPECT_EQ(fieldOf(u"<i>a\r\nb</i>"), u"\u0080a\u008A\u0080b\u0081");
  EXPECT_EQ(fieldOf(u"<i>a</i>\r\n<i>b</i>"), u"\u0080a\u0081\u008A\u0080b\u0081");
}

TEST_F(EbuTest, PutsColoursInFrontOfTeletextRows) {
  EXPECT_EQ(fieldOf(u"<font color=\"Red\">a</font>\r\nb", u"1"),
            u"\x0D\x01\x0B\x0B"
            u"a\n\x0D\x01\x0B\x0B"
            u"b\n\n\u008A");
  EXPECT_EQ(fieldOf(u"a\r\n<font color=\"#00ff00\">b</font>", u"1"),
            u"a\n\x0D\x02\x0B\x0B"
            u"b\n\n\u008A");
  EXPECT_EQ(fieldOf(u"<font color=\"red\">a</font>\r\n<font color=\"blue\">b</font>\r\nc", u"2"),
            u"\x0D\x01\x0B\x0B"
            u"a\n\x0D\x04\x0B\x0B"
            u"b\n\x0D\x01\x0B\x0B"
            u"c\n\n\u008A");
}

TEST_F(EbuTest, WritesPlainTeletextRowsWithLineFeeds) {
  EXPECT_EQ(fieldOf(u"a\r\nb", u"1"), u"a\nb\n\n\u008A");
}

TEST_F(EbuTest, RemovesTheFirstFontTagOfARowOnly) {
  EXPECT_EQ(fieldOf(u"<font size=\"2\">a<font color=\"red\">b", u"1"), u"a<font color=\"red\">b\n\n\u008A");
}

TEST_F(EbuTest, Writes226As208) {
  EXPECT_EQ(fieldOf(u"\u00E2"), u"\u00D0");
}

TEST_F(EbuTest, CutsATextAt112UnitsEvenWithinAPair) {
  EXPECT_EQ(fieldOf(WString(200, u'a')), WString(112, u'a'));
  EXPECT_EQ(fieldOf(WString(111, u'a') + u"\u00C3"), WString(111, u'a') + u"\u00C1");
}

TEST_F(EbuTest, FindsTheCodeOfAColour) {
  EXPECT_EQ(ebuColorCode(u"Black"), 0);
  EXPECT_EQ(ebuColorCode(u"RED"), 1);
  EXPECT_EQ(ebuColorCode(u"00FF00"), 2);
  EXPECT_EQ(ebuColorCode(u"yellow"), 3);
  EXPECT_EQ(ebuColorCode(u"0000ff"), 4);
  EXPECT_EQ(ebuColorCode(u"ff00ff"), 5);
  EXPECT_EQ(ebuColorCode(u"Cyan"), 6);
  EXPECT_EQ(ebuColorCode(u"ffffff"), 7);
  // Pairs of digits are decimal numbers, and all of those are dark.
  EXPECT_EQ(ebuColorCode(u"fefefe"), 0);
  EXPECT_EQ(ebuColorCode(u"999999"), 0);
  EXPECT_EQ(ebuColorCode(u"purple"), 0);
  EXPECT_EQ(ebuColorCode(u""), 0);
}

TEST_F(EbuTest, ConvertsThroughAFile) {
  Ebu format;
  const WString path = File("film.stl", gsi() + tti("Hello") + tti("there"));
  EXPECT_TRUE(format.Recognizes({}, path));
  Subtitle subtitle;
  format.LoadSubtitle(subtitle, {}, path);
  EXPECT_EQ(subtitle.Paragraphs.size(), 2u);
  format.LoadSubtitle(subtitle, {}, (folder_ / "none.stl").u16string());
  EXPECT_TRUE(subtitle.Paragraphs.empty());
}

}  // namespace
}  // namespace mova
