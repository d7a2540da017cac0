#include "formats/binary/CheetahCaption.h"

#include <algorithm>
#include <array>

#include "model/Arithmetic.h"
#include "text/Markup.h"
#include "text/Strings.h"

namespace mova {
namespace {

constexpr int64_t smallestFile = 200;   // bytes
constexpr size_t headerSize = 128;      // bytes; records follow
constexpr size_t smallestRecord = 20;   // bytes; nothing is read where fewer are left
constexpr size_t textOffset = 19;       // within a record
constexpr double overlapGap = 24.0;     // milliseconds between captions that overlapped
constexpr double longestLast = 8000.0;  // milliseconds; a last caption that is longer gets its reading time
constexpr double readingSpeed = 15.0;   // characters a second

struct SpecialCharacter {
  unsigned char byte;
  char16_t text;
};

constexpr SpecialCharacter CheetahSpecialCharacters[] = {
    {0x81, u'♪'}, {0x88, u'ê'}, {0x8F, u'ñ'},  //
    {0x82, u'á'}, {0x89, u'î'}, {0x90, u'ç'},  //
    {0x83, u'é'}, {0x8A, u'ô'}, {0x91, u'¢'},  //
    {0x84, u'í'}, {0x8B, u'û'}, {0x92, u'£'},  //
    {0x85, u'ó'}, {0x8C, u'à'}, {0x93, u'¿'},  //
    {0x86, u'ú'}, {0x8D, u'è'}, {0x94, u'½'},  //
    {0x87, u'â'}, {0x8E, u'Ñ'}, {0x95, u'®'},  //
};

/// The character of each byte: Windows-1252 but for the special characters.
const std::array<char16_t, 256>& characters() {
  static const auto table = [] {
    std::array<char16_t, 256> units{};
    for (size_t value = 1; value < units.size(); ++value) {
      const auto byte = static_cast<unsigned char>(value);
      units[value] = captionText(&byte, 1).front();
    }
    for (const auto& special : CheetahSpecialCharacters) units[special.byte] = special.text;
    return units;
  }();
  return table;
}

/// Hours, minutes, seconds and frames.
TimeCode readTime(const unsigned char* bytes) {
  return {static_cast<double>(partsToMilliseconds(bytes[0], bytes[1], bytes[2], framesToMilliseconds(bytes[3])))};
}

WString readText(const unsigned char* bytes, size_t count) {
  WString text;
  bool italic = false;
  for (size_t i = 0; i < count; ++i) {
    const unsigned char byte = bytes[i];
    if (byte == 0) {
      if (italic) text += u"</i>";
      italic = false;
      // A line feed alone, on purpose: no text ends in CR LF here.
      text += u'\n';
    } else if (byte > 0x14 && byte < 0xC0) {
      text += characters()[byte];
    } else if (byte == 0xD0) {
      italic = true;
      text += u"<i>";
    }
  }
  if (italic) text += u"</i>";
  return replaceAll(trimView(text), u"</i>\r\n<i>", u"\r\n");
}

}  // namespace

bool CheetahCaption::Recognizes(const Lines&, const WString& fileName) {
  if (!hasExtension(fileName, u".cap") || !_file.Read(fileName)) return false;
  const auto& bytes = _file.Bytes();
  if (static_cast<int64_t>(bytes.size()) < smallestFile) return false;
  for (size_t i = 0; i + smallestRecord < bytes.size(); ++i) {
    if (bytes[i] == 0xEA && bytes[i + 1] == 0x22 && bytes[i + 2] < 4) return true;
  }
  return false;
}

void CheetahCaption::LoadSubtitle(Subtitle& subtitle, const Lines&, const WString& fileName) {
  subtitle.Paragraphs.clear();
  subtitle.Header.clear();
  if (_file.Read(fileName) && _file.IsComplete()) readCheetahCaptions(subtitle, _file.Bytes());
}

void readCheetahCaptions(Subtitle& subtitle, std::span<const unsigned char> bytes) {
  for (size_t p = headerSize; p + smallestRecord < bytes.size();) {
    const unsigned char* record = bytes.data() + p;
    const size_t length = record[0];
    // The text starts up to four bytes earlier where these are above 16, looked at from the last to the first.
    size_t early = 0;
    while (early < 4 && record[textOffset - 1 - early] > 16) ++early;
    const size_t count = length + early;  // and 20 more than the bytes of text
    if (count > smallestRecord && p + count - smallestRecord <= bytes.size()) {
      const size_t text = p + textOffset - early;
      Paragraph paragraph;
      paragraph.StartTime = readTime(record + 2);
      paragraph.EndTime = readTime(record + 6);
      paragraph.Text = readText(bytes.data() + text, std::min(count - smallestRecord, bytes.size() - text));
      if (!subtitle.Paragraphs.empty()) {
        double& previousEnd = subtitle.Paragraphs.back()->EndTime.TotalMilliseconds;
        const double start = paragraph.StartTime.TotalMilliseconds;
        if (previousEnd > start) previousEnd = start - overlapGap;
      }
      subtitle.Append(std::move(paragraph));
    }
    p += length == 0 ? 1 : length;
  }

  if (!subtitle.Paragraphs.empty()) {
    Paragraph& last = *subtitle.Paragraphs.back();
    if (last.EndTime.TotalMilliseconds - last.StartTime.TotalMilliseconds > longestLast) {
      last.EndTime.TotalMilliseconds = last.StartTime.TotalMilliseconds + calculateDurationMs(last.Text, readingSpeed);
    }
  }
  subtitle.Renumber(1);
}

}  // namespace mova
