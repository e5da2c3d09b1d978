#pragma once
// Owns one open file of the system. Not for buffering or for what is read and written through it.

#include <unistd.h>

#include <utility>

namespace platform::posix {

class FileDescriptor {
 public:
  FileDescriptor() = default;
  /// Takes ownership of what open() and the like returned; a negative number is no file.
  explicit FileDescriptor(int number) : number_(number) {}
  FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~FileDescriptor() { Close(); }

  [[nodiscard]] bool IsOpen() const { return number_ >= 0; }
  [[nodiscard]] int Get() const { return number_; }
  void Close() {
    if (IsOpen()) ::close(std::exchange(number_, -1));
  }

 private:
  int number_ = -1;
};

}  // namespace platform::posix
