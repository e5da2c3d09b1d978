#pragma once
// Has the toolkit read which fonts there are while the program does something else, because the first text
// has to wait for that. Not for choosing a font.

#include <thread>

namespace platform::qt {

/// Made after the application; reading is over when this object ends.
class FontsAhead {
 public:
  FontsAhead();
  ~FontsAhead();
  FontsAhead(const FontsAhead&) = delete;
  FontsAhead& operator=(const FontsAhead&) = delete;

 private:
  std::thread thread_;
};

}  // namespace platform::qt
