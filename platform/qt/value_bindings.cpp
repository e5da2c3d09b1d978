#include "platform/qt/value_bindings.h"

namespace platform::qt {

ProgressBarBinding::ProgressBarBinding(controls::ProgressBar& bar, PeakBar& widget, const TwipScale& scale)
    : WidgetBinding(bar, widget, scale), bar_(bar), widget_(widget) {
  subscriptions_ += bar.Changed.Subscribe([this] { Follow(); });
  Follow();
}

void ProgressBarBinding::Follow() {
  const int range = bar_.Maximum() - bar_.Minimum();
  widget_.SetLevel(range > 0 ? static_cast<double>(bar_.Value() - bar_.Minimum()) / range : 0.0);
}

ScrollBarBinding::ScrollBarBinding(controls::ScrollBar& bar, SliderWidget& widget, const TwipScale& scale,
                                   QtMessageLoop& loop)
    : InputBinding(bar, widget, scale, loop), bar_(bar), widget_(widget) {
  subscriptions_ += bar.Changed.Subscribe([this] { Follow(); });
  QObject::connect(&widget_, &QSlider::valueChanged, &context_, [this](int value) { TakeUsersValue(value); });
  QObject::connect(&widget_, &QSlider::sliderReleased, &context_, [this] { Follow(); });
  Follow();
}

void ScrollBarBinding::Follow() {
  const Following guard(following_);
  if (widget_.minimum() != bar_.Minimum() || widget_.maximum() != bar_.Maximum()) {
    widget_.setRange(bar_.Minimum(), bar_.Maximum());
    constexpr int kPages = 10;
    widget_.setPageStep((bar_.Maximum() - bar_.Minimum()) / kPages);
  }
  // While the user drags, the handle stays under the pointer.
  if (widget_.isSliderDown() || values_to_come_ > 0 || widget_.value() == bar_.Value()) return;
  widget_.setValue(bar_.Value());
}

void ScrollBarBinding::TakeUsersValue(int value) {
  if (following_) return;
  ++values_to_come_;
  HandOver([this, value, drags = widget_.isSliderDown()] {
    --values_to_come_;
    if (drags) {
      bar_.Scroll(value);
    } else {
      bar_.SetValue(value);
    }
    Follow();
  });
}

ImageBinding::ImageBinding(controls::Image& image, PictureBox& widget, const TwipScale& scale,
                           const QtIcons& icons)
    : WidgetBinding(image, widget, scale), image_(image), widget_(widget), icons_(icons) {
  subscriptions_ += image.Changed.Subscribe([this] { Follow(); });
  Follow();
}

void ImageBinding::Follow() {
  if (shown_ == image_.Picture()) return;
  shown_ = image_.Picture();
  widget_.SetPicture(icons_.Picture(PictureHandle{shown_}));
}

}  // namespace platform::qt
