#include <gtest/gtest.h>

#include <limits>

#include "model/Arithmetic.h"

namespace mova {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

TEST(Arithmetic, CutsTowardsZero) {
  EXPECT_EQ(cutToInt64(1.9), 1);
  EXPECT_EQ(cutToInt64(-1.9), -1);
  EXPECT_EQ(cutToInt32(2147483647.9), 2147483647);
  EXPECT_EQ(cutToInt32(-2147483648.9), -2147483648);
}

TEST(Arithmetic, GivesTheSmallestValueForDoublesOutOfRange) {
  for (double value : {9223372036854775808.0, -9.3e18, infinity, -infinity, notANumber}) {
    EXPECT_EQ(cutToInt64(value), std::numeric_limits<int64_t>::min()) << value;
  }
  for (double value : {2147483648.0, -2147483649.0, 1e300, infinity, notANumber}) {
    EXPECT_EQ(cutToInt32(value), std::numeric_limits<int32_t>::min()) << value;
  }
}

TEST(Arithmetic, RoundsHalvesUpAndNegativeValuesTowardsZero) {
  EXPECT_EQ(rounded(1.4999), 1);
  EXPECT_EQ(rounded(1.5), 2);
  EXPECT_EQ(rounded(-1.5), -1);
  EXPECT_EQ(rounded(-1.9), -1);
  EXPECT_EQ(rounded(0.5), 1);
}

TEST(Arithmetic, RoundsNotANumberToOneMoreThanTheSmallestValue) {
  EXPECT_EQ(rounded(notANumber), std::numeric_limits<int64_t>::min() + 1);
  EXPECT_EQ(lowInt32(rounded(infinity)), 1);
  EXPECT_EQ(lowInt32(rounded(-infinity)), 0);
}

TEST(Arithmetic, WrapsAt32Bits) {
  EXPECT_EQ(wrappingAdd(2147483647, 1), std::numeric_limits<int32_t>::min());
  EXPECT_EQ(wrappingSubtract(std::numeric_limits<int32_t>::min(), 1), 2147483647);
  EXPECT_EQ(wrappingMultiply(65536, 65536), 0);
  EXPECT_EQ(wrappingNegate(std::numeric_limits<int32_t>::min()), std::numeric_limits<int32_t>::min());
}

TEST(Arithmetic, JoinsTimePartsWithWrapping) {
  EXPECT_EQ(partsToMilliseconds(1, 2, 3, 4), 3723004);
  EXPECT_EQ(partsToMilliseconds(1000, 0, 0, 0), -694967296);
}

}  // namespace
}  // namespace mova
