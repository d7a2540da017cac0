/// POSIX extended regular expressions by the C library's engine.
///
/// What the patterns of the formats rely on: matching is by byte, so "." takes half of a two-byte letter; classes are
/// those of the "C" locale, whatever locale the host process runs in; "^" and "$" match at the ends of the whole
/// subject only, and "." matches a line feed; the GNU operators \s \S \w \W \b \B \< \> work outside brackets, any
/// other escaped character stands for itself (a pattern that needs a tab holds a real one); inside brackets a backslash
/// is an ordinary character, so that [^\s>] excludes a backslash, an "s" and a ">"; the leftmost longest match wins.
#pragma once

#include <regex.h>

#include <cstdint>
#include <memory>
#include <string_view>

#include "movautil/WideString.h"

namespace mova {

class Regex {
 public:
  /// Searches a narrow text, which holds no zero byte. `matches` receives the offsets, in bytes, of the match and, if
  /// `count` is above 1, of the groups. `flags` is 0, or REG_NOTBOL for the rest of a text that was searched before.
  bool Search(std::string_view subject, regmatch_t* matches = nullptr, size_t count = 0, int flags = 0) const;

  /// Searches the UTF-8 form of a wide text, which ends at its first zero unit.
  bool Matches(WStringView text) const;

 private:
  friend Regex createRegex(WStringView pattern);
  std::shared_ptr<const regex_t> compiled_;
};

/// Every "\d" of the pattern becomes "[0-9]", within brackets too. A pattern that can't be compiled gives a message on
/// standard output and a value that matches nothing.
Regex createRegex(WStringView pattern);

/// The number of non-overlapping matches in the text. An empty match ends the count.
int32_t countRegexMatches(const Regex& regex, WStringView text);

}  // namespace mova
