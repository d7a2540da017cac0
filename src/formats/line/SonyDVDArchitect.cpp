#include "formats/line/SonyDVDArchitect.h"

#include "formats/line/ClockLines.h"
#include "formats/line/SonyDVDArchitectList.h"
#include "text/Shape.h"
#include "text/Strings.h"

namespace mova {
namespace {

/// As ^\d\d:\d\d:\d\d:\d\d[ ]+-[ ]+\d\d:\d\d:\d\d:\d\d matches.
size_t headLength(WStringView line) {
  constexpr WStringView time = u"00:00:00:00";
  ShapeWalk walk(line);
  const bool matches = walk.Shape(time) && walk.Run(u" ") && walk.Shape(u"-") && walk.Run(u" ") && walk.Shape(time);
  return matches ? walk.Position() : 0;
}

WString fieldsOf(WStringView head) {
  return replaceAll(replaceAll(head, u" - ", u":"), u" ", u"");
}

void appendHead(WString& out, const Paragraph& paragraph) {
  appendHundredths(out, paragraph.StartTime);
  out += u" - ";
  appendHundredths(out, paragraph.EndTime);
  out += u"  \t";
}

}  // namespace

bool SonyDVDArchitect::Recognizes(const Lines& lines, const WString& fileName) {
  return holdClockLines(lines) && LoadsMoreThanErrors(lines, fileName);
}

WString SonyDVDArchitect::WriteText(const Subtitle& subtitle, const WString&) {
  return writeTimeLines(subtitle, appendHead);
}

void SonyDVDArchitect::LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString&) {
  ErrorCount = loadTimeLines(
      subtitle, lines,
      {.StripsMark = true, .HeadLength = headLength, .Fields = fieldsOf, .FieldCount = 8, .LastFieldFactor = 10});
}

}  // namespace mova
