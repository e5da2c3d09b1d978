#pragma once
// Two ends of a bus connection inside one process: what one end sends, the other gets as a bus would deliver
// it, with the types of its arguments as they were received. Not a bus: there are no names.

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusServer>
#include <QElapsedTimer>
#include <functional>
#include <optional>

#include "fuzz/fuzz_input.h"

namespace fuzz {

class PeerBus {
 public:
  PeerBus() {
    server_.setAnonymousAuthenticationAllowed(true);
    QObject::connect(&server_, &QDBusServer::newConnection,
                     [this](const QDBusConnection& connection) { program_.emplace(connection); });
    other_.emplace(QDBusConnection::connectToPeer(server_.address(), QStringLiteral("other")));
    Wait([this] { return program_ && program_->isConnected() && other_->isConnected(); });
  }

  /// The end of the program that is tried.
  [[nodiscard]] QDBusConnection Program() const { return *program_; }
  /// The end of somebody on the bus.
  [[nodiscard]] QDBusConnection Other() const { return *other_; }

  /// Sends a call from the other end and waits for its answer.
  [[nodiscard]] QDBusMessage Call(const QDBusMessage& call) const {
    const QDBusPendingCall answer = other_->asyncCall(call);
    Wait([&] { return answer.isFinished(); });
    return answer.reply();
  }

  /// Everything that the program has sent so far has arrived.
  void Settle() const {
    QDBusMessage call = QDBusMessage::createMethodCall(
        QString(), QStringLiteral("/"), QStringLiteral("org.freedesktop.DBus.Peer"), QStringLiteral("Ping"));
    const QDBusPendingCall answer = program_->asyncCall(call);
    Wait([&] { return answer.isFinished(); });
    QCoreApplication::processEvents();
  }

  static void Wait(const std::function<bool()>& done) {
    constexpr qint64 kPatience = 8000;
    QElapsedTimer timer;
    timer.start();
    while (!done()) {
      Require(timer.elapsed() < kPatience);
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    }
  }

 private:
  QDBusServer server_;
  std::optional<QDBusConnection> program_;
  std::optional<QDBusConnection> other_;
};

/// The application object that the event loop needs; made once.
inline void NeedApplication() {
  static int count = 1;
  static char name[] = "fuzz";
  static char* arguments[] = {name, nullptr};
  static const QCoreApplication application(count, arguments);
}

}  // namespace fuzz
