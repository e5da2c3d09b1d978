// Where the keyboard goes when its control is disabled or hidden, and where it returns to.

#include "platform/win32/base/windows_api.h"

#include <thread>

#include "platform/win32/ui/dialogs.h"
#include "platform/win32/ui/undisturbed_shell.h"
#include "tests/platform/win32/ui/rig.h"

namespace platform::win32 {
namespace {

class Win32FocusTest : public Win32WindowTest {
 protected:
  void SetUp() override {
    inventory = {{"field", &field},
                 {"combo", &combo},
                 {"button", &button},
                 {"frame", &frame},
                 {"inner", &inner, &frame},
                 {"last", &last},
                 {"help", &help, nullptr, {.key = controls::kHelpKey}}};
    help.SetLook(controls::ButtonLook::kNone);
    Open();
    dialogs.SetMainWindow(window->Handle());
  }
  void Focus(const controls::Control& control) const { ::SetFocus(Of(control)); }
  bool HasFocus(const controls::Control& control) const { return ::GetFocus() == Of(control); }
  /// As the system reports a key to the active window while no window of the thread has the keyboard.
  void PressWithoutFocus(WPARAM key) const {
    ::PostMessageW(window->Handle(), WM_SYSKEYDOWN, key, 1);
    ::PostMessageW(window->Handle(), WM_SYSKEYUP, key, 0xC0000001);
  }
  /// As the system takes the keyboard from a window that is disabled, before it reports it inactive. Wine
  /// does not.
  void LoseFocusWhenDisabled() const {
    const auto lose = [](HWND handle, UINT message, WPARAM w, LPARAM l, UINT_PTR, DWORD_PTR) -> LRESULT {
      if (message == WM_ENABLE && w == FALSE) ::SetFocus(nullptr);
      return ::DefSubclassProc(handle, message, w, l);
    };
    ::SetWindowSubclass(window->Handle(), lose, 1, 0);
  }
  /// While a box is open over the window.
  void InsideABox(const std::function<void()>& act) {
    const Once answer(
        *this, [this] { return OpenDialog() != nullptr; },
        [this, &act] {
          act();
          ::PostMessageW(OpenDialog(), WM_COMMAND, IDOK, 0);
        });
    dialogs.MessageBoxW(u"Hinweis", u"", kMbOk);
    loop.ProcessPendingMessages();
  }

  Win32Dialogs dialogs{loop};
  controls::TextBox field;
  controls::ComboBox combo;
  controls::CommandButton button;
  controls::Frame frame;
  controls::CommandButton inner;
  controls::CommandButton last;
  controls::CommandButton help;
};

TEST_F(Win32FocusTest, DisabledControlHandsTheKeyboardToTheNextThatIsReady) {
  combo.SetEnabled(false);
  Focus(field);
  field.SetEnabled(false);
  EXPECT_TRUE(HasFocus(button));
  last.SetVisible(false);
  Focus(inner);
  inner.SetEnabled(false);
  EXPECT_TRUE(HasFocus(button)) << "behind the last one comes the first";
}

TEST_F(Win32FocusTest, HiddenControlHandsTheKeyboardOnAlsoThatOfAPartOfIt) {
  Focus(button);
  button.SetVisible(false);
  EXPECT_TRUE(HasFocus(inner));
  frame.SetVisible(false);
  EXPECT_TRUE(HasFocus(last)) << "what was inside the frame is gone with it";
  ::SetFocus(::GetWindow(Of(combo), GW_CHILD));
  combo.SetEnabled(false);
  EXPECT_TRUE(HasFocus(last));
}

TEST_F(Win32FocusTest, ControlsWithoutTheKeyboardLeaveItWhereItIs) {
  Focus(field);
  button.SetEnabled(false);
  last.SetVisible(false);
  EXPECT_TRUE(HasFocus(field));
}

TEST_F(Win32FocusTest, WindowTakesTheKeyboardWhenNoControlIsReadyAndKeepsItsKeys) {
  int clicks = 0;
  const auto count = help.Clicked.Subscribe([&] { ++clicks; });
  Focus(field);
  for (controls::Control* one :
       {static_cast<controls::Control*>(&combo), static_cast<controls::Control*>(&button),
        static_cast<controls::Control*>(&inner), static_cast<controls::Control*>(&last),
        static_cast<controls::Control*>(&field)})
    one->SetEnabled(false);
  EXPECT_EQ(::GetFocus(), window->Handle());
  PressKey(window->Handle(), VK_F1);
  EXPECT_TRUE(Until([&] { return clicks == 1; }));
  button.SetEnabled(true);
  PressKey(window->Handle(), VK_TAB);
  EXPECT_TRUE(Until([&] { return HasFocus(button); }));
}

TEST_F(Win32FocusTest, KeysWorkWhileNoWindowHasTheKeyboard) {
  int clicks = 0;
  const auto count = help.Clicked.Subscribe([&] { ++clicks; });
  ::SetFocus(nullptr);
  PressWithoutFocus(VK_F1);
  EXPECT_TRUE(Until([&] { return clicks == 1; }));
  PressWithoutFocus(VK_TAB);
  EXPECT_TRUE(Until([&] { return HasFocus(field); }));
}

TEST_F(Win32FocusTest, EscapeEndsAWaitWhileNoWindowHasTheKeyboard) {
  bool ended = false;
  const auto wait = button.Clicked.Subscribe([&] {
    button.SetEnabled(false);
    ::SetFocus(nullptr);
    PressWithoutFocus(VK_ESCAPE);
    loop.ProcessPaintMessages();
    ended = loop.InputEndsWait();
  });
  ::PostMessageW(Of(button), BM_CLICK, 0, 0);
  EXPECT_TRUE(Until([&] { return ended; }));
}

TEST_F(Win32FocusTest, KeyWithAltIsNoneOfTheForms) {
  int clicks = 0;
  const auto count = help.Clicked.Subscribe([&] { ++clicks; });
  constexpr LPARAM kWithAlt = 1 << 29;
  ::PostMessageW(Of(field), WM_SYSKEYDOWN, VK_F1, 1 | kWithAlt);
  loop.ProcessPendingMessages();
  loop.ProcessPendingMessages();
  EXPECT_EQ(clicks, 0);
}

TEST_F(Win32FocusTest, BoxGivesTheKeyboardBackToTheControlThatHadIt) {
  Focus(button);
  InsideABox([] {});
  EXPECT_TRUE(HasFocus(button));
}

TEST_F(Win32FocusTest, ControlThatWasDisabledOrHiddenMeanwhileDoesNotGetTheKeyboardBack) {
  Focus(button);
  InsideABox([this] { button.SetEnabled(false); });
  EXPECT_TRUE(HasFocus(field));
  Focus(last);
  InsideABox([this] { last.SetVisible(false); });
  EXPECT_TRUE(HasFocus(field));
}

TEST_F(Win32FocusTest, BoxGivesTheKeyboardBackThoughItsOwnerLostItBefore) {
  LoseFocusWhenDisabled();
  Focus(last);
  InsideABox([] {});
  EXPECT_TRUE(HasFocus(last));
}

/// Asks the user in a box of its own, which the system shows over the window.
class BoxShell final : public Shell {
 public:
  explicit BoxShell(HWND owner) : owner_(owner) {}
  bool ShellExecuteW(std::uint32_t, const Text&, const Text&, const Text&, const Text&,
                     std::int32_t) override {
    return ::MessageBoxW(owner_, L"", L"", MB_OK) == IDOK;
  }

 private:
  HWND owner_;
};

TEST_F(Win32FocusTest, WhatTheSystemAsksGivesTheKeyboardBackThoughItsOwnerLostItBefore) {
  Focus(field);
  InsideABox([] {});
  LoseFocusWhenDisabled();
  Focus(last);
  BoxShell box(window->Handle());
  // No timer of the window ticks inside the call.
  std::thread answer([this] {
    while (OpenDialog() == nullptr) ::Sleep(1);
    ::PostMessageW(OpenDialog(), WM_COMMAND, IDOK, 0);
  });
  EXPECT_TRUE(UndisturbedShell(box, loop).ShellExecuteW(0, u"", u"", u"", u"", 0));
  answer.join();
  loop.ProcessPendingMessages();
  EXPECT_TRUE(HasFocus(last));
}

TEST_F(Win32FocusTest, DialogGivesTheKeyboardBackThoughItsOwnerLostItBefore) {
  LoseFocusWhenDisabled();
  Focus(last);
  app::Form2 form2;
  const Once close(
      *this, [this] { return OpenDialog() != nullptr; }, [&form2] { form2.form.Close(); });
  RunNewStationDialog(form2, window->Handle(), icons, loop);
  loop.ProcessPendingMessages();
  EXPECT_TRUE(HasFocus(last));
}

}  // namespace
}  // namespace platform::win32
