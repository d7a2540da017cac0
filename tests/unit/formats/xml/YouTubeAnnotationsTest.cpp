#include "formats/xml/YouTubeAnnotations.h"
#include "unit/formats/Captions.h"

namespace mova {
namespace {

Lines document(WStringView annotations) {
  return {u"<document><annotations>", annotations, u"</annotations></document>"};
}

/// What a conversion reads: only the fixed styles.
Captions readAfterRecognizing(WStringView annotations) {
  YouTubeAnnotations format;
  const Lines lines = document(annotations);
  const bool recognized = format.Recognizes(lines, u"film.xml");
  Subtitle subtitle;
  format.LoadSubtitle(subtitle, lines, u"film.xml");
  EXPECT_EQ(recognized, !subtitle.Paragraphs.empty());
  return captionsOf(subtitle);
}

/// An annotation of a style with a text and the given regions.
WString annotation(WStringView style, WStringView text, WStringView regions) {
  WString result = u"<annotation style='";
  result += style;
  result += u"'><TEXT>";
  result += text;
  result += u"</TEXT>";
  result += regions;
  return result + u"</annotation>";
}

constexpr WStringView oneToTwo =
    u"<segment><movingRegion><anchoredRegion t='0:00:01.500' d='0'/><anchoredRegion t='0:00:02.0' d='0'/>"
    u"</movingRegion></segment>";

TEST(YouTubeAnnotations, HasItsNames) {
  const YouTubeAnnotations format;
  EXPECT_EQ(format.Name(), u"YT Annotations");
  EXPECT_EQ(format.Extension(), u".xml");
  EXPECT_TRUE(format.ExtraExtensions().empty());
  EXPECT_FALSE(format.SupportsStyles());
  EXPECT_TRUE(format.IsTimeBased());
  EXPECT_TRUE(format.IsTextBased());
  EXPECT_TRUE(format.CollectStyles);
}

// --- Writing

TEST(YouTubeAnnotations, WritesSpeechBubbles) {
  EXPECT_EQ(written<YouTubeAnnotations>({{7, 61500, 63000, u"one\r\n<i>two</i>"}, {9, 3600000, 3601007, u"x"}}),
            "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
            "<document>\n"
            "    <requestheader video_id=\"X\"/>\n"
            "    <annotations>\n"
            "        <annotation id=\"annotation_1\" author=\"Caption Forge\" type=\"text\" style=\"speech\">\n"
            "            <TEXT>one\r\n<i>two</i></TEXT>\n"
            "            <segment>\n"
            "                <movingRegion type=\"anchored\">\n"
            "                    <anchoredRegion t=\"0:01:01.500\" d=\"0\"/>\n"
            "                    <anchoredRegion t=\"0:01:03.0\" d=\"0\"/>\n"
            "                </movingRegion>\n"
            "            </segment>\n"
            "        </annotation>\n"
            "        <annotation id=\"annotation_2\" author=\"Caption Forge\" type=\"text\" style=\"speech\">\n"
            "            <TEXT>x</TEXT>\n"
            "            <segment>\n"
            "                <movingRegion type=\"anchored\">\n"
            "                    <anchoredRegion t=\"1:00:00.0\" d=\"0\"/>\n"
            "                    <anchoredRegion t=\"1:00:01.7\" d=\"0\"/>\n"
            "                </movingRegion>\n"
            "            </segment>\n"
            "        </annotation>\n"
            "    </annotations>\n"
            "</document>");
}

TEST(YouTubeAnnotations, WritesAnEmptySubtitle) {
  EXPECT_EQ(written<YouTubeAnnotations>({}),
            "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
            "<document>\n"
            "    <requestheader video_id=\"X\"/>\n"
            "    <annotations/>\n"
            "</document>");
}

TEST(YouTubeAnnotations, WritesTimes) {
  EXPECT_EQ(annotationClock({0}), u"0:00:00.0");
  EXPECT_EQ(annotationClock({61500}), u"0:01:01.500");
  EXPECT_EQ(annotationClock({90061001}), u"25:01:01.1");
  EXPECT_EQ(annotationClock({-61500}), u"0:-1:-1.-500");
}

// --- Reading

TEST(YouTubeAnnotations, ReadsTextAndTimes) {
  EXPECT_EQ(readAfterRecognizing(annotation(u"speech", u" one<b> two</b>&amp;\n", oneToTwo)),
            (Captions{{1, 1500, 2000, u"onetwo&\n"}}));
}

TEST(YouTubeAnnotations, ReadsTimesOfThreeAndFourPieces) {
  const auto timesOf = [](WStringView first, WStringView second) {
    WString regions = u"<anchoredRegion t='";
    regions += first;
    regions += u"'/><anchoredRegion t='";
    regions += second;
    return readAfterRecognizing(annotation(u"speech", u"x", regions + u"'/>"));
  };
  EXPECT_EQ(timesOf(u"1:2.3", u"1:2:3.4"), (Captions{{1, 62003, 3723004, u"x"}}));
  EXPECT_EQ(timesOf(u"::1::2..3:", u"0:1:1.500"), (Captions{{1, 62003, 61500, u"x"}}));
  EXPECT_EQ(timesOf(u"5.5", u"1:2:3:4:5"), (Captions{{1, 0, 0, u"x"}}));
  EXPECT_EQ(timesOf(u"never", u""), (Captions{{1, 0, 0, u"x"}}));
}

TEST(YouTubeAnnotations, LooksForRegionsAnywhereAndForRectRegionsNext) {
  constexpr WStringView anchored = u"<x><anchoredRegion t='0:1.0'/><anchoredRegion t='0:2.0'/></x>";
  constexpr WStringView rect =
      u"<segment><movingRegion><rectRegion t='0:3.0'/><rectRegion t='0:4.0'/></movingRegion></segment>";
  constexpr WStringView rectElsewhere = u"<rectRegion t='0:5.0'/><y><rectRegion t='0:6.0'/></y>";
  constexpr WStringView oneAnchored = u"<anchoredRegion t='0:7.0'/>";
  EXPECT_EQ(readAfterRecognizing(annotation(u"speech", u"x", anchored)), (Captions{{1, 1000, 2000, u"x"}}));
  EXPECT_EQ(readAfterRecognizing(annotation(u"speech", u"x", rect)), (Captions{{1, 3000, 4000, u"x"}}));
  EXPECT_EQ(readAfterRecognizing(annotation(u"speech", u"x", rectElsewhere)), (Captions{{1, 5000, 6000, u"x"}}));
  EXPECT_EQ(readAfterRecognizing(annotation(u"speech", u"x", WString(oneAnchored) += rect)),
            (Captions{{1, 3000, 4000, u"x"}}));
}

TEST(YouTubeAnnotations, PassesOverWhatHasNoTextOrNotTwoRegions) {
  EXPECT_EQ(readAfterRecognizing(u"<annotation style='speech'>" + WString(oneToTwo) + u"</annotation>" +
                                 annotation(u"speech", u"a", u"") +
                                 annotation(u"speech", u"b", u"<anchoredRegion t='0:1.0'/>") +
                                 annotation(u"speech", u"c", WString(oneToTwo) += u"<anchoredRegion t='0:1.0'/>")),
            (Captions{{1, 1500, 2000, u"c"}}))
      << "the list at the path is not empty, so the third region is not looked for";
}

TEST(YouTubeAnnotations, ReadsTheFixedStylesInAConversion) {
  EXPECT_EQ(readAfterRecognizing(annotation(u"speech", u"a", oneToTwo) + annotation(u"popup", u"b", oneToTwo) +
                                 annotation(u"anchored", u"c", oneToTwo) + annotation(u"title", u"d", oneToTwo) +
                                 annotation(u"Speech", u"e", oneToTwo)),
            (Captions{{1, 1500, 2000, u"a"}, {2, 1500, 2000, u"b"}, {3, 1500, 2000, u"c"}}));
}

TEST(YouTubeAnnotations, ReadsEveryTimedStyleWithoutRecognizingFirst) {
  const WString annotations = annotation(u"title", u"a", oneToTwo) + annotation(u"popup", u"b", u"") +
                              (u"<annotation><TEXT>c</TEXT>" + WString(oneToTwo) + u"</annotation>") +
                              annotation(u"speech", u"d", oneToTwo);
  EXPECT_EQ(load<YouTubeAnnotations>(document(annotations)).captions,
            (Captions{{1, 1500, 2000, u"a"}, {2, 1500, 2000, u"d"}}));
}

TEST(YouTubeAnnotations, ReadsNothingWithoutClosingTags) {
  const WString text = annotation(u"speech", u"a", oneToTwo);
  EXPECT_FALSE(recognizes<YouTubeAnnotations>({u"<document><annotations/>", text, u"</document>"}));
  EXPECT_FALSE(recognizes<YouTubeAnnotations>(document(u"<annotation style='speech'><TEXT/></annotation>")));
  EXPECT_FALSE(recognizes<YouTubeAnnotations>({u"<document><annotations>", text, u"</annotations>"}));
  EXPECT_FALSE(recognizes<YouTubeAnnotations>({}));
}

TEST(YouTubeAnnotations, ReadsBackWhatItWritesWithLineFeeds) {
  const WString text = YouTubeAnnotations().WriteText(subtitleOf({{1, 61500, 62000, u"one\r\ntwo"}}), u"");
  EXPECT_EQ(load<YouTubeAnnotations>({text}).captions, (Captions{{1, 61500, 62000, u"one\ntwo"}}));
}

}  // namespace
}  // namespace mova
