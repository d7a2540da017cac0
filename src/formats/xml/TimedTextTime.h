/// Time expressions of W3C Timed Text, and the parameters of its documents that tell how time is counted.
#pragma once

#include <optional>

#include "model/TimeCode.h"
#include "movautil/WideString.h"

namespace mova {

enum class TimedTextTimeFormat {
  Frames,             ///< "00:00:01:12"
  Milliseconds,       ///< "1500ms"
  Seconds,            ///< "1.5s"
  Ticks,              ///< "15000000t"
  ClockMilliseconds,  ///< "00:00:01.500"
};

/// The form of the last time expression that parseTimeExpression() recognised, which formatTimeExpression() follows.
/// Process-wide, and it outlives a conversion: only the loaders of TimedText10 and its derived class reset it, when
/// they have found a body. A subtitle of any other format is therefore written in the form that was read last.
extern TimedTextTimeFormat timedTextTimeFormat;

/// What it is in a new process.
constexpr TimedTextTimeFormat kFirstTimedTextTimeFormat = TimedTextTimeFormat::Frames;

/// Milliseconds ("ms"), seconds ("s"), ticks ("t", always 10,000 a millisecond) or a clock time, whose last field is
/// frames if `frameBased`, else milliseconds as it stands. Sets `timedTextTimeFormat`, except for a clock time in any
/// other form than "00:00:00.000". Nothing if a clock time has fewer than four fields.
std::optional<TimeCode> parseTimeExpression(WStringView text, bool frameBased);

/// The time in the form of `timedTextTimeFormat`. Ticks give the letter "t" alone, on purpose.
WString formatTimeExpression(const TimeCode& time);

/// Rate parameters of the written documents.
struct TimedTextRate {
  WString dropMode;    ///< "dropNTSC" or "nonDrop", by `DropFrame`
  WString frameRate;   ///< empty, as the multiplier, for a broken rate that is none of the known ones
  WString multiplier;  ///< "numerator denominator"
};

/// The parameters for `FrameRate`. Only the exact values 23.98, 29.97, 59.94 and 15.152 are known as broken rates.
TimedTextRate timedTextRate();

/// The same as an element for the head of a document. (The values are in quotation marks, on purpose.)
WString timedTextParameters();

}  // namespace mova
