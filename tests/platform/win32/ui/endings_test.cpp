// The window's end, asked for by the user or the system while a menu, a box or a dialog is open.

#include "platform/win32/base/windows_api.h"

#include <array>
#include <optional>
#include <thread>

#include "platform/win32/ui/dialogs.h"
#include "platform/win32/ui/list_menu.h"
#include "platform/win32/ui/start_requests.h"
#include "tests/platform/win32/ui/rig.h"

namespace platform::win32 {
namespace {

/// The menu that is open; null for none.
HMENU OpenMenu() {
  constexpr UINT kMenuOfWindow = 0x01E1;  // MN_GETHMENU
  HWND const menu = ::FindWindowW(L"#32768", nullptr);
  if (menu == nullptr || ::IsWindowVisible(menu) == 0) return nullptr;
  return reinterpret_cast<HMENU>(::SendMessageW(menu, kMenuOfWindow, 0, 0));
}

class Win32EndingsTest : public Win32WindowTest {
 protected:
  void SetUp() override {
    list.AddColumn({u"Station", 200});
    list.AddRow({.cells = {u"Köln"}});
    list.AddRow({.cells = {u"Bonn"}});
    list.Move({0, 0, 8000, 4000});
    button.SetCaption(u"Knopf");
    inventory = {{"list", &list},
                 {"button", &button, nullptr, {.menu = app::MenuEntry::kClick}},
                 {"row", &row, nullptr, {.menu = app::MenuEntry::kDeleteRow}}};
    row.SetCaption(u"Löschen");
    Open();
    dialogs.SetMainWindow(window->Handle());
  }
  void TearDown() override { ForgetLeaving(); }
  void AskForMenu() const {
    ::PostMessageW(window->Handle(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(Of(list)), MAKELPARAM(50, 90));
  }
  void RunUntilClosed() {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    const auto is_late = [end] { return std::chrono::steady_clock::now() > end; };
    const Once leave(*this, is_late, [] {
      ADD_FAILURE() << "something is still open";
      ::EndMenu();
      Win32MessageLoop::LeaveAll();
    });
    RunWindow(*window, form, loop);
  }
  std::function<void()> Post(UINT message, WPARAM w = 0) const {
    return [handle = window->Handle(), message, w] { ::PostMessageW(handle, message, w, 0); };
  }

  Win32Dialogs dialogs{loop};
  controls::ListView list;
  controls::CommandButton button;
  controls::CommandButton row;
};

TEST_F(Win32EndingsTest, ClosingEndsAMenu) {
  AskForMenu();
  const Once close(
      *this, [] { return OpenMenu() != nullptr; }, Post(WM_CLOSE));
  RunUntilClosed();
  EXPECT_TRUE(form.IsClosed());
  EXPECT_EQ(OpenMenu(), nullptr);
}

TEST_F(Win32EndingsTest, MenuOpensAgainAfterItWasLeft) {
  AskForMenu();
  const Once leave(
      *this, [] { return OpenMenu() != nullptr; }, [] { ::EndMenu(); });
  ASSERT_TRUE(Until([&] { return leave.Done() && OpenMenu() == nullptr; }));
  AskForMenu();
  const Once close(
      *this, [] { return OpenMenu() != nullptr; }, Post(WM_CLOSE));
  RunUntilClosed();
  EXPECT_TRUE(close.Done());
}

TEST_F(Win32EndingsTest, WindowIsShownForItsLoopUnlessItHasClosedAlready) {
  ::ShowWindow(window->Handle(), SW_HIDE);
  const Once close(
      *this, [this] { return ::IsWindowVisible(window->Handle()) != 0; }, Post(WM_CLOSE));
  RunUntilClosed();
  EXPECT_TRUE(close.Done());
  RunUntilClosed();
  EXPECT_FALSE(::IsWindowVisible(window->Handle()) != 0);
  app::Form2 form2;
  form2.form.SetInSight(false);
  form2.form.Close();
  RunNewStationDialog(form2, window->Handle(), icons, loop);
  EXPECT_FALSE(form2.form.InSight());
}

TEST_F(Win32EndingsTest, QuestionOfTheClosingIsAskedThoughAMenuWasOpen) {
  MessageBoxAnswer answer{};
  const auto ask = form.QueryUnload.Subscribe([&] {
    EXPECT_EQ(OpenMenu(), nullptr);
    answer = dialogs.MessageBoxW(u"Speichern?", u"", kMbYesNo);
  });
  AskForMenu();
  const Once close(
      *this, [] { return OpenMenu() != nullptr; }, Post(WM_CLOSE));
  const Once say_no(
      *this, [this] { return OpenDialog() != nullptr; },
      [this] { ::PostMessageW(OpenDialog(), WM_COMMAND, IDNO, 0); });
  RunUntilClosed();
  EXPECT_EQ(answer, MessageBoxAnswer::kNo);
}

TEST_F(Win32EndingsTest, SessionsEndEndsAMenu) {
  AskForMenu();
  const Once end(
      *this, [] { return OpenMenu() != nullptr; }, Post(WM_ENDSESSION, TRUE));
  RunUntilClosed();
  EXPECT_EQ(form.Reason(), controls::CloseReason::kSessionEnd);
}

TEST_F(Win32EndingsTest, MenuFollowsItsControlsAndItsRowWhileItIsOpen) {
  list.Select(list.RowAt(0));
  loop.ProcessPendingMessages();
  AskForMenu();
  std::array<int, 4> counts{};
  bool enabled_before = false;
  bool enabled_after = true;
  const auto enabled = [](int position) {
    return (::GetMenuState(OpenMenu(), static_cast<UINT>(position), MF_BYPOSITION) & MF_GRAYED) == 0;
  };
  const Once change(
      *this, [] { return OpenMenu() != nullptr; },
      [&] {
        counts[0] = ::GetMenuItemCount(OpenMenu());
        enabled_before = enabled(0) && enabled(1);
        button.SetEnabled(false);
        EXPECT_FALSE(enabled(0));
        button.SetVisible(false);
        counts[1] = ::GetMenuItemCount(OpenMenu());
        button.SetEnabled(true);
        button.SetVisible(true);
        EXPECT_TRUE(enabled(0));
        counts[2] = ::GetMenuItemCount(OpenMenu());
        list.RemoveRow(list.RowAt(0));
        enabled_after = enabled(1);
        Post(WM_CLOSE)();
      });
  RunUntilClosed();
  EXPECT_EQ(counts, (std::array{2, 1, 2, 0}));
  EXPECT_TRUE(enabled_before);
  EXPECT_FALSE(enabled_after) << "the row is gone";
}

TEST_F(Win32EndingsTest, WindowUnderABoxDoesNotCloseAndIsNotAskedLater) {
  const Once close(
      *this, [this] { return OpenDialog() != nullptr; },
      [this] {
        ::SendMessageW(window->Handle(), WM_CLOSE, 0, 0);
        ::PostMessageW(OpenDialog(), WM_COMMAND, IDOK, 0);
      });
  const auto show = button.Clicked.Subscribe([this] { dialogs.MessageBoxW(u"Hinweis", u"", kMbOk); });
  ::PostMessageW(Of(button), BM_CLICK, 0, 0);
  ASSERT_TRUE(Until([&] { return close.Done() && OpenDialog() == nullptr; }));
  loop.ProcessPendingMessages();
  EXPECT_FALSE(form.Closing());
}

TEST_F(Win32EndingsTest, SessionsEndDismissesABoxAndTheWindowsLoopEnds) {
  std::optional<MessageBoxAnswer> answer;
  const auto show = button.Clicked.Subscribe(
      [&] { answer = dialogs.MessageBoxW(u"Wirklich?", u"", kMbYesNoCancel | kMbIconQuestion); });
  ::PostMessageW(Of(button), BM_CLICK, 0, 0);
  const Once end(
      *this, [this] { return OpenDialog() != nullptr; }, Post(WM_ENDSESSION, TRUE));
  RunUntilClosed();
  EXPECT_TRUE(form.IsClosed());
  EXPECT_EQ(answer, MessageBoxAnswer::kCancel);
}

TEST_F(Win32EndingsTest, SessionsEndInsideTheClosingQuestionCompletesTheClosing) {
  std::optional<MessageBoxAnswer> answer;
  const auto ask =
      form.QueryUnload.Subscribe([&] { answer = dialogs.MessageBoxW(u"Speichern?", u"", kMbYesNoCancel); });
  Post(WM_CLOSE)();
  const Once end(
      *this, [this] { return OpenDialog() != nullptr; }, Post(WM_ENDSESSION, TRUE));
  RunUntilClosed();
  EXPECT_EQ(answer, MessageBoxAnswer::kCancel);
  EXPECT_TRUE(form.IsClosed());
  EXPECT_EQ(form.Reason(), controls::CloseReason::kSessionEnd);
}

TEST_F(Win32EndingsTest, SessionsEndLeavesTheFileDialogWithoutAChoice) {
  std::optional<bool> chosen;
  OpenFileName wanted;
  wanted.file = Text(300, u'\0');
  const auto show = button.Clicked.Subscribe([&] { chosen = dialogs.GetOpenFileNameW(wanted); });
  ::PostMessageW(Of(button), BM_CLICK, 0, 0);
  const Once end(
      *this, [this] { return OpenDialog() != nullptr; }, Post(WM_ENDSESSION, TRUE));
  RunUntilClosed();
  EXPECT_EQ(chosen, false);
  EXPECT_TRUE(form.IsClosed());
  EXPECT_EQ(wanted.file, Text(300, u'\0'));
}

TEST_F(Win32EndingsTest, SessionsEndLeavesTheNewStationDialog) {
  bool returned = false;
  const auto show = button.Clicked.Subscribe([&] {
    app::Form2 form2;
    RunNewStationDialog(form2, window->Handle(), icons, loop);
    returned = true;
  });
  ::PostMessageW(Of(button), BM_CLICK, 0, 0);
  const Once end(
      *this, [this] { return OpenDialog() != nullptr; }, Post(WM_ENDSESSION, TRUE));
  RunUntilClosed();
  EXPECT_TRUE(returned);
  EXPECT_TRUE(form.IsClosed());
}

TEST_F(Win32EndingsTest, SessionsEndInAWaitThatOnlyPaintsTakesEffectAfterIt) {
  bool closed_inside = true;
  bool ended_wait = false;
  const auto paint = row.Clicked.Subscribe([&] {
    ::PostMessageW(window->Handle(), WM_ENDSESSION, TRUE, 0);
    loop.ProcessPaintMessages();
    closed_inside = form.Closing();
    ended_wait = loop.InputEndsWait();
  });
  ::PostMessageW(Of(row), BM_CLICK, 0, 0);
  RunUntilClosed();
  EXPECT_FALSE(closed_inside);
  EXPECT_TRUE(ended_wait);
  EXPECT_TRUE(form.IsClosed());
}

TEST_F(Win32EndingsTest, QuestionWhetherTheSessionMayEndEndsAWaitSoThatItsEndClosesAtOnce) {
  HANDLE const unwound = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
  LRESULT may_end = FALSE;
  bool closed_when_answered = false;
  std::thread system;
  const auto wait = row.Clicked.Subscribe([&] {
    // The system asks all programs before it ends them.
    system = std::thread([&, handle = window->Handle()] {
      may_end = ::SendMessageW(handle, WM_QUERYENDSESSION, 0, 0);
      ::WaitForSingleObject(unwound, 10'000);
      ::SendMessageW(handle, WM_ENDSESSION, TRUE, 0);
      closed_when_answered = form.IsClosed();
    });
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (!loop.InputEndsWait() && std::chrono::steady_clock::now() < end) {
      loop.ProcessPaintMessages();
      ::Sleep(1);
    }
    EXPECT_TRUE(loop.InputEndsWait());
    EXPECT_FALSE(form.Closing()) << "it may not end after all";
    ::SetEvent(unwound);
  });
  ::PostMessageW(Of(row), BM_CLICK, 0, 0);
  RunUntilClosed();
  ASSERT_TRUE(system.joinable());
  system.join();
  ::CloseHandle(unwound);
  EXPECT_EQ(may_end, TRUE);
  EXPECT_TRUE(closed_when_answered);
}

TEST_F(Win32EndingsTest, SessionThatDoesNotEndAfterAllLeavesTheWindowOpen) {
  EXPECT_EQ(::SendMessageW(window->Handle(), WM_QUERYENDSESSION, 0, 0), TRUE);
  ::SendMessageW(window->Handle(), WM_ENDSESSION, FALSE, 0);
  loop.ProcessPendingMessages();
  EXPECT_FALSE(form.Closing());
}

TEST_F(Win32EndingsTest, ClosingInsideAMenusCommandIsThatOfTheUser) {
  const auto close = button.Clicked.Subscribe([this] { form.Close(); });
  AskForMenu();
  const Once choose(
      *this, [] { return OpenMenu() != nullptr; },
      [] {
        HWND const menu = ::FindWindowW(L"#32768", nullptr);
        ::PostMessageW(menu, WM_KEYDOWN, VK_DOWN, 1);
        ::PostMessageW(menu, WM_KEYDOWN, VK_RETURN, 1);
      });
  RunUntilClosed();
  EXPECT_TRUE(form.IsClosed());
}

/// Later starts of the program.
struct Starts final : StartRequests {
  int Descriptor() const override { return -1; }
  std::optional<StartRequest> Next() override {
    if (pending.empty()) return std::nullopt;
    StartRequest next = pending.back();
    pending.pop_back();
    return next;
  }
  void Accept() override { ++accepted; }
  std::vector<StartRequest> pending;
  int accepted = 0;
};

TEST_F(Win32EndingsTest, LaterStartBringsTheMinimisedWindowToTheFrontAndOpensWhatItWasGiven) {
  ::ShowWindow(window->Handle(), SW_MINIMIZE);
  Starts starts;
  starts.pending = {{{}, "http://radio.example/"}};
  std::vector<std::string> opened;
  ServeStartRequests(starts, form, *window, [&](const std::string& given) { opened.push_back(given); });
  EXPECT_EQ(starts.accepted, 1);
  EXPECT_EQ(opened, std::vector<std::string>{"http://radio.example/"});
  EXPECT_FALSE(::IsIconic(window->Handle()) != 0);
  EXPECT_EQ(::GetForegroundWindow(), window->Handle());
}

TEST_F(Win32EndingsTest, LaterStartIsRefusedOnceTheWindowHasClosed) {
  form.Close();
  Starts starts;
  starts.pending = {{}};
  ServeStartRequests(starts, form, *window, nullptr);
  EXPECT_EQ(starts.accepted, 0);
}

TEST_F(Win32EndingsTest, LaterStartShowsTheClosingQuestionButOpensNothingUnderIt) {
  Starts starts;
  const auto ask = form.QueryUnload.Subscribe([&] { dialogs.MessageBoxW(u"Speichern?", u"", kMbYesNo); });
  std::vector<std::string> opened;
  const auto open = [&](const std::string& given) { opened.push_back(given); };
  Post(WM_CLOSE)();
  const Once start(
      *this, [this] { return OpenDialog() != nullptr; },
      [&] {
        starts.pending = {{{}, "http://radio.example/"}};
        ServeStartRequests(starts, form, *window, open);
        EXPECT_EQ(starts.accepted, 0) << "it is to take the place of the copy that ends";
        starts.pending = {{}};
        ServeStartRequests(starts, form, *window, open);
        EXPECT_EQ(starts.accepted, 1);
        EXPECT_EQ(::GetForegroundWindow(), OpenDialog());
        ::PostMessageW(OpenDialog(), WM_COMMAND, IDNO, 0);
      });
  RunUntilClosed();
  EXPECT_TRUE(opened.empty());
}

}  // namespace
}  // namespace platform::win32
