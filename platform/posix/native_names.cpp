#include "platform/posix/native_names.h"

#include <dirent.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstddef>
#include <memory>

namespace platform::posix {
namespace {

struct FolderCloser {
  void operator()(DIR* folder) const { ::closedir(folder); }
};

}  // namespace

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

std::vector<std::string> NamesIn(const std::string& folder) {
  std::vector<std::string> names;
  const std::unique_ptr<DIR, FolderCloser> opened(::opendir(folder.c_str()));
  if (!opened) return names;
  while (const dirent* const entry = ::readdir(opened.get())) {
    const std::string name = entry->d_name;
    if (name != "." && name != "..") names.push_back(name);
  }
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace platform::posix
