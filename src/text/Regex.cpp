#include "text/Regex.h"

#include <locale.h>  // NOLINT(modernize-deprecated-headers): POSIX has more in it than C

#include <cstdio>
#include <limits>
#include <new>

#include "movautil/MovaUtil.h"
#include "text/Strings.h"

namespace mova {
namespace {

/// Holds the thread to the "C" locale: the engine takes character classes and the width of a character from it.
class CLocaleScope {
 public:
  CLocaleScope() : previous_(uselocale(cLocale())) {}
  ~CLocaleScope() { uselocale(previous_); }
  CLocaleScope(const CLocaleScope&) = delete;
  CLocaleScope& operator=(const CLocaleScope&) = delete;

 private:
  static locale_t cLocale() {
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
    return locale;
  }
  locale_t previous_;
};

/// Whether it succeeded. Without memory it can't tell, and "no" would be a wrong answer.
bool engineSays(int code) {
  if (code == REG_ESPACE) throw std::bad_alloc();
  return code == 0;
}

}  // namespace

bool Regex::Search(std::string_view subject, regmatch_t* matches, size_t count, int flags) const {
  if (!compiled_ || subject.size() > static_cast<size_t>(std::numeric_limits<regoff_t>::max())) return false;
  // REG_STARTEND hands the length over: measuring the rest of a long text before each search would make counting
  // quadratic.
  regmatch_t range;
  if (count == 0) matches = &range;
  matches[0] = {0, static_cast<regoff_t>(subject.size())};
  const CLocaleScope scope;
  return engineSays(regexec(compiled_.get(), subject.data(), count, matches, flags | REG_STARTEND));
}

bool Regex::Matches(WStringView text) const {
  return Search(wideToString(cText(text)));
}

Regex createRegex(WStringView pattern) {
  const std::string narrow = wideToString(replaceAll(pattern, u"\\d", u"[0-9]"));
  const CLocaleScope scope;
  auto compiled = std::make_unique<regex_t>();
  Regex regex;
  if (!engineSays(regcomp(compiled.get(), narrow.c_str(), REG_EXTENDED))) {
    std::fputs("UtilityFunctions: createRegex: could not compile regular expression\n", stdout);
    return regex;
  }
  regex.compiled_ = std::shared_ptr<const regex_t>(compiled.release(), [](const regex_t* owned) {
    auto* released = const_cast<regex_t*>(owned);
    regfree(released);
    delete released;
  });
  return regex;
}

int32_t countRegexMatches(const Regex& regex, WStringView text) {
  const std::string narrow = wideToString(cText(text));
  std::string_view subject = narrow;
  int32_t count = 0;
  regmatch_t match;
  while (regex.Search(subject, &match, 1, count == 0 ? 0 : REG_NOTBOL) && match.rm_eo > 0) {
    ++count;
    subject.remove_prefix(static_cast<size_t>(match.rm_eo));
  }
  return count;
}

}  // namespace mova
