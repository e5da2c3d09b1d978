#include "platform/ini/private_profile.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace platform::ini {
namespace {

/// The program uses three files; more than this many are not kept in memory at once.
constexpr std::size_t kMostFiles = 8;

/// What is handed back when no value was found: up to a NUL, without the blanks at its end.
Text DefaultText(const Text& default_value) {
  Text text = default_value.substr(0, default_value.find(u'\0'));
  text.erase(text.find_last_not_of(u' ') + 1);
  return text;
}

}  // namespace

IniPrivateProfile::IniPrivateProfile(NativePaths& paths, ProfileFiles& disk, TextConversion& conversion)
    : paths_(paths), disk_(disk), conversion_(conversion) {}

bool IniPrivateProfile::GroupFile::Is(const Text& asked) const {
  return file != nullptr && std::equal(path.begin(), path.end(), asked.begin(), asked.end());
}

IniFile* IniPrivateProfile::FileToRead(const Text& path) {
  if (open_read_groups_ == 0) return FileOf(paths_.ToNativeForReading(path));
  if (!group_read_.Is(path)) {
    IniFile* const file = FileOf(paths_.ToNativeForReading(path));
    group_read_ = {path, file};
  }
  return group_read_.file;
}

IniFile* IniPrivateProfile::FileToWrite(const Text& path) {
  if (open_groups_ == 0) return FileOf(paths_.ToNative(path));
  if (!group_write_.Is(path)) {
    IniFile* const file = FileOf(paths_.ToNative(path));
    group_write_ = {path, file};
  }
  return group_write_.file;
}

IniFile* IniPrivateProfile::FileOf(const std::string& native) {
  if (native.empty() || native.find('\0') != std::string::npos) return nullptr;
  if (files_.size() >= kMostFiles && !files_.contains(native)) {
    group_read_ = {};
    group_write_ = {};
    std::erase_if(files_, [](const auto& entry) { return !entry.second.HasCollected(); });
  }
  return &files_.try_emplace(native, disk_, conversion_, native).first->second;
}

std::optional<Text> IniPrivateProfile::Value(const Text& section, const Text& key, const Text& path) {
  try {
    IniFile* const file = FileToRead(path);
    return file == nullptr ? std::nullopt : file->Read(OpenReadGroup()).Value(section, key);
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

std::uint32_t IniPrivateProfile::GetPrivateProfileStringW(const Text& section, const Text& key,
                                                          const Text& default_value,
                                                          std::span<char16_t> buffer, const Text& path) {
  if (buffer.empty()) return 0;
  std::optional<Text> value = Value(section, key, path);
  if (!value) value = DefaultText(default_value);
  const std::size_t count = std::min(value->size(), buffer.size() - 1);
  std::copy_n(value->begin(), count, buffer.begin());
  buffer[count] = u'\0';
  return static_cast<std::uint32_t>(count);
}

bool IniPrivateProfile::WritePrivateProfileStringW(const Text& section, const std::optional<Text>& key,
                                                   const std::optional<Text>& value, const Text& path) {
  return Change({section, key, value}, path);
}

bool IniPrivateProfile::InsertSection(const ProfileSection& section, const Text& path) {
  return Change({{}, std::nullopt, std::nullopt, section}, path);
}

std::optional<ProfileSection> IniPrivateProfile::CopySection(const Text& section, const Text& path) {
  try {
    IniFile* const file = FileToWrite(path);
    return file == nullptr ? std::nullopt : file->Read(OpenReadGroup()).CopySection(section);
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

bool IniPrivateProfile::Change(IniEdit edit, const Text& path) {
  const bool collected = Collect(std::move(edit), path);
  if (!collected && open_groups_ > 0) group_refused_ = true;
  return collected;
}

/// Outside a group the change is written at once.
bool IniPrivateProfile::Collect(IniEdit edit, const Text& path) {
  try {
    IniFile* const file = FileToWrite(path);
    if (file == nullptr || !file->Collect(std::move(edit))) return false;
    return open_groups_ > 0 || file->Write();
  } catch (const std::exception&) {
    return false;
  }
}

/// Every name followed by NUL. A NUL inside a name would pass for the end of one.
std::string IniPrivateProfile::JoinedNames(const Text& path) {
  try {
    std::string list;
    IniFile* const file = FileToRead(path);
    if (file == nullptr) return list;
    for (const Text& name : file->Read(OpenReadGroup()).SectionNames()) {
      if (name.empty()) continue;
      std::string bytes = conversion_.WideCharToMultiByte(CodePage::kAnsi, name);
      std::replace(bytes.begin(), bytes.end(), '\0', '?');
      list += bytes;
      list.push_back('\0');
    }
    return list;
  } catch (const std::exception&) {
    return {};
  }
}

std::uint32_t IniPrivateProfile::GetPrivateProfileSectionNamesA(std::span<char> buffer, const Text& path) {
  const std::string list = JoinedNames(path);
  const bool is_cut = list.size() >= buffer.size();
  const std::size_t room = buffer.size() < 2 ? 0 : buffer.size() - 2;
  const std::size_t count = is_cut ? room : list.size();
  std::copy_n(list.begin(), count, buffer.begin());
  // The last name's own NUL is missing when the list was cut, and when there is no name.
  const std::size_t nuls = is_cut || list.empty() ? 2 : 1;
  const auto rest = buffer.subspan(count);
  std::fill_n(rest.begin(), std::min(nuls, rest.size()), '\0');
  return static_cast<std::uint32_t>(count);
}

void IniPrivateProfile::BeginWriteGroup() { ++open_groups_; }

bool IniPrivateProfile::EndWriteGroup() {
  if (open_groups_ == 0) return true;
  --open_groups_;
  if (open_groups_ > 0) return true;
  group_write_ = {};
  if (!std::exchange(group_refused_, false)) return WriteCollected();
  for (auto& [path, file] : files_) file.Abandon();
  return false;
}

void IniPrivateProfile::BeginReadGroup() {
  if (open_read_groups_++ == 0) ++last_read_group_;
}

void IniPrivateProfile::EndReadGroup() {
  if (open_read_groups_ > 0 && --open_read_groups_ == 0) group_read_ = {};
}

std::uint64_t IniPrivateProfile::OpenReadGroup() const {
  return open_read_groups_ == 0 ? IniFile::kNoGroup : last_read_group_;
}

bool IniPrivateProfile::WriteCollected() {
  bool all_written = true;
  for (auto& [path, file] : files_) {
    try {
      all_written = file.Write() && all_written;
    } catch (const std::exception&) {
      all_written = false;
    }
  }
  return all_written;
}

}  // namespace platform::ini
