#pragma once
// The toolkit's colours for what platform/front/colors.h does. Not which colours a control has.

#include <QColor>

#include "platform/front/colors.h"

namespace platform::qt {

using front::kContrastOfParts;
using front::kContrastOfTexts;

[[nodiscard]] QColor ToQt(const front::Rgb& color);
[[nodiscard]] double ContrastOf(const QColor& one, const QColor& other);
[[nodiscard]] QColor Readable(const QColor& color, const QColor& ground, const QColor& text, double wanted);
[[nodiscard]] QColor Mixed(const QColor& first, const QColor& second, double part);

}  // namespace platform::qt
