#pragma once
// Child processes of a test: started, watched and ended by their process id.
// Not for programs that outlive the test.

#include <sys/types.h>

#include <chrono>
#include <map>
#include <string>
#include <vector>

namespace test_support {

/// Runs until Stop or destruction (SIGTERM, then SIGKILL). Its output is dropped, or readable from Output().
class ChildProcess {
 public:
  enum class Output { kDropped, kPiped };
  using Arguments = std::vector<std::string>;
  using Environment = std::map<std::string, std::string>;  ///< added to the test's own

  ChildProcess() = default;
  /// Throws std::runtime_error, naming the program, when it is not installed.
  explicit ChildProcess(const Arguments& arguments, const Environment& environment = {},
                        Output output = Output::kDropped);
  ~ChildProcess();
  ChildProcess(ChildProcess&& other) noexcept;
  ChildProcess& operator=(ChildProcess&& other) noexcept;

  [[nodiscard]] bool Running();
  [[nodiscard]] pid_t Pid() const { return pid_; }
  /// The read end of the child's standard output, -1 when it is dropped.
  [[nodiscard]] int OutputDescriptor() const { return output_; }
  void Signal(int signal) const;
  /// Waits for the child's own end; its exit code, -1 when a signal ended it.
  int WaitForExit();
  /// Ends the child; returns once it is gone.
  void Stop();
  /// Ends the child without letting it clean up.
  void Kill();

 private:
  void Reap(std::chrono::milliseconds limit);
  pid_t pid_ = -1;
  int output_ = -1;
};

struct RunResult {
  int exit_code = -1;
  std::string output;
};

/// Runs a program to its end and returns its standard output; throws when it is missing or takes longer
/// than `limit`.
RunResult RunProgram(const ChildProcess::Arguments& arguments,
                     const ChildProcess::Environment& environment = {},
                     std::chrono::milliseconds limit = std::chrono::seconds(20));

/// A TCP port of 127.0.0.1 that is free now.
int FreePort();

/// Asks `condition` every few milliseconds until it holds; false when `limit` passes first.
template <typename Condition>
bool WaitUntil(Condition condition, std::chrono::milliseconds limit);

/// Suspends the thread for a moment between two looks at a condition.
void LookAgainSoon();

template <typename Condition>
bool WaitUntil(Condition condition, std::chrono::milliseconds limit) {
  const auto deadline = std::chrono::steady_clock::now() + limit;
  while (!condition()) {
    if (std::chrono::steady_clock::now() >= deadline) return false;
    LookAgainSoon();
  }
  return true;
}

}  // namespace test_support
