#include "platform/qt/front.h"

#include <QApplication>

#include "platform/qt/x11_activation.h"

namespace platform::qt {
namespace {

constexpr char kTokenVariable[] = "XDG_ACTIVATION_TOKEN";

}  // namespace

QWidget* FrontOf(QWidget& window) {
  QWidget* const dialog = QApplication::activeModalWidget();
  if (dialog != nullptr && dialog->isVisible()) return dialog;
  return window.isVisible() ? &window : nullptr;
}

void BringToFront(QWidget& window, QWidget& front, const std::string& activation_token) {
  // The Wayland plugin takes the token from the environment when a window is activated.
  if (!activation_token.empty()) qputenv(kTokenVariable, QByteArray::fromStdString(activation_token));
  if (window.isMinimized()) window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
  window.raise();
  front.raise();
  front.activateWindow();
  qunsetenv(kTokenVariable);
  ActivateOnX11(front, activation_token);
}

}  // namespace platform::qt
