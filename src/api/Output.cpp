#include "api/Output.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string_view>

#include "movautil/MovaUtil.h"

namespace mova {
namespace {

constexpr size_t pieceUnits = 1 << 16;

bool isLeadSurrogate(char16_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}

}  // namespace

bool writeAll(int file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(file, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written == 0) errno = EIO;  // A device that takes nothing would be asked for ever.
    if (written <= 0) return false;
    bytes.remove_prefix(static_cast<size_t>(written));
  }
  return true;
}

bool writeUtf8(int file, WStringView text) {
  while (!text.empty()) {
    size_t size = std::min(text.size(), pieceUnits);
    if (size < text.size() && isLeadSurrogate(text[size - 1])) --size;  // A pair stays together.
    if (!writeAll(file, wideToString(text.substr(0, size)))) return false;
    text.remove_prefix(size);
  }
  return true;
}

}  // namespace mova
