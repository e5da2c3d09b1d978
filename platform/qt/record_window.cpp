#include "platform/qt/record_window.h"

#include <QApplication>
#include <QEvent>

#include "platform/qt/application_icon.h"

namespace platform::qt {

RecordWindow::RecordWindow(app::RecordForm& form, const QtIcons& icons, QtMessageLoop& loop)
    : view_(form.form, form.inventory, *this, icons, loop) {
  setWindowIcon(ApplicationIcon());
  setWindowFlag(Qt::WindowMinimizeButtonHint);
  setWindowFlag(Qt::WindowContextHelpButtonHint, false);
  closed_ = form.form.Closed.Subscribe([] { QCoreApplication::exit(); });
}

void RecordWindow::changeEvent(QEvent* event) {
  QDialog::changeEvent(event);
  view_.FollowChange(*event);
}

}  // namespace platform::qt
