/// What the tests of the formats share: captions as plain values, and the ways from lines, files and captions through a
/// format.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <ostream>
#include <string>
#include <vector>

#include "formats/SubtitleFormat.h"
#include "model/GlobalSettings.h"
#include "movautil/MovaUtil.h"

namespace mova {

struct Caption {
  int32_t number;
  double start;
  double end;
  WString text;
  bool operator==(const Caption&) const = default;
  friend void PrintTo(const Caption& c, std::ostream* out) {
    *out << c.number << ' ' << c.start << ' ' << c.end << ' ' << testing::PrintToString(wideToString(c.text));
  }
};
using Captions = std::vector<Caption>;

inline Captions captionsOf(const Subtitle& subtitle) {
  Captions result;
  for (const auto& p : subtitle.Paragraphs) {
    result.push_back({p->Number, p->StartTime.TotalMilliseconds, p->EndTime.TotalMilliseconds, p->Text});
  }
  return result;
}

inline Subtitle subtitleOf(const Captions& captions) {
  Subtitle subtitle;
  for (const Caption& c : captions) subtitle.Append({c.text, c.start, c.end}).Number = c.number;
  return subtitle;
}

struct Loaded {
  Captions captions;
  int32_t errors;
  bool operator==(const Loaded&) const = default;
  friend void PrintTo(const Loaded& loaded, std::ostream* out) {
    *out << testing::PrintToString(loaded.captions) << ", " << loaded.errors << " errors";
  }
};

template <typename Format>
Loaded load(const Lines& lines) {
  Format format;
  Subtitle subtitle;
  format.LoadSubtitle(subtitle, lines, u"input");
  return {captionsOf(subtitle), format.ErrorCount};
}

template <typename Format>
bool recognizes(const Lines& lines) {
  return Format().Recognizes(lines, u"input");
}

/// UTF-8, so that a failed comparison can be read.
template <typename Format>
std::string written(const Captions& captions) {
  return wideToString(Format().WriteText(subtitleOf(captions), u"title"));
}

struct Recognized {
  std::string format;  ///< The name, empty if no format takes the file.
  size_t captions;
  bool operator==(const Recognized&) const = default;
  friend void PrintTo(const Recognized& r, std::ostream* out) { *out << r.captions << " captions by " << r.format; }
};

/// Which format of the whole list takes a file of these bytes.
inline Recognized recognized(std::string_view bytes) {
  const auto path = std::filesystem::temp_directory_path() / ("mova-recognized-" + std::to_string(getpid()));
  std::ofstream(path, std::ios::binary) << bytes;
  Subtitle subtitle;
  const auto format = subtitle.LoadSubtitle(path.u16string());
  std::filesystem::remove(path);
  return {format ? wideToString(format->Name()) : "", subtitle.Paragraphs.size()};
}

inline constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";

/// Sets the rate of the running conversion for the length of a test.
class FrameRateScope {
 public:
  explicit FrameRateScope(double frameRate) : before_(GlobalSettings.FrameRate) {
    GlobalSettings.FrameRate = frameRate;
  }
  ~FrameRateScope() { GlobalSettings.FrameRate = before_; }
  FrameRateScope(const FrameRateScope&) = delete;
  FrameRateScope& operator=(const FrameRateScope&) = delete;

 private:
  double before_;
};

}  // namespace mova
