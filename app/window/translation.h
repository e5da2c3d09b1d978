#pragma once
// Puts the main window into the language of the language file. Not the lookup itself (app/language.h).

#include "app/language.h"
#include "app/window/form1.h"

namespace app {

/// Replaces the window's caption, the column captions and words of both lists, and every control's caption
/// and text by their translations; what has none stays as it is.
void TranslateForm(Form1& form1, const Language& language);

}  // namespace app
