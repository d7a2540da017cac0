#include "formats/line/SubRip.h"

#include <algorithm>
#include <utility>

#include "model/Arithmetic.h"
#include "movautil/MovaUtil.h"
#include "text/Regex.h"
#include "text/Strings.h"

namespace mova {
namespace {

// In the brackets a backslash is an ordinary character: [ \t\n\r] holds a blank, a backslash, "t", "n" and "r", and no
// tab or line end, on purpose.
const Regex& subRipTimeLine() {
  static const Regex regex =
      createRegex(uR"(^-?\d+:-?\d+:-?\d+[:,]-?\d+[ \t\n\r]*-->[ \t\n\r]*-?\d+:-?\d+:-?\d+[:,]-?\d+$)");
  return regex;
}

const Regex& subRipStrictTimeLine() {
  static const Regex regex = createRegex(uR"(^\d+:\d+:\d+,\d+\s*-->\s*\d+:\d+:\d+,\d+$)");
  return regex;
}

/// "00:00:00", "," and "000", with any digits, and any of `separators` before the milliseconds.
bool isPlainTime(const char16_t* units, WStringView separators) {
  for (size_t digit : {0, 1, 3, 4, 6, 7, 9, 10, 11}) {
    if (!isDigit(units[digit])) return false;
  }
  return units[2] == u':' && units[5] == u':' && separators.find(units[8]) != WStringView::npos;
}

/// "00:00:00,000 --> 00:00:00,000". Nearly all time lines look like this, and the slow ways give the same result for
/// them.
bool hasPlainTimeShape(WStringView line, WStringView separators) {
  return line.size() == 29 && line.substr(12, 5) == u" --> " && isPlainTime(line.data(), separators) &&
         isPlainTime(line.data() + 17, separators);
}

/// Whether the line matches SubRipTimeLine. A match begins with a digit or "-", ends in a digit and holds an arrow,
/// which most lines don't.
bool isTimeLine(WStringView line) {
  if (hasPlainTimeShape(line, u",:")) return true;
  line = cText(line);
  if (line.empty() || (!isDigit(line.front()) && line.front() != u'-') || !isDigit(line.back())) return false;
  return line.find(u"-->") != WStringView::npos && subRipTimeLine().Matches(line);
}

/// Brings the many ways to write a time line to one, step by step; the order of the steps matters.
WString normalizedTimeLine(WStringView text) {
  WString line(text);
  for (WStringView comma : {u"\u00D8\u0152", u"\u00EF\u0178\u02C6", u"\u00C2\u00A1"}) {  // mis-decoded commas
    replaceAllInPlace(line, comma, u",");
  }
  for (WStringView arrow : {u" -> ", u" - > ", u" ->> ", u" -- > ", u" - -> ", u" -->> ", u" ---> "}) {
    replaceAllInPlace(line, arrow, u" --> ");
  }
  if (line.size() > 30 && line[29] == u' ') line.resize(29);  // screen coordinates behind the times
  replaceAllInPlace(line, u" ", u"");
  replaceAllInPlace(line, u"-->", u" --> ");
  line = trim(line);
  replaceAllInPlace(line, u".", u":");
  const auto makeComma = [&line](size_t position) {
    if (line[position] == u':' || line[position] == u';') line[position] = u',';
  };
  if (line.size() >= 29) makeComma(8);
  if (line.size() == 29 || line.size() == 30) makeComma(25);
  return line;
}

/// Four pieces from `first` on. A "-" before the hours makes a positive time negative.
TimeCode timeFromPieces(const std::vector<WStringView>& pieces, size_t first) {
  int32_t time = partsToMilliseconds(wideToInt(pieces[first]), wideToInt(pieces[first + 1]),
                                     wideToInt(pieces[first + 2]), wideToInt(pieces[first + 3]));
  if (pieces[first].starts_with(u'-') && time > 0) time = -time;
  return TimeCode{static_cast<double>(time)};
}

TimeCode timeFromPlainShape(WStringView text) {
  const auto number = [text](size_t position, size_t length) {
    int32_t value = 0;
    for (char16_t digit : text.substr(position, length)) value = value * 10 + (digit - u'0');
    return value;
  };
  return TimeCode{static_cast<double>(partsToMilliseconds(number(0, 2), number(3, 2), number(6, 2), number(9, 3)))};
}

/// The two times of a time line, or false.
bool readTimeLine(WStringView text, TimeCode& start, TimeCode& end) {
  if (hasPlainTimeShape(text, u",:.;")) {
    start = timeFromPlainShape(text);
    end = timeFromPlainShape(text.substr(17));
    return true;
  }
  if (text.find(u'>') == WStringView::npos) return false;  // no arrow comes of it
  WString line = normalizedTimeLine(text);
  if (!isTimeLine(line) && !subRipStrictTimeLine().Matches(line)) return false;
  replaceAllInPlace(line, u"-->", u":");
  replaceAllInPlace(line, u" ", u"");
  const std::vector<WStringView> pieces = splitViews(line, u":,", false);
  if (pieces.size() < 8) return false;
  start = timeFromPieces(pieces, 0);
  end = timeFromPieces(pieces, 4);
  return true;
}

}  // namespace

bool SubRip::Recognizes(const Lines& lines, const WString& fileName) {
  if (!lines.empty() && equalsIgnoreCase(lines[0].substr(0, 6), u"WEBVTT")) return false;
  return LoadsMoreThanErrors(lines, fileName);
}

WString SubRip::WriteText(const Subtitle& subtitle, const WString&) {
  WString result;
  result.reserve(subtitle.Paragraphs.size() * 112);  // Enough for most; asking each text for its size costs more.
  for (const auto& paragraph : subtitle.Paragraphs) {
    appendNumber(result, paragraph->Number);
    result += u"\r\n";
    paragraph->StartTime.AppendTo(result);
    result += u" --> ";
    paragraph->EndTime.AppendTo(result);
    result += u"\r\n";
    const WStringView text = cText(paragraph->Text);
    if (findText(text, u"\r\n\r\n") == WStringView::npos) {
      result += text;
    } else {
      result += replaceAll(replaceAll(text, u"\r\n\r\n", u"\r\n"), u"\r\n\r\n", u"\r\n");
    }
    result += u"\r\n\r\n";
  }
  result.resize(trimEndView(result).size());  // Every block begins with its number: nothing is to be trimmed in front.
  result += u"\r\n\r\n";
  return result;
}

void SubRip::LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString&) {
  _paragraph = std::make_unique<Paragraph>();
  _expecting = ExpectingNumber;
  _hasBlankLines = false;
  _hasZeros = lines.Contains(u'\0');
  ErrorCount = 0;
  subtitle.Paragraphs.clear();
  bool renumber = false;

  for (size_t i = 0; i < lines.size(); ++i) {
    const WStringView line = trimView(trimEndView(lines[i]), u'\x7F');
    // A block without its number line. The first block of a file without a byte order mark is always one.
    if (_expecting == ExpectingNumber && isTimeLine(line)) {
      _expecting = ExpectingTimeCodes;
      renumber = true;
    }
    ReadLine(subtitle, line, lines.AtOrEmpty(i + 1), lines.AtOrEmpty(i + 2));
  }
  // A last block without a blank line behind it.
  if (_paragraph->EndTime.TotalMilliseconds > _paragraph->StartTime.TotalMilliseconds) {
    subtitle.Paragraphs.push_back(std::move(_paragraph));
  }

  if (_hasBlankLines) {
    for (auto& paragraph : subtitle.Paragraphs) replaceAllInPlace(paragraph->Text, u"\r\n\r\n", u"\r\n");
  }
  if (renumber) subtitle.Renumber(1);
  if (_lastParagraph && _lastParagraph != &_lastOfEarlierLoad) {
    _lastOfEarlierLoad = *_lastParagraph;
    _lastParagraph = &_lastOfEarlierLoad;
  }
}

void SubRip::ReadLine(Subtitle& subtitle, WStringView line, WStringView next, WStringView nextNext) {
  switch (_expecting) {
    case ExpectingNumber:
      return ReadNumber(line, nextNext);
    case ExpectingTimeCodes:
      return ReadTimeCodes(line);
    case ExpectingText:
      return trimView(line).empty() ? ReadBlankLineOfText(subtitle, line, next) : ReadTextLine(line);
  }
}

void SubRip::ReadNumber(WStringView line, WStringView nextNext) {
  // An empty line has no unit that is not a digit and counts as number 0, on purpose.
  if (isAllDigits(line)) {
    _paragraph->Number = wideToInt(line);
    _expecting = ExpectingTimeCodes;
    return;
  }
  const WStringView trimmed = trimView(line);
  if (trimmed.empty()) return;
  if (!_lastParagraph) {
    ++ErrorCount;
    return;
  }
  // Text of the block before, behind a blank line, if the number that follows that block comes next.
  if (!nextNext.empty() && nextNext == intToWStr(wrappingAdd(_lastParagraph->Number, 1), u"%d")) {
    WString& text = _lastParagraph->Text;
    text += u"\r\n";
    text += trimmed;
    _hasBlankLines = true;
    text.erase(0, text.size() - trimStartView(text).size());
  }
}

void SubRip::ReadTimeCodes(WStringView line) {
  if (readTimeLine(line, _paragraph->StartTime, _paragraph->EndTime)) {
    _paragraph->Text.clear();
    _expecting = ExpectingText;
  } else if (!trimView(line).empty()) {
    ++ErrorCount;
    _expecting = ExpectingNumber;
  }
}

void SubRip::ReadTextLine(WStringView line) {
  WString& text = _paragraph->Text;
  if (text.empty()) {
    text.reserve(2 * line.size() + 8);  // Most captions have two lines.
  } else {
    text += u"\r\n";
  }
  const size_t begin = text.size();
  text += line;
  if (_hasZeros) std::replace(text.begin() + static_cast<ptrdiff_t>(begin), text.end(), u'\0', u' ');
  text.resize(begin + trimEndView(WStringView(text).substr(begin)).size());
  if (text.size() == begin) _hasBlankLines = true;  // a line of zero units
}

void SubRip::ReadBlankLineOfText(Subtitle& subtitle, WStringView line, WStringView next) {
  const bool blockFollows = (!next.empty() && isAllDigits(next)) || isTimeLine(next);
  WString& text = _paragraph->Text;
  if (!trimView(next).empty() && !blockFollows) {  // A blank line within the text.
    if (!text.empty()) text += u"\r\n";
    _hasBlankLines = true;
    return;
  }
  if (!line.empty() || !text.empty() || blockFollows) {
    _lastParagraph = subtitle.Paragraphs.emplace_back(std::exchange(_paragraph, std::make_unique<Paragraph>())).get();
    _expecting = ExpectingNumber;
  }
}

}  // namespace mova
