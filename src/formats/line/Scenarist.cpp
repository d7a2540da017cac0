#include "formats/line/Scenarist.h"

#include "formats/FrameTime.h"
#include "text/Markup.h"
#include "text/Shape.h"
#include "text/Strings.h"

namespace mova {
namespace {

constexpr WStringView headShape = u"0000\t00:00:00:00\t00:00:00:00\t";
constexpr size_t startPosition = 5;
constexpr size_t endPosition = 17;
constexpr size_t timeLength = 11;

TimeCode timeAt(WStringView line, size_t position) {
  return timeCodeFromParts(splitViews(line.substr(position, timeLength), u":", true));
}

}  // namespace

bool Scenarist::Recognizes(const Lines& lines, const WString& fileName) {
  // Every caption has a tab. Without one the trial gives no paragraph.
  return lines.Contains(u'\t') && LoadsMoreThanErrors(lines, fileName);
}

WString Scenarist::WriteText(const Subtitle& subtitle, const WString&) {
  WString result;
  int64_t number = 0;
  for (const auto& paragraph : subtitle.Paragraphs) {
    appendNumber(result, ++number, 4);
    result += u'\t';
    appendFrameTime(result, paragraph->StartTime);
    result += u'\t';
    appendFrameTime(result, paragraph->EndTime);
    result += u'\t';
    result += cText(replaceAll(removeHtmlTags(paragraph->Text), u"\r\n", u"\t"));
    result += u'\n';
  }
  return result;
}

void Scenarist::LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString&) {
  ErrorCount = 0;
  for (size_t i = 0; i < lines.size(); ++i) {
    const WStringView line = trimView(lines[i]);
    if (!startsWithShape(line, headShape)) {
      ++ErrorCount;
      continue;
    }
    WString text = trim(line.substr(headShape.size()));
    if (text.find(u"\r\n") == WString::npos) replaceAllInPlace(text, u"\t", u"\r\n");
    subtitle.Append({timeAt(line, startPosition), timeAt(line, endPosition), std::move(text)});
  }
  subtitle.Renumber(1);
}

}  // namespace mova
