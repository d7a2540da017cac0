/// The texts and hexadecimal codes of Scenarist closed captions.
#pragma once

#include <array>

#include "movautil/WideString.h"

namespace mova {

struct SccCodeRow {
  WStringView Text;  ///< One unit or empty.
  WStringView Code;  ///< Two or four hexadecimal digits as they stand in a file, or empty.
};

/// The code set of CEA-608 as writer and reader use it, with departures that belong to it: letters in the place of
/// marks, texts left empty, codes without parity, transliterations at the end. Where a text or a code occurs more than
/// once the first row counts, so the order matters. A code with upper-case digits is written but never read. The rows
/// from 312 on are empty.
extern const std::array<SccCodeRow, 350> SccCodeTable;

/// The text of the first row with that code, the word being lower-cased before; empty for an unknown code.
/// "92b3", spelled like this, reads as a superscript one, on purpose, and "92B3" as its row says.
WStringView codeToText(WStringView word);

/// The code of the first row with that text; the code of the blank for an unknown unit. It may be empty.
WStringView textToCode(char16_t unit);

}  // namespace mova
