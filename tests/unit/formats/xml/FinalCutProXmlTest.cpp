#include <cmath>

#include "formats/xml/FinalCutProXml.h"
#include "text/Strings.h"
#include "unit/formats/Captions.h"
#include "xml/TiXMLDocument.h"

namespace mova {
namespace {

/// A font for the length of a test.
class FontScope {
 public:
  FontScope(WString name, int32_t size) {
    std::swap(GlobalSettings.FcpFontName, name_ = std::move(name));
    std::swap(GlobalSettings.FcpFontSize, size_ = size);
  }
  ~FontScope() {
    GlobalSettings.FcpFontName = name_;
    GlobalSettings.FcpFontSize = size_;
  }
  FontScope(const FontScope&) = delete;
  FontScope& operator=(const FontScope&) = delete;

 private:
  WString name_;
  int32_t size_;
};

/// What is written at 25 frames a second with a plain font.
std::string writtenAt25(const Captions& captions) {
  const FrameRateScope rate(25);
  const FontScope font(u"Lucida Grande", 18);
  return written<FinalCutProXml>(captions);
}

int count(const std::string& text, std::string_view what) {
  int found = 0;
  for (size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += what.size()) ++found;
  return found;
}

/// What stands between two texts, from the first occurrence of the one before.
std::string between(const std::string& text, std::string_view before, std::string_view behind) {
  const size_t begin = text.find(before);
  if (begin == std::string::npos) return "(none)";
  const size_t end = text.find(behind, begin + before.size());
  return text.substr(begin + before.size(), end - begin - before.size());
}

/// The lines of the first value of the only item, which gets the text.
std::string writtenValue(WStringView text) {
  return between(writtenAt25({{1, 0, 0, WString(text)}}),
                 "<name>Text Settings</name>\n                                ",
                 "\n                            </parameter>");
}

std::string writtenStyle(WStringView text) {
  return between(writtenAt25({{1, 0, 0, WString(text)}}), "</valuelist>\n                                <value>",
                 "</value>");
}

/// An item with frames 25 to 50 and what the parameters of its effect are.
WString item(WStringView parameters, WStringView timing = u"<start>25</start><end>50</end>") {
  WString result = u"<generatoritem>";
  result += timing;
  result += u"<effect>";
  result += parameters;
  return result + u"</effect></generatoritem>";
}

WString parameter(WStringView id, WStringView value) {
  WString result = u"<parameter><parameterid>";
  result += id;
  result += u"</parameterid><value>";
  result += value;
  return result + u"</value></parameter>";
}

Lines sequence(WStringView items, WStringView rate = u"<rate><timebase>25</timebase></rate>") {
  return {u"<xmeml><sequence>", rate, u"<media><video><track>", items, u"</track></video></media></sequence></xmeml>"};
}

Captions readAt25(WStringView items) {
  const FrameRateScope scope(29.97);
  return load<FinalCutProXml>(sequence(items)).captions;
}

WString textOf(WStringView parameters) {
  const Captions captions = readAt25(item(parameters));
  return captions.size() == 1 ? captions[0].text : u"(none)";
}

TEST(FinalCutProXml, HasItsNames) {
  const FinalCutProXml format;
  EXPECT_EQ(format.Name(), u"Final Cut Pro Xml");
  EXPECT_EQ(format.Extension(), u".xml");
  EXPECT_TRUE(format.ExtraExtensions().empty());
  EXPECT_FALSE(format.SupportsStyles());
  EXPECT_TRUE(format.IsTimeBased());
  EXPECT_TRUE(format.IsTextBased());
}

TEST(FinalCutProXml, NamesTimebases) {
  const auto timebase = [](double rate) {
    const FrameRateScope scope(rate);
    return fcpTimebase();
  };
  EXPECT_EQ(timebase(0), u"24");
  EXPECT_EQ(timebase(23.976), u"24");
  EXPECT_EQ(timebase(24), u"24");
  EXPECT_EQ(timebase(24.01), u"25");
  EXPECT_EQ(timebase(28.99), u"25");
  EXPECT_EQ(timebase(29), u"30");
  EXPECT_EQ(timebase(29.97), u"30");
  EXPECT_EQ(timebase(30), u"30");
  EXPECT_EQ(timebase(30.01), u"50");
  EXPECT_EQ(timebase(50), u"50");
  EXPECT_EQ(timebase(50.01), u"60");
  EXPECT_EQ(timebase(59.94), u"60");
}

TEST(FinalCutProXml, CountsAllButTwentyFourAsNtsc) {
  const auto ntsc = [](double rate) {
    const FrameRateScope scope(rate);
    return fcpNtsc();
  };
  EXPECT_EQ(ntsc(23.976), u"TRUE");
  EXPECT_EQ(ntsc(24), u"FALSE");
  EXPECT_EQ(ntsc(24.99), u"FALSE");
  EXPECT_EQ(ntsc(25), u"TRUE");
  EXPECT_EQ(ntsc(29.97), u"TRUE");
  EXPECT_EQ(ntsc(59.94), u"TRUE");
}

// --- Writing

TEST(FinalCutProXml, WritesAnEmptySubtitle) {
  const std::string text = writtenAt25({});
  EXPECT_EQ(text.substr(0, text.find("<uuid>")),
            "<?xml version=\"1.0\" encoding=\"utf-8\" ?>\n"
            "<xmeml version=\"5\">\n"
            "    <sequence id=\"title\">\n"
            "        ");
  EXPECT_EQ(between(text, "</uuid>", "<string>"),
            "\n"
            "        <updatebehavior>add</updatebehavior>\n"
            "        <name>title</name>\n"
            "        <duration>0</duration>\n"
            "        <rate>\n"
            "            <ntsc>TRUE</ntsc>\n"
            "            <timebase>25</timebase>\n"
            "        </rate>\n"
            "        <timecode>\n"
            "            <rate>\n"
            "                <ntsc>TRUE</ntsc>\n"
            "                <timebase>25</timebase>\n"
            "            </rate>\n"
            "            ");
  EXPECT_EQ(between(text, "<in>0</in>", "<media>"), "\n        <out>0</out>\n        ");
  EXPECT_EQ(text.substr(text.find("                <track")),
            "                <track/>\n"
            "            </video>\n"
            "        </media>\n"
            "    </sequence>\n"
            "</xmeml>");
}

TEST(FinalCutProXml, WritesFramesOfTimesAndFixedInOutAndDuration) {
  const std::string text = writtenAt25({{1, 1000, 2000, u"x"}});
  EXPECT_EQ(between(text, "<track>", "<enabled>"),
            "\n"
            "                    <generatoritem id=\"Outline Text1\">\n"
            "                        <name>Outline Text</name>\n"
            "                        <duration>3000</duration>\n"
            "                        <rate>\n"
            "                            <ntsc>TRUE</ntsc>\n"
            "                            <timebase>25</timebase>\n"
            "                        </rate>\n"
            "                        <in>1380</in>\n"
            "                        <out>1474</out>\n"
            "                        <start>25</start>\n"
            "                        <end>50</end>\n"
            "                        ");
  EXPECT_EQ(between(text, "<duration>", "</duration>"), "50");
  EXPECT_EQ(between(text, "<out>", "</out>"), "50");
}

TEST(FinalCutProXml, RoundsFramesHalfUp) {
  const std::string text = writtenAt25({{1, 20, 19, u"x"}, {2, -20, -60, u"y"}});
  EXPECT_EQ(count(text, "<start>1</start>"), 1);
  EXPECT_EQ(count(text, "<end>0</end>"), 1);
  EXPECT_EQ(count(text, "<start>0</start>"), 1);
  EXPECT_EQ(count(text, "<end>-1</end>"), 1);
  EXPECT_EQ(between(text, "<duration>", "</duration>"), "-1");
}

TEST(FinalCutProXml, TakesFramesTo32Bits) {
  const std::string text = writtenAt25({{1, 1e15, std::numeric_limits<double>::infinity(), u"x"}});
  EXPECT_EQ(count(text, "<start>-1004630016</start>"), 1) << "25,000,000,000,000 in 32 bits";
  EXPECT_EQ(count(text, "<end>1</end>"), 1) << "the low half of the smallest 64-bit number, rounded up";
}

TEST(FinalCutProXml, NumbersItemsButNotTheirMasterClip) {
  const std::string text = writtenAt25({{7, 0, 1, u"a"}, {8, 2, 3, u"b"}, {9, 4, 5, u"<i>c</i>"}, {9, 4, 5, u"d"}});
  for (const char* id : {"1", "2", "3", "4"}) {
    EXPECT_EQ(count(text, std::string("<generatoritem id=\"Outline Text") + id + "\">"), 1);
  }
  EXPECT_EQ(count(text, "<masterclipid>Outline Text1</masterclipid>"), 4);
}

TEST(FinalCutProXml, WritesTheTextToTheFirstValue) {
  EXPECT_EQ(writtenValue(u"Hello"), "<value>Hello</value>");
  EXPECT_EQ(writtenValue(u""), "<value></value>");
  EXPECT_EQ(count(writtenAt25({{1, 0, 0, u"a"}, {2, 0, 0, u"b"}}), "<value>[TEXT]</value>"), 2);
}

TEST(FinalCutProXml, WritesLineBreaksAsReferences) {
  EXPECT_EQ(writtenValue(u"one\r\ntwo\r\n\r\nthree"), "<value>one&#13;two&#13;&#13;three</value>");
  EXPECT_EQ(writtenValue(u"one\ntwo"), "<value>one\ntwo</value>");
  EXPECT_EQ(writtenValue(u"a_____@___b"), "<value>a&#13;b</value>");
}

TEST(FinalCutProXml, WritesNoUsualTags) {
  EXPECT_EQ(writtenValue(u"<i>Hello</i>\r\n<b>you</b>"), "<value>Hello&#13;you</value>");
  EXPECT_EQ(writtenValue(u"Tom & Jerry < you"), "<value>Tom & Jerry < you</value>");
}

TEST(FinalCutProXml, WritesOtherTagsTwice) {
  // The text as it stands, its line breaks too, and behind it the first element that it parses to.
  EXPECT_EQ(writtenValue(u"<span>a\r\nb</span>"),
            "<value><span>a\r\nb</span><span>a&#13;b</span>\n                                </value>");
  // What can't be parsed is written once; line breaks are marks by then.
  EXPECT_EQ(writtenValue(u"<x\r\ny='1'/>"), "<value><x&#13;y='1'/></value>");
  EXPECT_EQ(writtenValue(u"<x/>\r\n"), "<value><x/>&#13;</value>");
  EXPECT_EQ(writtenValue(u"<font color=\"red\">a\r\nb</font>"), "<value><font color=\"red\">a&#13;b</value>");
}

TEST(FinalCutProXml, WritesStylesButNeverBold) {
  EXPECT_EQ(writtenStyle(u"Hello"), "1");
  EXPECT_EQ(writtenStyle(u"<i>Hello</i>"), "3");
  EXPECT_EQ(writtenStyle(u" <font color=\"red\"><i>Hello</i></font>"), "1") << "the font tag with a colour stays";
  EXPECT_EQ(writtenStyle(u"\r\n<font><i>Hello</i></font> "), "3");
  EXPECT_EQ(writtenStyle(u"<b>Hello</b>"), "1");
  EXPECT_EQ(writtenStyle(u"<i><b>Hello</b></i>"), "4");
  EXPECT_EQ(writtenStyle(u"<b><i>Hello</i></b>"), "4");
  EXPECT_EQ(writtenStyle(u"<i><b>Hello</i></b>"), "1");
  EXPECT_EQ(writtenStyle(u"<i>one</i> and <i>two</i>"), "3");
  EXPECT_EQ(writtenStyle(u"<i>one</i> two"), "1");
}

TEST(FinalCutProXml, WritesTheFontOfTheSettings) {
  const FrameRateScope rate(25);
  const FontScope font(u"Gill & Sans", 42);
  const std::string text = written<FinalCutProXml>({{1, 0, 0, u"x"}});
  EXPECT_EQ(count(text, "<name>Font</name>\n                                <value>Gill & Sans</value>"), 1);
  EXPECT_EQ(count(text, "<valuemax>200</valuemax>\n                                <value>42</value>"), 1);
}

TEST(FinalCutProXml, FillsTheNumberIntoTheFontToo) {
  const FrameRateScope rate(25);
  const FontScope font(u"Font [NUMBER] [FONTSIZE]", 42);
  const std::string text = written<FinalCutProXml>({{1, 0, 0, u"x"}, {2, 0, 0, u"y"}});
  EXPECT_EQ(count(text, "<value>Font 1 [FONTSIZE]</value>"), 1);
  EXPECT_EQ(count(text, "<value>Font 2 [FONTSIZE]</value>"), 1);
}

TEST(FinalCutProXml, WritesNoItemsWhereTheFontBreaksTheMarkup) {
  const FrameRateScope rate(25);
  const FontScope font(u"<b>", 42);
  EXPECT_EQ(count(written<FinalCutProXml>({{1, 0, 0, u"x"}}), "<track/>"), 1);
}

TEST(FinalCutProXml, TakesATitleWhereThereIsNone) {
  const FrameRateScope rate(25);
  const std::string text = wideToString(FinalCutProXml().WriteText(Subtitle(), u""));
  EXPECT_EQ(between(text, "<sequence id=", ">"), "\"Caption Forge subtitle\"");
  EXPECT_EQ(between(text, "<name>", "</name>"), "Caption Forge subtitle");
}

TEST(FinalCutProXml, WritesTheTitleWithItsMarkup) {
  const FrameRateScope rate(25);
  const std::string text = wideToString(FinalCutProXml().WriteText(Subtitle(), u"a & \"b\" xmeml[]"));
  EXPECT_EQ(between(text, "<sequence id=", ">"), "\"a & &quot;b&quot; xmeml\"");
  EXPECT_EQ(between(text, "<name>", "</name>"), "a & \"b\" xmeml");
}

std::string writtenUuid(WStringView header) {
  const FrameRateScope rate(25);
  Subtitle subtitle;
  subtitle.Header = header;
  return between(wideToString(FinalCutProXml().WriteText(subtitle, u"")), "<uuid>", "</uuid>");
}

bool isUpperCaseGuid(const std::string& text) {
  if (text.size() != 36) return false;
  for (size_t i = 0; i < text.size(); ++i) {
    const bool hyphen = i == 8 || i == 13 || i == 18 || i == 23;
    if (hyphen ? text[i] != '-' : !(isDigit(text[i]) || (text[i] >= 'A' && text[i] <= 'F'))) return false;
  }
  return true;
}

TEST(FinalCutProXml, WritesANewUuidOrThatOfTheHeader) {
  EXPECT_PRED1(isUpperCaseGuid, writtenUuid(u""));
  EXPECT_EQ(writtenUuid(u"<xmeml><sequence><uuid>kept <b>it</b></uuid></sequence></xmeml>"), "kept it");
  EXPECT_PRED1(isUpperCaseGuid, writtenUuid(u"<xmeml><sequence><x><uuid>deep</uuid></x></sequence></xmeml>"));
  EXPECT_PRED1(isUpperCaseGuid, writtenUuid(u"<xmeml><sequence><uuid>broken</uuid></sequence>"));
  EXPECT_PRED1(isUpperCaseGuid, writtenUuid(u"[Script Info]"));
}

// --- Reading

TEST(FinalCutProXml, ReadsItemsOfAllTracks) {
  const Lines lines{
      u"<?xml version='1.0'?><!DOCTYPE xmeml>",
      u"<xmeml><sequence id='s'><rate><timebase>25</timebase></rate><media><video><track>",
      item(parameter(u"str", u"a")),
      u"</track><track><x>",
      item(parameter(u"str", u"b"), u"<start>100.5</start><end>1e3</end>"),
      u"</x></track></video><video><track>",
      item(parameter(u"str", u"second video")),
      u"</track></video></media></sequence></xmeml>",
  };
  const FrameRateScope scope(29.97);
  EXPECT_EQ(load<FinalCutProXml>(lines), (Loaded{{{1, 1000, 2000, u"a"}, {2, 100.5 / 25 * 1000, 40000, u"b"}}, 0}));
}

TEST(FinalCutProXml, KeepsTheDocumentWithoutItsFirstTrackAsHeader) {
  const FrameRateScope scope(29.97);
  FinalCutProXml format;
  Subtitle subtitle;
  format.LoadSubtitle(subtitle,
                      {u" <?xml version='1.0'?>", u"<!-- c --><xmeml><sequence id='a &lt; b'><media><video><track>",
                       item(parameter(u"str", u"a")), u"</track><track/></video></media></sequence></xmeml>"},
                      u"");
  EXPECT_EQ(subtitle.Header,
            u"<?xml version='1.0'?><? c ?><xmeml><sequence id=\"a < b\"><media><video><track></track></video></media>"
            u"</sequence></xmeml>");
}

TEST(FinalCutProXml, KeepsTheRateOfAnItemForTheNextOnes) {
  const FrameRateScope scope(29.97);
  const WString items =
      item(parameter(u"str", u"a")) +
      item(parameter(u"str", u"b"), u"<rate><x><timebase>10.9</timebase></x></rate><start>25</start><end>50</end>") +
      item(parameter(u"str", u"c"));
  EXPECT_EQ(load<FinalCutProXml>(sequence(items)).captions,
            (Captions{{1, 1000, 2000, u"a"}, {2, 2500, 5000, u"b"}, {3, 2500, 5000, u"c"}}));
  EXPECT_EQ(GlobalSettings.FrameRate, 10);
}

TEST(FinalCutProXml, CutsTheRateOfTheSettingsWhereTheFileStatesNone) {
  const FrameRateScope scope(29.97);
  EXPECT_EQ(load<FinalCutProXml>(sequence(item(parameter(u"str", u"a")), u"")).captions,
            (Captions{{1, 25 / 29.0 * 1000.0, 50 / 29.0 * 1000.0, u"a"}}));
  EXPECT_EQ(GlobalSettings.FrameRate, 29);
}

TEST(FinalCutProXml, StoresTheRateOfEveryTextThatParses) {
  const FrameRateScope scope(29.97);
  EXPECT_FALSE(recognizes<FinalCutProXml>({u"00:00:01,000 --> 00:00:02,000", u"no tag"}));
  EXPECT_EQ(GlobalSettings.FrameRate, 29.97);
  EXPECT_FALSE(recognizes<FinalCutProXml>({u"<!-- no element -->"}));
  EXPECT_EQ(GlobalSettings.FrameRate, 29.97);
  EXPECT_FALSE(recognizes<FinalCutProXml>({u"00:00:01,000 --> 00:00:02,000", u"<i>a tag at the end</i>"}));
  EXPECT_EQ(GlobalSettings.FrameRate, 29);
  EXPECT_FALSE(
      recognizes<FinalCutProXml>({u"<xmeml><sequence><rate><timebase>12</timebase></rate></sequence></xmeml>"}));
  EXPECT_EQ(GlobalSettings.FrameRate, 12);
}

TEST(FinalCutProXml, CountsAFileWithoutAnElementAsAnError) {
  const FrameRateScope scope(29.97);
  EXPECT_EQ(load<FinalCutProXml>({u"no tag"}), (Loaded{{}, 1}));
  EXPECT_EQ(load<FinalCutProXml>({u"<!-- no element -->"}), (Loaded{{}, 1}));
  EXPECT_EQ(load<FinalCutProXml>({u"<xmeml/>"}), (Loaded{{}, 0}));
}

TEST(FinalCutProXml, SkipsItemsWithoutStartOrEndAsErrors) {
  const FrameRateScope scope(29.97);
  const WString items = item(parameter(u"str", u"a"), u"<rate><timebase>50</timebase></rate><start>25</start>") +
                        item(parameter(u"str", u"b"), u"<end>25</end>") + item(parameter(u"str", u"c"));
  EXPECT_EQ(load<FinalCutProXml>(sequence(items)), (Loaded{{{1, 500, 1000, u"c"}}, 2}));
}

TEST(FinalCutProXml, DividesByARateOfZero) {
  const FrameRateScope scope(29.97);
  const Captions captions =
      load<FinalCutProXml>(sequence(item(parameter(u"str", u"a"), u"<start>-1</start><end>0</end>"),
                                    u"<rate><timebase>fast</timebase></rate>"))
          .captions;
  ASSERT_EQ(captions.size(), 1u);
  EXPECT_EQ(captions[0].start, -std::numeric_limits<double>::infinity());
  EXPECT_TRUE(std::isnan(captions[0].end));
  EXPECT_EQ(GlobalSettings.FrameRate, 0);
}

TEST(FinalCutProXml, ReadsTheFirstParametersThatGiveAText) {
  EXPECT_EQ(textOf(parameter(u"text", u"5") + parameter(u"sourcetext", u"4") + parameter(u"str2", u"3")), u"3");
  EXPECT_EQ(textOf(parameter(u"str", u"") + parameter(u"str1", u"a") + parameter(u"str1", u"b")), u"ab");
  EXPECT_EQ(textOf(parameter(u"str", u"a <b>b</b>") + parameter(u"str1", u"c")), u"a b");
  EXPECT_EQ(textOf(u"<parameter><parameterid>str</parameterid></parameter>" + parameter(u"text", u"t")), u"t");
  EXPECT_EQ(textOf(parameter(u"Str", u"a")), u"");
  EXPECT_EQ(textOf(u""), u"");
}

TEST(FinalCutProXml, ReadsCarriageReturnsAsLineBreaksUnlessThereAreSome) {
  EXPECT_EQ(textOf(parameter(u"str", u"one&#13;two&#xD;three")), u"one\r\ntwo\r\nthree");
  EXPECT_EQ(textOf(parameter(u"str", u"one&#13;&#10;two&#13;three")), u"one\r\ntwo\rthree");
  EXPECT_EQ(textOf(parameter(u"str", u"one\rtwo")), u"one\ntwo");
}

WString styleParameter(WStringView id, WStringView value) {
  WString result = u"<parameter><parameterid>";
  result += id;
  result +=
      u"</parameterid><valuelist><valueentry><name>Plain</name><value>1</value></valueentry><valueentry><name>Bold"
      u"</name><value>2</value></valueentry><valueentry><name> ITALIC </name><value>3</value></valueentry><valueentry>"
      u"<name>Bold/Italic</name><value>4</value></valueentry><valueentry/></valuelist><value>";
  result += value;
  return result + u"</value></parameter>";
}

TEST(FinalCutProXml, ReadsStylesByTheirPlaceInTheList) {
  const auto styled = [](WStringView value) {
    return textOf(styleParameter(u"style", value) + parameter(u"str", u"x"));
  };
  EXPECT_EQ(styled(u"1"), u"x");
  EXPECT_EQ(styled(u"2"), u"<b>x</b>");
  EXPECT_EQ(styled(u"3"), u"<i>x</i>");
  EXPECT_EQ(styled(u"4"), u"<i><b>x</b></i>");
  EXPECT_EQ(styled(u"0004"), u"<i><b>x</b></i>");
  for (WStringView none : {u"0", u"5", u"6", u"99999999999", u"", u"Italic", u"3 ", u"-3"})
    EXPECT_EQ(styled(none), u"x");
}

TEST(FinalCutProXml, ReadsStylesOfBothNames) {
  EXPECT_EQ(textOf(parameter(u"str", u"x") + styleParameter(u"fontstyle", u"2") + styleParameter(u"style", u"3")),
            u"<i><b>x</b></i>");
}

TEST(FinalCutProXml, ReadsBackThePlaceholderOfWhatItWrites) {
  const FrameRateScope rate(25);
  const FontScope font(u"Lucida Grande", 18);
  const WString text =
      FinalCutProXml().WriteText(subtitleOf({{1, 1000, 2000, u"<i>a</i>"}, {2, 3000, 4000, u"b"}}), u"");
  EXPECT_EQ(load<FinalCutProXml>({text}).captions,
            (Captions{{1, 1000, 2000, u"<i>[TEXT]</i>"}, {2, 3000, 4000, u"[TEXT]"}}));
}

// --- Recognising

TEST(FinalCutProXml, RecognizesOneItem) {
  const FrameRateScope scope(29.97);
  EXPECT_TRUE(recognizes<FinalCutProXml>(sequence(item(u""))));
  EXPECT_TRUE(recognizes<FinalCutProXml>(sequence(item(u"", u"") + item(u"", u"") + item(u""))));
  EXPECT_FALSE(recognizes<FinalCutProXml>(sequence(u"")));
  EXPECT_FALSE(recognizes<FinalCutProXml>(sequence(item(u"", u""))));
  EXPECT_TRUE(recognizes<FinalCutProXml>({u"<project>", joinedText(sequence(item(u""))), u"</project>"}));
  EXPECT_FALSE(recognizes<FinalCutProXml>({u"<project><x>", joinedText(sequence(item(u""))), u"</x></project>"}));
}

// --- Bad input

/// Which format of the whole list takes a file of these lines.
Recognized recognizedLines(const Lines& lines) {
  return recognized(std::string(utf8Mark) + wideToString(joinedText(lines)));
}

WString repeated(WStringView text, size_t count) {
  WString result;
  for (size_t i = 0; i < count; ++i) result += text;
  return result;
}

TEST(FinalCutProXml, StandsBrokenDocuments) {
  const FrameRateScope scope(29.97);
  const WString good = joinedText(sequence(item(parameter(u"str", u"x"))));
  EXPECT_EQ(recognizedLines({good}), (Recognized{"Final Cut Pro Xml", 1}));
  EXPECT_EQ(recognizedLines({good, u"text behind"}), (Recognized{"", 0}));
  EXPECT_EQ(recognizedLines({WStringView(good).substr(0, good.size() - 3)}), (Recognized{"", 0}));
  EXPECT_EQ(recognizedLines({u"<a b=\"", good}), (Recognized{"", 0}));
  EXPECT_EQ(recognizedLines({u"<a b='1' b='2'/>", good}), (Recognized{"", 0}));
  EXPECT_EQ(recognizedLines({good, u"<![CDATA["}), (Recognized{"", 0}));
}

TEST(FinalCutProXml, StandsDeepAndLongDocuments) {
  const FrameRateScope scope(29.97);
  EXPECT_EQ(recognizedLines(sequence(repeated(u"<generatoritem>", 100000) + repeated(u"</generatoritem>", 100000))),
            (Recognized{"", 0}));
  const WString longAttribute = u"<x y='" + repeated(u"&amp;0123456", 1000000) + u"'/>";
  EXPECT_EQ(recognizedLines(sequence(longAttribute + item(parameter(u"str", u"x")))),
            (Recognized{"Final Cut Pro Xml", 1}));
  const WString longText = repeated(u"&am", 3000000);
  EXPECT_EQ(recognizedLines(sequence(item(parameter(u"str", longText)))), (Recognized{"Final Cut Pro Xml", 1}));
  EXPECT_EQ(recognizedLines(sequence(item(repeated(parameter(u"str", u"x"), 20000)))),
            (Recognized{"Final Cut Pro Xml", 1}));
}

}  // namespace
}  // namespace mova
