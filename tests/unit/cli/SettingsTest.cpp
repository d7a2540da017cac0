#include <gtest/gtest.h>

#include "cli/Failure.h"
#include "cli/Settings.h"

namespace mova::cli {
namespace {

MOVASettings with(std::string_view assignment) {
  MOVASettings settings = getDefaultSettings();
  assignField(settings, assignment);
  return settings;
}

bool isRefused(std::string_view assignment) {
  try {
    with(assignment);
    return false;
  } catch (const Failure& failure) {
    return failure.status == kUsage;
  }
}

TEST(CliSettings, EveryFieldIsSetByItsName) {
  EXPECT_EQ(with("Reserved0=false").Reserved0, false);
  EXPECT_EQ(with("FrameRate=23.976").FrameRate, 23.976);
  EXPECT_EQ(with("DropFrame=true").DropFrame, true);
  EXPECT_EQ(with("SsaFontName=Verdana").SsaFontName, u"Verdana");
  EXPECT_EQ(with("SsaFontSize=36.5").SsaFontSize, 36.5);
  EXPECT_EQ(with("SsaFontColor=0x80FF0000").SsaFontColor, 0x80FF0000u);
  EXPECT_EQ(with("SsaOutline=4").SsaOutline, 4);
  EXPECT_EQ(with("SsaShadow=-3").SsaShadow, -3);
  EXPECT_EQ(with("SsaOpaqueBox=1").SsaOpaqueBox, true);
  EXPECT_EQ(with("DCinemaFontFile=a.ttf").DCinemaFontFile, u"a.ttf");
  EXPECT_EQ(with("DCinemaFontUrn=urn:x").DCinemaFontUrn, u"urn:x");
  EXPECT_EQ(with("DCinemaFontSize=40").DCinemaFontSize, 40);
  EXPECT_EQ(with("DCinemaBottomMargin=10").DCinemaBottomMargin, 10);
  EXPECT_EQ(with("Reserved1=1.5").Reserved1, 1.5);
  EXPECT_EQ(with("Reserved2=2").Reserved2, 2);
  EXPECT_EQ(with("Reserved3=3").Reserved3, 3);
  EXPECT_EQ(with("DCinemaSubtitleId=urn:uuid:1").DCinemaSubtitleId, u"urn:uuid:1");
  EXPECT_EQ(with("DCinemaMovieTitle=Der Bär").DCinemaMovieTitle, u"Der Bär");
  EXPECT_EQ(with("DCinemaReelNumber=2").DCinemaReelNumber, u"2");
  EXPECT_EQ(with("DCinemaIssueDate=2024-05-31T12:00:00").DCinemaIssueDate, u"2024-05-31T12:00:00");
  EXPECT_EQ(with("DCinemaLanguage=de").DCinemaLanguage, u"de");
  EXPECT_EQ(with("DCinemaEditRate=25 1").DCinemaEditRate, u"25 1");
  EXPECT_EQ(with("DCinemaTimeCodeRate=25").DCinemaTimeCodeRate, u"25");
  EXPECT_EQ(with("DCinemaStartTime=00:00:10:00").DCinemaStartTime, u"00:00:10:00");
  EXPECT_EQ(with("DCinemaFontId=f").DCinemaFontId, u"f");
  EXPECT_EQ(with("DCinemaFontUri=u").DCinemaFontUri, u"u");
  EXPECT_EQ(with("DCinemaFontColor=1").DCinemaFontColor, 1u);
  EXPECT_EQ(with("DCinemaEffect=shadow").DCinemaEffect, u"shadow");
  EXPECT_EQ(with("DCinemaEffectColor=4294967295").DCinemaEffectColor, 0xFFFFFFFFu);
  EXPECT_EQ(with("Reserved4=4").Reserved4, 4);
  EXPECT_EQ(with("Reserved5=6").Reserved5, 6);
  EXPECT_EQ(with("Reserved6=6").Reserved6, 6);
  EXPECT_EQ(with("Reserved7=0").Reserved7, false);
  EXPECT_EQ(with("Reserved8=8").Reserved8, 8);
  EXPECT_EQ(with("Reserved9=nine").Reserved9, u"nine");
  EXPECT_EQ(with("FcpFontSize=24").FcpFontSize, 24);
  EXPECT_EQ(with("FcpFontName=Mono").FcpFontName, u"Mono");
  EXPECT_EQ(with("Reserved10=ten").Reserved10, u"ten");
  EXPECT_EQ(with("CodePage=1251").CodePage, 1251);
}

TEST(CliSettings, TheCaseOfAFieldIsIgnored) {
  EXPECT_EQ(with("framerate=25").FrameRate, 25);
}

TEST(CliSettings, AValueMayBeEmptyOrHoldEqualsSigns) {
  EXPECT_EQ(with("SsaFontName=").SsaFontName, u"");
  EXPECT_EQ(with("SsaFontName=a=b=").SsaFontName, u"a=b=");
}

TEST(CliSettings, SwitchesAreWordsOrDigits) {
  EXPECT_TRUE(with("DropFrame=TRUE").DropFrame);
  EXPECT_TRUE(with("DropFrame=1").DropFrame);
  EXPECT_FALSE(with("Reserved0=False").Reserved0);
  EXPECT_FALSE(with("Reserved0=0").Reserved0);
  EXPECT_TRUE(isRefused("DropFrame=2"));
  EXPECT_TRUE(isRefused("DropFrame="));
  EXPECT_TRUE(isRefused("DropFrame=on"));
}

TEST(CliSettings, WholeNumbersHave32Bits) {
  EXPECT_EQ(with("SsaOutline=2147483647").SsaOutline, 2147483647);
  EXPECT_EQ(with("SsaOutline=-2147483648").SsaOutline, -2147483647 - 1);
  EXPECT_TRUE(isRefused("SsaOutline=2147483648"));
  EXPECT_TRUE(isRefused("SsaOutline=-2147483649"));
  EXPECT_TRUE(isRefused("SsaOutline=1.0"));
  EXPECT_TRUE(isRefused("SsaOutline=1 "));
  EXPECT_TRUE(isRefused("SsaOutline="));
}

TEST(CliSettings, ColoursAreHexadecimalOrDecimal) {
  EXPECT_EQ(with("SsaFontColor=0xffffffff").SsaFontColor, 0xFFFFFFFFu);
  EXPECT_EQ(with("SsaFontColor=0XFF").SsaFontColor, 0xFFu);
  EXPECT_EQ(with("SsaFontColor=255").SsaFontColor, 255u);
  EXPECT_TRUE(isRefused("SsaFontColor=FF"));
  EXPECT_TRUE(isRefused("SsaFontColor=0x"));
  EXPECT_TRUE(isRefused("SsaFontColor=0x100000000"));
  EXPECT_TRUE(isRefused("SsaFontColor=4294967296"));
  EXPECT_TRUE(isRefused("SsaFontColor=-1"));
  EXPECT_TRUE(isRefused("SsaFontColor=#FF0000"));
}

TEST(CliSettings, NumbersAreFinite) {
  EXPECT_EQ(with("SsaFontSize=1e2").SsaFontSize, 100);
  EXPECT_EQ(with("SsaFontSize=-0.5").SsaFontSize, -0.5);
  EXPECT_TRUE(isRefused("SsaFontSize=inf"));
  EXPECT_TRUE(isRefused("SsaFontSize=nan"));
  EXPECT_TRUE(isRefused("SsaFontSize=1e400"));
  EXPECT_TRUE(isRefused("SsaFontSize=12pt"));
}

TEST(CliSettings, AFrameRateIsAboveZero) {
  EXPECT_EQ(with("FrameRate=0.001").FrameRate, 0.001);
  EXPECT_TRUE(isRefused("FrameRate=0"));
  EXPECT_TRUE(isRefused("FrameRate=-0.001"));
}

TEST(CliSettings, ACodePageIsKnown) {
  for (const char* page :
       {"0", "5", "437", "949", "950", "1250", "1258", "28591", "28601", "28603", "28605", "65001"}) {
    EXPECT_FALSE(isRefused(std::string("CodePage=") + page)) << page;
  }
  for (const char* page : {"-1", "1", "438", "951", "1249", "1259", "28590", "28602", "28606", "65000"}) {
    EXPECT_TRUE(isRefused(std::string("CodePage=") + page)) << page;
  }
}

TEST(CliSettings, ARefusalLeavesTheOtherFields) {
  MOVASettings settings = getDefaultSettings();
  EXPECT_THROW(assignField(settings, "SsaFontName"), Failure);
  EXPECT_EQ(settings.SsaFontName, u"Arial");
}

TEST(CliSettings, TheDescriptionNamesEveryFieldThatIsRead) {
  const std::string text = describeFields();
  EXPECT_NE(text.find("  SsaOpaqueBox         Sub Station Alpha: opaque box instead of an outline; default false\n"),
            std::string::npos);
  EXPECT_NE(text.find("  DCinemaEditRate      D-Cinema: edit rate, as \"25 1\"; default empty\n"), std::string::npos);
  EXPECT_EQ(text.find("Reserved1 "), std::string::npos);
}

}  // namespace
}  // namespace mova::cli
