// A real drag on a display, with a mouse that is operated from outside the program.

#include <gtest/gtest.h>

#include <QDrag>
#include <QMimeData>
#include <QProcess>
#include <QTimer>
#include <QTreeView>
#include <QUrl>
#include <optional>
#include <vector>

#include "platform/posix/native_paths.h"
#include "platform/qt/drop_binding.h"
#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

using controls::DropOffer;

/// Gives an address to the target of the drag.
class Giver final : public QWidget {
 public:
  explicit Giver(const QString& address) : address_(address) { setGeometry(1150, 100, 200, 200); }
  /// What the taker has done with it, once the drag is over.
  std::optional<Qt::DropAction> outcome;

 protected:
  void mouseMoveEvent(QMouseEvent* /*event*/) override {
    if (begun_) return;
    begun_ = true;
    auto* given = new QMimeData;
    given->setUrls({QUrl(address_)});
    auto* drag = new QDrag(this);
    drag->setMimeData(given);
    outcome = drag->exec(Qt::CopyAction | Qt::MoveAction);
  }

 private:
  const QString address_;
  bool begun_ = false;
};

class DisplayDrop : public ::testing::Test {
 protected:
  DisplayDrop() {
    fixture_.form.form.Accepts = [this](const DropOffer& offer) {
      asked_ = true;
      return !offer.files.empty();
    };
    dropping_ =
        fixture_.form.form.Dropped.Subscribe([this](const DropOffer& offer) { dropped_.push_back(offer); });
    fixture_.window->Open();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(fixture_.window.get()));
  }
  /// One order to the display's mouse.
  static void Work(const QStringList& order) {
    QProcess tool;
    tool.start(QStringLiteral("xdotool"), order);
    ASSERT_TRUE(WaitFor([&] { return tool.state() == QProcess::NotRunning; }));
    ASSERT_EQ(tool.exitCode(), 0) << tool.readAllStandardError().toStdString();
  }
  static QStringList MoveTo(const QPoint& place) {
    return {"mousemove", QString::number(place.x()), QString::number(place.y())};
  }
  /// Drags from the giver to the list and releases the button once the form was asked.
  std::optional<Qt::DropAction> DragToList(const QString& address) {
    Giver giver(address);
    giver.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&giver));
    const QPoint from = giver.mapToGlobal(giver.rect().center());
    const QWidget& list = *fixture_.Find<QTreeView>("SymbolListview").viewport();
    // The drag does not return before the button is released.
    QTimer release;
    constexpr int kMostTicks = 500;
    QObject::connect(&release, &QTimer::timeout, &release, [&, ticks = 0]() mutable {
      if (!asked_ && ++ticks < kMostTicks) return;
      release.stop();
      QProcess::startDetached(QStringLiteral("xdotool"), {"mouseup", "1"});
    });
    release.start(10);
    Work(MoveTo(from) + QStringList{"mousedown", "1"} + MoveTo(from + QPoint(40, 0)) +
         MoveTo(list.mapToGlobal(list.rect().center())));
    EXPECT_TRUE(WaitFor([&] { return giver.outcome.has_value(); }));
    EXPECT_TRUE(asked_);
    return giver.outcome;
  }

  WindowFixture fixture_;
  platform::posix::PosixNativePaths paths_;
  DropBinding drops_{fixture_.form.form, *fixture_.window, fixture_.loop, paths_};
  bool asked_ = false;
  std::vector<DropOffer> dropped_;
  controls::Subscription dropping_;
};

TEST_F(DisplayDrop, FileThatIsDraggedToTheListReachesTheForm) {
  EXPECT_EQ(DragToList("file:///musik/a.m3u"), Qt::CopyAction);
  EXPECT_TRUE(WaitFor([this] { return dropped_.size() == 1; }));
  EXPECT_EQ(dropped_.at(0).files, std::vector<Text>{u"\\musik\\a.m3u"});
}

TEST_F(DisplayDrop, WhatTheFormRefusesIsRefused) {
  EXPECT_EQ(DragToList("ftp://a/"), Qt::IgnoreAction);
  Settle();
  EXPECT_TRUE(dropped_.empty());
}

}  // namespace
}  // namespace platform::qt
