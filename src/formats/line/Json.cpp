#include "formats/line/Json.h"

#include "formats/line/JsonRecords.h"
#include "movautil/MovaUtil.h"

namespace mova {
namespace {

constexpr JsonLayout layout = {.FileStart = uR"([{"start)",
                               .StartKey = u"start",
                               .EndKey = u"end",
                               .TextKey = u"text",
                               .MillisecondsPerUnit = 1000};

}  // namespace

WString Json::WriteText(const Subtitle& subtitle, const WString&) {
  WString result = u"[";
  result.reserve(subtitle.Paragraphs.size() * 128);  // enough for most
  for (const auto& paragraph : subtitle.Paragraphs) {
    if (result.size() > 1) result += u',';
    result += uR"({"start":)";
    result += doubleToWStr(paragraph->StartTime.TotalMilliseconds / 1000, u"%f");
    result += uR"(,"end":)";
    result += doubleToWStr(paragraph->EndTime.TotalMilliseconds / 1000, u"%f");
    result += uR"(,"text":")";
    result += jsonEscapeText(paragraph->Text);
    result += uR"("})";
  }
  result += u']';
  return result;
}

void Json::LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString&) {
  ErrorCount = loadJsonRecords(subtitle, lines, layout);
}

}  // namespace mova
