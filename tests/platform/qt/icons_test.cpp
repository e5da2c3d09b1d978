#include "platform/qt/icons.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QFile>
#include <QImageWriter>
#include <QTemporaryDir>
#include <QtEndian>

#include "platform/qt/picture_box.h"
#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

QByteArray Png(int side, QColor color) {
  QImage image(side, side, QImage::Format_ARGB32);
  image.fill(color);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, "png");
  return bytes;
}

template <typename Number>
void Append(QByteArray& bytes, Number number) {
  number = qToLittleEndian(number);
  bytes.append(reinterpret_cast<const char*>(&number), sizeof(number));
}

/// An icon file (https://en.wikipedia.org/wiki/ICO_(file_format)) with one PNG image per side and colour.
QByteArray Ico(const std::vector<std::pair<int, QColor>>& images) {
  QByteArray header;
  QByteArray data;
  Append<quint16>(header, 0);
  Append<quint16>(header, 1);
  Append<quint16>(header, static_cast<quint16>(images.size()));
  const auto data_start = static_cast<quint32>(6 + 16 * images.size());
  for (const auto& [side, color] : images) {
    const QByteArray png = Png(side, color);
    header.append(static_cast<char>(side)).append(static_cast<char>(side)).append('\0').append('\0');
    Append<quint16>(header, 1);
    Append<quint16>(header, 32);
    Append<quint32>(header, static_cast<quint32>(png.size()));
    Append<quint32>(header, data_start + static_cast<quint32>(data.size()));
    data += png;
  }
  return header + data;
}

class IconFiles : public ::testing::Test {
 protected:
  Text Write(const QString& name, const QByteArray& bytes) {
    QFile file(folder_.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    return FromQt(file.fileName());
  }
  Text WriteImage(const QString& name, const QImage& image, const char* format) {
    EXPECT_TRUE(image.save(folder_.filePath(name), format));
    return FromQt(folder_.filePath(name));
  }
  QColor ColorOf(IconHandle icon) {
    const ImageListHandle list = icons_.ImageList_Create(32, 32, kIlcColor32, 1, 0);
    const int position = icons_.ImageList_AddIcon(list, icon);
    return icons_.Image(list, position).toImage().pixelColor(16, 16);
  }

  /// Finds everything that is read under another name than it has.
  class OtherNamesForReading final : public NativePaths {
   public:
    explicit OtherNamesForReading(std::string read) : read_(std::move(read)) {}
    Text FromNative(const std::string& native) override { return plain_.FromNative(native); }
    std::string ToNative(const Text& path) override { return plain_.ToNative(path); }
    std::string ToNativeForReading(const Text& /*path*/) override { return read_; }

   private:
    PlainPaths plain_;
    std::string read_;
  };

  QTemporaryDir folder_;
  PlainPaths paths_;
  QtIcons icons_{paths_};
};

TEST_F(IconFiles, SizeThatFitsBestIsTaken) {
  const Text path = Write("a.ico", Ico({{16, Qt::red}, {64, Qt::blue}, {32, Qt::green}, {48, Qt::black}}));
  EXPECT_EQ(ColorOf(icons_.LoadImageW(path, 32, 32)), QColor(Qt::green));
}

TEST_F(IconFiles, LargestSizeIsTakenWhenAllAreTooSmall) {
  const Text path = Write("a.ico", Ico({{16, Qt::red}, {24, Qt::blue}}));
  EXPECT_EQ(ColorOf(icons_.LoadImageW(path, 32, 32)), QColor(Qt::blue));
}

TEST_F(IconFiles, SmallestSizeAboveIsTakenWhenNoneMatches) {
  const Text path = Write("a.ico", Ico({{128, Qt::red}, {48, Qt::green}, {64, Qt::blue}}));
  EXPECT_EQ(ColorOf(icons_.LoadImageW(path, 32, 32)), QColor(Qt::green));
}

TEST_F(IconFiles, NameMayHaveAnyCaseAndUmlauts) {
  const Text path = Write(QString::fromUtf8("Küste.ICO"), Ico({{32, Qt::red}}));
  EXPECT_NE(icons_.LoadImageW(path, 32, 32), IconHandle::kNone);
}

TEST_F(IconFiles, IconsAndPicturesAreReadFromWhereThePathsFindThem) {
  OtherNamesForReading icon(paths_.ToNative(Write("A.ICO", Ico({{32, Qt::red}}))));
  EXPECT_NE(QtIcons(icon).LoadImageW(u"a.ico", 32, 32), IconHandle::kNone);
  OtherNamesForReading picture(paths_.ToNative(Write("A.JPG", Png(32, Qt::red))));
  EXPECT_NE(QtIcons(picture).LoadPicture(u"a.jpg").handle, PictureHandle::kNone);
}

TEST_F(IconFiles, WhatIsNoIconIsRefused) {
  EXPECT_EQ(icons_.LoadImageW(Write("leer.ico", ""), 32, 32), IconHandle::kNone);
  EXPECT_EQ(icons_.LoadImageW(Write("text.ico", "kein Bild"), 32, 32), IconHandle::kNone);
  EXPECT_EQ(icons_.LoadImageW(Write("bild.ico", Png(32, Qt::red)), 32, 32), IconHandle::kNone);
  EXPECT_EQ(icons_.LoadImageW(FromQt(folder_.filePath("fehlt.ico")), 32, 32), IconHandle::kNone);
  EXPECT_EQ(icons_.LoadImageW(FromQt(folder_.path()), 32, 32), IconHandle::kNone);
}

TEST_F(IconFiles, CutAndLyingFilesDoNoHarm) {
  const QByteArray good = Ico({{32, Qt::red}, {48, Qt::blue}});
  for (qsizetype size = 0; size < good.size(); size += 7) {
    icons_.DestroyIcon(icons_.LoadImageW(Write("cut.ico", good.left(size)), 32, 32));
  }
  QByteArray many = good;
  many[4] = '\xff';
  many[5] = '\xff';  // claims 65535 images
  icons_.DestroyIcon(icons_.LoadImageW(Write("many.ico", many), 32, 32));
  for (qsizetype position = 6; position < 38; ++position) {
    QByteArray changed = good;
    changed[position] = '\xff';
    icons_.DestroyIcon(icons_.LoadImageW(Write("changed.ico", changed), 32, 32));
  }
}

TEST_F(IconFiles, HugeFileIsNotRead) {
  const Text path = Write("riesig.ico", Ico({{32, Qt::red}}) + QByteArray(5 * 1024 * 1024, 'x'));
  EXPECT_EQ(icons_.LoadImageW(path, 32, 32), IconHandle::kNone);
}

TEST_F(IconFiles, HandlesAreGoodUntilReleasedOnce) {
  const Text path = Write("a.ico", Ico({{32, Qt::red}}));
  const IconHandle icon = icons_.LoadImageW(path, 32, 32);
  const ImageListHandle list = icons_.ImageList_Create(32, 32, kIlcColor32 | kIlcMask, 9, 0);
  EXPECT_TRUE(icons_.Image(list, 0).isNull());
  EXPECT_EQ(icons_.ImageList_AddIcon(list, icon), 0);
  EXPECT_EQ(icons_.ImageList_AddIcon(list, icon), 1);
  EXPECT_TRUE(icons_.DestroyIcon(icon));
  EXPECT_FALSE(icons_.DestroyIcon(icon));
  EXPECT_EQ(icons_.ImageList_AddIcon(list, icon), -1);
  EXPECT_FALSE(icons_.Image(list, 1).isNull());
  EXPECT_TRUE(icons_.Image(list, 2).isNull());
  EXPECT_TRUE(icons_.ImageList_Destroy(list));
  EXPECT_FALSE(icons_.ImageList_Destroy(list));
  EXPECT_TRUE(icons_.Image(list, 0).isNull());
  EXPECT_EQ(icons_.ImageList_AddIcon(ImageListHandle::kNone, icon), -1);
}

TEST_F(IconFiles, PictureHasItsNaturalSizeInTwips) {
  QImage image(200, 100, QImage::Format_RGB32);
  image.fill(Qt::red);
  const LoadedPicture picture = icons_.LoadPicture(WriteImage("a.jpg", image, "jpg"));
  ASSERT_NE(picture.handle, PictureHandle::kNone);
  EXPECT_EQ(picture.width, 3000);
  EXPECT_EQ(picture.height, 1500);
  EXPECT_EQ(icons_.Picture(picture.handle).size(), QSize(200, 100));
  icons_.DestroyPicture(picture.handle);
  EXPECT_TRUE(icons_.Picture(picture.handle).isNull());
}

TEST_F(IconFiles, LargePictureIsKeptSmallButReportsItsNaturalSize) {
  QImage image(6000, 3000, QImage::Format_RGB32);
  image.fill(Qt::blue);
  const LoadedPicture picture = icons_.LoadPicture(WriteImage("gross.jpg", image, "jpg"));
  ASSERT_NE(picture.handle, PictureHandle::kNone);
  EXPECT_EQ(picture.width, 90000);
  EXPECT_EQ(picture.height, 45000);
  EXPECT_LE(icons_.Picture(picture.handle).width(), 1024);
}

TEST_F(IconFiles, BombsAndCutPicturesAreRefusedOrHarmless) {
  QImage image(50, 50, QImage::Format_RGB32);
  image.fill(Qt::blue);
  const Text path = WriteImage("gut.jpg", image, "jpg");
  QFile file(ToQt(path));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QByteArray good = file.readAll();
  // The frame header's height and width follow its marker, length and precision.
  QByteArray bomb = good;
  const qsizetype frame = bomb.indexOf("\xff\xc0");
  ASSERT_GT(frame, 0);
  for (qsizetype byte = frame + 5; byte < frame + 9; ++byte) bomb[byte] = '\xff';
  EXPECT_EQ(icons_.LoadPicture(Write("bombe.jpg", bomb)).handle, PictureHandle::kNone);
  for (qsizetype size = 0; size < good.size(); size += 11) {
    icons_.DestroyPicture(icons_.LoadPicture(Write("cut.jpg", good.left(size))).handle);
  }
  EXPECT_EQ(icons_.LoadPicture(Write("text.jpg", "<svg xmlns='http://www.w3.org/2000/svg'/>")).handle,
            PictureHandle::kNone);
}

TEST_F(IconFiles, PictureThatTurnsOutLargerThanItSaidIsKeptSmallInItsShape) {
  // A GIF whose screen is 8 x 4104 and whose frame is 8 x 8.
  const QByteArray gif = QByteArray::fromHex(
      "47494638396108000810f20000ff0000db0024b6004992006d6d00924900b62400db0000ff21f904"
      "00000000002c000000000800080000031608ba1afe4ec82987bd96e8ad8bff9e218ee2619e660200"
      "3b");
  const LoadedPicture picture = icons_.LoadPicture(Write("hoch.gif", gif));
  ASSERT_NE(picture.handle, PictureHandle::kNone);
  EXPECT_EQ(picture.width, 8 * 15);
  EXPECT_EQ(picture.height, 4104 * 15);
  EXPECT_EQ(icons_.Picture(picture.handle).size(), QSize(1, 1024));
}

TEST_F(IconFiles, SmallFileThatClaimsManyPixelsOrScansIsRefused) {
  QImage image(50, 50, QImage::Format_RGB32);
  image.fill(Qt::blue);
  QByteArray good;
  QBuffer buffer(&good);
  buffer.open(QIODevice::WriteOnly);
  QImageWriter writer(&buffer, "jpg");
  writer.setProgressiveScanWrite(true);
  ASSERT_TRUE(writer.write(image));
  const qsizetype frame = good.indexOf("\xff\xc2");
  ASSERT_GT(frame, 0) << "it is not progressive";
  const auto claiming = [&](int side) {
    QByteArray bytes = good;
    qToBigEndian(static_cast<quint16>(side), bytes.data() + frame + 5);
    qToBigEndian(static_cast<quint16>(side), bytes.data() + frame + 7);
    return bytes;
  };
  EXPECT_EQ(icons_.LoadPicture(Write("weit.jpg", claiming(5793))).handle, PictureHandle::kNone);

  const qsizetype scan = good.lastIndexOf("\xff\xda");
  const QByteArray last = good.mid(scan, good.lastIndexOf("\xff\xd9") - scan);
  const auto with_scans = [&](qsizetype more) { return claiming(2000).insert(scan, last.repeated(more)); };
  EXPECT_NE(icons_.LoadPicture(Write("a.jpg", with_scans(3))).handle, PictureHandle::kNone);
  EXPECT_EQ(icons_.LoadPicture(Write("b.jpg", with_scans(200))).handle, PictureHandle::kNone);
}

TEST_F(IconFiles, ImageControlShowsThePictureAndLosesIt) {
  WindowFixture fixture;
  QImage image(20, 20, QImage::Format_RGB32);
  image.fill(Qt::green);
  const LoadedPicture picture = fixture.icons.LoadPicture(WriteImage("a.jpg", image, "jpg"));
  fixture.form.Image1.Move({0, 0, 600, 600});
  fixture.form.Image1.SetPicture(static_cast<std::uint32_t>(picture.handle));
  auto& box = fixture.Find<PictureBox>("Image1");
  EXPECT_GT(box.grab().toImage().pixelColor(20, 20).green(), 100);
  EXPECT_EQ(box.size(), QSize(40, 40));
  fixture.form.Image1.SetPicture(0);
  EXPECT_TRUE(box.Picture().isNull());
}

}  // namespace
}  // namespace platform::qt
