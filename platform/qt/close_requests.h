#pragma once
// Closes a form when the system asks the program to end: SIGTERM, SIGHUP, SIGINT, the end of the session.
// Not the window's close button, which belongs to platform/qt/form_binding.h.

#include <QObject>
#include <QSocketNotifier>
#include <memory>

#include "controls/form.h"

namespace platform::qt {

/// One at a time. The form is closed from the event loop, never inside the signal handler; the signals'
/// former handling is back when this ends.
class CloseRequests final : public QObject {
 public:
  explicit CloseRequests(controls::Form& form);
  ~CloseRequests() override;

 private:
  void Arrived();

  controls::Form& form_;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace platform::qt
