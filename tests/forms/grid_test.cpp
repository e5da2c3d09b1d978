// The forms' places: one grid of 8 pixels, and rows that are high enough for every style's fields.
#include "app/forms/grid.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <type_traits>

#include "app/forms/form1.h"
#include "app/forms/form2.h"
#include "app/forms/layout.h"
#include "app/forms/record_form.h"

namespace app {
namespace {

using controls::Place;

template <typename Kind>
constexpr bool kIsField =
    std::is_same_v<Kind, controls::TextBox> || std::is_same_v<Kind, controls::ComboBox> ||
    std::is_same_v<Kind, controls::UpDownTextBox>;

void ExpectHighRows(const Inventory& inventory) {
  constexpr int kThirtyPixels = 30 * 15;
  for (const FormControl& entry : inventory) {
    std::visit(
        [&](auto* control) {
          using Kind = std::remove_pointer_t<decltype(control)>;
          if constexpr (kIsField<Kind>) {
            EXPECT_GE(control->GetPlace().height, kThirtyPixels) << entry.name;
          }
        },
        entry.control);
  }
}

TEST(GridTest, FieldsAreAtLeastThirtyPixelsHigh) {
  ExpectHighRows(Form1().inventory);
  ExpectHighRows(Form2().inventory);
  ExpectHighRows(RecordForm().inventory);
}

void ExpectOnGrid(const Place& place, int top_of_first, const char* name) {
  EXPECT_EQ(place.left % kGrid, 0) << name;
  EXPECT_EQ((place.top - top_of_first) % kGrid, 0) << name;
  EXPECT_EQ(place.height % kGrid, 0) << name;
}

TEST(GridTest, BottomPanelAndInformationPanelStandOnTheGrid) {
  const Form1 form1;
  const int first = form1.Command1.GetPlace().top;
  for (const FormControl& entry : form1.inventory) {
    const auto* control = As<controls::Control>(entry);
    if (control == nullptr || control->GetPlace().width == 0) continue;
    if (entry.container == &form1.Frame1) ExpectOnGrid(control->GetPlace(), first, entry.name);
    if (entry.container == &form1.frSav) ExpectOnGrid(control->GetPlace(), 0, entry.name);
  }
  for (const controls::Control* control : {static_cast<const controls::Control*>(&form1.Label4),
                                           static_cast<const controls::Control*>(&form1.Label3)}) {
    EXPECT_EQ(control->GetPlace().left, kGrid);
    EXPECT_EQ(control->GetPlace().top % kGrid, 0);
  }
}

TEST(GridTest, DialogAndRecordingToolStandOnTheGrid) {
  const Form2 form2;
  const RecordForm record_form;
  for (const Inventory* inventory : {&form2.inventory, &record_form.inventory}) {
    for (const FormControl& entry : *inventory) {
      ExpectOnGrid(As<controls::Control>(entry)->GetPlace(), 0, entry.name);
    }
  }
}

/// The gap between two places that overlap in the other direction; a large one when they do not.
int GapBetween(const Place& one, const Place& other) {
  const bool same_row = one.top < other.top + other.height && other.top < one.top + one.height;
  const bool same_column = one.left < other.left + other.width && other.left < one.left + one.width;
  const int across = std::max(other.left - (one.left + one.width), one.left - (other.left + other.width));
  const int down = std::max(other.top - (one.top + one.height), one.top - (other.top + other.height));
  if (same_row) return across;
  return same_column ? down : kGrid;
}

TEST(GridTest, ButtonsAndFieldsOfTheBottomPanelKeepOneStepApart) {
  const Form1 form1;
  for (const FormControl& entry : form1.inventory) {
    for (const FormControl& other : form1.inventory) {
      const auto* one = As<controls::Control>(entry);
      const auto* two = As<controls::Control>(other);
      if (one == two || entry.container != &form1.Frame1 || other.container != &form1.Frame1) continue;
      if (one->GetPlace().width == 0 || two->GetPlace().width == 0) continue;
      EXPECT_GE(GapBetween(one->GetPlace(), two->GetPlace()), kGrid * 3 / 4)
          << entry.name << ", " << other.name;
    }
  }
}

TEST(GridTest, PanelsOfTheSmallestWindowAreInsideIt) {
  const Form1 form1;
  const Place& panel = form1.Frame1.GetPlace();
  const Place& bar = form1.ProgressBar1[0].GetPlace();
  EXPECT_LE(panel.left + panel.width + bar.width * 2 + 60 + 60, form1.form.SmallestWidth());
}

TEST(GridTest, PanelsOfAWindowOnALowScreenAreInsideIt) {
  // 1920 x 1080 at 200 %, less the status line and the window's title.
  constexpr int kLow = (540 - 24 - 30) * 15;
  Form1 form1;
  const WindowLayout layout(form1);
  ASSERT_LT(kLow, form1.form.SmallestHeight());
  constexpr int kLostByRounding = 7;
  form1.form.Resize(form1.form.SmallestWidthIfLower() - kLostByRounding, kLow);
  const Place& panel = form1.Frame3.GetPlace();
  EXPECT_GE(panel.top, form1.SymbolListview.GetPlace().top);
  EXPECT_LE(panel.top + panel.height, kLow);
  EXPECT_LE(panel.left + panel.width, form1.form.SmallestWidthIfLower());
}

}  // namespace
}  // namespace app
