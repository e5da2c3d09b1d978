#include "platform/posix/process.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <string_view>

#include "platform/posix/file_descriptor.h"

namespace platform::posix {
namespace {

constexpr int kFailed = 127;
constexpr int kFirstOtherFile = 3;

/// Everything the new process needs, prepared before fork(): between fork() and exec() of a program with
/// several threads, only calls that are safe in a signal handler may be made.
struct Prepared {
  const char* program;
  char* const* arguments;
  const char* folder;  ///< nullptr: the caller's
  int null_file;
  int status_pipe;
  int most_files;
};

/// All files but the standard ones close when the program is executed. The end of the status pipe, which is
/// among them, shows the caller that this has happened.
void MarkFilesForClosing(int most_files) {
  constexpr unsigned kCloseOnExec = 1U << 2U;  // CLOSE_RANGE_CLOEXEC of the system call
  if (::syscall(SYS_close_range, kFirstOtherFile, ~0U, kCloseOnExec) == 0) return;
  for (int file = kFirstOtherFile; file < most_files; ++file) ::fcntl(file, F_SETFD, FD_CLOEXEC);
}

void ResetSignals() {
  struct sigaction usual {};
  usual.sa_handler = SIG_DFL;
  for (int number = 1; number < NSIG; ++number) ::sigaction(number, &usual, nullptr);
  sigset_t none;
  ::sigemptyset(&none);
  ::sigprocmask(SIG_SETMASK, &none, nullptr);
}

[[noreturn]] void BecomeProgram(const Prepared& prepared) {
  const bool in_folder = prepared.folder == nullptr || ::chdir(prepared.folder) == 0;
  bool ready = in_folder;
  for (int standard = 0; standard < kFirstOtherFile; ++standard) {
    ready = ready && ::dup2(prepared.null_file, standard) == standard;
  }
  if (ready) {
    MarkFilesForClosing(prepared.most_files);
    ResetSignals();
    ::execv(prepared.program, prepared.arguments);
  }
  const char failed = 1;
  [[maybe_unused]] const ssize_t reported = ::write(prepared.status_pipe, &failed, 1);
  ::_exit(kFailed);
}

/// The first child begins a session and goes at once, so that the system adopts the second one.
bool ForkTwice(const Prepared& prepared) {
  const pid_t first = ::fork();
  if (first < 0) return false;
  if (first == 0) {
    ::setsid();
    const pid_t second = ::fork();
    if (second == 0) BecomeProgram(prepared);
    ::_exit(second < 0 ? kFailed : 0);
  }
  int status = 0;
  while (::waitpid(first, &status, 0) < 0) {
    // Where children are collected automatically there is no status; the pipe then has the last word.
    if (errno != EINTR) return true;
  }
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

/// A copy that is none of the standard files, which the child replaces.
FileDescriptor AboveStandardFiles(int file) {
  return FileDescriptor(::fcntl(file, F_DUPFD_CLOEXEC, kFirstOtherFile));
}

/// True when the pipe ended without a byte.
bool EndedSilently(int pipe) {
  char failed = 0;
  while (true) {
    const ssize_t count = ::read(pipe, &failed, 1);
    if (count < 0 && errno == EINTR) continue;
    return count == 0;
  }
}

int MostFiles() {
  constexpr long kEnough = 65536;
  const long most = ::sysconf(_SC_OPEN_MAX);
  return static_cast<int>(most > 0 && most < kEnough ? most : kEnough);
}

}  // namespace

bool StartProcess(const Launch& launch) {
  std::vector<std::string> words{launch.program};
  words.insert(words.end(), launch.arguments.begin(), launch.arguments.end());
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);

  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) return false;
  const FileDescriptor read_end(ends[0]);
  FileDescriptor opened_write_end(ends[1]);
  FileDescriptor write_end = AboveStandardFiles(opened_write_end.Get());
  opened_write_end.Close();
  const FileDescriptor opened_null(::open("/dev/null", O_RDWR | O_CLOEXEC));
  const FileDescriptor null_file = AboveStandardFiles(opened_null.Get());
  if (!write_end.IsOpen() || !null_file.IsOpen()) return false;

  const Prepared prepared{
      launch.program.c_str(), arguments.data(), launch.folder.empty() ? nullptr : launch.folder.c_str(),
      null_file.Get(),        write_end.Get(),  MostFiles()};
  if (!ForkTwice(prepared)) return false;
  write_end.Close();
  return EndedSilently(read_end.Get());
}

bool IsExecutableFile(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return false;
  return ::faccessat(AT_FDCWD, path.c_str(), X_OK, AT_EACCESS) == 0;
}

std::optional<std::string> FindInPath(const std::string& name) {
  const char* const path = std::getenv("PATH");
  std::string_view rest = path == nullptr ? "/usr/local/bin:/usr/bin:/bin" : path;
  while (!rest.empty()) {
    const std::string folder(rest.substr(0, rest.find(':')));
    rest.remove_prefix(std::min(rest.size(), folder.size() + 1));
    const std::string candidate = folder + "/" + name;
    // With a relative folder, what is started would depend on the program's working folder.
    if (folder.starts_with('/') && IsExecutableFile(candidate)) return candidate;
  }
  return std::nullopt;
}

}  // namespace platform::posix
