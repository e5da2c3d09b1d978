#pragma once
// A push button that can show a drawn glyph instead of its text. Not bound to a control by itself.

#include <QPushButton>
#include <functional>

#include "controls/captioned.h"

namespace platform::qt {

/// Takes Enter as well as Space while it has the focus. A text that is wider than the button ends in dots
/// and is shown whole as its tooltip.
class CommandButtonWidget final : public QPushButton {
 public:
  explicit CommandButtonWidget(QWidget* parent);

  /// Anything but kNone is drawn in the palette's colour instead of the text.
  void SetGlyph(controls::Glyph glyph);

  /// The secondary action: right click or menu key.
  std::function<void()> on_context_click;

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  [[nodiscard]] QString FittingText() const;

  controls::Glyph glyph_ = controls::Glyph::kNone;
};

}  // namespace platform::qt
