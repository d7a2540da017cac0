#include "Progress.h"

#include <fmt/format.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "Text.h"

namespace mova::cli {

namespace {

constexpr auto kRedraw = std::chrono::milliseconds(100);
constexpr auto kLineEvery = std::chrono::seconds(5);
constexpr const char* kClearLine = "\r\033[K";

/// Skipped files take no time and tell nothing about the rest.
double filesPerSecond(const Tally& tally, double seconds) {
  return seconds > 0 ? static_cast<double>(tally.converted + tally.failed) / seconds : 0;
}

std::string describeRate(double rate) {
  return rate < 10 ? fmt::format("{:.1f}/s", rate) : fmt::format("{:.0f}/s", rate);
}

std::string timeLeft(const Tally& tally, double rate) {
  if (rate <= 0) return "";
  const double seconds = std::ceil(static_cast<double>(tally.total - tally.done()) / rate);
  if (seconds >= 360000) return "more than 100 h left";
  const auto whole = static_cast<int>(seconds);
  if (whole >= 3600) return fmt::format("{}:{:02}:{:02} left", whole / 3600, whole / 60 % 60, whole % 60);
  return fmt::format("{}:{:02} left", whole / 60, whole % 60);
}

size_t terminalColumns() {
  winsize size{};
  return ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

void print(const std::string& text) {
  std::fputs(text.c_str(), stderr);
}

}  // namespace

std::string describeTally(const Tally& tally) {
  std::string text = fmt::format("{} converted", tally.converted);
  if (tally.failed > 0) text += fmt::format(", {} failed", tally.failed);
  if (tally.skipped > 0) text += fmt::format(", {} skipped", tally.skipped);
  return text;
}

std::string progressBar(const Tally& tally, double seconds, size_t columns) {
  const double rate = filesPerSecond(tally, seconds);
  std::string text = fmt::format(" {} of {}", tally.done(), tally.total);
  if (tally.failed > 0) text += fmt::format("  {} failed", tally.failed);
  if (rate > 0) text += fmt::format("  {}  {}", describeRate(rate), timeLeft(tally, rate));
  constexpr size_t longest = 40;
  constexpr size_t shortest = 8;
  // The last column stays free: some terminals go to the next line behind it.
  const size_t used = text.size() + 3;
  const size_t width = columns > used ? std::min(longest, columns - used) : 0;
  if (width < shortest) return text.substr(1, columns > 0 ? columns - 1 : 0);
  const size_t full = tally.total > 0
                          ? static_cast<size_t>(static_cast<double>(width) * static_cast<double>(tally.done()) /
                                                static_cast<double>(tally.total))
                          : width;
  return "[" + std::string(full, '#') + std::string(width - full, '.') + "]" + text;
}

std::string progressLine(const Tally& tally, double seconds) {
  const double rate = filesPerSecond(tally, seconds);
  std::string text = fmt::format("{} of {} files: {}", tally.done(), tally.total, describeTally(tally));
  if (rate > 0) text += fmt::format("; {}, {}", describeRate(rate), timeLeft(tally, rate));
  return text;
}

Progress::Progress(ProgressForm form) : form_(form) {
  due_ = form == ProgressForm::kBar     ? begin_ + kRedraw
         : form == ProgressForm::kLines ? begin_ + kLineEvery
                                        : Clock::time_point::max();
}

void Progress::show(const Tally& tally) {
  const Clock::time_point now = Clock::now();
  if (now < due_) return;
  const double seconds = std::chrono::duration<double>(now - begin_).count();
  if (form_ == ProgressForm::kLines) {
    printMessage(progressLine(tally, seconds));
    due_ = now + kLineEvery;
    return;
  }
  print("\r" + progressBar(tally, seconds, terminalColumns()) + "\033[K");
  std::fflush(stderr);
  isShown_ = true;
  due_ = now + kRedraw;
}

void Progress::hide() {
  if (!isShown_) return;
  print(kClearLine);
  isShown_ = false;
}

}  // namespace mova::cli
