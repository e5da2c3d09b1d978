#include "platform/qt/desktop_colors.h"

#include <QApplication>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <utility>

namespace platform::qt {
namespace {

constexpr QLatin1String kService("org.freedesktop.portal.Desktop");
constexpr QLatin1String kPath("/org/freedesktop/portal/desktop");
constexpr QLatin1String kSettings("org.freedesktop.portal.Settings");
constexpr QLatin1String kNamespace("org.freedesktop.appearance");
constexpr QLatin1String kKey("color-scheme");

bool IsDark(const QPalette& palette) {
  return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

/// The number inside an answer, which is wrapped once or twice.
DesktopColors::Scheme SchemeOf(QVariant value) {
  while (value.metaType() == QMetaType::fromType<QDBusVariant>()) {
    value = value.value<QDBusVariant>().variant();
  }
  switch (value.toUInt()) {
    case 1:
      return DesktopColors::Scheme::kDark;
    case 2:
      return DesktopColors::Scheme::kLight;
    default:
      return DesktopColors::Scheme::kNoPreference;
  }
}

}  // namespace

QPalette DesktopColors::DarkPalette() {
  const struct {
    QPalette::ColorRole role;
    QRgb color;
  } colors[] = {{QPalette::Window, 0xff353535},
                {QPalette::WindowText, 0xfff0f0f0},
                {QPalette::Base, 0xff232323},
                {QPalette::AlternateBase, 0xff2b2b2b},
                {QPalette::Text, 0xfff0f0f0},
                {QPalette::PlaceholderText, 0xff9a9a9a},
                {QPalette::Button, 0xff454545},
                {QPalette::ButtonText, 0xfff0f0f0},
                {QPalette::BrightText, 0xffffffff},
                {QPalette::Highlight, 0xff2a72c0},
                {QPalette::HighlightedText, 0xffffffff},
                {QPalette::Link, 0xff5aa9f0},
                {QPalette::LinkVisited, 0xffb48ead},
                {QPalette::ToolTipBase, 0xff232323},
                {QPalette::ToolTipText, 0xfff0f0f0},
                {QPalette::Light, 0xff6a6a6a},
                {QPalette::Midlight, 0xff555555},
                {QPalette::Mid, 0xff5f5f5f},
                {QPalette::Dark, 0xff202020},
                {QPalette::Shadow, 0xff000000}};
  QPalette palette;
  for (const auto& one : colors) palette.setColor(one.role, QColor::fromRgb(one.color));
  constexpr QRgb kDisabledText = 0xff858585;
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, QColor::fromRgb(kDisabledText));
  }
  return palette;
}

DesktopColors::DesktopColors(QDBusConnection bus) : bus_(std::move(bus)) {
  if (!bus_.isConnected()) return;
  // A signal of the bus needs a slot by name. The timer's has the right one: what has changed is asked for,
  // so that there is one way of reading it, and it need not be known who reports: finding out whose name the
  // service's is would wait for the bus.
  ask_.setSingleShot(true);
  ask_.setInterval(0);
  connect(&ask_, &QTimer::timeout, this, [this] { Ask(); });
  bus_.connect(QString(), kPath, kSettings, QStringLiteral("SettingChanged"),
               {QString(kNamespace), QString(kKey)}, QString(), &ask_, SLOT(start()));
  connect(qApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
    if (state == Qt::ApplicationActive) Ask();
  });
  Ask();
}

DesktopColors::~DesktopColors() = default;

QDBusConnection DesktopColors::SessionBus() {
  // Without an address the bus's library would start a bus.
  const bool none = qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS");
  return none ? QDBusConnection(QStringLiteral("none")) : QDBusConnection::sessionBus();
}

void DesktopColors::Ask() {
  QDBusMessage call = QDBusMessage::createMethodCall(kService, kPath, kSettings, QStringLiteral("Read"));
  call << QString(kNamespace) << QString(kKey);
  auto* answer = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
  connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
    answer->deleteLater();
    const QDBusMessage reply = QDBusPendingReply<>(*answer).reply();
    if (!answer->isError() && !reply.arguments().isEmpty()) Follow(SchemeOf(reply.arguments().first()));
  });
}

void DesktopColors::Follow(Scheme scheme) {
  if (scheme == Scheme::kDark) {
    if (IsDark(QApplication::palette())) return;
    own_palette_ = true;
    QApplication::setPalette(DarkPalette());
  } else if (own_palette_) {
    own_palette_ = false;
    QApplication::setPalette(QPalette());
  }
}

}  // namespace platform::qt
