#pragma once
// Adapter: file names as text and as the bytes by which ports that know no text name a file.
// Not for the form in which the system's operations take them (platform/win32/system/system_path.h).

#include "ports/native_paths.h"

namespace platform::win32 {

/// The system's own names are UTF-16 like the program's text, and "\" is its separator, so text stays as it
/// is; the bytes are its UTF-8. A surrogate without its partner, which a name may hold, is encoded by itself,
/// as three bytes. Bytes that are neither become U+FFFD. Public reference: the encoding WTF-8,
/// https://simonsapin.github.io/wtf-8/.
class Win32NativePaths final : public NativePaths {
 public:
  Text FromNative(const std::string& native) override;
  std::string ToNative(const Text& path) override;
  std::string ToNativeForReading(const Text& path) override { return ToNative(path); }
};

}  // namespace platform::win32
