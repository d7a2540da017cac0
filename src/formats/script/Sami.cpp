#include "formats/script/Sami.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "movautil/MovaUtil.h"
#include "text/Markup.h"
#include "text/Strings.h"

namespace mova {
namespace {

constexpr WStringView headWithDefaultStyle =
    u"<SAMI>\r\n"
    u"\r\n"
    u"<HEAD>\r\n"
    u"<TITLE>_TITLE_</TITLE>\r\n"
    u"\r\n"
    u"<SAMIParam>\r\n"
    u"  Metrics {time:ms;}\r\n"
    u"  Spec {MSFT:1.0;}\r\n"
    u"</SAMIParam>\r\n"
    u"\r\n"
    u"<STYLE TYPE=\"text/css\">\r\n"
    u"<!--\r\n"
    u"  P { font-family: Arial; font-weight: normal; color: white; background-color: black; text-align: center; }\r\n"
    u"  _LANGUAGE-STYLE_\r\n"
    u"-->\r\n"
    u"</STYLE>\r\n"
    u"\r\n"
    u"</HEAD>\r\n"
    u"\r\n"
    u"<BODY>\r\n"
    u"\r\n"
    u"<-- Open play menu, choose Captions and Subtiles, On if available -->\r\n"
    u"<-- Open tools menu, Security, Show local captions when present -->\r\n"
    u"\r\n";

// Around a style section of the subtitle's own. The lone ")" and "(" belong to it.
constexpr WStringView headBeforeStyle =
    u"<SAMI>\r\n"
    u"\r\n"
    u"<HEAD>\r\n"
    u"<TITLE>_TITLE_</TITLE>\r\n"
    u"\r\n"
    u"<SAMIParam>\r\n"
    u"  Metrics {time:ms;}\r\n"
    u"  Spec {MSFT:1.0;}\r\n"
    u"</SAMIParam>\r\n"
    u"\r\n"
    u")";
constexpr WStringView headBehindStyle =
    u"(\r\n"
    u"\r\n"
    u"</HEAD>\r\n"
    u"\r\n"
    u"<BODY>\r\n"
    u"\r\n"
    u"<-- Open play menu, choose Captions and Subtiles, On if available -->\r\n"
    u"<-- Open tools menu, Security, Show local captions when present -->\r\n"
    u"\r\n";

constexpr WStringView languageClass = u"ENUSCC";
constexpr WStringView languageStyle = u".ENUSCC { name: English; lang: en-US ; SAMIType: CC ; }";

constexpr size_t npos = WStringView::npos;

// --- The joined text of a file.

/// Whether there can be anything to load, which is not so for most files that a trial sees. Bringing odd tags to the
/// plain form makes no sync where there was none.
bool holdsSync(const Lines& lines) {
  return findIgnoreCase(lines.Units(), u"<sync ") != npos;
}

/// Adds a line, with the odd ways to write a quoted start brought to the plain one. Only within a line: a tag that is
/// broken over two lines stays odd.
void appendLine(WString& all, WStringView line) {
  constexpr WStringView tag = u"<SYNC ";
  for (size_t hit; (hit = findText(line, tag)) != npos;) {
    all += line.substr(0, hit);
    line.remove_prefix(hit);
    WStringView opening = tag;
    for (WStringView odd : {u"<SYNC  Start=\"", u"<SYNC Start =\"", u"<SYNC Start = \"", u"<SYNC Start= \""}) {
      if (line.starts_with(odd)) opening = odd;
    }
    all += opening == tag ? tag : u"<SYNC Start=\"";
    line.remove_prefix(opening.size());
  }
  all += line;
}

/// From the first opening tag to the first closing one, if neither stands at the very start.
WStringView styleSection(WStringView all) {
  constexpr WStringView closing = u"</style>";
  const size_t begin = findIgnoreCase(all, u"<style");
  const size_t close = findIgnoreCase(all, closing);
  if (begin == npos || begin == 0 || close == npos || close < begin) return {};
  return all.substr(begin, close + closing.size() - begin);
}

/// Where a sync's tag begins and where its time is read from.
struct SyncTag {
  size_t begin;
  size_t time;
};

/// The next sync from `start` on; one at the end of the text if there is none.
SyncTag findSync(WStringView all, size_t start) {
  for (; (start = findIgnoreCase(all, u"<sync ", start)) != npos; ++start) {
    // The second form is only another way to open a sync: nothing is deciphered.
    for (WStringView opening : {u"<sync start=", u"<sync encrypted=\"true\" start="}) {
      if (startsWithIgnoreCase(all.substr(start), opening)) return {start, start + opening.size()};
    }
  }
  return {all.size(), all.size()};
}

/// The digits from `position` on; quotes before, between and behind them are skipped.
WString readTime(WStringView all, size_t position) {
  WString time;
  for (char16_t unit : all.substr(position)) {
    if (isDigit(unit)) {
      time += unit;
    } else if (unit != u'"' && unit != u'\'') {
      break;
    }
  }
  return time;
}

/// The position behind the next ">", or the end of the text.
size_t behindTag(WStringView text, size_t start) {
  return std::min(findText(text, u">", start), text.size() - 1) + 1;
}

// --- The text of a sync.

/// The class that is named in the text, if any.
std::optional<WStringView> classOf(WStringView text) {
  constexpr WStringView attribute = u" class=";
  const size_t hit = findIgnoreCase(text, attribute);
  if (hit == npos) return {};
  text.remove_prefix(hit + attribute.size());
  const auto isPart = [](char16_t unit) {
    return isUpper(toUpper(unit)) || isDigit(unit) || unit == u'\'' || unit == u'"';
  };
  const auto end = std::find_if_not(text.begin(), text.end(), isPart);
  text = text.substr(0, static_cast<size_t>(end - text.begin()));
  const size_t begin = text.find_first_not_of(u"'\"");
  if (begin == npos) return WStringView();
  return text.substr(begin, text.find_last_not_of(u"'\"") + 1 - begin);
}

/// Cuts out the element that names the speaker.
void removeSourceElement(WString& text) {
  size_t mark = text.find(u"ID=\"Source\"");
  if (mark == npos) mark = text.find(u"ID=Source");
  if (mark == npos) return;
  const size_t begin = text.rfind(u"<P", mark);
  if (begin == npos) return;
  const size_t next = text.find(u"<P", mark);
  const size_t close = text.find(u"</P", mark);
  const size_t end = close < next ? behindTag(text, close) : std::min(next, text.size());
  text.erase(begin, end - begin);
}

/// Every "<br", up to its next ">", becomes a line break.
void translateBreaks(WString& text) {
  constexpr WStringView tag = u"<br";
  size_t hit = findText(text, tag);
  if (hit == npos) return;
  WString result;
  size_t copied = 0;
  for (; hit != npos; hit = findText(text, tag, copied)) {
    const size_t end = findText(text, u">", hit);
    if (end == npos) break;
    result.append(text, copied, hit - copied).append(u"\r\n");
    copied = end + 1;
  }
  text = result.append(text, copied);
}

/// Leaves one blank of each run of blanks.
void collapseBlanks(WString& text) {
  const auto bothBlank = [](char16_t a, char16_t b) { return a == u' ' && b == u' '; };
  text.erase(std::unique(text.begin(), text.end(), bothBlank), text.end());
}

void trimEndInPlace(WString& text) {
  text.resize(trimEndView(text).size());
}

/// Cuts off an ending, whatever its case.
void removeEnding(WString& text, WStringView ending) {
  if (text.size() < ending.size() || !equalsIgnoreCase(WStringView(text).substr(text.size() - ending.size()), ending))
    return;
  text.resize(text.size() - ending.size());
  trimEndInPlace(text);
}

void closeFontTag(WString& text) {
  if (text.find(u"</font>") != npos) return;
  if (text.find(u"<font color=") != npos) {
    text += u"</font>";
  } else if (text.starts_with(u"<FONT COLOR=") && text.find(u"</FONT>") == npos) {
    text += u"</FONT>";
  }
}

/// Whether a tag begins here that is kept. Any other "<" is plain text.
bool beginsKeptTag(WStringView text) {
  for (WStringView beginning : {u"<font", u"<div", u"<i", u"<b", u"<s", u"</"}) {
    if (text.starts_with(beginning)) return true;
  }
  return false;
}

/// The text with its entities resolved, except within kept tags.
WString decoded(WStringView text) {
  WString result;
  const auto appendPlain = [&result](WStringView plain) {
    WString piece(plain);
    result += decodeHtmlEntities(piece);
  };
  if (text.find(u'>') == npos) {
    appendPlain(text);
    return result;
  }
  size_t copied = 0;
  for (size_t hit = 0; (hit = findText(text, u"<", hit)) != npos;) {
    if (!beginsKeptTag(text.substr(hit))) {
      ++hit;
      continue;
    }
    appendPlain(text.substr(copied, hit - copied));
    copied = behindTag(text, hit);
    result += text.substr(hit, copied - hit);
    hit = copied;
  }
  appendPlain(text.substr(copied));
  return result;
}

/// What a sync shows, from what stands between its tag and the next one. The order of the steps matters.
WString captionText(WStringView raw) {
  WString text(raw);
  removeSourceElement(text);
  replaceAllInPlace(text, u"\r\n", u" ");
  trimEndInPlace(text);
  translateBreaks(text);
  collapseBlanks(text);
  replaceAllInPlace(text, u"</BODY>", u"");
  replaceAllInPlace(text, u"</SAMI>", u"");
  trimEndInPlace(text);

  // Up to the end of the first tag, which ought to be the one that opens the paragraph, but whatever it is.
  const size_t tagEnd = findText(text, u">");
  if (tagEnd != npos && tagEnd < findIgnoreCase(text, u"</sync>")) text.erase(0, tagEnd + 1);
  trimEndInPlace(text);
  removeEnding(text, u"</sync>");
  removeEnding(text, u"</p>");

  replaceAllInPlace(text, u"&nbsp;", u" ");
  replaceAllInPlace(text, u"&NBSP;", u" ");
  closeFontTag(text);
  text = decoded(text);

  collapseBlanks(text);
  replaceAllInPlace(text, u"\r\n ", u"\r\n");
  replaceAllInPlace(text, u" \r\n", u"\r\n");
  return trim(text);
}

/// Display time in milliseconds of a last caption, for which the file has no end.
double readingTime(WStringView text) {
  const auto length = static_cast<double>(removeAllFormatting(text).size());
  return std::clamp(length / 15.0 * 1000.0, 1000.0, 8000.0);
}

}  // namespace

bool Sami::Recognizes(const Lines& lines, const WString& fileName) {
  return lines.Derived<&holdsSync>() && findText(lines.Units(), u"</SYNC>") == npos &&
         LoadsMoreThanErrors(lines, fileName);
}

void Sami::LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString&) {
  ErrorCount = 0;
  subtitle.Paragraphs.clear();
  if (!lines.Derived<&holdsSync>()) return;

  WString all;
  all.reserve(lines.Units().size());
  for (size_t i = 0; i < lines.size(); ++i) appendLine(all, lines[i]);
  if (const WStringView style = styleSection(all); !style.empty()) subtitle.Header = style;

  Paragraph paragraph;
  int64_t lastStart = 0;
  for (SyncTag sync = findSync(all, 0); sync.begin < all.size();) {
    const WString time = readTime(all, sync.time);
    const size_t begin = behindTag(all, sync.time);
    sync = findSync(all, begin);
    const WStringView raw = WStringView(all).substr(begin, sync.begin - begin);

    // The class goes to the paragraph that was begun before, also where this sync ends it, on purpose.
    if (const auto className = classOf(raw)) paragraph.Extra = *className;
    WString text = captionText(raw);
    const int64_t milliseconds = wideToLongLong(time);
    if (!paragraph.Text.empty() && !time.empty()) {
      paragraph.EndTime.TotalMilliseconds = static_cast<double>(milliseconds);
      subtitle.Append(std::exchange(paragraph, Paragraph()));
    }
    paragraph.Text = std::move(text);
    // A time given twice leaves the second paragraph's start at 0, on purpose.
    if (milliseconds != 0 && milliseconds != lastStart) {
      paragraph.StartTime.TotalMilliseconds = static_cast<double>(milliseconds);
      lastStart = milliseconds;
    }
  }
  if (!paragraph.Text.empty()) {
    paragraph.EndTime.TotalMilliseconds = paragraph.StartTime.TotalMilliseconds + readingTime(paragraph.Text);
    subtitle.Append(std::move(paragraph));
  }

  subtitle.Renumber(1);
  for (auto& loaded : subtitle.Paragraphs) std::replace(loaded->Text.begin(), loaded->Text.end(), u'\u00A0', u' ');
}

WString Sami::WriteText(const Subtitle& subtitle, const WString& title) {
  return Write(subtitle, title, Form{u"", u"", u"<br>", false});
}

WString Sami::Write(const Subtitle& subtitle, WStringView title, const Form& form) {
  const bool ownStyle = startsWithIgnoreCase(subtitle.Header, u"<style");
  WString result(ownStyle ? headBeforeStyle : headWithDefaultStyle);
  if (ownStyle) result.append(trimView(subtitle.Header)).append(headBehindStyle);
  replaceAllInPlace(result, u"_TITLE_", title);
  replaceAllInPlace(result, u"_LANGUAGE-STYLE_", languageStyle);
  result.reserve(result.size() + subtitle.Paragraphs.size() * 256);  // Enough for most.

  for (size_t i = 0; i < subtitle.Paragraphs.size(); ++i) {
    const Paragraph& paragraph = *subtitle.Paragraphs[i];
    const bool ownClass = ownStyle && !paragraph.Extra.empty();
    const WStringView className = ownClass ? cText(paragraph.Extra) : languageClass;
    WString text = replaceAll(paragraph.Text, u"\r\n", form.lineBreak);
    if (form.breaksAtLineFeed) replaceAllInPlace(text, u"\n", form.lineBreak);
    AppendSync(result, paragraph.StartTime.TotalMilliseconds, className, cText(trimView(text)), form);

    const double end = paragraph.EndTime.TotalMilliseconds;
    const bool isLast = i + 1 == subtitle.Paragraphs.size();
    const bool touchesNext = !isLast && std::abs(subtitle.Paragraphs[i + 1]->StartTime.TotalMilliseconds - end) < 1.0;
    if (!touchesNext) AppendSync(result, end, className, u"&nbsp;", form);
  }
  result += u"</BODY>\r\n</SAMI>";
  return result;
}

void Sami::AppendSync(WString& out, double time, WStringView className, WStringView text, const Form& form) {
  out.append(u"<SYNC Start=").append(form.quote);
  appendWhole(out, time);
  out.append(form.quote).append(u"><P Class=").append(form.quote).append(className).append(form.quote).append(u">");
  out.append(text).append(form.close).append(u"\r\n");
}

}  // namespace mova
