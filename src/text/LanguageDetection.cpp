#include "text/LanguageDetection.h"

#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <numeric>
#include <tuple>
#include <vector>

#include "text/LanguageWords.h"
#include "text/WordCounter.h"

namespace mova {
namespace {

/// The place of a group in a table, looked up by the compiler: a name that is none doesn't compile.
template <const auto& Groups>
struct GroupName {
  consteval GroupName(const char* name) {
    while (Groups[Index].Name != name) ++Index;
  }
  size_t Index = 0;
};

/// What countWords and countPatterns give for every group: all are counted in one pass over the text, since a text of a
/// language at the end of the chain is tested for all others first.
class GroupCounts {
 public:
  explicit GroupCounts(WStringView text) : counts_(allGroups().Count(text)) {}

  /// The sum over the groups.
  int64_t Words(std::initializer_list<GroupName<kWordGroups>> groups) const {
    int64_t sum = 0;
    for (const auto& group : groups) sum += OfGroup(group.Index);
    return sum;
  }
  int64_t Patterns(std::initializer_list<GroupName<kPatternGroups>> groups) const {
    int64_t sum = 0;
    for (const auto& group : groups) sum += OfGroup(std::size(kWordGroups) + group.Index);
    return sum;
  }

 private:
  static constexpr size_t kGroupSize = std::tuple_size_v<decltype(WordGroup::Words)>;

  static const WordCounter& allGroups() {
    static const WordCounter counter = [] {
      WordCounter words;
      for (const WordGroup& group : kWordGroups) {
        for (WStringView word : group.Words) words.AddWord(word);
      }
      for (const WordGroup& group : kPatternGroups) {
        for (WStringView pattern : group.Words) words.AddPattern(pattern);
      }
      return words;
    }();
    return counter;
  }

  int64_t OfGroup(size_t group) const {
    int64_t sum = 0;
    for (size_t word = 0; word < kGroupSize; ++word) sum += counts_[group * kGroupSize + word];
    return sum;
  }

  std::vector<int32_t> counts_;  ///< Group by group, word by word.
};

int32_t sumOf(const std::vector<int32_t>& counts) {
  return std::accumulate(counts.begin(), counts.end(), 0);
}

}  // namespace

WString detectLanguageOfSubtitle(const Subtitle& subtitle) {
  WString text;
  for (const auto& paragraph : subtitle.Paragraphs) {
    text += paragraph->Text;
    text += u'\n';
  }
  const WString language = detectLanguage(text, static_cast<int32_t>(subtitle.Paragraphs.size() / 14));
  return language.empty() ? u"en" : language;
}

// The order of the tests counts: with a small limit most texts pass several of them. Conditions that look mixed up
// (Arabic is tested against Hebrew and Romanian, Romanian has two more tests of its own) are on purpose.
WString detectLanguage(WStringView text, int32_t limit) {
  const GroupCounts count(text);

  if (count.Words({"englishWords"}) > limit) return u"en";

  const int64_t danish = count.Words({"danishWords1", "danishWords2"});
  if (danish > limit && count.Words({"norwegianMarkers"}) < 2 && count.Words({"dutchWords"}) < danish) return u"da";

  const int64_t norwegian = count.Words({"norwegianWords"});
  if (norwegian > limit && count.Words({"danishMarkers"}) < 2 && count.Words({"dutchWords"}) < norwegian) return u"no";

  if (count.Words({"swedishWords"}) > limit) return u"sv";
  if (count.Words({"spanishWords"}) > limit && count.Words({"frenchMarkers"}) < 2) return u"es";
  if (count.Words({"frenchWords"}) > limit && count.Words({"spanishMarkers"}) < 2 &&
      count.Words({"italianWords1"}) < 2 && count.Words({"romanianWords3"}) < 5) {
    return u"fr";
  }
  if (count.Words({"germanWords"}) > limit) return u"de";
  if (count.Words({"dutchWords"}) > limit) return u"nl";
  if (count.Words({"polishWords"}) > limit) return u"pl";
  if (count.Words({"italianWords1", "italianWords2", "italianWords3"}) > limit && count.Words({"frenchMarkers"}) < 2 &&
      count.Words({"spanishMarkers"}) < 2) {
    return u"it";
  }
  if (count.Words({"portugueseWords"}) > limit) return u"pt";
  if (count.Words({"greekWords1", "greekWords2"}) > limit) return u"el";
  if (count.Words({"russianWords"}) > limit) return u"ru";
  if (count.Words({"bulgarianWords"}) > limit) return u"bg";
  if (count.Words({"croatianWords"}) > limit && count.Words({"croatianMarker"}) > 0) return u"hr";

  const int64_t arabic = count.Words({"arabicWords"});
  if (arabic > limit) {
    if (count.Words({"hebrewMarkers"}) >= 11) return u"he";
    const int64_t romanian = count.Words({"romanianWords1", "romanianWords2", "romanianWords3"});
    if (romanian > arabic) return u"ro";
    return romanian > count.Words({"romanianWords6", "romanianWords4", "romanianWords5"}) ? u"ro" : u"ar";
  }

  if (count.Words({"hebrewWords"}) > limit) return u"he";
  if (count.Words({"serbianWords"}) > limit) return u"sr";
  if (count.Words({"vietnameseWords"}) > limit) return u"vi";
  if (count.Words({"hungarianWords"}) > limit) return u"hu";
  if (count.Words({"turkishWords1", "turkishWords2"}) > limit) return u"tr";
  if (count.Words({"indonesianWords1", "indonesianWords2"}) > limit) return u"id";

  const int64_t thai = count.Words({"thaiWords1", "thaiWords2"});
  if (thai >= 11 || thai > limit) return u"th";
  const int64_t korean = count.Words({"koreanWords"});
  if (korean >= 11 || korean > limit) return u"ko";

  if (count.Words({"finnishWords1", "finnishWords2"}) > limit) return u"fi";
  if (count.Words({"romanianWords1", "romanianWords2", "romanianWords3"}) > limit) return u"ro";
  if (count.Words({"romanianWords4", "romanianWords5", "romanianWords6"}) > limit) return u"ro";

  const int64_t patternLimit = int64_t{limit} * 2;
  if (count.Patterns({"japanesePatterns1", "japanesePatterns2", "japanesePatterns3", "japanesePatterns4"}) >
      patternLimit) {
    return u"jp";
  }
  if (count.Patterns({"chinesePatterns1", "chinesePatterns2", "chinesePatterns3", "chinesePatterns4"}) > patternLimit) {
    return u"zh";
  }
  return u"";
}

int32_t countWords(WStringView text, const std::array<WStringView, 6>& words) {
  WordCounter counter;
  for (WStringView word : words) counter.AddWord(word);
  return sumOf(counter.Count(text));
}

int32_t countPatterns(WStringView text, const std::array<WStringView, 6>& patterns) {
  WordCounter counter;
  for (WStringView pattern : patterns) counter.AddPattern(pattern);
  return sumOf(counter.Count(text));
}

}  // namespace mova
