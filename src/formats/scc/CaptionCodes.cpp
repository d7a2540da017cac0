#include "formats/scc/CaptionCodes.h"

#include <bit>
#include <unordered_map>

#include "movautil/MovaUtil.h"

namespace mova {
namespace {

/// The first byte of a row's codes, and where its second bytes begin.
struct RowCodes {
  int32_t Row;
  int FirstByte;
  int FirstByteWithParity;
  int SecondByteBase;
};

// clang-format off
constexpr RowCodes rowCodes[] = {
    {1, 0x11, 0x91, 0x40},  {2, 0x11, 0x91, 0x60},
    {3, 0x12, 0x92, 0x40},  {4, 0x12, 0x92, 0x60},
    {5, 0x15, 0x15, 0x40},  {6, 0x15, 0x15, 0x60},
    {7, 0x16, 0x16, 0x40},  {8, 0x16, 0x16, 0x60},
    {9, 0x17, 0x97, 0x40},  {10, 0x17, 0x97, 0x60},
    {11, 0x10, 0x10, 0x40},
    {12, 0x13, 0x13, 0x40}, {13, 0x13, 0x13, 0x60},
    {14, 0x14, 0x94, 0x40}, {15, 0x14, 0x94, 0x60},
};
// clang-format on

constexpr Color preambleColors[] = {colorWhite, colorGreen, colorBlue, colorCyan, colorRed, colorYellow, colorMagenta};

struct MidRowCode {
  WStringView Word;
  mova::Color Color;
  int32_t Style;
};

constexpr MidRowCode midRowCodes[] = {
    {u"9120", colorWhite, CaptionCodeInfo::Plain},
    {u"91a1", colorWhite, CaptionCodeInfo::Underlined},
    {u"91a2", colorGreen, CaptionCodeInfo::Plain},
    {u"9123", colorGreen, CaptionCodeInfo::Underlined},
    {u"91a4", colorBlue, CaptionCodeInfo::Plain},
    {u"9125", colorBlue, CaptionCodeInfo::Underlined},
    {u"9126", colorCyan, CaptionCodeInfo::Plain},
    {u"91a7", colorCyan, CaptionCodeInfo::Underlined},
    {u"91a8", colorRed, CaptionCodeInfo::Plain},
    {u"9129", colorRed, CaptionCodeInfo::Underlined},
    {u"912a", colorYellow, CaptionCodeInfo::Plain},
    {u"91ab", colorYellow, CaptionCodeInfo::Underlined},
    {u"912c", colorMagenta, CaptionCodeInfo::Plain},
    {u"91ad", colorMagenta, CaptionCodeInfo::Underlined},
    {u"91ae", colorTransparent, CaptionCodeInfo::Italic},
    {u"912f", colorTransparent, CaptionCodeInfo::ItalicUnderlined},
    {u"94a8", colorTransparent, CaptionCodeInfo::Plain},  // flash, which counts as one of them
};

constexpr WStringView positionFirstBytes[] = {u"91", u"91", u"92", u"92", u"15", u"15", u"16", u"16",
                                              u"97", u"97", u"10", u"13", u"13", u"94", u"94"};

/// For indents of 0, 4, 8 up to 28 columns.
constexpr struct {
  WStringView Odd;   ///< rows 1, 3, 5, 7, 9, 11, 12 and 14
  WStringView Even;  ///< rows 2, 4, 6, 8, 10, 13 and 15
} positionSecondBytes[] = {
    {u"d0", u"70"}, {u"52", u"f2"}, {u"54", u"f4"}, {u"d6", u"76"},
    {u"58", u"f8"}, {u"da", u"7a"}, {u"dc", u"7c"}, {u"5e", u"fe"},
};

constexpr WStringView tabOffsetCodes[] = {u"97a1", u"97a2", u"9723"};

int withOddParity(int byte) {
  return std::popcount(static_cast<unsigned>(byte)) % 2 == 0 ? byte | 0x80 : byte;
}

WString codeWord(int firstByte, int secondByte) {
  constexpr WStringView digits = u"0123456789abcdef";
  return {digits[firstByte >> 4], digits[firstByte & 15], digits[secondByte >> 4], digits[secondByte & 15]};
}

int32_t plainOrUnderlined(int offset) {
  return offset % 2 == 0 ? CaptionCodeInfo::Plain : CaptionCodeInfo::Underlined;
}

CaptionCodeInfo preambleInfo(int offset, int32_t row) {
  if (offset == 14) return {colorWhite, CaptionCodeInfo::Italic, 0, row};
  if (offset == 15) return {colorWhite, CaptionCodeInfo::ItalicUnderlined, 0, row};
  return {preambleColors[offset / 2], plainOrUnderlined(offset), 0, row};
}

void appendPreamblesWithoutParity(std::vector<CaptionCode>& codes, const RowCodes& row) {
  for (int offset = 0; offset < 16; ++offset) {
    codes.push_back({codeWord(row.FirstByte, row.SecondByteBase + offset), preambleInfo(offset, row.Row)});
  }
}

/// White is known by its codes with an indent of 0, italic not at all.
void appendPreamblesWithParity(std::vector<CaptionCode>& codes, const RowCodes& row) {
  for (int offset = 0; offset < 14; ++offset) {
    const int plainSecondByte = row.SecondByteBase + (offset < 2 ? 0x10 : 0) + offset;
    const int secondByte = withOddParity(plainSecondByte);
    const bool isKnown = row.FirstByteWithParity == row.FirstByte && offset >= 2 && secondByte == plainSecondByte;
    const WString word = codeWord(row.FirstByteWithParity, secondByte);
    // Green underlined in row 6 is left out on purpose: it reads as the letter "c".
    if (!isKnown && word != u"15e3") codes.push_back({word, preambleInfo(offset, row.Row)});
  }
}

void appendIndentCodes(std::vector<CaptionCode>& codes, const RowCodes& row) {
  for (int offset = 2; offset < 16; ++offset) {
    codes.push_back({codeWord(row.FirstByteWithParity, withOddParity(row.SecondByteBase + 0x10 + offset)),
                     {colorTransparent, plainOrUnderlined(offset), offset / 2 * 4, row.Row}});
  }
}

std::vector<CaptionCode> makeCaptionCodes() {
  std::vector<CaptionCode> codes;
  for (const RowCodes& row : rowCodes) appendPreamblesWithoutParity(codes, row);
  for (const RowCodes& row : rowCodes) appendPreamblesWithParity(codes, row);
  for (const RowCodes& row : rowCodes) appendIndentCodes(codes, row);
  for (const MidRowCode& code : midRowCodes) codes.push_back({WString(code.Word), {code.Color, code.Style}});
  return codes;
}

}  // namespace

const std::vector<CaptionCode>& captionCodes() {
  static const std::vector<CaptionCode> codes = makeCaptionCodes();
  return codes;
}

std::optional<CaptionCodeInfo> lookupCaptionCode(WStringView word) {
  static const auto infos = [] {
    std::unordered_map<WStringView, CaptionCodeInfo> map;
    for (const CaptionCode& code : captionCodes()) map.emplace(code.Word, code.Info);
    return map;
  }();
  const auto found = infos.find(wStrToLower(WString(word)));
  if (found == infos.end()) return std::nullopt;
  return found->second;
}

WString captionPositionCode(int32_t row, int32_t indent) {
  const bool isOddForm = row < 12 ? row % 2 == 1 : row % 2 == 0;
  const auto& secondBytes = positionSecondBytes[indent / 4];
  WString code(positionFirstBytes[row - 1]);
  return code += isOddForm ? secondBytes.Odd : secondBytes.Even;
}

WStringView tabOffsetCode(int32_t columns) {
  return tabOffsetCodes[columns - 1];
}

}  // namespace mova
