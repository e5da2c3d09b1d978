#pragma once
// What one feature of the main window needs, as doubles, and the controls that it acts on.
// Not the window: only what a test connects is connected.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "app/forms/form1.h"
#include "app/settings/ini_procedures.h"
#include "app/settings/language.h"
#include "app/settings/settings.h"
#include "app/state/list_pair.h"
#include "app/state/runs.h"
#include "app/state/station_row.h"
#include "app/state/window_state.h"
#include "stream/cls_funkhaus.h"
#include "tests/support/fakes.h"
#include "tests/support/memory_files.h"
#include "tests/support/memory_profile.h"
#include "tests/support/memory_record_files.h"
#include "tests/support/plain_text_conversion.h"
#include "tests/support/scripted_internet.h"

namespace test_support {

class FeatureTest : public ::testing::Test {
 protected:
  using Text = platform::Text;

  FeatureTest() {
    for (controls::ListView* list : {&form.SymbolListview, &form.ExplorerListFilter}) {
      for (const app::StationColumn& column : app::kStationColumns)
        list->AddColumn(app::ListColumnOf(column));
    }
    message_loop.on_sleep = [this](std::uint32_t milliseconds) {
      clock.seconds_since_midnight += milliseconds / 1000.0;
    };
    // A stream that sends nothing must meet the readers' time limit.
    internet.before_read = [this] { clock.seconds_since_midnight += 0.5; };
    internet.answer.status = u"404";
    requests.request.body = u"kein Verzeichnis";
  }

  app::Form1& Form() { return form; }
  static controls::RowId AddStationTo(controls::ListView& list, const Text& name, const Text& link,
                                      const Text& genre = u"Rock", const Text& favourite = u"",
                                      const Text& number = u"") {
    controls::ListRow row;
    row.cells = {name, genre, link, favourite, u"", number};
    return list.AddRow(std::move(row));
  }
  controls::RowId AddStation(const Text& name, const Text& link, const Text& genre = u"Rock",
                             const Text& favourite = u"", const Text& number = u"") {
    return AddStationTo(form.SymbolListview, name, link, genre, favourite, number);
  }
  static controls::RowId RowNamed(const controls::ListView& list, const Text& name) {
    for (const controls::ListRow& row : list.Rows()) {
      if (row.cells[app::kNameCell] == name) return row.id;
    }
    return controls::RowId::kNone;
  }
  /// The filtered list takes the full one's place.
  void ShowFilteredList() {
    form.SymbolListview.SetVisible(false);
    form.ExplorerListFilter.SetVisible(true);
  }
  /// The effect of closing the window on a feature that waits: its life ends, then the client is released.
  void CloseWindow() {
    life.End();
    form.Timer2.SetEnabled(false);
    cFunkhaus.reset();
  }
  std::vector<Text> BoxTexts() const {
    std::vector<Text> texts;
    for (const auto& box : dialogs.boxes) texts.push_back(box.text);
    return texts;
  }

  MemoryProfile profile;
  MemoryFiles files;
  MemoryRecordFiles record_files;
  FakeEnvironment environment;
  FakeIcons icons;
  ScriptedInternet internet;
  ScriptedXmlHttpRequests requests;
  FakeDialogs dialogs;
  FakeShell shell;
  FakeSystemMessages system_messages;
  FakeMessageLoop message_loop;
  FakeClock clock;
  FakePlaybackMonitor playback_monitor;
  PlainTextConversion conversion;

  app::Settings settings;
  app::IniProcedures ini{settings, profile, files, environment};
  app::Language language{settings, ini, profile, files, environment};
  app::WindowState state;
  app::Life life;
  app::Form1 form;
  app::ListPair lists{.full = form.SymbolListview, .filtered = form.ExplorerListFilter};
  std::shared_ptr<stream::clsFunkhaus> cFunkhaus = std::make_shared<stream::clsFunkhaus>(
      stream::Ports{internet, requests, record_files, environment, clock, message_loop, conversion});
};

}  // namespace test_support
