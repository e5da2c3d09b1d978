#include "platform/qt/drop_binding.h"

#include <gtest/gtest.h>

#include <QDialog>
#include <QDropEvent>
#include <QMimeData>
#include <QTreeView>
#include <QUrl>
#include <optional>
#include <vector>

#include "platform/posix/native_paths.h"
#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

using controls::DropOffer;

class DropBindingTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(fixture_.Open());
    fixture_.form.form.Accepts = [this](const DropOffer& offer) {
      offered_ = offer;
      return accepts_;
    };
    subscriptions_ +=
        fixture_.form.form.Dropped.Subscribe([this](const DropOffer& offer) { dropped_.push_back(offer); });
    subscriptions_ += fixture_.form.form.DroppedUnderDialog.Subscribe(
        [this](const DropOffer& offer) { under_dialog_.push_back(offer); });
  }

  static void Fill(QMimeData& data, const QByteArray& addresses) {
    data.setData(QStringLiteral("text/uri-list"), addresses);
  }
  /// What the pointer shows over the window; nothing when it refuses. It leaves again.
  std::optional<Qt::DropAction> Shown(Qt::DropActions possible = Qt::CopyAction) {
    const auto action = Enter(possible);
    QDragLeaveEvent leave;
    QCoreApplication::sendEvent(fixture_.window.get(), &leave);
    return action;
  }
  /// True when what is dropped was taken.
  bool Drop() {
    if (!Enter(Qt::CopyAction | Qt::MoveAction)) return false;
    QDropEvent drop({5, 5}, Qt::CopyAction | Qt::MoveAction, &data_, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(fixture_.window.get(), &drop);
    return drop.isAccepted() && drop.dropAction() == Qt::CopyAction;
  }

 private:
  std::optional<Qt::DropAction> Enter(Qt::DropActions possible) {
    QDragEnterEvent enter({5, 5}, possible, &data_, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(fixture_.window.get(), &enter);
    if (!enter.isAccepted()) return std::nullopt;
    QDragMoveEvent move({6, 6}, possible, &data_, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(fixture_.window.get(), &move);
    EXPECT_TRUE(move.isAccepted());
    EXPECT_EQ(move.dropAction(), enter.dropAction());
    return enter.dropAction();
  }

 protected:
  WindowFixture fixture_;
  platform::posix::PosixNativePaths paths_;
  DropBinding drops_{fixture_.form.form, *fixture_.window, fixture_.loop, paths_};
  QMimeData data_;
  bool accepts_ = true;
  DropOffer offered_;
  std::vector<DropOffer> dropped_;
  std::vector<DropOffer> under_dialog_;
  controls::Subscriptions subscriptions_;
};

TEST_F(DropBindingTest, PointerShowsWhatTheFormAccepts) {
  Fill(data_, "http://a/live\r\n");
  EXPECT_EQ(Shown(), Qt::CopyAction);
  accepts_ = false;
  EXPECT_EQ(Shown(), std::nullopt);
  EXPECT_FALSE(Drop());
  fixture_.form.form.Accepts = {};
  EXPECT_EQ(Shown(), std::nullopt);
  Settle();
  EXPECT_TRUE(dropped_.empty());
}

TEST_F(DropBindingTest, WhatIsDroppedIsCopiedOrLinkedAndNeverMoved) {
  Fill(data_, "http://a/live\r\n");
  EXPECT_EQ(Shown(Qt::CopyAction | Qt::MoveAction | Qt::LinkAction), Qt::CopyAction);
  EXPECT_EQ(Shown(Qt::LinkAction | Qt::MoveAction), Qt::LinkAction);
  EXPECT_EQ(Shown(Qt::MoveAction), std::nullopt);
}

TEST_F(DropBindingTest, FilesAreGivenByTheirPathsInWhateverBytes) {
  Fill(data_, "file:///musik/k%C3%B6ln%20%5C%FF.m3u\r\nfile://localhost/b.pls\r\n");
  ASSERT_TRUE(Shown());
  ASSERT_EQ(offered_.files.size(), 2U);
  EXPECT_EQ(paths_.ToNative(offered_.files[0]), "/musik/k\xC3\xB6ln \\\xFF.m3u");
  EXPECT_EQ(paths_.ToNative(offered_.files[1]), "/b.pls");
  EXPECT_TRUE(offered_.addresses.empty());
}

TEST_F(DropBindingTest, AddressesAndFilesOfOtherMachinesAreAddresses) {
  Fill(data_, "https://a/%20?x=%C3%B6\r\nfile://other/b.m3u\r\nsmb://c/d.m3u\r\n");
  data_.setText(QStringLiteral("Ein Sender"));
  ASSERT_TRUE(Shown());
  EXPECT_TRUE(offered_.files.empty());
  EXPECT_EQ(offered_.addresses,
            (std::vector<Text>{u"https://a/%20?x=%C3%B6", u"file://other/b.m3u", u"smb://c/d.m3u"}));
  EXPECT_EQ(offered_.text, u"Ein Sender");
}

TEST_F(DropBindingTest, TextAloneIsOfferedAsText) {
  data_.setText(QStringLiteral("http://a/"));
  ASSERT_TRUE(Shown());
  EXPECT_EQ(offered_.text, u"http://a/");
  EXPECT_TRUE(offered_.addresses.empty());
}

TEST_F(DropBindingTest, EndlessTextIsCut) {
  data_.setText(QString(5'000'000, QLatin1Char('x')));
  ASSERT_TRUE(Shown());
  EXPECT_EQ(offered_.text, Text(65'536, u'x'));
}

TEST_F(DropBindingTest, DropReachesTheFormFromTheEventLoop) {
  Fill(data_, "file:///a.m3u\r\n");
  EXPECT_TRUE(Drop());
  EXPECT_TRUE(dropped_.empty()) << "not inside the toolkit's call";
  Settle();
  ASSERT_EQ(dropped_.size(), 1U);
  EXPECT_EQ(dropped_[0].files, std::vector<Text>{u"\\a.m3u"});
}

TEST_F(DropBindingTest, DropDuringAWaitThatOnlyPaintsHasItsTurnAfterwards) {
  Fill(data_, "file:///a.m3u\r\n");
  EXPECT_TRUE(Drop());
  fixture_.loop.ProcessPaintMessages();
  EXPECT_TRUE(dropped_.empty());
  EXPECT_FALSE(fixture_.loop.InputEndsWait());
  fixture_.loop.ProcessPendingMessages();
  EXPECT_EQ(dropped_.size(), 1U);
}

TEST_F(DropBindingTest, WhileADialogStandsOpenThePointerRefuses) {
  Fill(data_, "file:///a.m3u\r\n");
  QDialog dialog(fixture_.window.get());
  dialog.setModal(true);
  dialog.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
  EXPECT_EQ(Shown(), std::nullopt);
  EXPECT_FALSE(Drop());
  Settle();
  EXPECT_TRUE(dropped_.empty());
  EXPECT_TRUE(under_dialog_.empty());
}

TEST_F(DropBindingTest, DialogThatOpensBeforeTheDropHasItsTurnRefusesItWithWords) {
  Fill(data_, "file:///a.m3u\r\n");
  EXPECT_TRUE(Drop());
  QDialog dialog(fixture_.window.get());
  dialog.setModal(true);
  dialog.show();
  Settle();
  EXPECT_TRUE(dropped_.empty());
  EXPECT_EQ(under_dialog_.size(), 1U);
}

TEST_F(DropBindingTest, WindowThatClosesTakesNothing) {
  Fill(data_, "file:///a.m3u\r\n");
  std::optional<Qt::DropAction> shown = Qt::CopyAction;
  const auto closing = fixture_.form.form.QueryUnload.Subscribe([&] { shown = Shown(); });
  fixture_.form.form.Close();
  EXPECT_EQ(shown, std::nullopt);
  QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(); });
  QApplication::exec();
}

TEST_F(DropBindingTest, ListsHandDropsToTheWindowAndTextFieldsTakeTexts) {
  // The toolkit gives a drop to the first widget, from the one under the pointer upwards, that takes drops.
  const auto taker = [this](QWidget& start) {
    QWidget* widget = &start;
    while (!widget->acceptDrops() && !widget->isWindow()) widget = widget->parentWidget();
    return widget == fixture_.window.get();
  };
  for (const char* list : {"SymbolListview", "ExplorerListFilter"}) {
    EXPECT_TRUE(taker(*fixture_.Find<QTreeView>(list).viewport())) << list;
  }
  for (const char* name : {"Frame1", "Frame3", "Command1", "Label1", "Image1", "Check1"}) {
    EXPECT_TRUE(taker(fixture_.Find(name))) << name;
  }
  EXPECT_FALSE(taker(fixture_.Find("TextBox1_1")));
}

TEST_F(DropBindingTest, ArgumentIsOpenedAsIfItHadBeenDropped) {
  drops_.Open("/musik/\xFF.m3u");
  drops_.Open("http://a/\xC3\xB6");
  drops_.Open("");
  EXPECT_TRUE(dropped_.empty());
  Settle();
  ASSERT_EQ(dropped_.size(), 2U);
  EXPECT_EQ(paths_.ToNative(dropped_[0].files.at(0)), "/musik/\xFF.m3u");
  EXPECT_EQ(dropped_[1].addresses, std::vector<Text>{u"http://a/ö"});
}

TEST_F(DropBindingTest, ArgumentUnderADialogIsRefusedWithWords) {
  QDialog dialog(fixture_.window.get());
  dialog.setModal(true);
  dialog.show();
  drops_.Open("/a.m3u");
  Settle();
  EXPECT_TRUE(dropped_.empty());
  EXPECT_EQ(under_dialog_.size(), 1U);
}

TEST_F(DropBindingTest, NothingHappensAfterwards) {
  {
    DropBinding gone(fixture_.form.form, *fixture_.window, fixture_.loop, paths_);
    gone.Open("/a.m3u");
  }
  Settle();
  EXPECT_TRUE(dropped_.empty());
}

}  // namespace
}  // namespace platform::qt
