#pragma once
// The main window's layout: where its panels, lists and bars are at a given inner size.
// Not the design-time sizes they start from (app/forms/form1.cpp).

#include "app/forms/form1.h"

namespace app {

/// Below this inner width (twips) the information panel lies over the list's lower right corner.
inline constexpr int kWidthForPanelBesideBars = 13600;

/// Follows the window's inner size for as long as it lives.
class WindowLayout {
 public:
  explicit WindowLayout(Form1& form1);

  /// Moves panels, lists and bars; a step that would give a negative width or height has no effect, and the
  /// next ones still run. The status line is below the inner area, across the whole width.
  void Form_Resize();

 private:
  Form1& form1_;
  controls::Subscription resized_;
};

}  // namespace app
