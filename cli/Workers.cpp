#include "Workers.h"

#include <fmt/format.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <new>
#include <string_view>
#include <utility>

#include "Failure.h"
#include "Files.h"
#include "Heap.h"

namespace mova::cli {

namespace {

/// When a worker has worked for that long, its process has cost little beside that, and it takes no other task.
constexpr auto kLongEnough = std::chrono::milliseconds(200);

/// More than it can do in that time, as a rule.
constexpr size_t kMostTasks = 512;

/// So many times a worker comes back for more while there is enough to do, so that none has to wait for another's end.
constexpr size_t kShares = 2;

/// A result that is longer is cut. Three of the longest paths fit in.
constexpr size_t kLongestResult = size_t{3} * PATH_MAX;

constexpr int kInterruptions[] = {SIGINT, SIGTERM, SIGHUP};

/// Bytes of memory that this process may write to and shares with no other.
uint64_t ownMemory() {
  unsigned long pages = 0;
  if (std::FILE* file = std::fopen("/proc/self/statm", "re")) {
    if (std::fscanf(file, "%*u %*u %*u %*u %*u %lu", &pages) != 1) pages = 0;
    std::fclose(file);
  }
  return uint64_t{pages} * static_cast<uint64_t>(::sysconf(_SC_PAGESIZE));
}

timespec toTimespec(Clock::duration duration) {
  const auto nanoseconds = std::chrono::duration_cast<std::chrono::nanoseconds>(duration).count();
  const auto positive = std::max<int64_t>(nanoseconds, 0);
  return {static_cast<time_t>(positive / 1'000'000'000), static_cast<long>(positive % 1'000'000'000)};
}

std::string describe(Clock::duration duration) {
  const double seconds = std::chrono::duration<double>(duration).count();
  return fmt::format("{} second{}", seconds, seconds == 1 ? "" : "s");
}

/// Texts, each with its length before it.
class ResultList {
 public:
  void clear() { size_ = 0; }
  bool hasRoom() const { return sizeof bytes_ - size_ >= sizeof(size_t) + kLongestResult; }
  void add(const std::string& result) {
    const size_t length = std::min(result.size(), kLongestResult);
    append(&length, sizeof length);
    append(result.data(), length);
  }
  /// The first ones. There are fewer only if the memory was overwritten.
  std::vector<std::string> first(size_t count) const {
    std::vector<std::string> results;
    std::string_view rest(bytes_, std::min(size_, sizeof bytes_));
    for (size_t length; results.size() < count && rest.size() >= sizeof length;) {
      std::memcpy(&length, rest.data(), sizeof length);
      rest.remove_prefix(sizeof length);
      results.emplace_back(rest.substr(0, length));
      rest.remove_prefix(results.back().size());
    }
    return results;
  }

 private:
  void append(const void* bytes, size_t count) {
    std::memcpy(bytes_ + size_, bytes, count);
    size_ += count;
  }

  size_t size_;
  char bytes_[1 << 17];
};

std::string describeEnd(int status) {
  if (WIFSIGNALED(status)) return fmt::format("the conversion crashed ({})", ::strsignal(WTERMSIG(status)));
  return fmt::format("the conversion ended by itself with status {}", WEXITSTATUS(status));
}

}  // namespace

/// What a worker tells, in memory that its parent sees.
struct Workers::Shared {
  char temporaryFile[PATH_MAX];   ///< its name, for as long as there is one
  std::atomic<Clock::rep> begun;  ///< when the task was begun that runs
  std::atomic<size_t> done;       ///< tasks before that one, which have results
  std::atomic<bool> hasStopped;   ///< it leaves all others for another worker
  ResultList results;
};

Workers::Workers(size_t count, WorkerLimits limits, std::function<Done(Task)> work)
    : limits_(limits), work_(std::move(work)), parent_(::getpid()), slots_(count) {
  void* shared = ::mmap(nullptr, count * sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (shared == MAP_FAILED) throw std::bad_alloc();
  for (size_t i = 0; i < count; ++i) slots_[i].shared = static_cast<Shared*>(shared) + i;

  emptyHeap();
  startMemory_ = ownMemory();
  startMemory_ += prepareHeapForChildren(limits.memory.value_or(UINT64_MAX));

  sigemptyset(&interruptions_);
  for (const int signal : kInterruptions) {
    struct sigaction action {};
    // What is ignored, as by nohup, stays so.
    if (::sigaction(signal, nullptr, &action) == 0 && action.sa_handler != SIG_IGN) sigaddset(&interruptions_, signal);
  }
  awaited_ = interruptions_;
  sigaddset(&awaited_, SIGCHLD);
  ::sigprocmask(SIG_BLOCK, &awaited_, &maskBefore_);
}

Workers::~Workers() {
  stop();
  ::munmap(slots_.front().shared, slots_.size() * sizeof(Shared));
  ::sigprocmask(SIG_SETMASK, &maskBefore_, nullptr);
}

bool Workers::haveEnough() const {
  return waiting_.size() >= kShares * slots_.size() * kMostTasks;
}

std::optional<Ended> Workers::wait(Clock::time_point latest) {
  for (;;) {
    if (interruption_ == 0) startWaiting();
    if (!ended_.empty()) {
      Ended ended = std::move(ended_.front());
      ended_.pop_front();
      return ended;
    }
    noticeInterruption();
    const Clock::time_point now = Clock::now();
    stopLateWork(now);
    int status = 0;
    if (Slot* slot = reap(WNOHANG, status)) {
      end(*slot, status);
    } else if (interruption_ != 0 || now >= latest) {
      return std::nullopt;
    } else {
      sleep(latest);
    }
  }
}

void Workers::stop() {
  for (const Slot& slot : slots_) {
    if (slot.pid != 0) ::kill(slot.pid, SIGKILL);
  }
  int status = 0;
  while (running_ > 0) {
    Slot* slot = reap(0, status);
    if (!slot) return;
    takeResults(*slot);
  }
}

void Workers::startWaiting() {
  for (Slot& slot : slots_) {
    if (waiting_.empty()) return;
    if (slot.pid != 0 || start(slot)) continue;
    if (running_ > 0) return;  // There may be room for another process when one of them has ended.
    ended_.push_back(
        {waiting_.front(), std::nullopt, fmt::format("no process can be started for it: {}", std::strerror(errno))});
    waiting_.pop_front();
    return;
  }
}

/// False leaves in errno why there can't be another process now.
bool Workers::start(Slot& slot) {
  const size_t share = std::clamp<size_t>(waiting_.size() / (kShares * slots_.size()), 1, kMostTasks);
  const auto end = waiting_.begin() + static_cast<ptrdiff_t>(share);
  slot.tasks.assign(waiting_.begin(), end);
  slot.late.reset();
  slot.shared->temporaryFile[0] = '\0';
  slot.shared->begun = Clock::now().time_since_epoch().count();
  slot.shared->done = 0;
  slot.shared->hasStopped = false;
  slot.shared->results.clear();
  const pid_t pid = ::fork();
  if (pid < 0) return false;
  if (pid == 0) beWorker(slot);
  waiting_.erase(waiting_.begin(), end);
  slot.pid = pid;
  ++running_;
  return true;
}

void Workers::beWorker(const Slot& slot) const {
  // Without its parent a worker ends, but not in the middle of a file that it writes: SIGTERM can wait. What the
  // terminal sends to all is the parent's to see to.
  sigset_t end;
  sigemptyset(&end);
  sigaddset(&end, SIGTERM);
  std::signal(SIGTERM, SIG_DFL);
  ::prctl(PR_SET_PDEATHSIG, SIGTERM);
  ::sigprocmask(SIG_UNBLOCK, &end, nullptr);
  if (::getppid() != parent_) ::_exit(1);

  limitMemory();
  leaveOutGaps();
  Shared& shared = *slot.shared;
  noteTemporaryFile(shared.temporaryFile);
  try {
    const Clock::time_point enough = Clock::now() + kLongEnough;
    for (size_t i = 0; i < slot.tasks.size(); ++i) {
      const Clock::time_point now = Clock::now();
      if (i > 0 && (now >= enough || !shared.results.hasRoom())) break;
      shared.begun = now.time_since_epoch().count();
      const Done done = work_(slot.tasks[i]);
      if (done.isSuspect && i > 0) break;
      shared.results.add(done.result);
      shared.done = i + 1;
      if (done.isSuspect) break;
    }
    shared.hasStopped = true;
  } catch (...) {
    ::_exit(kSoftware);
  }
  // Nothing is cleared away: all of it goes with the process.
  ::_exit(0);
}

void Workers::limitMemory() const {
  if (!limits_.memory) return;
  rlimit limit{};
  if (::getrlimit(RLIMIT_DATA, &limit) != 0) return;
  limit.rlim_cur = std::min<rlim_t>(limit.rlim_cur, startMemory_ + *limits_.memory);
  ::setrlimit(RLIMIT_DATA, &limit);
}

/// The slot of a worker that has ended. With WNOHANG nothing if none has.
Workers::Slot* Workers::reap(int flags, int& status) {
  for (;;) {
    const pid_t pid = ::waitpid(-1, &status, flags);
    if (pid < 0 && errno == EINTR) continue;
    if (pid <= 0) return nullptr;
    const auto slot = std::find_if(slots_.begin(), slots_.end(), [pid](const Slot& s) { return s.pid == pid; });
    if (slot != slots_.end()) return &*slot;  // A child that the process had before is none of ours.
  }
}

/// Frees the slot. Returns how many of its tasks have ended.
size_t Workers::takeResults(Slot& slot) {
  const Shared& shared = *slot.shared;
  std::vector<std::string> results = shared.results.first(std::min<size_t>(shared.done, slot.tasks.size()));
  for (size_t i = 0; i < results.size(); ++i) {
    ended_.push_back({slot.tasks[i], std::move(results[i]), ""});
  }
  if (shared.temporaryFile[0] != '\0') ::unlink(shared.temporaryFile);
  slot.pid = 0;
  --running_;
  return results.size();
}

void Workers::end(Slot& slot, int status) {
  size_t done = takeResults(slot);
  const bool isLate = slot.late == done && !slot.shared->hasStopped;
  if (done < slot.tasks.size() && (done == 0 || isLate)) {
    ended_.push_back(
        {slot.tasks[done], std::nullopt,
         isLate ? fmt::format("the conversion took longer than {}", describe(limits_.time)) : describeEnd(status)});
    ++done;
  }
  waiting_.insert(waiting_.begin(), slot.tasks.begin() + static_cast<ptrdiff_t>(done), slot.tasks.end());
}

Clock::time_point Workers::deadline(const Slot& slot) const {
  return Clock::time_point(Clock::duration(slot.shared->begun)) + limits_.time;
}

void Workers::stopLateWork(Clock::time_point now) {
  for (Slot& slot : slots_) {
    if (slot.pid == 0 || slot.late) continue;
    // In this order: if the task ends in between, the time is that of the next one or the late task has a result, and
    // the next one is not blamed.
    const size_t task = slot.shared->done;
    if (now < deadline(slot)) continue;
    slot.late = task;
    ::kill(slot.pid, SIGKILL);
  }
}

void Workers::sleep(Clock::time_point until) {
  for (const Slot& slot : slots_) {
    if (slot.pid != 0 && !slot.late) until = std::min(until, deadline(slot));
  }
  const timespec timeout = toTimespec(until - Clock::now());
  const int signal = ::sigtimedwait(&awaited_, nullptr, &timeout);
  if (signal > 0 && signal != SIGCHLD) interruption_ = signal;
}

void Workers::noticeInterruption() {
  const timespec now{};
  const int signal = ::sigtimedwait(&interruptions_, nullptr, &now);
  if (signal > 0) interruption_ = signal;
}

}  // namespace mova::cli
