#pragma once
// A check box whose box is visible in all colours. Not bound to a control by itself.

#include <QCheckBox>

namespace platform::qt {

/// Painted by the style. Where a side of the style's empty box does not stand out from the window by 3 : 1
/// (WCAG 2.1, criterion 1.4.11), it gets a frame that does: several styles derive its outline from the
/// window's colour, which makes it invisible on a dark one.
class CheckBoxWidget final : public QCheckBox {
 public:
  explicit CheckBoxWidget(QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] bool NeedsFrame(QStyleOptionButton box);

  // What was measured, and for which style and colours.
  bool needs_frame_ = false;
  const QStyle* measured_style_ = nullptr;
  qint64 measured_palette_ = 0;
};

}  // namespace platform::qt
