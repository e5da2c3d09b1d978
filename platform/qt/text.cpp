#include "platform/qt/text.h"

#include <QTextDocument>
#include <algorithm>

namespace platform::qt {
namespace {

constexpr std::size_t kLongestCell = 1024;
constexpr std::size_t kLongestTitle = 300;
constexpr qsizetype kLongestToolTipLine = 80;
constexpr qsizetype kLongestToolTip = 4000;

QString OnOneLine(TextView text, std::size_t longest) {
  QString line = ToQt(text.substr(0, std::min(text.size(), longest)));
  for (QChar& unit : line) {
    if (unit.category() == QChar::Other_Control || unit == QChar::LineSeparator ||
        unit == QChar::ParagraphSeparator) {
      unit = QLatin1Char(' ');
    }
  }
  return line;
}

}  // namespace

QString WithoutMnemonics(TextView caption) {
  return ToQt(caption).replace(QLatin1Char('&'), QLatin1String("&&"));
}

QString WindowTitle(TextView caption) {
  return OnOneLine(caption, kLongestTitle).replace(QLatin1String("[*]"), QLatin1String("[*][*]"));
}

QString CellText(TextView text) { return OnOneLine(text, kLongestCell); }

QString PlainToolTip(const QString& text) {
  if (text.size() <= kLongestToolTipLine && !Qt::mightBeRichText(text)) return text;
  return QLatin1String("<p style=\"white-space:pre-wrap\">") + text.left(kLongestToolTip).toHtmlEscaped() +
         QLatin1String("</p>");
}

}  // namespace platform::qt
