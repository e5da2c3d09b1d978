#include "platform/posix/users_guide.h"

#include <unistd.h>

#include <array>
#include <filesystem>
#include <system_error>

namespace platform::posix {
namespace {

/// Seen from the program's folder: as cmake/install.cmake installs both, and as a build leaves them.
constexpr std::array kPlaces = {"../../share/doc/funkhausplayer/handbuch.md", "../../../docs/handbuch.md"};

}  // namespace

std::string UsersGuide(const std::string& program_folder) {
  namespace fs = std::filesystem;
  if (program_folder.empty()) return {};
  for (const char* place : kPlaces) {
    const fs::path guide = (fs::path(program_folder) / place).lexically_normal();
    std::error_code ignored;
    if (fs::is_regular_file(guide, ignored) && ::access(guide.c_str(), R_OK) == 0) return guide.string();
  }
  return {};
}

}  // namespace platform::posix
