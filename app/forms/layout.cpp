#include "app/forms/layout.h"

namespace app {

using controls::Place;

namespace {

void MoveTo(controls::Control& control, int left, int top) {
  Place place = control.GetPlace();
  place.left = left;
  place.top = top;
  control.Move(place);
}

void Resize(controls::Control& control, int width, int height) {
  Place place = control.GetPlace();
  place.width = width;
  place.height = height;
  control.Move(place);
}

}  // namespace

WindowLayout::WindowLayout(Form1& form1)
    : form1_(form1), resized_(form1.form.Resized.Subscribe([this] { Form_Resize(); })) {}

void WindowLayout::Form_Resize() {
  const Place& window = form1_.form.GetPlace();
  const Place& bottom_panel = form1_.Frame1.GetPlace();
  const Place& main_panel = form1_.Frame2.GetPlace();
  const Place& list = form1_.SymbolListview.GetPlace();
  const Place& left_bar = form1_.ProgressBar1[0].GetPlace();
  const Place& right_bar = form1_.ProgressBar1[1].GetPlace();
  const Place& information = form1_.Frame3.GetPlace();

  MoveTo(form1_.Frame1, bottom_panel.left, window.height - bottom_panel.height - 120);
  Resize(form1_.Frame2, window.width - 120, window.height - 120);
  for (controls::ListView* view : {&form1_.SymbolListview, &form1_.ExplorerListFilter}) {
    Resize(*view, main_panel.width - 90, main_panel.height - bottom_panel.height - view->GetPlace().top - 90);
  }
  MoveTo(form1_.ProgressBar1[0], bottom_panel.left + bottom_panel.width + 30, bottom_panel.top + 60);
  MoveTo(form1_.ProgressBar1[1], bottom_panel.left + bottom_panel.width + left_bar.width + 60,
         bottom_panel.top + 60);

  if (window.width >= kWidthForPanelBesideBars) {
    MoveTo(form1_.Frame3, right_bar.left + right_bar.width + 60, list.top + list.height + 120);
  } else {
    MoveTo(form1_.Frame3, window.width - information.width - 360,
           list.top + list.height - information.height - 200);
  }

  form1_.StatusLine.Move({0, window.height, window.width, form1_.StatusLine.GetPlace().height});
}

}  // namespace app
