#include "formats/script/SubStationAlpha.h"

#include <algorithm>

#include "formats/FrameTime.h"
#include "formats/script/SsaHeader.h"
#include "formats/script/SsaStyle.h"
#include "model/Arithmetic.h"
#include "movautil/MovaUtil.h"
#include "text/Strings.h"
#include "text/StyleTags.h"

namespace mova {
namespace {

constexpr size_t actorColumn = 4;  // whatever the Format line says, on purpose

bool startsEvents(WStringView line) {
  return equalsIgnoreCase(trimView(line), u"[events]");
}

bool contains(WStringView text, WStringView what) {
  return findText(text, what) != WStringView::npos;
}

/// "h:mm:ss.cc"; what is less than a hundredth of a second is dropped.
void appendSsaTime(WString& out, const TimeCode& time) {
  const TimeFields fields = time.Fields();
  appendClock(out, fields, u'.', fields.milliseconds / 10, 2, 1);
}

void appendEvent(WString& out, const Paragraph& paragraph, WStringView style) {
  const auto textOr = [](WStringView text, WStringView otherwise) { return text.empty() ? otherwise : cText(text); };
  out += paragraph.IsComment ? u"Comment: Marked=" : u"Dialogue: Marked=";
  appendNumber(out, paragraph.Layer);
  out += u',';
  appendSsaTime(out, paragraph.StartTime);
  out += u',';
  appendSsaTime(out, paragraph.EndTime);
  out += u',';
  out += cText(style);
  out += u',';
  out += textOr(paragraph.Actor, u"NTP");
  out += u",0000,0000,0000,";
  out += textOr(paragraph.Effect, u"!Effect");
  out += u',';
  out += cText(modelToSsaText(paragraph));
  out += u'\n';
}

/// The plain position tag that stands for the override block at the start of the text; empty if the block doesn't begin
/// with a position.
WString positionOfBlock(WStringView text) {
  if (text.starts_with(u"{\\an") && text.size() > 5) {
    const bool isPosition = text[4] >= u'1' && text[4] <= u'9' && (text[5] == u'}' || text[5] == u'\\');
    return isPosition ? WString(text.substr(0, 5)) + u'}' : WString();
  }
  struct Row {
    WStringView tag, position;
  };
  // The numbering of v4. Two of its rows stay as they are, and 2 is none.
  static constexpr Row rows[] = {
      {u"{\\a1", u"{\\a1}"},   {u"{\\a3", u"{\\a3}"},  {u"{\\a9", u"{\\an4}"}, {u"{\\a10", u"{\\an5}"},
      {u"{\\a11", u"{\\an6}"}, {u"{\\a5", u"{\\an7}"}, {u"{\\a6", u"{\\an8}"}, {u"{\\a7", u"{\\an9}"},
  };
  for (const Row& row : rows) {
    const WStringView rest = text.substr(std::min(row.tag.size(), text.size()));
    if (text.starts_with(row.tag) && (rest.starts_with(u'}') || rest.starts_with(u'\\'))) return WString(row.position);
  }
  return {};
}

/// The text without its override blocks, up to a "}" that comes before the next "{", and the last position in front.
WString withoutBlocks(WStringView text) {
  WString position;
  WString stripped;
  size_t kept = 0;
  for (;;) {
    const size_t open = text.find(u'{', kept);
    const size_t close = text.find(u'}', kept);
    if (open == WStringView::npos || close == WStringView::npos || close < open) break;
    if (WString found = positionOfBlock(text.substr(open)); !found.empty()) position = std::move(found);
    stripped += text.substr(kept, open - kept);
    kept = close + 1;
  }
  return position + stripped + WString(text.substr(kept));
}

}  // namespace

std::optional<TimeCode> parseSsaTime(WStringView text) {
  const std::vector<WStringView> pieces = splitViews(text, u":.", false);
  if (pieces.size() < 4) return std::nullopt;
  const int32_t minutes = wrappingAdd(wrappingMultiply(wideToInt(pieces[0]), 60), wideToInt(pieces[1]));
  const int32_t seconds = wrappingAdd(wrappingMultiply(minutes, 60), wideToInt(pieces[2]));
  const int32_t hundredths = wrappingAdd(wrappingMultiply(seconds, 100), wideToInt(pieces[3]));
  return TimeCode{static_cast<double>(wrappingMultiply(hundredths, 10))};
}

bool SubStationAlpha::Recognizes(const Lines& lines, const WString& fileName) {
  // Without the line that starts the events there are neither paragraphs nor errors.
  for (size_t i = 0; i < lines.size(); ++i) {
    if (startsEvents(lines[i])) return LoadsMoreThanErrors(lines, fileName);
  }
  return false;
}

WString SubStationAlpha::WriteText(const Subtitle& subtitle, const WString& title) {
  const WString& header = subtitle.Header;
  WString result;
  std::vector<WString> styleNames;
  if (contains(header, u"[V4 Styles]")) {
    result = trim(header);
    result += u'\n';
    if (!contains(result, ssaEventsFormat)) {
      result += ssaEventsFormat;
      result += u'\n';
    }
    styleNames = styleNamesFromHeader(header);
    std::sort(styleNames.begin(), styleNames.end());
  } else if (contains(header, u"[V4+ Styles]")) {
    result = advancedHeaderToSsaHeader(header, title);  // The first event follows without a line break, on purpose.
  } else if (contains(header, u"http://www.w3.org/ns/ttml")) {
    result = timedTextHeaderToSsaHeader(header, title);  // Here too.
  } else {
    result = defaultSsaHeader(title);
    result += u'\n';
  }

  size_t size = result.size();
  for (const auto& paragraph : subtitle.Paragraphs) size += paragraph->Text.size() + 96;
  result.reserve(size);
  for (const auto& paragraph : subtitle.Paragraphs) {
    const WStringView style = paragraph->Extra;
    const bool isKnown = !style.empty() && std::binary_search(styleNames.begin(), styleNames.end(), style);
    appendEvent(result, *paragraph, isKnown ? style : u"Default");
  }
  result.resize(trimEndView(result).size());  // Every header begins with something that is not white space.
  return result;
}

void SubStationAlpha::LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString&) {
  ErrorCount = 0;
  subtitle.Paragraphs.clear();
  subtitle.Header.clear();
  Columns columns;
  bool inEvents = false;

  for (size_t i = 0; i < lines.size(); ++i) {
    const WStringView line = lines[i];
    if (!inEvents) {
      subtitle.Header += line;
      subtitle.Header += u'\n';
    }
    const WStringView trimmed = trimView(line);
    if (startsEvents(trimmed)) {
      inEvents = true;
    } else if (!inEvents || trimmed.empty() || trimmed.starts_with(u';')) {
      continue;
    } else if (startsWithIgnoreCase(trimmed, u"format:")) {
      if (line.size() > 10) columns.Read(line);
    } else if (auto event = ReadEvent(line, columns)) {
      subtitle.Append(std::move(*event));
    } else {
      ++ErrorCount;
    }
  }
  subtitle.Renumber(1);
}

void SubStationAlpha::Columns::Read(WStringView formatLine) {
  // One unit behind the colon is skipped: without a blank there the first name is not known.
  forEachPiece(formatLine.substr(8), u',', [this](size_t index, WStringView item) {
    const WStringView name = trimView(item);
    const auto is = [name](WStringView known) { return equalsIgnoreCase(name, known); };
    if (is(u"layer")) Layer = index;
    if (is(u"start")) Start = index;
    if (is(u"end")) End = index;
    if (is(u"text")) Text = index;
    if (is(u"effect")) Effect = index;
    if (is(u"style")) Style = index;
  });
}

std::optional<Paragraph> SubStationAlpha::ReadEvent(WStringView line, const Columns& columns) {
  const WStringView trimmed = trimView(line);
  // "Dialogue:" is none of these: its name stays in the first field, whose number is 0, on purpose.
  const bool isDialog = startsWithIgnoreCase(trimmed, u"dialog:");
  const WStringView fields = isDialog ? line.substr(std::min<size_t>(10, line.size())) : line;

  Paragraph paragraph;
  WStringView start, end;
  WString text;
  forEachPiece(fields, u',', [&](size_t index, WStringView field) {
    if (index == actorColumn) paragraph.Actor = field;
    // The first that fits: Format lines can send several to one place.
    if (index == columns.Start) {
      start = trimView(field);
    } else if (index == columns.End) {
      end = trimView(field);
    } else if (index == columns.Layer) {
      paragraph.Layer = wideToInt(field);
    } else if (index == columns.Effect) {
      paragraph.Effect = field;
    } else if (index == columns.Text) {
      text = field;
    } else if (index == columns.Style) {
      paragraph.Extra = field;
    } else if (index > columns.Text && index != actorColumn) {
      text += u',';
      text += field;
    }
  });
  const std::optional<TimeCode> startTime = parseSsaTime(start);
  const std::optional<TimeCode> endTime = parseSsaTime(end);
  if (!startTime || !endTime) return std::nullopt;
  paragraph.StartTime = *startTime;
  paragraph.EndTime = *endTime;
  paragraph.Text = ssaToModelText(text);
  paragraph.IsComment = startsWithIgnoreCase(trimmed, u"comment:");
  return paragraph;
}

void SubStationAlpha::StripNativeFormatting(Subtitle& subtitle, SubtitleFormat& newFormat) {
  if (newFormat.Name() == u"Advanced Sub Station Alpha") return;
  for (auto& paragraph : subtitle.Paragraphs) paragraph->Text = withoutBlocks(paragraph->Text);
}

}  // namespace mova
