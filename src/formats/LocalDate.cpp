#include "formats/LocalDate.h"

#include <ctime>

#include "text/Strings.h"

namespace mova {

void appendLocalDate(WString& out, char16_t separator) {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  appendNumber(out, local.tm_mday, 2);
  out += separator;
  appendNumber(out, local.tm_mon + 1, 2);
  out += separator;
  appendNumber(out, 1900 + int64_t{local.tm_year}, 4);
}

}  // namespace mova
