#pragma once
// The new-station dialog's behaviour. Not its controls (app/forms/form2.h), not saving.

#include <cstddef>
#include <functional>

#include "app/forms/form2.h"
#include "app/settings/language.h"
#include "app/settings/settings.h"
#include "controls/list_view.h"
#include "ports/clipboard.h"
#include "ports/dialogs.h"

namespace catalogue {

/// Adds one row to the full list and marks the catalogue as changed; writes nothing to a file. For a single
/// use: load, show modally, destroy.
class NewStationDialog {
 public:
  NewStationDialog(controls::ListView& SymbolListview, app::Settings& settings, const app::Language& language,
                   platform::Clipboard& clipboard, platform::Dialogs& dialogs);

  /// Fills the genres and translates the captions; the link field begins with `link`. `show_modal` shows the
  /// form until it is closed.
  void Show(const std::function<void(app::Form2&)>& show_modal, const platform::Text& link = {});

  /// Accept: with a name, appends the row and closes; without one, shows a message and stays open.
  void CommandButton1_Click();
  /// Cancel.
  void CommandButton2_Click();
  /// Paste: the clipboard's text replaces that of the text box.
  void CommandButton3_Click(std::size_t Index);

  app::Form2& Controls() { return form_; }

 private:
  void Load();
  void Translate();

  controls::ListView& SymbolListview;
  app::Settings& settings_;
  const app::Language& language_;
  platform::Clipboard& clipboard_;
  platform::Dialogs& dialogs_;
  app::Form2 form_;
  controls::Subscriptions subscriptions_;
};

}  // namespace catalogue
