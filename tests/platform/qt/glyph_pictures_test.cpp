#include "platform/qt/glyph_pictures.h"

#include <gtest/gtest.h>

#include <QIcon>
#include <QImage>
#include <set>
#include <string>

#include "tests/platform/qt/contrast.h"
#include "tests/support/temp_folder.h"

namespace platform::qt {
namespace {

using controls::Glyph;

constexpr int kSide = 16;
const GlyphColors kOnWhite{Qt::black, Qt::white};

QImage PictureOf(Glyph glyph, const GlyphColors& colors = kOnWhite, double dots = 1.0) {
  return GlyphPicture(glyph, kSide, dots, colors).toImage().convertToFormat(QImage::Format_ARGB32);
}

/// A theme of icons that the test makes, for the time of the test.
class IconTheme : public ::testing::Test {
 protected:
  IconTheme() {
    for (const char* name : {"probe", "hicolor"}) {
      folder_.Write(
          std::string(name) + "/index.theme",
          "[Icon Theme]\nName=Probe\nDirectories=16\n\n[16]\nSize=16\nType=Fixed\nContext=Actions\n");
    }
    QIcon::setThemeSearchPaths({QString::fromStdString(folder_.Path().string())});
  }
  ~IconTheme() override {
    QIcon::setThemeName(name_);
    QIcon::setThemeSearchPaths(paths_);
  }
  IconTheme(const IconTheme&) = delete;
  IconTheme& operator=(const IconTheme&) = delete;

  /// The left half of the icon is of one colour, the right half of the other.
  void Save(const std::string& name, const QColor& left, const QColor& right) {
    SaveIn("probe", name, left, right);
  }
  void SaveIn(const std::string& theme, const std::string& name, const QColor& left, const QColor& right) {
    QImage icon(kSide, kSide, QImage::Format_ARGB32);
    for (int y = 0; y < kSide; ++y) {
      for (int x = 0; x < kSide; ++x) icon.setPixelColor(x, y, x < kSide / 2 ? left : right);
    }
    const auto path = folder_.Write(theme + "/16/" + name + ".png", "");
    ASSERT_TRUE(icon.save(QString::fromStdString(path.string())));
  }
  static void Use() { QIcon::setThemeName(QStringLiteral("probe")); }

 private:
  const QString name_ = QIcon::themeName();
  const QStringList paths_ = QIcon::themeSearchPaths();
  test_support::TempFolder folder_;
};

TEST_F(IconTheme, WithoutAnIconEveryGlyphIsDrawnInItsInkAndNoneIsLikeAnother) {
  Use();
  std::set<std::string> pictures;
  int count = 0;
  for (auto glyph = Glyph::kCheckMark; glyph <= Glyph::kFolder; glyph = Glyph{static_cast<int>(glyph) + 1}) {
    const QImage picture = PictureOf(glyph, {Qt::red, Qt::white});
    int seen = 0;
    for (int y = 0; y < kSide; ++y) {
      for (int x = 0; x < kSide; ++x) {
        const QColor color = picture.pixelColor(x, y);
        if (color.alpha() < 128) continue;
        ++seen;
        EXPECT_GT(color.red(), 250);
        EXPECT_LT(color.green(), 5);
      }
    }
    EXPECT_GT(seen, 12) << count;
    EXPECT_LT(seen, kSide * kSide * 3 / 4) << count;
    pictures.insert({reinterpret_cast<const char*>(picture.constBits()),
                     static_cast<std::size_t>(picture.sizeInBytes())});
    ++count;
  }
  EXPECT_EQ(count, 15);
  EXPECT_EQ(pictures.size(), 15U);
}

TEST_F(IconTheme, IconOfOneColourIsTakenForItsShapeInTheInk) {
  Save("media-playback-start-symbolic", QColor(46, 52, 54), Qt::transparent);
  Use();
  const QImage picture = PictureOf(Glyph::kStart, {Qt::yellow, Qt::black});
  EXPECT_EQ(picture.pixelColor(3, 8), QColor(Qt::yellow));
  EXPECT_EQ(picture.pixelColor(12, 8).alpha(), 0);
}

TEST_F(IconTheme, IconWithoutASymbolicFormIsFoundAndKeepsItsColours) {
  Save("edit-delete", Qt::darkRed, Qt::darkBlue);
  Use();
  const QImage picture = PictureOf(Glyph::kDelete);
  EXPECT_EQ(picture.pixelColor(3, 8), QColor(Qt::darkRed));
  EXPECT_EQ(picture.pixelColor(12, 8), QColor(Qt::darkBlue));
}

TEST_F(IconTheme, ColouredIconThatIsLostOnItsGroundIsDrawnInstead) {
  Save("edit-delete", QColor(20, 0, 0), QColor(0, 0, 70));
  Use();
  const QImage picture = PictureOf(Glyph::kDelete, {Qt::white, QColor(40, 40, 40)});
  EXPECT_GT(picture.pixelColor(8, 4).alpha(), 128) << "the lid of the drawn bin";
  EXPECT_GT(picture.pixelColor(8, 4).green(), 250);
  EXPECT_EQ(picture.pixelColor(0, 8).alpha(), 0);
}

TEST_F(IconTheme, IconThatShowsNothingIsDrawnInstead) {
  Save("list-add-symbolic", Qt::transparent, Qt::transparent);
  Use();
  EXPECT_EQ(PictureOf(Glyph::kAdd).pixelColor(8, 8), QColor(Qt::black));
}

TEST_F(IconTheme, WithoutAChosenThemeEveryGlyphIsDrawn) {
  SaveIn("hicolor", "media-playback-start-symbolic", Qt::darkRed, Qt::darkBlue);
  QIcon::setThemeName(QStringLiteral("hicolor"));
  ASSERT_FALSE(QIcon::fromTheme(QStringLiteral("media-playback-start-symbolic")).isNull());
  const QImage picture = PictureOf(Glyph::kStart);
  EXPECT_EQ(picture.pixelColor(0, 0).alpha(), 0);
  EXPECT_EQ(picture.pixelColor(6, 8), QColor(Qt::black));
}

TEST_F(IconTheme, PictureHasAllDotsOfASharpScreen) {
  Use();
  const QPixmap picture = GlyphPicture(Glyph::kStop, kSide, 2.0, kOnWhite);
  EXPECT_EQ(picture.size(), QSize(32, 32));
  EXPECT_EQ(picture.deviceIndependentSize(), QSizeF(16, 16));
}

}  // namespace
}  // namespace platform::qt
