#include "formats/line/JsonType4.h"

#include "formats/line/JsonRecords.h"
#include "movautil/MovaUtil.h"
#include "text/Strings.h"

namespace mova {
namespace {

constexpr JsonLayout layout = {.FileStart = uR"([{"hitType)",
                               .StartKey = u"startTime",
                               .EndKey = u"endTime",
                               .TextKey = u"Text",
                               .MillisecondsPerUnit = 1000};

WString shortIdentifier() {
  return replaceAll(newGuid(), u"-", u"").substr(0, 24);
}

}  // namespace

WString JsonType4::WriteText(const Subtitle& subtitle, const WString&) {
  const WString guid = newGuid();
  const WString segmentTypeId = shortIdentifier();
  WString result = u"[";
  result.reserve(subtitle.Paragraphs.size() * 400);  // enough for most
  for (const auto& paragraph : subtitle.Paragraphs) {
    if (result.size() > 1) result += u',';
    result += uR"({"hitType":"tag","subTrack":null,"tags":[],"track":"Closed Captioning","startTime":)";
    result += doubleToWStr(paragraph->StartTime.TotalMilliseconds / 1000, u"%f");
    result += uR"(,"guid":")";
    result += guid;
    result += uR"(","segmentTypeId":")";
    result += segmentTypeId;
    result += uR"(","endTime":)";
    result += doubleToWStr(paragraph->EndTime.TotalMilliseconds / 1000, u"%f");
    result += uR"(,"id":")";
    result += shortIdentifier();
    result += uR"(","metadata":{"Text":")";
    result += jsonEscapeText(paragraph->Text);
    result += uR"(","ID":"","Language":"en"}})";
  }
  result += u']';
  return result;
}

void JsonType4::LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString&) {
  ErrorCount = loadJsonRecords(subtitle, lines, layout);
}

}  // namespace mova
