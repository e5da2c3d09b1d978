#pragma once
// The titles being played: of the current station, and of all stations in turn.
// Not reading the stream (stream/cls_funkhaus.h).

#include <memory>

#include "app/state/list_pair.h"
#include "app/state/runs.h"
#include "app/state/window_state.h"
#include "controls/captioned.h"
#include "controls/event.h"
#include "controls/list_view.h"
#include "controls/timer.h"
#include "ports/dialogs.h"
#include "ports/message_loop.h"
#include "ports/text_conversion.h"
#include "stream/cls_funkhaus.h"
#include "ui/information_panel.h"

namespace ui {

class NowPlaying {
 public:
  struct Parts {
    controls::CommandButton& Command3;  ///< all titles; second action: polling on and off
    controls::Timer& Timer2;            ///< polling, every 5000 ms
    app::ListPair lists;
  };

  struct Ports {
    platform::Dialogs& dialogs;
    platform::MessageLoop& message_loop;
    platform::TextConversion& conversion;
  };

  /// `cFunkhaus` is the owner's pointer, empty before the window is loaded and after it was unloaded.
  NowPlaying(Parts parts, Ports ports, InformationPanel& panel, const app::WindowState& state,
             const std::shared_ptr<stream::clsFunkhaus>& cFunkhaus, const app::Life& window);

  /// Fetches the current station's title into the information panel. It waits while the window keeps working;
  /// a fetch that begins meanwhile wins, and the earlier one ends without being shown.
  void CheckAktuellerSong();
  void Timer2_Timer();           ///< fetches as well; what comes after the timer was stopped is not shown
  void Command3_Click();         ///< lists the titles of all rows of the visible list, until Escape
  void Command3_ContextClick();  ///< the button's second action: one fetch, then polling on or off
  void cFunkhaus_QueryStream(bool bQueryOk);

  /// A title was fetched from this address: address, title; the title is empty when the station sends none. A
  /// reader that ran out of time has learned nothing.
  controls::Event<platform::Text, platform::Text> TitleFetched;

 private:
  enum class RunState { kContinue, kEnd };
  enum class Occasion {
    kOnce,
    kPolling  ///< wanted only as long as the timer runs
  };
  RunState FetchRowTitle(controls::ListView& list, controls::RowId row);
  void FetchTitle(Occasion occasion);
  /// An interval that is not a number gives no title. A window that closes meanwhile releases the client
  /// inside this call, which then ends by itself.
  [[nodiscard]] platform::Text ReadTitle(const platform::Text& interval);
  [[nodiscard]] platform::Text RepairTitle(const platform::Text& title) const;

  Parts parts_;
  Ports ports_;
  InformationPanel& panel_;
  const app::WindowState& state_;
  const std::shared_ptr<stream::clsFunkhaus>& cFunkhaus;
  const app::Life& window_;
  app::Runs fetches_;
  controls::Subscriptions subscriptions_;
};

}  // namespace ui
