#pragma once
// Turns the address of an item (http, https, a file address or a file name) into a URI.
// Not the opening, and not the addresses inside playlists.

#include <string>

#include "ports/interface_call.h"
#include "ports/native_paths.h"
#include "ports/text.h"

namespace platform::gstreamer {

struct Address {
  HResult result = kEInvalidArg;  ///< kSOk when `uri` can be opened
  std::string uri;
  bool local_file = false;
};

/// Accepts "http://" and "https://" (any letter case; spaces and letters beyond ASCII are escaped), "file://"
/// addresses, and file names with either separator. Blanks and control characters (U+0000 to U+0020, U+007F)
/// at the ends are dropped. Another scheme gives MF_E_UNSUPPORTED_SCHEME, a pipe, socket or device
/// MF_E_UNSUPPORTED_BYTESTREAM_TYPE, no text E_INVALIDARG.
Address ResolveAddress(const Text& untrimmed, NativePaths& native_paths);

/// UTF-8 for UTF-16; what is not valid UTF-16 becomes U+FFFD.
std::string Utf8FromText(const Text& text);
/// UTF-16 for UTF-8; bytes that are not UTF-8 become U+FFFD.
Text TextFromUtf8(const char* utf8);

}  // namespace platform::gstreamer
