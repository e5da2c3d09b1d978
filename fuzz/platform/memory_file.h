#pragma once
// A file in memory that has a name, for code that reads files by name. Not for writing to by others.

#include <sys/mman.h>
#include <unistd.h>

#include <QApplication>
#include <string>

#include "fuzz/fuzz_input.h"
#include "ports/native_paths.h"

namespace fuzz {

class MemoryFile {
 public:
  explicit MemoryFile(std::string_view bytes) : file_(memfd_create("fuzz", MFD_CLOEXEC)) {
    Require(file_ >= 0);
    while (!bytes.empty()) {
      const ssize_t count = write(file_, bytes.data(), bytes.size());
      Require(count > 0);
      bytes.remove_prefix(static_cast<std::size_t>(count));
    }
  }
  ~MemoryFile() { close(file_); }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  [[nodiscard]] platform::Text Path() const {
    const std::string name = "/proc/self/fd/" + std::to_string(file_);
    return {name.begin(), name.end()};
  }

 private:
  int file_;
};

class PlainPaths final : public platform::NativePaths {
 public:
  platform::Text FromNative(const std::string& native) override {
    return QString::fromUtf8(native.data(), static_cast<qsizetype>(native.size())).toStdU16String();
  }
  std::string ToNative(const platform::Text& path) override {
    return QString::fromStdU16String(path).toStdString();
  }
  std::string ToNativeForReading(const platform::Text& path) override { return ToNative(path); }
};

/// The application object that images and widgets need, without a display; made once.
inline void NeedWindows() {
  static int count = 1;
  static char name[] = "fuzz";
  static char* arguments[] = {name, nullptr};
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_LOGGING_RULES", "*=false");
  static const QApplication application(count, arguments);
}

}  // namespace fuzz
