#include "platform/qt/fitted_label.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>
#include <QTextLayout>
#include <algorithm>
#include <utility>

#include "platform/front/named_lines.h"
#include "platform/qt/readable_color.h"
#include "platform/qt/text.h"

namespace platform::qt {
namespace {

// More than any panel shows; keeps a flood of text from a server from being laid out.
constexpr qsizetype kLongestText = 8192;
constexpr int kObstacleGap = 6;
constexpr int kNarrowestLine = 40;
constexpr int kColumnGap = 8;
/// With less room beside the picture only a value that fits there whole stands in its column.
constexpr int kNarrowestValue = 60;
/// Names get no more than this part of the width, so that a long one leaves room for the values.
constexpr double kWidestNames = 0.5;
/// One size larger.
constexpr double kTitleSize = 1.2;

}  // namespace

QString FittedLabel::Joined(const Line& line) {
  return line.name.isEmpty() ? line.value : line.name + QLatin1Char(' ') + line.value;
}

/// Lays lines below each other until the label's height ends.
class FittedLabel::Flow {
 public:
  Flow(const FittedLabel& label, QPainter* painter)
      : label_(label),
        painter_(painter),
        font_(label.TextFont()),
        metrics_(font_),
        left_(label.ValuesLeft()) {}

  /// False when the line had to be cut; what follows has no room then. `rest` is the text of what follows.
  bool Place(const Line& line, const QString& rest) {
    const int left = LeftOf(line);
    const QString text = left > 0 ? line.value : Joined(line);
    QTextLayout layout(text, font_);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setTextDirection(label_.layoutDirection());
    layout.setTextOption(option);
    layout.beginLayout();
    bool first = true;
    for (QTextLine piece = layout.createLine(); piece.isValid(); piece = layout.createLine()) {
      if (std::exchange(first, false) && left > 0) DrawName(line.name, left);
      const int room = RoomFrom(left);
      piece.setLineWidth(std::max(room, kNarrowestLine));
      piece.setPosition(QPointF(left, top_));
      const bool unfinished = piece.textStart() + piece.textLength() < text.size();
      const bool more = unfinished || !rest.isEmpty();
      const bool too_narrow = room < kNarrowestLine && (unfinished || left == 0);
      if (more && (IsLast() || too_narrow)) {
        DrawCut(text.mid(piece.textStart()) + rest, left, room);
        layout.endLayout();
        return false;
      }
      if (painter_ != nullptr) piece.draw(painter_, QPointF(0, 0));
      top_ += metrics_.lineSpacing();
    }
    layout.endLayout();
    return true;
  }

 private:
  [[nodiscard]] bool IsLast() const { return top_ + 2 * metrics_.lineSpacing() > label_.height(); }

  [[nodiscard]] int RoomFrom(int left) const { return label_.RightEnd(top_, metrics_.lineSpacing()) - left; }

  /// Where the line's value begins: in its column, or, where a picture leaves too little of that, behind its
  /// name. 0 when the line has no name, or both together need more than one line there.
  [[nodiscard]] int LeftOf(const Line& line) const {
    if (line.name.isEmpty()) return 0;
    const int value = metrics_.horizontalAdvance(line.value);
    if (RoomFrom(left_) >= std::min(value, kNarrowestValue)) return left_;
    const int behind = metrics_.horizontalAdvance(line.name + QLatin1Char(' '));
    return behind + value <= RoomFrom(0) ? behind : 0;
  }

  void DrawName(const QString& name, int left) {
    if (painter_ == nullptr) return;
    painter_->save();
    painter_->setPen(label_.NameColor());
    DrawOnOneLine(name, 0, left == left_ ? left - kColumnGap / 2 : left);
    painter_->restore();
  }
  void DrawCut(const QString& text, int left, int room) {
    if (painter_ != nullptr && room >= kNarrowestLine) DrawOnOneLine(text, left, room);
  }
  void DrawOnOneLine(const QString& text, int left, int room) {
    painter_->drawText(QRect(left, top_, room, metrics_.lineSpacing()),
                       Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                       metrics_.elidedText(text, Qt::ElideRight, room));
  }

  const FittedLabel& label_;
  QPainter* const painter_;
  const QFont font_;
  const QFontMetrics metrics_;
  const int left_;
  int top_ = 0;
};

FittedLabel::FittedLabel(QWidget* parent, controls::LabelLook look) : QLabel(parent), look_(look) {
  setTextFormat(Qt::PlainText);
}

void FittedLabel::ShowText(const QString& text) {
  setText(text.left(kLongestText));
  Split();
  Fit();
}

void FittedLabel::Split() {
  lines_.clear();
  for (const front::NamedLine& line : front::LinesOf(FromQt(text()), look_)) {
    lines_.push_back({ToQt(line.name), ToQt(line.value)});
  }
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

QFont FittedLabel::TextFont() const {
  QFont text = font();
  if (look_ != controls::LabelLook::kTitle) return text;
  text.setBold(true);
  // A font has a size in points or in pixels.
  if (text.pointSizeF() > 0) {
    text.setPointSizeF(text.pointSizeF() * kTitleSize);
  } else {
    text.setPixelSize(static_cast<int>(text.pixelSize() * kTitleSize));
  }
  return text;
}

QColor FittedLabel::NameColor() const {
  constexpr double kFaded = 0.35;
  const QColor text = palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, foregroundRole());
  const QColor ground = palette().color(QPalette::Base);
  return Readable(Mixed(text, ground, kFaded), ground, text, kContrastOfTexts);
}

int FittedLabel::ValuesLeft() const {
  const QFontMetrics metrics(TextFont());
  int widest = 0;
  for (const Line& line : lines_) {
    if (!line.name.isEmpty()) widest = std::max(widest, metrics.horizontalAdvance(line.name) + kColumnGap);
  }
  return std::min(widest, static_cast<int>(width() * kWidestNames));
}

int FittedLabel::RightEnd(int top, int line_height) const {
  const QRect strip(0, top, width(), line_height + kObstacleGap);
  return obstacle_.intersects(strip) ? obstacle_.left() - kObstacleGap : width();
}

void FittedLabel::Fit() {
  shows_all_ = LayOut(nullptr);
  setToolTip(shows_all_ ? QString() : PlainToolTip(text()));
  update();
}

bool FittedLabel::LayOut(QPainter* painter) const {
  Flow flow(*this, painter);
  for (std::size_t index = 0; index < lines_.size(); ++index) {
    QString rest;
    for (std::size_t next = index + 1; next < lines_.size(); ++next) {
      rest += QLatin1Char(' ') + Joined(lines_[next]);
    }
    if (!flow.Place(lines_[index], rest)) return false;
  }
  return true;
}

void FittedLabel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setFont(TextFont());
  painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, foregroundRole()));
  LayOut(&painter);
}

}  // namespace platform::qt
