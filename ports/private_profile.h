#pragma once
// Port: INI files, read and written key by key with the meaning of the private-profile operations.
// Not for deciding which file is meant; app/settings/ini_procedures.h determines the paths.

#include <cstdint>
#include <optional>
#include <span>

#include "ports/text.h"

namespace platform {

/// A section as it is written in its file, so that it can be put back after it was deleted.
struct ProfileSection {
  Text lines;                ///< the header and every line up to the next header, with their line ends
  std::optional<Text> next;  ///< the name of the section after it; nothing when it is the last one
  friend bool operator==(const ProfileSection&, const ProfileSection&) = default;
};

/// Section and key names match without regard to case. Paths use "\" or the native separator.
/// Nothing here throws; a missing file reads as an empty one.
/// Public reference: the Win32 documentation of the three operations named below.
class PrivateProfile {
 public:
  virtual ~PrivateProfile() = default;

  /// Copies the value of `key` in `section` (or `default_value`, without its trailing blanks, when the
  /// file, the section or the key is missing) into `buffer`, cut to its size less one and followed by
  /// NUL. Returns the number of 16-bit units copied, the NUL not counted.
  virtual std::uint32_t GetPrivateProfileStringW(const Text& section, const Text& key,
                                                 const Text& default_value, std::span<char16_t> buffer,
                                                 const Text& path) = 0;

  /// Sets `key` to `value`. No value deletes the key; no key deletes the whole section. True when the file
  /// then has the new state (deleting what is absent included); on false the file is unchanged.
  virtual bool WritePrivateProfileStringW(const Text& section, const std::optional<Text>& key,
                                          const std::optional<Text>& value, const Text& path) = 0;

  /// Copies all section names in file order into `buffer` in code page 1252, each followed by NUL, one
  /// more NUL at the end. Returns the number of bytes copied without that last NUL; when the list was
  /// cut because the buffer is too small, that is the buffer's size less two.
  virtual std::uint32_t GetPrivateProfileSectionNamesA(std::span<char> buffer, const Text& path) = 0;

  /// The first section of that name with everything in it, foreign keys and comments too; nothing when the
  /// file has none.
  virtual std::optional<ProfileSection> CopySection(const Text& section, const Text& path) = 0;

  /// Puts a copied section back before the first section named `next`, or at the end of the file when there
  /// is none; an equal name in the file does not matter. True when the file then has it; on false (also for
  /// lines that do not begin with a header) the file is unchanged.
  virtual bool InsertSection(const ProfileSection& section, const Text& path) = 0;

  /// From now on writes are collected and reads see them; nothing reaches the disk until the matching
  /// EndWriteGroup, which replaces each touched file once. Groups nest; only the outermost end writes. A
  /// system whose operations write at once may leave both empty.
  virtual void BeginWriteGroup() = 0;

  /// Ends the group. False when one of its changes was refused (nothing of the group is written then), or
  /// when a touched file could not be replaced; that file is unchanged.
  virtual bool EndWriteGroup() = 0;

  /// Until the matching EndReadGroup every read may show a file as the first one found it, whatever other
  /// programs write meanwhile. Groups nest. Both may be empty.
  virtual void BeginReadGroup() = 0;
  virtual void EndReadGroup() = 0;
};

/// Keeps a write group open for a scope: one user action, one replacement of the file.
class WriteGroup {
 public:
  explicit WriteGroup(PrivateProfile& profile) : profile_(profile) { profile_.BeginWriteGroup(); }
  ~WriteGroup() {
    if (!ended_) profile_.EndWriteGroup();
  }
  WriteGroup(const WriteGroup&) = delete;
  WriteGroup& operator=(const WriteGroup&) = delete;

  /// Writes now; to be called before anything about the change is reported to the user.
  bool End() {
    ended_ = true;
    return profile_.EndWriteGroup();
  }

 private:
  PrivateProfile& profile_;
  bool ended_ = false;
};

/// Keeps a read group open for a scope: many reads, one look at the file.
class ReadGroup {
 public:
  explicit ReadGroup(PrivateProfile& profile) : profile_(profile) { profile_.BeginReadGroup(); }
  ~ReadGroup() { profile_.EndReadGroup(); }
  ReadGroup(const ReadGroup&) = delete;
  ReadGroup& operator=(const ReadGroup&) = delete;

 private:
  PrivateProfile& profile_;
};

}  // namespace platform
