#pragma once
// Form2: the inventory of the new-station dialog's controls. Not its behaviour, not its widgets.

#include <array>

#include "app/forms/form_control.h"
#include "controls/form.h"

namespace app {

/// Constructed with its design-time captions, tooltips and places (twips).
struct Form2 {
  Form2();

  controls::Form form;  ///< "Neue Radiostation einfügen", modal

  std::array<controls::Label, 3> Label2;                  ///< "Station", "Weblink", "Genre:"
  std::array<controls::TextBox, 2> TextBox1;              ///< station name, link
  std::array<controls::CommandButton, 2> CommandButton3;  ///< paste into the text box of the same index
  controls::ComboBox Combo1;                              ///< genre
  controls::Label Label1;                                 ///< hint: where the station's icon belongs
  controls::CommandButton CommandButton1;                 ///< accept
  controls::CommandButton CommandButton2;                 ///< cancel

  /// Every control above, with its key and place in the tab order.
  Inventory inventory;
};

}  // namespace app
