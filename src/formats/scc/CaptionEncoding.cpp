#include "formats/scc/CaptionEncoding.h"

#include <vector>

#include "formats/scc/CaptionCodes.h"
#include "formats/scc/SccCodeTable.h"
#include "text/LineBreaking.h"
#include "text/Strings.h"

namespace mova {
namespace {

constexpr size_t maximumLineCount = 4;
constexpr size_t maximumLineLength = 32;
constexpr WStringView openItalic = u"<i>";
constexpr WStringView closeItalic = u"</i>";

std::vector<WStringView> linesOf(WStringView text) {
  return splitViews(trimView(text), u"\r\n", true);
}

bool fits(WStringView text) {
  const std::vector<WStringView> lines = linesOf(text);
  if (lines.size() > maximumLineCount) return false;
  for (WStringView line : lines) {
    if (line.size() > maximumLineLength) return false;
  }
  return true;
}

/// Where the first line of a longer text may end: at the last blank that leaves it short enough; 0 if there is none.
size_t lastUsableBlank(WStringView text) {
  const size_t blank = text.substr(0, maximumLineLength + 1).rfind(u' ');
  return blank == WStringView::npos ? 0 : blank;
}

/// How much of the rest a further line takes; 0 if there is no usable blank, or no rest.
size_t furtherLineLength(WStringView rest) {
  return rest.size() > maximumLineLength ? lastUsableBlank(rest) : rest.size();
}

/// Collects the codes of one line in words of four digits.
class LineEncoder {
 public:
  explicit LineEncoder(WString& words) : words_(words) {}

  /// Takes the code of a character or a control code, which has two or four digits, or none.
  void Add(WStringView code) {
    if (pending_.size() == 2 && code.size() == 4) pending_ += nullByte;
    if (pending_.size() == 4) WritePending();
    pending_ += code;
  }

  /// The last word has no blank behind it and is not doubled, not even a control word, on purpose.
  void Finish() {
    if (pending_.size() == 2) pending_ += nullByte;
    words_ += pending_;
  }

 private:
  static constexpr WStringView nullByte = u"80";

  void WritePending() {
    const bool isDoubled = pending_[0] == u'9' || pending_[0] == u'8';
    for (int i = 0; i < (isDoubled ? 2 : 1); ++i) {
      words_ += pending_;
      words_ += u' ';
    }
    pending_.clear();
  }

  WString& words_;
  WString pending_;  ///< Nothing, or two or four digits.
};

/// `italicDepth` counts the italic tags that are open, across the lines of a caption.
void encodeLine(WString& words, WStringView line, int32_t& italicDepth) {
  LineEncoder encoder(words);
  while (!line.empty()) {
    if (line.starts_with(openItalic)) {
      encoder.Add(u"91ae");
      ++italicDepth;
      line.remove_prefix(openItalic.size());
    } else if (italicDepth > 0 && line.starts_with(closeItalic)) {
      encoder.Add(u"9120");
      --italicDepth;
      line.remove_prefix(closeItalic.size());
    } else {
      encoder.Add(textToCode(line.front()));
      line.remove_prefix(1);
    }
  }
  encoder.Finish();
}

}  // namespace

WString wrapCaptionText(WStringView text) {
  WString flat = replaceAll(text, u"\r\n", u" ");
  replaceAllInPlace(flat, u"  ", u" ");

  WStringView rest = flat;
  WString wrapped;
  const auto takeLine = [&rest, &wrapped](size_t length) {
    wrapped += rest.substr(0, length);
    wrapped += u"\r\n";
    rest = trimView(rest.substr(length));
  };

  // What becomes of a rest that can't be wrapped differs from line to line, on purpose.
  size_t length = lastUsableBlank(rest);
  if (length == 0) return WString(text);
  takeLine(length);
  length = furtherLineLength(rest);
  if (length == 0) return trim(wrapped);
  takeLine(length);
  length = furtherLineLength(rest);
  if (length == 0) return trim(wrapped += rest);
  takeLine(length);
  length = furtherLineLength(rest);
  return trim(wrapped += length == 0 ? rest : rest.substr(0, length));
}

WString fitCaptionText(WStringView text, WStringView language) {
  if (fits(text)) return WString(text);
  WString fitted = breakLines(text, 1, 4, language);
  if (fits(fitted)) return fitted;
  fitted = wrapCaptionText(fitted);
  if (fits(fitted)) return fitted;

  WString cut;
  const std::vector<WStringView> lines = linesOf(fitted);
  for (size_t i = 0; i < lines.size() && i < maximumLineCount; ++i) {
    cut += lines[i].substr(0, maximumLineLength);
    cut += lines[i].size() > maximumLineLength ? u"\r\n" : u"\n";
  }
  return trim(cut);
}

WString positionCodeForLine(WStringView line, int32_t lineNumber, int32_t lineCount) {
  const int32_t row = lineNumber - lineCount + 15;
  const int32_t column = (32 - static_cast<int32_t>(line.size())) / 2;
  const int32_t remainder = column % 4;
  const WString position = captionPositionCode(row, column - remainder);

  WString words = position;
  words += u' ';
  words += position;
  for (int i = 0; remainder > 0 && i < 2; ++i) {
    words += u' ';
    words += tabOffsetCode(remainder);
  }
  return words += u' ';
}

WString encodeCaptionText(WStringView text, WStringView language) {
  const WString fitted = fitCaptionText(text, language);
  const std::vector<WStringView> lines = linesOf(fitted);
  const auto lineCount = static_cast<int32_t>(lines.size());

  WString words;
  int32_t italicDepth = 0;
  for (int32_t lineNumber = 1; lineNumber <= lineCount; ++lineNumber) {
    const WStringView line = trimView(lines[lineNumber - 1]);
    words += u' ';
    words += positionCodeForLine(line, lineNumber, lineCount);
    if (italicDepth > 0) words += u"91ae 91ae ";
    encodeLine(words, line, italicDepth);
  }
  return trim(words);
}

}  // namespace mova
