#include "formats/xml/TimedText200604.h"
#include "formats/xml/TimedText200604ttml.h"
#include "formats/xml/TimedText200604xml.h"
#include "formats/xml/TimedTextTime.h"
#include "unit/formats/Captions.h"

namespace mova {
namespace {

class TimedText200604Test : public testing::Test {
 protected:
  void SetUp() override {
    GlobalSettings = getDefaultSettings();
    GlobalSettings.FrameRate = 25;
    timedTextTimeFormat = TimedTextTimeFormat::Frames;
  }
  void TearDown() override { timedTextTimeFormat = TimedTextTimeFormat::Frames; }
};

WString documentWith(WStringView paragraphs) {
  WString text = u"<tt xmlns=\"http://www.w3.org/2006/04/ttaf1\"><body><div>";
  text += paragraphs;
  return text += u"</div></body></tt>";
}

Captions captionsIn(WStringView paragraphs) {
  return load<TimedText200604>({documentWith(paragraphs)}).captions;
}

WString textIn(WStringView contents) {
  WString p = u"<p begin='00:00:01.500' end='00:00:02.500'>";
  p += contents;
  p += u"</p>";
  const Captions captions = captionsIn(p);
  return captions.empty() ? u"(none)" : captions[0].text;
}

TEST_F(TimedText200604Test, HasThreeNames) {
  EXPECT_EQ(TimedText200604().Name(), u"TT 2006-04 .dfxp");
  EXPECT_EQ(TimedText200604().Extension(), u".dfxp");
  EXPECT_EQ(TimedText200604ttml().Name(), u"TT 2006-04 .ttml");
  EXPECT_EQ(TimedText200604ttml().Extension(), u".ttml");
  EXPECT_EQ(TimedText200604xml().Name(), u"TT 2006-04 .xml");
  EXPECT_EQ(TimedText200604xml().Extension(), u".xml");
  EXPECT_FALSE(TimedText200604().SupportsStyles());
  EXPECT_TRUE(TimedText200604().ExtraExtensions().empty());
}

TEST_F(TimedText200604Test, RecognisesItsNamespace) {
  EXPECT_TRUE(recognizes<TimedText200604>({documentWith(u"<p/>")}));
  EXPECT_TRUE(recognizes<TimedText200604>({u"<tt xmlns='http://www.w3.org/2006/04/ttaf1'><x/></tt>"}));
  EXPECT_FALSE(recognizes<TimedText200604>({u"<tt xmlns='http://www.w3.org/2006/04/ttaf1'></tt>"}));
  EXPECT_FALSE(recognizes<TimedText200604>({u"<tt xmlns='http://www.w3.org/2006/04/ttaf1'><body>"}));
  EXPECT_FALSE(recognizes<TimedText200604>({u"<tt xmlns='http://www.w3.org/2006/04/ttaf1'><body/></tt>"}));
  EXPECT_FALSE(
      recognizes<TimedText200604>({u"<tt xmlns='http://www.w3.org/2006/10/ttaf1'><body><div><p/></div></body></tt>"}));
  EXPECT_FALSE(
      recognizes<TimedText200604>({u"<tt xmlns='http://www.w3.org/ns/ttml'><body><div><p/></div></body></tt>"}));
  EXPECT_FALSE(recognizes<TimedText200604>({}));
}

TEST_F(TimedText200604Test, LooksIntoThePrefixedDivOrTheFirstChildOfTheBody) {
  EXPECT_TRUE(recognizes<TimedText200604>(
      {u"<tt xmlns='http://www.w3.org/2006/04/ttaf1'><body><a/><ttaf1:div><p/></ttaf1:div></body></tt>"}));
  EXPECT_FALSE(recognizes<TimedText200604>(
      {u"<tt xmlns='http://www.w3.org/2006/04/ttaf1'><body><a/><div><p/></div></body></tt>"}));
}

TEST_F(TimedText200604Test, RepairsAMissingBlankBetweenAttributes) {
  const WString text =
      u"<tt xmlns=\"http://www.w3.org/2006/04/ttaf1\" "
      u"xmlns:tts=\"http://www.w3.org/2006/04/ttaf1#styling\"xml:lang=\"en\">"
      u"<body><div><p begin='00:00:01.500' end='00:00:02.500'>a</p></div></body></tt>";
  EXPECT_TRUE(recognizes<TimedText200604>({text}));
  EXPECT_EQ(load<TimedText200604>({text}).captions, (Captions{{1, 1500, 2500, u"a"}}));
}

TEST_F(TimedText200604Test, TakesShortFractionsAsHundredths) {
  EXPECT_EQ(captionsIn(u"<p begin='00:00:01.50' end='00:00:02.75'>a</p>"), (Captions{{1, 1500, 2750, u"a"}}));
  EXPECT_EQ(captionsIn(u"<p begin='25:00:01.50' end='25:00:02.75'>a</p>"), (Captions{{1, 3601500, 3602750, u"a"}}));
}

TEST_F(TimedText200604Test, TakesNoFractionAsHundredthsWhenOneIsLonger) {
  EXPECT_EQ(
      captionsIn(u"<p begin='00:00:01.50' end='00:00:02.75'>a</p><p begin='00:00:03.00' end='00:00:04.250'>b</p>"),
      (Captions{{1, 1050, 2075, u"a"}, {2, 3000, 4250, u"b"}}));
}

TEST_F(TimedText200604Test, ReadsADuration) {
  EXPECT_EQ(captionsIn(u"<p begin='00:00:01.500' dur='2s'>a</p>"), (Captions{{1, 1500, 3500, u"a"}}));
}

TEST_F(TimedText200604Test, PassesOverElementsWithoutTimes) {
  const Loaded result = load<TimedText200604>(
      {documentWith(u"text<p begin='00:00:01.500'>a</p><p end='00:00:01.500'>b</p><!-- c --><p>d</p>")});
  EXPECT_TRUE(result.captions.empty());
  EXPECT_EQ(result.errors, 0);
}

TEST_F(TimedText200604Test, CountsABadTimeAsAnErrorAndGoesOn) {
  testing::internal::CaptureStdout();
  const Loaded result = load<TimedText200604>(
      {documentWith(u"<p begin='1' end='2'>a</p><p begin='00:00:03.100' end='00:00:04.200'>b</p>")});
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "a clock time has fewer than four fields\n");
  EXPECT_EQ(result.captions, (Captions{{1, 3100, 4200, u"b"}}));
  EXPECT_EQ(result.errors, 1);
}

TEST_F(TimedText200604Test, ReadsTextBreaksAndSpans) {
  EXPECT_EQ(textIn(u"a<br/>b<x>c</x><!--d-->"), u"a\nbcd");
  EXPECT_EQ(textIn(u"<span>a<br/><x>b</x></span>"), u"a\nb");
  EXPECT_EQ(textIn(u"<span fontStyle='italic'>x</span>"), u"<i>x</i>");
  EXPECT_EQ(textIn(u"<span tts:fontStyle='italic'>x</span>"), u"x");
  EXPECT_EQ(textIn(u"a<span fontStyle='italic'/>"), u"a");
}

TEST_F(TimedText200604Test, FindsTheContainer) {
  EXPECT_EQ(load<TimedText200604>({u"<tt><p begin='1.1s' end='2s'>a</p></tt>"}).captions,
            (Captions{{1, 1100, 2000, u"a"}}));
  EXPECT_EQ(load<TimedText200604>({u"<tt><body><x><p begin='1.1s' end='2s'>a</p></x></body></tt>"}).captions,
            (Captions{{1, 1100, 2000, u"a"}}));
  EXPECT_TRUE(load<TimedText200604>({u"<tt><body/></tt>"}).captions.empty());
  EXPECT_TRUE(load<TimedText200604>({u"<tt><body>"}).captions.empty());
}

TEST_F(TimedText200604Test, NeverResetsTheFormOfTimes) {
  captionsIn(u"<p begin='1.1s' end='2s'>a</p>");
  EXPECT_EQ(timedTextTimeFormat, TimedTextTimeFormat::Seconds);
  captionsIn(u"<p begin='00:00:01:00' end='00:00:02:00'>a</p>");
  EXPECT_EQ(timedTextTimeFormat, TimedTextTimeFormat::Seconds);
}

TEST_F(TimedText200604Test, WritesPlainTextWithBreaks) {
  EXPECT_EQ(written<TimedText200604>({{1, 1000, 2480, u"<i>Hello</i>\r\nyou"}, {2, 90061001, 90062000, u""}}),
            R"(<?xml version="1.0" encoding="utf-8" ?>
<tt xmlns="http://www.w3.org/2006/04/ttaf1" xmlns:ttp="http://www.w3.org/2006/04/ttaf1#parameter" xmlns:tts="http://www.w3.org/2006/04/ttaf1#styling">
    <head>
        <parameter>
            <ttp:dropMode>"nonDrop"</ttp:dropMode>
            <ttp:frameRate>"25.000000"</ttp:frameRate>
            <ttp:frameRateMultiplier>"1 1"</ttp:frameRateMultiplier>
            <ttp:markerMode>"continuous"</ttp:markerMode>
            <ttp:timeBase>"smpte"</ttp:timeBase>
        </parameter>
        <styling>
            <style id="defaultSpeaker" tts:fontSize="12px" tts:fontFamily="SansSerif" tts:fontWeight="normal" tts:fontStyle="normal" tts:textDecoration="none" tts:color="white" tts:backgroundColor="black" tts:textAlign="center"/>
        </styling>
    </head>
    <body id="thebody" style="defaultCaption">
        <div>
            <p begin="00:00:01.000" id="p0" end="00:00:02.480">Hello<br/>you</p>
            <p begin="25:01:01.001" id="p1" end="25:01:02.000"/>
        </div>
    </body>
</tt>)");
}

}  // namespace
}  // namespace mova
