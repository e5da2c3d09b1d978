#pragma once
// The private-profile operations, implemented by the program's own engine over any system's disk.
// Not for the format of a file (platform/ini/ini_document.h), nor for the disk (ports/profile_files.h).

#include <map>
#include <optional>
#include <span>
#include <string>

#include "platform/ini/ini_file.h"
#include "ports/native_paths.h"
#include "ports/private_profile.h"
#include "ports/profile_files.h"
#include "ports/text_conversion.h"

namespace platform::ini {

/// A file that begins with FF FE is UTF-16LE, one that begins with EF BB BF is UTF-8, any other and every new
/// one is code page 1252. Names and values end at a NUL. The ports must outlive the object.
class IniPrivateProfile final : public PrivateProfile {
 public:
  IniPrivateProfile(NativePaths& paths, ProfileFiles& disk, TextConversion& conversion);

  std::uint32_t GetPrivateProfileStringW(const Text& section, const Text& key, const Text& default_value,
                                         std::span<char16_t> buffer, const Text& path) override;
  bool WritePrivateProfileStringW(const Text& section, const std::optional<Text>& key,
                                  const std::optional<Text>& value, const Text& path) override;
  std::uint32_t GetPrivateProfileSectionNamesA(std::span<char> buffer, const Text& path) override;
  std::optional<ProfileSection> CopySection(const Text& section, const Text& path) override;
  bool InsertSection(const ProfileSection& section, const Text& path) override;
  void BeginWriteGroup() override;
  bool EndWriteGroup() override;
  void BeginReadGroup() override;
  void EndReadGroup() override;

 private:
  /// What an open group asked for last: it names the same file for each of its values.
  struct GroupFile {
    Text path;
    IniFile* file = nullptr;
    [[nodiscard]] bool Is(const Text& asked) const;
  };

  [[nodiscard]] IniFile* FileToRead(const Text& path);
  [[nodiscard]] IniFile* FileToWrite(const Text& path);
  [[nodiscard]] IniFile* FileOf(const std::string& native);
  bool Change(IniEdit edit, const Text& path);
  bool Collect(IniEdit edit, const Text& path);
  bool WriteCollected();
  [[nodiscard]] std::uint64_t OpenReadGroup() const;
  std::optional<Text> Value(const Text& section, const Text& key, const Text& path);
  std::string JoinedNames(const Text& path);

  NativePaths& paths_;
  ProfileFiles& disk_;
  TextConversion& conversion_;
  std::map<std::string, IniFile> files_;
  int open_groups_ = 0;
  bool group_refused_ = false;  ///< a change of the open group was refused
  int open_read_groups_ = 0;
  std::uint64_t last_read_group_ = IniFile::kNoGroup;
  GroupFile group_read_;
  GroupFile group_write_;
};

}  // namespace platform::ini
