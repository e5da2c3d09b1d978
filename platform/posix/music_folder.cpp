#include "platform/posix/music_folder.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/posix/whole_file.h"

namespace platform::posix {
namespace {

constexpr std::size_t kLargestUserDirs = std::size_t{64} * 1024;

/// The text between the quotes of a shell assignment; nothing without a closing quote.
std::optional<std::string> QuotedValue(std::string_view text) {
  if (!text.starts_with('"')) return std::nullopt;
  std::string value;
  for (std::size_t at = 1; at < text.size(); ++at) {
    if (text[at] == '"') return value;
    if (text[at] == '\\' && at + 1 < text.size()) ++at;
    value += text[at];
  }
  return std::nullopt;
}

/// The music folder that one line of user-dirs.dirs names; nothing when it names none.
std::optional<std::string> FolderOfLine(std::string_view line, const std::string& home) {
  constexpr std::string_view kName = "XDG_MUSIC_DIR=";
  constexpr std::string_view kHome = "$HOME";
  line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
  if (!line.starts_with(kName)) return std::nullopt;
  std::optional<std::string> value = QuotedValue(line.substr(kName.size()));
  if (!value) return std::nullopt;
  if (value->starts_with(kHome)) value->replace(0, kHome.size(), home);
  return value->starts_with('/') ? value : std::nullopt;
}

/// As for a shell that reads the file, the last assignment counts.
std::optional<std::string> FolderOfUserDirs(std::string_view bytes, const std::string& home) {
  std::optional<std::string> folder;
  while (!bytes.empty()) {
    const std::size_t end = std::min(bytes.find('\n'), bytes.size());
    if (auto named = FolderOfLine(bytes.substr(0, end), home)) folder = std::move(named);
    bytes.remove_prefix(std::min(end + 1, bytes.size()));
  }
  return folder;
}

bool IsAbsolute(const std::string& path) { return path.starts_with('/'); }

std::string Inside(const std::string& folder, const char* name) {
  return folder + (folder.ends_with('/') ? "" : "/") + name;
}

}  // namespace

std::string MusicFolder(const MusicVariables& variables) {
  if (IsAbsolute(variables.music)) return variables.music;
  const std::string home = IsAbsolute(variables.home) ? variables.home : "";
  std::string config = IsAbsolute(variables.config_home) ? variables.config_home : "";
  if (config.empty() && !home.empty()) config = Inside(home, ".config");
  if (!config.empty()) {
    const ReadResult user_dirs = ReadRegularFile(Inside(config, "user-dirs.dirs"), kLargestUserDirs);
    const auto folder = FolderOfUserDirs(user_dirs.file ? user_dirs.file->bytes : std::string(), home);
    if (folder) return *folder;
  }
  return home.empty() ? std::string() : Inside(home, "Music");
}

}  // namespace platform::posix
