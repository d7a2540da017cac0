#include "formats/line/Csv3.h"

#include "formats/FrameTime.h"
#include "formats/line/CsvRecords.h"
#include "text/LineBreaking.h"
#include "text/Shape.h"
#include "text/Strings.h"

namespace mova {
namespace {

constexpr char16_t separator = u',';
constexpr size_t tooManyMisses = 21;

/// Of two times: ^\d\d:\d\d:\d\d:\d\d,\d\d:\d\d:\d\d:\d\d,
size_t headLength(WStringView line) {
  return startsWithShape(line, csvTimesShape) ? csvTimesShape.size() : 0;
}

bool holdsMarkerOfAnotherFormat(const Lines& lines) {
  for (size_t i = 0; i < lines.size(); ++i) {
    const WStringView line = lines[i];
    if (line.starts_with(u"$FontName") || line.starts_with(u"$ColorIndex1")) return true;
  }
  return false;
}

void appendQuoted(WString& out, WStringView line) {
  out += u'"';
  out += cText(replaceAll(line, u"\"", u"\"\""));
  out += u'"';
}

/// The text of both quoted lines of a record, unit by unit: the second quote of a pair is then treated by itself, on
/// purpose.
WString readText(WStringView fields) {
  const WString unpaired = replaceAll(fields, u"\"\"", u"\"");
  WStringView units = trimView(unpaired);
  if (units.starts_with(u'"')) units.remove_prefix(1);
  if (units.ends_with(u'"')) units.remove_suffix(1);

  WString text;
  bool afterQuote = false;  // behind the first line
  for (size_t i = 0; i < units.size(); ++i) {
    const char16_t unit = units[i];
    if (unit == u'"') {
      const bool isFirst = i == 0;
      const bool isLast = i + 1 == units.size();
      if (!isLast && units[i + 1] == u'"') {
        text += u'"';
      } else if (afterQuote) {
        afterQuote = false;
      } else if (isFirst || isLast || text.ends_with(u"\r\n")) {
        text += u'"';
      } else {
        afterQuote = true;
      }
    } else if (!afterQuote) {
      text += unit;
    } else if (unit == separator) {
      text += u"\r\n";
    } else if (unit != u' ') {
      afterQuote = false;
      text += unit;
    }
  }
  return trim(text);
}

}  // namespace

bool Csv3::Recognizes(const Lines& lines, const WString&) {
  return hasMoreCsvRecords(lines, headLength, tooManyMisses) && !holdsMarkerOfAnotherFormat(lines);
}

WString Csv3::WriteText(const Subtitle& subtitle, const WString&) {
  WString result = u"Start time (hh:mm:ss:ff),End time (hh:mm:ss:ff),\"Line 1\",\"Line 2\"";
  result.reserve(subtitle.Paragraphs.size() * 96);  // enough for most
  for (const auto& paragraph : subtitle.Paragraphs) {
    WString text = trim(paragraph->Text);
    std::vector<WStringView> lines = splitViews(text, u"\r\n", true);
    if (lines.size() > 2) {
      text = trim(breakLinesDefault(paragraph->Text));
      lines = splitViews(text, u"\r\n", true);
    }
    lines.resize(2);
    result += u'\n';
    appendFrameTime(result, paragraph->StartTime);
    result += separator;
    appendFrameTime(result, paragraph->EndTime);
    for (const WStringView line : lines) {
      result += separator;
      appendQuoted(result, line);
    }
  }
  return result;
}

void Csv3::LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString&) {
  ErrorCount = 0;
  for (size_t i = 0; i < lines.size(); ++i) {
    const WStringView line = lines[i];
    if (const size_t length = headLength(line)) {
      Paragraph& paragraph = subtitle.Append({});
      readCsvTimes(line, paragraph.StartTime, paragraph.EndTime);
      paragraph.Text = readText(line.substr(length));
    } else if (!trimView(line).empty()) {
      ++ErrorCount;
    }
  }
  subtitle.Renumber(1);
}

}  // namespace mova
