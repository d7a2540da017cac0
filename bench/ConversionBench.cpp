/// What a conversion costs, stage by stage and format by format. Bytes a second are bytes of the file in that format.
#include <benchmark/benchmark.h>

#include "Programme.h"
#include "formats/FormatList.h"
#include "model/GlobalSettings.h"
#include "movautil/MovaUtil.h"
#include "text/LanguageDetection.h"

namespace mova {
namespace {

constexpr int captions = 100000;

void ReadLines(benchmark::State& state) {
  const std::string file = makeFile(u"SubRip", captions);
  for (auto _ : state) benchmark::DoNotOptimize(decodeLines(file, 0));
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * file.size()));
}
BENCHMARK(ReadLines)->Unit(benchmark::kMillisecond);

/// Every format is asked for a SubRip file, whether it stands ahead of SubRip or not.
void RecogniseSubRip(benchmark::State& state, WStringView name) {
  const std::string file = makeFile(u"SubRip", captions);
  for (auto _ : state) {
    state.PauseTiming();
    GlobalSettings = getDefaultSettings();
    const Lines lines = decodeLines(file, 0);
    const auto format = formatNamed(name);
    state.ResumeTiming();
    benchmark::DoNotOptimize(format->Recognizes(lines, u"film.srt"));
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * file.size()));
}

void Load(benchmark::State& state, WStringView name) {
  const std::string file = "\xEF\xBB\xBF" + makeFile(name, captions);
  const auto format = formatNamed(name);
  for (auto _ : state) {
    state.PauseTiming();
    GlobalSettings = getDefaultSettings();
    const Lines lines = decodeLines(file, 0);
    Subtitle subtitle;
    state.ResumeTiming();
    format->LoadSubtitle(subtitle, lines, u"film");
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * file.size()));
}

void Write(benchmark::State& state, WStringView name) {
  const Subtitle programme = makeProgramme(captions);
  const auto format = formatNamed(name);
  size_t size = 0;
  for (auto _ : state) {
    GlobalSettings = getDefaultSettings();
    size = format->WriteText(programme, u"programme").size();
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * size));
}

void DetectLanguage(benchmark::State& state) {
  const Subtitle programme = makeProgramme(captions);
  size_t size = 0;
  for (const auto& paragraph : programme.Paragraphs) size += wideToString(paragraph->Text).size() + 1;
  for (auto _ : state) benchmark::DoNotOptimize(detectLanguageOfSubtitle(programme));
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * size));
}
BENCHMARK(DetectLanguage)->Unit(benchmark::kMillisecond);

const bool registered = [] {
  FormatList list;
  buildFormatList(list);
  for (const auto& format : list) {
    const WString name = format->Name();
    const std::string label = wideToString(name);
    benchmark::RegisterBenchmark(("RecogniseSubRip/" + label).c_str(), [name](benchmark::State& state) {
      RecogniseSubRip(state, name);
    })->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(("Load/" + label).c_str(), [name](benchmark::State& state) {
      Load(state, name);
    })->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(("Write/" + label).c_str(), [name](benchmark::State& state) {
      Write(state, name);
    })->Unit(benchmark::kMillisecond);
  }
  return true;
}();

}  // namespace
}  // namespace mova
