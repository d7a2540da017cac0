#include "formats/xml/TimedTextTime.h"

#include <charconv>
#include <cmath>

#include "formats/FrameTime.h"
#include "model/Arithmetic.h"
#include "model/GlobalSettings.h"
#include "movautil/MovaUtil.h"
#include "text/Strings.h"

namespace mova {
namespace {

/// A decimal number without the units `suffix` behind it, with "." or "," before the fraction.
double numberBefore(WStringView text, std::u16string_view suffix) {
  for (char16_t unit : suffix) text = trimEndView(text, unit);
  return wideToDouble(replaceAll(text, u",", u"."));
}

bool isClockWithMilliseconds(WStringView text) {
  return text.size() == 12 && text[2] == u':' && text[5] == u':' && text[8] == u'.';
}

/// The number with as many decimals as it takes until it is a multiple of the last one, at most 15.
WString shortestDecimals(double value, int digits, double step) {
  while (std::fmod(value, step) != 0.0 && digits < 15) {
    step /= 10;
    ++digits;
  }
  char text[512];  // room for the largest double
  const auto result = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, digits);
  return WString(text, result.ptr);
}

}  // namespace

TimedTextTimeFormat timedTextTimeFormat = kFirstTimedTextTimeFormat;

std::optional<TimeCode> parseTimeExpression(WStringView text, bool frameBased) {
  if (text.ends_with(u"ms")) {
    timedTextTimeFormat = TimedTextTimeFormat::Milliseconds;
    return TimeCode{numberBefore(text, u"sm")};
  }
  if (text.ends_with(u's')) {
    timedTextTimeFormat = TimedTextTimeFormat::Seconds;
    return TimeCode{numberBefore(text, u"s") * 1000.0};
  }
  if (text.ends_with(u't')) {
    timedTextTimeFormat = TimedTextTimeFormat::Ticks;
    // Ticks beyond 32 bits wrap, on purpose.
    const int32_t milliseconds = lowInt32(wideToLongLong(trimEndView(text, u't'))) / 10000;
    return TimeCode{static_cast<double>(milliseconds)};
  }
  if (isClockWithMilliseconds(text)) timedTextTimeFormat = TimedTextTimeFormat::ClockMilliseconds;
  const std::vector<WStringView> fields = splitViews(text, u":.,", false);
  if (fields.size() < 4) return std::nullopt;
  const int32_t last = wideToInt(fields[3]);
  return TimeCode{
      static_cast<double>(partsToMilliseconds(wideToInt(fields[0]), wideToInt(fields[1]), wideToInt(fields[2]),
                                              frameBased ? framesToMilliseconds(last) : last))};
}

WString formatTimeExpression(const TimeCode& time) {
  WString text;
  switch (timedTextTimeFormat) {
    case TimedTextTimeFormat::Seconds:
      return shortestDecimals(time.TotalMilliseconds / 1000.0, 1, 0.1) + u"s";
    case TimedTextTimeFormat::Milliseconds:
      return shortestDecimals(time.TotalMilliseconds, 0, 1.0) + u"ms";
    case TimedTextTimeFormat::Ticks:
      return u"t";  // The number is lost, on purpose.
    case TimedTextTimeFormat::ClockMilliseconds: {
      const TimeFields fields = time.Fields();
      appendClock(text, fields, u'.', fields.milliseconds, 3);
      return text;
    }
    case TimedTextTimeFormat::Frames:
      break;
  }
  appendFrameTime(text, time);
  return text;
}

TimedTextRate timedTextRate() {
  TimedTextRate rate;
  rate.dropMode = GlobalSettings.DropFrame ? u"dropNTSC" : u"nonDrop";
  const double frameRate = GlobalSettings.FrameRate;
  if (std::fmod(frameRate, 1.0) == 0) {
    rate.frameRate = doubleToWStr(frameRate, u"%f");
    rate.multiplier = u"1 1";
  } else if (frameRate == 23.98) {
    rate.frameRate = u"24";
    rate.multiplier = u"1000 1001";
  } else if (frameRate == 29.97) {
    rate.frameRate = u"30";
    rate.multiplier = u"1000 1001";
  } else if (frameRate == 59.94) {
    rate.frameRate = u"60";
    rate.multiplier = u"1000 1001";
  } else if (frameRate == 15.152) {
    rate.frameRate = u"1";
    rate.multiplier = u"1000 66";
  }
  return rate;
}

WString timedTextParameters() {
  const TimedTextRate rate = timedTextRate();
  return uR"(       <parameter>
           <ttp:dropMode>")" +
         rate.dropMode +
         uR"("</ttp:dropMode>
           <ttp:frameRate>")" +
         rate.frameRate +
         uR"("</ttp:frameRate>
           <ttp:frameRateMultiplier>")" +
         rate.multiplier +
         uR"("</ttp:frameRateMultiplier>
           <ttp:markerMode>"continuous"</ttp:markerMode>
           <ttp:timeBase>"smpte"</ttp:timeBase>
      </parameter>
)";
}

}  // namespace mova
