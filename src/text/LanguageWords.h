/// The words that tell the languages apart.
///
/// They were collected from real caption files. Odd spellings and mis-encoded letters are on purpose, and so are
/// repeats: a word counts once for each place that it has in its group. Case counts.
#pragma once

#include <array>
#include <string_view>

#include "movautil/WideString.h"

namespace mova {

struct WordGroup {
  std::string_view Name;
  std::array<WStringView, 6> Words;
};

// clang-format off

/// Counted where they stand as whole words.
inline constexpr WordGroup kWordGroups[] = {
    {"englishWords", {u"we", u"are", u"and", u"you", u"your", u"what"}},
    {"danishWords1", {u"gider", u"bliver", u"virkelig", u"kommer", u"tilbage", u"Hej"}},
    {"danishWords2", {u"vi", u"han", u"og", u"jeg", u"var", u"men"}},
    {"norwegianMarkers", {u"ut", u"deg", u"meg", u"merkelig", u"mye", u"spørre"}},
    {"dutchWords", {u"van", u"het", u"een", u"Het", u"mij", u"zijn"}},
    {"norwegianWords", {u"vi", u"er", u"og", u"jeg", u"var", u"men"}},
    {"danishMarkers", {u"siger", u"dig", u"mig", u"mærkelig", u"tilbage", u"spørge"}},
    {"swedishWords", {u"vi", u"är", u"och", u"Jag", u"inte", u"för"}},
    {"spanishWords", {u"el", u"bien", u"Vamos", u"Hola", u"casa", u"con"}},
    {"frenchMarkers", {u"Cest", u"cest", u"pas", u"vous", u"pour", u"suis"}},
    {"frenchWords", {u"un", u"vous", u"avec", u"pas", u"ce", u"une"}},
    {"spanishMarkers", {u"Hola", u"nada", u"Vamos", u"pasa", u"los", u"como"}},
    {"italianWords1", {u"Cosa", u"sono", u"Grazie", u"Buongiorno", u"bene", u"questo"}},
    {"italianWords2", {u"davvero", u"negativo", u"essere", u"vuole", u"sensitivo", u"venire"}},
    {"italianWords3", {u"ragazzi", u"propriamente", u"numero", u"hanno", u"giorno", u"faccio"}},
    {"romanianWords1", {u"fãcut", u"Fãrã", u"spune", u"decât", u"pentru", u"vreau"}},
    {"romanianWords2", {u"trãiascã", u"niciodatã", u"înseamnã", u"vorbesti", u"oamenii", u"Asteaptã"}},
    {"romanianWords3", {u"sînt", u"aici", u"Sînt", u"domnule", u"pentru", u"Vreau"}},
    {"romanianWords4", {u"nevoie", u"decat", u"echilibrul", u"vorbesti", u"oamenii", u"zeului"}},
    {"romanianWords5", {u"daca", u"pentru", u"acum", u"soare", u"trebuie", u"Trebuie"}},
    {"romanianWords6", {u"vrea", u"atunci", u"Poate", u"Acum", u"memoria", u"soarele"}},
    {"germanWords", {u"und", u"auch", u"sich", u"bin", u"hast", u"möchte"}},
    {"polishWords", {u"Czy", u"ale", u"ty", u"siê", u"jest", u"mnie"}},
    {"portugueseWords", {u"não", u"Não", u"Estás", u"Então", u"isso", u"com"}},
    {"greekWords1", {u"Ενταξει", u"Ενταξει", u"πρεπει", u"Λοιπον", u"τιποτα", u"ξερεις"}},
    {"greekWords2", {u"μου", u"είναι", u"Είναι", u"αυτό", u"Τόμπυ", u"καλά"}},
    {"russianWords", {u"все", u"это", u"как", u"Воробей", u"сюда", u"Давай"}},
    {"bulgarianWords", {u"Какво", u"тук", u"може", u"Как", u"Ваше", u"какво"}},
    {"croatianWords", {u"sam", u"öto", u"äto", u"ovo", u"vas", u"što"}},
    {"croatianMarker", {u"htjeti ", u"htjeti ", u"htjeti ", u"htjeti ", u"htjeti ", u"htjeti "}},
    {"arabicWords", {u"من", u"هل", u"لا", u"فى", u"لقد", u"ما"}},
    {"hebrewWords", {u"אתה", u"אולי", u"הוא", u"בסדר", u"יודע", u"טוב"}},
    {"hebrewMarkers", {u"אולי", u"אולי", u"אולי", u"אולי", u"טוב", u"טוב"}},
    {"serbianWords", {u"sam", u"što", u"nije", u"Šta", u"ovde", u"za"}},
    {"vietnameseWords", {u"không", u"tôi", u"anh", u"đó", u"Tôi", u"ông"}},
    {"hungarianWords", {u"hogy", u"lesz", u"tudom", u"vagy", u"mondtam", u"még"}},
    {"turkishWords1", {u"önce", u"lazým", u"benim", u"çalýþýyor", u"burada", u"efendim"}},
    {"turkishWords2", {u"için", u"Tamam", u"Hayır", u"benim", u"daha", u"deðil"}},
    {"indonesianWords1", {u"yang", u"tahu", u"bisa", u"akan", u"tahun", u"tapi"}},
    {"indonesianWords2", {u"dengan", u"untuk", u"rumah", u"dalam", u"sudah", u"bertemu"}},
    {"thaiWords1", {u"ไม่", u"เลดดิส", u"พระเจ้า", u"เท็ดดี้", u"หัวหน้า", u"แอนดรูว์"}},
    {"thaiWords2", {u"โอ", u"โรเบิร์ต", u"วิตตอเรีย", u"ดร", u"คุณตำรวจ", u"ราเชล"}},
    {"koreanWords", {u"그리고", u"아니야", u"하지만", u"말이야", u"그들은", u"우리가"}},
    {"finnishWords1", {u"täällä", u"poika", u"Kiitos", u"enää", u"vielä", u"tässä"}},
    {"finnishWords2", {u"että", u"kuin", u"minä", u"mitään", u"Mutta", u"siitä"}},
};

/// Counted wherever they stand.
inline constexpr WordGroup kPatternGroups[] = {
    {"japanesePatterns1", {u"シ", u"ュ", u"シン", u"シ", u"ン", u"ユ"}},
    {"japanesePatterns2", {u"イ", u"ン", u"チ", u"ェ", u"ク", u"ハ"}},
    {"japanesePatterns3", {u"シ", u"ュ", u"う", u"シ", u"ン", u"サ"}},
    {"japanesePatterns4", {u"シ", u"ュ", u"シ", u"ン", u"だ", u"う"}},
    {"chinesePatterns1", {u"是", u"是早", u"吧", u"的", u"爱", u"上好"}},
    {"chinesePatterns2", {u"的", u"啊", u"好", u"好", u"亲", u"的"}},
    {"chinesePatterns3", {u"谢", u"走", u"吧", u"晚", u"上", u"好"}},
    {"chinesePatterns4", {u"来", u"卡", u"拉", u"吐", u"滚", u"他"}},
};

// clang-format on

}  // namespace mova
