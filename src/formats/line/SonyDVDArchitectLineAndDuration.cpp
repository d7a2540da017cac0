#include "formats/line/SonyDVDArchitectLineAndDuration.h"

#include "formats/FrameTime.h"
#include "formats/LocalDate.h"
#include "formats/line/SonyDVDArchitectList.h"
#include "text/Markup.h"
#include "text/Shape.h"
#include "text/Strings.h"

namespace mova {
namespace {

/// As ^\d+\t\d\d:\d\d:\d\d:\d\d\t\d\d:\d\d:\d\d:\d\d\t\d\d:\d\d:\d\d:\d\d$ matches.
bool isTimeLine(WStringView line) {
  ShapeWalk walk(line);
  return walk.Run(u"0123456789") && walk.Shape(u"\t00:00:00:00\t00:00:00:00\t00:00:00:00") && walk.AtEnd();
}

TimeCode timeOf(WStringView field) {
  return timeCodeFromParts(splitViews(field, u":", false));
}

TimeCode duration(const Paragraph& paragraph) {
  return {paragraph.EndTime.TotalMilliseconds - paragraph.StartTime.TotalMilliseconds};
}

}  // namespace

bool SonyDVDArchitectLineAndDuration::Recognizes(const Lines& lines, const WString& fileName) {
  // Every time line has a tab. Without one the trial gives no paragraph.
  return lines.Contains(u'\t') && LoadsMoreThanErrors(lines, fileName);
}

WString SonyDVDArchitectLineAndDuration::WriteText(const Subtitle& subtitle, const WString& title) {
  const auto& paragraphs = subtitle.Paragraphs;
  WString list = u"Title: " + title + u"\nTranslator: No Author\nDate: ";
  appendLocalDate(list, u'.');
  list += u"\nDuration: ";
  appendFrameTime(list, paragraphs.empty() ? TimeCode() : paragraphs.back()->EndTime);
  list += u"\nProgram start: 00:00:00:00\nTitle count: ";
  appendNumber(list, static_cast<int64_t>(paragraphs.size()));
  list += u"\n\n#\tIn\tOut\tDuration\n\n";
  // Line feeds in the header, CR LF in the captions and a line feed behind each, on purpose.
  int64_t number = 0;
  for (const auto& paragraph : paragraphs) {
    appendNumber(list, ++number);
    for (const TimeCode& time : {paragraph->StartTime, paragraph->EndTime, duration(*paragraph)}) {
      list += u'\t';
      appendFrameTime(list, time);
    }
    list += u"\r\n";
    list += cText(removeHtmlTags(paragraph->Text));
    list += u"\r\n\n";
  }
  return endList(list);
}

void SonyDVDArchitectLineAndDuration::LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString&) {
  ErrorCount = 0;
  OpenCaption caption;
  for (size_t i = 0; i < lines.size(); ++i) {
    const WStringView line = trimView(lines[i]);
    if (line.empty()) continue;
    if (isTimeLine(line)) {
      const std::vector<WStringView> fields = splitViews(line, u"\t", false);
      caption.Open(subtitle.Append({timeOf(fields[1]), timeOf(fields[2]), WString()}));
    } else if (!caption.AddLine(line)) {
      ++ErrorCount;
    }
  }
  subtitle.Renumber(1);
}

}  // namespace mova
