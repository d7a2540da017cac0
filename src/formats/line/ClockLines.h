/// A look that the lists of time lines share before they try to load a file.
#pragma once

#include "model/Lines.h"

namespace mova {

/// Whether any line, white space around it aside, begins as "00:00:00:00 " or "00:00:00.000 " do, with a blank or a
/// tab, and has the 23 units of two such times. A file without one gives none of the formats that ask a paragraph;
/// SubRip's lines have a comma or a third digit there. Made once for all of them.
bool holdClockLines(const Lines& lines);

}  // namespace mova
