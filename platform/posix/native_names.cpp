#include "platform/posix/native_names.h"

#include <unistd.h>

#include <array>
#include <climits>
#include <cstddef>

namespace platform::posix {

std::string FolderOf(const std::string& path) {
  const auto slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

std::optional<std::string> FollowLinks(const std::string& path) {
  constexpr int kMostLinks = 40;
  std::string current = path;
  for (int links = 0; links < kMostLinks; ++links) {
    std::array<char, PATH_MAX> target{};
    const ssize_t size = ::readlink(current.c_str(), target.data(), target.size());
    if (size < 0) return current;
    const std::string next(target.data(), static_cast<std::size_t>(size));
    current = next.starts_with('/') ? next : FolderOf(current) + "/" + next;
  }
  return std::nullopt;
}

}  // namespace platform::posix
