#include <gtest/gtest.h>

#include "cli/Progress.h"

namespace mova::cli {
namespace {

TEST(Tally, IsToldInWords) {
  EXPECT_EQ(describeTally({.total = 5}), "0 converted");
  EXPECT_EQ(describeTally({.total = 9, .converted = 8, .failed = 1}), "8 converted, 1 failed");
  EXPECT_EQ(describeTally({.total = 9, .converted = 2, .failed = 0, .skipped = 7}), "2 converted, 7 skipped");
}

TEST(ProgressBar, TellsShareCountsRateAndTimeLeft) {
  EXPECT_EQ(progressBar({.total = 1000, .converted = 495, .failed = 5}, 10, 100),
            "[####################....................] 500 of 1000  5 failed  50/s  0:10 left");
  EXPECT_EQ(progressBar({.total = 2000, .converted = 20}, 10, 100),
            "[........................................] 20 of 2000  2.0/s  16:30 left");
}

TEST(ProgressBar, SkippedFilesDontCountForTheRate) {
  EXPECT_EQ(progressBar({.total = 1000, .converted = 50, .failed = 0, .skipped = 450}, 10, 100),
            "[####################....................] 500 of 1000  5.0/s  1:40 left");
}

TEST(ProgressBar, SaysNothingOfTheTimeBeforeItKnows) {
  EXPECT_EQ(progressBar({.total = 4}, 0.5, 60), "[........................................] 0 of 4");
}

TEST(ProgressBar, LongTimes) {
  EXPECT_EQ(progressLine({.total = 100'000, .converted = 100}, 100),
            "100 of 100000 files: 100 converted; 1.0/s, 27:45:00 left");
  EXPECT_EQ(progressLine({.total = 100'000'000, .converted = 100}, 100),
            "100 of 100000000 files: 100 converted; 1.0/s, more than 100 h left");
}

TEST(ProgressBar, FitsIntoAnyTerminal) {
  for (size_t columns = 0; columns < 120; ++columns) {
    const std::string bar = progressBar({.total = 1000, .converted = 495, .failed = 5}, 10, columns);
    EXPECT_LE(bar.size(), columns == 0 ? 0 : columns - 1) << columns;
  }
  EXPECT_EQ(progressBar({.total = 1000, .converted = 495, .failed = 5}, 10, 45),
            "500 of 1000  5 failed  50/s  0:10 left");
}

TEST(ProgressBar, AnEmptyRunIsWhole) {
  EXPECT_EQ(progressBar({}, 0, 80), "[########################################] 0 of 0");
}

}  // namespace
}  // namespace mova::cli
