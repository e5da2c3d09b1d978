#pragma once
// A window whose stations send titles from scripts.
// Not real servers; those are with the internet adapter's tests.

#include <string>

#include "tests/window/window_fixture.h"

namespace app {

/// A metadata block after eight bytes of sound.
inline std::string StreamWith(const std::string& title) {
  std::string block = "StreamTitle='" + title + "';";
  block.resize((block.size() + 15) / 16 * 16, '\0');
  return "AAAAAAAA" + std::string(1, static_cast<char>(block.size() / 16)) + block;
}

inline test_support::ScriptedAnswer StationPlaying(const std::string& title) {
  test_support::ScriptedAnswer answer;
  answer.raw_headers = u"ICY 200 OK\r\nicy-metaint:8\r\n\r\n";
  answer.reads = {{true, StreamWith(title)}};
  return answer;
}

class NowPlayingTest : public WindowTest {
 protected:
  NowPlayingTest() {
    internet.answer.status = u"404";
    requests.request.body = u"kein Verzeichnis";
  }

  void AddPlayingStation(const Text& name, const std::string& title) {
    const Text host = name;
    AddStation(name, u"http://" + host + u"/s");
    internet.answers[u"http://" + host + u"/s"] = StationPlaying(title);
    internet.answers[host + u":80/s"] = StationPlaying(title);
  }
  Text TitleOf(const Text& name) {
    return Form().SymbolListview.Cell(RowNamed(Form().SymbolListview, name), app::kTitleCell);
  }
  /// What the label shows after the selected station has sent this title.
  Text TitleFetchedFor(const std::string& bytes) {
    internet.answers[u"http://a/s"] = StationPlaying(bytes);
    Form().Timer2.SetEnabled(true);
    Form().Timer2.Fire();
    return Form().Label4.Caption();
  }
  void RunAllTitles() { Form().Command3.Click(); }
};

}  // namespace app
