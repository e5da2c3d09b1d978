#pragma once
// A slider that shows that it has the keyboard, and its value as its tooltip. Not bound to a control by
// itself.

#include <QSlider>

namespace platform::qt {

/// Horizontal. The tooltip is the value's part of the range; while the handle is dragged it stays beside it.
class SliderWidget final : public QSlider {
 public:
  explicit SliderWidget(QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void sliderChange(SliderChange change) override;

 private:
  [[nodiscard]] QString ValueText() const;
  [[nodiscard]] QRect HandlePlace() const;
};

}  // namespace platform::qt
