#include "text/LineBreaking.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include "text/Markup.h"
#include "text/Strings.h"

namespace mova {
namespace {

using Position = std::ptrdiff_t;

constexpr WStringView kLineBreak = u"\r\n";
constexpr char16_t kEnDash = u'\u2013';
constexpr char16_t kEmDash = u'\u2014';

/// How far from the middle a break is looked for.
constexpr Position kSentenceReach = 14;
constexpr Position kGapReach = 24;

Position length(WStringView text) {
  return static_cast<Position>(text.size());
}

/// Whether the unit at the position, which is within the text, is one of the set.
bool isOneOf(WStringView text, Position position, WStringView set) {
  return set.find(text[static_cast<size_t>(position)]) != WStringView::npos;
}

bool isPartOfNumberAt(WStringView text, Position position) {
  return isPartOfNumber(text, static_cast<int32_t>(position));
}

/// Whether there are exactly two lines and the first one, quotation marks apart, ends in an en dash.
bool isInterruptedSpeech(WStringView text) {
  if (findUnit(text, kEnDash) == WStringView::npos || findText(text, kLineBreak) == WStringView::npos) return false;
  const WString plain = replaceAll(removeHtmlTags(text), kLineBreak, u"\n");
  const std::vector<WStringView> lines = splitViews(plain, u"\n", true);
  return lines.size() == 2 && trimEndView(trimEndView(trimEndView(trimView(lines[0]), u'"'), u'\'')).ends_with(kEnDash);
}

bool isDialogueOfEmDashes(WStringView text) {
  const std::vector<WStringView> lines = splitViews(text, u"\r\n", true);
  return lines.size() >= 2 && std::all_of(lines.begin(), lines.end(), [](WStringView line) {
           return trim(removeHtmlTags(line)).starts_with(kEmDash);
         });
}

WString inOneLine(WStringView text) {
  WString line(text);
  for (WStringView seam : {u"</i> \r\n<i>", u"</i>\r\n <i>", u"</i>\r\n<i>"}) replaceAllInPlace(line, seam, u" ");
  replaceAllInPlace(line, kLineBreak, u" ");
  replaceAllInPlace(line, u"\n", u" ");
  replaceAllInPlace(line, u"   ", u" ");
  for (int pass = 0; pass < 3; ++pass) replaceAllInPlace(line, u"  ", u" ");
  return line;
}

bool beginsWithFormattingTag(WStringView text) {
  for (WStringView opening : {u"<font", u"</font", u"<u", u"</u", u"<b", u"</b", u"<i", u"</i"}) {
    if (startsWithIgnoreCase(text, opening)) return true;
  }
  return false;
}

TagMap takeTagsOut(WString& text) {
  TagMap tags;
  const WStringView source = text;
  WString plain;
  plain.reserve(source.size());
  bool canClose = true;
  for (size_t i = 0; i < source.size();) {
    if (canClose && source[i] == u'<' && beginsWithFormattingTag(source.substr(i))) {
      const size_t close = source.find(u'>', i);
      canClose = close != WStringView::npos;
      if (canClose) {
        tags[static_cast<int32_t>(plain.size())] += source.substr(i, close + 1 - i);
        i = close + 1;
        continue;
      }
    }
    plain += source[i++];
  }
  text = std::move(plain);
  return tags;
}

/// Whether there is a dash between blanks at the position, and an upper-case letter behind it.
bool isSpeakerDash(WStringView text, Position dash) {
  if (!isOneOf(text, dash, u"-") || !isOneOf(text, dash + 1, u" ") || !isOneOf(text, dash - 1, u" ")) return false;
  const WStringView speech = trimStartView(text.substr(static_cast<size_t>(dash) + 1));
  return !speech.empty() && isUpper(speech[0]);
}

/// The nearest change of speaker, looked for on both sides of the middle at once.
std::optional<Position> speakerChange(WStringView text, int32_t maximumLength) {
  if (findText(text, u" - ") == WStringView::npos) return std::nullopt;
  const Position middle = length(text) / 2;
  const Position reach = std::min<Position>(Position{maximumLength} / 2 + 5, length(text));
  for (Position j = 0; j <= reach; ++j) {
    const Position forward = middle + j;
    if (forward + 4 < length(text) && isSpeakerDash(text, forward)) return forward;
    // Only on this side the speech before has to end as a sentence, on purpose.
    const Position backward = middle - j;
    if (backward >= 6 && isSpeakerDash(text, backward) && isOneOf(text, backward - 2, u"!?.")) return backward;
  }
  return std::nullopt;
}

std::optional<Position> sentenceEnd(WStringView text) {
  const Position middle = length(text) / 2;
  for (Position j = 0; j <= kSentenceReach; ++j) {
    const Position forward = middle + j;
    const Position backward = middle - j;  // Within the text wherever the next unit forward is.
    if (forward + 1 >= length(text) || forward < 1) continue;
    if (isOneOf(text, forward, u".!?") && !isPartOfNumberAt(text, forward)) {
      // By two at once, on purpose: what the second unit is doesn't count.
      return isOneOf(text, forward + 1, u".!?0123456789") ? forward + 3 : forward + 1;
    }
    if (isOneOf(text, backward, u".!?") && !isPartOfNumberAt(text, backward)) return backward + 1;
  }
  return std::nullopt;
}

/// The nearest gap between words; -1 where only marks stand in front of it.
std::optional<Position> wordGap(WStringView text) {
  const Position middle = length(text) / 2;
  for (Position j = 0; j <= kGapReach; ++j) {
    const Position forward = middle + j;
    const Position backward = middle - j;
    if (forward + 2 >= length(text) || forward < 1) continue;
    if (isOneOf(text, forward, u".!?, ") && !isPartOfNumberAt(text, forward)) {
      if (!isOneOf(text, forward + 1, u" .!?")) return forward;
      return isOneOf(text, forward + 2, u" .!?") ? forward + 2 : forward + 1;
    }
    if (isOneOf(text, backward, u".!?, ") && !isPartOfNumberAt(text, backward)) {
      Position gap = backward;
      for (int step = 0; step < 3 && gap >= 0 && isOneOf(text, gap, u".!?"); ++step) --gap;
      return gap;
    }
  }
  return std::nullopt;
}

/// Whether both lines are short enough, where a blank at the break doesn't count. A first line that is one too long but
/// for that blank is taken whatever the length of the second, on purpose.
bool fits(WStringView text, Position position, int32_t maximumLength) {
  if (position <= maximumLength) return length(text) - position <= maximumLength;
  return position == Position{maximumLength} + 1 && maximumLength < length(text) && isOneOf(text, maximumLength, u" ");
}

}  // namespace

bool isPartOfNumber(WStringView text, int32_t position) {
  return position >= 1 && Position{position} + 2 <= length(text) && isOneOf(text, position, u"(,.)") &&
         isDigit(text[static_cast<size_t>(position) - 1]) && isDigit(text[static_cast<size_t>(position) + 1]);
}

WString reinsertTags(WStringView text, const TagMap& tags) {
  WString result;
  result.reserve(text.size());
  auto next = tags.begin();
  int32_t counted = 0;
  const auto insertTags = [&] {
    if (next != tags.end() && next->first == counted) result += (next++)->second;
  };
  for (char16_t unit : text) {
    if (unit != u'\r' && unit != u'\n') {
      insertTags();
      ++counted;
    }
    result += unit;
  }
  insertTags();
  return result;
}

WString breakLines(WStringView given, int32_t maximumLength, int32_t mergeLimit, WStringView /*language*/) {
  if (given.size() < 3 || isInterruptedSpeech(given)) return WString(given);
  WString text = inOneLine(given);
  if (length(removeAllFormatting(text)) < mergeLimit) return isDialogueOfEmDashes(given) ? WString(given) : text;

  TagMap tags = takeTagsOut(text);
  std::optional<Position> position = speakerChange(text, maximumLength);
  if (!position) position = sentenceEnd(text);
  if (!position || !fits(text, *position, maximumLength)) position = wordGap(text);
  if (!position) {
    // No gap at all: the first line ends in a hyphen. The tags are back in the text before it is broken at what was the
    // middle without them, on purpose.
    position = length(text) / 2;
    text.insert(static_cast<size_t>(std::max<Position>(*position - 1, 0)), kLineBreak);
    text = replaceAll(reinsertTags(text, tags), kLineBreak, u"-");
    tags.clear();
  }
  if (*position >= 0 && *position < length(text) - 2) text.insert(static_cast<size_t>(*position), kLineBreak);
  text = reinsertTags(text, tags);
  replaceAllInPlace(text, u" \r\n", kLineBreak);
  replaceAllInPlace(text, u"\r\n ", kLineBreak);
  return trimEnd(text);
}

WString breakLinesDefault(WStringView text) {
  return breakLines(text, 80, 10, u"");
}

}  // namespace mova
