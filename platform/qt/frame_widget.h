#pragma once
// The widget of a frame in its three looks. Not bound to a control by itself.

#include <QGroupBox>

namespace platform::qt {

enum class FrameLook {
  kTitled,  ///< a border with the caption in it
  kPlain,   ///< nothing is drawn, it only holds its controls together
  kPanel,   ///< a filled panel that may lie over other widgets
};

class FrameWidget final : public QGroupBox {
 public:
  FrameWidget(FrameLook look, QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const FrameLook look_;
};

}  // namespace platform::qt
