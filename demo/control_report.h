#pragma once
// Reports to the demonstration's driver where on the screen each named control is and what it shows.
// Not part of the program: only the demonstration's build of it carries this.

#include <QObject>
#include <QString>
#include <QTimer>

namespace demo {

/// Writes the report file again whenever something in it has changed, in one step, ten times a second at
/// most. UTF-8, one line per visible control that has an object name:
///
///   name x y width height text
///
/// in screen pixels, without blanks in the name; the text goes to the end of the line, its line ends written
/// as "\n" and its backslashes as "\\". Rows of a list follow as "LIST[0]", "LIST[1]" ... with their columns
/// separated by " | "; only visible rows are reported. A window is "window", a message box "box", its buttons
/// "box[0]", "box[1]" ..., another dialog "dialog" and what is in it "dialog.NAME".
///
/// Whoever carries this also takes colours ("dark", "contrast") from FUNKHAUS_DEMO_COLORS and the name of a
/// theme of icons from FUNKHAUS_DEMO_ICONS, which a desktop would give otherwise.
class ControlReport : public QObject {
 public:
  ControlReport(QString path, QObject* parent);

 private:
  void WriteIfChanged();

  QString path_;
  QString written_;
  QTimer timer_;
};

}  // namespace demo
