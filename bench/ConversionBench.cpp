/// What a conversion costs, stage by stage and format by format. Bytes a second are bytes of the file in that format.
/// MOVA_BENCH_CAPTIONS in the environment says how many captions the files have: 10,000 if it says nothing. 100,000
/// need ten minutes and, for Final Cut Pro Xml, 11 GB of memory.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "Programme.h"
#include "formats/FormatList.h"
#include "model/GlobalSettings.h"
#include "movautil/MovaUtil.h"
#include "text/LanguageDetection.h"

namespace mova {
namespace {

int captions() {
  const char* wanted = std::getenv("MOVA_BENCH_CAPTIONS");
  return wanted ? std::max(std::atoi(wanted), 1) : 10000;
}

void countBytes(benchmark::State& state, size_t size) {
  state.SetBytesProcessed(static_cast<int64_t>(static_cast<size_t>(state.iterations()) * size));
}

/// A file in a format, in memory and, for the formats that open it themselves, on disk.
class File {
 public:
  explicit File(WStringView format)
      : bytes_(makeFile(format, captions())),
        path_(std::filesystem::temp_directory_path() / ("mova-bench-" + std::to_string(getpid()))) {
    path_ += formatNamed(format)->Extension();
    std::ofstream(path_, std::ios::binary) << bytes_;
  }
  ~File() { std::filesystem::remove(path_); }
  File(const File&) = delete;
  File& operator=(const File&) = delete;

  size_t Size() const { return bytes_.size(); }
  WString Path() const { return path_.u16string(); }
  Lines ReadLines() const { return decodeLines(bytes_, 0); }

 private:
  std::string bytes_;
  std::filesystem::path path_;
};

void ReadLines(benchmark::State& state, WStringView name) {
  const File file(name);
  for (auto _ : state) benchmark::DoNotOptimize(file.ReadLines());
  countBytes(state, file.Size());
}

/// Every format is asked for a SubRip file, whether it stands ahead of SubRip or not.
void RecogniseSubRip(benchmark::State& state, WStringView name) {
  const File file(u"SubRip");
  for (auto _ : state) {
    state.PauseTiming();
    GlobalSettings = getDefaultSettings();
    const Lines lines = file.ReadLines();
    const auto format = formatNamed(name);
    state.ResumeTiming();
    benchmark::DoNotOptimize(format->Recognizes(lines, file.Path()));
  }
}

void Load(benchmark::State& state, WStringView name) {
  const File file(name);
  for (auto _ : state) {
    state.PauseTiming();
    GlobalSettings = getDefaultSettings();
    const Lines lines = file.ReadLines();
    const auto format = formatNamed(name);
    Subtitle subtitle;
    state.ResumeTiming();
    format->LoadSubtitle(subtitle, lines, file.Path());
  }
  countBytes(state, file.Size());
}

void Write(benchmark::State& state, WStringView name) {
  const Subtitle programme = makeProgramme(captions());
  const auto format = formatNamed(name);
  size_t size = 0;
  for (auto _ : state) {
    GlobalSettings = getDefaultSettings();
    size = format->WriteText(programme, u"programme").size();
  }
  countBytes(state, size);
}

void DetectLanguage(benchmark::State& state) {
  const Subtitle programme = makeProgramme(captions());
  size_t size = 0;
  for (const auto& paragraph : programme.Paragraphs) size += wideToString(paragraph->Text).size() + 1;
  for (auto _ : state) benchmark::DoNotOptimize(detectLanguageOfSubtitle(programme));
  countBytes(state, size);
}
BENCHMARK(DetectLanguage)->Unit(benchmark::kMillisecond);

using Stage = void (*)(benchmark::State&, WStringView);

benchmark::internal::Benchmark* registerStage(const char* title, Stage stage, const WString& format) {
  const std::string label = std::string(title) + '/' + wideToString(format);
  return benchmark::RegisterBenchmark(label.c_str(), [=](benchmark::State& state) { stage(state, format); });
}

const bool registered = [] {
  FormatList list;
  buildFormatList(list);
  for (const auto& format : list) {
    const WString name = format->Name();
    registerStage("ReadLines", ReadLines, name)->Unit(benchmark::kMillisecond);
    // Most trials are far shorter than what has to be made ready for each: a number of runs by time would never end.
    registerStage("RecogniseSubRip", RecogniseSubRip, name)->Unit(benchmark::kMicrosecond)->Iterations(5);
    registerStage("Load", Load, name)->Unit(benchmark::kMillisecond);
    registerStage("Write", Write, name)->Unit(benchmark::kMillisecond);
  }
  return true;
}();

}  // namespace
}  // namespace mova
