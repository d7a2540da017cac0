#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "formats/FormatList.h"
#include "model/GlobalSettings.h"
#include "mova/mova.h"
#include "movautil/MovaUtil.h"

namespace mova {
namespace {

namespace fs = std::filesystem;

struct Row {
  const char16_t* name;
  const char16_t* extension;
  bool supportsStyles = false;
  std::vector<WString> extraExtensions = {};
};

const std::vector<Row> expectedRows = {
    {u"Avid Caption", u".txt"},
    {u"Belle Nuit Subtitler", u".stp"},
    {u"CapMaker Plus", u".cap"},
    {u"Cheetah Caption", u".cap"},
    {u"Csv", u".csv"},
    {u"Csv2", u".csv"},
    {u"Csv3", u".csv"},
    {u"D-Cine SMPTE 2007", u".xml"},
    {u"D-Cine SMPTE 2010", u".xml"},
    {u"EBU STL", u".stl"},
    {u"Final Cut Pro Xml", u".xml"},
    {u"Final Cut Xml Gap", u".fcpxml"},
    {u"Final Cut Pro X Xml", u".fcpxml"},
    {u"Final Cut Pro XCM", u".fcpxml"},
    {u"Flash Xml", u".xml"},
    {u"iTunes Timed Text", u".itt", true, {u".itt", u".dfxp"}},
    {u"JSON", u".json"},
    {u"JSON Type 2", u".json"},
    {u"JSON Type 3", u".json"},
    {u"JSON Type 4", u".json"},
    {u"QuickTime text", u".txt"},
    {u"SAMI", u".smi", true},
    {u"SAMI modern", u".smi", true},
    {u"Scenarist", u".txt"},
    {u"DVD_SCC", u".scc"},
    {u"DVD_SCCDF", u".scc"},
    {u"SoftNi sub", u".sub"},
    {u"Sony DVDArchitect", u".sub"},
    {u"Sony DVD Exp dur", u".sub"},
    {u"Sony DVD line/dur", u".txt"},
    {u"Sony DVD Tabs", u".sub"},
    {u"SubRip", u".srt", false, {u".wsrt"}},
    {u"Sub Station Alpha", u".ssa", true},
    {u"Swift V2", u".sif"},
    {u"Timed Text 1.0", u".xml", true, {u".itt", u".dfxp"}},
    {u"TT 2006-04 .dfxp", u".dfxp"},
    {u"TT 2006-04 .ttml", u".ttml"},
    {u"TT 2006-04 .xml", u".xml"},
    {u"WebVTT", u".vtt"},
    {u"YT Annotations", u".xml"},
    {u"YouTube sbv", u".sbv"},
    {u"YouTube Transcript", u".txt"},
};

TEST(FormatList, HoldsAllFormatsInOrder) {
  FormatList list;
  buildFormatList(list);
  ASSERT_EQ(list.size(), expectedRows.size());
  for (size_t i = 0; i < list.size(); ++i) {
    const Row& row = expectedRows[i];
    EXPECT_EQ(list[i]->Name(), row.name);
    EXPECT_EQ(list[i]->Extension(), row.extension) << i;
    EXPECT_EQ(list[i]->SupportsStyles(), row.supportsStyles) << i;
    EXPECT_EQ(list[i]->ExtraExtensions(), row.extraExtensions) << i;
    EXPECT_TRUE(list[i]->IsTimeBased()) << i;
    EXPECT_TRUE(list[i]->IsTextBased()) << i;
  }
}

TEST(FormatList, IsReportedToCallers) {
  char16_t** names = nullptr;
  char16_t** extensions = nullptr;
  const uint32_t number = movaOutputTypes(names, extensions);
  ASSERT_EQ(number, expectedRows.size());
  for (size_t i = 0; i < expectedRows.size(); ++i) {
    EXPECT_EQ(WString(names[i]), expectedRows[i].name);
    EXPECT_EQ(WString(extensions[i]), expectedRows[i].extension);
  }
  movaFreeOutputTypes(names, extensions, number);
}

TEST(FormatList, IsBuiltAnew) {
  FormatList list;
  buildFormatList(list);
  const SubtitleFormat* first = list.front().get();
  FormatList other;
  buildFormatList(other);
  EXPECT_NE(other.front().get(), first);
  buildFormatList(list);
  EXPECT_EQ(list.size(), expectedRows.size());
}

/// A folder with a file of every format that gives captions.
class EveryFormat : public testing::Test {
 protected:
  EveryFormat() : folder_(fs::temp_directory_path() / ("mova-every-" + std::to_string(getpid()))) {
    fs::create_directories(folder_ / "out");
  }
  ~EveryFormat() override { fs::remove_all(folder_); }

  /// What the format writes of a few captions, with a mark in front, so that no line is lost on reading.
  fs::path MakeFile(SubtitleFormat& format) const {
    std::string bytes;
    if (format.Name() == u"EBU STL") {  // read by its bytes
      const WString units = format.WriteText(Programme(), u"film");
      bytes.assign(units.begin(), units.end());
    } else if (format.Name() == u"Cheetah Caption") {  // not written
      bytes = std::string("\xEA\x22\x03", 3) + std::string(125, '\0') +
              std::string("\x1A\0\0\0\1\0\0\0\2\0\0\0\0\0\0\0\0\0\0Hello\0", 26) + std::string(60, '\0');
    } else {
      bytes = "\xEF\xBB\xBF" + wideToString(format.WriteText(Programme(), u"film"));
    }
    const fs::path path = folder_ / (u"film" + format.Extension());
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
  }

  static Subtitle Programme() {
    Subtitle programme;
    for (int i = 0; i < 8; ++i)
      programme.Append({u"Hello\r\nthere", 1000.0 + 3000.0 * i, 3080.0 + 3000.0 * i}).Number = i + 1;
    return programme;
  }

  fs::path folder_;
};

TEST_F(EveryFormat, ReadsItsOwnFilesAndConvertsThemToEveryOther) {
  FormatList list;
  buildFormatList(list);
  for (auto& format : list) {
    WString reader = format->Name();
    if (reader == u"CapMaker Plus") continue;  // never gives a caption
    // All three forms of the 2006 draft are read by the first.
    if (reader.starts_with(u"TT 2006-04")) reader = u"TT 2006-04 .dfxp";
    GlobalSettings = getDefaultSettings();
    const fs::path input = MakeFile(*format);
    Subtitle subtitle;
    const auto winner = subtitle.LoadSubtitle(input.u16string());
    ASSERT_TRUE(winner) << input;
    EXPECT_EQ(wideToString(winner->Name()), wideToString(reader));
    EXPECT_FALSE(subtitle.Paragraphs.empty()) << input;
    for (const Row& row : expectedRows) {
      EXPECT_EQ(movaConvertCC(input.u16string(), row.name, (folder_ / "out" / "film.x").u16string(), nullptr), 0u)
          << input << " to " << wideToString(row.name);
      EXPECT_TRUE(fs::exists(folder_ / "out" / (u"film" + WString(row.extension)))) << wideToString(row.name);
      EXPECT_EQ(fs::remove_all(folder_ / "out"), 2u);  // the folder and one file
      fs::create_directory(folder_ / "out");
    }
    fs::remove(input);
  }
}

}  // namespace
}  // namespace mova
