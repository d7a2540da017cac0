#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

#include "formats/xml/DCinemaRuns.h"
#include "movautil/MovaUtil.h"

namespace mova {
namespace {

using Markup = std::vector<std::string>;

/// The markup of the lines of one caption.
Markup markupOf(std::initializer_list<WStringView> lines) {
  DCinemaRuns runs;
  Markup markup;
  for (WStringView line : lines) markup.push_back(wideToString(runs.MarkupOf(line)));
  return markup;
}

TEST(DCinemaRuns, LeavesPlainTextAsItStands) {
  EXPECT_EQ(markupOf({u"Tom & Jerry", u"", u"a < b > c"}), (Markup{"Tom & Jerry", "", "a < b > c"}));
  EXPECT_EQ(markupOf({u"<b>x</b> <u>y</u>"}), (Markup{"<b>x</b> <u>y</u>"}));
  EXPECT_EQ(markupOf({u"</i>a</font>"}), (Markup{"</i>a</font>"}));
  EXPECT_EQ(markupOf({u"<I>a</I>"}), (Markup{"<I>a</I>"}));
}

TEST(DCinemaRuns, MakesItalicRuns) {
  EXPECT_EQ(markupOf({u"<i>abc</i>"}), (Markup{R"(<dcst:Font Italic="yes">abc</dcst:Font>)"}));
  EXPECT_EQ(markupOf({u"a <i>b</i> c"}), (Markup{R"(a <dcst:Font Italic="yes">b</dcst:Font> c)"}));
}

TEST(DCinemaRuns, KeepsItalicOpenForTheNextLine) {
  EXPECT_EQ(markupOf({u"<i>abc", u"def</i>", u"ghi"}), (Markup{R"(<dcst:Font Italic="yes">abc</dcst:Font>)",
                                                               R"(<dcst:Font Italic="yes">def</dcst:Font>)", "ghi"}));
  EXPECT_EQ(markupOf({u"<i>", u"def"}), (Markup{"", R"(<dcst:Font Italic="yes">def</dcst:Font>)"}));
}

TEST(DCinemaRuns, MakesNothingOfEmptyItalics) {
  EXPECT_EQ(markupOf({u"<i></i>a"}), (Markup{"a"}));
  EXPECT_EQ(markupOf({u"<i></i></font>a"}), (Markup{"</font>a"}));
}

TEST(DCinemaRuns, TakesASecondOpeningTagAsText) {
  // Closing the run strips the tags out of its text.
  EXPECT_EQ(markupOf({u"<i>a<i>b</i>"}), (Markup{R"(<dcst:Font Italic="yes">ab</dcst:Font>)"}));
  EXPECT_EQ(markupOf({u"<i>a<b>b</b></i>"}), (Markup{R"(<dcst:Font Italic="yes">ab</dcst:Font>)"}));
}

TEST(DCinemaRuns, GivesHashColoursEightMoreDigits) {
  EXPECT_EQ(markupOf({u"<font color=\"#ff0000\">a</font>"}),
            (Markup{R"(<dcst:Font Color="FFFFFFFFFF0000">a</dcst:Font>)"}));
}

TEST(DCinemaRuns, KeepsOtherColoursAsTheyAre) {
  EXPECT_EQ(markupOf({u"<font color=\"red\">a</font>"}), (Markup{R"(<dcst:Font Color="red">a</dcst:Font>)"}));
  EXPECT_EQ(markupOf({u"<font color=' Blue '>a</font>"}), (Markup{R"(<dcst:Font Color="Blue">a</dcst:Font>)"}));
  EXPECT_EQ(markupOf({u"<font color=\"' #0a '\">a</font>"}),
            (Markup{R"(<dcst:Font Color="FFFFFFFF0A">a</dcst:Font>)"}));
  EXPECT_EQ(markupOf({u"<font color=>a</font>"}), (Markup{R"(<dcst:Font Color="">a</dcst:Font>)"}));
  EXPECT_EQ(markupOf({u"<font color=\"\">a</font>"}), (Markup{R"(<dcst:Font Color="">a</dcst:Font>)"}));
}

TEST(DCinemaRuns, LeavesOtherFontTagsAlone) {
  EXPECT_EQ(markupOf({u"<font size=\"2\">a</font>"}), (Markup{"<font size=\"2\">a</font>"}));
  EXPECT_EQ(markupOf({u"<font color=\"red\" a"}), (Markup{"<font color=\"red\" a"}));
  EXPECT_EQ(markupOf({u"a>b<font color=red"}), (Markup{"a>b<font color=red"}));
}

TEST(DCinemaRuns, JoinsItalicAndColourThatCloseTogether) {
  EXPECT_EQ(markupOf({u"<font color=\"red\"><i>a</i></font>b"}),
            (Markup{R"(<dcst:Font Italic="yes" Color="red">a</dcst:Font>b)"}));
  EXPECT_EQ(markupOf({u"<i><font color=\"red\">a</font></i>b"}),
            (Markup{R"(<dcst:Font Color="red" Italic="yes">a</dcst:Font>b)"}));
}

TEST(DCinemaRuns, ClosesColourWithoutItalicThatGoesOn) {
  EXPECT_EQ(markupOf({u"<i><font color=\"red\">a</font> b</i>"}),
            (Markup{R"(<dcst:Font Color="red">a</dcst:Font><dcst:Font Italic="yes"> b</dcst:Font>)"}));
  EXPECT_EQ(markupOf({u"<font color=\"red\"><i>a</i> b</font>"}),
            (Markup{R"(<dcst:Font Italic="yes">a</dcst:Font><dcst:Font Color="red"> b</dcst:Font>)"}));
}

TEST(DCinemaRuns, MakesARunWithoutColourWhereNoneIsOpen) {
  EXPECT_EQ(markupOf({u"<i>a</i></font>b"}), (Markup{R"(<dcst:Font Italic="yes">a</dcst:Font>b)"}));
  // The closing tag counts although nothing was open: the next font tag only makes up for it.
  EXPECT_EQ(markupOf({u"<i>a</i></font><font color=\"red\">b</font>"}),
            (Markup{R"(<dcst:Font Italic="yes">a</dcst:Font>b</font>)"}));
}

TEST(DCinemaRuns, NestsColours) {
  // The text in front of the inner tag is flushed as plain text, without the outer colour.
  EXPECT_EQ(markupOf({u"<font color=\"red\">a<font color=\"blue\">b</font>c</font>d"}),
            (Markup{R"(a<dcst:Font Color="blue">b</dcst:Font><dcst:Font Color="red">c</dcst:Font>d)"}));
}

TEST(DCinemaRuns, LeavesTheColourOfAnEmptyRunOnTheStack) {
  // "blue" is still on top when the outer tag closes, and "red" after that.
  EXPECT_EQ(markupOf({u"<font color=\"red\"><font color=\"blue\"></font>a</font><i>b</i></font>c"}),
            (Markup{R"(<dcst:Font Color="blue">a</dcst:Font><dcst:Font Italic="yes" Color="red">b</dcst:Font>c)"}));
}

TEST(DCinemaRuns, KeepsTheColourOpenForTheNextLine) {
  EXPECT_EQ(markupOf({u"<font color=\"red\">a", u"b", u"c</font>", u"d"}),
            (Markup{R"(<dcst:Font Color="red">a</dcst:Font>)", R"(<dcst:Font Color="red">b</dcst:Font>)",
                    R"(<dcst:Font Color="red">c</dcst:Font>)", "d"}));
  EXPECT_EQ(markupOf({u"<font color=\"red\"><i>a", u"b</i></font>"}),
            (Markup{R"(<dcst:Font Color="red" Italic="yes">a</dcst:Font>)",
                    R"(<dcst:Font Italic="yes" Color="red">b</dcst:Font>)"}));
}

TEST(DCinemaRuns, ColoursTheFirstRunOfALineThatEndsInOne) {
  EXPECT_EQ(
      markupOf({u"<font color=\"red\"><i>a</i>", u"b</font>"}),
      (Markup{R"(<dcst:Font Italic="yes" Color="red">a</dcst:Font>)", R"(<dcst:Font Color="red">b</dcst:Font>)"}));
  // What followed the first run is lost.
  EXPECT_EQ(markupOf({u"<font color=\"red\"><i>a</i> b <i>c</i>"}),
            (Markup{R"(<dcst:Font Italic="yes" Color="red">a</dcst:Font>)"}));
  // A colour of its own is replaced in its place.
  EXPECT_EQ(markupOf({u"<font color=\"blue\"><i>a</i></font><font color=\"red\">"}),
            (Markup{R"(<dcst:Font Italic="yes" Color="red">a</dcst:Font>)"}));
  EXPECT_EQ(markupOf({u"<font color=\"blue\">a</font><i><font color=\"red\">"}),
            (Markup{R"(<dcst:Font Color="red">a</dcst:Font>)"}));
}

TEST(DCinemaRuns, ColoursNoRunBehindPlainText) {
  EXPECT_EQ(markupOf({u"<font color=\"red\">x<i>a</i>"}), (Markup{R"(x<dcst:Font Italic="yes">a</dcst:Font>)"}));
}

TEST(DCinemaRuns, LeavesALineThatIsNoMarkupAsItIs) {
  EXPECT_EQ(markupOf({u"<font color=\"red\"><i>a < b</i>"}), (Markup{R"(<dcst:Font Italic="yes">a < b</dcst:Font>)"}));
}

TEST(DCinemaRuns, StopsATextOfARunAtAZeroUnit) {
  EXPECT_EQ(markupOf({WStringView(u"<i>a\0b</i>c", 11)}), (Markup{R"(<dcst:Font Italic="yes">a</dcst:Font>c)"}));
}

TEST(DCinemaRuns, CopesWithManyTags) {
  constexpr size_t count = 100'000;
  WString opened;
  WString unclosed;
  for (size_t i = 0; i < count; ++i) {
    opened += u"<font color=\"red\">";
    unclosed += u"<font color=";
  }
  EXPECT_EQ(markupOf({opened, u"a</font>", u"b"}),
            (Markup{"", R"(<dcst:Font Color="red">a</dcst:Font>)", R"(<dcst:Font Color="red">b</dcst:Font>)"}));
  EXPECT_EQ(markupOf({unclosed}), (Markup{wideToString(unclosed)}));
}

}  // namespace
}  // namespace mova
