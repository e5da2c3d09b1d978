#include "platform/desktop/notifications.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QStringList>
#include <QVariantMap>
#include <utility>

#include "platform/desktop/texts.h"

namespace platform::desktop {
namespace {

QDBusMessage Call(const char* method) {
  return QDBusMessage::createMethodCall(
      QStringLiteral("org.freedesktop.Notifications"), QStringLiteral("/org/freedesktop/Notifications"),
      QStringLiteral("org.freedesktop.Notifications"), QLatin1String(method));
}

}  // namespace

BusNotifications::BusNotifications(QDBusConnection bus) : bus_(std::move(bus)) {}

BusNotifications::~BusNotifications() { Withdraw(); }

void BusNotifications::Show(const Text& heading, const Text& line) {
  wanted_ = Words{ForBus(heading), ForBus(line)};
  withdrawn_ = false;
  if (asking_ || !bus_.isConnected()) return;
  if (takes_markup_) {
    Send();
  } else {
    AskForMarkup();
  }
}

void BusNotifications::Withdraw() {
  wanted_.reset();
  withdrawn_ = true;
  if (!asking_) Close();
}

void BusNotifications::AskForMarkup() {
  asking_ = true;
  auto* answer = new QDBusPendingCallWatcher(bus_.asyncCall(Call("GetCapabilities")), this);
  connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
    answer->deleteLater();
    asking_ = false;
    const QDBusPendingReply<QStringList> reply = *answer;
    if (reply.isError()) return;
    takes_markup_ = reply.value().contains(QLatin1String("body-markup"));
    if (wanted_) Send();
  });
}

void BusNotifications::Send() {
  const Words words = *std::exchange(wanted_, std::nullopt);
  constexpr uchar kLow = 0;
  constexpr int kAsTheDesktopLikes = -1;
  const QVariantMap hints{{QStringLiteral("urgency"), QVariant::fromValue(kLow)},
                          {QStringLiteral("transient"), true},
                          {QStringLiteral("suppress-sound"), true},
                          {QStringLiteral("desktop-entry"), QStringLiteral("funkhausplayer")}};
  QDBusMessage call = Call("Notify");
  call << QStringLiteral("Funkhausplayer") << shown_ << QStringLiteral("funkhausplayer") << words.heading
       << (*takes_markup_ ? words.line.toHtmlEscaped() : words.line) << QStringList() << hints
       << kAsTheDesktopLikes;
  asking_ = true;
  auto* answer = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
  connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
    answer->deleteLater();
    asking_ = false;
    const QDBusPendingReply<uint> reply = *answer;
    if (!reply.isError()) shown_ = reply.value();
    if (withdrawn_) {
      Close();
    } else if (wanted_) {
      Send();
    }
  });
}

void BusNotifications::Close() {
  const uint number = std::exchange(shown_, 0);
  if (number == 0) return;
  QDBusMessage call = Call("CloseNotification");
  call << number;
  bus_.asyncCall(call);
}

}  // namespace platform::desktop
