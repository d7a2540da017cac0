/// The control codes of Scenarist closed captions: what preamble, indent and mid-row codes mean, and the codes that
/// place a line.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "movautil/WideString.h"
#include "text/Color.h"

namespace mova {

/// What a preamble, indent or mid-row code sets. Readers of captions use `Style` and `Row` only.
struct CaptionCodeInfo {
  enum : int32_t { Italic = 1, Plain = 2, Underlined = 4, ItalicUnderlined = 5 };

  mova::Color Color;
  int32_t Style = Plain;
  int32_t Column = -1;  ///< Indent in columns; -1 for a code that sets no position.
  int32_t Row = -1;     ///< 1 to 15; -1 for a code that sets no position.

  bool operator==(const CaptionCodeInfo&) const = default;
};

struct CaptionCode {
  WString Word;  ///< Four hexadecimal digits in lower case.
  CaptionCodeInfo Info;
};

/// All codes that lookupCaptionCode knows, in order. No word occurs twice.
const std::vector<CaptionCode>& captionCodes();

/// Case of the word is ignored. Codes of CEA-608 that are missing here are missing on purpose: callers take them as
/// text or as line breaks.
std::optional<CaptionCodeInfo> lookupCaptionCode(WStringView word);

/// The code that places a line at a row from 1 to 15 and an indent of 0, 4, 8 up to 28 columns.
WString captionPositionCode(int32_t row, int32_t indent);

/// The code that moves 1, 2 or 3 columns on.
WStringView tabOffsetCode(int32_t columns);

}  // namespace mova
