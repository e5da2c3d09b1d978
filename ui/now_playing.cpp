#include "ui/now_playing.h"

#include <optional>
#include <vector>

#include "app/state/station.h"
#include "app/text/numbers.h"
#include "app/text/text_utilities.h"
#include "ports/text_conversion.h"
#include "stream/header_lines.h"

namespace ui {

using controls::RowId;
using platform::Text;

namespace {

constexpr std::int32_t kBytesExamined = 2048;
constexpr platform::TextView kTimeOut = u"TimeOut";  // the reader's answer when none came in time

}  // namespace

NowPlaying::NowPlaying(Parts parts, Ports ports, InformationPanel& panel, const app::WindowState& state,
                       const std::shared_ptr<stream::clsFunkhaus>& funkhaus, const app::Life& window)
    : parts_(parts),
      ports_(ports),
      panel_(panel),
      state_(state),
      cFunkhaus(funkhaus),
      window_(window),
      fetches_(window) {
  subscriptions_ += parts_.Command3.Clicked.Subscribe([this] { Command3_Click(); });
  subscriptions_ += parts_.Command3.ContextClicked.Subscribe([this] { Command3_ContextClick(); });
  subscriptions_ += parts_.Timer2.Ticked.Subscribe([this] { Timer2_Timer(); });
}

void NowPlaying::CheckAktuellerSong() { FetchTitle(Occasion::kOnce); }

void NowPlaying::FetchTitle(Occasion occasion) {
  const app::Runs::Run fetch = fetches_.Begin();
  const auto wanted = [&] {
    return fetch.Wanted() && (occasion == Occasion::kOnce || parts_.Timer2.Enabled());
  };
  // A window that closes in one of these waits releases the client: a fetch that is still wanted has it.
  ports_.message_loop.ProcessPendingMessages();
  if (!wanted() || !cFunkhaus) return;
  const Text address = state_.current_stream_address;
  cFunkhaus->StreamUrl(address);
  // The reading would only wait for the same server again.
  if (!wanted() || ports_.message_loop.InputEndsWait()) return;
  const Text target = cFunkhaus->StreamUrl();
  ports_.message_loop.ProcessPendingMessages();
  if (!wanted()) return;
  // A run over all stations may have used the client meanwhile; its last station is not this one.
  if (cFunkhaus->StreamUrl() != target) return;

  Text interval = cFunkhaus->GetStreamQueryInfo(stream::kIcyMetaint);
  if (interval.empty()) return;
  interval = cFunkhaus->GetStreamQueryInfo(stream::kIcyMetaint);
  if (interval.empty()) return panel_.ShowNoTitle();

  const Text sent = ReadTitle(interval);
  if (!wanted()) return;
  const Text title = sent.empty() ? Text() : RepairTitle(sent);
  if (sent.empty()) {
    panel_.ShowNoTitle();
  } else {
    panel_.ShowTitle(title);
  }
  if (sent != kTimeOut) TitleFetched.Raise(address, title);
}

Text NowPlaying::ReadTitle(const Text& interval) {
  const std::optional<std::int32_t> bytes = app::ToInt32(interval);
  return bytes ? cFunkhaus->ReadStreamMetaData2(*bytes) : Text();
}

Text NowPlaying::RepairTitle(const Text& title) const {
  const std::string bytes = ports_.conversion.WideCharToMultiByte(platform::CodePage::kAnsi, title);
  if (!app::IsUTF8(bytes, kBytesExamined)) return title;
  return app::Utf8ByteStringToText(ports_.conversion, title);
}

void NowPlaying::Timer2_Timer() { FetchTitle(Occasion::kPolling); }

void NowPlaying::Command3_ContextClick() {
  CheckAktuellerSong();
  if (window_.Ended()) return;
  parts_.Timer2.SetEnabled(!parts_.Timer2.Enabled());
}

void NowPlaying::Command3_Click() {
  const auto answer = ports_.dialogs.MessageBoxW(
      u"Die Funktion listet alle aktuellen Songtitel auf und ist sehr zeitintensiv. Abbruch durch ESC-Taste!",
      u"", platform::kMbOkCancel | platform::kMbIconInformation);
  if (answer != platform::MessageBoxAnswer::kOk) return;

  // The rows are remembered by their ids: sorting, deleting and replacing rows in the middle of the run
  // neither repeats nor mixes up any.
  controls::ListView& list = parts_.lists.Active();
  std::vector<RowId> rows;
  for (const controls::ListRow& row : list.Rows()) rows.push_back(row.id);
  for (const RowId row : rows) {
    if (FetchRowTitle(list, row) == RunState::kEnd) return;
  }
}

NowPlaying::RunState NowPlaying::FetchRowTitle(controls::ListView& list, RowId row) {
  // A window that closes in one of these waits releases the client; it is not used any more then.
  ports_.message_loop.ProcessPendingMessages();
  if (window_.Ended() || ports_.message_loop.GetAsyncKeyState(platform::kVkEscape) != 0)
    return RunState::kEnd;
  if (!cFunkhaus) return RunState::kEnd;
  if (!list.Contains(row)) return RunState::kContinue;

  cFunkhaus->StreamUrl(list.Cell(row, app::kLinkCell));
  if (ports_.message_loop.InputEndsWait()) return RunState::kContinue;
  ports_.message_loop.ProcessPendingMessages();
  if (window_.Ended()) return RunState::kEnd;
  if (cFunkhaus->GetStreamQueryInfo(stream::kIcyMetaint).empty()) return RunState::kContinue;
  list.SetCell(row, app::kTitleCell, u"Hole Info...");
  const Text interval = cFunkhaus->GetStreamQueryInfo(stream::kIcyMetaint);
  if (interval.empty()) return RunState::kContinue;
  const Text title = ReadTitle(interval);
  if (window_.Ended()) return RunState::kEnd;
  list.SetCell(row, app::kTitleCell, title.empty() ? Text(u"--") : RepairTitle(title));
  return RunState::kContinue;
}

void NowPlaying::cFunkhaus_QueryStream(bool) {}

}  // namespace ui
