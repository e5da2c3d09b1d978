#include "platform/qt/command_button_widget.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainterPath>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <QToolTip>

#include "platform/qt/glyphs.h"
#include "platform/qt/text.h"

namespace platform::qt {

CommandButtonWidget::CommandButtonWidget(QWidget* parent) : QPushButton(parent) {}

void CommandButtonWidget::SetGlyph(controls::Glyph glyph) {
  if (glyph_ == glyph) return;
  glyph_ = glyph;
  update();
}

bool CommandButtonWidget::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip || !toolTip().isEmpty() || FittingText() == text()) {
    return QPushButton::event(event);
  }
  QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                     PlainToolTip(text().replace(QLatin1String("&&"), QLatin1String("&"))), this);
  return true;
}

QString CommandButtonWidget::FittingText() const {
  QStyleOptionButton option;
  initStyleOption(&option);
  const int room = style()->subElementRect(QStyle::SE_PushButtonContents, &option, this).width();
  return fontMetrics().elidedText(text(), Qt::ElideRight, room, Qt::TextShowMnemonic);
}

void CommandButtonWidget::paintEvent(QPaintEvent* /*event*/) {
  QStyleOptionButton option;
  initStyleOption(&option);
  QStylePainter painter(this);
  if (glyph_ == controls::Glyph::kNone) {
    option.text = FittingText();
    painter.drawControl(QStyle::CE_PushButton, option);
    return;
  }
  option.text.clear();
  painter.drawControl(QStyle::CE_PushButton, option);
  const QPalette::ColorGroup group = isEnabled() ? QPalette::Normal : QPalette::Disabled;
  DrawGlyph(painter, glyph_, rect(), palette().color(group, QPalette::ButtonText));
  if (!isFlat() || !hasFocus()) return;
  // A flat button has no frame in which a style could show the focus.
  painter.setPen(palette().color(QPalette::Highlight));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void CommandButtonWidget::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    if (!event->isAutoRepeat()) click();
    return;
  }
  QPushButton::keyPressEvent(event);
}

void CommandButtonWidget::contextMenuEvent(QContextMenuEvent* event) {
  event->accept();
  if (on_context_click) on_context_click();
}

}  // namespace platform::qt
