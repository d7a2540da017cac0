#include <fmt/format.h>
#include <iconv.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>

#include "movautil/MovaUtil.h"

namespace {

constexpr uint32_t CaptionFilePage = 5;  // the number by which the binary caption formats know their 8-bit text
constexpr uint32_t AnsiPage = 1252;
constexpr uint32_t SingleBytePages[] = {437, 850, 852, 866, 874, 1250, 1251, 1252, 1253, 1254, 1255, 1256, 1257, 1258};
constexpr uint32_t MultiBytePages[] = {932, 936, 949, 950};
constexpr uint32_t Utf8Page = 65001;
constexpr uint32_t FirstIso8859Page = 28591;  // 28590 + n is ISO-8859-n
constexpr uint32_t LastIso8859Page = 28605;

constexpr const char* Utf16 = std::endian::native == std::endian::little ? "UTF-16LE" : "UTF-16BE";
constexpr char16_t ReplacementCharacter = 0xFFFD;

struct CloseConverter {
  using pointer = iconv_t;
  void operator()(iconv_t converter) const { iconv_close(converter); }
};
using Converter = std::unique_ptr<std::remove_pointer_t<iconv_t>, CloseConverter>;

/// From the encoding to UTF-16; null for an encoding that the C library doesn't know.
Converter openConverter(const std::string& encoding) {
  const iconv_t converter = iconv_open(Utf16, encoding.c_str());
  const bool isOpen = reinterpret_cast<intptr_t>(converter) != -1;
  return Converter(isOpen ? converter : nullptr);
}

/// The unit for each byte of a single-byte page.
using UnitTable = std::array<char16_t, 256>;

std::optional<UnitTable> readUnitTable(const std::string& encoding) {
  const Converter converter = openConverter(encoding);
  if (!converter) return {};
  UnitTable table{};
  for (size_t value = 0; value < table.size(); ++value) {
    char byte = static_cast<char>(value);
    char* in = &byte;
    size_t inLeft = sizeof byte;
    char16_t& unit = table[value];
    char* out = reinterpret_cast<char*>(&unit);
    size_t outLeft = sizeof unit;
    iconv(converter.get(), &in, &inLeft, &out, &outLeft);
    // The Hebrew and the Vietnamese page hold a letter back for a mark that may follow it.
    iconv(converter.get(), nullptr, nullptr, &out, &outLeft);
    const bool isDefined = outLeft == 0;
    if (!isDefined) unit = static_cast<char16_t>(value);
  }
  return table;
}

/// What decodes a code page: one of the two, or none for an unknown page.
struct CodePage {
  std::optional<UnitTable> SingleByte;
  Converter MultiByte;
};

CodePage openCodePage(uint32_t number) {
  const auto isOneOf = [number](const auto& pages) {
    return std::find(std::begin(pages), std::end(pages), number) != std::end(pages);
  };
  if (isOneOf(SingleBytePages)) return {readUnitTable(fmt::format("CP{}", number)), nullptr};
  if (isOneOf(MultiBytePages)) return {{}, openConverter(fmt::format("CP{}", number))};
  if (number == Utf8Page) return {{}, openConverter("UTF-8")};
  if (number >= FirstIso8859Page && number <= LastIso8859Page)
    return {readUnitTable(fmt::format("ISO-8859-{}", number - FirstIso8859Page + 1)), nullptr};
  return {};
}

/// Opening is slow, and a page is asked for once a line: what was opened stays open, what is unknown stays unknown.
const CodePage& keptCodePage(uint32_t number) {
  static std::map<uint32_t, CodePage> pages;
  auto found = pages.find(number);
  if (found == pages.end()) found = pages.emplace(number, openCodePage(number)).first;
  return found->second;
}

// Each of these gives the number of units.

/// Reads no byte behind the last one that there is room for.
size_t decodeSingleByte(const char* source, char16_t* destination, size_t room, const UnitTable& table) {
  const size_t length = strnlen(source, room);
  for (size_t i = 0; i < length; ++i) destination[i] = table[static_cast<unsigned char>(source[i])];
  return length;
}

size_t decodeMultiByte(const char* source, char16_t* destination, size_t room, const Converter& converter) {
  char* in = const_cast<char*>(source);
  size_t inLeft = std::strlen(source);
  char* out = reinterpret_cast<char*>(destination);
  size_t outLeft = room * sizeof *destination;
  iconv(converter.get(), nullptr, nullptr, nullptr, nullptr);  // forget what an earlier text left
  while (iconv(converter.get(), &in, &inLeft, &out, &outLeft) == static_cast<size_t>(-1) && errno != E2BIG &&
         outLeft >= sizeof ReplacementCharacter) {
    std::memcpy(out, &ReplacementCharacter, sizeof ReplacementCharacter);
    out += sizeof ReplacementCharacter;
    outLeft -= sizeof ReplacementCharacter;
    ++in;
    --inLeft;
  }
  return room - outLeft / sizeof *destination;
}

}  // namespace

uint32_t movaStr_CodePage_to_UTF16(char16_t* destination, const char* source, uint32_t count, uint32_t codePage) {
  if (count == 0) return 0;
  const CodePage& page = keptCodePage(codePage == CaptionFilePage ? AnsiPage : codePage);
  size_t written = 0;
  if (page.SingleByte) {
    written = decodeSingleByte(source, destination, count, *page.SingleByte);
  } else if (page.MultiByte) {
    written = decodeMultiByte(source, destination, count, page.MultiByte);
  } else {
    *destination = 0;
    return 0;
  }
  if (written < count) destination[written++] = 0;
  return static_cast<uint32_t>(written);
}

uint32_t movaStr_ANSI_to_UTF16(char16_t* destination, const char* source, uint32_t count) {
  return movaStr_CodePage_to_UTF16(destination, source, count, AnsiPage);
}
