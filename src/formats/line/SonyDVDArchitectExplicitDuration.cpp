#include "formats/line/SonyDVDArchitectExplicitDuration.h"

#include "formats/FrameTime.h"
#include "formats/line/ClockLines.h"
#include "formats/line/SonyDVDArchitectList.h"
#include "text/Shape.h"

namespace mova {
namespace {

/// As \d\d:\d\d:\d\d\.\d\d\d[ \t]+ matches three times from the start of the line.
size_t headLength(WStringView line) {
  ShapeWalk walk(line);
  for (int time = 0; time < 3; ++time) {
    if (!walk.Shape(u"00:00:00.000") || !walk.Run(u" \t")) return 0;
  }
  return walk.Position();
}

void appendTime(WString& out, const TimeCode& time) {
  const TimeFields fields = time.Fields();
  appendClock(out, fields, u'.', fields.milliseconds, 3);
  out += u'\t';
}

void appendHead(WString& out, const Paragraph& paragraph) {
  appendTime(out, paragraph.StartTime);
  appendTime(out, paragraph.EndTime);
  appendTime(out, {paragraph.EndTime.TotalMilliseconds - paragraph.StartTime.TotalMilliseconds});
}

}  // namespace

bool SonyDVDArchitectExplicitDuration::Recognizes(const Lines& lines, const WString& fileName) {
  return holdClockLines(lines) && LoadsMoreThanErrors(lines, fileName);
}

WString SonyDVDArchitectExplicitDuration::WriteText(const Subtitle& subtitle, const WString&) {
  return writeTimeLines(subtitle, appendHead);
}

void SonyDVDArchitectExplicitDuration::LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString&) {
  // Only the number of fields is looked at, on purpose: two tabs behind the start and none behind the end count the
  // same as one and one, and the fields then stand for other times.
  ErrorCount = loadTimeLines(subtitle, lines,
                             {.StripsMark = true,
                              .HeadLength = headLength,
                              .Fields = fieldsBetweenTabs,
                              .FieldCount = 12,
                              .LastFieldFactor = 1});
}

}  // namespace mova
