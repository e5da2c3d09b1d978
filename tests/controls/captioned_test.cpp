#include "controls/captioned.h"

#include <gtest/gtest.h>

namespace controls {
namespace {

TEST(Control, AnnouncesEachPropertyThatTakesAnotherValue) {
  Label label;
  int changes = 0;
  const auto changed = label.Changed.Subscribe([&] { ++changes; });
  label.SetCaption(u"Titel:");
  label.SetVisible(false);
  label.SetEnabled(false);
  label.SetToolTip(u"Hinweis");
  EXPECT_TRUE(label.Move({1, 2, 3, 4}));
  EXPECT_EQ(changes, 5);
  label.SetCaption(u"Titel:");
  label.SetVisible(false);
  label.SetEnabled(false);
  label.SetToolTip(u"Hinweis");
  EXPECT_TRUE(label.Move({1, 2, 3, 4}));
  EXPECT_EQ(changes, 5);
  EXPECT_EQ(label.Caption(), u"Titel:");
  EXPECT_FALSE(label.Visible());
  EXPECT_FALSE(label.Enabled());
  EXPECT_EQ(label.ToolTip(), u"Hinweis");
}

TEST(Control, AnnouncesAnotherLook) {
  Label label;
  Frame frame;
  CommandButton button;
  int changes = 0;
  Subscriptions changed;
  for (Control* control : std::initializer_list<Control*>{&label, &frame, &button}) {
    changed += control->Changed.Subscribe([&] { ++changes; });
  }
  label.SetLook(LabelLook::kText);
  frame.SetLook(FrameLook::kPanel);
  button.SetLook(ButtonLook::kFlat);
  EXPECT_EQ(changes, 3);
}

TEST(Control, RefusesANegativeSize) {
  Frame frame;
  frame.Move({1, 2, 3, 4});
  EXPECT_FALSE(frame.Move({1, 2, -1, 4}));
  EXPECT_FALSE(frame.Move({1, 2, 3, -1}));
  EXPECT_EQ(frame.GetPlace(), (Place{1, 2, 3, 4}));
  EXPECT_TRUE(frame.Move({-5, -6, 0, 0}));
}

TEST(Control, AsksForTheFocus) {
  CommandButton button;
  int wanted = 0;
  const auto focus = button.FocusWanted.Subscribe([&] { ++wanted; });
  button.SetFocus();
  EXPECT_EQ(wanted, 1);
}

TEST(CommandButton, TakesBothKindsOfClicks) {
  CommandButton button;
  int clicks = 0;
  int context_clicks = 0;
  const auto clicked = button.Clicked.Subscribe([&] { ++clicks; });
  const auto context_clicked = button.ContextClicked.Subscribe([&] { ++context_clicks; });
  button.Click();
  button.ContextClick();
  EXPECT_EQ(clicks, 1);
  EXPECT_EQ(context_clicks, 1);
}

TEST(CommandButton, TakesNoClickWhileItIsDisabled) {
  CommandButton button;
  int clicks = 0;
  const auto clicked = button.Clicked.Subscribe([&] { ++clicks; });
  const auto context_clicked = button.ContextClicked.Subscribe([&] { ++clicks; });
  button.SetEnabled(false);
  button.Click();
  button.ContextClick();
  EXPECT_EQ(clicks, 0);
}

TEST(CheckBox, AValueFromCodeRaisesTheSameEventAsAClick) {
  CheckBox box;
  int clicks = 0;
  const auto clicked = box.Clicked.Subscribe([&] { ++clicks; });
  box.SetValue(CheckValue::kChecked);
  EXPECT_TRUE(box.Checked());
  EXPECT_EQ(clicks, 1);
  box.SetValue(CheckValue::kChecked);
  EXPECT_EQ(clicks, 1);
  box.Click();
  EXPECT_EQ(box.Value(), CheckValue::kUnchecked);
  EXPECT_EQ(clicks, 2);
}

TEST(CheckBox, TakesNoClickWhileItIsDisabledButCodeMaySetIt) {
  CheckBox box;
  box.SetEnabled(false);
  box.Click();
  EXPECT_FALSE(box.Checked());
  box.SetValue(CheckValue::kChecked);
  EXPECT_TRUE(box.Checked());
}

TEST(CheckBox, AHandlerMaySetTheValueBack) {
  CheckBox box;
  int clicks = 0;
  const auto clicked = box.Clicked.Subscribe([&] {
    ++clicks;
    box.SetValue(CheckValue::kUnchecked);
  });
  box.Click();
  EXPECT_FALSE(box.Checked());
  EXPECT_EQ(clicks, 2);
}

}  // namespace
}  // namespace controls
