#pragma once
// Closes a form when the system asks the program to end: SIGTERM, SIGHUP, SIGINT, the end of the session.
// Not the window's close button, which belongs to platform/qt/form_binding.h.

#include <QObject>
#include <QSocketNotifier>
#include <memory>

#include "controls/form.h"
#include "platform/qt/message_loop.h"

namespace platform::qt {

/// One at a time. A signal ends the program without a question: the form is notified that the session ends,
/// and an open message box or dialog is dismissed. A session that is about to end closes the form as the user
/// would when it allows questions, otherwise as a signal does. The form is closed from the event loop, never
/// inside the signal handler and not while only painting is allowed; a wait that only paints ends because of
/// it. A signal that the process raises itself does nothing: a library may do so when the session's message
/// bus ends (GLib's "exit-on-close"). The signals' former handling is restored when this ends.
class CloseRequests final : public QObject {
 public:
  CloseRequests(controls::Form& form, QtMessageLoop& loop);
  ~CloseRequests() override;

  /// The session is about to end and waits for this call; `interaction` says whether it allows a question. A
  /// call in a wait that only paints returns before the form is closed; then nothing is asked.
  enum class Interaction { kAllowed, kRefused };
  void EndSession(Interaction interaction);

 private:
  void ReadSignals();
  void HandOverSessionEnd();
  void CloseForm(controls::CloseReason reason);

  controls::Form& form_;
  QtMessageLoop& loop_;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace platform::qt
