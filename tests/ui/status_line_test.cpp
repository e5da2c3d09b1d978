// The status line without a window: sentences, their arguments and their language, and what replaces what.
#include "ui/status_line.h"

#include <gtest/gtest.h>

#include "app/state/status_sentences.h"
#include "tests/support/fakes.h"
#include "tests/support/language_rig.h"
#include "tests/support/recording_profile.h"

namespace ui {
namespace {

using platform::PlaybackFailure;
using platform::PlaybackState;
using platform::PlaybackStatus;
using platform::Text;
using test_support::FakeClock;
using test_support::FakePlaybackMonitor;

class StatusLineTest : public testing::Test {
 protected:
  void Reach(PlaybackState state) {
    monitor.status = {};
    monitor.status.state = state;
    line.Follow();
  }
  void Fail(PlaybackFailure failure) {
    monitor.status = {};
    monitor.status.state = PlaybackState::kFailed;
    monitor.status.failure = failure;
    line.Follow();
  }
  void Play(const Text& station = u"Radio X") {
    line.Starting(station);
    Reach(PlaybackState::kPlaying);
  }
  /// The sentence in German.
  Text Shown() const { return label.Caption(); }

  test_support::ProgramLanguage german{u"default"};
  FakePlaybackMonitor monitor;
  FakeClock clock;
  controls::Label label;
  StatusLine line{label, german.language, {monitor, clock}};
};

TEST_F(StatusLineTest, ASentenceIsShownInTheUsersLanguage) {
  const test_support::MarkingLanguage marking;
  StatusLine(label, marking.language, {monitor, clock}).Notify(app::sentences::kStopped);
  EXPECT_EQ(label.Caption(), u"<" + Text(app::sentences::kStopped) + u">");
}

TEST_F(StatusLineTest, ArgumentsReplaceTheirNumbersAndAreNotLookedUp) {
  const test_support::MarkingLanguage marking;
  StatusLine(label, marking.language, {monitor, clock}).Notify(u"%2 von %1: 100 %, %3", {u"%2", u"drei"});
  EXPECT_EQ(label.Caption(), u"<drei von %2: 100 %, %3>");
}

TEST_F(StatusLineTest, EndlessArgumentIsCut) {
  line.Notify(u"%1|%1", {Text(1'000'000, u'x')});
  EXPECT_EQ(Shown(), Text(1024, u'x') + u"|" + Text(1024, u'x'));
}

TEST_F(StatusLineTest, EverySentenceIsInTheEnglishLanguageFile) {
  test_support::ProgramLanguage english(u"English");
  for (const platform::TextView sentence : app::sentences::kAll) {
    EXPECT_TRUE(english.Knows(Text(sentence))) << english.Utf8(Text(sentence));
  }
}

TEST_F(StatusLineTest, IsEmptyUntilSomethingIsStarted) {
  line.Follow();
  line.Stopped();
  EXPECT_EQ(Shown(), u"");
}

TEST_F(StatusLineTest, AStartSaysAtOnceWhatItConnectsTo) {
  monitor.status.state = PlaybackState::kPlaying;
  line.Starting(u"Radio X");
  EXPECT_EQ(Shown(), u"Verbinde mit Radio X …");
  line.Starting(u"Radio Y");
  EXPECT_EQ(Shown(), u"Verbinde mit Radio Y …");
}

TEST_F(StatusLineTest, EachStateHasItsSentence) {
  line.Starting(u"Radio X");
  monitor.status.state = PlaybackState::kBuffering;
  monitor.status.buffered_percent = 40;
  line.Follow();
  EXPECT_EQ(Shown(), u"Radio X: Puffere 40 %");
  Reach(PlaybackState::kPaused);
  EXPECT_EQ(Shown(), u"Radio X ist angehalten.");
  monitor.status = {};
  monitor.status.state = PlaybackState::kReconnecting;
  monitor.status.seconds_to_next_try = 3;
  line.Follow();
  EXPECT_EQ(Shown(), u"Radio X: Verbindung verloren, nächster Versuch in 3 s");
  Reach(PlaybackState::kReconnecting);
  EXPECT_EQ(Shown(), u"Radio X: Verbindung verloren, neuer Versuch …");
  Reach(PlaybackState::kNoDevice);
  EXPECT_EQ(Shown(), u"Radio X ist nicht zu hören: Es ist kein Audiogerät da.");
  Reach(PlaybackState::kEnded);
  EXPECT_EQ(Shown(), u"Radio X ist zu Ende.");
}

TEST_F(StatusLineTest, APlayingStationHasCodecAndRateWhenTheyAreKnown) {
  Play();
  EXPECT_EQ(Shown(), u"Radio X läuft.");
  monitor.status.codec = u"MP3";
  line.Follow();
  EXPECT_EQ(Shown(), u"Radio X – MP3");
  monitor.status.bit_rate = 128000;
  line.Follow();
  EXPECT_EQ(Shown(), u"Radio X – MP3, 128 kbit/s");
  monitor.status.codec = u"";
  line.Follow();
  EXPECT_EQ(Shown(), u"Radio X – 128 kbit/s");
}

TEST_F(StatusLineTest, AMeasuredRateDoesNotWaver) {
  Play();
  for (const int measured : {99637, 97895, 96208, 92100}) {
    monitor.status.bit_rate = measured;
    line.Follow();
    EXPECT_EQ(Shown(), u"Radio X – 96 kbit/s") << measured;
  }
}

TEST_F(StatusLineTest, EachFailureHasItsSentence) {
  const std::vector<std::pair<PlaybackFailure, Text>> sentences = {
      {PlaybackFailure::kBadAddress, u"Die Adresse von X ist ungültig."},
      {PlaybackFailure::kUnknownHost,
       u"Der Server von X ist nicht zu finden. Stimmt die Adresse, und besteht eine Internetverbindung?"},
      {PlaybackFailure::kNoAnswer, u"Der Server von X antwortet nicht."},
      {PlaybackFailure::kRefused, u"Der Server von X nimmt keine Verbindung an."},
      {PlaybackFailure::kHungUp, u"Der Server von X hat die Verbindung ohne Antwort beendet."},
      {PlaybackFailure::kTooManyRedirects, u"Der Server von X leitet immer nur weiter."},
      {PlaybackFailure::kCertificateExpired, u"Das Zertifikat von X ist abgelaufen."},
      {PlaybackFailure::kCertificateNotYetValid,
       u"Das Zertifikat von X gilt noch nicht. Geht die Uhr richtig?"},
      {PlaybackFailure::kCertificateOtherName, u"Das Zertifikat von X gehört zu einem anderen Server."},
      {PlaybackFailure::kCertificateUnknownIssuer,
       u"Das Zertifikat von X stammt von einem unbekannten Aussteller."},
      {PlaybackFailure::kNoSecureConnection, u"Eine sichere Verbindung zu X kommt nicht zustande."},
      {PlaybackFailure::kWebPage, u"X liefert keinen Ton, sondern Text oder eine Webseite."},
      {PlaybackFailure::kNotFound, u"Die Datei von X gibt es nicht."},
      {PlaybackFailure::kNoAccess, u"Die Datei von X lässt sich nicht lesen."},
      {PlaybackFailure::kUnreadable, u"Die Daten von X sind beschädigt oder kein Ton."},
      {PlaybackFailure::kNoSoundDevice, u"X kann nicht spielen: Das Audiogerät fehlt oder versagt."},
      {PlaybackFailure::kConnectionLost, u"Die Verbindung zu X ist abgebrochen."},
      {PlaybackFailure::kOther, u"X kann nicht abgespielt werden."},
  };
  for (const auto& [failure, sentence] : sentences) {
    line.Starting(u"X");
    Fail(failure);
    EXPECT_EQ(Shown(), sentence);
  }
}

TEST_F(StatusLineTest, HttpErrorsAreDistinguished) {
  const std::vector<std::pair<int, Text>> sentences = {
      {401, u"X verlangt eine Anmeldung."},
      {403, u"Der Server von X verweigert den Zugang."},
      {404, u"Der Server von X kennt diese Adresse nicht."},
      {410, u"Der Server von X kennt diese Adresse nicht."},
      {500, u"Der Server von X ist gestört (Fehler 500)."},
      {503, u"Der Server von X ist gestört (Fehler 503)."},
      {400, u"Der Server von X meldet den Fehler 400."},
  };
  for (const auto& [code, sentence] : sentences) {
    line.Starting(u"X");
    monitor.status.http_status = code;
    monitor.status.state = PlaybackState::kFailed;
    monitor.status.failure = PlaybackFailure::kHttpStatus;
    line.Follow();
    EXPECT_EQ(Shown(), sentence);
  }
}

TEST_F(StatusLineTest, AMissingDecoderIsNamedWithItsPackage) {
  monitor.status.state = PlaybackState::kFailed;
  monitor.status.failure = PlaybackFailure::kNoDecoder;
  monitor.status.format = u"Windows Media Audio 9";
  line.Starting(u"X");
  line.Follow();
  EXPECT_EQ(Shown(), u"Für X fehlt ein Decoder: Windows Media Audio 9.");
  monitor.status.package = u"gstreamer1.0-libav";
  line.Starting(u"X");
  line.Follow();
  EXPECT_EQ(Shown(), u"Für X fehlt ein Decoder: Windows Media Audio 9 (Paket gstreamer1.0-libav).");
}

TEST_F(StatusLineTest, AFailureStaysUntilTheNextStartOrNotice) {
  line.Starting(u"X");
  Fail(PlaybackFailure::kNoAnswer);
  Reach(PlaybackState::kStopped);
  line.Stopped();
  EXPECT_EQ(Shown(), u"Der Server von X antwortet nicht.");
  line.Notify(u"Hinweis");
  EXPECT_EQ(Shown(), u"Hinweis");
  line.Starting(u"Y");
  EXPECT_EQ(Shown(), u"Verbinde mit Y …");
}

TEST_F(StatusLineTest, StopSaysSoOnceAndWhatWasStoppedIsFollowedNoMore) {
  Play();
  monitor.status = {};
  line.Stopped();
  EXPECT_EQ(Shown(), u"Gestoppt.");
  Reach(PlaybackState::kPlaying);
  EXPECT_EQ(Shown(), u"Gestoppt.");
  line.Notify(u"Hinweis");
  line.Stopped();
  EXPECT_EQ(Shown(), u"Hinweis") << "nothing was there to be stopped";
}

TEST_F(StatusLineTest, StopInTheMiddleOfAStartSaysSoWhateverBecomesOfTheOpening) {
  line.Starting(u"X");
  monitor.status.state = PlaybackState::kConnecting;
  line.Stopped();
  EXPECT_EQ(Shown(), u"Gestoppt.");
  Reach(PlaybackState::kConnecting);
  line.NotPlayable();
  EXPECT_EQ(Shown(), u"Gestoppt.");
  line.Resolving();
  EXPECT_EQ(Shown(), u"Ermittle die Adresse …");
  line.Follow();
  EXPECT_EQ(Shown(), u"Ermittle die Adresse …");
  line.Stopped();
  EXPECT_EQ(Shown(), u"Gestoppt.");
}

TEST_F(StatusLineTest, StopLeavesWhatIsPausedAndWhatHasEndedByItself) {
  Play();
  monitor.status.state = PlaybackState::kPaused;
  line.Stopped();
  EXPECT_EQ(Shown(), u"Radio X ist angehalten.");
  Reach(PlaybackState::kPlaying);
  EXPECT_EQ(Shown(), u"Radio X läuft.");
  monitor.status.state = PlaybackState::kEnded;
  line.Stopped();
  EXPECT_EQ(Shown(), u"Radio X ist zu Ende.");
}

TEST_F(StatusLineTest, AnOpeningThatWasGivenUpIsNoFailure) {
  line.Starting(u"X");
  Reach(PlaybackState::kStopped);
  EXPECT_EQ(Shown(), u"Gestoppt.");
}

TEST_F(StatusLineTest, AStartThatDoesNotComeToPlaySaysSoUnlessTheMonitorKnowsWhy) {
  line.Starting(u"X");
  monitor.status.state = PlaybackState::kConnecting;
  line.NotPlayable();
  EXPECT_EQ(Shown(), u"X kann nicht abgespielt werden.");
  Reach(PlaybackState::kConnecting);
  EXPECT_EQ(Shown(), u"X kann nicht abgespielt werden.");
  line.Starting(u"X");
  monitor.status.state = PlaybackState::kFailed;
  monitor.status.failure = PlaybackFailure::kRefused;
  line.NotPlayable();
  EXPECT_EQ(Shown(), u"Der Server von X nimmt keine Verbindung an.");
}

TEST_F(StatusLineTest, ASelectedStationsSilentServerIsNamedWhileNothingPlays) {
  using Kind = stream::QueryFailure::Kind;
  line.Selected(u"X", {Kind::kNoAnswer});
  EXPECT_EQ(Shown(), u"Der Server von X antwortet nicht.");
  line.Selected(u"Y", {Kind::kUnknownHost});
  EXPECT_EQ(
      Shown(),
      u"Der Server von Y ist nicht zu finden. Stimmt die Adresse, und besteht eine Internetverbindung?");
  line.Selected(u"Z", {Kind::kRefused});
  EXPECT_EQ(Shown(), u"Der Server von Z nimmt keine Verbindung an.");
  line.Starting(u"Z");
  line.Selected(u"X", {Kind::kNoAnswer});
  EXPECT_EQ(Shown(), u"Verbinde mit Z …");
  Reach(PlaybackState::kPlaying);
  line.Selected(u"X", {Kind::kNoAnswer});
  EXPECT_EQ(Shown(), u"Z läuft.");
}

TEST_F(StatusLineTest, ASelectionThatIsAnsweredTakesOnlyAnEarlierSelectionsSentenceAway) {
  using Kind = stream::QueryFailure::Kind;
  for (const Kind answered : {Kind::kNone, Kind::kHttpStatus, Kind::kGivenUp, Kind::kOther}) {
    line.Selected(u"X", {Kind::kRefused});
    line.Selected(u"Y", {answered});
    EXPECT_EQ(Shown(), u"");
  }
  line.Selected(u"X", {Kind::kRefused});
  line.Notify(u"Hinweis");
  line.Selected(u"Y", {});
  EXPECT_EQ(Shown(), u"Hinweis");
  line.Starting(u"X");
  Fail(PlaybackFailure::kNoAnswer);
  line.Selected(u"Y", {});
  EXPECT_EQ(Shown(), u"Der Server von X antwortet nicht.");
}

TEST_F(StatusLineTest, ANoticeIsShownAtOnceAndStaysWhilePlayingIsInTheSameState) {
  Play();
  line.Notify(u"Hinweis");
  EXPECT_EQ(Shown(), u"Hinweis");
  clock.whole_seconds += 3600;
  monitor.status.bit_rate = 128000;
  line.Follow();
  EXPECT_EQ(Shown(), u"Hinweis");
  Reach(PlaybackState::kBuffering);
  EXPECT_EQ(Shown(), u"Radio X: Puffere 0 %");
}

TEST_F(StatusLineTest, ANoticeCanBeReadAlthoughPlayingIsInAnotherStateMeanwhile) {
  Play();
  line.Notify(u"Hinweis");
  clock.whole_seconds += StatusLine::kReadableSeconds - 1;
  Reach(PlaybackState::kReconnecting);
  EXPECT_EQ(Shown(), u"Hinweis");
  clock.whole_seconds += 1;
  line.Follow();
  EXPECT_EQ(Shown(), u"Radio X: Verbindung verloren, neuer Versuch …");
}

TEST_F(StatusLineTest, ANoticeReplacesANoticeAndCanBeReadAsLong) {
  Play();
  line.Notify(u"Eins");
  clock.whole_seconds += StatusLine::kReadableSeconds;
  line.Notify(u"Zwei");
  Reach(PlaybackState::kBuffering);
  EXPECT_EQ(Shown(), u"Zwei");
}

TEST_F(StatusLineTest, AClockThatIsSetBackKeepsNoNotice) {
  Play();
  line.Notify(u"Hinweis");
  clock.whole_seconds -= 3600;
  Reach(PlaybackState::kBuffering);
  EXPECT_EQ(Shown(), u"Radio X: Puffere 0 %");
}

TEST_F(StatusLineTest, ANewFailureIsNeverHiddenByANotice) {
  line.Starting(u"X");
  line.Notify(u"Hinweis");
  Fail(PlaybackFailure::kNoAnswer);
  EXPECT_EQ(Shown(), u"Der Server von X antwortet nicht.");

  line.Starting(u"X");
  monitor.status.state = PlaybackState::kFailed;
  line.Notify(u"Hinweis");
  line.Follow();
  EXPECT_EQ(Shown(), u"Der Server von X antwortet nicht.") << "one that was there before the notice too";
}

TEST_F(StatusLineTest, AStartOrAStopEndsANotice) {
  Play();
  line.Notify(u"Hinweis");
  monitor.status = {};
  line.Stopped();
  EXPECT_EQ(Shown(), u"Gestoppt.");
  line.Notify(u"Hinweis");
  line.Starting(u"Y");
  EXPECT_EQ(Shown(), u"Verbinde mit Y …");
  Reach(PlaybackState::kPlaying);
  EXPECT_EQ(Shown(), u"Y läuft.");
  line.Notify(u"Hinweis");
  line.Resolving();
  EXPECT_EQ(Shown(), u"Ermittle die Adresse …");
}

TEST_F(StatusLineTest, TheCaptionChangesOnlyWhenItsTextDoes) {
  Play();
  int changes = 0;
  const auto subscription = label.Changed.Subscribe([&] { ++changes; });
  for (int tick = 0; tick < 10; ++tick) line.Follow();
  EXPECT_EQ(changes, 0);
  monitor.status.codec = u"MP3";
  for (int tick = 0; tick < 10; ++tick) line.Follow();
  EXPECT_EQ(changes, 1);
}

TEST_F(StatusLineTest, ASentenceIsLookedUpOnlyWhenItChanges) {
  test_support::RecordingProfile profile;
  test_support::MemoryFiles files;
  test_support::FakeEnvironment environment;
  app::Settings settings;
  settings.LanguageName = u"English";
  const app::IniProcedures ini(settings, profile, files, environment);
  const app::Language language(settings, ini, profile, files, environment);
  StatusLine counted(label, language, {monitor, clock});
  counted.Starting(u"X");
  monitor.status.state = PlaybackState::kPlaying;
  for (int tick = 0; tick < 10; ++tick) counted.Follow();
  EXPECT_EQ(profile.reads.size(), 2U);
}

}  // namespace
}  // namespace ui
