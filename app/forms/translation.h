#pragma once
// Puts the main window into the language of the language file. Not the look-up itself, which is handed in.

#include <functional>

#include "app/forms/form1.h"

namespace app {

/// Returns the text's translation, or the text itself when it has none.
using LookUp = std::function<controls::Text(const controls::Text&)>;

/// Replaces the window's caption, the column captions and words of both lists, and every control's caption
/// and text by their translations; what has none stays as it is.
void TranslateForm(Form1& form1, const LookUp& translated);

}  // namespace app
