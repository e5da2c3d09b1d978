#include "platform/qt/toolkit_ahead.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QImageReader>

namespace platform::qt {

// Any question about the fonts makes the toolkit read them; whoever asks meanwhile waits for the same
// reading. So it is with the readers of pictures, of which a style needs one for its own.
ToolkitAhead::ToolkitAhead()
    : thread_([family = QGuiApplication::font().family()] {
        static_cast<void>(QFontDatabase::hasFamily(family));
        static_cast<void>(QImageReader::supportedImageFormats());
      }) {}

ToolkitAhead::~ToolkitAhead() { thread_.join(); }

}  // namespace platform::qt
