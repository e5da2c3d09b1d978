#pragma once
// Puts a form's controls into the language of the language file. Not the look-up itself, which is handed in.

#include <functional>

#include "app/forms/form1.h"

namespace app {

/// Returns the text's translation, or the text itself when it has none.
using LookUp = std::function<controls::Text(const controls::Text&)>;

/// Replaces what the controls say by its translation: captions, hints and accessible names, and a list's
/// column captions and words; what has none, and tooltips, stay as they are. To be called before a front
/// end walks the inventory.
void TranslateCaptions(Inventory& inventory, const LookUp& translated);

/// The whole main window: its caption, and the texts of its fields too.
void TranslateForm(Form1& form1, const LookUp& translated);

}  // namespace app
