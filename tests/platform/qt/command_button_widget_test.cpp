// How buttons look, by the pixels that are painted.
#include "platform/qt/command_button_widget.h"

#include <gtest/gtest.h>

#include <QEnterEvent>
#include <QStyleOptionButton>

#include "tests/platform/qt/contrast.h"
#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

using controls::ButtonRole;
using controls::Glyph;
using controls::GlyphPlace;

/// Moves the pointer over a widget or away from it.
void PointAt(QWidget& widget, bool at) {
  const QPointF place = widget.rect().center();
  widget.setAttribute(Qt::WA_UnderMouse, at);
  if (at) {
    QEnterEvent enter(place, place, widget.mapToGlobal(place));
    QApplication::sendEvent(&widget, &enter);
  } else {
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&widget, &leave);
  }
}

/// The pixel that is reddest for how bright it is.
int Reddest(const QImage& picture) {
  int reddest = 0;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const QColor color = picture.pixelColor(x, y);
      reddest = std::max(reddest, color.red() - std::max(color.green(), color.blue()));
    }
  }
  return reddest;
}

TEST(CommandButtonWidgetTest, DeletingButtonIsRedOnlyWhileItIsPointedAtAndReadableInAllColours) {
  for (const QPalette& palette : DesktopPalettes()) {
    const WithPalette colors(palette);
    WindowFixture fixture;
    auto& button = fixture.Find("Command8_3");
    constexpr int kRed = 40;
    EXPECT_LT(Reddest(button.grab().toImage()), kRed) << "as the others";
    PointAt(button, true);
    const QImage pointed_at = button.grab().toImage();
    EXPECT_GT(Reddest(pointed_at), kRed);
    const QRect inside = button.rect().adjusted(6, 6, -6, -6);
    const QColor ground = pointed_at.pixelColor(inside.left(), inside.top());
    EXPECT_GE(StrongestContrast(pointed_at, inside, ground), 4.0) << ground.name().toStdString();
    PointAt(button, false);
    EXPECT_LT(Reddest(button.grab().toImage()), kRed);
  }
}

TEST(CommandButtonWidgetTest, DisabledDeletingButtonDoesNotWarn) {
  WindowFixture fixture;
  fixture.form.Command8[3].SetEnabled(false);
  auto& button = fixture.Find("Command8_3");
  PointAt(button, true);
  EXPECT_LT(Reddest(button.grab().toImage()), 40);
}

TEST(CommandButtonWidgetTest, OtherButtonsKeepTheirColourWhenTheyArePointedAt) {
  WindowFixture fixture;
  auto& button = fixture.Find("Command8_5");
  PointAt(button, true);
  EXPECT_LT(Reddest(button.grab().toImage()), 40);
}

TEST(CommandButtonWidgetTest, MainButtonStandsApartAndIsNoButtonForEnter) {
  WindowFixture fixture;
  auto& start = fixture.Find<QPushButton>("Command1");
  EXPECT_TRUE(start.isDefault());
  EXPECT_FALSE(fixture.Find<QPushButton>("Command6").isDefault());
  const QImage main = start.grab().toImage();
  start.setDefault(false);
  EXPECT_NE(start.grab().toImage(), main) << "the style shows it";
  start.setDefault(true);
  ASSERT_TRUE(fixture.Open());
  const Counter clicks(fixture.form.Command1.Clicked);
  fixture.Find("Check1").setFocus();
  QTest::keyClick(&fixture.Find("Check1"), Qt::Key_Return);
  Settle();
  EXPECT_EQ(clicks.Count(), 0);
}

TEST(CommandButtonWidgetTest, GlyphStandsBeforeTheCaptionWhichIsShownToo) {
  QWidget window;
  CommandButtonWidget plain(&window);
  CommandButtonWidget with_glyph(&window);
  for (CommandButtonWidget* button : {&plain, &with_glyph}) {
    button->resize(150, 32);
    button->setText(QStringLiteral("III"));
  }
  with_glyph.SetGlyph(Glyph::kStop, GlyphPlace::kBeforeCaption);
  const QImage picture = with_glyph.grab().toImage();
  const QColor ground = picture.pixelColor(20, 16);
  const auto inked = [&](int from, int to) {
    return StrongestContrast(picture, QRect(from, 10, to - from, 12), ground) > 3.0;
  };
  EXPECT_TRUE(inked(50, 75)) << "the glyph";
  EXPECT_TRUE(inked(75, 100)) << "the caption";
  EXPECT_NE(plain.grab().toImage(), picture);
}

TEST(CommandButtonWidgetTest, CaptionIsCutWithDotsBesideItsGlyphAndWholeInTheToolTip) {
  QWidget window;
  CommandButtonWidget button(&window);
  button.setText(QStringLiteral("Sender hinzu"));
  QStyleOptionButton option;
  option.initFrom(&button);
  // Just wide enough without a glyph.
  button.resize(button.fontMetrics().horizontalAdvance(button.text()) + 16, 32);
  const QImage narrow = button.grab().toImage();
  button.SetGlyph(Glyph::kAdd, GlyphPlace::kBeforeCaption);
  QHelpEvent help(QEvent::ToolTip, QPoint(5, 5), QPoint(5, 5));
  EXPECT_TRUE(QApplication::sendEvent(&button, &help));
  EXPECT_TRUE(help.isAccepted());
  EXPECT_NE(button.grab().toImage(), narrow);
}

TEST(CommandButtonWidgetTest, GlyphTurnsPaleWithADisabledButton) {
  WindowFixture fixture;
  auto& button = fixture.Find("Command8_1");
  const QColor ground = button.palette().color(QPalette::Button);
  const auto contrast = [&] {
    return StrongestContrast(button.grab().toImage(), button.rect().adjusted(8, 8, -8, -8), ground);
  };
  const double before = contrast();
  fixture.form.Command8[1].SetEnabled(false);
  EXPECT_LT(contrast(), before / 2);
}

}  // namespace
}  // namespace platform::qt
