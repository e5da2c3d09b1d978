#include "platform/posix/environment.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cinttypes>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string_view>

#include "platform/posix/music_folder.h"
#include "platform/posix/native_names.h"
#include "platform/posix/native_paths.h"

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

HomeVariables Variables(const char* own) {
  const std::string home = Variable("HOME");
  return {Variable(own), home, home.empty() ? AccountHome() : home};
}

std::string FolderOfKind(const HomeVariables& variables, const char* below_home) {
  if (variables.own.starts_with('/')) return variables.own;
  const std::string home = variables.home.empty() ? variables.account_home : variables.home;
  return home + (home.ends_with('/') ? "" : "/") + below_home;
}

std::string ProgramsFolderOfKind(const HomeVariables& variables, const char* below_home) {
  const std::string folder = FolderOfKind(variables, below_home);
  return folder + (folder.ends_with('/') ? "" : "/") + "funkhausplayer";
}

/// The path with the links and detours of its folder resolved; as it is when there is no such folder.
std::string Resolved(const std::string& path) {
  struct Freer {
    void operator()(char* text) const { std::free(text); }
  };
  const std::unique_ptr<char, Freer> folder(::realpath(FolderOf(path).c_str(), nullptr));
  if (!folder) return path;
  const auto name = path.rfind('/');
  return std::string(folder.get()) + "/" + path.substr(name == std::string::npos ? 0 : name + 1);
}

/// A number that stays the same from run to run and from build to build.
/// Public reference: the FNV-1a hash function.
std::uint64_t NumberOf(std::string_view bytes) {
  std::uint64_t number = 0xcbf29ce484222325U;
  for (const char byte : bytes) number = (number ^ static_cast<unsigned char>(byte)) * 0x100000001b3U;
  return number;
}

}  // namespace

std::string ConfigurationFolder(const HomeVariables& variables) { return FolderOfKind(variables, ".config"); }

std::string StateFolder(const HomeVariables& variables) {
  return ProgramsFolderOfKind(variables, ".local/state");
}

std::string DataFolder(const HomeVariables& variables) {
  return ProgramsFolderOfKind(variables, ".local/share");
}

std::string UsersDataFolder() { return DataFolder(Variables("XDG_DATA_HOME")); }

PosixEnvironment::PosixEnvironment(NativePaths& paths) : paths_(paths) {}

Text PosixEnvironment::GetEnvironmentVariableW(const Text& name) {
  const std::string native_name = paths_.ToNative(name);
  if (!IsUsablePath(native_name)) return {};
  std::string value = Variable(native_name.c_str());
  if (value.empty() && native_name == "APPDATA") {
    value = ConfigurationFolder(Variables("XDG_CONFIG_HOME"));
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

Text PosixEnvironment::MusicFolder() {
  const std::string folder =
      posix::MusicFolder({Variable("XDG_MUSIC_DIR"), Variable("XDG_CONFIG_HOME"), Variable("HOME")});
  return folder.empty() ? ProgramFolder() : paths_.FromNative(folder);
}

Text PosixEnvironment::StateFile(const Text& path, const Text& extension) {
  const std::string folder = StateFolder(Variables("XDG_STATE_HOME"));
  MakeFolders(folder);
  std::array<char, 24> number{};
  std::snprintf(number.data(), number.size(), "/%016" PRIx64, NumberOf(Resolved(paths_.ToNative(path))));
  return paths_.FromNative(folder + number.data()) + extension;
}

std::uint32_t PosixEnvironment::GetCurrentProcessId() { return static_cast<std::uint32_t>(::getpid()); }

}  // namespace platform::posix
