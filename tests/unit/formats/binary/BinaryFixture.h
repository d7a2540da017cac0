/// Binary caption files made by the tests themselves.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "formats/line/SubRip.h"
#include "model/GlobalSettings.h"
#include "model/Subtitle.h"
#include "movautil/WideString.h"

namespace mova {

class BinaryFormatTest : public testing::Test {
 protected:
  BinaryFormatTest() : folder_(std::filesystem::temp_directory_path() / ("mova-binary-" + std::to_string(getpid()))) {
    std::filesystem::create_directory(folder_);
    GlobalSettings = getDefaultSettings();
  }
  ~BinaryFormatTest() override { std::filesystem::remove_all(folder_); }

  /// Writes a file and gives its path.
  WString File(const std::string& name, const std::string& bytes) const {
    std::ofstream(folder_ / name, std::ios::binary) << bytes;
    return (folder_ / name).u16string();
  }

  std::filesystem::path folder_;
};

/// Converts a file to SubRip. `load` fills a subtitle from bytes; it gets a copy of the exact size, so that the
/// sanitizers see a read behind it.
template <typename Load>
void convertBytes(const std::string& bytes, const Load& load) {
  const std::vector<unsigned char> exact(bytes.begin(), bytes.end());
  Subtitle subtitle;
  load(subtitle, exact);
  EXPECT_GE(SubRip().WriteText(subtitle, u"").size(), subtitle.Paragraphs.size());
}

template <typename Load>
void convertEveryTruncation(const std::string& whole, const Load& load) {
  for (size_t size = 0; size <= whole.size(); ++size) convertBytes(whole.substr(0, size), load);
}

/// Changes each byte from `begin` up to `end` to every value.
template <typename Load>
void convertEveryChange(const std::string& whole, size_t begin, size_t end, const Load& load) {
  for (size_t i = begin; i < end; ++i) {
    std::string changed = whole;
    for (int value = 0; value < 256; ++value) {
      changed[i] = static_cast<char>(value);
      convertBytes(changed, load);
    }
  }
}

}  // namespace mova
