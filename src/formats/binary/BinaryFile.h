/// Caption files that are read by their bytes, straight from the named file.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "movautil/WideString.h"

namespace mova {

/// Binary caption files are smaller than this; larger ones are never read.
constexpr int64_t binaryFileLimit = 1024000;  // bytes

/// Reads a file once, for recognising and loading.
class BinaryFile {
 public:
  /// Reads the named file, unless it was the last one asked for. The result tells whether it could be opened and is
  /// below the limit.
  bool Read(const WString& fileName);

  /// Whether as many bytes arrived as the file's size says.
  bool IsComplete() const { return static_cast<int64_t>(bytes_.size()) == size_; }
  const std::vector<unsigned char>& Bytes() const { return bytes_; }

 private:
  std::optional<WString> fileName_;
  bool opened_ = false;
  int64_t size_ = 0;
  std::vector<unsigned char> bytes_;
};

/// Whether the name ends in the extension, case ignored.
bool hasExtension(WStringView fileName, WStringView extension);

/// What formats write that can only be read; it becomes the output file.
inline constexpr WStringView notSupportedText = u"Not supported!";

/// Bytes in the 8-bit encoding of caption files, Windows-1252, up to the first zero byte.
WString captionText(const unsigned char* bytes, size_t count);

}  // namespace mova
