/// Made-up programmes of any length for the benchmarks.
#pragma once

#include "model/Subtitle.h"

namespace mova {

/// Captions of two lines each, one every two and a half seconds; some in italics, some with accents.
Subtitle makeProgramme(int captions);

/// A format by its name.
std::unique_ptr<SubtitleFormat> formatNamed(WStringView name);

/// The file that the programme becomes in that format. Text has a UTF-8 mark in front, without which its first line
/// would not be read; a binary file holds as many captions as its size may have.
std::string makeFile(WStringView format, int captions);

}  // namespace mova
