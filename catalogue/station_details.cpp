#include "catalogue/station_details.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "app/state/scoped_flag.h"
#include "app/state/station_row.h"
#include "app/text/numbers.h"
#include "app/text/text_helpers.h"
#include "app/text/text_utilities.h"
#include "playlist/local_playlist.h"

namespace catalogue {

using controls::ListView;
using controls::RowId;
using platform::Text;

StationDetails::StationDetails(Parts parts, Ports ports, app::WindowState& state,
                               const std::shared_ptr<stream::clsFunkhaus>& funkhaus, Actions actions,
                               const app::Life& window)
    : parts_(parts),
      ports_(ports),
      state_(state),
      cFunkhaus(funkhaus),
      actions_(std::move(actions)),
      selections_(window) {}

void StationDetails::ShowStationDetails() {
  const ListView& list = parts_.lists.Active();
  const RowId row = list.SelectedRow();
  if (row == RowId::kNone) return;
  const app::Runs::Run selection = selections_.Begin();
  state_.details_are_stale = true;

  const controls::ListRow worked_out = list.Rows()[*list.IndexOf(row)];
  FillFields(worked_out);
  const Text& name = worked_out.cells[app::kNameCell];
  const Text& link = worked_out.cells[app::kLinkCell];
  state_.current_station_name = name;
  // Until a playlist says otherwise; a Start that comes meanwhile resolves it again.
  state_.current_stream_address = link;
  actions_.take_row(list, row);

  const bool is_playlist_file = playlist::IsPlaylistFileName(ports_.conversion, link);
  if (!is_playlist_file) parts_.UpDownTextBox1.SetText(u"0");
  ShowNumberField(is_playlist_file);
  if (is_playlist_file && parts_.UpDownTextBox1.GetText().empty()) parts_.UpDownTextBox1.SetText(u"1");

  SayWanted(link);
  const Text address = AddressOf(link, EntryNumber());
  if (!selection.Wanted()) return;
  state_.current_stream_address = address;
  if (address != link) SayWanted(address);
  if (StillSelected(worked_out)) state_.details_are_stale = false;

  actions_.fetch_title();
  if (!selection.Wanted()) return;
  actions_.report_server(name, FailureOf(address));
  actions_.show_picture(name);
}

stream::QueryFailure StationDetails::FailureOf(const Text& address) const {
  // The empty address is not queried, and another fetch may have queried another server since.
  const bool asked = cFunkhaus && !address.empty() && cFunkhaus->StreamUrl() == app::Trim(address);
  return asked ? cFunkhaus->LastQueryFailure() : stream::QueryFailure{};
}

void StationDetails::SayWanted(const Text& address) {
  if (cFunkhaus) cFunkhaus->TryAgain(address, stream::Wait::kFull);
}

bool StationDetails::StillSelected(const controls::ListRow& worked_out) const {
  const ListView& list = parts_.lists.Active();
  if (list.SelectedRow() != worked_out.id) return false;
  return std::ranges::all_of(
      std::array{app::kNameCell, app::kLinkCell, app::kM3uNumberCell},
      [&](std::size_t cell) { return list.Cell(worked_out.id, cell) == worked_out.cells[cell]; });
}

void StationDetails::FillFields(const controls::ListRow& row) {
  const app::ScopedFlag filling(state_.filling_fields);
  parts_.fields.Show(app::StationOf(row.cells));
}

void StationDetails::ShowNumberField(bool shown) {
  parts_.UpDownTextBox1.SetVisible(shown);
  parts_.Label2.SetVisible(shown);
  parts_.Command8_0.SetVisible(shown);
}

std::int32_t StationDetails::EntryNumber() const {
  const std::int32_t number = app::ToInt32(parts_.UpDownTextBox1.GetText()).value_or(0);
  return number == 0 ? 1 : number;
}

Text StationDetails::AddressOf(const Text& link, std::int32_t number) {
  if (playlist::IsPlaylistFileName(ports_.conversion, link) && ports_.files.PathFileExistsW(link)) {
    return playlist::GetLocalPlaylistEntry(ports_.files, ports_.conversion, link, number);
  }
  if (!cFunkhaus || !cFunkhaus->IsUrlPlaylist(link)) return link;
  // A window that closed meanwhile has released the stream client.
  if (!cFunkhaus || cFunkhaus->GetPlaylistNumberOfEntries() <= 0) return link;
  Text entry;
  Text ignored_title;
  cFunkhaus->GetPlaylistEntry(number < 1 ? 0 : number - 1, entry, ignored_title);
  return Text(app::FirstLine(entry));
}

}  // namespace catalogue
