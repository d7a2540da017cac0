/// Timed Text in the draft vocabulary of April 2006: plain text with line breaks, always written as a new document.
#pragma once

#include "formats/SubtitleFormat.h"

namespace mova {

class TimedText200604 : public SubtitleFormat {
 public:
  WString Extension() const override { return u".dfxp"; }
  WString Name() const override { return u"TT 2006-04 .dfxp"; }

  bool Recognizes(const Lines& lines, const WString& fileName) override;
  /// The title is not used.
  WString WriteText(const Subtitle& subtitle, const WString& title) override;
  /// Times whose fractions are all below 100 milliseconds are taken to count hundredths.
  void LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString& fileName) override;
};

/// "HH:MM:SS.mmm"; hours are not wrapped.
WString timeToClockText(const TimeCode& time);

}  // namespace mova
