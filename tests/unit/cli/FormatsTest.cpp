#include <gtest/gtest.h>

#include "cli/Failure.h"
#include "cli/Formats.h"

namespace mova::cli {
namespace {

TEST(CliFormats, AreNamedInAnyCaseWithOrWithoutBlanks) {
  EXPECT_EQ(findFormat("SubRip").name, "SubRip");
  EXPECT_EQ(findFormat("sub RIP ").name, "SubRip");
}

TEST(CliFormats, AreNamedByAnExtensionOfTheirOwn) {
  EXPECT_EQ(findFormat("srt").name, "SubRip");
  EXPECT_EQ(findFormat(".SRT").name, "SubRip");
}

TEST(CliFormats, EveryOneIsFoundByItsName) {
  for (const Format& format : allFormats()) EXPECT_EQ(&findFormat(format.name), &format);
}

/// A shared extension names no format.
TEST(CliFormats, EveryExtensionNamesItsOneBearerOrIsRefused) {
  for (const Format& format : allFormats()) {
    size_t bearers = 0;
    for (const Format& other : allFormats()) bearers += other.extension == format.extension ? 1 : 0;
    if (bearers == 1) {
      EXPECT_EQ(&findFormat(format.extension), &format);
    } else {
      EXPECT_THROW(findFormat(format.extension), Failure) << format.extension;
    }
  }
}

TEST(CliFormats, WhatNamesNoneIsRefused) {
  for (const char* text : {"", " ", ".", "mkv", "SubRip2", "srtx"}) {
    try {
      findFormat(text);
      ADD_FAILURE() << text << " was found";
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.status, kUsage);
    }
  }
}

}  // namespace
}  // namespace mova::cli
