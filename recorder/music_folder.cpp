#include "recorder/music_folder.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "app/text/text_utilities.h"

namespace recorder {

using platform::Text;

namespace {

constexpr std::size_t kLargestUserDirs = std::size_t{64} * 1024;

// The text between the quotes of a shell assignment; nothing without a closing quote.
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

// The music folder that one line of user-dirs.dirs names; nothing when it names none.
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

// As for a shell that reads the file, the last assignment counts.
std::optional<std::string> FolderOfUserDirs(std::string_view bytes, const std::string& home) {
  std::optional<std::string> folder;
  while (!bytes.empty()) {
    const std::size_t end = std::min(bytes.find('\n'), bytes.size());
    if (auto named = FolderOfLine(bytes.substr(0, end), home)) folder = std::move(named);
    bytes.remove_prefix(std::min(end + 1, bytes.size()));
  }
  return folder;
}

Text UsersMusicFolder(platform::Environment& environment, platform::Files& files,
                      platform::NativePaths& paths) {
  const auto absolute = [&](const Text& name) {
    const Text value = environment.GetEnvironmentVariableW(name);
    return paths.ToNative(value).starts_with('/') ? value : Text();
  };
  if (Text music = absolute(u"XDG_MUSIC_DIR"); !music.empty()) return music;
  const Text home = absolute(u"HOME");
  Text config = absolute(u"XDG_CONFIG_HOME");
  if (config.empty() && !home.empty()) config = app::AddBackslash(home) + u".config";
  if (!config.empty()) {
    const auto bytes = files.ReadWholeFile(app::AddBackslash(config) + u"user-dirs.dirs", kLargestUserDirs);
    const auto folder = FolderOfUserDirs(bytes.value_or(std::string()), paths.ToNative(home));
    if (folder) return paths.FromNative(*folder);
  }
  return home.empty() ? environment.ProgramFolder() : app::AddBackslash(home) + u"Music";
}

}  // namespace

Text MusicFolder(platform::Environment& environment, platform::Files& files, platform::NativePaths& paths) {
  return app::AddBackslash(UsersMusicFolder(environment, files, paths)) + u"Funkhausplayer";
}

bool MakeFolder(platform::Files& files, const Text& folder) {
  if (files.PathFileExistsW(folder)) return true;
  // A level that exists already cannot be made, which is as good; the last look tells.
  for (std::size_t end = folder.find(u'\\', 1); end != Text::npos; end = folder.find(u'\\', end + 1)) {
    files.CreateDirectoryW(folder.substr(0, end));
  }
  files.CreateDirectoryW(folder);
  return files.PathFileExistsW(folder);
}

Text FolderAddress(platform::NativePaths& paths, const Text& folder) {
  constexpr std::u16string_view kDigits = u"0123456789ABCDEF";
  constexpr std::string_view kPlain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
  Text address = u"file://";
  for (const char byte : paths.ToNative(folder)) {
    if (kPlain.find(byte) != std::string_view::npos) {
      address += static_cast<char16_t>(byte);
      continue;
    }
    const auto value = static_cast<unsigned char>(byte);
    address += {u'%', kDigits[value >> 4], kDigits[value & 0xF]};
  }
  return address;
}

}  // namespace recorder
