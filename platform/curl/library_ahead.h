#pragma once
// Has libcurl loaded while the program does something else. Not for using it (library.h).

#include <thread>

namespace platform::curl {

/// Without this the first transfer waits some milliseconds more; done when this object ends.
class LibraryAhead {
 public:
  LibraryAhead();
  ~LibraryAhead();
  LibraryAhead(const LibraryAhead&) = delete;
  LibraryAhead& operator=(const LibraryAhead&) = delete;

 private:
  std::thread thread_;
};

}  // namespace platform::curl
