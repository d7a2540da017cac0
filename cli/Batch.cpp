#include "Batch.h"

#include <fmt/format.h>
#include <poll.h>
#include <sched.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <filesystem>
#include <utility>

#include "Clashes.h"
#include "Failure.h"
#include "Inputs.h"
#include "Job.h"
#include "Progress.h"
#include "Results.h"
#include "Text.h"
#include "Workers.h"
#include "api/Conversion.h"

namespace mova::cli {

namespace {

/// So many results may wait for one before them. A file that takes long holds up no other before that.
constexpr size_t kWindow = 4096;

/// After that time another try is made to tell what could not be told.
constexpr auto kNextTry = std::chrono::milliseconds(50);

constexpr auto kDefaultTimeout = std::chrono::seconds(60);

size_t usableCores() {
  cpu_set_t cores;
  return ::sched_getaffinity(0, sizeof cores, &cores) == 0 ? static_cast<size_t>(CPU_COUNT(&cores)) : 1;
}

WorkerLimits chooseLimits(const ConvertOptions& options) {
  Clock::duration time = kDefaultTimeout;
  if (options.timeout) {
    time = std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(*options.timeout));
  }
  return {time, options.memory};
}

ProgressForm chooseProgress(const ConvertOptions& options) {
  if (options.progress) return ProgressForm::kLines;
  const char* terminal = std::getenv("TERM");
  const bool canDraw = ::isatty(STDERR_FILENO) && terminal && std::string_view(terminal) != "dumb";
  return canDraw && !options.quiet ? ProgressForm::kBar : ProgressForm::kNone;
}

/// What a worker finds out, as bytes for its parent: the fields with zero bytes between them.
std::string pack(const Outcome& outcome) {
  return fmt::format("{}{zero}{}{zero}{}{zero}{}{zero}{}", outcome.status, outcome.captions, outcome.format,
                     outcome.output, outcome.message, fmt::arg("zero", '\0'));
}

void unpack(std::string_view bytes, Outcome& outcome) {
  const auto next = [&bytes] {
    const std::string_view field = bytes.substr(0, bytes.find('\0'));
    bytes.remove_prefix(std::min(bytes.size(), field.size() + 1));
    return field;
  };
  const auto number = [&next](auto& value) {
    const std::string_view field = next();
    std::from_chars(field.data(), field.data() + field.size(), value);
  };
  number(outcome.status);
  number(outcome.captions);
  outcome.format = next();
  outcome.output = next();
  outcome.message = next();
}

/// The output is there as a whole, and was written after the input. An empty one is what a failure may have left.
bool isUpToDate(const std::string& output, const std::string& input) {
  struct stat written {};
  struct stat read {};
  if (::stat(output.c_str(), &written) != 0 || ::stat(input.c_str(), &read) != 0) return false;
  const auto before = [](const timespec& a, const timespec& b) {
    return a.tv_sec != b.tv_sec ? a.tv_sec < b.tv_sec : a.tv_nsec < b.tv_nsec;
  };
  return S_ISREG(written.st_mode) && S_ISREG(read.st_mode) && written.st_size > 0 &&
         !before(written.st_mtim, read.st_mtim);
}

/// Whether there is room for a line in a pipe or on a terminal.
bool takesLine(std::FILE* stream) {
  pollfd place{::fileno(stream), POLLOUT, 0};
  return ::poll(&place, 1, 0) != 0;
}

/// The file of --report.
class Report {
 public:
  explicit Report(std::optional<std::string> path) : path_(std::move(path)) {
    if (path_ && !(file_ = std::fopen(path_->c_str(), "we"))) refuse(errno);
  }
  Report(const Report&) = delete;
  Report& operator=(const Report&) = delete;
  ~Report() {
    if (file_) std::fclose(file_);
  }
  /// Null if there is none.
  std::FILE* file() const { return file_; }
  void add(const std::string& line) {
    printLine(file_, line);
    std::fflush(file_);  // What has been done stands there, whatever comes.
    if (std::ferror(file_) && error_ == 0) error_ = errno;
  }
  /// Throws a Failure if it is not whole.
  void check() const {
    if (error_ != 0) refuse(error_);
  }

 private:
  [[noreturn]] void refuse(int error) const {
    throw Failure(kCantCreate,
                  fmt::format("{}: the report can't be written: {}", printable(*path_), std::strerror(error)));
  }
  std::optional<std::string> path_;
  std::FILE* file_ = nullptr;
  int error_ = 0;  ///< of the first line that failed
};

class BatchRun {
 public:
  BatchRun(const ConvertOptions& options, const Format& target, const MOVASettings& settings, InputList& inputs,
           const FileJob& job)
      : options_(options),
        target_(target),
        settings_(settings),
        job_(job),
        inputs_(inputs),
        next_(inputs_.next()),
        report_(options.report),
        workers_(options.jobs.value_or(usableCores()), chooseLimits(options), [this](Task task) { return work(task); }),
        progressForm_(chooseProgress(options)),
        progress_(progressForm_) {
    tally_.total = inputs.size();
  }

  void run() {
    do {
      takeInputs();
      tellResults();
      if (canTell()) progress_.show(tally_);
      if (auto ended = workers_.wait(nextLook())) finish(*ended);
    } while (workers_.interruption() == 0 && (next_ || !window_.empty()));
    if (workers_.interruption() != 0) tellInterruption();
    progress_.hide();
    report_.check();
  }

  const Tally& tally() const { return tally_; }
  int worstStatus() const { return worst_; }
  int interruption() const { return workers_.interruption(); }

 private:
  struct Result {
    Outcome outcome;
    std::string output;  ///< the path that is to be written
    bool isThere = false;
    bool isSkipped = false;
  };

  void takeInputs() {
    for (; next_ && !workers_.haveEnough() && window_.size() < kWindow; next_ = inputs_.next()) takeInput(*next_);
  }

  void takeInput(const InputFile& input) {
    Result result;
    result.outcome.input = input.path;
    result.output = input.outputPath(*options_.outputFolder, target_.extension);
    if (options_.resume && isUpToDate(result.output, input.path)) {
      result.outcome.output = result.output;
      result.isThere = result.isSkipped = true;
    } else {
      workers_.give(firstInWindow_ + window_.size());
    }
    window_.push_back(std::move(result));
  }

  Result& resultOf(Task task) { return window_[task - firstInWindow_]; }

  /// Done by a worker, which may have converted other files before.
  Done work(Task task) {
    forgetConversions();
    const Result& result = resultOf(task);
    const Outcome outcome = job_(result.output, result.outcome.input, target_, settings_);
    return {pack(outcome), outcome.status == kSoftware};  // That is too little memory, in most cases.
  }

  void finish(const Ended& ended) {
    Result& result = resultOf(ended.task);
    result.isThere = true;
    if (ended.result) {
      unpack(*ended.result, result.outcome);
    } else {
      result.outcome.status = kSoftware;
      result.outcome.message = fmt::format("{}: {}", printable(result.outcome.input), ended.reason);
    }
  }

  /// When there may be something to do though no task has ended.
  Clock::time_point nextLook() const {
    const Clock::time_point now = Clock::now();
    const bool isUntold = !window_.empty() && window_.front().isThere;
    if (workers_.areIdle() && !isUntold) return now;
    return isUntold || progress_.due() <= now ? now + kNextTry : progress_.due();
  }

  /// Conversions and interruptions don't wait for someone who does not read.
  bool canTell() const {
    return takesLine(stderr) && (!options_.json || takesLine(stdout)) && (!report_.file() || takesLine(report_.file()));
  }

  /// All that are there up to the first that is not.
  void tellResults() {
    while (!window_.empty() && window_.front().isThere && canTell()) {
      tell(window_.front());
      window_.pop_front();
      ++firstInWindow_;
    }
  }

  void tell(const Result& result) {
    const Outcome& outcome = result.outcome;
    worst_ = std::max(worst_, outcome.status);
    ++(result.isSkipped ? tally_.skipped : outcome.status == 0 ? tally_.converted : tally_.failed);
    if (!outcome.message.empty()) write(stderr, "mova: " + outcome.message);
    if (options_.json || options_.report) tellPrograms(result);
    if (!options_.json && outcome.message.empty() && !options_.quiet && progressForm_ == ProgressForm::kNone) {
      write(stderr, result.isSkipped ? fmt::format("{}: skipped; {} is up to date", printable(outcome.input),
                                                   printable(outcome.output))
                                     : convertedLine(outcome, target_));
    }
  }

  void tellPrograms(const Result& result) {
    Json json = convertedJson(result.outcome, target_);
    json["skipped"] = result.isSkipped;
    const std::string line = oneLine(json);
    if (report_.file() && canWrite(report_.file())) report_.add(line);
    if (options_.json) write(stdout, line);
  }

  /// After an interruption what would have to wait is not written.
  bool canWrite(std::FILE* stream) const { return workers_.interruption() == 0 || takesLine(stream); }

  void write(std::FILE* stream, const std::string& line) {
    if (!canWrite(stream)) return;
    progress_.hide();
    printLine(stream, line);
  }

  /// Results that waited for one before them are told now.
  void tellInterruption() {
    workers_.stop();
    while (auto ended = workers_.wait(Clock::now())) finish(*ended);
    for (const Result& result : window_) {
      if (result.isThere) tell(result);
    }
    write(stderr, fmt::format("mova: interrupted after {} of {} files; the same command with --resume goes on",
                              tally_.done(), tally_.total));
  }

  const ConvertOptions& options_;
  const Format& target_;
  const MOVASettings& settings_;
  const FileJob& job_;
  InputReader inputs_;
  std::optional<InputFile> next_;
  Report report_;
  Workers workers_;
  ProgressForm progressForm_;
  Progress progress_;
  Tally tally_;
  std::deque<Result> window_;
  uint64_t firstInWindow_ = 0;
  int worst_ = 0;
};

void makeOutputFolder(const std::string& folder) {
  std::error_code error;
  if (!std::filesystem::is_directory(folder, error)) std::filesystem::create_directories(folder, error);
  if (error) throw Failure(kCantCreate, fmt::format("{}: can't be made: {}", printable(folder), error.message()));
}

/// So that whoever started the command learns of the signal.
[[noreturn]] void endBySignal(int signal) {
  std::signal(signal, SIG_DFL);
  std::raise(signal);
  std::exit(128 + signal);
}

}  // namespace

int convertBatch(const ConvertOptions& options, const Format& target, const MOVASettings& settings,
                 const FileJob& job) {
  if (options.outputFolder->empty()) throw Failure(kUsage, "--output-dir is empty: name a folder");
  InputList inputs =
      collectInputs({options.inputs, options.filesFrom, options.recursive, *options.outputFolder, options.report});
  refuseClashes(inputs, {*options.outputFolder, target.extension, options.report});
  makeOutputFolder(*options.outputFolder);
  Tally tally;
  int status = 0;
  int interruption = 0;
  {
    BatchRun run(options, target, settings, inputs, job);
    run.run();
    tally = run.tally();
    status = run.worstStatus();
    interruption = run.interruption();
  }
  if (interruption != 0) endBySignal(interruption);
  if (!options.quiet && !options.json) printMessage(describeTally(tally));
  return status;
}

}  // namespace mova::cli
