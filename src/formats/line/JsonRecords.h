/// What the JSON formats share. All hold captions as one array of flat objects, and none is read by a JSON parser: the
/// array is cut at "},{", and each value is looked for by its key.
#pragma once

#include <cstdint>

#include "model/Lines.h"
#include "model/Subtitle.h"
#include "movautil/WideString.h"

namespace mova {

/// Where a format differs from the others.
struct JsonLayout {
  WStringView FileStart;  ///< What a file begins with.
  WStringView StartKey;
  WStringView EndKey;
  WStringView TextKey;
  double MillisecondsPerUnit;
  bool EndIsDuration = false;
};

/// Appends the captions of the file and numbers them. Answers how many records lack a value or hold a time that is more
/// than digits and points: negative times and exponents are refused, and so is an empty text.
int32_t loadJsonRecords(Subtitle& subtitle, const Lines& lines, const JsonLayout& layout);

/// The file of a format that writes start, end and text under their keys, in this order. (An end is no duration.)
WString writeJsonRecords(const Subtitle& subtitle, const JsonLayout& layout);

/// The value of a key, which stands in double or else in single quotes. Empty if the key or the end of the value is
/// missing. Of the value's escapes only \" is resolved; \u0021 to \u00c7 and \u00e9 become decimal digits ("233"), on
/// purpose.
WString readJsonTag(WStringView record, WStringView key);

/// A value as the text of a caption: breaks become CR LF, a backslash stands for the unit behind it.
WString jsonDecodeText(WStringView value);

/// The way back: quotes and backslashes get a backslash, line ends become "<br />".
WString jsonEscapeText(WStringView text);

}  // namespace mova
