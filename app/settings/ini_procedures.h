#pragma once
// The procedures by which the program reads and writes its INI files, with their path rules.
// Not the INI format itself (ports/private_profile.h).

#include <optional>

#include "app/settings/settings.h"
#include "app/text/text.h"
#include "ports/environment.h"
#include "ports/files.h"
#include "ports/private_profile.h"

namespace app {

inline constexpr char16_t kOptIni[] = u"Opt.ini";                 ///< options, shared with the family
inline constexpr char16_t kFamilyFolder[] = u"Ordnerzentrale\\";  ///< below the user's "APPDATA" folder
inline constexpr char16_t kStationFileName[] = u"Funkhaus.ini";

/// Whether a procedure means the family's folder instead of the settings folder.
enum class UseFamilyFolder { kNo, kYes };

/// Nothing here reports to the user. In the family's folder every procedure falls back to the station file
/// in the settings folder when the file that it means does not exist there, so that the program never
/// creates a file in the family's folder.
class IniProcedures {
 public:
  /// `settings` is read at every call.
  IniProcedures(const Settings& settings, platform::PrivateProfile& profile, platform::Files& files,
                platform::Environment& environment);

  /// One value, cut to 1023 characters; `Default` when file, section or key is missing. `FileName` is always
  /// a name in the folder; one of fewer than four characters means the station file.
  [[nodiscard]] Text ReadIni(const Text& Section, const Text& Key, const Text& Default, const Text& FileName,
                             UseFamilyFolder folder = UseFamilyFolder::kNo) const;

  // Of the procedures below, `FileName` counts only outside the family's folder: empty means the procedure's
  // own file, a name with "\" is a full path, any other is a name in the settings folder. Each returns false
  // when the file could not be changed; the file is then as it was before.

  /// Writes one key; its own file is "Opt.ini".
  bool WriteOptIni(const Text& Section, const Text& Key, const Text& Value, const Text& FileName = {},
                   UseFamilyFolder folder = UseFamilyFolder::kNo) const;

  /// Writes one key; its own file is the station file.
  bool WriteStationIni(const Text& Section, const Text& Key, const Text& Value, const Text& FileName = {},
                       UseFamilyFolder folder = UseFamilyFolder::kNo) const;

  /// Removes a section with all its keys; its own file is the station file.
  bool DeleteStationSection(const Text& Section, const Text& FileName = {},
                            UseFamilyFolder folder = UseFamilyFolder::kNo) const;

  /// The path of the station file, as the procedures use it.
  [[nodiscard]] Text StationFile() const;

  // A section of the station file as a whole.

  /// The section with all its lines; nothing when there is none.
  [[nodiscard]] std::optional<platform::ProfileSection> CopyStationSection(const Text& Section) const;

  /// Puts a copied section back in its place; see platform::PrivateProfile::InsertSection.
  bool InsertStationSection(const platform::ProfileSection& section) const;

 private:
  [[nodiscard]] Text FamilyPathOrStationFile(const Text& file_name) const;
  [[nodiscard]] Text ReadPath(const Text& file_name, UseFamilyFolder folder) const;
  [[nodiscard]] Text WritePath(const Text& own_file, const Text& file_name, UseFamilyFolder folder) const;

  const Settings& settings_;
  platform::PrivateProfile& profile_;
  platform::Files& files_;
  platform::Environment& environment_;
};

}  // namespace app
