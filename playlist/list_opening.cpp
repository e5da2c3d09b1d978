#include "playlist/list_opening.h"

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "app/state/station.h"
#include "app/state/status_sentences.h"
#include "app/text/numbers.h"
#include "playlist/opening_rules.h"

namespace playlist {

using app::Text;
using app::TextView;

ListOpening::ListOpening(Parts parts, platform::Files& files, platform::TextConversion& conversion,
                         app::Notices& notices, Actions actions, const app::Life& window)
    : parts_(parts),
      files_(files),
      conversion_(conversion),
      notices_(notices),
      actions_(std::move(actions)),
      window_(window),
      openings_(window) {
  parts_.form.Accepts = [](const controls::DropOffer& offer) { return WhatToOpen(offer).has_value(); };
  subscriptions_ += parts_.form.Dropped.Subscribe([this](const controls::DropOffer& offer) { Open(offer); });
  subscriptions_ += parts_.form.DroppedUnderDialog.Subscribe([this](const controls::DropOffer& offer) {
    notices_.Notify(app::sentences::kNotOpenedNow, {NameOfOffer(offer)});
  });
}

void ListOpening::Open(const controls::DropOffer& offer) {
  if (window_.Ended()) return;
  const auto opening = WhatToOpen(offer);
  if (!opening) return notices_.Notify(app::sentences::kNotOpenable, {NameOfOffer(offer)});
  if (opening->kind == Opening::Kind::kList) return OpenList(opening->target);
  OpenLink(opening->target);
}

void ListOpening::OpenLink(const Text& link) {
  actions_.show_full_list(Actions::Selects::kRememberedRow);
  if (!window_.Ended()) actions_.add_station(link);
}

void ListOpening::OpenList(const Text& path) {
  const auto bytes = files_.ReadWholeFile(path, kLargestStationList);
  if (!bytes) {
    const bool is_there = files_.PathFileExistsW(path);
    return notices_.Notify(is_there ? app::sentences::kListUnreadable : app::sentences::kListMissing,
                           {FileNameOf(path)});
  }
  const StationList list = ReadStationList(conversion_, *bytes);
  if (!list.stations.empty()) return AddRows(list);
  switch (list.kind) {
    case StationList::Kind::kEmpty:
      return notices_.Notify(app::sentences::kImportEmpty, {FileNameOf(path)});
    case StationList::Kind::kStream:
      return notices_.Notify(app::sentences::kListIsStream, {FileNameOf(path)});
    case StationList::Kind::kList:
      return notices_.Notify(app::sentences::kListWithoutLinks, {FileNameOf(path)});
  }
}

void ListOpening::AddRows(const StationList& list) {
  const app::Runs::Run opening = openings_.Begin();
  actions_.show_full_list(Actions::Selects::kNewRow);
  if (window_.Ended()) return;
  std::vector<controls::ListRow> rows;
  for (const ListedStation& station : list.stations) {
    controls::ListRow& row = rows.emplace_back();
    row.cells.Set(app::kNameCell, station.name);
    row.cells.Set(app::kLinkCell, station.link);
  }
  controls::ListView& full = parts_.lists.full;
  const std::size_t first = full.Count();
  full.AddRows(std::move(rows));
  full.EnsureVisible(full.RowAt(first));
  full.Select(full.RowAt(first));
  // The selection asks a server. What was opened meanwhile has given its own notice, and one given before the
  // selection would be replaced during it.
  if (!opening.Wanted()) return;
  const auto count = static_cast<std::int64_t>(list.stations.size());
  notices_.Notify(list.is_cut ? app::sentences::kListCut : app::sentences::kImported,
                  {app::FormatNumber(count)});
}

}  // namespace playlist
