#pragma once
// The titles being played: of the current station, and of all stations in turn.
// Not reading the stream (stream/cls_funkhaus.h).

#include <cstdint>
#include <functional>
#include <memory>

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

  /// `closing` tells whether the window is closing.
  NowPlaying(Parts parts, Ports ports, const app::WindowState& state,
             const std::shared_ptr<stream::clsFunkhaus>& cFunkhaus, std::function<bool()> closing);

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
  RunState FetchRowTitle(controls::ListView& list, controls::RowId row);
  void FetchTitle(const std::function<bool()>& wanted);
  /// An interval that is no number cannot be read with: it gives no title.
  [[nodiscard]] platform::Text ReadTitle(const platform::Text& interval);
  [[nodiscard]] platform::Text RepairTitle(const platform::Text& title) const;

  Parts parts_;
  Ports ports_;
  const app::WindowState& state_;
  const std::shared_ptr<stream::clsFunkhaus>& cFunkhaus;
  std::function<bool()> closing_;
  std::uint64_t latest_fetch_ = 0;
  controls::Subscriptions subscriptions_;
};

}  // namespace ui
