#include <gtest/gtest.h>

#include "text/Strings.h"
#include "xml/TiXMLDocument.h"

namespace mova {
namespace {

using Texts = std::vector<WString>;

bool parses(WStringView text) {
  TiXMLDocument document;
  const bool success = document.Parse(text) == 0;
  EXPECT_EQ(success, document.FirstChild() != nullptr);
  return success;
}

/// The text of the root element of the markup.
WString rootText(WStringView markup) {
  TiXMLDocument document(markup);
  return document.RootElement() ? elementInnerText(*document.RootElement()) : u"(no root)";
}

/// The values of the root's text nodes, one by one.
Texts rootTexts(WStringView markup) {
  TiXMLDocument document(markup);
  Texts texts;
  for (const XMLNode* node = document.RootElement()->FirstChild(); node; node = node->NextSibling()) {
    if (node->ToText()) texts.push_back(valueOf(*node));
  }
  return texts;
}

/// The attribute "x" of the root element of the markup.
WString rootAttribute(WStringView markup) {
  TiXMLDocument document(markup);
  return document.RootElement() ? attribute(*document.RootElement(), "x").value_or(u"(absent)") : u"(no root)";
}

/// The document that the markup parses to as text.
WString printed(WStringView markup) {
  TiXMLDocument document;
  EXPECT_EQ(document.Parse(markup), 0);
  return documentToText(document);
}

WString printedWithRootText(WStringView text) {
  TiXMLDocument document(u"<r/>");
  setText(*document.RootElement(), text);
  return documentToText(document);
}

WString repeated(WStringView text, size_t count) {
  WString result;
  for (size_t i = 0; i < count; ++i) result += text;
  return result;
}

// --- Parsing: success and failure.

TEST(TiXMLDocument, ParsesADocument) {
  TiXMLDocument document;
  EXPECT_EQ(document.Parse(u"<?xml version=\"1.0\"?>\n<!-- a --><tt><body/></tt>"), 0);
  EXPECT_TRUE(isNamed(document.RootElement(), "tt"));
}

TEST(TiXMLDocument, FailsOnEmptyInput) {
  EXPECT_FALSE(parses(u""));
  EXPECT_FALSE(parses(u" \r\n\t "));
  EXPECT_FALSE(parses(WString(1, u'\0') + u"<a/>"));
}

TEST(TiXMLDocument, FailsOnAMismatchedTag) {
  EXPECT_FALSE(parses(u"<a><b></a></b>"));
  EXPECT_FALSE(parses(u"<a></A>"));
}

TEST(TiXMLDocument, FailsOnAnUnclosedTag) {
  EXPECT_FALSE(parses(u"<a>"));
  EXPECT_FALSE(parses(u"<a><b></b>"));
  EXPECT_FALSE(parses(u"<a>text"));
  EXPECT_FALSE(parses(u"<a b=\"c"));
  EXPECT_FALSE(parses(u"<a></a"));
  EXPECT_FALSE(parses(u"<a/>text<"));
}

TEST(TiXMLDocument, FailsOnUnclosedCommentsCdataDeclarationsAndUnknowns) {
  for (WStringView open : {u"<!-- ", u"<![CDATA[ ", u"<? ", u"<!DOCTYPE "})
    EXPECT_FALSE(parses(WString(u"<a/>") += open));
}

TEST(TiXMLDocument, FailsOnTextBehindTheLastElement) {
  EXPECT_FALSE(parses(u"<a/>text"));
  EXPECT_FALSE(parses(u"only text"));
  EXPECT_TRUE(parses(u"text<a/> \n"));
}

TEST(TiXMLDocument, EndsAtAClosingTagOnTheTopLevel) {
  EXPECT_TRUE(parses(u"text</i> more < text"));
  EXPECT_EQ(rootText(u"<a>b</a></c>text < text"), u"b");
}

TEST(TiXMLDocument, LeavesNoTreeBehindAFailure) {
  TiXMLDocument document(u"<good/>");
  EXPECT_NE(document.Parse(u"<a><b/>"), 0);
  EXPECT_EQ(document.FirstChild(), nullptr);
}

TEST(TiXMLDocument, FailsOnARepeatedAttribute) {
  EXPECT_FALSE(parses(u"<a b='1' b='2'/>"));
}

TEST(TiXMLDocument, FailsOnADeclarationBehindOtherNodes) {
  EXPECT_FALSE(parses(u"<!-- a --><?xml version='1.0'?><a/>"));
  EXPECT_FALSE(parses(u"<a><?pi?></a>"));
}

TEST(TiXMLDocument, TakesSeveralRootElements) {
  TiXMLDocument document(u"<a/><b/>");
  EXPECT_TRUE(isNamed(document.RootElement(), "a"));
  EXPECT_TRUE(isNamed(document.LastChild(), "b"));
}

TEST(TiXMLDocument, ReadsUpToAZeroUnit) {
  EXPECT_EQ(rootText(WString(u"<a>x</a>") + u'\0' + u"<b>"), u"x");
  EXPECT_FALSE(parses(WString(u"<a>x") + u'\0' + u"</a>"));
}

TEST(TiXMLDocument, SkipsAByteOrderMark) {
  EXPECT_EQ(rootText(u"\uFEFF<a>x</a>"), u"x");
  EXPECT_EQ(printed(u"\uFEFF<a/>"), u"<a/>");
}

TEST(TiXMLDocument, GivesALoneSurrogateAsReplacementCharacter) {
  const char16_t lone[] = {u'<', u'a', u'>', 0xD800, u'x', u'<', u'/', u'a', u'>', 0};
  EXPECT_EQ(rootText(lone), u"\uFFFDx");
  EXPECT_EQ(rootText(u"<a>\U0001F600\u00E9\u20AC</a>"), u"\U0001F600\u00E9\u20AC");
}

// --- Parsing: text.

TEST(TiXMLDocument, DropsLeadingWhiteSpaceOfTextsAndKeepsTrailing) {
  EXPECT_EQ(rootText(u"<a> \t\n x y \n</a>"), u"x y \n");
  EXPECT_EQ(rootTexts(u"<a> x <b/> y </a>"), (Texts{u"x ", u"y "}));
  EXPECT_EQ(rootText(u"<a>\v\fx</a>"), u"x");
  EXPECT_EQ(rootText(u"<a>\u00A0x</a>"), u"\u00A0x");
}

TEST(TiXMLDocument, DropsWhiteSpaceBeforeEntitiesAreDecoded) {
  EXPECT_EQ(rootText(u"<a>&#32;x</a>"), u" x");
  EXPECT_EQ(rootText(u"<a> \n&#10; x</a>"), u"\n x");
}

TEST(TiXMLDocument, MakesNoTextOfWhiteSpaceAlone) {
  EXPECT_EQ(rootTexts(u"<a> <b/>\n\t<b/> </a>"), Texts{});
  EXPECT_EQ(rootTexts(u"<a>   </a>"), Texts{});
  EXPECT_EQ(rootTexts(u"<a>&#32;</a>"), Texts{u" "});
}

TEST(TiXMLDocument, MakesALineFeedOfEveryLineBreak) {
  EXPECT_EQ(rootText(u"<a>1\r\n2\n\r3\r4\n5\r\r6</a>"), u"1\n2\n3\n4\n5\n\n6");
  EXPECT_EQ(rootAttribute(u"<a x='1\r\n2\r3\n4'/>"), u"1\n2\n3\n4");
}

TEST(TiXMLDocument, KeepsACarriageReturnOfAReference) {
  EXPECT_EQ(rootText(u"<a>1&#13;2&#xD;\n3</a>"), u"1\r2\r\n3");
}

TEST(TiXMLDocument, KeepsCdataUntouchedButForLineBreaks) {
  EXPECT_EQ(rootTexts(u"<a><![CDATA[ <b>&lt;&amp;\r\n]] > ]]></a>"), Texts{u" <b>&lt;&amp;\n]] > "});
  EXPECT_EQ(rootTexts(u"<a> x <![CDATA[y]]> z</a>"), (Texts{u"x ", u"y", u"z"}));
}

TEST(TiXMLDocument, DecodesTheFiveNamedEntities) {
  EXPECT_EQ(rootText(u"<a>&quot;&amp;&apos;&lt;&gt;</a>"), u"\"&'<>");
  EXPECT_EQ(rootAttribute(u"<a x='&quot;&amp;&apos;&lt;&gt;'/>"), u"\"&'<>");
  EXPECT_EQ(rootText(u"<a>&amp;lt;&amp;amp;</a>"), u"&lt;&amp;");
}

TEST(TiXMLDocument, KeepsUnknownEntitiesAndBareAmpersands) {
  EXPECT_EQ(rootText(u"<a>&nbsp;x</a>"), u"&nbsp;x");
  EXPECT_EQ(rootAttribute(u"<a x='a&b&nbsp;&'/>"), u"a&b&nbsp;&");
  EXPECT_EQ(rootText(u"<a>&LT;&amp</a>"), u"&LT;&amp");
}

TEST(TiXMLDocument, KeepsUnknownEntitiesBehindKnownOnes) {
  EXPECT_EQ(rootText(u"<a>&lt;b&gt; &nbsp;&amp; & &eacute;</a>"), u"<b> &nbsp;& & &eacute;");
  EXPECT_EQ(rootAttribute(u"<a x='&lt;&nbsp;&gt; & &#65;&'/>"), u"<&nbsp;> & A&");
}

TEST(TiXMLDocument, DecodesNumericReferences) {
  EXPECT_EQ(rootText(u"<a>&#65;&#x42;&#x6a;&#x6A;&#0000000000067;</a>"), u"ABjjC");
  EXPECT_EQ(rootText(u"<a>&#233;&#x20AC;&#128512;</a>"), u"\u00E9\u20AC\U0001F600");
  EXPECT_EQ(rootAttribute(u"<a x='&#65;&#x42;'/>"), u"AB");
}

TEST(TiXMLDocument, KeepsWhatIsNoNumericReference) {
  for (WStringView text :
       {u"&#;", u"&#x;", u"&#65", u"&#x41", u"&#X41;", u"&#6 5;", u"&#-65;", u"&#6A;", u"&#xG;", u"&#"}) {
    EXPECT_EQ(rootText((WString(u"<a>") += text) += u"</a>"), text);
  }
}

TEST(TiXMLDocument, GivesWhatIsNoCharacterAsReplacementCharacter) {
  EXPECT_EQ(rootText(u"<a>&#xD800;&#x110000;&#4294967361;&#99999999999999999999;</a>"), u"\uFFFD\uFFFD\uFFFD\uFFFD");
}

TEST(TiXMLDocument, EndsAValueAtAZeroReference) {
  EXPECT_EQ(rootText(u"<a>x&#0;y</a>"), u"x");
}

TEST(TiXMLDocument, GivesNoTextForComments) {
  EXPECT_EQ(rootText(u"<a>1<!-- <b>2</b> -->3<b>4</b><!DOCTYPE 5>6</a>"), u"1346");
}

// --- Printing.

TEST(TiXMLDocument, PrintsElementsIndentedByFourBlanks) {
  EXPECT_EQ(printed(u"<a><b><c x='1'  y=\"2\"></c></b><d/></a>"),
            u"<a>\n    <b>\n        <c x=\"1\" y=\"2\"/>\n    </b>\n    <d/>\n</a>");
}

TEST(TiXMLDocument, PrintsAnElementWithTextInOneLine) {
  EXPECT_EQ(printed(u"<a><p>one<br/><i>two</i></p><p>x</p></a>"),
            u"<a>\n    <p>one<br/><i>two</i>\n    </p>\n    <p>x</p>\n</a>");
}

TEST(TiXMLDocument, EndsTheInlineStateBehindAChildThatHeldText) {
  EXPECT_EQ(printed(u"<p>one<br/><i><b/></i>two</p>"), u"<p>one<br/><i><b/></i>two</p>");
  EXPECT_EQ(printed(u"<p>one<i>two</i><b>three</b>four</p>"), u"<p>one<i>two</i>\n    <b>three</b>four</p>");
}

TEST(TiXMLDocument, PrintsWhatStandsBeforeTheRootOnLinesOfItsOwn) {
  EXPECT_EQ(printed(u"<?xml version=\"1.0\" ?><!DOCTYPE tt><!-- a & b --><tt><!-- c --></tt>"),
            u"<?xml version=\"1.0\" ?>\n<!DOCTYPE tt>\n<!-- a & b -->\n<tt>\n    <!-- c -->\n</tt>");
}

TEST(TiXMLDocument, PrintsCdataAsItStands) {
  EXPECT_EQ(printed(u"<a><![CDATA[<b> & c]]></a>"), u"<a><![CDATA[<b> & c]]></a>");
}

TEST(TiXMLDocument, PrintsAnEmptyTextBetweenTags) {
  EXPECT_EQ(printedWithRootText(u""), u"<r></r>");
}

TEST(TiXMLDocument, PrintsQuotesInTextAsTheyStandAndInAttributesEscaped) {
  EXPECT_EQ(printedWithRootText(u"\"it's\""), u"<r>\"it's\"</r>");
  EXPECT_EQ(printed(u"<a x='\"q\" &apos;'/>"), u"<a x=\"&quot;q&quot; &apos;\"/>");
}

TEST(TiXMLDocument, PrintsABareAmpersand) {
  EXPECT_EQ(printedWithRootText(u"Tom & Jerry"), u"<r>Tom & Jerry</r>");
  EXPECT_EQ(printed(u"<r x='Tom &amp; Jerry'>Tom &amp; Jerry</r>"), u"<r x=\"Tom & Jerry\">Tom & Jerry</r>");
}

TEST(TiXMLDocument, PrintsStoredMarkupAsMarkup) {
  EXPECT_EQ(printedWithRootText(u"<br/>"), u"<r><br/></r>");
  EXPECT_EQ(printed(u"<r x='&lt;&gt;'>a &lt; b</r>"), u"<r x=\"<>\">a < b</r>");
}

TEST(TiXMLDocument, PrintsAStoredEntityAsItsCharacter) {
  EXPECT_EQ(printedWithRootText(u"&lt;b&gt;"), u"<r><b></r>");
  EXPECT_EQ(printedWithRootText(u"&amp;lt;&quot;"), u"<r><&quot;</r>");
}

TEST(TiXMLDocument, DropsAmpSemicolonInWordsToo) {
  EXPECT_EQ(printedWithRootText(u"camp;fire"), u"<r>cfire</r>");
  EXPECT_EQ(printedWithRootText(u"amp;amp; ; amp ;;"), u"<r> ; amp ;;</r>");
  // What stands around it is not looked at again for itself, but for the entities that are replaced next.
  EXPECT_EQ(printedWithRootText(u"aamp;mp;"), u"<r>amp;</r>");
  EXPECT_EQ(printed(u"<r>&lamp;t;b</r>"), u"<r><b</r>");
}

TEST(TiXMLDocument, PrintsControlsOfAttributesAsReferencesWithoutTheX) {
  EXPECT_EQ(printed(u"<r x='a\nb'><c x='&#13;&#10;&#9;'/></r>"),
            u"<r x=\"a&#A;b\">\n    <c x=\"&#D;&#A;&#9;\"/>\n</r>");
}

TEST(TiXMLDocument, EscapesControlsInTheFirstRootOnly) {
  EXPECT_EQ(printed(u"<a x='&#9;'/><b x='&#9;'/>"), u"<a x=\"&#9;\"/>\n\n<b x=\"\t\"/>");
}

TEST(TiXMLDocument, NamesUtf8InPlaceOfUtf16) {
  EXPECT_EQ(printed(u"<?xml version=\"1.0\" encoding=\"utf-16\"?><a/>"),
            u"<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<a/>");
  EXPECT_EQ(printed(u"<?xml encoding=\"UTF-16\"?><a/>"), u"<?xml encoding=\"UTF-16\"?>\n<a/>");
  EXPECT_EQ(printedWithRootText(u"x encoding=\"utf-16\" encoding=\"utf-16\" y"),
            u"<r>x encoding=\"utf-8\" encoding=\"utf-8\" y</r>");
}

TEST(TiXMLDocument, TrimsTheText) {
  EXPECT_EQ(printed(u"<a/><b/>"), u"<a/>\n\n<b/>");
  EXPECT_EQ(printed(u"<!-- only -->"), u"<!-- only -->");
}

TEST(TiXMLDocument, PrintsCharactersBeyondAscii) {
  EXPECT_EQ(printedWithRootText(u"\u00E9 \u20AC \U0001F600"), u"<r>\u00E9 \u20AC \U0001F600</r>");
}

TEST(TiXMLDocument, PrintsTheDefaultDeclaration) {
  TiXMLDocument document;
  document.InsertEndChild(document.NewDeclaration());
  document.InsertEndChild(document.NewElement("a"));
  EXPECT_EQ(documentToText(document), u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a/>");
}

TEST(TiXMLDocument, KeepsTheOrderOfFirstSettingAttributes) {
  TiXMLDocument document(u"<a/>");
  setAttribute(*document.RootElement(), "z", u"1");
  setAttribute(*document.RootElement(), "b", u"2");
  setAttribute(*document.RootElement(), "z", u"\u00E9");
  EXPECT_EQ(documentToText(document), u"<a z=\"\u00E9\" b=\"2\"/>");
}

TEST(TiXMLDocument, PrintsAStreamOfChildrenAsIfTheyWereThere) {
  constexpr WStringView markup = u"<?xml version='1.0' encoding=\"utf-16\"?><r><a/><d><e/></d><b>text<c/></b></r><s/>";
  for (const char* name : {"r", "a", "d", "b", "c"}) {
    TiXMLDocument whole(markup);
    TiXMLDocument streamed(markup);
    const auto find = [name](TiXMLDocument& document) {
      return isNamed(document.RootElement(), name) ? document.RootElement()
                                                   : findElementDeep(document.RootElement(), name);
    };
    const auto newChild = [](TiXMLDocument& document, size_t i) {
      XMLElement* child = document.NewElement("p");
      if (i == 1) return child;
      setAttribute(*child, "n", u"a\n&<>\"");
      setText(*child->InsertNewChildElement("t"), u"&lt;i&gt;x</i> amp;amp; encoding=\"utf-16\"");
      return child;
    };
    for (size_t i = 0; i < 3; ++i) find(whole)->InsertEndChild(newChild(whole, i));
    DocumentStream stream = streamOf(streamed, find(streamed), 3, [&](size_t i) { return newChild(streamed, i); });
    stream.rewrite = [](WString& piece) {
      EXPECT_TRUE(piece.ends_with(u'>') || piece.ends_with(u'\n'));
      replaceAllInPlace(piece, u"x", u"xyz");
    };
    EXPECT_EQ(documentToText(streamed, stream), replaceAll(documentToText(whole), u"x", u"xyz")) << name;
    EXPECT_EQ(documentToText(streamed), documentToText(TiXMLDocument(markup))) << name;
  }
}

TEST(TiXMLDocument, PrintsAnEmptyStream) {
  TiXMLDocument document(u"<r><a/></r>");
  const XMLElement* parent = findElementDeep(document.RootElement(), "a");
  EXPECT_EQ(documentToText(document, streamOf(document, parent, 0, nullptr)), u"<r>\n    <a/>\n</r>");
}

// --- Texts of elements.

TEST(TiXMLDocument, SetTextReplacesAFirstTextOrGoesInFront) {
  TiXMLDocument document(u"<a>old<b/>tail</a>");
  setText(*document.RootElement(), u"new");
  EXPECT_EQ(elementInnerXml(*document.RootElement()), u"new<b></b>tail");
  TiXMLDocument other(u"<a><b/>tail</a>");
  setText(*other.RootElement(), u"new");
  EXPECT_EQ(elementInnerXml(*other.RootElement()), u"new<b></b>tail");
}

TEST(TiXMLDocument, GivesInnerTextOfTheWholeSubtree) {
  EXPECT_EQ(rootText(u"<a>1<b>2<c/><c>3</c></b><!-- x -->4<![CDATA[5]]></a>"), u"12345");
}

TEST(TiXMLDocument, GivesMarkupUnescapedAndWithoutEmptyElementForms) {
  TiXMLDocument document(u"<a x='&quot;&lt;' y=\"2\">1 &amp; 2<b/><!-- x --><c>3</c><![CDATA[4]]></a>");
  EXPECT_EQ(elementInnerXml(*document.RootElement()), u"1 & 2<b></b><c>3</c>4");
  EXPECT_EQ(elementOuterXml(*document.RootElement()), u"<a x=\"\"<\" y=\"2\">1 & 2<b></b><c>3</c>4</a>");
}

TEST(TiXMLDocument, GivesEveryNodeBeforeTheRootAsADeclaration) {
  EXPECT_EQ(declarationAndRootXml(TiXMLDocument(u"<?xml version='1.0'?> <!-- c --><!DOCTYPE a>text<a>x</a><b/>")),
            u"<?xml version='1.0'?><? c ?><?DOCTYPE a?><?text?><a>x</a>");
  EXPECT_EQ(declarationAndRootXml(TiXMLDocument(u"<!-- c -->")), u"<? c ?>");
  EXPECT_EQ(declarationAndRootXml(TiXMLDocument()), u"");
}

TEST(TiXMLDocument, AppendsPlainTextAsText) {
  TiXMLDocument document(u"<a/>");
  appendXmlFragment(*document.RootElement(), u"plain text");
  EXPECT_EQ(elementInnerXml(*document.RootElement()), u"plain text");
}

TEST(TiXMLDocument, AppendsTheFirstElementOfAFragment) {
  TiXMLDocument document(u"<a>1</a>");
  appendXmlFragment(*document.RootElement(), u"lost<b x='&amp;'>x</b><i>y</i>");
  EXPECT_EQ(elementInnerXml(*document.RootElement()), u"1<b x=\"&\">x</b>");
}

TEST(TiXMLDocument, KeepsAFragmentThatDoesNotParseAsText) {
  TiXMLDocument document(u"<a>1<c/></a>");
  appendXmlFragment(*document.RootElement(), u"<b>x</b> tail");
  EXPECT_EQ(elementInnerXml(*document.RootElement()), u"<b>x</b> tail<c></c>");
  appendXmlFragment(*document.RootElement(), u"a < b & c");
  EXPECT_EQ(elementInnerXml(*document.RootElement()), u"a < b & c<c></c>");
}

// --- Looking for nodes.

TEST(TiXMLDocument, FindsAChildElementByNameOrAny) {
  TiXMLDocument document(u"<a>text<!-- c --><b/><c/></a>");
  const XMLElement* root = document.RootElement();
  EXPECT_TRUE(isNamed(firstChildElementNamed(root, nullptr), "b"));
  EXPECT_TRUE(isNamed(firstChildElementNamed(root, "c"), "c"));
  EXPECT_EQ(firstChildElementNamed(root, "C"), nullptr);
  EXPECT_EQ(firstChildElementNamed(static_cast<const XMLNode*>(nullptr), "c"), nullptr);
}

TEST(TiXMLDocument, FindsNodesOfAnyKindByValue) {
  TiXMLDocument document(u"<r><x>p</x><y><!--p--><p/></y><p><p/></p></r>");
  const XMLElement* root = document.RootElement();
  EXPECT_TRUE(findNodeDeep(root, "p")->ToText());
  EXPECT_EQ(collectNodesDeep(root, "p").size(), 5u);
  EXPECT_EQ(findElementDeep(root, "p"), root->FirstChildElement("y")->FirstChildElement("p"));
  EXPECT_EQ(collectElementsDeep(root, "p").size(), 3u);
  EXPECT_EQ(collectAllElements(root).size(), 5u);
  EXPECT_EQ(findNodeDeep(root, "r"), nullptr) << "the node itself is not below itself";
}

TEST(TiXMLDocument, StaysBelowTheNode) {
  TiXMLDocument document(u"<r><a><x/></a><b><x/><x/></b></r>");
  const XMLElement* a = document.RootElement()->FirstChildElement("a");
  EXPECT_EQ(collectElementsDeep(a, "x").size(), 1u);
  EXPECT_EQ(findElementDeep(a, "b"), nullptr);
  EXPECT_EQ(elementInnerText(*a), u"");
}

TEST(TiXMLDocument, FindsNothingBelowNull) {
  const XMLNode* none = nullptr;
  EXPECT_EQ(findNodeDeep(none, "p"), nullptr);
  EXPECT_EQ(findElementDeep(none, "p"), nullptr);
  EXPECT_TRUE(collectNodesDeep(none, "p").empty());
  EXPECT_TRUE(collectElementsDeep(none, "p").empty());
  EXPECT_TRUE(collectAllElements(none).empty());
  EXPECT_EQ(elementAtPath(none, "a/b"), nullptr);
  EXPECT_TRUE(elementsAtPath(none, "a/b").empty());
}

TEST(TiXMLDocument, FollowsAPathWithOrWithoutTheOwnName) {
  TiXMLDocument document(u"<tt><body><div/></body></tt>");
  const XMLElement* root = document.RootElement();
  EXPECT_TRUE(isNamed(elementAtPath(root, "tt/body"), "body"));
  EXPECT_TRUE(isNamed(elementAtPath(root, "body"), "body"));
  EXPECT_TRUE(isNamed(elementAtPath(root, "tt/body/div"), "div"));
  EXPECT_TRUE(isNamed(elementAtPath(root, "body/div/"), "div"));
}

TEST(TiXMLDocument, FindsNothingWhereAStepIsMissing) {
  TiXMLDocument document(u"<tt><body><div/></body></tt>");
  const XMLElement* root = document.RootElement();
  EXPECT_EQ(elementAtPath(root, "tt/head/div"), nullptr);
  EXPECT_EQ(elementAtPath(root, "body//div"), nullptr);
  EXPECT_EQ(elementAtPath(root, "body/p"), nullptr);
  EXPECT_EQ(elementAtPath(root, "tt"), nullptr);
  EXPECT_EQ(elementAtPath(root, ""), nullptr);
}

TEST(TiXMLDocument, ListsTheElementsAtTheLastStepBelowTheFirstMatch) {
  TiXMLDocument document(u"<r><a><p/><q/><p/></a><a><p/></a></r>");
  const XMLElement* root = document.RootElement();
  EXPECT_EQ(elementsAtPath(root, "a/p").size(), 2u);
  EXPECT_EQ(elementsAtPath(root, "r/a/p").size(), 2u);
  EXPECT_EQ(elementsAtPath(root, "a").size(), 2u);
  EXPECT_TRUE(elementsAtPath(root, "b/p").empty());
}

TEST(TiXMLDocument, TellsAbsentAttributesFromEmptyOnes) {
  TiXMLDocument document(u"<a x=''/>");
  EXPECT_EQ(attribute(*document.RootElement(), "x"), std::optional<WString>(u""));
  EXPECT_EQ(attribute(*document.RootElement(), "y"), std::nullopt);
  EXPECT_EQ(attributeOrEmpty(*document.RootElement(), "y"), u"");
}

// --- The lines of a file.

TEST(TiXMLDocument, JoinsLinesEachFollowedByALineFeed) {
  EXPECT_EQ(joinedText({u"a", u"", u"b"}), u"a\n\nb\n");
  EXPECT_EQ(joinedText(Lines()), u"");
}

TEST(TiXMLDocument, ParsesTheLinesOnce) {
  const Lines lines{u"<a>1", u"2</a>"};
  const TiXMLDocument* document = parsedXml(lines);
  ASSERT_NE(document, nullptr);
  EXPECT_EQ(elementInnerText(*document->RootElement()), u"1\n2");
  EXPECT_EQ(parsedXml(Lines(lines)), document);
}

/// What a look at the lines decides must be what parsing them gives.
void expectParsedXml(const Lines& lines, bool expected) {
  EXPECT_EQ(parsedXml(lines) != nullptr, expected) << ::testing::PrintToString(joinedText(lines));
  EXPECT_EQ(TiXMLDocument().Parse(joinedText(lines)) == 0, expected) << ::testing::PrintToString(joinedText(lines));
}

TEST(TiXMLDocument, AgreesWithTheParseWhereALookIsEnough) {
  const WString zero(1, u'\0');
  expectParsedXml({}, false);
  expectParsedXml({u"", u" "}, false);
  expectParsedXml({u"1", u"00:00:01,000 --> 00:00:02,000", u"Hello"}, false);
  expectParsedXml({u"00:00:01,000 --> 00:00:02,000", u"<i>Hello</i>"}, true);
  expectParsedXml({u"00:00:01,000 --> 00:00:02,000", u"<i>Hello</i>", u" ", u""}, true);
  expectParsedXml({u"00:00:01,000 --> 00:00:02,000", u"<i>Hello</i> you"}, false);
  expectParsedXml({u"00:00:01,000 --> 00:00:02,000", u"<i>Hello"}, false);
  expectParsedXml({u"<i>Hello", u"<i>Hello</i>"}, false);
  expectParsedXml({u"<font color=\"a>b\">Hello</font>", u"you"}, false);
  expectParsedXml({u"<font color=\"a>b\">Hello</font>"}, true);
  expectParsedXml({u"Hello</i> you"}, true);
  expectParsedXml({u"<i>Hello</i></i> you"}, true);
  expectParsedXml({u"<a/>", u"text"}, false);
  expectParsedXml({u"<a/>"}, true);
  expectParsedXml({u"<a></a/> <b>"}, false);
  expectParsedXml({u"< a>x< /a>"}, true);
  expectParsedXml({u"<>"}, false);
  expectParsedXml({u"1 < 2"}, false);
  expectParsedXml({u"<3 you>"}, false);
  expectParsedXml({u"<a", u"b='c'>text</a", u">"}, true);
  expectParsedXml({u"<!-- <i> -->", u"<a/>"}, true);
  expectParsedXml({u"<a><![CDATA[</a>]]></a>"}, true);
  expectParsedXml({u"<a>x</a>" + zero + u"text"}, true);
  expectParsedXml({u"text" + zero + u"<a/>"}, false);
  expectParsedXml({u"a -> b >"}, false);
  expectParsedXml({u"<a b='>", u"'></a>"}, true);
}

// --- Large and hostile documents.

TEST(TiXMLDocument, RefusesElementsThatLieTooDeep) {
  EXPECT_TRUE(parses(repeated(u"<a>", 90) + repeated(u"</a>", 90)));
  EXPECT_FALSE(parses(repeated(u"<a>", 100000) + repeated(u"</a>", 100000)));
  EXPECT_FALSE(parses(repeated(u"<a>", 100000)));
}

TEST(TiXMLDocument, RefusesElementsWithTooManyAttributes) {
  const auto withAttributes = [](int count) {
    WString markup = u"<!-- ' --><a";
    for (int i = 0; i < count; ++i) {
      markup += u" x";
      for (int n = i; n > 0; n /= 10) markup += char16_t(u'0' + n % 10);
      markup += u"='>\"'";
    }
    return markup + u"/>";
  };
  EXPECT_TRUE(parses(withAttributes(TiXMLDocument::MaxAttributes)));
  EXPECT_FALSE(parses(withAttributes(TiXMLDocument::MaxAttributes + 1)));
  EXPECT_FALSE(parses(withAttributes(200000)));
}

TEST(TiXMLDocument, ReadsReferencesWithoutAnEndInLinearTime) {
  const WString references = repeated(u"&#", 1000000);
  EXPECT_EQ(rootText(u"<a>" + references + u"</a>"), references);
  EXPECT_EQ(rootAttribute(u"<a x='" + references + u"'/>"), references);
}

TEST(TiXMLDocument, ReadsALongAttribute) {
  const WString value = repeated(u"0123456789", 1000000);
  EXPECT_EQ(rootAttribute(u"<a x='" + value + u"'/>"), value);
}

TEST(TiXMLDocument, ReadsAndPrintsAMillionElements) {
  TiXMLDocument document;
  ASSERT_EQ(document.Parse(u"<r>" + repeated(u"<p a='1'>x</p>", 1000000) + u"</r>"), 0);
  EXPECT_EQ(collectElementsDeep(document.RootElement(), "p").size(), 1000000u);
  const WString text = documentToText(document);
  EXPECT_EQ(text.size(), 3 + 1000000 * (1 + 4 + 14) + 1 + 4);
  EXPECT_TRUE(text.ends_with(u"\n    <p a=\"1\">x</p>\n</r>"));
}

TEST(TiXMLDocument, RewritesManyEntitiesInLinearTime) {
  EXPECT_EQ(printedWithRootText(repeated(u"&<amp; encoding=\"utf-16\"", 300000)).size(), 3 + 300000 * (2 + 17) + 4);
}

}  // namespace
}  // namespace mova
