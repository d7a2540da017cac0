#include "formats/scc/CaptionDecoding.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include "formats/scc/CaptionCodes.h"
#include "formats/scc/SccCodeTable.h"
#include "text/ItalicRepair.h"
#include "text/Strings.h"

namespace mova {
namespace {

/// Erase non-displayed memory, resume caption loading, carriage return, roll up three rows, erase displayed memory. A
/// carriage return gives no line break, on purpose.
constexpr WStringView skippedWords[] = {u"94ae", u"9420", u"94ad", u"9426", u"942c"};

/// A comma and a letter, of which the comma is thrown away, on purpose.
constexpr WStringView lostCommaWords[] = {u"2c75", u"2cf2", u"2c6f", u"2c6e", u"2c6d", u"2c6c",
                                          u"2c6b", u"2c6a", u"2c69", u"2c68", u"2c67", u"2c66",
                                          u"2c65", u"2c64", u"2c63", u"2c62", u"2c61"};

constexpr WStringView silentWords[] = {u"2c52", u"2c94", u"942f"};

template <size_t size>
bool isOneOf(WStringView word, const WStringView (&words)[size]) {
  return std::find(std::begin(words), std::end(words), word) != std::end(words);
}

class CaptionDecoder {
 public:
  /// Takes a word of four units.
  void ReadWord(WStringView word) {
    if (const auto info = lookupCaptionCode(word)) {
      ReadCaptionCode(*info);
    } else if (word == u"9440" || word == u"94e0") {
      BreakLine();
    } else if (isOneOf(word, lostCommaWords)) {
      Append(codeToText(word.substr(2)));
    } else if (!isOneOf(word, silentWords)) {
      ReadCharacters(word);
    }
  }

  /// The text with its blanks and italic tags put in order.
  WString Finish() {
    replaceAllInPlace(text_, u"<i></i>", u"");
    replaceAllInPlace(text_, u"</i><i>", u"");
    for (int pass = 0; pass < 2; ++pass) replaceAllInPlace(text_, u"  ", u" ");
    replaceAllInPlace(text_, u"\r\n ", u"\r\n");
    WString text = trim(text_);
    if (text.find(u"<i>") != WString::npos && text.find(u"</i>") == WString::npos) text += u"</i>";
    return repairItalicTags(text);
  }

 private:
  void ReadCaptionCode(const CaptionCodeInfo& info) {
    if (info.Row > 0) {
      // A way back up the screen gives no line break, on purpose.
      if (info.Row > row_ && !isBlank_) BreakLine();
      row_ = info.Row;
    }
    if ((info.Style & CaptionCodeInfo::Italic) != 0 && !isItalic_) {
      Append(u"<i>");
      isItalic_ = true;
    } else if (info.Style == CaptionCodeInfo::Plain && isItalic_) {
      Append(u"</i>");
      isItalic_ = false;
    }
  }

  /// A word that has no text as a whole is two characters.
  void ReadCharacters(WStringView word) {
    if (const WStringView text = codeToText(word); !text.empty()) {
      Append(text);
    } else {
      Append(codeToText(word.substr(0, 2)));
      Append(codeToText(word.substr(2)));
    }
  }

  void BreakLine() {
    if (!WStringView(text_).ends_with(u"\r\n")) text_ += u"\r\n";
  }

  void Append(WStringView text) {
    text_ += text;
    if (!trimView(text).empty()) isBlank_ = false;
  }

  WString text_;
  bool isBlank_ = true;  ///< Whether the text has white space only.
  int32_t row_ = 0;      ///< Row of the last preamble.
  bool isItalic_ = false;
};

}  // namespace

WString decodeCaptionWords(WStringView line, int32_t& errorCount) {
  const std::vector<WStringView> words = splitViews(line, u" \t", true);
  if (words.size() == 3 && words[1] == u"942c" && words[2] == u"942c") return WString(clearScreenWords);

  CaptionDecoder decoder;
  for (size_t i = 0; i < words.size(); ++i) {
    const WStringView word = words[i];
    if (word.size() != 4) {
      if (i > 0) ++errorCount;
      continue;
    }
    if (isOneOf(word, skippedWords)) continue;
    decoder.ReadWord(word);
    const bool isControlWord = word[0] == u'9' || word[0] == u'8';
    if (isControlWord && i + 1 < words.size() && words[i + 1] == word) ++i;  // Control words are sent twice.
  }
  return decoder.Finish();
}

}  // namespace mova
