#pragma once
// What the features of the main window are built on and share. Not a feature.

#include "app/forms/form1.h"
#include "app/settings/ini_procedures.h"
#include "app/settings/language.h"
#include "app/settings/settings.h"
#include "app/state/list_pair.h"
#include "app/state/runs.h"
#include "app/state/window_state.h"
#include "window/platform.h"

namespace window {

struct Foundation {
  const Platform& platform;
  app::Form1& form;
  app::Settings& settings;
  app::IniProcedures& ini;
  const app::Language& language;
  app::WindowState& state;
  const app::Life& life;  ///< of the window: ends when closing is asked for
};

[[nodiscard]] inline app::ListPair ListsOf(app::Form1& form) {
  return {.full = form.SymbolListview, .filtered = form.ExplorerListFilter};
}

}  // namespace window
