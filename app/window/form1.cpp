#include "app/window/form1.h"

namespace app {

Form1::Form1() {
  form.SetCaption(u"Funkhausplayer");
  form.Move({0, 0, 15000, 10500});

  Frame2.SetCaption(u"Gespeicherte Radiostationen");
  Frame2.Move({60, 60, 14880, 10380});
  SymbolListview.Move({45, 270, 14790, 6500});
  ExplorerListFilter.Move({45, 270, 14790, 6500});
  ExplorerListFilter.SetVisible(false);

  Frame1.Move({120, 6800, 8700, 3500});
  Command1.SetCaption(u"Start");
  Command6.SetCaption(u"Stop");
  Command3.SetCaption(u"Alle Titel anzeigen");
  Command2.SetCaption(u"Sender suchen");
  lblSav.SetCaption(u"Lautstärke");
  hscSavVolume.SetRange(0, 100);
  ckSavMute.SetCaption(u"Mute");
  Command7.SetCaption(u"8");
  Command7.SetGlyph(controls::Glyph::kLoudspeaker);
  Command7.SetToolTip(u"Lautstärkeregelung");

  Label5.SetCaption(u"Station");
  Label6.SetCaption(u"Weblink");
  Label7.SetCaption(u"Genre");
  Check2.SetCaption(u"Favorit");
  Label2.SetCaption(u"M3U-Nr.:");
  for (const std::size_t index : {0U, 1U, 2U, 4U}) {
    Command8[index].SetCaption(u"a");
    Command8[index].SetGlyph(controls::Glyph::kCheckMark);
  }
  Command8[0].SetToolTip(u"Genre übernehmen");
  Command8[1].SetToolTip(u"Alles übernehmen");
  Command8[2].SetToolTip(u"Weblink übernehmen");
  Command8[3].SetCaption(u"Eintrag löschen");
  Command8[3].SetToolTip(u"Eintrag löschen");
  Command8[4].SetToolTip(u"Genre übernehmen");
  Command8[5].SetCaption(u"Aufnehmen...");
  Command8[5].SetToolTip(u"Startet das Aufnahme-Tool OZRecordFunkhaus");

  Check1.SetCaption(u"Genre-Filteransicht");
  Check3.SetCaption(u"Favoritenansicht");
  CommandButton1.SetCaption(u"Liste speichern");
  CommandButton2.SetCaption(u"Sender hinzufügen");
  CommandButton2.SetToolTip(u"Neuen Listeneintrag erstellen");
  Command4.SetCaption(u"M3U erstellen...");
  Command5.SetCaption(u"M3U laden...");

  for (controls::ProgressBar& bar : ProgressBar1) {
    bar.SetRange(0, 10000);
    bar.Move({9000, 6860, 210, 3300});
    bar.SetVisible(false);
  }

  Frame3.Move({9500, 6830, 4000, 3400});
  Frame3.SetVisible(false);
  Label4.SetCaption(u"Titel:");
  CmdInfoClose.SetCaption(u"x");
  CmdInfoClose.SetGlyph(controls::Glyph::kClose);

  tmPlay.SetInterval(500);
  Timer1.SetInterval(20);
  Timer2.SetInterval(5000);
}

}  // namespace app
