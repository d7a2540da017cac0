#include <gtest/gtest.h>

#include "text/StyleTags.h"

namespace mova {
namespace {

WString toSsa(WString text) {
  return modelToSsaText(Paragraph(std::move(text), 0, 0));
}

WString repeated(WStringView piece, size_t count) {
  WString result;
  for (size_t i = 0; i < count; ++i) result += piece;
  return result;
}

TEST(ModelToSsaText, WritesLineBreaks) {
  EXPECT_EQ(toSsa(u"a\r\nb"), u"a\\Nb");
  EXPECT_EQ(toSsa(u""), u"");
}

TEST(ModelToSsaText, WritesLetterTagsAndMergesAdjacentBlocks) {
  EXPECT_EQ(toSsa(u"<i>a</i> <u>b</u> <b>c</b>"), uR"({\i1}a{\i0} {\u1}b{\u0} {\b1}c{\b0})");
  EXPECT_EQ(toSsa(u"<i><b>x"), uR"({\i1\b1}x)");
  EXPECT_EQ(toSsa(uR"({\an8}<i>x</i>)"), uR"({\an8\i1}x{\i0})");
}

TEST(ModelToSsaText, KnowsTagsInLowerCaseOnly) {
  EXPECT_EQ(toSsa(u"<I>a</I><FONT color=\"#FF0000\">x</FONT>"), u"<I>a</I><FONT color=\"#FF0000\">x</FONT>");
}

TEST(ModelToSsaText, SetsAColorBackWhereTextFollows) {
  EXPECT_EQ(toSsa(u"<font color=\"#FF0000\">x</font>y and more text"), uR"({\c&H0000FF&}x{\c}y and more text)");
}

TEST(ModelToSsaText, SetsNoColorBackNineUnitsOrLessBeforeTheEnd) {
  EXPECT_EQ(toSsa(u"<font color=\"red\">x</font>"), uR"({\c&Hred&}x)");
  EXPECT_EQ(toSsa(u"<font color=\"red\">x</font>123456789"), uR"({\c&Hred&}x123456789)");
  EXPECT_EQ(toSsa(u"<font color=\"red\">x</font>1234567890"), uR"({\c&Hred&}x{\c}1234567890)");
}

TEST(ModelToSsaText, WritesColorSizeAndFaceInThisOrder) {
  EXPECT_EQ(toSsa(u"<font face=\"Arial\" size=\"20\" color=\"#112233\">x</font>"), uR"({\c&H332211&\fs20\fnArial}x)");
  EXPECT_EQ(toSsa(u"<font color='#112233' size='20' face='Arial'>x</font>"), uR"({\c&H332211&\fs20\fnArial}x)");
}

TEST(ModelToSsaText, ReordersTheLastSixUnitsOfAColorWhateverTheyAre) {
  EXPECT_EQ(toSsa(u"<font color=\"yellow\">x"), uR"({\c&Howllye&}x)");
  EXPECT_EQ(toSsa(u"<font color=\"#80FF0000\">x"), uR"({\c&H800000FF&}x)");
  EXPECT_EQ(toSsa(u"<font color=\"#F#F0000\">x"), uR"({\c&H0000FF&}x)");
  EXPECT_EQ(toSsa(u"<font color=\"#F00\">x"), uR"({\c&HF00&}x)");
  EXPECT_EQ(toSsa(u"<font color=\"\">x"), uR"({\c&H&}x)");
}

TEST(ModelToSsaText, LeavesOutTheEndOfAColorInFrontOfAnother) {
  EXPECT_EQ(toSsa(u"<font color=\"#FF0000\">a</font><font color=\"#00FF00\">bcdefghijkl</font>"),
            uR"({\c&H0000FF&}a{\c&H00FF00&}bcdefghijkl)");
}

TEST(ModelToSsaText, KeepsAClosingTagAtTheVeryStart) {
  EXPECT_EQ(toSsa(u"<font color=\"red\"></font>abc"), uR"({\c&Hred&}</font>abc)");
  EXPECT_EQ(toSsa(u"<font color=\"red\"></font>"), uR"({\c&Hred&}</font>)");
}

TEST(ModelToSsaText, InsertsNothingAtTheVeryEnd) {
  EXPECT_EQ(toSsa(u"x<font color=\"red\">"), u"x");
  EXPECT_EQ(toSsa(u"x<font color=\"red\"></font>"), u"x");
}

TEST(ModelToSsaText, DropsAFontTagWithoutAReadableAttribute) {
  EXPECT_EQ(toSsa(u"<font color=\"red>x</font>yy"), u"xyy");
  EXPECT_EQ(toSsa(u"<font lang=\"en\">x"), u"x");
}

TEST(ModelToSsaText, LooksForNoAttributeInTheValueOfAnother) {
  EXPECT_EQ(toSsa(u"<font face=\"color='b'\">x"), uR"({\fncolor='b'}x)");
}

TEST(ModelToSsaText, LeavesAnUnclosedFontTag) {
  EXPECT_EQ(toSsa(u"a <font color=\"red\" b"), u"a <font color=\"red\" b");
}

TEST(ModelToSsaText, TranslatesTenFontTagsAndLeavesTheEleventh) {
  EXPECT_EQ(toSsa(repeated(u"<font size=\"7\">a", 11)), repeated(uR"({\fs7}a)", 10) + u"<font size=\"7\">a");
}

TEST(ModelToSsaText, TakesItsOwnPlaceholderForAnEndOfColor) {
  EXPECT_EQ(toSsa(u"a@___@@b"), uR"(a{\c}b)");
}

TEST(ModelToSsaText, EndsOnUnclosedTagsWithoutEnd) {
  const WString fonts = repeated(u"<font ", (10 << 20) / 6);
  EXPECT_EQ(toSsa(fonts), fonts);
  EXPECT_EQ(toSsa(repeated(u"<font a>", 1 << 16)).size(), ((size_t{1} << 16) - 10) * 8);
}

TEST(SsaToModelText, ReadsBothLineBreaks) {
  EXPECT_EQ(ssaToModelText(uR"(a\Nb\nc)"), u"a\r\nb\r\nc");
  EXPECT_EQ(ssaToModelText(u""), u"");
}

TEST(SsaToModelText, ReadsLetterTags) {
  EXPECT_EQ(ssaToModelText(uR"({\i1}a{\i0}{\u1}b{\u0}{\b1}c{\b0})"), u"<i>a</i><u>b</u><b>c</b>");
  EXPECT_EQ(ssaToModelText(uR"({\i1}a{\i}{\u1}b{\u}{\b1}c{\b})"), u"<i>a</i><u>b</u><b>c</b>");
}

TEST(SsaToModelText, ClosesOneOpenLetterTagOfEachKind) {
  EXPECT_EQ(ssaToModelText(uR"({\i1}x)"), u"<i>x</i>");
  EXPECT_EQ(ssaToModelText(u"<i>x"), u"<i>x</i>");
  EXPECT_EQ(ssaToModelText(uR"({\i1}a{\i1}b)"), u"<i>a<i>b</i>");
  EXPECT_EQ(ssaToModelText(uR"({\b1}{\u1}{\i1}x)"), u"<b><u><i>x</i></u></b>");
  EXPECT_EQ(ssaToModelText(uR"({\i0}a{\i1}b)"), u"</i>a<i>b");
}

TEST(SsaToModelText, KeepsBlocksThatHaveNoTag) {
  EXPECT_EQ(ssaToModelText(uR"({\an8}{\i1\b1}x{comment})"), uR"({\an8}{\i1\b1}x{comment})");
}

TEST(SsaToModelText, ReadsAFontNameUpToItsClosingBlockOrTheEnd) {
  EXPECT_EQ(ssaToModelText(uR"({\fnArial}x{\fn}y)"), u"<font face=\"Arial\">x</font>y");
  EXPECT_EQ(ssaToModelText(uR"({\fnArial}x)"), u"<font face=\"Arial\">x</font>");
  EXPECT_EQ(ssaToModelText(uR"({\fnA}x{\fn}y{\fnB}z)"), u"<font face=\"A\">x</font>y<font face=\"B\">z</font>");
}

TEST(SsaToModelText, ReadsOverridesWithinAFontNameAsAttributes) {
  EXPECT_EQ(ssaToModelText(uR"({\fnArial\i1}x{\fn}y)"), u"<font face=\"Arial\"><i>x</font>y</i>");
  EXPECT_EQ(ssaToModelText(uR"({\fnArial\fs20\c&HFF&\b1}x)"),
            u"<font face=\"Arial\" size=\"20\" color=\"#00ff0000\">x</font>");
}

TEST(SsaToModelText, ReadsNoFontNameBehindAStrayClosingBlock) {
  EXPECT_EQ(ssaToModelText(uR"(a{\fn}b{\fnArial}c)"), uR"(a{\fn}b{\fnArial}c)");
}

TEST(SsaToModelText, KeepsAnOrdinaryFontSize) {
  EXPECT_EQ(ssaToModelText(uR"({\fs20}x{\fs}y)"), uR"({\fs20}x{\fs}y)");
}

// The opening of a font size is a brace, a form feed and an "s".
TEST(SsaToModelText, ReadsAFontSizeBehindAFormFeed) {
  EXPECT_EQ(ssaToModelText(u"{\fs20}x{\\fs}y"), u"<font size=\"20\">x</font>y");
  EXPECT_EQ(ssaToModelText(u"{\fs20}x"), u"<font size=\"20\">x</font>");
  EXPECT_EQ(ssaToModelText(u"{\fs20\\fnArial\\i1}x"), u"<font size=\"20\" face=\"Arial\"><i>x</font></i>");
}

TEST(SsaToModelText, KeepsAFontSizeThatIsNoNumber) {
  EXPECT_EQ(ssaToModelText(u"{\fs2x}x"), u"{\fs2x}x");
  EXPECT_EQ(ssaToModelText(u"{\fs-2}x"), u"{\fs-2}x");
}

TEST(SsaToModelText, KeepsTheZerosInFrontOfAColor) {
  EXPECT_EQ(ssaToModelText(uR"({\c&H00FF00&}x)"), u"<font color=\"#00000000ff00\">x</font>");
  EXPECT_EQ(ssaToModelText(uR"({\c&HFF&}x)"), u"<font color=\"#00ff0000\">x</font>");
  EXPECT_EQ(ssaToModelText(uR"({\c&H80FF8040&}x)"), u"<font color=\"#000000804080ff\">x</font>");
}

TEST(SsaToModelText, EndsAColorAtItsClosingBlock) {
  EXPECT_EQ(ssaToModelText(uR"({\c&H0000FF&}x{\c}y)"), u"<font color=\"#000000ff0000\">x</font>y");
  EXPECT_EQ(ssaToModelText(uR"({\c&HFF&}a{\c}b{\c&HFF&}c)"),
            u"<font color=\"#00ff0000\">a</font>b<font color=\"#00ff0000\">c</font>");
}

TEST(SsaToModelText, EndsAColorInFrontOfTheNextOne) {
  EXPECT_EQ(ssaToModelText(uR"({\c&H0000FF&}a{\c&H00FF00&}b)"),
            u"<font color=\"#000000ff0000\">a</font><font color=\"#00000000ff00\">b</font>");
  EXPECT_EQ(ssaToModelText(uR"({\c&HFF&}a{\c&HFF&}b{\c}c)"),
            u"<font color=\"#00ff0000\">a</font><font color=\"#00ff0000\">b</font>c");
}

TEST(SsaToModelText, ReadsOverridesWithinAColorAsAttributes) {
  EXPECT_EQ(ssaToModelText(uR"({\c&H0000FF&\fs20\i1}x{\c})"),
            u"<font color=\"#000000ff0000\" size=\"20\"><i>x</font></i>");
}

// Whatever begins with "{\c" is read as a colour, from the fourth unit behind the opening on.
TEST(SsaToModelText, ReadsAClipAsAColor) {
  EXPECT_EQ(ssaToModelText(uR"({\clip(1,2,3,4)}x)"), u"<font color=\"#000000ip(1,4)3,2,\">x</font>");
  EXPECT_EQ(ssaToModelText(uR"({\c\b1}x)"), u"<font color=\"#00b10000\">x</font>");
}

TEST(SsaToModelText, KeepsAnOrdinaryPrimaryColor) {
  EXPECT_EQ(ssaToModelText(uR"({\1c&H0000FF&}x{\1c}y)"), uR"({\1c&H0000FF&}x{\1c}y)");
}

// The opening of a primary colour is a brace, the unit 1 and a "c".
TEST(SsaToModelText, ReadsAPrimaryColorBehindTheUnitOneToTheEndOfTheText) {
  EXPECT_EQ(ssaToModelText(u"{\1c&H0000FF&}x{\\1c}y"), u"<font color=\"#000000ff0000\">x{\\1c}y</font>");
  EXPECT_EQ(ssaToModelText(u"{\1c&H0000FF&\\fs20\\i1}x"), u"<font color=\"#000000ff0000\" size=\"20\"><i>x</font></i>");
}

TEST(SsaToModelText, ReadsAPrimaryColorTooShortForAValueAsZeros) {
  EXPECT_EQ(ssaToModelText(u"{\1c}x"), u"<font color=\"#000000\">x</font>");
  EXPECT_EQ(ssaToModelText(u"{\1c&}x"), u"<font color=\"#000000\">x</font>");
}

TEST(SsaToModelText, TranslatesTenBlocksOfAKindAndLeavesTheEleventh) {
  EXPECT_EQ(ssaToModelText(repeated(uR"({\c&H1&}a)", 11)),
            repeated(u"<font color=\"#0010000\">a</font>", 10) + uR"({\c&H1&}a)");
  EXPECT_EQ(ssaToModelText(repeated(uR"({\fnA}a{\fn})", 11)),
            repeated(u"<font face=\"A\">a</font>", 10) + uR"({\fnA}a{\fn})");
}

TEST(SsaToModelText, KeepsUnclosedBlocks) {
  EXPECT_EQ(ssaToModelText(uR"({\fnArial x)"), uR"({\fnArial x)");
  EXPECT_EQ(ssaToModelText(uR"(x{\c&H0000FF)"), uR"(x{\c&H0000FF)");
  EXPECT_EQ(ssaToModelText(u"x{\fs20"), u"x{\fs20");
  EXPECT_EQ(ssaToModelText(u"x{\1c&H"), u"x{\1c&H");
}

TEST(SsaToModelText, EndsOnUnclosedBlocksWithoutEnd) {
  const WString blocks = repeated(uR"({\c&H{\fn)", (10 << 20) / 9);
  EXPECT_EQ(ssaToModelText(blocks), blocks);
  EXPECT_EQ(ssaToModelText(repeated(uR"({\i1})", 1 << 16)), repeated(u"<i>", 1 << 16) + u"</i>");
}

struct Overrides {
  WString value;
  WString attributes;
  bool italic;
  bool operator==(const Overrides&) const = default;
};

Overrides splitOf(WString value) {
  Overrides result{std::move(value), u"", true};
  splitOverrideTags(result.value, result.attributes, result.italic);
  return result;
}

TEST(SplitOverrideTags, TurnsOverridesIntoAttributes) {
  EXPECT_EQ(splitOf(uR"(Arial\fs20\i1)"), (Overrides{u"Arial", u" size=\"20\"", true}));
  EXPECT_EQ(splitOf(uR"(20\fnArial\c&H0000FF&)"),
            (Overrides{u"20", u" face=\"Arial\" color=\"#000000ff0000\"", false}));
  EXPECT_EQ(splitOf(u"Arial"), (Overrides{u"Arial", u"", false}));
}

TEST(SplitOverrideTags, LeavesAValueThatBeginsWithABackslash) {
  EXPECT_EQ(splitOf(uR"(\fs20\i1)"), (Overrides{uR"(\fs20\i1)", u"", false}));
  EXPECT_EQ(splitOf(u""), (Overrides{u"", u"", false}));
}

TEST(SplitOverrideTags, DropsWhatItDoesNotKnow) {
  EXPECT_EQ(splitOf(uR"(A\b1\fs\fn\c1\i0)"), (Overrides{u"A", u"", false}));
  EXPECT_EQ(splitOf(uR"(A\fscx90\i12)"), (Overrides{u"A", u" size=\"cx90\"", true}));
}

TEST(SplitOverrideTags, SkipsRepeatedBackslashes) {
  EXPECT_EQ(splitOf(uR"(A\\\fs1\\\fs2\\)"), (Overrides{u"A", u" size=\"1\" size=\"2\"", false}));
}

TEST(SplitOverrideTags, LooksAtTenOverrides) {
  EXPECT_EQ(splitOf(u"A" + repeated(uR"(\x)", 9) + uR"(\i1)"), (Overrides{u"A", u"", true}));
  EXPECT_EQ(splitOf(u"A" + repeated(uR"(\x)", 10) + uR"(\i1)"), (Overrides{u"A", u"", false}));
}

TEST(SplitOverrideTags, AppendsToTheAttributes) {
  WString value = uR"(A\fs1)";
  WString attributes = u" a=\"b\"";
  bool italic = true;
  splitOverrideTags(value, attributes, italic);
  EXPECT_EQ(attributes, u" a=\"b\" size=\"1\"");
}

}  // namespace
}  // namespace mova
