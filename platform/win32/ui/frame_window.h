#pragma once
// The window of a frame: a container of controls with a title, a panel, or nothing of its own to be seen.
// Not its place, which a ControlBinding follows.

#include <memory>

#include "controls/captioned.h"
#include "platform/win32/ui/control_binding.h"

namespace platform::win32 {

class FrameWindow final : public Window {
 public:
  FrameWindow(controls::Frame& frame, HWND parent, const Scale& scale);

 protected:
  std::optional<std::intptr_t> OnMessage(const Message& message) override;
  [[nodiscard]] int Ground() const override;

 private:
  void Paint() const;
  void PaintTitled(HDC context) const;

  controls::Frame& frame_;
  const Scale& scale_;
};

class FrameBinding final : public ControlBinding {
 public:
  FrameBinding(controls::Frame& frame, HWND parent, const Surroundings& around);

  /// What it contains.
  [[nodiscard]] HWND Container() const { return window_->Handle(); }

 protected:
  [[nodiscard]] PixelPlace Fitted(const PixelPlace& place) const override;

 private:
  FrameBinding(controls::Frame& frame, std::unique_ptr<FrameWindow> window, const Surroundings& around);
  void Follow();

  controls::Frame& frame_;
  std::unique_ptr<FrameWindow> window_;
};

}  // namespace platform::win32
