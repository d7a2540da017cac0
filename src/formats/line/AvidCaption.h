/// Avid Caption: a line of start and end in frames above the lines of a caption, between two marker lines.
#pragma once

#include "formats/SubtitleFormat.h"

namespace mova {

class AvidCaption : public SubtitleFormat {
 public:
  WString Extension() const override { return u".txt"; }
  WString Name() const override { return u"Avid Caption"; }

  bool Recognizes(const Lines& lines, const WString& fileName) override;
  /// Line feeds end the header, CR LF the captions and the end, on purpose; tags stay. The title is not used.
  WString WriteText(const Subtitle& subtitle, const WString& title) override;
  /// The first line of a text is kept as it stands, the others are trimmed. Reading ends at the end marker. A marker
  /// that is missing is an error. The captions get no numbers.
  void LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString& fileName) override;
};

}  // namespace mova
