#include "platform/qt/form_view.h"

#include <QApplication>
#include <QScreen>

namespace platform::qt {
namespace {

/// The label below the inner area; null for none.
const controls::Control* Footer(const app::Inventory& inventory) {
  for (const app::FormControl& entry : inventory) {
    const auto* label = app::As<controls::Label>(entry);
    if (label != nullptr && label->Look() == controls::LabelLook::kStatusLine) return label;
  }
  return nullptr;
}

}  // namespace

FormView::FormView(controls::Form& form, const app::Inventory& inventory, QWidget& window,
                   const QtIcons& icons, QtMessageLoop& loop)
    : form_(form),
      window_(window),
      scale_(QApplication::font()),
      widgets_(inventory, window, scale_, icons, loop),
      texts_(inventory, widgets_, scale_),
      keys_(inventory, window, widgets_, loop),
      binding_(form, window, scale_, loop, Footer(inventory)) {
  LimitSize();
}

QSize FormView::WindowSize() const {
  return binding_.WindowSize(form_.GetPlace().width, form_.GetPlace().height);
}

void FormView::LimitSize() {
  if (form_.FixedSize()) {
    window_.setFixedSize(WindowSize());
    return;
  }
  const QSize room = window_.screen()->availableSize();
  QSize smallest = binding_.WindowSize(form_.SmallestWidth(), form_.SmallestHeight());
  if (smallest.height() > room.height()) {
    smallest = binding_.WindowSize(form_.SmallestWidthIfLower(), form_.SmallestHeight());
  }
  window_.setMinimumSize(smallest.boundedTo(room));
}

void FormView::FocusFirst() {
  if (QWidget* first = widgets_.FirstForKeyboard(window_)) first->setFocus();
}

void FormView::FollowChange(const QEvent& event) {
  const bool other_font = event.type() == QEvent::FontChange || event.type() == QEvent::ApplicationFontChange;
  if (!other_font || !scale_.SetFont(window_.font())) return;
  LimitSize();
  widgets_.FollowScale();
  texts_.FollowScale();
  if (!form_.FixedSize()) binding_.FollowScale();
}

}  // namespace platform::qt
