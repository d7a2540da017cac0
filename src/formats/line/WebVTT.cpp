#include "formats/line/WebVTT.h"

#include <utility>

#include "model/Arithmetic.h"
#include "movautil/MovaUtil.h"
#include "text/Strings.h"

namespace mova {
namespace {

constexpr WStringView arrow = u"-->";

// --- Writing

/// Each field bears its own sign.
void appendTime(WString& out, int64_t time, bool withHours) {
  if (time >= 0 && time < shortClockLimit) {
    return appendShortClock(out, static_cast<uint32_t>(time), u'.', withHours);
  }
  if (withHours) {
    appendNumber(out, time / 3600000, 2);
    out += u':';
  }
  appendNumber(out, time / 60000 % 60, 2);
  out += u':';
  appendNumber(out, time / 1000 % 60, 2);
  out += u'.';
  appendNumber(out, time % 1000, 3);
}

void appendWithoutBlankLines(WString& out, WStringView text) {
  constexpr WStringView blankLine = u"\r\n\r\n";
  if (findText(text, blankLine) == WStringView::npos) {
    out += text;
    return;
  }
  WString changed(text);
  while (findText(changed, blankLine) != WString::npos) replaceAllInPlace(changed, blankLine, u"\r\n");
  out += changed;
}

// --- Reading

bool takeUnit(WStringView& text, char16_t unit) {
  if (!text.starts_with(unit)) return false;
  text.remove_prefix(1);
  return true;
}

/// Takes -?\d+ off the front of the text.
bool takeNumber(WStringView& text, int32_t& number) {
  const size_t sign = text.starts_with(u'-') ? 1 : 0;
  size_t length = sign;
  while (length < text.size() && isDigit(text[length])) ++length;
  if (length == sign) return false;
  number = wideToInt(text.substr(0, length));
  text.remove_prefix(length);
  return true;
}

struct CueTime {
  TimeCode time;
  bool isLong = false;
};

/// Takes a time off the front of the text: a short one of minutes, seconds and milliseconds, or a long one with hours.
/// A sign applies to its own number.
bool takeTime(WStringView& text, CueTime& taken) {
  int32_t hours = 0;
  int32_t minutes = 0;
  int32_t seconds = 0;
  int32_t milliseconds = 0;
  if (!takeNumber(text, minutes) || !takeUnit(text, u':') || !takeNumber(text, seconds)) return false;
  taken.isLong = takeUnit(text, u':');
  if (taken.isLong) {
    hours = minutes;
    minutes = seconds;
    if (!takeNumber(text, seconds)) return false;
  }
  if (!takeUnit(text, u'.') || !takeNumber(text, milliseconds)) return false;
  taken.time.TotalMilliseconds = partsToMilliseconds(hours, minutes, seconds, milliseconds);
  return true;
}

/// Reads the times of a cue head, with anything behind them; false for any other line. The line is trimmed.
bool readCueHead(WStringView line, TimeCode& start, TimeCode& end) {
  CueTime first;
  CueTime second;
  if (!takeTime(line, first)) return false;
  line = trimStartView(line);
  if (!line.starts_with(arrow)) return false;
  line.remove_prefix(arrow.size());
  const WStringView behindArrow = line;
  line = trimStartView(line);
  if (!takeTime(line, second)) return false;
  // On purpose: a short time ends no cue that begins with a long one, and short times have exactly one blank behind the
  // arrow.
  const bool hasOneBlank = behindArrow.starts_with(u' ') && !isSpace(behindArrow[1]);
  if (!second.isLong && (first.isLong || !hasOneBlank)) return false;
  start = first.time;
  end = second.time;
  return true;
}

// --- Formatting

void removeTags(WString& text, WStringView name) {
  const size_t begin = text.find(WString(u"<").append(name).append(u" "));
  if (begin == WString::npos) return;
  const size_t end = text.find(u'>', begin);
  if (end == WString::npos) return;
  text.erase(begin, end + 1 - begin);
  replaceAllInPlace(text, WString(u"</").append(name).append(u">"), u"");
}

}  // namespace

WString WebVTT::WriteText(const Subtitle& subtitle, const WString&) {
  constexpr int64_t hour = 3600000;
  WString result = u"WEBVTT\n\n";
  result.reserve(subtitle.Paragraphs.size() * 112);  // Enough for most; asking each text for its size costs more.
  for (const auto& paragraph : subtitle.Paragraphs) {
    const int64_t start = cutToInt64(paragraph->StartTime.TotalMilliseconds);
    const int64_t end = cutToInt64(paragraph->EndTime.TotalMilliseconds);
    const bool withHours = start >= hour || end >= hour;
    appendTime(result, start, withHours);
    result += u' ';
    result += arrow;
    result += u' ';
    appendTime(result, end, withHours);
    result += u"\r\n";
    appendWithoutBlankLines(result, cText(paragraph->Text));
    if (subtitle.Header == u"WEBVTT") result += cText(paragraph->Extra);
    result += u"\r\n\n";
  }
  result.resize(trimEndView(result).size());  // Nothing is to be trimmed in front of the header.
  return result;
}

void WebVTT::LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString&) {
  ErrorCount = 0;
  std::unique_ptr<Paragraph> current;
  bool afterBlank = true;

  for (size_t i = 0; i < lines.size(); ++i) {
    const WStringView line = lines[i];
    const WStringView trimmed = trimView(line);
    TimeCode start;
    TimeCode end;
    if (readCueHead(trimmed, start, end)) {
      if (current) subtitle.Paragraphs.push_back(std::move(current));
      current = std::make_unique<Paragraph>(start, end, WString());
      afterBlank = false;
    } else if (subtitle.Paragraphs.empty() && trimmed == u"WEBVTT") {
      subtitle.Header = u"WEBVTT";
    } else if (current && !trimmed.empty()) {
      if (afterBlank) continue;  // an identifier of the following cue, or a note
      if (!current->Text.empty()) current->Text += u"\r\n";
      current->Text += trimmed;
    } else if (line.empty()) {
      afterBlank = true;
    }
  }
  if (current) subtitle.Paragraphs.push_back(std::move(current));
  subtitle.Renumber(1);
}

void WebVTT::StripNativeFormatting(Subtitle& subtitle, SubtitleFormat&) {
  for (const auto& paragraph : subtitle.Paragraphs) {
    for (WStringView name : {u"v", u"rt", u"ruby", u"c", u"span"}) removeTags(paragraph->Text, name);
  }
}

}  // namespace mova
