#include "platform/qt/input_binding.h"

#include <QApplication>

namespace platform::qt {

bool IsBlockedByDialog(const QWidget& widget) {
  const QWidget* const dialog = QApplication::activeModalWidget();
  if (dialog == nullptr) return false;
  // Windows that a dialog has opened itself are its children.
  for (const QWidget* parent = &widget; parent != nullptr; parent = parent->parentWidget()) {
    if (parent == dialog) return false;
  }
  return true;
}

}  // namespace platform::qt
