#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

#include "model/Lines.h"

namespace mova {
namespace {

using Texts = std::vector<WString>;
using namespace std::string_literals;

Texts texts(const Lines& lines) {
  Texts result;
  for (size_t i = 0; i < lines.size(); ++i) result.emplace_back(lines[i]);
  return result;
}

Texts decoded(std::string bytes, int32_t codePage = 0) {
  return texts(decodeLines(std::move(bytes), codePage));
}

const std::string mark = "\xEF\xBB\xBF";

TEST(Lines, DropsTheFirstLineOfAFileWithoutAMark) {
  EXPECT_EQ(decoded("1\r\ntwo\r\nthree\r\n"), (Texts{u"two", u"three"}));
}

TEST(Lines, KeepsTheFirstLineBehindAUtf8Mark) {
  EXPECT_EQ(decoded(mark + "1\r\ntwo\r\n"), (Texts{u"1", u"two"}));
}

TEST(Lines, GivesNoLinesForAOneLineFileWithoutAMark) {
  EXPECT_EQ(decoded("only"), Texts{});
  EXPECT_EQ(decoded("only\n"), Texts{});
}

TEST(Lines, GivesOneLineForAOneLineFileWithAMark) {
  EXPECT_EQ(decoded(mark + "only"), Texts{u"only"});
}

TEST(Lines, GivesOneEmptyLineForAOneLineFileReadWithACodePage) {
  EXPECT_EQ(decoded("only", 1252), Texts{u""});
  EXPECT_EQ(decoded("only\n", 1252), Texts{u""});
}

TEST(Lines, GivesNoLinesForAnEmptyFile) {
  EXPECT_EQ(decoded(""), Texts{});
}

TEST(Lines, DeliversALastLineWithoutALineFeed) {
  EXPECT_EQ(decoded("a\nb\nc"), (Texts{u"b", u"c"}));
  EXPECT_EQ(decoded("a\nb\n\n"), (Texts{u"b", u""}));
}

TEST(Lines, TakesCrLfAsOneLineEndAndKeepsOtherCrs) {
  EXPECT_EQ(decoded("a\r\nb\r\r\nc\rd\r\ne\r"), (Texts{u"b\r", u"c\rd", u"e\r"}));
}

TEST(Lines, EndsTheFileAtByte1A) {
  EXPECT_EQ(decoded("a\nb\nc\x1A"
                    "d\ne\n"),
            (Texts{u"b", u"c"}));
  EXPECT_EQ(decoded("a\nb\n\x1A"
                    "d\ne\n"),
            Texts{u"b"});
}

TEST(Lines, EndsALineAtItsFirstZeroByte) {
  EXPECT_EQ(decoded("a\nb\0c\nd\n"s), (Texts{u"b", u"d"}));
}

TEST(Lines, DoesNotLookAtBadBytesBehindAZeroByte) {
  EXPECT_EQ(decoded("a\nb\0\xFF\nd\n"s), (Texts{u"b", u"d"}));
}

TEST(Lines, ReadsTheWholeFileAsWindows1252WhenALineIsNotUtf8) {
  EXPECT_EQ(decoded("1\r\ncaf\xE9 \x80\r\nend\r\n"), (Texts{u"1", u"caf\u00E9 \u20AC", u"end"}));
}

TEST(Lines, LooksForBadUtf8BehindTheFirstLineOnly) {
  EXPECT_EQ(decoded("caf\xE9\r\nend\r\n"), Texts{u"end"});
}

TEST(Lines, CutsWindows1252LinesAt260Units) {
  const Texts lines = decoded("1\n\xE9" + std::string(299, 'x') + "\nnext\n");
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_EQ(lines[1], u"\u00E9" + WString(259, u'x'));
  EXPECT_EQ(lines[2], u"next");
}

TEST(Lines, KeepsUtf8LinesOfAnyLength) {
  EXPECT_EQ(decoded("1\n" + std::string(300, 'x') + "\n"), Texts{WString(300, u'x')});
}

TEST(Lines, CutsCodePageLinesAt260Units) {
  EXPECT_EQ(decoded("1\n" + std::string(300, 'x') + "\n", 1250), Texts{WString(260, u'x')});
  std::string wide = "1\n";
  for (int i = 0; i < 300; ++i) wide += "\x82\xA0";  // hiragana A in code page 932
  EXPECT_EQ(decoded(wide, 932), Texts{WString(260, u'\u3042')});
}

TEST(Lines, DetectsNothingWhenACodePageIsGiven) {
  EXPECT_EQ(decoded(mark + "1\ntwo\xE9\n", 1252), Texts{u"two\u00E9"});
  EXPECT_EQ(decoded("1\n\xE0\n", 1251), Texts{u"\u0430"});
}

TEST(Lines, StopsBehindTheFirstLineWithAMarkThatIsNotUtf8) {
  EXPECT_EQ(decoded(mark + "1\ntwo\n\xFF\nfour\n"), (Texts{u"1", u"two", u""}));
}

TEST(Lines, GoesOnBehindABadFirstLineWithAMark) {
  EXPECT_EQ(decoded(mark + "\xFF\ntwo\n"), (Texts{u"", u"two"}));
}

TEST(Lines, RefusesOverlongSurrogateAndTooLargeForms) {
  for (const char* bad : {"\xC0\x80", "\xE0\x80\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE2\x82"}) {
    EXPECT_EQ(decoded(mark + "1\n" + bad + "\nthree\n"), (Texts{u"1", u""})) << bad;
  }
}

TEST(Lines, TakesTheLowBytesOfLittleEndianUtf16) {
  const std::string file =
      "\xFF\xFE"
      "1\0\n\0"
      "t\0w\0o\0\n\0"
      "3\0"s;
  // The first line stays raw; its line feed leaves its zero byte at the start of the next line.
  EXPECT_EQ(decoded(file), (Texts{u"\u00FF\u00FE1\0"s, u"two", u"3"}));
}

TEST(Lines, KeepsTheCarriageReturnOfLittleEndianUtf16) {
  const std::string file =
      "\xFF\xFE\r\0\n\0"
      "a\0\r\0\n\0"
      "b\0"s;
  EXPECT_EQ(decoded(file), (Texts{u"\u00FF\u00FE\r\0"s, u"a\r", u"b"}));
}

TEST(Lines, TakesTheLowBytesOfBigEndianUtf16) {
  const std::string file = "\xFE\xFF\0001\0\n\0t\0w\0o\0\n\0003"s;
  EXPECT_EQ(decoded(file), (Texts{u"\u00FE\u00FF\0001\0"s, u"two", u"3"}));
}

TEST(Lines, LeavesUtf16LinesWithTwoNonZeroBytesRaw) {
  // Big endian: hiragana A is 30 42, and the line feed's zero byte ends the line.
  EXPECT_EQ(decoded("\xFE\xFF\0\n\x30\x42\0\n\0b"s), (Texts{u"\u00FE\u00FF\0"s, u"0B\0"s, u"b"}));
}

TEST(Lines, CopesWithTruncatedUtf16) {
  EXPECT_EQ(decoded("\xFF\xFE"), Texts{u"\u00FF\u00FE"});
  EXPECT_EQ(decoded("\xFF\xFE"
                    "a\0\n\0b"s),
            (Texts{u"\u00FF\u00FE"
                   u"a\0"s,
                   u"b"}));
  EXPECT_EQ(decoded("\xFF\xFE"
                    "a\0\n"s),
            Texts{u"\u00FF\u00FE"
                  u"a\0"s});
}

TEST(Lines, ReadsAMillionBlankLines) {
  EXPECT_EQ(decodeLines(std::string(1000000, '\n'), 0).size(), 999999u);
}

TEST(Lines, ReadsFiftyMegabytesWithoutALineEnd) {
  const Lines lines = decodeLines("1\n" + std::string(50 << 20, 'x'), 0);
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].size(), size_t{50} << 20);
}

TEST(Lines, JoinsWithASeparatorBetweenLines) {
  EXPECT_EQ((Lines{u"a", u"", u"b"}.Joined(u"\n")), u"a\n\nb");
  EXPECT_EQ(Lines().Joined(u"\n"), u"");
}

TEST(Lines, GivesAllTheirUnitsWithNothingBetweenTheLines) {
  EXPECT_EQ((Lines{u"a", u"", u"b"}.Units()), u"ab");
  EXPECT_EQ(Lines().Units(), u"");
  EXPECT_EQ(decodeLines("first\nse\r\ncond", 0).Units(), u"second");
}

TEST(Lines, KnowTheUnitsThatStandInThem) {
  const Lines lines{u"a\t", u"\u0159", u"z"};
  EXPECT_TRUE(lines.Contains(u'\t'));
  EXPECT_TRUE(lines.Contains(u'z'));
  EXPECT_TRUE(lines.Contains(u'\u0159'));
  EXPECT_FALSE(lines.Contains(u'Y'));  // the low byte of U+0159
  EXPECT_FALSE(Lines().Contains(u'a'));
}

TEST(Lines, GivesAnEmptyLineBeyondTheEnd) {
  const Lines lines{u"a"};
  EXPECT_EQ(lines.AtOrEmpty(0), u"a");
  EXPECT_EQ(lines.AtOrEmpty(1), u"");
}

int timesJoined = 0;
WString joinedAndCounted(const Lines& lines) {
  ++timesJoined;
  return lines.Joined(u"+");
}

TEST(Lines, MakesWhatIsDerivedFromThemOnceForAllCopies) {
  const Lines lines{u"a", u"b"};
  const Lines copy = lines;
  EXPECT_EQ(lines.Derived<&joinedAndCounted>(), u"a+b");
  EXPECT_EQ(copy.Derived<&joinedAndCounted>(), u"a+b");
  EXPECT_EQ(timesJoined, 1);
}

class ReadLines : public testing::Test {
 protected:
  ReadLines() : folder_(std::filesystem::temp_directory_path() / ("mova-lines-" + std::to_string(getpid()))) {
    std::filesystem::create_directory(folder_);
  }
  ~ReadLines() override { std::filesystem::remove_all(folder_); }

  WString Write(const std::string& name, const std::string& bytes) const {
    std::ofstream(folder_ / name, std::ios::binary) << bytes;
    return (folder_ / name).u16string();
  }
  std::filesystem::path folder_;
};

TEST_F(ReadLines, ReadsAFileWithANonAsciiName) {
  EXPECT_EQ(texts(readLines(Write("\xC3\xA9 \xE6\x97\xA5.srt", "1\ntwo\n"), 0)), Texts{u"two"});
}

TEST_F(ReadLines, SaysThatAFileCannotBeOpened) {
  for (const WString& path : {(folder_ / "none.srt").u16string(), folder_.u16string(), WString()}) {
    testing::internal::CaptureStdout();
    EXPECT_TRUE(readLines(path, 0).empty());
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Subtitle: LoadSubtitle: Couldn't open subtitle file");
  }
}

TEST_F(ReadLines, CannotOpenAPathOf260Bytes) {
  Write("x.srt", "1\ntwo\n");
  // Repeated slashes make a path longer without changing what it names.
  std::string padded = (folder_ / "x.srt").string();
  padded.insert(folder_.string().size(), 259 - padded.size(), '/');
  ASSERT_EQ(padded.size(), 259u);
  EXPECT_EQ(texts(readLines(std::filesystem::path(padded).u16string(), 0)), Texts{u"two"});
  padded.insert(folder_.string().size(), "/");
  testing::internal::CaptureStdout();
  EXPECT_TRUE(readLines(std::filesystem::path(padded).u16string(), 0).empty());
  EXPECT_NE(testing::internal::GetCapturedStdout(), "");
}

TEST(Lines, DecodesLinesOfAnyLengthWithACharacterAtAnyPlace) {
  for (size_t size = 0; size < 40; ++size) {
    for (size_t place = 0; place <= size; ++place) {
      const std::string before(place, 'a');
      const std::string behind(size - place, 'b');
      EXPECT_EQ(decoded("x\n" + before + "\xE2\x80\x99" + behind + "\nz"),
                (Texts{WString(place, u'a') + u"\u2019" + WString(size - place, u'b'), u"z"}));
    }
    EXPECT_EQ(decoded("x\n" + std::string(size, 'a') + "\nz"), (Texts{WString(size, u'a'), u"z"}));
  }
}

TEST(Lines, EndsALineAtAZeroByteWhateverTheOthersHold) {
  EXPECT_EQ(decoded("x\nplain line\nab\0cd\nplain\n"s), (Texts{u"plain line", u"ab", u"plain"}));
}

}  // namespace
}  // namespace mova
