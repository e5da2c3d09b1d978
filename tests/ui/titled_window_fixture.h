#pragma once
// A window whose stations send titles from scripts.
// Not real servers; those are with the internet adapter's tests.

#include <string>

#include "tests/ui/titled_station.h"
#include "tests/window/window_fixture.h"

namespace app {

class TitledWindowTest : public WindowTest {
 protected:
  TitledWindowTest() {
    internet.answer.status = u"404";
    requests.request.body = u"kein Verzeichnis";
  }

  void AddPlayingStation(const Text& name, const std::string& title) {
    AddStation(name, u"http://" + name + u"/s");
    test_support::LetStationPlay(internet, name, title);
  }
  Text TitleOf(const Text& name) {
    return Form().SymbolListview.Cell(RowNamed(Form().SymbolListview, name), app::kTitleCell);
  }
  void RunAllTitles() { Form().Command3.Click(); }
};

}  // namespace app
