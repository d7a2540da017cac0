#include "formats/line/Csv.h"

#include <charconv>
#include <iterator>
#include <limits>

#include "formats/line/CsvRecords.h"
#include "movautil/MovaUtil.h"
#include "text/Strings.h"

namespace mova {
namespace {

constexpr char16_t separator = u';';
constexpr size_t columns = 4;

/// Of three numbers that may stand in quotes, each with a separator behind it: ^"?\d+"?;"?\d+"?;"?\d+"?;
size_t headLength(WStringView line) {
  size_t position = 0;
  const auto skip = [line, &position](char16_t unit) {
    const bool isThere = position < line.size() && line[position] == unit;
    position += isThere;
    return isThere;
  };
  for (size_t column = 1; column < columns; ++column) {
    skip(u'"');
    const size_t number = position;
    while (position < line.size() && isDigit(line[position])) ++position;
    if (position == number) return 0;
    skip(u'"');
    if (!skip(separator)) return 0;
  }
  return position;
}

/// A field without the quotes around it; two quotes within it are one.
WString unquoted(WStringView field) {
  if (field.size() >= 2 && field.starts_with(u'"')) field.remove_prefix(1);
  if (field.ends_with(u'"')) field.remove_suffix(1);
  return replaceAll(field, u"\"\"", u"\"");
}

/// Milliseconds without decimals; a half goes to the even neighbour.
void appendMilliseconds(WString& out, const TimeCode& time) {
  char text[std::numeric_limits<double>::max_exponent10 + 3];
  const auto result =
      std::to_chars(std::begin(text), std::end(text), time.TotalMilliseconds, std::chars_format::fixed, 0);
  out.append(text, result.ptr);
}

}  // namespace

bool Csv::Recognizes(const Lines& lines, const WString&) {
  // Every head has separators: without one there is no record.
  return lines.Contains(separator) && hasMoreCsvRecords(lines, headLength);
}

WString Csv::WriteText(const Subtitle& subtitle, const WString&) {
  return writeNumberedCsv(subtitle, u"Number;Start time in milliseconds;End time in milliseconds;\"Text\"", separator,
                          appendMilliseconds);
}

void Csv::LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString&) {
  ErrorCount = 0;
  Paragraph* current = nullptr;
  bool inQuote = false;

  for (size_t i = 0; i < lines.size(); ++i) {
    const WStringView line = lines[i];
    if (headLength(line) > 0) {
      const std::vector<WStringView> pieces = splitViews(line, WStringView(&separator, 1), true);
      if (pieces.size() != columns) continue;  // No error, and a text that is open stays open.
      const double start = wideToInt(unquoted(pieces[1]));
      const double end = wideToInt(unquoted(pieces[2]));
      current = &subtitle.Append({unquoted(pieces[3]), start, end});
      inQuote = opensCsvText(pieces[3]);
    } else if (inQuote) {
      WString& text = current->Text;
      if (text.size() < csvTextLimit) {
        text += u"\r\n";
        text += trimView(trimEndView(line, u'"'));
      }
      inQuote = !closesCsvText(line);
    } else {
      ++ErrorCount;
    }
  }
  subtitle.Renumber(1);
}

}  // namespace mova
