#pragma once
// The program's one notification on the session's bus. Not when there is one (ui/title_notice.h).

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <optional>

#include "ports/notifications.h"

namespace platform::desktop {

/// Of low urgency, passing and silent; each takes the place of the one before. Waits for no answer: what
/// comes while the service is asked is shown next, and of several the last one only. Public source: Desktop
/// Notifications Specification 1.2 of freedesktop.org.
class BusNotifications final : public QObject, public Notifications {
 public:
  explicit BusNotifications(QDBusConnection bus);
  ~BusNotifications() override;

  void Show(const Text& heading, const Text& line) override;
  void Withdraw() override;

 private:
  struct Words {
    QString heading;
    QString line;
  };
  void AskForMarkup();
  void Send();
  void Close();

  QDBusConnection bus_;
  std::optional<bool> takes_markup_;  // nothing: not known yet
  bool asking_ = false;
  bool withdrawn_ = false;
  uint shown_ = 0;               // the service's number for it, 0 for none
  std::optional<Words> wanted_;  // not sent yet
};

}  // namespace platform::desktop
