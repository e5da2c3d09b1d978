#include "catalogue/station_views.h"

#include "app/state/scoped_flag.h"
#include "app/state/station.h"

namespace catalogue {

using controls::CheckValue;
using platform::Text;

StationViews::StationViews(Parts parts, StationStore& store, StationLists& station_lists,
                           StationWriter& writer, const app::WindowState& state, platform::Dialogs& dialogs)
    : parts_(parts),
      store_(store),
      station_lists_(station_lists),
      writer_(writer),
      state_(state),
      dialogs_(dialogs) {
  subscriptions_ += parts_.Check1.Clicked.Subscribe([this] { Check1_Click(); });
  subscriptions_ += parts_.Check2.Clicked.Subscribe([this] {
    if (!state_.filling_fields) Check2_Click();
  });
  subscriptions_ += parts_.Check3.Clicked.Subscribe([this] { Check3_Click(); });
  subscriptions_ += parts_.Combo1.Clicked.Subscribe([this] { Combo1_Click(); });
}

void StationViews::Check1_Click() {
  if (InViewSwitch) return;
  const app::ScopedFlag switching(InViewSwitch);
  if (parts_.Check1.Checked()) {
    ShowFiltered(parts_.Combo1.GetText(), GenreCaption());
    parts_.Check3.SetValue(CheckValue::kUnchecked);
  } else {
    ShowAll();
  }
}

void StationViews::LeaveFilter(Selection selection) {
  if (InViewSwitch || !parts_.lists.filtered.Visible()) return;
  const app::ScopedFlag switching(InViewSwitch);
  ShowAll(selection);
}

void StationViews::Check3_Click() {
  if (InViewSwitch) return;
  const app::ScopedFlag switching(InViewSwitch);
  if (parts_.Check3.Checked()) {
    ShowFiltered(u"1", u"Favoriten");
    parts_.Check1.SetValue(CheckValue::kUnchecked);
  } else {
    ShowAll();
  }
}

void StationViews::Combo1_Click() {
  if (!parts_.Check1.Checked()) return;
  station_lists_.SaveListindex();
  store_.LoadStations(parts_.Combo1.GetText());
  parts_.Frame2.SetCaption(GenreCaption());
}

void StationViews::Check2_Click() {
  controls::ListView& list = parts_.lists.Active();
  const controls::RowId row = list.SelectedRow();
  if (row == controls::RowId::kNone) {
    dialogs_.MessageBoxW(u"Bitte zuerst eine Radiostation markieren!", u"", platform::kMbIconInformation);
    return;
  }
  const Text value = parts_.Check2.Checked() ? u"1" : u"";
  writer_.WriteField(list, row, app::kFavouriteField, value);
}

void StationViews::ShowFiltered(const Text& filter, const Text& caption) {
  station_lists_.SaveListindex();
  store_.LoadStations(filter);
  parts_.Frame2.SetCaption(caption);
  parts_.CommandButton1.SetVisible(false);
  parts_.CommandButton2.SetVisible(false);
  parts_.lists.full.SetVisible(false);
  parts_.lists.filtered.SetVisible(true);
}

void StationViews::ShowAll(Selection selection) {
  store_.LoadStations(u"");
  UncheckBoth();
  parts_.Frame2.SetCaption(u"Gespeicherte Radiostationen");
  // The full list must be the active one before a row of it is selected: what the selection triggers acts on
  // it.
  parts_.lists.filtered.SetVisible(false);
  parts_.lists.full.SetVisible(true);
  parts_.CommandButton1.SetVisible(true);
  parts_.CommandButton2.SetVisible(true);
  if (selection == Selection::kRemembered) station_lists_.RestoreListindex();
  // The selection fetches a title while the window keeps working: a click on a box did nothing then, so its
  // mark must not stay either.
  UncheckBoth();
}

void StationViews::UncheckBoth() {
  parts_.Check1.SetValue(CheckValue::kUnchecked);
  parts_.Check3.SetValue(CheckValue::kUnchecked);
}

Text StationViews::GenreCaption() const { return u"Genre-Filter: " + parts_.Combo1.GetText(); }

}  // namespace catalogue
