// How the windows look as far as the program decides it: places, looks and captions of their controls.
#include <gtest/gtest.h>

#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include "app/forms/form1.h"
#include "app/forms/form2.h"
#include "app/forms/record_form.h"

namespace app {
namespace {

using controls::ButtonLook;
using controls::FrameLook;
using controls::LabelLook;
using controls::Place;

/// Whether the control takes up room in its container from the beginning.
bool HasAPlace(const FormControl& entry) {
  if (As<controls::Timer>(entry) != nullptr || As<controls::Image>(entry) != nullptr) return false;
  if (As<controls::RowCommand>(entry) != nullptr) return false;
  if (const auto* button = As<controls::CommandButton>(entry)) return button->Look() != ButtonLook::kNone;
  if (const auto* box = As<controls::CheckBox>(entry)) return box->Look() != controls::CheckLook::kNone;
  const auto* const label = As<controls::Label>(entry);
  return label == nullptr || label->Look() != LabelLook::kStatusLine;
}

template <typename Form>
void ExpectEveryControlInside(const Form& form) {
  for (const FormControl& entry : form.inventory) {
    if (!HasAPlace(entry)) continue;
    const Place place = As<controls::Control>(entry)->GetPlace();
    const Place around = entry.container == nullptr ? form.form.GetPlace() : entry.container->GetPlace();
    EXPECT_GT(place.width, 0) << entry.name;
    EXPECT_GT(place.height, 0) << entry.name;
    EXPECT_GE(place.left, 0) << entry.name;
    EXPECT_GE(place.top, 0) << entry.name;
    EXPECT_LE(place.left + place.width, around.width) << entry.name;
    EXPECT_LE(place.top + place.height, around.height) << entry.name;
  }
}

TEST(AppearanceTest, EveryControlHasItsPlaceInsideItsContainer) {
  ExpectEveryControlInside(Form1());
  ExpectEveryControlInside(Form2());
  ExpectEveryControlInside(RecordForm());
}

bool Overlap(const Place& one, const Place& other) {
  return one.left < other.left + other.width && other.left < one.left + one.width &&
         one.top < other.top + other.height && other.top < one.top + one.height;
}

/// `covering` may lie over others.
void ExpectNoOverlap(const Inventory& inventory, const std::set<const controls::Control*>& covering = {}) {
  std::vector<const FormControl*> before;
  for (const FormControl& entry : inventory) {
    const auto* const control = As<controls::Control>(entry);
    if (!HasAPlace(entry) || covering.contains(control)) continue;
    for (const FormControl* other : before) {
      if (other->container != entry.container) continue;
      EXPECT_FALSE(Overlap(control->GetPlace(), As<controls::Control>(*other)->GetPlace()))
          << entry.name << " and " << other->name;
    }
    before.push_back(&entry);
  }
}

TEST(AppearanceTest, NoControlCoversItsNeighbour) {
  const Form1 form1;
  ExpectNoOverlap(form1.inventory, {&form1.Frame2, &form1.ExplorerListFilter, &form1.ProgressBar1[1]});
  ExpectNoOverlap(Form2().inventory);
  ExpectNoOverlap(RecordForm().inventory);
}

TEST(AppearanceTest, PanelsHaveNoBorderButTheList) {
  const Form1 form;
  EXPECT_EQ(form.Frame1.Look(), FrameLook::kPlain);
  EXPECT_EQ(form.frSav.Look(), FrameLook::kPlain);
  EXPECT_EQ(form.Frame2.Look(), FrameLook::kTitled);
  EXPECT_EQ(form.Frame3.Look(), FrameLook::kPanel);
}

TEST(AppearanceTest, TextsOfAnyLengthAreWrapped) {
  const Form1 form1;
  EXPECT_EQ(form1.Label3.Look(), LabelLook::kNamedValues);
  EXPECT_EQ(form1.Label4.Look(), LabelLook::kTitle);
  EXPECT_EQ(Form2().Label1.Look(), LabelLook::kText);
  const RecordForm record;
  for (const controls::Label* label :
       {&record.station_label, &record.title_label, &record.time_label, &record.written_label,
        &record.station, &record.title, &record.time, &record.written, &record.state}) {
    EXPECT_EQ(label->Look(), LabelLook::kText);
  }
}

TEST(AppearanceTest, LabelBeforeTheNumberStandsAtItsField) {
  EXPECT_EQ(Form1().Label2.Look(), LabelLook::kRightCaption);
}

TEST(AppearanceTest, EntriesOfTheListsMenuThatAreNoButtonsHaveACaptionOnly) {
  const Form1 form;
  EXPECT_EQ(form.UndoDelete.Look(), ButtonLook::kNone);
  EXPECT_EQ(form.UndoDelete.Caption(), u"Löschen zurücknehmen");
  EXPECT_EQ(form.TitleNotices.Look(), controls::CheckLook::kNone);
  EXPECT_EQ(form.TitleNotices.Caption(), u"Neue Titel melden, wenn das Fenster nicht zu sehen ist");
}

TEST(AppearanceTest, ButtonThatClosesThePanelIsFlat) {
  EXPECT_EQ(Form1().CmdInfoClose.Look(), ButtonLook::kFlat);
}

TEST(AppearanceTest, ButtonsThatPasteShowIt) {
  const Form2 form;
  for (const controls::CommandButton& button : form.CommandButton3) {
    EXPECT_EQ(button.GetGlyph(), controls::Glyph::kPaste);
  }
}

TEST(AppearanceTest, WindowOfTheRecordingToolCarriesItsTexts) {
  const RecordForm form;
  using Captions = std::vector<std::pair<const controls::Captioned*, std::u16string_view>>;
  for (const auto& [control, caption] : Captions{{&form.form, u"OZRecordFunkhaus"},
                                                 {&form.address_label, u"Adresse:"},
                                                 {&form.start, u"Start"},
                                                 {&form.station_label, u"Sender:"},
                                                 {&form.title_label, u"Titel:"},
                                                 {&form.time_label, u"Zeit:"},
                                                 {&form.written_label, u"Geschrieben:"},
                                                 {&form.stop, u"Stop"},
                                                 {&form.open_folder, u"Ordner öffnen"}}) {
    EXPECT_EQ(control->Caption(), caption);
  }
  EXPECT_EQ(form.address.ToolTip(), u"Adresse eines Senders oder einer Playlist");
  EXPECT_EQ(form.start.ToolTip(), u"Nimmt den Sender auf, eine Datei je Titel");
  EXPECT_EQ(form.stop.ToolTip(), u"Beendet die Aufnahme");
  EXPECT_EQ(form.open_folder.ToolTip(), u"Zeigt den Ordner der Aufnahmen");
}

}  // namespace
}  // namespace app
