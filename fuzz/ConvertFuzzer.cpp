/// Fuzz target: any bytes, converted by the public call to any target under any settings.
///
/// The first byte of an input chooses the target and the name, the second the settings; the rest is the file.
/// libFuzzer's own main also replays a find: fuzz_convert FILE.
#include <unistd.h>
#include <utf8.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "mova/mova.h"

namespace {

namespace fs = std::filesystem;

void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "fuzz_convert: %s\n", what);
  std::abort();
}

/// The targets, and a name that is none.
std::vector<std::u16string> targets() {
  char16_t** names = nullptr;
  char16_t** extensions = nullptr;
  const uint32_t count = movaOutputTypes(names, extensions);
  std::vector<std::u16string> result(names, names + count);
  movaFreeOutputTypes(names, extensions, count);
  result.emplace_back(u"no such format");
  return result;
}

MOVASettings settingsFor(uint8_t choice) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  constexpr double frameRates[] = {29.97, 25,  24,  23.976,   30,        60, 0,      -25,
                                   0.001, 1e9, NAN, infinity, -infinity, 1,  1e-300, 50};
  constexpr int32_t codePages[] = {0, 0, 0, 0, 1252, 932, 65001, 12345};
  MOVASettings settings = getDefaultSettings();
  settings.FrameRate = frameRates[choice % 16];
  settings.CodePage = codePages[choice / 16 % 8];
  if (choice & 0x80) {
    settings.DropFrame = true;
    settings.SsaFontName = u"<&\"\xD800>";
    settings.SsaFontSize = NAN;
    settings.SsaOpaqueBox = true;
    settings.DCinemaFontSize = 0;
    settings.DCinemaBottomMargin = std::numeric_limits<int32_t>::min();
    settings.DCinemaSubtitleId = u"<a>";
    settings.DCinemaEditRate = u"0";
    settings.DCinemaTimeCodeRate = u"0";
    settings.DCinemaEffect = u"\"";
    settings.FcpFontSize = std::numeric_limits<int32_t>::max();
    settings.FcpFontName = u"";
  }
  return settings;
}

/// A folder of this process, in memory where there is such a place.
const fs::path& folder() {
  static const fs::path path = [] {
    const fs::path memory = "/dev/shm";
    fs::path made =
        (fs::is_directory(memory) ? memory : fs::temp_directory_path()) / ("mova-fuzz-" + std::to_string(getpid()));
    fs::create_directories(made);
    std::atexit([] { fs::remove_all(folder()); });
    return made;
  }();
  return path;
}

std::string contents(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream bytes;
  bytes << file.rdbuf();
  return bytes.str();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 2) return 0;
  static const std::vector<std::u16string> formats = targets();
  const std::u16string& target = formats[data[0] % formats.size()];
  const MOVASettings settings = settingsFor(data[1]);

  // Some formats go by the name.
  constexpr const char* names[] = {"input", "input.cap", "input.itt", "input.stl", "input.xml", "input"};
  const fs::path input = folder() / names[data[0] / formats.size()];
  std::ofstream(input, std::ios::binary)
      .write(reinterpret_cast<const char*>(data + 2), static_cast<std::streamsize>(size - 2));
  const fs::path outputs = folder() / "out";
  fs::create_directory(outputs);
  const uint32_t code = movaConvertCC(input.u16string(), target, (outputs / "output").u16string(), &settings);

  std::vector<fs::path> written;
  for (const auto& entry : fs::directory_iterator(outputs)) written.push_back(entry.path());
  require(code <= 2, "an unknown return code");
  require(written.size() == (code == 2 ? 0 : 1), "a file without success or success without a file");
  if (code != 2) {
    const std::string bytes = contents(written.front());
    require(code == 0 || bytes.empty(), "text in spite of the code for no text");
    require(utf8::is_valid(bytes), "output that is not UTF-8");
    require(!bytes.starts_with("\xEF\xBB\xBF"), "a byte order mark");
    fs::remove(written.front());
  }
  return 0;
}
