// The status line at the window's lower edge: its place, its text, and what a screen reader learns of it.
#include "platform/qt/status_strip.h"

#include <gtest/gtest.h>

#include <QAbstractEventDispatcher>
#include <QAccessible>

#include "tests/platform/qt/contrast.h"
#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

class StatusStripTest : public ::testing::Test {
 protected:
  StatusStripTest() { opened_ = fixture_.Open(); }
  void SetUp() override { ASSERT_TRUE(opened_); }

  void Show(const Text& sentence) { fixture_.form.StatusLine.SetCaption(sentence); }
  qsizetype Timers() const { return QAbstractEventDispatcher::instance()->registeredTimers(&strip_).size(); }
  const QLabel& Line() const { return *strip_.findChild<QLabel*>(); }

  WindowFixture fixture_;
  StatusStrip& strip_ = fixture_.Find<StatusStrip>("StatusLine");
  QStringList said_;

 private:
  controls::Subscription announced_ =
      strip_.Announced.Subscribe([this](const QString& text) { said_ += text; });
  bool opened_ = false;
};

const Text kLong = Text(400, u'x') + u" Ende";

TEST_F(StatusStripTest, StandsBelowTheInnerAreaAndKeepsItsHeightWhenItIsEmpty) {
  const QRect place = strip_.geometry();
  EXPECT_EQ(place.width(), fixture_.window->width());
  EXPECT_EQ(place.bottom(), fixture_.window->height() - 1);
  EXPECT_EQ(fixture_.form.form.GetPlace().height, (fixture_.window->height() - place.height()) * 15);
  EXPECT_LT(fixture_.Find("Frame2").geometry().bottom(), place.top());
  EXPECT_TRUE(strip_.isVisible());
  Show(u"Gestoppt.");
  EXPECT_EQ(strip_.geometry(), place);
}

TEST_F(StatusStripTest, FollowsTheWindowsSize) {
  fixture_.window->resize(1200, 800);
  ASSERT_TRUE(WaitFor([&] { return strip_.geometry().bottom() == 799; }));
  EXPECT_EQ(strip_.width(), 1200);
  fixture_.form.form.Resize(15000, 9300);
  EXPECT_EQ(fixture_.window->size(), QSize(1000, 620 + strip_.height()));
  EXPECT_EQ(strip_.y(), 620);
}

TEST_F(StatusStripTest, WindowOpensAtTheInnerSizeAndTheStripAndIsNeverSmallerThanBothNeed) {
  EXPECT_EQ(fixture_.window->minimumHeight(), 9180 / 15 + strip_.height());
  fixture_.form.form.Resize(10500, 9300);
  fixture_.window->Open();
  EXPECT_EQ(fixture_.window->size(), QSize(700, 620 + strip_.height()));
}

TEST_F(StatusStripTest, SentenceThatIsTooLongEndsInDotsAndIsTheToolTip) {
  Show(u"Gestoppt.");
  EXPECT_EQ(Line().text(), "Gestoppt.");
  EXPECT_EQ(strip_.toolTip(), "");
  Show(kLong);
  EXPECT_TRUE(Line().text().endsWith(QChar(0x2026))) << Line().text().toStdString();
  EXPECT_LE(Line().fontMetrics().horizontalAdvance(Line().text()), Line().width());
  EXPECT_TRUE(strip_.toolTip().contains(ToQt(kLong)));
  Show(u"Gestoppt.");
  EXPECT_EQ(strip_.toolTip(), "");
}

TEST_F(StatusStripTest, WiderWindowShowsMoreOfTheSentence) {
  Show(Text(120, u'm'));
  EXPECT_FALSE(strip_.toolTip().isEmpty());
  fixture_.window->resize(3000, 800);
  ASSERT_TRUE(WaitFor([&] { return strip_.toolTip().isEmpty(); }));
  EXPECT_EQ(Line().text(), QString(120, 'm'));
}

TEST_F(StatusStripTest, WiderFontShowsLessOfTheSentence) {
  Show(Text(40, u'm'));
  ASSERT_TRUE(strip_.toolTip().isEmpty());
  QFont wide = strip_.font();
  wide.setLetterSpacing(QFont::PercentageSpacing, 500);
  strip_.setFont(wide);
  EXPECT_FALSE(strip_.toolTip().isEmpty());
}

TEST_F(StatusStripTest, TextIsOneLineAndNeverMarkup) {
  Show(u"<b>eins</b>\r\nzwei");
  EXPECT_EQ(Line().text(), "<b>eins</b>  zwei");
  EXPECT_EQ(Line().textFormat(), Qt::PlainText);
  Show(u"<b>" + kLong);
  EXPECT_TRUE(strip_.toolTip().contains("&lt;b&gt;"));
}

TEST_F(StatusStripTest, StandsOutFromItsGroundInEveryColours) {
  Show(u"Gestoppt. Gestoppt. Gestoppt.");
  for (const QPalette& palette : DesktopPalettes()) {
    const WithPalette colors(palette);
    QApplication::processEvents();
    const QImage picture = strip_.grab().toImage();
    const QColor ground = picture.pixelColor(picture.width() - 3, picture.height() / 2);
    EXPECT_EQ(ground, palette.color(QPalette::Window));
    EXPECT_GE(StrongestContrast(picture, Line().geometry(), ground), 4.5) << ground.name().toStdString();
  }
}

TEST_F(StatusStripTest, TakesNoKeyboard) {
  EXPECT_EQ(strip_.focusPolicy(), Qt::NoFocus);
  EXPECT_EQ(Line().focusPolicy(), Qt::NoFocus);
}

TEST_F(StatusStripTest, IsAStatusBarWithANotificationThatBearsTheWholeSentence) {
  Show(kLong);
  const QAccessibleInterface* bar = QAccessible::queryAccessibleInterface(&strip_);
  EXPECT_EQ(bar->role(), QAccessible::StatusBar);
  ASSERT_EQ(bar->childCount(), 1);
  EXPECT_EQ(bar->child(0)->role(), QAccessible::Notification);
  EXPECT_EQ(bar->child(0)->text(QAccessible::Name), ToQt(kLong));
  EXPECT_FALSE(bar->child(0)->state().focusable);
}

TEST_F(StatusStripTest, EachSentenceIsAnnouncedOnceAndAnEmptyOneNotAtAll) {
  Show(u"Verbindung wird aufgebaut ...");
  Show(u"Verbindung wird aufgebaut ...");
  Show(u"");
  Show(u"Gestoppt.");
  fixture_.form.form.Resize(15000, 9000);
  EXPECT_EQ(said_, (QStringList{"Verbindung wird aufgebaut ...", "Gestoppt."}));
  EXPECT_EQ(Timers(), 0) << "nor is it to be announced later";
}

TEST_F(StatusStripTest, CountdownIsAnnouncedWhenItBeginsAndWhenItRests) {
  for (const char16_t* sentence : {u"Noch 3 s", u"Noch 2 s", u"Noch 1 s"}) Show(sentence);
  EXPECT_EQ(said_, QStringList{"Noch 3 s"});
  ASSERT_TRUE(WaitFor([&] { return said_.size() == 2; }));
  EXPECT_EQ(said_.last(), "Noch 1 s");
  EXPECT_EQ(Timers(), 0);
}

TEST_F(StatusStripTest, OtherSentenceEndsTheCountdownsRest) {
  Show(u"Noch 3 s");
  Show(u"Noch 2 s");
  EXPECT_EQ(Timers(), 1);
  Show(u"Gestoppt.");
  EXPECT_EQ(Timers(), 0);
  EXPECT_EQ(said_, (QStringList{"Noch 3 s", "Gestoppt."}));
}

}  // namespace
}  // namespace platform::qt
