#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "movautil/MovaUtil.h"

using namespace std::string_literals;

namespace {

constexpr uint32_t ReadAccess = 0x80000000;
constexpr uint32_t OpenExisting = 3;

/// In a directory of its own, which goes with the test.
class MovaUtilFiles : public testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = testing::TempDir() + "movautil-XXXXXX";
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    Directory = pattern;
  }
  void TearDown() override { std::filesystem::remove_all(Directory); }

  std::string write(const std::string& name, const std::string& content) const {
    const std::string path = Directory / name;
    std::ofstream(path, std::ios::binary) << content;
    return path;
  }

  static MovaHandle open(const std::string& path, uint32_t access = ReadAccess, uint32_t disposition = OpenExisting) {
    return movaOSCreateFile(path.c_str(), access, 7, nullptr, disposition, 0, 0);
  }

  std::filesystem::path Directory;
};

TEST_F(MovaUtilFiles, WhatExistsAndWhatDoesNot) {
  const std::string path = write("captions.cap", "x");
  std::filesystem::create_symlink("gone", Directory / "dangling");
  EXPECT_NE(movaOSFileExists(path.c_str()), 0);
  EXPECT_NE(movaOSFileExists(Directory.c_str()), 0);
  EXPECT_EQ(movaOSFileExists((path + "x").c_str()), 0);
  EXPECT_EQ(movaOSFileExists((Directory / "dangling").c_str()), 0);
  EXPECT_EQ(movaOSFileExists(""), 0);
}

TEST_F(MovaUtilFiles, ReadsAWholeFile) {
  const std::string content = "bytes\0\r\n\x1A\xFF of any kind"s;
  const MovaHandle file = open(write("captions.cap", content));
  ASSERT_NE(file, 0);
  ASSERT_NE(file, -1);
  int64_t size = -1;
  EXPECT_NE(movaOSGetFileSizeEx(file, &size), 0);
  EXPECT_EQ(size, 22);
  std::string bytes(22, '?');
  uint32_t countRead = 99;
  EXPECT_NE(movaOSReadFile(file, bytes.data(), 22, &countRead, nullptr), 0);
  EXPECT_EQ(countRead, 22u);
  EXPECT_EQ(bytes, content);
  EXPECT_NE(movaOSCloseFile(file), 0);
}

TEST_F(MovaUtilFiles, ReadingGoesOnWhereItStoppedAndEndsWithTheFile) {
  const MovaHandle file = open(write("captions.cap", "abcdefgh"));
  char bytes[] = "??????????";
  uint32_t countRead = 99;
  EXPECT_NE(movaOSReadFile(file, bytes, 0, &countRead, nullptr), 0);
  EXPECT_EQ(countRead, 0u);
  EXPECT_NE(movaOSReadFile(file, bytes, 5, &countRead, nullptr), 0);
  EXPECT_EQ(countRead, 5u);
  EXPECT_STREQ(bytes, "abcde?????");
  EXPECT_NE(movaOSReadFile(file, bytes, 5, &countRead, nullptr), 0);
  EXPECT_EQ(countRead, 3u);
  EXPECT_STREQ(bytes, "fghde?????");
  EXPECT_NE(movaOSReadFile(file, bytes, 5, &countRead, nullptr), 0);
  EXPECT_EQ(countRead, 0u);
  EXPECT_NE(movaOSCloseFile(file), 0);
}

TEST_F(MovaUtilFiles, ReadsAnEmptyFile) {
  const MovaHandle file = open(write("empty.cap", ""));
  int64_t size = -1;
  EXPECT_NE(movaOSGetFileSizeEx(file, &size), 0);
  EXPECT_EQ(size, 0);
  char byte = '?';
  uint32_t countRead = 99;
  EXPECT_NE(movaOSReadFile(file, &byte, 1, &countRead, nullptr), 0);
  EXPECT_EQ(countRead, 0u);
  EXPECT_EQ(byte, '?');
  EXPECT_NE(movaOSCloseFile(file), 0);
}

TEST_F(MovaUtilFiles, ReadsABigFile) {
  std::string content;
  for (int i = 0; content.size() < 9'000'000; ++i) content += std::to_string(i);
  const MovaHandle file = open(write("big.cap", content));
  std::string bytes(content.size() + 100, '?');
  uint32_t countRead = 0;
  EXPECT_NE(movaOSReadFile(file, bytes.data(), static_cast<uint32_t>(bytes.size()), &countRead, nullptr), 0);
  EXPECT_EQ(countRead, content.size());
  EXPECT_TRUE(bytes == content + std::string(100, '?'));
  EXPECT_NE(movaOSCloseFile(file), 0);
}

TEST_F(MovaUtilFiles, SizesBeyond32Bits) {
  const std::string path = write("sparse.cap", "");
  std::filesystem::resize_file(path, 5'000'000'000);
  const MovaHandle file = open(path);
  int64_t size = -1;
  EXPECT_NE(movaOSGetFileSizeEx(file, &size), 0);
  EXPECT_EQ(size, 5'000'000'000);
  EXPECT_NE(movaOSCloseFile(file), 0);
}

TEST_F(MovaUtilFiles, NamesAreUtf8) {
  const std::string path = write("Größe und Жизнь.cap", "x");
  const MovaHandle file = open(path);
  EXPECT_NE(file, -1);
  EXPECT_NE(movaOSCloseFile(file), 0);
}

TEST_F(MovaUtilFiles, OnlyRegularFilesOpen) {
  EXPECT_EQ(open(Directory / "missing.cap"), -1);
  EXPECT_EQ(open(Directory), -1);
  EXPECT_EQ(open("/dev/null"), -1);
  EXPECT_EQ(open(""), -1);
}

TEST_F(MovaUtilFiles, APipeIsRefusedWithoutWaitingForItsWriter) {
  const std::string path = Directory / "pipe.cap";
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  EXPECT_NE(movaOSFileExists(path.c_str()), 0);
  EXPECT_EQ(open(path), -1);
}

TEST_F(MovaUtilFiles, NothingIsCreatedOrOpenedForWriting) {
  const std::string path = write("captions.cap", "x");
  EXPECT_EQ(open(path, 0x40000000), -1);
  EXPECT_EQ(open(path, ReadAccess | 0x40000000), -1);
  EXPECT_EQ(open(Directory / "new.cap", ReadAccess, 2), -1);
  EXPECT_FALSE(std::filesystem::exists(Directory / "new.cap"));
}

TEST_F(MovaUtilFiles, AHandleIsNeverZero) {
  const std::string path = write("captions.cap", "x");
  const int standardInput = dup(STDIN_FILENO);
  close(STDIN_FILENO);  // the next file to open gets descriptor 0
  const MovaHandle file = open(path);
  EXPECT_NE(file, 0);
  EXPECT_NE(file, -1);
  EXPECT_NE(movaOSCloseFile(file), 0);
  if (standardInput >= 0) {
    dup2(standardInput, STDIN_FILENO);
    close(standardInput);
  }
}

TEST_F(MovaUtilFiles, InvalidHandlesFail) {
  const MovaHandle closed = open(write("captions.cap", "x"));
  EXPECT_NE(movaOSCloseFile(closed), 0);
  for (const MovaHandle file : {MovaHandle{0}, MovaHandle{-1}, closed}) {
    int64_t size = 0;
    char byte = 0;
    uint32_t countRead = 99;
    EXPECT_EQ(movaOSGetFileSizeEx(file, &size), 0);
    EXPECT_EQ(movaOSReadFile(file, &byte, 1, &countRead, nullptr), 0);
    EXPECT_EQ(countRead, 0u);
    EXPECT_EQ(movaOSCloseFile(file), 0);
  }
}

}  // namespace
