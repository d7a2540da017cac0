#include "formats/line/QuickTimeText.h"

#include <optional>

#include "formats/FrameTime.h"
#include "text/Markup.h"
#include "text/Shape.h"
#include "text/Strings.h"

namespace mova {
namespace {

constexpr WStringView header =
    u"{QTtext} {font:Tahoma}\r\n"
    u"{plain} {size:20}\r\n"
    u"{timeScale:30}\r\n"
    u"{width:160} {height:32}\r\n"
    u"{timestamps:absolute} {language:0}\r\n"
    u"\n";

constexpr size_t timeLength = 13;  // "[00:00:00.00]"

/// As ^\[\d\d:\d\d:\d\d.\d\d\] matches: in front of the frames stands any one-byte character.
bool isTimeLine(WStringView line) {
  return startsWithShape(line, u"[00:00:00") && line.size() >= timeLength && line[9] != 0 && line[9] < 0x80 &&
         startsWithShape(line.substr(10), u"00]");
}

void appendTimeLine(WString& out, const TimeCode& time) {
  out += u'[';
  appendFrameTime(out, time, u'.');
  out += u"]\r\n";
}

}  // namespace

bool QuickTimeText::Recognizes(const Lines& lines, const WString& fileName) {
  // Every time line has a bracket: without one the trial gives no paragraph.
  return lines.Contains(u'[') && !lines.AtOrEmpty(0).starts_with(u"{\\rtf") && LoadsMoreThanErrors(lines, fileName);
}

WString QuickTimeText::WriteText(const Subtitle& subtitle, const WString&) {
  WString result(header);
  for (const auto& paragraph : subtitle.Paragraphs) {
    appendTimeLine(result, paragraph->StartTime);
    result += cText(removeHtmlTags(paragraph->Text));
    result += u"\r\n";
    appendTimeLine(result, paragraph->EndTime);
    result += u'\n';
  }
  return result;
}

void QuickTimeText::LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString&) {
  ErrorCount = 0;
  std::optional<Paragraph> current;
  for (size_t i = 0; i < lines.size(); ++i) {
    const WStringView line = trimView(lines[i]);
    if (isTimeLine(line)) {
      // Another separator than these in front of the frames makes the line nothing at all, not even an error.
      const std::vector<WStringView> parts = splitViews(line.substr(0, timeLength), u".:[]", true);
      if (parts.size() != 4) continue;
      const TimeCode time = timeCodeFromParts(parts);
      if (current && !current->Text.empty()) {
        current->EndTime = time;
        subtitle.Append(*std::move(current));
      }
      current = Paragraph(time, time, WString(line.substr(line.find(u']') + 1)));
    } else if (line.empty()) {
      continue;
    } else if (!current) {
      ++ErrorCount;
    } else {
      if (!current->Text.empty()) current->Text += u"\r\n";
      current->Text += line;
    }
  }
  subtitle.Renumber(1);
}

}  // namespace mova
