// Workers that don't come to their end; what the command itself can be made to do is tested in tests/cli/.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include "cli/Batch.h"
#include "cli/Failure.h"
#include "cli/Files.h"

namespace mova::cli {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

/// Converts as usual, but for inputs with names that tell something else. The file "begun" beside the folder of the
/// input gets a line for each: its name and the process.
Outcome convertOrMisbehave(const std::string& path, const std::string& input, const Format& target,
                           const MOVASettings& settings) {
  static int earlier = 0;
  const bool isFirst = earlier++ == 0;
  const std::string name = fs::path(input).stem();
  std::ofstream(fs::path(input).parent_path().parent_path() / "begun", std::ios::app)
      << name << ' ' << ::getpid() << '\n';
  if (name == "die-after-others" && !isFirst) std::raise(SIGKILL);
  if (name.starts_with("starve") && (name != "starve-after-others" || !isFirst)) {
    Outcome outcome;
    outcome.status = kSoftware;
    return outcome;
  }
  if (name.starts_with("crash")) {
    std::signal(SIGSEGV, SIG_DFL);
    std::raise(SIGSEGV);
  }
  if (name == "killed") std::raise(SIGKILL);
  if (name == "exit") ::_exit(7);
  if (name == "throw") throw 5;
  if (name == "loop") {
    for (volatile bool forever = true; forever;) {
    }
  }
  if (name == "deaf") {
    sigset_t all;
    sigfillset(&all);
    ::sigprocmask(SIG_BLOCK, &all, nullptr);
    for (;;) ::pause();
  }
  if (name == "slow") ::usleep(300'000);
  if (name == "endless") {
    const std::u16string text(1 << 22, u'x');
    for (;;) writeFile(path, text);
  }
  if (name == "greedy") {
    int mebibytes = 0;
    while (::mmap(nullptr, 1 << 20, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0) != MAP_FAILED) {
      if (++mebibytes == 200) break;
    }
    Outcome outcome;
    outcome.status = mebibytes >= 60 && mebibytes <= 64 ? kNoInput : kUsage;
    outcome.message = "got " + std::to_string(mebibytes) + " MiB";
    return outcome;
  }
  return convertTo(path, input, target, settings);
}

class BatchTest : public testing::Test {
 protected:
  BatchTest() {
    fs::create_directories(folder_ / "in");
    options_.outputFolder = folder_ / "out";
    options_.report = folder_ / "report";
    options_.quiet = true;
    options_.jobs = 3;
  }
  ~BatchTest() override { fs::remove_all(folder_); }

  void addInput(const std::string& name) {
    const fs::path path = folder_ / "in" / (name + ".srt");
    std::ofstream(path) << "1\n00:00:01,000 --> 00:00:02,000\nHello.\n\n";
    options_.inputs.push_back(path);
  }

  int run() {
    testing::internal::CaptureStderr();
    const int status = convertBatch(options_, findFormat("WebVTT"), getDefaultSettings(), convertOrMisbehave);
    messages_ = testing::internal::GetCapturedStderr();
    return status;
  }

  /// A run that can be interrupted, in another process. What it says goes to the file "messages".
  pid_t start() {
    const pid_t pid = ::fork();
    if (pid != 0) return pid;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) std::signal(signal, SIG_DFL);
    ::dup2(::creat((folder_ / "messages").c_str(), 0600), STDERR_FILENO);
    convertBatch(options_, findFormat("WebVTT"), getDefaultSettings(), convertOrMisbehave);
    ::_exit(0);
  }

  /// What the run says, without the name of the folder.
  std::string messages() const {
    std::string text = messages_;
    const std::string folder = (folder_ / "in").string() + "/";
    for (size_t at; (at = text.find(folder)) != std::string::npos;) text.erase(at, folder.size());
    return text;
  }

  std::vector<std::string> outputs() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder_ / "out")) names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
  }

  /// Names of inputs and the processes that worked on them, in the order of their beginnings.
  std::vector<std::pair<std::string, std::string>> begun() const {
    std::ifstream file(folder_ / "begun");
    std::vector<std::pair<std::string, std::string>> lines;
    for (std::string name, pid; file >> name >> pid;) lines.emplace_back(name, pid);
    return lines;
  }

  std::vector<std::string> reportLines() const {
    std::ifstream file(*options_.report);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    return lines;
  }

  fs::path folder_ = fs::path(testing::TempDir()) / ("mova-batch-" + std::to_string(::getpid()));
  ConvertOptions options_;
  std::string messages_;
};

TEST_F(BatchTest, WorkersThatDieCostOnlyTheirFiles) {
  for (const char* name : {"a", "crash", "b", "killed", "exit", "throw", "c"}) addInput(name);
  EXPECT_EQ(run(), kSoftware);
  EXPECT_EQ(messages(),
            "mova: crash.srt: the conversion crashed (Segmentation fault)\n"
            "mova: killed.srt: the conversion crashed (Killed)\n"
            "mova: exit.srt: the conversion ended by itself with status 7\n"
            "mova: throw.srt: the conversion ended by itself with status 70\n");
  EXPECT_THAT(outputs(), testing::ElementsAre("a.vtt", "b.vtt", "c.vtt"));
  const auto lines = reportLines();
  ASSERT_EQ(lines.size(), 7u);
  EXPECT_THAT(lines[1], HasSubstr("\"output\":null,\"status\":70,\"message\":\""));
  EXPECT_THAT(lines[1], HasSubstr("crash.srt: the conversion crashed (Segmentation fault)\""));
  EXPECT_THAT(lines[2], HasSubstr("b.vtt\",\"status\":0,\"message\":null"));
}

TEST_F(BatchTest, WorkersThatDieCostNoFileBeforeOrBehind) {
  options_.jobs = 1;
  std::string expected;
  size_t converted = 0;
  for (int i = 0; i < 40; ++i) {
    // First and last of all, and two in a row.
    if (i % 13 == 0 || i == 14) {
      addInput("crash" + std::to_string(i));
      expected += "mova: crash" + std::to_string(i) + ".srt: the conversion crashed (Segmentation fault)\n";
    } else {
      addInput(std::to_string(i));
      ++converted;
    }
  }
  EXPECT_EQ(run(), kSoftware);
  EXPECT_EQ(messages(), expected);
  EXPECT_EQ(outputs().size(), converted);
}

TEST_F(BatchTest, ShortFilesShareWorkersAndNoneComesAfterALongOne) {
  options_.jobs = 1;
  addInput("slow");
  for (int i = 0; i < 30; ++i) addInput(std::to_string(i));
  EXPECT_EQ(run(), 0);
  std::map<std::string, int> files;
  for (const auto& [name, pid] : begun()) ++files[pid];
  EXPECT_LT(files.size(), 30u);
  EXPECT_EQ(files[begun().front().second], 1);
}

TEST_F(BatchTest, LongResultsComeWhole) {
  options_.jobs = 1;
  std::string folders;
  for (int i = 0; i < 15; ++i) folders += std::string(200, 'x') + '/';
  std::string expected;
  for (int i = 0; i < 120; ++i) {
    const std::string path = folders + std::to_string(i) + ".srt";
    options_.inputs.push_back(folder_ / "in" / path);
    expected += "mova: " + path + ": the path has " + std::to_string(options_.inputs.back().size()) +
                " bytes, and at most 259 can be opened; go into its folder and name it from there, or link to it by a "
                "shorter path\n";
  }
  EXPECT_EQ(run(), kNoInput);
  EXPECT_EQ(messages(), expected);
}

TEST_F(BatchTest, WhatFailsAfterOtherFilesIsTriedAgainInANewWorker) {
  options_.jobs = 1;
  for (const char* name : {"a", "b", "die-after-others", "c", "starve-after-others", "d", "e", "f"}) addInput(name);
  EXPECT_EQ(run(), 0) << messages();
  EXPECT_EQ(outputs().size(), 8u);
  const auto lines = reportLines();
  ASSERT_EQ(lines.size(), 8u);
  EXPECT_THAT(lines[2], HasSubstr("die-after-others.srt\",\"format\":\"SubRip\",\"captions\":1,"));
  EXPECT_THAT(lines[4], HasSubstr("starve-after-others.srt\",\"format\":\"SubRip\",\"captions\":1,"));
}

TEST_F(BatchTest, NoFileIsTriedMoreThanTwice) {
  options_.jobs = 1;
  for (int i = 0; i < 100; ++i) addInput((i % 2 == 0 ? "starve" : "crash") + std::to_string(i));
  EXPECT_EQ(run(), kSoftware);
  EXPECT_EQ(reportLines().size(), 100u);
  std::map<std::string, int> tries;
  for (const auto& [name, pid] : begun()) ++tries[name];
  EXPECT_EQ(tries.size(), 100u);
  for (const auto& [name, count] : tries) EXPECT_LE(count, 2) << name;
}

TEST_F(BatchTest, AFileThatHangsAfterOthersIsNotTriedAgain) {
  options_.jobs = 1;
  options_.timeout = 3;
  for (const char* name : {"a", "b", "loop", "c", "d", "e", "f", "g"}) addInput(name);
  EXPECT_EQ(run(), kSoftware);
  EXPECT_EQ(messages(), "mova: loop.srt: the conversion took longer than 3 seconds\n");
  EXPECT_EQ(outputs().size(), 7u);
  const auto all = begun();
  EXPECT_EQ(std::count_if(all.begin(), all.end(), [](const auto& line) { return line.first == "loop"; }), 1);
}

TEST_F(BatchTest, AnInterruptionTellsWhatAWorkerHasDoneSoFar) {
  for (const char* name : {"a", "b", "loop", "c", "d", "e"}) addInput(name);
  options_.jobs = 1;
  const pid_t pid = start();
  while (begun().size() < 3) ::usleep(1000);
  ::kill(pid, SIGINT);
  ASSERT_EQ(::waitpid(pid, nullptr, 0), pid);
  EXPECT_THAT(outputs(), testing::ElementsAre("a.vtt", "b.vtt"));
  EXPECT_EQ(reportLines().size(), 2u);
}

TEST_F(BatchTest, WithoutAnyProcessEachFileIsToldOf) {
  for (const char* name : {"a", "b"}) addInput(name);
  fs::permissions(folder_, fs::perms::all);
  const pid_t pid = ::fork();
  if (pid == 0) {
    const rlimit none{0, 0};
    ::dup2(::creat((folder_ / "messages").c_str(), 0600), STDERR_FILENO);
    if (::geteuid() == 0 && ::setuid(65534) != 0) ::_exit(1);  // The limit means nothing to root.
    ::setrlimit(RLIMIT_NPROC, &none);
    ::_exit(convertBatch(options_, findFormat("WebVTT"), getDefaultSettings(), convertOrMisbehave));
  }
  int status = 0;
  ASSERT_EQ(::waitpid(pid, &status, 0), pid);
  EXPECT_EQ(WEXITSTATUS(status), kSoftware);
  EXPECT_THAT(outputs(), testing::IsEmpty());
  const auto lines = reportLines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_THAT(lines[1], HasSubstr("b.srt: no process can be started for it: Resource temporarily unavailable\""));
}

TEST_F(BatchTest, WorkersThatHangAreStopped) {
  for (const char* name : {"loop", "a", "deaf", "b"}) addInput(name);
  options_.timeout = 2;
  EXPECT_EQ(run(), kSoftware);
  EXPECT_EQ(messages(),
            "mova: loop.srt: the conversion took longer than 2 seconds\n"
            "mova: deaf.srt: the conversion took longer than 2 seconds\n");
  EXPECT_THAT(outputs(), testing::ElementsAre("a.vtt", "b.vtt"));
}

TEST_F(BatchTest, ALimitOfOneSecondIsToldInTheSingular) {
  addInput("loop");
  options_.timeout = 1;
  EXPECT_EQ(run(), kSoftware);
  EXPECT_EQ(messages(), "mova: loop.srt: the conversion took longer than 1 second\n");
}

TEST_F(BatchTest, SlowFilesKeepTheirPlaceInTheOrder) {
  for (const char* name : {"slow", "a", "b"}) addInput(name);
  options_.quiet = false;
  EXPECT_EQ(run(), 0);
  EXPECT_THAT(messages(), testing::MatchesRegex("slow.srt: [^\n]*\na.srt: [^\n]*\nb.srt: [^\n]*\nmova: 3 converted\n"));
}

TEST_F(BatchTest, AWorkerThatIsStoppedWhileItWritesLeavesNoTemporaryFile) {
  for (const char* name : {"endless", "a"}) addInput(name);
  options_.timeout = 2;
  EXPECT_EQ(run(), kSoftware);
  const std::vector<std::string> names = outputs();
  for (const std::string& name : names) EXPECT_NE(name.front(), '.') << name;
  EXPECT_THAT(names, testing::Contains("a.vtt"));
}

TEST_F(BatchTest, AWorkerGetsTheMemoryThatItMayHaveAndNoMore) {
  for (const char* name : {"greedy", "a"}) addInput(name);
  options_.memory = 64 << 20;
  EXPECT_EQ(run(), kNoInput) << messages();
  EXPECT_THAT(outputs(), testing::ElementsAre("a.vtt"));
}

TEST_F(BatchTest, ManyResultsWaitForASlowFile) {
  addInput("slow");
  for (int i = 0; i < 40; ++i) addInput(std::to_string(i));
  EXPECT_EQ(run(), 0);
  const auto lines = reportLines();
  ASSERT_EQ(lines.size(), 41u);
  EXPECT_THAT(lines[0], HasSubstr("slow.srt"));
  EXPECT_THAT(lines[40], HasSubstr("39.srt"));
}

TEST_F(BatchTest, AnInterruptionEndsTheProcessByItsSignal) {
  for (const char* name : {"a", "loop", "b", "deaf", "c"}) addInput(name);
  options_.jobs = 5;
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    fs::remove_all(*options_.outputFolder);
    const pid_t pid = start();
    for (const char* name : {"a.vtt", "b.vtt", "c.vtt"}) {
      while (!fs::exists(folder_ / "out" / name)) ::usleep(1000);
    }
    ::usleep(300'000);  // so that their results are there, too
    ::kill(pid, signal);
    int status = 0;
    ASSERT_EQ(::waitpid(pid, &status, 0), pid);
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), signal);
    EXPECT_THAT(outputs(), testing::ElementsAre("a.vtt", "b.vtt", "c.vtt"));
    EXPECT_EQ(reportLines().size(), 3u);
    std::stringstream said;
    said << std::ifstream(folder_ / "messages").rdbuf();
    EXPECT_EQ(said.str(), "mova: interrupted after 3 of 5 files; the same command with --resume goes on\n");
  }
}

TEST_F(BatchTest, WorkersDontOutliveTheirParent) {
  for (const char* name : {"a", "loop"}) addInput(name);
  int pipe[2];
  ASSERT_EQ(::pipe(pipe), 0);
  const pid_t pid = ::fork();
  if (pid == 0) {
    ::close(pipe[0]);
    convertBatch(options_, findFormat("WebVTT"), getDefaultSettings(), convertOrMisbehave);
    ::_exit(0);
  }
  ::close(pipe[1]);
  while (!fs::exists(folder_ / "out" / "a.vtt")) ::usleep(1000);
  ::kill(pid, SIGKILL);
  ::waitpid(pid, nullptr, 0);
  char byte;
  EXPECT_EQ(::read(pipe[0], &byte, 1), 0);  // at once: nobody holds the other end any more
  ::close(pipe[0]);
}

}  // namespace
}  // namespace mova::cli
