// When the windows are dark, and with which colours.

#include "platform/win32/ui/dark_mode.h"

#include "platform/win32/base/windows_api.h"

#include <dwmapi.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/forms/form2.h"
#include "platform/win32/ui/dialogs.h"
#include "platform/win32/ui/palette.h"
#include "tests/platform/win32/replaced_import.h"
#include "tests/platform/win32/ui/chosen_mode.h"
#include "tests/platform/win32/ui/rig.h"

// Where this program finds the system's function.
extern "C" {
extern decltype(&DwmSetWindowAttribute) __imp_DwmSetWindowAttribute;
}

namespace platform::win32 {
namespace {

/// The user's part of the registry is another key for this process.
class OwnRegistry {
 public:
  OwnRegistry() : name_(L"Software\\FunkhausTest" + std::to_wstring(::GetCurrentProcessId())) {
    ::RegCreateKeyExW(HKEY_CURRENT_USER, name_.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key_,
                      nullptr);
    ::RegOverridePredefKey(HKEY_CURRENT_USER, key_);
  }
  ~OwnRegistry() {
    ::RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    ::RegCloseKey(key_);
    ::RegDeleteTreeW(HKEY_CURRENT_USER, name_.c_str());
  }
  OwnRegistry(const OwnRegistry&) = delete;
  OwnRegistry& operator=(const OwnRegistry&) = delete;

  void Set(const wchar_t* value, DWORD type, const void* bytes, DWORD size) const {
    ::RegSetKeyValueW(key_, L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize", value, type,
                      bytes, size);
  }
  void Set(const wchar_t* value, DWORD number) const { Set(value, REG_DWORD, &number, sizeof number); }

 private:
  std::wstring name_;
  HKEY key_ = nullptr;
};

TEST(Win32DarkModeTest, UsersSettingIsReadAndWhereItIsMissingProgramsAreLight) {
  const OwnRegistry registry;
  const SystemMode system;
  EXPECT_EQ(system.WantedBrightness(), Brightness::kLight) << "no key";
  registry.Set(L"SystemUsesLightTheme", 0);
  EXPECT_EQ(system.WantedBrightness(), Brightness::kLight) << "the task bar alone is dark";
  registry.Set(L"AppsUseLightTheme", 0);
  EXPECT_EQ(system.WantedBrightness(), Brightness::kDark);
  registry.Set(L"AppsUseLightTheme", 1);
  EXPECT_EQ(system.WantedBrightness(), Brightness::kLight);
  registry.Set(L"AppsUseLightTheme", REG_SZ, L"0", 4);
  EXPECT_EQ(system.WantedBrightness(), Brightness::kLight) << "no number";
}

TEST(Win32DarkModeTest, SettingDecidesForTheProgramAndIsAskedOnlyWhenItIsReported) {
  const OwnRegistry registry;
  const SystemMode system;
  const SystemMode* const before = ReplaceSystemMode(&system);
  registry.Set(L"AppsUseLightTheme", 0);
  EXPECT_EQ(ShownBrightness(), Brightness::kLight);
  FollowWantedBrightness();
  EXPECT_EQ(ShownBrightness(), Brightness::kDark);
  registry.Set(L"AppsUseLightTheme", 1);
  FollowWantedBrightness();
  EXPECT_EQ(ShownBrightness(), Brightness::kLight);
  ReplaceSystemMode(before);
}

TEST(Win32DarkModeTest, WithHighContrastNothingIsDark) {
  ChosenMode mode(Brightness::kDark, Contrast::kHigh);
  EXPECT_EQ(ShownBrightness(), Brightness::kLight);
  for (int number = 0; number <= COLOR_MENUBAR; ++number) {
    EXPECT_EQ(ShownColor(number), ::GetSysColor(number)) << number;
    EXPECT_EQ(ShownBrush(number), ::GetSysColorBrush(number)) << number;
  }
  mode.contrast = Contrast::kUsual;
  FollowWantedBrightness();
  EXPECT_EQ(ShownBrightness(), Brightness::kDark);
}

TEST(Win32DarkModeTest, LightColoursAreTheSystemsOwn) {
  const ChosenMode mode(Brightness::kLight);
  for (int number = 0; number <= COLOR_MENUBAR; ++number) {
    EXPECT_EQ(ShownColor(number), ::GetSysColor(number)) << number;
  }
}

class Win32DarkPaletteTest : public testing::Test {
 protected:
  static double Between(Color one, Color other) {
    return front::ContrastOf(FromSystem(one), FromSystem(other));
  }
  static constexpr double kForTexts = 7.0;
  static constexpr double kForWhatIsDisabled = 3.0;

  const ChosenMode mode{Brightness::kDark};
  const Color window = ShownColor(COLOR_BTNFACE);
  const Color field = ShownColor(COLOR_WINDOW);
  const Color text = ShownColor(COLOR_WINDOWTEXT);
  const Color stripe = StripeColor(field, text, Contrast::kUsual);
};

TEST_F(Win32DarkPaletteTest, EveryTextStandsOutFromItsGround) {
  const Ink selected = SelectionInk(SelectionOf::kListWithKeyboard, Contrast::kUsual);
  const Ink pale = SelectionInk(SelectionOf::kListWithoutKeyboard, Contrast::kUsual);
  EXPECT_GE(Between(field, text), kForTexts);
  EXPECT_GE(Between(window, ShownColor(COLOR_BTNTEXT)), kForTexts);
  EXPECT_GE(Between(stripe, text), kForTexts);
  EXPECT_GE(Between(field, FadedColor(field, text, Contrast::kUsual)), kForTexts);
  EXPECT_NE(FadedColor(field, text, Contrast::kUsual), text);
  EXPECT_GE(Between(selected.ground, selected.text), kForTexts);
  EXPECT_GE(Between(pale.ground, pale.text), kForTexts);
  EXPECT_GE(Between(ShownColor(COLOR_INFOBK), ShownColor(COLOR_INFOTEXT)), kForTexts);
  for (const PartState state : {PartState::kUsual, PartState::kPointedAt, PartState::kPressed}) {
    const Face face = FaceOf(state);
    EXPECT_GE(Between(face.ground, face.text), kForTexts) << static_cast<int>(state);
    const Color warning = WarningColor(face.ground, face.text, Contrast::kUsual);
    EXPECT_GE(Between(face.ground, warning), front::kContrastOfTexts);
    EXPECT_GT(GetRValue(warning), GetGValue(warning) + 60);
  }
}

TEST_F(Win32DarkPaletteTest, TextsOfWhatIsDisabledCanBeReadAndArePaler) {
  const Face face = FaceOf(PartState::kDisabled);
  for (const Color ground : {face.ground, window, field}) {
    EXPECT_GE(Between(ground, face.text), kForWhatIsDisabled);
    EXPECT_GE(Between(ground, ShownColor(COLOR_GRAYTEXT)), kForWhatIsDisabled);
    EXPECT_LT(Between(ground, face.text), Between(ground, text) / 2);
  }
}

TEST_F(Win32DarkPaletteTest, WhatIsNoTextStandsOutToo) {
  for (const Color ground : {window, field}) {
    EXPECT_GE(Between(ground, ShownColor(COLOR_WINDOWFRAME)), front::kContrastOfParts);
    EXPECT_GE(Between(ground, ShownColor(COLOR_HOTLIGHT)), front::kContrastOfParts);
    EXPECT_GE(Between(ground, FaceOf(PartState::kUsual).frame), front::kContrastOfParts);
    EXPECT_GE(Between(ground, ShownColor(COLOR_BTNSHADOW)), 1.5) << "a line that divides";
  }
  for (const Loudness one : {Loudness::kQuiet, Loudness::kLoud, Loudness::kVeryLoud})
    EXPECT_GE(Between(field, ColorOf(one, Contrast::kUsual)), front::kContrastOfParts);
  for (const controls::TextView name : {u"köln", u"bonn", u"radio", u"aachen", u"welle"}) {
    EXPECT_GE(Between(field, ToSystem(front::ColorOfName(name))), front::kContrastOfParts);
  }
}

TEST_F(Win32DarkPaletteTest, SelectionStripesAndButtonsCanBeToldApart) {
  const Ink selected = SelectionInk(SelectionOf::kListWithKeyboard, Contrast::kUsual);
  const Ink pale = SelectionInk(SelectionOf::kListWithoutKeyboard, Contrast::kUsual);
  EXPECT_GT(Between(stripe, field), 1.05);
  EXPECT_GT(Between(stripe, pale.ground), 1.25);
  EXPECT_GT(Between(pale.ground, selected.ground), 1.25);
  EXPECT_GT(Between(FaceOf(PartState::kUsual).ground, FaceOf(PartState::kPointedAt).ground), 1.15);
  EXPECT_GT(Between(FaceOf(PartState::kUsual).ground, FaceOf(PartState::kPressed).ground), 1.15);
}

class Win32DarkWindowTest : public Win32WindowTest {
 protected:
  void SetUp() override {
    label.SetCaption(u"Lautstärke");
    button.SetCaption(u"Knopf");
    list.AddColumn({u"Station", 200});
    list.AddRow({.cells = {u"Köln"}});
    list.Move({0, 1500, 8000, 3000});
    inventory = {
        {"button", &button, nullptr, {.menu = app::MenuEntry::kClick}}, {"label", &label}, {"list", &list}};
  }
  /// The window itself, where there is no control.
  [[nodiscard]] Color GroundShown() const {
    const Picture picture(window->Handle());
    RECT inside{};
    ::GetClientRect(window->Handle(), &inside);
    POINT corner{inside.right - 3, inside.bottom - 3};
    ::ClientToScreen(window->Handle(), &corner);
    RECT outer{};
    ::GetWindowRect(window->Handle(), &outer);
    return picture.At(static_cast<int>(corner.x - outer.left), static_cast<int>(corner.y - outer.top));
  }
  [[nodiscard]] bool IsAllDark() const {
    return GroundShown() == ShownColor(COLOR_BTNFACE) && IsDark(GroundShown()) &&
           IsDark(static_cast<Color>(::SendMessageW(Of(list), LVM_GETBKCOLOR, 0, 0)));
  }

  controls::Label label;
  controls::CommandButton button;
  controls::ListView list;
  const SystemMode system;
};

TEST_F(Win32DarkWindowTest, OpensDarkWithADarkTitleBar) {
  const ChosenMode mode(Brightness::kDark);
  Open();
  EXPECT_TRUE(IsAllDark());
  EXPECT_EQ(mode.title_bars, (std::map{std::pair(window->Handle(), Brightness::kDark)}));
}

std::vector<WPARAM> activity;
LRESULT CALLBACK WatchActivity(HWND top, UINT message, WPARAM w, LPARAM l, UINT_PTR /*id*/,
                               DWORD_PTR /*unused*/) {
  if (message == WM_NCACTIVATE) activity.push_back(w);
  return ::DefSubclassProc(top, message, w, l);
}

struct TitleBarColor {
  HWND window;
  DWORD attribute;
  BOOL dark;
  bool operator==(const TitleBarColor&) const = default;
};
std::vector<TitleBarColor> colored;
HRESULT coloring_result = S_OK;
HRESULT WINAPI ColorAsAsked(HWND window, DWORD attribute, LPCVOID value, DWORD size) {
  if (size == sizeof(BOOL)) colored.push_back({window, attribute, *static_cast<const BOOL*>(value)});
  return coloring_result;
}

/// While it lives: what the system is asked for, which succeeds, and what the window is sent for it.
class TitleBarRequests {
 public:
  explicit TitleBarRequests(HWND window) : window_(window) {
    colored.clear();
    coloring_result = S_OK;
    activity.clear();
    ::SetWindowSubclass(window_, WatchActivity, 9, 0);
  }
  ~TitleBarRequests() { ::RemoveWindowSubclass(window_, WatchActivity, 9); }
  TitleBarRequests(const TitleBarRequests&) = delete;
  TitleBarRequests& operator=(const TitleBarRequests&) = delete;

 private:
  HWND window_;
  const test_support::ReplacedImport<decltype(&DwmSetWindowAttribute)> function_{__imp_DwmSetWindowAttribute,
                                                                                 &ColorAsAsked};
};

TEST_F(Win32DarkWindowTest, TitleBarIsPaintedAgainAndStaysThatOfAnActiveWindow) {
  Open();
  ::SetActiveWindow(window->Handle());
  const TitleBarRequests requests(window->Handle());
  system.ColorTitleBar(window->Handle(), Brightness::kDark);
  system.ColorTitleBar(window->Handle(), Brightness::kLight);
  EXPECT_EQ(colored, (std::vector{TitleBarColor{window->Handle(), 20, TRUE},
                                  TitleBarColor{window->Handle(), 20, FALSE}}));
  EXPECT_EQ(::GetActiveWindow(), window->Handle());
  EXPECT_EQ(activity, (std::vector<WPARAM>{FALSE, TRUE, FALSE, TRUE}));
}

TEST_F(Win32DarkWindowTest, TitleBarOfASystemThatKnowsNoDarkOnesIsLeftAsItIs) {
  Open();
  ::SetActiveWindow(window->Handle());
  const TitleBarRequests requests(window->Handle());
  coloring_result = E_INVALIDARG;
  system.ColorTitleBar(window->Handle(), Brightness::kDark);
  EXPECT_EQ(colored.size(), 1U);
  EXPECT_TRUE(activity.empty());
}

TEST_F(Win32DarkWindowTest, TitleBarThatIsNotYetSeenIsNotPaintedAgain) {
  Open();
  ::ShowWindow(window->Handle(), SW_HIDE);
  const TitleBarRequests requests(window->Handle());
  system.ColorTitleBar(window->Handle(), Brightness::kDark);
  EXPECT_EQ(colored.size(), 1U);
  EXPECT_TRUE(activity.empty());
}

TEST_F(Win32DarkWindowTest, LightTitleBarIsLeftToTheSystem) {
  const ChosenMode mode(Brightness::kLight);
  Open();
  EXPECT_FALSE(IsAllDark());
  EXPECT_TRUE(mode.title_bars.empty());
}

TEST_F(Win32DarkWindowTest, UsersChoiceIsFollowedAtOnceAndBackToTheSamePicture) {
  ChosenMode mode(Brightness::kLight);
  Open();
  HWND const top = window->Handle();
  ::SetFocus(nullptr);
  const Picture light(top);
  mode.Choose(Brightness::kDark, top);
  EXPECT_TRUE(IsAllDark());
  EXPECT_EQ(mode.title_bars[top], Brightness::kDark);
  mode.Choose(Brightness::kLight, top);
  EXPECT_EQ(mode.title_bars[top], Brightness::kLight);
  const Picture again(top);
  int different = 0;
  for (int y = 0; y < light.Height(); ++y) {
    for (int x = 0; x < light.Width(); ++x) different += light.At(x, y) == again.At(x, y) ? 0 : 1;
  }
  EXPECT_EQ(different, 0);
}

TEST_F(Win32DarkWindowTest, EveryReportOfOtherColoursOrThemesIsFollowed) {
  ChosenMode mode(Brightness::kLight);
  Open();
  for (const UINT report : {WM_SYSCOLORCHANGE, WM_THEMECHANGED, WM_SETTINGCHANGE}) {
    mode.wanted = Brightness::kDark;
    ::SendMessageW(window->Handle(), report, 0, 0);
    EXPECT_TRUE(IsAllDark()) << report;
    mode.wanted = Brightness::kLight;
    ::SendMessageW(window->Handle(), report, 0, 0);
    EXPECT_FALSE(IsAllDark()) << report;
  }
}

TEST_F(Win32DarkWindowTest, HighContrastEndsTheDarkAndItsEndBringsItBack) {
  ChosenMode mode(Brightness::kDark);
  Open();
  mode.contrast = Contrast::kHigh;
  mode.Choose(Brightness::kDark, window->Handle());
  EXPECT_EQ(GroundShown(), ::GetSysColor(COLOR_BTNFACE));
  EXPECT_EQ(mode.title_bars[window->Handle()], Brightness::kLight);
  mode.contrast = Contrast::kUsual;
  mode.Choose(Brightness::kDark, window->Handle());
  EXPECT_TRUE(IsAllDark());
}

TEST_F(Win32DarkWindowTest, ChoiceIsFollowedWhileAMessageBoxIsOpen) {
  ChosenMode mode(Brightness::kLight);
  Open();
  Win32Dialogs dialogs(loop);
  dialogs.SetMainWindow(window->Handle());
  bool dark = false;
  const Once choose(
      *this, [this] { return OpenDialog() != nullptr; },
      [&] {
        mode.Choose(Brightness::kDark, window->Handle());
        dark = IsAllDark();
        ::PostMessageW(OpenDialog(), WM_COMMAND, IDCANCEL, 0);
      });
  static_cast<void>(dialogs.MessageBoxW(u"Frage", u"", kMbOkCancel));
  EXPECT_TRUE(dark);
}

TEST_F(Win32DarkWindowTest, ChoiceIsFollowedWhileTheMenuIsOpen) {
  ChosenMode mode(Brightness::kLight);
  Open();
  const auto in_menu = [] {
    HWND const menu = ::FindWindowW(L"#32768", nullptr);
    return menu != nullptr && ::IsWindowVisible(menu) != 0;
  };
  bool dark = false;
  const Once choose(*this, in_menu, [&] {
    mode.Choose(Brightness::kDark, window->Handle());
    dark = IsAllDark() && in_menu();
    ::EndMenu();
  });
  ::PostMessageW(window->Handle(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(Of(list)), MAKELPARAM(50, 90));
  ASSERT_TRUE(Until([&] { return choose.Done() && !in_menu(); }));
  EXPECT_TRUE(dark);
}

TEST_F(Win32DarkWindowTest, DialogAndItsOwnerFollowTogether) {
  ChosenMode mode(Brightness::kLight);
  Open();
  app::Form2 form2;
  bool dark = false;
  const Once choose(
      *this, [this] { return OpenDialog() != nullptr; },
      [&] {
        HWND const dialog = OpenDialog();
        // The system reports it to one window after the other.
        mode.Choose(Brightness::kDark, dialog);
        mode.Choose(Brightness::kDark, window->Handle());
        const Picture picture(dialog);
        dark = IsAllDark() && mode.title_bars[dialog] == Brightness::kDark &&
               picture.At(12, picture.Height() - 12) == ShownColor(COLOR_BTNFACE);
        form2.form.Close();
      });
  RunNewStationDialog(form2, window->Handle(), icons, loop);
  EXPECT_TRUE(dark);
  EXPECT_EQ(mode.title_bars[window->Handle()], Brightness::kDark);
}

TEST_F(Win32DarkWindowTest, DialogIsLikeItsOwnerThatWasNotYetToldOfAnotherChoice) {
  ChosenMode mode(Brightness::kLight);
  Open();
  app::Form2 form2;
  bool light = false;
  const Once look(
      *this, [this] { return OpenDialog() != nullptr; },
      [&] {
        const Picture picture(OpenDialog());
        light = !IsAllDark() && picture.At(12, picture.Height() - 12) == ::GetSysColor(COLOR_BTNFACE);
        form2.form.Close();
      });
  mode.wanted = Brightness::kDark;
  RunNewStationDialog(form2, window->Handle(), icons, loop);
  EXPECT_TRUE(light);
  EXPECT_TRUE(mode.title_bars.empty());
  mode.Choose(Brightness::kDark, window->Handle());
  EXPECT_TRUE(IsAllDark()) << "the report still comes";
}

}  // namespace
}  // namespace platform::win32
