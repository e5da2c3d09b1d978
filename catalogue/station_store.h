#pragma once
// The station store: reads the station file into the two lists.
// Not writing rows back to it (catalogue/station_writer.h).

#include <cstdint>
#include <functional>
#include <vector>

#include "app/settings/ini_procedures.h"
#include "app/settings/settings.h"
#include "app/state/list_pair.h"
#include "app/state/window_state.h"
#include "catalogue/station_icons.h"
#include "catalogue/unsaved_rows.h"
#include "controls/list_view.h"
#include "ports/private_profile.h"
#include "ports/text_conversion.h"

namespace catalogue {

/// The station file: one INI section per station, named after it; keys "Station" (the name once more,
/// never read), "Link", "Genre", "Favorit" ("1" or empty), "M3uNr" (a whole number or empty), written in
/// this order.
class StationStore {
 public:
  struct Ports {
    platform::PrivateProfile& profile;
    platform::TextConversion& conversion;
  };

  /// The list of all names, each followed by NUL, is read into a buffer of this many characters; names
  /// beyond it are silently missing.
  static constexpr std::size_t kNameListCapacity = 8192;

  /// `sort_again` puts a list that was just filled into the order that the user chose.
  StationStore(Ports ports, app::IniProcedures& ini, const app::Settings& settings, const StationIcons& icons,
               app::WindowState& state, app::ListPair lists, UnsavedRows& unsaved,
               std::function<void(controls::ListView&)> sort_again);

  /// Fills a list from the file: "" all stations into the full list, "1" the favourites, any other text the
  /// stations of that genre (without regard to letter case) into the filtered list. The list is emptied
  /// first, and sorted again when it is filled. The full list keeps its unsaved rows, of which the cells
  /// that were written singly are read from the file like those of the others. A missing file or key gives no
  /// rows or empty cells, never a message.
  void LoadStations(const platform::Text& Filter);

  /// The text that the filtered list was last filled by; empty before the first time.
  [[nodiscard]] const platform::Text& Filter() const { return filter_; }
  /// Whether a station of the file belongs to the filtered list as it was last filled.
  [[nodiscard]] bool BelongsToView(const platform::Text& name) const;
  /// A station of the file as a row; empty cells where keys are missing.
  [[nodiscard]] controls::ListRow ReadRow(const platform::Text& name) const;

 private:
  enum class Match { kEvery, kFavourites, kGenre };

  [[nodiscard]] std::vector<platform::Text> SectionNames() const;
  [[nodiscard]] std::vector<controls::ListRow> ReadRows(const platform::Text& filter) const;
  [[nodiscard]] static Match MatchOf(const platform::Text& filter);
  [[nodiscard]] bool Matches(const platform::Text& name, Match match, const platform::Text& wanted) const;
  [[nodiscard]] platform::Text ReadKey(const platform::Text& name, const platform::Text& key) const;
  void FillFullList(std::vector<controls::ListRow> loaded);
  void ReadWrittenCells(UnsavedRow& unsaved) const;
  void LeaveOutSectionsOf(const std::vector<UnsavedRow>& unsaved,
                          std::vector<controls::ListRow>& loaded) const;

  Ports ports_;
  app::IniProcedures& ini_;
  const app::Settings& settings_;
  const StationIcons& icons_;
  app::WindowState& state_;
  app::ListPair lists_;
  UnsavedRows& unsaved_;
  std::function<void(controls::ListView&)> sort_again_;
  platform::Text filter_;
};

}  // namespace catalogue
