#pragma once
// What is shown for a selected station: the editor's fields, and the address to play.
// Not its title and picture, nor playing it (ui), nor editing it (catalogue/station_editor.h).

#include <cstdint>
#include <functional>
#include <memory>

#include "app/state/list_pair.h"
#include "app/state/runs.h"
#include "app/state/window_state.h"
#include "catalogue/editor_fields.h"
#include "controls/captioned.h"
#include "controls/list_view.h"
#include "controls/text_box.h"
#include "controls/value_controls.h"
#include "ports/files.h"
#include "ports/text_conversion.h"
#include "stream/cls_funkhaus.h"

namespace catalogue {

class StationDetails {
 public:
  struct Parts {
    EditorFields fields;                      ///< name, link, genre, favourite mark, number
    controls::UpDownTextBox& UpDownTextBox1;  ///< number of the entry within a playlist link
    controls::Label& Label2;                  ///< caption of the number
    controls::CommandButton& Command8_0;      ///< applies the number
    app::ListPair lists;
  };

  struct Ports {
    platform::Files& files;
    platform::TextConversion& conversion;
  };

  /// What the details trigger in other features.
  struct Actions {
    /// The address of this row becomes the current one.
    std::function<void(const controls::ListView&, controls::RowId)> take_row;
    /// Fetches the title of the current address; waits.
    std::function<void()> fetch_title;
    /// How the selected station's server answered the header query; kind kNone also when it was not asked.
    std::function<void(const platform::Text& station, const stream::QueryFailure&)> report_server;
    /// Shows this station's picture, when it has one.
    std::function<void(const platform::Text& station)> show_picture;
  };

  /// `cFunkhaus` is the owner's pointer, empty before the window is loaded and after it was unloaded.
  StationDetails(Parts parts, Ports ports, app::WindowState& state,
                 const std::shared_ptr<stream::clsFunkhaus>& cFunkhaus, Actions actions,
                 const app::Life& window);

  /// Runs for the active list's selected row; without one nothing happens. It waits for playlist and title
  /// while the window keeps working; a selection made meanwhile wins, and the earlier one ends without being
  /// shown.
  void ShowStationDetails();

 private:
  void FillFields(const controls::ListRow& row);
  [[nodiscard]] stream::QueryFailure FailureOf(const platform::Text& address) const;
  void ShowNumberField(bool shown);
  [[nodiscard]] std::int32_t EntryNumber() const;
  /// A newly selected station is asked again, however silent it was.
  void SayWanted(const platform::Text& address);
  [[nodiscard]] platform::Text AddressOf(const platform::Text& link, std::int32_t number);
  /// Whether the row is the selected one and unchanged since resolving it began.
  [[nodiscard]] bool StillSelected(const controls::ListRow& worked_out) const;

  Parts parts_;
  Ports ports_;
  app::WindowState& state_;
  const std::shared_ptr<stream::clsFunkhaus>& cFunkhaus;
  Actions actions_;
  app::Runs selections_;
};

}  // namespace catalogue
