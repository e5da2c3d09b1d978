#include "platform/qt/text.h"

#include <gtest/gtest.h>

#include <QTextDocument>

namespace platform::qt {
namespace {

TEST(QtText, ComesBackUnchangedEvenWithLoneSurrogatesAndNul) {
  const Text text{u'A', u'\0', char16_t{0xd800}, u'ß', char16_t{0xdc00}, u'€'};
  EXPECT_EQ(FromQt(ToQt(text)), text);
}

TEST(QtText, WindowTitleIsOneBoundedLineWithoutMarks) {
  EXPECT_EQ(WindowTitle(u"a\r\nb\tc"), "a  b c");
  EXPECT_EQ(WindowTitle(u"x[*]"), "x[*][*]");
  EXPECT_EQ(WindowTitle(std::u16string(100000, u'x')).size(), 300);
}

TEST(QtText, CellIsBounded) { EXPECT_EQ(CellText(std::u16string(1000000, u'x')).size(), 1024); }

TEST(QtText, ToolTipIsNeverMarkupOfItsText) {
  EXPECT_EQ(PlainToolTip("Alles"), "Alles");
  EXPECT_TRUE(PlainToolTip("").isEmpty());
  const QString tip = PlainToolTip("<b>fett</b>");
  QTextDocument document;
  document.setHtml(tip);
  EXPECT_EQ(document.toPlainText(), "<b>fett</b>");
}

TEST(QtText, LongToolTipIsWrappedAndBounded) {
  const QString tip = PlainToolTip(QString(100000, QLatin1Char('x')));
  EXPECT_TRUE(Qt::mightBeRichText(tip));
  EXPECT_LT(tip.size(), 5000);
}

}  // namespace
}  // namespace platform::qt
