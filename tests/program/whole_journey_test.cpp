// Everything a listener does in one sitting, and in the next one: a real station, real sound on a sound card
// that nobody hears, real files, and the recording tool.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "app/state/station.h"
#include "tests/program/headless_player.h"
#include "tests/support/child_process.h"
#include "tests/support/icy_station.h"
#include "tests/support/loudness.h"
#include "tests/support/media_files.h"
#include "tests/support/pulse_server.h"

namespace {

using namespace std::chrono_literals;
using controls::CheckValue;
using platform::MessageBoxAnswer;
using platform::Text;
using test_support::Loudness;

constexpr auto kSoon = 30s;
constexpr double kFullVolume = 0.35;  // A sine of half the scale, without the start of its coder.
constexpr double kTolerance = 0.05;
constexpr const char* kApplication = "Funkhausplayer";
constexpr const char* kStationFile = "config/Ordnerzentrale/Funkhaus.ini";
constexpr const char* kOptFile = "config/Ordnerzentrale/Opt.ini";

test_support::Mp3Loop Tone(const test_support::TempFolder& folder) {
  return test_support::Mp3Loop(
      test_support::ReadBytes(test_support::MakeTone(folder, "ton.mp3", "libmp3lame")));
}

test_support::IcyStation::Settings TwoTitles() {
  test_support::IcyStation::Settings settings;
  settings.name = "Radio Lichtung";
  settings.titles = {"Erstes Lied", "Grüße aus Köln"};
  settings.title_time = 12s;
  settings.burst = 1s;
  settings.metaint = 4000;
  return settings;
}

class WholeJourney : public ::testing::Test {
 protected:
  WholeJourney() {
    sound_.UseInThisProcess();
    station_.Start();
    folder_.Write(kStationFile, "; von Hand\r\n" + Section("Radio Lichtung", station_.Url(), "Rock", "") +
                                    Section("Blaue Stunde", station_.Url("/station.pls"), "Oldies", "1"));
    MakeRecordingTool();
    player_.emplace(folder_);
    player_->in_new_station_dialog = [](app::Form2& form) {
      form.TextBox1[0].SetText(u"Küstenfunk Süd");
      form.CommandButton3[1].Click();
      form.Combo1.SetListIndex(1);
      form.CommandButton1.Click();
    };
  }

  static std::string Section(const std::string& name, const std::string& link, const std::string& genre,
                             const std::string& favourite) {
    return "[" + name + "]\r\nStation=" + name + "\r\nLink=" + link + "\r\nGenre=" + genre +
           "\r\nFavorit=" + favourite + "\r\nM3uNr=\r\n";
  }
  /// Beside the program, as installed, but reporting its process id and recording into the scratch folder.
  void MakeRecordingTool() {
    const std::string tool = "program/OZRecordFunkhaus";
    folder_.Write(tool, "#!/bin/sh\nprintf %s $$ >'" + (folder_.Path() / "pid").string() +
                            "'\nunset DISPLAY WAYLAND_DISPLAY QT_QPA_PLATFORM\nXDG_MUSIC_DIR='" +
                            (folder_.Path() / "music").string() + "' exec '" RECORDING_TOOL "' \"$@\"\n");
    std::filesystem::permissions(folder_.Path() / tool, std::filesystem::perms::owner_all);
  }

  app::Form1& Form() { return player_->Form(); }
  bool WaitFor(const std::function<bool()>& condition) { return player_->WaitFor(condition, kSoon); }
  [[nodiscard]] static std::vector<Text> Names(const controls::ListView& list) {
    std::vector<Text> names;
    for (const controls::ListRow& row : list.Rows()) names.push_back(row.cells[app::kNameCell]);
    return names;
  }
  void Select(controls::ListView& list, const Text& name) {
    for (const controls::ListRow& row : list.Rows()) {
      if (row.cells[app::kNameCell] != name) continue;
      list.Select(row.id);
      return;
    }
    FAIL() << "no such station";
  }
  /// The stations that are marked as playing.
  std::vector<Text> Playing() {
    std::vector<Text> names;
    for (const controls::ListRow& row : Form().SymbolListview.Rows()) {
      if (row.mark == controls::RowMark::kPlaying) names.push_back(row.cells[app::kNameCell]);
    }
    return names;
  }
  bool HearAbout(double loudness) {
    return WaitFor(
        [this, loudness] { return std::abs(ear_->Last(300ms) - loudness) < kTolerance * loudness; });
  }
  bool HearNothing() {
    return WaitFor([this] { return ear_->Last(300ms) < Loudness::kSilence; });
  }

  // The chapters of the journey, in their order.
  void SelectsAStationAndSeesItsTitle();
  void PlaysItAndSeesThePositionAndTheBars();
  void TurnsTheVolumeDownAndMutes();
  void MarksAFavouriteAndNarrowsTheListToAGenre();
  void AddsAStationAndSavesIt();
  void ExportsEmptiesAndImportsTheList();
  void RecordsTheStation();
  void ClosesWithTheQuestionAndStartsAgain();

  test_support::TempFolder folder_;
  test_support::PulseServer sound_;
  test_support::IcyStation station_{Tone(folder_), TwoTitles()};
  std::optional<Loudness> ear_{std::in_place, sound_};
  std::optional<test_support::HeadlessPlayer> player_;
};

void WholeJourney::SelectsAStationAndSeesItsTitle() {
  player_->Start();
  EXPECT_EQ(Names(Form().SymbolListview), (std::vector<Text>{u"Blaue Stunde", u"Radio Lichtung"}));
  Select(Form().SymbolListview, u"Radio Lichtung");
  EXPECT_EQ(Form().TextBox1[0].GetText(), u"Radio Lichtung");
  EXPECT_TRUE(Form().Frame3.Visible());
  EXPECT_EQ(Form().Label4.Caption(), u"Erstes Lied");
  EXPECT_LT(ear_->Last(300ms), Loudness::kSilence) << "a selection plays nothing";
}

void WholeJourney::PlaysItAndSeesThePositionAndTheBars() {
  Form().Command1.Click();
  EXPECT_TRUE(HearAbout(kFullVolume));
  EXPECT_TRUE(WaitFor([this] { return Form().StatusLine.Caption() == u"Radio Lichtung – MP3, 128 kbit/s"; }));
  EXPECT_TRUE(WaitFor([this] { return Form().Label1.Caption().starts_with(u"Pos: 00:00:0"); }));
  EXPECT_TRUE(WaitFor([this] { return Playing() == std::vector<Text>{u"Radio Lichtung"}; }));
  const Text position = Form().Label1.Caption();
  EXPECT_TRUE(WaitFor([&] { return Form().Label1.Caption() > position; })) << "the position counts";
  for (const controls::ProgressBar& bar : Form().ProgressBar1) {
    EXPECT_TRUE(WaitFor([&] { return bar.Visible() && std::abs(bar.Value() - 5000) < 500; }));
  }
  EXPECT_TRUE(WaitFor([this] { return Form().Label4.Caption() == u"Grüße aus Köln"; })) << "the next title";
}

void WholeJourney::TurnsTheVolumeDownAndMutes() {
  Form().hscSavVolume.SetValue(50);
  EXPECT_TRUE(HearAbout(kFullVolume / 8)) << "the mixer's scale is cubic";
  EXPECT_EQ(sound_.FindStream(kApplication)->volume_percent, 50);
  Form().ckSavMute.Click();
  EXPECT_TRUE(HearNothing());
  EXPECT_TRUE(sound_.FindStream(kApplication)->mute);
  EXPECT_TRUE(WaitFor([this] { return Form().ProgressBar1[0].Value() == 0; }));
  Form().ckSavMute.Click();
  sound_.MoveSlider(kApplication, 80);
  EXPECT_TRUE(WaitFor([this] { return Form().hscSavVolume.Value() == 80; }))
      << "the slider follows the mixer";
  Form().hscSavVolume.SetValue(100);
  EXPECT_TRUE(HearAbout(kFullVolume));
}

void WholeJourney::MarksAFavouriteAndNarrowsTheListToAGenre() {
  Form().Check2.Click();
  EXPECT_THAT(folder_.Read(kStationFile),
              testing::HasSubstr(Section("Radio Lichtung", station_.Url(), "Rock", "1")));
  Form().Combo1.SetListIndex(3);
  ASSERT_EQ(Form().Combo1.GetText(), u"Oldies");
  Form().Check1.Click();
  EXPECT_EQ(Form().Frame2.Caption(), u"Genre-Filter: Oldies");
  EXPECT_EQ(Names(Form().ExplorerListFilter), std::vector<Text>{u"Blaue Stunde"});
  Form().Check1.Click();
  EXPECT_TRUE(Form().SymbolListview.Visible());
  EXPECT_EQ(Form().TextBox1[0].GetText(), u"Radio Lichtung") << "the station selected before";
  EXPECT_GT(ear_->Last(300ms), Loudness::kSilence) << "looking round does not stop the music";
  EXPECT_EQ(Playing(), std::vector<Text>{u"Radio Lichtung"});
}

void WholeJourney::AddsAStationAndSavesIt() {
  player_->clipboard.text = u"http://127.0.0.1:9/kueste";
  player_->dialogs.answers = {MessageBoxAnswer::kYes};
  Form().CommandButton2.Click();
  EXPECT_EQ(player_->dialogs.boxes.back().text, u"Änderungen gespeichert!");
  EXPECT_THAT(folder_.Read(kStationFile),
              testing::EndsWith("[K\xFCstenfunk S\xFC"
                                "d]\r\nGenre=Pop & Hits\r\nLink=http://127.0.0.1:9/kueste\r\n"
                                "Favorit=\r\nM3uNr=\r\n"));
  EXPECT_THAT(folder_.Read(kStationFile), testing::StartsWith("; von Hand\r\n"));
}

void WholeJourney::ExportsEmptiesAndImportsTheList() {
  const auto entry = [](const controls::ListRow& row) {
    return row.cells[app::kNameCell] + u" " + row.cells[app::kLinkCell];
  };
  const auto entries = [&] {
    std::vector<Text> all;
    for (const controls::ListRow& row : Form().SymbolListview.Rows()) all.push_back(entry(row));
    return all;
  };
  const std::vector<Text> before = entries();
  player_->dialogs.chosen_file = folder_.TextPath("liste.m3u");
  Form().Command4.Click();
  EXPECT_THAT(folder_.Read("liste.m3u"), testing::StartsWith("#EXTM3U\n#EXTINF:-1,"));
  EXPECT_THAT(folder_.Read("liste.m3u"), testing::EndsWith("\n\r\n"));

  player_->dialogs.answers = {MessageBoxAnswer::kNo};
  Form().Command5.Click();
  EXPECT_EQ(entries(), before) << "emptied and filled again, in the same order";
  EXPECT_EQ(Playing(), std::vector<Text>{u"Radio Lichtung"});
  EXPECT_EQ(Form().SymbolListview.Rows()[0].cells[app::kGenreCell], u"") << "a playlist knows no genre";
}

void WholeJourney::RecordsTheStation() {
  Select(Form().SymbolListview, u"Radio Lichtung");
  Form().Command8[5].Click();
  const std::filesystem::path files = folder_.Path() / "music/Funkhausplayer";
  const auto recorded = [&] {
    std::uintmax_t bytes = 0;
    std::error_code missing;
    for (const auto& file : std::filesystem::directory_iterator(files, missing)) bytes += file.file_size();
    return bytes;
  };
  EXPECT_TRUE(WaitFor([&] { return recorded() > 20'000; }));
  const pid_t tool = std::stoi(folder_.Read("pid"));
  ::kill(tool, SIGINT);
  EXPECT_TRUE(WaitFor([&] { return ::kill(tool, 0) != 0; })) << "the tool ends by itself";
  EXPECT_GT(recorded(), 20'000U);
}

void WholeJourney::ClosesWithTheQuestionAndStartsAgain() {
  player_->dialogs.boxes.clear();
  player_->dialogs.answers = {MessageBoxAnswer::kNo, MessageBoxAnswer::kNo};
  Form().CommandButton2.Click();
  Form().Check3.Click();
  EXPECT_EQ(Form().Frame2.Caption(), u"Favoriten");
  player_->Close();
  ASSERT_EQ(player_->dialogs.boxes.size(), 2U) << "after the dialog and on closing";
  EXPECT_EQ(player_->dialogs.boxes[1].text, u"Sollen die Änderungen gespeichert werden?");
  EXPECT_TRUE(HearNothing());
  EXPECT_TRUE(station_.WaitUntil([](const auto& counts) { return counts.listeners == 0; }, kSoon));
  EXPECT_EQ(folder_.Read(kOptFile), "[Pfad3]\r\nFunkhausFavorit=1\r\n");

  player_->Start();
  EXPECT_TRUE(Form().Check3.Checked());
  EXPECT_EQ(Form().Frame2.Caption(), u"Favoriten");
  EXPECT_THAT(Names(Form().ExplorerListFilter),
              testing::UnorderedElementsAre(Text(u"Blaue Stunde"), Text(u"Radio Lichtung")));
  Form().Check3.Click();
  EXPECT_EQ(Form().SymbolListview.Count(), 3U) << "what was not saved is gone, nothing else is";
  player_->Close();
}

TEST_F(WholeJourney, AListenersSittingFromTheFirstStartToTheNextOne) {
  SelectsAStationAndSeesItsTitle();
  PlaysItAndSeesThePositionAndTheBars();
  TurnsTheVolumeDownAndMutes();
  MarksAFavouriteAndNarrowsTheListToAGenre();
  AddsAStationAndSavesIt();
  ExportsEmptiesAndImportsTheList();
  RecordsTheStation();
  ClosesWithTheQuestionAndStartsAgain();
}

}  // namespace
