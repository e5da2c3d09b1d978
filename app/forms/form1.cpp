#include "app/forms/form1.h"

#include "app/forms/grid.h"
#include "app/forms/layout.h"

namespace app {

namespace {

// Everything stands on the grid as far as the layout's own rules (app/forms/layout.cpp) leave it.
constexpr int kPitch = kRowHeight + kGrid;
// The bottom panel: four columns, seven rows. Its upper edge is half a step below that of its first row,
// where the bars begin, and its lower edge as far above the main panel's border.
constexpr int kFirstRow = 60;
constexpr int kButtonWidth = 19 * kGrid;
constexpr std::array kColumns = {0, 20 * kGrid, 40 * kGrid, 60 * kGrid};
constexpr std::array kRows = {kFirstRow,
                              kFirstRow + kPitch,
                              kFirstRow + 2 * kPitch,
                              kFirstRow + 3 * kPitch,
                              kFirstRow + 4 * kPitch,
                              kFirstRow + 5 * kPitch,
                              kFirstRow + 6 * kPitch};
constexpr int kPanelEnd = kRows.back() + kRowHeight;
constexpr int kPanelHeight = kPanelEnd + kFirstRow;
constexpr int kPanelWidth = kColumns.back() + kButtonWidth + 90;
// The editor in the first three columns: captions, fields, buttons after the fields.
constexpr int kCaptionWidth = 8 * kGrid;
constexpr int kFieldLeft = kCaptionWidth + kGrid;
constexpr int kApplyWidth = 4 * kGrid;
constexpr int kApplyLeft = kColumns[2] + kButtonWidth - kApplyWidth;
constexpr int kFieldWidth = kApplyLeft - kGrid - kFieldLeft;
// The list's left edge, which is that of everything below it.
constexpr int kListEdge = 105;
// The information panel: it stands 30 above the bars and ends where they do, and where the list ends at the
// smallest width at which it stands beside them.
constexpr int kBarWidth = kGrid;
constexpr int kBarHeight = kPanelEnd - kFirstRow;
constexpr int kInformationWidth = 3450;
constexpr int kInformationHeight = kBarHeight + 30;

using controls::Glyph;

void PutBefore(controls::CommandButton& button, Glyph glyph) {
  button.SetGlyph(glyph, controls::GlyphPlace::kBeforeCaption);
}

}  // namespace

// Each step lists its controls first, so the order of the steps is part of the tab order.
Form1::Form1() {
  form.SetCaption(u"Funkhausplayer");
  form.Move({0, 0, 15360, 10500});
  // Less leaves no room for the bars, or for the list above the bottom panel: at this height the information
  // panel, which then lies over the list, is no higher than it.
  form.SetSmallestSize(10080, 9180);
  // On a lower screen it would be higher than the list, so it stays beside the bars; a pixel more, because a
  // window's width is a whole number of pixels.
  form.SetSmallestWidthIfLower(kWidthForPanelBesideBars + 15);
  MakeLists();
  Add({{"Frame1", &Frame1}});
  Frame1.SetLook(controls::FrameLook::kPlain);
  Frame1.Move({kListEdge, 6180, kPanelWidth, kPanelHeight});
  MakePlaying();
  MakeVolume();
  MakeEditor();
  MakeRowCommands();
  MakeEditorButtons();
  MakeViews();
  MakeInformation();
  Add({{"StatusLine", &StatusLine}});
  StatusLine.SetLook(controls::LabelLook::kStatusLine);
  StatusLine.Move({0, 10500, 15360, 360});
  Add({{"tmPlay", &tmPlay}, {"Timer1", &Timer1}, {"Timer2", &Timer2}, {"tmUnsaved", &tmUnsaved}});
  Timer1.SetInterval(20);
  Timer2.SetInterval(5000);
}

void Form1::Add(std::initializer_list<FormControl> more) {
  inventory.insert(inventory.end(), more.begin(), more.end());
}

void Form1::MakeLists() {
  Add({{"Frame2", &Frame2, nullptr, {.hint = u"Zur Liste", .key = controls::WithControl(u'F')}},
       {"SymbolListview", &SymbolListview, &Frame2, {.named_by = &Frame2}},
       {"ExplorerListFilter", &ExplorerListFilter, &Frame2, {.named_by = &Frame2}}});
  Frame2.SetCaption(u"Gespeicherte Radiostationen");
  Frame2.Move({60, 60, 15240, 10380});
  SymbolListview.SetEmptyText(
      u"Die Liste ist noch leer. „Sender hinzufügen“ nimmt einen Sender auf, „M3U laden...“ eine ganze "
      u"Liste; "
      u"„Sender suchen“ öffnet ein Verzeichnis im Internet.");
  ExplorerListFilter.SetEmptyText(
      u"In dieser Ansicht steht kein Sender. Ohne Haken bei „Genre-Filteransicht“ und „Favoritenansicht“ "
      u"sind "
      u"wieder alle zu sehen.");
  for (controls::ListView* list : {&SymbolListview, &ExplorerListFilter}) {
    list->SetEndsWaiting(true);
    list->Move({45, 330, 15150, 6480});
    list->SetMarkText(controls::RowMark::kPlaying, u"wird abgespielt");
    list->SetMarkText(controls::RowMark::kWaiting, u"wartet auf Ton");
    subscriptions_ += list->DeletePressed.Subscribe([this] { Command8[3].Click(); });
  }
  ExplorerListFilter.SetVisible(false);
  ShareColumnWidths(SymbolListview, ExplorerListFilter);
  ShareColumnWidths(ExplorerListFilter, SymbolListview);
}

void Form1::ShareColumnWidths(controls::ListView& dragged, controls::ListView& other) {
  subscriptions_ += dragged.ColumnDragged.Subscribe([&dragged, &other](std::size_t column) {
    other.DragColumn(column, dragged.Columns()[column].users_width.value());
  });
}

void Form1::MakePlaying() {
  Add({{"Command1", &Command1, &Frame1, {.menu = MenuEntry::kOpenRow, .menu_caption = u"Abspielen"}},
       {"Command6", &Command6, &Frame1},
       {"Command3",
        &Command3,
        &Frame1,
        {.hint = u"Rechtsklick oder Menütaste: laufende Titelanzeige ein oder aus"}},
       {"Command2", &Command2, &Frame1},
       {"Label1", &Label1, &Frame1}});
  Command1.SetCaption(u"Start");
  Command1.SetRole(controls::ButtonRole::kMain);
  PutBefore(Command1, Glyph::kStart);
  Command1.Move({kColumns[0], kRows[0], kButtonWidth, kRowHeight});
  Command6.SetCaption(u"Stop");
  PutBefore(Command6, Glyph::kStop);
  Command6.SetEndsWaiting(true);
  Command6.Move({kColumns[1], kRows[0], kButtonWidth, kRowHeight});
  Command3.SetCaption(u"Alle Titel anzeigen");
  PutBefore(Command3, Glyph::kList);
  Command3.Move({kColumns[2], kRows[0], kButtonWidth, kRowHeight});
  Command2.SetCaption(u"Sender suchen");
  PutBefore(Command2, Glyph::kFind);
  Command2.Move({kColumns[3], kRows[0], kButtonWidth, kRowHeight});
  Label1.Move({kColumns[2], kRows[1], kColumns[1] + kButtonWidth, kRowHeight});
}

void Form1::MakeVolume() {
  Add({{"frSav", &frSav, &Frame1},
       {"lblSav", &lblSav, &frSav},
       {"hscSavVolume", &hscSavVolume, &frSav, {.named_by = &lblSav}},
       {"ckSavMute", &ckSavMute, &frSav},
       {"Command7", &Command7, &frSav}});
  frSav.SetLook(controls::FrameLook::kPlain);
  frSav.Move({kColumns[0], kRows[1], kColumns[1] + kButtonWidth + 30, kRowHeight});
  lblSav.SetCaption(u"Lautstärke");
  lblSav.Move({0, 0, 10 * kGrid, kRowHeight});
  hscSavVolume.SetValue(100);
  hscSavVolume.Move({10 * kGrid, 0, 15 * kGrid, kRowHeight});
  ckSavMute.SetCaption(u"Mute");
  ckSavMute.Move({26 * kGrid, 0, 8 * kGrid, kRowHeight});
  Command7.SetCaption(u"8");
  Command7.SetGlyph(Glyph::kLoudspeaker);
  Command7.SetToolTip(u"Lautstärkeregelung");
  Command7.Move({35 * kGrid, 0, kApplyWidth, kRowHeight});
}

void Form1::MakeEditor() {
  // Each field is followed by the button that applies it.
  Add({{"Label5", &Label5, &Frame1},
       {"TextBox1_0", &TextBox1[0], &Frame1, {.named_by = &Label5, .enter_clicks = &Command8[1]}},
       {"Command8_1", &Command8[1], &Frame1},
       {"Label6", &Label6, &Frame1},
       {"TextBox1_1", &TextBox1[1], &Frame1, {.named_by = &Label6, .enter_clicks = &Command8[2]}},
       {"Command8_2", &Command8[2], &Frame1},
       {"Label7", &Label7, &Frame1},
       {"Combo1", &Combo1, &Frame1, {.named_by = &Label7, .enter_clicks = &Command8[4]}},
       {"Command8_4", &Command8[4], &Frame1},
       {"Check2", &Check2, &Frame1},
       {"Label2", &Label2, &Frame1},
       {"UpDownTextBox1", &UpDownTextBox1, &Frame1, {.named_by = &Label2, .enter_clicks = &Command8[0]}},
       // Its tooltip names the genre, like that of another button; a screen reader's user needs different
       // names.
       {"Command8_0", &Command8[0], &Frame1, {.accessible_name = u"M3U-Nummer übernehmen"}}});
  Label5.SetCaption(u"Station");
  Label5.Move({0, kRows[2], kCaptionWidth, kRowHeight});
  TextBox1[0].Move({kFieldLeft, kRows[2], kFieldWidth, kRowHeight});
  Label6.SetCaption(u"Weblink");
  Label6.Move({0, kRows[3], kCaptionWidth, kRowHeight});
  TextBox1[1].Move({kFieldLeft, kRows[3], kFieldWidth, kRowHeight});
  Label7.SetCaption(u"Genre");
  Label7.Move({0, kRows[4], kCaptionWidth, kRowHeight});
  Combo1.Move({kFieldLeft, kRows[4], kFieldWidth, kRowHeight});
  Check2.SetCaption(u"Favorit");
  Check2.Move({kFieldLeft, kRows[5], 15 * kGrid, kRowHeight});
  Label2.SetCaption(u"M3U-Nr.:");
  Label2.SetLook(controls::LabelLook::kRightCaption);
  Label2.Move({33 * kGrid, kRows[5], 10 * kGrid, kRowHeight});
  UpDownTextBox1.Move({44 * kGrid, kRows[5], 10 * kGrid, kRowHeight});
}

void Form1::MakeEditorButtons() {
  Add({{"Command8_3", &Command8[3], &Frame1, {.menu = MenuEntry::kDeleteRow}},
       {"UndoDelete", &UndoDelete, &Frame1, {.key = controls::WithControl(u'Z'), .menu = MenuEntry::kClick}},
       {"Command8_5", &Command8[5], &Frame1}});
  constexpr std::array<std::size_t, 4> kApply = {1, 2, 4, 0};
  for (std::size_t row = 0; row < kApply.size(); ++row) {
    controls::CommandButton& button = Command8[kApply[row]];
    button.SetCaption(u"a");
    button.SetGlyph(Glyph::kCheckMark);
    button.Move({kApplyLeft, kRows[2 + row], kApplyWidth, kRowHeight});
  }
  Command8[0].SetToolTip(u"Genre übernehmen");
  Command8[1].SetToolTip(u"Alles übernehmen");
  Command8[2].SetToolTip(u"Weblink übernehmen");
  Command8[4].SetToolTip(u"Genre übernehmen");
  Command8[3].SetCaption(u"Eintrag löschen");
  Command8[3].SetRole(controls::ButtonRole::kDeleting);
  PutBefore(Command8[3], Glyph::kDelete);
  Command8[3].SetToolTip(u"Eintrag löschen");
  Command8[3].Move({kColumns[0], kRows[6], kButtonWidth, kRowHeight});
  UndoDelete.SetCaption(u"Löschen zurücknehmen");
  UndoDelete.SetLook(controls::ButtonLook::kNone);
  Command8[5].SetCaption(u"Aufnehmen...");
  PutBefore(Command8[5], Glyph::kRecord);
  Command8[5].SetToolTip(u"Startet das Aufnahme-Tool OZRecordFunkhaus");
  Command8[5].Move({kColumns[1], kRows[6], kButtonWidth, kRowHeight});
}

void Form1::MakeRowCommands() {
  Add({{"RowFavourite", &RowFavourite, &Frame1, {.menu = MenuEntry::kForRow}},
       {"RowRecording", &RowRecording, &Frame1, {.menu = MenuEntry::kForRow}},
       {"RowLink", &RowLink, &Frame1, {.menu = MenuEntry::kForRow}}});
  RowFavourite.SetCaption(u"Favorit");
  RowFavourite.SetKind(controls::RowCommandKind::kSwitch);
  RowRecording.SetCaption(u"Aufnehmen");
  RowLink.SetCaption(u"Link kopieren");
}

void Form1::MakeViews() {
  Add({{"Check1", &Check1, &Frame1},
       {"Check3", &Check3, &Frame1},
       // In a filter view, which hides the button, the key leads to the box that says why nothing is saved.
       {"CommandButton1",
        &CommandButton1,
        &Frame1,
        {.hint = u"Liste speichern",
         .key = controls::WithControl(u'S'),
         .key_while_hidden = KeyWhileHidden::kWorks,
         .menu = MenuEntry::kClickBelowALine}},
       // A station that is created in a filter view could not be saved there.
       {"CommandButton2",
        &CommandButton2,
        &Frame1,
        {.key = controls::WithControl(u'N'), .menu = MenuEntry::kClick}},
       {"ShowGuide", &ShowGuide, &Frame1, {.key = controls::kHelpKey}},
       {"Command4", &Command4, &Frame1},
       {"Command5", &Command5, &Frame1},
       {"TitleNotices", &TitleNotices, &Frame1, {.menu = MenuEntry::kClickBelowALine}}});
  TitleNotices.SetCaption(u"Neue Titel melden, wenn das Fenster nicht zu sehen ist");
  TitleNotices.SetLook(controls::CheckLook::kNone);
  ShowGuide.SetCaption(u"Handbuch");
  ShowGuide.SetLook(controls::ButtonLook::kNone);
  Check1.SetCaption(u"Genre-Filteransicht");
  Check1.Move({kColumns[3], kRows[2], kButtonWidth, kRowHeight});
  Check3.SetCaption(u"Favoritenansicht");
  Check3.Move({kColumns[3], kRows[3], kButtonWidth, kRowHeight});
  CommandButton1.SetCaption(u"Liste speichern");
  PutBefore(CommandButton1, Glyph::kSave);
  CommandButton1.Move({kColumns[3], kRows[4], kButtonWidth, kRowHeight});
  CommandButton2.SetCaption(u"Sender hinzufügen");
  PutBefore(CommandButton2, Glyph::kAdd);
  CommandButton2.SetToolTip(u"Neuen Listeneintrag erstellen");
  CommandButton2.Move({kColumns[3], kRows[5], kButtonWidth, kRowHeight});
  Command4.SetCaption(u"M3U erstellen...");
  PutBefore(Command4, Glyph::kExport);
  Command4.Move({kColumns[2], kRows[6], kButtonWidth, kRowHeight});
  Command5.SetCaption(u"M3U laden...");
  PutBefore(Command5, Glyph::kImport);
  Command5.Move({kColumns[3], kRows[6], kButtonWidth, kRowHeight});
}

void Form1::MakeInformation() {
  Add({{"ProgressBar1_0", &ProgressBar1[0], nullptr, {.accessible_name = u"Pegel links"}},
       {"ProgressBar1_1", &ProgressBar1[1], nullptr, {.accessible_name = u"Pegel rechts"}},
       {"Frame3", &Frame3, nullptr, {.accessible_name = u"Informationen zum Sender"}},
       {"Image1", &Image1, &Frame3, {.accessible_name = u"Senderbild"}},
       {"Label4", &Label4, &Frame3},
       {"Label3", &Label3, &Frame3},
       {"CmdInfoClose", &CmdInfoClose, &Frame3, {.accessible_name = u"Informationen schließen"}}});
  for (controls::ProgressBar& bar : ProgressBar1) {
    bar.SetRange(0, 10000);
    bar.Move({kListEdge + kPanelWidth + 30, 6240, kBarWidth, kBarHeight});
    bar.SetVisible(false);
  }
  Frame3.SetLook(controls::FrameLook::kPanel);
  Frame3.Move({10035, 6210, kInformationWidth, kInformationHeight});
  Frame3.SetVisible(false);
  Image1.SetVisible(false);
  constexpr int kCloseWidth = 3 * kGrid;
  constexpr int kTitleHeight = 6 * kGrid;
  constexpr int kTextTop = 2 * kGrid + kTitleHeight;
  Label4.SetCaption(u"Titel:");
  Label4.SetLook(controls::LabelLook::kTitle);
  Label4.Move({kGrid, kGrid, kInformationWidth - kCloseWidth - 3 * kGrid, kTitleHeight});
  Label3.SetLook(controls::LabelLook::kNamedValues);
  Label3.Move({kGrid, kTextTop, kInformationWidth - 2 * kGrid, kInformationHeight - kTextTop - kGrid});
  CmdInfoClose.SetCaption(u"x");
  CmdInfoClose.SetGlyph(Glyph::kClose);
  CmdInfoClose.SetLook(controls::ButtonLook::kFlat);
  CmdInfoClose.Move({kInformationWidth - kGrid - kCloseWidth, kGrid, kCloseWidth, kCloseWidth});
}

}  // namespace app
