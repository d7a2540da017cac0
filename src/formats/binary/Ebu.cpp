#include "formats/binary/Ebu.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <map>

#include "model/Arithmetic.h"
#include "movautil/MovaUtil.h"
#include "text/Markup.h"
#include "text/Strings.h"

namespace mova {
namespace {

// --- The layout of the GSI block (EBU Tech 3264, table 1)

struct GsiField {
  WString GsiBlock::*member;
  size_t offset;
  size_t size;
  WStringView defaultText;  ///< filled up with blanks
  bool isRead;
};

constexpr GsiField gsiFields[] = {
    {&GsiBlock::CPN, 0, 3, u"437", true},          //
    {&GsiBlock::DFC, 3, 8, u"STL25.01", true},     //
    {&GsiBlock::DSC, 11, 1, u"0", true},           //
    {&GsiBlock::CCT, 12, 2, u"00", true},          //
    {&GsiBlock::LC, 14, 2, u"0A", true},           //
    {&GsiBlock::OPT, 16, 32, u"No Title", true},   //
    {&GsiBlock::OET, 48, 32, u"", true},           //
    {&GsiBlock::TPT, 80, 32, u"", true},           //
    {&GsiBlock::TET, 112, 32, u"", true},          //
    {&GsiBlock::TN, 144, 32, u"", true},           //
    {&GsiBlock::TCD, 176, 32, u"", true},          //
    {&GsiBlock::SLR, 208, 16, u"0", true},         //
    {&GsiBlock::CD, 224, 6, u"101021", true},      //
    {&GsiBlock::RD, 230, 6, u"101021", true},      //
    {&GsiBlock::RN, 236, 2, u"01", true},          //
    {&GsiBlock::TNB, 238, 5, u"00725", true},      //
    {&GsiBlock::TNS, 243, 5, u"00725", true},      //
    {&GsiBlock::TNG, 248, 3, u"001", true},        //
    {&GsiBlock::MNC, 251, 2, u"40", true},         //
    {&GsiBlock::MNR, 253, 2, u"23", true},         //
    {&GsiBlock::TCS, 255, 1, u"1", true},          //
    {&GsiBlock::TCP, 256, 8, u"00000000", true},   //
    {&GsiBlock::TCF, 264, 8, u"00000001", false},  // the six that are not read keep their defaults
    {&GsiBlock::TND, 272, 1, u"1", false},         //
    {&GsiBlock::DSN, 273, 1, u"1", false},         //
    {&GsiBlock::CO, 274, 3, u"USA", true},         //
    {&GsiBlock::PUB, 277, 32, u"", false},         //
    {&GsiBlock::EN, 309, 32, u"", false},          //
    {&GsiBlock::ECD, 341, 32, u"", false},         //
    {&GsiBlock::Spare, 373, 75, u"", true},        //
    {&GsiBlock::UDA, 448, 576, u"", true},         //
};

constexpr bool fieldsAreContiguous() {
  size_t offset = 0;
  for (const GsiField& field : gsiFields) {
    if (field.offset != offset) return false;
    offset += field.size;
  }
  return offset == gsiSize;
}
static_assert(fieldsAreContiguous());

// --- Diacritical marks (ISO 6937)

struct Mark {
  unsigned char byte;
  WStringView letters;   ///< as they stand behind the mark
  WStringView accented;  ///< what each of them becomes
};

constexpr Mark marks[] = {
    {193, u"AEIOUaeiou", u"ÀÈÌÒÙàèìòù"},                                // grave
    {194, u"ACEILNORSUYZacegilnorsuyz", u"ÁĆÉÍĹŃÓŔŚÚÝŹáćéģíĺńóŕśúýź"},  // acute, with ģ for g on purpose
    {195, u"ACEGHIJOSUWYaceghijosuwy", u"ÂĈÊĜĤÎĴÔŜÛŴŶâĉêĝĥîĵôŝûŵŷ"},    // circumflex
    {196, u"AINOUainou", u"ÃĨÑÕŨãĩñõũ"},                                // tilde
    {197, u"AEIOUaeiou", u"ĀĒĪŌŪāēīōū"},                                // macron
    {198, u"AGUagu", u"ĂĞŬăğŭ"},                                        // breve
    {199, u"CEGIZcegiz", u"ĊĖĠİŻċėġıż"},                                // dot above, with ı for i on purpose
    {200, u"AEIOUYaeiouy", u"ÄËÏÖÜŸäëïöüÿ"},                            // diaeresis
    {202, u"AUau", u"ÅŮåů"},                                            // ring
    {203, u"CGKLNRSTcklnrst", u"ÇĢĶĻŅŖŞŢçķļņŗşţ"},                      // cedilla
    {205, u"OUou", u"ŐŰőű"},                                            // double acute
    {206, u"AEIUaeiu", u"ĄĘĮŲąęįų"},                                    // ogonek
    {207, u"CDELNRSTZcdelnrstz", u"ČĎĚĽŇŘŠŤŽčďěľňřšťž"},                // caron
};

constexpr bool marksHaveALetterForEach() {
  return std::all_of(std::begin(marks), std::end(marks),
                     [](const Mark& mark) { return mark.letters.size() == mark.accented.size(); });
}
static_assert(marksHaveALetterForEach());

/// The two bytes of the letter's UTF-8, each as the character that it is in Windows-1252. Callers encode these units
/// once more and rely on this double treatment.
WString doublyTreated(char16_t letter) {
  const std::string bytes = wideToString(WStringView(&letter, 1));
  WString units(bytes.size(), u'\0');
  movaStr_CodePage_to_UTF16(units.data(), bytes.c_str(), static_cast<uint32_t>(bytes.size()), 1252);
  return units;
}

/// For each mark the doubly treated letters, one after the other, two units each.
const std::array<WString, std::size(marks)>& doublyTreatedLists() {
  static const auto lists = [] {
    std::array<WString, std::size(marks)> result;
    for (size_t i = 0; i < std::size(marks); ++i) {
      for (char16_t letter : marks[i].accented) result[i] += doublyTreated(letter);
    }
    return result;
  }();
  return lists;
}

// --- Numbers

/// Digits only, which an empty text has as well.
int32_t rowsOf(const GsiBlock& header) {
  return isAllDigits(header.MNR) ? wideToInt(header.MNR) : 23;
}

/// Hours are not wrapped at 24.
TtiTime timeParts(const TimeCode& time) {
  const int64_t total = cutToInt64(time.TotalMilliseconds);
  return {lowInt32(total / 3600000), static_cast<int32_t>(total / 60000 % 60), static_cast<int32_t>(total / 1000 % 60),
          static_cast<int32_t>(total % 1000)};
}

int32_t framesOf(int32_t milliseconds, int32_t frameRate) {
  return cutToInt32(milliseconds / (1000.0 / frameRate));
}

// --- Reading a text field

constexpr WStringView colorNames[] = {u"Black", u"Red", u"Green", u"Yellow", u"Blue", u"Magenta", u"Cyan", u"White"};

/// Reads the text field of one block.
class TextFieldReader {
 public:
  /// `bytes` begins with the field and goes on to the end of the file: the letter of a mark at the very end of the
  /// field is the first byte of the next block.
  TextFieldReader(std::span<const unsigned char> bytes, const GsiBlock& header)
      : bytes_(bytes),
        hasMarks_(header.CCT == u"00"),
        takesBytesAsTheyAre_(header.CCT == u"01" || header.CCT == u"02" || header.CCT == u"03" || header.CCT == u"04") {
  }

  WString Read() {
    for (size_t i = 0; i < ttiTextSize && bytes_[i] != 0x8F; ++i) ReadByte(i);
    replaceAllInPlace(text_, u"\r\n\r\n", u"\r\n");
    return trimEnd(text_).append(closingTag_);
  }

 private:
  void ReadByte(size_t index) {
    const unsigned char byte = bytes_[index];
    if (byte < 16 && (index == 0 || index == 2 || index == 3)) return;  // controls at the start of a teletext row
    if (skip_) {
      skip_ = false;
      return;
    }
    if (byte < 24 && (byte & 8) == 0) currentColor_ = colorNames[byte & 7];
    switch (byte) {
      case 0x8A:
        text_ += u'\n';  // alone, on purpose
        return;
      case 0x80:
        text_ += u"<i>";
        return;
      case 0x81:
        text_ += u"</i>";
        return;
      case 0x82:
        text_ += u"<u>";
        return;
      case 0x83:
        text_ += u"</u>";
        return;
      default:
        if (byte >= 32 && (byte < 128 || byte > 160)) Append(Character(index));
    }
  }

  /// May set the skip flag. The result lasts until the next call.
  WStringView Character(size_t index) {
    const unsigned char byte = bytes_[index];
    unit_ = byte;
    const WStringView unit(&unit_, 1);
    if (takesBytesAsTheyAre_) return unit;
    if (!hasMarks_) return {};
    if (byte < 193 || byte > 207 || byte == 201 || byte == 204) return unit;
    const auto* mark =
        std::find_if(std::begin(marks), std::end(marks), [byte](const Mark& m) { return m.byte == byte; });
    if (mark == std::end(marks) || index + 1 >= bytes_.size()) return {};
    const size_t letter = mark->letters.find(bytes_[index + 1]);
    if (letter == WStringView::npos) return {};
    skip_ = true;
    return WStringView(doublyTreatedLists()[static_cast<size_t>(mark - marks)]).substr(2 * letter, 2);
  }

  /// A colour change takes effect at the next character that is no blank.
  void Append(WStringView character) {
    if (character != u" " && currentColor_ != lastColor_ && !currentColor_.empty()) {
      closingTag_ = u"</font>";
      if (!lastColor_.empty()) text_ += closingTag_;
      text_ += u"<font color=\"";
      text_ += currentColor_;
      text_ += u"\">";
      lastColor_ = currentColor_;
    }
    text_ += character;
  }

  std::span<const unsigned char> bytes_;
  bool hasMarks_;             ///< Latin, by ISO 6937
  bool takesBytesAsTheyAre_;  ///< No Cyrillic, Arabic, Greek or Hebrew table is applied, on purpose.
  WString text_;
  WStringView currentColor_;
  WStringView lastColor_;
  WStringView closingTag_;
  bool skip_ = false;
  char16_t unit_ = 0;  ///< The character of a single byte.
};

WStringView positionTag(uint8_t vp, uint8_t jc, int32_t rows) {
  const size_t column = jc == 1 ? 0 : jc == 3 ? 2 : 1;
  constexpr WStringView top[] = {u"{\\an7}", u"{\\an8}", u"{\\an9}"};
  constexpr WStringView middle[] = {u"{\\an4}", u"{\\an5}", u"{\\an6}"};
  constexpr WStringView bottom[] = {u"{\\an1}", u"", u"{\\an3}"};
  if (vp < 3) return top[column];
  return vp <= rows / 2 + 1 ? middle[column] : bottom[column];
}

// --- Writing

bool startsWithAny(WStringView text, std::initializer_list<WStringView> beginnings) {
  return std::any_of(beginnings.begin(), beginnings.end(), [text](WStringView b) { return text.starts_with(b); });
}

uint8_t verticalPosition(WStringView text, const GsiBlock& header) {
  int32_t rows = rowsOf(header);
  if (header.DSC == u"1" || header.DSC == u"2") rows = 23;
  if (header.DSC == u"0" && header.MNR == u"02") rows = 15;
  if (startsWithAny(text, {u"{\\an7}", u"{\\an8}", u"{\\an9}"})) return 1;
  if (startsWithAny(text, {u"{\\an4}", u"{\\an5}", u"{\\an6}"})) return static_cast<uint8_t>(rows / 2);
  int64_t breaks = 0;
  for (size_t hit = 0; (hit = findText(text, u"\r\n", hit)) != WStringView::npos; hit += 2) ++breaks;
  return static_cast<uint8_t>(std::max<int64_t>(rows - 2 * breaks - 1, 0));
}

uint8_t justificationCode(WStringView text) {
  if (startsWithAny(text, {u"{\\an1}", u"{\\an4}", u"{\\an7}"})) return 1;
  if (startsWithAny(text, {u"{\\an3}", u"{\\an6}", u"{\\an9}"})) return 3;
  return 2;
}

TtiBlock blockOf(const Paragraph& paragraph, size_t index, const GsiBlock& header) {
  TtiBlock block;
  block.SN = static_cast<uint16_t>(index);
  block.VP = verticalPosition(paragraph.Text, header);
  block.JC = justificationCode(paragraph.Text);
  block.TF = utf8UnitsToLatin1Units(paragraph.Text);
  if (block.TF.starts_with(u"{\\")) {
    const size_t end = WStringView(block.TF).substr(0, 10).find(u'}');
    if (end != WStringView::npos) block.TF.erase(0, end + 1);
  }
  block.TCI = timeParts(paragraph.StartTime);
  block.TCO = timeParts(paragraph.EndTime);
  return block;
}

/// What each unit of the lists is written as: a mark and a letter. The lists hold two units for each letter, while the
/// place of a single unit in the first list that has it is taken as a place in the letters, on purpose; beyond the
/// letters the unit stays, and no later list is asked.
const std::map<char16_t, WString>& unitsTakenApart() {
  static const auto units = [] {
    std::map<char16_t, WString> result;
    for (size_t i = 0; i < std::size(marks); ++i) {
      const WString& list = doublyTreatedLists()[i];
      for (size_t place = 0; place < list.size(); ++place) {
        const bool hasLetter = place < marks[i].letters.size();
        result.try_emplace(list[place],
                           hasLetter ? WString{marks[i].byte, marks[i].letters[place]} : WString(1, list[place]));
      }
    }
    return result;
  }();
  return units;
}

/// Takes accented characters apart. True accented letters pass by, and characters such as the typographic apostrophe
/// don't.
WString takeMarksApart(WStringView text) {
  const auto& units = unitsTakenApart();
  WString result;
  for (char16_t unit : text) {
    const auto apart = unit < 0x80 ? units.end() : units.find(unit);  // No unit of the lists is ASCII.
    if (apart == units.end()) {
      result += unit;
    } else {
      result += apart->second;
    }
  }
  return result;
}

/// Takes the first font tag out of a row. Its colour, if it has one.
std::optional<WString> takeFontColor(WString& row) {
  const size_t begin = row.find(u"<font ");
  if (begin == WString::npos) return std::nullopt;
  const size_t end = row.find(u'>', begin);
  if (end == WString::npos) return std::nullopt;
  const WString tag = row.substr(begin, end + 1 - begin);
  row.erase(begin, tag.size());

  constexpr WStringView attribute = u" color=";
  const size_t color = tag.find(attribute);
  if (color == WString::npos) return std::nullopt;
  WStringView value = WStringView(tag).substr(color + attribute.size());
  value.remove_suffix(1);  // ">"
  const bool isQuoted = value.starts_with(u'"') || value.starts_with(u'\'');
  value = isQuoted ? value.substr(1, value.find(value.front(), 1) - 1) : value.substr(0, value.find(u' '));
  constexpr WStringView trimmed = u"'\"#";
  while (!value.empty() && trimmed.find(value.front()) != WStringView::npos) value.remove_prefix(1);
  while (!value.empty() && trimmed.find(value.back()) != WStringView::npos) value.remove_suffix(1);
  return WString(value);
}

/// Rows with their colour in front: the first colour of the paragraph, or the row's own if that is a later one.
WString teletextRows(WStringView text) {
  constexpr int32_t none = 255;
  int32_t firstColor = none;
  WString rows;
  for (WString& row : split(text, u"\r\n", true)) {
    int32_t rowColor = none;
    if (const auto color = takeFontColor(row)) (firstColor == none ? firstColor : rowColor) = ebuColorCode(*color);
    const int32_t color = rowColor != none ? rowColor : firstColor;
    if (color != none) rows += {u'\x0D', static_cast<char16_t>(color), u'\x0B', u'\x0B'};
    rows += row;
    rows += u'\n';
  }
  return trimEnd(removeHtmlTags(rows));
}

WString textField(const TtiBlock& block, const GsiBlock& header) {
  WString text = header.CCT == u"00" ? takeMarksApart(block.TF) : block.TF;
  if (text.starts_with(u"<i>") && findText(text, u"<i>", 1) == WString::npos && text.ends_with(u"</i>")) {
    replaceAllInPlace(text, u"\r\n", u"\r\n<i>");  // Each row opens its own italics.
  }
  struct Tag {
    WStringView text;
    char16_t unit;
  };
  for (const Tag& tag : {Tag{u"<i>", 0x80},
                         {u"<I>", 0x80},
                         {u"</i>", 0x81},
                         {u"</I>", 0x81},  //
                         {u"<u>", 0x82},
                         {u"<U>", 0x82},
                         {u"</u>", 0x83},
                         {u"</U>", 0x83}}) {
    replaceAllInPlace(text, tag.text, WStringView(&tag.unit, 1));
  }
  if (header.DSC == u"0") {
    text = removeAllFormatting(text);
    replaceAllInPlace(text, u"\r\n", u"\u008A");
  } else {
    text = teletextRows(text);
    replaceAllInPlace(text, u"\r\n", u"\n\n\u008A\u008A");
    text += u"\n\n\u008A";
  }
  text.resize(ttiTextSize, u'\u008F');  // There are no extension blocks on writing: a longer text is cut.
  for (char16_t& unit : text) unit = unit == 226 ? 208 : unit & 0xFF;
  return text;
}

WString today() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  WString text;
  for (int part : {local.tm_year % 100, local.tm_mon + 1, local.tm_mday}) appendNumber(text, part, 2);
  return text;
}

/// The block of the file that the subtitle came from, or a new one. Only files of these four rates are picked up.
GsiBlock headerFor(const Subtitle& subtitle) {
  const WString& kept = subtitle.Header;
  const bool usable = kept.size() > gsiSize && (findText(kept, u"STL24") != WString::npos ||  //
                                                findText(kept, u"STL25") != WString::npos ||  //
                                                findText(kept, u"STL29") != WString::npos ||  //
                                                findText(kept, u"STL30") != WString::npos);
  if (!usable) return {};
  const std::string bytes = wideToString(kept);
  return parseGsiBlock({reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()});
}

}  // namespace

GsiBlock::GsiBlock() {
  for (const GsiField& field : gsiFields) {
    WString& text = this->*field.member;
    text = field.defaultText;
    text.resize(field.size, u' ');
  }
}

GsiBlock parseGsiBlock(std::span<const unsigned char> bytes) {
  GsiBlock block;
  for (const GsiField& field : gsiFields) {
    if (!field.isRead || field.offset > bytes.size()) continue;
    const auto part = bytes.subspan(field.offset, std::min(field.size, bytes.size() - field.offset));
    (block.*field.member).assign(part.begin(), std::find(part.begin(), part.end(), 0));
  }
  return block;
}

WString gsiToText(const GsiBlock& block) {
  WString text;
  for (const GsiField& field : gsiFields) text += block.*field.member;
  if (text.size() == gsiSize) return text;
  WString message = u"Length must be 1024 but is ";
  appendNumber(message, static_cast<int64_t>(text.size()));
  return message;
}

int32_t frameRateOfGsi(const GsiBlock& block) {
  struct Rate {
    WStringView code;
    int32_t frames;
  };
  constexpr Rate rates[] = {{u"STL23", 23}, {u"STL24", 24}, {u"STL25", 25}, {u"STL29", 29},
                            {u"STL35", 35}, {u"STL48", 48}, {u"STL50", 50}, {u"STL60", 60}};
  for (const Rate& rate : rates) {
    if (block.DFC.starts_with(rate.code)) return rate.frames;
  }
  return 30;
}

int32_t ebuColorCode(WStringView name) {
  struct Color {
    WStringView name;
    WStringView digits;
  };
  constexpr Color colors[] = {{u"black", u"000000"},  {u"red", u"ff0000"},  {u"green", u"00ff00"},
                              {u"yellow", u"ffff00"}, {u"blue", u"0000ff"}, {u"magenta", u"ff00ff"},
                              {u"cyan", u"00ffff"},   {u"white", u"ffffff"}};
  const WString lower = wStrToLower(WString(name));
  for (size_t code = 0; code < std::size(colors); ++code) {
    if (lower == colors[code].name || lower == colors[code].digits) return static_cast<int32_t>(code);
  }
  // Other hexadecimal colours are read pair by pair as decimal numbers, on purpose. None of these is above 99, which is
  // dark in all three, and what is no colour is black too.
  return 0;
}

WString buildTtiBlock(const TtiBlock& block, const GsiBlock& header) {
  const int32_t frameRate = frameRateOfGsi(header);
  WString units;
  const auto append = [&units](int32_t value) { units += static_cast<char16_t>(value & 0xFF); };
  append(block.SGN);
  append(block.SN);
  append(block.SN >> 8);
  append(block.EBN);
  append(block.CS);
  for (const TtiTime* time : {&block.TCI, &block.TCO}) {
    append(time->Hours);
    append(time->Minutes);
    append(time->Seconds);
    append(framesOf(time->Milliseconds, frameRate));
  }
  append(block.VP);
  append(block.JC);
  append(block.CF);
  return units + textField(block, header);
}

std::vector<TtiBlock> Ebu::readTtiBlocks(std::span<const unsigned char> bytes, const GsiBlock& header) {
  const int32_t frameRate = frameRateOfGsi(header);
  const int32_t rows = rowsOf(header);
  const auto readTime = [frameRate](std::span<const unsigned char> time) {
    return TtiTime{time[0], time[1], time[2], time[3] * 1000 / frameRate};
  };
  std::vector<TtiBlock> blocks;
  for (size_t start = gsiSize; start + ttiSize <= bytes.size(); start += ttiSize) {
    const auto rest = bytes.subspan(start);
    TtiBlock block;
    block.SGN = rest[0];
    block.SN = static_cast<uint16_t>(rest[1] | rest[2] << 8);
    block.EBN = rest[3];
    block.CS = rest[4];
    block.TCI = readTime(rest.subspan(5, 4));
    block.TCO = readTime(rest.subspan(9, 4));
    block.VP = rest[13];
    block.JC = rest[14];
    block.CF = rest[15];
    VerticalPositions.push_back(block.VP);
    JustificationCodes.push_back(block.JC);
    block.TF = positionTag(block.VP, block.JC, rows);
    block.TF += TextFieldReader(rest.subspan(16), header).Read();
    blocks.push_back(std::move(block));
  }
  return blocks;
}

bool Ebu::Recognizes(const Lines&, const WString& fileName) {
  if (!_file.Read(fileName) || !_file.IsComplete() || _file.Bytes().size() <= gsiSize + ttiSize) return false;
  const GsiBlock block = parseGsiBlock(_file.Bytes());
  if (!startsWithAny(block.DFC,
                     {u"STL23", u"STL24", u"STL25", u"STL29", u"STL30", u"STL35", u"STL48", u"STL50", u"STL60"})) {
    return false;
  }
  return (isAllDigits(block.CPN) && !block.CPN.empty()) || hasExtension(fileName, u"stl");
}

void Ebu::LoadSubtitle(Subtitle& subtitle, const Lines&, const WString& fileName) {
  subtitle.Paragraphs.clear();
  subtitle.Header.clear();
  if (_file.Read(fileName)) ReadFile(subtitle, _file.Bytes());
}

void Ebu::ReadFile(Subtitle& subtitle, std::span<const unsigned char> bytes) {
  Header = parseGsiBlock(bytes);
  subtitle.Header.assign(bytes.begin(), std::find(bytes.begin(), bytes.end(), 0));

  constexpr uint8_t userData = 254;
  uint8_t lastExtension = 255;
  for (const TtiBlock& block : readTtiBlocks(bytes, *Header)) {
    if (block.EBN == userData) continue;
    const WString text = latin1UnitsToUtf8Units(block.TF);
    if (!subtitle.Paragraphs.empty() && lastExtension <= userData) {
      subtitle.Paragraphs.back()->Text += text;
    } else {
      const auto milliseconds = [](const TtiTime& t) {
        return static_cast<double>(partsToMilliseconds(t.Hours, t.Minutes, t.Seconds, t.Milliseconds));
      };
      subtitle.Append({text, milliseconds(block.TCI), milliseconds(block.TCO)});
    }
    lastExtension = block.EBN;
  }
  subtitle.Renumber(1);
}

WString Ebu::WriteText(const Subtitle& subtitle, const WString&) {
  GsiBlock header = headerFor(subtitle);
  const auto count = static_cast<int32_t>(subtitle.Paragraphs.size());
  header.TNS = header.TNB = intToWStr(count, u"%05d");
  header.CD = header.RD = today();
  if (!subtitle.Paragraphs.empty()) {
    const TtiTime first = timeParts(subtitle.Paragraphs.front()->StartTime);
    WString time;
    for (int32_t part :
         {first.Hours, first.Minutes, first.Seconds, framesOf(first.Milliseconds, frameRateOfGsi(header))}) {
      appendNumber(time, part, 2);
    }
    if (time.size() == 8) header.TCF = time;
  }

  WString text = gsiToText(header);
  text.reserve(text.size() + subtitle.Paragraphs.size() * ttiSize);
  for (size_t i = 0; i < subtitle.Paragraphs.size(); ++i) {
    text += buildTtiBlock(blockOf(*subtitle.Paragraphs[i], i, header), header);
  }
  return text;
}

}  // namespace mova
