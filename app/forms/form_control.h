#pragma once
// What a front end has to know of a form's control beside the control's own state; a form lists these
// records. Not the state (controls/), not a widget.

#include <type_traits>
#include <variant>
#include <vector>

#include "controls/captioned.h"
#include "controls/key.h"
#include "controls/list_view.h"
#include "controls/text_box.h"
#include "controls/timer.h"
#include "controls/value_controls.h"

namespace app {

/// The kinds of controls. A front end has one binding for each and picks it with std::visit.
using AnyControl =
    std::variant<controls::Frame*, controls::Label*, controls::CommandButton*, controls::CheckBox*,
                 controls::TextBox*, controls::UpDownTextBox*, controls::ComboBox*, controls::ProgressBar*,
                 controls::ScrollBar*, controls::Image*, controls::ListView*, controls::Timer*>;

/// What a button's entry in the menu of the form's lists does. It bears the button's caption.
enum class MenuEntry {
  kNone,             ///< there is no such entry
  kClick,            ///< clicks the button; there is no entry while the button is hidden
  kClickBelowALine,  ///< the same, parted from the entries before
  kOpenRow,          ///< what Enter does in the list, which is a double click on the selected row
  kDeleteRow,        ///< what the Delete key does in the list
};

/// Whether a key works while its control is hidden.
enum class KeyWhileHidden { kRests, kWorks };

/// All of it may be left out.
struct Use {
  /// The label before the field, or the frame, whose caption names the control to whoever hears the window.
  controls::Captioned* named_by = nullptr;
  /// The name to whoever hears the window, where neither caption nor `named_by` gives it. A button with a
  /// glyph goes by its tooltip otherwise.
  controls::Text accessible_name = {};
  /// The tooltip while the control has none of its own, followed by the key in brackets.
  controls::Text hint = {};
  /// Clicks a button wherever the keyboard is in the window, unless a field that the user types into knows
  /// the key itself. Enter and Escape are for the buttons of dialogs. On a frame: the first control in it
  /// that is visible takes the keyboard.
  controls::Key key = {};
  KeyWhileHidden key_while_hidden = KeyWhileHidden::kRests;
  MenuEntry menu = MenuEntry::kNone;
};

struct FormControl {
  const char* name;  ///< of the widget; a form's control has no other of that name
  AnyControl control;
  const controls::Frame* container = nullptr;  ///< stands in the list before its contents; null is the window
  Use use = {};
};

/// All controls of a form in the order in which the Tab key goes through them; what comes later lies above.
using Inventory = std::vector<FormControl>;

/// The control as one of a kind, or of what several kinds have in common (controls::Captioned,
/// controls::Control ...); null when it is no such one.
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
