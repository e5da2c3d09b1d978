#pragma once
// Converts the program's texts to Qt's and back; makes texts safe where Qt would interpret markup in them.
// Not for file names; those go through platform::NativePaths.

#include <QString>

#include "ports/text.h"

namespace platform::qt {

inline QString ToQt(TextView text) {
  return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}
inline Text FromQt(const QString& text) { return text.toStdU16String(); }

/// A caption for a widget that would interpret "&" as the mark of a shortcut.
QString WithoutMnemonics(TextView caption);

/// A window title on one line, of bounded length, in which Qt finds no mark of its own to replace.
QString WindowTitle(TextView caption);

/// A text on one line for a cell: control characters become blanks, and what no screen is wide enough for is
/// left out.
QString CellText(TextView text);

/// A tooltip that shows exactly this text, never as markup; long ones are wrapped.
QString PlainToolTip(const QString& text);

}  // namespace platform::qt
