#include "formats/scc/ScenaristClosedCaptions.h"

#include <algorithm>
#include <cmath>

#include "formats/scc/CaptionDecoding.h"
#include "formats/scc/CaptionEncoding.h"
#include "model/Arithmetic.h"
#include "model/GlobalSettings.h"
#include "movautil/MovaUtil.h"
#include "text/LanguageDetection.h"
#include "text/Strings.h"

namespace mova {
namespace {

/// A caption stays up to the next one if that follows within this time, in milliseconds.
constexpr double shortestGap = 100;

bool isClearedBefore(const Paragraph& paragraph, const Paragraph& next) {
  return std::abs(next.StartTime.TotalMilliseconds - paragraph.EndTime.TotalMilliseconds) > shortestGap;
}

}  // namespace

const Regex& ScenaristClosedCaptions::TimeCodeRegex() const {
  static const Regex regex = createRegex(u"^\\d+:\\d\\d:\\d\\d[:,]\\d\\d\t");
  return regex;
}

void ScenaristClosedCaptions::AppendSccTimeCode(WString& out, double milliseconds) const {
  const int64_t total = cutToInt64(milliseconds);
  appendNumber(out, total / 3600000 % 24, 2);
  out += u':';
  appendNumber(out, total / 60000 % 60, 2);
  out += u':';
  appendNumber(out, total / 1000 % 60, 2);
  out += UsesDropFrameSeparator ? u';' : u':';
  appendNumber(out, millisecondsToFrames(total % 1000), 2);
}

bool ScenaristClosedCaptions::Recognizes(const Lines& lines, const WString& fileName) {
  // Every line of words has a tab behind its time. Without one the trial gives no paragraph.
  return lines.Contains(u'\t') && LoadsMoreThanErrors(lines, fileName);
}

WString ScenaristClosedCaptions::WriteText(const Subtitle& subtitle, const WString&) {
  const WString language = detectLanguageOfSubtitle(subtitle);
  const auto& paragraphs = subtitle.Paragraphs;
  WString result = u"Scenarist_SCC V1.0\r\n\r\n";
  for (size_t i = 0; i < paragraphs.size(); ++i) {
    const Paragraph& paragraph = *paragraphs[i];
    AppendSccTimeCode(result, paragraph.StartTime.TotalMilliseconds);
    result += u"\t94ae 94ae 9420 9420 ";
    result += encodeCaptionText(paragraph.Text, language);
    result += u" 942f 942f\r\n\r\n";
    if (i + 1 == paragraphs.size() || isClearedBefore(paragraph, *paragraphs[i + 1])) {
      AppendSccTimeCode(result, paragraph.EndTime.TotalMilliseconds);
      result += u"\t942c 942c\r\n\r\n";
    }
  }
  return result;
}

TimeCode parseSccTimeCode(WStringView text) {
  const std::vector<WStringView> pieces = splitViews(text, u":;,", true);
  if (pieces.size() < 4) return TimeCode{};
  const double milliseconds = wideToInt(pieces[3]) * (1000.0 / GlobalSettings.FrameRate);
  return TimeCode{
      static_cast<double>(partsToMilliseconds(wideToInt(pieces[0]), wideToInt(pieces[1]), wideToInt(pieces[2]),
                                              lowInt32(std::min<int64_t>(cutToInt64(milliseconds), 999))))};
}

void ScenaristClosedCaptions::LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString&) {
  ErrorCount = 0;
  auto& paragraphs = subtitle.Paragraphs;
  for (size_t i = 0; i < lines.size(); ++i) {
    const WStringView line = trimView(lines[i]);
    if (line.empty() || !isDigit(line[0])) continue;
    const size_t tab = line.find(u'\t');
    if (tab == WStringView::npos || !TimeCodeRegex().Matches(line.substr(0, tab + 1))) continue;
    const TimeCode time = parseSccTimeCode(line.substr(0, tab));
    WString text = decodeCaptionWords(line, ErrorCount);
    // Characters can spell the short form of a clear.
    if (text != clearScreenWords && text != u"942c") {
      subtitle.Append(Paragraph(time, time, std::move(text)));
    } else if (!paragraphs.empty()) {
      paragraphs.back()->EndTime = time;
    }
  }

  // A caption that nothing cleared lasts up to the next one, be that one empty.
  for (size_t i = 0; i + 1 < paragraphs.size(); ++i) {
    Paragraph& paragraph = *paragraphs[i];
    if (paragraph.EndTime.TotalMilliseconds == paragraph.StartTime.TotalMilliseconds) {
      paragraph.EndTime = paragraphs[i + 1]->StartTime;
    }
  }
  std::erase_if(paragraphs, [](const auto& paragraph) { return paragraph->Text.empty(); });
  subtitle.Renumber(1);
}

}  // namespace mova
