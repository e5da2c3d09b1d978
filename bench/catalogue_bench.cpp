// Large catalogues: loading, sorting, saving and importing them over the real INI engine, each beside the
// plainest way of doing the same with the same data.

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "app/settings/ini_procedures.h"
#include "app/settings/settings.h"
#include "app/state/runs.h"
#include "app/state/station_row.h"
#include "app/state/window_state.h"
#include "catalogue/station_icons.h"
#include "catalogue/station_lists.h"
#include "catalogue/station_store.h"
#include "platform/icu/string_order.h"
#include "platform/icu/text_conversion.h"
#include "platform/ini/private_profile.h"
#include "platform/posix/environment.h"
#include "platform/posix/files.h"
#include "platform/posix/native_paths.h"
#include "platform/posix/profile_files.h"
#include "playlist/m3u_export.h"
#include "playlist/m3u_import.h"
#include "tests/support/fake_notices.h"
#include "tests/support/fakes.h"
#include "tests/support/temp_folder.h"

namespace {

using platform::Text;

Text Name(std::int64_t index) {
  const std::string digits = std::to_string(index * 7919 % 100003);
  return u"S" + Text(digits.begin(), digits.end());
}

/// A catalogue over real files in a scratch folder, without a window.
struct Catalogue {
  explicit Catalogue(std::int64_t stations) {
    settings.SettingsFolder = folder.TextPath() + u"\\";
    settings.StationFileName = u"Funkhaus.ini";
    catalogue::StationLists::CreateColumns(full);
    catalogue::StationLists::CreateColumns(filtered);
    filtered.SetVisible(false);
    std::vector<controls::ListRow> rows;
    for (std::int64_t index = 0; index < stations; ++index) {
      controls::ListRow row;
      row.cells = {Name(index), u"Pop & Hits", u"http://radio.example/" + Name(index), u"1", u"", u""};
      rows.push_back(std::move(row));
    }
    full.AddRows(std::move(rows));
  }

  void Save() {
    platform::WriteGroup group(profile);
    for (const controls::ListRow& row : full.Rows()) file.WriteListed(app::StationOf(row.cells));
    group.End();
    unsaved.ListWritten();
  }

  test_support::TempFolder folder;
  platform::icu::IcuTextConversion conversion;
  platform::icu::IcuStringOrder order;
  platform::posix::PosixNativePaths paths;
  platform::posix::PosixProfileFiles profile_files;
  platform::ini::IniPrivateProfile profile{paths, profile_files, conversion};
  platform::posix::PosixFiles files{paths};
  platform::posix::PosixEnvironment environment{paths};
  test_support::FakeIcons icon_port;
  test_support::FakeDialogs dialogs;
  test_support::FakeNotices notices;
  test_support::FakeMessageLoop message_loop;
  test_support::FakeClock clock;
  app::Settings settings;
  app::WindowState state;
  app::IniProcedures ini{settings, profile, files, environment};
  app::Life life;
  controls::ListView full, filtered;
  app::ListPair lists{full, filtered};
  controls::CommandButton export_button, import_button;
  catalogue::StationIcons icons{{icon_port, files, conversion, dialogs}, lists};
  catalogue::StationLists station_lists{lists, order, state, {[] {}, [] {}}};
  catalogue::UnsavedRows unsaved{full, conversion};
  catalogue::StationFile file{{profile, conversion}, ini, settings};
  catalogue::StationStore store{
      file, conversion, icons, state, lists, unsaved, [this](controls::ListView& list) {
        station_lists.SortAgain(list);
      }};
  playlist::M3uExport m3u_export{{lists, export_button}, dialogs, files, conversion,
                                 message_loop,           clock,   life};
  playlist::M3uImport m3u_import{{lists, import_button}, dialogs, files, conversion, notices, {[] {}}, life};
};

/// What the same lines cost without any rules: read into texts, one text per value.
std::vector<std::vector<std::string>> PlainLines(const std::string& path, char separator) {
  std::vector<std::vector<std::string>> records;
  std::ifstream file(path, std::ios::binary);
  for (std::string line; std::getline(file, line);) {
    if (records.empty() || line.front() == '[' || line.front() == '#') records.emplace_back();
    records.back().push_back(line.substr(line.find(separator) + 1));
  }
  return records;
}

/// The least for a file that no crash may leave torn.
void WritePlain(const std::string& path, std::string_view bytes) {
  const std::string temporary = path + ".tmp";
  const int file = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  if (::write(file, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) std::abort();
  if (::fsync(file) != 0 || ::close(file) != 0) std::abort();
  if (std::rename(temporary.c_str(), path.c_str()) != 0) std::abort();
}

std::string BytesOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream bytes;
  bytes << file.rdbuf();
  return bytes.str();
}

/// The list of names holds 8,191 characters, so a real catalogue has some hundreds of stations.
void LoadCatalogue(benchmark::State& state) {
  Catalogue catalogue(state.range(0));
  catalogue.Save();
  for (auto _ : state) catalogue.store.LoadStations(u"");
}
BENCHMARK(LoadCatalogue)->Arg(300)->Arg(1000)->Unit(benchmark::kMillisecond);

void LoadPlain(benchmark::State& state) {
  Catalogue catalogue(state.range(0));
  catalogue.Save();
  const std::string path = (catalogue.folder.Path() / "Funkhaus.ini").string();
  for (auto _ : state) benchmark::DoNotOptimize(PlainLines(path, '='));
}
BENCHMARK(LoadPlain)->Arg(300)->Arg(1000)->Unit(benchmark::kMillisecond);

void SaveCatalogue(benchmark::State& state) {
  Catalogue catalogue(state.range(0));
  std::int64_t round = 0;
  for (auto _ : state) {
    state.PauseTiming();
    const Text link = u"http://neu.example/" + Name(++round);
    const controls::RowId last = catalogue.full.RowAt(catalogue.full.Count() - 1);
    catalogue.full.SetCell(last, 2, link);
    state.ResumeTiming();
    catalogue.Save();
  }
}
BENCHMARK(SaveCatalogue)->Arg(300)->Arg(20000)->Unit(benchmark::kMillisecond);

void SavePlain(benchmark::State& state) {
  Catalogue catalogue(state.range(0));
  catalogue.Save();
  const std::string path = (catalogue.folder.Path() / "Funkhaus.ini").string();
  const std::string bytes = BytesOf(path);
  for (auto _ : state) WritePlain(path, bytes);
}
BENCHMARK(SavePlain)->Arg(300)->Arg(20000)->Unit(benchmark::kMillisecond);

void SortCatalogue(benchmark::State& state) {
  Catalogue catalogue(state.range(0));
  for (auto _ : state) catalogue.full.ClickHeader(0);
}
BENCHMARK(SortCatalogue)->Arg(5000)->Arg(20000)->Unit(benchmark::kMillisecond);

/// The names alone, in the same order of letters and numbers.
void SortPlain(benchmark::State& state) {
  Catalogue catalogue(state.range(0));
  std::vector<Text> names;
  for (const controls::ListRow& row : catalogue.full.Rows()) names.push_back(row.cells[0]);
  for (auto _ : state) {
    state.PauseTiming();
    std::vector<Text> sorted = names;
    state.ResumeTiming();
    std::sort(sorted.begin(), sorted.end(), [&](const Text& left, const Text& right) {
      return catalogue.order.StrCmpLogicalW(left, right) < 0;
    });
  }
}
BENCHMARK(SortPlain)->Arg(5000)->Arg(20000)->Unit(benchmark::kMillisecond);

void ImportCatalogue(benchmark::State& state) {
  Catalogue catalogue(state.range(0));
  catalogue.dialogs.chosen_file = catalogue.folder.TextPath("liste.m3u");
  catalogue.export_button.Click();
  for (auto _ : state) {
    state.PauseTiming();
    catalogue.full.Clear();
    catalogue.dialogs.answers = {platform::MessageBoxAnswer::kNo};
    state.ResumeTiming();
    catalogue.import_button.Click();
    catalogue.dialogs.boxes.clear();
  }
}
BENCHMARK(ImportCatalogue)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void ImportPlain(benchmark::State& state) {
  Catalogue catalogue(state.range(0));
  catalogue.dialogs.chosen_file = catalogue.folder.TextPath("liste.m3u");
  catalogue.export_button.Click();
  const std::string path = (catalogue.folder.Path() / "liste.m3u").string();
  for (auto _ : state) benchmark::DoNotOptimize(PlainLines(path, ','));
}
BENCHMARK(ImportPlain)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
