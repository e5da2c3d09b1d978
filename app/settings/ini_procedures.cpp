#include "app/settings/ini_procedures.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>

#include "app/text/text_utilities.h"

namespace app {
namespace {

constexpr std::size_t kLongestValue = 1024;
constexpr std::size_t kShortestFileName = 4;

/// In one piece of memory: reading a catalogue asks for the same path a thousand times.
Text Joined(const Text& folder, const Text& name) {
  Text path;
  path.reserve(folder.size() + name.size());
  path.append(folder).append(name);
  return path;
}

}  // namespace

IniProcedures::IniProcedures(const Settings& settings, platform::PrivateProfile& profile,
                             platform::Files& files, platform::Environment& environment)
    : settings_(settings), profile_(profile), files_(files), environment_(environment) {}

Text IniProcedures::ReadIni(const Text& Section, const Text& Key, const Text& Default, const Text& FileName,
                            UseFamilyFolder folder) const {
  std::array<char16_t, kLongestValue> buffer{};
  const std::size_t count =
      profile_.GetPrivateProfileStringW(Section, Key, Default, buffer, ReadPath(FileName, folder));
  return {buffer.data(), std::min(count, buffer.size())};
}

bool IniProcedures::WriteOptIni(const Text& Section, const Text& Key, const Text& Value, const Text& FileName,
                                UseFamilyFolder folder) const {
  return profile_.WritePrivateProfileStringW(Section, Key, Value, WritePath(kOptIni, FileName, folder));
}

bool IniProcedures::WriteStationIni(const Text& Section, const Text& Key, const Text& Value,
                                    const Text& FileName, UseFamilyFolder folder) const {
  return profile_.WritePrivateProfileStringW(Section, Key, Value,
                                             WritePath(settings_.StationFileName, FileName, folder));
}

bool IniProcedures::DeleteStationSection(const Text& Section, const Text& FileName,
                                         UseFamilyFolder folder) const {
  return profile_.WritePrivateProfileStringW(Section, std::nullopt, std::nullopt,
                                             WritePath(settings_.StationFileName, FileName, folder));
}

std::optional<platform::ProfileSection> IniProcedures::CopyStationSection(const Text& Section) const {
  return profile_.CopySection(Section, StationFile());
}

bool IniProcedures::InsertStationSection(const platform::ProfileSection& section) const {
  return profile_.InsertSection(section, StationFile());
}

Text IniProcedures::FamilyPathOrStationFile(const Text& file_name) const {
  if (settings_.UseProgramFolder) return AddBackslash(environment_.ProgramFolder()) + file_name;
  const Text path =
      AddBackslash(environment_.GetEnvironmentVariableW(u"APPDATA")) + kFamilyFolder + file_name;
  return files_.PathFileExistsW(path) ? path : StationFile();
}

Text IniProcedures::StationFile() const { return settings_.SettingsFolder + settings_.StationFileName; }

Text IniProcedures::ReadPath(const Text& file_name, UseFamilyFolder folder) const {
  const Text& name = file_name.size() < kShortestFileName ? settings_.StationFileName : file_name;
  if (folder == UseFamilyFolder::kYes) return FamilyPathOrStationFile(name);
  return Joined(settings_.SettingsFolder, name);
}

Text IniProcedures::WritePath(const Text& own_file, const Text& file_name, UseFamilyFolder folder) const {
  if (folder == UseFamilyFolder::kYes) return FamilyPathOrStationFile(own_file);
  if (file_name.empty()) return settings_.SettingsFolder + own_file;
  if (file_name.find(u'\\') != Text::npos) return file_name;
  return settings_.SettingsFolder + file_name;
}

}  // namespace app
