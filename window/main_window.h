#pragma once
// The main window as a whole: its parts, start-up and shut-down. Not any feature's behaviour, and not a
// widget.

#include <functional>
#include <memory>

#include "app/forms/form2.h"
#include "app/forms/layout.h"
#include "window/catalogue.h"
#include "window/desktop.h"
#include "window/foundation.h"
#include "window/playing.h"

namespace window {

/// Its life: constructed (settings folder known), Load (unsaved rows put back, lists filled, view restored,
/// texts translated), closed through app::Form1's form (save offered, view written, objects released),
/// destroyed (image list gone).
class MainWindow {
 public:
  /// `show_modal` shows the new-station dialog until its form is closed.
  MainWindow(Platform platform, std::function<void(app::Form2&)> show_modal);
  ~MainWindow();
  MainWindow(const MainWindow&) = delete;
  MainWindow& operator=(const MainWindow&) = delete;

  /// Once, before the window is shown.
  void Load();

  app::Form1& Controls() { return form1_; }
  [[nodiscard]] const app::Settings& GetSettings() const { return settings_; }
  /// Translates once `Load` has chosen the language.
  [[nodiscard]] const app::Language& GetLanguage() const { return language_; }
  [[nodiscard]] const app::WindowState& State() const { return state_; }
  /// The stream client, from Load until the window is unloaded; null otherwise.
  [[nodiscard]] const std::shared_ptr<stream::clsFunkhaus>& StreamClient() const { return cFunkhaus; }

 private:
  void Form_QueryUnload();
  void Form_Unload();
  [[nodiscard]] bool SessionEnds() const;
  [[nodiscard]] bool OfferToSave();
  void ReportRestored(const catalogue::UnsavedRowsKeeper::Restored& restored);
  void RestoreView();
  void CreateStreamClient();
  void CreatePlayer();
  void ShowNewStationDialog(const platform::Text& link);

  Platform platform_;
  std::function<void(app::Form2&)> show_modal_;
  app::Settings settings_;
  app::WindowState state_;
  app::Life life_;  // ends when closing is asked for
  app::IniProcedures ini_;
  app::Language language_;
  app::Form1 form1_;
  app::WindowLayout layout_;
  Foundation foundation_;
  player::ProgramDuration duration_;
  std::shared_ptr<stream::clsFunkhaus> cFunkhaus;
  std::shared_ptr<player::clsMFPlayer> cPlayer;
  Playing playing_;
  Catalogue catalogue_;
  Desktop desktop_;
  bool view_restored_ = false;
  controls::Subscriptions subscriptions_;
};

}  // namespace window
