#include "platform/qt/raise_requests.h"

#include <QApplication>
#include <utility>

#include "platform/qt/x11_activation.h"

namespace platform::qt {
namespace {

constexpr char kTokenVariable[] = "XDG_ACTIVATION_TOKEN";

}  // namespace

RaiseRequests::RaiseRequests(StartRequests& requests, const controls::Form& form, QWidget& window,
                             std::function<void(const std::string&)> open)
    : requests_(requests), form_(form), window_(window), open_(std::move(open)) {
  if (requests_.Descriptor() < 0) return;
  notifier_ = std::make_unique<QSocketNotifier>(requests_.Descriptor(), QSocketNotifier::Read);
  connect(notifier_.get(), &QSocketNotifier::activated, this, [this] { Serve(); });
}

RaiseRequests::~RaiseRequests() = default;

void RaiseRequests::Serve() {
  while (const auto request = requests_.Next()) {
    QWidget* const front = Front();
    if (front == nullptr || (form_.Closing() && !request->argument.empty())) continue;
    Raise(*front, request->activation_token);
    requests_.Accept();
    if (open_ && !request->argument.empty()) open_(request->argument);
  }
}

QWidget* RaiseRequests::Front() const {
  QWidget* const dialog = QApplication::activeModalWidget();
  if (dialog != nullptr && dialog->isVisible()) return dialog;
  return form_.Closing() || !window_.isVisible() ? nullptr : &window_;
}

void RaiseRequests::Raise(QWidget& front, const std::string& activation_token) {
  // The Wayland plugin takes the token from the environment when a window is activated.
  if (!activation_token.empty()) qputenv(kTokenVariable, QByteArray::fromStdString(activation_token));
  if (window_.isMinimized()) window_.setWindowState(window_.windowState() & ~Qt::WindowMinimized);
  window_.raise();
  front.raise();
  front.activateWindow();
  qunsetenv(kTokenVariable);
  ActivateOnX11(front, activation_token);
}

}  // namespace platform::qt
