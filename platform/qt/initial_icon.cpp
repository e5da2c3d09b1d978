#include "platform/qt/initial_icon.h"

#include <QApplication>
#include <QFontMetricsF>
#include <QGlyphRun>
#include <QPainter>
#include <QPainterPath>
#include <QTextBoundaryFinder>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

#include "platform/qt/readable_color.h"
#include "platform/qt/text.h"

namespace platform::qt {
namespace {

void DrawAerial(QPainter& painter, double side) {
  painter.setPen(QPen(Qt::white, side * 0.07, Qt::SolidLine, Qt::RoundCap));
  const QPointF top(side * 0.5, side * 0.42);
  painter.drawLine(top, QPointF(side * 0.5, side * 0.78));
  constexpr int kSixteenths = 16;
  for (const double radius : {0.17, 0.29}) {
    const QRectF around(top.x() - side * radius, top.y() - side * radius, side * radius * 2,
                        side * radius * 2);
    for (const int middle : {0, 180}) {
      painter.drawArc(around, (middle - 45) * kSixteenths, 90 * kSixteenths);
    }
  }
}

QFont LetterFont(int side) {
  QFont font = QApplication::font();
  font.setBold(true);
  font.setItalic(false);
  font.setPixelSize(std::max(1, static_cast<int>(std::lround(side * 0.56))));
  return font;
}

/// Whether any font of the system has the letter; without one an empty box would be drawn.
bool CanDraw(const QString& letter, const QFont& font) {
  QTextLayout layout(letter, font);
  layout.beginLayout();
  layout.createLine();
  layout.endLayout();
  const QList<QGlyphRun> runs = layout.glyphRuns();
  return !runs.isEmpty() &&
         std::ranges::none_of(runs, [](const QGlyphRun& run) { return run.glyphIndexes().contains(0U); });
}

void DrawLetter(QPainter& painter, const QString& letter, const QFont& font, double side) {
  QPainterPath path;
  path.addText(0, 0, font, letter);
  const QRectF box = path.boundingRect();
  // Capitals stand in the middle; what reaches beyond them (accents, tails) keeps its place.
  const double baseline = (side + QFontMetricsF(font).capHeight()) / 2;
  const double scale = std::min(1.0, side * 0.8 / std::max(1.0, box.width()));
  painter.translate(side / 2, baseline);
  painter.scale(scale, scale);
  painter.translate(-box.center().x(), 0);
  painter.fillPath(path, Qt::white);
}

}  // namespace

QString InitialOf(const QString& name) {
  QTextBoundaryFinder graphemes(QTextBoundaryFinder::Grapheme, name);
  qsizetype start = 0;
  for (qsizetype end = graphemes.toNextBoundary(); end >= 0; end = graphemes.toNextBoundary()) {
    const QString one = name.mid(start, end - start);
    start = end;
    if (!one.isEmpty() && QChar::isLetterOrNumber(one.toUcs4().first())) {
      const QString capital = one.toUpper();
      // Some letters have no capital of their own but two.
      return capital.size() == one.size() ? capital : one;
    }
  }
  return {};
}

QColor IconColorOf(const QString& name) { return ToQt(front::ColorOfName(FromQt(name.toCaseFolded()))); }

QPixmap DrawInitialIcon(const QString& initial, const QColor& color, int side, double ratio) {
  QPixmap icon(QSize(side, side) * ratio);
  icon.setDevicePixelRatio(ratio);
  icon.fill(Qt::transparent);
  QPainter painter(&icon);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(color);
  const double margin = side / 32.0;
  const double corner = side * 0.19;
  painter.drawRoundedRect(QRectF(margin, margin, side - 2 * margin, side - 2 * margin), corner, corner);
  painter.setBrush(Qt::NoBrush);
  const QFont font = LetterFont(side);
  if (CanDraw(initial, font)) {
    DrawLetter(painter, initial, font, side);
  } else {
    DrawAerial(painter, side);
  }
  return icon;
}

}  // namespace platform::qt
