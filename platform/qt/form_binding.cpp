#include "platform/qt/form_binding.h"

#include <QEvent>
#include <QResizeEvent>

#include "platform/qt/text.h"

namespace platform::qt {

FormBinding::FormBinding(controls::Form& form, QWidget& window, const TwipScale& scale)
    : form_(form), window_(window), scale_(scale) {
  window_.installEventFilter(this);
  subscriptions_ += form.Changed.Subscribe([this] { Follow(); });
  subscriptions_ += form.Closed.Subscribe([this] { window_.hide(); });
  Follow();
}

void FormBinding::Follow() {
  const QString title = WindowTitle(form_.Caption());
  if (window_.windowTitle() != title) window_.setWindowTitle(title);
  const controls::Place& place = form_.GetPlace();
  const bool same_size =
      scale_.Twips(window_.width()) == place.width && scale_.Twips(window_.height()) == place.height;
  if (!same_size) window_.resize(scale_.Pixels(place.width), scale_.Pixels(place.height));
}

bool FormBinding::eventFilter(QObject* watched, QEvent* event) {
  if (watched != &window_) return false;
  if (event->type() == QEvent::Close) {
    event->ignore();
    form_.Close();
    return true;
  }
  if (event->type() == QEvent::Resize) {
    const QSize size = static_cast<QResizeEvent*>(event)->size();
    form_.Resize(scale_.Twips(size.width()), scale_.Twips(size.height()));
  }
  return false;
}

}  // namespace platform::qt
