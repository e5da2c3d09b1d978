#include "platform/qt/form_binding.h"

#include <QEvent>
#include <QResizeEvent>
#include <algorithm>
#include <utility>

#include "platform/qt/front.h"
#include "platform/qt/input_binding.h"
#include "platform/qt/text.h"

namespace platform::qt {

FormBinding::FormBinding(controls::Form& form, QWidget& window, const TwipScale& scale, QtMessageLoop& loop,
                         const controls::Control* footer)
    : form_(form), window_(window), scale_(scale), loop_(loop), footer_(footer) {
  window_.installEventFilter(this);
  subscriptions_ += form.Changed.Subscribe([this] { Follow(); });
  subscriptions_ += form.Closed.Subscribe([this] { window_.hide(); });
  subscriptions_ += form.FocusWanted.Subscribe([this] {
    if (QWidget* front = FrontOf(window_)) BringToFront(window_, *front, "");
  });
  Follow();
}

void FormBinding::Follow() {
  const QString title = WindowTitle(form_.Caption());
  if (window_.windowTitle() != title) window_.setWindowTitle(title);
  const controls::Place place = form_.GetPlace();
  // A hidden window has its size before the form hears of it.
  if (std::exchange(followed_, place) == place) return;
  const bool same_size = scale_.Twips(window_.width()) == place.width &&
                         scale_.Twips(window_.height() - FooterHeight()) == place.height;
  if (!same_size) window_.resize(WindowSize(place.width, place.height));
}

int FormBinding::FooterHeight() const {
  return footer_ == nullptr ? 0 : scale_.Pixels(footer_->GetPlace().height);
}

QSize FormBinding::WindowSize(int width, int height) const {
  return {scale_.Pixels(width), scale_.Pixels(height) + FooterHeight()};
}

void FormBinding::TakeSize(const QSize& size) {
  form_.Resize(scale_.Twips(size.width()), scale_.Twips(std::max(0, size.height() - FooterHeight())));
}

bool FormBinding::eventFilter(QObject* watched, QEvent* event) {
  if (watched != &window_) return false;
  if (event->type() == QEvent::Close) {
    event->ignore();
    loop_.HandOver(
        *this,
        [this, blocked_before = IsBlockedByDialog(window_)] {
          // The toolkit keeps the user from closing a blocked window; what comes nevertheless is not his.
          if (blocked_before || !IsBlockedByDialog(window_)) form_.Close();
        },
        OnWait::kEndsWait);
    return true;
  }
  const bool shown_or_hidden = event->type() == QEvent::Show || event->type() == QEvent::Hide;
  if (shown_or_hidden || event->type() == QEvent::WindowStateChange) {
    form_.SetInSight(event->type() != QEvent::Hide && window_.isVisible() && !window_.isMinimized());
  }
  if (event->type() == QEvent::Resize) TakeSize(static_cast<QResizeEvent*>(event)->size());
  return false;
}

}  // namespace platform::qt
