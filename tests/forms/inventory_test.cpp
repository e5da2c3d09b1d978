// What the forms' inventories give a front end: every control, and its role in its window.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

#include "app/forms/form1.h"
#include "app/forms/form2.h"
#include "app/forms/record_form.h"

namespace app {
namespace {

std::size_t SizeOfControls(const Inventory& inventory) {
  std::size_t size = 0;
  for (const FormControl& entry : inventory) {
    size += std::visit([](auto* control) { return sizeof(*control); }, entry.control);
  }
  return size;
}

/// The form is its window, its inventory, its controls and `more`.
template <typename Form>
void ExpectComplete(const Form& form, std::size_t more = 0) {
  EXPECT_EQ(sizeof(form.form) + sizeof(Inventory) + SizeOfControls(form.inventory) + more, sizeof(Form))
      << "a control is not in the inventory, or is in it twice";
}

TEST(InventoryTest, HoldsEveryControlOfItsForm) {
  ExpectComplete(Form1(), sizeof(controls::Subscriptions));
  ExpectComplete(Form2());
  ExpectComplete(RecordForm());
}

void ExpectInOrder(const Inventory& inventory) {
  std::set<std::string> names;
  std::set<const controls::Control*> before;
  for (const FormControl& entry : inventory) {
    EXPECT_TRUE(names.insert(entry.name).second) << entry.name << " twice";
    EXPECT_TRUE(entry.container == nullptr || before.contains(entry.container)) << entry.name;
    EXPECT_TRUE(entry.use.named_by == nullptr || before.contains(entry.use.named_by)) << entry.name;
    before.insert(As<controls::Control>(entry));
  }
}

TEST(InventoryTest, NamesAreUniqueAndContainersAndLabelsComeBeforeWhatNeedsThem) {
  ExpectInOrder(Form1().inventory);
  ExpectInOrder(Form2().inventory);
  ExpectInOrder(RecordForm().inventory);
}

const FormControl& Find(const Inventory& inventory, const controls::Control& control) {
  for (const FormControl& entry : inventory) {
    if (As<controls::Control>(entry) == &control) return entry;
  }
  ADD_FAILURE() << "no such control";
  return inventory.front();
}

TEST(InventoryTest, EachFieldAndSliderIsNamedByItsLabelAndTheListsByTheView) {
  const Form1 form1;
  const std::pair<const controls::Control*, const controls::Captioned*> expected[] = {
      {&form1.TextBox1[0], &form1.Label5},
      {&form1.TextBox1[1], &form1.Label6},
      {&form1.Combo1, &form1.Label7},
      {&form1.UpDownTextBox1, &form1.Label2},
      {&form1.hscSavVolume, &form1.lblSav},
      {&form1.SymbolListview, &form1.Frame2},
      {&form1.ExplorerListFilter, &form1.Frame2}};
  for (const auto& [control, name] : expected) {
    EXPECT_EQ(Find(form1.inventory, *control).use.named_by, name);
  }
}

/// "name Ctrl+S" of every control that has a key.
std::vector<std::string> Keys(const Inventory& inventory) {
  std::vector<std::string> keys;
  for (const FormControl& entry : inventory) {
    const controls::Key key = entry.use.key;
    if (!key) continue;
    std::string name = key == controls::kEnterKey    ? "Enter"
                       : key == controls::kEscapeKey ? "Escape"
                       : key == controls::kHelpKey   ? "F1"
                                                     : std::string(1, static_cast<char>(key.character));
    keys.push_back(std::string(entry.name) + (key.with_control ? " Ctrl+" : " ") + name);
  }
  return keys;
}

TEST(InventoryTest, KeysOfTheWindows) {
  EXPECT_EQ(Keys(Form1().inventory),
            (std::vector<std::string>{"Frame2 Ctrl+F", "UndoDelete Ctrl+Z", "CommandButton1 Ctrl+S",
                                      "CommandButton2 Ctrl+N", "ShowGuide F1"}));
  EXPECT_EQ(Keys(Form2().inventory),
            (std::vector<std::string>{"CommandButton1 Enter", "CommandButton2 Escape"}));
  EXPECT_EQ(Keys(RecordForm().inventory), (std::vector<std::string>{"start Enter", "show_guide F1"}))
      << "Escape would end a recording by accident";
}

TEST(InventoryTest, EnterInAFieldOfTheEditorIsForTheButtonBesideIt) {
  const Form1 form1;
  std::vector<std::pair<std::string, const controls::CommandButton*>> entered;
  for (const FormControl& entry : form1.inventory) {
    if (entry.use.enter_clicks != nullptr) entered.emplace_back(entry.name, entry.use.enter_clicks);
  }
  EXPECT_EQ(entered, (decltype(entered){{"TextBox1_0", &form1.Command8[1]},
                                        {"TextBox1_1", &form1.Command8[2]},
                                        {"Combo1", &form1.Command8[4]},
                                        {"UpDownTextBox1", &form1.Command8[0]}}));
  for (const auto& [name, button] : entered) {
    const FormControl& field =
        *std::find_if(form1.inventory.begin(), form1.inventory.end(),
                      [&wanted = name](const FormControl& one) { return one.name == wanted; });
    EXPECT_EQ(button->GetPlace().top, As<controls::Control>(field)->GetPlace().top) << name;
  }
}

TEST(InventoryTest, SavingHasItsKeyInAFilterViewTooAndANewStationHasNot) {
  const Form1 form1;
  EXPECT_EQ(Find(form1.inventory, form1.CommandButton1).use.key_while_hidden, KeyWhileHidden::kWorks);
  EXPECT_EQ(Find(form1.inventory, form1.CommandButton2).use.key_while_hidden, KeyWhileHidden::kRests);
}

TEST(InventoryTest, ListsMenuHoldsWhatCanBeDoneWithARowAndBelowALineWhatWithTheList) {
  std::vector<std::string> menu;
  for (const FormControl& entry : Form1().inventory) {
    if (entry.use.menu == MenuEntry::kClickBelowALine) menu.emplace_back("---");
    if (entry.use.menu != MenuEntry::kNone) menu.emplace_back(entry.name);
  }
  EXPECT_EQ(menu, (std::vector<std::string>{"Command1", "RowFavourite", "RowRecording", "RowLink",
                                            "Command8_3", "UndoDelete", "---", "CommandButton1",
                                            "CommandButton2", "---", "TitleNotices"}));
}

TEST(InventoryTest, MenuOfTheListsCallsPlayingByItsNameAndWhatIsForARowOnlyHasNoWidgetsPlace) {
  const Form1 form1;
  EXPECT_EQ(Find(form1.inventory, form1.Command1).use.menu_caption, u"Abspielen");
  EXPECT_EQ(form1.RowFavourite.Caption(), u"Favorit");
  EXPECT_EQ(form1.RowFavourite.Kind(), controls::RowCommandKind::kSwitch);
  EXPECT_EQ(form1.RowRecording.Caption(), u"Aufnehmen");
  EXPECT_EQ(form1.RowLink.Caption(), u"Link kopieren");
  for (const FormControl& entry : form1.inventory) {
    const bool for_row = As<controls::RowCommand>(entry) != nullptr;
    EXPECT_EQ(for_row, entry.use.menu == MenuEntry::kForRow) << entry.name;
  }
}

TEST(InventoryTest, DeleteKeyOfEitherListPressesTheButtonThatDeletes) {
  Form1 form1;
  int presses = 0;
  const auto counted = form1.Command8[3].Clicked.Subscribe([&] { ++presses; });
  form1.SymbolListview.PressDelete();
  form1.ExplorerListFilter.PressDelete();
  EXPECT_EQ(presses, 2);
}

TEST(InventoryTest, MainWindowHasASmallestSizeAndTheDialogsHaveTheirsOnly) {
  const Form1 form1;
  EXPECT_EQ(form1.form.SmallestWidth(), 10080);
  EXPECT_EQ(form1.form.SmallestHeight(), 9180);
  EXPECT_FALSE(form1.form.FixedSize());
  EXPECT_TRUE(Form2().form.FixedSize());
  EXPECT_TRUE(RecordForm().form.FixedSize());
}

}  // namespace
}  // namespace app
