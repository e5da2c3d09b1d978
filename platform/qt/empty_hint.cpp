#include "platform/qt/empty_hint.h"

#include <QEvent>
#include <QPainter>
#include <QTimerEvent>
#include <algorithm>

namespace platform::qt {

EmptyHint::EmptyHint(QAbstractScrollArea& view) : QWidget(&view), view_(view) {
  setObjectName(QStringLiteral("empty_hint"));
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setFocusPolicy(Qt::NoFocus);
  // Not a child of the viewport, which would scroll it along with the columns.
  setGeometry(view_.viewport()->geometry());
  view_.viewport()->installEventFilter(this);
  hide();
}

void EmptyHint::ShowText(const QString& text) {
  if (text_ == text) return;
  text_ = text;
  if (text_.isEmpty()) {
    Show();
  } else {
    rest_.start(0, this);
  }
}

void EmptyHint::timerEvent(QTimerEvent* event) {
  if (event->timerId() != rest_.timerId()) return QWidget::timerEvent(event);
  Show();
}

void EmptyHint::Show() {
  rest_.stop();
  if (view_.accessibleDescription() != text_) view_.setAccessibleDescription(text_);
  setVisible(!text_.isEmpty());
  update();
}

bool EmptyHint::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize || event->type() == QEvent::Move) {
    setGeometry(view_.viewport()->geometry());
  }
  return QWidget::eventFilter(watched, event);
}

void EmptyHint::paintEvent(QPaintEvent* /*event*/) {
  // Short lines in the middle read better than one across the whole list.
  constexpr int kLettersInALine = 60;
  const int line = fontMetrics().averageCharWidth() * kLettersInALine;
  const int margin = fontMetrics().height();
  QRect room = rect().adjusted(margin, 0, -margin, 0);
  const int surplus = std::max(0, room.width() - line);
  room.adjust(surplus / 2, 0, -(surplus - surplus / 2), 0);
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::Text));
  painter.drawText(room, Qt::AlignCenter | Qt::TextWordWrap, text_);
}

}  // namespace platform::qt
