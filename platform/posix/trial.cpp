#include "platform/posix/trial.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include "platform/posix/file_descriptor.h"

namespace platform::posix {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr char kYes = 'y';

[[noreturn]] void Answer(const std::function<bool()>& action, int answer) {
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  const rlimit no_dump{0, 0};
  ::setrlimit(RLIMIT_CORE, &no_dump);
  const int nowhere = ::open("/dev/null", O_RDWR | O_CLOEXEC);
  ::dup2(nowhere, STDOUT_FILENO);
  ::dup2(nowhere, STDERR_FILENO);
  const bool done = action() && ::write(answer, &kYes, 1) == 1;
  ::_exit(done ? 0 : 1);
}

// Whether the copy has answered before the deadline; the pipe's end shows that it ended without an answer.
bool ReadAnswer(int pipe, Clock::time_point deadline) {
  while (true) {
    const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::now());
    if (left <= milliseconds(0)) return false;
    pollfd ready{pipe, POLLIN, 0};
    if (::poll(&ready, 1, static_cast<int>(left.count())) <= 0) continue;
    char answer = 0;
    const ssize_t count = ::read(pipe, &answer, 1);
    if (count < 0 && errno == EINTR) continue;
    return count == 1 && answer == kYes;
  }
}

}  // namespace

bool SucceedsInCopy(const std::function<bool()>& action, milliseconds limit) {
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) return false;
  const FileDescriptor read_end(ends[0]);
  FileDescriptor write_end(ends[1]);
  const auto deadline = Clock::now() + limit;
  const pid_t copy = ::fork();
  if (copy < 0) return false;
  if (copy == 0) Answer(action, write_end.Get());
  write_end.Close();
  const bool answer = ReadAnswer(read_end.Get(), deadline);
  ::kill(copy, SIGKILL);
  while (::waitpid(copy, nullptr, 0) < 0 && errno == EINTR) {
  }
  return answer;
}

}  // namespace platform::posix
