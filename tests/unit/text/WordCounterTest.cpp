#include <gtest/gtest.h>

#include <iterator>
#include <random>
#include <vector>

#include "movautil/MovaUtil.h"
#include "text/LanguageWords.h"
#include "text/Regex.h"
#include "text/WordCounter.h"

namespace mova {
namespace {

int32_t countWord(WStringView text, WStringView word) {
  WordCounter counter;
  counter.AddWord(word);
  return counter.Count(text)[0];
}

int32_t countPattern(WStringView text, WStringView pattern) {
  WordCounter counter;
  counter.AddPattern(pattern);
  return counter.Count(text)[0];
}

Regex wordRegex(WStringView word) {
  return createRegex(u"\\b" + WString(word) + u"\\b");
}

TEST(WordCounter, CountsWholeWordsOnly) {
  EXPECT_EQ(countWord(u"you, your. you! you", u"you"), 3);
  EXPECT_EQ(countWord(u"you_ you2 Byou yo u You", u"you"), 0);
  EXPECT_EQ(countWord(u"", u"you"), 0);
}

TEST(WordCounter, OtherLettersEndAWord) {
  EXPECT_EQ(countWord(u"éyoué youж", u"you"), 2);
  EXPECT_EQ(countWord(u"mærkelig mærkelige", u"mærkelig"), 1);
}

TEST(WordCounter, AWordThatBeginsInAnotherLetterHasToTouchAWordCharacter) {
  EXPECT_EQ(countWord(u"är är", u"är"), 0);
  EXPECT_EQ(countWord(u"xär _är 1är éär", u"är"), 3);
  EXPECT_EQ(countWord(u"все", u"все"), 0);
  EXPECT_EQ(countWord(u"aвсе aвсеb", u"все"), 1);
}

TEST(WordCounter, TheSearchBehindAMatchDoesNotSeeTheMatch) {
  // The second one touches the first, but stands at the start of what is left.
  EXPECT_EQ(countWord(u"xärär", u"är"), 1);
  EXPECT_EQ(countWord(u"xärxär", u"är"), 1);
  EXPECT_EQ(countWord(u"xär xär", u"är"), 2);
}

TEST(WordCounter, AWordThatEndsInABlankNeedsAnotherBehindIt) {
  EXPECT_EQ(countWord(u"htjeti da htjeti ne", u"htjeti "), 2);
  EXPECT_EQ(countWord(u"htjeti htjeti x", u"htjeti "), 2);
  EXPECT_EQ(countWord(u"htjeti  da htjeti", u"htjeti "), 0);
  EXPECT_EQ(countWord(u"htjeti ", u"htjeti "), 0);
}

TEST(WordCounter, CountsPatternsAnywhere) {
  EXPECT_EQ(countPattern(u"シンシンxシ", u"シ"), 3);
  EXPECT_EQ(countPattern(u"シンシンxシ", u"シン"), 2);
  EXPECT_EQ(countPattern(u"aaaaa", u"aa"), 2);
}

TEST(WordCounter, CountsEachWordByItself) {
  WordCounter counter;
  EXPECT_EQ(counter.AddWord(u"un"), 0u);
  EXPECT_EQ(counter.AddWord(u"und"), 1u);
  EXPECT_EQ(counter.AddPattern(u"un"), 2u);
  EXPECT_EQ(counter.AddWord(u"un"), 3u);
  EXPECT_EQ(counter.AddWord(u"n"), 4u);
  EXPECT_EQ(counter.Count(u"un und n unten un"), (std::vector<int32_t>{2, 1, 4, 2, 1}));
}

TEST(WordCounter, ATextEndsAtItsFirstZeroUnit) {
  EXPECT_EQ(countWord(WString(u"you\0you", 7), u"you"), 1);
}

TEST(WordCounter, CountsWhatTheRegexesCount) {
  std::vector<WStringView> words;
  for (const WordGroup& group : kWordGroups) words.insert(words.end(), group.Words.begin(), group.Words.end());
  for (const WordGroup& group : kPatternGroups) words.insert(words.end(), group.Words.begin(), group.Words.end());
  words.insert(words.end(), {u"aa", u"a", u"éé", u"é", u"aéa", u"éaé", u" a ", u"a a", u"_", u"é é"});
  WordCounter all;
  for (WStringView word : words) all.AddWord(word);
  for (WStringView word : words) all.AddPattern(word);
  std::vector<Regex> regexes;
  for (WStringView word : words) regexes.push_back(wordRegex(word));
  for (WStringView word : words) regexes.push_back(createRegex(word));

  const WStringView junk[] = {
      u" ", u" ", u" ", u"a",    u"a", u"r", u"X",          u"_",      u"7",   u"é",
      u"ä", u"ж", u".", u"\r\n", u"'", u"-", u"\U0001F600", u"\xD800", u"<i>", WStringView(u"\0", 1)};
  std::mt19937 random(19870604);
  for (int round = 0; round < 3000; ++round) {
    size_t picked[3];
    for (size_t& word : picked) word = random() % words.size();
    WString text;
    for (auto length = random() % 24; length > 0; --length) {
      const WStringView word = words[picked[random() % 3]];
      switch (random() % 6) {
        case 0:
          text += word.substr(random() % word.size());
          break;
        case 1:
          text += word.substr(0, random() % word.size());
          break;
        case 2:
        case 3:
          text += word;
          break;
        default:
          text += junk[random() % (std::size(junk) - (round % 8 != 0))];
      }
    }
    const std::vector<int32_t> counts = all.Count(text);
    // All words in some rounds, the picked ones in every round.
    for (size_t i = 0; i < regexes.size(); ++i) {
      const size_t word = i % words.size();
      if (round % 50 != 0 && word != picked[0] && word != picked[1] && word != picked[2]) continue;
      ASSERT_EQ(counts[i], countRegexMatches(regexes[i], text))
          << wideToString(words[word]) << " in " << wideToString(text);
    }
  }
}

}  // namespace
}  // namespace mova
