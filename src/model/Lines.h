/// The lines of a file: read once, immutable, shared by all formats that are asked whether they recognise it.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <map>
#include <memory>
#include <vector>

#include "movautil/WideString.h"

namespace mova {

/// Copying a list is cheap: copies share their text. A format that changes a line changes a copy of that line.
class Lines {
 public:
  Lines() : Lines(WStringView(), {}) {}
  Lines(std::initializer_list<WStringView> lines);
  /// `ends` holds, for each line, the position in `units` behind its last unit; a line begins where the one before it
  /// ends.
  Lines(std::unique_ptr<const char16_t[]> units, std::vector<size_t> ends);
  /// The same of a copy of the units.
  Lines(WStringView units, std::vector<size_t> ends);

  size_t size() const { return text_->ends.size(); }
  bool empty() const { return text_->ends.empty(); }
  /// Valid for as long as any copy of the list lives.
  WStringView operator[](size_t index) const {
    const size_t begin = index == 0 ? 0 : text_->ends[index - 1];
    return WStringView(text_->units.get() + begin, text_->ends[index] - begin);
  }
  /// The line, or an empty one beyond the end of the list.
  WStringView AtOrEmpty(size_t index) const { return index < size() ? (*this)[index] : WStringView(); }

  /// The place in Units() behind the line's last unit.
  size_t EndOf(size_t index) const { return text_->ends[index]; }
  /// All lines with nothing between them. Valid for as long as any copy of the list lives.
  WStringView Units() const { return WStringView(text_->units.get(), empty() ? 0 : text_->ends.back()); }
  /// Whether the unit stands in any line. Looked for once, for all formats that ask.
  bool Contains(char16_t unit) const;

  /// All lines joined with `separator` behind each but the last.
  WString Joined(WStringView separator) const;

  /// What `Make(lines)` gives, made on first demand and then kept with the lines for every further caller, so that
  /// formats that look at the same thing (the joined text, the parsed XML) pay for it once in a conversion.
  template <auto Make>
  const auto& Derived() const {
    using Value = decltype(Make(*this));
    auto& slot = text_->derived[&derivedKey<Make>];
    if (!slot) slot = std::make_shared<const Value>(Make(*this));
    return *static_cast<const Value*>(slot.get());
  }

 private:
  struct Text {
    std::unique_ptr<const char16_t[]> units;
    std::vector<size_t> ends;
    std::map<const void*, std::shared_ptr<const void>> derived;
    std::map<char16_t, bool> contained;
  };
  template <auto Make>
  static constexpr char derivedKey = 0;

  std::shared_ptr<Text> text_;
};

/// Reads a file into lines, decoding it by `codePage`, or, when that is 0, by what the file begins with:
///
/// - a UTF-8 mark: all lines as UTF-8, up to and including (as an empty line) the first that is none;
/// - a UTF-16 mark: the low byte of each character; the first line stays as raw bytes, one unit each, mark included;
/// - anything else: UTF-8 without its first line; or, if any other line is not UTF-8, Windows-1252 with its first line.
///
/// With a code page the first line is dropped and a file of one line gives one empty line. Lines end at a line feed; CR
/// LF counts as a line feed and the byte 0x1A as the end of the file. Windows-1252 and code-page lines are cut at 260
/// units. The formats are written to cope with all of this.
///
/// A file that can't be opened gives no lines and a message on standard output. So does a path of 260 or more bytes in
/// UTF-8.
Lines readLines(WStringView path, int32_t codePage);

/// The same for the bytes of a file.
Lines decodeLines(std::string bytes, int32_t codePage);

}  // namespace mova
