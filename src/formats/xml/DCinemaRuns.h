/// Turns the inline tags of a caption into the font runs of a digital cinema subtitle reel.
#pragma once

#include <vector>

#include "movautil/WideString.h"

namespace mova {

/// One for each caption: what one line leaves open stays open for the next.
class DCinemaRuns {
 public:
  /// The line with an element "dcst:Font" for each run that is italic or coloured; the rest stays as it stands.
  WString MarkupOf(WStringView line);

 private:
  void FlushPlain();
  void CloseRun(WStringView attributes);
  void FinishLine();
  void RecolorFirstRun();
  WString ColorAttribute() const;
  void PopColor();

  // Each takes the line from its tag on, and gives the number of units that are done with.
  size_t CloseItalic(WStringView rest);
  size_t OpenFont(WStringView rest);
  size_t CloseFont(WStringView rest);

  bool italic_ = false;
  int32_t fontDepth_ = 0;        ///< Below zero after an italic run took a "</font>" that was never opened.
  std::vector<WString> colors_;  ///< May hold more than `fontDepth_`: closing an empty run leaves its colour.
  WString pending_;              ///< What stands behind the last tag of the line.
  WString result_;
};

}  // namespace mova
