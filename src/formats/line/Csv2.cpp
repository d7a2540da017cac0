#include "formats/line/Csv2.h"

#include "formats/FrameTime.h"
#include "formats/line/CsvRecords.h"
#include "text/Shape.h"
#include "text/Strings.h"

namespace mova {
namespace {

constexpr char16_t separator = u',';

/// Of a number and two times: ^\d+,\d\d:\d\d:\d\d:\d\d,\d\d:\d\d:\d\d:\d\d,
size_t headLength(WStringView line) {
  size_t length = 0;
  while (length < line.size() && isDigit(line[length])) ++length;
  if (length == 0 || length == line.size() || line[length] != separator) return 0;
  return startsWithShape(line.substr(length + 1), csvTimesShape) ? length + 1 + csvTimesShape.size() : 0;
}

}  // namespace

bool Csv2::Recognizes(const Lines& lines, const WString&) {
  return hasMoreCsvRecords(lines, headLength);
}

WString Csv2::WriteText(const Subtitle& subtitle, const WString&) {
  return writeNumberedCsv(subtitle, u"Number,Start time (hh:mm:ss:ff),End time (hh:mm:ss:ff),\"Text\"", separator,
                          [](WString& out, const TimeCode& time) { appendFrameTime(out, time); });
}

void Csv2::LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString&) {
  ErrorCount = 0;
  Paragraph* current = nullptr;
  bool inQuote = false;

  for (size_t i = 0; i < lines.size(); ++i) {
    const WStringView line = lines[i];
    if (const size_t length = headLength(line)) {
      const WStringView field = line.substr(length);
      current = &subtitle.Append({});
      readCsvTimes(line.substr(length - csvTimesShape.size()), current->StartTime, current->EndTime);
      current->Text = trimView(field, u'"');
      inQuote = opensCsvText(field);
    } else if (trimView(line).empty()) {
      continue;
    } else if (inQuote) {
      WString& text = current->Text;
      if (text.size() < csvTextLimit) text = trim(text.append(u"\r\n").append(trimEndView(line, u'"')));
      inQuote = !closesCsvText(line);
    } else {
      ++ErrorCount;
    }
  }
  subtitle.Renumber(1);
}

}  // namespace mova
