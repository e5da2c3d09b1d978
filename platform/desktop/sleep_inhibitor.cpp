#include "platform/desktop/sleep_inhibitor.h"

#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QVariantMap>
#include <utility>

namespace platform::desktop {
namespace {

constexpr QLatin1String kPortal("org.freedesktop.portal.Desktop");
constexpr QLatin1String kPower("org.freedesktop.PowerManagement");
constexpr QLatin1String kPowerPath("/org/freedesktop/PowerManagement/Inhibit");
constexpr QLatin1String kPowerInhibit("org.freedesktop.PowerManagement.Inhibit");
// Desktops show it beside the program's name; it is the same word in German and English.
constexpr QLatin1String kReason("Internetradio");

}  // namespace

BusSleepInhibitor::BusSleepInhibitor(QDBusConnection bus) : bus_(std::move(bus)) {}

BusSleepInhibitor::~BusSleepInhibitor() { Release(); }

void BusSleepInhibitor::Hold() {
  wanted_ = true;
  if (!asking_ && !holds_ && bus_.isConnected()) AskPortal();
}

void BusSleepInhibitor::Release() {
  wanted_ = false;
  if (holds_) End();
}

void BusSleepInhibitor::AskPortal() {
  constexpr uint kFallingAsleep = 4;
  QDBusMessage call = QDBusMessage::createMethodCall(
      kPortal, QStringLiteral("/org/freedesktop/portal/desktop"),
      QStringLiteral("org.freedesktop.portal.Inhibit"), QStringLiteral("Inhibit"));
  call << QString() << kFallingAsleep << QVariantMap{{QStringLiteral("reason"), QString(kReason)}};
  asking_ = true;
  auto* answer = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
  connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
    answer->deleteLater();
    const QDBusPendingReply<QDBusObjectPath> reply = *answer;
    if (reply.isError()) return AskPowerManagement();
    Take(QDBusMessage::createMethodCall(kPortal, reply.value().path(),
                                        QStringLiteral("org.freedesktop.portal.Request"),
                                        QStringLiteral("Close")));
  });
}

void BusSleepInhibitor::AskPowerManagement() {
  if (!wanted_) return GiveUp();
  QDBusMessage call =
      QDBusMessage::createMethodCall(kPower, kPowerPath, kPowerInhibit, QStringLiteral("Inhibit"));
  call << QStringLiteral("Funkhausplayer") << QString(kReason);
  auto* answer = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
  connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
    answer->deleteLater();
    const QDBusPendingReply<uint> reply = *answer;
    if (reply.isError()) return GiveUp();
    QDBusMessage end =
        QDBusMessage::createMethodCall(kPower, kPowerPath, kPowerInhibit, QStringLiteral("UnInhibit"));
    end << reply.value();
    Take(end);
  });
}

void BusSleepInhibitor::Take(const QDBusMessage& end) {
  asking_ = false;
  holds_ = true;
  end_ = end;
  if (!wanted_) End();
}

void BusSleepInhibitor::GiveUp() { asking_ = false; }

void BusSleepInhibitor::End() {
  holds_ = false;
  bus_.asyncCall(end_);
}

}  // namespace platform::desktop
