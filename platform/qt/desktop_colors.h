#pragma once
// Follows the desktop's preference for dark or light colours where the toolkit does not know it.
// Not the colours of single widgets; those take everything from the application's palette.

#include <QDBusConnection>
#include <QObject>
#include <QPalette>
#include <QTimer>

namespace platform::qt {

/// Asks the desktop's settings service for "color-scheme" of "org.freedesktop.appearance", at once, when the
/// service reports a change and whenever the program comes to the front, and never waits for the answer.
/// Without such a service nothing happens. Source: XDG Desktop Portal, interface
/// org.freedesktop.portal.Settings.
class DesktopColors final : public QObject {
 public:
  explicit DesktopColors(QDBusConnection bus = SessionBus());
  ~DesktopColors() override;

  /// The session's bus, or a connection to nothing when the session has none.
  static QDBusConnection SessionBus();

  /// The colours for a desktop that prefers dark ones.
  static QPalette DarkPalette();

  enum class Scheme { kNoPreference = 0, kDark = 1, kLight = 2 };

  /// Gives the application a dark palette when dark is preferred and its palette is light, and undoes that
  /// when dark is no longer preferred. A palette that was set elsewhere is left alone.
  void Follow(Scheme scheme);

 private:
  void Ask();

  QDBusConnection bus_;
  QTimer ask_;
  bool own_palette_ = false;
};

}  // namespace platform::qt
