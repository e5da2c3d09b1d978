#include "platform/desktop/mpris_player.h"

#include <QCoreApplication>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QStringList>
#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "platform/desktop/texts.h"

namespace platform::desktop {
namespace {

constexpr QLatin1String kName("org.mpris.MediaPlayer2.funkhausplayer");
constexpr QLatin1String kPath("/org/mpris/MediaPlayer2");
constexpr QLatin1String kRoot("org.mpris.MediaPlayer2");
constexpr QLatin1String kPlayer("org.mpris.MediaPlayer2.Player");
constexpr QLatin1String kProperties("org.freedesktop.DBus.Properties");

constexpr QLatin1String kInterfaces(R"(
  <interface name="org.mpris.MediaPlayer2">
    <method name="Raise"/>
    <method name="Quit"/>
    <property name="CanQuit" type="b" access="read"/>
    <property name="CanRaise" type="b" access="read"/>
    <property name="HasTrackList" type="b" access="read"/>
    <property name="Identity" type="s" access="read"/>
    <property name="DesktopEntry" type="s" access="read"/>
    <property name="SupportedUriSchemes" type="as" access="read"/>
    <property name="SupportedMimeTypes" type="as" access="read"/>
  </interface>
  <interface name="org.mpris.MediaPlayer2.Player">
    <method name="Next"/>
    <method name="Previous"/>
    <method name="Pause"/>
    <method name="PlayPause"/>
    <method name="Stop"/>
    <method name="Play"/>
    <method name="Seek"><arg name="Offset" type="x" direction="in"/></method>
    <method name="SetPosition">
      <arg name="TrackId" type="o" direction="in"/><arg name="Position" type="x" direction="in"/>
    </method>
    <method name="OpenUri"><arg name="Uri" type="s" direction="in"/></method>
    <signal name="Seeked"><arg name="Position" type="x"/></signal>
    <property name="PlaybackStatus" type="s" access="read"/>
    <property name="Rate" type="d" access="readwrite"/>
    <property name="Metadata" type="a{sv}" access="read"/>
    <property name="Volume" type="d" access="readwrite"/>
    <property name="Position" type="x" access="read">
      <annotation name="org.freedesktop.DBus.Property.EmitsChangedSignal" value="false"/>
    </property>
    <property name="MinimumRate" type="d" access="read"/>
    <property name="MaximumRate" type="d" access="read"/>
    <property name="CanGoNext" type="b" access="read"/>
    <property name="CanGoPrevious" type="b" access="read"/>
    <property name="CanPlay" type="b" access="read"/>
    <property name="CanPause" type="b" access="read"/>
    <property name="CanSeek" type="b" access="read"/>
    <property name="CanControl" type="b" access="read">
      <annotation name="org.freedesktop.DBus.Property.EmitsChangedSignal" value="false"/>
    </property>
  </interface>
  <interface name="org.freedesktop.DBus.Properties">
    <method name="Get">
      <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/>
    </method>
    <method name="Set">
      <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="in"/>
    </method>
    <method name="GetAll"><arg type="s" direction="in"/><arg type="a{sv}" direction="out"/></method>
    <signal name="PropertiesChanged"><arg type="s"/><arg type="a{sv}"/><arg type="as"/></signal>
  </interface>
)");

struct Method {
  QLatin1String interface;
  QLatin1String name;
  MediaCommand command;
};
constexpr std::array kMethods = {Method{kRoot, QLatin1String("Raise"), MediaCommand::kRaise},
                                 Method{kRoot, QLatin1String("Quit"), MediaCommand::kQuit},
                                 Method{kPlayer, QLatin1String("Next"), MediaCommand::kNext},
                                 Method{kPlayer, QLatin1String("Previous"), MediaCommand::kPrevious},
                                 Method{kPlayer, QLatin1String("Pause"), MediaCommand::kPause},
                                 Method{kPlayer, QLatin1String("PlayPause"), MediaCommand::kPlayPause},
                                 Method{kPlayer, QLatin1String("Stop"), MediaCommand::kStop},
                                 Method{kPlayer, QLatin1String("Play"), MediaCommand::kPlay}};

QVariantMap RootProperties() {
  return {{QStringLiteral("CanQuit"), true},
          {QStringLiteral("CanRaise"), true},
          {QStringLiteral("HasTrackList"), false},
          {QStringLiteral("Identity"), QStringLiteral("Funkhausplayer")},
          {QStringLiteral("DesktopEntry"), QStringLiteral("funkhausplayer")},
          {QStringLiteral("SupportedUriSchemes"), QStringList()},
          {QStringLiteral("SupportedMimeTypes"), QStringList()}};
}

QString StatusOf(MediaPlayback playback) {
  switch (playback) {
    case MediaPlayback::kPlaying:
      return QStringLiteral("Playing");
    case MediaPlayback::kPaused:
      return QStringLiteral("Paused");
    case MediaPlayback::kStopped:
      break;
  }
  return QStringLiteral("Stopped");
}

QDBusMessage NoSuchProperty(const QDBusMessage& call) {
  return call.createErrorReply(QDBusError::UnknownProperty, QStringLiteral("There is no such property"));
}

}  // namespace

MprisPlayer::MprisPlayer(QDBusConnection bus, NativePaths& paths) : bus_(std::move(bus)), paths_(paths) {}

MprisPlayer::~MprisPlayer() { Withdraw(); }

void MprisPlayer::Appear(MediaReceiver& receiver) {
  receiver_ = &receiver;
  published_ = PlayerProperties();
  if (!bus_.isConnected()) return;
  bus_.registerVirtualObject(kPath, this);
  AskForName(kName);
}

void MprisPlayer::AskForName(const QString& name) {
  constexpr uint kDoNotQueue = 4;
  constexpr uint kIsOwner = 1;
  QDBusMessage call = QDBusMessage::createMethodCall(
      QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
      QStringLiteral("org.freedesktop.DBus"), QStringLiteral("RequestName"));
  call << name << kDoNotQueue;
  name_ = name;
  auto* answer = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
  connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer, name] {
    answer->deleteLater();
    const QDBusPendingReply<uint> reply = *answer;
    if (receiver_ == nullptr || reply.isError() || reply.value() == kIsOwner || name != kName) return;
    AskForName(kName + QStringLiteral(".instance%1").arg(QCoreApplication::applicationPid()));
  });
}

void MprisPlayer::Withdraw() {
  if (std::exchange(receiver_, nullptr) == nullptr || !bus_.isConnected()) return;
  bus_.unregisterObject(kPath);
  QDBusMessage call = QDBusMessage::createMethodCall(
      QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
      QStringLiteral("org.freedesktop.DBus"), QStringLiteral("ReleaseName"));
  call << name_;
  bus_.asyncCall(call);
}

void MprisPlayer::Publish(const MediaState& state) {
  state_ = state;
  QVariantMap now = PlayerProperties();
  QVariantMap changed;
  for (auto property = now.cbegin(); property != now.cend(); ++property) {
    if (published_.value(property.key()) != property.value())
      changed.insert(property.key(), property.value());
  }
  published_ = std::move(now);
  if (changed.isEmpty() || receiver_ == nullptr || !bus_.isConnected()) return;
  QDBusMessage signal = QDBusMessage::createSignal(kPath, kProperties, QStringLiteral("PropertiesChanged"));
  signal << QString(kPlayer) << changed << QStringList();
  bus_.send(signal);
}

QVariantMap MprisPlayer::PlayerProperties() const {
  constexpr double kFull = 100.0;
  return {{QStringLiteral("PlaybackStatus"), StatusOf(state_.playback)},
          {QStringLiteral("Rate"), 1.0},
          {QStringLiteral("MinimumRate"), 1.0},
          {QStringLiteral("MaximumRate"), 1.0},
          {QStringLiteral("Metadata"), Metadata()},
          {QStringLiteral("Volume"), state_.volume / kFull},
          {QStringLiteral("Position"), qlonglong{0}},
          {QStringLiteral("CanGoNext"), state_.can_go_next},
          {QStringLiteral("CanGoPrevious"), state_.can_go_previous},
          {QStringLiteral("CanPlay"), state_.can_play},
          {QStringLiteral("CanPause"), true},
          {QStringLiteral("CanSeek"), false},
          {QStringLiteral("CanControl"), true}};
}

QVariantMap MprisPlayer::Metadata() const {
  const MediaTrack& track = state_.track;
  const QString id = track.number == 0 ? QStringLiteral("/org/mpris/MediaPlayer2/TrackList/NoTrack")
                                       : QStringLiteral("/funkhausplayer/started/%1").arg(track.number);
  QVariantMap metadata{{QStringLiteral("mpris:trackid"), QVariant::fromValue(QDBusObjectPath(id))}};
  if (track.number == 0) return metadata;
  const QString station = ForBus(track.station);
  const bool titled = !track.title.empty();
  metadata.insert(QStringLiteral("xesam:title"), titled ? ForBus(track.title) : station);
  if (!track.artist.empty()) {
    metadata.insert(QStringLiteral("xesam:artist"), QStringList(ForBus(track.artist)));
  }
  metadata.insert(QStringLiteral("xesam:album"), station);
  metadata.insert(QStringLiteral("xesam:url"), ForBus(track.address));
  if (!track.picture.empty()) {
    metadata.insert(QStringLiteral("mpris:artUrl"), FileAddress(paths_.ToNativeForReading(track.picture)));
  }
  return metadata;
}

QVariantMap MprisPlayer::Properties(const QString& interface) const {
  if (interface == kRoot) return RootProperties();
  return interface == kPlayer ? PlayerProperties() : QVariantMap();
}

QString MprisPlayer::introspect(const QString& path) const {
  return path == kPath ? QString(kInterfaces) : QString();
}

bool MprisPlayer::handleMessage(const QDBusMessage& message, const QDBusConnection& bus) {
  if (message.interface() == QLatin1String("org.freedesktop.DBus.Introspectable")) return false;
  const QDBusMessage answer = Answer(message);
  if (message.isReplyRequired()) bus.send(answer);
  return true;
}

QDBusMessage MprisPlayer::Answer(const QDBusMessage& call) {
  if (call.interface() == kProperties) return AnswerProperties(call);
  for (const Method& method : kMethods) {
    const bool this_interface = call.interface().isEmpty() || call.interface() == method.interface;
    if (!this_interface || call.member() != method.name) continue;
    if (receiver_ != nullptr) receiver_->Receive(method.command);
    return call.createReply();
  }
  const bool moves = call.member() == QLatin1String("Seek") || call.member() == QLatin1String("SetPosition");
  // Without CanSeek neither has an effect.
  if (moves) return call.createReply();
  if (call.member() == QLatin1String("OpenUri")) {
    return call.createErrorReply(QDBusError::NotSupported, QStringLiteral("Addresses are not opened"));
  }
  return call.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("There is no such method"));
}

QDBusMessage MprisPlayer::AnswerProperties(const QDBusMessage& call) {
  const QString& signature = call.signature();
  const QVariantList arguments = call.arguments();
  if (call.member() == QLatin1String("Set") && signature == QLatin1String("ssv")) return Set(call);
  if (call.member() == QLatin1String("GetAll") && signature == QLatin1String("s")) {
    return call.createReply(QVariant(Properties(arguments[0].toString())));
  }
  if (call.member() == QLatin1String("Get") && signature == QLatin1String("ss")) {
    const QVariantMap properties = Properties(arguments[0].toString());
    const auto property = properties.constFind(arguments[1].toString());
    if (property == properties.cend()) return NoSuchProperty(call);
    return call.createReply(QVariant::fromValue(QDBusVariant(*property)));
  }
  return call.createErrorReply(QDBusError::InvalidArgs,
                               QStringLiteral("These are no arguments of a property"));
}

QDBusMessage MprisPlayer::Set(const QDBusMessage& call) {
  const QString interface = call.arguments()[0].toString();
  const QString name = call.arguments()[1].toString();
  const QVariant value = call.arguments()[2].value<QDBusVariant>().variant();
  if (interface == kPlayer && name == QLatin1String("Volume")) return SetVolume(call, value);
  // The only rate there is.
  if (interface == kPlayer && name == QLatin1String("Rate")) return call.createReply();
  if (!Properties(interface).contains(name)) return NoSuchProperty(call);
  return call.createErrorReply(QDBusError::PropertyReadOnly, QStringLiteral("This property cannot be set"));
}

QDBusMessage MprisPlayer::SetVolume(const QDBusMessage& call, const QVariant& value) {
  const bool is_number = value.metaType() == QMetaType::fromType<double>();
  const double volume = is_number ? value.toDouble() : std::nan("");
  if (std::isnan(volume)) {
    return call.createErrorReply(QDBusError::InvalidArgs, QStringLiteral("A volume is a number"));
  }
  constexpr double kFull = 100.0;
  const int wanted = static_cast<int>(std::lround(std::clamp(volume, 0.0, 1.0) * kFull));
  if (receiver_ != nullptr) receiver_->ReceiveVolume(wanted);
  return call.createReply();
}

}  // namespace platform::desktop
