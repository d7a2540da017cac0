// A host program as any other: it sees nothing but the public header and links nothing but libmova.
// host INPUT OUTPUT: makes every exported call and prints what it gave, one line for each.
#include <mova/mova.h>

#include <cstdio>
#include <string>

namespace {

MOVAString fromAscii(const char* text) {
  return {text, text + std::char_traits<char>::length(text)};
}

template <class Unit>
std::string toAscii(const Unit* text) {
  std::string result;
  for (; *text != 0; ++text) result += static_cast<char>(*text);
  return result;
}

template <class Unit>
void listTypes(const char* title) {
  Unit** names = nullptr;
  Unit** extensions = nullptr;
  const uint32_t count = movaOutputTypes(names, extensions);
  for (uint32_t i = 0; i < count; ++i) {
    std::printf("%s: %s (%s)\n", title, toAscii(names[i]).c_str(), toAscii(extensions[i]).c_str());
  }
  std::printf("released: %u\n", movaFreeOutputTypes(names, extensions, count));
}

}  // namespace

int main(int, char** arguments) {
  listTypes<char16_t>("16-bit units");
  listTypes<wchar_t>("wide characters");

  const MOVAString input = fromAscii(arguments[1]);
  const MOVAString output = fromAscii(arguments[2]);
  std::printf("default settings: %u\n", movaConvertCC(input, u"SubRip", output, nullptr));
  MOVASettings settings = getDefaultSettings();
  std::printf("frame rate: %g\n", settings.FrameRate);
  settings.FrameRate = 25;
  InitializeDCinameSettings(true);
  InitializeDCinameSettings(false);
  std::printf("own settings: %u\n", movaConvertCC(input, u"sub rip", output, &settings));
  std::printf("no such target: %u\n", movaConvertCC(input, u"srt", output + u".none", &settings));
}
