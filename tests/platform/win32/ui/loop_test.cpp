#include "platform/win32/base/windows_api.h"

#include "platform/win32/ui/dialogs.h"
#include "platform/win32/ui/drop_target.h"
#include "platform/win32/ui/media_keys.h"
#include "platform/win32/ui/shown_text.h"
#include "platform/win32/ui/timer_binding.h"
#include "platform/win32/ui/turns.h"
#include "tests/platform/win32/ui/rig.h"

namespace platform::win32 {
namespace {

class Win32LoopTest : public Win32WindowTest {
 protected:
  controls::CommandButton button;
  controls::CommandButton stop;
  controls::Timer timer;
};

TEST_F(Win32LoopTest, InputWaitsWhileOnlyPaintingIsAllowed) {
  inventory = {{"button", &button}};
  Open();
  int clicks = 0;
  const auto count = button.Clicked.Subscribe([&] { ++clicks; });
  ::PostMessageW(Of(button), BM_CLICK, 0, 0);
  loop.ProcessPaintMessages();
  loop.ProcessPaintMessages();
  EXPECT_EQ(clicks, 0);
  EXPECT_FALSE(loop.InputEndsWait());
  EXPECT_TRUE(Until([&] { return clicks == 1; }));
}

TEST_F(Win32LoopTest, MarkedControlEndsAWait) {
  stop.SetEndsWaiting(true);
  inventory = {{"stop", &stop}};
  Open();
  ::PostMessageW(Of(stop), BM_CLICK, 0, 0);
  loop.ProcessPaintMessages();
  EXPECT_TRUE(loop.InputEndsWait());
  loop.ProcessPendingMessages();
  EXPECT_FALSE(loop.InputEndsWait());
}

TEST_F(Win32LoopTest, EscapeEndsTheWaitOfTheProcedureThatRuns) {
  inventory = {{"button", &button}};
  Open();
  bool before = true;
  bool after = false;
  const auto wait = button.Clicked.Subscribe([&] {
    before = loop.InputEndsWait();
    ::PostMessageW(Of(button), WM_KEYDOWN, VK_ESCAPE, 1);
    loop.ProcessPaintMessages();
    after = loop.InputEndsWait();
  });
  ::SendMessageW(Of(button), BM_CLICK, 0, 0);
  EXPECT_TRUE(Until([&] { return after; }));
  EXPECT_FALSE(before);
  EXPECT_FALSE(loop.InputEndsWait());
}

TEST_F(Win32LoopTest, EscapeIsDownUntilItIsReleased) {
  Open();
  const auto is_down = [this] { return loop.GetAsyncKeyState(kVkEscape) < 0; };
  ::PostMessageW(window->Handle(), WM_KEYDOWN, VK_ESCAPE, 1);
  loop.ProcessPendingMessages();
  EXPECT_TRUE(is_down());
  ::PostMessageW(window->Handle(), WM_KEYUP, VK_ESCAPE, 0xC0000001);
  loop.ProcessPendingMessages();
  EXPECT_FALSE(is_down());
}

TEST_F(Win32LoopTest, TypedKeyIsALetter) {
  controls::TextBox field;
  inventory = {{"field", &field}};
  Open();
  PressKey(Of(field), 'A');
  EXPECT_TRUE(Until([&] { return field.GetText() == u"a"; }));
  window.reset();
}

TEST_F(Win32LoopTest, WhatWasQueuedForSomethingThatIsGoneIsDropped) {
  bool ran = false;
  bool later_ran = false;
  const Lifetime lasting;
  {
    const Lifetime ending;
    loop.HandOver(
        ending, [&] { ran = true; }, OnWait::kEndsWait);
    EXPECT_TRUE(loop.InputEndsWait());
  }
  EXPECT_FALSE(loop.InputEndsWait());
  loop.HandOver(lasting, [&] { later_ran = true; });
  EXPECT_TRUE(Until([&] { return later_ran; }));
  EXPECT_FALSE(ran);
}

TEST_F(Win32LoopTest, LeavingAllLoopsOutlastsAWaitThatHandlesMessages) {
  Win32MessageLoop::LeaveAll();
  loop.ProcessPendingMessages();
  MSG message{};
  EXPECT_TRUE(::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_NOREMOVE) != 0);
  ForgetLeaving();
}

TEST_F(Win32LoopTest, TicksAreDroppedWhileOnlyPaintingIsAllowed) {
  inventory = {{"timer", &timer}};
  Open();
  int ticks = 0;
  const auto count = timer.Ticked.Subscribe([&] { ++ticks; });
  timer.SetInterval(10);
  timer.SetEnabled(true);
  EXPECT_TRUE(Until([&] { return ticks > 1; }));
  const int before = ticks;
  for (int slice = 0; slice < 20; ++slice) {
    ::Sleep(5);
    loop.ProcessPaintMessages();
  }
  EXPECT_EQ(ticks, before);
  timer.SetTicksWhilePainting(true);
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(5);
  while (ticks == before && std::chrono::steady_clock::now() < end) loop.ProcessPaintMessages();
  EXPECT_GT(ticks, before);
}

TEST_F(Win32LoopTest, CloseButtonClosesTheFormFromTheLoop) {
  Open();
  ::SendMessageW(window->Handle(), WM_CLOSE, 0, 0);
  EXPECT_FALSE(form.Closing());
  EXPECT_TRUE(loop.InputEndsWait());
  EXPECT_TRUE(Until([&] { return form.IsClosed(); }));
  EXPECT_EQ(form.Reason(), controls::CloseReason::kUser);
  EXPECT_FALSE(::IsWindowVisible(window->Handle()));
}

TEST_F(Win32LoopTest, EndOfTheSessionClosesTheFormAtOnceAndAsksNothing) {
  Open();
  EXPECT_TRUE(::SendMessageW(window->Handle(), WM_QUERYENDSESSION, 0, 0));
  EXPECT_FALSE(form.Closing());
  ::SendMessageW(window->Handle(), WM_ENDSESSION, TRUE, 0);
  EXPECT_TRUE(form.IsClosed());
  EXPECT_EQ(form.Reason(), controls::CloseReason::kSessionEnd);
}

TEST_F(Win32LoopTest, ResizeReachesTheFormInTwips) {
  Open();
  RECT outer{};
  ::GetWindowRect(window->Handle(), &outer);
  ::SetWindowPos(window->Handle(), nullptr, 0, 0, outer.right - outer.left + 40, outer.bottom - outer.top,
                 SWP_NOMOVE | SWP_NOZORDER);
  EXPECT_NEAR(form.GetPlace().width, 9000 + window->GetScale().Twips(40), 30);
}

TEST_F(Win32LoopTest, WishFromOutsideHasItsTurnUnlessADialogBlocksTheWindow) {
  Open();
  Win32Turns turns(loop);
  turns.SetMainWindow(window->Handle());
  int dropped = 0;
  int ran = 0;
  ::EnableWindow(window->Handle(), FALSE);
  turns.HandOver([&] { ++dropped; }, TurnOnWait::kWaits, TurnWhenBlocked::kIsDropped);
  turns.HandOver([&] { ++ran; }, TurnOnWait::kWaits, TurnWhenBlocked::kRuns);
  EXPECT_TRUE(Until([&] { return ran == 1; }));
  EXPECT_EQ(dropped, 0);
  ::EnableWindow(window->Handle(), TRUE);
}

TEST_F(Win32LoopTest, MediaKeyReachesItsReceiver) {
  struct Receiver final : MediaReceiver {
    void Receive(MediaCommand command) override { commands.push_back(command); }
    void ReceiveVolume(int) override {}
    std::vector<MediaCommand> commands;
  };
  Receiver receiver;
  Win32MediaKeys keys;
  keys.Appear(receiver);
  Open();
  window->ReportMediaKeys([&keys](int key, KeyboardIn keyboard) { return keys.Press(key, keyboard); });
  const auto press = [this](int key) {
    return ::SendMessageW(window->Handle(), WM_APPCOMMAND, 0, MAKELPARAM(0, FAPPCOMMAND_KEY | key));
  };
  for (const int key : {APPCOMMAND_MEDIA_PLAY, APPCOMMAND_MEDIA_PAUSE, APPCOMMAND_MEDIA_PLAY_PAUSE,
                        APPCOMMAND_MEDIA_STOP, APPCOMMAND_MEDIA_NEXTTRACK, APPCOMMAND_MEDIA_PREVIOUSTRACK,
                        APPCOMMAND_MEDIA_CHANNEL_UP, APPCOMMAND_MEDIA_CHANNEL_DOWN}) {
    EXPECT_EQ(press(key), TRUE) << key << ": used, so no other program gets it";
  }
  using Command = MediaCommand;
  EXPECT_EQ(receiver.commands,
            (std::vector{Command::kPlay, Command::kPause, Command::kPlayPause, Command::kStop, Command::kNext,
                         Command::kPrevious, Command::kNext, Command::kPrevious}));
  press(APPCOMMAND_VOLUME_UP);
  EXPECT_EQ(receiver.commands.size(), 8U) << "no key for media";
  keys.Withdraw();
  EXPECT_FALSE(keys.Press(APPCOMMAND_MEDIA_STOP, KeyboardIn::kOwnWindow));
}

TEST_F(Win32LoopTest, MediaKeyOfAnotherProgramsWindowIsObeyedOnlyWhilePlayingOrPaused) {
  struct Receiver final : MediaReceiver {
    void Receive(MediaCommand /*command*/) override { ++commands; }
    void ReceiveVolume(int) override {}
    int commands = 0;
  };
  Receiver receiver;
  Win32MediaKeys keys;
  keys.Appear(receiver);
  Open();
  window->ReportMediaKeys([&keys](int key, KeyboardIn keyboard) { return keys.Press(key, keyboard); });
  // As the system reports it to every program that listens, when the one in front has not used the key.
  const auto press = [this] {
    ::SendMessageW(window->Handle(), ::RegisterWindowMessageW(L"SHELLHOOK"), HSHELL_APPCOMMAND,
                   MAKELPARAM(0, FAPPCOMMAND_KEY | APPCOMMAND_MEDIA_PLAY_PAUSE));
  };
  const auto publish = [&keys](MediaPlayback playback) {
    MediaState state;
    state.playback = playback;
    keys.Publish(state);
  };
  press();
  EXPECT_EQ(receiver.commands, 0) << "nothing has played yet";
  publish(MediaPlayback::kPlaying);
  press();
  EXPECT_EQ(receiver.commands, 1);
  publish(MediaPlayback::kPaused);
  press();
  EXPECT_EQ(receiver.commands, 2);
  publish(MediaPlayback::kStopped);
  press();
  EXPECT_EQ(receiver.commands, 2) << "the key is meant for another player";
  EXPECT_TRUE(keys.Press(APPCOMMAND_MEDIA_PLAY, KeyboardIn::kOwnWindow));
}

TEST_F(Win32LoopTest, GivenFileIsOpenedAsIfItWereDropped) {
  Open();
  DropTarget drops(form, window->Handle(), loop);
  std::vector<controls::DropOffer> dropped;
  const auto note =
      form.Dropped.Subscribe([&](const controls::DropOffer& offer) { dropped.push_back(offer); });
  drops.Open(u"");
  drops.Open(u"C:\\Musik\\Köln.m3u");
  drops.Open(u"http://radio.example/");
  EXPECT_TRUE(Until([&] { return dropped.size() == 2; }));
  EXPECT_EQ(dropped[0].files, std::vector<Text>{u"C:\\Musik\\Köln.m3u"});
  EXPECT_EQ(dropped[1].addresses, std::vector<Text>{u"http://radio.example/"});
}

TEST_F(Win32LoopTest, MessageBoxHasItsTitleTextAndButtonsAndGivesTheAnswer) {
  Open();
  Win32Dialogs dialogs(loop);
  dialogs.SetMainWindow(window->Handle());
  controls::Timer answers;
  const TimerBinding binding(answers, window->Handle(), loop);
  Text title;
  Text text;
  const auto answer = answers.Ticked.Subscribe([&] {
    HWND const box = ::GetLastActivePopup(window->Handle());
    if (box == window->Handle() || ::GetDlgItem(box, IDNO) == nullptr) return;
    title = TextOf(box);
    text = TextOf(::GetDlgItem(box, 0xFFFF));
    EXPECT_TRUE(IsBlockedByDialog(window->Handle()));
    ::PostMessageW(box, WM_COMMAND, IDNO, 0);
  });
  answers.SetInterval(20);
  answers.SetEnabled(true);
  const auto given = dialogs.MessageBoxW(u"Größe ändern?", u"", kMbYesNoCancel | kMbIconQuestion);
  EXPECT_EQ(given, MessageBoxAnswer::kNo);
  EXPECT_EQ(title, u"Funkhausplayer");
}

TEST_F(Win32LoopTest, SessionsEndDismissesABoxWithTheAnswerThatStartsNothing) {
  Open();
  Win32Dialogs dialogs(loop);
  dialogs.SetMainWindow(window->Handle());
  controls::Timer ends;
  const TimerBinding binding(ends, window->Handle(), loop);
  const auto end = ends.Ticked.Subscribe([&] {
    ends.SetEnabled(false);
    Win32MessageLoop::LeaveAll();
  });
  ends.SetInterval(50);
  ends.SetEnabled(true);
  EXPECT_EQ(dialogs.MessageBoxW(u"Speichern?", u"", kMbYesNoCancel), MessageBoxAnswer::kCancel);
  MSG message{};
  while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
  }
}

TEST_F(Win32LoopTest, DialogBlocksItsOwnerUntilEscapeClosesIt) {
  Open();
  app::Form2 form2;
  const auto cancel = form2.CommandButton2.Clicked.Subscribe([&] { form2.form.Close(); });
  controls::Timer presses;
  const TimerBinding binding(presses, window->Handle(), loop);
  bool blocked = false;
  const auto press = presses.Ticked.Subscribe([&] {
    blocked = IsBlockedByDialog(window->Handle());
    presses.SetEnabled(false);
    PressKey(::GetFocus(), VK_ESCAPE);
  });
  presses.SetInterval(50);
  presses.SetEnabled(true);
  RunNewStationDialog(form2, window->Handle(), icons, loop);
  EXPECT_TRUE(form2.form.IsClosed());
  EXPECT_TRUE(blocked);
  EXPECT_FALSE(IsBlockedByDialog(window->Handle()));
}

TEST_F(Win32LoopTest, EscapeThatWasPressedIsForgottenWhenTheProgramWaitsForTheUser) {
  Open();
  const auto press = [this] {
    PressKey(window->Handle(), VK_ESCAPE);
    loop.ProcessPendingMessages();
  };
  press();
  EXPECT_EQ(loop.GetAsyncKeyState(kVkEscape), 1) << "since it was last asked for";
  EXPECT_EQ(loop.GetAsyncKeyState(kVkEscape), 0);
  press();
  loop.Rest();
  EXPECT_EQ(loop.GetAsyncKeyState(kVkEscape), 0);
}

TEST_F(Win32LoopTest, TimerThatIsOnAlreadyTicksAndStopsWhenItIsToldTo) {
  int ticks = 0;
  const auto count = timer.Ticked.Subscribe([&] {
    ++ticks;
    timer.SetEnabled(false);
  });
  timer.SetInterval(10);
  timer.SetEnabled(true);
  inventory = {{"timer", &timer}};
  Open();
  EXPECT_TRUE(Until([&] { return ticks == 1; }));
  // Of two timers the system reports first the one that is due first.
  controls::Timer later;
  bool passed = false;
  const auto pass = later.Ticked.Subscribe([&] { passed = true; });
  const TimerBinding binding(later, window->Handle(), loop);
  later.SetInterval(50);
  later.SetEnabled(true);
  EXPECT_TRUE(Until([&] { return passed; }));
  EXPECT_EQ(ticks, 1);
}

}  // namespace
}  // namespace platform::win32
