#include "window/catalogue.h"

namespace window {

namespace {

catalogue::StationViews::Parts ViewParts(app::Form1& form) {
  return {.Check1 = form.Check1,
          .Check2 = form.Check2,
          .Check3 = form.Check3,
          .Combo1 = form.Combo1,
          .Frame2 = form.Frame2,
          .CommandButton1 = form.CommandButton1,
          .CommandButton2 = form.CommandButton2,
          .lists = ListsOf(form)};
}

catalogue::StationEditor::Parts EditorParts(app::Form1& form) {
  return {.fields = catalogue::EditorFields(form),
          .Check1 = form.Check1,
          .Command8 = form.Command8,
          .CommandButton1 = form.CommandButton1,
          .CommandButton2 = form.CommandButton2,
          .lists = ListsOf(form)};
}

catalogue::RowCommands::Parts RowParts(app::Form1& form) {
  return {.RowFavourite = form.RowFavourite,
          .RowRecording = form.RowRecording,
          .RowLink = form.RowLink,
          .Check2 = form.Check2,
          .lists = ListsOf(form)};
}

}  // namespace

Catalogue::Catalogue(const Foundation& base, app::Notices& notices, const Actions& actions)
    : icons({base.platform.icons, base.platform.files, base.platform.conversion, base.platform.dialogs},
            ListsOf(base.form)),
      lists(ListsOf(base.form), base.platform.string_order, base.state,
            {.show_station_details = actions.show_station_details, .start_playing = actions.start_playing}),
      unsaved_rows(base.form.SymbolListview, base.platform.conversion),
      station_file({base.platform.profile, base.platform.conversion}, base.ini, base.settings),
      keeper({base.platform.files, base.platform.environment, base.platform.conversion}, station_file,
             unsaved_rows, base.form.SymbolListview, icons, base.settings, base.form.tmUnsaved),
      store(station_file, base.platform.conversion, icons, base.state, ListsOf(base.form), unsaved_rows,
            [this](controls::ListView& list) { lists.SortAgain(list); }),
      deleted(base.form.UndoDelete, ListsOf(base.form), station_file, base.settings, store, unsaved_rows,
              notices),
      writer(station_file, base.settings, notices, icons, ListsOf(base.form), unsaved_rows, deleted),
      views(ViewParts(base.form), store, lists, writer, base.state, base.platform.dialogs),
      editor(EditorParts(base.form), writer, base.settings, base.state, base.platform.dialogs,
             {.launch_recorder = actions.launch_recorder,
              .show_new_station_dialog = actions.show_new_station_dialog}),
      row_commands(RowParts(base.form), writer, base.state, base.platform.clipboard,
                   {.record = actions.record_row}),
      m3u_export({.lists = ListsOf(base.form), .Command4 = base.form.Command4}, base.platform.dialogs,
                 base.platform.files, base.platform.conversion, base.platform.message_loop,
                 base.platform.clock, base.life),
      m3u_import({.lists = ListsOf(base.form), .Command5 = base.form.Command5}, base.platform.dialogs,
                 base.platform.files, base.platform.conversion, notices,
                 {.full_list_is_emptied = [this] { unsaved_rows.ListIsEmptied(); }}, base.life),
      list_opening({.form = base.form.form, .lists = ListsOf(base.form)}, base.platform.files,
                   base.platform.conversion, notices,
                   {.show_full_list = [this](Selects selects) { LeaveFilter(selects); },
                    .add_station = [this](const platform::Text& link) { AddStation(link); }},
                   base.life) {}

void Catalogue::LeaveFilter(Selects selects) {
  using Selection = catalogue::StationViews::Selection;
  views.LeaveFilter(selects == Selects::kNewRow ? Selection::kNone : Selection::kRemembered);
}

void Catalogue::AddStation(const platform::Text& link) {
  editor.AddNewStation(link);
  keeper.Note();
}

}  // namespace window
