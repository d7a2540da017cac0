#include "model/TimeCode.h"

#include <algorithm>

#include "model/Arithmetic.h"
#include "model/GlobalSettings.h"
#include "text/Strings.h"

namespace mova {

void appendShortClock(WString& out, uint32_t milliseconds, char16_t separator, bool withHours) {
  char16_t digits[] = u"00:00:00:000";
  const auto put = [&digits, &milliseconds](size_t position, uint32_t base) {
    digits[position] = static_cast<char16_t>(u'0' + milliseconds % base);
    milliseconds /= base;
  };
  for (size_t position : {11, 10, 9, 7}) put(position, 10);
  digits[8] = separator;
  put(6, 6);
  put(4, 10);
  put(3, 6);
  put(1, 10);
  put(0, 10);
  const size_t begin = withHours ? 0 : 3;
  out.append(digits + begin, 12 - begin);
}

void TimeCode::AppendTo(WString& out) const {
  const int64_t cut = cutToInt64(TotalMilliseconds);
  const uint64_t magnitude = cut < 0 ? 0 - static_cast<uint64_t>(cut) : static_cast<uint64_t>(cut);
  if (TotalMilliseconds < 0) out += u'-';
  if (magnitude >= 360000000) appendNumber(out, static_cast<int64_t>(magnitude / 360000000));
  appendShortClock(out, static_cast<uint32_t>(magnitude % 360000000),
                   u':');  // from the last two digits of the hours on
}

WString TimeCode::ToString() const {
  WString text;
  AppendTo(text);
  return text;
}

TimeFields TimeCode::Fields() const {
  const int64_t total = cutToInt64(TotalMilliseconds);
  return {total / 3600000, total / 60000 % 60, total / 1000 % 60, total % 1000};
}

WString TimeCode::ToFrameString() const {
  const TimeFields fields = Fields();
  WString text;
  appendNumber(text, fields.hours % 24, 2);
  text += u':';
  appendNumber(text, fields.minutes, 2);
  text += u':';
  appendNumber(text, fields.seconds, 2);
  text += u'.';
  appendNumber(text, millisecondsToFrames(fields.milliseconds), 2);
  return text;
}

int32_t millisecondsToFrames(int64_t milliseconds) {
  const int64_t frames = rounded(static_cast<double>(milliseconds) / (1000.0 / GlobalSettings.FrameRate));
  if (frames < 30) return lowInt32(frames);
  return cutToInt32(static_cast<double>(static_cast<float>(GlobalSettings.FrameRate)) - 0.01);
}

int32_t framesToMilliseconds(int32_t frames) {
  return lowInt32(std::min<int64_t>(rounded(1000.0 / GlobalSettings.FrameRate * frames), 999));
}

}  // namespace mova
