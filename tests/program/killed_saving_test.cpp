// The program is killed at a moment that chance chooses while it saves, and started again. FUNKHAUS_KILLS is
// how often; scripts/soak --kills runs a thousand.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <set>
#include <thread>

#include "programs/linux/entrance.h"
#include "tests/program/disk_window.h"
#include "tests/support/temp_folder.h"

namespace program_test {
namespace {

using platform::MessageBoxAnswer;
using platform::Text;
using std::chrono::microseconds;
using std::chrono::steady_clock;

constexpr int kSavedStations = 120;
constexpr int kImported = 40;
constexpr int kUsualKills = 30;

/// What the user does when the program is killed: preparations, which are not disturbed, and the saving.
struct Saving {
  const char* name;
  void (*prepare)(DiskWindow&, const test_support::TempFolder&);
  void (*save)(DiskWindow&);
  std::vector<Text> new_names;  ///< of rows that are unsaved before it, and come back until they are saved
};

void TypeLink(DiskWindow& window, const test_support::TempFolder& /*folder*/) {
  window.Select(u"Sender 50");
  window.Form().TextBox1[1].SetText(u"http://127.0.0.1:9/anders");
}
void SelectOne(DiskWindow& window, const test_support::TempFolder& /*folder*/) {
  window.Select(u"Sender 60");
}
void Import(DiskWindow& window) {
  window.dialogs.answers = {MessageBoxAnswer::kYes};
  window.Form().Command5.Click();
  window.Form().tmUnsaved.Fire();
}
void ChooseList(DiskWindow& window, const test_support::TempFolder& folder) {
  window.dialogs.chosen_file = folder.TextPath("liste.m3u");
}
void ImportBefore(DiskWindow& window, const test_support::TempFolder& folder) {
  ChooseList(window, folder);
  Import(window);
}
void EnterStation(DiskWindow& window, const test_support::TempFolder& /*folder*/) {
  window.in_new_station_dialog = [](app::Form2& form) {
    form.TextBox1[0].SetText(u"Neu");
    form.TextBox1[1].SetText(u"http://127.0.0.1:9/neu");
    form.CommandButton1.Click();
  };
  window.dialogs.answers = {MessageBoxAnswer::kNo};
  window.Form().CommandButton2.Click();
  window.Form().tmUnsaved.Fire();
}

std::vector<Text> ImportedNames() {
  std::vector<Text> names;
  for (int number = 100; number < 100 + kImported; ++number) {
    const std::string digits = std::to_string(number);
    names.push_back(u"Import " + Text(digits.begin(), digits.end()));
  }
  return names;
}

const std::array<Saving, 5>& Savings() {
  static const std::array<Saving, 5> kSavings = {{
      {"one field is applied", TypeLink, [](DiskWindow& window) { window.Form().Command8[2].Click(); }, {}},
      {"the list is saved", ImportBefore, [](DiskWindow& window) { window.Form().CommandButton1.Click(); },
       ImportedNames()},
      {"an entry is deleted", SelectOne, [](DiskWindow& window) { window.Form().Command8[3].Click(); }, {}},
      {"a list is imported", ChooseList, Import, {}},
      {"the window is closed with Yes",
       EnterStation,
       [](DiskWindow& window) {
         window.dialogs.answers = {MessageBoxAnswer::kYes};
         window.Form().form.Close();
       },
       {u"Neu"}},
  }};
  return kSavings;
}

std::string StationsBefore() {
  std::string bytes = "; von Hand\r\n";
  for (int station = 0; station < kSavedStations; ++station) {
    const std::string name = "Sender " + std::to_string(station);
    bytes += "[" + name + "]\r\n; Notiz zu " + name + "\r\nStation=" + name + "\r\nLink=http://127.0.0.1:9/" +
             std::to_string(station) +
             "\r\nGenre=Rock\r\nFavorit=\r\nM3uNr=\r\nFremd=" + std::to_string(station) + "\r\n";
  }
  return bytes;
}

std::string ListToImport() {
  std::string list = "#EXTM3U\n";
  for (const Text& name : ImportedNames()) {
    list += "#EXTINF:-1," + std::string(name.begin(), name.end()) + "\nhttp://127.0.0.1:9/import\n";
  }
  return list;
}

class KilledSaving : public testing::Test {
 protected:
  KilledSaving() {
    ::setenv("APPDATA", (folder_.Path() / "config").c_str(), 1);
    ::setenv("XDG_STATE_HOME", (folder_.Path() / "state").c_str(), 1);
    folder_.Write("liste.m3u", ListToImport());
  }

  void Prepare() {
    for (const char* name : {"config", "state"}) std::filesystem::remove_all(folder_.Path() / name);
    folder_.Write(kStations, StationsBefore());
    folder_.Write("config/Ordnerzentrale/Opt.ini", "[Pfad3]\r\nFunkhausFavorit=0\r\n");
  }
  [[nodiscard]] std::string Stations() const { return folder_.Read(kStations); }

  /// Runs a saving in a process of its own and kills that `moment` after the saving has begun; waits for its
  /// end if there is none. Returns how long the process lived since.
  microseconds Run(const Saving& saving, std::optional<microseconds> moment) {
    std::array<int, 2> pipe{};
    EXPECT_EQ(::pipe(pipe.data()), 0);
    const pid_t child = ::fork();
    if (child == 0) Live(saving, pipe[1]);
    char ready = 0;
    EXPECT_EQ(::read(pipe[0], &ready, 1), 1);
    const auto begun = steady_clock::now();
    if (moment) {
      std::this_thread::sleep_until(begun + *moment);
      ::kill(child, SIGKILL);
    }
    EXPECT_EQ(::waitpid(child, nullptr, 0), child);
    for (const int end : pipe) ::close(end);
    return std::chrono::duration_cast<microseconds>(steady_clock::now() - begun);
  }
  [[noreturn]] void Live(const Saving& saving, int ready) {
    const Entrance entrance;
    DiskWindow window;
    saving.prepare(window, folder_);
    if (::write(ready, "", 1) == 1) saving.save(window);
    ::_exit(0);
  }

  /// The temporary files that are there now.
  [[nodiscard]] std::vector<std::string> Leftovers() const {
    std::vector<std::string> found;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder_.Path())) {
      if (entry.path().extension() == ".tmp") found.push_back(entry.path());
    }
    return found;
  }

  /// After the next start nothing of the saving is left over, and the rows that were new are there once each.
  void StartAgain(const Saving& saving) {
    const Entrance entrance;
    ASSERT_FALSE(entrance.ExitCode());
    EXPECT_EQ(Leftovers(), std::vector<std::string>());
    DiskWindow window;
    const std::vector<Text> names = window.Names();
    for (const Text& name : saving.new_names) EXPECT_EQ(std::ranges::count(names, name), 1);
    const auto imported =
        std::ranges::count_if(names, [](const Text& name) { return name.starts_with(u"Import "); });
    EXPECT_TRUE(imported == 0 || imported == kImported) << imported;
    EXPECT_EQ(std::set<Text>(names.begin(), names.end()).size(), names.size());
  }

  static constexpr const char* kStations = "config/Ordnerzentrale/Funkhaus.ini";
  test_support::TempFolder folder_;
};

int Kills() {
  const char* const wanted = std::getenv("FUNKHAUS_KILLS");
  return wanted == nullptr ? kUsualKills : std::atoi(wanted);
}

TEST_F(KilledSaving, LeavesTheOldFileOrTheNewOneAndNothingElse) {
  std::array<std::string, 5> after;
  std::array<microseconds, 5> longest{};
  for (std::size_t kind = 0; kind < after.size(); ++kind) {
    Prepare();
    longest[kind] = Run(Savings()[kind], std::nullopt);
    after[kind] = Stations();
    StartAgain(Savings()[kind]);
  }
  const std::string before = StationsBefore();
  const auto seed = std::random_device{}();
  std::mt19937 random(seed);
  std::array<int, 3> seen{};  // old, new, with something left over
  for (int kill = 0; kill < Kills() && !HasFailure(); ++kill) {
    const std::size_t kind = static_cast<std::size_t>(kill) % after.size();
    const microseconds moment(std::uniform_int_distribution<std::int64_t>(0, longest[kind].count())(random));
    SCOPED_TRACE("seed " + std::to_string(seed) + ", kill " + std::to_string(kill) + ", " +
                 std::to_string(moment.count()) + " us after " + Savings()[kind].name);
    Prepare();
    Run(Savings()[kind], moment);
    const std::string found = Stations();
    EXPECT_TRUE(found == before || found == after[kind]) << found;
    ++seen[found == before ? 0 : 1];
    if (!Leftovers().empty()) ++seen[2];
    StartAgain(Savings()[kind]);
  }
  std::printf(
      "%d kills: the old file %d times, the new one %d times; %d times a temporary file was left until the "
      "next start\n",
      seen[0] + seen[1], seen[0], seen[1], seen[2]);
}

TEST_F(KilledSaving, OnlyItsOwnLeftoversAreRemoved) {
  Prepare();
  const std::array<const char*, 3> foreign = {
      "config/Ordnerzentrale/.funkhaus-0123456789abcdef-0123456789abcdef.tmp",
      "config/Ordnerzentrale/anderes.tmp", "state/funkhausplayer/.funkhaus-fremd.tmp"};
  for (const char* name : foreign) folder_.Write(name, "x");
  { const Entrance entrance; }
  EXPECT_EQ(Leftovers().size(), foreign.size());
}

}  // namespace
}  // namespace program_test
