#include "platform/gstreamer/framework.h"

#include <gst/gst.h>

#include <utility>

namespace platform::gstreamer {

Framework::Framework(Start start) : start_(std::move(start)) {
  if (!start_) start_ = [] { return gst_init_check(nullptr, nullptr, nullptr) != FALSE; };
}

void Framework::LoadAhead() {
  if (ahead_.valid()) return;
  ahead_ = std::async(std::launch::async, [this] { static_cast<void>(Ready()); });
}

bool Framework::Ready() {
  std::call_once(once_, [this] {
    ready_ = start_();
    was_started_ = true;
  });
  return ready_;
}

}  // namespace platform::gstreamer
