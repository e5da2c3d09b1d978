#pragma once
// The main window: Form1's view with the program's icon, its opening and its end. Not the behaviour of the
// controls and not their places, both of which Form1 and its features own.

#include <QTimer>
#include <QWidget>
#include <optional>

#include "app/forms/form1.h"
#include "platform/qt/form_view.h"
#include "platform/qt/remembered_window.h"

namespace platform::qt {

/// Constructed hidden; `Open` shows it. It closes when the form is closed, and the form when the user or the
/// session closes the window. The form outlives it.
class PlayerWindow final : public QWidget {
 public:
  PlayerWindow(app::Form1& form, const QtIcons& icons, QtMessageLoop& loop);

  /// Reads what is remembered of the window from the file, and keeps it there from now on. Once, before
  /// `Open`.
  void RememberIn(const QString& file);

  /// Shows the window as it is remembered; else at the form's size, or as large as the screen allows.
  void Open();

  /// Opens the window unless the form is closed already, and runs the program's event loop until the form
  /// is closed. The program's exit code.
  int Run();

  /// The window has opened and was painted for the first time, or is not painted for now. Raised once, from
  /// the event loop: for what need not be there before the window.
  controls::Event<> Appeared;

 protected:
  void changeEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void Appear();

  app::Form1& form_;
  FormView view_;
  std::optional<RememberedWindow> memory_;
  controls::Subscription closed_;
  QTimer appearing_;
};

}  // namespace platform::qt
