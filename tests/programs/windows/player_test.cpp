// The player as its user starts it: a process of its own, looked at from outside.

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <string>

#include "app/forms/form1.h"
#include "platform/win32/base/wide.h"
#include "platform/win32/system/environment.h"
#include "platform/win32/system/single_start.h"
#include "platform/win32/ui/control_set.h"
#include "tests/programs/windows/program_process.h"
#include "tests/support/remote/remote_servers.h"
#include "tests/support/temp_folder.h"

namespace {

using platform::win32::SingleStart;
using platform::win32::Win32Environment;
using program_test::ProgramProcess;
using test_support::Script;
using test_support::TempFolder;

constexpr const char* kStationFile = "Ordnerzentrale/Funkhaus.ini";

std::string StationAt(const std::string& link) {
  return "[Radio A]\r\nStation=Radio A\r\nLink=" + link + "\r\nGenre=Rock\r\nFavorit=\r\nM3uNr=\r\n";
}

/// A control of the main window by its name.
HWND ControlOf(const ProgramProcess& player, const std::string& name) {
  const app::Form1 form;
  const auto entry =
      std::ranges::find_if(form.inventory, [&](const app::FormControl& each) { return each.name == name; });
  const auto number = platform::win32::kFirstControlId + (entry - form.inventory.begin());
  return program_test::PartOf(player.Window(),
                              [number](HWND part) { return ::GetDlgCtrlID(part) == number; });
}

bool ComesToShowRows(const ProgramProcess& player, DWORD_PTR rows) {
  HWND const list = ControlOf(player, "SymbolListview");
  return program_test::ComesTrue([=] { return program_test::Ask(list, LVM_GETITEMCOUNT) == rows; });
}

/// Each test has a settings folder of its own.
class PlayerOfTheUser : public testing::Test {
 protected:
  PlayerOfTheUser() {
    ::SetEnvironmentVariableW(L"APPDATA", folder_.Path().c_str());
    folder_.Write(kStationFile, StationAt("http://127.0.0.1:9/"));
  }
  ~PlayerOfTheUser() override {
    ::SetEnvironmentVariableW(L"APPDATA", before_.c_str());
    std::error_code ignored;
    for (const char16_t* extension : {u".window", u".unsaved", u".notices"})
      std::filesystem::remove(StateFile(extension), ignored);
  }
  [[nodiscard]] ProgramProcess Start(const std::wstring& words = L"") const {
    return {L"Funkhausplayer.exe", words, folder_.Path()};
  }
  /// In the user's folder, one for each settings folder.
  [[nodiscard]] std::filesystem::path StateFile(const platform::Text& extension) const {
    return Win32Environment().StateFile(folder_.TextPath(kStationFile), extension);
  }
  static void PressKey(const ProgramProcess& player, int key) {
    HWND const window = player.Window();
    program_test::Ask(window, WM_APPCOMMAND, reinterpret_cast<WPARAM>(window), MAKELPARAM(0, key));
  }

  const std::wstring before_ = platform::win32::Wide(Win32Environment().GetEnvironmentVariableW(u"APPDATA"));
  const TempFolder folder_;
};

TEST_F(PlayerOfTheUser, IsToldInABoxHowItIsCalled) {
  const auto help = Start(L"--help");
  EXPECT_EQ(program_test::ShownIn(help.Box()), L"Funkhausplayer");
  EXPECT_TRUE(help.AnswerBox().starts_with(L"Aufruf: funkhausplayer [DATEI | ADRESSE]\n"));
  EXPECT_EQ(help.ExitCode(), 0U);
  const auto version = Start(L"--version");
  EXPECT_TRUE(version.AnswerBox().starts_with(L"Funkhausplayer "));
  EXPECT_EQ(version.ExitCode(), 0U);
  const auto wrong = Start(L"--laut");
  EXPECT_TRUE(wrong.AnswerBox().starts_with(L"Die Option --laut gibt es nicht.\n\nAufruf: "));
  EXPECT_EQ(wrong.ExitCode(), 2U);
}

TEST_F(PlayerOfTheUser, ShowsItsStationsAndEndsWithItsWindowWhosePlaceItRemembers) {
  const auto player = Start();
  EXPECT_TRUE(ComesToShowRows(player, 1));
  EXPECT_EQ(player.Close(), 0U);
  EXPECT_TRUE(std::filesystem::exists(StateFile(u".window")));
}

TEST_F(PlayerOfTheUser, OpensTheListThatItsStartNames) {
  folder_.Write("liste k.pls", "[playlist]\nTitle1=Eins\nFile1=http://127.0.0.1:9/1\n");
  const auto player = Start(L"\"liste k.pls\"");
  EXPECT_TRUE(ComesToShowRows(player, 2));
  EXPECT_EQ(player.Close(), 0U);
}

TEST_F(PlayerOfTheUser, OpensWhatALaterStartNamesInTheWorkingFolderOfThatStart) {
  const TempFolder later_folder;
  later_folder.Write("K\xC3\xB6rbe.m3u", "#EXTM3U\n#EXTINF:-1,Eins\nhttp://127.0.0.1:9/1\n");
  const auto player = Start();
  EXPECT_TRUE(ComesToShowRows(player, 1));
  const ProgramProcess later(L"Funkhausplayer.exe", L"K\u00F6rbe.m3u", later_folder.Path());
  EXPECT_EQ(later.ExitCode(), 0U);
  EXPECT_TRUE(ComesToShowRows(player, 2));
  EXPECT_EQ(player.Close(), 0U);
}

TEST_F(PlayerOfTheUser, OpensTheDialogForTheAddressOfALaterStartOverItsWindow) {
  const auto player = Start();
  EXPECT_TRUE(ComesToShowRows(player, 1));
  EXPECT_EQ(Start(L"http://127.0.0.1:9/live").ExitCode(), 0U);
  HWND const dialog = player.Dialog();
  EXPECT_EQ(::GetWindow(dialog, GW_OWNER), player.Window());
  ::PostMessageW(dialog, WM_CLOSE, 0, 0);
  EXPECT_TRUE(program_test::ComesTrue([dialog] { return ::IsWindow(dialog) == 0; }));
  EXPECT_EQ(player.Close(), 0U);
}

TEST_F(PlayerOfTheUser, IsToldThatTheOneThatRunsDoesNotAnswer) {
  const SingleStart silent(folder_.TextPath(kStationFile), {}, std::chrono::milliseconds(0));
  ASSERT_EQ(silent.Get(), SingleStart::Outcome::kRuns);
  const auto player = Start();
  EXPECT_EQ(player.AnswerBox(), L"Funkhausplayer l\u00E4uft bereits, antwortet aber nicht.");
  EXPECT_EQ(player.ExitCode(), 1U);
}

TEST_F(PlayerOfTheUser, IsAskedInBoxesOverItsWindow) {
  const auto player = Start();
  EXPECT_TRUE(ComesToShowRows(player, 1));
  ::PostMessageW(ControlOf(player, "Command1"), BM_CLICK, 0, 0);
  HWND const box = player.Box();
  EXPECT_EQ(::GetWindow(box, GW_OWNER), player.Window());
  EXPECT_EQ(player.AnswerBox(), L"Bitte zuerst eine Radiostation markieren!");
  EXPECT_EQ(player.Close(), 0U);
}

TEST_F(PlayerOfTheUser, StartsTheFirstStationWithAKeyForMedia) {
  test_support::RemoteIcyServer server;
  server.OnAny(Script().Hold());
  folder_.Write(kStationFile, StationAt(server.Url()));
  const auto player = Start();
  EXPECT_TRUE(ComesToShowRows(player, 1));
  PressKey(player, APPCOMMAND_MEDIA_PLAY);
  EXPECT_TRUE(server.WaitForRequests(1, program_test::kProgramLimit));
  EXPECT_EQ(player.Close(), 0U);
}

TEST_F(PlayerOfTheUser, ReadsTheProgramsTextForAnErrorOfTheSystemInTheLanguageOfTheWindow) {
  test_support::RemoteIcyServer server;
  server.OnAny(Script().Send("HTTP/1.0 200 OK\r\nContent-Type: text/html\r\n\r\n<html></html>"));
  folder_.Write(kStationFile, StationAt(server.Url()));
  folder_.Write("Ordnerzentrale/Opt.ini", "[Pfad1]\r\nLanguages=English\r\n");
  const auto player = Start();
  EXPECT_TRUE(ComesToShowRows(player, 1));
  PressKey(player, APPCOMMAND_MEDIA_PLAY);
  EXPECT_EQ(player.AnswerBox(), L"The byte stream type of the given URL is unsupported.\r\n");
  EXPECT_EQ(player.Close(), 0U);
}

}  // namespace
