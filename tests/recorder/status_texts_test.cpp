#include "recorder/status_texts.h"

#include <gtest/gtest.h>

namespace recorder {
namespace {

TEST(StatusTexts, SayWhatIsHappening) {
  Status status;
  EXPECT_EQ(PhaseText(status), u"Bereit");
  status.phase = Phase::kConnecting;
  EXPECT_EQ(PhaseText(status), u"Verbinde ...");
  status.phase = Phase::kRecording;
  EXPECT_EQ(PhaseText(status), u"Aufnahme läuft");
  status.phase = Phase::kWaiting;
  status.seconds_to_next_try = 4;
  status.fault = Fault::kUnreachable;
  EXPECT_EQ(PhaseText(status), u"Der Sender ist nicht erreichbar, neuer Versuch in 4 s");
  status.fault = Fault::kLost;
  EXPECT_EQ(PhaseText(status), u"Die Verbindung ist abgerissen, neuer Versuch in 4 s");
  status.fault = Fault::kNoSound;
  EXPECT_EQ(PhaseText(status), u"Die Adresse liefert keinen Radiostrom, neuer Versuch in 4 s");
  status.fault = Fault::kServerError;
  status.answer_code = 503;
  EXPECT_EQ(PhaseText(status), u"Der Sender meldet einen Fehler (503), neuer Versuch in 4 s");
  status.phase = Phase::kEnded;
  for (const Fault fault : {Fault::kNone, Fault::kUnreachable, Fault::kServerError, Fault::kLost}) {
    status.fault = fault;
    EXPECT_EQ(PhaseText(status), u"Aufnahme beendet");
  }
  status.fault = Fault::kNoSound;
  EXPECT_EQ(PhaseText(status), u"Die Adresse liefert keinen Radiostrom");
  status.fault = Fault::kNotHttp;
  EXPECT_EQ(PhaseText(status), u"Nur Adressen mit http:// oder https:// lassen sich aufnehmen");
  status.fault = Fault::kCannotWrite;
  EXPECT_EQ(PhaseText(status), u"In den Ordner kann nicht geschrieben werden");
  status.fault = Fault::kDiskFull;
  EXPECT_EQ(PhaseText(status), u"Der Datenträger nimmt nichts mehr auf, vermutlich ist er voll");
}

TEST(StatusTexts, SayWhyAServerRefuses) {
  Status status;
  status.phase = Phase::kEnded;
  status.fault = Fault::kRefused;
  const auto text_of = [&status](int code) {
    status.answer_code = code;
    return PhaseText(status);
  };
  EXPECT_EQ(text_of(400), u"Der Sender lehnt die Anfrage ab (400)");
  EXPECT_EQ(text_of(401), u"Der Sender verlangt eine Anmeldung (401)");
  EXPECT_EQ(text_of(403), u"Der Sender verweigert den Zugriff (403)");
  EXPECT_EQ(text_of(404), u"Unter dieser Adresse gibt es keinen Sender (404)");
  EXPECT_EQ(text_of(410), u"Unter dieser Adresse gibt es keinen Sender (410)");
}

TEST(StatusTexts, ChangeTheUnitAtAThousandAndNotBefore) {
  EXPECT_EQ(BytesText(1'000), u"1,0 KB");
  EXPECT_EQ(BytesText(999'999), u"999,9 KB");
  EXPECT_EQ(BytesText(1'000'000), u"1,0 MB");
  EXPECT_EQ(BytesText(999'999'999), u"999,9 MB");
  EXPECT_EQ(BytesText(1'000'000'000), u"1,0 GB");
  EXPECT_EQ(BytesText(1'234'567'890'123), u"1234,5 GB") << "there is no larger unit";
}

TEST(StatusTexts, WriteNumbersInGerman) {
  EXPECT_EQ(TimeText(0), u"00:00:00");
  EXPECT_EQ(TimeText(3661), u"01:01:01");
  EXPECT_EQ(TimeText(400000), u"111:06:40");
  EXPECT_EQ(BytesText(0), u"0 Byte");
  EXPECT_EQ(BytesText(999), u"999 Byte");
  EXPECT_EQ(BytesText(3450), u"3,4 KB");
  EXPECT_EQ(BytesText(12'000'000), u"12,0 MB");
  EXPECT_EQ(BytesText(1'500'000'000), u"1,5 GB");
  EXPECT_EQ(FilesText(1), u"1 Datei");
  EXPECT_EQ(FilesText(2), u"2 Dateien");
}

TEST(StatusTexts, LetNoServerControlATerminal) {
  EXPECT_EQ(OneLine(u"a\u001B[2Jb\r\nc\u009Bd"), u"a [2Jb  c d");
}

}  // namespace
}  // namespace recorder
