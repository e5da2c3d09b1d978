#include "platform/qt/captioned_bindings.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QCheckBox>
#include <QGroupBox>
#include <QPushButton>

#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

class CaptionedBindings : public ::testing::Test {
 protected:
  CaptionedBindings() { opened_ = fixture_.Open(); }
  void SetUp() override { ASSERT_TRUE(opened_); }

  WindowFixture fixture_;
  app::Form1& form_ = fixture_.form;

 private:
  bool opened_ = false;
};

TEST_F(CaptionedBindings, ClickOnTheBoxChecksTheControlOnce) {
  const Counter clicks(form_.Check2.Clicked);
  auto& box = fixture_.Find<QCheckBox>("Check2");
  QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(8, box.height() / 2));
  Settle();
  EXPECT_TRUE(form_.Check2.Checked());
  EXPECT_TRUE(box.isChecked());
  EXPECT_EQ(clicks.Count(), 1);
}

TEST_F(CaptionedBindings, CheckingTheControlChecksTheBoxAndIsRaisedOnce) {
  const Counter clicks(form_.Check2.Clicked);
  form_.Check2.SetValue(controls::CheckValue::kChecked);
  EXPECT_TRUE(fixture_.Find<QCheckBox>("Check2").isChecked());
  EXPECT_EQ(clicks.Count(), 1);
}

TEST_F(CaptionedBindings, HandlerMayTakeTheUsersCheckBack) {
  const auto revert = form_.Check2.Clicked.Subscribe([this] {
    if (form_.Check2.Checked()) form_.Check2.SetValue(controls::CheckValue::kUnchecked);
  });
  auto& box = fixture_.Find<QCheckBox>("Check2");
  QTest::keyClick(&box, Qt::Key_Space);
  Settle();
  EXPECT_FALSE(form_.Check2.Checked());
  EXPECT_FALSE(box.isChecked());
}

TEST_F(CaptionedBindings, CheckingOneViewMayUncheckTheOther) {
  const auto exclude = form_.Check3.Clicked.Subscribe([this] {
    if (form_.Check3.Checked()) form_.Check1.SetValue(controls::CheckValue::kUnchecked);
  });
  form_.Check1.SetValue(controls::CheckValue::kChecked);
  QTest::keyClick(&fixture_.Find("Check3"), Qt::Key_Space);
  Settle();
  EXPECT_FALSE(fixture_.Find<QCheckBox>("Check1").isChecked());
  EXPECT_TRUE(fixture_.Find<QCheckBox>("Check3").isChecked());
}

TEST_F(CaptionedBindings, ButtonTakesMouseSpaceAndEnter) {
  const Counter clicks(form_.Command1.Clicked);
  auto& button = fixture_.Find("Command1");
  QTest::mouseClick(&button, Qt::LeftButton);
  Settle();
  EXPECT_EQ(clicks.Count(), 1);
  QTest::keyClick(&button, Qt::Key_Space);
  Settle();
  EXPECT_EQ(clicks.Count(), 2);
  QTest::keyClick(&button, Qt::Key_Return);
  Settle();
  EXPECT_EQ(clicks.Count(), 3);
}

TEST_F(CaptionedBindings, DisabledButtonTakesNothing) {
  const Counter clicks(form_.Command1.Clicked);
  form_.Command1.SetEnabled(false);
  auto& button = fixture_.Find("Command1");
  EXPECT_FALSE(button.isEnabled());
  QTest::mouseClick(&button, Qt::LeftButton);
  Settle();
  EXPECT_EQ(clicks.Count(), 0);
  form_.Command1.SetEnabled(true);
  EXPECT_TRUE(button.isEnabled());
}

TEST_F(CaptionedBindings, ContextMenuEventIsTheSecondaryActionOnly) {
  const Counter clicks(form_.Command3.Clicked);
  const Counter context_clicks(form_.Command3.ContextClicked);
  auto& button = fixture_.Find("Command3");
  for (const auto reason : {QContextMenuEvent::Mouse, QContextMenuEvent::Keyboard}) {
    QContextMenuEvent event(reason, QPoint(5, 5), button.mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(&button, &event);
  }
  Settle();
  EXPECT_EQ(context_clicks.Count(), 2);
  EXPECT_EQ(clicks.Count(), 0);
}

TEST_F(CaptionedBindings, CaptionsShowAmpersandsAsTheyAre) {
  form_.Frame2.SetCaption(u"Genre-Filter: Pop & Hits");
  EXPECT_EQ(fixture_.Find<QGroupBox>("Frame2").title(), "Genre-Filter: Pop && Hits");
  form_.Command1.SetCaption(u"Start & Los");
  EXPECT_EQ(fixture_.Find<QPushButton>("Command1").text(), "Start && Los");
  form_.Label5.SetCaption(u"Sender & Link");
  EXPECT_EQ(fixture_.Find<QLabel>("Label5").text(), "Sender && Link");
  form_.Label4.SetCaption(u"Du & Ich");
  EXPECT_EQ(fixture_.Find<QLabel>("Label4").text(), "Du & Ich");
}

TEST_F(CaptionedBindings, TextFromServersIsNeverMarkup) {
  form_.Label4.SetCaption(u"<b>laut</b>");
  form_.Label3.SetCaption(u"<img src=\"file:///etc/passwd\"><script>x</script>");
  for (const char* name : {"Label1", "Label3", "Label4", "Label5"}) {
    EXPECT_EQ(fixture_.Find<QLabel>(name).textFormat(), Qt::PlainText) << name;
  }
  form_.Command1.SetToolTip(u"<b>fett</b>");
  EXPECT_FALSE(fixture_.Find("Command1").toolTip().contains("<b>"));
}

TEST_F(CaptionedBindings, LongTextsEndInDotsAndAreShownWholeAsToolTip) {
  auto& title = fixture_.Find<FittedLabel>("Label4");
  form_.Frame3.SetVisible(true);
  form_.Label4.SetCaption(u"Kurz");
  EXPECT_TRUE(title.ShowsAll());
  EXPECT_TRUE(title.toolTip().isEmpty());
  const std::u16string longer(500, u'M');
  form_.Label4.SetCaption(longer + u"<i>");
  EXPECT_FALSE(title.ShowsAll());
  EXPECT_TRUE(title.toolTip().contains(ToQt(longer)));
  EXPECT_FALSE(title.toolTip().contains("<i>"));
}

TEST_F(CaptionedBindings, EndlessTextInThePanelIsCut) {
  form_.Frame3.SetVisible(true);
  form_.Label4.SetCaption(std::u16string(1'000'000, u'x'));
  EXPECT_EQ(fixture_.Find<FittedLabel>("Label4").text(), QString(8192, QLatin1Char('x')));
}

TEST_F(CaptionedBindings, TextRunsRoundThePicture) {
  form_.Frame3.SetVisible(true);
  form_.Label3.SetCaption(u"eins zwei drei vier fünf sechs sieben acht neun zehn elf zwölf");
  auto& label = fixture_.Find<FittedLabel>("Label3");
  ASSERT_TRUE(label.ShowsAll());
  form_.Image1.SetPicture(1);
  form_.Image1.Move({600, 900, 2900, 2400});
  form_.Image1.SetVisible(true);
  EXPECT_FALSE(label.ShowsAll());
  form_.Image1.SetVisible(false);
  EXPECT_TRUE(label.ShowsAll());
}

TEST_F(CaptionedBindings, HidingAFrameHidesItsControls) {
  form_.Frame3.SetVisible(true);
  EXPECT_TRUE(fixture_.Find("CmdInfoClose").isVisible());
  form_.Frame3.SetVisible(false);
  EXPECT_FALSE(fixture_.Find("CmdInfoClose").isVisible());
}

TEST_F(CaptionedBindings, BoxOrButtonWithoutALookIsNoWidget) {
  EXPECT_EQ(form_.TitleNotices.Look(), controls::CheckLook::kNone);
  for (const char* name : {"TitleNotices", "UndoDelete", "ShowGuide"}) {
    EXPECT_EQ(fixture_.window->findChild<QWidget*>(QLatin1String(name)), nullptr) << name;
  }
  for (const auto* box : fixture_.window->findChildren<QCheckBox*>()) {
    EXPECT_NE(box->text(), ToQt(form_.TitleNotices.Caption()));
  }
  ASSERT_NE(fixture_.window->findChild<QWidget*>(QStringLiteral("Check3")), nullptr) << "others are";
}

TEST_F(CaptionedBindings, ButtonWhoseCaptionIsTooWideStaysInsideItsPlace) {
  const QRect place = fixture_.Find("Command1").geometry();
  form_.Command1.SetCaption(std::u16string(200, u'W'));
  EXPECT_EQ(fixture_.Find("Command1").geometry(), place);
}

}  // namespace
}  // namespace platform::qt
