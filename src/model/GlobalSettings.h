/// The settings of the running conversion.
#pragma once

#include "mova/mova.h"

namespace mova {

/// Written at the start of each conversion; read by the formats at the moment they need a field. Loaders of Timed Text,
/// D-Cinema and Final Cut Pro Xml overwrite `FrameRate` (and D-Cinema its own group) with what their document states,
/// also while a format is only tried. Not guarded: conversions of one process don't overlap.
extern MOVASettings GlobalSettings;

}  // namespace mova
