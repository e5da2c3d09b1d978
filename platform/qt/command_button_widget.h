#pragma once
// A push button with a glyph before its text or in place of it. Not bound to a control by itself.

#include <QPushButton>
#include <functional>

#include "controls/captioned.h"
#include "platform/qt/glyph_pictures.h"

namespace platform::qt {

/// Takes Enter as well as Space while it has the focus. A text that is wider than the button ends in dots
/// and is shown whole as its tooltip.
class CommandButtonWidget final : public QPushButton {
 public:
  explicit CommandButtonWidget(QWidget* parent);

  /// Painted as GlyphPicture describes.
  void SetGlyph(controls::Glyph glyph, controls::GlyphPlace place);
  void SetRole(controls::ButtonRole role);

  /// The secondary action: right click or menu key.
  std::function<void()> on_context_click;

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  [[nodiscard]] bool HasIcon() const;
  [[nodiscard]] int GlyphSide() const;
  [[nodiscard]] QString FittingText() const;
  [[nodiscard]] QColor InkOn(const QStyleOptionButton& button) const;
  [[nodiscard]] QColor GroundOf(const QStyleOptionButton& button) const;
  [[nodiscard]] const QPixmap& Picture(const QStyleOptionButton& button, const QColor& ink);

  controls::Glyph glyph_ = controls::Glyph::kNone;
  controls::GlyphPlace place_ = controls::GlyphPlace::kInsteadOfCaption;
  controls::ButtonRole role_ = controls::ButtonRole::kUsual;

  // What was painted last, and for what.
  struct Painted {
    controls::Glyph glyph;
    int side;
    double dots;
    GlyphColors colors;
    QString theme;
    friend bool operator==(const Painted&, const Painted&) = default;
  };
  Painted painted_{};
  QPixmap picture_;
};

}  // namespace platform::qt
