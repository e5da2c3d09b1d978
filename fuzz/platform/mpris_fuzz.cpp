// Plays whatever happens on the session's bus against the desktop's player: calls of known and unknown
// methods with arguments of every type and number (Seek, SetPosition, OpenUri, properties set to wrong
// types), and titles, names and addresses of stations that hold anything. It goes through a real bus
// connection. What must hold: every call gets one answer and neither end loses the connection; nothing but
// the eight methods gives a command, and each gives one; a volume is 0 to 100 and comes from a number;
// nobody's Set changes what is published; every text that is published is valid, bounded and without control
// characters.

#include <fuzzer/FuzzedDataProvider.h>

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QStringList>

#include "fuzz/platform/peer_bus.h"
#include "platform/desktop/mpris_player.h"

namespace {

using fuzz::Require;
using platform::Text;

constexpr const char* kPlayer = "org.mpris.MediaPlayer2.Player";
constexpr const char* kProperties = "org.freedesktop.DBus.Properties";
constexpr std::array kInterfaces = {kPlayer, "org.mpris.MediaPlayer2", kProperties, "org.example.Other", ""};
constexpr std::array kCommands = {"Raise", "Quit", "Next", "Previous", "Pause", "PlayPause", "Stop", "Play"};
constexpr std::array kOthers = {"Seek", "SetPosition", "OpenUri", "Set", "Get", "GetAll", "Nothing"};
constexpr std::array kNames = {"Volume",   "Rate",    "Metadata", "PlaybackStatus",
                               "Position", "CanQuit", "",         "?"};

class AnyPaths final : public platform::NativePaths {
 public:
  Text FromNative(const std::string& native) override { return {native.begin(), native.end()}; }
  std::string ToNative(const Text& path) override { return QString::fromStdU16String(path).toStdString(); }
  std::string ToNativeForReading(const Text& path) override { return ToNative(path); }
};

class Receiver final : public platform::MediaReceiver {
 public:
  void Receive(platform::MediaCommand /*command*/) override { ++commands; }
  void ReceiveVolume(int volume) override {
    Require(volume >= 0 && volume <= 100);
    ++volumes;
  }
  int commands = 0;
  int volumes = 0;
};

class Rig {
 public:
  Rig() : player_(bus.Program(), paths_) { player_.Appear(receiver); }
  fuzz::PeerBus bus;
  Receiver receiver;
  void Publish(const platform::MediaState& state) { player_.Publish(state); }

 private:
  AnyPaths paths_;
  platform::desktop::MprisPlayer player_;
};

QString AnyString(FuzzedDataProvider& input) {
  if (input.ConsumeBool()) return QLatin1String(input.PickValueInArray(kNames));
  if (input.ConsumeBool()) return QLatin1String(input.PickValueInArray(kInterfaces));
  return QString::fromStdU16String(fuzz::AsText(input.ConsumeRandomLengthString(200)));
}

QVariant AnyValue(FuzzedDataProvider& input, int depth) {
  switch (input.ConsumeIntegralInRange(0, depth > 3 ? 9 : 12)) {
    case 0:
      return input.ConsumeFloatingPoint<double>();
    case 1:
      return AnyString(input);
    case 2:
      return input.ConsumeBool();
    case 3:
      return QVariant::fromValue(input.ConsumeIntegral<uchar>());
    case 4:
      return QVariant::fromValue(input.ConsumeIntegral<short>());
    case 5:
      return QVariant::fromValue(input.ConsumeIntegral<int>());
    case 6:
      return QVariant::fromValue(input.ConsumeIntegral<uint>());
    case 7:
      return QVariant::fromValue(qlonglong{input.ConsumeIntegral<std::int64_t>()});
    case 8:
      return QVariant::fromValue(QDBusObjectPath(QStringLiteral("/a/b")));
    case 9:
      return QByteArray::fromStdString(input.ConsumeRandomLengthString(50));
    case 10:
      return QStringList{AnyString(input), AnyString(input)};
    case 11:
      return QVariantMap{{AnyString(input), AnyValue(input, depth + 1)}};
    default:
      return QVariant::fromValue(QDBusVariant(AnyValue(input, depth + 1)));
  }
}

platform::MediaState AnyState(FuzzedDataProvider& input) {
  const auto text = [&] { return fuzz::AsText(input.ConsumeRandomLengthString(5000)); };
  platform::MediaState state;
  state.playback =
      input.PickValueInArray({platform::MediaPlayback::kStopped, platform::MediaPlayback::kPaused,
                              platform::MediaPlayback::kPlaying});
  state.volume = input.ConsumeIntegralInRange(0, 100);
  state.track.number = input.ConsumeIntegralInRange<std::uint64_t>(0, 3);
  state.track.station = text();
  state.track.title = text();
  state.track.artist = text();
  state.track.address = text();
  state.track.picture = text();
  return state;
}

QDBusMessage MethodCall(const QString& interface, const QString& member, const QVariantList& arguments) {
  QDBusMessage call =
      QDBusMessage::createMethodCall(QString(), QStringLiteral("/org/mpris/MediaPlayer2"), interface, member);
  call.setArguments(arguments);
  return call;
}

QVariantMap Published(Rig& rig) {
  const QDBusMessage answer = rig.bus.Call(
      MethodCall(QLatin1String(kProperties), QStringLiteral("GetAll"), {QLatin1String(kPlayer)}));
  Require(answer.type() == QDBusMessage::ReplyMessage);
  return qdbus_cast<QVariantMap>(answer.arguments().value(0));
}

void CheckText(const QString& text) {
  constexpr qsizetype kLongest = 4096;
  Require(text.size() <= kLongest && !fuzz::HoldsControl(text.toStdU16String()));
}

void CheckPublished(Rig& rig, const platform::MediaState& state) {
  const QVariantMap published = Published(rig);
  constexpr qsizetype kCount = 13;
  Require(published.size() == kCount);
  Require(published.value(QStringLiteral("Volume")).toDouble() == state.volume / 100.0);
  Require(published.value(QStringLiteral("Rate")).toDouble() == 1.0);
  const auto metadata = qdbus_cast<QVariantMap>(published.value(QStringLiteral("Metadata")));
  Require(metadata.contains(QStringLiteral("mpris:trackid")));
  Require(state.track.number != 0 || metadata.size() == 1);
  for (const char* key : {"xesam:title", "xesam:album", "xesam:url"}) {
    CheckText(metadata.value(QLatin1String(key)).toString());
  }
  for (const QString& artist : qdbus_cast<QStringList>(metadata.value(QStringLiteral("xesam:artist")))) {
    CheckText(artist);
  }
  const QString picture = metadata.value(QStringLiteral("mpris:artUrl")).toString();
  Require(picture.isEmpty() || picture.startsWith(QLatin1String("file://")));
}

void Command(Rig& rig, FuzzedDataProvider& input) {
  const QString member = QLatin1String(input.PickValueInArray(kCommands));
  const QString interface = QLatin1String(input.PickValueInArray(kInterfaces));
  QVariantList arguments;
  if (input.ConsumeBool()) arguments << AnyValue(input, 0);
  const int before = rig.receiver.commands;
  const QDBusMessage answer = rig.bus.Call(MethodCall(interface, member, arguments));
  const bool is_answered = answer.type() == QDBusMessage::ReplyMessage;
  Require(rig.receiver.commands == before + (is_answered ? 1 : 0));
}

void OtherCall(Rig& rig, FuzzedDataProvider& input) {
  const QString member = QLatin1String(input.PickValueInArray(kOthers));
  const QString interface = QLatin1String(input.PickValueInArray(kInterfaces));
  QVariantList arguments;
  while (input.remaining_bytes() > 0 && arguments.size() < 5 && input.ConsumeBool()) {
    arguments << AnyValue(input, 0);
  }
  const int commands = rig.receiver.commands;
  const int volumes = rig.receiver.volumes;
  const QDBusMessage answer = rig.bus.Call(MethodCall(interface, member, arguments));
  Require(answer.type() == QDBusMessage::ReplyMessage || answer.type() == QDBusMessage::ErrorMessage);
  Require(rig.receiver.commands == commands);
  if (member != QLatin1String("Set")) Require(rig.receiver.volumes == volumes);
}

void SetProperty(Rig& rig, FuzzedDataProvider& input) {
  const QString name = QLatin1String(input.PickValueInArray(kNames));
  const QVariant value = AnyValue(input, 0);
  const int volumes = rig.receiver.volumes;
  const QDBusMessage answer =
      rig.bus.Call(MethodCall(QLatin1String(kProperties), QStringLiteral("Set"),
                              {QLatin1String(kPlayer), name, QVariant::fromValue(QDBusVariant(value))}));
  const bool is_number = value.metaType() == QMetaType::fromType<double>();
  const bool is_set = rig.receiver.volumes != volumes;
  Require(!is_set || (name == QLatin1String("Volume") && is_number));
  Require(!is_set || answer.type() == QDBusMessage::ReplyMessage);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::NeedApplication();
  static Rig rig;
  FuzzedDataProvider input(data, size);
  const platform::MediaState state = AnyState(input);
  rig.Publish(state);
  constexpr int kMostSteps = 8;
  for (int step = 0; step < kMostSteps && input.remaining_bytes() > 0; ++step) {
    switch (input.ConsumeIntegralInRange(0, 2)) {
      case 0:
        Command(rig, input);
        break;
      case 1:
        OtherCall(rig, input);
        break;
      default:
        SetProperty(rig, input);
    }
  }
  CheckPublished(rig, state);
  Require(rig.bus.Program().isConnected() && rig.bus.Other().isConnected());
  return 0;
}
