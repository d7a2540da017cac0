#include "formats/line/JsonType3.h"

#include "formats/line/JsonRecords.h"
#include "movautil/MovaUtil.h"

namespace mova {
namespace {

constexpr JsonLayout layout = {.FileStart = uR"([{"duration)",
                               .StartKey = u"startTime",
                               .EndKey = u"duration",
                               .TextKey = u"content",
                               .MillisecondsPerUnit = 1,
                               .EndIsDuration = true};

}  // namespace

WString JsonType3::WriteText(const Subtitle& subtitle, const WString&) {
  WString result = u"[";
  result.reserve(subtitle.Paragraphs.size() * 192);  // enough for most
  for (const auto& paragraph : subtitle.Paragraphs) {
    if (result.size() > 1) result += u',';
    result += uR"({"duration":)";
    const double duration = paragraph->EndTime.TotalMilliseconds - paragraph->StartTime.TotalMilliseconds;
    result += doubleToWStr(duration, u"%f");
    result += uR"(,"content":")";
    result += jsonEscapeText(paragraph->Text);
    result += uR"(","startOfParagraph":false,"startTime":)";
    result += doubleToWStr(paragraph->StartTime.TotalMilliseconds, u"%f");
    result += uR"(})";
  }
  result += u']';
  return result;
}

void JsonType3::LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString&) {
  ErrorCount = loadJsonRecords(subtitle, lines, layout);
}

}  // namespace mova
