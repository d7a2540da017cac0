#include <gtest/gtest.h>

#include "cli/Inputs.h"

namespace mova::cli {
namespace {

std::string output(const std::string& path, size_t keptFrom) {
  return InputFile{path, keptFrom}.outputPath("out", ".vtt");
}

TEST(InputFile, GoesToTheFolderUnderItsName) {
  EXPECT_EQ(output("film.srt", 0), "out/film.vtt");
  EXPECT_EQ(output("/some/where/film.srt", 12), "out/film.vtt");
}

TEST(InputFile, KeepsItsSubfolders) {
  EXPECT_EQ(output("in/a.b/c/film.srt", 3), "out/a.b/c/film.vtt");
}

TEST(InputFile, LosesItsLastExtensionOnly) {
  EXPECT_EQ(output("film.en.srt", 0), "out/film.en.vtt");
  EXPECT_EQ(output("film", 0), "out/film.vtt");
  EXPECT_EQ(output(".hidden", 0), "out/.hidden.vtt");
  EXPECT_EQ(output("in/a.b/film", 3), "out/a.b/film.vtt");
}

TEST(InputList, GivesBackWhatWasAdded) {
  InputList list;
  for (size_t i = 0; i < 20'000; ++i) list.add({"folder/" + std::to_string(i), i % 7});
  EXPECT_EQ(list.size(), 20'000u);
  InputReader reader(list);
  uint64_t middle = 0;
  for (size_t i = 0; i < 20'000; ++i) {
    if (i == 10'000) middle = reader.place();
    const auto file = reader.next();
    ASSERT_TRUE(file);
    ASSERT_EQ(file->path, "folder/" + std::to_string(i));
    ASSERT_EQ(file->keptFrom, i % 7);
  }
  EXPECT_FALSE(reader.next());
  EXPECT_EQ(list.at(middle).path, "folder/10000");
}

}  // namespace
}  // namespace mova::cli
