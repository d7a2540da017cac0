/// Worker processes: each does one piece of work and ends, so that nothing that happens to it happens to others.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <csignal>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace mova::cli {

using Clock = std::chrono::steady_clock;

struct WorkerLimits {
  Clock::duration time;
  std::optional<uint64_t> memory;  ///< bytes, on top of what the process has at its start
};

/// What became of a piece of work.
struct Ended {
  uint64_t task = 0;
  std::optional<std::string> result;  ///< nothing if the worker did not come to its end
  std::string reason;                 ///< why not
};

/// While there is one, SIGINT, SIGTERM and SIGHUP don't end the process but become an interruption. There must be no
/// other threads, and no other child processes are waited for.
class Workers {
 public:
  Workers(size_t count, WorkerLimits limits);
  Workers(const Workers&) = delete;
  Workers& operator=(const Workers&) = delete;
  /// Ends all work that still runs and takes its temporary files away.
  ~Workers();

  bool areIdle() const { return running_ == 0; }
  bool areFull() const { return running_ == slots_.size(); }

  /// Does `work` in a process that is a copy of this one. `task` is the caller's name for it. False leaves in errno why
  /// there can't be another process now. The workers must not be full.
  bool start(uint64_t task, const std::function<std::string()>& work);

  /// Waits for a piece of work to end, but no longer than until `latest` or an interruption.
  std::optional<Ended> wait(Clock::time_point latest);

  /// The signal that asked the process to end; 0 if none did.
  int interruption() const { return interruption_; }

 private:
  struct Shared;
  struct Slot {
    Shared* shared = nullptr;
    uint64_t task = 0;
    pid_t pid = 0;  ///< 0: free
    Clock::time_point deadline;
    bool ranOutOfTime = false;
  };

  [[noreturn]] void beWorker(Shared& shared, const std::function<std::string()>& work) const;
  void limitMemory() const;
  std::optional<Ended> reap(int flags);
  Ended end(Slot& slot, int status);
  void stopLateWork(Clock::time_point now);
  void sleep(Clock::time_point until);
  void noticeInterruption();

  WorkerLimits limits_;
  pid_t parent_;
  uint64_t startMemory_ = 0;
  std::vector<Slot> slots_;
  size_t running_ = 0;
  sigset_t interruptions_;
  sigset_t awaited_;
  sigset_t maskBefore_;
  int interruption_ = 0;
};

}  // namespace mova::cli
