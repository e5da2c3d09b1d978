#pragma once
// Brings the window to the front when a later start of the program asks for it.
// Not for the closing of the window (platform/qt/close_requests.h).

#include <QObject>
#include <QPointer>
#include <QSocketNotifier>
#include <QWidget>
#include <memory>

#include "controls/form.h"
#include "ports/start_requests.h"

namespace platform::qt {

/// Answers while the program's event loop runs and inside every wait of the program. The window leaves its
/// minimised state and gets the keyboard, or the dialog that stands open over it does. A request that comes
/// while the window goes is refused: the later start is to take its place. Everything given outlives this.
class RaiseRequests final : public QObject {
 public:
  RaiseRequests(StartRequests& requests, const controls::Form& form, QWidget& window);
  ~RaiseRequests() override;

 private:
  void Serve();
  [[nodiscard]] QWidget* Front() const;
  void Raise(QWidget& front, const std::string& activation_token);

  StartRequests& requests_;
  const controls::Form& form_;
  QWidget& window_;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace platform::qt
