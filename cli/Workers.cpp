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

#include "Failure.h"
#include "Files.h"
#include "Heap.h"

namespace mova::cli {

namespace {

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

std::string describeEnd(int status) {
  if (WIFSIGNALED(status)) return fmt::format("the conversion crashed ({})", ::strsignal(WTERMSIG(status)));
  return fmt::format("the conversion ended by itself with status {}", WEXITSTATUS(status));
}

}  // namespace

/// What a worker tells, in memory that its parent sees.
struct Workers::Shared {
  char temporaryFile[PATH_MAX];  ///< its name, for as long as there is one
  std::atomic<bool> isDone;
  size_t length;
  char result[kLongestResult];
};

Workers::Workers(size_t count, WorkerLimits limits) : limits_(limits), parent_(::getpid()), slots_(count) {
  void* shared = ::mmap(nullptr, count * sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (shared == MAP_FAILED) throw std::bad_alloc();
  for (size_t i = 0; i < count; ++i) slots_[i].shared = static_cast<Shared*>(shared) + i;

  emptyHeap();
  startMemory_ = ownMemory();
  prepareHeapForChildren(limits.memory.value_or(UINT64_MAX));

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
  for (const Slot& slot : slots_) {
    if (slot.pid != 0) ::kill(slot.pid, SIGKILL);
  }
  while (running_ > 0 && reap(0)) {
  }
  ::munmap(slots_.front().shared, slots_.size() * sizeof(Shared));
  ::sigprocmask(SIG_SETMASK, &maskBefore_, nullptr);
}

bool Workers::start(uint64_t task, const std::function<std::string()>& work) {
  Slot& slot = *std::find_if(slots_.begin(), slots_.end(), [](const Slot& s) { return s.pid == 0; });
  slot.shared->isDone = false;
  slot.shared->temporaryFile[0] = '\0';
  const pid_t pid = ::fork();
  if (pid < 0) return false;
  if (pid == 0) beWorker(*slot.shared, work);
  slot = {slot.shared, task, pid, Clock::now() + limits_.time, false};
  ++running_;
  return true;
}

void Workers::beWorker(Shared& shared, const std::function<std::string()>& work) const {
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
  noteTemporaryFile(shared.temporaryFile);
  try {
    const std::string result = work();
    shared.length = std::min(result.size(), kLongestResult);
    std::memcpy(shared.result, result.data(), shared.length);
    shared.isDone = true;
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

std::optional<Ended> Workers::reap(int flags) {
  for (;;) {
    int status = 0;
    const pid_t pid = ::waitpid(-1, &status, flags);
    if (pid < 0 && errno == EINTR) continue;
    if (pid <= 0) return std::nullopt;
    const auto slot = std::find_if(slots_.begin(), slots_.end(), [pid](const Slot& s) { return s.pid == pid; });
    if (slot != slots_.end()) return end(*slot, status);  // A child that the process had before is none of ours.
  }
}

Ended Workers::end(Slot& slot, int status) {
  Ended ended{slot.task, std::nullopt, ""};
  const Shared& shared = *slot.shared;
  if (shared.isDone) {
    ended.result.emplace(shared.result, std::min(shared.length, kLongestResult));
  } else {
    ended.reason = slot.ranOutOfTime ? fmt::format("the conversion took longer than {}", describe(limits_.time))
                                     : describeEnd(status);
    if (shared.temporaryFile[0] != '\0') ::unlink(shared.temporaryFile);
  }
  slot.pid = 0;
  --running_;
  return ended;
}

std::optional<Ended> Workers::wait(Clock::time_point latest) {
  for (;;) {
    noticeInterruption();
    if (interruption_ != 0) return std::nullopt;
    const Clock::time_point now = Clock::now();
    stopLateWork(now);
    if (std::optional<Ended> ended = reap(WNOHANG)) return ended;
    if (now >= latest) return std::nullopt;
    sleep(latest);
  }
}

void Workers::stopLateWork(Clock::time_point now) {
  for (Slot& slot : slots_) {
    if (slot.pid == 0 || slot.ranOutOfTime || now < slot.deadline) continue;
    slot.ranOutOfTime = true;
    ::kill(slot.pid, SIGKILL);
  }
}

void Workers::noticeInterruption() {
  const timespec now{};
  const int signal = ::sigtimedwait(&interruptions_, nullptr, &now);
  if (signal > 0) interruption_ = signal;
}

void Workers::sleep(Clock::time_point until) {
  for (const Slot& slot : slots_) {
    if (slot.pid != 0 && !slot.ranOutOfTime) until = std::min(until, slot.deadline);
  }
  const timespec timeout = toTimespec(until - Clock::now());
  const int signal = ::sigtimedwait(&awaited_, nullptr, &timeout);
  if (signal > 0 && signal != SIGCHLD) interruption_ = signal;
}

}  // namespace mova::cli
