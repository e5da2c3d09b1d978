#include "catalogue/new_station_dialog.h"

#include "app/forms/translation.h"
#include "app/state/genre_list.h"
#include "app/state/station_row.h"
#include "app/text/text_helpers.h"

namespace catalogue {

using platform::Text;

NewStationDialog::NewStationDialog(controls::ListView& list, app::Settings& settings,
                                   const app::Language& language, platform::Clipboard& clipboard,
                                   platform::Dialogs& dialogs)
    : SymbolListview(list),
      settings_(settings),
      language_(language),
      clipboard_(clipboard),
      dialogs_(dialogs) {
  subscriptions_ += form_.CommandButton1.Clicked.Subscribe([this] { CommandButton1_Click(); });
  subscriptions_ += form_.CommandButton2.Clicked.Subscribe([this] { CommandButton2_Click(); });
  for (std::size_t index = 0; index < form_.CommandButton3.size(); ++index) {
    subscriptions_ +=
        form_.CommandButton3[index].Clicked.Subscribe([this, index] { CommandButton3_Click(index); });
  }
}

void NewStationDialog::Show(const std::function<void(app::Form2&)>& show_modal, const Text& link) {
  Load();
  form_.TextBox1[1].SetText(link);
  show_modal(form_);
}

void NewStationDialog::Load() {
  for (Text& genre : app::Split(app::GenreList, u";")) form_.Combo1.AddItem(std::move(genre));
  form_.Combo1.SetListIndex(0);
  if (language_.Translates()) Translate();
}

void NewStationDialog::Translate() {
  app::TranslateCaptions(form_.inventory,
                         [this](const Text& text) { return language_.GetLangText(text, text); });
}

void NewStationDialog::CommandButton1_Click() {
  if (form_.TextBox1[0].GetText().empty()) {
    const Text message = u"Bitte geben Sie einen Namen für die Radiostation ein!";
    dialogs_.MessageBoxW(language_.GetLangText(message, message), u"", platform::kMbIconInformation);
    return;
  }
  form_.CommandButton1.SetEnabled(false);
  app::Station station;
  station.name = form_.TextBox1[0].GetText();
  station.genre = form_.Combo1.GetText();
  station.link = form_.TextBox1[1].GetText();
  SymbolListview.AddRow(app::RowOf(station));
  settings_.CatalogueChanged = true;
  form_.CommandButton1.SetEnabled(true);
  form_.form.Close();
}

void NewStationDialog::CommandButton2_Click() { form_.form.Close(); }

void NewStationDialog::CommandButton3_Click(std::size_t Index) {
  if (Index < form_.TextBox1.size()) form_.TextBox1[Index].SetText(clipboard_.GetText());
}

}  // namespace catalogue
