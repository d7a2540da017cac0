#include <gtest/gtest.h>

#include "formats/script/SsaHeader.h"
#include "model/GlobalSettings.h"

namespace mova {
namespace {

WString v4Header(WStringView title, WStringView styleLines) {
  return u"[Script Info]\r\n; This is a Sub Station Alpha v4 script.\r\nTitle: " + WString(title) +
         u"\r\nScriptType: v4.00\r\nCollisions: Normal\r\nPlayDepth: 0\r\n\r\n[V4 Styles]\r\nFormat: Name, Fontname, "
         u"Fontsize, PrimaryColour, SecondaryColour, TertiaryColour, BackColour, Bold, Italic, BorderStyle, Outline, "
         u"Shadow, Alignment, MarginL, MarginR, MarginV, AlphaLevel, Encoding\r\n" +
         WString(styleLines) +
         u"\r\n\r\n[Events]\r\nFormat: Marked, Start, End, Style, Name, MarginL, MarginR, MarginV, Effect, Text";
}

WString v4PlusHeader(WStringView styleLines) {
  return u"[Script Info]\nScriptType: v4.00+\n\n[V4+ Styles]\nFormat: Name, Fontname, Fontsize, PrimaryColour, "
         u"SecondaryColour, OutlineColour, BackColour, Bold, Italic, Underline, StrikeOut, ScaleX, ScaleY, Spacing, "
         u"Angle, BorderStyle, Outline, Shadow, Alignment, MarginL, MarginR, MarginV, Encoding\n" +
         WString(styleLines) + u"\n[Events]\n";
}

/// What stands between `start` and the next comma.
WString fieldBehind(const WString& text, const WString& start) {
  const size_t begin = text.find(start);
  if (begin == WString::npos) return u"missing";
  return text.substr(begin + start.size(), text.find(u',', begin + start.size()) - begin - start.size());
}

class SsaHeader : public testing::Test {
 protected:
  void SetUp() override { GlobalSettings = getDefaultSettings(); }
  void TearDown() override { GlobalSettings = MOVASettings(); }
};

class DefaultSsaHeader : public SsaHeader {};
class AdvancedHeaderToSsaHeader : public SsaHeader {};
class TimedTextHeaderToSsaHeader : public SsaHeader {};

TEST_F(DefaultSsaHeader, HasTheStyleOfTheSettings) {
  EXPECT_EQ(
      defaultSsaHeader(u"My film"),
      v4Header(u"My film", u"Style: Default,Arial,20,16777215,65535,65535,-2147483640,-1,0,1,2,1,2,10,10,10,0,1"));
  GlobalSettings.SsaFontName = u"Tahoma";
  GlobalSettings.SsaFontSize = 31.99;
  GlobalSettings.SsaFontColor = 0x80010203;
  GlobalSettings.SsaOutline = 7;
  GlobalSettings.SsaShadow = -8;
  GlobalSettings.SsaOpaqueBox = true;  // does not reach this line
  EXPECT_EQ(defaultSsaHeader(u""),
            v4Header(u"", u"Style: Default,Tahoma,31,197121,65535,65535,-2147483640,-1,0,1,7,-8,2,10,10,10,0,1"));
}

TEST_F(DefaultSsaHeader, EndsTextsAtAZeroUnit) {
  GlobalSettings.SsaFontName = WString(u"Ari\0al", 6);
  EXPECT_EQ(defaultSsaHeader(WStringView(u"a\0b", 3)),
            v4Header(u"a", u"Style: Default,Ari,20,16777215,65535,65535,-2147483640,-1,0,1,2,1,2,10,10,10,0,1"));
}

// --- From an advanced script

TEST_F(AdvancedHeaderToSsaHeader, GivesTheOnlyStyleItsDefaults) {
  const WString header =
      v4PlusHeader(u"Style: Default,Impact,33,255,255,255,255,1,1,1,0,100,100,0,0,3,4,5,8,11,12,13,1\n");
  EXPECT_EQ(advancedHeaderToSsaHeader(header, u"t"),
            v4Header(u"t", u"Style: Default,Arial,20,-1,-256,-16777216,-16777216,-1,0,1,2,1,2,10,10,10,0,1\n"));
}

TEST_F(AdvancedHeaderToSsaHeader, GivesEachNameTheStyleOfAnotherLine) {
  // Not the style that bears the name: the first one that bears another. The line has that style's name, too.
  const WString header = v4PlusHeader(
      u"Style: One,Impact,33,255,255,65280,16711680,1,1,0,0,100,100,0,0,3,4,5,8,11,12,13,1\n"
      u"Style: Two,Georgia,44,65535,255,0,0,-1,-1,0,0,100,100,0,0,1,6,7,4,14,15,16,1\n"
      u"Style: Three,Verdana,55,0,0,0,0,0,0,0,0,100,100,0,0,1,0,0,1,0,0,0,1\n");
  EXPECT_EQ(advancedHeaderToSsaHeader(header, u"t"),
            v4Header(u"t",
                     u"Style: Two,georgia,44,-256,-65536,-16777216,-16777216,-1,0,1,6,7,9,14,15,16,0,1\n"
                     u"Style: One,impact,33,-65536,-65536,-16711936,-16776961,1,1,3,4,5,6,11,12,13,0,1\n"
                     u"Style: One,impact,33,-65536,-65536,-16711936,-16776961,1,1,3,4,5,6,11,12,13,0,1\n"));
}

TEST_F(AdvancedHeaderToSsaHeader, TranslatesAlignments) {
  const auto translated = [](WStringView alignment) {
    const WString header =
        u"[V4+ Styles]\nFormat: Name, Alignment\nStyle: First," + WString(alignment) + u"\nStyle: Second,1\n";
    return fieldBehind(advancedHeaderToSsaHeader(header, u"t"),
                       u"Style: First,Arial,20,-1,-256,-16777216,-16777216,-1,0,1,2,1,");
  };
  EXPECT_EQ(translated(u"1"), u"1");
  EXPECT_EQ(translated(u"2"), u"2");
  EXPECT_EQ(translated(u"3"), u"3");
  EXPECT_EQ(translated(u"4"), u"9");
  EXPECT_EQ(translated(u"5"), u"10");
  EXPECT_EQ(translated(u"6"), u"11");
  EXPECT_EQ(translated(u" 7 "), u"5");
  EXPECT_EQ(translated(u"8"), u"6");
  EXPECT_EQ(translated(u"9"), u"7");
  for (WStringView other : {u"0", u"10", u"07", u"-1", u"x", u":", u" "}) EXPECT_EQ(translated(other), u"2");
}

TEST_F(AdvancedHeaderToSsaHeader, TurnsTheMeaningOfBoldAround) {
  const WString header = u"[V4+ Styles]\nFormat: Name, Bold, Italic\nStyle: Aa,1,1\nStyle: Bb,-1,-1\n";
  EXPECT_EQ(advancedHeaderToSsaHeader(header, u"t"),
            v4Header(u"t",
                     u"Style: Bb,Arial,20,-1,-256,-16777216,-16777216,-1,0,1,2,1,2,10,10,10,0,1\n"
                     u"Style: Aa,Arial,20,-1,-256,-16777216,-16777216,1,1,1,2,1,2,10,10,10,0,1\n"));
}

TEST_F(AdvancedHeaderToSsaHeader, TakesTheStyleOfTheSettingsWhereThereIsNone) {
  EXPECT_EQ(advancedHeaderToSsaHeader(v4PlusHeader(u"Style: NoComma\n"), u"t"), defaultSsaHeader(u"t"));
}

TEST_F(AdvancedHeaderToSsaHeader, EndsTextsAtAZeroUnit) {
  const WString zero(1, u'\0');
  const WString header = u"Format: Name, Fontname\nStyle: A" + zero + u"b,F" + zero + u"g\nStyle: Cc,Arial\n";
  EXPECT_EQ(advancedHeaderToSsaHeader(header, u"t"),
            v4Header(u"t",
                     u"Style: Cc,arial,20,-1,-256,-16777216,-16777216,-1,0,1,2,1,2,10,10,10,0,1\n"
                     u"Style: A,f,20,-1,-256,-16777216,-16777216,-1,0,1,2,1,2,10,10,10,0,1\n"));
}

// --- From Timed Text

WString styledDocument(WStringView styles) {
  return u"<?xml version=\"1.0\"?><tt xmlns=\"http://www.w3.org/ns/ttml\" "
         u"xmlns:tts=\"http://www.w3.org/ns/ttml#style\"><head><styling>" +
         WString(styles) + u"</styling></head><body><div/></body></tt>";
}

TEST_F(TimedTextHeaderToSsaHeader, TakesNameFontSizeAndColour) {
  const WString document = styledDocument(
      u"<style id=\"s0\" tts:fontFamily=\"sansSerif\" tts:fontSize=\"16px\" tts:color=\" rgb(1,2,3) \" "
      u"tts:fontWeight=\"bold\" tts:fontStyle=\"italic\"/>");
  EXPECT_EQ(timedTextHeaderToSsaHeader(document, u"t"),
            v4Header(u"t", u"Style: s0,sansSerif,16,-16711165,65535,65535,-2147483640,-1,0,1,3,0,2,10,10,10,0,1\n"));
}

TEST_F(TimedTextHeaderToSsaHeader, HasDefaults) {
  // Six digits read as zero, the default "#ffffff" too.
  EXPECT_EQ(timedTextHeaderToSsaHeader(styledDocument(u"<style/>"), u"t"),
            v4Header(u"t", u"Style: ,Arial,20,0,65535,65535,-2147483640,-1,0,1,3,0,2,10,10,10,0,1\n"));
}

TEST_F(TimedTextHeaderToSsaHeader, PrefersTheXmlId) {
  EXPECT_EQ(timedTextHeaderToSsaHeader(styledDocument(u"<style id=\"a\" xml:id=\"b\"/>"), u"t"),
            v4Header(u"t", u"Style: b,Arial,20,0,65535,65535,-2147483640,-1,0,1,3,0,2,10,10,10,0,1\n"));
}

TEST_F(TimedTextHeaderToSsaHeader, ReadsColours) {
  const auto colour = [](WStringView text) {
    const WString document = styledDocument(u"<style id=\"s\" tts:color=\"" + WString(text) + u"\"/>");
    return fieldBehind(timedTextHeaderToSsaHeader(document, u"t"), u"Style: s,Arial,20,");
  };
  EXPECT_EQ(colour(u"rgb(255,0,0)"), u"-65536");
  EXPECT_EQ(colour(u"rgb(255,,128,,64"), u"-32704");  // Empty parts are dropped, the bracket is not needed.
  EXPECT_EQ(colour(u"rgb( 1, 2, 3, 4)))"), u"-16711165");
  EXPECT_EQ(colour(u"rgb(256,257,-1)"), u"-16776705");  // The low byte of each counts.
  EXPECT_EQ(colour(u"rgb(1,2)"), u"-1");
  EXPECT_EQ(colour(u"rgb("), u"-1");
  EXPECT_EQ(colour(u"#ff0000"), u"0");
  EXPECT_EQ(colour(u"#99999999"), u"83886080");  // The decimal value's top byte, as alpha.
  EXPECT_EQ(colour(u"red"), u"0");               // "ed" begins with a hexadecimal digit.
  EXPECT_EQ(colour(u"white"), u"-1");            // "hite" does not, which is a failure.
  EXPECT_EQ(colour(u""), u"-1");
}

TEST_F(TimedTextHeaderToSsaHeader, ReadsSizesOfDigitsOnly) {
  const auto size = [](WStringView text) {
    const WString document = styledDocument(u"<style id=\"s\" tts:fontSize=\"" + WString(text) + u"\"/>");
    return fieldBehind(timedTextHeaderToSsaHeader(document, u"t"), u"Style: s,Arial,");
  };
  EXPECT_EQ(size(u"24"), u"24");
  EXPECT_EQ(size(u"2em"), u"2");
  EXPECT_EQ(size(u"1px2em"), u"12");
  EXPECT_EQ(size(u"1.5em"), u"20");
  EXPECT_EQ(size(u"80%"), u"20");
  EXPECT_EQ(size(u" 12"), u"20");
  EXPECT_EQ(size(u"99999999999"), u"2147483647");
  EXPECT_EQ(size(u"px"), u"0");  // Nothing left has no unit that is not a digit.
}

TEST_F(TimedTextHeaderToSsaHeader, TakesAllStylesBelowTheFirstHead) {
  EXPECT_EQ(
      timedTextHeaderToSsaHeader(u"<tt><style id=\"no\"/><x><head><style id=\"a\"><y><style id=\"b\"/></y></style>"
                                 u"</head></x><head><style id=\"c\"/></head></tt>",
                                 u"t"),
      v4Header(u"t",
               u"Style: a,Arial,20,0,65535,65535,-2147483640,-1,0,1,3,0,2,10,10,10,0,1\n"
               u"Style: b,Arial,20,0,65535,65535,-2147483640,-1,0,1,3,0,2,10,10,10,0,1\n"));
}

TEST_F(TimedTextHeaderToSsaHeader, MayHaveNoStyles) {
  EXPECT_EQ(timedTextHeaderToSsaHeader(u"<tt><head/></tt>", u"t"), v4Header(u"t", u""));
  EXPECT_EQ(timedTextHeaderToSsaHeader(u"<head><style/></head>", u"t"), v4Header(u"t", u""));  // not below the root
  EXPECT_EQ(timedTextHeaderToSsaHeader(u"<tt><head><style/>", u"t"), v4Header(u"t", u""));
  EXPECT_EQ(timedTextHeaderToSsaHeader(u"http://www.w3.org/ns/ttml", u"t"), v4Header(u"t", u""));
}

}  // namespace
}  // namespace mova
