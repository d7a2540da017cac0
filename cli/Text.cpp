#include "Text.h"

#include <utf8.h>

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <numeric>
#include <utility>

namespace mova::cli {

namespace {

/// See standardOutputError().
int outputError = 0;

/// Levenshtein's distance: the least number of letters to insert, remove or change.
size_t editDistance(std::string_view a, std::string_view b) {
  std::vector<size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), 0);
  for (size_t i = 0; i < a.size(); ++i) {
    size_t diagonal = std::exchange(row[0], i + 1);
    for (size_t j = 0; j < b.size(); ++j) {
      const size_t changed = diagonal + (a[i] == b[j] ? 0 : 1);
      diagonal = std::exchange(row[j + 1], std::min({row[j] + 1, row[j + 1] + 1, changed}));
    }
  }
  return row.back();
}

}  // namespace

std::optional<MOVAString> toUtf16(std::string_view text) {
  if (!utf8::is_valid(text.begin(), text.end())) return std::nullopt;
  MOVAString result;
  result.reserve(text.size());
  utf8::unchecked::utf8to16(text.begin(), text.end(), std::back_inserter(result));
  return result;
}

std::string toUtf8(std::u16string_view text) {
  std::string result;
  for (size_t i = 0; i < text.size(); ++i) {
    const bool paired = (text[i] & 0xFC00) == 0xD800 && i + 1 < text.size() && (text[i + 1] & 0xFC00) == 0xDC00;
    const bool surrogate = (text[i] & 0xF800) == 0xD800;
    const char32_t code = paired      ? 0x10000 + ((text[i] & 0x3FFu) << 10) + (text[i + 1] & 0x3FFu)
                          : surrogate ? U'\uFFFD'
                                      : char32_t{text[i]};
    utf8::unchecked::append(code, std::back_inserter(result));
    if (paired) ++i;
  }
  return result;
}

std::string foldName(std::string_view name) {
  std::string folded;
  for (const char c : name) {
    if (c != ' ') folded += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  }
  return folded;
}

std::vector<std::string> nearestNames(std::string_view wanted, const std::vector<std::string>& names) {
  const std::string sought = foldName(wanted);
  if (sought.empty()) return {};
  // A third of the letters may be wrong before a name is no longer a likely meaning; a name that contains what was
  // typed
  // ("ssa font" or "timed text") is always one.
  const size_t tolerated = (sought.size() + 2) / 3;
  std::vector<std::pair<size_t, std::string>> near;
  for (const std::string& name : names) {
    const std::string folded = foldName(name);
    const size_t distance = folded.find(sought) != std::string::npos ? 1 : editDistance(sought, folded);
    if (distance <= tolerated) near.emplace_back(distance, name);
  }
  std::stable_sort(near.begin(), near.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  constexpr size_t shown = 4;
  std::vector<std::string> result;
  for (size_t i = 0; i < near.size() && i < shown; ++i) result.push_back(near[i].second);
  return result;
}

std::string printable(std::string_view text) {
  std::string result(text);
  for (char& c : result) {
    if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) c = '?';
  }
  return result;
}

std::string shownInput(std::string_view input) {
  return input == "-" ? "standard input" : printable(input);
}

void printLine(std::FILE* stream, const std::string& line) {
  std::fputs((line + "\n").c_str(), stream);
  if (stream != stdout) return;
  std::fflush(stream);
  if (std::ferror(stream) && outputError == 0) outputError = errno;  // It soon is that of another call.
}

int standardOutputError() {
  return outputError;
}

void printMessage(const std::string& message) {
  printLine(stderr, "mova: " + message);
}

}  // namespace mova::cli
