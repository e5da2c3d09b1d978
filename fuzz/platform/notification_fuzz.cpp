// Shows arbitrary titles and station names as notifications, through a real bus connection. The first byte
// decides whether the service reads markup; the pieces between bytes 0x1E are heading and line of one after
// the other. What must hold: the last one is shown, as valid and bounded text without control characters;
// where the service reads markup, the line holds none; and the connection stays.

#include <QDBusVirtualObject>
#include <QStringList>

#include "fuzz/platform/peer_bus.h"
#include "platform/desktop/notifications.h"

namespace {

using fuzz::Require;

class Service final : public QDBusVirtualObject {
 public:
  [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
    QDBusMessage answer = message.createReply();
    if (message.member() == QLatin1String("GetCapabilities")) {
      answer = message.createReply(QVariant(reads_markup ? QStringList{QStringLiteral("body-markup")}
                                                         : QStringList{QStringLiteral("body")}));
    } else if (message.member() == QLatin1String("Notify")) {
      heading = message.arguments().value(3).toString();
      line = message.arguments().value(4).toString();
      ++shown;
      answer = message.createReply(QVariant(uint{7}));
    } else if (message.member() == QLatin1String("CloseNotification")) {
      ++closed;
    }
    return bus.send(answer);
  }

  bool reads_markup = false;
  QString heading;
  QString line;
  int shown = 0;
  int closed = 0;
};

struct Rig {
  Rig() { bus.Other().registerVirtualObject(QStringLiteral("/org/freedesktop/Notifications"), &service); }
  fuzz::PeerBus bus;
  Service service;
};

void CheckText(const QString& text, qsizetype longest) {
  Require(text.size() <= longest && !fuzz::HoldsControl(text.toStdU16String()));
}

/// Only the marks that stand for one character each.
bool IsPlain(QString text) {
  for (const char* mark : {"&amp;", "&lt;", "&gt;", "&quot;"}) text.remove(QLatin1String(mark));
  return !text.contains(QLatin1Char('<')) && !text.contains(QLatin1Char('>')) &&
         !text.contains(QLatin1Char('&'));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  fuzz::NeedApplication();
  static Rig rig;
  rig.service.reads_markup = (data[0] & 1U) != 0;
  const auto pieces = fuzz::Pieces(fuzz::AsBytes(data + 1, size - 1), '\x1E');
  platform::desktop::BusNotifications notifications(rig.bus.Program());
  const int before = rig.service.shown;
  for (std::size_t at = 0; at + 1 < pieces.size(); at += 2) {
    notifications.Show(fuzz::AsText(pieces[at]), fuzz::AsText(pieces[at + 1]));
  }
  if (pieces.size() < 2) return 0;
  fuzz::PeerBus::Wait([&] { return rig.service.shown > before; });
  rig.bus.Settle();
  constexpr qsizetype kLongest = 4096;
  constexpr qsizetype kLongestMark = 6;
  CheckText(rig.service.heading, kLongest);
  CheckText(rig.service.line, kLongest * kLongestMark);
  Require(!rig.service.reads_markup || IsPlain(rig.service.line));
  const int closed = rig.service.closed;
  notifications.Withdraw();
  fuzz::PeerBus::Wait([&] { return rig.service.closed > closed; });
  Require(rig.bus.Program().isConnected() && rig.bus.Other().isConnected());
  return 0;
}
