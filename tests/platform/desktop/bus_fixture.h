#pragma once
// A private bus with two connections, the program's and a service's, and programs that are run on it.
// Not a desktop: what answers there is each test's own.

#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QElapsedTimer>
#include <QProcess>
#include <QStringList>
#include <QTest>
#include <functional>
#include <vector>

#include "tests/support/private_bus.h"

namespace platform::desktop {

/// Processes events until `done`; false when that takes ten seconds.
inline bool WaitFor(const std::function<bool()>& done) {
  constexpr int kDeadline = 10000;
  return QTest::qWaitFor(done, kDeadline);
}

/// Answers every call as the test wants, and keeps it.
class FakeService final : public QDBusVirtualObject {
 public:
  QString introspect(const QString& /*path*/) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
    calls.push_back(message);
    if (holds_back) return true;
    return bus.send(answer(message));
  }
  [[nodiscard]] int Count(const char* member) const {
    int count = 0;
    for (const QDBusMessage& call : calls) count += call.member() == QLatin1String(member) ? 1 : 0;
    return count;
  }
  /// The last call of this method.
  [[nodiscard]] QDBusMessage Last(const char* member) const {
    for (auto call = calls.rbegin(); call != calls.rend(); ++call) {
      if (call->member() == QLatin1String(member)) return *call;
    }
    return {};
  }

  std::function<QDBusMessage(const QDBusMessage&)> answer = [](const QDBusMessage& call) {
    return call.createReply();
  };
  bool holds_back = false;  ///< calls are kept and not answered
  std::vector<QDBusMessage> calls;
};

class BusTest : public ::testing::Test {
 protected:
  ~BusTest() override {
    for (const char* name : {"service", "program"}) QDBusConnection::disconnectFromBus(QLatin1String(name));
  }
  QDBusConnection Connect(const char* name) const {
    return QDBusConnection::connectToBus(QString::fromStdString(bus_.Address()), QLatin1String(name));
  }
  QDBusConnection Program() const { return Connect("program"); }
  QDBusConnection Service() const { return Connect("service"); }
  /// Makes `service` known on the bus under this name and path.
  bool Offer(FakeService& service, const char* name, const char* path) const {
    QDBusConnection bus = Service();
    return bus.registerVirtualObject(QLatin1String(path), &service, QDBusConnection::SubPath) &&
           bus.registerService(QLatin1String(name));
  }
  struct Outcome {
    int exit_code = -1;
    QString output;
  };
  /// Runs a program on the bus while the adapters answer it.
  Outcome Run(const QString& program, const QStringList& arguments) const {
    QProcess process;
    process.setProcessEnvironment(Environment());
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    EXPECT_TRUE(WaitFor([&] { return process.state() == QProcess::NotRunning; })) << program.toStdString();
    return {process.exitCode(), QString::fromUtf8(process.readAll()).trimmed()};
  }
  QProcessEnvironment Environment() const {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QString::fromStdString(bus_.Address()));
    return environment;
  }
  /// Everything that the program has sent so far has arrived.
  void Settle() const {
    EXPECT_EQ(Program()
                  .call(QDBusMessage::createMethodCall(
                      QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
                      QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId")))
                  .type(),
              QDBusMessage::ReplyMessage);
    EXPECT_EQ(Service()
                  .call(QDBusMessage::createMethodCall(
                      QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
                      QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId")))
                  .type(),
              QDBusMessage::ReplyMessage);
    for (int round = 0; round < 3; ++round) QCoreApplication::processEvents();
  }

  test_support::PrivateBus bus_;
};

}  // namespace platform::desktop
