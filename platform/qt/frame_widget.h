#pragma once
// The widget of a frame in its three looks. Not bound to a control by itself.

#include <QGroupBox>

#include "controls/captioned.h"

namespace platform::qt {

/// The radius of a panel's corners.
inline constexpr double kPanelCorner = 4.0;

class FrameWidget final : public QGroupBox {
 public:
  FrameWidget(controls::FrameLook look, QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const controls::FrameLook look_;
};

}  // namespace platform::qt
