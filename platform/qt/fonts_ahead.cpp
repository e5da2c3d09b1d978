#include "platform/qt/fonts_ahead.h"

#include <QFontDatabase>
#include <QGuiApplication>

namespace platform::qt {

// Any question about the fonts makes the toolkit read them; whoever asks meanwhile waits for the same
// reading.
FontsAhead::FontsAhead()
    : thread_([family = QGuiApplication::font().family()] {
        static_cast<void>(QFontDatabase::hasFamily(family));
      }) {}

FontsAhead::~FontsAhead() { thread_.join(); }

}  // namespace platform::qt
