#include <gtest/gtest.h>

#include "formats/script/SsaStyle.h"

namespace mova {
namespace {

const WString v4PlusFormat =
    u"Format: Name, Fontname, Fontsize, PrimaryColour, SecondaryColour, OutlineColour, BackColour, Bold, Italic, "
    u"Underline, StrikeOut, ScaleX, ScaleY, Spacing, Angle, BorderStyle, Outline, Shadow, Alignment, MarginL, "
    u"MarginR, MarginV, Encoding\n";

class SsaStyleTest : public testing::Test {
 protected:
  void SetUp() override { GlobalSettings = getDefaultSettings(); }
  void TearDown() override { GlobalSettings = MOVASettings(); }
};

class GetSsaStyle : public SsaStyleTest {};
class DefaultSsaStyleLine : public SsaStyleTest {};
class StyleNamesFromHeader : public SsaStyleTest {};

// --- The defaults

TEST_F(SsaStyleTest, TakesItsDefaultsFromTheSettings) {
  GlobalSettings.SsaFontName = u"Tahoma";
  GlobalSettings.SsaFontSize = 24.9;
  GlobalSettings.SsaFontColor = 0x80112233;
  GlobalSettings.SsaOutline = 5;
  GlobalSettings.SsaShadow = 6;
  GlobalSettings.SsaOpaqueBox = true;
  const SsaStyle style;
  EXPECT_EQ(style.Name, u"");
  EXPECT_EQ(style.FontName, u"Tahoma");
  EXPECT_EQ(style.FontSize, 24);
  EXPECT_EQ(style.Primary, (Color{0x80, 0x11, 0x22, 0x33, true}));
  EXPECT_EQ(style.OutlineWidth, 5);
  EXPECT_EQ(style.ShadowWidth, 6);
  EXPECT_EQ(style.BorderStyle, u"3");
}

TEST_F(SsaStyleTest, HasFixedDefaultsBesides) {
  const SsaStyle style;
  EXPECT_EQ(style.Secondary, colorYellow);
  EXPECT_EQ(style.Tertiary, (Color{0, 0, 0, 0, true}));
  EXPECT_EQ(style.OutlineColor, colorBlack);
  EXPECT_EQ(style.Background, colorBlack);
  EXPECT_FALSE(style.Bold || style.Italic || style.Underline);
  EXPECT_EQ(style.Alignment, u"2");
  EXPECT_EQ(style.MarginLeft, 10);
  EXPECT_EQ(style.MarginRight, 10);
  EXPECT_EQ(style.MarginVertical, 10);
  EXPECT_EQ(style.BorderStyle, u"1");
  EXPECT_EQ(style.RawLine, u"");
  EXPECT_FALSE(style.LoadedFromHeader);
}

TEST_F(DefaultSsaStyleLine, IsInTheLayoutOfTheAdvancedScript) {
  EXPECT_EQ(defaultSsaStyleLine(),
            u"Style: Default,Arial,20,&H00FFFFFF,&H0300FFFF,&H00000000,&H02000000,0,0,0,0,100,100,0,0,1,2,1,2,10,10,10,"
            u"1");
}

TEST_F(DefaultSsaStyleLine, HasTheValuesOfTheSettings) {
  GlobalSettings.SsaFontName = u"Tahoma";
  GlobalSettings.SsaFontSize = -1.5;
  GlobalSettings.SsaFontColor = 0xFF0A2233;
  GlobalSettings.SsaOutline = -3;
  GlobalSettings.SsaShadow = 0;
  GlobalSettings.SsaOpaqueBox = true;
  // A colour below 16 is padded with a blank.
  EXPECT_EQ(defaultSsaStyleLine(),
            u"Style: Default,Tahoma,-1,&H003322 A,&H0300FFFF,&H00000000,&H02000000,0,0,0,0,100,100,0,0,3,-3,0,2,10,10,"
            u"10,1");
}

// --- The names

TEST_F(StyleNamesFromHeader, AreInOrderAndRepeated) {
  EXPECT_EQ(styleNamesFromHeader(u"[V4 Styles]\nStyle: B,1\r\nstyle:A,2\n\nSTYLE:  B b ,3"),
            (std::vector<WString>{u"B", u"A", u"B b"}));
}

TEST_F(StyleNamesFromHeader, NeedTheWordAtTheStartOfTheLineAndAComma) {
  EXPECT_EQ(styleNamesFromHeader(u" Style: Indented,1\nStyle: NoComma\nStyle : Blank,1\nx,Style: y,z"),
            std::vector<WString>());
}

TEST_F(StyleNamesFromHeader, MayBeEmpty) {
  EXPECT_EQ(styleNamesFromHeader(u"Style:,Arial"), std::vector<WString>{u""});
}

TEST_F(StyleNamesFromHeader, OfAnEmptyHeaderAreThatOfTheDefaultLine) {
  EXPECT_EQ(styleNamesFromHeader(u""), std::vector<WString>{u"Default"});
}

// --- The search

TEST_F(GetSsaStyle, GivesADefaultStyleForTheOnlyNameOfAHeader) {
  const SsaStyle style = getSsaStyle(u"Default", v4PlusFormat + u"Style: Default,Impact,33,255,255,255,255,1,1,1\n");
  EXPECT_EQ(style.Name, u"Default");
  EXPECT_EQ(style.FontName, u"Arial");
  EXPECT_EQ(style.FontSize, 20);
  EXPECT_FALSE(style.Bold);
  EXPECT_EQ(style.RawLine, u"");
  EXPECT_FALSE(style.LoadedFromHeader);
}

TEST_F(GetSsaStyle, StopsAtALineWithAnotherNameThanTheRequestedOne) {
  const WString header = v4PlusFormat + u"Style: One,Impact,33\nStyle: Two,Georgia,44\nStyle: Three,Verdana,55\n";
  const SsaStyle one = getSsaStyle(u"One", header);
  EXPECT_EQ(one.Name, u"Two");
  EXPECT_EQ(one.FontSize, 44);
  EXPECT_EQ(one.RawLine, u"Style: Two,Georgia,44");
  EXPECT_TRUE(one.LoadedFromHeader);
  EXPECT_EQ(getSsaStyle(u"Two", header).Name, u"One");
  EXPECT_EQ(getSsaStyle(u"Three", header).Name, u"One");
  EXPECT_EQ(getSsaStyle(u"one", header).Name, u"One");  // The case of a name counts.
}

TEST_F(GetSsaStyle, PassesOverRepeatedLinesOfTheRequestedName) {
  const WString header = v4PlusFormat + u"Style: A,F,1\nStyle: A,F,2\nStyle: B,F,3\nStyle: A,F,4\n";
  EXPECT_EQ(getSsaStyle(u"A", header).FontSize, 3);
  EXPECT_EQ(getSsaStyle(u"B", header).FontSize, 1);
}

TEST_F(GetSsaStyle, KeepsWhatEarlierLinesSaidWhereALineSaysNothing) {
  const WString header = v4PlusFormat +
                         u"Style: A,Georgia,36,&H0000FFFF,255,&H00112233,&H80000000,1,1,1,0,100,100,0,0,3,4,5,8,11,12,"
                         u"13,1\n"
                         u"Style: B,,x\n";
  const SsaStyle style = getSsaStyle(u"A", header);
  EXPECT_EQ(style.Name, u"B");
  EXPECT_EQ(style.FontName, u"");
  EXPECT_EQ(style.FontSize, 36);
  EXPECT_TRUE(style.Bold && style.Italic && style.Underline);
  EXPECT_EQ(style.BorderStyle, u"3");
  EXPECT_EQ(style.OutlineWidth, 4);
  EXPECT_EQ(style.ShadowWidth, 5);
  EXPECT_EQ(style.Alignment, u"8");
  EXPECT_EQ(style.MarginLeft, 11);
  EXPECT_EQ(style.MarginRight, 12);
  EXPECT_EQ(style.MarginVertical, 13);
}

TEST_F(GetSsaStyle, NeverEndsForAnEmptyRequest) {
  const SsaStyle style = getSsaStyle(u"", v4PlusFormat + u"Style: A,Georgia,36\nStyle: B,Georgia,36\n");
  EXPECT_EQ(style.Name, u"");
  EXPECT_EQ(style.FontSize, 20);
  EXPECT_FALSE(style.LoadedFromHeader);
}

TEST_F(GetSsaStyle, EndsAtALineWhoseNameIsEmpty) {
  const SsaStyle style = getSsaStyle(u"Default", v4PlusFormat + u"Style:,Impact,31\nStyle: Default,Arial,20\n");
  EXPECT_EQ(style.Name, u"");
  EXPECT_EQ(style.FontName, u"impact");
  EXPECT_EQ(style.FontSize, 31);
}

TEST_F(GetSsaStyle, GivesADefaultStyleForAnEmptyHeader) {
  EXPECT_EQ(getSsaStyle(u"x", u"").Name, u"x");
  EXPECT_FALSE(getSsaStyle(u"x", u"").LoadedFromHeader);
}

TEST_F(GetSsaStyle, ReadsNothingWithoutAFormatLine) {
  const SsaStyle style = getSsaStyle(u"x", u"Style: A,Georgia,36,255\nStyle: B,Georgia,37,255\n");
  EXPECT_EQ(style.Name, u"x");
  EXPECT_EQ(style.FontSize, 20);
  EXPECT_EQ(style.Primary, colorWhite);
}

TEST_F(GetSsaStyle, ReadsNothingAfterAFormatLineWithoutColumns) {
  for (const char16_t* format : {u"Format:", u"Format:               ", u"Format: ,,,,,,,,", u"format:Name,Other"}) {
    const SsaStyle style = getSsaStyle(u"x", WString(format) + u"\nStyle: A,36,255\n");
    EXPECT_EQ(style.Name, u"x");
    EXPECT_FALSE(style.LoadedFromHeader);
  }
}

TEST_F(GetSsaStyle, FindsColumnsByTheNamesOfTheFormatLine) {
  const SsaStyle style = getSsaStyle(u"x", u"FORMAT: Bold ,FONTSIZE,  name\nStyle: 1,36, A b ,7\n");
  EXPECT_EQ(style.Name, u"A b");
  EXPECT_EQ(style.FontSize, 36);
  EXPECT_TRUE(style.Bold);
}

TEST_F(GetSsaStyle, SkipsOneUnitBehindTheColonOfAFormatLine) {
  const SsaStyle style = getSsaStyle(u"x", u"Format:Fontsize, Name\nStyle: 36,A name\n");
  EXPECT_EQ(style.Name, u"A name");
  EXPECT_EQ(style.FontSize, 20);
}

TEST_F(GetSsaStyle, IgnoresShortLines) {
  // Ten units are too few for both kinds of line.
  EXPECT_EQ(getSsaStyle(u"x", u"Format: Na\nFormat: Name\nStyle: A,B\nStyle: Cc,B\n").Name, u"Cc");
}

TEST_F(GetSsaStyle, CutsStyleLinesAtTheirSixthUnitWhereverTheColonStands) {
  const WString format = u"Format: Name, Fontsize\n";
  EXPECT_EQ(getSsaStyle(u"x", format + u"  Style: Zeta,34\n").Name, u"e: Zeta");
  EXPECT_EQ(getSsaStyle(u"x", format + u"Style : Beta,34\n").Name, u": Beta");
  EXPECT_EQ(getSsaStyle(u"x", format + u"S t y l e : Gamma,34\n").Name, u"l e : Gamma");
}

TEST_F(GetSsaStyle, ReadsNumbersOfDigitsOnly) {
  const WString format = u"Format: Name, Fontsize, Outline, Shadow, MarginL, MarginR, MarginV\n";
  const SsaStyle style = getSsaStyle(u"x", format + u"Style: A,20.5,-1, 007 ,12a,99999999999,\n");
  EXPECT_EQ(style.FontSize, 20);
  EXPECT_EQ(style.OutlineWidth, 2);
  EXPECT_EQ(style.ShadowWidth, 7);
  EXPECT_EQ(style.MarginLeft, 10);
  EXPECT_EQ(style.MarginRight, 2147483647);
  EXPECT_EQ(style.MarginVertical, 10);  // The comma at the end has no piece behind it.
  // A piece that is there but empty has no unit that is not a digit.
  EXPECT_EQ(getSsaStyle(u"x", format + u"Style: A name,,3\n").FontSize, 0);
}

TEST_F(GetSsaStyle, TakesMinusOneForNo) {
  const WString format = u"Format: Name, Bold, Italic, Underline\n";
  const SsaStyle no = getSsaStyle(u"x", format + u"Style: Aa,-1,-1,-1\n");
  EXPECT_TRUE(no.LoadedFromHeader);
  EXPECT_FALSE(no.Bold || no.Italic || no.Underline);
  const SsaStyle yes = getSsaStyle(u"x", format + u"Style: Aa,1, 1 ,1\n");
  EXPECT_TRUE(yes.Bold && yes.Italic && yes.Underline);
  const SsaStyle other = getSsaStyle(u"x", format + u"Style: Aa,01,true,2\n");
  EXPECT_FALSE(other.Bold || other.Italic || other.Underline);
}

TEST_F(GetSsaStyle, LowersFontNamesButNotStyleNames) {
  const SsaStyle style = getSsaStyle(u"x", u"Format: Name, Fontname\nStyle: ABC, Times New ROMAN \n");
  EXPECT_EQ(style.Name, u"ABC");
  EXPECT_EQ(style.FontName, u"times new roman");
}

TEST_F(GetSsaStyle, HasAFallbackForEachColour) {
  const WString format = u"Format: Name, PrimaryColour, SecondaryColour, TertiaryColour, OutlineColour, BackColour\n";
  const SsaStyle none = getSsaStyle(u"x", format + u"Style: A,red,red,red,red,red\n");
  EXPECT_EQ(none.Primary, colorWhite);
  EXPECT_EQ(none.Secondary, colorYellow);
  EXPECT_EQ(none.Tertiary, colorYellow);
  EXPECT_EQ(none.OutlineColor, colorBlack);
  EXPECT_EQ(none.Background, colorBlack);
  const SsaStyle red = getSsaStyle(u"x", format + u"Style: A,255,255,255,255,255\n");
  for (const Color& color : {red.Primary, red.Secondary, red.Tertiary, red.OutlineColor, red.Background}) {
    EXPECT_EQ(color, colorRed);
  }
}

TEST_F(GetSsaStyle, LosesHexadecimalColours) {
  const SsaStyle style = getSsaStyle(u"x", u"Format: Name, PrimaryColour\nStyle: A,&H0000FF00\n");
  EXPECT_EQ(style.Primary, (Color{0, 0, 0, 0, true}));
}

TEST_F(GetSsaStyle, LetsTheFirstColumnHaveAFieldThatTwoClaim) {
  // The second Format line leaves TertiaryColour where the first one put it.
  const SsaStyle style = getSsaStyle(u"x", u"Format: TertiaryColour\nFormat: OutlineColour, Name\nStyle: 255,A\n");
  EXPECT_EQ(style.Name, u"A");
  EXPECT_EQ(style.Tertiary, colorRed);
  EXPECT_EQ(style.OutlineColor, colorBlack);
}

TEST_F(GetSsaStyle, AnswersAnyNumberOfRequestsFromOneReading) {
  WString header = v4PlusFormat;
  for (int i = 0; i < 20000; ++i) header += u"Style: Same,Arial,20\n";
  header += u"Style: Other,Arial,21\n";
  const SsaStyles styles(header);
  for (const WString& name : styleNamesFromHeader(header)) {
    ASSERT_EQ(styles.Find(name).FontSize, name == u"Same" ? 21 : 20);
  }
}

TEST_F(GetSsaStyle, SurvivesALineOfCommas) {
  EXPECT_EQ(getSsaStyle(u"x", v4PlusFormat + u"Style: A" + WString(1000000, u',')).Name, u"A");
}

}  // namespace
}  // namespace mova
