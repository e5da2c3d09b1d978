#include "platform/desktop/mpris_player.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "tests/platform/desktop/bus_fixture.h"

namespace platform::desktop {
namespace {

class PlainPaths final : public NativePaths {
 public:
  Text FromNative(const std::string& native) override { return Text(native.begin(), native.end()); }
  std::string ToNative(const Text& path) override {
    return QString::fromStdU16String(path).replace(QLatin1Char('\\'), QLatin1Char('/')).toStdString();
  }
  std::string ToNativeForReading(const Text& path) override { return ToNative(path); }
};

class Receiver final : public MediaReceiver {
 public:
  void Receive(MediaCommand command) override { commands.push_back(command); }
  void ReceiveVolume(int volume) override { volumes.push_back(volume); }
  std::vector<MediaCommand> commands;
  std::vector<int> volumes;
};

constexpr char kName[] = "org.mpris.MediaPlayer2.funkhausplayer";

class MprisPlayerTest : public BusTest {
 protected:
  MprisPlayerTest() {
    playing_.playback = MediaPlayback::kPlaying;
    playing_.track = {
        7, u"Radio Ä", u"Künstler", u"Lied & Lied", u"\\Bilder\\Radio Ä.jpg", u"http://a/s?x=1"};
    playing_.volume = 40;
    playing_.can_play = playing_.can_go_next = true;
  }
  void Appear() {
    player_ = std::make_unique<MprisPlayer>(Program(), paths_);
    player_->Appear(receiver_);
    ASSERT_TRUE(WaitFor([this] { return Owned(kName); }));
  }
  [[nodiscard]] bool Owned(const QString& name) const { return Names().contains(name); }
  [[nodiscard]] QStringList Names() const {
    const QDBusMessage reply = Service().call(
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
                                       QStringLiteral("org.freedesktop.DBus"), QStringLiteral("ListNames")));
    return reply.arguments().value(0).toStringList();
  }
  Outcome Playerctl(const QStringList& arguments) const {
    return Run(QStringLiteral("playerctl"),
               QStringList{QStringLiteral("--player=funkhausplayer")} + arguments);
  }
  QString Metadata(const char* key) const {
    return Playerctl({QStringLiteral("metadata"), QLatin1String(key)}).output;
  }
  /// Calls the player as another program would, with any arguments; the answer.
  QDBusMessage Call(const char* interface, const char* member, const QVariantList& arguments = {}) {
    QDBusMessage call =
        QDBusMessage::createMethodCall(QLatin1String(kName), QStringLiteral("/org/mpris/MediaPlayer2"),
                                       QLatin1String(interface), QLatin1String(member));
    call.setArguments(arguments);
    const QDBusPendingCall answer = Service().asyncCall(call);
    EXPECT_TRUE(WaitFor([&] { return answer.isFinished(); }));
    return answer.reply();
  }
  QDBusMessage SetProperty(const char* name, const QVariant& value) {
    return Call("org.freedesktop.DBus.Properties", "Set",
                {QStringLiteral("org.mpris.MediaPlayer2.Player"), QLatin1String(name),
                 QVariant::fromValue(QDBusVariant(value))});
  }

  PlainPaths paths_;
  Receiver receiver_;
  MediaState playing_;
  std::unique_ptr<MprisPlayer> player_;
};

TEST_F(MprisPlayerTest, PlayerctlReadsWhatPlays) {
  Appear();
  player_->Publish(playing_);
  EXPECT_EQ(Playerctl({QStringLiteral("status")}).output, QStringLiteral("Playing"));
  EXPECT_EQ(Metadata("xesam:title"), QStringLiteral("Lied & Lied"));
  EXPECT_EQ(Metadata("xesam:artist"), QString::fromUtf8("Künstler"));
  EXPECT_EQ(Metadata("xesam:album"), QString::fromUtf8("Radio Ä"));
  EXPECT_EQ(Metadata("xesam:url"), QStringLiteral("http://a/s?x=1"));
  EXPECT_EQ(Metadata("mpris:artUrl"), QStringLiteral("file:///Bilder/Radio%20%C3%84.jpg"));
  EXPECT_EQ(Metadata("mpris:trackid"), QStringLiteral("'/funkhausplayer/started/7'"));
  EXPECT_EQ(Playerctl({QStringLiteral("volume")}).output.toDouble(), 0.4);
}

TEST_F(MprisPlayerTest, WithoutATitleTheStationIsTheTitleAndAfterStopThereIsNoTrack) {
  Appear();
  playing_.track.artist = playing_.track.title = playing_.track.picture = u"";
  player_->Publish(playing_);
  EXPECT_EQ(Metadata("xesam:title"), QString::fromUtf8("Radio Ä"));
  EXPECT_NE(Playerctl({QStringLiteral("metadata"), QStringLiteral("xesam:artist")}).exit_code, 0);
  EXPECT_NE(Playerctl({QStringLiteral("metadata"), QStringLiteral("mpris:artUrl")}).exit_code, 0);
  player_->Publish({});
  EXPECT_EQ(Playerctl({QStringLiteral("status")}).output, QStringLiteral("Stopped"));
  const QDBusMessage answer =
      Call("org.freedesktop.DBus.Properties", "Get",
           {QStringLiteral("org.mpris.MediaPlayer2.Player"), QStringLiteral("Metadata")});
  const auto metadata = qdbus_cast<QVariantMap>(answer.arguments().value(0).value<QDBusVariant>().variant());
  ASSERT_EQ(metadata.size(), 1);
  EXPECT_EQ(metadata.value(QStringLiteral("mpris:trackid")).value<QDBusObjectPath>().path(),
            QStringLiteral("/org/mpris/MediaPlayer2/TrackList/NoTrack"));
}

TEST_F(MprisPlayerTest, PlayerctlGivesEveryCommand) {
  Appear();
  playing_.can_go_previous = true;
  player_->Publish(playing_);
  for (const char* command : {"play", "pause", "play-pause", "stop", "next", "previous"}) {
    EXPECT_EQ(Playerctl({QLatin1String(command)}).exit_code, 0) << command;
  }
  const std::vector<MediaCommand> expected = {MediaCommand::kPlay,      MediaCommand::kPause,
                                              MediaCommand::kPlayPause, MediaCommand::kStop,
                                              MediaCommand::kNext,      MediaCommand::kPrevious};
  EXPECT_EQ(receiver_.commands, expected);
  EXPECT_EQ(Playerctl({QStringLiteral("volume"), QStringLiteral("0.25")}).exit_code, 0);
  EXPECT_EQ(receiver_.volumes, std::vector<int>{25});
}

TEST_F(MprisPlayerTest, GdbusRaisesAndQuits) {
  Appear();
  const auto gdbus = [this](const char* method) {
    return Run(
        QStringLiteral("gdbus"),
        {QStringLiteral("call"), QStringLiteral("--session"), QStringLiteral("--dest"), QLatin1String(kName),
         QStringLiteral("--object-path"), QStringLiteral("/org/mpris/MediaPlayer2"),
         QStringLiteral("--method"), QLatin1String("org.mpris.MediaPlayer2.") + QLatin1String(method)});
  };
  EXPECT_EQ(gdbus("Raise").exit_code, 0);
  EXPECT_EQ(gdbus("Quit").exit_code, 0);
  EXPECT_EQ(receiver_.commands, (std::vector<MediaCommand>{MediaCommand::kRaise, MediaCommand::kQuit}));
}

TEST_F(MprisPlayerTest, GdbusFindsTheInterfacesAndTheirProperties) {
  Appear();
  player_->Publish(playing_);
  const QString found =
      Run(QStringLiteral("gdbus"),
          {QStringLiteral("introspect"), QStringLiteral("--session"), QStringLiteral("--dest"),
           QLatin1String(kName), QStringLiteral("--object-path"), QStringLiteral("/org/mpris/MediaPlayer2")})
          .output;
  for (const char* part :
       {"interface org.mpris.MediaPlayer2 {", "interface org.mpris.MediaPlayer2.Player {",
        "readonly s Identity = 'Funkhausplayer'", "readonly b CanQuit = true", "readonly b CanRaise = true",
        "readonly s DesktopEntry = 'funkhausplayer'", "readwrite d Volume = 0.4",
        "readonly b CanGoNext = true", "readonly b CanGoPrevious = false", "readonly b CanControl = true",
        "readonly b CanSeek = false", "PlayPause();"}) {
    EXPECT_TRUE(found.contains(QLatin1String(part))) << part << "\n" << found.toStdString();
  }
}

TEST_F(MprisPlayerTest, SecondPlayerBearsItsProcessNumber) {
  QDBusConnection other = Service();
  ASSERT_TRUE(other.registerService(QLatin1String(kName)));
  player_ = std::make_unique<MprisPlayer>(Program(), paths_);
  player_->Appear(receiver_);
  const QString name =
      QLatin1String(kName) + QStringLiteral(".instance%1").arg(QCoreApplication::applicationPid());
  EXPECT_TRUE(WaitFor([&] { return Owned(name); }));
  player_->Withdraw();
  EXPECT_TRUE(WaitFor([&] { return !Owned(name); }));
}

TEST_F(MprisPlayerTest, OnlyWhatChangedIsReported) {
  Appear();
  QProcess monitor;
  monitor.setProcessEnvironment(Environment());
  monitor.start(QStringLiteral("gdbus"), {QStringLiteral("monitor"), QStringLiteral("--session"),
                                          QStringLiteral("--dest"), QLatin1String(kName)});
  QString heard;
  const auto hears = [&](const char* part) {
    heard += QString::fromUtf8(monitor.readAllStandardOutput());
    return heard.contains(QLatin1String(part));
  };
  ASSERT_TRUE(WaitFor([&] { return hears("is owned by"); }));
  player_->Publish(playing_);
  ASSERT_TRUE(WaitFor([&] { return hears("PropertiesChanged"); })) << heard.toStdString();
  EXPECT_TRUE(heard.contains(QStringLiteral("'PlaybackStatus': <'Playing'>")));
  EXPECT_TRUE(heard.contains(QStringLiteral("mpris:trackid")));
  EXPECT_FALSE(heard.contains(QStringLiteral("CanGoPrevious"))) << "it is as before";
  heard.clear();
  player_->Publish(playing_);
  player_->Publish(playing_);
  playing_.volume = 50;
  player_->Publish(playing_);
  ASSERT_TRUE(WaitFor([&] { return hears("0.5"); })) << heard.toStdString();
  EXPECT_EQ(heard.count(QStringLiteral("PropertiesChanged")), 1) << heard.toStdString();
  EXPECT_FALSE(heard.contains(QStringLiteral("Metadata"))) << heard.toStdString();
  monitor.kill();
  monitor.waitForFinished();
}

TEST_F(MprisPlayerTest, WrongTypesAndNamesAreAnsweredWithErrors) {
  Appear();
  for (const QVariant& value : {QVariant(QStringLiteral("laut")), QVariant(true), QVariant(std::nan("")),
                                QVariant(QStringList{QStringLiteral("a")})}) {
    EXPECT_EQ(SetProperty("Volume", value).type(), QDBusMessage::ErrorMessage);
  }
  EXPECT_EQ(SetProperty("PlaybackStatus", QStringLiteral("Playing")).type(), QDBusMessage::ErrorMessage);
  EXPECT_EQ(SetProperty("Unknown", 1).type(), QDBusMessage::ErrorMessage);
  const char* const properties = "org.freedesktop.DBus.Properties";
  EXPECT_EQ(Call(properties, "Get", {1, 2}).type(), QDBusMessage::ErrorMessage);
  EXPECT_EQ(Call(properties, "Get", {}).type(), QDBusMessage::ErrorMessage);
  EXPECT_EQ(Call(properties, "GetAll", {true}).type(), QDBusMessage::ErrorMessage);
  EXPECT_EQ(Call(properties, "Set", {QStringLiteral("x")}).type(), QDBusMessage::ErrorMessage);
  EXPECT_EQ(Call(properties, "Nothing", {}).type(), QDBusMessage::ErrorMessage);
  EXPECT_EQ(Call("org.mpris.MediaPlayer2.Player", "Nothing").type(), QDBusMessage::ErrorMessage);
  EXPECT_EQ(Call("org.example.Other", "Play").type(), QDBusMessage::ErrorMessage);
  EXPECT_EQ(Call("org.mpris.MediaPlayer2.Player", "Seek", {QStringLiteral("weit")}).type(),
            QDBusMessage::ReplyMessage);
  EXPECT_TRUE(receiver_.commands.empty());
  EXPECT_TRUE(receiver_.volumes.empty());
}

TEST_F(MprisPlayerTest, VolumeBeyondItsEndsIsTakenToThem) {
  Appear();
  for (const double volume : {-3.0, 0.999, 17.0, HUGE_VAL}) SetProperty("Volume", volume);
  EXPECT_EQ(receiver_.volumes, (std::vector<int>{0, 100, 100, 100}));
}

TEST_F(MprisPlayerTest, EndlessStringsAreAnsweredAndForgotten) {
  Appear();
  const QString endless(8'000'000, QLatin1Char('x'));
  EXPECT_EQ(Call("org.mpris.MediaPlayer2.Player", "OpenUri", {endless}).type(), QDBusMessage::ErrorMessage);
  EXPECT_EQ(Call("org.freedesktop.DBus.Properties", "Get", {endless, endless}).type(),
            QDBusMessage::ErrorMessage);
  EXPECT_EQ(SetProperty("Volume", endless).type(), QDBusMessage::ErrorMessage);
  EXPECT_EQ(Playerctl({QStringLiteral("status")}).output, QStringLiteral("Stopped"));
  EXPECT_TRUE(receiver_.commands.empty());
}

TEST_F(MprisPlayerTest, TextsThatTheBusCannotCarryDoNotEndTheConnection) {
  Appear();
  playing_.track.title = Text(u"halb \xD800 Ende");
  playing_.track.station = Text(u"Radio\0geheim", 12);
  playing_.track.address = Text(u"\xDC00");
  player_->Publish(playing_);
  EXPECT_EQ(Metadata("xesam:title"), QString::fromUtf8("halb ? Ende"));
  EXPECT_EQ(Metadata("xesam:album"), QStringLiteral("Radio"));
  EXPECT_TRUE(Program().isConnected());
}

TEST_F(MprisPlayerTest, TitlesHaveNoControlCharacterAndABoundedLength) {
  Appear();
  playing_.track.title = u"\x1B[2J\r\nLied\x9B\x7F.";
  playing_.track.station = Text(5'000'000, u'x');
  player_->Publish(playing_);
  EXPECT_EQ(Metadata("xesam:title"), QStringLiteral("[2J  Lied  ."));
  EXPECT_EQ(Metadata("xesam:album"), QString(4096, QLatin1Char('x')));
}

TEST_F(MprisPlayerTest, WithdrawnPlayerIsGoneAndGivesNoCommand) {
  Appear();
  player_->Withdraw();
  EXPECT_TRUE(WaitFor([&] { return !Owned(kName); }));
  EXPECT_NE(Playerctl({QStringLiteral("play")}).exit_code, 0);
  player_->Publish(playing_);
  EXPECT_TRUE(receiver_.commands.empty());
}

TEST_F(MprisPlayerTest, BusThatClosesInTheMiddleChangesNothing) {
  Appear();
  player_->Publish(playing_);
  bus_.Stop();
  EXPECT_TRUE(WaitFor([this] { return !Program().isConnected(); }));
  ::testing::internal::CaptureStderr();
  playing_.volume = 1;
  player_->Publish(playing_);
  player_->Withdraw();
  player_.reset();
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
  EXPECT_TRUE(receiver_.commands.empty());
}

TEST_F(MprisPlayerTest, WithoutABusNothingHappens) {
  ::testing::internal::CaptureStderr();
  MprisPlayer player(QDBusConnection(QStringLiteral("none")), paths_);
  player.Appear(receiver_);
  player.Publish(playing_);
  player.Withdraw();
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

}  // namespace
}  // namespace platform::desktop
