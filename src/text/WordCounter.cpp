#include "text/WordCounter.h"

#include "movautil/MovaUtil.h"
#include "text/Strings.h"

namespace mova {
namespace {

bool isWordByte(char byte) {
  return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9') || byte == '_';
}

}  // namespace

size_t WordCounter::Add(Entries& entries, WStringView word) {
  std::string bytes = wideToString(word);
  const auto first = static_cast<unsigned char>(bytes.at(0));
  entries[first].push_back({std::move(bytes), size_});
  return size_++;
}

size_t WordCounter::AddWord(WStringView word) {
  return Add(words_, word);
}

size_t WordCounter::AddPattern(WStringView pattern) {
  return Add(patterns_, pattern);
}

std::vector<int32_t> WordCounter::Count(WStringView wide) const {
  const std::string bytes = wideToString(cText(wide));
  const std::string_view text = bytes;
  std::vector<int32_t> counts(size_);
  std::vector<size_t> ends(size_);  // of the last match of each word
  const auto countMatch = [&](const Entry& entry, size_t end) {
    ++counts[entry.Index];
    ends[entry.Index] = end;
  };

  bool isBehindWord = false;
  for (size_t at = 0; at < text.size(); ++at) {
    const auto first = static_cast<unsigned char>(text[at]);
    const bool isWord = isWordByte(text[at]);
    if (isWord != isBehindWord) {
      for (const Entry& entry : words_[first]) {
        if (at < ends[entry.Index] || !text.substr(at).starts_with(entry.Bytes)) continue;
        // The search goes on behind a match as in a text of its own, at whose start no word has ended.
        if (at == ends[entry.Index] && !isWord) continue;
        const size_t end = at + entry.Bytes.size();
        const bool isBeforeWord = end < text.size() && isWordByte(text[end]);
        if (isBeforeWord != isWordByte(entry.Bytes.back())) countMatch(entry, end);
      }
      isBehindWord = isWord;
    }
    for (const Entry& entry : patterns_[first]) {
      if (at >= ends[entry.Index] && text.substr(at).starts_with(entry.Bytes)) {
        countMatch(entry, at + entry.Bytes.size());
      }
    }
  }
  return counts;
}

}  // namespace mova
