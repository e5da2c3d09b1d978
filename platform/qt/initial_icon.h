#pragma once
// The icon that is drawn for a station without one: an initial on a colour, both from the station's name.
// Not which stations have an icon of their own.

#include <QColor>
#include <QPixmap>
#include <QString>

namespace platform::qt {

/// The name's first letter or digit with its accents, as a capital where there is one; empty when the name
/// has neither. What comes before it (blanks, brackets, pictures) is skipped.
[[nodiscard]] QString InitialOf(const QString& name);

/// The same for the same name in every run, regardless of letter case. All colours are equally bright: white
/// is readable on them, and they stand out from light and dark lists alike.
[[nodiscard]] QColor IconColorOf(const QString& name);

/// A square with `side` device-independent pixels. An initial that is empty, or that no font of the
/// system has, leaves room for an aerial.
[[nodiscard]] QPixmap DrawInitialIcon(const QString& initial, const QColor& color, int side, double ratio);

}  // namespace platform::qt
