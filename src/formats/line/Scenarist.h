/// Scenarist: one line for each caption, of number, start, end and lines of text, set apart by tabs; times in frames.
#pragma once

#include "formats/SubtitleFormat.h"

namespace mova {

class Scenarist : public SubtitleFormat {
 public:
  WString Extension() const override { return u".txt"; }
  WString Name() const override { return u"Scenarist"; }

  bool Recognizes(const Lines& lines, const WString& fileName) override;
  /// Numbers the captions from 1, whatever their own numbers are. The title is not used.
  WString WriteText(const Subtitle& subtitle, const WString& title) override;
  /// Every line that is no caption counts as an error, an empty one too, and so does a caption without text.
  void LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString& fileName) override;
};

}  // namespace mova
