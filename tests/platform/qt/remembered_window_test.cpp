#include "platform/qt/remembered_window.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDir>
#include <QScreen>
#include <QTemporaryDir>

#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

class RememberedWindowTest : public ::testing::Test {
 protected:
  /// The window of another run of the program.
  WindowFixture& Start() {
    fixture_.reset();
    fixture_ = std::make_unique<WindowFixture>();
    fixture_->window->RememberIn(file_);
    fixture_->window->Open();
    EXPECT_TRUE(QTest::qWaitForWindowActive(fixture_->window.get()));
    return *fixture_;
  }
  PlayerWindow& Window() { return *fixture_->window; }
  void Close() { fixture_->form.form.Close(); }
  void Write(const QByteArray& bytes) const {
    QFile file(file_);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  }
  QByteArray Bytes() const {
    QFile file(file_);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
  /// The place and size that a window has which nothing is remembered of.
  QRect Usual() const {
    WindowFixture fixture;
    fixture.window->Open();
    return fixture.window->geometry();
  }

  /// The window's place is taken when its timer is over, and that of this wait, which is longer, is over
  /// later.
  static void WaitForRest() { QTest::qWait(300); }

  QTemporaryDir folder_;
  QString file_ = folder_.filePath("0815.window");
  std::unique_ptr<WindowFixture> fixture_;
};

TEST_F(RememberedWindowTest, SizeAndPlaceComeBack) {
  Start();
  const QRect place(60, 40, 700, 660);
  Window().resize(place.size());
  Window().move(place.topLeft());
  QApplication::processEvents();
  Close();
  Start();
  EXPECT_EQ(Window().pos(), place.topLeft());
  EXPECT_EQ(Window().size(), place.size());
  EXPECT_NEAR(fixture_->form.form.GetPlace().width, 700 * 15, 15) << "the form knows its size";
}

TEST_F(RememberedWindowTest, MaximisedWindowComesBackMaximisedAndGetsItsOldSizeWhenItIsRestored) {
  Start();
  Window().resize(700, 660);
  Window().move(60, 40);
  WaitForRest();
  Window().showMaximized();
  EXPECT_TRUE(WaitFor([this] { return Window().width() > 750; }));
  Close();
  EXPECT_TRUE(Bytes().contains("place 60 40 700 660\nmaximized\n"));
  Start();
  EXPECT_TRUE(Window().isMaximized());
  EXPECT_TRUE(WaitFor([this] { return Window().width() > 750; }));
  EXPECT_EQ(Window().normalGeometry().size(), QSize(700, 660));
  Window().showNormal();
  EXPECT_TRUE(WaitFor([this] { return Window().size() == QSize(700, 660); }));
  Close();
  EXPECT_FALSE(Bytes().contains("maximized"));
}

TEST_F(RememberedWindowTest, MinimisedWindowIsRememberedAsItWas) {
  Start();
  Window().resize(700, 660);
  Window().move(60, 40);
  WaitForRest();
  Window().showMinimized();
  EXPECT_TRUE(WaitFor([this] { return Window().isMinimized(); }));
  Close();
  EXPECT_TRUE(Bytes().contains("place 60 40 700 660\n"));
  Start();
  EXPECT_FALSE(Window().isMinimized());
}

TEST_F(RememberedWindowTest, ColumnsThatTheUserHasDraggedComeBackInBothListsAndNoOthers) {
  Start().form.SymbolListview.DragColumn(1, 200);
  Close();
  EXPECT_TRUE(Bytes().contains("column SymbolListview 1 200\ncolumn ExplorerListFilter 1 200\n"));
  EXPECT_EQ(Bytes().count("column"), 2);
  Start();
  EXPECT_EQ(fixture_->Find<ReportView>("SymbolListview").columnWidth(1), 200);
  EXPECT_EQ(fixture_->form.ExplorerListFilter.Columns()[1].users_width, 200);
}

TEST_F(RememberedWindowTest, WindowOfAScreenThatIsGoneIsOpenedOnOneThatIsThere) {
  Write("Funkhausplayer window 1\nplace 90000 -90000 700 660\n");
  Start();
  EXPECT_EQ(Window().size(), QSize(700, 660));
  EXPECT_TRUE(Window().screen()->availableGeometry().contains(Window().geometry()));
}

TEST_F(RememberedWindowTest, WindowThatIsLargerThanTheScreenIsMadeSmaller) {
  Write("Funkhausplayer window 1\nplace 0 0 100000 100000\n");
  Start();
  const QSize room = Window().screen()->availableSize();
  EXPECT_LE(Window().width(), room.width());
  EXPECT_LE(Window().height(), room.height());
}

TEST_F(RememberedWindowTest, FileWithoutAMeaningLeavesTheWindowAsUsualAndIsReplaced) {
  const QRect usual = Usual();
  const QByteArray tests[] = {
      "", "Funkhausplayer window 2\nplace 60 40 700 660\n", QByteArray(100000, 'x'),
      "Funkhausplayer window 1\nplace 60 40 700 660\ncolumn SymbolListview 1 999999\n"};
  for (const QByteArray& bytes : tests) {
    Write(bytes);
    Start();
    EXPECT_EQ(Window().geometry(), usual);
    EXPECT_EQ(fixture_->form.SymbolListview.Columns()[1].users_width, std::nullopt);
    Close();
    EXPECT_TRUE(Bytes().startsWith("Funkhausplayer window 1\nplace ")) << bytes.left(40).toStdString();
  }
}

TEST_F(RememberedWindowTest, WhatIsNoFileIsNeitherReadNorReplaced) {
  ASSERT_EQ(::mkfifo(QFile::encodeName(file_).constData(), 0600), 0);
  Start();
  Close();
  QFile::remove(file_);
  ASSERT_TRUE(QDir().mkdir(file_));
  Start();
  Close();
  EXPECT_TRUE(QFileInfo(file_).isDir());
  file_ = folder_.filePath("no/such/folder/0815.window");
  Start();
  Close();
  EXPECT_FALSE(QFileInfo::exists(file_));
}

TEST_F(RememberedWindowTest, FileIsReplacedInOneStepAndNothingIsLeftBesideIt) {
  Write("Funkhausplayer window 1\n");
  // A second name of the old file still has the old content.
  const QString old = folder_.filePath("old");
  ASSERT_EQ(::link(QFile::encodeName(file_).constData(), QFile::encodeName(old).constData()), 0);
  Start();
  Close();
  QFile kept(old);
  ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
  EXPECT_EQ(kept.readAll(), "Funkhausplayer window 1\n");
  EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden), (QStringList{"0815.window", "old"}));
}

TEST_F(RememberedWindowTest, NothingIsWrittenWhenNothingHasChanged) {
  Start();
  Close();
  const QByteArray bytes = Bytes();
  ASSERT_FALSE(bytes.isEmpty());
  struct stat before {};
  ASSERT_EQ(::stat(QFile::encodeName(file_).constData(), &before), 0);
  Start();
  Close();
  struct stat after {};
  ASSERT_EQ(::stat(QFile::encodeName(file_).constData(), &after), 0);
  EXPECT_EQ(after.st_ino, before.st_ino);
  EXPECT_EQ(Bytes(), bytes);
}

TEST_F(RememberedWindowTest, EndOfTheSessionKeepsItBeforeAnythingElseIsAsked) {
  Start();
  Window().resize(700, 660);
  QApplication::processEvents();
  QByteArray kept;
  const auto asked = fixture_->form.form.QueryUnload.Subscribe([&] { kept = Bytes(); });
  fixture_->form.form.Close(controls::CloseReason::kSessionEnd);
  EXPECT_TRUE(kept.contains(" 700 660\n"));
}

TEST_F(RememberedWindowTest, WhatChangesWhileClosingIsAskedIsKeptToo) {
  Start();
  const auto asked = fixture_->form.form.QueryUnload.Subscribe([&] {
    Window().resize(700, 660);
    QApplication::processEvents();
  });
  Close();
  EXPECT_TRUE(Bytes().contains(" 700 660\n"));
}

TEST_F(RememberedWindowTest, WindowThatWasNeverShownKeepsWhatIsRemembered) {
  const QByteArray bytes = "Funkhausplayer window 1\nplace 60 40 700 660\nmaximized\n";
  Write(bytes);
  WindowFixture fixture;
  fixture.window->RememberIn(file_);
  fixture.form.form.Close();
  EXPECT_EQ(Bytes(), bytes);
}

}  // namespace
}  // namespace platform::qt
