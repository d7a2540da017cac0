#include "BinaryFixture.h"
#include "formats/binary/CheetahCaption.h"

namespace mova {
namespace {

using namespace std::string_literals;

struct Time {
  unsigned char hours, minutes, seconds, frames;
};

std::string record(Time start, Time end, const std::string& text, const std::string& fixed = std::string(4, '\0')) {
  std::string bytes(1, static_cast<char>(19 + text.size() + 1));
  bytes += '\0';
  for (const Time& time : {start, end}) {
    for (unsigned char part : {time.hours, time.minutes, time.seconds, time.frames}) bytes += static_cast<char>(part);
  }
  return bytes + std::string(5, '\0') + fixed + text + '\0';
}

std::string file(const std::string& records) {
  std::string bytes = "\xEA\x22\x03"s + std::string(125, '\0') + records;
  return bytes + std::string(std::max<size_t>(bytes.size() + 20, 200) - bytes.size(), '\0');
}

class CheetahCaptionTest : public BinaryFormatTest {
 protected:
  Subtitle Load(const std::string& bytes) {
    Subtitle subtitle;
    CheetahCaption().LoadSubtitle(subtitle, {}, File("film.cap", bytes));
    return subtitle;
  }
  WString TextOf(const std::string& text) {
    const Subtitle subtitle = Load(file(record({0, 0, 1, 0}, {0, 0, 2, 0}, text)));
    return subtitle.Paragraphs.empty() ? u"(none)" : subtitle.Paragraphs[0]->Text;
  }
  bool Recognizes(const std::string& name, const std::string& bytes) {
    return CheetahCaption().Recognizes({}, File(name, bytes));
  }
};

TEST_F(CheetahCaptionTest, CanOnlyBeRead) {
  EXPECT_EQ(CheetahCaption().WriteText(Subtitle(), u"title"), u"Not supported!");
  EXPECT_EQ(CheetahCaption().Name(), u"Cheetah Caption");
  EXPECT_EQ(CheetahCaption().Extension(), u".cap");
}

TEST_F(CheetahCaptionTest, IsNamedCap) {
  EXPECT_TRUE(Recognizes("film.cap", file("")));
  EXPECT_TRUE(Recognizes("film.CaP", file("")));
  EXPECT_FALSE(Recognizes("film.bin", file("")));
  EXPECT_FALSE(CheetahCaption().Recognizes({}, u""));
  EXPECT_FALSE(CheetahCaption().Recognizes({}, (folder_ / "none.cap").u16string()));
  std::filesystem::create_directory(folder_ / "folder.cap");
  EXPECT_FALSE(CheetahCaption().Recognizes({}, (folder_ / "folder.cap").u16string()));
}

TEST_F(CheetahCaptionTest, HasASignatureWithAThirdByteBelowFour) {
  EXPECT_TRUE(Recognizes("a.cap", "\xEA\x22\x03"s + std::string(197, 'x')));
  EXPECT_FALSE(Recognizes("b.cap", "\xEA\x22\x04"s + std::string(197, 'x')));
  EXPECT_TRUE(Recognizes("c.cap", "\xEA\x22\xEA\x22\x00"s + std::string(195, 'x')));
}

TEST_F(CheetahCaptionTest, HasItsSignatureAtLeast21BytesBeforeTheEnd) {
  EXPECT_TRUE(Recognizes("a.cap", std::string(179, 'x') + "\xEA\x22\x03" + std::string(18, 'x')));
  EXPECT_FALSE(Recognizes("b.cap", std::string(180, 'x') + "\xEA\x22\x03" + std::string(17, 'x')));
}

TEST_F(CheetahCaptionTest, HasASizeWithinLimits) {
  EXPECT_FALSE(Recognizes("a.cap", file("").substr(0, 199)));
  EXPECT_TRUE(Recognizes("b.cap", file("").substr(0, 200)));
  EXPECT_TRUE(Recognizes("c.cap", file(std::string(1023999 - 148, 'x'))));
  EXPECT_FALSE(Recognizes("d.cap", file(std::string(1024000 - 148, 'x'))));
}

TEST_F(CheetahCaptionTest, ReadsRecordsBehindTheHeader) {
  const Subtitle subtitle =
      Load(file(record({1, 2, 3, 15}, {1, 2, 5, 0}, "Hello") + record({1, 2, 6, 0}, {1, 2, 7, 29}, "there")));
  ASSERT_EQ(subtitle.Paragraphs.size(), 2u);
  EXPECT_EQ(subtitle.Paragraphs[0]->Number, 1);
  EXPECT_EQ(subtitle.Paragraphs[0]->Text, u"Hello");
  EXPECT_EQ(subtitle.Paragraphs[0]->StartTime.TotalMilliseconds, 3723501);  // 15 frames at 29.97 are 500.5 ms
  EXPECT_EQ(subtitle.Paragraphs[0]->EndTime.TotalMilliseconds, 3725000);
  EXPECT_EQ(subtitle.Paragraphs[1]->Number, 2);
  EXPECT_EQ(subtitle.Paragraphs[1]->Text, u"there");
  EXPECT_EQ(subtitle.Paragraphs[1]->EndTime.TotalMilliseconds, 3727968);
}

TEST_F(CheetahCaptionTest, CapsFramesAt999Milliseconds) {
  const Subtitle subtitle = Load(file(record({0, 0, 1, 255}, {0, 0, 5, 30}, "x")));
  EXPECT_EQ(subtitle.Paragraphs[0]->StartTime.TotalMilliseconds, 1999);
  EXPECT_EQ(subtitle.Paragraphs[0]->EndTime.TotalMilliseconds, 5999);
}

TEST_F(CheetahCaptionTest, SkipsARecordWithoutText) {
  std::string empty = record({0, 0, 1, 0}, {0, 0, 2, 0}, "");
  ASSERT_EQ(empty[0], 20);
  EXPECT_TRUE(Load(file(empty)).Paragraphs.empty());
  EXPECT_EQ(Load(file(empty + record({0, 0, 1, 0}, {0, 0, 2, 0}, "x"))).Paragraphs.size(), 1u);
}

TEST_F(CheetahCaptionTest, StartsTheTextUpToFourBytesEarlierWhereBytesAreAbove16) {
  const auto text = [this](const std::string& fixed) {
    return Load(file(record({0, 0, 1, 0}, {0, 0, 2, 0}, "xyz", fixed))).Paragraphs[0]->Text;
  };
  EXPECT_EQ(text("\0\0\0\0"s), u"xyz");
  EXPECT_EQ(text("\0\0\0c"s), u"cxyz");
  EXPECT_EQ(text("\0abc"s), u"abcxyz");
  EXPECT_EQ(text("dabc"s), u"dabcxyz");
  EXPECT_EQ(text("da\x10"
                 "c"s),
            u"cxyz");  // 16 is not above 16, and what lies before it is not looked at
  EXPECT_EQ(text("da\x11"
                 "c"s),
            u"dacxyz");  // 17 is, and is dropped as a character
}

TEST_F(CheetahCaptionTest, CountsEarlyBytesTowardsTheLength) {
  std::string bytes = record({0, 0, 1, 0}, {0, 0, 2, 0}, "", "\0\0\0c"s);
  const Subtitle subtitle = Load(file(bytes));
  ASSERT_EQ(subtitle.Paragraphs.size(), 1u);
  EXPECT_EQ(subtitle.Paragraphs[0]->Text, u"c");
}

TEST_F(CheetahCaptionTest, ReadsSpecialCharacters) {
  EXPECT_EQ(TextOf("\x81\x82\x83\x84\x85\x86\x87\x88\x89\x8A\x8B\x8C\x8D\x8E\x8F\x90\x91\x92\x93\x94\x95"),
            u"♪áéíóúâêîôûàèÑñç¢£¿½®");
}

TEST_F(CheetahCaptionTest, ReadsOtherBytesBelowC0AsWindows1252) {
  EXPECT_EQ(TextOf("a\x15"
                   "b\x96\xA9\xBF"),
            u"a\u0015b\u2013\u00A9\u00BF");
}

TEST_F(CheetahCaptionTest, DropsControlAndHighBytes) {
  EXPECT_EQ(TextOf("a\x01\x0D\x14"
                   "b\xC0\xCF\xD1\xFF"
                   "c"),
            u"abc");
}

TEST_F(CheetahCaptionTest, BreaksLinesAtZeroBytesWithALineFeedAlone) {
  EXPECT_EQ(TextOf("a\0b\0\0c"s), u"a\nb\n\nc");
}

TEST_F(CheetahCaptionTest, ClosesItalicsAtTheEndOfALineAndOfTheText) {
  EXPECT_EQ(TextOf("\xD0"
                   "a\0b\0\xD0"
                   "c"s),
            u"<i>a</i>\nb\n<i>c</i>");
  EXPECT_EQ(TextOf("\xD0"
                   "a\0\xD0"
                   "b"s),
            u"<i>a</i>\n<i>b</i>");
  EXPECT_EQ(TextOf("\xD0\xD0"
                   "a"),
            u"<i><i>a</i>");
}

TEST_F(CheetahCaptionTest, EndsACaptionBeforeOneThatOverlaps) {
  const Subtitle subtitle =
      Load(file(record({0, 0, 1, 0}, {0, 0, 4, 0}, "a") + record({0, 0, 3, 0}, {0, 0, 5, 0}, "b")));
  EXPECT_EQ(subtitle.Paragraphs[0]->EndTime.TotalMilliseconds, 2976);
}

TEST_F(CheetahCaptionTest, CutsALongLastCaptionToItsReadingTime) {
  const auto lastEnd = [this](unsigned char seconds) {
    return Load(file(record({0, 0, 0, 0}, {0, 0, seconds, 0}, std::string(30, 'x'))))
        .Paragraphs[0]
        ->EndTime.TotalMilliseconds;
  };
  EXPECT_EQ(lastEnd(10), 2000);
  EXPECT_EQ(lastEnd(8), 8000);
}

TEST_F(CheetahCaptionTest, GoesOnByOneByteAtALengthOfZero) {
  EXPECT_EQ(Load(file("\0\0\0"s + record({0, 0, 1, 0}, {0, 0, 2, 0}, "x"))).Paragraphs.size(), 1u);
}

TEST_F(CheetahCaptionTest, ReadsEachByteOfAText) {
  const WString special =
      u"\u266A\u00E1\u00E9\u00ED\u00F3\u00FA\u00E2\u00EA\u00EE\u00F4\u00FB\u00E0\u00E8\u00D1\u00F1\u00E7"
      u"\u00A2\u00A3\u00BF\u00BD\u00AE";                                                   // 0x81 to 0x95
  const WString behind = u"\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\u009D\u017E\u0178";  // Windows-1252 from 0x96 on
  for (int byte = 0; byte < 256; ++byte) {
    WString expected;
    if (byte == 0) {
      expected = u"\n";
    } else if (byte == 0x80) {
      expected = u"\u20AC";
    } else if (byte > 0x80 && byte <= 0x95) {
      expected = special[static_cast<size_t>(byte - 0x81)];
    } else if (byte > 0x95 && byte < 0xA0) {
      expected = behind[static_cast<size_t>(byte - 0x96)];
    } else if (byte > 0x14 && byte < 0xC0) {
      expected = static_cast<char16_t>(byte);
    } else if (byte == 0xD0) {
      expected = u"<i>";
    }
    EXPECT_EQ(TextOf("a"s + static_cast<char>(byte) + "b"), u"a" + expected + u"b" + (byte == 0xD0 ? u"</i>" : u""))
        << byte;
  }
}

TEST_F(CheetahCaptionTest, ReadsTheLongestRecord) {
  const Subtitle subtitle = Load(file(record({255, 255, 255, 255}, {255, 255, 255, 255}, std::string(235, 'x'))));
  ASSERT_EQ(subtitle.Paragraphs.size(), 1u);
  EXPECT_EQ(subtitle.Paragraphs[0]->Text, WString(235, u'x'));
  EXPECT_EQ(subtitle.Paragraphs[0]->StartTime.TotalMilliseconds, 933555999);
}

TEST_F(CheetahCaptionTest, SkipsARecordBeyondTheEndAndCutsAText) {
  std::string bytes = file(record({0, 0, 1, 0}, {0, 0, 2, 0}, "x"));
  bytes.resize(200);
  bytes[128] = static_cast<char>(255);
  EXPECT_TRUE(Load(bytes).Paragraphs.empty());
  bytes.resize(128 + 235);
  // 235 bytes of text fit into the file when counted from the record, and end at the end of the file.
  bytes[362] = 'z';
  const Subtitle subtitle = Load(bytes);
  ASSERT_EQ(subtitle.Paragraphs.size(), 1u);
  EXPECT_EQ(subtitle.Paragraphs[0]->Text.front(), u'x');
  EXPECT_EQ(subtitle.Paragraphs[0]->Text.back(), u'z');
}

TEST_F(CheetahCaptionTest, ReadsNothingFromSmallOrMissingFiles) {
  for (size_t size : {0, 1, 19, 20, 128, 148}) EXPECT_TRUE(Load(std::string(size, 'x')).Paragraphs.empty()) << size;
  Subtitle subtitle;
  subtitle.Append({});
  CheetahCaption().LoadSubtitle(subtitle, {}, (folder_ / "none.cap").u16string());
  EXPECT_TRUE(subtitle.Paragraphs.empty());
}

TEST_F(CheetahCaptionTest, SurvivesEveryTruncationAndEveryChangedByte) {
  const std::string whole = file(record({0, 0, 1, 0}, {0, 0, 4, 0},
                                        "\xD0"
                                        "ab\0c"s) +
                                 record({0, 0, 3, 0}, {9, 0, 5, 0}, "b"));
  const auto load = [&whole](Subtitle& subtitle, std::span<const unsigned char> bytes) {
    readCheetahCaptions(subtitle, bytes);
    EXPECT_LE(subtitle.Paragraphs.size(), bytes.size() < whole.size() ? 2u : whole.size());
  };
  convertEveryTruncation(whole, load);
  convertEveryChange(whole, 0, whole.size(), load);
}

}  // namespace
}  // namespace mova
