#include "platform/qt/fitted_label.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>
#include <QTextLayout>

#include "platform/qt/text.h"

namespace platform::qt {
namespace {

// More than any panel shows; keeps a flood of text from a server from being laid out.
constexpr qsizetype kLongestText = 8192;
constexpr int kObstacleGap = 6;
constexpr int kNarrowestLine = 40;

}  // namespace

FittedLabel::FittedLabel(QWidget* parent) : QLabel(parent) { setTextFormat(Qt::PlainText); }

void FittedLabel::ShowText(const QString& text) {
  setText(text.left(kLongestText));
  Fit();
}

void FittedLabel::SetObstacle(const QRect& obstacle) {
  if (obstacle_ == obstacle) return;
  obstacle_ = obstacle;
  Fit();
}

void FittedLabel::resizeEvent(QResizeEvent* event) {
  QLabel::resizeEvent(event);
  Fit();
}

void FittedLabel::changeEvent(QEvent* event) {
  QLabel::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) Fit();
}

void FittedLabel::Fit() {
  shows_all_ = LayOut(nullptr);
  setToolTip(shows_all_ ? QString() : PlainToolTip(text()));
  update();
}

bool FittedLabel::LayOut(QPainter* painter) const {
  QString shown = text();
  shown.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(QLatin1Char('\r'), QLatin1Char('\n'));
  while (shown.endsWith(QLatin1Char('\n'))) shown.chop(1);
  shown.replace(QLatin1Char('\n'), QChar::LineSeparator);

  QTextLayout layout(shown, font());
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  option.setTextDirection(layoutDirection());
  layout.setTextOption(option);
  const int line_height = fontMetrics().lineSpacing();
  int top = 0;
  bool fits = true;
  layout.beginLayout();
  for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    const QRect strip(0, top, width(), line_height);
    int room = width();
    if (obstacle_.intersects(strip.adjusted(0, 0, 0, kObstacleGap))) room = obstacle_.left() - kObstacleGap;
    const bool last = top + 2 * line_height > height() || room < kNarrowestLine;
    line.setLineWidth(std::max(room, kNarrowestLine));
    line.setPosition(QPointF(0, top));
    const bool more = line.textStart() + line.textLength() < shown.size();
    if (last && more) {
      fits = false;
      QString rest = shown.mid(line.textStart());
      rest.replace(QChar::LineSeparator, QLatin1Char(' '));
      if (painter != nullptr && room >= kNarrowestLine) {
        painter->drawText(QRect(0, top, room, line_height),
                          Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                          fontMetrics().elidedText(rest, Qt::ElideRight, room));
      }
      break;
    }
    if (painter != nullptr) line.draw(painter, QPointF(0, 0));
    top += line_height;
  }
  layout.endLayout();
  return fits;
}

void FittedLabel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setFont(font());
  painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, foregroundRole()));
  LayOut(&painter);
}

}  // namespace platform::qt
