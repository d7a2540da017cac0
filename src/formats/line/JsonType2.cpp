#include "formats/line/JsonType2.h"

#include "formats/line/JsonRecords.h"

namespace mova {
namespace {

constexpr JsonLayout layout = {.FileStart = uR"([{"startMillis)",
                               .StartKey = u"startMillis",
                               .EndKey = u"endMillis",
                               .TextKey = u"text",
                               .MillisecondsPerUnit = 1};

}  // namespace

WString JsonType2::WriteText(const Subtitle& subtitle, const WString&) {
  return writeJsonRecords(subtitle, layout);
}

void JsonType2::LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString&) {
  ErrorCount = loadJsonRecords(subtitle, lines, layout);
}

}  // namespace mova
