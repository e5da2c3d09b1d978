#include "platform/win32/ui/icons.h"

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>

#include "platform/win32/ui/row_painter.h"
#include "tests/platform/win32/ui/canvas.h"
#include "tests/platform/win32/ui/picture_bytes.h"
#include "tests/support/temp_folder.h"

namespace platform::win32 {
namespace {

constexpr std::uint32_t kRed = 0xff0000;
constexpr std::uint32_t kGreen = 0x00ff00;
constexpr std::uint32_t kBlue = 0x0000ff;

bool IsGreen(COLORREF color) { return color == RGB(0, 255, 0); }

class Win32IconsTest : public testing::Test {
 protected:
  Text Write(const std::string& name, const std::string& bytes) const {
    folder_.Write(name, bytes);
    return folder_.TextPath(name);
  }
  ImageListHandle ListWith(IconHandle icon, int side) {
    const ImageListHandle list = icons_.ImageList_Create(side, side, kIlcColor32 | kIlcMask, 1, 1);
    EXPECT_EQ(icons_.ImageList_AddIcon(list, icon), 0);
    return list;
  }
  COLORREF ColorOf(IconHandle icon) {
    const Canvas canvas(32, 32);
    ::ImageList_Draw(icons_.Images(ListWith(icon, 32)), 0, canvas.Context(), 0, 0, ILD_TRANSPARENT);
    return canvas.At(16, 16);
  }

  test_support::TempFolder folder_;
  Win32Icons icons_;
};

TEST_F(Win32IconsTest, SizeThatFitsBestIsTakenFromAnIconFile) {
  const Text path = Write("Küste.ICO", IconFile({{16, kRed}, {48, kBlue}, {32, kGreen}}));
  EXPECT_EQ(ColorOf(icons_.LoadImageW(path, 32, 32)), RGB(0, 255, 0));
}

TEST_F(Win32IconsTest, WhatIsNoIconIsRefused) {
  const std::string good = IconFile({{32, kRed}});
  EXPECT_EQ(icons_.LoadImageW(Write("leer.ico", ""), 32, 32), IconHandle::kNone);
  EXPECT_EQ(icons_.LoadImageW(Write("text.ico", "kein Bild"), 32, 32), IconHandle::kNone);
  EXPECT_EQ(icons_.LoadImageW(folder_.TextPath("fehlt.ico"), 32, 32), IconHandle::kNone);
  EXPECT_EQ(icons_.LoadImageW(folder_.TextPath(), 32, 32), IconHandle::kNone);
  EXPECT_EQ(icons_.LoadImageW(Write("gut.ico", good), 0, 32), IconHandle::kNone);
  EXPECT_EQ(icons_.LoadImageW(Write("gut.ico", good), 32, 1025), IconHandle::kNone);
  EXPECT_EQ(icons_.LoadImageW(Write("riesig.ico", good + std::string(5 << 20, 'x')), 32, 32),
            IconHandle::kNone);
  for (std::size_t size = 0; size < good.size(); size += 97)
    icons_.DestroyIcon(icons_.LoadImageW(Write("cut.ico", good.substr(0, size)), 32, 32));
}

TEST_F(Win32IconsTest, HandlesAreGoodUntilTheyAreReleasedOnce) {
  const IconHandle icon = icons_.LoadImageW(Write("a.ico", IconFile({{32, kRed}})), 32, 32);
  const ImageListHandle list = icons_.ImageList_Create(32, 32, kIlcColor32 | kIlcMask, 1, 1);
  EXPECT_EQ(icons_.ImageList_AddIcon(list, icon), 0);
  EXPECT_EQ(icons_.ImageList_AddIcon(list, icon), 1);
  EXPECT_EQ(icons_.ImageList_AddIcon(ImageListHandle::kNone, icon), -1);
  EXPECT_TRUE(icons_.DestroyIcon(icon));
  EXPECT_FALSE(icons_.DestroyIcon(icon));
  EXPECT_EQ(icons_.ImageList_AddIcon(list, icon), -1);
  _IMAGELIST* const images = icons_.Images(list);
  ASSERT_NE(images, nullptr);
  EXPECT_EQ(::ImageList_GetImageCount(images), 2) << "the list has copies";
  EXPECT_TRUE(icons_.ImageList_Destroy(list));
  EXPECT_FALSE(icons_.ImageList_Destroy(list));
  EXPECT_EQ(icons_.Images(list), nullptr);
  EXPECT_EQ(icons_.ImageList_Create(0, 32, kIlcColor32, 1, 1), ImageListHandle::kNone);
}

TEST_F(Win32IconsTest, IconOfARowIsDrawnInTheSizeOfItsPlaceWhateverItsOwn) {
  controls::ListView list;
  list.AddColumn({u"Station", 150});
  const Scale scale(96);
  for (const int side : {32, 16, 64}) {
    const IconHandle icon = icons_.LoadImageW(Write("a.ico", IconFile({{side, kGreen}})), side, side);
    list.SetImageList(static_cast<std::uint32_t>(ListWith(icon, side)));
    RowPainter painter(list, icons_, scale);
    const Canvas canvas(150, RowPainter::kRowHeight);
    RowLook look;
    look.area = {0, 0, 150, RowPainter::kRowHeight};
    look.column_widths = {150};
    painter.Paint(canvas.Context(), {.icon = 0, .cells = {u"Köln"}}, look);
    EXPECT_EQ(canvas.Count(IsGreen), RowPainter::kIconSide * RowPainter::kIconSide) << side;
    EXPECT_EQ(canvas.FirstColumn({0, 0, 150, RowPainter::kRowHeight}, IsGreen), 3) << side;
  }
}

class Win32PicturesTest : public Win32IconsTest {};

TEST_F(Win32PicturesTest, PictureHasItsNaturalSizeInTwipsAndItsColours) {
  const LoadedPicture picture = icons_.LoadPicture(Write("a.bmp", BitmapFile(200, 100, kGreen)));
  ASSERT_NE(picture.handle, PictureHandle::kNone);
  EXPECT_EQ(picture.width, 3000);
  EXPECT_EQ(picture.height, 1500);
  const Pixels* const pixels = icons_.Picture(picture.handle);
  ASSERT_NE(pixels, nullptr);
  EXPECT_EQ(pixels->width, 200);
  EXPECT_EQ(pixels->height, 100);
  const Canvas canvas(50, 50);
  DrawPicture(canvas.Context(), *pixels, {10, 10, 20, 30});
  EXPECT_EQ(canvas.Count({11, 11, 29, 39}, IsGreen), 18 * 28);
  EXPECT_EQ(canvas.Count({0, 0, 10, 50}, IsGreen), 0);
  EXPECT_EQ(canvas.Count({30, 0, 50, 50}, IsGreen), 0);
  icons_.DestroyPicture(picture.handle);
  EXPECT_EQ(icons_.Picture(picture.handle), nullptr);
}

TEST_F(Win32PicturesTest, LargePictureIsKeptSmallButReportsItsNaturalSize) {
  const LoadedPicture picture = icons_.LoadPicture(Write("gross.bmp", BitmapFile(2048, 3, kBlue)));
  ASSERT_NE(picture.handle, PictureHandle::kNone);
  EXPECT_EQ(picture.width, 2048 * 15);
  EXPECT_EQ(picture.height, 45);
  EXPECT_EQ(icons_.Picture(picture.handle)->width, 1024);
  EXPECT_EQ(icons_.Picture(picture.handle)->height, 1);
}

TEST_F(Win32PicturesTest, WhatIsNoPictureIsRefused) {
  const std::string good = BitmapFile(50, 50, kRed);
  const auto load = [this](const std::string& name, const std::string& bytes) {
    return icons_.LoadPicture(Write(name, bytes)).handle;
  };
  EXPECT_EQ(load("leer.bmp", ""), PictureHandle::kNone);
  EXPECT_EQ(load("text.bmp", "kein Bild"), PictureHandle::kNone);
  EXPECT_EQ(load("breit.bmp", BitmapFile(20'001, 1, kRed)), PictureHandle::kNone);
  EXPECT_EQ(load("bombe.bmp", BitmapFile(50, 50, kRed, 30'000)), PictureHandle::kNone);
  EXPECT_EQ(icons_.LoadPicture(folder_.TextPath("fehlt.bmp")).handle, PictureHandle::kNone);
  EXPECT_EQ(icons_.LoadPicture(folder_.TextPath()).handle, PictureHandle::kNone);
  for (std::size_t size = 0; size < good.size(); size += 97)
    icons_.DestroyPicture(icons_.LoadPicture(Write("cut.bmp", good.substr(0, size))).handle);
}

}  // namespace
}  // namespace platform::win32
