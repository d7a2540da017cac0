#include "formats/xml/ItunesTimedText.h"
#include "formats/xml/TimedText10.h"
#include "formats/xml/TimedTextNodes.h"
#include "formats/xml/TimedTextTime.h"
#include "text/Strings.h"
#include "unit/formats/Captions.h"

namespace mova {
namespace {

class TimedText10Test : public testing::Test {
 protected:
  void SetUp() override {
    GlobalSettings = getDefaultSettings();
    GlobalSettings.FrameRate = 25;
    timedTextTimeFormat = TimedTextTimeFormat::Frames;
  }
  void TearDown() override { timedTextTimeFormat = TimedTextTimeFormat::Frames; }
};

WString documentWith(WStringView body, WStringView rootAttributes = u"", WStringView head = u"") {
  WString text = u"<?xml version=\"1.0\"?><tt xmlns=\"http://www.w3.org/ns/ttml\"";
  text += rootAttributes;
  text += u">";
  text += head;
  text += u"<body style=\"s0\"><div>";
  text += body;
  return text += u"</div></body></tt>";
}

Subtitle loaded(WStringView text) {
  Subtitle subtitle;
  TimedText10().LoadSubtitle(subtitle, {text}, u"");
  return subtitle;
}

Captions captionsIn(WStringView body, WStringView rootAttributes = u"") {
  return captionsOf(loaded(documentWith(body, rootAttributes)));
}

/// The text of a paragraph with these contents.
WString textIn(WStringView contents) {
  WString p = u"<p begin=\"00:00:01:00\" end=\"00:00:02:00\">";
  p += contents;
  p += u"</p>";
  const Captions captions = captionsIn(p);
  return captions.empty() ? u"(none)" : captions[0].text;
}

/// The "p" that a text becomes.
std::string pOf(const WString& text) {
  const std::string file = written<TimedText10>({{1, 1000, 2000, text}});
  const size_t begin = file.find("<p ");
  return file.substr(begin, file.find("        </div>") - begin);
}

TEST_F(TimedText10Test, HasItsNames) {
  EXPECT_EQ(TimedText10().Name(), u"Timed Text 1.0");
  EXPECT_EQ(TimedText10().Extension(), u".xml");
  EXPECT_EQ(TimedText10().ExtraExtensions(), (std::vector<WString>{u".itt", u".dfxp"}));
  EXPECT_TRUE(TimedText10().SupportsStyles());
  EXPECT_EQ(ItunesTimedText().Name(), u"iTunes Timed Text");
  EXPECT_EQ(ItunesTimedText().Extension(), u".itt");
  EXPECT_EQ(ItunesTimedText().ExtraExtensions(), (std::vector<WString>{u".itt", u".dfxp"}));
}

// --- Recognising

TEST_F(TimedText10Test, RecognisesParagraphsInTheFinalNamespace) {
  EXPECT_TRUE(recognizes<TimedText10>({documentWith(u"<p>a</p>")}));
  EXPECT_TRUE(recognizes<TimedText10>(
      {u"<ttml:tt xmlns:ttml='http://www.w3.org/ns/ttml'><body><ttml:p>a</ttml:p></body></ttml:tt>"}));
  EXPECT_FALSE(recognizes<TimedText10>({documentWith(u"")}));
  EXPECT_FALSE(recognizes<TimedText10>({documentWith(u"<p>a</p>").substr(0, 80)}));
  EXPECT_FALSE(recognizes<TimedText10>({u"<tt><body><p>a</p></body></tt>"}));
  EXPECT_FALSE(recognizes<TimedText10>({}));
}

TEST_F(TimedText10Test, RefusesTheFamilyOf2006) {
  EXPECT_FALSE(
      recognizes<TimedText10>({documentWith(u"<p>a</p>", u" xmlns:tts=\"http://www.w3.org/2006/04/ttaf1#styling\"")}));
}

TEST_F(TimedText10Test, LeavesFilesNamedIttToItunes) {
  const Lines lines{documentWith(u"<p>a</p>")};
  EXPECT_TRUE(ItunesTimedText().Recognizes(lines, u"a.itt"));
  EXPECT_TRUE(ItunesTimedText().Recognizes(lines, u"a.ITT"));
  EXPECT_TRUE(ItunesTimedText().Recognizes(lines, u""));
  EXPECT_FALSE(ItunesTimedText().Recognizes(lines, u"a.xml"));
  EXPECT_FALSE(ItunesTimedText().Recognizes(lines, u"itt"));
  EXPECT_TRUE(TimedText10().Recognizes(lines, u"a.xml"));
}

// --- Reading

TEST_F(TimedText10Test, ReadsTimesOfAllForms) {
  EXPECT_EQ(captionsIn(u"<p begin='00:00:01.500' end='00:00:02:12'>a</p>"), (Captions{{1, 1500, 2480, u"a"}}));
  EXPECT_EQ(captionsIn(u"<p begin='00:00:01.50' end='2.5s'>a</p>"), (Captions{{1, 1999, 2500, u"a"}}));
  EXPECT_EQ(captionsIn(u"<p begin='1000ms' dur='15000000t'>a</p>"), (Captions{{1, 1000, 2500, u"a"}}));
}

TEST_F(TimedText10Test, StartsWhereTheLastOneEndedAndLastsThreeSeconds) {
  EXPECT_EQ(captionsIn(u"<p>a</p><p dur='1500ms'>b</p><p end='00:00:09:00'>c</p>"),
            (Captions{{1, 0, 3000, u"a\r\nb"}, {2, 4500, 9000, u"c"}}));
}

TEST_F(TimedText10Test, JoinsParagraphsWhoseStartsShareTheirMilliseconds) {
  EXPECT_EQ(captionsIn(u"<p begin='00:00:01:00' end='00:00:02:00'>a</p><p begin='00:00:05:00' end='00:00:06:00'>b</p>"),
            (Captions{{1, 1000, 2000, u"a\r\nb"}}));
  EXPECT_EQ(captionsIn(u"<p begin='00:00:01:00' end='00:00:02:00'>a</p><p begin='00:00:05:01' end='00:00:06:00'>b</p>"),
            (Captions{{1, 1000, 2000, u"a"}, {2, 5040, 6000, u"b"}}));
}

TEST_F(TimedText10Test, TrimsJoinedTexts) {
  EXPECT_EQ(captionsIn(u"<p begin='1s'> </p><p begin='2s'>  a   b  </p><p begin='3s'/><p begin='4s'>c</p>"),
            (Captions{{1, 1000, 4000, u"a b\r\nc"}}));
}

TEST_F(TimedText10Test, CountsAParagraphWithABadTimeAsAnErrorAndGoesOn) {
  const Loaded result =
      load<TimedText10>({documentWith(u"<p begin='00:01' end='1s'>a</p><p begin='1s' end='x'>b</p>"
                                      u"<p begin='3s' end='4s'>c</p>")});
  EXPECT_EQ(result.captions, (Captions{{1, 3000, 4000, u"c"}}));
  EXPECT_EQ(result.errors, 2);
}

TEST_F(TimedText10Test, CollectsParagraphsOfTheOldPrefixOnlyWithoutPlainOnes) {
  EXPECT_EQ(captionsIn(u"<ttml:p begin='1s'>a</ttml:p>"), (Captions{{1, 1000, 4000, u"a"}}));
  EXPECT_EQ(captionsIn(u"<ttml:p begin='1s'>a</ttml:p><p begin='2s'>b</p>"), (Captions{{1, 2000, 5000, u"b"}}));
}

TEST_F(TimedText10Test, KeepsTheDocumentAndTakesItsRate) {
  const WString text =
      documentWith(u"<p begin='00:00:01:15'>a</p>", u" ttp:frameRate='30' ttp:frameRateMultiplier='1000 1001'");
  const Subtitle subtitle = loaded(text);
  EXPECT_EQ(subtitle.Header, text + u"\n");
  EXPECT_EQ(GlobalSettings.FrameRate, 30);
  EXPECT_EQ(subtitle.Paragraphs[0]->StartTime.TotalMilliseconds, 1500);
  loaded(documentWith(u"<p>a</p>", u" frameRate='24'"));
  EXPECT_EQ(GlobalSettings.FrameRate, 24);
}

TEST_F(TimedText10Test, ResetsTheFormOfTimesOnlyWithABody) {
  timedTextTimeFormat = TimedTextTimeFormat::Seconds;
  loaded(u"<tt/>");
  EXPECT_EQ(timedTextTimeFormat, TimedTextTimeFormat::Seconds);
  loaded(documentWith(u""));
  EXPECT_EQ(timedTextTimeFormat, TimedTextTimeFormat::Frames);
}

TEST_F(TimedText10Test, LeavesTheSubtitleAloneWithoutABody) {
  Subtitle subtitle;
  subtitle.Header = u"x";
  TimedText10().LoadSubtitle(subtitle, {u"<tt><head/></tt>"}, u"");
  TimedText10().LoadSubtitle(subtitle, {u"<tt><body>"}, u"");
  EXPECT_EQ(subtitle.Header, u"x");
  EXPECT_TRUE(subtitle.Paragraphs.empty());
}

TEST_F(TimedText10Test, ReadsBreaksAsLineFeeds) {
  EXPECT_EQ(textIn(u"a<br/>b<x>c<br/>d</x><!-- e -->"), u"a\nbc\nd");
}

TEST_F(TimedText10Test, TurnsStyleAttributesIntoTagsTheWrongWayRound) {
  EXPECT_EQ(textIn(u"<span tts:fontWeight='bold'>x</span>"), u"x");
  EXPECT_EQ(textIn(u"<span tts:fontWeight='normal'>x</span>"), u"<b>x</bold>");
  EXPECT_EQ(textIn(u"<span tts:fontStyle='italic'>x</span>"), u"x");
  EXPECT_EQ(textIn(u"<span tts:fontStyle='normal'>x</span>"), u"<i>x</i>");
  EXPECT_EQ(textIn(u"<span tts:color='#ff0000'>x</span>"), u"<font color=\"#ff0000\">x</font>");
  EXPECT_EQ(textIn(u"<span tts:fontStyle='n' tts:color='red' tts:fontWeight='n'>x</span>"),
            u"<i><font color=\"red\"><b>x</i></font></bold>");
}

TEST_F(TimedText10Test, PassesOverTextsBesideElementsInASpan) {
  EXPECT_EQ(textIn(u"<span>a<br/>b</span>"), u"");
  EXPECT_EQ(textIn(u"<span>a<x>b</x>c</span>"), u"b");
  // The inner span is below the outer one and visited once for each span above it.
  EXPECT_EQ(textIn(u"<span><span>x</span></span>"), u"x");
  EXPECT_EQ(textIn(u"<span><span><span>x</span></span></span>"), u"xx");
}

TEST_F(TimedText10Test, GivesUpOnSpansThatDoubleTooOften) {
  WString open;
  WString close;
  for (int i = 0; i < 80; ++i) {
    open += u"<span>";
    close += u"</span>";
  }
  const Loaded result =
      load<TimedText10>({documentWith(u"<p begin='1s'>" + open + u"x" + close + u"</p><p begin='2.5s'>y</p>")});
  EXPECT_EQ(result.captions, (Captions{{1, 2500, 5500, u"y"}}));
  EXPECT_EQ(result.errors, 1);
}

TEST_F(TimedText10Test, GivesUpOnSpansThatMultiplyALongText) {
  WString open;
  WString close;
  for (int i = 0; i < 14; ++i) {
    open += u"<span>";
    close += u"</span>";
  }
  const WString p = u"<p begin='1s'>" + open + u"<b>" + WString(100000, u'x') + u"</b>" + close + u"</p>";
  const Loaded result = load<TimedText10>({documentWith(p + p + u"<p begin='2.5s'><span>y</span></p>")});
  EXPECT_EQ(result.captions, (Captions{{1, 2500, 5500, u"y"}}));
  EXPECT_EQ(result.errors, 2);
}

TEST_F(TimedText10Test, GivesUpOnManyParagraphsOfNestedSpans) {
  WString open;
  WString close;
  for (int i = 0; i < 16; ++i) {
    open += u"<span>";
    close += u"</span>";
  }
  const WString p = u"<p begin='1s'>" + open + u"x" + close + u"</p>";
  WString body;
  for (int i = 0; i < 1000; ++i) body += p;
  const Loaded result = load<TimedText10>({documentWith(body)});
  EXPECT_EQ(result.captions.size(), 1u);
  EXPECT_GT(result.errors, 900);
}

TEST_F(TimedText10Test, PutsTheTopRegionInFrontOfTheText) {
  EXPECT_EQ(captionsIn(u"<p begin='1s' region='top'>a</p>"), (Captions{{1, 1000, 4000, u"{\\an8}a"}}));
  EXPECT_EQ(captionsIn(u"<p begin='1s' region='Top'>a</p>"), (Captions{{1, 1000, 4000, u"a"}}));
}

TEST_F(TimedText10Test, NotesStyleAndLanguage) {
  const Subtitle subtitle = loaded(
      u"<tt style='t0'><body style='b0'><div xml:lang='fr'><p begin='1s' style='s1'>a</p></div>"
      u"<div lang='de'><p begin='2.1s'>b</p></div><p begin='3.2s' style=''>c</p></body></tt>");
  ASSERT_EQ(subtitle.Paragraphs.size(), 3u);
  EXPECT_EQ(subtitle.Paragraphs[0]->Extra, u"s1 / fr");
  EXPECT_EQ(subtitle.Paragraphs[0]->Language, u"fr");
  EXPECT_EQ(subtitle.Paragraphs[1]->Extra, u"t0 / de");  // the root's style, not the body's
  EXPECT_EQ(subtitle.Paragraphs[2]->Extra, u"- / -");
}

TEST_F(TimedText10Test, JoinsAHundredThousandParagraphsInLinearTime) {
  WString body;
  for (int i = 0; i < 100000; ++i) body += u"<p begin='1s'>some words</p>";
  const Captions captions = captionsIn(body);
  ASSERT_EQ(captions.size(), 1u);
  EXPECT_EQ(captions[0].text.size(), 100000u * 12 - 2);
}

// --- Writing

TEST_F(TimedText10Test, WritesANewDocument) {
  EXPECT_EQ(written<TimedText10>({{1, 1000, 2480, u"Hello\r\nyou & me"}}),
            R"(<?xml version="1.0" encoding="utf-8" ?>
<tt xmlns="http://www.w3.org/ns/ttml" xmlns:ttp="http://www.w3.org/ns/ttml#parameter" ttp:timeBase="media" xmlns:tts="http://www.w3.org/ns/ttml#style" xml:lang="en" xmlns:ttm="http://www.w3.org/ns/ttml#metadata">
    <head>
        <metadata>
            <ttm:title/>
        </metadata>
        <parameter>
            <ttp:dropMode>"nonDrop"</ttp:dropMode>
            <ttp:frameRate>"25.000000"</ttp:frameRate>
            <ttp:frameRateMultiplier>"1 1"</ttp:frameRateMultiplier>
            <ttp:markerMode>"continuous"</ttp:markerMode>
            <ttp:timeBase>"smpte"</ttp:timeBase>
        </parameter>
        <styling>
            <style id="s0" tts:backgroundColor="black" tts:fontStyle="normal" tts:fontSize="16" tts:fontFamily="sansSerif" tts:color="white"/>
        </styling>
    </head>
    <body style="s0">
        <div>
            <p begin="00:00:01:00" id="p0" end="00:00:02:12">Hello<br/>you & me</p>
        </div>
    </body>
</tt>)");
}

TEST_F(TimedText10Test, WritesTheRateAsElementText) {
  GlobalSettings.FrameRate = 29.97;
  EXPECT_NE(written<TimedText10>({}).find("<ttp:frameRate>\"30\"</ttp:frameRate>"), std::string::npos);
  EXPECT_NE(written<TimedText10>({}).find("<ttp:frameRateMultiplier>\"1000 1001\"</ttp:frameRateMultiplier>"),
            std::string::npos);
  GlobalSettings.FrameRate = 24.5;
  EXPECT_NE(written<TimedText10>({}).find("<ttp:frameRate>\"\"</ttp:frameRate>"), std::string::npos);
  EXPECT_NE(written<TimedText10>({}).find("<ttp:frameRateMultiplier>\"\"</ttp:frameRateMultiplier>"),
            std::string::npos);
}

TEST_F(TimedText10Test, WritesAnEmptyTextAsAnEmptyParagraph) {
  EXPECT_EQ(pOf(u""), "<p begin=\"00:00:01:00\" id=\"p0\" end=\"00:00:02:00\"/>\n");
}

TEST_F(TimedText10Test, TurnsTagsIntoSpans) {
  EXPECT_EQ(pOf(u"a<i>b</i>c"),
            "<p begin=\"00:00:01:00\" id=\"p0\" end=\"00:00:02:00\">a<span tts:fontStyle=\"italic\">b</span>c</p>\n");
  EXPECT_EQ(pOf(u"a<b>b</b>c"),
            "<p begin=\"00:00:01:00\" id=\"p0\" end=\"00:00:02:00\">a<span tts:fontWeight=\"bold\">b</span>c</p>\n");
  EXPECT_EQ(pOf(u"a<font color=\"#00ff00\">b</font>c"),
            "<p begin=\"00:00:01:00\" id=\"p0\" end=\"00:00:02:00\">a<span tts:color=\"#00ff00\">b</span>c</p>\n");
  EXPECT_EQ(pOf(u"a<font size=\"2\" color='red' >b</font>c"),
            "<p begin=\"00:00:01:00\" id=\"p0\" end=\"00:00:02:00\">a<span tts:color=\"red\">b</span>c</p>\n");
}

TEST_F(TimedText10Test, DropsFontTagsWithoutAColourAndUnclosedOnes) {
  EXPECT_EQ(pOf(u"a<font size=\"2\">b</font>c"), "<p begin=\"00:00:01:00\" id=\"p0\" end=\"00:00:02:00\">abc</p>\n");
  EXPECT_EQ(pOf(u"a<font color= >b"), "<p begin=\"00:00:01:00\" id=\"p0\" end=\"00:00:02:00\">ab</p>\n");
  EXPECT_EQ(pOf(u"a<font color=\"red\"b"), "<p begin=\"00:00:01:00\" id=\"p0\" end=\"00:00:02:00\">a</p>\n");
}

TEST_F(TimedText10Test, LetsOtherMarkupThrough) {
  EXPECT_EQ(pOf(u"{\\an8}<u>a</u>"), "<p begin=\"00:00:01:00\" id=\"p0\" end=\"00:00:02:00\">{\\an8}<u>a</u></p>\n");
}

TEST_F(TimedText10Test, CopiesTheNodeThatItalicsPutAsideWithoutItsName) {
  TiXMLDocument document(u"<p/>");
  appendTextLines(*document.RootElement(), u"<b><i>x</i></b>", false);
  const XMLElement& p = *document.RootElement();
  // An empty text, the bold span, the italic one, the copy of the bold span, an empty text.
  const XMLNode* node = p.FirstChild();
  ASSERT_TRUE(node->ToText());
  node = node->NextSibling();
  EXPECT_TRUE(isNamed(node, "span"));
  EXPECT_EQ(attribute(*node->ToElement(), "tts:fontWeight"), u"bold");
  EXPECT_TRUE(node->NoChildren());
  node = node->NextSibling();
  EXPECT_EQ(attribute(*node->ToElement(), "tts:fontStyle"), u"italic");
  EXPECT_EQ(elementInnerText(*node->ToElement()), u"x");
  node = node->NextSibling();
  EXPECT_TRUE(isNamed(node, ""));
  EXPECT_EQ(attribute(*node->ToElement(), "tts:fontWeight"), u"bold");
  EXPECT_TRUE(node->NextSibling()->ToText());
  EXPECT_EQ(node->NextSibling()->NextSibling(), nullptr);
}

TEST_F(TimedText10Test, GivesACopyTheCharactersThatFollow) {
  TiXMLDocument document(u"<p/>");
  appendTextLines(*document.RootElement(), u"<b>a<i>x</i>y", false);
  EXPECT_EQ(elementInnerText(*document.RootElement()), u"axay");
  EXPECT_EQ(elementInnerText(*document.RootElement()->LastChildElement()), u"ay");
}

const WString source =
    u"<tt xmlns=\"http://www.w3.org/ns/ttml\"><head><styling><style xml:id=\"s1\"/><style "
    u"id=\"s2\"/><style/></styling></head>"
    u"<body style=\"s2\"><div><p>old</p></div></body></tt>";

TEST_F(TimedText10Test, StopsCopyingWhereALineWouldExplode) {
  WString texts = u"<b>";
  for (int i = 0; i < 20000; ++i) texts += u"x<i></i>";
  WString colors = u"<font color=\"" + WString(100000, u'a') + u"\">x";
  for (int i = 0; i < 2000; ++i) colors += u"<i></i>";
  for (const WString& text : {texts, colors}) {
    const size_t size = written<TimedText10>({{1, 0, 1, text}}).size();
    EXPECT_GT(size, text.size());
    EXPECT_LT(size, 30 * text.size());
  }
}

TEST_F(TimedText10Test, KeepsTheSourceDocumentAndReplacesItsParagraphs) {
  Subtitle subtitle = subtitleOf({{1, 1000, 2000, u"a"}, {2, 2000, 3000, u"b"}, {3, 3000, 4000, u"c"}});
  subtitle.Header = source;
  subtitle.Paragraphs[0]->Style = u"s1";
  subtitle.Paragraphs[1]->Style = u"s2";  // the default of the body
  subtitle.Paragraphs[2]->Style = u"unknown";
  EXPECT_EQ(wideToString(TimedText10().WriteText(subtitle, u"")), R"(<tt xmlns="http://www.w3.org/ns/ttml">
    <head>
        <styling>
            <style xml:id="s1"/>
            <style id="s2"/>
            <style/>
        </styling>
    </head>
    <body style="s2">
        <div>
            <p begin="00:00:01:00" id="p0" end="00:00:02:00" style="s1">a</p>
            <p begin="00:00:02:00" id="p1" end="00:00:03:00">b</p>
            <p begin="00:00:03:00" id="p2" end="00:00:04:00">c</p>
        </div>
    </body>
</tt>)");
}

std::string withHeader(const WString& header, const std::vector<WString>& languages = {u""}) {
  Subtitle subtitle;
  subtitle.Header = header;
  for (const WString& language : languages) {
    subtitle.Append({u"a", 1000, 2000}).Language = language;
  }
  return wideToString(TimedText10().WriteText(subtitle, u""));
}

TEST_F(TimedText10Test, EmptiesTheFirstChildOfABodyWithoutADiv) {
  EXPECT_EQ(withHeader(u"<tt><head/><body><p>x</p><p>y</p></body></tt>"), R"(<tt>
    <head/>
    <body>
        <p>
            <p begin="00:00:01:00" id="p0" end="00:00:02:00">a</p>
        </p>
        <p>y</p>
    </body>
</tt>)");
}

TEST_F(TimedText10Test, TakesTheSkeletonWhereThereIsNothingToEmpty) {
  for (const char16_t* header :
       {u"<tt><head/><body/></tt>", u"<tt><head/></tt>", u"<tt><body><p/></body></tt>", u"x", u"<tt>"}) {
    EXPECT_NE(withHeader(header).find("<body style=\"s0\">\n        <div>\n            <p "), std::string::npos);
  }
}

TEST_F(TimedText10Test, WritesNoStylesForAScript) {
  const std::string file = withHeader(u"[Script Info]\r\n[V4+ Styles]\r\nStyle: Default,Arial,20\r\n");
  EXPECT_NE(file.find("        <styling/>\n"), std::string::npos);
  EXPECT_NE(file.find("<body style=\"s0\">"), std::string::npos);
}

TEST_F(TimedText10Test, WritesADivForEachLanguage) {
  EXPECT_EQ(withHeader(source, {u"fr", u"", u"de", u"fr"}), R"(<tt xmlns="http://www.w3.org/ns/ttml">
    <head>
        <styling>
            <style xml:id="s1"/>
            <style id="s2"/>
            <style/>
        </styling>
    </head>
    <body style="s2">
        <div>
            <p begin="00:00:01:00" id="p0" end="00:00:02:00">a</p>
        </div>
        <div xml:lang="fr">
            <p begin="00:00:01:00" id="p1" end="00:00:02:00">a</p>
            <p begin="00:00:01:00" id="p2" end="00:00:02:00">a</p>
        </div>
        <div xml:lang="de">
            <p begin="00:00:01:00" id="p3" end="00:00:02:00">a</p>
        </div>
    </body>
</tt>)");
}

TEST_F(TimedText10Test, DropsTheDivWithoutALanguageAndLosesOddLanguages) {
  EXPECT_EQ(withHeader(u"<tt><head/><body><div/></body></tt>", {u"EN", u" en"}), R"(<tt>
    <head/>
    <body>
        <div xml:lang="en"/>
    </body>
</tt>)");
}

TEST_F(TimedText10Test, WritesInTheFormThatWasReadLastUntilABodyIsReadAgain) {
  loaded(documentWith(u"<p begin='1500ms' end='2500ms'>a</p>"));
  EXPECT_NE(written<TimedText10>({{1, 1000, 2000, u"x"}}).find("<p begin=\"1000ms\" id=\"p0\" end=\"2000ms\">"),
            std::string::npos);
  // Another format in between changes nothing.
  GlobalSettings = getDefaultSettings();
  EXPECT_NE(written<TimedText10>({{1, 1000, 2000, u"x"}}).find("<p begin=\"1000ms\""), std::string::npos);
  loaded(documentWith(u"<p begin='00:00:01:00'>a</p>"));
  EXPECT_NE(written<TimedText10>({{1, 1000, 2000, u"x"}}).find("<p begin=\"00:00:01:00\""), std::string::npos);
}

// --- iTunes

std::string itunes(const Captions& captions) {
  return written<ItunesTimedText>(captions);
}

TEST_F(TimedText10Test, WritesAnItunesDocument) {
  EXPECT_EQ(
      itunes({{1, 1000, 2480, u"Hello\r\n<i>you</i>"}, {2, 3000, 4000, u"{\\an8}Up"}, {3, 4000, 5000, u"{\\an5}Mid"}}),
      R"(<?xml version="1.0" encoding="utf-8" ?>
<tt xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xmlns="http://www.w3.org/ns/ttml" xmlns:tt="http://www.w3.org/ns/ttml" xmlns:tts="http://www.w3.org/ns/ttml#styling" xmlns:ttp="http://www.w3.org/ns/ttml#parameter" xml:lang="en-US" ttp:timeBase="smpte" ttp:frameRate="25" ttp:frameRateMultiplier="1 1" ttp:dropMode="nonDrop">
    <head>
        <styling>
            <style tts:fontSize="100%" tts:color="white" tts:fontStyle="normal" tts:fontWeight="normal" tts:fontFamily="sansSerif" xml:id="normal"/>
            <style tts:fontSize="100%" tts:color="white" tts:fontStyle="normal" tts:fontWeight="bold" tts:fontFamily="sansSerif" xml:id="bold"/>
            <style tts:fontSize="100%" tts:color="white" tts:fontStyle="italic" tts:fontWeight="normal" tts:fontFamily="sansSerif" xml:id="italic"/>
        </styling>
        <layout>
            <region xml:id="top" tts:origin="0% 0%" tts:extent="100% 15%" tts:textAlign="center" tts:displayAlign="before"/>
            <region xml:id="bottom" tts:origin="0% 85%" tts:extent="100% 15%" tts:textAlign="center" tts:displayAlign="after"/>
        </layout>
    </head>
    <body>
        <div>
            <p region="bottom" begin="00:00:01:00" end="00:00:02:12">Hello<br/><span tts:fontStyle="italic">you</span></p>
            <p region="top" begin="00:00:03:00" end="00:00:04:00">Up</p>
            <p region="bottom" begin="00:00:04:00" end="00:00:05:00">Mid</p>
        </div>
    </body>
</tt>)");
}

TEST_F(TimedText10Test, WritesOneOfThreeItunesRates) {
  const auto rate = [](double frameRate) {
    GlobalSettings.FrameRate = frameRate;
    const std::string file = itunes({});
    const size_t begin = file.find("ttp:frameRate=");
    return file.substr(begin, file.find(" ttp:dropMode") - begin);
  };
  EXPECT_EQ(rate(29.97), "ttp:frameRate=\"30\" ttp:frameRateMultiplier=\"999 1000\"");
  EXPECT_EQ(rate(30.1), "ttp:frameRate=\"30\" ttp:frameRateMultiplier=\"999 1000\"");
  EXPECT_EQ(rate(23.976), "ttp:frameRate=\"24\" ttp:frameRateMultiplier=\"999 1000\"");
  EXPECT_EQ(rate(24), "ttp:frameRate=\"24\" ttp:frameRateMultiplier=\"999 1000\"");
  EXPECT_EQ(rate(25), "ttp:frameRate=\"25\" ttp:frameRateMultiplier=\"1 1\"");
}

TEST_F(TimedText10Test, WritesAnyStyleForItunesUnlessItIsTheDefault) {
  Subtitle subtitle = subtitleOf({{1, 1000, 2000, u"a"}, {2, 2000, 3000, u"b"}, {3, 3000, 4000, u"{\\an8}c"}});
  subtitle.Header = source;
  subtitle.Paragraphs[0]->Style = u"s1";
  subtitle.Paragraphs[1]->Style = u"s2";
  subtitle.Paragraphs[2]->Style = u"unknown";
  const std::string file = wideToString(ItunesTimedText().WriteText(subtitle, u""));
  EXPECT_NE(file.find("<p style=\"s1\" begin=\"00:00:01:00\" end=\"00:00:02:00\">a</p>"), std::string::npos);
  EXPECT_NE(file.find("<p begin=\"00:00:02:00\" end=\"00:00:03:00\">b</p>"), std::string::npos);
  // The regions of the source have other names: no position is written.
  EXPECT_NE(file.find("<p style=\"unknown\" begin=\"00:00:03:00\" end=\"00:00:04:00\">c</p>"), std::string::npos);
}

TEST_F(TimedText10Test, WritesAnyTextWithoutHarm) {
  for (const char16_t* text :
       {u"<i><i><i></i></i></i></i>", u"<b><i></b></i><b>", u"</font></i>", u"<i>", u"<font >", u"\xD800<i>\xDC00"}) {
    EXPECT_FALSE(written<TimedText10>({{1, 0, 1, text}}).empty());
    EXPECT_FALSE(itunes({{1, 0, 1, text}}).empty());
  }
}

}  // namespace
}  // namespace mova
