#pragma once
// Binds a form to the top-level widget that shows it: caption, inner size, closing. Not its controls.

#include <QObject>
#include <QWidget>

#include "controls/form.h"
#include "platform/qt/message_loop.h"
#include "platform/qt/twip_scale.h"

namespace platform::qt {

/// The window comes to the front when the form wants the focus. The window's close button closes the form;
/// the widget is hidden when the form is closed, not before. The form's inner size is the window without the
/// footer, a control below it, if there is one.
class FormBinding final : public QObject {
 public:
  FormBinding(controls::Form& form, QWidget& window, const TwipScale& scale, QtMessageLoop& loop,
              const controls::Control* footer = nullptr);

  /// The window's size for an inner size in twips.
  [[nodiscard]] QSize WindowSize(int width, int height) const;
  /// To be called when the scale has changed: the same pixels are then a different number of twips.
  void FollowScale() { TakeSize(window_.size()); }

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Follow();
  void TakeSize(const QSize& size);
  [[nodiscard]] int FooterHeight() const;

  controls::Form& form_;
  QWidget& window_;
  const TwipScale& scale_;
  QtMessageLoop& loop_;
  const controls::Control* const footer_;
  controls::Place followed_;
  controls::Subscriptions subscriptions_;
};

}  // namespace platform::qt
