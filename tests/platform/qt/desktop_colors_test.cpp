#include "platform/qt/desktop_colors.h"

#include <gtest/gtest.h>

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QProcess>
#include <QTimer>

#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

using Scheme = DesktopColors::Scheme;

bool Dark() {
  const QPalette palette = QApplication::palette();
  return palette.color(QPalette::Window).lightness() < 100 &&
         palette.color(QPalette::WindowText).lightness() > 200;
}

/// A desktop's settings service that answers every question with one number and reports when another one is
/// set.
class FakeSettings final : public QDBusVirtualObject {
 public:
  QString introspect(const QString& /*path*/) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
    question = message.member() + QLatin1Char(' ') + message.arguments().value(0).toString() +
               QLatin1Char(' ') + message.arguments().value(1).toString();
    ++questions;
    const QDBusVariant number(QVariant::fromValue(scheme));
    return bus.send(message.createReply(QVariant::fromValue(QDBusVariant(QVariant::fromValue(number)))));
  }
  static void Report(const QDBusConnection& bus, const char* name_space, const char* key, uint value) {
    QDBusMessage signal = QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/portal/desktop"),
                                                     QStringLiteral("org.freedesktop.portal.Settings"),
                                                     QStringLiteral("SettingChanged"));
    signal << QLatin1String(name_space) << QLatin1String(key)
           << QVariant::fromValue(QDBusVariant(QVariant::fromValue(value)));
    bus.send(signal);
  }
  uint scheme = 0;
  QString question;
  int questions = 0;
};

/// A bus of its own for the time of a test.
class Bus {
 public:
  Bus() {
    daemon_.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--session"), QStringLiteral("--nofork"),
                                                  QStringLiteral("--print-address")});
    if (!daemon_.waitForReadyRead(10000)) return;
    address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
  }
  ~Bus() {
    for (const char* name : {"service", "program"}) QDBusConnection::disconnectFromBus(QLatin1String(name));
    daemon_.kill();
    daemon_.waitForFinished();
  }
  [[nodiscard]] QDBusConnection Connect(const char* name) const {
    return QDBusConnection::connectToBus(address_, QLatin1String(name));
  }

 private:
  QProcess daemon_;
  QString address_;
};

class DesktopColorsTest : public ::testing::Test {
 protected:
  /// How many questions the program has asked once it has received what the service reported so far.
  static int QuestionsAfterAll(const FakeSettings& settings, QDBusConnection program,
                               const QDBusConnection& service) {
    QTimer heard;
    heard.setInterval(60000);
    program.connect(QString(), QStringLiteral("/org/freedesktop/portal/desktop"),
                    QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("SettingChanged"),
                    {QStringLiteral("last")}, QString(), &heard, SLOT(start()));
    // The bus must know the match rule before another connection sends what it matches.
    program.call(QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
                                                QStringLiteral("org.freedesktop.DBus"),
                                                QStringLiteral("GetId")));
    FakeSettings::Report(service, "last", "last", 0);
    EXPECT_TRUE(WaitFor([&] { return heard.isActive(); }));
    QApplication::processEvents();
    // Whatever the program asked comes before this query.
    const QDBusPendingCall last = program.asyncCall(QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.portal.Desktop"), QStringLiteral("/org/freedesktop/portal/desktop"),
        QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("Read")));
    EXPECT_TRUE(WaitFor([&] { return last.isFinished(); }));
    return settings.questions - 1;
  }

  ~DesktopColorsTest() override { QApplication::setPalette(QPalette()); }
};

TEST_F(DesktopColorsTest, DarkIsTakenAndGivenBack) {
  const QColor before = QApplication::palette().color(QPalette::Window);
  DesktopColors colors{QDBusConnection(QStringLiteral("none"))};
  ASSERT_FALSE(Dark());
  colors.Follow(Scheme::kDark);
  EXPECT_TRUE(Dark());
  colors.Follow(Scheme::kLight);
  EXPECT_EQ(QApplication::palette().color(QPalette::Window), before);
  colors.Follow(Scheme::kDark);
  colors.Follow(Scheme::kNoPreference);
  EXPECT_FALSE(Dark());
}

TEST_F(DesktopColorsTest, PaletteThatIsDarkAlreadyIsLeftAlone) {
  const QPalette theirs(QColor(40, 40, 60), QColor(40, 40, 60));
  QApplication::setPalette(theirs);
  DesktopColors colors{QDBusConnection(QStringLiteral("none"))};
  colors.Follow(Scheme::kDark);
  colors.Follow(Scheme::kLight);
  EXPECT_EQ(QApplication::palette().color(QPalette::Window), QColor(40, 40, 60));
}

TEST_F(DesktopColorsTest, OpenWindowFollows) {
  WindowFixture fixture;
  ASSERT_TRUE(fixture.Open());
  DesktopColors colors{QDBusConnection(QStringLiteral("none"))};
  colors.Follow(Scheme::kDark);
  ASSERT_TRUE(WaitFor([&] { return fixture.window->palette().color(QPalette::Window).lightness() < 100; }));
  const QImage window = fixture.window->grab().toImage();
  EXPECT_LT(window.pixelColor(2, window.height() - 2).lightness(), 100);
}

TEST_F(DesktopColorsTest, SettingsServiceIsAskedAtTheStartAndWheneverTheProgramComesToTheFront) {
  const Bus bus;
  QDBusConnection service = bus.Connect("service");
  ASSERT_TRUE(service.isConnected()) << "dbus-daemon is needed";
  FakeSettings settings;
  settings.scheme = 1;
  ASSERT_TRUE(service.registerVirtualObject(QStringLiteral("/org/freedesktop/portal/desktop"), &settings));
  ASSERT_TRUE(service.registerService(QStringLiteral("org.freedesktop.portal.Desktop")));
  const DesktopColors colors(bus.Connect("program"));
  EXPECT_TRUE(WaitFor([] { return Dark(); }));
  EXPECT_EQ(settings.question, "Read org.freedesktop.appearance color-scheme");
  settings.scheme = 2;
  Q_EMIT qApp->applicationStateChanged(Qt::ApplicationActive);
  EXPECT_TRUE(WaitFor([] { return !Dark(); }));
}

TEST_F(DesktopColorsTest, SwitchOfTheDesktopIsFollowedAtOnce) {
  const Bus bus;
  QDBusConnection service = bus.Connect("service");
  ASSERT_TRUE(service.isConnected()) << "dbus-daemon is needed";
  FakeSettings settings;
  ASSERT_TRUE(service.registerVirtualObject(QStringLiteral("/org/freedesktop/portal/desktop"), &settings));
  ASSERT_TRUE(service.registerService(QStringLiteral("org.freedesktop.portal.Desktop")));
  WindowFixture fixture;
  ASSERT_TRUE(fixture.Open());
  const DesktopColors colors(bus.Connect("program"));
  ASSERT_TRUE(WaitFor([&] { return settings.questions == 1; }));
  settings.scheme = 1;
  FakeSettings::Report(service, "org.freedesktop.appearance", "contrast", 1);
  FakeSettings::Report(service, "org.gnome.desktop.interface", "color-scheme", 1);
  EXPECT_EQ(QuestionsAfterAll(settings, bus.Connect("program"), service), 1) << "only this setting counts";
  FakeSettings::Report(service, "org.freedesktop.appearance", "color-scheme", 1);
  EXPECT_TRUE(WaitFor([] { return Dark(); }));
  EXPECT_TRUE(WaitFor([&] { return fixture.window->palette().color(QPalette::Window).lightness() < 100; }));
  settings.scheme = 0;
  FakeSettings::Report(service, "org.freedesktop.appearance", "color-scheme", 0);
  EXPECT_TRUE(WaitFor([] { return !Dark(); }));
}

TEST_F(DesktopColorsTest, ServiceThatStartsLaterIsFollowedToo) {
  const Bus bus;
  const DesktopColors colors(bus.Connect("program"));
  QDBusConnection service = bus.Connect("service");
  ASSERT_TRUE(service.isConnected()) << "dbus-daemon is needed";
  FakeSettings settings;
  settings.scheme = 1;
  ASSERT_TRUE(service.registerVirtualObject(QStringLiteral("/org/freedesktop/portal/desktop"), &settings));
  ASSERT_TRUE(service.registerService(QStringLiteral("org.freedesktop.portal.Desktop")));
  // The program learns of the service's start from the bus; until then it hears nothing from it.
  EXPECT_TRUE(WaitFor([&] {
    FakeSettings::Report(service, "org.freedesktop.appearance", "color-scheme", 1);
    return Dark();
  }));
}

TEST_F(DesktopColorsTest, WithoutTheServiceNothingChanges) {
  const Bus bus;
  QDBusConnection service = bus.Connect("service");
  ASSERT_TRUE(service.isConnected()) << "dbus-daemon is needed";
  FakeSettings other;
  ASSERT_TRUE(service.registerVirtualObject(QStringLiteral("/"), &other));
  const DesktopColors colors(bus.Connect("program"));
  // An answer to a later call shows that the earlier one was answered too.
  QDBusConnection program = bus.Connect("program");
  program.call(QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
                                              QStringLiteral("org.freedesktop.DBus"),
                                              QStringLiteral("GetId")));
  QApplication::processEvents();
  EXPECT_FALSE(Dark());
}

}  // namespace
}  // namespace platform::qt
