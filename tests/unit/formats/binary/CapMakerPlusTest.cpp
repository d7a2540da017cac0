#include "BinaryFixture.h"
#include "formats/binary/CapMakerPlus.h"

namespace mova {
namespace {

using namespace std::string_literals;

class CapMakerPlusTest : public BinaryFormatTest {
 protected:
  bool Recognizes(const std::string& name, const std::string& bytes) {
    return CapMakerPlus().Recognizes({}, File(name, bytes));
  }
};

std::string file(size_t size) {
  return "+" + std::string(size - 1, '\0');
}

Paragraph captionOf(const std::string& text, char italicByte = 0) {
  std::string bytes = "\x0B" + std::string(24, '\0') + text;
  bytes[22] = italicByte;
  const std::vector<unsigned char> units(bytes.begin(), bytes.end());
  return readCapMakerCaption(units, 0, u"00:00:01:00");
}

struct Timed {
  double start;
  WString text;
};

Subtitle finished(const std::vector<Timed>& captions) {
  Subtitle subtitle;
  for (const Timed& caption : captions) subtitle.Append({caption.text, caption.start, 0});
  finishCapMakerCaptions(subtitle);
  return subtitle;
}

TEST_F(CapMakerPlusTest, CanOnlyBeRead) {
  EXPECT_EQ(CapMakerPlus().WriteText(Subtitle(), u"title"), u"Not supported!");
  EXPECT_EQ(CapMakerPlus().Name(), u"CapMaker Plus");
  EXPECT_EQ(CapMakerPlus().Extension(), u".cap");
}

TEST_F(CapMakerPlusTest, IsNamedCapAndBeginsWithAPlus) {
  EXPECT_TRUE(Recognizes("a.cap", file(700)));
  EXPECT_TRUE(Recognizes("a.CAP", file(700)));
  EXPECT_FALSE(Recognizes("a.bin", file(700)));
  EXPECT_FALSE(Recognizes("b.cap", "-" + file(700)));
  EXPECT_FALSE(CapMakerPlus().Recognizes({}, u""));
  EXPECT_FALSE(CapMakerPlus().Recognizes({}, (folder_ / "none.cap").u16string()));
}

TEST_F(CapMakerPlusTest, HasASizeWithinLimits) {
  EXPECT_FALSE(Recognizes("a.cap", file(639)));
  EXPECT_TRUE(Recognizes("b.cap", file(640)));
  EXPECT_TRUE(Recognizes("c.cap", file(1023999)));
  EXPECT_FALSE(Recognizes("d.cap", file(1024000)));
}

TEST_F(CapMakerPlusTest, YieldsNoCaptionsSinceTheMarkIsNoDigit) {
  std::string bytes = file(1400);
  bytes.replace(128, 11,
                "\x0B"
                "0:00:01:00");
  bytes.replace(153, 5, "Hello");
  bytes.replace(300, 12,
                "\x0B"
                "00:00:02:00");
  bytes.replace(1354, 11, "01:00:00:00");
  Subtitle subtitle;
  subtitle.Append({});
  subtitle.Header = u"x";
  CapMakerPlus().LoadSubtitle(subtitle, {}, File("film.cap", bytes));
  EXPECT_TRUE(subtitle.Paragraphs.empty());
  EXPECT_EQ(subtitle.Header, u"");
}

TEST_F(CapMakerPlusTest, ReadsACaptionAtItsMark) {
  const Paragraph caption = captionOf("Hello \x93you\x94\0 behind"s);
  EXPECT_EQ(caption.Text, u"Hello \u201Cyou\u201D");
  EXPECT_EQ(caption.StartTime.TotalMilliseconds, 1000);
}

TEST_F(CapMakerPlusTest, ReadsFramesAtTheRateOfTheSettings) {
  GlobalSettings.FrameRate = 25;
  const std::vector<unsigned char> mark(30, 0);
  EXPECT_EQ(readCapMakerCaption(mark, 0, u"01:02:03:12").StartTime.TotalMilliseconds, 3723480);
}

TEST_F(CapMakerPlusTest, ReadsATextUpToTheEndOfTheFile) {
  EXPECT_EQ(captionOf("Hello").Text, u"Hello");
  EXPECT_EQ(captionOf("").Text, u"");
  const std::vector<unsigned char> shortFile(10, 'x');
  EXPECT_EQ(readCapMakerCaption(shortFile, 5, u"00:00:01:00").Text, u"");
}

TEST_F(CapMakerPlusTest, PutsACaptionInItalicsWhereByte22Is3) {
  EXPECT_EQ(captionOf("Hello", 3).Text, u"<i>Hello</i>");
  EXPECT_EQ(captionOf("Hello", 2).Text, u"Hello");
}

TEST_F(CapMakerPlusTest, KeepsRichTextAsItStandsWithoutItalics) {
  EXPECT_EQ(captionOf("{\\rtf1 a}", 3).Text, u"{\\rtf1 a}");
  EXPECT_EQ(captionOf("123456789{\\rtf1 a}", 3).Text, u"{\\rtf1 a}");
  EXPECT_EQ(captionOf("1234567890{\\rtf1 a}", 3).Text, u"<i>1234567890{\\rtf1 a}</i>");
}

TEST_F(CapMakerPlusTest, EndsACaptionAMillisecondBeforeTheNext) {
  const Subtitle subtitle = finished({{1000, u"a"}, {3000, u"b"}});
  EXPECT_EQ(subtitle.Paragraphs[0]->EndTime.TotalMilliseconds, 2999);
  EXPECT_EQ(subtitle.Paragraphs[1]->EndTime.TotalMilliseconds, 4000);
  EXPECT_EQ(subtitle.Paragraphs[1]->Number, 2);
}

TEST_F(CapMakerPlusTest, GivesTheLastCaptionItsReadingTime) {
  EXPECT_EQ(finished({{1000, u"<i>" + WString(45, u'x') + u"</i>"}}).Paragraphs[0]->EndTime.TotalMilliseconds, 4000);
  EXPECT_EQ(finished({{1000, WString(500, u'x')}}).Paragraphs[0]->EndTime.TotalMilliseconds, 9000);
}

TEST_F(CapMakerPlusTest, LetsAnEmptyCaptionEndTheOneBefore) {
  const Subtitle subtitle = finished({{1000, u"a"}, {2000, u""}, {5000, u"b"}});
  ASSERT_EQ(subtitle.Paragraphs.size(), 2u);
  EXPECT_EQ(subtitle.Paragraphs[0]->EndTime.TotalMilliseconds, 2000);
}

TEST_F(CapMakerPlusTest, JoinsCaptionsThatStartTogetherAndLosesTheThird) {
  const Subtitle two = finished({{1000, u"a"}, {1000, u"b"}, {3000, u"d"}});
  ASSERT_EQ(two.Paragraphs.size(), 2u);
  EXPECT_EQ(two.Paragraphs[0]->Text, u"a\r\nb");
  EXPECT_EQ(two.Paragraphs[0]->EndTime.TotalMilliseconds, 2999);
  const Subtitle three = finished({{1000, u"a"}, {1000, u"b"}, {1000, u"c"}});
  ASSERT_EQ(three.Paragraphs.size(), 1u);
  EXPECT_EQ(three.Paragraphs[0]->Text, u"a\r\nb");
}

TEST_F(CapMakerPlusTest, SurvivesEveryTruncationAndEveryChangedByte) {
  std::string whole = file(1365);  // ends with the start of the programme
  whole.replace(160, 37, "\x0B" + "00:00:01:00"s + std::string(10, '\0') + "\3\0\0Hello there"s);
  whole.replace(1354, 11, "01:00:00:00");
  const auto load = [](Subtitle& subtitle, std::span<const unsigned char> bytes) {
    readCapMakerCaptions(subtitle, bytes);
    EXPECT_TRUE(subtitle.Paragraphs.empty());
  };
  convertEveryTruncation(whole, load);
  convertEveryChange(whole, 0, whole.size(), load);
}

TEST_F(CapMakerPlusTest, SurvivesEveryTruncationAndEveryChangedByteOfACaption) {
  const std::string caption = "\x0B" + std::string(21, '\0') + "\3\0\0{\\rtf1 Hello there"s;
  const auto load = [](Subtitle& subtitle, std::span<const unsigned char> bytes) {
    subtitle.Append(readCapMakerCaption(bytes, 0, u"00:00:01:00"));
    subtitle.Append(readCapMakerCaption(bytes, 5, u"00:00:01:00"));
    finishCapMakerCaptions(subtitle);
    EXPECT_LE(subtitle.Paragraphs.size(), 1u);
  };
  convertEveryTruncation(caption, load);
  convertEveryChange(caption, 0, caption.size(), load);
}

TEST_F(CapMakerPlusTest, SurvivesAFileOfMarks) {
  Subtitle subtitle;
  CapMakerPlus().LoadSubtitle(subtitle, {}, File("film.cap", "+" + std::string(1023998, '\x0B')));
  EXPECT_TRUE(subtitle.Paragraphs.empty());
  for (size_t size : {0, 1, 100, 148, 1354, 1364, 1365}) {
    CapMakerPlus().LoadSubtitle(subtitle, {}, File("small.cap", std::string(size, '+')));
  }
  EXPECT_TRUE(subtitle.Paragraphs.empty());
}

}  // namespace
}  // namespace mova
