/// YouTube's annotations: each caption a speech bubble with an anchor at its start and one at its end.
#pragma once

#include "formats/SubtitleFormat.h"

namespace mova {

class YouTubeAnnotations : public SubtitleFormat {
 public:
  WString Extension() const override { return u".xml"; }
  WString Name() const override { return u"YT Annotations"; }

  /// Whether any annotation can be read. Clears `CollectStyles`, which nothing sets again: the load that follows runs
  /// with the fixed styles too, on purpose.
  bool Recognizes(const Lines& lines, const WString& fileName) override;
  WString WriteText(const Subtitle& subtitle, const WString& title) override;
  /// Passes over annotations of other styles, without a text, or without exactly two points in time.
  void LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString& fileName) override;

  /// Whether annotations of every style in the file are read, instead of speech bubbles, popups and anchored ones.
  bool CollectStyles = true;

 protected:
  bool LoadDependsOnLinesOnly() const override { return true; }  // Recognizes always clears `CollectStyles` first.
};

/// "H:MM:SS." and the milliseconds without leading zeros.
WString annotationClock(TimeCode timeCode);

}  // namespace mova
