#include "text/ItalicRepair.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <vector>

#include "text/Markup.h"
#include "text/Strings.h"

namespace mova {
namespace {

constexpr WStringView kOpen = u"<i>";
constexpr WStringView kClose = u"</i>";
constexpr WStringView kLineBreak = u"\r\n";

bool contains(WStringView text, WStringView what) {
  return findText(text, what) != WStringView::npos;
}

WString concat(std::initializer_list<WStringView> parts) {
  WString whole;
  for (WStringView part : parts) whole += part;
  return whole;
}

/// Whether a line break ends right before the position.
bool isBehindLineBreak(WStringView text, size_t position) {
  return text.substr(0, position).ends_with(kLineBreak);
}

void removeItalicTags(WString& text) {
  replaceAllInPlace(text, kOpen, u"");
  replaceAllInPlace(text, kClose, u"");
}

void replaceFirst(WString& text, WStringView what, WStringView with) {
  text.replace(text.find(what), what.size(), with);
}

/// The two lines around the first line break, trimmed.
struct TwoLines {
  explicit TwoLines(WStringView text)
      : First(trim(text.substr(0, text.find(kLineBreak)))),
        Second(trim(text.substr(text.find(kLineBreak) + kLineBreak.size()))) {}
  WString First;
  WString Second;
};

/// Whether there is exactly one line break in the text, and not at its start.
bool hasTwoLines(WStringView text) {
  return countText(text, kLineBreak) == 1 && !text.starts_with(kLineBreak);
}

// --- The spelling of the tags.

WString withRegularTags(WStringView given) {
  // The order of the steps counts, and so does what is missing: "<I>" and "</I>" are left alone.
  WString text(given);
  for (WStringView spelling : {u"< i >", u"< i>", u"<i >", u"< I>", u"<I >"}) {
    replaceAllInPlace(text, spelling, kOpen);
  }
  for (WStringView spelling :
       {u"< / i >", u"< /i>", u"</ i>", u"< /i >", u"</i >", u"</ i >", u"< / i>", u"< /I>", u"</ I>", u"< / I >"}) {
    replaceAllInPlace(text, spelling, kClose);
  }
  replaceAllInPlace(text, u"</i> <i>", u"_@_");
  replaceAllInPlace(text, u" _@_", u"_@_");
  replaceAllInPlace(text, u" _@_ ", u"_@_");
  replaceAllInPlace(text, u"_@_", u" ");
  replaceAllInPlace(text, u"<i/>", contains(text, kOpen) ? kClose : u"");
  replaceAllInPlace(text, u"<i><i>", kOpen);
  replaceAllInPlace(text, u"</i></i>", kClose);
  return text;
}

// --- The cases, by the number of opening and of closing tags.

void repairTwoClosing(WString& text) {
  if (contains(text, u"</i>\r\n") && text.ends_with(kClose)) {
    replaceAllInPlace(text, kClose, u"");
    text = concat({kOpen, text, kClose});
  }
  if (text.starts_with(kClose) && text.ends_with(kClose)) replaceFirst(text, kClose, kOpen);
}

void repairOneClosing(WString& text) {
  const WString plain = removeTagsNamed(text, {u"i", u"b", u"u", u"\\u4056"});
  if (text.ends_with(kClose) && !plain.starts_with(u'-') && !contains(plain, u"\r\n-")) {
    text.insert(0, kOpen);
    return;
  }
  bool opened = false;
  const size_t lineBreak = text.find(kLineBreak);
  if (countText(plain, kLineBreak) == 1 && lineBreak != WString::npos && lineBreak > 0) {
    TwoLines lines(text);
    for (WString* line : {&lines.First, &lines.Second}) {
      if (!line->ends_with(kClose)) continue;
      line->insert(0, kOpen);
      opened = true;
    }
    // The lines stay trimmed even where no tag was put in.
    text = concat({lines.First, kLineBreak, lines.Second});
  }
  if (!opened) replaceAllInPlace(text, kClose, u"");
}

void repairTwoOpeningOneClosing(WString& text) {
  const WString withLineFeeds = replaceAll(text, kLineBreak, u"\n");
  const std::vector<WStringView> lines = splitViews(withLineFeeds, u"\n", true);
  const size_t last = text.rfind(kOpen);
  if (lines.size() == 2 && lines[0].starts_with(kOpen) && lines[0].ends_with(kClose) && lines[1].starts_with(kOpen)) {
    text = trimEnd(text) + WString(kClose);
  } else if (text.size() <= last + 4) {
    // The unit before the tag goes too, on purpose.
    text.resize(last - 1);
    text += kClose;
  } else {
    text.erase(last, kOpen.size());
  }
  if (text.starts_with(kOpen) && text.ends_with(kClose)) replaceAllInPlace(text, u"</i>\r\n<i>", kLineBreak);
}

void repairTwoOpening(WString& text, bool isTwoLines) {
  const size_t last = text.rfind(kOpen);
  if (isTwoLines && isBehindLineBreak(text, last) && text.find(kOpen) < 2) {
    // The second tag is a closing one, on purpose.
    replaceAllInPlace(text, kLineBreak, u"</i>\r\n</i>");
  } else if (text.size() <= last + 4) {
    text.resize(last);
    text += kClose;
  } else {
    text.replace(last, kOpen.size(), kClose);
  }
}

void repairOneOpening(WString& text, bool isTwoLines) {
  if (text.starts_with(kOpen) || (isTwoLines && isBehindLineBreak(text, text.rfind(kOpen)))) {
    text += kClose;
  } else {
    replaceAllInPlace(text, kOpen, u"");
  }
}

void repairOneOpeningTwoClosing(WString& text) {
  for (WStringView start : {u"</i>-<i>-", u"</i>- <i>-", u"</i>- <i> -", u"</i>-<i> -"}) {
    if (text.starts_with(start)) {
      text.erase(0, 5);
      return;
    }
  }
  replaceFirst(text, kClose, u"");
}

void repairOnePair(WString& text) {
  if (text.find(kOpen) < text.find(kClose)) return;
  constexpr WStringView marker = u"___________@";
  replaceAllInPlace(text, kOpen, marker);
  replaceAllInPlace(text, kClose, kOpen);
  replaceAllInPlace(text, marker, kClose);
}

// --- Texts of two lines with two pairs.

bool hasDashBeforeTag(WStringView line) {
  return line.size() >= 11 && line.starts_with(u"- <i>") && line.ends_with(kClose);
}

/// The line with its dialogue dash inside the tag.
WString withDashInTag(WStringView line) {
  return concat({u"<i>- ", line.substr(5)});
}

void joinItalicLines(WString& text) {
  if (!hasTwoLines(text) || text.size() <= text.find(kLineBreak) + 7) return;
  TwoLines lines(text);
  if (hasDashBeforeTag(lines.First)) {
    text = concat({withDashInTag(lines.First), kLineBreak, lines.Second});
    lines = TwoLines(replaceAllInPlace(text, u"<i>-  ", u"<i>- "));
  }
  if (hasDashBeforeTag(lines.Second)) {
    text = concat({lines.First, kLineBreak, withDashInTag(lines.Second)});
    lines = TwoLines(replaceAllInPlace(text, u"<i>-  ", u"<i>- "));
  }
  if (isLineWhollyItalic(lines.First, kOpen, kClose) && isLineWhollyItalic(lines.Second, kOpen, kClose)) {
    removeItalicTags(text);
    text = concat({kOpen, text, kClose});
  }
}

}  // namespace

WString repairItalicTags(WStringView given) {
  // All that is looked for holds one of these, the marker of the spelling step the second.
  if (findUnit(given, u'<') == WStringView::npos && findUnit(given, u'@') == WStringView::npos) return WString(given);
  WString text = withRegularTags(given);
  const size_t opening = countText(text, kOpen);
  const size_t closing = countText(text, kClose);
  if (opening + closing == 0) return text;
  const bool isTwoLines = countText(text, kLineBreak) == 1;

  const auto has = [&](size_t a, size_t b) { return opening == a && closing == b; };
  if (has(0, 2)) repairTwoClosing(text);
  if (has(0, 1)) repairOneClosing(text);
  if (has(2, 1)) repairTwoOpeningOneClosing(text);
  if (has(2, 0)) repairTwoOpening(text, isTwoLines);
  if (has(1, 0)) repairOneOpening(text, isTwoLines);
  if (has(1, 2)) repairOneOpeningTwoClosing(text);
  if (has(1, 1)) repairOnePair(text);
  if (has(2, 2)) joinItalicLines(text);

  replaceAllInPlace(text, u"<i></i>", u"");
  replaceAllInPlace(text, u"<i> </i>", u"");
  replaceAllInPlace(text, u"<i>  </i>", u"");
  return text;
}

bool isLineWhollyItalic(WStringView line, WStringView open, WStringView close) {
  if (trimView(line).empty() || !contains(line, close)) return false;
  const WString single = replaceAll(line, u"  ", u" ");
  const WStringView rest = single;
  const std::array starts = {WString(open), concat({u"- ", open}), concat({u"-", open}), concat({u"- ...", open}),
                             concat({u"- ", open, u"..."})};
  const std::array ends = {WString(close),        concat({close, u"."}),   concat({close, u"!"}),
                           concat({close, u"?"}), concat({close, u"..."}), concat({close, u"-"})};
  return std::any_of(starts.begin(), starts.end(), [&](const WString& start) { return rest.starts_with(start); }) &&
         std::any_of(ends.begin(), ends.end(), [&](const WString& end) { return rest.ends_with(end); });
}

}  // namespace mova
