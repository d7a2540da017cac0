/// The system's number rules, in one place: cutting, rounding, wrapping, and what becomes of values out of range.
///
/// The results are those of the processor's own conversions and of 32-bit registers, which the formats' times rely on,
/// written so that no C++ operation overflows.
#pragma once

#include <cstdint>
#include <limits>

namespace mova {

/// A double cut towards zero. Out of range, infinities and not-a-number give the smallest value of the type.
constexpr int64_t cutToInt64(double value) {
  constexpr double limit = 9223372036854775808.0;
  return value >= -limit && value < limit ? static_cast<int64_t>(value) : std::numeric_limits<int64_t>::min();
}

/// The same for 32 bits.
constexpr int32_t cutToInt32(double value) {
  return value > -2147483649.0 && value < 2147483648.0 ? static_cast<int32_t>(value)
                                                       : std::numeric_limits<int32_t>::min();
}

/// Rounding, wherever times or frames are rounded: cut towards zero, then one more if the rest is not less than 0.5.
/// So 1.5 gives 2 and -1.5 gives -1. (The test is written so that not-a-number adds one too.)
constexpr int64_t rounded(double value) {
  const int64_t cut = cutToInt64(value);
  return value - static_cast<double>(cut) < 0.5 ? cut : cut + 1;
}

/// The low 32 bits, as a signed value.
constexpr int32_t lowInt32(int64_t value) {
  return static_cast<int32_t>(static_cast<uint32_t>(value));
}

/// 32-bit arithmetic that wraps.
constexpr int32_t wrappingAdd(int32_t a, int32_t b) {
  return lowInt32(int64_t{a} + b);
}
constexpr int32_t wrappingSubtract(int32_t a, int32_t b) {
  return lowInt32(int64_t{a} - b);
}
constexpr int32_t wrappingMultiply(int32_t a, int32_t b) {
  return lowInt32(int64_t{a} * b);
}
constexpr int32_t wrappingNegate(int32_t a) {
  return wrappingSubtract(0, a);
}

/// Hours, minutes, seconds and milliseconds as milliseconds, in wrapping 32-bit arithmetic.
constexpr int32_t partsToMilliseconds(int32_t hours, int32_t minutes, int32_t seconds, int32_t milliseconds) {
  const int32_t allMinutes = wrappingAdd(wrappingMultiply(hours, 60), minutes);
  const int32_t allSeconds = wrappingAdd(wrappingMultiply(allMinutes, 60), seconds);
  return wrappingAdd(wrappingMultiply(allSeconds, 1000), milliseconds);
}

}  // namespace mova
