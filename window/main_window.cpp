#include "window/main_window.h"

#include <utility>

#include "app/forms/translation.h"
#include "app/settings/settings_folder.h"
#include "app/state/genre_list.h"
#include "app/state/status_sentences.h"
#include "app/text/numbers.h"
#include "app/text/text_helpers.h"
#include "app/text/text_utilities.h"
#include "catalogue/new_station_dialog.h"

namespace window {

using controls::CheckValue;
using platform::Text;

MainWindow::MainWindow(Platform platform, std::function<void(app::Form2&)> show_modal)
    : platform_(platform),
      show_modal_(std::move(show_modal)),
      ini_(settings_, platform.profile, platform.files, platform.environment),
      language_(settings_, ini_, platform.profile, platform.files, platform.environment),
      layout_(form1_),
      foundation_{.platform = platform_,
                  .form = form1_,
                  .settings = settings_,
                  .ini = ini_,
                  .language = language_,
                  .state = state_,
                  .life = life_},
      playing_(foundation_, cFunkhaus, cPlayer),
      catalogue_(foundation_, playing_.status_line,
                 {.show_station_details = [this] { playing_.details.ShowStationDetails(); },
                  .start_playing = [this] { playing_.playback.Command1_Click(); },
                  .launch_recorder = [this] { playing_.recorder_launch.Launch(); },
                  .record_row = [this](const auto& list,
                                       auto row) { playing_.recorder_launch.LaunchFor(list, row); },
                  .show_new_station_dialog = [this](const Text& link) { ShowNewStationDialog(link); }}),
      desktop_(foundation_, playing_) {
  app::ChooseSettingsFolder(settings_, ini_, platform_.files, platform_.environment);
  subscriptions_ += form1_.form.QueryUnload.Subscribe([this] { Form_QueryUnload(); });
  subscriptions_ += form1_.form.Unloaded.Subscribe([this] { Form_Unload(); });
  // Both may clear CatalogueChanged and leave the rows as they are.
  for (controls::CommandButton* button : {&form1_.CommandButton1, &form1_.CommandButton2}) {
    subscriptions_ += button->Clicked.Subscribe([this] { catalogue_.keeper.Note(); });
  }
}

MainWindow::~MainWindow() = default;

void MainWindow::Load() {
  CreateStreamClient();
  for (Text& genre : app::Split(app::GenreList, u";")) form1_.Combo1.AddItem(std::move(genre));
  form1_.Combo1.SetListIndex(0);
  catalogue::StationLists::CreateColumns(form1_.SymbolListview);
  catalogue_.icons.LoadStationIcons(app::AddBackslash(platform_.environment.ProgramFolder()) + u"RadioIco");
  catalogue::StationLists::CreateColumns(form1_.ExplorerListFilter);
  const auto restored = catalogue_.keeper.Restore();
  catalogue_.store.LoadStations(u"");
  form1_.tmPlay.SetEnabled(false);
  form1_.tmPlay.SetInterval(500);
  CreatePlayer();
  RestoreView();
  language_.ChooseLanguage();
  if (language_.Translates()) {
    app::TranslateForm(form1_, [this](const Text& text) { return language_.GetLangText(text, text); });
  }
  ReportRestored(restored);
  desktop_.Appear(foundation_);
}

void MainWindow::CreateStreamClient() {
  cFunkhaus = std::make_shared<stream::clsFunkhaus>(
      stream::Ports{platform_.internet, platform_.requests, platform_.record_files, platform_.environment,
                    platform_.clock, platform_.message_loop, platform_.conversion});
  cFunkhaus->QueryStream = [this](bool ok) { playing_.now_playing.cFunkhaus_QueryStream(ok); };
  cFunkhaus->RecStreamCurrentPlaying = [this](const Text& title, const Text&, const Text&) {
    form1_.form.SetCaption(u"Playing: " + title);
  };
}

void MainWindow::CreatePlayer() {
  cPlayer = player::clsMFPlayer::Make(
      player::clsMFPlayer::Ports{platform_.media, platform_.interface_calls, platform_.property_values,
                                 platform_.environment, platform_.clock, platform_.message_loop},
      duration_);
  cPlayer->MediaFileIsReady = [this](bool ready) { playing_.playback.cPlayer_MediaFileIsReady(ready); };
  cPlayer->IsCreateOK = [this](std::int32_t result) { playing_.playback.cPlayer_IsCreateOK(result); };
}

void MainWindow::RestoreView() {
  const Text view = ini_.ReadIni(u"Pfad3", u"FunkhausFavorit", u"0", u"Opt.ini");
  if (view == u"1") form1_.Check3.SetValue(CheckValue::kChecked);
  if (view == u"2") form1_.Check1.SetValue(CheckValue::kChecked);
  view_restored_ = true;
}

void MainWindow::ReportRestored(const catalogue::UnsavedRowsKeeper::Restored& restored) {
  if (restored.unreadable) playing_.status_line.Notify(app::sentences::kKeptRowsUnreadable);
  if (restored.rows == 1) playing_.status_line.Notify(app::sentences::kOneRowRestored);
  if (restored.rows < 2) return;
  playing_.status_line.Notify(app::sentences::kRowsRestored,
                              {app::FormatNumber(static_cast<std::int64_t>(restored.rows))});
}

void MainWindow::ShowNewStationDialog(const Text& link) {
  catalogue::NewStationDialog dialog(form1_.SymbolListview, settings_, language_, platform_.clipboard,
                                     platform_.dialogs);
  dialog.Show(show_modal_, link);
}

bool MainWindow::SessionEnds() const { return form1_.form.Reason() == controls::CloseReason::kSessionEnd; }

void MainWindow::Form_QueryUnload() {
  life_.End();
  form1_.Timer1.SetEnabled(false);
  const bool wants_to_save = !SessionEnds() && settings_.CatalogueChanged && OfferToSave();
  // Checked again, because the session may have ended while the question was open. Rows whose saving failed
  // are kept as well.
  if (SessionEnds() || wants_to_save) {
    catalogue_.keeper.Finish();
  } else {
    catalogue_.keeper.Discard();
  }
  if (!view_restored_) return;
  const Text view = form1_.Check3.Checked() ? u"1" : (form1_.Check1.Checked() ? u"2" : u"0");
  ini_.WriteOptIni(u"Pfad3", u"FunkhausFavorit", view);
}

bool MainWindow::OfferToSave() {
  const auto answer = platform_.dialogs.MessageBoxW(u"Sollen die Änderungen gespeichert werden?", u"",
                                                    platform::kMbYesNo | platform::kMbIconQuestion);
  if (answer != platform::MessageBoxAnswer::kYes) return false;
  settings_.CatalogueChanged = false;
  catalogue_.editor.CommandButton1_Click();
  // A view is never saved. The rows come back at the next start, and so must the question.
  if (form1_.ExplorerListFilter.Visible()) settings_.CatalogueChanged = true;
  return true;
}

void MainWindow::Form_Unload() {
  if (cFunkhaus) cFunkhaus->StopRecStream();
  platform_.message_loop.ProcessPendingMessages();
  cFunkhaus.reset();
  form1_.tmPlay.SetEnabled(false);
  form1_.Timer2.SetEnabled(false);
  cPlayer.reset();
}

}  // namespace window
