#include "model/Lines.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <limits>
#include <optional>
#include <string>

#include "movautil/MovaUtil.h"
#include "movautil/Utf.h"
#include "text/Strings.h"

namespace mova {
namespace {

constexpr uint32_t codePageLineLimit = 260;  // units; the buffer that lines in an 8-bit encoding are converted into
constexpr size_t pathLimit = 260;            // bytes, terminator included

/// Hands out the lines of a file as a text-mode stream does.
class TextModeReader {
 public:
  /// The byte behind the last one is the reader's too.
  TextModeReader(char* bytes, size_t size) : data_(bytes), end_(bytes + size) {
    if (void* mark = std::memchr(data_, 0x1A, size)) end_ = static_cast<char*>(mark);
    Rewind();
  }

  void Rewind() { position_ = data_; }
  bool AtEnd() const { return position_ == end_; }
  bool HasZeros() const { return std::memchr(data_, 0, static_cast<size_t>(end_ - data_)) != nullptr; }

  /// The next line, or nothing at the end of the file. A line stands in the file's own buffer.
  std::optional<std::string_view> Next() {
    if (position_ == end_) return std::nullopt;
    char* begin = position_;
    auto* feed = static_cast<char*>(std::memchr(begin, '\n', static_cast<size_t>(end_ - begin)));
    position_ = feed ? feed + 1 : end_;
    char* lineEnd = feed ? feed : end_;
    if (feed && feed != begin && feed[-1] == '\r') --lineEnd;
    return std::string_view(begin, static_cast<size_t>(lineEnd - begin));
  }

  /// Calls `convert` with the line as a zero-terminated text: the unit behind a line is never part of another line.
  template <typename Convert>
  auto WithTerminator(std::string_view line, Convert convert) const {
    char* end = data_ + (line.data() - data_) + line.size();
    const char kept = *end;
    *end = '\0';
    const auto result = convert(line.data());
    *end = kept;
    return result;
  }

 private:
  char* data_;
  char* end_;
  char* position_ = nullptr;
};

/// Collects decoded lines in one text. No decoded line is longer than its bytes, so the room is known beforehand.
class LineCollector {
 public:
  explicit LineCollector(size_t bytes) : size_(bytes + 1), units_(std::make_unique_for_overwrite<char16_t[]>(size_)) {}

  char16_t* Room() { return units_.get() + used_; }
  uint32_t RoomUnits() const {
    return static_cast<uint32_t>(std::min<size_t>(size_ - used_, std::numeric_limits<uint32_t>::max()));
  }
  /// `count` units were written at Room(), perhaps with a terminator.
  void Take(size_t count) {
    if (count > 0 && Room()[count - 1] == 0) --count;
    TakeAll(count);
  }
  void TakeAll(size_t count) { ends_.push_back(used_ += count); }
  void Clear() {
    used_ = 0;
    ends_.clear();
  }
  Lines Finish() { return Lines(std::move(units_), std::move(ends_)); }

 private:
  size_t size_;
  std::unique_ptr<char16_t[]> units_;
  std::vector<size_t> ends_;
  size_t used_ = 0;
};

class Decoder {
 public:
  /// The byte behind the last one is written to.
  Decoder(char* bytes, size_t size) : reader_(bytes, size), hasZeros_(reader_.HasZeros()), lines_(size) {}

  Lines Decode(int32_t codePage) {
    const std::string_view first = reader_.Next().value_or(std::string_view());
    if (codePage != 0) {
      ReadCodePage(static_cast<uint32_t>(codePage));
    } else if (first.starts_with("\xEF\xBB\xBF")) {
      AppendUtf8(first.substr(3));
      ReadUtf8();
    } else if (first.starts_with("\xFF\xFE") || first.starts_with("\xFE\xFF")) {
      ReadUtf16(first);
    } else if (!ReadUtf8()) {  // The first line is gone by now, on purpose.
      reader_.Rewind();
      lines_.Clear();
      ReadAnsi();
    }
    return lines_.Finish();
  }

 private:
  /// A line that is not UTF-8 is appended as an empty line, and false returned.
  bool AppendUtf8(std::string_view line) {
    if (!hasZeros_ && copyAscii(line.data(), line.size(), lines_.Room()) == line.size()) {  // as most lines are
      lines_.TakeAll(line.size());
      return true;
    }
    const uint32_t count = reader_.WithTerminator(
        line, [this](const char* text) { return movaStr_UTF8_to_UTF16(lines_.Room(), text, lines_.RoomUnits()); });
    lines_.Take(count);
    return count != 0;
  }

  bool ReadUtf8() {
    while (const auto line = reader_.Next()) {
      if (!AppendUtf8(*line)) return false;
    }
    return true;
  }

  /// Reads at least one line, even where there is none left: a code page given for a file of one line yields an empty
  /// line.
  template <typename Convert>
  void ReadEightBit(Convert convert) {
    do {
      const std::string_view line = reader_.Next().value_or(std::string_view());
      lines_.Take(line.empty() ? 0 : reader_.WithTerminator(line, convert));
    } while (!reader_.AtEnd());
  }

  void ReadCodePage(uint32_t codePage) {
    ReadEightBit([this, codePage](const char* text) {
      return movaStr_CodePage_to_UTF16(lines_.Room(), text, std::min(codePageLineLimit, lines_.RoomUnits()), codePage);
    });
  }

  void ReadAnsi() {
    ReadEightBit([this](const char* text) {
      return movaStr_ANSI_to_UTF16(lines_.Room(), text, std::min(codePageLineLimit, lines_.RoomUnits()));
    });
  }

  /// Bytes become units, and every second one is kept where a zero byte shows that it is the high byte of a character.
  /// The zero byte of a line feed itself stands at the start of the next line (little endian) or at the end of its own.
  void ReadUtf16(std::string_view first) {
    AppendBytes(first, 0, 1);  // The mark has no zero byte: the first line stays raw.
    while (const auto line = reader_.Next()) {
      if (line->size() > 1 && (*line)[0] == '\0') {
        AppendBytes(*line, 1, 2);
      } else if (line->size() > 1 && (*line)[1] == '\0') {
        AppendBytes(*line, 0, 2);
      } else {
        AppendBytes(*line, 0, 1);
      }
    }
  }

  void AppendBytes(std::string_view line, size_t start, size_t step) {
    size_t count = 0;
    for (size_t i = start; i < line.size(); i += step) {
      lines_.Room()[count++] = static_cast<unsigned char>(line[i]);
    }
    lines_.TakeAll(count);
  }

  TextModeReader reader_;
  bool hasZeros_;
  LineCollector lines_;
};

struct FileBytes {
  std::unique_ptr<char[]> bytes;  ///< One more than `size`.
  size_t size = 0;
};

/// Nothing if the file can't be opened.
std::optional<FileBytes> readFile(const char* path) {
  const int file = open(path, O_RDONLY | O_CLOEXEC);
  if (file < 0) return std::nullopt;
  struct stat status {};
  if (fstat(file, &status) != 0 || S_ISDIR(status.st_mode)) {
    close(file);
    return std::nullopt;
  }
  // One byte more than the size, so that the end of the file is seen without growing; pipes have no size.
  size_t room = static_cast<size_t>(std::max<off_t>(status.st_size, 0)) + 1;
  FileBytes result{std::make_unique_for_overwrite<char[]>(room)};
  for (;;) {
    if (result.size == room) {
      auto larger = std::make_unique_for_overwrite<char[]>(room = room * 2 + 65536);
      std::copy_n(result.bytes.get(), result.size, larger.get());
      result.bytes = std::move(larger);
    }
    const ssize_t count = read(file, result.bytes.get() + result.size, room - result.size);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) break;
    result.size += static_cast<size_t>(count);
  }
  close(file);
  return result;
}

}  // namespace

Lines::Lines(std::unique_ptr<const char16_t[]> units, std::vector<size_t> ends) : text_(std::make_shared<Text>()) {
  text_->units = std::move(units);
  text_->ends = std::move(ends);
}

Lines::Lines(WStringView units, std::vector<size_t> ends) : text_(std::make_shared<Text>()) {
  auto copy = std::make_unique_for_overwrite<char16_t[]>(units.size());
  std::copy(units.begin(), units.end(), copy.get());
  text_->units = std::move(copy);
  text_->ends = std::move(ends);
}

Lines::Lines(std::initializer_list<WStringView> lines) {
  WString units;
  std::vector<size_t> ends;
  for (WStringView line : lines) ends.push_back((units += line).size());
  *this = Lines(units, std::move(ends));
}

bool Lines::Contains(char16_t unit) const {
  const auto [known, isNew] = text_->contained.try_emplace(unit);
  if (isNew) known->second = findUnit(Units(), unit) != WStringView::npos;
  return known->second;
}

WString Lines::Joined(WStringView separator) const {
  WString text;
  text.reserve(Units().size() + size() * separator.size());
  for (size_t i = 0; i < size(); ++i) {
    if (i > 0) text += separator;
    text += (*this)[i];
  }
  return text;
}

Lines decodeLines(std::string bytes, int32_t codePage) {
  return Decoder(bytes.data(), bytes.size()).Decode(codePage);
}

Lines readLines(WStringView path, int32_t codePage) {
  const std::string narrow = wideToString(cText(path));
  std::optional<FileBytes> file;
  if (narrow.size() < pathLimit) file = readFile(narrow.c_str());
  if (!file) {
    std::fputs("Subtitle: LoadSubtitle: Couldn't open subtitle file", stdout);
    return Lines();
  }
  return Decoder(file->bytes.get(), file->size).Decode(codePage);
}

}  // namespace mova
