#pragma once
// Binds the controls that show or set a number or a picture: progress bar, scroll bar, image.
// Not text fields.

#include "controls/value_controls.h"
#include "platform/qt/icons.h"
#include "platform/qt/input_binding.h"
#include "platform/qt/peak_bar.h"
#include "platform/qt/picture_box.h"
#include "platform/qt/slider_widget.h"

namespace platform::qt {

class ProgressBarBinding final : public WidgetBinding {
 public:
  ProgressBarBinding(controls::ProgressBar& bar, PeakBar& widget, const TwipScale& scale);

 private:
  void Follow();
  controls::ProgressBar& bar_;
  PeakBar& widget_;
};

class ScrollBarBinding final : public InputBinding {
 public:
  ScrollBarBinding(controls::ScrollBar& bar, SliderWidget& widget, const TwipScale& scale,
                   QtMessageLoop& loop);

 private:
  void Follow();
  void TakeUsersValue(int value);
  controls::ScrollBar& bar_;
  SliderWidget& widget_;
  int values_to_come_ = 0;  // which the widget already shows
  bool following_ = false;
};

class ImageBinding final : public WidgetBinding {
 public:
  ImageBinding(controls::Image& image, PictureBox& widget, const TwipScale& scale, const QtIcons& icons);

 private:
  void Follow();
  controls::Image& image_;
  PictureBox& widget_;
  const QtIcons& icons_;
  std::uint32_t shown_ = 0;
};

}  // namespace platform::qt
