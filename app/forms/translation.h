#pragma once
// Puts a form's controls into the language of the language file. Not the look-up itself, which the caller
// passes in.

#include <functional>

#include "app/forms/form1.h"

namespace app {

/// Returns the text's translation, or the text itself when it has none.
using LookUp = std::function<controls::Text(const controls::Text&)>;

/// Translates the controls' texts: captions, hints and accessible names, and a list's column captions and
/// words; texts without a translation, and tooltips, stay as they are. Call it before a front end walks the
/// inventory.
void TranslateCaptions(Inventory& inventory, const LookUp& translated);

/// The whole main window: its caption, and the texts of its fields too.
void TranslateForm(Form1& form1, const LookUp& translated);

}  // namespace app
