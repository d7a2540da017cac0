#include "formats/script/SamiModern.h"
#include "unit/formats/Captions.h"

namespace mova {
namespace {

/// What is written behind the head.
WString bodyOf(const Subtitle& subtitle) {
  constexpr WStringView endOfHead = u"present -->\r\n\r\n";
  const WString text = SamiModern().WriteText(subtitle, u"film");
  return text.substr(text.find(endOfHead) + endOfHead.size());
}

TEST(SamiModern, HasItsNames) {
  const SamiModern format;
  EXPECT_EQ(format.Name(), u"SAMI modern");
  EXPECT_EQ(format.Extension(), u".smi");
  EXPECT_TRUE(format.ExtraExtensions().empty());
  EXPECT_TRUE(format.SupportsStyles());
}

TEST(SamiModern, RecognizesFilesWithAndWithoutClosedSyncs) {
  EXPECT_TRUE(recognizes<SamiModern>({u"<SYNC Start=\"1000\"><P Class=\"ENUSCC\">a</P></SYNC>"}));
  EXPECT_TRUE(recognizes<SamiModern>({u"<SYNC Start=1000><P Class=ENUSCC>a"}));
  EXPECT_FALSE(recognizes<SamiModern>({u"<SAMI></SYNC></SAMI>"}));
  EXPECT_FALSE(recognizes<SamiModern>({}));
}

TEST(SamiModern, ReadsWhatItWrites) {
  EXPECT_EQ(load<SamiModern>({u"<SYNC Start=\"1000\"><P Class=\"ENUSCC\">a<br />b</P></SYNC>",
                              u"<SYNC Start=\"2000\"><P Class=\"ENUSCC\">&nbsp;</P></SYNC>"}),
            (Loaded{{{1, 1000, 2000, u"a\r\nb"}}, 0}));
}

TEST(SamiModern, WritesQuotesAndClosesItsTags) {
  EXPECT_EQ(bodyOf(subtitleOf({{1, 1000, 2000, u"<i>a</i>\r\nb"}, {2, 2000, 3000, u"c"}})),
            u"<SYNC Start=\"1000\"><P Class=\"ENUSCC\"><i>a</i><br />b</P></SYNC>\r\n"
            u"<SYNC Start=\"2000\"><P Class=\"ENUSCC\">c</P></SYNC>\r\n"
            u"<SYNC Start=\"3000\"><P Class=\"ENUSCC\">&nbsp;</P></SYNC>\r\n"
            u"</BODY>\r\n</SAMI>");
}

TEST(SamiModern, BreaksLinesAtALoneLineFeedToo) {
  EXPECT_EQ(bodyOf(subtitleOf({{1, 1, 2, u"a\nb\r\n\nc\rd"}})),
            u"<SYNC Start=\"1\"><P Class=\"ENUSCC\">a<br />b<br /><br />c\rd</P></SYNC>\r\n"
            u"<SYNC Start=\"2\"><P Class=\"ENUSCC\">&nbsp;</P></SYNC>\r\n"
            u"</BODY>\r\n</SAMI>");
}

TEST(SamiModern, WritesTheStyleSectionOfTheHeaderWithTheClassesOfTheCaptions) {
  Subtitle subtitle = subtitleOf({{1, 1, 2, u"a"}});
  subtitle.Header = u"<STYLE>P {}</STYLE>";
  subtitle.Paragraphs[0]->Extra = u"FRFRCC";
  EXPECT_NE(SamiModern().WriteText(subtitle, u"film").find(u"\r\n\r\n)<STYLE>P {}</STYLE>(\r\n\r\n"), WString::npos);
  EXPECT_EQ(bodyOf(subtitle),
            u"<SYNC Start=\"1\"><P Class=\"FRFRCC\">a</P></SYNC>\r\n"
            u"<SYNC Start=\"2\"><P Class=\"FRFRCC\">&nbsp;</P></SYNC>\r\n"
            u"</BODY>\r\n</SAMI>");
}

}  // namespace
}  // namespace mova
