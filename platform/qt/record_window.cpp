#include "platform/qt/record_window.h"

#include <QApplication>
#include <QEvent>

#include "platform/qt/application_icon.h"

namespace platform::qt {

RecordWindow::RecordWindow(app::RecordForm& form, const QtIcons& icons, QtMessageLoop& loop)
    : form_(form),
      scale_(QApplication::font()),
      widgets_(scale_, icons, loop),
      form_binding_(form.form, *this, scale_, loop) {
  setWindowIcon(ApplicationIcon());
  setWindowFlag(Qt::WindowMinimizeButtonHint);
  setWindowFlag(Qt::WindowContextHelpButtonHint, false);
  Build();
  setFixedSize(size());
  subscriptions_ += form_.form.Closed.Subscribe([] { QCoreApplication::exit(); });
}

void RecordWindow::Build() {
  auto& address = widgets_.Add(form_.address, *this, "address");
  widgets_.Add(form_.address_label, *this, "address_label", &address);
  widgets_.Add(form_.start, *this, "start").setDefault(true);
  widgets_.AddFitted(form_.station_label, *this, "station_label");
  widgets_.AddFitted(form_.station, *this, "station");
  widgets_.AddFitted(form_.title_label, *this, "title_label");
  widgets_.AddFitted(form_.title, *this, "title");
  widgets_.AddFitted(form_.time_label, *this, "time_label");
  widgets_.AddFitted(form_.time, *this, "time");
  widgets_.AddFitted(form_.written_label, *this, "written_label");
  widgets_.AddFitted(form_.written, *this, "written");
  widgets_.AddFitted(form_.state, *this, "state");
  widgets_.Add(form_.stop, *this, "stop").setAutoDefault(false);
  widgets_.Add(form_.open_folder, *this, "open_folder").setAutoDefault(false);
}

void RecordWindow::reject() {}

void RecordWindow::changeEvent(QEvent* event) {
  QDialog::changeEvent(event);
  if (event->type() != QEvent::FontChange || !scale_.SetFont(font())) return;
  const controls::Place& place = form_.form.GetPlace();
  setFixedSize(scale_.Pixels(place.width), scale_.Pixels(place.height));
  widgets_.FollowScale();
}

}  // namespace platform::qt
