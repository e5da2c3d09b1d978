#pragma once
// Port: one quiet notification on the desktop, which replaces the one before. Not for questions
// (ports/dialogs.h), nor for the window's own sentences (app/state/notices.h).

#include "ports/text.h"

namespace platform {

class Notifications {
 public:
  virtual ~Notifications() = default;
  /// Shows a heading with a line below it, both plain text, in place of what was shown before; without sound
  /// and not kept in a history. Nothing happens on a system without notifications. Neither call waits.
  virtual void Show(const Text& heading, const Text& line) = 0;
  /// What is shown disappears.
  virtual void Withdraw() = 0;
};

}  // namespace platform
