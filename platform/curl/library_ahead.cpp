#include "platform/curl/library_ahead.h"

#include "platform/curl/library.h"

namespace platform::curl {

LibraryAhead::LibraryAhead() : thread_([] { static_cast<void>(LoadedLibrary()); }) {}

LibraryAhead::~LibraryAhead() { thread_.join(); }

}  // namespace platform::curl
