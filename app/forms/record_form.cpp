#include "app/forms/record_form.h"

#include "app/forms/grid.h"

namespace app {
namespace {

constexpr int kEdge = 2 * kGrid;
constexpr int kValues = 14 * kGrid;
constexpr int kToolWidth = 64 * kGrid;
constexpr int kLine = 3 * kGrid;
constexpr int kTwoLines = 5 * kGrid;
constexpr int kButtonsTop = 28 * kGrid;

void PlaceLine(controls::Label& label, const char16_t* caption, controls::Label& value, int top, int height) {
  label.SetCaption(caption);
  label.SetLook(controls::LabelLook::kText);
  label.Move({kEdge, top, kValues - kEdge, kLine});
  value.SetLook(controls::LabelLook::kText);
  value.Move({kValues, top, kToolWidth - kEdge - kValues, height});
}

void PlaceButton(controls::CommandButton& button, const char16_t* caption, controls::Glyph glyph,
                 const controls::Place& place) {
  button.SetCaption(caption);
  button.SetGlyph(glyph, controls::GlyphPlace::kBeforeCaption);
  button.Move(place);
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
                {"open_folder", &open_folder},
                {"show_guide", &show_guide, nullptr, {.key = controls::kHelpKey}}} {
  form.SetCaption(u"OZRecordFunkhaus");
  form.Move({0, 0, kToolWidth, kButtonsTop + kRowHeight + kEdge});
  form.SetFixedSize(true);
  address_label.SetCaption(u"Adresse:");
  address_label.Move({kEdge, kEdge, kValues - kEdge, kRowHeight});
  address.Move({kValues, kEdge, 34 * kGrid, kRowHeight});
  address.SetToolTip(u"Adresse eines Senders oder einer Playlist");
  PlaceButton(start, u"Start", controls::Glyph::kRecord, {49 * kGrid, kEdge, 13 * kGrid, kRowHeight});
  start.SetToolTip(u"Nimmt den Sender auf, eine Datei je Titel");
  PlaceLine(station_label, u"Sender:", station, 7 * kGrid, kLine);
  PlaceLine(title_label, u"Titel:", title, 10 * kGrid, kTwoLines);
  PlaceLine(time_label, u"Zeit:", time, 15 * kGrid, kLine);
  PlaceLine(written_label, u"Geschrieben:", written, 18 * kGrid, kLine);
  state.SetLook(controls::LabelLook::kText);
  state.Move({kEdge, 22 * kGrid, kToolWidth - 2 * kEdge, kTwoLines});
  PlaceButton(stop, u"Stop", controls::Glyph::kStop, {31 * kGrid, kButtonsTop, 14 * kGrid, kRowHeight});
  stop.SetEndsWaiting(true);
  stop.SetToolTip(u"Beendet die Aufnahme");
  PlaceButton(open_folder, u"Ordner öffnen", controls::Glyph::kFolder,
              {46 * kGrid, kButtonsTop, 16 * kGrid, kRowHeight});
  show_guide.SetCaption(u"Handbuch");
  show_guide.SetLook(controls::ButtonLook::kNone);
  open_folder.SetToolTip(u"Zeigt den Ordner der Aufnahmen");
}

}  // namespace app
