#include "platform/win32/ui/remembered_window.h"

#include "platform/win32/base/windows_api.h"

#include "tests/platform/win32/ui/rig.h"
#include "tests/support/memory_files.h"

namespace platform::win32 {
namespace {

constexpr const char16_t* kFile = u"C:\\0815.window";

class Win32RememberedWindowTest : public testing::Test {
 protected:
  /// One run of the program with its window.
  struct Run : Win32WindowTest {
    explicit Run(Files& files) {
      form.SetSmallestSize(3000, 3000);
      list.AddColumn({u"Station", 200});
      list.AddColumn({u"Genre", 100});
      list.Move({0, 0, 8000, 5000});
      inventory = {{"list", &list}};
      form.Move({0, 0, 9000, 6000});
      window = std::make_unique<FormWindow>(form, inventory, nullptr, icons, loop);
      window->RememberIn(files, kFile);
      window->Show();
      loop.ProcessPendingMessages();
    }
    void TestBody() override {}
    void Put(int left, int top, int width, int height) const {
      ::SetWindowPos(window->Handle(), nullptr, left, top, width, height, SWP_NOZORDER);
    }
    RECT Place() const {
      RECT place{};
      ::GetWindowRect(window->Handle(), &place);
      return place;
    }
    HWND Handle() const { return window->Handle(); }
    controls::Form& Form() { return form; }
    Win32MessageLoop& Loop() { return loop; }
    controls::ListView list;
  };
  Run& Start() {
    run_.reset();
    run_ = std::make_unique<Run>(files_);
    return *run_;
  }
  void Close() { run_->Form().Close(); }

  test_support::MemoryFiles files_;
  std::unique_ptr<Run> run_;
};

void ExpectSame(const RECT& one, const RECT& other) { EXPECT_TRUE(::EqualRect(&one, &other) != 0); }

TEST_F(Win32RememberedWindowTest, SizePlaceAndColumnsComeBack) {
  Start().Put(60, 40, 700, 500);
  run_->list.DragColumn(1, 333);
  const RECT place = run_->Place();
  Close();
  Start();
  ExpectSame(run_->Place(), place);
  EXPECT_EQ(run_->list.Columns()[1].users_width, 333);
  EXPECT_EQ(run_->list.Columns()[0].users_width, std::nullopt);
}

TEST_F(Win32RememberedWindowTest, MoveAloneAndAnotherSizeAloneAreRemembered) {
  Start().Put(60, 40, 700, 500);
  run_->Put(90, 70, 700, 500);
  const RECT moved = run_->Place();
  Close();
  ExpectSame(Start().Place(), moved);
  run_->Put(90, 70, 750, 520);
  const RECT resized = run_->Place();
  Close();
  ExpectSame(Start().Place(), resized);
}

TEST_F(Win32RememberedWindowTest, MaximisedWindowComesBackMaximisedAndKnowsItsUsualPlace) {
  Start().Put(60, 40, 700, 500);
  const RECT place = run_->Place();
  ::ShowWindow(run_->Handle(), SW_MAXIMIZE);
  Close();
  Start();
  EXPECT_TRUE(::IsZoomed(run_->Handle()) != 0);
  ::ShowWindow(run_->Handle(), SW_RESTORE);
  ExpectSame(run_->Place(), place);
}

TEST_F(Win32RememberedWindowTest, MaximisedWindowThatWasMovedToAnotherScreenKnowsItsPlaceThere) {
  Start().Put(60, 40, 700, 500);
  ::ShowWindow(run_->Handle(), SW_MAXIMIZE);
  // The system moves the usual place along, and the window stays maximised.
  WINDOWPLACEMENT placement{};
  placement.length = sizeof placement;
  ::GetWindowPlacement(run_->Handle(), &placement);
  placement.rcNormalPosition = {400, 200, 1150, 720};
  ::SetWindowPlacement(run_->Handle(), &placement);
  ASSERT_TRUE(::IsZoomed(run_->Handle()) != 0);
  Close();
  Start();
  EXPECT_TRUE(::IsZoomed(run_->Handle()) != 0);
  ::ShowWindow(run_->Handle(), SW_RESTORE);
  ExpectSame(run_->Place(), {400, 200, 1150, 720});
}

TEST_F(Win32RememberedWindowTest, MinimisedWindowIsRememberedAsItWasBefore) {
  Start().Put(60, 40, 700, 500);
  const RECT place = run_->Place();
  ::ShowWindow(run_->Handle(), SW_MINIMIZE);
  Close();
  Start();
  EXPECT_FALSE(::IsIconic(run_->Handle()) != 0);
  ExpectSame(run_->Place(), place);
}

TEST_F(Win32RememberedWindowTest, WindowOnAScreenThatIsGoneComesBackOnOneThatExists) {
  app::WindowMemory memory;
  memory.place = app::WindowPlace{9000, 9000, 700, 500};
  files_.files[kFile] = app::FormatWindowMemory(memory);
  const RECT place = Start().Place();
  EXPECT_LT(place.right, ::GetSystemMetrics(SM_CXSCREEN) + 20);
  EXPECT_LT(place.top, ::GetSystemMetrics(SM_CYSCREEN) - 100);
}

TEST_F(Win32RememberedWindowTest, WhatIsNoSuchFileLeavesTheWindowAsItIs) {
  const RECT usual = Start().Place();
  for (const char* bytes : {"", "\xff\xfe", "place 1 2 3 4\n"}) {
    run_.reset();
    files_.files[kFile] = bytes;
    const RECT place = Start().Place();
    EXPECT_EQ(place.right - place.left, usual.right - usual.left) << bytes;
    EXPECT_EQ(run_->list.Columns()[1].users_width, std::nullopt) << bytes;
  }
}

TEST_F(Win32RememberedWindowTest, FileIsWrittenWhenClosingIsAskedForAndOnlyWhenSomethingHasChanged) {
  Start().Put(60, 40, 700, 500);
  int writes_when_asked = 0;
  const auto asked = run_->Form().QueryUnload.Subscribe([&] { writes_when_asked = files_.writes; });
  Close();
  EXPECT_EQ(writes_when_asked, 1) << "the end of a session may leave no more time";
  EXPECT_EQ(files_.writes, 1);
  Start();
  Close();
  EXPECT_EQ(files_.writes, 1);
}

TEST_F(Win32RememberedWindowTest, FileThatCannotBeWrittenIsLeftAsItIs) {
  Start();
  files_.can_write = false;
  run_->Put(10, 10, 600, 400);
  Close();
  EXPECT_TRUE(run_->Form().IsClosed());
  EXPECT_TRUE(files_.files.empty());
}

TEST_F(Win32RememberedWindowTest, WindowThatIsMovedWhileItsClosingIsAskedAboutIsRememberedThere) {
  Start().Put(60, 40, 700, 500);
  const auto move = run_->Form().QueryUnload.Subscribe([this] { run_->Put(120, 90, 700, 500); });
  RECT moved{};
  const auto look = run_->Form().Unloaded.Subscribe([&] { moved = run_->Place(); });
  Close();
  ExpectSame(Start().Place(), moved);
  EXPECT_EQ(moved.left, 120);
}

TEST_F(Win32RememberedWindowTest, MinimisedWindowIsRememberedWhereItWasMovedOrResizedLast) {
  Start().Put(60, 40, 700, 500);
  run_->Put(90, 70, 700, 500);
  const RECT moved = run_->Place();
  ::ShowWindow(run_->Handle(), SW_MINIMIZE);
  Close();
  ExpectSame(Start().Place(), moved);
  run_->Put(90, 70, 750, 520);
  const RECT resized = run_->Place();
  ::ShowWindow(run_->Handle(), SW_MINIMIZE);
  Close();
  ExpectSame(Start().Place(), resized);
}

}  // namespace
}  // namespace platform::win32
