/// What the CSV formats share. A record begins with a head, which is the columns before the text; the quoted text may
/// run over several lines.
#pragma once

#include <cstddef>
#include <limits>

#include "model/Lines.h"
#include "model/Subtitle.h"
#include "movautil/WideString.h"

namespace mova {

/// The length of the head, last separator included, with which a line begins; 0 if it begins with none.
using CsvHeadLength = size_t (*)(WStringView line);

/// Whether more lines begin with a head than don't. The line behind a head with a quoted text, and blank lines, don't
/// count. `missLimit` lines without a head are too many in any case.
bool hasMoreCsvRecords(const Lines& lines, CsvHeadLength headLength,
                       size_t missLimit = std::numeric_limits<size_t>::max());

/// Two times as columns.
inline constexpr WStringView csvTimesShape = u"00:00:00:00,00:00:00:00,";
/// The times of a text that begins with this shape.
void readCsvTimes(WStringView text, TimeCode& start, TimeCode& end);

/// From this length on a text takes no more lines.
inline constexpr size_t csvTextLimit = 300;

/// Whether the text of a record goes on in the next line.
bool opensCsvText(WStringView field);
/// Whether the text ends in this line.
bool closesCsvText(WStringView line);

/// The header, and for each paragraph the number, both times and the text in quotes. Lines and records end in a line
/// feed; a quote within a text is not doubled, on purpose.
WString writeNumberedCsv(const Subtitle& subtitle, WStringView header, char16_t separator,
                         void (*appendTime)(WString& out, const TimeCode& time));

}  // namespace mova
