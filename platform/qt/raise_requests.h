#pragma once
// Brings the window to the front when a later start of the program asks for it, and passes on what that start
// was given.
// Not for the closing of the window (platform/qt/close_requests.h).

#include <QObject>
#include <QPointer>
#include <QSocketNotifier>
#include <QWidget>
#include <functional>
#include <memory>
#include <string>

#include "controls/form.h"
#include "ports/start_requests.h"

namespace platform::qt {

/// Answers while the program's event loop runs and inside every wait of the program. The window is restored
/// from its minimised state and gets the keyboard focus, or the dialog that is open over it does. A request
/// that comes while the window closes is refused: the later start is to take its place. One with something to
/// open is also refused while the closing question is open: nobody would open it any more. Everything given
/// outlives this.
class RaiseRequests final : public QObject {
 public:
  /// `open` receives what an accepted start was given; it is called inside waits too.
  RaiseRequests(StartRequests& requests, const controls::Form& form, QWidget& window,
                std::function<void(const std::string& argument)> open = {});
  ~RaiseRequests() override;

 private:
  void Serve();
  [[nodiscard]] QWidget* Front() const;

  StartRequests& requests_;
  const controls::Form& form_;
  QWidget& window_;
  std::function<void(const std::string&)> open_;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace platform::qt
