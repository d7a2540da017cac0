#include <gtest/gtest.h>

#include <set>
#include <string>

#include "movautil/MovaUtil.h"
#include "text/LanguageDetection.h"
#include "text/LanguageWords.h"

namespace mova {
namespace {

WString repeated(WStringView piece, size_t times) {
  WString text;
  for (size_t i = 0; i < times; ++i) text += piece;
  return text;
}

/// The language of a text that needs a single word.
WString language(WStringView text) {
  return detectLanguage(text, 0);
}

WString languageOf(std::initializer_list<WStringView> texts, size_t paragraphs) {
  Subtitle subtitle;
  for (WStringView text : texts) subtitle.Append(Paragraph(WString(text), 0, 0));
  while (subtitle.Paragraphs.size() < paragraphs) subtitle.Append(Paragraph(u"-", 0, 0));
  return detectLanguageOfSubtitle(subtitle);
}

// --- The words.

TEST(LanguageWords, ThereAre45GroupsOfWordsAnd8OfPatterns) {
  EXPECT_EQ(std::size(kWordGroups), 45u);
  EXPECT_EQ(std::size(kPatternGroups), 8u);
  std::set<std::string_view> names;
  for (const WordGroup& group : kWordGroups) names.insert(group.Name);
  for (const WordGroup& group : kPatternGroups) names.insert(group.Name);
  EXPECT_EQ(names.size(), 53u);
}

TEST(LanguageWords, NoLetterOfThemChanges) {
  // FNV-1a over the UTF-8 of the words, each with a zero byte behind it.
  uint32_t hash = 0x811C9DC5;
  std::set<std::string> words;
  const auto add = [&](const WordGroup& group) {
    for (WStringView word : group.Words) {
      words.insert(wideToString(word));
      for (char byte : wideToString(word) + '\0') hash = (hash ^ static_cast<unsigned char>(byte)) * 0x01000193;
    }
  };
  for (const WordGroup& group : kWordGroups) add(group);
  EXPECT_EQ(words.size(), 240u);
  EXPECT_EQ(hash, 0xF7A29C5Fu);
  for (const WordGroup& group : kPatternGroups) add(group);
  EXPECT_EQ(words.size(), 272u);
  EXPECT_EQ(hash, 0x221A7DFBu);
}

TEST(LanguageWords, AreNoPatternsWithSpecialCharacters) {
  for (const WordGroup& group : kWordGroups) {
    for (WStringView word : group.Words) {
      EXPECT_FALSE(word.empty());
      EXPECT_EQ(word.find_first_of(u"\\^$.[]|()*+?{}"), WStringView::npos) << wideToString(word);
    }
  }
  for (const WordGroup& group : kPatternGroups) {
    for (WStringView word : group.Words) {
      EXPECT_FALSE(word.empty());
      EXPECT_EQ(word.find_first_of(u"\\^$.[]|()*+?{}"), WStringView::npos) << wideToString(word);
    }
  }
}

TEST(LanguageWords, SomeGroupsRepeatAWord) {
  EXPECT_EQ(countWords(u"htjeti da", {u"htjeti ", u"htjeti ", u"htjeti ", u"htjeti ", u"htjeti ", u"htjeti "}), 6);
}

// --- Counting.

TEST(LanguageDetection, CountsSixWords) {
  EXPECT_EQ(countWords(u"You and I: what are you? And your", {u"we", u"are", u"and", u"you", u"your", u"what"}), 5);
  EXPECT_EQ(countWords(u"", {u"we", u"are", u"and", u"you", u"your", u"what"}), 0);
}

TEST(LanguageDetection, CountsSixPatterns) {
  EXPECT_EQ(countPatterns(u"シンプル", {u"シ", u"ュ", u"シン", u"シ", u"ン", u"ユ"}), 4);
  EXPECT_EQ(countPatterns(u"wearing", {u"we", u"are", u"ar", u"in", u"g", u"x"}), 4);
}

// --- Subtitles.

TEST(LanguageDetection, AnEmptySubtitleIsEnglish) {
  EXPECT_EQ(languageOf({}, 0), u"en");
}

TEST(LanguageDetection, OneWordIsEnoughForUnder14Paragraphs) {
  EXPECT_EQ(languageOf({u"you"}, 1), u"en");
  EXPECT_EQ(languageOf({u"und"}, 13), u"de");
  EXPECT_EQ(languageOf({u"und"}, 14), u"en");
  EXPECT_EQ(languageOf({u"und", u"auch"}, 14), u"de");
}

TEST(LanguageDetection, For28ParagraphsItTakesThreeWords) {
  EXPECT_EQ(languageOf({u"avec", u"une"}, 28), u"en");
  EXPECT_EQ(languageOf({u"avec", u"une", u"pas"}, 28), u"fr");
  EXPECT_EQ(languageOf({u"avec", u"une", u"pas"}, 41), u"fr");
  EXPECT_EQ(languageOf({u"avec", u"une", u"pas"}, 42), u"en");
}

TEST(LanguageDetection, WordsEndWithTheirParagraph) {
  EXPECT_EQ(languageOf({u"un", u"d"}, 2), u"fr");
  EXPECT_EQ(languageOf({u"au", u"ch"}, 2), u"en");
  EXPECT_EQ(languageOf({u"a und", u"b"}, 2), u"de");
}

TEST(LanguageDetection, RussianTextIsTakenForEnglish) {
  EXPECT_EQ(language(u"Давай все это сюда, как Воробей"), u"");
  EXPECT_EQ(languageOf({u"Давай все это сюда, как Воробей"}, 1), u"en");
}

TEST(LanguageDetection, JapaneseTextIsTold) {
  EXPECT_EQ(languageOf({u"シュンユイチェクハ"}, 14), u"jp");
}

TEST(LanguageDetection, NothingBehindAZeroUnitCounts) {
  EXPECT_EQ(languageOf({WStringView(u"a\0und", 5), u"und"}, 2), u"en");
}

// --- The chain.

TEST(LanguageDetection, ATextWithoutKnownWordsHasNoLanguage) {
  EXPECT_EQ(language(u""), u"");
  EXPECT_EQ(language(u"You YOU"), u"");
}

TEST(LanguageDetection, OneWordTellsALanguage) {
  EXPECT_EQ(language(u"we"), u"en");
  EXPECT_EQ(language(u"Hej"), u"da");
  EXPECT_EQ(language(u"vi"), u"da");
  EXPECT_EQ(language(u"er"), u"no");
  EXPECT_EQ(language(u"och"), u"sv");
  EXPECT_EQ(language(u"bien"), u"es");
  EXPECT_EQ(language(u"avec"), u"fr");
  EXPECT_EQ(language(u"möchte"), u"de");
  EXPECT_EQ(language(u"zijn"), u"nl");
  EXPECT_EQ(language(u"jest"), u"pl");
  EXPECT_EQ(language(u"Cosa"), u"it");
  EXPECT_EQ(language(u"davvero"), u"it");
  EXPECT_EQ(language(u"faccio"), u"it");
  EXPECT_EQ(language(u"isso"), u"pt");
  EXPECT_EQ(language(u"nije"), u"sr");
  EXPECT_EQ(language(u"tôi"), u"vi");
  EXPECT_EQ(language(u"hogy"), u"hu");
  EXPECT_EQ(language(u"burada"), u"tr");
  EXPECT_EQ(language(u"daha"), u"tr");
  EXPECT_EQ(language(u"yang"), u"id");
  EXPECT_EQ(language(u"rumah"), u"id");
  EXPECT_EQ(language(u"poika"), u"fi");
  EXPECT_EQ(language(u"Mutta"), u"fi");
  EXPECT_EQ(language(u"decât"), u"ro");
  EXPECT_EQ(language(u"oamenii"), u"ro");
  EXPECT_EQ(language(u"aici"), u"ro");
  EXPECT_EQ(language(u"nevoie"), u"ro");
  EXPECT_EQ(language(u"soare"), u"ro");
  EXPECT_EQ(language(u"memoria"), u"ro");
  EXPECT_EQ(language(u"シ"), u"jp");
  EXPECT_EQ(language(u"是"), u"zh");
}

TEST(LanguageDetection, OtherScriptsAreToldWhereTheyTouchWordCharacters) {
  EXPECT_EQ(language(u"aτιποταb"), u"el");
  EXPECT_EQ(language(u"aμουb"), u"el");
  EXPECT_EQ(language(u"1все2"), u"ru");
  EXPECT_EQ(language(u"_тук_"), u"bg");
  EXPECT_EQ(language(u"aهلb"), u"ar");
  EXPECT_EQ(language(u"aהואb"), u"he");
  EXPECT_EQ(language(u"aไม่b"), u"th");
  EXPECT_EQ(language(u"aโอb"), u"th");
  EXPECT_EQ(language(u"a하지만b"), u"ko");
  EXPECT_EQ(language(u"τιποτα μου все тук هل הוא ไม่ โอ 하지만"), u"");
}

TEST(LanguageDetection, TheLimitHasToBePassed) {
  EXPECT_EQ(detectLanguage(u"you and what", 2), u"en");
  EXPECT_EQ(detectLanguage(u"you and what", 3), u"");
  EXPECT_EQ(detectLanguage(u"", -1), u"en");
}

TEST(LanguageDetection, TheOrderOfTheLanguagesCounts) {
  EXPECT_EQ(language(u"und vi you"), u"en");
  EXPECT_EQ(language(u"und vi"), u"da");
  EXPECT_EQ(language(u"hogy und"), u"de");
}

TEST(LanguageDetection, DanishIsToldFromNorwegianAndDutch) {
  EXPECT_EQ(language(u"vi deg"), u"da");
  EXPECT_EQ(language(u"vi deg meg"), u"no");
  EXPECT_EQ(language(u"Hej deg meg"), u"");
  EXPECT_EQ(language(u"men men van"), u"da");
  EXPECT_EQ(language(u"men van"), u"nl");
  EXPECT_EQ(language(u"Hej vi van"), u"da");
}

TEST(LanguageDetection, NorwegianIsToldFromDanishAndDutch) {
  EXPECT_EQ(language(u"er dig"), u"no");
  EXPECT_EQ(language(u"er dig mig"), u"");
  EXPECT_EQ(language(u"er het"), u"nl");
  EXPECT_EQ(language(u"vi deg meg dig mig"), u"sv");
}

TEST(LanguageDetection, SpanishIsToldFromFrench) {
  EXPECT_EQ(language(u"bien pas"), u"es");
  EXPECT_EQ(language(u"bien pas vous"), u"fr");
}

TEST(LanguageDetection, FrenchIsToldFromSpanishItalianAndRomanian) {
  EXPECT_EQ(language(u"une nada"), u"fr");
  EXPECT_EQ(language(u"une nada como"), u"");
  EXPECT_EQ(language(u"une sono"), u"fr");
  EXPECT_EQ(language(u"une sono bene"), u"it");
  EXPECT_EQ(language(u"une aici aici aici aici"), u"fr");
  EXPECT_EQ(language(u"une aici aici aici aici aici"), u"ro");
}

TEST(LanguageDetection, ItalianIsToldFromFrenchAndSpanish) {
  EXPECT_EQ(language(u"sono suis"), u"it");
  EXPECT_EQ(language(u"sono suis suis"), u"");
  EXPECT_EQ(language(u"sono nada nada"), u"");
}

TEST(LanguageDetection, CroatianNeedsItsMarker) {
  EXPECT_EQ(language(u"sam htjeti da"), u"hr");
  EXPECT_EQ(language(u"ovo htjeti"), u"");
  EXPECT_EQ(language(u"sam htjeti"), u"sr");
}

TEST(LanguageDetection, ArabicIsTestedAgainstHebrewAndRomanian) {
  EXPECT_EQ(language(u"aهلb aאוליb aאוליb"), u"ar");
  // Four matches for each of these, two for the others.
  EXPECT_EQ(language(u"aهلb aאוליb aאוליb aאוליb"), u"he");
  EXPECT_EQ(language(u"aهلb aאוליb aאוליb aטובb"), u"ar");
  EXPECT_EQ(language(u"aهلb aאוליb aאוליb aטובb aטובb"), u"he");
  EXPECT_EQ(language(u"aهلb spune aici daca acum"), u"ro");
  EXPECT_EQ(language(u"aهلb spune"), u"ro");
  EXPECT_EQ(language(u"aهلb spune daca"), u"ar");
  EXPECT_EQ(language(u"aهلb daca"), u"ar");
}

TEST(LanguageDetection, ElevenMatchesTellThaiAndKoreanWhateverTheLimit) {
  EXPECT_EQ(detectLanguage(repeated(u"aไม่b ", 11), 100), u"th");
  EXPECT_EQ(detectLanguage(repeated(u"aไม่b ", 10), 100), u"");
  EXPECT_EQ(detectLanguage(repeated(u"aไม่b ", 10), 9), u"th");
  EXPECT_EQ(detectLanguage(repeated(u"a그리고b ", 11), 100), u"ko");
  EXPECT_EQ(detectLanguage(repeated(u"a그리고b ", 10), 100), u"");
  EXPECT_EQ(detectLanguage(repeated(u"a그리고b ", 10), 9), u"ko");
}

TEST(LanguageDetection, JapaneseAndChineseNeedTwiceTheLimit) {
  // Six matches.
  EXPECT_EQ(detectLanguage(u"シ", 2), u"jp");
  EXPECT_EQ(detectLanguage(u"シ", 3), u"");
  // Three matches.
  EXPECT_EQ(detectLanguage(u"好", 1), u"zh");
  EXPECT_EQ(detectLanguage(u"好", 2), u"");
  EXPECT_EQ(detectLanguage(u"你好シ", 2147483647), u"");
}

}  // namespace
}  // namespace mova
