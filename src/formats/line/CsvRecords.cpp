#include "formats/line/CsvRecords.h"

#include "formats/FrameTime.h"
#include "text/Strings.h"

namespace mova {

bool hasMoreCsvRecords(const Lines& lines, CsvHeadLength headLength, size_t missLimit) {
  size_t matches = 0;
  size_t misses = 0;
  bool inQuote = false;
  for (size_t i = 0; i < lines.size(); ++i) {
    const WStringView line = lines[i];
    if (const size_t length = headLength(line)) {
      ++matches;
      inQuote = line.substr(length).starts_with(u'"');
    } else if (trimStartView(line).empty()) {
      continue;
    } else if (inQuote) {
      inQuote = false;  // the text goes on
    } else {
      ++misses;
      const size_t left = lines.size() - i - 1;
      if (misses >= missLimit || misses >= matches + left) return false;  // can't be made up for any more
    }
  }
  return matches > misses;
}

void readCsvTimes(WStringView text, TimeCode& start, TimeCode& end) {
  start = timeCodeFromParts(splitViews(text.substr(0, 11), u".:", true));
  end = timeCodeFromParts(splitViews(text.substr(12, 11), u".:", true));
}

bool opensCsvText(WStringView field) {
  return field.starts_with(u'"') && !field.ends_with(u'"');
}

bool closesCsvText(WStringView line) {
  return trimEndView(line).ends_with(u'"');
}

WString writeNumberedCsv(const Subtitle& subtitle, WStringView header, char16_t separator,
                         void (*appendTime)(WString& out, const TimeCode& time)) {
  WString result(header);
  result.reserve(subtitle.Paragraphs.size() * 96);  // enough for most
  for (const auto& paragraph : subtitle.Paragraphs) {
    result += u'\n';
    appendNumber(result, paragraph->Number);
    result += separator;
    appendTime(result, paragraph->StartTime);
    result += separator;
    appendTime(result, paragraph->EndTime);
    result += separator;
    result += u'"';
    result += cText(replaceAll(trimView(paragraph->Text), u"\r\n", u"\n"));
    result += u'"';
  }
  return result;
}

}  // namespace mova
