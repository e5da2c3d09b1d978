#include "platform/posix/environment.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <cstdlib>

#include "platform/posix/native_paths.h"
#include "platform/posix/whole_file.h"

namespace platform::posix {
namespace {

constexpr mode_t kPrivateFolder = 0700;

std::string Variable(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? std::string() : value;
}

std::string AccountHome() {
  std::array<char, 16384> buffer{};
  passwd entry{};
  passwd* found = nullptr;
  const int error = ::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found);
  return error == 0 && found != nullptr && entry.pw_dir != nullptr ? entry.pw_dir : std::string();
}

/// Failures show when the folder is used.
void MakeFolders(const std::string& folder) {
  for (auto end = folder.find('/', 1); end != std::string::npos; end = folder.find('/', end + 1)) {
    ::mkdir(folder.substr(0, end).c_str(), kPrivateFolder);
  }
  ::mkdir(folder.c_str(), kPrivateFolder);
}

}  // namespace

std::string ConfigurationFolder(const HomeVariables& variables) {
  if (variables.xdg_config_home.starts_with('/')) return variables.xdg_config_home;
  const std::string home = variables.home.empty() ? variables.account_home : variables.home;
  return home + (home.ends_with('/') ? ".config" : "/.config");
}

PosixEnvironment::PosixEnvironment(NativePaths& paths) : paths_(paths) {}

Text PosixEnvironment::GetEnvironmentVariableW(const Text& name) {
  const std::string native_name = paths_.ToNative(name);
  if (!IsUsablePath(native_name)) return {};
  std::string value = Variable(native_name.c_str());
  if (value.empty() && native_name == "APPDATA") {
    const std::string home = Variable("HOME");
    value = ConfigurationFolder({Variable("XDG_CONFIG_HOME"), home, home.empty() ? AccountHome() : home});
    MakeFolders(value);
  }
  return paths_.FromNative(value);
}

Text PosixEnvironment::ProgramFolder() {
  std::array<char, PATH_MAX> program{};
  const ssize_t size = ::readlink("/proc/self/exe", program.data(), program.size());
  if (size <= 0) return {};
  return paths_.FromNative(FolderOf(std::string(program.data(), static_cast<std::size_t>(size))));
}

std::uint32_t PosixEnvironment::GetCurrentProcessId() { return static_cast<std::uint32_t>(::getpid()); }

}  // namespace platform::posix
