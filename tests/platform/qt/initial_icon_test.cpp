#include "platform/qt/initial_icon.h"

#include <gtest/gtest.h>

#include <set>

#include "tests/platform/qt/contrast.h"

namespace platform::qt {
namespace {

QString InitialOfUtf8(const char* name) { return InitialOf(QString::fromUtf8(name)); }

TEST(InitialIconTest, InitialIsTheFirstLetterOrDigitAsACapital) {
  const std::pair<const char*, const char*> expected[] = {{"Radio Lichtung", "R"},
                                                          {"radio", "R"},
                                                          {"  \t mit Blanks", "M"},
                                                          {"100,5 Hit", "1"},
                                                          {"Ärzteradio", "Ä"},
                                                          {"ärzteradio", "Ä"},
                                                          {"A\u0308rzteradio", "A\u0308"},
                                                          {"»Nachtflug«", "N"},
                                                          {"ßonderbar", "ß"},
                                                          {"🎵 Klang", "K"},
                                                          {"👩‍🎤Stimme", "S"},
                                                          {"Ёлка", "Ё"},
                                                          {"日本放送", "日"},
                                                          {"𝐑adio", "𝐑"},
                                                          {"", ""},
                                                          {"   ", ""},
                                                          {"..-", ""},
                                                          {"🎵", ""}};
  for (const auto& [name, initial] : expected) {
    EXPECT_EQ(InitialOfUtf8(name), QString::fromUtf8(initial)) << name;
  }
}

TEST(InitialIconTest, HalfOfACharacterIsNoInitial) {
  EXPECT_EQ(InitialOf(QString(QChar(0xd835))), "");
  EXPECT_EQ(InitialOf(QString(QChar(0xdc11)) + "x"), "X");
}

TEST(InitialIconTest, ColourIsTheSameInEveryRunAndWhateverTheLetterCase) {
  EXPECT_EQ(IconColorOf("Radio Lichtung"), IconColorOf("RADIO lichtung"));
  EXPECT_EQ(IconColorOf("Radio Lichtung").name(), "#a746d1");
  EXPECT_EQ(IconColorOf("").name(), "#76771e");
}

TEST(InitialIconTest, ColoursDiffer) {
  std::set<QString> colors;
  for (int number = 0; number < 100; ++number)
    colors.insert(IconColorOf(QString("Radio %1").arg(number)).name());
  EXPECT_GE(colors.size(), 70U);
}

TEST(InitialIconTest, InitialIsReadableAndTheIconStandsOutFromLightAndDarkLists) {
  for (int number = 0; number < 360; ++number) {
    const QColor color = IconColorOf(QString::number(number));
    EXPECT_GE(Contrast(color, Qt::white), 4.5) << color.name().toStdString();
    EXPECT_GE(Contrast(color, DesktopColors::DarkPalette().color(QPalette::Base)), 3.0);
    EXPECT_GE(Contrast(color, Qt::black), 3.0);
  }
}

/// Pixels of an icon that are nearly white.
int WhitePixels(const QImage& icon) {
  int white = 0;
  for (int y = 0; y < icon.height(); ++y) {
    for (int x = 0; x < icon.width(); ++x) {
      const QColor pixel = icon.pixelColor(x, y);
      white += pixel.alpha() == 255 && pixel.lightness() > 240 ? 1 : 0;
    }
  }
  return white;
}

TEST(InitialIconTest, EveryInitialAndTheAerialAreDrawnInsideTheSquare) {
  const QColor color = IconColorOf("Radio");
  for (const char* initial : {"R", "W", "1", "Ä", "Q", "ß", ""}) {
    for (const double ratio : {1.0, 1.5, 2.0}) {
      const QPixmap pixmap = DrawInitialIcon(QString::fromUtf8(initial), color, 32, ratio);
      EXPECT_EQ(pixmap.size(), QSize(32, 32) * ratio);
      EXPECT_EQ(pixmap.devicePixelRatio(), ratio);
      const QImage icon = pixmap.toImage();
      EXPECT_GT(WhitePixels(icon), 15 * ratio * ratio) << initial;
      const int edge = static_cast<int>(2 * ratio);
      const QRect inside = icon.rect().adjusted(edge, edge, -edge, -edge);
      EXPECT_EQ(WhitePixels(icon), WhitePixels(icon.copy(inside))) << initial << " is cut off";
      EXPECT_EQ(icon.pixelColor(0, 0).alpha(), 0) << "the corners are round";
    }
  }
}

TEST(InitialIconTest, LetterThatNoFontHasLeavesTheAerial) {
  const QColor color = IconColorOf("Radio");
  const QString nowhere = QString::fromUcs4(U"\U0010fffd");
  EXPECT_EQ(DrawInitialIcon(nowhere, color, 32, 1).toImage(), DrawInitialIcon("", color, 32, 1).toImage());
}

TEST(InitialIconTest, DifferentInitialsLookDifferent) {
  const QColor color = IconColorOf("Radio");
  EXPECT_NE(DrawInitialIcon("R", color, 32, 1).toImage(), DrawInitialIcon("B", color, 32, 1).toImage());
  EXPECT_NE(DrawInitialIcon("R", color, 32, 1).toImage(), DrawInitialIcon("", color, 32, 1).toImage());
}

}  // namespace
}  // namespace platform::qt
