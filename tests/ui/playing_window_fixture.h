#pragma once
// A window with two stations that send no titles, and what the media framework was called with.
// Not real sound: the framework is a double.

#include <string>

#include "tests/window/window_fixture.h"

namespace app {

class PlayingWindowTest : public WindowTest {
 protected:
  PlayingWindowTest() {
    AddStation(u"A", u"http://a/");
    AddStation(u"B", u"http://b/");
    // The stations send no titles, so that playing is all that happens.
    internet.answer.status = u"404";
    media.SetMetadata({{u"Title", u"Lied"}, {u"Genre", u"Rock"}});
  }

  void StartAndPlay() {
    Start();
    Select(u"A");
    Form().Command1.Click();
    media.play_state = player::kPlayStateRunning;
    media.TakeCalls();
  }

  std::size_t CountCalls(const std::string& part) const {
    std::size_t count = 0;
    for (const std::string& call : media.Calls()) count += call.find(part) != std::string::npos ? 1U : 0U;
    return count;
  }
};

}  // namespace app
