#include "formats/line/ClockLines.h"

#include "text/Strings.h"

namespace mova {
namespace {

bool isClockLine(WStringView line) {
  if (line.size() < 23) return false;  // as most lines are
  line = trimView(line);
  if (line.size() < 23 || line[2] != u':') return false;
  // The unit behind the first time: two digits follow a ":", three a ".".
  const char16_t gap = line[8] == u':' ? line[11] : line[8] == u'.' ? line[12] : u'\0';
  return gap == u' ' || gap == u'\t';
}

bool anyClockLine(const Lines& lines) {
  // Some of the lists pass over a byte order mark in front of the first line.
  if (isClockLine(stripByteOrderMark(lines.AtOrEmpty(0)))) return true;
  for (size_t i = 1; i < lines.size(); ++i) {
    if (isClockLine(lines[i])) return true;
  }
  return false;
}

}  // namespace

bool holdClockLines(const Lines& lines) {
  return lines.Derived<&anyClockLine>();
}

}  // namespace mova
