#include "platform/qt/player_window.h"

#include <QApplication>
#include <QEvent>
#include <QScreen>

#include "platform/qt/application_icon.h"

namespace platform::qt {

PlayerWindow::PlayerWindow(app::Form1& form, const QtIcons& icons, QtMessageLoop& loop)
    : form_(form), view_(form.form, form.inventory, *this, icons, loop) {
  setWindowIcon(ApplicationIcon());
  closed_ = form_.form.Closed.Subscribe([] { QCoreApplication::exit(); });
}

void PlayerWindow::Open() {
  // Room for the title bar and the borders that the window manager adds.
  constexpr QSize kBorders(20, 60);
  const QSize room = screen()->availableSize() - kBorders;
  resize(view_.WindowSize().boundedTo(room).expandedTo(minimumSize()));
  view_.FocusFirst();
  show();
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
