#include <gtest/gtest.h>

#include "formats/script/BelleNuitSubtitler.h"
#include "model/GlobalSettings.h"

namespace mova {
namespace {

class BelleNuitSubtitlerTest : public testing::Test {
 protected:
  void SetUp() override {
    GlobalSettings = getDefaultSettings();
    GlobalSettings.FrameRate = 25;
  }
  void TearDown() override { GlobalSettings = MOVASettings(); }

  /// The `string` element of the file that these paragraphs give.
  WString Element() {
    const WString text = BelleNuitSubtitler().WriteText(subtitle, u"title");
    const size_t key = text.find(u"<key>titlelist</key>\n    ");
    const size_t end = text.find(u"\n</xmldict>");
    if (key == WString::npos || end == WString::npos) return u"missing";
    return text.substr(key + 25, end - key - 25);
  }
  /// The line of the two times that a paragraph with this start gives.
  WString TimeLine(double start) {
    subtitle.Paragraphs.clear();
    subtitle.Append({u"x", start, 0});
    const WString element = Element();
    return element.substr(8, element.find(u'\n') - 8);
  }

  Subtitle subtitle;
};

struct Loaded {
  Subtitle subtitle;
  int32_t errors;
  const Paragraph& operator[](size_t i) const { return *subtitle.Paragraphs.at(i); }
  size_t size() const { return subtitle.Paragraphs.size(); }
};

Loaded loadFile(WStringView file) {
  BelleNuitSubtitler format;
  Loaded loaded;
  WString units;
  std::vector<size_t> ends;
  for (char16_t unit : file) {
    if (unit == u'\n') {
      ends.push_back(units.size());
    } else {
      units += unit;
    }
  }
  ends.push_back(units.size());
  format.LoadSubtitle(loaded.subtitle, Lines(units, ends), u"film.stp");
  loaded.errors = format.ErrorCount;
  return loaded;
}

Loaded load(WStringView titleList) {
  return loadFile(u"<xmldict><key>titlelist</key><string>" + WString(titleList) + u"</string></xmldict>");
}

/// The text of a caption whose lines these are.
WString textOf(WStringView lines) {
  const Loaded loaded = load(u"/tc 00:00:01:00 00:00:02:00\n" + WString(lines));
  EXPECT_EQ(loaded.size(), 1u);
  EXPECT_EQ(loaded.errors, 0);
  return loaded.size() == 1 ? loaded[0].Text : u"missing";
}

TEST_F(BelleNuitSubtitlerTest, HasItsNames) {
  const BelleNuitSubtitler format;
  EXPECT_EQ(format.Name(), u"Belle Nuit Subtitler");
  EXPECT_EQ(format.Extension(), u".stp");
  EXPECT_EQ(format.ExtraExtensions(), std::vector<WString>());
  EXPECT_FALSE(format.SupportsStyles());
}

// --- Writing

TEST_F(BelleNuitSubtitlerTest, WritesTheTitleListBehindItsKey) {
  subtitle.Append({u"Good evening.", 1000, 2480});
  subtitle.Append({u"a\r\nb", 3000, 4000});
  EXPECT_EQ(Element(),
            u"<string>/tc 00:00:01:00 00:00:02:12\nGood evening.\n\n/tc 00:00:03:00 00:00:04:00\na\nb\n\n</string>");
}

TEST_F(BelleNuitSubtitlerTest, WritesTheFixedSettings) {
  const WString text = BelleNuitSubtitler().WriteText(subtitle, u"title");
  const WString start =
      u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<xmldict>\n    <key>document</key>\n    <dict>\n        "
      u"<key>creator</key>\n        <string>SICT</string>\n        <key>type</key>\n        <string>STLI</string>\n"
      u"        <key>version</key>\n        <real>1.4</real>\n        <key>applicationversion</key>\n        "
      u"<string>Belle Nuit Subtitler 1.7.8</string>\n        <key>creationdate</key>\n        <date>2012-03-13 "
      u"16:30:32</date>\n        <key>modificationdate</key>\n        <date>2012-03-13 16:30:32</date>\n    </dict>\n"
      u"    <key>mainleft</key>\n    <integer>40</integer>\n";
  const WString end =
      u"        <key>framerate</key>\n        <string>25</string>\n    </dict>\n    <key>folderpath</key>\n    "
      u"<string/>\n    <key>prefix</key>\n    <string/>\n    <key>moviepath</key>\n    <string/>\n    "
      u"<key>movieoffset</key>\n    <string>00:00:00:00</string>\n    <key>moviesyncoption</key>\n    <true/>\n    "
      u"<key>pagesetup</key>\n    <null/>\n    <key>titlelist</key>\n    <string>\n\n</string>\n</xmldict>";
  EXPECT_TRUE(text.starts_with(start));
  EXPECT_TRUE(text.ends_with(end));
}

TEST_F(BelleNuitSubtitlerTest, WritesOnlyLineFeeds) {
  subtitle.Append({u"{\\an3}a\r\nb\r\n\r\nc", 0, 0});
  EXPECT_EQ(BelleNuitSubtitler().WriteText(subtitle, u"title").find(u'\r'), WString::npos);
}

TEST_F(BelleNuitSubtitlerTest, TrimsTextsAndTheWholeList) {
  subtitle.Append({u" \r\na\r\n ", 0, 0});
  subtitle.Append({u"\t", 0, 0});
  EXPECT_EQ(Element(), u"<string>/tc 00:00:00:00 00:00:00:00\na\n\n/tc 00:00:00:00 00:00:00:00\n\n</string>");
}

TEST_F(BelleNuitSubtitlerTest, LetsMarkupThrough) {
  subtitle.Append({u"<i>a</i> & <b>b</b> 1 < 2", 0, 0});
  EXPECT_EQ(Element(), u"<string>/tc 00:00:00:00 00:00:00:00\n<i>a</i> & b 1 < 2\n\n</string>");
}

TEST_F(BelleNuitSubtitlerTest, EndsATextAtAZeroUnit) {
  subtitle.Append({WString(u"a\0b", 3), 0, 0});
  subtitle.Append({u"c", 0, 0});
  EXPECT_EQ(Element(), u"<string>/tc 00:00:00:00 00:00:00:00\na\n\n/tc 00:00:00:00 00:00:00:00\nc\n\n</string>");
}

TEST_F(BelleNuitSubtitlerTest, RoundsTimesToFrames) {
  EXPECT_EQ(TimeLine(59.9), u"/tc 00:00:00:01 00:00:00:00");
  EXPECT_EQ(TimeLine(60), u"/tc 00:00:00:02 00:00:00:00");
  EXPECT_EQ(TimeLine(3723480), u"/tc 01:02:03:12 00:00:00:00");
  EXPECT_EQ(TimeLine(999), u"/tc 00:00:00:25 00:00:00:00");  // A full second is not carried.
  EXPECT_EQ(TimeLine(360000000), u"/tc 100:00:00:00 00:00:00:00");
  EXPECT_EQ(TimeLine(-3723480), u"/tc -1:-2:-3:-12 00:00:00:00");
}

TEST_F(BelleNuitSubtitlerTest, EndsASecondAtItsLastFrameFromThirtyOn) {
  GlobalSettings.FrameRate = 29.97;
  EXPECT_EQ(TimeLine(999), u"/tc 00:00:00:29 00:00:00:00");
  GlobalSettings.FrameRate = 50;
  EXPECT_EQ(TimeLine(580), u"/tc 00:00:00:29 00:00:00:00");
  EXPECT_EQ(TimeLine(600), u"/tc 00:00:00:49 00:00:00:00");
  // With the rate in full precision: in single precision this would be 49.
  GlobalSettings.FrameRate = 50.01;
  EXPECT_EQ(TimeLine(600), u"/tc 00:00:00:50 00:00:00:00");
}

// --- Positions and styles

TEST_F(BelleNuitSubtitlerTest, TurnsPositionsIntoStyleLines) {
  EXPECT_EQ(textToNativeStyle(u"{\\an1} x "), u"/STYLE LEFT\r\nx");
  EXPECT_EQ(textToNativeStyle(u"{\\an2} x "), u"x");
  EXPECT_EQ(textToNativeStyle(u"{\\an3}\r\nx"), u"/STYLE RIGHT\r\nx");
  EXPECT_EQ(textToNativeStyle(u"{\\an4}x"), u"/STYLE LEFT\r\nx");
  EXPECT_EQ(textToNativeStyle(u"{\\an5}x"), u"x");
  EXPECT_EQ(textToNativeStyle(u"{\\an6}x"), u"/STYLE RIGHT\r\nx");
  EXPECT_EQ(textToNativeStyle(u"{\\an7}x"), u"/STYLE VERTICAL(-25)\r\nx");
  EXPECT_EQ(textToNativeStyle(u"{\\an8}x"), u"/STYLE VERTICAL(-25)\r\nx");
  EXPECT_EQ(textToNativeStyle(u"{\\an9}x"), u"/STYLE VERTICAL(-25)\r\nx");
}

TEST_F(BelleNuitSubtitlerTest, TurnsOnePositionAtTheStartOnly) {
  EXPECT_EQ(textToNativeStyle(u"{\\an3}{\\an1}x"), u"/STYLE RIGHT\r\n{\\an1}x");
  EXPECT_EQ(textToNativeStyle(u"{\\an2}{\\an1}x"), u"{\\an1}x");
  for (WStringView text : {u"{\\an0}x", u"x{\\an8}", u"{\\an8", u"{\\an", u"{\\an8\\i1}x", u" x ", u"{\\i1}x"}) {
    EXPECT_EQ(textToNativeStyle(text), text);
  }
}

TEST_F(BelleNuitSubtitlerTest, RemovesBoldUnderlineAndFontBeforeItLooksForThePosition) {
  EXPECT_EQ(textToNativeStyle(u"<b>{\\an8}</b><u>x</u><font>y</font>"), u"/STYLE VERTICAL(-25)\r\nxy");
  EXPECT_EQ(textToNativeStyle(u"<font color=\"red\">x</font>"), u"<font color=\"red\">x");
}

TEST_F(BelleNuitSubtitlerTest, RepairsItalics) {
  EXPECT_EQ(textToNativeStyle(u"{\\an1}< i >a< / i >"), u"/STYLE LEFT\r\n<i>a</i>");
  EXPECT_EQ(textToNativeStyle(u"a\r\n<i>b"), u"a\r\n<i>b</i>");
}

TEST_F(BelleNuitSubtitlerTest, TurnsStyleLinesIntoPositions) {
  EXPECT_EQ(nativeStyleToText(u"/STYLE RIGHT\r\nx"), u"{\\an3}x");
  EXPECT_EQ(nativeStyleToText(u"/STYLE LEFT\nx"), u"{\\an1}x");
  EXPECT_EQ(nativeStyleToText(u"/STYLE TOP\n  x "), u"{\\an8}x");
  EXPECT_EQ(nativeStyleToText(u"\n/STYLE TOP"), u"{\\an8}");
  EXPECT_EQ(nativeStyleToText(u"/style top\nx"), u"/style top\nx");
  EXPECT_EQ(nativeStyleToText(u"x\n/STYLE TOP"), u"x\n/STYLE TOP");
}

TEST_F(BelleNuitSubtitlerTest, TurnsVerticalStylesIntoTopAndMiddle) {
  for (int value = 25; value >= 10; --value) {
    WString text = u"/STYLE VERTICAL(-";
    text += {char16_t(u'0' + value / 10), char16_t(u'0' + value % 10)};
    EXPECT_EQ(nativeStyleToText(text + u")\r\nx"), value >= 18 ? u"{\\an8}x" : u"{\\an5}x") << value;
  }
  for (WStringView text : {u"/STYLE VERTICAL(-9)\r\nx", u"/STYLE VERTICAL(-26)\r\nx", u"/STYLE VERTICAL(20)\r\nx"}) {
    EXPECT_EQ(nativeStyleToText(text), text);
  }
}

TEST_F(BelleNuitSubtitlerTest, ReducesBlankLinesInOnePassEach) {
  EXPECT_EQ(nativeStyleToText(u"a\nb"), u"a\nb");
  EXPECT_EQ(nativeStyleToText(u"a\n\nb"), u"a\nb");
  EXPECT_EQ(nativeStyleToText(u"a\n\n\nb"), u"a\nb");
  EXPECT_EQ(nativeStyleToText(u"a\n\n\n\nb"), u"a\n\nb");
  EXPECT_EQ(nativeStyleToText(u"a\n\n\n\n\n\n\nb"), u"a\n\n\nb");
}

// --- Reading

TEST_F(BelleNuitSubtitlerTest, ReadsTheTitleList) {
  const Loaded loaded =
      load(u"/tc 00:00:01:00 00:00:02:12\nGood evening.\n\n/tc 01:02:03:24 25:00:00:00\n/STYLE TOP\na\nb\n\n");
  ASSERT_EQ(loaded.size(), 2u);
  EXPECT_EQ(loaded.errors, 0);
  EXPECT_EQ(loaded[0].StartTime.TotalMilliseconds, 1000);
  EXPECT_EQ(loaded[0].EndTime.TotalMilliseconds, 2480);
  EXPECT_EQ(loaded[0].Text, u"Good evening.");
  EXPECT_EQ(loaded[1].StartTime.TotalMilliseconds, 3723960);
  EXPECT_EQ(loaded[1].EndTime.TotalMilliseconds, 90000000);
  EXPECT_EQ(loaded[1].Text, u"{\\an8}a\nb");  // a line feed alone
  EXPECT_EQ(loaded[1].Number, 0);
}

TEST_F(BelleNuitSubtitlerTest, RoundsFramesAndDoesNotLimitThem) {
  GlobalSettings.FrameRate = 29.97;
  const Loaded loaded = load(u"/tc 00:00:00:15 99:99:99:99\n");
  ASSERT_EQ(loaded.size(), 1u);
  EXPECT_EQ(loaded[0].StartTime.TotalMilliseconds, 501);             // 500.5005
  EXPECT_EQ(loaded[0].EndTime.TotalMilliseconds, 362439000 + 3303);  // 3303.3033
}

TEST_F(BelleNuitSubtitlerTest, LooksAtTheStartOfATimeLineOnly) {
  const Loaded loaded = load(u"/tc 00:00:01:00 00:00:02:00 tail\na\n/tc 00:00:03:00 00:00:04:001\nb\n");
  ASSERT_EQ(loaded.size(), 2u);
  EXPECT_EQ(loaded[0].Text, u"a");
  EXPECT_EQ(loaded[1].EndTime.TotalMilliseconds, 4000);
}

TEST_F(BelleNuitSubtitlerTest, TakesOtherLinesForText) {
  for (WStringView line :
       {u" /tc 00:00:01:00 00:00:02:00", u"/tc 00:00:01:00  00:00:02:00", u"/tc 0:00:01:00 00:00:02:00",
        u"/TC 00:00:01:00 00:00:02:00", u"/tc 00:00:01.00 00:00:02:00", u"/tc 00:00:01:00", u"/file", u"/file x",
        u"/file 1 ", u" /file 1", u"/file1"}) {
    EXPECT_EQ(textOf(u"x\n" + WString(line) + u"\ny"), u"x\n" + WString(line) + u"\ny");
  }
}

TEST_F(BelleNuitSubtitlerTest, DropsFileLines) {
  EXPECT_EQ(textOf(u"a\n/file 1\nb\n/file \t 0123\n"), u"a\nb");
}

TEST_F(BelleNuitSubtitlerTest, LeavesTheTextEmptyWhereThereAreOnlyBlanks) {
  EXPECT_EQ(textOf(u" \n\t\n"), u"");
  const Loaded loaded = load(u"/tc 00:00:01:00 00:00:02:00\n/tc 00:00:03:00 00:00:04:00\nb");
  ASSERT_EQ(loaded.size(), 2u);
  EXPECT_EQ(loaded[0].Text, u"");
}

TEST_F(BelleNuitSubtitlerTest, CountsLinesAheadOfTheFirstTimeAsErrors) {
  const Loaded loaded = load(u"a\n/file 1\n&#32;\n/tc 00:00:01:00 00:00:02:00\nx");
  EXPECT_EQ(loaded.size(), 1u);
  EXPECT_EQ(loaded.errors, 2);
  // Blank ones too; the break behind the last line has an empty line behind it.
  EXPECT_EQ(load(u"&#10;&#13;&#10;\n/tc 00:00:01:00 00:00:02:00\nx").errors, 4);
  EXPECT_EQ(load(u"a\n").errors, 2);
}

TEST_F(BelleNuitSubtitlerTest, RecognizesMoreCaptionsThanErrors) {
  const auto recognizes = [](WStringView titleList) {
    const WString file = u"<xmldict><key>titlelist</key><string>" + WString(titleList) + u"</string></xmldict>";
    return BelleNuitSubtitler().Recognizes({file}, u"film.stp");
  };
  EXPECT_TRUE(recognizes(u"/tc 00:00:01:00 00:00:02:00"));
  EXPECT_TRUE(recognizes(u"a&#10;/tc 00:00:01:00 00:00:02:00&#10;/tc 00:00:01:00 00:00:02:00"));
  EXPECT_FALSE(recognizes(u"a&#10;/tc 00:00:01:00 00:00:02:00"));
  EXPECT_FALSE(recognizes(u""));
}

TEST_F(BelleNuitSubtitlerTest, NeedsTheRootAndTheList) {
  const WString list = u"<key>titlelist</key><string>/tc 00:00:01:00 00:00:02:00</string>";
  EXPECT_EQ(loadFile(u"<xmldict>" + list + u"</xmldict>").size(), 1u);
  EXPECT_EQ(loadFile(u"<dict>" + list + u"</dict>").size(), 0u);
  EXPECT_EQ(loadFile(u"<XmlDict>" + list + u"</XmlDict>").size(), 0u);
  EXPECT_EQ(loadFile(u"<x/><xmldict>" + list + u"</xmldict>").size(), 0u);
  EXPECT_EQ(loadFile(u"<xmldict><dict>" + list + u"</dict></xmldict>").size(), 0u);
  EXPECT_EQ(loadFile(u"<xmldict>" + list).size(), 0u);
  EXPECT_EQ(loadFile(u"<xmldict><string>/tc 00:00:01:00 00:00:02:00</string></xmldict>").size(), 0u);
  EXPECT_EQ(loadFile(u"<xmldict/>").size(), 0u);
  EXPECT_EQ(loadFile(u"").size(), 0u);
}

TEST_F(BelleNuitSubtitlerTest, GoesByTheLastKeyAhead) {
  const auto firstText = [](WStringView children) {
    const Loaded loaded = loadFile(u"<xmldict>" + WString(children) + u"</xmldict>");
    return loaded.size() == 1 ? loaded[0].Text : u"missing";
  };
  const WString a = u"<string>/tc 00:00:01:00 00:00:02:00\na</string>";
  const WString b = u"<string>/tc 00:00:01:00 00:00:02:00\nb</string>";
  EXPECT_EQ(firstText(u"<key>x</key>" + a + u"<key>titlelist</key>" + b + u"<key>y</key>" + a), u"b");
  EXPECT_EQ(firstText(u"<key>titlelist</key><!-- c --><null/>" + a), u"a");
  EXPECT_EQ(firstText(u"<key>titlelist</key>" + a + b), u"b");  // The last list counts.
  EXPECT_EQ(firstText(u"<key>title<b>list</b></key>" + a), u"a");
  EXPECT_EQ(firstText(u"<key>titlelist </key>" + a), u"missing");
}

TEST_F(BelleNuitSubtitlerTest, LosesTagsOfTheList) {
  EXPECT_EQ(textOf(u"a<!-- no -->b\nc<x>d<y>e</y></x>"), u"ab\ncde");
}

TEST_F(BelleNuitSubtitlerTest, ReadsBackWhatItWrote) {
  subtitle.Append({u"{\\an8}a\r\nb", 1000, 2000});
  subtitle.Append({u"", 3000, 4000});
  subtitle.Append({u"{\\an3}c", 5000, 6000});
  const Loaded loaded = loadFile(BelleNuitSubtitler().WriteText(subtitle, u"title"));
  ASSERT_EQ(loaded.size(), 3u);
  EXPECT_EQ(loaded[0].Text, u"{\\an8}a\nb");
  EXPECT_EQ(loaded[1].Text, u"");
  EXPECT_EQ(loaded[2].Text, u"{\\an3}c");
  EXPECT_EQ(loaded[2].EndTime.TotalMilliseconds, 6000);
}

TEST_F(BelleNuitSubtitlerTest, ReadsManyLinesInLinearTime) {
  WString list = u"/tc 00:00:01:00 00:00:02:00\n";
  for (int i = 0; i < 100000; ++i) list += u"x\n\n";
  const Loaded loaded = load(list);
  ASSERT_EQ(loaded.size(), 1u);
  EXPECT_EQ(loaded[0].Text.size(), 199999u);
}

}  // namespace
}  // namespace mova
