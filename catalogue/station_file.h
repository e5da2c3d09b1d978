#pragma once
// The station file: stations read from it, written to it and deleted from it.
// Not which rows of the lists it contains (catalogue/unsaved_rows.h), nor INI files
// (app/settings/ini_procedures.h).

#include <cstddef>
#include <optional>
#include <vector>

#include "app/settings/ini_procedures.h"
#include "app/settings/settings.h"
#include "app/state/station.h"
#include "ports/private_profile.h"
#include "ports/text_conversion.h"

namespace catalogue {

/// Whether a text is the number of an entry: they count from 1, and a text that is not a number counts as 0.
[[nodiscard]] bool NamesAnEntry(const platform::Text& number);

/// One INI section per station, named after it, with the name once more under "Station", which is never read,
/// and a key per field (app/state/station.h). Writing and deleting return false when the file could not be
/// changed; inside a group of writes the group's end reports it.
class StationFile {
 public:
  struct Ports {
    platform::PrivateProfile& profile;
    platform::TextConversion& conversion;
  };

  /// The list of all names, each followed by NUL, is read into a buffer of this many characters; names
  /// beyond it are silently missing.
  static constexpr std::size_t kNameListCapacity = 8192;

  StationFile(Ports ports, const app::IniProcedures& ini, const app::Settings& settings);

  // Reading. Missing parts read as the empty text.
  /// In the order of the file.
  [[nodiscard]] std::vector<platform::Text> Names() const;
  [[nodiscard]] app::Station Read(const platform::Text& name) const;
  [[nodiscard]] platform::Text ReadField(const platform::Text& name, const app::StationField& field) const;
  /// Nothing when the key is missing.
  [[nodiscard]] std::optional<platform::Text> FindField(const platform::Text& name,
                                                        const app::StationField& field) const;

  /// Whether there is a section of that name with the same text in every field.
  [[nodiscard]] bool Holds(const app::Station& station) const;

  // Writing.
  enum class NumberKey {
    kAlways,
    kIfAnEntry,  ///< omitted unless the number is an entry's
  };
  /// The name and every field.
  void WriteWhole(const app::Station& station, NumberKey number_key) const;
  /// Every field, as saving the list does: a number that is not an entry's is written as the empty text.
  void WriteListed(const app::Station& station) const;
  bool WriteField(const platform::Text& name, const app::StationField& field,
                  const platform::Text& value) const;
  bool Delete(const platform::Text& name) const;

  // Sections with all their lines, foreign ones included.
  /// Nothing when there is none of that name.
  [[nodiscard]] std::optional<platform::ProfileSection> Section(const platform::Text& name) const {
    return ini_.CopyStationSection(name);
  }
  [[nodiscard]] bool Contains(const platform::Text& name) const { return Section(name).has_value(); }
  /// Puts a section back in its place.
  bool Insert(const platform::ProfileSection& section) const { return ini_.InsertStationSection(section); }

  /// Everything written during its lifetime becomes one replacement of the file.
  [[nodiscard]] platform::WriteGroup Group() const { return platform::WriteGroup(ports_.profile); }
  /// What is read during its lifetime is what the file held at the beginning.
  [[nodiscard]] platform::ReadGroup ReadTogether() const { return platform::ReadGroup(ports_.profile); }
  [[nodiscard]] platform::Text Path() const { return ini_.StationFile(); }

 private:
  Ports ports_;
  const app::IniProcedures& ini_;
  const app::Settings& settings_;
};

}  // namespace catalogue
