#include "formats/xml/FlashXml.h"
#include "unit/formats/Captions.h"

namespace mova {
namespace {

/// A document with the given paragraphs.
Lines document(WStringView paragraphs) {
  return {u"<tt><div>", paragraphs, u"</div></tt>"};
}

Loaded loaded(WStringView paragraphs) {
  return load<FlashXml>(document(paragraphs));
}

TEST(FlashXml, HasItsNames) {
  const FlashXml format;
  EXPECT_EQ(format.Name(), u"Flash Xml");
  EXPECT_EQ(format.Extension(), u".xml");
  EXPECT_TRUE(format.ExtraExtensions().empty());
  EXPECT_FALSE(format.SupportsStyles());
  EXPECT_TRUE(format.IsTimeBased());
  EXPECT_TRUE(format.IsTextBased());
}

// --- Writing

TEST(FlashXml, WritesParagraphsWithCdata) {
  EXPECT_EQ(written<FlashXml>({{1, 1500, 3000, u"one\r\ntwo"}, {2, 4000, 5001, u"three"}}),
            "<?xml version=\"1.0\" encoding=\"utf-8\" ?>\n"
            "<tt>\n"
            "    <div>\n"
            "        <p begin=\"00:00:01.500\" end=\"00:00:03.00\"><![CDATA[<sub>one<br />two</sub>]]></p>\n"
            "        <p begin=\"00:00:04.00\" end=\"00:00:05.01\"><![CDATA[<sub>three</sub>]]></p>\n"
            "    </div>\n"
            "</tt>");
}

TEST(FlashXml, WritesAnEmptySubtitle) {
  EXPECT_EQ(written<FlashXml>({}),
            "<?xml version=\"1.0\" encoding=\"utf-8\" ?>\n"
            "<tt>\n"
            "    <div/>\n"
            "</tt>");
}

/// What stands between the "sub" tags.
std::string writtenText(WStringView text) {
  const std::string file = written<FlashXml>({{1, 0, 0, WString(text)}});
  const size_t begin = file.find("<sub>") + 5;
  return file.substr(begin, file.rfind("</sub>") - begin);
}

TEST(FlashXml, WritesEveryLineBreakAsATag) {
  EXPECT_EQ(writtenText(u"a\r\nb\nc\n\r\nd"), "a<br />b<br />c<br /><br />d");
}

TEST(FlashXml, WritesTextsWithoutTheUsualTags) {
  EXPECT_EQ(writtenText(u"<i>a</i> <b>b</b>"), "a b");
  EXPECT_EQ(writtenText(u"<font color=\"red\">a</font>"), "<font color=\"red\">a");
  EXPECT_EQ(writtenText(u""), "");
  EXPECT_EQ(writtenText(u"Tom & Jerry"), "Tom & Jerry");
  EXPECT_EQ(writtenText(u"caf\u00E9"), "caf\xC3\xA9");
}

TEST(FlashXml, WritesTimesWithTheMillisecondsUnshortened) {
  EXPECT_EQ(flashClock({0}), u"00:00:00.00");
  EXPECT_EQ(flashClock({7}), u"00:00:00.07");
  EXPECT_EQ(flashClock({1500}), u"00:00:01.500");
  EXPECT_EQ(flashClock({90061001}), u"25:01:01.01");
  EXPECT_EQ(flashClock({360000000}), u"100:00:00.00");
}

TEST(FlashXml, WritesEachFieldOfANegativeTimeWithItsSign) {
  EXPECT_EQ(flashClock({-1500}), u"00:00:-1.-500");
  EXPECT_EQ(flashClock({-0.9}), u"00:00:00.00");
}

TEST(FlashXml, WritesALongTextBeforeManyShortOnes) {
  Captions captions(20000, Caption{1, 0, 0, u"x"});
  captions[0].text = WString(32 << 20, u'x');
  EXPECT_GT(written<FlashXml>(captions).size(), size_t{32} << 20);
}

// --- Reading

TEST(FlashXml, ReadsClockTimesWithMillisecondsAsTheyStand) {
  EXPECT_EQ(loaded(u"<p begin='00:00:01.500' end='01:02:03.50'><![CDATA[<sub>one<br />two</sub>]]></p>").captions,
            (Captions{{1, 1500, 3723050, u"one\r\ntwo"}}));
  EXPECT_EQ(loaded(u"<p begin='1:2,3.4:9' end='-0:0:1:0'>x</p>").captions, (Captions{{1, 3723004, 1000, u"x"}}));
}

TEST(FlashXml, ReadsSecondsAndADuration) {
  EXPECT_EQ(loaded(u"<p begin=\"3.5s\" dur=\"2s\">x</p>").captions, (Captions{{1, 3500, 5500, u"x"}}));
  EXPECT_EQ(loaded(u"<p begin='3ss' end='s' dur='2s'>x</p>").captions, (Captions{{1, 3000, 0, u"x"}}));
  EXPECT_EQ(loaded(u"<p begin='00:00:01.0' dur='00:00:02.250'>x</p>").captions, (Captions{{1, 1000, 3250, u"x"}}));
  EXPECT_EQ(loaded(u"<p begin='1s' end='' dur='2s'>x</p>").captions, (Captions{{1, 1000, 3000, u"x"}}));
}

TEST(FlashXml, CountsTimesThatCannotBeReadAsErrors) {
  EXPECT_EQ(loaded(u"<p>a</p>"
                   u"<p begin='1s'>b</p>"
                   u"<p begin='00:01.5' end='2s'>c</p>"
                   u"<p begin='1s' end='00:01:5'>d</p>"
                   u"<p begin='1s' end='2s'>e</p>"),
            (Loaded{{{1, 1000, 2000, u"e"}}, 4}));
}

TEST(FlashXml, WrapsTimesBeyond32Bits) {
  EXPECT_EQ(loaded(u"<p begin='1193:0:0.0' end='99999999999:0:0.0'>x</p>").captions,
            (Captions{{1, 4294800000.0 - 4294967296.0, -3600000, u"x"}}));
}

/// The text of a "p" with these contents.
WString textOf(WStringView contents) {
  const Captions captions = loaded((WString(u"<p begin='1s' end='2s'>") += contents) += u"</p>").captions;
  return captions.empty() ? u"(none)" : captions[0].text;
}

TEST(FlashXml, TrimsEachTextAndJoinsThem) {
  EXPECT_EQ(textOf(u" one <br/> two <i> three <b>four </b></i> five"), u"one\r\ntwothree fourfive");
  EXPECT_EQ(textOf(u"<![CDATA[ <sub> a </sub> ]]>"), u" a ");
  EXPECT_EQ(textOf(u"a<!-- b -->c"), u"ac");
  EXPECT_EQ(textOf(u""), u"");
}

TEST(FlashXml, ReadsStoredTags) {
  EXPECT_EQ(textOf(u"&lt;sub&gt;a&lt;br /&gt;b&lt;/sub&gt;"), u"a\r\nb");
  EXPECT_EQ(textOf(u"<![CDATA[<sub>a<br/>b</sub>]]>"), u"a<br/>b");
  EXPECT_EQ(textOf(u"<sub>a &amp; b</sub>"), u"a & b");
}

TEST(FlashXml, ReadsEveryPWhereTheDivHasNone) {
  const Lines lines{u"<tt><body><div><p begin='1s' end='2s'>a</p></div></body><p begin='3s' end='4s'>b</p></tt>"};
  EXPECT_EQ(load<FlashXml>(lines).captions, (Captions{{1, 1000, 2000, u"a"}, {2, 3000, 4000, u"b"}}));
}

TEST(FlashXml, ReadsTheFirstDivOnly) {
  const Lines lines{u"<tt><div><p begin='1s' end='2s'>a</p></div><div><p begin='3s' end='4s'>b</p></div></tt>"};
  EXPECT_EQ(load<FlashXml>(lines).captions, (Captions{{1, 1000, 2000, u"a"}}));
}

TEST(FlashXml, ReadsNothingOfABrokenDocument) {
  EXPECT_EQ(load<FlashXml>({u"<tt><div><p begin='1s' end='2s'><sub>x</sub></p></div>"}), (Loaded{{}, 0}));
}

TEST(FlashXml, ReadsBackWhatItWrites) {
  const Captions captions{{1, 1500, 3999, u"one\r\ntwo"}};
  EXPECT_EQ(load<FlashXml>({FlashXml().WriteText(subtitleOf(captions), u"")}).captions, captions);
}

// --- Recognising

constexpr WStringView plain = u"<p begin='1s' end='2s'><sub>x</sub></p>";

TEST(FlashXml, RecognizesAParagraphWithSub) {
  EXPECT_TRUE(recognizes<FlashXml>(document(plain)));
  EXPECT_TRUE(recognizes<FlashXml>({u"<tt ", u"><p><![CDATA[<sub>", u"]]></p></tt>"}));
  EXPECT_TRUE(recognizes<FlashXml>({u"<tt a='b'>", plain, u"</tt>"}));
}

TEST(FlashXml, RefusesWhatHasNoSub) {
  EXPECT_FALSE(recognizes<FlashXml>(document(u"<p begin='1s' end='2s'>x</p>")));
  EXPECT_FALSE(recognizes<FlashXml>(document(u"<p begin='1s' end='2s'><sub >x</sub></p>")));
}

TEST(FlashXml, RefusesOtherRootsAndPlaces) {
  EXPECT_FALSE(recognizes<FlashXml>({u"<x><tt><div>", plain, u"</div></tt></x>"}));
  EXPECT_FALSE(recognizes<FlashXml>({u"<tt><body><div>", plain, u"</div></body></tt>"}));
  EXPECT_FALSE(recognizes<FlashXml>({u"<tt\ta='b'><div>", plain, u"</div></tt>"}));
  EXPECT_FALSE(recognizes<FlashXml>({u"<tt><div><sub>x</sub></div></tt>"}));
  EXPECT_FALSE(recognizes<FlashXml>({u"<tt><div>", plain, u"</div>"}));
  EXPECT_FALSE(recognizes<FlashXml>({u"<!-- <tt> <sub> -->"}));
  EXPECT_FALSE(recognizes<FlashXml>({}));
}

TEST(FlashXml, RecognizesEvenWhereEveryTimeIsAnError) {
  EXPECT_TRUE(recognizes<FlashXml>(document(u"<p><sub>x</sub></p>")));
}

}  // namespace
}  // namespace mova
