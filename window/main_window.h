#pragma once
// The main window as a whole: builds its features over the platform and connects them; start-up and
// shut-down. Not any feature's behaviour, and not a widget.

#include <functional>
#include <memory>

#include "app/forms/form1.h"
#include "app/forms/form2.h"
#include "app/forms/layout.h"
#include "app/settings/ini_procedures.h"
#include "app/settings/language.h"
#include "app/settings/settings.h"
#include "app/state/runs.h"
#include "app/state/station_picture.h"
#include "app/state/window_state.h"
#include "catalogue/deleted_entries.h"
#include "catalogue/station_details.h"
#include "catalogue/station_editor.h"
#include "catalogue/station_icons.h"
#include "catalogue/station_lists.h"
#include "catalogue/station_store.h"
#include "catalogue/station_views.h"
#include "catalogue/station_writer.h"
#include "catalogue/unsaved_rows.h"
#include "catalogue/unsaved_rows_keeper.h"
#include "player/mf_player.h"
#include "playlist/m3u_export.h"
#include "playlist/m3u_import.h"
#include "ports/clipboard.h"
#include "ports/clock.h"
#include "ports/dialogs.h"
#include "ports/environment.h"
#include "ports/files.h"
#include "ports/icons.h"
#include "ports/interface_call.h"
#include "ports/internet.h"
#include "ports/media_framework.h"
#include "ports/message_loop.h"
#include "ports/playback_monitor.h"
#include "ports/private_profile.h"
#include "ports/property_value.h"
#include "ports/record_files.h"
#include "ports/shell.h"
#include "ports/string_order.h"
#include "ports/system_messages.h"
#include "ports/text_conversion.h"
#include "ports/xml_http_request.h"
#include "stream/cls_funkhaus.h"
#include "ui/now_playing.h"
#include "ui/playback_control.h"
#include "ui/playing_mark.h"
#include "ui/recorder_launch.h"
#include "ui/status_line.h"

namespace window {

/// Everything the main window asks of the system.
struct Platform {
  platform::PrivateProfile& profile;
  platform::Files& files;
  platform::RecordFiles& record_files;
  platform::Environment& environment;
  platform::TextConversion& conversion;
  platform::StringOrder& string_order;
  platform::Icons& icons;
  platform::Internet& internet;
  platform::XmlHttpRequests& requests;
  platform::MediaFramework& media;
  platform::InterfaceCalls& interface_calls;
  platform::PropertyValues& property_values;
  platform::Dialogs& dialogs;
  platform::Shell& shell;
  platform::Clipboard& clipboard;
  platform::SystemMessages& system_messages;
  platform::MessageLoop& message_loop;
  platform::Clock& clock;
  platform::PlaybackMonitor& playback_monitor;
};

/// Its life: constructed (settings folder known), Load (unsaved rows of an unasked end put back, lists
/// filled, view restored, texts translated), closed through app::Form1's form (save offered, view written,
/// objects released), destroyed (image list gone).
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
  void ShowNewStationDialog();
  [[nodiscard]] controls::ListPair Lists() { return {form1_.SymbolListview, form1_.ExplorerListFilter}; }

  Platform platform_;
  std::function<void(app::Form2&)> show_modal_;
  app::Settings settings_;
  app::WindowState state_;
  app::Life life_;  // ends when closing is asked for
  app::IniProcedures ini_;
  app::Language language_;
  app::Form1 form1_;
  ui::StatusLine status_line_;
  std::shared_ptr<stream::clsFunkhaus> cFunkhaus;
  std::shared_ptr<player::clsMFPlayer> cPlayer;
  ui::PlayingMark playing_mark_;
  player::ProgramDuration duration_;
  app::StationPicture picture_;
  app::WindowLayout layout_;
  catalogue::StationIcons icons_;
  catalogue::StationLists station_lists_;
  catalogue::UnsavedRows unsaved_rows_;
  catalogue::UnsavedRowsKeeper keeper_;
  catalogue::StationStore store_;
  catalogue::DeletedEntries deleted_;
  catalogue::StationWriter writer_;
  catalogue::StationViews views_;
  ui::RecorderLaunch recorder_launch_;
  catalogue::StationEditor editor_;
  ui::NowPlaying now_playing_;
  catalogue::StationDetails details_;
  ui::PlaybackControl playback_;
  playlist::M3uExport m3u_export_;
  playlist::M3uImport m3u_import_;
  bool view_restored_ = false;
  controls::Subscriptions subscriptions_;
};

}  // namespace window
