#include "formats/line/Json.h"

#include "formats/line/JsonRecords.h"

namespace mova {
namespace {

constexpr JsonLayout layout = {.FileStart = uR"([{"start)",
                               .StartKey = u"start",
                               .EndKey = u"end",
                               .TextKey = u"text",
                               .MillisecondsPerUnit = 1000};

}  // namespace

WString Json::WriteText(const Subtitle& subtitle, const WString&) {
  return writeJsonRecords(subtitle, layout);
}

void Json::LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString&) {
  ErrorCount = loadJsonRecords(subtitle, lines, layout);
}

}  // namespace mova
