/// What the lists of DVD authoring share. A line with times opens a caption, any other line adds to its text.
#pragma once

#include <cstddef>
#include <cstdint>

#include "model/Lines.h"
#include "model/Subtitle.h"

namespace mova {

/// The caption that was opened last, which takes further lines of text.
class OpenCaption {
 public:
  void Open(Paragraph& paragraph);
  /// Adds a line of text, if a caption is open and holds fewer than five lines.
  bool AddLine(WStringView line);

 private:
  Paragraph* paragraph_ = nullptr;
  size_t lineBreaks_ = 0;  ///< Counted when the text changes: a long text would cost too much at every line refused.
};

/// How a list whose captions begin with "start end text" on one line writes its times.
struct TimeLineSyntax {
  bool StripsMark;  ///< Whether a byte order mark at the start of the first line is taken off.
  /// The length of the times at the start of a line, with what sets them apart from the text; 0 if there are none.
  size_t (*HeadLength)(WStringView line);
  /// The fields of such a head with ":" between them.
  WString (*Fields)(WStringView head);
  size_t FieldCount;        ///< A head with fewer or more is an error. The first eight are start and end.
  int32_t LastFieldFactor;  ///< Milliseconds in one unit of the last field of a time.
};

/// Adds the captions of such a list and numbers all from 1. Answers how many lines could not be used.
int32_t loadTimeLines(Subtitle& subtitle, const Lines& lines, const TimeLineSyntax& syntax);

/// Writes such a list. A bare carriage return stands between the lines of a caption, on purpose; readers don't split
/// there, and know "|" instead.
WString writeTimeLines(const Subtitle& subtitle, void (*appendHead)(WString& out, const Paragraph& paragraph));

/// "HH:MM:SS" and hundredths. Hours don't wrap.
void appendHundredths(WString& out, const TimeCode& time);

/// The fields of a head whose times are set apart by tabs. Blanks don't count, a second tab gives an empty field more.
WString fieldsBetweenTabs(WStringView head);

/// The end of every list: white space goes, three line ends follow.
WString& endList(WString& list);

}  // namespace mova
