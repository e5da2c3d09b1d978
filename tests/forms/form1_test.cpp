#include "app/forms/form1.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <string_view>
#include <utility>
#include <vector>

namespace app {
namespace {

using Captions = std::vector<std::pair<const controls::Captioned*, std::u16string_view>>;

TEST(Form1Test, ButtonsCarryTheirCaptions) {
  const Form1 form;
  for (const auto& [button, caption] : Captions{{&form.form, u"Funkhausplayer"},
                                                {&form.Command1, u"Start"},
                                                {&form.Command6, u"Stop"},
                                                {&form.Command2, u"Sender suchen"},
                                                {&form.Command3, u"Alle Titel anzeigen"},
                                                {&form.Command4, u"M3U erstellen..."},
                                                {&form.Command5, u"M3U laden..."},
                                                {&form.Command7, u"8"},
                                                {&form.Command8[3], u"Eintrag löschen"},
                                                {&form.Command8[5], u"Aufnehmen..."},
                                                {&form.CommandButton1, u"Liste speichern"},
                                                {&form.CommandButton2, u"Sender hinzufügen"}}) {
    EXPECT_EQ(button->Caption(), caption);
  }
}

TEST(Form1Test, FieldsCarryTheirLabels) {
  const Form1 form;
  for (const auto& [label, caption] : Captions{{&form.Label5, u"Station"},
                                               {&form.Label6, u"Weblink"},
                                               {&form.Label7, u"Genre"},
                                               {&form.Check2, u"Favorit"},
                                               {&form.Label2, u"M3U-Nr.:"},
                                               {&form.Label4, u"Titel:"},
                                               {&form.lblSav, u"Lautstärke"},
                                               {&form.ckSavMute, u"Mute"}}) {
    EXPECT_EQ(label->Caption(), caption);
  }
}

TEST(Form1Test, StopAndTheListsEndWaits) {
  const Form1 form;
  EXPECT_TRUE(form.Command6.EndsWaiting());
  EXPECT_TRUE(form.SymbolListview.EndsWaiting());
  EXPECT_TRUE(form.ExplorerListFilter.EndsWaiting());
  EXPECT_FALSE(form.Command1.EndsWaiting());
  EXPECT_FALSE(form.hscSavVolume.EndsWaiting());
}

TEST(Form1Test, ViewBoxesCarryTheirCaptions) {
  const Form1 form;
  EXPECT_EQ(form.Check1.Caption(), u"Genre-Filteransicht");
  EXPECT_EQ(form.Check3.Caption(), u"Favoritenansicht");
}

TEST(Form1Test, ApplyButtonsStandInTheRowsOfTheirFields) {
  const Form1 form;
  const std::vector<std::pair<std::size_t, const controls::Control*>> fields = {
      {1, &form.TextBox1[0]}, {2, &form.TextBox1[1]}, {4, &form.Combo1}, {0, &form.UpDownTextBox1}};
  for (const auto& [index, field] : fields) {
    const controls::Place& button = form.Command8[index].GetPlace();
    EXPECT_EQ(button.top, field->GetPlace().top) << index;
    EXPECT_EQ(button.height, field->GetPlace().height) << index;
    EXPECT_GE(button.left, field->GetPlace().left + field->GetPlace().width) << index;
  }
}

TEST(Form1Test, ApplyButtonsShowACheckMark) {
  const Form1 form;
  for (const std::size_t index : {0U, 1U, 2U, 4U}) {
    EXPECT_EQ(form.Command8[index].Caption(), u"a");
    EXPECT_EQ(form.Command8[index].GetGlyph(), controls::Glyph::kCheckMark);
  }
}

TEST(Form1Test, ButtonsCarryTheGlyphsOfWhatTheyDoBeforeTheirCaptions) {
  using controls::Glyph;
  const Form1 form;
  const std::pair<const controls::CommandButton*, Glyph> expected[] = {
      {&form.Command1, Glyph::kStart},      {&form.Command6, Glyph::kStop},
      {&form.Command3, Glyph::kList},       {&form.Command2, Glyph::kFind},
      {&form.Command8[3], Glyph::kDelete},  {&form.Command8[5], Glyph::kRecord},
      {&form.CommandButton1, Glyph::kSave}, {&form.CommandButton2, Glyph::kAdd},
      {&form.Command4, Glyph::kExport},     {&form.Command5, Glyph::kImport}};
  for (const auto& [button, glyph] : expected) {
    EXPECT_EQ(button->GetGlyph(), glyph);
    EXPECT_EQ(button->PlaceOfGlyph(), controls::GlyphPlace::kBeforeCaption);
  }
}

TEST(Form1Test, StartIsTheMainButtonAndOnlyDeletingWarns) {
  const Form1 form;
  for (const FormControl& entry : form.inventory) {
    const auto* button = As<controls::CommandButton>(entry);
    if (button == nullptr) continue;
    EXPECT_EQ(button->Role() == controls::ButtonRole::kMain, button == &form.Command1) << entry.name;
    EXPECT_EQ(button->Role() == controls::ButtonRole::kDeleting, button == &form.Command8[3]) << entry.name;
  }
}

TEST(Form1Test, ToolTipOfTheNumbersButtonIsThatOfTheGenresButton) {
  const Form1 form;
  EXPECT_EQ(form.Command8[0].ToolTip(), u"Genre übernehmen");
  EXPECT_EQ(form.Command8[4].ToolTip(), u"Genre übernehmen");
}

TEST(Form1Test, ButtonsCarryTheirToolTips) {
  const Form1 form;
  EXPECT_EQ(form.Command8[1].ToolTip(), u"Alles übernehmen");
  EXPECT_EQ(form.Command8[2].ToolTip(), u"Weblink übernehmen");
  EXPECT_EQ(form.Command8[3].ToolTip(), u"Eintrag löschen");
  EXPECT_EQ(form.Command8[5].ToolTip(), u"Startet das Aufnahme-Tool OZRecordFunkhaus");
  EXPECT_EQ(form.CommandButton2.ToolTip(), u"Neuen Listeneintrag erstellen");
  EXPECT_EQ(form.Command7.ToolTip(), u"Lautstärkeregelung");
}

TEST(Form1Test, SliderGoesTo100AndTheBarsTo10000) {
  const Form1 form;
  EXPECT_EQ(form.hscSavVolume.Minimum(), 0);
  EXPECT_EQ(form.hscSavVolume.Maximum(), 100);
  for (const controls::ProgressBar& bar : form.ProgressBar1) {
    EXPECT_EQ(bar.Minimum(), 0);
    EXPECT_EQ(bar.Maximum(), 10000);
  }
}

TEST(Form1Test, TabGoesThroughTheWindowInReadingOrder) {
  const Form1 form;
  std::vector<const controls::Control*> order;
  for (const FormControl& entry : form.inventory) order.push_back(As<controls::Control>(entry));
  auto place = order.begin();
  for (const controls::Control* next :
       std::initializer_list<const controls::Control*>{&form.SymbolListview, &form.ExplorerListFilter,
                                                       &form.Command1,       &form.Command6,
                                                       &form.Command3,       &form.Command2,
                                                       &form.hscSavVolume,   &form.ckSavMute,
                                                       &form.Command7,       &form.TextBox1[0],
                                                       &form.Command8[1],    &form.TextBox1[1],
                                                       &form.Command8[2],    &form.Combo1,
                                                       &form.Command8[4],    &form.Check2,
                                                       &form.UpDownTextBox1, &form.Command8[0],
                                                       &form.Command8[3],    &form.Command8[5],
                                                       &form.Check1,         &form.Check3,
                                                       &form.CommandButton1, &form.CommandButton2,
                                                       &form.Command4,       &form.Command5,
                                                       &form.CmdInfoClose}) {
    place = std::find(place, order.end(), next);
    ASSERT_NE(place, order.end()) << "not after the one before";
  }
}

TEST(Form1Test, ColumnDraggedInOneListHasItsWidthInTheOther) {
  Form1 form;
  for (controls::ListView* list : {&form.SymbolListview, &form.ExplorerListFilter}) {
    list->AddColumn({u"Station", 300});
    list->AddColumn({u"Genre", 120});
  }
  form.SymbolListview.DragColumn(1, 200);
  EXPECT_EQ(form.ExplorerListFilter.Columns()[1].users_width, 200);
  form.ExplorerListFilter.DragColumn(0, 250);
  EXPECT_EQ(form.SymbolListview.Columns()[0].users_width, 250);
}

TEST(Form1Test, PanelPictureBarsAndFilteredListAreHiddenAtFirst) {
  const Form1 form;
  EXPECT_FALSE(form.Frame3.Visible() || form.Image1.Visible() || form.ExplorerListFilter.Visible());
  EXPECT_FALSE(form.ProgressBar1[0].Visible() || form.ProgressBar1[1].Visible());
  EXPECT_TRUE(form.SymbolListview.Visible());
}

}  // namespace
}  // namespace app
