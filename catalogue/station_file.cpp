#include "catalogue/station_file.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "app/text/numbers.h"

namespace catalogue {

using app::Station;
using app::StationField;
using platform::Text;

namespace {

constexpr char16_t kNameKey[] = u"Station";

}  // namespace

bool NamesAnEntry(const Text& number) { return app::ToNumber(number).value_or(0) >= 1; }

StationFile::StationFile(Ports ports, const app::IniProcedures& ini, const app::Settings& settings)
    : ports_(ports), ini_(ini), settings_(settings) {}

std::vector<Text> StationFile::Names() const {
  std::string buffer(kNameListCapacity, '\0');
  const std::uint32_t count = ports_.profile.GetPrivateProfileSectionNamesA(
      buffer, settings_.SettingsFolder + settings_.StationFileName);
  buffer.resize(std::min<std::size_t>(count, buffer.size()));

  std::vector<Text> names;
  for (std::size_t begin = 0; begin < buffer.size();) {
    const std::size_t end = std::min(buffer.find('\0', begin), buffer.size());
    if (end > begin) {
      names.push_back(ports_.conversion.MultiByteToWideChar(
          platform::CodePage::kAnsi, std::string_view(buffer).substr(begin, end - begin)));
    }
    begin = end + 1;
  }
  return names;
}

Station StationFile::Read(const Text& name) const {
  Station station;
  station.name = name;
  for (const StationField& field : app::kStationFieldsByCell) station.*field.value = ReadField(name, field);
  return station;
}

Text StationFile::ReadField(const Text& name, const StationField& field) const {
  return ini_.ReadIni(name, field.key, u"", settings_.StationFileName);
}

std::optional<Text> StationFile::FindField(const Text& name, const StationField& field) const {
  // No value of an INI file contains a line end.
  const Text absent = u"\n";
  Text value = ini_.ReadIni(name, field.key, absent, settings_.StationFileName);
  if (value == absent) return std::nullopt;
  return value;
}

void StationFile::WriteWhole(const Station& station, NumberKey number_key) const {
  ini_.WriteStationIni(station.name, kNameKey, station.name);
  for (const StationField& field : app::kStationFields) {
    const bool left_out = field.cell == app::kM3uNumberCell && number_key == NumberKey::kIfAnEntry &&
                          !NamesAnEntry(station.number);
    if (!left_out) WriteField(station.name, field, station.*field.value);
  }
}

void StationFile::WriteListed(const Station& station) const {
  for (const StationField& field : app::kStationFieldsByCell) {
    const bool emptied = field.cell == app::kM3uNumberCell && !NamesAnEntry(station.number);
    WriteField(station.name, field, emptied ? Text() : station.*field.value);
  }
}

bool StationFile::Holds(const Station& station) const {
  return Contains(station.name) && std::ranges::all_of(app::kStationFields, [&](const StationField& field) {
           return ReadField(station.name, field) == station.*field.value;
         });
}

bool StationFile::WriteField(const Text& name, const StationField& field, const Text& value) const {
  return ini_.WriteStationIni(name, field.key, value);
}

bool StationFile::Delete(const Text& name) const { return ini_.DeleteStationSection(name); }

}  // namespace catalogue
