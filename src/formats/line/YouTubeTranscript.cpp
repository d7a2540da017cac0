#include "formats/line/YouTubeTranscript.h"

#include "model/Arithmetic.h"
#include "movautil/MovaUtil.h"
#include "text/Strings.h"

namespace mova {
namespace {

constexpr size_t longestText = 800;  // units

/// Whether the line is one to three digits, a colon and two digits.
bool isTranscriptTimeLine(WStringView line) {
  line = cText(line);
  if (line.size() < 4 || line.size() > 6) return false;
  const size_t colon = line.size() - 3;
  return line[colon] == u':' && isAllDigits(line.substr(0, colon)) && isAllDigits(line.substr(colon + 1));
}

/// Minutes and seconds, in milliseconds.
double readTime(WStringView line) {
  const std::vector<WStringView> pieces = splitViews(line, u":", false);
  return partsToMilliseconds(0, wideToInt(pieces[0]), wideToInt(pieces[1]), 0);
}

}  // namespace

WString YouTubeTranscript::WriteText(const Subtitle& subtitle, const WString&) {
  WString result;
  result.reserve(subtitle.Paragraphs.size() * 80);  // enough for most
  for (const auto& paragraph : subtitle.Paragraphs) {
    const int64_t time = cutToInt64(paragraph->StartTime.TotalMilliseconds);
    appendNumber(result, time / 60000);
    result += u':';
    appendNumber(result, time / 1000 % 60, 2);
    result += u"\r\n";
    result += replaceAll(paragraph->Text, u"\r\n", u" ");
    result += u"\r\n";
  }
  return result;
}

void YouTubeTranscript::LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString&) {
  ErrorCount = 0;
  subtitle.Paragraphs.clear();
  Paragraph* current = nullptr;

  for (size_t i = 0; i < lines.size(); ++i) {
    const WStringView line = lines[i];
    const WStringView trimmed = trimView(line);
    if (isTranscriptTimeLine(trimmed)) {
      const double time = readTime(line);
      if (current) current->EndTime.TotalMilliseconds = time;
      current = &subtitle.Append({WString(), time, 0});
    } else if (current && !trimmed.empty()) {
      if (!current->Text.empty()) current->Text += u"\r\n";
      current->Text += line;
      if (current->Text.size() > longestText) {
        ++ErrorCount;
        return;  // The captions so far stay, without numbers.
      }
    }
  }
  subtitle.Renumber(1);
}

}  // namespace mova
