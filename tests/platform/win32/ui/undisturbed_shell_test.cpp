#include "platform/win32/ui/undisturbed_shell.h"

#include "platform/win32/base/windows_api.h"

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/platform/win32/ui/rig.h"

namespace platform::win32 {
namespace {

/// Handles the thread's messages inside each call, as the system does while it shows a dialog.
class AskingShell final : public Shell {
 public:
  bool ShellExecuteW(std::uint32_t owner, const Text& verb, const Text& file, const Text& parameters,
                     const Text& folder, std::int32_t show) override {
    called_with = {Text(1, static_cast<char16_t>(u'0' + owner)), verb, file, parameters, folder,
                   Text(1, static_cast<char16_t>(u'0' + show))};
    while (!answered()) {
      MSG message{};
      while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) ::DispatchMessageW(&message);
      ::Sleep(1);
    }
    return starts;
  }

  std::function<bool()> answered = [] { return true; };
  bool starts = true;
  std::vector<Text> called_with;
};

class UndisturbedShellTest : public Win32WindowTest {
 protected:
  bool Call() { return shell.ShellExecuteW(1, u"open", u"a.exe", u"-x", u"C:\\", 5); }
  /// True when no message is left to this window.
  static bool IsHandled(HWND target, UINT message) {
    MSG waiting{};
    return ::PeekMessageW(&waiting, target, message, message, PM_NOREMOVE) == 0;
  }

  AskingShell asking;
  UndisturbedShell shell{asking, loop};
  controls::CommandButton button;
  controls::Timer timer;
  const Lifetime lifetime;
};

TEST_F(UndisturbedShellTest, InputInsideTheCallWaitsForItsEnd) {
  inventory = {{"button", &button}};
  Open();
  int clicks = 0;
  int clicks_inside = -1;
  const auto count = button.Clicked.Subscribe([&] { ++clicks; });
  asking.answered = [this] { return IsHandled(Of(button), BM_CLICK); };
  loop.HandOver(lifetime, [&] {
    ::PostMessageW(Of(button), BM_CLICK, 0, 0);
    Call();
    clicks_inside = clicks;
  });
  EXPECT_TRUE(Until([&] { return clicks == 1; }));
  EXPECT_EQ(clicks_inside, 0);
}

TEST_F(UndisturbedShellTest, ATimerDoesNotTickInsideTheCall) {
  inventory = {{"timer", &timer}};
  Open();
  int ticks = 0;
  const auto count = timer.Ticked.Subscribe([&] { ++ticks; });
  timer.SetInterval(10);
  timer.SetEnabled(true);
  const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(200);
  asking.answered = [end] { return std::chrono::steady_clock::now() > end; };
  Call();
  EXPECT_EQ(ticks, 0);
  EXPECT_TRUE(Until([&] { return ticks > 0; }));
}

TEST_F(UndisturbedShellTest, ClosingInsideTheCallWaitsForItsEnd) {
  Open();
  bool asked = false;
  const auto ask = form.QueryUnload.Subscribe([&] { asked = true; });
  asking.answered = [this] { return IsHandled(window->Handle(), WM_CLOSE); };
  ::PostMessageW(window->Handle(), WM_CLOSE, 0, 0);
  Call();
  EXPECT_FALSE(asked);
  EXPECT_TRUE(Until([&] { return asked; }));
}

TEST_F(UndisturbedShellTest, ACallThatFailsByAnExceptionLeavesTheLoopAsItWas) {
  inventory = {{"button", &button}};
  Open();
  asking.answered = []() -> bool { throw std::runtime_error("no answer"); };
  EXPECT_THROW(Call(), std::runtime_error);
  EXPECT_FALSE(loop.PaintingOnly());
}

TEST_F(UndisturbedShellTest, TheCallIsPassedOnWithItsResult) {
  EXPECT_TRUE(Call());
  EXPECT_EQ(asking.called_with, (std::vector<Text>{u"1", u"open", u"a.exe", u"-x", u"C:\\", u"5"}));
  asking.starts = false;
  EXPECT_FALSE(Call());
}

}  // namespace
}  // namespace platform::win32
