#include "app/forms/form1.h"

namespace app {

namespace {

// The bottom panel is a grid: columns for its upper and lower row, rows for all.
constexpr int kButtonWidth = 2220;
constexpr int kRowHeight = 390;
constexpr std::array kColumns = {0, 2310, 4620, 6930};
constexpr std::array kRows = {60, 525, 1080, 1545, 2010, 2475, 3030};
// The editor between these rows: captions, fields, buttons behind the fields.
constexpr int kCaptionWidth = 1005;
constexpr int kFieldLeft = 1050;
constexpr int kFieldWidth = 5310;
constexpr int kTakeOverLeft = 6420;
constexpr int kTakeOverWidth = 420;

}  // namespace

Form1::Form1() {
  form.SetCaption(u"Funkhausplayer");
  form.Move({0, 0, 15360, 10500});
  MakePanels();
  MakeLists();
  MakePlaying();
  MakeEditor();
  MakeViews();
  MakeInformation();
  tmPlay.SetInterval(500);
  Timer1.SetInterval(20);
  Timer2.SetInterval(5000);
}

void Form1::MakePanels() {
  Frame2.SetCaption(u"Gespeicherte Radiostationen");
  Frame2.Move({60, 60, 15240, 10380});
  Frame1.Move({150, 6900, 9225, 3480});
  StatusLine.Move({0, 10500, 15360, 360});
}

void Form1::MakeLists() {
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
  }
  ExplorerListFilter.SetVisible(false);
}

void Form1::MakePlaying() {
  Command1.SetCaption(u"Start");
  Command1.Move({kColumns[0], kRows[0], kButtonWidth, kRowHeight});
  Command6.SetCaption(u"Stop");
  Command6.SetEndsWaiting(true);
  Command6.Move({kColumns[1], kRows[0], kButtonWidth, kRowHeight});
  Command3.SetCaption(u"Alle Titel anzeigen");
  Command3.Move({kColumns[2], kRows[0], kButtonWidth, kRowHeight});
  Command2.SetCaption(u"Sender suchen");
  Command2.Move({kColumns[3], kRows[0], kButtonWidth, kRowHeight});
  Label1.Move({kColumns[2], kRows[1], 4530, kRowHeight});

  frSav.Move({kColumns[0], kRows[1], 4530, kRowHeight});
  lblSav.SetCaption(u"Lautstärke");
  lblSav.Move({0, 0, 1140, kRowHeight});
  hscSavVolume.SetRange(0, 100);
  hscSavVolume.SetValue(100);
  hscSavVolume.Move({1170, 0, 1860, kRowHeight});
  ckSavMute.SetCaption(u"Mute");
  ckSavMute.Move({3120, 0, 960, kRowHeight});
  Command7.SetCaption(u"8");
  Command7.SetGlyph(controls::Glyph::kLoudspeaker);
  Command7.SetToolTip(u"Lautstärkeregelung");
  Command7.Move({4095, 0, kTakeOverWidth, kRowHeight});
}

void Form1::MakeEditor() {
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
  Check2.Move({kFieldLeft, kRows[5], 1800, kRowHeight});
  Label2.SetCaption(u"M3U-Nr.:");
  Label2.Move({4050, kRows[5], 1110, kRowHeight});
  UpDownTextBox1.Move({5220, kRows[5], 1140, kRowHeight});

  constexpr std::array<std::size_t, 4> kTakeOver = {1, 2, 4, 0};
  for (std::size_t row = 0; row < kTakeOver.size(); ++row) {
    controls::CommandButton& button = Command8[kTakeOver[row]];
    button.SetCaption(u"a");
    button.SetGlyph(controls::Glyph::kCheckMark);
    button.Move({kTakeOverLeft, kRows[2 + row], kTakeOverWidth, kRowHeight});
  }
  Command8[0].SetToolTip(u"Genre übernehmen");
  Command8[1].SetToolTip(u"Alles übernehmen");
  Command8[2].SetToolTip(u"Weblink übernehmen");
  Command8[4].SetToolTip(u"Genre übernehmen");
  Command8[3].SetCaption(u"Eintrag löschen");
  Command8[3].SetToolTip(u"Eintrag löschen");
  Command8[3].Move({kColumns[0], kRows[6], kButtonWidth, kRowHeight});
  UndoDelete.SetCaption(u"Löschen zurücknehmen");
  Command8[5].SetCaption(u"Aufnehmen...");
  Command8[5].SetToolTip(u"Startet das Aufnahme-Tool OZRecordFunkhaus");
  Command8[5].Move({kColumns[1], kRows[6], kButtonWidth, kRowHeight});
}

void Form1::MakeViews() {
  Check1.SetCaption(u"Genre-Filteransicht");
  Check1.Move({kColumns[3], kRows[2], kButtonWidth, kRowHeight});
  Check3.SetCaption(u"Favoritenansicht");
  Check3.Move({kColumns[3], kRows[3], kButtonWidth, kRowHeight});
  CommandButton1.SetCaption(u"Liste speichern");
  CommandButton1.Move({kColumns[3], kRows[4], kButtonWidth, kRowHeight});
  CommandButton2.SetCaption(u"Sender hinzufügen");
  CommandButton2.SetToolTip(u"Neuen Listeneintrag erstellen");
  CommandButton2.Move({kColumns[3], kRows[5], kButtonWidth, kRowHeight});
  Command4.SetCaption(u"M3U erstellen...");
  Command4.Move({kColumns[2], kRows[6], kButtonWidth, kRowHeight});
  Command5.SetCaption(u"M3U laden...");
  Command5.Move({kColumns[3], kRows[6], kButtonWidth, kRowHeight});
}

void Form1::MakeInformation() {
  for (controls::ProgressBar& bar : ProgressBar1) {
    bar.SetRange(0, 10000);
    bar.Move({9405, 6960, 180, 3360});
    bar.SetVisible(false);
  }
  Frame3.Move({9855, 6930, 3600, 3420});
  Frame3.SetVisible(false);
  Label4.SetCaption(u"Titel:");
  Label4.Move({150, 120, 2955, 735});
  CmdInfoClose.SetCaption(u"x");
  CmdInfoClose.SetGlyph(controls::Glyph::kClose);
  CmdInfoClose.Move({3165, 90, 360, 360});
  Label3.Move({150, 900, 3300, 2400});
  Image1.SetVisible(false);
}

void Form1::VisitCaptions(const std::function<void(controls::Captioned&)>& visit) {
  for (controls::Frame* frame : {&Frame2, &Frame1, &Frame3, &frSav}) visit(*frame);
  for (controls::CommandButton* button : {&Command1, &Command6, &Command3, &Command2, &Command7})
    visit(*button);
  for (controls::Label* label : {&Label1, &lblSav, &Label5, &Label6, &Label7, &Label2, &Label4, &Label3}) {
    visit(*label);
  }
  for (controls::CheckBox* box : {&ckSavMute, &Check2, &Check1, &Check3}) visit(*box);
  for (controls::CommandButton& button : Command8) visit(button);
  for (controls::CommandButton* button :
       {&CommandButton1, &CommandButton2, &Command4, &Command5, &CmdInfoClose, &UndoDelete}) {
    visit(*button);
  }
}

void Form1::VisitTexts(const std::function<void(controls::TextControl&)>& visit) {
  for (controls::TextBox& box : TextBox1) visit(box);
  visit(Combo1);
  visit(UpDownTextBox1);
}

}  // namespace app
