#pragma once
// Colours that can be told from their ground, as WCAG 2.1 measures it. Not which colours a control has.

#include <QColor>

namespace platform::qt {

/// What WCAG 2.1 wants of parts of a control (criterion 1.4.11) and of texts (1.4.3).
inline constexpr double kContrastOfParts = 3.0;
inline constexpr double kContrastOfTexts = 4.5;

/// The contrast ratio, 1 to 21.
[[nodiscard]] double ContrastOf(const QColor& one, const QColor& other);

/// `color`, moved no further towards `text` than it takes to stand out from `ground` by the wanted contrast.
[[nodiscard]] QColor Readable(const QColor& color, const QColor& ground, const QColor& text, double wanted);

/// Between the two colours; 0 is the first, 1 the second.
[[nodiscard]] QColor Mixed(const QColor& first, const QColor& second, double part);

}  // namespace platform::qt
