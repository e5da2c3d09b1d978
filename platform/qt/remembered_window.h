#pragma once
// Remembers a window's size, place, maximised state and the user's column widths in a file. Not the file's
// format (app/forms/window_memory.h), nor where a window may be opened (app/forms/window_place.h).

#include <QObject>
#include <QSize>
#include <QString>
#include <QTimer>
#include <QWidget>
#include <optional>
#include <string>

#include "app/forms/form_control.h"
#include "app/forms/window_memory.h"
#include "controls/form.h"

namespace platform::qt {

/// Room for the title bar and the borders that the window manager adds.
inline constexpr QSize kWindowBorders(20, 60);

/// The file is read once, with distrust: what is no such file leaves everything as it is. It is written when
/// closing is asked for, because the end of a session may leave no more time, and once more when the window
/// has closed; each time in one step, and never when nothing has changed. A file that cannot be written is
/// left as it is. Form and inventory outlive the object.
class RememberedWindow final : public QObject {
 public:
  RememberedWindow(controls::Form& form, const app::Inventory& inventory, QWidget& window, QString file);

  /// Gives the hidden window its remembered place, or leaves it where it is.
  void Restore();

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  [[nodiscard]] std::string ReadFile() const;
  void TakePlace();
  void Save();

  const app::Inventory& inventory_;
  QWidget& window_;
  const QString file_;
  std::string in_file_;
  app::WindowMemory memory_;
  QTimer rest_;
  controls::Subscriptions subscriptions_;
};

}  // namespace platform::qt
