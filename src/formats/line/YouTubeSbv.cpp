#include "formats/line/YouTubeSbv.h"

#include <array>
#include <utility>

#include "formats/FrameTime.h"
#include "model/Arithmetic.h"
#include "movautil/MovaUtil.h"
#include "text/Strings.h"

namespace mova {
namespace {

/// Hours are neither filled up nor wrapped. Each field bears its own sign.
void appendTime(WString& out, const TimeCode& timeCode) {
  const TimeFields fields = timeCode.Fields();
  appendClock(out, fields, u'.', fields.milliseconds, 3, 1);
}

/// Whether the line is eight numbers with their separators: -?\d+:-?\d+:-?\d+[:,.]-?\d+,\d+:-?\d+:-?\d+[:,.]-?\d+
bool isSbvTimeLine(WStringView line) {
  constexpr size_t unsignedField = 4;  // the hours of the second time
  constexpr std::array<WStringView, 7> separators = {u":", u":", u":,.", u",", u":", u":", u":,."};
  line = cText(line);
  for (size_t field = 0;; ++field) {
    if (field != unsignedField && line.starts_with(u'-')) line.remove_prefix(1);
    if (line.empty() || !isDigit(line.front())) return false;
    while (!line.empty() && isDigit(line.front())) line.remove_prefix(1);
    if (field == separators.size()) return line.empty();
    if (line.empty() || separators[field].find(line.front()) == WStringView::npos) return false;
    line.remove_prefix(1);
  }
}

TimeCode timeFromPieces(const std::vector<WStringView>& pieces, size_t first) {
  return TimeCode{static_cast<double>(partsToMilliseconds(wideToInt(pieces[first]), wideToInt(pieces[first + 1]),
                                                          wideToInt(pieces[first + 2]), wideToInt(pieces[first + 3])))};
}

bool readTimeLine(WStringView text, TimeCode& start, TimeCode& end) {
  if (text.empty() || (!isDigit(text.front()) && text.front() != u'-')) return false;
  WString line(text);
  replaceAllInPlace(line, u".", u":");
  replaceAllInPlace(line, u"\u00D8\u0152", u",");  // mis-decoded separators
  replaceAllInPlace(line, u"\u00C2\u00A1", u":");
  if (!isSbvTimeLine(line)) return false;
  const std::vector<WStringView> pieces = splitViews(line, u":,", false);
  start = timeFromPieces(pieces, 0);
  end = timeFromPieces(pieces, 4);
  return true;
}

}  // namespace

WString YouTubeSbv::WriteText(const Subtitle& subtitle, const WString&) {
  WString result;
  result.reserve(subtitle.Paragraphs.size() * 96);  // enough for most
  for (const auto& paragraph : subtitle.Paragraphs) {
    appendTime(result, paragraph->StartTime);
    result += u',';
    appendTime(result, paragraph->EndTime);
    result += u"\r\n";
    result += cText(paragraph->Text);
    result += u"\r\n\r\n";
  }
  result.resize(trimEndView(result).size());  // Every block begins with a number: nothing is to be trimmed in front.
  return result;
}

void YouTubeSbv::LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString&) {
  _paragraph = std::make_unique<Paragraph>();
  _expecting = ExpectingTimeCodes;
  ErrorCount = 0;
  subtitle.Paragraphs.clear();

  for (size_t i = 0; i < lines.size(); ++i) {
    const WStringView line = lines[i];
    const bool hasNext = i + 1 < lines.size();
    // The times of the next block without a blank line in front.
    if (_expecting == ExpectingText && hasNext && !_paragraph->Text.empty() && isSbvTimeLine(line)) {
      ReadLine(subtitle, u"", u"");
    }
    ReadLine(subtitle, trimEndView(line), lines.AtOrEmpty(i + 1));
  }
  // A last block without a blank line behind it.
  if (!trimView(_paragraph->Text).empty()) subtitle.Paragraphs.push_back(std::move(_paragraph));

  for (auto& paragraph : subtitle.Paragraphs) replaceAllInPlace(paragraph->Text, u"\r\n\r\n", u"\r\n");
  subtitle.Renumber(1);
}

void YouTubeSbv::ReadLine(Subtitle& subtitle, WStringView line, WStringView next) {
  switch (_expecting) {
    case ExpectingTimeCodes:
      return ReadTimeCodes(line);
    case ExpectingText:
      return ReadText(subtitle, line, next);
  }
}

void YouTubeSbv::ReadTimeCodes(WStringView line) {
  if (readTimeLine(line, _paragraph->StartTime, _paragraph->EndTime)) {
    _paragraph->Text.clear();
    _expecting = ExpectingText;
  } else {
    ++ErrorCount;
  }
}

void YouTubeSbv::ReadText(Subtitle& subtitle, WStringView line, WStringView next) {
  const bool textFollows = !trimView(next).empty() && !isAllDigits(next) && !isSbvTimeLine(next);
  if (!line.empty() || textFollows) {  // A blank line in front of more text is part of the text.
    if (!_paragraph->Text.empty()) _paragraph->Text += u"\r\n";
    _paragraph->Text += line;
  } else {
    subtitle.Paragraphs.push_back(std::exchange(_paragraph, std::make_unique<Paragraph>()));
    _expecting = ExpectingTimeCodes;
  }
}

}  // namespace mova
