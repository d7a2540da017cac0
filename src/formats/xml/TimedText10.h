/// Timed Text 1.0: W3C Timed Text (TTML) in its final namespace. A document that was read is kept whole and written
/// again with new paragraphs, so that its styles, layout and metadata survive.
#pragma once

#include "formats/SubtitleFormat.h"

namespace mova {

class TimedText10 : public SubtitleFormat {
 public:
  WString Extension() const override { return u".xml"; }
  WString Name() const override { return u"Timed Text 1.0"; }
  std::vector<WString> ExtraExtensions() const override { return {u".itt", u".dfxp"}; }
  bool SupportsStyles() const override { return true; }

  bool Recognizes(const Lines& lines, const WString& fileName) override;
  /// The title is not used.
  WString WriteText(const Subtitle& subtitle, const WString& title) override;
  /// Sets the process-wide `FrameRate` to the document's, and resets `timedTextTimeFormat`. Paragraphs in a row whose
  /// starts have the same milliseconds within their seconds become one, on purpose.
  void LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString& fileName) override;
};

/// "style / language", with "-" for what is empty.
WString extraFromStyleAndLanguage(const Paragraph& paragraph);

/// The languages of the paragraphs in lower case and trimmed, in order of first use.
std::vector<WString> getUsedLanguages(const Subtitle& subtitle);

/// Whether the header is that of a Sub Station Alpha script.
bool isScriptHeader(WStringView header);

}  // namespace mova
