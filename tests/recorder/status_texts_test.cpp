#include "recorder/status_texts.h"

#include <gtest/gtest.h>

namespace recorder {
namespace {

TEST(StatusTexts, SayWhatIsGoingOn) {
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
  status.phase = Phase::kEnded;
  EXPECT_EQ(PhaseText(status), u"Aufnahme beendet");
  status.fault = Fault::kCannotWrite;
  EXPECT_EQ(PhaseText(status), u"In den Ordner kann nicht geschrieben werden");
  status.fault = Fault::kDiskFull;
  EXPECT_EQ(PhaseText(status), u"Der Datenträger nimmt nichts mehr auf, vermutlich ist er voll");
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
