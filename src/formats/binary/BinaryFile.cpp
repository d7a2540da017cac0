#include "formats/binary/BinaryFile.h"

#include <string>

#include "movautil/MovaUtil.h"
#include "text/Strings.h"

namespace mova {
namespace {

constexpr uint32_t readAccess = 0x80000000;
constexpr uint32_t shareAll = 7;
constexpr uint32_t openExisting = 3;
constexpr uint32_t captionCodePage = 5;

bool isValid(MovaHandle file) {
  return file != 0 && file != -1;
}

}  // namespace

bool BinaryFile::Read(const WString& fileName) {
  if (fileName_ == fileName) return opened_;
  fileName_ = fileName;
  opened_ = false;
  bytes_.clear();
  size_ = 0;

  const std::string narrow = wideToString(cText(fileName));
  if (narrow.empty() || movaOSFileExists(narrow.c_str()) == 0) return false;
  const MovaHandle file = movaOSCreateFile(narrow.c_str(), readAccess, shareAll, nullptr, openExisting, 0, 0);
  if (!isValid(file)) return false;
  if (movaOSGetFileSizeEx(file, &size_) != 0 && size_ >= 0 && size_ < binaryFileLimit) {
    opened_ = true;
    bytes_.resize(static_cast<size_t>(size_));
    uint32_t count = 0;
    if (movaOSReadFile(file, bytes_.data(), static_cast<uint32_t>(size_), &count, nullptr) == 0) count = 0;
    bytes_.resize(count);
  }
  movaOSCloseFile(file);
  return opened_;
}

bool hasExtension(WStringView fileName, WStringView extension) {
  return fileName.size() >= extension.size() &&
         equalsIgnoreCase(fileName.substr(fileName.size() - extension.size()), extension);
}

WString captionText(const unsigned char* bytes, size_t count) {
  WString text(count, u'\0');
  const uint32_t units = movaStr_CodePage_to_UTF16(text.data(), reinterpret_cast<const char*>(bytes),
                                                   static_cast<uint32_t>(count), captionCodePage);
  text.resize(units);
  return WString(cText(text));
}

}  // namespace mova
