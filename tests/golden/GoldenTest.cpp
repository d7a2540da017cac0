// Converts every golden input to every target for which an exact output lies beside it. README.md tells the names.
//
// Each conversion runs in a process of its own, forked from one that has never converted anything, so that no test sees
// state that another one left. With MOVA_COMMAND set to the path of the command `mova`, that command converts instead
// of the library that this program is linked to; with MOVA_HOST_LOCALE the library converts in a host that has set that
// locale.
#include <gtest/gtest.h>
#include <mova/mova.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <clocale>
#include <cstdlib>
#include <ctime>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "cli/Settings.h"
#include "cli/Text.h"

namespace fs = std::filesystem;

namespace {

const fs::path kFolder = MOVA_GOLDEN_DIR;

struct Golden {
  fs::path input;
  fs::path expected;
  std::string target;     ///< the format's name
  std::string extension;  ///< with its dot
};

struct Target {
  std::string suffix;  ///< the name as file names spell it: without blanks, "-" for "/"
  std::string name;
  std::string extension;
};

std::vector<Target> allTargets() {
  char16_t** names = nullptr;
  char16_t** extensions = nullptr;
  const uint32_t count = movaOutputTypes(names, extensions);
  std::vector<Target> targets;
  for (uint32_t i = 0; i < count; ++i) {
    const std::string name = mova::cli::toUtf8(names[i]);
    std::string suffix = name;
    suffix.erase(std::remove(suffix.begin(), suffix.end(), ' '), suffix.end());
    std::replace(suffix.begin(), suffix.end(), '/', '-');
    targets.push_back({suffix, name, mova::cli::toUtf8(extensions[i])});
  }
  movaFreeOutputTypes(names, extensions, count);
  return targets;
}

/// Every file of the golden folders belongs to a case: it is an input, an expected output or settings. The others are
/// returned, so that a misspelt target is not passed over.
struct Folder {
  std::vector<Golden> cases;
  std::set<fs::path> strays;
};

Folder readFolder() {
  Folder folder;
  std::set<fs::path> files;
  for (const auto& entry : fs::recursive_directory_iterator(kFolder)) {
    if (entry.is_regular_file() && entry.path().parent_path() != kFolder) files.insert(entry.path());
  }
  folder.strays = files;
  const std::vector<Target> targets = allTargets();
  for (const fs::path& input : files) {
    for (const Target& target : targets) {
      const fs::path expected = input.string() + "." + target.suffix;
      if (!files.contains(expected)) continue;
      folder.cases.push_back({input, expected, target.name, target.extension});
      folder.strays.erase(input);
      folder.strays.erase(expected);
      folder.strays.erase(input.string() + ".settings");
    }
  }
  return folder;
}

const Folder& goldenFolder() {
  static const Folder folder = readFolder();
  return folder;
}

std::string readBytes(const fs::path& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<std::string> settingsOf(const fs::path& input) {
  std::vector<std::string> assignments;
  std::ifstream stream(input.string() + ".settings");
  for (std::string line; std::getline(stream, line);) {
    if (!line.empty()) assignments.push_back(line);
  }
  return assignments;
}

int convertByLibrary(const Golden& golden, const fs::path& output) {
  MOVASettings settings = getDefaultSettings();
  for (const std::string& assignment : settingsOf(golden.input)) mova::cli::assignField(settings, assignment);
  return static_cast<int>(
      movaConvertCC(golden.input.u16string(), *mova::cli::toUtf16(golden.target), output.u16string(), &settings));
}

[[noreturn]] void convertByCommand(const char* command, const Golden& golden, const fs::path& output) {
  std::vector<std::string> arguments = {command,       "convert",  golden.input,    "--to",
                                        golden.target, "--output", output.string(), "--quiet"};
  for (const std::string& assignment : settingsOf(golden.input)) {
    arguments.push_back("--set");
    arguments.push_back(assignment);
  }
  std::vector<char*> pointers;
  for (std::string& argument : arguments) pointers.push_back(argument.data());
  pointers.push_back(nullptr);
  execv(command, pointers.data());
  _exit(127);
}

/// The exit status of the conversion, or -1 if it died.
int convertInNewProcess(const Golden& golden, const fs::path& output) {
  std::cout.flush();
  std::cerr.flush();
  const pid_t child = fork();
  if (child == 0) {
    if (const char* command = std::getenv("MOVA_COMMAND")) convertByCommand(command, golden, output);
    const char* locale = std::getenv("MOVA_HOST_LOCALE");
    if (locale && !std::setlocale(LC_ALL, locale)) _exit(126);
    try {
      _exit(convertByLibrary(golden, output));
    } catch (const std::exception& exception) {
      std::cerr << exception.what() << std::endl;
      _exit(126);
    }
  }
  int status = 0;
  if (child < 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status)) return -1;
  return WEXITSTATUS(status);
}

/// Expected bytes with the placeholders for a moment written out: "{now:FORMAT}" with the conversions of strftime,
/// "{today}" and "{now}" for the usual ones.
std::string expandTime(std::string text, std::time_t moment) {
  std::tm local{};
  localtime_r(&moment, &local);
  const auto formatted = [&](const std::string& format) {
    char buffer[200];
    return std::string(buffer, std::strftime(buffer, sizeof buffer, format.c_str(), &local));
  };
  const std::string_view opening = "{now:";
  for (size_t at = 0; (at = text.find(opening, at)) != std::string::npos;) {
    const size_t end = text.find('}', at);
    if (end == std::string::npos) break;
    const size_t format = at + opening.size();
    text.replace(at, end + 1 - at, formatted(text.substr(format, end - format)));
  }
  const std::pair<std::string_view, std::string> usual[] = {{"{today}", formatted("%Y-%m-%d")},
                                                            {"{now}", formatted("%Y-%m-%dT%H:%M:%S")}};
  for (const auto& [placeholder, value] : usual) {
    for (size_t at = 0; (at = text.find(placeholder, at)) != std::string::npos;) {
      text.replace(at, placeholder.size(), value);
    }
  }
  return text;
}

bool isHex(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](unsigned char c) { return std::isxdigit(c) != 0; });
}

bool isUuid(std::string_view text) {
  return text.size() == 36 && text[8] == '-' && text[13] == '-' && text[18] == '-' && text[23] == '-' &&
         isHex(text.substr(0, 8)) && isHex(text.substr(9, 4)) && isHex(text.substr(14, 4)) &&
         isHex(text.substr(19, 4)) && isHex(text.substr(24));
}

/// The actual bytes with each identifier replaced by the placeholder "{uuid}" or "{hex24}" that stands at its place in
/// the expected ones. Where the two differ otherwise, the rest stays as it is, so that a comparison shows it.
std::string hideIdentifiers(std::string actual, std::string_view expected) {
  const std::string_view uuid = "{uuid}";
  const std::string_view hex = "{hex24}";
  for (size_t i = 0; i < expected.size() && i < actual.size(); ++i) {
    const std::string_view rest = expected.substr(i);
    if (rest.starts_with(uuid) && isUuid(std::string_view(actual).substr(i, 36))) {
      actual.replace(i, 36, uuid);
      i += uuid.size() - 1;
    } else if (rest.starts_with(hex) && i + 24 <= actual.size() && isHex(std::string_view(actual).substr(i, 24))) {
      actual.replace(i, 24, hex);
      i += hex.size() - 1;
    } else if (actual[i] != expected[i]) {
      break;
    }
  }
  return actual;
}

std::string caseName(const Golden& golden) {
  std::string name = fs::relative(golden.expected, kFolder).string();
  for (char& c : name) {
    if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
  }
  return name;
}

/// For googletest's messages.
void PrintTo(const Golden& golden, std::ostream* stream) {
  *stream << fs::relative(golden.expected, kFolder);
}

class GoldenTest : public testing::TestWithParam<Golden> {};

TEST_P(GoldenTest, GivesTheExpectedBytes) {
  const Golden& golden = GetParam();
  const fs::path folder = fs::temp_directory_path() / ("mova-golden-" + std::to_string(getpid()));
  fs::create_directories(folder);
  const fs::path output = folder / ("output" + golden.extension);

  const std::time_t begin = std::time(nullptr);
  const int status = convertInNewProcess(golden, output);
  const std::time_t end = std::time(nullptr);
  const std::string actual = readBytes(output);
  fs::remove_all(folder);

  const std::string pattern = readBytes(golden.expected);
  EXPECT_EQ(status, pattern.empty() ? 1 : 0);
  // The clock may have moved on during the conversion.
  std::string expected = expandTime(pattern, begin);
  for (std::time_t moment = begin + 1; moment <= end && hideIdentifiers(actual, expected) != expected; ++moment) {
    expected = expandTime(pattern, moment);
  }
  EXPECT_EQ(hideIdentifiers(actual, expected), expected);
}

INSTANTIATE_TEST_SUITE_P(Golden, GoldenTest, testing::ValuesIn(goldenFolder().cases),
                         [](const auto& test) { return caseName(test.param); });

TEST(GoldenFolder, HoldsNothingButCases) {
  for (const fs::path& stray : goldenFolder().strays) {
    ADD_FAILURE() << fs::relative(stray, kFolder)
                  << " is neither an input with an expected output, nor an output of a known target, nor settings";
  }
}

TEST(GoldenPlaceholders, StandForMomentsAndIdentifiers) {
  const std::time_t moment = 1000000000;
  std::tm local{};
  localtime_r(&moment, &local);
  char date[20];
  std::strftime(date, sizeof date, "%y%m%d", &local);
  EXPECT_EQ(expandTime("a{now:%y%m%d}b", moment), "a" + std::string(date) + "b");
  EXPECT_EQ(hideIdentifiers("x01234567-89ab-cdef-0123-456789abcdefy", "x{uuid}y"), "x{uuid}y");
  EXPECT_EQ(hideIdentifiers("x01234567-89ab-cdef-0123-456789abcdegy", "x{uuid}y"),
            "x01234567-89ab-cdef-0123-456789abcdegy");
  EXPECT_EQ(hideIdentifiers("0123456789abcdef01234567.", "{hex24}."), "{hex24}.");
}

}  // namespace
