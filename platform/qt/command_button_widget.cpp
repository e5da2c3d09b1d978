#include "platform/qt/command_button_widget.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QIcon>
#include <QImage>
#include <QKeyEvent>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <QToolTip>
#include <algorithm>
#include <utility>

#include "platform/qt/faint_frames.h"
#include "platform/qt/readable_color.h"
#include "platform/qt/text.h"

namespace platform::qt {
namespace {

constexpr int kSmallestGlyph = 16;
/// Between a style's icon and its text.
constexpr int kGap = 4;
constexpr QRgb kWarningOnLight = 0xffd02020;
constexpr QRgb kWarningOnDark = 0xffff5050;

/// Some styles give a main button the frame that others have for the focus.
void DrawFocus(QPainter& painter, const QRect& button, const QColor& color) {
  constexpr int kInset = 3;
  constexpr double kCorner = 2.0;
  const QRectF inside = QRectF(button).adjusted(kInset + 0.5, kInset + 0.5, -kInset - 0.5, -kInset - 0.5);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(color, 1.0));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(inside, kCorner, kCorner);
}

}  // namespace

CommandButtonWidget::CommandButtonWidget(QWidget* parent) : QPushButton(parent) {
  setAttribute(Qt::WA_Hover);
}

void CommandButtonWidget::SetGlyph(controls::Glyph glyph, controls::GlyphPlace place) {
  if (glyph_ == glyph && place_ == place) return;
  glyph_ = glyph;
  place_ = place;
  update();
}

void CommandButtonWidget::SetRole(controls::ButtonRole role) {
  if (std::exchange(role_, role) != role) update();
}

bool CommandButtonWidget::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip || !toolTip().isEmpty() || FittingText() == text()) {
    return QPushButton::event(event);
  }
  QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                     PlainToolTip(text().replace(QLatin1String("&&"), QLatin1String("&"))), this);
  return true;
}

bool CommandButtonWidget::HasIcon() const {
  return glyph_ != controls::Glyph::kNone && place_ == controls::GlyphPlace::kBeforeCaption;
}

int CommandButtonWidget::GlyphSide() const { return std::max(kSmallestGlyph, fontMetrics().height()); }

QString CommandButtonWidget::FittingText() const {
  QStyleOptionButton option;
  initStyleOption(&option);
  int room = style()->subElementRect(QStyle::SE_PushButtonContents, &option, this).width();
  if (HasIcon()) room -= GlyphSide() + kGap;
  return fontMetrics().elidedText(text(), Qt::ElideRight, room, Qt::TextShowMnemonic);
}

QColor CommandButtonWidget::InkOn(const QStyleOptionButton& button) const {
  const QColor text = button.palette.color(QPalette::ButtonText);
  const bool pointed_at = isEnabled() && button.state.testFlag(QStyle::State_MouseOver);
  if (role_ != controls::ButtonRole::kDeleting || !pointed_at) return text;
  const QColor ground = GroundOf(button);
  const QRgb red = ground.lightness() < text.lightness() ? kWarningOnDark : kWarningOnLight;
  return Readable(QColor::fromRgb(red), ground, text, kContrastOfTexts);
}

/// As the style paints it: a button that is pointed at is lighter or darker than the palette has it.
QColor CommandButtonWidget::GroundOf(const QStyleOptionButton& button) const {
  QImage picture(button.rect.size(), QImage::Format_ARGB32_Premultiplied);
  picture.fill(button.palette.color(QPalette::Window));
  QPainter painter(&picture);
  style()->drawControl(QStyle::CE_PushButtonBevel, &button, &painter, this);
  painter.end();
  return picture.pixelColor(picture.rect().center());
}

const QPixmap& CommandButtonWidget::Picture(const QStyleOptionButton& button, const QColor& ink) {
  const Painted wanted{glyph_,
                       GlyphSide(),
                       devicePixelRatioF(),
                       {ink, button.palette.color(QPalette::Button)},
                       QIcon::themeName()};
  if (picture_.isNull() || !(wanted == painted_)) {
    picture_ = GlyphPicture(wanted.glyph, wanted.side, wanted.dots, wanted.colors);
    painted_ = wanted;
  }
  return picture_;
}

void CommandButtonWidget::paintEvent(QPaintEvent* /*event*/) {
  QStyleOptionButton option;
  initStyleOption(&option);
  const QColor ink = InkOn(option);
  QStylePainter painter(this);
  if (glyph_ == controls::Glyph::kNone || HasIcon()) {
    option.text = FittingText();
    if (HasIcon()) {
      // Not to be made grey again for a disabled button, whose ink already is.
      for (const auto mode : {QIcon::Normal, QIcon::Disabled, QIcon::Active, QIcon::Selected}) {
        option.icon.addPixmap(Picture(option, ink), mode);
      }
      option.iconSize = QSize(GlyphSide(), GlyphSide());
    }
    option.palette.setColor(QPalette::ButtonText, ink);
    painter.drawControl(QStyle::CE_PushButton, option);
    // A main button has a frame of its own colour.
    if (!isDefault()) OutlineWhereFaint(painter, *this, rect(), QPalette::Button);
    if (role_ == controls::ButtonRole::kMain && hasFocus())
      DrawFocus(painter, rect(), palette().color(QPalette::Highlight));
    return;
  }
  option.text.clear();
  painter.drawControl(QStyle::CE_PushButton, option);
  QRect place(0, 0, GlyphSide(), GlyphSide());
  place.moveCenter(rect().center());
  painter.drawPixmap(place, Picture(option, ink));
  if (!isFlat()) OutlineWhereFaint(painter, *this, rect(), QPalette::Button);
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
