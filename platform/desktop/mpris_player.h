#pragma once
// The player on the session's bus, as media keys and panels know players: MPRIS 2. Not what a command means,
// which its receiver decides.

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>
#include <QVariantMap>

#include "ports/media_controls.h"
#include "ports/native_paths.h"

namespace platform::desktop {

/// From Appear to Withdraw the bus knows the player as "org.mpris.MediaPlayer2.funkhausplayer", or with
/// ".instance" and the process number behind it when that name is taken. Asking the bus waits for no answer.
/// Without a bus, or once it has closed, nothing happens. Public source: MPRIS D-Bus interface specification
/// 2.2 of freedesktop.org.
class MprisPlayer final : public QDBusVirtualObject, public MediaControls {
 public:
  MprisPlayer(QDBusConnection bus, NativePaths& paths);
  ~MprisPlayer() override;

  void Appear(MediaReceiver& receiver) override;
  void Publish(const MediaState& state) override;
  void Withdraw() override;

  [[nodiscard]] QString introspect(const QString& path) const override;
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override;

 private:
  void AskForName(const QString& name);
  [[nodiscard]] QVariantMap PlayerProperties() const;
  [[nodiscard]] QVariantMap Metadata() const;
  [[nodiscard]] QVariantMap Properties(const QString& interface) const;
  [[nodiscard]] QDBusMessage Answer(const QDBusMessage& call);
  [[nodiscard]] QDBusMessage AnswerProperties(const QDBusMessage& call);
  [[nodiscard]] QDBusMessage Set(const QDBusMessage& call);
  [[nodiscard]] QDBusMessage SetVolume(const QDBusMessage& call, const QVariant& value);

  QDBusConnection bus_;
  NativePaths& paths_;
  MediaReceiver* receiver_ = nullptr;
  QString name_;
  MediaState state_;
  QVariantMap published_;
};

}  // namespace platform::desktop
