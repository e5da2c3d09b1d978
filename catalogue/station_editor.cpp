#include "catalogue/station_editor.h"

#include <utility>

#include "app/state/station_row.h"

namespace catalogue {

using controls::ListView;
using controls::RowId;
using platform::MessageBoxAnswer;
using platform::Text;

StationEditor::StationEditor(Parts parts, StationWriter& writer, app::Settings& settings,
                             app::WindowState& state, platform::Dialogs& dialogs, Actions actions)
    : parts_(parts),
      writer_(writer),
      settings_(settings),
      state_(state),
      dialogs_(dialogs),
      actions_(std::move(actions)) {
  for (std::size_t index = 0; index < parts_.Command8.size(); ++index) {
    subscriptions_ += parts_.Command8[index].Clicked.Subscribe([this, index] { Command8_Click(index); });
  }
  subscriptions_ += parts_.CommandButton1.Clicked.Subscribe([this] { CommandButton1_Click(); });
  subscriptions_ += parts_.CommandButton2.Clicked.Subscribe([this] { CommandButton2_Click(); });
}

void StationEditor::Command8_Click(std::size_t Index) {
  switch (Index) {
    case 0:
      return ApplyField(app::kNumberField);
    case 1:
      return ApplyAll();
    case 2:
      return ApplyField(app::kLinkField);
    case 3:
      return DeleteEntry();
    case 4:
      return ApplyField(app::kGenreField);
    case 5:
      return actions_.launch_recorder();
    default:
      return;
  }
}

void StationEditor::ApplyField(const app::StationField& field) {
  ListView& list = parts_.lists.Active();
  const RowId row = list.SelectedRow();
  if (row == RowId::kNone) {
    dialogs_.MessageBoxW(u"Bitte Eintrag markieren oder neu erstellen!", u"", platform::kMbIconExclamation);
    return;
  }
  const Text value = parts_.fields.Edited({}).*field.value;
  // The genre is not part of the details; a link or number that stays the same changes none of them.
  const bool changes_details = field.cell != app::kGenreCell && list.Cell(row, field.cell) != value;
  writer_.WriteField(list, row, field, value);
  if (changes_details) DetailsWereEdited();
}

void StationEditor::ApplyAll() {
  ListView& list = parts_.lists.Active();
  const RowId row = list.SelectedRow();
  if (row == RowId::kNone) {
    AddEntry();
  } else {
    UpdateEntry(list, row);
  }
}

void StationEditor::AddEntry() {
  if (parts_.fields.Edited({}).name.empty()) return;
  if (dialogs_.MessageBoxW(u"Soll ein neuer Eintrag hinzugefügt werden?", u"",
                           platform::kMbOkCancel | platform::kMbIconQuestion) != MessageBoxAnswer::kOk) {
    return;
  }
  writer_.AddStation(parts_.lists.Active(), parts_.fields.Edited({}));
}

void StationEditor::UpdateEntry(ListView& list, RowId row) {
  const app::Station before = app::StationOf(list.Rows()[*list.IndexOf(row)].cells);
  const app::Station station = parts_.fields.Edited(before);
  const bool changes_details = before.name != station.name || before.link != station.link;
  writer_.UpdateStation(list, row, station);
  if (changes_details) DetailsWereEdited();
}

void StationEditor::DetailsWereEdited() { state_.details_are_stale = true; }

void StationEditor::DeleteEntry() {
  ListView& list = parts_.lists.Active();
  const RowId row = list.SelectedRow();
  if (row != RowId::kNone) writer_.DeleteStation(list, row);
}

void StationEditor::CommandButton1_Click() {
  if (parts_.Check1.Checked() || parts_.lists.filtered.Visible()) {
    dialogs_.MessageBoxW(u"Bitte zuerst den Filter entfernen!", u"", platform::kMbIconExclamation);
    return;
  }
  writer_.WriteFullList();
  dialogs_.MessageBoxW(u"Änderungen gespeichert!", u"", platform::kMbIconInformation);
}

void StationEditor::AddNewStation(const Text& link) {
  actions_.show_new_station_dialog(link);
  if (!settings_.CatalogueChanged) return;
  if (dialogs_.MessageBoxW(u"Sollen die Änderungen gespeichert werden?", u"",
                           platform::kMbYesNo | platform::kMbIconQuestion) != MessageBoxAnswer::kYes) {
    return;
  }
  settings_.CatalogueChanged = false;
  CommandButton1_Click();
}

}  // namespace catalogue
