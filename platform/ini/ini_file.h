#pragma once
// One INI file on the disk: parsed once, read again when it changed, replaced in one step.
// Not for the rules of the format (platform/ini/ini_document.h), nor for the disk itself
// (ports/profile_files.h).

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/ini/ini_document.h"
#include "ports/profile_files.h"
#include "ports/text.h"
#include "ports/text_conversion.h"

namespace platform::ini {

/// One change: no value deletes the key, no key deletes the section.
struct IniEdit {
  Text section;
  std::optional<Text> key;
  std::optional<Text> value;
  std::optional<ProfileSection> inserted = std::nullopt;  ///< put back whole; the rest has no meaning then
};

/// A missing file, one that cannot be read and one larger than kLargestIniFile read as empty; only the
/// missing one can be written. Both ports must outlive the file.
class IniFile {
 public:
  /// `name` is the system's own.
  IniFile(ProfileFiles& disk, TextConversion& conversion, std::string name);

  static constexpr std::uint64_t kNoGroup = 0;

  /// The file's present contents, with the collected changes; in a read group those that its first read
  /// found.
  IniDocument& Read(std::uint64_t group = kNoGroup);

  /// Makes a change in memory and remembers it for Write. False when the file cannot express it.
  bool Collect(IniEdit edit);

  /// Forgets the collected changes.
  void Abandon();

  [[nodiscard]] bool HasCollected() const { return !edits_.empty(); }

  /// Writes the collected changes to the disk, on top of what other programs wrote meanwhile. False when that
  /// failed; the file is then unchanged, and the changes are forgotten.
  bool Write();

 private:
  enum class State { kUnknown, kMissing, kUnreadable, kRead };

  [[nodiscard]] bool IsCurrent();
  void Load();
  void Forget();
  bool Apply(const IniEdit& edit);
  bool WriteTogether(const std::vector<IniEdit>& edits);
  bool MergeWithDisk(const std::vector<IniEdit>& edits);
  bool Replace();

  ProfileFiles& disk_;
  TextConversion& conversion_;
  std::string name_;
  State state_ = State::kUnknown;
  IniDocument document_;
  FileState on_disk_;
  std::uint64_t read_in_ = kNoGroup;  ///< the read group that has read the file
  std::size_t hash_ = 0;              ///< of the bytes on the disk
  bool has_changes_ = false;          ///< the document differs from the file
  std::vector<IniEdit> edits_;
};

}  // namespace platform::ini
