#pragma once
// Has the toolkit read which fonts and which readers of pictures there are while the program does something
// else, because the window's first picture has to wait for both. Not for choosing any.

#include <thread>

namespace platform::qt {

/// Made after the application; reading is over when this object ends.
class ToolkitAhead {
 public:
  ToolkitAhead();
  ~ToolkitAhead();
  ToolkitAhead(const ToolkitAhead&) = delete;
  ToolkitAhead& operator=(const ToolkitAhead&) = delete;

 private:
  std::thread thread_;
};

}  // namespace platform::qt
