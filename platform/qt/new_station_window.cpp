#include "platform/qt/new_station_window.h"

#include <QApplication>
#include <QEvent>

namespace platform::qt {

NewStationWindow::NewStationWindow(app::Form2& form, const QtIcons& icons, QtMessageLoop& loop,
                                   QWidget* owner)
    : QDialog(owner),
      form_(form),
      loop_(loop),
      scale_(QApplication::font()),
      widgets_(scale_, icons, loop),
      form_binding_(form.form, *this, scale_, loop) {
  Build();
  setFixedSize(size());
  subscriptions_ += form_.form.Closed.Subscribe([this] { done(QDialog::Accepted); });
}

void NewStationWindow::Build() {
  static constexpr std::array kBoxes = {"TextBox1_0", "TextBox1_1"};
  static constexpr std::array kPasteButtons = {"CommandButton3_0", "CommandButton3_1"};
  static constexpr std::array kLabels = {"Label2_0", "Label2_1"};
  for (std::size_t row = 0; row < kBoxes.size(); ++row) {
    auto& box = widgets_.Add(form_.TextBox1[row], *this, kBoxes[row]);
    widgets_.Add(form_.Label2[row], *this, kLabels[row], &box);
    widgets_.Add(form_.CommandButton3[row], *this, kPasteButtons[row]).setAutoDefault(false);
  }
  auto& genre = widgets_.Add(form_.Combo1, *this, "Combo1");
  widgets_.Add(form_.Label2[2], *this, "Label2_2", &genre);
  widgets_.AddFitted(form_.Label1, *this, "Label1");
  widgets_.Add(form_.CommandButton1, *this, "CommandButton1").setDefault(true);
  widgets_.Add(form_.CommandButton2, *this, "CommandButton2");
}

void NewStationWindow::RunModal() {
  if (form_.form.IsClosed()) return;
  exec();
}

void NewStationWindow::reject() {
  loop_.HandOver(*this, [this] {
    if (!IsBlockedByDialog(*this)) form_.CommandButton2.Click();
  });
}

void NewStationWindow::changeEvent(QEvent* event) {
  QDialog::changeEvent(event);
  if (event->type() != QEvent::FontChange || !scale_.SetFont(font())) return;
  const controls::Place& place = form_.form.GetPlace();
  setFixedSize(scale_.Pixels(place.width), scale_.Pixels(place.height));
  widgets_.FollowScale();
}

}  // namespace platform::qt
