#include "platform/qt/player_window.h"

#include <QApplication>
#include <QEvent>
#include <QScreen>

#include "platform/qt/application_icon.h"

namespace platform::qt {
namespace {

/// A window that is minimised or covered is not painted.
constexpr int kUnpaintedMilliseconds = 500;

}  // namespace

PlayerWindow::PlayerWindow(app::Form1& form, const QtIcons& icons, QtMessageLoop& loop)
    : form_(form), view_(form.form, form.inventory, *this, icons, loop) {
  appearing_.setSingleShot(true);
  appearing_.setInterval(kUnpaintedMilliseconds);
  connect(&appearing_, &QTimer::timeout, this, [this] { Appear(); });
  closed_ = form_.form.Closed.Subscribe([] { QCoreApplication::exit(); });
}

void PlayerWindow::RememberIn(const QString& file) {
  memory_.emplace(form_.form, form_.inventory, *this, file);
}

void PlayerWindow::Open() {
  const QSize room = screen()->availableSize() - kWindowBorders;
  resize(view_.WindowSize().boundedTo(room).expandedTo(minimumSize()));
  if (memory_) memory_->Restore();
  view_.FocusFirst();
  show();
  if (windowIcon().isNull()) appearing_.start();
}

void PlayerWindow::Appear() {
  // Drawing it in every size takes longer than the window's first picture should wait.
  setWindowIcon(ApplicationIcon());
  Appeared.Raise();
}

void PlayerWindow::paintEvent(QPaintEvent* event) {
  QWidget::paintEvent(event);
  // Not in the middle of painting, and what has been painted is to be on the screen first.
  if (appearing_.isActive()) appearing_.start(0);
}

int PlayerWindow::Run() {
  if (form_.form.IsClosed()) return 0;
  Open();
  return QApplication::exec();
}

void PlayerWindow::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  // Not every system notifies a minimised window that it is not visible.
  if (event->type() == QEvent::WindowStateChange) setUpdatesEnabled(!isMinimized());
  view_.FollowChange(*event);
}

}  // namespace platform::qt
