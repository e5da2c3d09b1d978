#include "demo/control_report.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QDialog>
#include <QIcon>
#include <QMessageBox>
#include <QPalette>
#include <QPushButton>
#include <QSaveFile>
#include <QStringList>
#include <QVariant>
#include <utility>

#include "platform/qt/desktop_colors.h"
#include "platform/qt/status_strip.h"

namespace demo {
namespace {

QString Line(const QString& name, const QPoint& place, const QSize& size, QString text) {
  text.replace("\\", "\\\\").replace("\r\n", "\n").replace("\n", "\\n");
  return QStringLiteral("%1 %2 %3 %4 %5 %6\n")
      .arg(name)
      .arg(place.x())
      .arg(place.y())
      .arg(size.width())
      .arg(size.height())
      .arg(text);
}

QString Line(const QString& name, const QWidget& widget, const QString& text) {
  return Line(name, widget.mapToGlobal(QPoint(0, 0)), widget.size(), text);
}

/// What a control shows, whatever its kind.
QString TextOf(const QWidget& widget) {
  if (const auto* strip = dynamic_cast<const platform::qt::StatusStrip*>(&widget)) return strip->WholeText();
  for (const char* property : {"currentText", "text", "title", "value"}) {
    const QVariant value = widget.property(property);
    if (value.isValid()) return value.toString();
  }
  return {};
}

QString Rows(const QAbstractItemView& list, const QString& owner) {
  if (list.model() == nullptr) return {};
  QString lines;
  for (int row = 0; row < list.model()->rowCount(list.rootIndex()); ++row) {
    const QRect place = list.visualRect(list.model()->index(row, 0, list.rootIndex()));
    if (!list.viewport()->rect().contains(place.center())) continue;
    QStringList columns;
    for (int column = 0; column < list.model()->columnCount(list.rootIndex()); ++column) {
      columns += list.model()->index(row, column, list.rootIndex()).data().toString();
    }
    const QString name = QStringLiteral("%1%2[%3]").arg(owner, list.objectName()).arg(row);
    lines += Line(name, list.viewport()->mapToGlobal(place.topLeft()), place.size(), columns.join(" | "));
  }
  return lines;
}

QString Box(const QMessageBox& box) {
  QString lines = Line("box", box, box.text());
  int index = 0;
  for (const QAbstractButton* button : box.buttons()) {
    lines += Line(QStringLiteral("box[%1]").arg(index++), *button, button->text());
  }
  return lines;
}

QString Window(const QWidget& window) {
  if (const auto* box = qobject_cast<const QMessageBox*>(&window)) return Box(*box);
  const bool dialog = qobject_cast<const QDialog*>(&window) != nullptr;
  const QString owner = dialog ? QStringLiteral("dialog.") : QString();
  QString lines = Line(dialog ? "dialog" : "window", window, window.windowTitle());
  for (const QWidget* widget : window.findChildren<QWidget*>()) {
    const QString name = widget->objectName();
    // Qt gives the inner parts of its widgets names that begin so.
    if (name.isEmpty() || name.startsWith("qt_") || !widget->isVisible()) continue;
    lines += Line(owner + name, *widget, TextOf(*widget));
    if (const auto* list = qobject_cast<const QAbstractItemView*>(widget)) lines += Rows(*list, owner);
  }
  return lines;
}

}  // namespace

ControlReport::ControlReport(QString path, QObject* parent) : QObject(parent), path_(std::move(path)) {
  connect(&timer_, &QTimer::timeout, this, [this] { WriteIfChanged(); });
  timer_.start(100);
}

void ControlReport::WriteIfChanged() {
  QString lines;
  for (const QWidget* window : QApplication::topLevelWidgets()) {
    const bool real = window->windowType() == Qt::Window || window->windowType() == Qt::Dialog;
    if (real && window->isVisible()) lines += Window(*window);
  }
  if (lines == written_) return;
  QSaveFile file(path_);
  if (!file.open(QIODevice::WriteOnly)) return;
  file.write(lines.toUtf8());
  if (file.commit()) written_ = lines;
}

}  // namespace demo

namespace {

/// White on black, as desktops have it for those who see badly.
QPalette ContrastPalette() {
  QPalette palette(Qt::black, Qt::black);
  constexpr QRgb kHighlight = 0xff1aebff;
  for (const auto role : {QPalette::Light, QPalette::Midlight, QPalette::Mid, QPalette::Dark}) {
    palette.setColor(role, Qt::white);
  }
  palette.setColor(QPalette::Highlight, QColor::fromRgb(kHighlight));
  palette.setColor(QPalette::HighlightedText, Qt::black);
  return palette;
}

/// Colours and icons that a desktop would give the program.
void TakeDesktopsLook() {
  const QString colors = qEnvironmentVariable("FUNKHAUS_DEMO_COLORS");
  if (colors == QLatin1String("dark")) QApplication::setPalette(platform::qt::DesktopColors::DarkPalette());
  if (colors == QLatin1String("contrast")) QApplication::setPalette(ContrastPalette());
  const QString icons = qEnvironmentVariable("FUNKHAUS_DEMO_ICONS");
  if (!icons.isEmpty()) QIcon::setThemeName(icons);
}

/// Runs when the program makes its QApplication, so the program needs no knowledge of the report.
void StartControlReport() {
  const QString path = qEnvironmentVariable("FUNKHAUS_DEMO_REPORT");
  if (!path.isEmpty()) new demo::ControlReport(path, QCoreApplication::instance());
  // The application's own colours come later than this.
  QTimer::singleShot(0, QCoreApplication::instance(), &TakeDesktopsLook);
}

}  // namespace

Q_COREAPP_STARTUP_FUNCTION(StartControlReport)
