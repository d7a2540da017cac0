#include <gtest/gtest.h>

#include "formats/line/SubRip.h"
#include "formats/script/SubStationAlpha.h"
#include "model/GlobalSettings.h"

namespace mova {
namespace {

const WString v4Format = u"Format: Marked, Start, End, Style, Name, MarginL, MarginR, MarginV, Effect, Text";

struct Loaded {
  Subtitle subtitle;
  int32_t errors;
  const Paragraph& operator[](size_t i) const { return *subtitle.Paragraphs.at(i); }
  size_t size() const { return subtitle.Paragraphs.size(); }
};

Loaded load(const Lines& lines) {
  SubStationAlpha format;
  Loaded loaded;
  format.LoadSubtitle(loaded.subtitle, lines, u"film.ssa");
  loaded.errors = format.ErrorCount;
  return loaded;
}

/// The one event of these lines behind "[Events]".
Paragraph event(std::initializer_list<WStringView> lines) {
  std::vector<size_t> ends;
  WString units = u"[Events]";
  ends.push_back(units.size());
  for (WStringView line : lines) {
    units += line;
    ends.push_back(units.size());
  }
  const Loaded loaded = load(Lines(units, ends));
  EXPECT_EQ(loaded.size(), 1u);
  EXPECT_EQ(loaded.errors, 0);
  return loaded.size() == 1 ? loaded[0] : Paragraph();
}

bool recognizes(const Lines& lines) {
  return SubStationAlpha().Recognizes(lines, u"film.ssa");
}

class SubStationAlphaTest : public testing::Test {
 protected:
  void SetUp() override { GlobalSettings = getDefaultSettings(); }
  void TearDown() override { GlobalSettings = MOVASettings(); }

  WString Written() { return SubStationAlpha().WriteText(subtitle, u"title"); }
  /// The last line of the file that the paragraph gives.
  WString EventLine(const Paragraph& paragraph) {
    subtitle.Paragraphs.clear();
    subtitle.Append(paragraph);
    const WString text = Written();
    return text.substr(text.rfind(u'\n') + 1);
  }

  Subtitle subtitle;
};

const WString defaultHeader =
    u"[Script Info]\r\n; This is a Sub Station Alpha v4 script.\r\nTitle: title\r\nScriptType: v4.00\r\nCollisions: "
    u"Normal\r\nPlayDepth: 0\r\n\r\n[V4 Styles]\r\nFormat: Name, Fontname, Fontsize, PrimaryColour, SecondaryColour, "
    u"TertiaryColour, BackColour, Bold, Italic, BorderStyle, Outline, Shadow, Alignment, MarginL, MarginR, MarginV, "
    u"AlphaLevel, Encoding\r\nStyle: Default,Arial,20,16777215,65535,65535,-2147483640,-1,0,1,2,1,2,10,10,10,0,1\r\n"
    u"\r\n[Events]\r\nFormat: Marked, Start, End, Style, Name, MarginL, MarginR, MarginV, Effect, Text";

TEST_F(SubStationAlphaTest, HasItsNames) {
  const SubStationAlpha format;
  EXPECT_EQ(format.Name(), u"Sub Station Alpha");
  EXPECT_EQ(format.Extension(), u".ssa");
  EXPECT_EQ(format.ExtraExtensions(), std::vector<WString>());
  EXPECT_TRUE(format.SupportsStyles());
  EXPECT_TRUE(format.IsTimeBased());
  EXPECT_TRUE(format.IsTextBased());
}

// --- Recognising

TEST_F(SubStationAlphaTest, RecognizesNothingWithoutASectionOfEvents) {
  EXPECT_FALSE(recognizes({}));
  EXPECT_FALSE(recognizes({u"[Script Info]", v4Format, u"Dialogue: Marked=0,0:00:01.00,0:00:02.00,D,,0,0,0,,x"}));
  EXPECT_FALSE(recognizes({u"[Events", u"Dialogue: Marked=0,0:00:01.00,0:00:02.00,D,,0,0,0,,x"}));
}

TEST_F(SubStationAlphaTest, RecognizesMoreEventsThanErrors) {
  const WString good = u"Dialogue: Marked=0,0:00:01.00,0:00:02.00,D,,0,0,0,,x";
  EXPECT_TRUE(recognizes({u"\t[EVENTS] ", good}));
  EXPECT_FALSE(recognizes({u"[Events]", good, u"[Graphics]"}));
  EXPECT_TRUE(recognizes({u"[Events]", good, u"[Graphics]", good}));
  EXPECT_FALSE(recognizes({u"[Events]", v4Format, u"; nothing", u""}));
}

// --- The sections of a file

TEST_F(SubStationAlphaTest, KeepsAllLinesUpToTheEventsAsHeader) {
  const Loaded loaded = load({u"[Script Info]", u"; a comment", u"", u" [Events]", v4Format,
                              u"Dialogue: Marked=0,0:00:01.00,0:00:02.00,D,,0,0,0,,x"});
  EXPECT_EQ(loaded.subtitle.Header, u"[Script Info]\n; a comment\n\n [Events]\n");
}

TEST_F(SubStationAlphaTest, SkipsBlankLinesAndCommentsAndRepeatedSectionLines) {
  const Loaded loaded = load({u"[Events]", u"", u" \t", u"; x,0:00:01.00,0:00:02.00", u" \t;y", u"[events]",
                              u"x;y,0:00:07.00,0:00:08.00,D,,0,0,0,,none"});
  ASSERT_EQ(loaded.size(), 1u);
  EXPECT_EQ(loaded.errors, 0);
  EXPECT_EQ(loaded[0].Text, u"none");
}

TEST_F(SubStationAlphaTest, TakesAnyOtherLineForAnEvent) {
  const Loaded loaded = load({u"[Events]", u"[Graphics]", u"anything,0:00:07.00,0:00:08.00", u"Style: a,b,c"});
  ASSERT_EQ(loaded.size(), 1u);
  EXPECT_EQ(loaded.errors, 2);
  EXPECT_EQ(loaded[0].StartTime.TotalMilliseconds, 7000);
  EXPECT_EQ(loaded[0].Text, u"");
}

TEST_F(SubStationAlphaTest, NumbersParagraphsFromOne) {
  const Loaded loaded = load({u"[Events]", u",0:00:09.00,0:00:10.00", u"x", u",0:00:01.00,0:00:02.00"});
  ASSERT_EQ(loaded.size(), 2u);
  EXPECT_EQ(loaded[0].Number, 1);
  EXPECT_EQ(loaded[1].Number, 2);
}

// --- The fields of an event

TEST_F(SubStationAlphaTest, ReadsTheFieldsOfAnEvent) {
  const Paragraph p =
      event({v4Format, u"Dialogue: Marked=3,0:00:01.00,1:02:03.45, Sty ,Ann,1,2,3, Fx ,{\\i1}a{\\i0}\\Nb"});
  EXPECT_EQ(p.StartTime.TotalMilliseconds, 1000);
  EXPECT_EQ(p.EndTime.TotalMilliseconds, 3723450);
  EXPECT_EQ(p.Extra, u" Sty ");
  EXPECT_EQ(p.Actor, u"Ann");
  EXPECT_EQ(p.Effect, u" Fx ");
  EXPECT_EQ(p.Text, u"<i>a</i>\r\nb");
  EXPECT_FALSE(p.IsComment);
}

TEST_F(SubStationAlphaTest, HasZeroAsTheLayerOfDialogues) {
  EXPECT_EQ(event({u"Dialogue: 0,0:00:01.00,0:00:02.00,Default,,0,0,0,,x"}).Layer, 0);
  EXPECT_EQ(event({u"Dialogue: 8,0:00:01.00,0:00:02.00,Default,,0,0,0,,x"}).Layer, 0);
  EXPECT_EQ(event({u"8,0:00:01.00,0:00:02.00,Default,,0,0,0,,x"}).Layer, 8);
}

TEST_F(SubStationAlphaTest, CutsTheNameOffDialogLines) {
  // At the tenth unit of the line, whatever stands there.
  EXPECT_EQ(event({u"dialog:   3,0:00:01.00,0:00:02.00"}).Layer, 3);
  EXPECT_EQ(event({u"DIALOG: xy4,0:00:01.00,0:00:02.00"}).Layer, 4);
  EXPECT_EQ(event({u"  Dialog:  7,0:00:01.00,0:00:02.00"}).Layer, 7);
  EXPECT_EQ(event({u"    Dialog: 7,0:00:01.00,0:00:02.00"}).Layer, 0);  // ": 7"
  EXPECT_EQ(event({u"Dialog : 9,0:00:01.00,0:00:02.00"}).Layer, 0);
}

TEST_F(SubStationAlphaTest, CountsAShortDialogLineAsAnError) {
  for (WStringView line : {u"dialog:", u"dialog:12", u"dialog:123"}) {
    const Loaded loaded = load({u"[Events]", line});
    EXPECT_EQ(loaded.size(), 0u);
    EXPECT_EQ(loaded.errors, 1);
  }
}

TEST_F(SubStationAlphaTest, KeepsCommasOfTheText) {
  EXPECT_EQ(event({u"Dialogue: 0,0:00:01.00,0:00:02.00,D,,0,0,0,,a,b,c"}).Text, u"a,b,c");
  EXPECT_EQ(event({u"Dialogue: 0,0:00:01.00,0:00:02.00,D,,0,0,0,,,a,,b, c"}).Text, u",a,,b, c");
}

TEST_F(SubStationAlphaTest, LosesOneCommaAtTheEndOfTheText) {
  EXPECT_EQ(event({u"Dialogue: 0,0:00:01.00,0:00:02.00,D,,0,0,0,,a,"}).Text, u"a");
  EXPECT_EQ(event({u"Dialogue: 0,0:00:01.00,0:00:02.00,D,,0,0,0,,a,,"}).Text, u"a,");
}

TEST_F(SubStationAlphaTest, ReadsEventsWithFewFields) {
  const Paragraph p = event({u"Dialogue: 0,0:00:01.00,0:00:02.00"});
  EXPECT_EQ(p.EndTime.TotalMilliseconds, 2000);
  EXPECT_EQ(p.Text, u"");
  EXPECT_EQ(p.Extra, u"");
  const Loaded loaded = load({u"[Events]", u"Dialogue: 0,0:00:01.00", u"Dialogue: 0", u","});
  EXPECT_EQ(loaded.size(), 0u);
  EXPECT_EQ(loaded.errors, 3);
}

TEST_F(SubStationAlphaTest, MarksComments) {
  EXPECT_TRUE(event({u"Comment: 0,0:00:01.00,0:00:02.00,D,,0,0,0,,x"}).IsComment);
  EXPECT_TRUE(event({u" COMMENT:0,0:00:01.00,0:00:02.00,D,,0,0,0,,x"}).IsComment);
  EXPECT_FALSE(event({u"Comment : 0,0:00:01.00,0:00:02.00,D,,0,0,0,,x"}).IsComment);
}

TEST_F(SubStationAlphaTest, SurvivesUnclosedBracesAndTags) {
  EXPECT_EQ(event({u",0:00:01.00,0:00:02.00,D,,0,0,0,,{\\i1"}).Text, u"{\\i1");
  EXPECT_EQ(event({u",0:00:01.00,0:00:02.00,D,,0,0,0,,a}{b{\\c&H{\\fn<i>"}).Text, u"a}{b{\\c&H{\\fn<i></i>");
}

TEST_F(SubStationAlphaTest, SurvivesHugeLines) {
  const WString text(300000, u',');
  EXPECT_EQ(event({u",0:00:01.00,0:00:02.00,D,,0,0,0,," + text}).Text.size(), text.size() - 1);
  EXPECT_EQ(load({u"[Events]", WString(300000, u':')}).errors, 1);
  EXPECT_EQ(load({u"[Events]", u"Format: " + text, u",0:00:01.00,0:00:02.00"}).size(), 1u);
}

// --- Format lines

TEST_F(SubStationAlphaTest, TakesTheColumnsOfTheFormatLine) {
  const Paragraph p =
      event({u"format:  EFFECT ,End,  Start,layer, x, Style, Text ", u"Fx,0:00:02.00,0:00:01.00,7,Act,Sty,a,b"});
  EXPECT_EQ(p.Effect, u"Fx");
  EXPECT_EQ(p.StartTime.TotalMilliseconds, 1000);
  EXPECT_EQ(p.EndTime.TotalMilliseconds, 2000);
  EXPECT_EQ(p.Layer, 7);
  EXPECT_EQ(p.Actor, u"Act");
  EXPECT_EQ(p.Extra, u"Sty");
  EXPECT_EQ(p.Text, u"a,b");
}

TEST_F(SubStationAlphaTest, HasTheActorInTheFifthFieldWhateverTheFormatLineSays) {
  const Paragraph p = event({u"Format: Name, Start, End, Style, Text", u"Ann,0:00:01.00,0:00:02.00,Sty,Hello"});
  EXPECT_EQ(p.Actor, u"Hello");
  EXPECT_EQ(p.Text, u"Hello");
}

TEST_F(SubStationAlphaTest, GivesAFieldToTheFirstColumnThatClaimsIt) {
  // Style stays at the fourth field, which is the text here; the fifth is the actor and not part of the text.
  const Paragraph text =
      event({u"Format: Start, End, Layer, Text, Name", u"0:00:01.00,0:00:02.00,9,Hello,Act,tail,tail2"});
  EXPECT_EQ(text.Layer, 9);
  EXPECT_EQ(text.Text, u"Hello,tail,tail2");
  EXPECT_EQ(text.Extra, u"");
  EXPECT_EQ(text.Actor, u"Act");
  // Without a blank behind the colon the first name is "tyle".
  const Paragraph start =
      event({u"Format:Style, Layer, Text, Effect", u"Dialogue: 1,0:00:01.00,0:00:02.00,Sty,Act,10,20,30,Fx,t"});
  EXPECT_EQ(start.Layer, 0);
  EXPECT_EQ(start.Effect, u"Sty");
  EXPECT_EQ(start.Extra, u"");
  EXPECT_EQ(start.Text, u",10,20,30,Fx,t");
}

TEST_F(SubStationAlphaTest, IgnoresAFormatLineOfTenUnits) {
  EXPECT_EQ(event({u"Format: En", u"Dialogue: 1,0:00:01.00,0:00:02.00"}).EndTime.TotalMilliseconds, 2000);
  EXPECT_EQ(event({u"Format: End", u"0:00:02.00,0:00:01.00,0:00:03.00"}).EndTime.TotalMilliseconds, 2000);
}

TEST_F(SubStationAlphaTest, IgnoresAFormatLineWithoutColumns) {
  for (WStringView format : {u"Format:", u"Format:      ", u"Format: ,,,,,,,"}) {
    EXPECT_EQ(event({format, u"Dialogue: 1,0:00:01.00,0:00:02.00,D,,0,0,0,,x"}).Text, u"x");
  }
}

TEST_F(SubStationAlphaTest, CountsTheUnitsOfAFormatLineWithItsIndentation) {
  // From the eighth unit of the line on: "t: Text, x" and the first name is lost.
  EXPECT_EQ(event({u"   Format: Text, Layer", u"Dialogue: 1,0:00:01.00,0:00:02.00,D,,0,0,0,,x"}).Text, u"x");
}

TEST_F(SubStationAlphaTest, ObeysAFormatLineFromThereOn) {
  const Loaded loaded = load({u"[Events]", u"Dialogue: 0,0:00:01.00,0:00:03.50,D,,0,0,0,,before",
                              u"format: Layer, End, Start, Style, Name, MarginL, MarginR, MarginV, Effect, Text",
                              u"Dialogue: 0,0:00:20.00,0:00:22.50,D,,0,0,0,,after"});
  ASSERT_EQ(loaded.size(), 2u);
  EXPECT_EQ(loaded[0].StartTime.TotalMilliseconds, 1000);
  EXPECT_EQ(loaded[1].StartTime.TotalMilliseconds, 22500);
  EXPECT_EQ(loaded[1].EndTime.TotalMilliseconds, 20000);
}

// --- Times

TEST_F(SubStationAlphaTest, ReadsTimesAsNumbers) {
  const auto time = [](WStringView text) {
    const auto parsed = parseSsaTime(text);
    return parsed ? parsed->TotalMilliseconds : -0.5;
  };
  EXPECT_EQ(time(u"1:02:03.45"), 3723450);
  EXPECT_EQ(time(u"0:00:01.5"), 1050);
  EXPECT_EQ(time(u"0:00:01.123"), 2230);
  EXPECT_EQ(time(u"0.00.09:07.99"), 9070);
  EXPECT_EQ(time(u"0:00:-1.00"), -1000);
  EXPECT_EQ(time(u"-1:01:00.00"), -3540000);
  EXPECT_EQ(time(u"0:61:61.00"), 3721000);
  EXPECT_EQ(time(u":::"), 0);
  EXPECT_EQ(time(u"a:b:c.d"), 0);
  EXPECT_EQ(time(u"0:00:01"), -0.5);
  EXPECT_EQ(time(u""), -0.5);
}

TEST_F(SubStationAlphaTest, LetsTimesWrap) {
  EXPECT_EQ(parseSsaTime(u"596:31:23.64")->TotalMilliseconds, 2147483640);
  EXPECT_EQ(parseSsaTime(u"596:31:23.65")->TotalMilliseconds, -2147483646);
  EXPECT_EQ(parseSsaTime(u"99999999999:00:00.00")->TotalMilliseconds, -3600000);
}

TEST_F(SubStationAlphaTest, TrimsTimes) {
  EXPECT_EQ(event({u",\t0:00:07.00 ,\v0:00:08.00\t"}).EndTime.TotalMilliseconds, 8000);
}

TEST_F(SubStationAlphaTest, WritesTimesWithHundredths) {
  EXPECT_EQ(EventLine({u"x", 3723450, 3723459.99}),
            u"Dialogue: Marked=0,1:02:03.45,1:02:03.45,Default,NTP,0000,0000,0000,!Effect,x");
  EXPECT_EQ(EventLine({u"x", 0.9, 360000000}),
            u"Dialogue: Marked=0,0:00:00.00,100:00:00.00,Default,NTP,0000,0000,0000,!Effect,x");
}

TEST_F(SubStationAlphaTest, WritesNegativeTimesWithASignOnEachField) {
  EXPECT_EQ(EventLine({u"x", -3723450, -500}),
            u"Dialogue: Marked=0,-1:-2:-3.-45,0:00:00.-50,Default,NTP,0000,0000,0000,!Effect,x");
}

// --- Writing

TEST_F(SubStationAlphaTest, WritesTheStyleOfTheSettingsForOtherFormats) {
  subtitle.Append({u"<i>a</i>\r\nb", 1000, 2500});
  subtitle.Append({u"c", 3000, 4000});
  EXPECT_EQ(Written(), defaultHeader +
                           u"\nDialogue: Marked=0,0:00:01.00,0:00:02.50,Default,NTP,0000,0000,0000,!Effect,"
                           u"{\\i1}a{\\i0}\\Nb\nDialogue: Marked=0,0:00:03.00,0:00:04.00,Default,NTP,0000,0000,0000,"
                           u"!Effect,c");
}

TEST_F(SubStationAlphaTest, WritesTheHeaderAloneForAnEmptySubtitle) {
  EXPECT_EQ(Written(), defaultHeader);
}

TEST_F(SubStationAlphaTest, IgnoresHeadersOfOtherKinds) {
  subtitle.Header = u"[v4 styles]\nStyle: A,1\n";
  EXPECT_EQ(Written(), defaultHeader);
}

TEST_F(SubStationAlphaTest, WritesAllFieldsOfAnEvent) {
  Paragraph p(u"x", 0, 0);
  p.Layer = -12;
  p.Actor = u"Ann";
  p.Effect = u"Fx";
  p.Extra = u"Sty";  // not in the header
  EXPECT_EQ(EventLine(p), u"Dialogue: Marked=-12,0:00:00.00,0:00:00.00,Default,Ann,0000,0000,0000,Fx,x");
  p.IsComment = true;
  EXPECT_EQ(EventLine(p), u"Comment: Marked=-12,0:00:00.00,0:00:00.00,Default,Ann,0000,0000,0000,Fx,x");
}

TEST_F(SubStationAlphaTest, TrimsTheWholeFile) {
  subtitle.Append({u"a \t", 0, 0});
  subtitle.Append({u"b \t", 0, 0});
  EXPECT_EQ(Written(), defaultHeader +
                           u"\nDialogue: Marked=0,0:00:00.00,0:00:00.00,Default,NTP,0000,0000,0000,!Effect,a \t\n"
                           u"Dialogue: Marked=0,0:00:00.00,0:00:00.00,Default,NTP,0000,0000,0000,!Effect,b");
}

TEST_F(SubStationAlphaTest, EndsTextsAtAZeroUnit) {
  const WString zero(1, u'\0');
  Paragraph p(u"a" + zero + u"b", 0, 0);
  p.Actor = u"c" + zero + u"d";
  p.Effect = zero + u"e";  // is not empty
  EXPECT_EQ(EventLine(p), u"Dialogue: Marked=0,0:00:00.00,0:00:00.00,Default,c,0000,0000,0000,,a");
}

TEST_F(SubStationAlphaTest, KeepsTheHeaderOfAScript) {
  subtitle.Header = u"\n [Script Info]\nTitle: x\n\n[V4 Styles]\nStyle: A,1\nstyle: b b ,2\n\n[Events]\n";
  subtitle.Append({u"x", 0, 0}).Extra = u"b b";
  subtitle.Append({u"x", 0, 0}).Extra = u"a";
  subtitle.Append({u"x", 0, 0}).Extra = u"A";
  subtitle.Append({u"x", 0, 0});
  EXPECT_EQ(Written(), u"[Script Info]\nTitle: x\n\n[V4 Styles]\nStyle: A,1\nstyle: b b ,2\n\n[Events]\n" + v4Format +
                           u"\nDialogue: Marked=0,0:00:00.00,0:00:00.00,b b,NTP,0000,0000,0000,!Effect,x"
                           u"\nDialogue: Marked=0,0:00:00.00,0:00:00.00,Default,NTP,0000,0000,0000,!Effect,x"
                           u"\nDialogue: Marked=0,0:00:00.00,0:00:00.00,A,NTP,0000,0000,0000,!Effect,x"
                           u"\nDialogue: Marked=0,0:00:00.00,0:00:00.00,Default,NTP,0000,0000,0000,!Effect,x");
}

TEST_F(SubStationAlphaTest, DoesNotRepeatTheFormatLineOfTheEvents) {
  subtitle.Header = u"[V4 Styles]\n; " + v4Format + u"\n[Events]";
  EXPECT_EQ(Written(), subtitle.Header);
  subtitle.Header = u"[V4 Styles]\n; format: marked, start\n[Events]";
  EXPECT_EQ(Written(), subtitle.Header + u"\n" + v4Format);
}

TEST_F(SubStationAlphaTest, WritesAnAdvancedHeaderWithNoLineBreakBeforeTheFirstEvent) {
  subtitle.Header = u"[V4+ Styles]\nFormat: Name, Fontsize\nStyle: Ab,30\n[Events]\n";
  subtitle.Append({u"x", 0, 0}).Extra = u"Ab";  // Styles of events stay behind.
  subtitle.Append({u"y", 0, 0});
  const WString header = defaultHeader;
  const size_t style = header.find(u"Style: Default");
  EXPECT_EQ(Written(), header.substr(0, style) +
                           u"Style: Ab,Arial,20,-1,-256,-16777216,-16777216,-1,0,1,2,1,2,10,10,10,0,1\n" +
                           header.substr(header.find(u"\r\n\r\n[Events]")) +
                           u"Dialogue: Marked=0,0:00:00.00,0:00:00.00,Default,NTP,0000,0000,0000,!Effect,x\n"
                           u"Dialogue: Marked=0,0:00:00.00,0:00:00.00,Default,NTP,0000,0000,0000,!Effect,y");
}

TEST_F(SubStationAlphaTest, WritesAnAdvancedHeaderWithoutStylesAsTheSettingsSay) {
  subtitle.Header = u"[V4+ Styles]\n[Events]\n";
  subtitle.Append({u"x", 0, 0});
  EXPECT_EQ(Written(),
            defaultHeader + u"Dialogue: Marked=0,0:00:00.00,0:00:00.00,Default,NTP,0000,0000,0000,!Effect,x");
}

TEST_F(SubStationAlphaTest, WritesATimedTextHeaderWithNoLineBreakBeforeTheFirstEvent) {
  subtitle.Header =
      u"<tt xmlns=\"http://www.w3.org/ns/ttml\"><head><styling><style id=\"s\"/></styling></head><body/></tt>\n";
  subtitle.Append({u"x", 0, 0}).Extra = u"s";
  const WString header = defaultHeader;
  EXPECT_EQ(Written(), header.substr(0, header.find(u"Style: Default")) +
                           u"Style: s,Arial,20,0,65535,65535,-2147483640,-1,0,1,3,0,2,10,10,10,0,1\n" +
                           header.substr(header.find(u"\r\n\r\n[Events]")) +
                           u"Dialogue: Marked=0,0:00:00.00,0:00:00.00,Default,NTP,0000,0000,0000,!Effect,x");
}

TEST_F(SubStationAlphaTest, PrefersTheOlderStylesOfAHeader) {
  subtitle.Header = u"[V4+ Styles]\nhttp://www.w3.org/ns/ttml\n[V4 Styles]\n" + v4Format;
  EXPECT_EQ(Written(), subtitle.Header);
  subtitle.Header = u"[V4+ Styles]\nhttp://www.w3.org/ns/ttml\n";
  EXPECT_EQ(Written(), defaultHeader);
}

TEST_F(SubStationAlphaTest, ReadsBackWhatItWrote) {
  Paragraph& p = subtitle.Append({u"<font color=\"#ff0000\">a, b</font> and so much more\r\n<b>c</b>", 1230, 4560});
  p.Actor = u"Ann";
  p.IsComment = true;
  subtitle.Header = u"[V4 Styles]\nStyle: A,1\n\n[Events]\n" + v4Format;
  p.Extra = u"A";
  const WString text = Written();
  std::vector<size_t> ends;
  WString units;
  for (char16_t unit : text) {
    if (unit == u'\n') {
      ends.push_back(units.size());
    } else {
      units += unit;
    }
  }
  ends.push_back(units.size());
  const Loaded loaded = load(Lines(units, ends));
  ASSERT_EQ(loaded.size(), 1u);
  // A colour comes back with six zeros in front.
  EXPECT_EQ(loaded[0].Text, u"<font color=\"#000000ff0000\">a, b</font> and so much more\r\n<b>c</b>");
  EXPECT_EQ(loaded[0].StartTime.TotalMilliseconds, 1230);
  EXPECT_EQ(loaded[0].Extra, u"A");
  EXPECT_EQ(loaded[0].Actor, u"Ann");
  EXPECT_TRUE(loaded[0].IsComment);
}

// --- Stripping

WString stripped(WStringView text) {
  Subtitle subtitle;
  subtitle.Append({WString(text), 0, 0});
  SubRip other;
  SubStationAlpha().StripNativeFormatting(subtitle, other);
  return subtitle.Paragraphs[0]->Text;
}

TEST_F(SubStationAlphaTest, StripsAllBlocksAndKeepsTheLastPosition) {
  EXPECT_EQ(stripped(u"{\\i1}a{\\i0} b{\\fs20}"), u"a b");
  EXPECT_EQ(stripped(u"{\\an1}a{\\an3\\i1}b{\\i0}"), u"{\\an3}ab");
  EXPECT_EQ(stripped(u"a{\\an8}"), u"{\\an8}a");
  EXPECT_EQ(stripped(u"{\\i1\\an8}a"), u"a");  // only at the start of a block
  EXPECT_EQ(stripped(u"a"), u"a");
  EXPECT_EQ(stripped(u""), u"");
}

TEST_F(SubStationAlphaTest, KnowsTheNineNewerPositions) {
  for (char16_t digit = u'1'; digit <= u'9'; ++digit) {
    const WString tag = WString(u"{\\an") + digit;
    EXPECT_EQ(stripped(tag + u"}x"), tag + u"}x");
    EXPECT_EQ(stripped(tag + u"\\i1}x"), tag + u"}x");
    EXPECT_EQ(stripped(tag + u"i}x"), u"x");
  }
  EXPECT_EQ(stripped(u"{\\an0}x"), u"x");
  EXPECT_EQ(stripped(u"{\\an10}x"), u"x");
}

TEST_F(SubStationAlphaTest, TranslatesTheOlderPositions) {
  const std::pair<WStringView, WStringView> rows[] = {
      {u"1", u"{\\a1}"},   {u"3", u"{\\a3}"},  {u"9", u"{\\an4}"}, {u"10", u"{\\an5}"},
      {u"11", u"{\\an6}"}, {u"5", u"{\\an7}"}, {u"6", u"{\\an8}"}, {u"7", u"{\\an9}"},
  };
  for (const auto& [number, position] : rows) {
    EXPECT_EQ(stripped(u"{\\a" + WString(number) + u"}x"), WString(position) + u"x");
    EXPECT_EQ(stripped(u"{\\a" + WString(number) + u"\\b1}x"), WString(position) + u"x");
  }
}

TEST_F(SubStationAlphaTest, DropsOlderNumbersThatAreNoPosition) {
  for (WStringView number : {u"2", u"4", u"8", u"12", u"", u"lpha"}) {
    EXPECT_EQ(stripped(u"{\\a" + WString(number) + u"}x"), u"x");
  }
}

TEST_F(SubStationAlphaTest, StopsStrippingAtAClosingBraceThatComesFirst) {
  EXPECT_EQ(stripped(u"a}b{\\an8}c"), u"a}b{\\an8}c");
  EXPECT_EQ(stripped(u"{\\an8}a}b{\\an1}c"), u"{\\an8}a}b{\\an1}c");
  EXPECT_EQ(stripped(u"{\\an8}a{b"), u"{\\an8}a{b");
  EXPECT_EQ(stripped(u"{a{b}c}d"), u"c}d");
}

TEST_F(SubStationAlphaTest, StripsLongTextsInLinearTime) {
  WString text;
  for (int i = 0; i < 300000; ++i) text += u"{\\an8}x";
  EXPECT_EQ(stripped(text).size(), 300006u);
}

TEST_F(SubStationAlphaTest, StripsNothingForTheAdvancedFormat) {
  class Advanced : public SubRip {
    WString Name() const override { return u"Advanced Sub Station Alpha"; }
  };
  Subtitle unchanged;
  unchanged.Append({u"{\\i1}x", 0, 0});
  Advanced advanced;
  SubStationAlpha().StripNativeFormatting(unchanged, advanced);
  EXPECT_EQ(unchanged.Paragraphs[0]->Text, u"{\\i1}x");
}

}  // namespace
}  // namespace mova
