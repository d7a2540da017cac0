#include "formats/script/Sami.h"
#include "text/Strings.h"
#include "unit/formats/Captions.h"

namespace mova {
namespace {

Subtitle loaded(const Lines& lines) {
  Sami format;
  Subtitle subtitle;
  format.LoadSubtitle(subtitle, lines, u"film.smi");
  EXPECT_EQ(format.ErrorCount, 0);
  return subtitle;
}

Captions read(const Lines& lines) {
  return captionsOf(loaded(lines));
}

/// The text of a caption that stands like this between its sync and the next one.
WString textOf(WStringView raw) {
  const Captions captions = read({WString(u"<SYNC Start=1000>").append(raw).append(u"<SYNC Start=2000>")});
  return captions.size() == 1 ? captions[0].text : u"(no caption)";
}

/// The same behind a "<P>".
WString textBehindP(WStringView text) {
  return textOf(WString(u"<P>").append(text));
}

std::vector<WString> classes(const Lines& lines) {
  std::vector<WString> result;
  for (const auto& p : loaded(lines).Paragraphs) result.emplace_back(p->Extra);
  return result;
}

WString repeated(WStringView piece, size_t count) {
  WString result;
  for (size_t i = 0; i < count; ++i) result += piece;
  return result;
}

const WString headWithDefaultStyle =
    u"<SAMI>\r\n\r\n<HEAD>\r\n<TITLE>film</TITLE>\r\n\r\n<SAMIParam>\r\n  Metrics {time:ms;}\r\n  Spec {MSFT:1.0;}\r\n"
    u"</SAMIParam>\r\n\r\n<STYLE TYPE=\"text/css\">\r\n<!--\r\n  P { font-family: Arial; font-weight: normal; color: "
    u"white; background-color: black; text-align: center; }\r\n  .ENUSCC { name: English; lang: en-US ; SAMIType: CC ; "
    u"}\r\n-->\r\n</STYLE>\r\n\r\n</HEAD>\r\n\r\n<BODY>\r\n\r\n<-- Open play menu, choose Captions and Subtiles, On if "
    u"available -->\r\n<-- Open tools menu, Security, Show local captions when present -->\r\n\r\n";
const WString headBeforeStyle =
    u"<SAMI>\r\n\r\n<HEAD>\r\n<TITLE>film</TITLE>\r\n\r\n<SAMIParam>\r\n  Metrics {time:ms;}\r\n  Spec {MSFT:1.0;}\r\n"
    u"</SAMIParam>\r\n\r\n)";
const WString headBehindStyle =
    u"(\r\n\r\n</HEAD>\r\n\r\n<BODY>\r\n\r\n<-- Open play menu, choose Captions and Subtiles, On if available -->\r\n"
    u"<-- Open tools menu, Security, Show local captions when present -->\r\n\r\n";
const WString foot = u"</BODY>\r\n</SAMI>";

WString writtenFilm(const Subtitle& subtitle) {
  return Sami().WriteText(subtitle, u"film");
}

/// What is written between the default head and the foot.
WString bodyOf(const Captions& captions) {
  const WString text = writtenFilm(subtitleOf(captions));
  EXPECT_TRUE(text.starts_with(headWithDefaultStyle));
  EXPECT_TRUE(text.ends_with(foot));
  return text.substr(headWithDefaultStyle.size(), text.size() - headWithDefaultStyle.size() - foot.size());
}

TEST(Sami, HasItsNames) {
  const Sami format;
  EXPECT_EQ(format.Name(), u"SAMI");
  EXPECT_EQ(format.Extension(), u".smi");
  EXPECT_TRUE(format.ExtraExtensions().empty());
  EXPECT_TRUE(format.IsTimeBased());
  EXPECT_TRUE(format.IsTextBased());
  EXPECT_TRUE(format.SupportsStyles());
}

// --- Recognising.

TEST(Sami, RecognizesAFileWithCaptions) {
  EXPECT_TRUE(recognizes<Sami>({u"<SYNC Start=1000><P>a"}));
  EXPECT_TRUE(recognizes<Sami>({u"<sync start=1000><p>a</p></sync>"}));
}

TEST(Sami, LeavesAFileThatClosesItsSyncsToTheModernForm) {
  EXPECT_FALSE(recognizes<Sami>({u"<SYNC Start=1000><P>a</P></SYNC>"}));
  EXPECT_FALSE(recognizes<Sami>({u"<SYNC Start=1000><P>a</P></SY", u"NC>"}));
}

TEST(Sami, RecognizesNothingWithoutCaptions) {
  EXPECT_FALSE(recognizes<Sami>({}));
  EXPECT_FALSE(recognizes<Sami>({u"1", u"00:00:01,000 --> 00:00:02,000", u"a"}));
  EXPECT_FALSE(recognizes<Sami>({u"<SAMI><BODY></BODY></SAMI>"}));
  EXPECT_FALSE(recognizes<Sami>({u"<SYNC Start=1000><P>&nbsp;", u"<SYNC Start=2000><P>&nbsp;"}));
}

TEST(Sami, IsFoundByEitherForm) {
  const std::string captions = "<SAMI>\r\n<SYNC Start=1><P>a\r\n<SYNC Start=2><P>b";
  EXPECT_EQ(recognized(captions), (Recognized{"SAMI", 2}));
  EXPECT_EQ(recognized(captions + "</P></SYNC>"), (Recognized{"SAMI modern", 2}));
}

// --- Reading syncs and times.

TEST(Sami, ReadsCaptionsThatEndAtTheNextSync) {
  EXPECT_EQ(
      read({u"<SYNC Start=1000><P Class=ENUSCC>Good evening.", u"<SYNC Start=3500><P Class=ENUSCC>&nbsp;",
            u"<SYNC Start=4000><P Class=ENUSCC>Is this seat taken?<br>No.", u"<SYNC Start=6500><P Class=ENUSCC>Well.",
            u"<SYNC Start=9500><P Class=ENUSCC>&nbsp;", u"</BODY>", u"</SAMI>"}),
      (Captions{{1, 1000, 3500, u"Good evening."},
                {2, 4000, 6500, u"Is this seat taken?\r\nNo."},
                {3, 6500, 9500, u"Well."}}));
}

TEST(Sami, ReplacesWhatWasLoadedBefore) {
  Sami format;
  Subtitle subtitle;
  format.LoadSubtitle(subtitle, {u"<SYNC Start=1><P>a"}, u"");
  format.LoadSubtitle(subtitle, {u"no SAMI"}, u"");
  EXPECT_TRUE(subtitle.Paragraphs.empty());
}

TEST(Sami, ReadsNothingWithoutASync) {
  EXPECT_EQ(read({}), Captions{});
  EXPECT_EQ(read({u"<SYNCStart=1000><P>a"}), Captions{});
  EXPECT_EQ(read({u"<SYNC Begin=1000><P>a"}), Captions{});
}

TEST(Sami, BringsFourWaysToWriteAQuotedStartToOne) {
  for (WStringView opening :
       {u"<SYNC  Start=\"", u"<SYNC Start =\"", u"<SYNC Start = \"", u"<SYNC Start= \"", u"<SYNC Start=\""}) {
    const WString line = WString(opening).append(u"1000\"><P>a").append(opening).append(u"2000\"><P>&nbsp;");
    EXPECT_EQ(read({line}), (Captions{{1, 1000, 2000, u"a"}}));
  }
}

TEST(Sami, ReadsNoUnquotedStartWithBlanks) {
  EXPECT_EQ(read({u"<SYNC Start = 1000><P>a"}), Captions{});
  EXPECT_EQ(read({u"<SYNC  Start=1000><P>a"}), Captions{});
  EXPECT_EQ(read({u"<sync start = \"1000\"><P>a"}), Captions{});
  EXPECT_EQ(read({u"<SYNC Start   = \"1000\"><P>a"}), Captions{});
}

TEST(Sami, BringsNoTagToOneFormThatIsBrokenOverLines) {
  EXPECT_EQ(read({u"<SYNC Start =", u"\"1000\"><P>a"}), Captions{});
  EXPECT_EQ(read({u"<SYNC ", u"Start=\"1000\"><P>a", u"<SYNC Start=1500><P>&nbsp;"}),
            (Captions{{1, 1000, 1500, u"a"}}));
}

TEST(Sami, TakesASyncThatItCannotReadAsText) {
  EXPECT_EQ(read({u"<SYNC Start=1000><P>a<SYNC Start = 1500><P>b<SYNC Start=2000><P>&nbsp;"}),
            (Captions{{1, 1000, 2000, u"a<SYNC Start = 1500><P>b"}}));
}

TEST(Sami, ReadsEncryptedSyncsInOneFormOnly) {
  EXPECT_EQ(
      read({u"<SYNC Encrypted=\"true\" Start=\"1000\"><P>a", u"<SYNC Start=2000><P>b",
            u"<sync ENCRYPTED=\"TRUE\" START=3000><P>c", u"<SYNC Encrypted=true Start=4000><P>d",
            u"<SYNC Start=5000><P>&nbsp;"}),
      (Captions{
          {1, 1000, 2000, u"a"}, {2, 2000, 3000, u"b"}, {3, 3000, 5000, u"c<SYNC Encrypted=true Start=4000><P>d"}}));
}

TEST(Sami, ReadsTimesThroughQuotes) {
  EXPECT_EQ(read({u"<SYNC Start='1000'><P>a<SYNC Start=\"20\"'00'><P>&nbsp;"}), (Captions{{1, 1000, 2000, u"a"}}));
  EXPECT_EQ(read({u"<SYNC Start=1000ms><P>a<SYNC Start=2000.9><P>&nbsp;"}), (Captions{{1, 1000, 2000, u"a"}}));
}

TEST(Sami, StopsTimesAtTheLimitOfTheirType) {
  EXPECT_EQ(read({u"<SYNC Start=99999999999999999999><P>a<SYNC Start=2000><P>&nbsp;"}),
            (Captions{{1, 9223372036854775807.0, 2000, u"a"}}));
}

TEST(Sami, KeepsTheOrderOfTheFile) {
  EXPECT_EQ(read({u"<SYNC Start=5000><P>a<SYNC Start=2000><P>b<SYNC Start=3000><P>&nbsp;"}),
            (Captions{{1, 5000, 2000, u"a"}, {2, 2000, 3000, u"b"}}));
}

TEST(Sami, StartsAtZeroAtAZeroTime) {
  EXPECT_EQ(read({u"<SYNC Start=0><P>a<SYNC Start=1000><P>&nbsp;"}), (Captions{{1, 0, 1000, u"a"}}));
  EXPECT_EQ(read({u"<SYNC Start=1000><P>a<SYNC Start=000><P>b<SYNC Start=2000><P>&nbsp;"}),
            (Captions{{1, 1000, 0, u"a"}, {2, 0, 2000, u"b"}}));
}

TEST(Sami, KeepsTheStartOfAnEmptySyncAtAZeroTime) {
  EXPECT_EQ(read({u"<SYNC Start=1000><P>&nbsp;<SYNC Start=0><P>b<SYNC Start=2000><P>&nbsp;"}),
            (Captions{{1, 1000, 2000, u"b"}}));
}

TEST(Sami, LeavesTheStartAtZeroWhereATimeComesTwice) {
  EXPECT_EQ(read({u"<SYNC Start=1000><P>a<SYNC Start=1000><P>b<SYNC Start=2000><P>&nbsp;"}),
            (Captions{{1, 1000, 1000, u"a"}, {2, 0, 2000, u"b"}}));
}

TEST(Sami, OverwritesACaptionAtASyncWithoutATime) {
  EXPECT_EQ(read({u"<SYNC Start=1000><P>a<SYNC Start=><P>b<SYNC Start=-5><P>c<SYNC Start=2000><P>&nbsp;"}),
            (Captions{{1, 1000, 2000, u"c"}}));
}

TEST(Sami, StartsNoCaptionAtASyncOfABlankOnly) {
  EXPECT_EQ(read({u"<SYNC Start=1000><P>a<SYNC Start=2000><P>&nbsp;"}), (Captions{{1, 1000, 2000, u"a"}}));
  EXPECT_EQ(read({u"<SYNC Start=1000>a<SYNC Start=2000>&nbsp;<SYNC Start=2500>&NBSP;<SYNC Start=3000>b<SYNC Start=4>"}),
            (Captions{{1, 1000, 2000, u"a"}, {2, 3000, 4, u"b"}}));
}

TEST(Sami, EndsACaptionAtASyncThatIsCutOff) {
  EXPECT_EQ(read({u"<SYNC Start=1000><P>a<SYNC Start=2000"}), (Captions{{1, 1000, 2000, u"a"}}));
  EXPECT_EQ(read({u"<SYNC Start="}), Captions{});
}

TEST(Sami, SkipsToTheNextTagEndWhereASyncHasNone) {
  EXPECT_EQ(read({u"<SYNC Start=1000<SYNC Start=1500><P>a<SYNC Start=2000><P>&nbsp;"}),
            (Captions{{1, 1000, 2000, u"a"}}));
}

TEST(Sami, EndsTheLastCaptionByItsLength) {
  const auto endOf = [](size_t length) { return read({u"<SYNC Start=1000><P>" + repeated(u"a", length)}).at(0).end; };
  EXPECT_EQ(endOf(14), 2000);
  EXPECT_EQ(endOf(15), 2000);
  EXPECT_EQ(endOf(18), 2200);
  EXPECT_EQ(endOf(30), 3000);
  EXPECT_EQ(endOf(120), 9000);
  EXPECT_EQ(endOf(121), 9000);
}

TEST(Sami, CountsNoTagsIntoTheLengthOfTheLastCaption) {
  EXPECT_EQ(read({u"<SYNC Start=1000><P><i>" + repeated(u"a", 30) + u"</i>{\\an8}"}).at(0).end, 3000);
}

TEST(Sami, JoinsLinesWithNothingBetweenThem) {
  EXPECT_EQ(read({u"<SYNC Start=1000>", u"<P Class=ENUSCC>", u"one", u"two ", u" three<b", u"r>four",
                  u"<SYNC Start=2000><P>&nbsp;"}),
            (Captions{{1, 1000, 2000, u"onetwo three\r\nfour"}}));
}

// --- Reading classes and the style section.

TEST(Sami, GivesACaptionBehindAGapItsClass) {
  EXPECT_EQ(classes({u"<SYNC Start=1000><P Class=ENUSCC>a", u"<SYNC Start=2000><P Class=ENUSCC>&nbsp;",
                     u"<SYNC Start=3000><P Class=FRFRCC>b", u"<SYNC Start=4000><P Class=FRFRCC>&nbsp;"}),
            (std::vector<WString>{u"ENUSCC", u"FRFRCC"}));
}

// The class of a sync goes to the caption that was begun before, not to the one that the sync begins.
TEST(Sami, GivesTheClassOfASyncToTheCaptionThatItEnds) {
  EXPECT_EQ(classes({u"<SYNC Start=1000><P Class=A>a", u"<SYNC Start=2000><P Class=B>b",
                     u"<SYNC Start=3000><P Class=C>c", u"<SYNC Start=4000><P>&nbsp;"}),
            (std::vector<WString>{u"B", u"C", u""}));
}

TEST(Sami, ReadsClassesWithQuotesAndInAnyCase) {
  EXPECT_EQ(classes({u"<SYNC Start=1000><p CLASS=\"ENUSCC1\">a"}), std::vector<WString>{u"ENUSCC1"});
  EXPECT_EQ(classes({u"<SYNC Start=1000><p class='Enus' id=x>a"}), std::vector<WString>{u"Enus"});
  EXPECT_EQ(classes({u"<SYNC Start=1000><p class='\"E'n\"'>a"}), std::vector<WString>{u"E'n"});
}

TEST(Sami, EndsAClassAtAnyOtherUnit) {
  EXPECT_EQ(classes({u"<SYNC Start=1000><P Class=EN-US>a"}), std::vector<WString>{u"EN"});
  EXPECT_EQ(classes({u"<SYNC Start=1000><P Class= EN>a"}), std::vector<WString>{u""});
  EXPECT_EQ(classes({u"<SYNC Start=1000><P Class=\"\">a"}), std::vector<WString>{u""});
  EXPECT_EQ(classes({u"<SYNC Start=1000><P Class=\u00C9N>a"}), std::vector<WString>{u""});
}

TEST(Sami, ReadsAClassAnywhereInTheText) {
  EXPECT_EQ(classes({u"<SYNC Start=1000><P>a class=math exam"}), std::vector<WString>{u"math"});
}

TEST(Sami, KeepsTheFirstStyleSectionAsHeader) {
  EXPECT_EQ(loaded({u"<SAMI>", u"<style TYPE=\"text/css\">", u"<!--", u"P {a: b}", u"-->", u"</Style> <STYLE>2</STYLE>",
                    u"<SYNC Start=1><P>a"})
                .Header,
            u"<style TYPE=\"text/css\"><!--P {a: b}--></Style>");
}

TEST(Sami, KeepsNoStyleSectionAtTheVeryStart) {
  EXPECT_EQ(loaded({u"<STYLE>a</STYLE><SYNC Start=1><P>a"}).Header, u"");
  EXPECT_EQ(loaded({u" <STYLE>a</STYLE><SYNC Start=1><P>a"}).Header, u"<STYLE>a</STYLE>");
}

TEST(Sami, KeepsNoStyleSectionWithoutBothTagsInOrder) {
  EXPECT_EQ(loaded({u"<SAMI><STYLE>a<SYNC Start=1><P>a"}).Header, u"");
  EXPECT_EQ(loaded({u"<SAMI></STYLE>a<SYNC Start=1><P>a"}).Header, u"");
  EXPECT_EQ(loaded({u"<SAMI></STYLE>a<STYLE><SYNC Start=1><P>a"}).Header, u"");
}

// --- Reading texts.

TEST(Sami, DropsEverythingUpToTheFirstTagEnd) {
  EXPECT_EQ(textOf(u"plain"), u"plain");
  EXPECT_EQ(textOf(u"plain <i>italic</i>"), u"italic</i>");
  EXPECT_EQ(textOf(u"<P><P>twice"), u"<P>twice");
}

TEST(Sami, DropsNothingUpToATagEndBehindTheEndOfTheSync) {
  EXPECT_EQ(textOf(u"plain</Sync>behind<i>"), u"plain</Sync>behind<i>");
}

TEST(Sami, CutsClosingTagsOffTheEnd) {
  EXPECT_EQ(textBehindP(u"a </P> </SYNC> "), u"a");
  EXPECT_EQ(textBehindP(u"a</p></Sync>"), u"a");
  EXPECT_EQ(textBehindP(u"a</P>"), u"a");
  EXPECT_EQ(textBehindP(u"a</SYNC>"), u"a");
  EXPECT_EQ(textBehindP(u"a</SYNC></P>"), u"a</SYNC>");
  EXPECT_EQ(textBehindP(u"a</P></P>"), u"a</P>");
}

TEST(Sami, DeletesTheEndOfTheFileInExactCase) {
  EXPECT_EQ(textBehindP(u"a</BODY></SAMI>"), u"a");
  EXPECT_EQ(textBehindP(u"a </BODY> b </SAMI> c"), u"a b c");
  EXPECT_EQ(textBehindP(u"a</Body></sami>"), u"a</Body></sami>");
}

TEST(Sami, BreaksLinesInExactCase) {
  EXPECT_EQ(textBehindP(u"a<br>b<br />c<br clear=all>d"), u"a\r\nb\r\nc\r\nd");
  EXPECT_EQ(textBehindP(u"a<broken>b"), u"a\r\nb");
  EXPECT_EQ(textBehindP(u"a<BR>b"), u"a<BR>b");
  EXPECT_EQ(textBehindP(u"a<br b<i>c"), u"a\r\nc");
}

TEST(Sami, LeavesAnUnclosedLineBreak) {
  EXPECT_EQ(textBehindP(u"a<br>b<br c"), u"a\r\nb<br c");
}

TEST(Sami, TakesACrLfWithinALineAsABlank) {
  EXPECT_EQ(textBehindP(u"a\r\nb\nc"), u"a b\nc");
}

TEST(Sami, LeavesOneBlankOfMany) {
  EXPECT_EQ(textBehindP(u"  a     b  "), u"a b");
  EXPECT_EQ(textBehindP(u"a &nbsp; &nbsp;b"), u"a b");
  EXPECT_EQ(textBehindP(u"a\t\tb"), u"a\t\tb");
}

TEST(Sami, LeavesNoBlankAroundLineBreaks) {
  EXPECT_EQ(textBehindP(u"a   <br>   b &nbsp;<br>&nbsp;<br>&nbsp; c"), u"a\r\nb\r\n\r\nc");
}

TEST(Sami, TurnsNoBreakSpacesIntoBlanksAtTheVeryEnd) {
  EXPECT_EQ(textBehindP(u"a\u00A0\u00A0b"), u"a  b");
  EXPECT_EQ(textBehindP(u"\u00A0a\u00A0"), u" a ");
}

TEST(Sami, ResolvesEntities) {
  EXPECT_EQ(textBehindP(u"&quot;a&quot; &amp; &apos;b&apos; &lt;c&gt; &amp;lt;"), u"\"a\" & 'b' <c> <");
  EXPECT_EQ(textBehindP(u"&eacute;&#233;&amp"), u"&eacute;&#233;&amp");
}

TEST(Sami, ResolvesNoEntitiesWithinTagsThatAreKept) {
  EXPECT_EQ(textBehindP(u"<i id=\"&amp;\">&amp;</i id=&amp;>"), u"<i id=\"&amp;\">&</i id=&amp;>");
  EXPECT_EQ(textBehindP(u"<font color=\"&amp;\">&amp;</font>&amp;"), u"<font color=\"&amp;\">&</font>&");
  EXPECT_EQ(textBehindP(u"<div &amp;><b &amp;><s &amp;>"), u"<div &amp;><b &amp;><s &amp;>");
  EXPECT_EQ(textBehindP(u"<u &amp;><I &amp;><P &amp;>x"), u"<u &><I &><P &>x");
}

TEST(Sami, ResolvesNoEntitiesInAnUnclosedTagBehindAClosedOne) {
  EXPECT_EQ(textBehindP(u"<u>&amp; <i &amp;"), u"<u>& <i &amp;");
  EXPECT_EQ(textBehindP(u"&amp; <i &amp;"), u"& <i &");
}

TEST(Sami, ClosesAnOpenFont) {
  EXPECT_EQ(textBehindP(u"a <font color=red>b"), u"a <font color=red>b</font>");
  EXPECT_EQ(textBehindP(u"<font color=red>b</font>c<font color=red>d"), u"<font color=red>b</font>c<font color=red>d");
  EXPECT_EQ(textBehindP(u"a <font face=x>b"), u"a <font face=x>b");
  EXPECT_EQ(textBehindP(u"<FONT COLOR=red>b"), u"<FONT COLOR=red>b</FONT>");
  EXPECT_EQ(textBehindP(u"<FONT COLOR=red>b</FONT>"), u"<FONT COLOR=red>b</FONT>");
  EXPECT_EQ(textBehindP(u"<FONT COLOR=red>b</font>"), u"<FONT COLOR=red>b</font>");
  EXPECT_EQ(textBehindP(u"a<FONT COLOR=red>b"), u"a<FONT COLOR=red>b");
  EXPECT_EQ(textBehindP(u"<FONT COLOR=red><font color=red>b"), u"<FONT COLOR=red><font color=red>b</font>");
}

TEST(Sami, CutsOutTheSpeaker) {
  EXPECT_EQ(textOf(u"<P ID=\"Source\">Keeper</P><P Class=ENUSCC>Ahoy!</P>"), u"Ahoy!");
  EXPECT_EQ(textOf(u"<P Class=ENUSCC ID=Source>Keeper<P Class=ENUSCC>Ahoy!"), u"Ahoy!");
  EXPECT_EQ(textOf(u"<P Class=ENUSCC>Ahoy!</P><P ID=Source>Keeper</P>"), u"Ahoy!");
  EXPECT_EQ(textOf(u"<P Class=ENUSCC>Ahoy!<P ID=Source>Keeper"), u"Ahoy!");
  EXPECT_EQ(textOf(u"<P Class=ENUSCC>Ahoy!<P ID=Source>Keeper</P"), u"Ahoy!");
}

TEST(Sami, CutsOutOneSpeakerOnly) {
  EXPECT_EQ(textOf(u"<P ID=Source>A</P><P ID=\"Source\">B</P><P>c</P>"), u"A</P><P>c");
}

TEST(Sami, CutsOutNoSpeakerInOtherCase) {
  EXPECT_EQ(textOf(u"<p ID=Source>Keeper</p><P>Ahoy!"), u"Keeper</p><P>Ahoy!");
  EXPECT_EQ(textOf(u"<P id=Source>Keeper</P><P>Ahoy!"), u"Keeper</P><P>Ahoy!");
}

// --- Hostile files.

TEST(Sami, EndsOnTagsWithoutEnd) {
  constexpr size_t many = 1 << 16;
  EXPECT_EQ(read({repeated(u"<SYNC Start=1", many)}), Captions{});
  EXPECT_EQ(read({repeated(u"<SYNC Encrypted=\"true\"", many)}), Captions{});
  EXPECT_EQ(read({u"<SYNC Start=1>" + repeated(u"<SYNC Start = 1", many)}).at(0).text.size(), 15 * many);
  EXPECT_EQ(read({u"<SYNC Start=1><P>x" + repeated(u"<br", many)}).at(0).text.size(), 3 * many + 1);
  EXPECT_EQ(read({u"<SYNC Start=1><P>x>" + repeated(u"<i", many)}).at(0).text.size(), 2 * many + 2);
  EXPECT_EQ(read({u"<SYNC Start=1>x" + repeated(u"<P ID=Source", many)}).at(0).text.size(), 12 * (many - 1) + 1);
}

TEST(Sami, EndsOnManySyncsOfOneForm) {
  EXPECT_EQ(read({repeated(u"<SYNC Start=1><P>a", 1 << 15)}).size(), size_t{1} << 15);
}

TEST(Sami, EndsOnTenMegabytesOfEntitiesWithoutEnd) {
  const WString text = repeated(u"&amp &#x ", (10 << 20) / 9);
  const Captions captions = read({u"<SYNC Start=1><P>" + text});
  ASSERT_EQ(captions.size(), 1u);
  EXPECT_TRUE(captions[0].text == trimEndView(text));
  EXPECT_EQ(captions[0].end, 8001);
}

// --- Writing.

TEST(Sami, WritesHeadAndFootForNoCaptions) {
  EXPECT_EQ(writtenFilm(Subtitle()), headWithDefaultStyle + foot);
}

TEST(Sami, WritesAGapBehindACaptionUnlessTheNextOneTouches) {
  EXPECT_EQ(bodyOf({{1, 1000, 2000, u"a"}, {2, 2000, 3000, u"b"}, {3, 3001, 4000, u"c"}}),
            u"<SYNC Start=1000><P Class=ENUSCC>a\r\n"
            u"<SYNC Start=2000><P Class=ENUSCC>b\r\n"
            u"<SYNC Start=3000><P Class=ENUSCC>&nbsp;\r\n"
            u"<SYNC Start=3001><P Class=ENUSCC>c\r\n"
            u"<SYNC Start=4000><P Class=ENUSCC>&nbsp;\r\n");
}

TEST(Sami, TakesLessThanAMillisecondForATouch) {
  EXPECT_EQ(bodyOf({{1, 1000, 2000, u"a"}, {2, 2000.9, 3000, u"b"}, {3, 2999.1, 4000.4, u"c"}}),
            u"<SYNC Start=1000><P Class=ENUSCC>a\r\n"
            u"<SYNC Start=2001><P Class=ENUSCC>b\r\n"
            u"<SYNC Start=2999><P Class=ENUSCC>c\r\n"
            u"<SYNC Start=4000><P Class=ENUSCC>&nbsp;\r\n");
}

TEST(Sami, TakesAnOverlapOfAMillisecondForAGap) {
  EXPECT_EQ(bodyOf({{1, 1000, 2000, u"a"}, {2, 1999, 3000, u"b"}}),
            u"<SYNC Start=1000><P Class=ENUSCC>a\r\n"
            u"<SYNC Start=2000><P Class=ENUSCC>&nbsp;\r\n"
            u"<SYNC Start=1999><P Class=ENUSCC>b\r\n"
            u"<SYNC Start=3000><P Class=ENUSCC>&nbsp;\r\n");
}

TEST(Sami, WritesLineBreaksForCrLfOnly) {
  EXPECT_EQ(bodyOf({{1, 1, 2, u"a\r\nb\nc\rd"}}),
            u"<SYNC Start=1><P Class=ENUSCC>a<br>b\nc\rd\r\n<SYNC Start=2><P Class=ENUSCC>&nbsp;\r\n");
}

TEST(Sami, WritesTagsAndPlainTextUnchanged) {
  EXPECT_EQ(bodyOf({{1, 1, 2, u" <i>a & b</i> < c > &amp; {\\an8}<font "}}),
            u"<SYNC Start=1><P Class=ENUSCC><i>a & b</i> < c > &amp; {\\an8}<font\r\n"
            u"<SYNC Start=2><P Class=ENUSCC>&nbsp;\r\n");
}

TEST(Sami, WritesAnEmptyCaption) {
  EXPECT_EQ(bodyOf({{1, 1, 2, u" "}}), u"<SYNC Start=1><P Class=ENUSCC>\r\n<SYNC Start=2><P Class=ENUSCC>&nbsp;\r\n");
}

TEST(Sami, WritesNegativeTimes) {
  EXPECT_EQ(bodyOf({{1, -1500, -0.25, u"a"}}),
            u"<SYNC Start=-1500><P Class=ENUSCC>a\r\n<SYNC Start=-0><P Class=ENUSCC>&nbsp;\r\n");
}

TEST(Sami, EndsATextAtItsFirstZeroUnit) {
  EXPECT_EQ(bodyOf({{1, 1, 2, WString(u"a\0b", 3)}}),
            u"<SYNC Start=1><P Class=ENUSCC>a\r\n<SYNC Start=2><P Class=ENUSCC>&nbsp;\r\n");
}

TEST(Sami, WritesTheStyleSectionOfTheHeaderWithTheClassesOfTheCaptions) {
  Subtitle subtitle = subtitleOf({{1, 1, 2, u"a"}, {2, 3, 4, u"b"}});
  subtitle.Header = u"<Style>P {}</STYLE> \r\n";
  subtitle.Paragraphs[0]->Extra = u"FRFRCC";
  EXPECT_EQ(writtenFilm(subtitle), headBeforeStyle + u"<Style>P {}</STYLE>" + headBehindStyle +
                                       u"<SYNC Start=1><P Class=FRFRCC>a\r\n"
                                       u"<SYNC Start=2><P Class=FRFRCC>&nbsp;\r\n"
                                       u"<SYNC Start=3><P Class=ENUSCC>b\r\n"
                                       u"<SYNC Start=4><P Class=ENUSCC>&nbsp;\r\n" +
                                       foot);
}

TEST(Sami, WritesNoOtherHeaderAndNoOtherClasses) {
  Subtitle subtitle = subtitleOf({{1, 1, 2, u"a"}});
  subtitle.Header = u" <style>";
  subtitle.Paragraphs[0]->Extra = u"Default";
  EXPECT_EQ(
      writtenFilm(subtitle),
      headWithDefaultStyle + u"<SYNC Start=1><P Class=ENUSCC>a\r\n<SYNC Start=2><P Class=ENUSCC>&nbsp;\r\n" + foot);
}

TEST(Sami, FillsItsPlaceholdersInTheHeaderToo) {
  Subtitle subtitle;
  subtitle.Header = u"<style>_TITLE_ _LANGUAGE-STYLE_</style>";
  EXPECT_EQ(writtenFilm(subtitle), headBeforeStyle +
                                       u"<style>film .ENUSCC { name: English; lang: en-US ; SAMIType: CC ; }</style>" +
                                       headBehindStyle + foot);
}

TEST(Sami, KeepsAStyleSectionOverARound) {
  const Subtitle subtitle = loaded(
      {u"<SAMI>", u"<STYLE>", u"P {}", u"</STYLE>", u"<SYNC Start=1><P Class=A>a", u"<SYNC Start=2><P Class=A>&nbsp;"});
  EXPECT_EQ(writtenFilm(subtitle), headBeforeStyle + u"<STYLE>P {}</STYLE>" + headBehindStyle +
                                       u"<SYNC Start=1><P Class=A>a\r\n<SYNC Start=2><P Class=A>&nbsp;\r\n" + foot);
}

}  // namespace
}  // namespace mova
