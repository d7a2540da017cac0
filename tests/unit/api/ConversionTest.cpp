#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>

#include "model/GlobalSettings.h"
#include "mova/mova.h"
#include "text/Strings.h"

namespace {

namespace fs = std::filesystem;

class Convert : public testing::Test {
 protected:
  Convert() : folder_(fs::temp_directory_path() / ("mova convert " + std::to_string(getpid()))) {
    fs::create_directory(folder_);
  }
  ~Convert() override { fs::remove_all(folder_); }

  std::u16string Path(const std::string& name) const { return (folder_ / name).u16string(); }
  void Write(const std::string& name, const std::string& bytes) const {
    std::ofstream(folder_ / name, std::ios::binary) << bytes;
  }
  std::optional<std::string> Read(const std::string& name) const {
    std::ifstream file(folder_ / name, std::ios::binary);
    if (!file) return std::nullopt;
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
  }

  fs::path folder_;
};

const char film[] =
    "1\r\n00:00:01,000 --> 00:00:02,000\r\nHello\r\n\r\n"
    "2\r\n00:00:03,000 --> 00:00:04,000\r\nthere\r\n\r\n";
const char filmAsSubRip[] =
    "1\r\n00:00:01:000 --> 00:00:02:000\r\nHello\r\n\r\n"
    "2\r\n00:00:03:000 --> 00:00:04:000\r\nthere\r\n\r\n";

TEST_F(Convert, WritesTheTargetsTextAndExtension) {
  Write("film.srt", film);
  EXPECT_EQ(movaConvertCC(Path("film.srt"), u"SubRip", Path("out.txt"), nullptr), 0u);
  EXPECT_EQ(Read("out.srt"), filmAsSubRip);
  EXPECT_FALSE(Read("out.txt"));
}

TEST_F(Convert, AppendsTheExtensionToAPathWithoutADot) {
  Write("film.srt", film);
  EXPECT_EQ(movaConvertCC(Path("film.srt"), u"SubRip", Path("out"), nullptr), 0u);
  EXPECT_EQ(Read("out.srt"), filmAsSubRip);
}

TEST_F(Convert, ReplacesWhatFollowsTheLastDotEvenInADirectorysName) {
  Write("film.srt", film);
  fs::create_directory(folder_ / "a.b");
  EXPECT_EQ(movaConvertCC(Path("film.srt"), u"SubRip", Path("a.b/out"), nullptr), 0u);
  EXPECT_EQ(Read("a.srt"), filmAsSubRip);
}

TEST_F(Convert, TakesATargetByNameWithoutRegardToCaseAndBlanks) {
  Write("film.srt", film);
  for (const char16_t* name : {u"Sub Rip", u"subrip", u" S U B R I P "}) {
    fs::remove(folder_ / "out.srt");
    EXPECT_EQ(movaConvertCC(Path("film.srt"), name, Path("out.srt"), nullptr), 0u);
    EXPECT_EQ(Read("out.srt"), filmAsSubRip);
  }
}

TEST_F(Convert, WritesAnEmptyFileAtTheGivenPathForAnUnknownTarget) {
  Write("film.srt", film);
  for (const char16_t* name : {u"srt", u".srt", u"", u"SubRip2"}) {
    Write("out.txt", "old");
    EXPECT_EQ(movaConvertCC(Path("film.srt"), name, Path("out.txt"), nullptr), 1u);
    EXPECT_EQ(Read("out.txt"), "");
  }
}

TEST_F(Convert, LeavesTheOutputAloneWhenNothingRecognisesTheInput) {
  Write("junk", "neither\nfish\nnor\nflesh\n");
  Write("out.srt", "old");
  testing::internal::CaptureStdout();
  EXPECT_EQ(movaConvertCC(Path("junk"), u"SubRip", Path("out.srt"), nullptr), 2u);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(Read("out.srt"), "old");
}

TEST_F(Convert, SaysThatTheInputCannotBeOpened) {
  testing::internal::CaptureStdout();
  EXPECT_EQ(movaConvertCC(Path("none"), u"SubRip", Path("out.srt"), nullptr), 2u);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "Subtitle: LoadSubtitle: Couldn't open subtitle file");
  EXPECT_FALSE(Read("out.srt"));
}

TEST_F(Convert, DoesNotRecogniseAnEmptyFile) {
  Write("empty.srt", "");
  EXPECT_EQ(movaConvertCC(Path("empty.srt"), u"SubRip", Path("out.srt"), nullptr), 2u);
}

TEST_F(Convert, GivesZeroThoughTheOutputCannotBeCreated) {
  Write("film.srt", film);
  EXPECT_EQ(movaConvertCC(Path("film.srt"), u"SubRip", Path("none/out.srt"), nullptr), 0u);
}

TEST_F(Convert, NeverWritesAByteOrderMark) {
  Write("film.srt", std::string("\xEF\xBB\xBF") + film);
  EXPECT_EQ(movaConvertCC(Path("film.srt"), u"SubRip", Path("out.srt"), nullptr), 0u);
  EXPECT_EQ(Read("out.srt"), filmAsSubRip);
}

TEST_F(Convert, WritesUtf8AndReplacesLoneSurrogates) {
  Write("film.srt", "1\r\n00:00:01,000 --> 00:00:02,000\r\nné \xF0\x9F\x8E\xAC\r\n\r\n");
  EXPECT_EQ(movaConvertCC(Path("film.srt"), u"SubRip", Path("out.srt"), nullptr), 0u);
  EXPECT_EQ(Read("out.srt"), "1\r\n00:00:01:000 --> 00:00:02:000\r\nné \xF0\x9F\x8E\xAC\r\n\r\n");
}

TEST_F(Convert, ReadsACodePageThatTheSettingsName) {
  Write("film.srt", "1\r\n00:00:01,000 --> 00:00:02,000\r\n\xEF\xF0\xE8\r\n\r\n");
  MOVASettings settings = getDefaultSettings();
  settings.CodePage = 1251;
  EXPECT_EQ(movaConvertCC(Path("film.srt"), u"SubRip", Path("out.srt"), &settings), 0u);
  EXPECT_EQ(Read("out.srt"), "1\r\n00:00:01:000 --> 00:00:02:000\r\nпри\r\n\r\n");
}

TEST_F(Convert, ReplacesAllEarlierSettings) {
  Write("film.srt", film);
  MOVASettings settings = getDefaultSettings();
  settings.CodePage = 1252;
  settings.FcpFontName = u"Other";
  movaConvertCC(Path("film.srt"), u"SubRip", Path("out.srt"), &settings);
  EXPECT_EQ(mova::GlobalSettings.FcpFontName, u"Other");
  InitializeDCinameSettings(true);
  EXPECT_EQ(mova::GlobalSettings.DCinemaEffect, u"border");
  movaConvertCC(Path("film.srt"), u"SubRip", Path("out.srt"), nullptr);
  EXPECT_EQ(mova::GlobalSettings.FcpFontName, u"Lucida Grande");
  EXPECT_EQ(mova::GlobalSettings.DCinemaEffect, u"");
  EXPECT_EQ(mova::GlobalSettings.CodePage, 0);
}

TEST_F(Convert, KeepsTheFormOfTimedTextTimesAndNoSettings) {
  const std::string head = "\xEF\xBB\xBF<?xml version=\"1.0\"?>\n<tt xmlns=\"http://www.w3.org/ns/ttml\"";
  Write("seconds.xml", head + " frameRate=\"25\"><body><div><p begin=\"1.5s\" end=\"2.25s\">a</p></div></body></tt>\n");
  Write("frames.xml", head + " frameRate=\"25\"><body><div><p begin=\"00:00:01:12\">a</p></div></body></tt>\n");
  Write("draft.dfxp",
        "\xEF\xBB\xBF<tt xmlns=\"http://www.w3.org/2006/04/ttaf1\"><body><div>\n"
        "<p begin=\"100ms\" end=\"200ms\">a</p></div></body></tt>\n");
  Write("film.srt", film);
  const auto firstParagraph = [this](const std::string& input, const char16_t* target, const std::string& output) {
    EXPECT_EQ(movaConvertCC(Path(input), target, Path(output), nullptr), 0u);
    const std::string text = Read(output).value_or("");
    const size_t begin = text.find("<p ");
    return text.substr(begin, text.find('>', begin) + 1 - begin);
  };
  const auto rate = [this](const std::string& output) {
    const std::string text = Read(output).value_or("");
    const size_t begin = text.find("<ttp:frameRate>");
    return text.substr(begin, text.find('\n', begin) - begin);
  };

  EXPECT_EQ(movaConvertCC(Path("seconds.xml"), u"SubRip", Path("first.srt"), nullptr), 0u);
  EXPECT_EQ(mova::GlobalSettings.FrameRate, 25.0);
  // The form of the document (1.0 is no whole multiple of the double 0.1, so all decimals come), the rate of this
  // conversion's settings.
  EXPECT_EQ(firstParagraph("film.srt", u"Timed Text 1.0", "a.xml"),
            R"(<p begin="1.000000000000000s" id="p0" end="2.000000000000000s">)");
  EXPECT_EQ(rate("a.xml"), "<ttp:frameRate>\"30\"</ttp:frameRate>");
  EXPECT_EQ(firstParagraph("film.srt", u"iTunes Timed Text", "a.itt"),
            R"(<p region="bottom" begin="1.000000000000000s" end="2.000000000000000s">)");
  // The draft of 2006 sets the form, and has one of its own.
  EXPECT_EQ(firstParagraph("draft.dfxp", u"TT 2006-04 .dfxp", "a.dfxp"),
            R"(<p begin="00:00:00.100" id="p0" end="00:00:00.200">)");
  EXPECT_EQ(firstParagraph("film.srt", u"Timed Text 1.0", "a.xml"), R"(<p begin="1000ms" id="p0" end="2000ms">)");
  // A document in frames puts it back.
  EXPECT_EQ(movaConvertCC(Path("frames.xml"), u"SubRip", Path("first.srt"), nullptr), 0u);
  EXPECT_EQ(firstParagraph("film.srt", u"Timed Text 1.0", "a.xml"),
            R"(<p begin="00:00:01:00" id="p0" end="00:00:02:00">)");
}

TEST(OutputTypes, ListsNamesAndExtensionsInBothTextTypes) {
  char16_t** names = nullptr;
  char16_t** extensions = nullptr;
  wchar_t** wideNames = nullptr;
  wchar_t** wideExtensions = nullptr;
  const uint32_t count = movaOutputTypes(names, extensions);
  ASSERT_EQ(movaOutputTypes(wideNames, wideExtensions), count);
  bool hasSubRip = false;
  for (uint32_t i = 0; i < count; ++i) {
    const std::u16string name = names[i];
    EXPECT_EQ(std::wstring(wideNames[i]), std::wstring(name.begin(), name.end()));
    EXPECT_EQ(extensions[i][0], u'.');
    if (name == u"SubRip") hasSubRip = std::u16string(extensions[i]) == u".srt";
  }
  EXPECT_TRUE(hasSubRip);
  EXPECT_EQ(movaFreeOutputTypes(names, extensions, count), 0u);
  EXPECT_EQ(movaFreeOutputTypes(wideNames, wideExtensions, count), 0u);
}

TEST(Settings, HaveTheirDefaults) {
  const MOVASettings s = getDefaultSettings();
  EXPECT_TRUE(s.Reserved0);
  EXPECT_EQ(s.FrameRate, 29.97);
  EXPECT_FALSE(s.DropFrame);
  EXPECT_EQ(s.SsaFontName, u"Arial");
  EXPECT_EQ(s.SsaFontSize, 20.0);
  EXPECT_EQ(s.SsaFontColor, 0xFFFFFFFFu);
  EXPECT_EQ(s.SsaOutline, 2);
  EXPECT_EQ(s.SsaShadow, 1);
  EXPECT_FALSE(s.SsaOpaqueBox);
  EXPECT_EQ(s.DCinemaFontFile, u"Arial.ttf");
  EXPECT_EQ(s.DCinemaFontUrn, u"urn:uuid:3dec6dc0-39d0-498d-97d0-928d2eb78391");
  EXPECT_EQ(s.DCinemaFontSize, 42);
  EXPECT_EQ(s.DCinemaBottomMargin, 8);
  EXPECT_EQ(s.Reserved1, 0.0);
  EXPECT_EQ(s.Reserved2, 5);
  EXPECT_EQ(s.Reserved3, 5);
  for (const auto* text : {&s.DCinemaSubtitleId, &s.DCinemaMovieTitle, &s.DCinemaReelNumber, &s.DCinemaIssueDate,
                           &s.DCinemaLanguage, &s.DCinemaEditRate, &s.DCinemaTimeCodeRate, &s.DCinemaStartTime,
                           &s.DCinemaFontId, &s.DCinemaFontUri, &s.DCinemaEffect, &s.Reserved10}) {
    EXPECT_EQ(*text, u"");
  }
  EXPECT_EQ(s.DCinemaFontColor, 0u);
  EXPECT_EQ(s.DCinemaEffectColor, 0u);
  EXPECT_EQ(s.Reserved4, 0);
  EXPECT_EQ(s.Reserved5, 0);
  EXPECT_EQ(s.Reserved6, 43);
  EXPECT_TRUE(s.Reserved7);
  EXPECT_EQ(s.Reserved8, 0);
  EXPECT_EQ(s.Reserved9, u"Default");
  EXPECT_EQ(s.FcpFontSize, 18);
  EXPECT_EQ(s.FcpFontName, u"Lucida Grande");
  EXPECT_EQ(s.CodePage, 0);
}

TEST(InitializeDCinameSettings, FillsTheGroupForSmpteDocuments) {
  mova::GlobalSettings = getDefaultSettings();
  mova::GlobalSettings.DCinemaEditRate = u"24 1";
  InitializeDCinameSettings(true);
  const MOVASettings& s = mova::GlobalSettings;
  EXPECT_TRUE(s.DCinemaSubtitleId.starts_with(u"urn:uuid:"));
  EXPECT_EQ(s.DCinemaSubtitleId.size(), 9u + 36u);
  EXPECT_EQ(s.DCinemaLanguage, u"en");
  EXPECT_EQ(s.DCinemaFontUri, u"urn:uuid:3dec6dc0-39d0-498d-97d0-928d2eb78391");
  EXPECT_EQ(s.DCinemaFontId, u"theFontId");
  EXPECT_TRUE(s.DCinemaIssueDate.ends_with(u".000-00:00"));
  EXPECT_EQ(s.DCinemaIssueDate.size(), 29u);
  EXPECT_EQ(s.DCinemaIssueDate[10], u'T');
  EXPECT_EQ(s.DCinemaMovieTitle, u"title");
  EXPECT_EQ(s.DCinemaReelNumber, u"1");
  EXPECT_EQ(s.DCinemaFontColor, 0xFFFFFFFFu);
  EXPECT_EQ(s.DCinemaEffect, u"border");
  EXPECT_EQ(s.DCinemaEffectColor, 0x000000FFu);
  EXPECT_EQ(s.Reserved4, -1);
  EXPECT_EQ(s.Reserved5, -1);
  EXPECT_EQ(s.DCinemaEditRate, u"24 1");
  EXPECT_EQ(s.DCinemaStartTime, u"");
}

TEST(InitializeDCinameSettings, FillsTheGroupForInteropDocuments) {
  mova::GlobalSettings = getDefaultSettings();
  InitializeDCinameSettings(false);
  const MOVASettings& s = mova::GlobalSettings;
  ASSERT_EQ(s.DCinemaSubtitleId.size(), 36u);
  for (size_t position : {8, 13, 18, 23}) EXPECT_EQ(s.DCinemaSubtitleId[position], u'-');
  EXPECT_EQ(s.DCinemaLanguage, u"English");
  EXPECT_EQ(s.DCinemaFontUri, u"Arial.ttf");
  EXPECT_EQ(s.DCinemaFontId, u"Arial");
}

}  // namespace
