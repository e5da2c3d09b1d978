#include "platform/qt/status_strip.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QEvent>
#include <QPainter>
#include <QTimerEvent>
#include <algorithm>

#include "platform/qt/text.h"

namespace platform::qt {
namespace {

/// The toolkit asks every factory for every widget; what this one does not know gets its usual interface.
QAccessibleInterface* MakeAccessible(const QString& /*class_name*/, QObject* object) {
  if (auto* strip = dynamic_cast<StatusStrip*>(object)) {
    return new QAccessibleWidget(strip, QAccessible::StatusBar);
  }
  auto* line = dynamic_cast<QLabel*>(object);
  const bool within_strip = line != nullptr && dynamic_cast<StatusStrip*>(line->parent()) != nullptr;
  return within_strip ? new QAccessibleWidget(line, QAccessible::Notification) : nullptr;
}

}  // namespace

StatusStrip::StatusStrip(QWidget* parent) : QWidget(parent) {
  QAccessible::installFactory(&MakeAccessible);
  line_ = new QLabel(this);
  line_->setTextFormat(Qt::PlainText);
  setFocusPolicy(Qt::NoFocus);
}

void StatusStrip::ShowText(const QString& text) {
  if (text_ == text) return;
  text_ = text;
  Fit();
  line_->setAccessibleName(text_);
  rest_.stop();
  switch (announced_.Show(FromQt(text_))) {
    case front::AnnouncedText::Turn::kNow:
      return Announce();
    case front::AnnouncedText::Turn::kWhenItRests:
      return rest_.start(front::AnnouncedText::kRest, this);
    case front::AnnouncedText::Turn::kNever:
      break;
  }
}

void StatusStrip::Announce() {
  rest_.stop();
  // A notification that comes into view is what screen readers speak by themselves.
  QAccessibleEvent shown(line_, QAccessible::ObjectShow);
  QAccessible::updateAccessibility(&shown);
  Announced.Raise(text_);
}

void StatusStrip::timerEvent(QTimerEvent* event) {
  if (event->timerId() != rest_.timerId()) return QWidget::timerEvent(event);
  Announce();
}

void StatusStrip::Fit() {
  // As far from the window's edge as the panels above.
  const int margin = height() * 5 / 12;
  const int room = std::max(0, width() - 2 * margin);
  line_->setGeometry(margin, 1, room, std::max(0, height() - 1));
  const QString shown = line_->fontMetrics().elidedText(text_, Qt::ElideRight, room);
  if (line_->text() != shown) line_->setText(shown);
  setToolTip(shown == text_ ? QString() : PlainToolTip(text_));
}

void StatusStrip::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  Fit();
}

void StatusStrip::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) Fit();
}

void StatusStrip::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.fillRect(0, 0, width(), 1, palette().color(QPalette::Mid));
}

}  // namespace platform::qt
