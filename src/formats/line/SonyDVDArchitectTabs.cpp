#include "formats/line/SonyDVDArchitectTabs.h"

#include "formats/line/ClockLines.h"
#include "formats/line/SonyDVDArchitectList.h"
#include "text/Shape.h"

namespace mova {
namespace {

/// As ^\d\d:\d\d:\d\d:\d\d[ \t]+\d\d:\d\d:\d\d:\d\d[ \t]+ matches.
size_t headLength(WStringView line) {
  constexpr WStringView time = u"00:00:00:00";
  constexpr WStringView gap = u" \t";
  ShapeWalk walk(line);
  const bool matches = walk.Shape(time) && walk.Run(gap) && walk.Shape(time) && walk.Run(gap);
  return matches ? walk.Position() : 0;
}

void appendHead(WString& out, const Paragraph& paragraph) {
  appendHundredths(out, paragraph.StartTime);
  out += u'\t';
  appendHundredths(out, paragraph.EndTime);
  out += u'\t';
}

}  // namespace

bool SonyDVDArchitectTabs::Recognizes(const Lines& lines, const WString& fileName) {
  return holdClockLines(lines) && LoadsMoreThanErrors(lines, fileName);
}

WString SonyDVDArchitectTabs::WriteText(const Subtitle& subtitle, const WString&) {
  return writeTimeLines(subtitle, appendHead);
}

void SonyDVDArchitectTabs::LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString&) {
  ErrorCount = loadTimeLines(subtitle, lines,
                             {.StripsMark = false,
                              .HeadLength = headLength,
                              .Fields = fieldsBetweenTabs,
                              .FieldCount = 8,
                              .LastFieldFactor = 10});
}

}  // namespace mova
