#include "formats/FrameTime.h"

#include "model/Arithmetic.h"
#include "movautil/MovaUtil.h"
#include "text/Strings.h"

namespace mova {

void appendClock(WString& out, const TimeFields& fields, char16_t separator, int64_t last, int digits, int hourDigits) {
  appendNumber(out, fields.hours, hourDigits);
  out += u':';
  appendNumber(out, fields.minutes, 2);
  out += u':';
  appendNumber(out, fields.seconds, 2);
  out += separator;
  appendNumber(out, last, digits);
}

WString formatFrameTime(const TimeCode& time, char16_t frameSeparator) {
  WString text;
  appendFrameTime(text, time, frameSeparator);
  return text;
}

void appendFrameTime(WString& out, const TimeCode& time, char16_t frameSeparator) {
  const TimeFields fields = time.Fields();
  appendClock(out, fields, frameSeparator, millisecondsToFrames(fields.milliseconds));
}

TimeCode timeCodeFromParts(const std::vector<WStringView>& parts) {
  const int32_t milliseconds = framesToMilliseconds(wideToInt(parts[3]));
  return {static_cast<double>(
      partsToMilliseconds(wideToInt(parts[0]), wideToInt(parts[1]), wideToInt(parts[2]), milliseconds))};
}

}  // namespace mova
