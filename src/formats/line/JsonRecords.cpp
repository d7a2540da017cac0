#include "formats/line/JsonRecords.h"

#include <algorithm>

#include "movautil/MovaUtil.h"
#include "text/Strings.h"

namespace mova {
namespace {

// --- The file

/// A look ahead of joining the lines of a file that is something else.
bool mayHoldRecords(const Lines& lines) {
  for (size_t i = 0; i < lines.size(); ++i) {
    const WStringView line = trimStartView(lines[i]);
    if (line.empty()) continue;
    return line[0] == u'[' || line[0] == u'\u00EF' || line[0] == u'\u00FF';  // the array or a byte order mark
  }
  return false;
}

WString joinedText(const Lines& lines) {
  WString text = stripByteOrderMark(lines.Joined(u""));
  text.erase(0, text.size() - trimStartView(text).size());
  return text;
}

bool isRecordEnd(WStringView text, size_t position) {
  const char16_t unit = text[position];
  return unit == u'\r' || unit == u'\n' || (unit == u'}' && text.substr(position, 3) == u"},{");
}

// --- Values

WString escapeSequence(int number) {
  constexpr WStringView digits = u"0123456789abcdef";
  return WString(u"\\u00") + digits[static_cast<size_t>(number / 16)] + digits[static_cast<size_t>(number % 16)];
}

/// The numbers whose escapes are replaced; any other stays.
constexpr bool isReplacedNumber(int number) {
  return (number >= 33 && number <= 199) || number == 233;
}

/// The number of two lower-case hexadecimal digits, or -1.
int hexNumber(WStringView text) {
  constexpr WStringView digits = u"0123456789abcdef";
  if (text.size() < 2) return -1;
  const size_t high = digits.find(text[0]);
  const size_t low = digits.find(text[1]);
  return high == WStringView::npos || low == WStringView::npos ? -1 : static_cast<int>(high * 16 + low);
}

/// Replaces the escapes number by number, so that the digits of one may complete another.
WString withNumbersOneByOne(WStringView text) {
  WString result(text);
  for (int number = 0; number < 256; ++number) {
    if (isReplacedNumber(number)) replaceAllInPlace(result, escapeSequence(number), intToWStr(number, u"%d"));
  }
  return result;
}

/// Every escape of a replaced number becomes the number in decimal digits, on purpose; upper-case digits are left.
WString withNumbersForEscapes(WStringView text) {
  constexpr WStringView escape = u"\\u00";
  WString result;
  size_t position = 0;
  for (size_t hit; (hit = findText(text, escape, position)) != WStringView::npos;) {
    const WStringView behind = text.substr(hit + escape.size());
    // Cut off by another escape, whose digits may complete it.
    if (behind.substr(0, 1 + escape.size()).find(escape) != WStringView::npos) return withNumbersOneByOne(text);
    result += text.substr(position, hit - position);
    const int number = hexNumber(behind);
    if (isReplacedNumber(number)) {
      appendNumber(result, number);
      position = hit + escape.size() + 2;
    } else {
      result += escape;
      position = hit + escape.size();
    }
  }
  result += text.substr(position);
  return result;
}

/// Where the value ends at whose opening quote the text begins: at the first `"}` or the first `",` whose quote has no
/// backslash in front. A `",` at the very start hides all others, on purpose.
size_t quotedValueEnd(WStringView text) {
  const bool commaCounts = !text.starts_with(u"\",");
  for (size_t quote = 0; (quote = findText(text, u"\"", quote)) != WStringView::npos; ++quote) {
    if (quote > 0 && text[quote - 1] == u'\\') continue;
    const WStringView behind = text.substr(quote + 1);
    if (behind.starts_with(u'}') || (commaCounts && behind.starts_with(u','))) return quote;
  }
  return WStringView::npos;
}

WString quotedValue(WStringView text) {
  const size_t end = quotedValueEnd(text);
  if (end == WStringView::npos || end == 0) return WString();
  WString value(text.substr(1, end - 1));
  if (value.find_first_of(u"\\@") == WString::npos) return value;
  if (findText(value, u"\\u00") != WString::npos) value = withNumbersForEscapes(value);
  // By way of a stand-in, which becomes a quote also where the text itself holds it, on purpose.
  replaceAllInPlace(value, u"\\\"", u"@__1");
  replaceAllInPlace(value, u"@__1", u"\"");
  return value;
}

bool isPlainNumber(WStringView value) {
  return value.find_first_not_of(u"0123456789.") == WStringView::npos;
}

/// Appends the caption of a record, or answers false.
bool readRecord(Subtitle& subtitle, WStringView record, const JsonLayout& layout) {
  const WString startValue = readJsonTag(record, layout.StartKey);
  const WString endValue = readJsonTag(record, layout.EndKey);
  const WString textValue = readJsonTag(record, layout.TextKey);
  if (startValue.empty() || endValue.empty() || textValue.empty()) return false;
  if (!isPlainNumber(startValue) || !isPlainNumber(endValue)) return false;
  const double start = wideToDouble(startValue) * layout.MillisecondsPerUnit;
  const double end = wideToDouble(endValue) * layout.MillisecondsPerUnit;
  subtitle.Append({jsonDecodeText(textValue), start, layout.EndIsDuration ? start + end : end});
  return true;
}

}  // namespace

int32_t loadJsonRecords(Subtitle& subtitle, const Lines& lines, const JsonLayout& layout) {
  if (!mayHoldRecords(lines)) return 0;
  const WString& joined = lines.Derived<joinedText>();
  const WStringView text = joined;
  if (!text.starts_with(layout.FileStart)) return 0;

  int32_t errors = 0;
  WString record;
  for (size_t begin = 0; begin < text.size();) {
    size_t end = begin;
    while (end < text.size() && !isRecordEnd(text, end)) ++end;
    if (end > begin) {
      record = trimView(text.substr(begin, end - begin));
      record += u'}';
      if (!readRecord(subtitle, record, layout)) ++errors;
    }
    begin = end + (end < text.size() && text[end] == u'}' ? 3 : 1);
  }
  subtitle.Renumber(1);
  return errors;
}

WString writeJsonRecords(const Subtitle& subtitle, const JsonLayout& layout) {
  const auto appendKey = [](WString& out, WStringView key) { out.append(u"\"").append(key).append(u"\":"); };
  const auto appendTime = [&](WString& out, WStringView key, const TimeCode& time) {
    appendKey(out, key);
    out += doubleToWStr(time.TotalMilliseconds / layout.MillisecondsPerUnit, u"%f");
    out += u',';
  };
  WString result = u"[";
  result.reserve(subtitle.Paragraphs.size() * 160);  // enough for most
  for (const auto& paragraph : subtitle.Paragraphs) {
    if (result.size() > 1) result += u',';
    result += u'{';
    appendTime(result, layout.StartKey, paragraph->StartTime);
    appendTime(result, layout.EndKey, paragraph->EndTime);
    appendKey(result, layout.TextKey);
    result += u'"';
    result += jsonEscapeText(paragraph->Text);
    result += uR"("})";
  }
  result += u']';
  return result;
}

WString readJsonTag(WStringView record, WStringView key) {
  size_t begin = findText(record, WString(u"\"").append(key).append(u"\""));
  if (begin == WStringView::npos) begin = findText(record, WString(u"'").append(key).append(u"'"));
  if (begin == WStringView::npos) return WString();
  // The unit behind the key is passed over whatever it is; it should be the colon.
  WStringView text = trimView(record.substr(std::min(begin + key.size() + 3, record.size())));
  text = trimStartView(trimStartView(text, u':'));
  if (text.starts_with(u'"')) return quotedValue(text);
  size_t end = text.find(u',');
  if (end == WStringView::npos) end = text.find(u'}');
  return end == WStringView::npos ? WString() : WString(text.substr(0, end));
}

WString jsonDecodeText(WStringView value) {
  WString text(value);
  for (WStringView lineBreak : {u"<br />", u"<br>", u"<br/>", u"\\n"}) replaceAllInPlace(text, lineBreak, u"\r\n");
  size_t length = 0;
  bool isEscape = false;
  for (char16_t unit : text) {
    isEscape = unit == u'\\' && !isEscape;
    if (!isEscape) text[length++] = unit;
  }
  text.resize(length);
  return text;
}

WString jsonEscapeText(WStringView text) {
  if (text.find_first_of(u"\"\\\n") == WStringView::npos) return WString(text);
  WString escaped;
  escaped.reserve(text.size() + 16);
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == u'"' || text[i] == u'\\') escaped += u'\\';
    if (text[i] == u'\r' && text.substr(i + 1).starts_with(u'\n')) continue;
    if (text[i] == u'\n') {
      escaped += u"<br />";
    } else {
      escaped += text[i];
    }
  }
  return escaped;
}

}  // namespace mova
