#include "formats/line/SoftNiSub.h"

#include "formats/FrameTime.h"
#include "text/Markup.h"
#include "text/Shape.h"
#include "text/Strings.h"

namespace mova {
namespace {

constexpr WStringView openItalic = u"<i>";
constexpr WStringView closeItalic = u"</i>";
constexpr WStringView topPosition = u"{\\an8}";
constexpr char16_t topMark = u'}';

// The time line of the header opens the reading: what stands above it is no text.
constexpr WStringView head =
    u"*PART 1*\n"
    u"00:00:00.00\\00:00:00.00\n";

// Units above 0x7F stand for one byte each of an ellipsis and of accented letters in UTF-8, on purpose.
constexpr WStringView tail =
    u"*END*\n"
    u"\xE2\x80\xA6\xE2\x80\xA6\xE2\x80\xA6..\\\xE2\x80\xA6\xE2\x80\xA6\xE2\x80\xA6..\n"
    u"*CODE*\n"
    u"0000000000000000\n"
    u"*CAST*\n"
    u"*GENERATOR*\n"
    u"*FONTS*\n"
    u"*READ*\n"
    u"0,300 15,000 130,000 100,000 25,000\n"
    u"*TIMING*\n"
    u"1 25 0\n"
    u"*TIMED BACKUP NAME*\n"
    u"C:\\\n"
    u"*FORMAT SAMPLE "
    u"\xC3\x85\xC3\xA5\xC3\x89\xC3\xA9\xC3\x8C\xC3\xAC\xC3\x95\xC3\xB5\xC3\x9B\xC3\xBB\xC3\xBF*\n"
    u"*READ ADVANCED*\n"
    u"< > 1 1 0,300\n"
    u"*MARKERS*\n";

bool opensMoreThanItCloses(WStringView line) {
  return countText(line, openItalic) > countText(line, closeItalic);
}

/// The lines of a text, joined by CR LF, as they are written. Italics end with the line: a line that is italic as a
/// whole gets no closing mark, and an open tag is carried to the next line.
WString linesToWrite(WStringView text) {
  WString result;
  bool carry = false;
  for (WStringView line : splitViews(text, u"\r\n", true)) {
    const WStringView carried = carry ? openItalic : WStringView();
    if (!result.empty()) result += u"\r\n";
    const size_t begin = result.size();
    // Asked of the line without the carried tag, the other questions are asked of the line with it.
    if (line.starts_with(openItalic) && line.ends_with(closeItalic)) {
      line.remove_prefix(openItalic.size());
      line.remove_suffix(closeItalic.size());
      result += u'[';
      result += carried;
      result += line;
      carry = false;
    } else {
      result += carried;
      result += line;
      const WStringView withCarried = WStringView(result).substr(begin);
      carry = withCarried.starts_with(openItalic) && opensMoreThanItCloses(withCarried);
    }
  }
  return result;
}

WString textToWrite(WStringView text) {
  const bool isTop = text.starts_with(topPosition);
  if (isTop) text.remove_prefix(topPosition.size());
  WString result = linesToWrite(text);
  replaceAllInPlace(result, openItalic, u"[");
  replaceAllInPlace(result, closeItalic, u"]");
  result = removeHtmlTags(result);
  return isTop ? topMark + result : result;
}

WString textFromBuffer(WStringView buffer) {
  WStringView marked = trimView(buffer);
  const bool isTop = marked.starts_with(topMark);
  if (isTop) marked.remove_prefix(1);
  const WString tagged = replaceAll(replaceAll(marked, u"[", openItalic), u"]", closeItalic);
  WString text;
  for (WStringView line : splitViews(tagged, u"\r\n", true)) {
    if (!text.empty()) text += u"\r\n";
    text += line;
    if (opensMoreThanItCloses(line)) text += closeItalic;
  }
  replaceAllInPlace(text, u"</i>\r\n<i>", u"\r\n");
  return isTop ? WString(topPosition) + text : text;
}

}  // namespace

bool SoftNiSub::Recognizes(const Lines& lines, const WString& fileName) {
  // Every time line has a backslash. Without one the trial gives no paragraph.
  return lines.Contains(u'\\') && LoadsMoreThanErrors(lines, fileName);
}

WString SoftNiSub::WriteText(const Subtitle& subtitle, const WString&) {
  WString result(head);
  for (const auto& paragraph : subtitle.Paragraphs) {
    result += cText(textToWrite(paragraph->Text));
    result += u"\r\n";
    result += paragraph->StartTime.ToFrameString();
    result += u'\\';
    result += paragraph->EndTime.ToFrameString();
    result += u'\n';
  }
  result += tail;
  return result;
}

void SoftNiSub::LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString&) {
  ErrorCount = 0;
  bool hasBegun = false;
  WString buffer;
  for (size_t i = 0; i < lines.size(); ++i) {
    const WStringView line = trimView(lines[i]);
    if (hasShape(line, u"00:00:00.00\\00:00:00.00")) {
      hasBegun = true;
      const std::vector<WStringView> times = splitViews(line, u"\\", false);
      const std::vector<WStringView> start = splitViews(times[0], u":.", true);
      const std::vector<WStringView> end = splitViews(times[1], u":.", true);
      if (start.size() != 4 || end.size() != 4) continue;  // a zero unit hides more from the shape
      if (WString text = textFromBuffer(buffer); !text.empty()) {
        subtitle.Append({timeCodeFromParts(start), timeCodeFromParts(end), std::move(text)});
      }
      buffer.clear();
    } else if (hasBegun && !line.empty() && !lines[i].starts_with(u'*')) {
      buffer += lines[i];
      buffer += u'\n';
    }
  }
  subtitle.Renumber(1);
}

}  // namespace mova
