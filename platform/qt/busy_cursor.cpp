#include "platform/qt/busy_cursor.h"

#include <QCursor>
#include <QGuiApplication>
#include <utility>

namespace platform::qt {

void BusyCursor::Show() {
  if (!std::exchange(shown_, true)) QGuiApplication::setOverrideCursor(QCursor(Qt::BusyCursor));
}

void BusyCursor::Hide() {
  // The application may be gone already.
  if (std::exchange(shown_, false) && qGuiApp != nullptr) QGuiApplication::restoreOverrideCursor();
}

}  // namespace platform::qt
