#include "formats/line/AvidCaption.h"

#include "formats/FrameTime.h"
#include "formats/line/ClockLines.h"
#include "text/Shape.h"
#include "text/Strings.h"

namespace mova {
namespace {

constexpr WStringView beginMarker = u"<begin subtitles>";
constexpr WStringView endMarker = u"<end subtitles>";
constexpr size_t startPosition = 0;
constexpr size_t endPosition = 12;
constexpr size_t timeLength = 11;

TimeCode timeAt(WStringView line, size_t position) {
  return timeCodeFromParts(splitViews(line.substr(position, timeLength), u":", true));
}

void addTextLine(WString& text, WStringView line) {
  if (text.empty()) {
    text = line;
    return;
  }
  text.resize(trimEndView(text).size());
  text += u"\r\n";
  text += trimView(line);
}

}  // namespace

bool AvidCaption::Recognizes(const Lines& lines, const WString& fileName) {
  return holdClockLines(lines) && LoadsMoreThanErrors(lines, fileName);
}

WString AvidCaption::WriteText(const Subtitle& subtitle, const WString&) {
  WString result = u"@ This file written with the Avid Caption plugin, version 1\n\n";
  result += beginMarker;
  result += u'\n';
  for (const auto& paragraph : subtitle.Paragraphs) {
    appendFrameTime(result, paragraph->StartTime);
    result += u' ';
    appendFrameTime(result, paragraph->EndTime);
    result += u"\r\n";
    result += paragraph->Text;
    result += u"\r\n";
  }
  result += endMarker;
  result += u"\r\n";
  return result;
}

void AvidCaption::LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString&) {
  ErrorCount = 0;
  bool hasBegin = false;
  bool hasEnd = false;
  Paragraph* current = nullptr;
  for (size_t i = 0; i < lines.size() && !hasEnd; ++i) {
    const WStringView line = trimView(lines[i]);
    if (equalsIgnoreCase(line, beginMarker)) {
      hasBegin = true;
    } else if (equalsIgnoreCase(line, endMarker)) {
      hasEnd = true;
    } else if (hasShape(line, u"00:00:00:00 00:00:00:00")) {
      current = &subtitle.Append({timeAt(line, startPosition), timeAt(line, endPosition), WString()});
    } else if (current && !line.empty() && !line.starts_with(u'@')) {  // "@" opens a comment
      addTextLine(current->Text, lines[i]);
    }
  }
  if (!hasBegin) ++ErrorCount;
  if (!hasEnd) ++ErrorCount;
}

}  // namespace mova
