// Names and values in two columns, and the size of titles.
#include "platform/qt/fitted_label.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>

#include "tests/platform/qt/contrast.h"
#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

using controls::LabelLook;

class FittedLabelTest : public ::testing::Test {
 protected:
  static constexpr int kWidth = 240;

  void Show(FittedLabel& label, const QString& text, int height = 120) {
    label.resize(kWidth, height);
    label.ShowText(text);
  }
  /// The first inked column within these lines of the label, and not left of `from`; -1 without ink.
  int FirstInk(FittedLabel& label, int line, int from = 0) {
    const int height = label.fontMetrics().lineSpacing();
    const QImage picture = label.grab().toImage();
    const QColor ground = picture.pixelColor(picture.width() - 1, picture.height() - 1);
    for (int x = from; x < picture.width(); ++x) {
      if (StrongestContrast(picture, QRect(x, line * height, 1, height), ground) > 2.0) return x;
    }
    return -1;
  }

  QWidget window_;
  FittedLabel named_{&window_, LabelLook::kNamedValues};
  FittedLabel plain_{&window_, LabelLook::kText};
};

TEST_F(FittedLabelTest, ValuesStandBelowEachOtherRightOfTheLongestName) {
  Show(named_, QStringLiteral("Genre: HHH\r\nStationName: HHH\r\nBitRate: HHH\r\n"));
  const int left = named_.ValuesLeft();
  EXPECT_GT(left, named_.fontMetrics().horizontalAdvance(QStringLiteral("StationName:")));
  for (int line = 0; line < 3; ++line) {
    EXPECT_NEAR(FirstInk(named_, line, left - 3), left, 2) << line;
    EXPECT_LT(FirstInk(named_, line), 3) << line;
  }
  EXPECT_TRUE(named_.ShowsAll());
  EXPECT_EQ(named_.text(), QStringLiteral("Genre: HHH\r\nStationName: HHH\r\nBitRate: HHH\r\n"))
      << "what a screen reader reads";
}

TEST_F(FittedLabelTest, LongValueContinuesInItsColumn) {
  Show(named_, QStringLiteral("Genre: HHHH HHHH HHHH HHHH HHHH HHHH HHHH"));
  const int left = named_.ValuesLeft();
  EXPECT_NEAR(FirstInk(named_, 1), left, 2);
  EXPECT_TRUE(named_.ShowsAll());
}

TEST_F(FittedLabelTest, LineWithoutANameTakesTheWholeWidth) {
  Show(named_, QStringLiteral("StationName: A\r\nHHHH HHHH\r\nhttp://h/x"));
  EXPECT_LT(FirstInk(named_, 1), 3);
  EXPECT_GT(named_.ValuesLeft(), 0);
  Show(named_, QStringLiteral("http://h/x\r\n: x"));
  EXPECT_EQ(named_.ValuesLeft(), 0) << "no names";
}

TEST_F(FittedLabelTest, OtherLabelsHaveNoColumns) {
  Show(plain_, QStringLiteral("Genre: HHH\r\nStationName: HHH"));
  EXPECT_EQ(plain_.ValuesLeft(), 0);
}

TEST_F(FittedLabelTest, EndlessNameLeavesRoomForItsValue) {
  Show(named_, QString(500, QLatin1Char('W')) + QStringLiteral(": HHH"));
  EXPECT_LE(named_.ValuesLeft(), kWidth / 2);
  EXPECT_NEAR(FirstInk(named_, 0, named_.ValuesLeft() - 3), named_.ValuesLeft(), 2);
}

TEST_F(FittedLabelTest, WhatDoesNotFitBelowIsCutAndWholeInTheToolTip) {
  const QString text = QStringLiteral("Genre: A\r\nStationName: B\r\nBitRate: C\r\nChannels: D");
  Show(named_, text, named_.fontMetrics().lineSpacing() * 2);
  EXPECT_FALSE(named_.ShowsAll());
  EXPECT_EQ(named_.toolTip(), text);
  Show(named_, text, named_.fontMetrics().lineSpacing() * 4);
  EXPECT_TRUE(named_.ShowsAll());
  EXPECT_TRUE(named_.toolTip().isEmpty());
}

TEST_F(FittedLabelTest, BesideAPictureAShortValueStaysInItsColumn) {
  Show(named_, QStringLiteral("SampleRate: HHH\r\nChannels: 2"));
  const int line = named_.fontMetrics().lineSpacing();
  const int left = named_.ValuesLeft();
  named_.SetObstacle(QRect(left + 20, line + 8, kWidth - left - 20, 100));
  EXPECT_NEAR(FirstInk(named_, 1, left - 3), left, 2);
}

TEST_F(FittedLabelTest, BesideAPictureThatLeavesNoColumnTheValueFollowsItsName) {
  Show(named_, QStringLiteral("StationName: A\r\nChannels: HHHH"));
  const int line = named_.fontMetrics().lineSpacing();
  named_.SetObstacle(QRect(130, line + 2, kWidth - 130, 100));
  const int name = named_.fontMetrics().horizontalAdvance(QStringLiteral("Channels: "));
  EXPECT_NEAR(FirstInk(named_, 1, name - 3), name, 4);
  EXPECT_LT(name, named_.ValuesLeft() - 8);
}

TEST_F(FittedLabelTest, NamesArePalerThanValuesAndReadableInAllColours) {
  for (const QPalette& palette : DesktopPalettes()) {
    const WithPalette colors(palette);
    FittedLabel label(nullptr, LabelLook::kNamedValues);
    label.setBackgroundRole(QPalette::Base);
    label.setAutoFillBackground(true);
    Show(label, QStringLiteral("HHHHH: HHHHH"));
    const QImage picture = label.grab().toImage();
    const QColor ground = palette.color(QPalette::Base);
    const int line = label.fontMetrics().lineSpacing();
    const int left = label.ValuesLeft();
    EXPECT_GE(StrongestContrast(picture, QRect(0, 0, left - 4, line), ground), 4.0);
    EXPECT_GT(StrongestContrast(picture, QRect(left, 0, 80, line), ground),
              StrongestContrast(picture, QRect(0, 0, left - 4, line), ground));
  }
}

TEST_F(FittedLabelTest, TitleIsBolderAndLargerAndFollowsTheWindowsFont) {
  FittedLabel title(&window_, LabelLook::kTitle);
  const auto height_of_ink = [&](FittedLabel& label) {
    Show(label, QStringLiteral("HHHHHHHH"));
    const QImage picture = label.grab().toImage();
    const QColor ground = picture.pixelColor(picture.width() - 1, picture.height() - 1);
    int height = 0;
    for (int y = 0; y < picture.height(); ++y) {
      if (StrongestContrast(picture, QRect(0, y, picture.width(), 1), ground) > 2.0) ++height;
    }
    return height;
  };
  EXPECT_GT(height_of_ink(title), height_of_ink(plain_));
  const int before = height_of_ink(title);
  QFont larger = window_.font();
  larger.setPointSizeF(larger.pointSizeF() * 1.5);
  window_.setFont(larger);
  EXPECT_GT(height_of_ink(title), before * 12 / 10);
}

TEST_F(FittedLabelTest, FloodOfLinesIsLaidOutOnlyAsFarAsItIsSeen) {
  Show(named_, QStringLiteral("a: b\r\n").repeated(100000));
  EXPECT_FALSE(named_.ShowsAll());
}

}  // namespace
}  // namespace platform::qt
