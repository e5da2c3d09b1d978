#include "tests/support/child_process.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <stdexcept>
#include <thread>
#include <utility>

namespace test_support {
namespace {

using std::chrono::milliseconds;

std::vector<char*> Pointers(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

std::vector<std::string> MergedEnvironment(const ChildProcess::Environment& added) {
  std::vector<std::string> merged;
  for (char** entry = environ; *entry != nullptr; ++entry) {
    const std::string text = *entry;
    if (!added.contains(text.substr(0, text.find('=')))) merged.push_back(text);
  }
  for (const auto& [name, value] : added) merged.push_back(name + "=" + value);
  return merged;
}

/// Everything between fork and exec: only calls that are safe there.
[[noreturn]] void BecomeChild(char** arguments, char** environment, int output, int report) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  const int nowhere = open("/dev/null", O_RDWR);
  dup2(nowhere, STDIN_FILENO);
  dup2(output >= 0 ? output : nowhere, STDOUT_FILENO);
  dup2(nowhere, STDERR_FILENO);
  execvpe(arguments[0], arguments, environment);
  const char failed = 1;
  const auto written = write(report, &failed, 1);
  _exit(written == 1 ? 127 : 126);
}

std::pair<int, int> MakePipe() {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  return {ends[0], ends[1]};
}

}  // namespace

ChildProcess::ChildProcess(const Arguments& arguments, const Environment& environment, Output output) {
  Arguments texts = arguments;
  std::vector<std::string> variables = MergedEnvironment(environment);
  auto argument_pointers = Pointers(texts);
  auto variable_pointers = Pointers(variables);
  const auto [report_read, report_write] = MakePipe();
  std::pair<int, int> out{-1, -1};
  if (output == Output::kPiped) out = MakePipe();
  pid_ = fork();
  if (pid_ == 0) {
    BecomeChild(argument_pointers.data(), variable_pointers.data(), out.second, report_write);
  }
  close(report_write);
  if (out.second >= 0) close(out.second);
  output_ = out.first;
  char failed = 0;
  const bool missing = read(report_read, &failed, 1) == 1;
  close(report_read);
  if (!missing) return;
  Reap(milliseconds(1000));
  throw std::runtime_error("this test needs the program \"" + arguments.front() +
                           "\", which is not installed");
}

ChildProcess::~ChildProcess() { Stop(); }

ChildProcess::ChildProcess(ChildProcess&& other) noexcept
    : pid_(std::exchange(other.pid_, -1)), output_(std::exchange(other.output_, -1)) {}

ChildProcess& ChildProcess::operator=(ChildProcess&& other) noexcept {
  if (this == &other) return *this;
  Stop();
  pid_ = std::exchange(other.pid_, -1);
  output_ = std::exchange(other.output_, -1);
  return *this;
}

bool ChildProcess::Running() {
  if (pid_ > 0 && waitpid(pid_, nullptr, WNOHANG) != 0) pid_ = -1;
  return pid_ > 0;
}

void ChildProcess::Signal(int signal) const {
  if (pid_ > 0) kill(pid_, signal);
}

int ChildProcess::WaitForExit() {
  int status = 0;
  const bool waited = pid_ > 0 && waitpid(pid_, &status, 0) == pid_;
  pid_ = -1;
  return waited && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void ChildProcess::Reap(milliseconds limit) {
  WaitUntil([this] { return !Running(); }, limit);
}

void ChildProcess::Stop() {
  if (output_ >= 0) close(std::exchange(output_, -1));
  if (!Running()) return;
  Signal(SIGTERM);
  Reap(milliseconds(2000));
  Kill();
}

void ChildProcess::Kill() {
  if (!Running()) return;
  Signal(SIGKILL);
  waitpid(pid_, nullptr, 0);
  pid_ = -1;
}

RunResult RunProgram(const ChildProcess::Arguments& arguments, const ChildProcess::Environment& environment,
                     milliseconds limit) {
  ChildProcess child(arguments, environment, ChildProcess::Output::kPiped);
  const auto deadline = std::chrono::steady_clock::now() + limit;
  RunResult result;
  char block[4096];
  while (true) {
    const auto left =
        std::chrono::duration_cast<milliseconds>(deadline - std::chrono::steady_clock::now()).count();
    pollfd ready{child.OutputDescriptor(), POLLIN, 0};
    if (left <= 0 || poll(&ready, 1, static_cast<int>(left)) <= 0) {
      throw std::runtime_error(arguments.front() + " took too long");
    }
    const ssize_t size = read(child.OutputDescriptor(), block, sizeof(block));
    if (size <= 0) break;
    result.output.append(block, static_cast<std::size_t>(size));
  }
  result.exit_code = child.WaitForExit();
  return result;
}

int FreePort() {
  const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof(address);
  const bool bound = bind(listener, reinterpret_cast<sockaddr*>(&address), size) == 0 &&
                     getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size) == 0;
  close(listener);
  if (!bound) throw std::runtime_error("no free port");
  return ntohs(address.sin_port);
}

void LookAgainSoon() { std::this_thread::sleep_for(milliseconds(5)); }

}  // namespace test_support
