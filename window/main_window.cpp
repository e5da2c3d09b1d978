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
      status_line_(form1_.StatusLine, language_, {platform.playback_monitor, platform.clock}),
      playing_mark_(Lists(), platform.playback_monitor),
      picture_(platform.environment, platform.files, platform.icons),
      layout_(form1_),
      icons_({platform.icons, platform.files, platform.conversion, platform.dialogs}, Lists()),
      station_lists_(Lists(), platform.string_order, state_,
                     {[this] { details_.ShowStationDetails(); }, [this] { playback_.Command1_Click(); }}),
      unsaved_rows_(form1_.SymbolListview, platform.conversion),
      keeper_({platform.files, platform.environment, platform.conversion}, unsaved_rows_,
              form1_.SymbolListview, icons_, settings_, form1_.tmUnsaved),
      store_({platform.profile, platform.conversion}, ini_, settings_, icons_, state_, Lists(), unsaved_rows_,
             [this](controls::ListView& list) { station_lists_.SortAgain(list); }),
      deleted_(form1_.UndoDelete, Lists(), platform.profile, ini_, settings_, store_, unsaved_rows_,
               status_line_),
      writer_(platform.profile, ini_, settings_, status_line_, icons_, Lists(), unsaved_rows_, deleted_),
      views_({form1_.Check1, form1_.Check2, form1_.Check3, form1_.Combo1, form1_.Frame2,
              form1_.CommandButton1, form1_.CommandButton2, Lists()},
             store_, station_lists_, writer_, state_, platform.dialogs),
      recorder_launch_(Lists(), form1_.UpDownTextBox1,
                       {platform.environment, platform.dialogs, platform.shell}, state_, status_line_, life_),
      editor_({form1_.TextBox1, form1_.Combo1, form1_.Check1, form1_.Check2, form1_.UpDownTextBox1,
               form1_.Command8, form1_.CommandButton1, form1_.CommandButton2, Lists()},
              writer_, settings_, state_, platform.dialogs,
              {[this] { recorder_launch_.Launch(); }, [this] { ShowNewStationDialog(); }}),
      now_playing_({form1_.Command3, form1_.Timer2, form1_.Frame3, form1_.Label4, Lists()},
                   {platform.dialogs, platform.message_loop, platform.conversion}, state_, cFunkhaus, life_),
      details_(
          {form1_.TextBox1, form1_.Combo1, form1_.Check2, form1_.UpDownTextBox1, form1_.Label2,
           form1_.Command8[0], form1_.Frame3, form1_.Label3, form1_.Label4, form1_.Image1, Lists()},
          {platform.files, platform.conversion}, state_, picture_, cFunkhaus,
          {[this](const auto& list, controls::RowId row) { playing_mark_.Choose(list, row); },
           [this] { now_playing_.CheckAktuellerSong(); },
           [this](const Text& station, const auto& failure) { status_line_.Selected(station, failure); }},
          life_),
      playback_({form1_.Command1, form1_.Command2, form1_.Command6, form1_.Command7, form1_.CmdInfoClose,
                 form1_.hscSavVolume, form1_.ckSavMute, form1_.tmPlay, form1_.Timer1, form1_.Timer2,
                 form1_.ProgressBar1, form1_.Frame3, form1_.Label1, form1_.Label3, form1_.Label4,
                 form1_.Image1, Lists()},
                {platform.dialogs, platform.message_loop, platform.shell, platform.system_messages}, state_,
                picture_, cPlayer, cFunkhaus, {status_line_, playing_mark_},
                {[this] { details_.ShowStationDetails(); }}, life_),
      m3u_export_({Lists(), form1_.Command4}, platform.dialogs, platform.files, platform.conversion,
                  platform.message_loop, platform.clock, life_),
      m3u_import_({Lists(), form1_.Command5}, platform.dialogs, platform.files, platform.conversion,
                  status_line_, {[this] { unsaved_rows_.ListIsEmptied(); }}, life_) {
  app::ChooseSettingsFolder(settings_, ini_, platform_.files, platform_.environment);
  subscriptions_ += form1_.form.QueryUnload.Subscribe([this] { Form_QueryUnload(); });
  subscriptions_ += form1_.form.Unloaded.Subscribe([this] { Form_Unload(); });
  // Both may clear CatalogueChanged and leave the rows as they are.
  for (controls::CommandButton* button : {&form1_.CommandButton1, &form1_.CommandButton2}) {
    subscriptions_ += button->Clicked.Subscribe([this] { keeper_.Note(); });
  }
}

MainWindow::~MainWindow() { icons_.Destroy(); }

void MainWindow::Load() {
  CreateStreamClient();
  for (Text& genre : app::Split(app::GenreList, u";")) form1_.Combo1.AddItem(std::move(genre));
  form1_.Combo1.SetListIndex(0);
  catalogue::StationLists::CreateColumns(form1_.SymbolListview);
  icons_.LoadStationIcons(app::AddBackslash(platform_.environment.ProgramFolder()) + u"RadioIco");
  catalogue::StationLists::CreateColumns(form1_.ExplorerListFilter);
  const auto restored = keeper_.Restore();
  store_.LoadStations(u"");
  form1_.tmPlay.SetEnabled(false);
  form1_.tmPlay.SetInterval(500);
  CreatePlayer();
  RestoreView();
  language_.ChooseLanguage();
  if (language_.Translates()) {
    app::TranslateForm(form1_, [this](const Text& text) { return language_.GetLangText(text, text); });
  }
  ReportRestored(restored);
}

void MainWindow::CreateStreamClient() {
  cFunkhaus = std::make_shared<stream::clsFunkhaus>(
      stream::Ports{platform_.internet, platform_.requests, platform_.record_files, platform_.environment,
                    platform_.clock, platform_.message_loop, platform_.conversion});
  cFunkhaus->QueryStream = [this](bool ok) { now_playing_.cFunkhaus_QueryStream(ok); };
  cFunkhaus->RecStreamCurrentPlaying = [this](const Text& title, const Text&, const Text&) {
    form1_.form.SetCaption(u"Playing: " + title);
  };
}

void MainWindow::CreatePlayer() {
  cPlayer = std::make_shared<player::clsMFPlayer>(
      player::clsMFPlayer::Ports{platform_.media, platform_.interface_calls, platform_.property_values,
                                 platform_.environment, platform_.clock, platform_.message_loop},
      duration_);
  cPlayer->MediaFileIsReady = [this](bool ready) { playback_.cPlayer_MediaFileIsReady(ready); };
  cPlayer->IsCreateOK = [this](std::int32_t result) { playback_.cPlayer_IsCreateOK(result); };
}

void MainWindow::RestoreView() {
  const Text view = ini_.ReadIni(u"Pfad3", u"FunkhausFavorit", u"0", u"Opt.ini");
  if (view == u"1") form1_.Check3.SetValue(CheckValue::kChecked);
  if (view == u"2") form1_.Check1.SetValue(CheckValue::kChecked);
  view_restored_ = true;
}

void MainWindow::ReportRestored(const catalogue::UnsavedRowsKeeper::Restored& restored) {
  if (restored.unreadable) status_line_.Notify(app::sentences::kKeptRowsUnreadable);
  if (restored.rows == 1) status_line_.Notify(app::sentences::kOneRowRestored);
  if (restored.rows < 2) return;
  status_line_.Notify(app::sentences::kRowsRestored,
                      {app::FormatNumber(static_cast<std::int64_t>(restored.rows))});
}

void MainWindow::ShowNewStationDialog() {
  catalogue::NewStationDialog dialog(form1_.SymbolListview, settings_, language_, platform_.clipboard,
                                     platform_.dialogs);
  dialog.Show(show_modal_);
}

bool MainWindow::SessionEnds() const { return form1_.form.Reason() == controls::CloseReason::kSessionEnd; }

void MainWindow::Form_QueryUnload() {
  life_.End();
  form1_.Timer1.SetEnabled(false);
  const bool wants_to_save = !SessionEnds() && settings_.CatalogueChanged && OfferToSave();
  // Asked again, because the session may have ended while the question stood open. What was to be saved and
  // could not be is kept as well.
  if (SessionEnds() || wants_to_save) {
    keeper_.Finish();
  } else {
    keeper_.Discard();
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
  editor_.CommandButton1_Click();
  // A view is never saved. The rows come back with the next start, and so must the question.
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
