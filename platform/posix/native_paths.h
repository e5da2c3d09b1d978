#pragma once
// Adapter: file names of a POSIX system as the program's text and back, without loss.
// Not for taking paths apart or for touching the disk.

#include <string>

#include "ports/native_paths.h"

namespace platform::posix {

/// File names are UTF-8. A byte that is not, and a "\" inside a name, are represented by the lone low
/// surrogate U+DC00 plus the byte, which no valid text contains; ToNative(FromNative(x)) is x for every x. In
/// ToNative a "/" stays a separator, and any other lone surrogate becomes U+FFFD. Letter case counts
/// everywhere.
class PosixNativePaths final : public NativePaths {
 public:
  Text FromNative(const std::string& native) override;
  std::string ToNative(const Text& path) override;
  std::string ToNativeForReading(const Text& path) override { return ToNative(path); }
};

/// True for a path that the system can be asked about: not empty and without a NUL, at which the system would
/// cut it.
bool IsUsablePath(const std::string& native);

}  // namespace platform::posix
