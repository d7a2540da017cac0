#include "Formats.h"

#include <fmt/format.h>

#include <algorithm>

#include "Failure.h"
#include "Text.h"
#include "mova/mova.h"

namespace mova::cli {

namespace {

std::vector<Format> readFormats() {
  char16_t** names = nullptr;
  char16_t** extensions = nullptr;
  const uint32_t count = movaOutputTypes(names, extensions);
  std::vector<Format> formats;
  for (uint32_t i = 0; i < count; ++i) {
    const std::string name = toUtf8(names[i]);
    const bool readOnly = name == "CapMaker Plus" || name == "Cheetah Caption";
    formats.push_back({name, toUtf8(extensions[i]), !readOnly});
  }
  movaFreeOutputTypes(names, extensions, count);
  return formats;
}

/// The names of the formats that bear this extension.
std::vector<std::string> namesByExtension(std::string_view extension) {
  std::string sought = foldName(extension);
  if (!sought.starts_with('.')) sought.insert(0, 1, '.');
  std::vector<std::string> names;
  for (const Format& format : allFormats()) {
    if (foldName(format.extension) == sought) names.push_back(format.name);
  }
  return names;
}

const Format* findByName(std::string_view name) {
  const std::vector<Format>& formats = allFormats();
  const auto found = std::find_if(formats.begin(), formats.end(),
                                  [&](const Format& format) { return foldName(format.name) == foldName(name); });
  return found == formats.end() ? nullptr : &*found;
}

[[noreturn]] void refuse(std::string_view text) {
  std::vector<std::string> names;
  for (const Format& format : allFormats()) names.push_back(format.name);
  std::string message = fmt::format("unknown format \"{}\"", printable(text));
  const std::vector<std::string> near = nearestNames(text, names);
  if (!near.empty()) message += fmt::format("; did you mean {}?", fmt::join(near, ", "));
  throw Failure(kUsage, message + " (mova formats lists all)");
}

}  // namespace

const std::vector<Format>& allFormats() {
  static const std::vector<Format> formats = readFormats();
  return formats;
}

const Format& findFormat(std::string_view text) {
  if (const Format* format = findByName(text)) return *format;
  const std::vector<std::string> bearers = namesByExtension(text);
  if (bearers.size() == 1) return *findByName(bearers.front());
  if (bearers.empty()) refuse(text);
  throw Failure(kUsage, fmt::format("several formats have the extension \"{}\"; name one of them with --to: {}",
                                    printable(text), fmt::join(bearers, ", ")));
}

}  // namespace mova::cli
