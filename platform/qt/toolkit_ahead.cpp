#include "platform/qt/toolkit_ahead.h"

#include <QFontDatabase>
#include <QImageReader>

namespace platform::qt {

// Whoever asks for a font meanwhile waits for this reading, as long as the question is one that the toolkit
// locks its fonts for at once. Some ask the system's library for an alias of the name first; a thread that
// wants a font at that time would read everything a second time. So it is with the readers of pictures, of
// which a style needs one.
ToolkitAhead::ToolkitAhead()
    : thread_([] {
        static_cast<void>(QFontDatabase::families());
        static_cast<void>(QImageReader::supportedImageFormats());
      }) {}

ToolkitAhead::~ToolkitAhead() { thread_.join(); }

}  // namespace platform::qt
