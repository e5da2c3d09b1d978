#include "platform/qt/toolkit_ahead.h"

#include <QFontDatabase>
#include <QImageReader>

namespace platform::qt {

// families() locks the toolkit's fonts first, so whoever wants a font meanwhile waits for this reading.
// hasFamily() first asks the system's library for an alias of the name, without the lock: then the other
// thread would read everything a second time. The readers of pictures are needed by styles.
ToolkitAhead::ToolkitAhead()
    : thread_([] {
        static_cast<void>(QFontDatabase::families());
        static_cast<void>(QImageReader::supportedImageFormats());
      }) {}

ToolkitAhead::~ToolkitAhead() { thread_.join(); }

}  // namespace platform::qt
