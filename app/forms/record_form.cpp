#include "app/forms/record_form.h"

namespace app {
namespace {

constexpr int kLeft = 150;
constexpr int kValues = 1500;
constexpr int kLine = 300;

void PlaceLine(controls::Label& label, const char16_t* caption, controls::Label& value, int top, int lines) {
  label.SetCaption(caption);
  label.SetLook(controls::LabelLook::kText);
  label.Move({kLeft, top, kValues - kLeft, kLine});
  value.SetLook(controls::LabelLook::kText);
  value.Move({kValues, top, 5850, kLine * lines});
}

}  // namespace

RecordForm::RecordForm()
    : inventory{{"address_label", &address_label},
                {"address", &address, nullptr, {.named_by = &address_label}},
                {"start", &start, nullptr, {.key = controls::kEnterKey}},
                {"station_label", &station_label},
                {"station", &station},
                {"title_label", &title_label},
                {"title", &title},
                {"time_label", &time_label},
                {"time", &time},
                {"written_label", &written_label},
                {"written", &written},
                {"state", &state},
                // No button has the Escape key, because it would end a recording by accident.
                {"stop", &stop},
                {"open_folder", &open_folder}} {
  form.SetCaption(u"OZRecordFunkhaus");
  form.Move({0, 0, 7500, 3900});
  form.SetFixedSize(true);
  address_label.SetCaption(u"Adresse:");
  address_label.Move({kLeft, 180, kValues - kLeft, 375});
  address.Move({kValues, 180, 4350, 375});
  address.SetToolTip(u"Adresse eines Senders oder einer Playlist");
  start.SetCaption(u"Start");
  start.Move({6000, 165, 1350, 405});
  start.SetToolTip(u"Nimmt den Sender auf, eine Datei je Titel");
  PlaceLine(station_label, u"Sender:", station, 750, 1);
  PlaceLine(title_label, u"Titel:", title, 1125, 2);
  PlaceLine(time_label, u"Zeit:", time, 1800, 1);
  PlaceLine(written_label, u"Geschrieben:", written, 2175, 1);
  state.SetLook(controls::LabelLook::kText);
  state.Move({kLeft, 2625, 7200, kLine * 2});
  stop.SetCaption(u"Stop");
  stop.SetEndsWaiting(true);
  stop.Move({3600, 3330, 1650, 405});
  stop.SetToolTip(u"Beendet die Aufnahme");
  open_folder.SetCaption(u"Ordner öffnen");
  open_folder.Move({5400, 3330, 1950, 405});
  open_folder.SetToolTip(u"Zeigt den Ordner der Aufnahmen");
}

}  // namespace app
