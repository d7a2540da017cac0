/// Swift interchange, version 2: blocks of "#" lines, of which three hold times, above the text of a caption.
#pragma once

#include "formats/SubtitleFormat.h"

namespace mova {

class SwiftInterchange2 : public SubtitleFormat {
 public:
  WString Extension() const override { return u".sif"; }
  WString Name() const override { return u"Swift V2"; }

  /// Refuses rich text, else the usual trial.
  bool Recognizes(const Lines& lines, const WString& fileName) override;
  /// The header ends in a sample, which bears the number 1; the captions follow from 2 on, each in one row. The title
  /// names the video file.
  WString WriteText(const Subtitle& subtitle, const WString& title) override;
  /// The first block counts as the header's sample and is left out, so the numbers begin with 2, on purpose. A text of
  /// more than 500 units that goes on is ten errors and ends the reading.
  void LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString& fileName) override;
};

}  // namespace mova
