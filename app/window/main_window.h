#pragma once
// The main window as a whole: builds its features over the platform and connects them; start-up and
// shut-down. Not any feature's behaviour, and not a widget.

#include <functional>
#include <memory>

#include "app/ini_procedures.h"
#include "app/language.h"
#include "app/settings.h"
#include "app/station_picture.h"
#include "app/window/form1.h"
#include "app/window/layout.h"
#include "app/window_state.h"
#include "catalogue/deleted_entries.h"
#include "catalogue/form2.h"
#include "catalogue/station_details.h"
#include "catalogue/station_editor.h"
#include "catalogue/station_icons.h"
#include "catalogue/station_lists.h"
#include "catalogue/station_store.h"
#include "catalogue/station_views.h"
#include "catalogue/station_writer.h"
#include "catalogue/unsaved_rows.h"
#include "catalogue/unsaved_rows_keeper.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/icons.h"
#include "platform/interface_call.h"
#include "platform/internet.h"
#include "platform/media_framework.h"
#include "platform/message_loop.h"
#include "platform/playback_monitor.h"
#include "platform/private_profile.h"
#include "platform/property_value.h"
#include "platform/record_files.h"
#include "platform/shell.h"
#include "platform/string_order.h"
#include "platform/text_conversion.h"
#include "platform/xml_http_request.h"
#include "player/mf_player.h"
#include "playlist/m3u_export.h"
#include "playlist/m3u_import.h"
#include "stream/cls_funkhaus.h"
#include "ui/now_playing.h"
#include "ui/playback_control.h"
#include "ui/playing_mark.h"
#include "ui/recorder_launch.h"
#include "ui/status_line.h"

namespace app {

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
/// filled, view restored, texts translated), closed through Form1's form (save offered, view written, objects
/// released), destroyed (image list gone).
class MainWindow {
 public:
  /// `show_modal` shows the new-station dialog until its form is closed.
  MainWindow(Platform platform, std::function<void(catalogue::Form2&)> show_modal);
  ~MainWindow();
  MainWindow(const MainWindow&) = delete;
  MainWindow& operator=(const MainWindow&) = delete;

  /// Once, before the window is shown.
  void Load();

  Form1& Controls() { return form1_; }
  [[nodiscard]] const Settings& GetSettings() const { return settings_; }
  [[nodiscard]] const WindowState& State() const { return state_; }
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
  [[nodiscard]] std::function<bool()> Closing();

  Platform platform_;
  std::function<void(catalogue::Form2&)> show_modal_;
  Settings settings_;
  WindowState state_;
  IniProcedures ini_;
  Language language_;
  Form1 form1_;
  ui::StatusLine status_line_;
  std::shared_ptr<stream::clsFunkhaus> cFunkhaus;
  std::shared_ptr<player::clsMFPlayer> cPlayer;
  ui::PlayingMark playing_mark_;
  player::ProgramDuration duration_;
  StationPicture picture_;
  WindowLayout layout_;
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

}  // namespace app
