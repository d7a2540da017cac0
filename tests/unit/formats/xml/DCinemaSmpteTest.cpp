#include <regex>

#include "formats/xml/DCinemaSmpte2007.h"
#include "formats/xml/DCinemaSmpte2010.h"
#include "mova/mova.h"
#include "unit/formats/Captions.h"

namespace mova {
namespace {

template <typename Format>
constexpr const char* yearOf = "2007";
template <>
constexpr const char* yearOf<DCinemaSmpte2010> = "2010";

/// A reel of the edition with these properties and these subtitles in its list, in the default namespace.
template <typename Format>
Lines reel(WStringView properties, WStringView list) {
  const WString year = stringToWide(reinterpret_cast<const signed char*>(yearOf<Format>));
  const WString opening =
      u"<SubtitleReel xmlns=\"http://www.smpte-ra.org/schemas/428-7/" + year + u"/DCST\" xmlns:xs=\"x\">";
  return {u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>",
          opening,
          properties,
          u"<SubtitleList>",
          list,
          u"</SubtitleList></SubtitleReel>"};
}

/// The settings of a conversion with the defaults, for the length of a test.
class SettingsScope {
 public:
  SettingsScope() { GlobalSettings = getDefaultSettings(); }
  ~SettingsScope() { GlobalSettings = before_; }

 private:
  MOVASettings before_ = GlobalSettings;
};

/// What holds for both editions.
template <typename Format>
class DCinemaSmpteEditions : public testing::Test {
 protected:
  /// The text of the only subtitle, of these rows.
  static WString textOf(WStringView rows) {
    const WString subtitle =
        u"<Font><Subtitle TimeIn='0:0:1:0' TimeOut='0:0:2:0'>" + WString(rows) + u"</Subtitle></Font>";
    const Captions captions = load<Format>(reel<Format>(u"", subtitle)).captions;
    return captions.size() == 1 ? captions[0].text : u"(none)";
  }

  /// The rows that are written for a caption of this text, without the indent.
  static std::string rowsOf(WStringView text) {
    const std::string file = written<Format>({{1, 0, 0, WString(text)}});
    std::string rows = std::regex_replace(file, std::regex("\n *"), "");
    rows.erase(0, rows.find("<dcst:Subtitle "));
    rows.erase(0, rows.find('>') + 1);
    return rows.substr(0, rows.find("</dcst:Subtitle>"));
  }

  static std::string row(int position, const std::string& valign, const std::string& halign, const std::string& text) {
    return "<dcst:Text Vposition=\"" + std::to_string(position) + "\" Valign=\"" + valign + "\" Halign=\"" + halign +
           "\" Direction=\"ltr\">" + text + "</dcst:Text>";
  }

  SettingsScope settings_;
};

using Editions = testing::Types<DCinemaSmpte2007, DCinemaSmpte2010>;
class EditionNames {
 public:
  template <typename Format>
  static std::string GetName(int) {
    return yearOf<Format>;
  }
};
TYPED_TEST_SUITE(DCinemaSmpteEditions, Editions, EditionNames);

TYPED_TEST(DCinemaSmpteEditions, HasItsNames) {
  const TypeParam format;
  EXPECT_EQ(wideToString(format.Name()), std::string("D-Cine SMPTE ") + yearOf<TypeParam>);
  EXPECT_EQ(format.Extension(), u".xml");
  EXPECT_TRUE(format.ExtraExtensions().empty());
  EXPECT_FALSE(format.SupportsStyles());
  EXPECT_TRUE(format.IsTimeBased());
  EXPECT_TRUE(format.IsTextBased());
  EXPECT_EQ(format.frameRate, 24.0);
}

// --- Times

TYPED_TEST(DCinemaSmpteEditions, WritesTimesAtItsOwnRate) {
  TypeParam format;
  EXPECT_EQ(format.timeCodeToText({0}), u"00:00:00:00");
  EXPECT_EQ(format.timeCodeToText({1500}), u"00:00:01:12");
  EXPECT_EQ(format.timeCodeToText({20}), u"00:00:00:00");    // 0.48 frames
  EXPECT_EQ(format.timeCodeToText({21}), u"00:00:00:01");    // 0.504 frames
  EXPECT_EQ(format.timeCodeToText({62.9}), u"00:00:00:01");  // 1.488 frames, the milliseconds being whole
  EXPECT_EQ(format.timeCodeToText({90061000}), u"25:01:01:00");
  EXPECT_EQ(format.timeCodeToText({360000000}), u"100:00:00:00");
  EXPECT_EQ(format.timeCodeToText({-1500}), u"00:00:-1:-12");
}

TYPED_TEST(DCinemaSmpteEditions, LimitsFramesByTheRateOfTheConversion) {
  TypeParam format;
  // 23.976 frames round to 24, which is below 29.97.
  EXPECT_EQ(format.timeCodeToText({999}), u"00:00:00:24");
  GlobalSettings.FrameRate = 24.0;
  EXPECT_EQ(format.timeCodeToText({999}), u"00:00:00:23");
  GlobalSettings.FrameRate = 10.0;
  EXPECT_EQ(format.timeCodeToText({417}), u"00:00:00:23");  // 10.008 frames
  EXPECT_EQ(format.timeCodeToText({395}), u"00:00:00:09");  // 9.48 frames
}

TYPED_TEST(DCinemaSmpteEditions, ReadsTimesAtItsOwnRate) {
  TypeParam format;
  const auto read = [&](WStringView text) {
    return format.textToTimeCode(text).value_or(TimeCode{-1}).TotalMilliseconds;
  };
  EXPECT_EQ(read(u"00:00:01:12"), 1500);
  EXPECT_EQ(read(u"00:00:01.12"), 1500);
  EXPECT_EQ(read(u"1,2:3.1"), 3723042);
  EXPECT_EQ(read(u"00:00:01:24"), 1999);
  EXPECT_EQ(read(u"00:00:01:12:99"), 1500);
  EXPECT_EQ(read(u":::"), 0);
  EXPECT_EQ(read(u"00:00:00:-12"), -500);
  format.frameRate = 25;
  EXPECT_EQ(read(u"00:00:01:12"), 1480);
}

TYPED_TEST(DCinemaSmpteEditions, ReadsNoTimeOfFewerThanFourPieces) {
  const TypeParam format;
  for (WStringView text : {u"", u"5", u"00:00:01", u"00:01.5"}) EXPECT_FALSE(format.textToTimeCode(text));
}

TYPED_TEST(DCinemaSmpteEditions, CopesWithRatesThatAreNone) {
  GlobalSettings.DCinemaEffect = u"none";
  for (WStringView rate : {u"0 1", u"24 0", u"0 0", u"99999999999999999999999999 1"}) {
    GlobalSettings.DCinemaEditRate = rate;
    TypeParam format;
    EXPECT_NE(format.WriteText(subtitleOf({{1, 1500, 2500, u"a"}}), u"t").find(u"TimeIn=\"00:00:01:"), WString::npos);
    EXPECT_TRUE(format.textToTimeCode(u"00:00:01:12"));
  }
}

TYPED_TEST(DCinemaSmpteEditions, WrapsTimesBeyond32Bits) {
  const TypeParam format;
  EXPECT_EQ(format.textToTimeCode(u"1193:0:0:0")->TotalMilliseconds, 4294800000.0 - 4294967296.0);
  EXPECT_EQ(format.textToTimeCode(u"0:0:0:99999999999")->TotalMilliseconds, 999);
  EXPECT_EQ(format.timeCodeToText({1e300}), format.timeCodeToText({-1e300}));
}

// --- Colours

TEST(NormalizeColor, PutsAHashInFrontOfHexadecimalDigits) {
  EXPECT_EQ(normalizeColor(u"FFFF0000"), u"#ffff0000");
  EXPECT_EQ(normalizeColor(u" FFAA00 "), u"#ffaa00");
  EXPECT_EQ(normalizeColor(u"#FF0000"), u"#ff0000");
  EXPECT_EQ(normalizeColor(u"##12"), u"##12");
  EXPECT_EQ(normalizeColor(u"1#"), u"#1#");
  EXPECT_EQ(normalizeColor(u""), u"#");
}

TEST(NormalizeColor, LeavesWhatIsNoneAsItStands) {
  EXPECT_EQ(normalizeColor(u"Red"), u"Red");
  EXPECT_EQ(normalizeColor(u" Lime "), u" Lime ");
  EXPECT_EQ(normalizeColor(u"12 34"), u"12 34");
}

TEST(ParseHexColor, KeepsTheTopByteOfADecimalReading) {
  EXPECT_EQ(parseHexColor(u"#FFFF0000"), 0u);
  EXPECT_EQ(parseHexColor(u"#99999999"), 5u);
  EXPECT_EQ(parseHexColor(u"#4294967295"), 127u);
  EXPECT_EQ(parseHexColor(u"?99999999"), 5u);
}

TEST(ParseHexColor, GivesZeroForWhatIsNone) {
  EXPECT_EQ(parseHexColor(u"#red"), 0u);
  EXPECT_EQ(parseHexColor(u"#"), 0u);
  EXPECT_EQ(parseHexColor(u""), 0u);
}

// --- Writing

constexpr char anyFile[] =
    R"re(<dcst:SubtitleReel xmlns:dcst="http://www\.smpte-ra\.org/schemas/428-7/[year]/DCST" xmlns:xs="http://www\.w3\.org/2001/XMLSchema">
    <dcst:Id>urn:uuid:[0-9a-f]{8}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{12}</dcst:Id>
    <dcst:ContentTitleText>title</dcst:ContentTitleText>
    <dcst:AnnotationText>This is a subtitle file</dcst:AnnotationText>
    <dcst:IssueDate>\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.000-00:00</dcst:IssueDate>
    <dcst:ReelNumber>1</dcst:ReelNumber>
    <dcst:Language>en</dcst:Language>
    <dcst:EditRate>25 1</dcst:EditRate>
    <dcst:TimeCodeRate>25</dcst:TimeCodeRate>
    <dcst:StartTime>00:00:00:00</dcst:StartTime>
    <dcst:LoadFont ID="theFontId">urn:uuid:3dec6dc0-39d0-498d-97d0-928d2eb78391</dcst:LoadFont>
    <dcst:SubtitleList>
        <dcst:Font ID="theFontId" Size="42" Weight="normal" Color="FFFF0000" Effect="border" EffectColor="FF000000">
            <dcst:Subtitle SpotNumber="1" FadeUpTime="00:00:00:00" FadeDownTime="00:00:00:00" TimeIn="00:00:01:00" TimeOut="00:00:02:12">
                <dcst:Text Vposition="14" Valign="bottom" Halign="center" Direction="ltr">one</dcst:Text>
                <dcst:Text Vposition="8" Valign="bottom" Halign="center" Direction="ltr">two</dcst:Text>
            </dcst:Subtitle>
            <dcst:Subtitle SpotNumber="2" FadeUpTime="00:00:00:00" FadeDownTime="00:00:00:00" TimeIn="00:00:03:00" TimeOut="00:00:04:00">
                <dcst:Text Vposition="8" Valign="bottom" Halign="center" Direction="ltr">three</dcst:Text>
            </dcst:Subtitle>
        </dcst:Font>
    </dcst:SubtitleList>
</dcst:SubtitleReel>)re";

TYPED_TEST(DCinemaSmpteEditions, WritesAReelWithTheDefaults) {
  const std::string file = written<TypeParam>({{1, 1000, 2500, u"one\r\ntwo"}, {2, 3000, 4000, u"three"}});
  std::string pattern = anyFile;
  pattern.replace(pattern.find("[year]"), 6, yearOf<TypeParam>);
  EXPECT_TRUE(std::regex_match(file, std::regex(pattern))) << file;
}

TYPED_TEST(DCinemaSmpteEditions, StoresWhatItMakesUp) {
  written<TypeParam>({});
  const MOVASettings& s = GlobalSettings;
  EXPECT_EQ(s.DCinemaMovieTitle, u"title");
  EXPECT_TRUE(s.DCinemaSubtitleId.starts_with(u"urn:uuid:"));
  EXPECT_EQ(s.DCinemaSubtitleId.size(), 9u + 36u);
  EXPECT_EQ(s.DCinemaLanguage, u"en");
  EXPECT_EQ(s.DCinemaEditRate, u"25 1");
  EXPECT_EQ(s.DCinemaTimeCodeRate, u"25");
  EXPECT_EQ(s.DCinemaStartTime, u"00:00:00:00");
  EXPECT_EQ(s.FrameRate, 29.97);
}

/// A value of its own for every setting that shows in a reel.
void describeReel() {
  MOVASettings& s = GlobalSettings;
  s.DCinemaSubtitleId = u"urn:uuid:0";
  s.DCinemaMovieTitle = u"Lamp & Bell";
  s.DCinemaReelNumber = u"3";
  s.DCinemaIssueDate = u"2015-04-01T10:11:12.000+01:00";
  s.DCinemaLanguage = u"nl";
  s.DCinemaEditRate = u"48 1";
  s.DCinemaTimeCodeRate = u"48";
  s.DCinemaStartTime = u"01:00:00:00";
  s.DCinemaFontId = u"Serif";
  s.DCinemaFontUri = u"urn:uuid:1";
  s.DCinemaFontColor = 0x0A0B0C0D;
  s.DCinemaEffect = u"shadow";
  s.DCinemaEffectColor = 0xC0000000;
  s.DCinemaFontSize = 36;
  s.DCinemaBottomMargin = 10;
}

std::string describedReel(const std::string& year, const std::string& font) {
  return "<dcst:SubtitleReel xmlns:dcst=\"http://www.smpte-ra.org/schemas/428-7/" + year +
         "/DCST\" xmlns:xs=\"http://www.w3.org/2001/XMLSchema\">\n"
         "    <dcst:Id>urn:uuid:0</dcst:Id>\n"
         "    <dcst:ContentTitleText>Lamp & Bell</dcst:ContentTitleText>\n"
         "    <dcst:AnnotationText>This is a subtitle file</dcst:AnnotationText>\n"
         "    <dcst:IssueDate>2015-04-01T10:11:12.000+01:00</dcst:IssueDate>\n"
         "    <dcst:ReelNumber>3</dcst:ReelNumber>\n"
         "    <dcst:Language>nl</dcst:Language>\n"
         "    <dcst:EditRate>48 1</dcst:EditRate>\n"
         "    <dcst:TimeCodeRate>48</dcst:TimeCodeRate>\n"
         "    <dcst:StartTime>01:00:00:00</dcst:StartTime>\n"
         "    <dcst:LoadFont ID=\"Serif\">urn:uuid:1</dcst:LoadFont>\n"
         "    <dcst:SubtitleList>\n"
         "        <dcst:Font ID=\"Serif\" Size=\"36\" Weight=\"normal\" Color=\"FF0A0000\" Effect=\"shadow\""
         " EffectColor=\"FFC00000\"" +
         font +
         "    </dcst:SubtitleList>\n"
         "</dcst:SubtitleReel>";
}

TYPED_TEST(DCinemaSmpteEditions, WritesTheSettings) {
  describeReel();
  EXPECT_EQ(written<TypeParam>({}), describedReel(yearOf<TypeParam>, "/>\n"));
  EXPECT_EQ(written<TypeParam>({{1, 500, 1021, u"a"}}),
            describedReel(yearOf<TypeParam>,
                          ">\n"
                          "            <dcst:Subtitle SpotNumber=\"1\" FadeUpTime=\"00:00:00:00\""
                          " FadeDownTime=\"00:00:00:00\" TimeIn=\"00:00:00:24\" TimeOut=\"00:00:01:01\">\n"
                          "                <dcst:Text Vposition=\"10\" Valign=\"bottom\" Halign=\"center\""
                          " Direction=\"ltr\">a</dcst:Text>\n"
                          "            </dcst:Subtitle>\n"
                          "        </dcst:Font>\n"));
}

TYPED_TEST(DCinemaSmpteEditions, TakesTheTitleWhereTheSettingsAreComplete) {
  describeReel();
  GlobalSettings.DCinemaMovieTitle.clear();
  EXPECT_NE(written<TypeParam>({}).find("<dcst:ContentTitleText>title<"), std::string::npos);
  GlobalSettings.DCinemaMovieTitle.clear();
  const WString file = TypeParam().WriteText(Subtitle(), u"night ferry");
  EXPECT_NE(file.find(u"<dcst:ContentTitleText>night ferry<"), WString::npos);
  EXPECT_EQ(GlobalSettings.DCinemaMovieTitle, u"night ferry");
}

TYPED_TEST(DCinemaSmpteEditions, ReplacesAllSettingsWhereSizeOrEffectIsMissing) {
  describeReel();
  GlobalSettings.DCinemaFontSize = 0;
  const std::string file = written<TypeParam>({});
  EXPECT_NE(file.find("<dcst:ContentTitleText>title<"), std::string::npos);
  EXPECT_NE(file.find("Size=\"0\" Weight=\"normal\" Color=\"FFFF0000\" Effect=\"border\" EffectColor=\"FF000000\"/>"),
            std::string::npos);
  EXPECT_NE(file.find("<dcst:EditRate>48 1<"), std::string::npos);
  describeReel();
  GlobalSettings.DCinemaEffect.clear();
  EXPECT_NE(written<TypeParam>({}).find("<dcst:ReelNumber>1<"), std::string::npos);
}

TYPED_TEST(DCinemaSmpteEditions, FillsSinglePropertiesThatAreMissing) {
  describeReel();
  MOVASettings& s = GlobalSettings;
  s.DCinemaSubtitleId = u"0a0a";
  s.DCinemaLanguage.clear();
  s.DCinemaStartTime.clear();
  s.DCinemaReelNumber.clear();
  s.DCinemaFontId.clear();
  const std::string file = written<TypeParam>({});
  EXPECT_TRUE(std::regex_search(file, std::regex("<dcst:Id>urn:uuid:[0-9a-f-]{36}</dcst:Id>")));
  EXPECT_NE(file.find("<dcst:Language>en</dcst:Language>"), std::string::npos);
  EXPECT_NE(file.find("<dcst:StartTime>00:00:00:00</dcst:StartTime>"), std::string::npos);
  EXPECT_NE(file.find("<dcst:ReelNumber></dcst:ReelNumber>"), std::string::npos);
  EXPECT_NE(file.find("<dcst:LoadFont ID=\"Font1\">"), std::string::npos);
  EXPECT_NE(file.find("<dcst:Font ID=\"Font1\" "), std::string::npos);
  EXPECT_EQ(s.DCinemaFontId, u"");
}

TYPED_TEST(DCinemaSmpteEditions, FillsBothRatesWhereOneIsMissing) {
  describeReel();
  GlobalSettings.DCinemaTimeCodeRate.clear();
  EXPECT_NE(written<TypeParam>({}).find("<dcst:EditRate>25 1</dcst:EditRate>\n    <dcst:TimeCodeRate>25<"),
            std::string::npos);
  GlobalSettings.FrameRate = 24.0;
  GlobalSettings.DCinemaEditRate.clear();
  EXPECT_NE(written<TypeParam>({}).find("<dcst:EditRate>24 1</dcst:EditRate>\n    <dcst:TimeCodeRate>24<"),
            std::string::npos);
}

TYPED_TEST(DCinemaSmpteEditions, TakesItsRateFromTheSettingsAndKeepsIt) {
  describeReel();
  TypeParam format;
  const auto rateAfter = [&](WStringView setting) {
    GlobalSettings.DCinemaEditRate = setting;
    format.WriteText(Subtitle(), u"");
    return format.frameRate;
  };
  EXPECT_EQ(rateAfter(u"24000 1001"), 24000.0 / 1001.0);
  EXPECT_EQ(rateAfter(u"25"), 24000.0 / 1001.0);
  EXPECT_EQ(rateAfter(u"24 1 1"), 24000.0 / 1001.0);
  EXPECT_EQ(rateAfter(u"  30  1 "), 30.0);
  EXPECT_EQ(rateAfter(u""), 30.0);  // The rate that is filled in comes too late.
  EXPECT_EQ(GlobalSettings.DCinemaEditRate, u"25 1");
  EXPECT_EQ(rateAfter(u"25 1"), 25.0);
}

TYPED_TEST(DCinemaSmpteEditions, PassesOverEmptyCaptionsWithoutUsingANumber) {
  const std::string file =
      written<TypeParam>({{1, 0, 1000, u""}, {2, 2000, 3000, u"a"}, {3, 0, 0, u""}, {4, 0, 0, u"b"}});
  EXPECT_NE(
      file.find("SpotNumber=\"1\" FadeUpTime=\"00:00:00:00\" FadeDownTime=\"00:00:00:00\" TimeIn=\"00:00:02:00\""),
      std::string::npos);
  EXPECT_NE(file.find("SpotNumber=\"2\""), std::string::npos);
  EXPECT_EQ(file.find("SpotNumber=\"3\""), std::string::npos);
}

TYPED_TEST(DCinemaSmpteEditions, WritesTopRowsDownwards) {
  EXPECT_EQ(this->rowsOf(u"{\\an8}one\r\ntwo"),
            this->row(8, "top", "center", "one") + this->row(14, "top", "center", "two"));
}

TYPED_TEST(DCinemaSmpteEditions, WritesBottomRowsUpwards) {
  EXPECT_EQ(this->rowsOf(u"one\r\ntwo"),
            this->row(14, "bottom", "center", "one") + this->row(8, "bottom", "center", "two"));
  GlobalSettings.DCinemaFontSize = 41;  // 5.54 rounds to 6
  EXPECT_EQ(this->rowsOf(u"a\r\nb\r\n\r\nc"), this->row(20, "bottom", "center", "a") +
                                                  this->row(14, "bottom", "center", "b") +
                                                  this->row(8, "bottom", "center", "c"));
  GlobalSettings.DCinemaFontSize = 40;  // 5.41 rounds to 5
  EXPECT_EQ(this->rowsOf(u"a\nb"), this->row(13, "bottom", "center", "a") + this->row(8, "bottom", "center", "b"));
}

TYPED_TEST(DCinemaSmpteEditions, WritesMiddleRowsFarBelow) {
  EXPECT_EQ(this->rowsOf(u"{\\an5}a"), this->row(-2147483647, "center", "center", "a"));
  // The second row wraps around.
  EXPECT_EQ(this->rowsOf(u"{\\an5}a\r\nb"),
            this->row(-2147483647, "center", "center", "a") + this->row(2147483643, "center", "center", "b"));
}

TYPED_TEST(DCinemaSmpteEditions, WritesMiddleRowsOfNoHeight) {
  GlobalSettings.DCinemaEffect = u"none";
  GlobalSettings.DCinemaFontSize = 3;
  EXPECT_EQ(this->rowsOf(u"{\\an5}a\r\nb"),
            this->row(0, "center", "center", "a") + this->row(0, "center", "center", "b"));
  GlobalSettings.DCinemaFontSize = -42;  // A step of -5
  EXPECT_EQ(this->rowsOf(u"{\\an5}a\r\nb\r\nc"), this->row(8, "center", "center", "a") +
                                                     this->row(13, "center", "center", "b") +
                                                     this->row(18, "center", "center", "c"));
  EXPECT_EQ(this->rowsOf(u"a\r\nb"), this->row(3, "bottom", "center", "a") + this->row(8, "bottom", "center", "b"));
}

TYPED_TEST(DCinemaSmpteEditions, WritesEveryPositionCode) {
  const auto place = [&](WStringView code) {
    const std::string row = this->rowsOf(WString(code) + u"x");
    const size_t begin = row.find("Valign");
    return row.substr(begin, row.find(" Direction") - begin);
  };
  EXPECT_EQ(place(u"{\\an1}"), "Valign=\"bottom\" Halign=\"left\"");
  EXPECT_EQ(place(u"{\\an2}"), "Valign=\"bottom\" Halign=\"center\"");
  EXPECT_EQ(place(u"{\\an3}"), "Valign=\"bottom\" Halign=\"right\"");
  EXPECT_EQ(place(u"{\\an4}"), "Valign=\"center\" Halign=\"left\"");
  EXPECT_EQ(place(u"{\\an5}"), "Valign=\"center\" Halign=\"center\"");
  EXPECT_EQ(place(u"{\\an6}"), "Valign=\"center\" Halign=\"right\"");
  EXPECT_EQ(place(u"{\\an7}"), "Valign=\"top\" Halign=\"left\"");
  EXPECT_EQ(place(u"{\\an8}"), "Valign=\"top\" Halign=\"center\"");
  EXPECT_EQ(place(u"{\\an9}"), "Valign=\"top\" Halign=\"right\"");
  EXPECT_EQ(place(u"{\\a1}"), "Valign=\"bottom\" Halign=\"left\"");
  EXPECT_EQ(place(u"{\\a2}"), "Valign=\"bottom\" Halign=\"center\"");
  EXPECT_EQ(place(u"{\\a3}"), "Valign=\"bottom\" Halign=\"right\"");
  EXPECT_EQ(place(u"{\\a5}"), "Valign=\"top\" Halign=\"left\"");
  EXPECT_EQ(place(u"{\\a6}"), "Valign=\"top\" Halign=\"center\"");
  EXPECT_EQ(place(u"{\\a7}"), "Valign=\"top\" Halign=\"right\"");
  EXPECT_EQ(place(u"{\\a9}"), "Valign=\"center\" Halign=\"left\"");
  EXPECT_EQ(place(u"{\\a10}"), "Valign=\"center\" Halign=\"center\"");
  EXPECT_EQ(place(u"{\\a11}"), "Valign=\"center\" Halign=\"right\"");
  EXPECT_EQ(place(u"{\\AN8}"), "Valign=\"bottom\" Halign=\"center\"");
  EXPECT_EQ(place(u"{\\an8\\i1}"), "Valign=\"bottom\" Halign=\"center\"");
}

TYPED_TEST(DCinemaSmpteEditions, WritesTextsWithoutBraces) {
  EXPECT_EQ(this->rowsOf(u"a{b}c{d{e}f}{"), this->row(8, "bottom", "center", "acf}{"));
  EXPECT_EQ(this->rowsOf(u"}a{b\r\nc}d"), this->row(8, "bottom", "center", "}ad"));
}

TYPED_TEST(DCinemaSmpteEditions, WritesABlankForACaptionWithoutRows) {
  EXPECT_EQ(this->rowsOf(u"{\\an8}"), "<dcst:Text Vposition=\"8\" Valign=\"bottom\"> </dcst:Text>");
  EXPECT_EQ(this->rowsOf(u"{\\an5}"), "<dcst:Text Vposition=\"0\" Valign=\"bottom\"> </dcst:Text>");
  EXPECT_EQ(this->rowsOf(u"{x}"), "<dcst:Text Vposition=\"2\" Valign=\"bottom\"> </dcst:Text>");
}

TYPED_TEST(DCinemaSmpteEditions, WritesOneEmptyRowForLineBreaksAlone) {
  EXPECT_EQ(this->rowsOf(u"\r\n"), this->row(8, "bottom", "center", ""));
}

TYPED_TEST(DCinemaSmpteEditions, WritesItalicsAsFonts) {
  EXPECT_EQ(this->rowsOf(u"<i>abc</i>"),
            this->row(8, "bottom", "center", R"(<dcst:Font Italic="yes">abc</dcst:Font>)"));
  EXPECT_EQ(this->rowsOf(u"<i>abc\r\ndef</i>"),
            this->row(14, "bottom", "center", R"(<dcst:Font Italic="yes">abc</dcst:Font>)") +
                this->row(8, "bottom", "center", R"(<dcst:Font Italic="yes">def</dcst:Font>)"));
}

TYPED_TEST(DCinemaSmpteEditions, WritesColoursAsFonts) {
  EXPECT_EQ(this->rowsOf(u"<font color=\"#ff0000\">a</font>"),
            this->row(8, "bottom", "center", R"(<dcst:Font Color="FFFFFFFFFF0000">a</dcst:Font>)"));
}

TYPED_TEST(DCinemaSmpteEditions, WritesAmpersandsBare) {
  EXPECT_EQ(this->rowsOf(u"Tom & Jerry"), this->row(8, "bottom", "center", "Tom & Jerry"));
  EXPECT_EQ(this->rowsOf(u"camp;fire"), this->row(8, "bottom", "center", "cfire"));
  EXPECT_EQ(this->rowsOf(u"a < b"), this->row(8, "bottom", "center", "a < b"));
}

TYPED_TEST(DCinemaSmpteEditions, RewritesTwoTextsInTheWholeFile) {
  EXPECT_EQ(this->rowsOf(u"encoding=\"utf-8\" xmlns:dcst=\"dcst\"!"),
            this->row(8, "bottom", "center", "encoding=\"UTF-8\"!"));
}

TEST(DCinemaSmpte2007, KeepsMarkupInItsPlaceInALine) {
  const SettingsScope settings;
  const auto fileOf = [](WStringView text) { return written<DCinemaSmpte2007>({{1, 0, 0, WString(text)}}); };
  EXPECT_NE(fileOf(u"a <i>b</i> c").find(">a <dcst:Font Italic=\"yes\">b</dcst:Font> c</dcst:Text>\n"),
            std::string::npos);
  EXPECT_NE(fileOf(u"<i>a</i> <i>b</i>")
                .find("><dcst:Font Italic=\"yes\">a</dcst:Font> <dcst:Font Italic=\"yes\">b</dcst:Font></dcst:Text>\n"),
            std::string::npos);
}

TEST(DCinemaSmpte2010, MakesTheFirstElementOfALineAChildAndDropsTheRest) {
  const SettingsScope settings;
  const auto fileOf = [](WStringView text) { return written<DCinemaSmpte2010>({{1, 0, 0, WString(text)}}); };
  const std::string child =
      " Direction=\"ltr\">\n"
      "                    <dcst:Font Italic=\"yes\">a</dcst:Font>\n"
      "                </dcst:Text>\n";
  EXPECT_NE(fileOf(u"<i>a</i>").find(child), std::string::npos);
  EXPECT_NE(fileOf(u"<i>a</i> <i>b</i>").find(child), std::string::npos);
  EXPECT_NE(fileOf(u"b <i>a</i>").find(child), std::string::npos);
  EXPECT_NE(fileOf(u"<b>a</b>").find("\n                    <b>a</b>\n"), std::string::npos);
  // With text at its end the line is no document, and stays a text.
  EXPECT_NE(fileOf(u"b <i>a</i> c").find(">b <dcst:Font Italic=\"yes\">a</dcst:Font> c</dcst:Text>\n"),
            std::string::npos);
  EXPECT_NE(fileOf(u"<b>a").find("><b>a</dcst:Text>\n"), std::string::npos);
}

TEST(DCinemaSmpte2007, TakesAnyTwoPiecesForARate) {
  const SettingsScope settings;
  describeReel();
  DCinemaSmpte2007 format;
  GlobalSettings.DCinemaEditRate = u"29.97 1x";
  format.WriteText(Subtitle(), u"");
  EXPECT_EQ(format.frameRate, 29.97);
  GlobalSettings.DCinemaEditRate = u"-24 1";
  format.WriteText(Subtitle(), u"");
  EXPECT_EQ(format.frameRate, -24.0);
}

TEST(DCinemaSmpte2010, TakesDigitsOnlyForARate) {
  const SettingsScope settings;
  describeReel();
  DCinemaSmpte2010 format;
  for (WStringView rate : {u"29.97 1", u"30 1x", u"-25 1"}) {
    GlobalSettings.DCinemaEditRate = rate;
    format.WriteText(Subtitle(), u"");
    EXPECT_EQ(format.frameRate, 24.0);
  }
}

// --- Reading

TYPED_TEST(DCinemaSmpteEditions, ReadsSubtitles) {
  const Lines lines = reel<TypeParam>(u"",
                                      u"<Font><Subtitle TimeIn='00:00:01:12' TimeOut='00:00:02:00'>"
                                      u"<Text Vposition='14'>one</Text><Text Vposition='8'>two</Text></Subtitle>"
                                      u"<Subtitle TimeIn='0:0:3:0' TimeOut='0:0:4.6'><Text>three</Text></Subtitle>"
                                      u"</Font>");
  EXPECT_EQ(load<TypeParam>(lines), (Loaded{{{1, 1500, 2000, u"one\r\ntwo"}, {2, 3000, 4250, u"three"}}, 0}));
}

TYPED_TEST(DCinemaSmpteEditions, ReadsPrefixedElements) {
  const Lines lines{u"<dcst:SubtitleReel xmlns:dcst='x'><dcst:SubtitleList><dcst:Font Italic='yes'>",
                    u"<dcst:Subtitle TimeIn='0:0:1:0' TimeOut='0:0:2:0'><dcst:Text>a</dcst:Text></dcst:Subtitle>",
                    u"</dcst:Font></dcst:SubtitleList></dcst:SubtitleReel>"};
  EXPECT_EQ(load<TypeParam>(lines).captions, (Captions{{1, 1000, 2000, u"<i>a</i>"}}));
}

TYPED_TEST(DCinemaSmpteEditions, CountsSubtitlesWithoutTimesAsErrors) {
  const Lines lines = reel<TypeParam>(u"",
                                      u"<Font><Subtitle TimeOut='0:0:2:0'><Text>a</Text></Subtitle>"
                                      u"<Subtitle TimeIn='0:0:1:0'><Text>b</Text></Subtitle>"
                                      u"<Subtitle TimeIn='0:0:1' TimeOut='0:0:2:0'><Text>c</Text></Subtitle>"
                                      u"<Subtitle TimeIn='x:x:x:x' TimeOut='0:0:2:0'><Text>d</Text></Subtitle>"
                                      u"<Subtitle/></Font>");
  EXPECT_EQ(load<TypeParam>(lines), (Loaded{{{1, 0, 2000, u"d"}}, 4}));
}

TYPED_TEST(DCinemaSmpteEditions, RunsRowsAtEqualPositionsTogether) {
  EXPECT_EQ(this->textOf(u"<Text Vposition='8'>a</Text><Text Vposition='8'>b</Text><Text Vposition='2'>c</Text>"),
            u"ab\r\nc");
  EXPECT_EQ(this->textOf(u"<Text>a</Text><Text>b</Text>"), u"ab");
  // No break behind a row without a position, nor behind one without a text.
  EXPECT_EQ(this->textOf(u"<Text>a</Text><Text Vposition='8'>b</Text><Text>c</Text>"), u"ab\r\nc");
  EXPECT_EQ(this->textOf(u"<Text Vposition='8'/><Text Vposition='2'>b</Text>"), u"b");
  EXPECT_EQ(this->textOf(u"<Text Vposition='8'>a</Text><Text Vposition='8.0'>b</Text>"), u"a\r\nb");
}

TYPED_TEST(DCinemaSmpteEditions, ReadsPositions) {
  EXPECT_EQ(this->textOf(u"<Text Valign='top'>a</Text>"), u"{\\an8}a");
  EXPECT_EQ(this->textOf(u"<Text Valign='top' Halign='left'>a</Text>"), u"{\\an7}a");
  EXPECT_EQ(this->textOf(u"<Text Valign='top' Halign='right'>a</Text>"), u"{\\an9}a");
  EXPECT_EQ(this->textOf(u"<Text Valign='center' Halign='center'>a</Text>"), u"{\\an5}a");
  EXPECT_EQ(this->textOf(u"<Text Valign='center' Halign='left'>a</Text>"), u"{\\an4}a");
  EXPECT_EQ(this->textOf(u"<Text Valign='center' Halign='right'>a</Text>"), u"{\\an6}a");
  EXPECT_EQ(this->textOf(u"<Text Valign='bottom' Halign='left'>a</Text>"), u"{\\an1}a");
  EXPECT_EQ(this->textOf(u"<Text Halign='right'>a</Text>"), u"{\\an3}a");
  EXPECT_EQ(this->textOf(u"<Text Halign='center'>a</Text>"), u"a");
  EXPECT_EQ(this->textOf(u"<Text Valign='bottom' Halign='center'>a</Text>"), u"a");
  EXPECT_EQ(this->textOf(u"<Text Valign='Top' Halign='LEFT'>a</Text>"), u"a");
}

TYPED_TEST(DCinemaSmpteEditions, PutsOnePositionInFrontOfTheText) {
  EXPECT_EQ(this->textOf(u"<Text Vposition='1'>a</Text><Text Vposition='2' Valign='top'>b</Text>"
                         u"<Text Vposition='3' Halign='left'>c</Text>"),
            u"{\\an8}a\r\nb\r\nc");
  EXPECT_EQ(this->textOf(u"<Text>{\\an2}a</Text><Text Valign='top'>b</Text>"), u"{\\an2}ab");
  EXPECT_EQ(this->textOf(u"<Text Valign='top'>{\\an2}a</Text>"), u"{\\an8}{\\an2}a");
  // A text that holds a code only is a text: the next row goes on a line of its own.
  EXPECT_EQ(this->textOf(u"<Text Vposition='8' Valign='top'/><Text Vposition='9'>b</Text>"), u"{\\an8}\r\nb");
}

TYPED_TEST(DCinemaSmpteEditions, ReadsFonts) {
  EXPECT_EQ(this->textOf(u"<Text><Font Italic='yes'>a</Font></Text>"), u"<i>a</i>");
  EXPECT_EQ(this->textOf(u"<Text><Font Italic='YES'>a</Font><Font Italic='no'>b</Font></Text>"), u"<i>a</i>b");
  EXPECT_EQ(this->textOf(u"<Text><Font Color='FFFF0000'>a</Font></Text>"), u"<font color=\"#ffff0000\">a</font>");
  EXPECT_EQ(this->textOf(u"<Text><Font Color='Red' Italic='no'>a</Font></Text>"), u"<font color=\"Red\">a</font>");
  EXPECT_EQ(this->textOf(u"<Text><Font Weight='bold'>a</Font></Text>"), u"a");
  // The second "<i>" stands where a closing tag is expected.
  EXPECT_EQ(this->textOf(u"<Text><Font Italic='yes' Color='FF00FF00'>a</Font></Text>"),
            u"<i><font color=\"#ff00ff00\">a</font><i>");
}

TYPED_TEST(DCinemaSmpteEditions, ReadsNestedFontsByTheirText) {
  EXPECT_EQ(this->textOf(u"<Text><Font Italic='yes'>a<Font Color='red'>b</Font>c</Font></Text>"), u"<i>abc</i>");
  EXPECT_EQ(this->textOf(u"<Text><Ruby><Rb>a</Rb><Rt>b</Rt></Ruby></Text>"), u"ab");
}

TYPED_TEST(DCinemaSmpteEditions, DropsBareTextBesideElements) {
  EXPECT_EQ(this->textOf(u"<Text>a <Font Italic='yes'>b</Font> c</Text>"), u"<i>b</i>");
  EXPECT_EQ(this->textOf(u"<Text>a <Space/> c</Text>"), u"");
  EXPECT_EQ(this->textOf(u"<Text>a<!-- b -->c</Text>"), u"ac");
}

TYPED_TEST(DCinemaSmpteEditions, ReadsOtherChildrenByTheirText) {
  EXPECT_EQ(this->textOf(u"<Font Italic='yes'>a</Font><Text Vposition='1'>b</Text><x>c<y>d</y></x>"
                         u"<Text Vposition='2'>e</Text>"),
            u"abcd\r\ne");
  EXPECT_EQ(this->textOf(u"bare"), u"");
}

TYPED_TEST(DCinemaSmpteEditions, WrapsSubtitlesOfAnItalicFont) {
  const auto textOf = [](WStringView rows) {
    const WString subtitle =
        u"<Font Italic='Yes'><Subtitle TimeIn='0:0:1:0' TimeOut='0:0:2:0'>" + WString(rows) + u"</Subtitle></Font>";
    return load<TypeParam>(reel<TypeParam>(u"", subtitle)).captions.at(0).text;
  };
  EXPECT_EQ(textOf(u"<Text>a</Text>"), u"<i>a</i>");
  EXPECT_EQ(textOf(u"<Text Valign='top'>a</Text>"), u"{\\an8}<i>a</i>");
  EXPECT_EQ(textOf(u"<Text Valign='top'></Text>"), u"<i>{\\an8}</i>");
  EXPECT_EQ(textOf(u"<Text Vposition='1'>a</Text><Text Vposition='2'><Font Italic='yes'>b</Font></Text>"),
            u"a\r\n<i>b</i>");
  EXPECT_EQ(textOf(u""), u"<i></i>");
}

TYPED_TEST(DCinemaSmpteEditions, WrapsNoSubtitlesBelowAnItalicFontFurtherUp) {
  EXPECT_EQ(load<TypeParam>(reel<TypeParam>(u"",
                                            u"<Font Italic='yes'><Font Size='1'><Subtitle TimeIn='0:0:1:0' "
                                            u"TimeOut='0:0:2:0'><Text>a</Text></Subtitle></Font></Font>"))
                .captions,
            (Captions{{1, 1000, 2000, u"a"}}));
}

TYPED_TEST(DCinemaSmpteEditions, KeepsTheDocumentInTheHeader) {
  Subtitle subtitle;
  TypeParam().LoadSubtitle(subtitle,
                           {u"<?xml version=\"1.0\"?>",
                            u"<dcst:SubtitleReel a='b'><dcst:Subtitle TimeIn='0:0:0:0' "
                            u"TimeOut='0:0:0:0'> <dcst:Text>A &amp; B</dcst:Text></dcst:Subtitle></dcst:SubtitleReel>"},
                           u"");
  EXPECT_EQ(wideToString(subtitle.Header),
            "<?xml version=\"1.0\"?><SubtitleReel a=\"b\"><Subtitle TimeIn=\"0:0:0:0\" TimeOut=\"0:0:0:0\">"
            "<Text>A & B</Text></Subtitle></SubtitleReel>");
}

TYPED_TEST(DCinemaSmpteEditions, KeepsNoHeaderWithoutCaptions) {
  Subtitle subtitle;
  subtitle.Header = u"before";
  TypeParam().LoadSubtitle(subtitle, reel<TypeParam>(u"", u"<Font/>"), u"");
  EXPECT_EQ(subtitle.Header, u"before");
}

TYPED_TEST(DCinemaSmpteEditions, StoresThePropertiesInTheSettings) {
  load<TypeParam>(reel<TypeParam>(
      u"<Id>urn:uuid:7</Id><ContentTitleText>Lamp &amp; Bell</ContentTitleText>"
      u"<IssueDate>2015-04-01</IssueDate><ReelNumber>3</ReelNumber><Language>nl</Language><EditRate>48 1</EditRate>"
      u"<TimeCodeRate>48</TimeCodeRate><StartTime>01:00:00:00</StartTime><LoadFont ID='other'>urn:uuid:8</LoadFont>",
      u"<Font ID='Serif' Size='36' Color='99999999' Effect='shadow' EffectColor='55555555'/>"));
  const MOVASettings& s = GlobalSettings;
  EXPECT_EQ(s.DCinemaSubtitleId, u"urn:uuid:7");
  EXPECT_EQ(s.DCinemaMovieTitle, u"Lamp & Bell");
  EXPECT_EQ(s.DCinemaIssueDate, u"2015-04-01");
  EXPECT_EQ(s.DCinemaReelNumber, u"3");
  EXPECT_EQ(s.DCinemaLanguage, u"nl");
  EXPECT_EQ(s.DCinemaEditRate, u"48 1");
  EXPECT_EQ(s.DCinemaTimeCodeRate, u"48");
  EXPECT_EQ(s.DCinemaStartTime, u"01:00:00:00");
  EXPECT_EQ(s.DCinemaFontUri, u"urn:uuid:8");
  EXPECT_EQ(s.DCinemaFontId, u"Serif");
  EXPECT_EQ(s.DCinemaFontSize, 36);
  EXPECT_EQ(s.DCinemaFontColor, 5u);
  EXPECT_EQ(s.DCinemaEffect, u"shadow");
  EXPECT_EQ(s.DCinemaEffectColor, 3u);
  EXPECT_EQ(s.DCinemaBottomMargin, 8);
  EXPECT_EQ(s.FrameRate, 29.97);
}

TYPED_TEST(DCinemaSmpteEditions, StoresFreshSettingsForABareReel) {
  describeReel();
  load<TypeParam>(reel<TypeParam>(u"", u""));
  const MOVASettings& s = GlobalSettings;
  EXPECT_NE(s.DCinemaSubtitleId, u"urn:uuid:0");
  EXPECT_EQ(s.DCinemaMovieTitle, u"title");
  EXPECT_EQ(s.DCinemaReelNumber, u"1");
  EXPECT_EQ(s.DCinemaLanguage, u"en");
  EXPECT_EQ(s.DCinemaFontId, u"theFontId");
  EXPECT_EQ(s.DCinemaFontUri, getDefaultSettings().DCinemaFontUrn);
  EXPECT_EQ(s.DCinemaFontColor, 0xFFFFFFFFu);
  EXPECT_EQ(s.DCinemaEffect, u"border");
  EXPECT_EQ(s.DCinemaEffectColor, 0x000000FFu);
  // These have no fresh value.
  EXPECT_EQ(s.DCinemaEditRate, u"48 1");
  EXPECT_EQ(s.DCinemaStartTime, u"01:00:00:00");
  EXPECT_EQ(s.DCinemaFontSize, 36);
}

TYPED_TEST(DCinemaSmpteEditions, ChangesTheRateOfTheConversionForALoneNumber) {
  const auto rateAfter = [](WStringView editRate) {
    GlobalSettings = getDefaultSettings();
    load<TypeParam>(reel<TypeParam>(u"<EditRate>" + WString(editRate) + u"</EditRate>", u""));
    return GlobalSettings.FrameRate;
  };
  EXPECT_EQ(rateAfter(u"24"), 24.0);
  EXPECT_EQ(rateAfter(u"25"), 24.0);
  EXPECT_EQ(rateAfter(u"24 1"), 29.97);
  EXPECT_EQ(rateAfter(u"30"), 29.97);
  EXPECT_EQ(rateAfter(u"24 "), 29.97);
}

TYPED_TEST(DCinemaSmpteEditions, KeepsItsRateUntilItWrites) {
  TypeParam format;
  Subtitle subtitle;
  format.LoadSubtitle(subtitle, reel<TypeParam>(u"<EditRate>48 1</EditRate>", u""), u"");
  EXPECT_EQ(format.frameRate, 24.0);
  format.LoadSubtitle(subtitle, reel<TypeParam>(u"<EditRate>24 1</EditRate>", u""), u"");
  format.frameRate = 30.0;
  format.LoadSubtitle(subtitle, reel<TypeParam>(u"<EditRate>24 1</EditRate>", u""), u"");
  EXPECT_EQ(format.frameRate, 30.0);
  format.WriteText(subtitle, u"");
  EXPECT_EQ(format.frameRate, 24.0);
}

TEST(DCinemaSmpte2007, LooksForPropertiesAmongTheRootsChildren) {
  const SettingsScope settings;
  load<DCinemaSmpte2007>(reel<DCinemaSmpte2007>(u"<head><Language>nl</Language></head>", u"<x><Font ID='deep'/></x>"));
  EXPECT_EQ(GlobalSettings.DCinemaLanguage, u"en");
  EXPECT_EQ(GlobalSettings.DCinemaFontId, u"theFontId");
  load<DCinemaSmpte2007>(reel<DCinemaSmpte2007>(u"<Font ID='child'/>", u"<Font ID='listed'/>"));
  EXPECT_EQ(GlobalSettings.DCinemaFontId, u"child");
}

TEST(DCinemaSmpte2010, LooksForPropertiesAnywhere) {
  const SettingsScope settings;
  load<DCinemaSmpte2010>(reel<DCinemaSmpte2010>(u"<head><Language>nl</Language></head>", u"<x><Font ID='deep'/></x>"));
  EXPECT_EQ(GlobalSettings.DCinemaLanguage, u"nl");
  EXPECT_EQ(GlobalSettings.DCinemaFontId, u"deep");
  load<DCinemaSmpte2010>(reel<DCinemaSmpte2010>(u"<Font ID='child'/>", u"<Font ID='listed'/>"));
  EXPECT_EQ(GlobalSettings.DCinemaFontId, u"listed");
}

constexpr WStringView listedAndDeep =
    u"<Subtitle TimeIn='0:0:1:0' TimeOut='0:0:2:0'><Text>a</Text></Subtitle>"
    u"<Font><Subtitle TimeIn='0:0:3:0' TimeOut='0:0:4:0'><Text>b</Text></Subtitle></Font>";

TEST(DCinemaSmpte2007, ReadsSubtitlesFromAnywhere) {
  const SettingsScope settings;
  EXPECT_EQ(load<DCinemaSmpte2007>(reel<DCinemaSmpte2007>(u"", listedAndDeep)).captions,
            (Captions{{1, 1000, 2000, u"a"}, {2, 3000, 4000, u"b"}}));
}

TEST(DCinemaSmpte2010, PrefersSubtitlesRightInTheList) {
  const SettingsScope settings;
  EXPECT_EQ(load<DCinemaSmpte2010>(reel<DCinemaSmpte2010>(u"", listedAndDeep)).captions,
            (Captions{{1, 1000, 2000, u"a"}}));
}

TYPED_TEST(DCinemaSmpteEditions, ReadsNothingOfBrokenDocuments) {
  for (WStringView text : {u"", u"<SubtitleReel>", u"<SubtitleReel><Subtitle TimeIn='0:0:1:0' TimeOut='0:0:2:0'>",
                           u"<SubtitleReel></Subtitle></SubtitleReel>", u"<SubtitleReel a=b><Subtitle/></SubtitleReel>",
                           u"<!-- <SubtitleReel><Subtitle/></SubtitleReel> -->"}) {
    EXPECT_EQ(load<TypeParam>({text}), (Loaded{{}, 0}));
    EXPECT_FALSE(recognizes<TypeParam>({text}));
  }
}

TYPED_TEST(DCinemaSmpteEditions, CopesWithFontsNestedWithoutEnd) {
  WString rows;
  for (int i = 0; i < 100'000; ++i) rows += u"<Font Italic='yes'>";
  EXPECT_EQ(this->textOf(u"<Text>" + rows + u"</Text>"), u"(none)");
  WString italics;
  for (int i = 0; i < 100'000; ++i) italics += u"<b><x>";
  EXPECT_NE(this->rowsOf(italics).find("<b><x><b>"), std::string::npos);
}

TYPED_TEST(DCinemaSmpteEditions, ReadsBackWhatItWrites) {
  const Captions captions{{1, 1500, 3000, u"{\\an7}one\r\n<i>two</i>"},
                          {2, 4000, 5250, u"<font color=\"Red\">x</font>"}};
  EXPECT_EQ(load<TypeParam>({TypeParam().WriteText(subtitleOf(captions), u"")}).captions, captions);
}

TYPED_TEST(DCinemaSmpteEditions, WritesTheIdentifiersThatItReads) {
  describeReel();
  const WString first = TypeParam().WriteText(subtitleOf({{1, 1000, 2000, u"a"}}), u"");
  GlobalSettings = getDefaultSettings();
  Subtitle subtitle;
  TypeParam().LoadSubtitle(subtitle, {first}, u"");
  WString second = TypeParam().WriteText(subtitle, u"");
  // Of a colour nothing is left, and the position comes from the settings.
  std::string expected = std::regex_replace(wideToString(first), std::regex("FF0A0000|FFC00000"), "FF000000");
  expected = std::regex_replace(expected, std::regex("Vposition=\"10\""), "Vposition=\"8\"");
  EXPECT_EQ(wideToString(second), expected);
}

// --- Recognising

constexpr WStringView subtitle = u"<Subtitle TimeIn='0:0:1:0' TimeOut='0:0:2:0'><Text>a</Text></Subtitle>";

TYPED_TEST(DCinemaSmpteEditions, RecognizesItsEdition) {
  EXPECT_TRUE(recognizes<TypeParam>(reel<TypeParam>(u"", subtitle)));
  EXPECT_TRUE(recognizes<TypeParam>({u"<dcst:SubtitleReel xmlns:dcst='x'>", u"<dcst:Subtitle/></dcst:SubtitleReel>"}));
}

TYPED_TEST(DCinemaSmpteEditions, RecognizesSubtitlesThatAreAllErrors) {
  EXPECT_TRUE(recognizes<TypeParam>(reel<TypeParam>(u"", u"<Subtitle/>")));
}

TYPED_TEST(DCinemaSmpteEditions, RefusesReelsWithoutSubtitles) {
  EXPECT_FALSE(recognizes<TypeParam>(reel<TypeParam>(u"", u"")));
  EXPECT_FALSE(recognizes<TypeParam>(reel<TypeParam>(u"", u"<subtitle/><Subtitles/><!--Subtitle-->")));
  EXPECT_FALSE(recognizes<TypeParam>(reel<TypeParam>(u"", u"<Subtitle>")));
}

TYPED_TEST(DCinemaSmpteEditions, RefusesWhatNamesNoReel) {
  EXPECT_FALSE(recognizes<TypeParam>({u"<Reel>", subtitle, u"</Reel>"}));
  EXPECT_FALSE(recognizes<TypeParam>({u"<x:SubtitleReel>", subtitle, u"</x:SubtitleReel>"}));
  EXPECT_FALSE(recognizes<TypeParam>({u"<dcst:Subtitle", u"Reel>", subtitle, u"</dcst:Subtitle", u"Reel>"}));
  EXPECT_FALSE(recognizes<TypeParam>({}));
}

TYPED_TEST(DCinemaSmpteEditions, RecognizesAReelThatIsNamedAnywhere) {
  EXPECT_TRUE(recognizes<TypeParam>({u"<x><!-- <SubtitleReel --><Subtitle/></x>"}));
  EXPECT_TRUE(recognizes<TypeParam>({u"<SubtitleReels><Subtitle/></SubtitleReels>"}));
}

TEST(DCinemaSmpte2007, LeavesTheOtherEditionAlone) {
  EXPECT_FALSE(recognizes<DCinemaSmpte2007>(reel<DCinemaSmpte2010>(u"", subtitle)));
  EXPECT_FALSE(recognizes<DCinemaSmpte2007>(
      {u"<SubtitleReel><!-- http://www.smpte-ra.org/schemas/428-7/2010/DCST -->", subtitle, u"</SubtitleReel>"}));
}

TEST(DCinemaSmpte2010, LeavesTheOtherEditionAlone) {
  EXPECT_FALSE(recognizes<DCinemaSmpte2010>(reel<DCinemaSmpte2007>(u"", subtitle)));
}

std::string fileOf(const Lines& lines) {
  return std::string(utf8Mark) + wideToString(lines.Joined(u"\n"));
}

TEST(DCinemaSmpte2007, TakesReelsOfNoEdition) {
  const SettingsScope settings;
  EXPECT_EQ(recognized(fileOf({u"<SubtitleReel>", subtitle, u"</SubtitleReel>"})),
            (Recognized{"D-Cine SMPTE 2007", 1}));
  EXPECT_EQ(recognized(fileOf(reel<DCinemaSmpte2007>(u"", subtitle))), (Recognized{"D-Cine SMPTE 2007", 1}));
  EXPECT_EQ(recognized(fileOf(reel<DCinemaSmpte2010>(u"", subtitle))), (Recognized{"D-Cine SMPTE 2010", 1}));
  // A file that names both is neither's.
  EXPECT_NE(recognized(fileOf({u"<SubtitleReel><!-- http://www.smpte-ra.org/schemas/428-7/2010/DCST "
                               u"http://www.smpte-ra.org/schemas/428-7/2007/DCST -->",
                               subtitle, u"</SubtitleReel>"}))
                .format.substr(0, 6),
            "D-Cine");
}

TYPED_TEST(DCinemaSmpteEditions, LeavesTheSettingsAloneWhileItIsTried) {
  EXPECT_TRUE(recognizes<TypeParam>(reel<TypeParam>(u"<Id>urn:uuid:7</Id><EditRate>24</EditRate>", subtitle)));
  EXPECT_EQ(GlobalSettings.DCinemaSubtitleId, u"");
  EXPECT_EQ(GlobalSettings.DCinemaEffect, u"");
  EXPECT_EQ(GlobalSettings.FrameRate, 29.97);
}

// --- Conversions in a row

/// Converts a file of these bytes and gives the bytes of the output.
std::string converted(std::string_view bytes, WStringView target) {
  const auto folder = std::filesystem::temp_directory_path() / ("mova-dcinema-" + std::to_string(getpid()));
  std::filesystem::create_directory(folder);
  const auto input = folder / "input.txt";
  std::ofstream(input, std::ios::binary) << bytes;
  EXPECT_EQ(movaConvertCC(input.u16string(), WString(target), (folder / "output").u16string(), nullptr), 0u);
  std::string output;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path() == input) continue;
    std::ifstream stream(entry.path(), std::ios::binary);
    output.assign(std::istreambuf_iterator<char>(stream), {});
  }
  std::filesystem::remove_all(folder);
  return output;
}

std::string propertyOf(const std::string& file, const std::string& name) {
  const size_t begin = file.find("<dcst:" + name + ">") + name.size() + 7;
  return file.substr(begin, file.find('<', begin) - begin);
}

const std::string subRipFile = std::string(utf8Mark) + "1\n00:00:01,000 --> 00:00:02,000\na\n";

TYPED_TEST(DCinemaSmpteEditions, LeavesNothingForTheNextConversion) {
  const std::string file = fileOf(reel<TypeParam>(
      u"<Id>urn:uuid:7</Id><ReelNumber>3</ReelNumber><EditRate>24</EditRate><TimeCodeRate>24</TimeCodeRate>",
      subtitle));
  const WString name = TypeParam().Name();

  // What the reel states holds for the rest of its own conversion.
  const std::string copy = converted(file, name);
  EXPECT_EQ(propertyOf(copy, "Id"), "urn:uuid:7");
  EXPECT_EQ(propertyOf(copy, "ReelNumber"), "3");
  EXPECT_EQ(propertyOf(copy, "EditRate"), "24");
  EXPECT_EQ(GlobalSettings.DCinemaSubtitleId, u"urn:uuid:7");
  EXPECT_EQ(GlobalSettings.FrameRate, 24.0);

  const std::string next = converted(subRipFile, name);
  EXPECT_EQ(propertyOf(next, "Id").size(), 9u + 36u);
  EXPECT_EQ(propertyOf(next, "ReelNumber"), "1");
  EXPECT_EQ(propertyOf(next, "EditRate"), "25 1");
  EXPECT_EQ(GlobalSettings.FrameRate, 29.97);

  const std::string last = converted(subRipFile, name);
  EXPECT_NE(propertyOf(last, "Id"), propertyOf(next, "Id"));
}

TYPED_TEST(DCinemaSmpteEditions, LetsARateOfTheReelDecideForTheTarget) {
  // No rates are stated but an edit rate of 25 alone, which sets the rate of the conversion to 24.
  const std::string file = fileOf(reel<TypeParam>(u"<EditRate>25</EditRate>", subtitle));
  EXPECT_EQ(propertyOf(converted(file, TypeParam().Name()), "EditRate"), "24 1");
}

}  // namespace
}  // namespace mova
