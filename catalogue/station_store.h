#pragma once
// The station store: loads the stations of the file into the two lists.
// Not writing rows back to it (catalogue/station_writer.h).

#include <cstdint>
#include <functional>
#include <vector>

#include "app/state/list_pair.h"
#include "app/state/window_state.h"
#include "catalogue/station_file.h"
#include "catalogue/station_icons.h"
#include "catalogue/unsaved_rows.h"
#include "controls/list_view.h"
#include "ports/text_conversion.h"

namespace catalogue {

class StationStore {
 public:
  /// `sort_again` puts a list that was just filled into the order that the user chose.
  StationStore(const StationFile& file, platform::TextConversion& conversion, const StationIcons& icons,
               app::WindowState& state, app::ListPair lists, UnsavedRows& unsaved,
               std::function<void(controls::ListView&)> sort_again);

  /// Fills a list from the file: "" all stations into the full list, "1" the favourites, any other text the
  /// stations of that genre (without regard to letter case) into the filtered list. The list is emptied
  /// first, and sorted again when it is filled. The full list keeps its unsaved rows; their cells that were
  /// written singly are read from the file like those of the other rows. A missing file or key gives no rows
  /// or empty cells, never a message.
  void LoadStations(const platform::Text& Filter);

  /// The filter by which the filtered list was last filled; empty before the first time.
  [[nodiscard]] const platform::Text& Filter() const { return filter_; }
  /// Whether a station of the file belongs to the filtered list as it was last filled.
  [[nodiscard]] bool BelongsToView(const platform::Text& name) const;
  /// A station of the file as a row; empty cells where keys are missing.
  [[nodiscard]] controls::ListRow ReadRow(const platform::Text& name) const;

 private:
  enum class Match { kEvery, kFavourites, kGenre };

  [[nodiscard]] std::vector<controls::ListRow> ReadRows(const platform::Text& filter) const;
  [[nodiscard]] static Match MatchOf(const platform::Text& filter);
  [[nodiscard]] bool Matches(const platform::Text& name, Match match, const platform::Text& wanted) const;
  void FillFullList(std::vector<controls::ListRow> loaded);
  void ReadWrittenCells(UnsavedRow& unsaved) const;
  void LeaveOutSectionsOf(const std::vector<UnsavedRow>& unsaved,
                          std::vector<controls::ListRow>& loaded) const;

  const StationFile& file_;
  platform::TextConversion& conversion_;
  const StationIcons& icons_;
  app::WindowState& state_;
  app::ListPair lists_;
  UnsavedRows& unsaved_;
  std::function<void(controls::ListView&)> sort_again_;
  platform::Text filter_;
};

}  // namespace catalogue
