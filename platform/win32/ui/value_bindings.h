#pragma once
// Binds the controls that show or set a number or a picture: progress bar, scroll bar, image. Not texts.

#include "controls/value_controls.h"
#include "platform/win32/ui/control_binding.h"
#include "platform/win32/ui/dark_controls.h"
#include "platform/win32/ui/dark_mode.h"
#include "platform/win32/ui/icons.h"

namespace platform::win32 {

/// A bar that stands upright, with zones for quiet, loud and very loud. The system's progress bar moves too
/// slowly for peaks, so its window is painted here.
class ProgressBarBinding final : public ControlBinding {
 public:
  ProgressBarBinding(controls::ProgressBar& bar, HWND parent, const Surroundings& around);
  ~ProgressBarBinding() override;

  /// For the window's procedure.
  void Paint() const;

 private:
  void Follow();
  [[nodiscard]] int HeightOf(double level) const;
  [[nodiscard]] double Level() const;

  controls::ProgressBar& bar_;
  int shown_height_ = -1;
};

/// Drawn as a slider.
class ScrollBarBinding final : public ControlBinding {
 public:
  ScrollBarBinding(controls::ScrollBar& bar, HWND parent, const Surroundings& around);

  void Scrolled(unsigned int code) override;
  /// In the dark it is painted by dark_parts.h.
  std::intptr_t Notice(tagNMHDR& notice) override;
  void FollowScale() override;
  void FollowColors() override;

 protected:
  [[nodiscard]] PixelPlace Fitted(const PixelPlace& place) const override;

 private:
  void Follow();

  controls::ScrollBar& bar_;
  int values_to_come_ = 0;
  bool dragging_ = false;
  Brightness shown_ = ShownBrightness();
  PointedPart pointed_;
};

class ImageBinding final : public ControlBinding {
 public:
  ImageBinding(controls::Image& image, HWND parent, const Surroundings& around, const Win32Icons& icons);

  void Draw(const tagDRAWITEMSTRUCT& place) override;

 private:
  controls::Image& image_;
  const Win32Icons& icons_;
  std::uint32_t shown_ = 0;
};

}  // namespace platform::win32
