#include "platform/qt/clipboard.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QMimeData>

namespace platform::qt {
namespace {

TEST(QtClipboardTest, GivesItsText) {
  QApplication::clipboard()->setText(QString::fromUtf8("http://küste.example/live"));
  EXPECT_EQ(QtClipboard().GetText(), u"http://küste.example/live");
}

TEST(QtClipboardTest, IsEmptyWithoutText) {
  QApplication::clipboard()->clear();
  EXPECT_EQ(QtClipboard().GetText(), u"");
  auto* image = new QMimeData;
  image->setImageData(QImage(2, 2, QImage::Format_RGB32));
  QApplication::clipboard()->setMimeData(image);
  EXPECT_EQ(QtClipboard().GetText(), u"");
}

TEST(QtClipboardTest, TakesATextInPlaceOfWhatItHolds) {
  auto* image = new QMimeData;
  image->setImageData(QImage(2, 2, QImage::Format_RGB32));
  QApplication::clipboard()->setMimeData(image);
  QtClipboard().SetText(u"http://küste.example/live");
  EXPECT_EQ(QApplication::clipboard()->text(), QString::fromUtf8("http://küste.example/live"));
  EXPECT_FALSE(QApplication::clipboard()->mimeData()->hasImage());
}

}  // namespace
}  // namespace platform::qt
