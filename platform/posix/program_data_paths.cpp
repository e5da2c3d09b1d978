#include "platform/posix/program_data_paths.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

#include "platform/posix/native_names.h"
#include "platform/posix/native_paths.h"

namespace platform::posix {
namespace {

/// A link that leads nowhere cannot be, and what ends in "/" must be a folder.
bool CanBeRead(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0;
}

/// The names of the levels of a path, each but the last with its "/", the last as it is written.
std::vector<std::string> LevelsOf(std::string_view path) {
  std::vector<std::string> levels;
  while (!path.empty()) {
    const std::size_t size = std::min(path.find('/'), path.size() - 1) + 1;
    if (path.front() != '/') levels.emplace_back(path.substr(0, size));
    path.remove_prefix(size);
  }
  return levels;
}

std::string_view NameOf(std::string_view level) { return level.substr(0, level.find('/')); }

}  // namespace

ProgramDataPaths::ProgramDataPaths(NativePaths& inner, TextConversion& conversion, const DataRoots& roots,
                                   std::vector<Text> data_folders)
    : inner_(inner),
      conversion_(conversion),
      program_folder_(inner.ToNative(roots.program + (roots.program.ends_with(u'\\') ? u"" : u"\\"))),
      data_folders_(std::move(data_folders)) {
  if (!roots.users.empty()) roots_.push_back(roots.users + (roots.users.ends_with('/') ? "" : "/"));
  roots_.push_back(program_folder_);
}

std::string ProgramDataPaths::ToNativeForReading(const Text& path) {
  std::string native = inner_.ToNative(path);
  const std::vector<std::string> levels = DataLevels(native);
  if (levels.empty()) return native;
  for (const std::string& root : roots_) {
    if (std::string found = FoundIn(root, levels); !found.empty()) return found;
  }
  return native;
}

std::vector<std::string> ProgramDataPaths::ToNativeForListing(const Text& folder) {
  const std::string native = inner_.ToNative(folder);
  const std::vector<std::string> levels = DataLevels(native);
  std::vector<std::string> folders;
  for (const std::string& root : levels.empty() ? std::vector<std::string>() : roots_) {
    if (std::string found = FoundIn(root, levels); !found.empty()) folders.push_back(std::move(found));
  }
  return folders.empty() ? std::vector{native} : folders;
}

std::vector<std::string> ProgramDataPaths::DataLevels(const std::string& native) {
  if (!native.starts_with(program_folder_) || !IsUsablePath(native)) return {};
  std::vector<std::string> levels = LevelsOf(std::string_view(native).substr(program_folder_.size()));
  return LeadIntoData(levels) ? levels : std::vector<std::string>();
}

std::string ProgramDataPaths::FoundIn(const std::string& root, const std::vector<std::string>& levels) {
  std::string found = root;
  for (const std::string& level : levels) found += level;
  if (CanBeRead(found)) return found;
  found = root;
  for (const std::string& level : levels) {
    const std::string spelling = SpellingThatExists(found, level);
    if (spelling.empty()) return {};
    found += spelling;
  }
  return found;
}

bool ProgramDataPaths::LeadIntoData(const std::vector<std::string>& levels) {
  const auto climbs = [](const std::string& level) { return NameOf(level) == ".."; };
  if (levels.empty() || std::any_of(levels.begin(), levels.end(), climbs)) return false;
  const Text first = inner_.FromNative(std::string(NameOf(levels.front())));
  return std::any_of(data_folders_.begin(), data_folders_.end(),
                     [&](const Text& data) { return DifferByCaseAtMost(first, data); });
}

std::string ProgramDataPaths::SpellingThatExists(const std::string& folder, const std::string& level) {
  if (CanBeRead(folder + level)) return level;
  const std::string_view name = NameOf(level);
  const std::string ending = level.substr(name.size());
  const Text wanted = inner_.FromNative(std::string(name));
  for (const std::string& existing : NamesIn(folder)) {
    const bool is_wanted = DifferByCaseAtMost(inner_.FromNative(existing), wanted);
    if (is_wanted && CanBeRead(folder + existing + ending)) return existing + ending;
  }
  return {};
}

bool ProgramDataPaths::DifferByCaseAtMost(const Text& one, const Text& other) {
  return one.size() == other.size() && conversion_.CharLowerW(one) == conversion_.CharLowerW(other);
}

}  // namespace platform::posix
