#include "platform/qt/new_station_window.h"

#include <QEvent>

namespace platform::qt {

NewStationWindow::NewStationWindow(app::Form2& form, const QtIcons& icons, QtMessageLoop& loop,
                                   QWidget* owner)
    : QDialog(owner), form_(form), view_(form.form, form.inventory, *this, icons, loop) {
  closed_ = form_.form.Closed.Subscribe([this] { done(QDialog::Accepted); });
}

void NewStationWindow::RunModal() {
  if (form_.form.IsClosed()) return;
  exec();
}

void NewStationWindow::changeEvent(QEvent* event) {
  QDialog::changeEvent(event);
  view_.FollowChange(*event);
}

}  // namespace platform::qt
