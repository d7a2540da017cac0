#include <gtest/gtest.h>

#include <utility>

#include "model/RareText.h"

namespace mova {
namespace {

TEST(RareText, IsEmptyAtFirstAndWhereItIsGivenNothing) {
  RareText text;
  EXPECT_TRUE(text.empty());
  EXPECT_TRUE(text == u"");
  text = u"Narrator";
  EXPECT_FALSE(text.empty());
  text = u"";
  EXPECT_TRUE(text.empty());
}

TEST(RareText, IsCopiedAndMovedByValue) {
  RareText text;
  text = u"Narrator";
  RareText copy = text;
  copy = u"Guard";
  EXPECT_TRUE(text == u"Narrator");
  copy = text;
  text = u"";
  EXPECT_TRUE(copy == u"Narrator");
  const RareText moved = std::move(copy);
  EXPECT_TRUE(moved == u"Narrator");
}

TEST(RareText, KeepsItselfWhereItIsItsOwnSource) {
  RareText text;
  text = u"a name that is longer than a short string holds";
  text = WStringView(text).substr(2, 4);
  EXPECT_TRUE(text == u"name");
  const RareText& same = text;
  text = same;
  EXPECT_TRUE(text == u"name");
}

TEST(RareText, KeepsZeroUnits) {
  RareText text;
  text = WStringView(u"a\0b", 3);
  EXPECT_TRUE(text == WStringView(u"a\0b", 3));
}

}  // namespace
}  // namespace mova
