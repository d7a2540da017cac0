#include <cmath>

#include "formats/xml/FinalCutProX.h"
#include "formats/xml/FinalCutProXCM.h"
#include "formats/xml/FinalCutProXXml.h"
#include "formats/xml/FinalCutProXmlGap.h"
#include "unit/formats/Captions.h"

namespace mova {
namespace {

/// A project whose "spine" holds the given elements.
Lines project(WStringView spine) {
  return {u"<?xml version='1.0'?><!DOCTYPE fcpxml>", u"<fcpxml><project><sequence><spine>", spine,
          u"</spine></sequence></project></fcpxml>"};
}

/// Everything that all three write in front of the contents of the "spine".
std::string projectHead(std::string_view version) {
  std::string head =
      "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"no\"?>\n"
      "<!DOCTYPE fcpxml>\n"
      "<fcpxml version=\"";
  head += version;
  return head +
         "\">\n"
         "    <project name=\"Caption Forge subtitle\" uid=\"C1E80D31-57D4-4E6C-84F6-86A75DCB7A54\" "
         "eventID=\"B5C98F73-1D7E-4205-AEF3-1485842EB191\" location=\"file://localhost/Volumes/Macintosh%20HD/"
         "Final%20Cut%20Projects/Sample%20Event/Sample%20Project/\">\n"
         "        <resources>\n"
         "            <format id=\"r1\" name=\"FFVideoFormatDV720x480i5994\" frameDuration=\"2002/60000s\" "
         "fieldOrder=\"lower first\" width=\"720\" height=\"480\" paspH=\"10\" paspV=\"11\"/>\n"
         "            <effect id=\"r6\" name=\"Custom\" uid=\".../Titles.localized/Build In:Out.localized/"
         "Custom.localized/Custom.moti\"/>\n"
         "        </resources>\n"
         "        <sequence duration=\"10282752480/2400000s\" format=\"r1\" tcStart=\"0s\" tcFormat=\"NDF\" "
         "audioLayout=\"stereo\" audioRate=\"48k\">\n";
}

const std::string projectTail =
    "        </sequence>\n"
    "    </project>\n"
    "</fcpxml>";

// --- Times

TEST(FinalCutProX, CutsTicks) {
  EXPECT_EQ(ticks(1000, 60000), u"60000/60000s");
  EXPECT_EQ(ticks(1000, 2400000), u"2400000/2400000s");
  EXPECT_EQ(ticks(0.5, 60000), u"30/60000s");
  EXPECT_EQ(ticks(0.033, 60000), u"1/60000s");
  EXPECT_EQ(ticks(-0.033, 60000), u"-1/60000s");
  EXPECT_EQ(ticks(0, 60000), u"0/60000s");
  EXPECT_EQ(ticks(1e12, 2400000), u"2400000000000000/2400000s");
  EXPECT_EQ(ticks(std::numeric_limits<double>::infinity(), 60000), u"-9223372036854775808/60000s");
}

TEST(FinalCutProX, ReadsRationalTimes) {
  EXPECT_EQ(timeFromRational(u"3s"), 3000);
  EXPECT_EQ(timeFromRational(u"2.5sss"), 2500);
  EXPECT_EQ(timeFromRational(u"7"), 7000);
  EXPECT_EQ(timeFromRational(u"60000/60000s"), 1000);
  EXPECT_NEAR(timeFromRational(u"1001/30000s"), 33.4, 0.04);
  EXPECT_EQ(timeFromRational(u"-3/2s"), -1500);
  EXPECT_EQ(timeFromRational(u"3s/2s"), 1500);
  EXPECT_EQ(timeFromRational(u"1/2/3s"), 0);
  EXPECT_EQ(timeFromRational(u""), 0);
  EXPECT_EQ(timeFromRational(u"s"), 0);
  EXPECT_EQ(timeFromRational(u"3s "), 3000);
  EXPECT_EQ(timeFromRational(u"1/0s"), std::numeric_limits<double>::infinity());
  EXPECT_TRUE(std::isnan(timeFromRational(u"/s")));
}

// --- Titles in a gap

TEST(FinalCutProXmlGap, HasItsNames) {
  const FinalCutProXmlGap format;
  EXPECT_EQ(format.Name(), u"Final Cut Xml Gap");
  EXPECT_EQ(format.Extension(), u".fcpxml");
  EXPECT_TRUE(format.ExtraExtensions().empty());
  EXPECT_FALSE(format.SupportsStyles());
  EXPECT_TRUE(format.IsTimeBased());
  EXPECT_TRUE(format.IsTextBased());
}

TEST(FinalCutProXmlGap, WritesTitles) {
  EXPECT_EQ(written<FinalCutProXmlGap>({{1, 1000, 2500, u"one\r\n<i>two</i>"}, {2, 3000.5, 3000, u""}}),
            projectHead("1.2") +
                "            <spine>\n"
                "                <gap offset=\"0s\" name=\"Espace\" duration=\"645900/2500s\" start=\"0s\">\n"
                "                    <title lane=\"6\" offset=\"60000/60000s\" ref=\"r1\" name=\"one&#D;&#A;two\" "
                "duration=\"90000/60000s\" start=\"60000/60000s\" role=\"Subtitles\">\n"
                "                        <adjust-transform position=\"0.267518 -32.3158\"/>\n"
                "                        <text>one\r\ntwo</text>\n"
                "                    </title>\n"
                "                    <title lane=\"6\" offset=\"180030/60000s\" ref=\"r1\" name=\"\" "
                "duration=\"-30/60000s\" start=\"180030/60000s\" role=\"Subtitles\">\n"
                "                        <adjust-transform position=\"0.267518 -32.3158\"/>\n"
                "                        <text></text>\n"
                "                    </title>\n"
                "                </gap>\n"
                "            </spine>\n" +
                projectTail);
}

TEST(FinalCutProXmlGap, WritesAnEmptySubtitle) {
  EXPECT_EQ(written<FinalCutProXmlGap>({}),
            projectHead("1.2") +
                "            <spine>\n"
                "                <gap offset=\"0s\" name=\"Espace\" duration=\"645900/2500s\" start=\"0s\"/>\n"
                "            </spine>\n" +
                projectTail);
}

TEST(FinalCutProXmlGap, RemovesWhatAPrinterMightMakeOfTheDocumentType) {
  const std::string text = written<FinalCutProXmlGap>({{1, 0, 0, u"fcpxml[] fcpxml [] fcpxml []"}});
  EXPECT_NE(text.find("<text>fcpxml fcpxml fcpxml</text>"), std::string::npos);
}

constexpr WStringView oneTitle =
    u"<title offset='1s' duration='3/2s' role='Titles'><text> one </text><text>two<x>!</x></text><y/><text/></title>";

TEST(FinalCutProXmlGap, ReadsTitlesOfEveryRole) {
  EXPECT_EQ(load<FinalCutProXmlGap>(project(u"<gap>" + WString(oneTitle) + u"<x><title><text/></title></x></gap>" +
                                            u"<gap><title offset='9s'><text>late</text></title></gap>")),
            (Loaded{{{0, 1000, 2500, u"one \ntwo!"}, {0, 0, 0, u""}, {0, 9000, 9000, u"late"}}, 0}));
}

TEST(FinalCutProXmlGap, PassesOverTitlesWithoutText) {
  EXPECT_EQ(load<FinalCutProXmlGap>(project(u"<gap><title offset='1s'><x><text>deep</text></x></title></gap>")),
            (Loaded{{}, 0}));
}

TEST(FinalCutProXmlGap, LooksForGapsAnywhereWhereThereAreNoneInThePlace) {
  const WString gap = u"<gap>" + WString(oneTitle) + u"</gap>";
  EXPECT_EQ(load<FinalCutProXmlGap>(project(u"<clip>" + gap + u"</clip>")).captions.size(), 1u);
  EXPECT_EQ(load<FinalCutProXmlGap>(project(gap + u"<clip>" + gap + u"</clip>")).captions.size(), 1u);
  EXPECT_EQ(load<FinalCutProXmlGap>({u"<x><gap><gap>" + gap + u"</gap></gap></x>"}).captions.size(), 3u)
      << "a title counts for every gap around it";
}

TEST(FinalCutProXmlGap, ReadsBackWhatItWrites) {
  const WString text = FinalCutProXmlGap().WriteText(subtitleOf({{1, 1000, 2500, u"one\r\ntwo"}}), u"");
  EXPECT_EQ(load<FinalCutProXmlGap>({text}).captions, (Captions{{0, 1000, 2500, u"one\ntwo"}}));
}

TEST(FinalCutProXmlGap, RecognizesATitle) {
  EXPECT_TRUE(recognizes<FinalCutProXmlGap>(project(u"<gap>" + WString(oneTitle) + u"</gap>")));
  EXPECT_FALSE(recognizes<FinalCutProXmlGap>(project(oneTitle)));
  EXPECT_FALSE(recognizes<FinalCutProXmlGap>({u"<gap>", oneTitle}));
  EXPECT_FALSE(recognizes<FinalCutProXmlGap>({}));
}

// --- Clips with a title

TEST(FinalCutProXXml, HasItsNames) {
  const FinalCutProXXml format;
  EXPECT_EQ(format.Name(), u"Final Cut Pro X Xml");
  EXPECT_EQ(format.Extension(), u".fcpxml");
  EXPECT_TRUE(format.ExtraExtensions().empty());
  EXPECT_FALSE(format.SupportsStyles());
  EXPECT_TRUE(format.IsTimeBased());
  EXPECT_TRUE(format.IsTextBased());
}

TEST(FinalCutProXXml, WritesClips) {
  EXPECT_EQ(written<FinalCutProXXml>({{1, 1000, 2500, u"one\r\n<b>two</b> & \"three\""}}),
            projectHead("1.1") +
                "            <spine>\n"
                "                <clip name=\"title\" duration=\"3600000/2400000s\" start=\"2400000/2400000s\" "
                "audioStart=\"0s\" audioDuration=\"3600000/2400000s\" tcFormat=\"NDF\">\n"
                "                    <title lane=\"6\" offset=\"60000/60000s\" ref=\"r6\" "
                "name=\"one&#D;&#A;two & &quot;three&quot;\" duration=\"90000/60000s\" start=\"60000/60000s\" "
                "role=\"Subtitles\">\n"
                "                        <adjust-transform position=\"0.267518 -32.3158\"/>\n"
                "                        <text>one\r\ntwo & \"three\"</text>\n"
                "                    </title>\n"
                "                </clip>\n"
                "            </spine>\n" +
                projectTail);
}

TEST(FinalCutProXXml, WritesAnEmptySpineForAnEmptySubtitle) {
  EXPECT_EQ(written<FinalCutProXXml>({}), projectHead("1.1") + "            <spine/>\n" + projectTail);
}

TEST(FinalCutProXXml, ReadsTitlesInTheRoleOfSubtitles) {
  EXPECT_EQ(load<FinalCutProXXml>(project(u"<clip><x><title offset='1s' duration='1/2s' role='Subtitles'><z/><text> a"
                                          u" <b>b</b> </text><text>second</text></title></x>"
                                          u"<title offset='5s' role='Titles'><text>role</text></title>"
                                          u"<title offset='5s' role='subtitles'><text>case</text></title>"
                                          u"<title offset='5s'><text>none</text></title>"
                                          u"<title role='Subtitles'>no text</title>"
                                          u"<title role='Subtitles'><text/></title></clip>")),
            (Loaded{{{0, 1000, 1500, u"a b"}, {0, 0, 0, u""}}, 0}));
}

TEST(FinalCutProXXml, LooksForClipsAnywhereWhereThereAreNoneInThePlace) {
  const WString clip = u"<clip><title offset='1s' role='Subtitles'><text>x</text></title></clip>";
  EXPECT_EQ(load<FinalCutProXXml>(project(u"<gap>" + clip + u"</gap>")).captions.size(), 1u);
  EXPECT_EQ(load<FinalCutProXXml>(project(u"<clip>" + clip + u"</clip>")).captions.size(), 1u);
  EXPECT_EQ(load<FinalCutProXXml>({u"<x><clip>" + clip + u"</clip></x>"}).captions.size(), 2u)
      << "a title counts for every clip around it";
}

TEST(FinalCutProXXml, ReadsBackWhatItWrites) {
  const WString text = FinalCutProXXml().WriteText(subtitleOf({{1, 1000, 2500, u"one\r\ntwo"}}), u"");
  EXPECT_EQ(load<FinalCutProXXml>({text}).captions, (Captions{{0, 1000, 2500, u"one\ntwo"}}));
}

TEST(FinalCutProXXml, RecognizesATitleInTheRoleOfSubtitles) {
  EXPECT_TRUE(recognizes<FinalCutProXXml>(project(u"<clip><title role='Subtitles'><text/></title></clip>")));
  EXPECT_FALSE(recognizes<FinalCutProXXml>(project(u"<clip><title role='Titles'><text/></title></clip>")));
  EXPECT_FALSE(recognizes<FinalCutProXXml>(project(u"<title role='Subtitles'><text/></title>")));
  EXPECT_FALSE(recognizes<FinalCutProXXml>({}));
}

// --- Chapter markers

TEST(FinalCutProXCM, HasItsNames) {
  const FinalCutProXCM format;
  EXPECT_EQ(format.Name(), u"Final Cut Pro XCM");
  EXPECT_EQ(format.Extension(), u".fcpxml");
  EXPECT_TRUE(format.ExtraExtensions().empty());
  EXPECT_FALSE(format.SupportsStyles());
  EXPECT_TRUE(format.IsTimeBased());
  EXPECT_TRUE(format.IsTextBased());
}

const std::string clipHead =
    "            <spine>\n"
    "                <clip offset=\"0s\" name=\"Untitled\" duration=\"147005859/24000s\" tcFormat=\"NDF\">\n"
    "                    <video offset=\"0s\" ref=\"r6\" duration=\"147005859/24000s\">\n"
    "                        <audio lane=\"-1\" offset=\"0s\" ref=\"r6\" duration=\"147005000/24000s\" "
    "role=\"dialog\"/>\n"
    "                    </video>\n";
const std::string clipTail =
    "                </clip>\n"
    "            </spine>\n";

TEST(FinalCutProXCM, WritesMarkers) {
  EXPECT_EQ(written<FinalCutProXCM>({{1, 1000, 2500, u"one\r\n<i>two</i>"}, {2, 3000, 4000, u"\"a\nb\t\""}}),
            projectHead("1.1") + clipHead +
                "                    <chapter-marker duration=\"3600000/2400000s\" start=\"2400000/2400000s\" "
                "value=\"one\u00E2<i>two</i>\" posterOffset=\"11/24s\"/>\n"
                "                    <chapter-marker duration=\"2400000/2400000s\" start=\"7200000/2400000s\" "
                "value=\"&quot;a&#A;b&#9;&quot;\" posterOffset=\"11/24s\"/>\n" +
                clipTail + projectTail);
}

TEST(FinalCutProXCM, WritesAnEmptySubtitle) {
  EXPECT_EQ(written<FinalCutProXCM>({}), projectHead("1.1") + clipHead + clipTail + projectTail);
}

TEST(FinalCutProXCM, ReadsMarkersOfTheFirstClip) {
  EXPECT_EQ(load<FinalCutProXCM>(
                project(u"<clip value='no'><chapter-marker start='1s' duration='1/2s' value='one\u00E2two&amp;'/>"
                        u"<video><chapter-marker/></video><chapter-marker/></clip>"
                        u"<clip><chapter-marker value='second clip'/></clip>")),
            (Loaded{{{0, 1000, 1500, u"one\r\ntwo&"}, {0, 0, 0, u""}}, 0}));
}

TEST(FinalCutProXCM, ReadsClipsWhereThereAreNoMarkers) {
  EXPECT_EQ(load<FinalCutProXCM>({u"<x><clip value='a' start='1s'><clip duration='2s'/></clip>",
                                  u"<chapter-marker value='not read'/></x>"}),
            (Loaded{{{0, 1000, 1000, u"a"}, {0, 0, 2000, u""}}, 0}));
}

TEST(FinalCutProXCM, ReadsBackWhatItWritesWithItsLineBreaks) {
  const WString text = FinalCutProXCM().WriteText(subtitleOf({{1, 1000, 2500, u"one\r\ntwo"}}), u"");
  EXPECT_EQ(load<FinalCutProXCM>({text}).captions, (Captions{{0, 1000, 2500, u"one\r\ntwo"}}));
}

TEST(FinalCutProXCM, ReadsTheLetterOfALineBreakAsOne) {
  const WString text = FinalCutProXCM().WriteText(subtitleOf({{1, 0, 0, u"ch\u00E2teau"}}), u"");
  EXPECT_EQ(load<FinalCutProXCM>({text}).captions, (Captions{{0, 0, 0, u"ch\r\nteau"}}));
}

TEST(FinalCutProXCM, RecognizesMarkersAndClips) {
  EXPECT_TRUE(recognizes<FinalCutProXCM>(project(u"<clip><chapter-marker/></clip>")));
  EXPECT_TRUE(recognizes<FinalCutProXCM>({u"<playlist><clip/></playlist>"}));
  EXPECT_FALSE(recognizes<FinalCutProXCM>({u"<playlist><chapter-marker/></playlist>"}));
  EXPECT_FALSE(recognizes<FinalCutProXCM>({}));
}

}  // namespace
}  // namespace mova
