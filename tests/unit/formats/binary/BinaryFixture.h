/// Binary caption files made by the tests themselves.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "model/GlobalSettings.h"
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

}  // namespace mova
