#pragma once
// The titles being played: of the current station, and of all stations in turn.
// Not reading the stream (stream/cls_funkhaus.h).

#include <memory>

#include "app/state/runs.h"
#include "app/state/window_state.h"
#include "controls/captioned.h"
#include "controls/list_view.h"
#include "controls/timer.h"
#include "ports/dialogs.h"
#include "ports/message_loop.h"
#include "ports/text_conversion.h"
#include "stream/cls_funkhaus.h"

namespace ui {

class NowPlaying {
 public:
  struct Parts {
    controls::CommandButton& Command3;
    controls::Timer& Timer2;
    controls::Frame& Frame3;
    controls::Label& Label4;
    controls::ListPair lists;
  };

  struct Ports {
    platform::Dialogs& dialogs;
    platform::MessageLoop& message_loop;
    platform::TextConversion& conversion;
  };

  /// `cFunkhaus` is the owner's pointer, empty before the window is loaded and after it was unloaded.
  NowPlaying(Parts parts, Ports ports, const app::WindowState& state,
             const std::shared_ptr<stream::clsFunkhaus>& cFunkhaus, const app::Life& window);

  /// Fetches the current station's title into Label4. It waits while the window goes on; a fetch that
  /// begins meanwhile wins, and the earlier one ends unseen.
  void CheckAktuellerSong();
  /// Fetches as well; what comes after the timer was stopped is not shown.
  void Timer2_Timer();
  /// Lists the titles of all rows of the visible list, until Escape.
  void Command3_Click();
  /// The button's second action: one fetch, then polling on or off.
  void Command3_ContextClick();
  void cFunkhaus_QueryStream(bool bQueryOk);

 private:
  enum class RunState { kGoOn, kEnd };
  enum class Occasion {
    kOnce,
    kPolling  ///< wanted only as long as the timer runs
  };
  RunState FetchRowTitle(controls::ListView& list, controls::RowId row);
  void FetchTitle(Occasion occasion);
  /// An interval that is no number cannot be read with: it gives no title.
  [[nodiscard]] platform::Text ReadTitle(const platform::Text& interval);
  [[nodiscard]] platform::Text RepairTitle(const platform::Text& title) const;

  Parts parts_;
  Ports ports_;
  const app::WindowState& state_;
  const std::shared_ptr<stream::clsFunkhaus>& cFunkhaus;
  const app::Life& window_;
  app::Runs fetches_;
  controls::Subscriptions subscriptions_;
};

}  // namespace ui
