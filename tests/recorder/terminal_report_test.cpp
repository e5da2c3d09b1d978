#include "recorder/terminal_report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/recorder/recorder_rig.h"

namespace recorder {
namespace {

using testing::ElementsAre;

class Report : public testing::Test {
 protected:
  RecorderRig rig_;
  std::vector<Text> lines_;
  TerminalReport report_{rig_.recording, u"/musik", [this](const Text& line) { lines_.push_back(line); }};
};

TEST_F(Report, HasOneLineForEachTitle) {
  rig_.StationSends("----" + TitleOf("Eins") + "1111" + TitleOf("Eins") + "2222" +
                    TitleOf("Zw\x1B"
                            "ei") +
                    "3333");
  rig_.recording.Run(u"http://radio.example/live");
  EXPECT_THAT(lines_,
              ElementsAre(u"Verbinde ...", u"Aufnahme läuft: Radio Eins (Ordner /musik)", u"00:00:01  Eins",
                          u"00:00:01  Zw ei", u"Aufnahme beendet: 00:00:01, 2 Dateien, 12 Byte"));
}

TEST_F(Report, ReportsALostConnectionOnce) {
  rig_.internet.answer.reachable = false;
  rig_.loop.on_sleep = [this](std::uint32_t) {
    if (rig_.loop.slept >= 1000) rig_.recording.Stop();
  };
  rig_.recording.Run(u"http://radio.example/live");
  EXPECT_THAT(lines_, ElementsAre(u"Verbinde ...", u"Der Sender ist nicht erreichbar, neuer Versuch in 1 s",
                                  u"Aufnahme beendet: 00:00:00, 0 Dateien, 0 Byte"));
}

}  // namespace
}  // namespace recorder
