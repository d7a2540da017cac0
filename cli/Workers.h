/// Worker processes: what happens to one does not happen to others. A process costs as much as the conversion of a
/// whole film, so a worker does short tasks one after the other; none of them loses anything by that.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <csignal>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace mova::cli {

using Clock = std::chrono::steady_clock;

struct WorkerLimits {
  Clock::duration time;            ///< for each task
  std::optional<uint64_t> memory;  ///< bytes, on top of what the process has at its start
};

/// The caller's name for a piece of work.
using Task = uint64_t;

/// What a worker has done of a task.
struct Done {
  std::string result;
  /// What the worker did before may have spoiled it.
  bool isSuspect = false;
};

/// What became of a task.
struct Ended {
  Task task = 0;
  std::optional<std::string> result;  ///< nothing if the task did not come to its end
  std::string reason;                 ///< why not
};

/// While there is one, SIGINT, SIGTERM and SIGHUP don't end the process but become an interruption. There must be no
/// other threads, and no other child processes are waited for.
class Workers {
 public:
  /// `work` does a task in a process that began as a copy of this one, before the first task of that process. It is for
  /// `work` to undo what earlier tasks left behind. If it crashes or its result is suspect, that counts for the first
  /// task of a process only; any other is tried again as the first of a new one.
  Workers(size_t count, WorkerLimits limits, std::function<Done(Task)> work);
  Workers(const Workers&) = delete;
  Workers& operator=(const Workers&) = delete;
  /// As stop().
  ~Workers();

  void give(Task task) { waiting_.push_back(task); }
  /// With that many tasks waiting they are well divided.
  bool haveEnough() const;
  bool areIdle() const { return running_ == 0 && waiting_.empty() && ended_.empty(); }

  /// Waits for a task to end, but no longer than until `latest` or an interruption.
  std::optional<Ended> wait(Clock::time_point latest);

  /// Ends all tasks that still run and takes their temporary files away. Tasks that have ended can be waited for.
  void stop();

  /// The signal that asked the process to end; 0 if none did.
  int interruption() const { return interruption_; }

 private:
  struct Shared;
  struct Slot {
    Shared* shared = nullptr;
    pid_t pid = 0;  ///< 0: free
    std::vector<Task> tasks;
    std::optional<size_t> late;  ///< the one of the tasks that ran out of time
  };

  void startWaiting();
  bool start(Slot& slot);
  [[noreturn]] void beWorker(const Slot& slot) const;
  void limitMemory() const;
  Slot* reap(int flags, int& status);
  void end(Slot& slot, int status);
  size_t takeResults(Slot& slot);
  Clock::time_point deadline(const Slot& slot) const;
  void stopLateWork(Clock::time_point now);
  void sleep(Clock::time_point until);
  void noticeInterruption();

  WorkerLimits limits_;
  std::function<Done(Task)> work_;
  pid_t parent_;
  uint64_t startMemory_ = 0;
  std::vector<Slot> slots_;
  size_t running_ = 0;
  std::deque<Task> waiting_;
  std::deque<Ended> ended_;
  sigset_t interruptions_;
  sigset_t awaited_;
  sigset_t maskBefore_;
  int interruption_ = 0;
};

}  // namespace mova::cli
