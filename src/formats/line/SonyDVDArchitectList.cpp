#include "formats/line/SonyDVDArchitectList.h"

#include "formats/FrameTime.h"
#include "model/Arithmetic.h"
#include "movautil/MovaUtil.h"
#include "text/Markup.h"
#include "text/Strings.h"

namespace mova {
namespace {

constexpr size_t lineBreakLimit = 4;

TimeCode timeOfFields(const std::vector<WStringView>& fields, size_t first, int32_t lastFieldFactor) {
  const int32_t milliseconds = wrappingMultiply(wideToInt(fields[first + 3]), lastFieldFactor);
  return {static_cast<double>(partsToMilliseconds(wideToInt(fields[first]), wideToInt(fields[first + 1]),
                                                  wideToInt(fields[first + 2]), milliseconds))};
}

}  // namespace

void OpenCaption::Open(Paragraph& paragraph) {
  paragraph_ = &paragraph;
  lineBreaks_ = countText(paragraph.Text, u"\r\n");
}

bool OpenCaption::AddLine(WStringView line) {
  if (!paragraph_ || lineBreaks_ >= lineBreakLimit) return false;
  addLineAndTrim(paragraph_->Text, line);
  lineBreaks_ = countText(paragraph_->Text, u"\r\n");
  return true;
}

int32_t loadTimeLines(Subtitle& subtitle, const Lines& lines, const TimeLineSyntax& syntax) {
  constexpr size_t shortestTimeLine = 27;  // Longer than a head needs to be, on purpose.
  const WString firstLine(syntax.StripsMark ? stripByteOrderMark(lines.AtOrEmpty(0)) : WString(lines.AtOrEmpty(0)));
  int32_t errors = 0;
  OpenCaption caption;
  for (size_t i = 0; i < lines.size(); ++i) {
    const WStringView line = i == 0 ? WStringView(firstLine) : lines[i];
    const bool mayHaveTimes = line.size() >= shortestTimeLine && line[2] == u':';
    const size_t headLength = mayHaveTimes ? syntax.HeadLength(line) : 0;
    if (headLength == 0) {
      if (!trimView(line).empty() && !caption.AddLine(line)) ++errors;
      continue;
    }
    const WString head = syntax.Fields(line.substr(0, headLength));
    const std::vector<WStringView> fields = splitViews(head, u":", false);
    if (fields.size() != syntax.FieldCount) {
      ++errors;
      continue;
    }
    caption.Open(subtitle.Append({timeOfFields(fields, 0, syntax.LastFieldFactor),
                                  timeOfFields(fields, 4, syntax.LastFieldFactor),
                                  replaceAll(trimStartView(line.substr(headLength)), u"|", u"\r\n")}));
  }
  subtitle.Renumber(1);
  return errors;
}

WString writeTimeLines(const Subtitle& subtitle, void (*appendHead)(WString& out, const Paragraph& paragraph)) {
  WString list;
  for (const auto& paragraph : subtitle.Paragraphs) {
    appendHead(list, *paragraph);
    list += cText(replaceAll(removeHtmlTags(paragraph->Text), u"\r\n", u"\r"));
    list += u'\n';
  }
  return endList(list);
}

void appendHundredths(WString& out, const TimeCode& time) {
  const TimeFields fields = time.Fields();
  appendClock(out, fields, u':', fields.milliseconds / 10);
}

WString fieldsBetweenTabs(WStringView head) {
  WString fields = replaceAll(replaceAll(head, u"\t", u":"), u".", u":");
  replaceAllInPlace(fields, u" ", u"");
  return trimEnd(fields, u':');
}

WString& endList(WString& list) {
  list.resize(trimEndView(list).size());  // A list begins with a time or a title: nothing is to be trimmed in front.
  return list += u"\r\n\r\n\r\n";
}

}  // namespace mova
