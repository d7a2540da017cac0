#include "formats/line/JsonType2.h"

#include "formats/line/JsonRecords.h"
#include "movautil/MovaUtil.h"

namespace mova {
namespace {

constexpr JsonLayout layout = {.FileStart = uR"([{"startMillis)",
                               .StartKey = u"startMillis",
                               .EndKey = u"endMillis",
                               .TextKey = u"text",
                               .MillisecondsPerUnit = 1};

}  // namespace

WString JsonType2::WriteText(const Subtitle& subtitle, const WString&) {
  WString result = u"[";
  result.reserve(subtitle.Paragraphs.size() * 160);  // enough for most
  for (const auto& paragraph : subtitle.Paragraphs) {
    if (result.size() > 1) result += u',';
    result += uR"({"startMillis":)";
    result += doubleToWStr(paragraph->StartTime.TotalMilliseconds, u"%f");
    result += uR"(,"endMillis":)";
    result += doubleToWStr(paragraph->EndTime.TotalMilliseconds, u"%f");
    result += uR"(,"text":")";
    result += jsonEscapeText(paragraph->Text);
    result += uR"("})";
  }
  result += u']';
  return result;
}

void JsonType2::LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString&) {
  ErrorCount = loadJsonRecords(subtitle, lines, layout);
}

}  // namespace mova
