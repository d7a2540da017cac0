#include "formats/binary/CapMakerPlus.h"

#include <algorithm>
#include <set>

#include "model/Arithmetic.h"
#include "movautil/MovaUtil.h"
#include "text/Markup.h"
#include "text/Strings.h"

namespace mova {
namespace {

constexpr size_t smallestFile = 640;  // bytes
constexpr size_t firstMark = 128;     // offset in the file
constexpr size_t trailerSize = 20;    // bytes at the end in which no mark is looked for
constexpr unsigned char markByte = 0x0B;
constexpr size_t timeSize = 11;                // bytes of a time code
constexpr size_t italicOffset = 22;            // from a mark
constexpr size_t textOffset = 25;              // from a mark
constexpr size_t programmeStartOffset = 1354;  // in the file
constexpr double readingSpeed = 15.0;          // characters a second

/// Whether the bytes read "00:00:00:00", with any digits.
bool isTimeCode(std::span<const unsigned char> bytes) {
  for (size_t i = 0; i < bytes.size(); ++i) {
    if (i % 3 == 2 ? bytes[i] != ':' : !isDigit(bytes[i])) return false;
  }
  return bytes.size() == timeSize;
}

/// "HH:MM:SS:FF"; nothing if there are fewer pieces.
std::optional<TimeCode> readTime(WStringView text) {
  const std::vector<WString> pieces = splitOnChar(text, u':', false);
  if (pieces.size() < 4) return std::nullopt;
  return TimeCode{static_cast<double>(partsToMilliseconds(
      wideToInt(pieces[0]), wideToInt(pieces[1]), wideToInt(pieces[2]), framesToMilliseconds(wideToInt(pieces[3]))))};
}

}  // namespace

bool CapMakerPlus::Recognizes(const Lines&, const WString& fileName) {
  return hasExtension(fileName, u".cap") && _file.Read(fileName) && _file.Bytes().size() >= smallestFile &&
         _file.Bytes().front() == '+';
}

void CapMakerPlus::LoadSubtitle(Subtitle& subtitle, const Lines&, const WString& fileName) {
  subtitle.Paragraphs.clear();
  subtitle.Header.clear();
  if (_file.Read(fileName) && _file.IsComplete()) readCapMakerCaptions(subtitle, _file.Bytes());
}

void readCapMakerCaptions(Subtitle& subtitle, std::span<const unsigned char> bytes) {
  for (size_t p = firstMark; p + trailerSize < bytes.size(); ++p) {
    if (bytes[p] != markByte) continue;
    // The mark is part of the time code, on purpose, and a time code has a digit in its place.
    const auto timeBytes = bytes.subspan(p, timeSize);
    const WString time = isTimeCode(timeBytes) ? WString(timeBytes.begin(), timeBytes.end()) : WString();
    if (!time.empty() && time != u"00:00:00:00") subtitle.Append(readCapMakerCaption(bytes, p, time));
  }
  finishCapMakerCaptions(subtitle);

  if (bytes.size() >= programmeStartOffset + timeSize) {
    const auto start = readTime(captionText(bytes.data() + programmeStartOffset, timeSize));
    if (start && start->TotalMilliseconds > 0) {
      subtitle.AddTimeToAllParagraphs(-cutToInt32(start->TotalMilliseconds));
    }
  }
}

Paragraph readCapMakerCaption(std::span<const unsigned char> bytes, size_t mark, WStringView time) {
  Paragraph paragraph;
  paragraph.StartTime = readTime(time).value_or(TimeCode());
  WString text;
  if (mark + textOffset < bytes.size()) {
    const auto rest = bytes.subspan(mark + textOffset);
    text = captionText(rest.data(), static_cast<size_t>(std::find(rest.begin(), rest.end(), 0) - rest.begin()));
  }
  const size_t richText = WStringView(text).substr(0, 9 + 6).find(u"{\\rtf1");
  if (richText != WStringView::npos) {
    paragraph.Text = text.substr(richText);  // stays as it is: rich text is not decoded
  } else if (mark + italicOffset < bytes.size() && bytes[mark + italicOffset] == 3) {
    paragraph.Text = u"<i>" + text + u"</i>";
  } else {
    paragraph.Text = text;
  }
  return paragraph;
}

void finishCapMakerCaptions(Subtitle& subtitle) {
  auto& paragraphs = subtitle.Paragraphs;
  const auto forNeighbours = [&paragraphs](auto action) {
    for (size_t i = 0; i + 1 < paragraphs.size(); ++i) action(*paragraphs[i], *paragraphs[i + 1]);
  };
  if (!paragraphs.empty()) {
    Paragraph& last = *paragraphs.back();
    const auto length = static_cast<double>(removeAllFormatting(last.Text).size());
    last.EndTime.TotalMilliseconds =
        last.StartTime.TotalMilliseconds + std::clamp(length / readingSpeed * 1000, 1000.0, 8000.0);
  }
  forNeighbours([](Paragraph& one, const Paragraph& next) { one.EndTime = next.StartTime; });
  std::erase_if(paragraphs, [](const auto& paragraph) { return paragraph->Text.empty(); });

  // A caption that was joined to the one before it takes in the one behind it all the same, on purpose: of three that
  // start together, the third goes with the second.
  std::set<const Paragraph*> joined;
  forNeighbours([&joined](Paragraph& one, const Paragraph& next) {
    if (one.StartTime.TotalMilliseconds != next.StartTime.TotalMilliseconds) return;
    one.Text += u"\r\n";
    one.Text += next.Text;
    one.EndTime = next.EndTime;
    joined.insert(&next);
  });
  std::erase_if(paragraphs, [&joined](const auto& paragraph) { return joined.contains(paragraph.get()); });
  forNeighbours([](Paragraph& one, const Paragraph& next) {
    const double start = next.StartTime.TotalMilliseconds;
    if (one.EndTime.TotalMilliseconds == start && one.StartTime.TotalMilliseconds != start) {
      one.EndTime.TotalMilliseconds = start - 1;
    }
  });
  subtitle.Renumber(1);
}

}  // namespace mova
