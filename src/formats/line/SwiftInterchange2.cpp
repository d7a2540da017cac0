#include "formats/line/SwiftInterchange2.h"

#include <optional>

#include "formats/FrameTime.h"
#include "formats/LocalDate.h"
#include "model/Arithmetic.h"
#include "movautil/MovaUtil.h"
#include "text/Markup.h"
#include "text/Strings.h"

namespace mova {
namespace {

constexpr WStringView header =
    uR"(# SWIFT INTERCHANGE FILE V2
# DO NOT EDIT LINES BEGINNING WITH '#' SIGN
# Originating Swift: Line21 30 DROP English (USA)
# VIDEO CLIP : [VIDEO_FILE]
# BROADCAST DATE : [DATE]
# REVISION DATE : [DATE]
# CREATION DATE : [DATE]
# COUNTRY OF ORIGIN : ENG
# EPISODE NUMBER : 0
# DEADLINE DATE : [DATE]
# AUTO TX : false
# CURRENT STYLE : None
# STYLE DATE : None
# STYLE Time : None
# SUBTITLE [1] RU3
# TIMEIN 01:00:00:06
# DURATION 03:21 AUTO
# TIMEOUT --:--:--:--
# START ROW BOTTOM
# ALIGN CENTRE JUSTIFY LEFT
# ROW 0



)";

constexpr WStringView subtitleKey = u"# SUBTITLE";
constexpr WStringView timeInKey = u"# TIMEIN";
constexpr WStringView durationKey = u"# DURATION";
constexpr WStringView timeOutKey = u"# TIMEOUT";
constexpr WStringView noTime = u"--:--:--:--";
constexpr WStringView noDuration = u"--:--";

constexpr size_t longestText = 500;  ///< Units. A longer text that goes on shows a file of another kind.
constexpr int32_t overlongTextErrors = 10;

/// Seconds within the minute, and frames: a minute or more is lost, on purpose.
void appendDuration(WString& out, const Paragraph& paragraph) {
  const TimeCode duration{paragraph.EndTime.TotalMilliseconds - paragraph.StartTime.TotalMilliseconds};
  const TimeFields fields = duration.Fields();
  appendNumber(out, fields.seconds, 2);
  out += u':';
  appendNumber(out, millisecondsToFrames(fields.milliseconds), 2);
}

/// Replaces hours, minutes, seconds and milliseconds of the time in turn, as many of them as the text has pieces for.
/// Nothing is refused: what is no number counts as 0.
void parseSwiftTime(TimeCode& time, WStringView text) {
  constexpr int64_t TimeFields::*inTurn[] = {&TimeFields::hours, &TimeFields::minutes, &TimeFields::seconds,
                                             &TimeFields::milliseconds};
  const std::vector<WStringView> pieces = splitViews(text, u":.", false);
  for (size_t i = 0; i < pieces.size() && i < std::size(inTurn); ++i) {
    const int32_t value = wideToInt(pieces[i]);
    TimeFields fields = time.Fields();
    fields.*inTurn[i] = inTurn[i] == &TimeFields::milliseconds ? framesToMilliseconds(value) : value;
    const int64_t minutes = fields.hours * 60 + fields.minutes;
    time.TotalMilliseconds = static_cast<double>((minutes * 60 + fields.seconds) * 1000 + fields.milliseconds);
  }
}

void readTime(TimeCode& time, WStringView rest) {
  const WStringView text = trimView(rest);
  if (text != noTime) parseSwiftTime(time, text);
}

/// Seconds and frames. The end is left alone if they are anything else than digits.
void readDuration(Paragraph& paragraph, WStringView rest) {
  const WString text = trim(replaceAll(rest, u"AUTO", u""));
  if (text == noDuration) return;
  const std::vector<WStringView> pieces = splitViews(text, u": ", false);
  if (pieces.size() < 2 || !isAllDigits(pieces[0]) || !isAllDigits(pieces[1])) return;
  const int32_t seconds = wideToInt(pieces[0]);
  const int32_t frames = wideToInt(pieces[1]);
  // In doubles, in this order: the last bits of the end count.
  paragraph.EndTime.TotalMilliseconds =
      ((framesToMilliseconds(frames) + paragraph.StartTime.TotalMilliseconds) / 1000.0 + seconds) * 1000.0;
}

}  // namespace

bool SwiftInterchange2::Recognizes(const Lines& lines, const WString& fileName) {
  return !lines.AtOrEmpty(0).starts_with(u"{\\rtf1") && LoadsMoreThanErrors(lines, fileName);
}

WString SwiftInterchange2::WriteText(const Subtitle& subtitle, const WString& title) {
  WString date;
  appendLocalDate(date, u'/');
  WString result = replaceAll(replaceAll(header, u"[DATE]", date), u"[VIDEO_FILE]", title + u".mpg");
  int64_t number = 1;
  for (const auto& paragraph : subtitle.Paragraphs) {
    result += subtitleKey;
    result += u" [";
    appendNumber(result, ++number);
    result += u"] RU3\n";
    result += timeInKey;
    result += u' ';
    appendFrameTime(result, paragraph->StartTime, u'.');
    result += u'\n';
    result += durationKey;
    result += u' ';
    appendDuration(result, *paragraph);
    result += u" AUTO\n# TIMEOUT --:--:--:--\n# START ROW BOTTOM\n# ALIGN CENTRE JUSTIFY LEFT\n# ROW 0\n";
    result += cText(replaceAll(removeHtmlTags(paragraph->Text), u"\r\n", u" "));
    result += u"\n\n\n";
  }
  result.resize(trimEndView(result).size());
  return result;
}

void SwiftInterchange2::LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString&) {
  ErrorCount = 0;
  std::optional<Paragraph> current;
  for (size_t i = 0; i < lines.size(); ++i) {
    const WStringView line = lines[i];
    if (line.starts_with(subtitleKey)) {
      if (current) subtitle.Append(*std::move(current));
      current = Paragraph();
    } else if (!current) {
      continue;
    } else if (line.starts_with(timeInKey)) {
      readTime(current->StartTime, line.substr(timeInKey.size()));
    } else if (line.starts_with(durationKey)) {
      readDuration(*current, line.substr(durationKey.size()));
    } else if (line.starts_with(timeOutKey)) {
      readTime(current->EndTime, line.substr(timeOutKey.size()));
    } else if (!line.empty() && !line.starts_with(u'#')) {
      if (current->Text.size() > longestText) {
        // The rest of the file is dropped, and the captions so far stay as they are: the sample, no numbers.
        ErrorCount += overlongTextErrors;
        return;
      }
      addLineAndTrim(current->Text, line);
    }
  }
  if (current) subtitle.Append(*std::move(current));
  subtitle.RemoveEmptyLines();
  subtitle.Renumber(1);
  if (!subtitle.Paragraphs.empty()) subtitle.Paragraphs.erase(subtitle.Paragraphs.begin());
}

}  // namespace mova
