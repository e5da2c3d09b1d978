#pragma once
// Asks the desktop not to let the computer fall asleep. Not when that is wanted (ui/sleep_guard.h).

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>

#include "ports/sleep_inhibitor.h"

namespace platform::desktop {

/// Asks the portal of the desktop (org.freedesktop.portal.Inhibit: against falling asleep by itself) or,
/// where that has no answer, the power management (org.freedesktop.PowerManagement.Inhibit). Waits for
/// neither. The bus's end of the connection ends both, so no crash keeps the computer awake.
class BusSleepInhibitor final : public QObject, public SleepInhibitor {
 public:
  explicit BusSleepInhibitor(QDBusConnection bus);
  ~BusSleepInhibitor() override;

  void Hold() override;
  void Release() override;

 private:
  void AskPortal();
  void AskPowerManagement();
  /// It is held now, and `end` is the call that ends it.
  void Take(const QDBusMessage& end);
  void GiveUp();
  void End();

  QDBusConnection bus_;
  bool wanted_ = false;
  bool asking_ = false;
  bool holds_ = false;
  QDBusMessage end_;  // what ends it, while it holds
};

}  // namespace platform::desktop
