#include "formats/line/WebVTT.h"

#include <utility>

#include "model/Arithmetic.h"
#include "movautil/MovaUtil.h"
#include "text/Regex.h"
#include "text/Strings.h"

namespace mova {
namespace {

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

const Regex& vttShortShort() {
  static const Regex regex = createRegex(uR"(^-?\d+:-?\d+\.-?\d+\s*-->\s*-?\d+:-?\d+\.-?\d+)");
  return regex;
}

const Regex& vttShortLong() {
  static const Regex regex = createRegex(uR"(^-?\d+:-?\d+\.-?\d+\s*-->\s*-?\d+:-?\d+:-?\d+\.-?\d+)");
  return regex;
}

const Regex& vttLongLong() {
  static const Regex regex = createRegex(uR"(^-?\d+:-?\d+:-?\d+\.-?\d+\s*-->\s*-?\d+:-?\d+:-?\d+\.-?\d+)");
  return regex;
}

constexpr WStringView plainLong = u"00:00:00.000";
constexpr WStringView plainShort = u"00:00.000";
constexpr WStringView plainArrow = u" --> ";

/// Whether the text begins with such a time, of any digits.
bool beginsWithTime(WStringView text, WStringView shape) {
  if (text.size() < shape.size()) return false;
  for (size_t i = 0; i < shape.size(); ++i) {
    if (shape[i] == u'0' ? !isDigit(text[i]) : text[i] != shape[i]) return false;
  }
  return true;
}

TimeCode timeOfShape(WStringView text, WStringView shape) {
  int32_t hours = 0;
  if (shape == plainLong) {
    hours = wideToInt(text.substr(0, 2));
    text.remove_prefix(3);
  }
  return TimeCode{static_cast<double>(partsToMilliseconds(hours, wideToInt(text.substr(0, 2)),
                                                          wideToInt(text.substr(3, 2)), wideToInt(text.substr(6, 3))))};
}

/// A cue head with two times of one shape and no digit behind them: nearly all look like this, and the slow way gives
/// the same result for them.
bool readPlainCueHead(WStringView line, WStringView shape, TimeCode& start, TimeCode& end) {
  if (!beginsWithTime(line, shape) || !line.substr(shape.size()).starts_with(plainArrow)) return false;
  const WStringView second = line.substr(shape.size() + plainArrow.size());
  if (!beginsWithTime(second, shape)) return false;
  if (second.size() > shape.size() && isDigit(second[shape.size()])) return false;
  start = timeOfShape(line, shape);
  end = timeOfShape(second, shape);
  return true;
}

/// Only the first four pieces count; cue settings come behind them. A sign applies to its own piece.
TimeCode readTime(WStringView text) {
  const std::vector<WStringView> pieces = splitViews(trimView(text), u":. ", false);
  if (pieces.size() < 4) return {};
  return TimeCode{static_cast<double>(
      partsToMilliseconds(wideToInt(pieces[0]), wideToInt(pieces[1]), wideToInt(pieces[2]), wideToInt(pieces[3])))};
}

/// The times of a cue head, or false for any other line, which is a trimmed one.
bool readCueHead(WStringView line, TimeCode& start, TimeCode& end) {
  if (line.empty() || (!isDigit(line.front()) && line.front() != u'-')) return false;  // as every pattern begins
  if (readPlainCueHead(line, plainLong, start, end) || readPlainCueHead(line, plainShort, start, end)) return true;
  if (findText(line, u"-->") == WStringView::npos) return false;

  WString head(line);
  if (vttShortLong().Matches(head)) head.insert(0, u"00:");
  if (vttShortShort().Matches(head)) {
    head.insert(0, u"00:");
    replaceAllInPlace(head, u"--> ", u"--> 00:");  // An arrow without a blank behind it makes no cue head, on purpose.
  }
  if (!vttLongLong().Matches(head)) return false;
  const std::vector<WStringView> pieces = splitViews(replaceAllInPlace(head, u"-->", u"@"), u"@", true);
  start = readTime(pieces[0]);
  end = readTime(pieces[1]);
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
    result += plainArrow;
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
