/// Times as the text formats write and read them, mostly with frames at `FrameRate`.
#pragma once

#include <vector>

#include "model/TimeCode.h"
#include "movautil/WideString.h"

namespace mova {

/// "HH:MM:SS", the separator, and a last field of so many digits in place of the milliseconds.
void appendClock(WString& out, const TimeFields& fields, char16_t separator, int64_t last, int digits = 2,
                 int hourDigits = 2);

/// "HH:MM:SS:FF", or with another unit in front of the frames. Hours don't wrap; each field of a negative time bears
/// its own sign.
WString formatFrameTime(const TimeCode& time, char16_t frameSeparator = u':');
/// Appends what formatFrameTime() gives.
void appendFrameTime(WString& out, const TimeCode& time, char16_t frameSeparator = u':');

/// The time of four texts: hours, minutes, seconds, frames. Digits beyond 32 bits and frames beyond the second are
/// cut off, sums wrap.
TimeCode timeCodeFromParts(const std::vector<WStringView>& parts);

}  // namespace mova
