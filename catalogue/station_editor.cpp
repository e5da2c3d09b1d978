#include "catalogue/station_editor.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "app/numbers.h"
#include "app/station_row.h"

namespace catalogue {

using controls::ListRow;
using controls::ListView;
using controls::RowId;
using platform::MessageBoxAnswer;
using platform::Text;

namespace {

/// An entry number counts from 1; a text that is no number counts as 0.
bool NamesAnEntry(const Text& number) { return app::ToNumber(number).value_or(0) >= 1; }

}  // namespace

StationEditor::StationEditor(Parts parts, StationStore& store, const StationIcons& icons,
                             app::IniProcedures& ini, platform::PrivateProfile& profile,
                             app::Settings& settings, app::WindowState& state, platform::Dialogs& dialogs,
                             Actions actions)
    : parts_(parts),
      store_(store),
      icons_(icons),
      ini_(ini),
      profile_(profile),
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
      return TakeOverField(app::kM3uNumberCell, u"M3uNr", parts_.UpDownTextBox1.GetText());
    case 1:
      return TakeOverAll();
    case 2:
      return TakeOverField(app::kLinkCell, u"Link", parts_.TextBox1[1].GetText());
    case 3:
      return DeleteEntry();
    case 4:
      return TakeOverField(app::kGenreCell, u"Genre", parts_.Combo1.GetText());
    case 5:
      return actions_.launch_recorder();
    default:
      return;
  }
}

void StationEditor::TakeOverField(std::size_t cell, const Text& key, const Text& value) {
  ListView& list = parts_.lists.Active();
  const RowId row = list.SelectedRow();
  if (row == RowId::kNone) {
    dialogs_.MessageBoxW(u"Bitte Eintrag markieren oder neu erstellen!", u"", platform::kMbIconExclamation);
    return;
  }
  // The genre has no part in the details; a link or number that stays the same changes none of them.
  const bool changes_details = cell != app::kGenreCell && list.Cell(row, cell) != value;
  list.SetCell(row, cell, value);
  const bool written = WriteKey(list.Cell(row, app::kNameCell), key, value);
  if (written && &list == &parts_.lists.full) store_.Origins().MarkKeyWritten(row);
  if (changes_details) state_.reselect = true;
}

void StationEditor::TakeOverAll() {
  ListView& list = parts_.lists.Active();
  const RowId row = list.SelectedRow();
  if (row == RowId::kNone) {
    AddEntry();
  } else {
    UpdateEntry(list, row);
  }
}

void StationEditor::AddEntry() {
  if (parts_.TextBox1[0].GetText().empty()) return;
  if (dialogs_.MessageBoxW(u"Soll ein neuer Eintrag hinzugefügt werden?", u"",
                           platform::kMbOkCancel | platform::kMbIconQuestion) != MessageBoxAnswer::kOk) {
    return;
  }
  ListView& list = parts_.lists.Active();
  const Text name = parts_.TextBox1[0].GetText();
  ListRow row;
  row.icon = icons_.IconOf(name);
  row.cells[app::kNameCell] = name;
  row.cells[app::kGenreCell] = parts_.Combo1.GetText();
  row.cells[app::kLinkCell] = parts_.TextBox1[1].GetText();
  row.cells[app::kFavouriteCell] = FavouriteMark();
  const Text number = parts_.UpDownTextBox1.GetText();

  platform::WriteGroup group(profile_);
  const RowId added = list.AddRow(std::move(row));
  WriteCommonKeys(name);
  WriteKey(name, u"M3uNr", number);
  if (group.End()) MarkSaved(list, added);
}

void StationEditor::UpdateEntry(ListView& list, RowId row) {
  const Text name = parts_.TextBox1[0].GetText();
  const Text number = parts_.UpDownTextBox1.GetText();
  const bool changes_details = list.Cell(row, app::kNameCell) != name ||
                               list.Cell(row, app::kLinkCell) != parts_.TextBox1[1].GetText();

  platform::WriteGroup group(profile_);
  ini_.DeleteStationSection(list.Cell(row, app::kNameCell));
  list.SetCell(row, app::kNameCell, name);
  list.SetCell(row, app::kGenreCell, parts_.Combo1.GetText());
  list.SetCell(row, app::kLinkCell, parts_.TextBox1[1].GetText());
  list.SetCell(row, app::kFavouriteCell, FavouriteMark());
  WriteCommonKeys(name);
  if (NamesAnEntry(number)) WriteKey(name, u"M3uNr", number);
  if (group.End()) MarkSaved(list, row);
  if (changes_details) state_.reselect = true;
}

void StationEditor::DeleteEntry() {
  ListView& list = parts_.lists.Active();
  const RowId row = list.SelectedRow();
  if (row == RowId::kNone) return;
  ini_.DeleteStationSection(list.Cell(row, app::kNameCell));
  list.RemoveRow(row);
}

void StationEditor::CommandButton1_Click() {
  if (parts_.Check1.Checked() || parts_.lists.filtered.Visible()) {
    dialogs_.MessageBoxW(u"Bitte zuerst den Filter entfernen!", u"", platform::kMbIconExclamation);
    return;
  }
  WriteFullList();
  settings_.CatalogueChanged = false;
  dialogs_.MessageBoxW(u"Änderungen gespeichert!", u"", platform::kMbIconInformation);
}

void StationEditor::WriteFullList() {
  platform::WriteGroup group(profile_);
  for (const ListRow& row : parts_.lists.full.Rows()) {
    const Text& name = row.cells[app::kNameCell];
    WriteKey(name, u"Genre", row.cells[app::kGenreCell]);
    WriteKey(name, u"Link", row.cells[app::kLinkCell]);
    WriteKey(name, u"Favorit", row.cells[app::kFavouriteCell]);
    WriteKey(name, u"M3uNr",
             NamesAnEntry(row.cells[app::kM3uNumberCell]) ? row.cells[app::kM3uNumberCell] : Text());
  }
  if (!group.End()) return;
  for (const ListRow& row : parts_.lists.full.Rows()) store_.Origins().MarkSaved(row.id);
}

void StationEditor::SaveUnsavedRows() {
  if (!settings_.CatalogueChanged && !HasUnsavedRows()) return;
  // The file may be newer than the loaded rows: what was taken over or deleted in a filter view stands in
  // the file only, and an entry number of a new entry is in no column. Unsaved rows survive the loading.
  store_.LoadStations(u"");
  WriteFullList();
  settings_.CatalogueChanged = false;
}

bool StationEditor::HasUnsavedRows() const {
  const std::vector<ListRow>& rows = parts_.lists.full.Rows();
  return std::any_of(rows.begin(), rows.end(),
                     [this](const ListRow& row) { return store_.Origins().Of(row.id) != RowOrigin::kSaved; });
}

void StationEditor::CommandButton2_Click() {
  actions_.show_new_station_dialog();
  if (!settings_.CatalogueChanged) return;
  if (dialogs_.MessageBoxW(u"Sollen die Änderungen gespeichert werden?", u"",
                           platform::kMbYesNo | platform::kMbIconQuestion) != MessageBoxAnswer::kYes) {
    return;
  }
  settings_.CatalogueChanged = false;
  CommandButton1_Click();
}

bool StationEditor::WriteKey(const Text& section, const Text& key, const Text& value) {
  return ini_.WriteStationIni(section, key, value);
}

void StationEditor::WriteCommonKeys(const Text& name) {
  WriteKey(name, u"Station", name);
  WriteKey(name, u"Link", parts_.TextBox1[1].GetText());
  WriteKey(name, u"Genre", parts_.Combo1.GetText());
  WriteKey(name, u"Favorit", FavouriteMark());
}

Text StationEditor::FavouriteMark() const { return parts_.Check2.Checked() ? u"1" : u""; }

void StationEditor::MarkSaved(const ListView& list, RowId row) {
  if (&list == &parts_.lists.full) store_.Origins().MarkSaved(row);
}

}  // namespace catalogue
