#include <gtest/gtest.h>

#include "formats/line/SubRip.h"
#include "model/Subtitle.h"

namespace mova {
namespace {

TEST(Paragraph, ShowsTimesAndText) {
  EXPECT_EQ(Paragraph(u"Hi", 1000, 2500).ToString(), u"00:00:01:000 --> 00:00:02:500 Hi");
}

TEST(Paragraph, HasAnIdentifierOfItsOwnThatACopyKeeps) {
  const Paragraph first;
  const Paragraph second;
  EXPECT_EQ(first.ID().size(), 36u);
  EXPECT_NE(first.ID(), second.ID());
  const Paragraph copy = first;
  EXPECT_EQ(copy.ID(), first.ID());
}

TEST(Subtitle, IsUntitledAndEmptyAtFirst) {
  const Subtitle subtitle;
  EXPECT_EQ(subtitle.FileName, u"Untitled");
  EXPECT_TRUE(subtitle.Paragraphs.empty());
}

TEST(Subtitle, RenumbersInListOrder) {
  Subtitle subtitle;
  subtitle.Append({});
  subtitle.Append({});
  subtitle.Renumber(7);
  EXPECT_EQ(subtitle.Paragraphs[0]->Number, 7);
  EXPECT_EQ(subtitle.Paragraphs[1]->Number, 8);
}

TEST(Subtitle, NeverRemovesTheFirstParagraphAsEmpty) {
  Subtitle subtitle;
  subtitle.Append({u"", 0, 1}).Number = 5;
  subtitle.Append({u" \t\r\n", 1, 2});
  EXPECT_EQ(subtitle.RemoveEmptyLines(), 1);
  ASSERT_EQ(subtitle.Paragraphs.size(), 1u);
  EXPECT_EQ(subtitle.Paragraphs[0]->Number, 5);
}

TEST(Subtitle, RemovesEmptyLinesAndRenumbersFromTheFirstNumber) {
  Subtitle subtitle;
  subtitle.Append({u"a", 0, 1}).Number = 3;
  subtitle.Append({u"", 1, 2}).Number = 9;
  subtitle.Append({u"b", 2, 3}).Number = 9;
  EXPECT_EQ(subtitle.RemoveEmptyLines(), 1);
  ASSERT_EQ(subtitle.Paragraphs.size(), 2u);
  EXPECT_EQ(subtitle.Paragraphs[1]->Text, u"b");
  EXPECT_EQ(subtitle.Paragraphs[1]->Number, 4);
}

TEST(Subtitle, RemovesNothingFromAnEmptyList) {
  Subtitle subtitle;
  EXPECT_EQ(subtitle.RemoveEmptyLines(), 0);
}

TEST(Subtitle, LeavesTimesAloneWhenTimeIsAdded) {
  Subtitle subtitle;
  subtitle.Append({u"a", 1000, 2000});
  subtitle.AddTimeToAllParagraphs(500);
  EXPECT_EQ(subtitle.Paragraphs[0]->StartTime.TotalMilliseconds, 1000);
  EXPECT_EQ(subtitle.Paragraphs[0]->EndTime.TotalMilliseconds, 2000);
}

TEST(Subtitle, CalculatesFramesAndKeepsNeighboursApart) {
  Subtitle subtitle;
  subtitle.Append({u"a", 1000, 2000});
  subtitle.Append({u"b", 2000, 3000});
  subtitle.Append({u"c", 2960, 4000});  // starts at frame 74, one before the end of b
  subtitle.Append({u"d", 4400, 5000});
  subtitle.CalculateFrameNumbers(25);
  EXPECT_EQ(subtitle.Paragraphs[0]->StartFrame, 25);
  EXPECT_EQ(subtitle.Paragraphs[0]->EndFrame, 49);
  EXPECT_EQ(subtitle.Paragraphs[1]->EndFrame, 73);
  EXPECT_EQ(subtitle.Paragraphs[2]->EndFrame, 100);
  EXPECT_EQ(subtitle.Paragraphs[3]->EndFrame, 125);
}

TEST(Subtitle, ChecksTheFormatBeforeItCalculatesFrames) {
  Subtitle subtitle;
  subtitle.Append({u"a", 1000, 2000});
  EXPECT_FALSE(subtitle.CalculateFrameNumbersChecked(25));
  EXPECT_EQ(subtitle.Paragraphs[0]->EndFrame, 0);
  SubRip format;
  subtitle.LoadedFormat = &format;
  EXPECT_TRUE(subtitle.CalculateFrameNumbersChecked(25));
  EXPECT_EQ(subtitle.Paragraphs[0]->EndFrame, 50);
}

}  // namespace
}  // namespace mova
