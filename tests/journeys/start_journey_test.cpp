// The main window without widgets on a real station file: started, worked, closed, started again.

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

#include "app/window/main_window.h"
#include "catalogue/station_row.h"
#include "platform/icu/string_order.h"
#include "platform/icu/text_conversion.h"
#include "platform/posix/files.h"
#include "platform/posix/native_paths.h"
#include "platform/posix/private_profile.h"
#include "platform/posix/record_files.h"
#include "platform/values/portable_property_values.h"
#include "tests/support/fakes.h"
#include "tests/support/recording_media.h"
#include "tests/support/scripted_internet.h"
#include "tests/support/temp_folder.h"

namespace app {
namespace {

using controls::CheckValue;

/// A comment, an unknown key and odd spacing, none of which belongs to the program.
constexpr char kStationFile[] =
    "; meine Sender\r\n"
    "[Radio 10]\r\nStation=Radio 10\r\nLink=http://zehn.example/live\r\nGenre=Rock\r\nFavorit=1\r\nM3uNr=\r\n"
    "\r\n"
    "[Radio 2]\r\nLink = http://zwei.example/live\r\nGenre=80er/90er\r\nNotiz=bleibt\r\n"
    "[K\xFCstenfunk S\xFC"
    "d]\r\nLink=\"http://kueste.example/live\"\r\nGenre=Pop & Hits\r\n";

class StartJourney : public ::testing::Test {
 protected:
  StartJourney() {
    environment.variables[u"APPDATA"] = folder.TextPath("daten");
    environment.program_folder = folder.TextPath("programm");
    folder.Write("daten/Ordnerzentrale/Funkhaus.ini", kStationFile);
    folder.Write("daten/Ordnerzentrale/Opt.ini", "[Pfad1]\r\nandere=1\r\n");
    folder.Write(
        "programm/RadioIco/K\xC3\xBCstenfunk S\xC3\xBC"
        "d.ICO",
        "ico");
    folder.Write("programm/RadioIco/liesmich.txt", "");
    message_loop.on_sleep = [this](std::uint32_t milliseconds) {
      clock.seconds_since_midnight += milliseconds / 1000.0;
    };
    internet.answer.status = u"404";
  }

  void Start() {
    window.reset();
    window = std::make_unique<MainWindow>(
        Platform{profile, files, record_files, environment, conversion, string_order, icons, internet,
                 requests, media, media, values, dialogs, shell, clipboard, system_messages, message_loop,
                 clock},
        [](catalogue::Form2&) {});
    window->Load();
  }
  Form1& Form() { return window->Controls(); }
  std::vector<Text> Names() {
    std::vector<Text> names;
    for (const controls::ListRow& row : Form().SymbolListview.Rows()) names.push_back(row.cells[0]);
    return names;
  }
  std::string StationFile() { return folder.Read("daten/Ordnerzentrale/Funkhaus.ini"); }

  test_support::TempFolder folder;
  platform::icu::IcuTextConversion conversion;
  platform::icu::IcuStringOrder string_order;
  platform::posix::PosixNativePaths paths;
  platform::posix::IniPrivateProfile profile{paths, conversion};
  platform::posix::PosixFiles files{paths};
  platform::posix::PosixRecordFiles record_files{paths};
  platform::values::PortablePropertyValues values;
  test_support::FakeEnvironment environment;
  test_support::FakeIcons icons;
  test_support::ScriptedInternet internet;
  test_support::ScriptedXmlHttpRequests requests;
  test_support::RecordingMedia media;
  test_support::FakeDialogs dialogs;
  test_support::FakeShell shell;
  test_support::FakeClipboard clipboard;
  test_support::FakeSystemMessages system_messages;
  test_support::FakeMessageLoop message_loop;
  test_support::FakeClock clock;
  std::unique_ptr<MainWindow> window;
};

TEST_F(StartJourney, CatalogueIsShownInNaturalOrderWithUmlautsAndIcons) {
  Start();
  EXPECT_EQ(Names(), (std::vector<Text>{u"Küstenfunk Süd", u"Radio 2", u"Radio 10"}));
  const controls::ListRow& coast = Form().SymbolListview.Rows()[0];
  EXPECT_EQ(coast.icon, 0);
  EXPECT_EQ(coast.cells[catalogue::kLink], u"http://kueste.example/live");
  EXPECT_EQ(Form().SymbolListview.Rows()[1].icon, -1);
  EXPECT_EQ(Form().SymbolListview.Rows()[2].cells[catalogue::kFavourite], u"1");
}

TEST_F(StartJourney, LookingAroundChangesNoByteOfTheStationFile) {
  Start();
  for (const controls::ListRow& row : std::vector<controls::ListRow>(Form().SymbolListview.Rows())) {
    Form().SymbolListview.Select(row.id);
  }
  Form().SymbolListview.ClickHeader(1);
  Form().Check3.Click();
  Form().Check1.Click();
  Form().Check1.Click();
  Form().form.Close();
  EXPECT_EQ(StationFile(), kStationFile);
}

TEST_F(StartJourney, StationIsSelectedStartedHeardAndStopped) {
  Start();
  Form().SymbolListview.Select(Form().SymbolListview.RowAt(1));
  EXPECT_EQ(Form().TextBox1[1].GetText(), u"http://zwei.example/live");
  Form().Command1.Click();
  EXPECT_TRUE(Form().tmPlay.Enabled());
  media.play_state = player::kPlayStateRunning;
  media.position = 30'000'000;
  media.channel_peaks = {0.25F, 0.5F};
  Form().tmPlay.Fire();
  Form().Timer1.Fire();
  EXPECT_EQ(Form().Label1.Caption(), u"Pos: 00:00:03");
  EXPECT_EQ(Form().ProgressBar1[1].Value(), 5000);
  Form().Command6.Click();
  EXPECT_FALSE(Form().tmPlay.Enabled() || Form().Timer1.Enabled() || Form().Timer2.Enabled());
  Form().form.Close();
  EXPECT_TRUE(media.LiveHandles().empty());
  EXPECT_TRUE(media.Misuses().empty());
}

TEST_F(StartJourney, FavouriteMarkTouchesItsLineOnly) {
  Start();
  Form().SymbolListview.Select(Form().SymbolListview.RowAt(2));
  Form().Check2.Click();
  std::string expected = kStationFile;
  expected.replace(expected.find("Favorit=1"), 9, "Favorit=");
  EXPECT_EQ(StationFile(), expected);
}

TEST_F(StartJourney, ViewIsRememberedFromOneStartToTheNext) {
  Start();
  Form().Check3.Click();
  Form().form.Close();
  EXPECT_EQ(folder.Read("daten/Ordnerzentrale/Opt.ini"),
            "[Pfad1]\r\nandere=1\r\n[Pfad3]\r\nFunkhausFavorit=1\r\n");
  Start();
  EXPECT_TRUE(Form().Check3.Checked());
  EXPECT_EQ(Form().Frame2.Caption(), u"Favoriten");
  EXPECT_EQ(Form().ExplorerListFilter.Count(), 1U);
  EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(StartJourney, UsersMovedFolderHoldsBothFiles) {
  const std::string moved = (folder.Path() / "umgezogen").string() + "/";
  folder.Write("umgezogen/Funkhaus.ini", "[Dort]\r\nLink=http://dort/\r\n");
  folder.Write("daten/Ordnerzentrale/Opt.ini",
               "[Pfad3]\r\nIsUserIniChange=1\r\nUserIniPfad=" + moved + "\r\n");
  Start();
  EXPECT_EQ(Names(), std::vector<Text>{u"Dort"});
  Form().form.Close();
  EXPECT_EQ(folder.Read("umgezogen/Opt.ini"), "[Pfad3]\r\nFunkhausFavorit=0\r\n");
}

TEST_F(StartJourney, FirstStartOnAnEmptyMachineMakesTheFolder) {
  environment.variables[u"APPDATA"] = folder.TextPath("leer");
  std::filesystem::create_directory(folder.Path() / "leer");
  Start();
  EXPECT_TRUE(std::filesystem::is_directory(folder.Path() / "leer/Ordnerzentrale"));
  EXPECT_EQ(Form().SymbolListview.Count(), 0U);
  EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(StartJourney, BinaryStationFileDoesNoHarm) {
  std::string bytes;
  for (int index = 0; index < 70000; ++index) bytes.push_back(static_cast<char>(index * 7 % 256));
  folder.Write("daten/Ordnerzentrale/Funkhaus.ini", bytes);
  Start();
  Form().form.Close();
  EXPECT_EQ(StationFile(), bytes);
}

}  // namespace
}  // namespace app
