// The least that a window of this toolkit costs: what the program's start is compared with. Shows nothing.

#include <QApplication>
#include <QWidget>

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QWidget window;
  window.setWindowTitle(QStringLiteral("empty"));
  window.resize(760, 520);
  window.show();
  return QApplication::exec();
}
