#pragma once
// What a front end needs to know about a form's control besides the control's own state; a form lists these
// records. Not the state (controls/), not a widget.

#include <type_traits>
#include <variant>
#include <vector>

#include "controls/captioned.h"
#include "controls/key.h"
#include "controls/list_view.h"
#include "controls/row_command.h"
#include "controls/text_box.h"
#include "controls/timer.h"
#include "controls/value_controls.h"

namespace app {

/// The kinds of controls. A front end has one binding for each and selects it with std::visit.
using AnyControl =
    std::variant<controls::Frame*, controls::Label*, controls::CommandButton*, controls::CheckBox*,
                 controls::TextBox*, controls::UpDownTextBox*, controls::ComboBox*, controls::ProgressBar*,
                 controls::ScrollBar*, controls::Image*, controls::ListView*, controls::Timer*,
                 controls::RowCommand*>;

/// What a control's entry in the menu of the form's lists does. "The row" is the one that the menu was opened
/// on: its entries are disabled when there was none or when it is gone. The entry of a check box has its
/// check.
enum class MenuEntry {
  kNone,             ///< there is no such entry
  kClick,            ///< clicks the control; there is no entry while the control is hidden
  kClickBelowALine,  ///< the same, separated from the entries before it
  kOpenRow,          ///< for a button: a double click on the row, as by Enter in the list
  kDeleteRow,        ///< for a button: what the Delete key does in the list
  kForRow,           ///< for a command on a row: what it offers
};

/// Whether a key works while its control is hidden.
enum class KeyWhileHidden { kRests, kWorks };

/// Every part is optional.
struct Use {
  /// The label before the field, or the frame, whose caption is the control's name for a screen reader.
  controls::Captioned* named_by = nullptr;
  /// The name for a screen reader, where neither the caption nor `named_by` gives one. Without it a button
  /// with a glyph is known by its tooltip.
  controls::Text accessible_name = {};
  /// The tooltip while the control has none of its own, followed by the key in brackets.
  controls::Text hint = {};
  /// Clicks a button wherever the keyboard focus is in the window, unless a field that the user types into
  /// uses the key itself. Enter and Escape are for the buttons of dialogs. On a frame: the first visible
  /// control in it takes the keyboard focus.
  controls::Key key = {};
  KeyWhileHidden key_while_hidden = KeyWhileHidden::kRests;
  MenuEntry menu = MenuEntry::kNone;
  /// The text of the menu's entry, where it is not the control's caption.
  controls::Text menu_caption = {};
  /// Enter in the field clicks this button, while the button is visible and enabled; in a combo box's open
  /// list Enter only chooses.
  controls::CommandButton* enter_clicks = nullptr;
};

struct FormControl {
  const char* name;  ///< of the widget; unique within a form
  AnyControl control;
  const controls::Frame* container = nullptr;  ///< comes before its contents in the list; null is the window
  Use use = {};
};

/// All controls of a form in tab order; later ones lie above earlier ones.
using Inventory = std::vector<FormControl>;

/// The control as one of a kind, or of a base of several kinds (controls::Captioned, controls::Control ...);
/// null when it is none.
template <typename Kind>
[[nodiscard]] Kind* As(const FormControl& entry) {
  return std::visit(
      [](auto* control) -> Kind* {
        if constexpr (std::is_base_of_v<Kind, std::remove_pointer_t<decltype(control)>>) return control;
        return nullptr;
      },
      entry.control);
}

}  // namespace app
