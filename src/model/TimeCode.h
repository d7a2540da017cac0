/// A point in time, and the conversions between frames and time at the rate of the running conversion.
#pragma once

#include <cstdint>

#include "movautil/WideString.h"

namespace mova {

/// The whole units of a time, cut; hours don't wrap. Each field of a negative time bears its own sign.
struct TimeFields {
  int64_t hours;
  int64_t minutes;
  int64_t seconds;
  int64_t milliseconds;
};

struct TimeCode {
  double TotalMilliseconds = 0.0;  ///< May be negative.

  /// "HH:MM:SS:mmm", with a colon before the milliseconds on purpose. Hours don't wrap; a negative time has one "-" in
  /// front, also where it is cut to zero ("-00:00:00:000").
  WString ToString() const;
  /// Appends what ToString() gives.
  void AppendTo(WString& out) const;

  TimeFields Fields() const;

  /// "HH:MM:SS.FF" with hours modulo 24 and frames at `FrameRate`. Each field of a negative time bears its own sign.
  WString ToFrameString() const;
};

/// Below 100 hours, which nearly all times are: "HH:MM:SS", the separator and "mmm", put out at once.
constexpr int64_t shortClockLimit = 360000000;  // milliseconds
void appendShortClock(WString& out, uint32_t milliseconds, char16_t separator, bool withHours = true);

/// The frame at `FrameRate` of the milliseconds within a second, rounded. The limit is 30 at every rate: from there on
/// it is the last frame of the second, so that at 50 or 60 frames the whole second half ends up there, on purpose.
int32_t millisecondsToFrames(int64_t milliseconds);

/// 1000 / `FrameRate` times `frames`, rounded, at most 999.
int32_t framesToMilliseconds(int32_t frames);

}  // namespace mova
