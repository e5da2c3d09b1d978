#include "ui/playback_control.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "app/state/scoped_flag.h"
#include "app/state/status_sentences.h"
#include "app/text/numbers.h"

namespace ui {

using controls::CheckValue;
using platform::Text;
using player::clsMFPlayer;

namespace {

/// A public directory of internet radio stations.
constexpr std::u16string_view kStationDirectory = u"https://www.radio-browser.info/";

/// A peak of 0 to 1 on the scale of the bars.
int BarValue(float peak) { return static_cast<int>(app::RoundTiesToEven(peak * 10000.0F)); }

}  // namespace

PlaybackControl::PlaybackControl(Parts parts, Ports ports, app::WindowState& state,
                                 const std::shared_ptr<clsMFPlayer>& player,
                                 const std::shared_ptr<stream::clsFunkhaus>& funkhaus, Reports reports,
                                 Actions actions, const app::Life& window)
    : parts_(parts),
      ports_(ports),
      state_(state),
      cPlayer(player),
      cFunkhaus(funkhaus),
      reports_(reports),
      actions_(std::move(actions)),
      window_(window),
      starts_(window) {
  subscriptions_ += parts_.Command1.Clicked.Subscribe([this] { Command1_Click(); });
  subscriptions_ += parts_.Command2.Clicked.Subscribe([this] { Command2_Click(); });
  subscriptions_ += parts_.Command6.Clicked.Subscribe([this] { Command6_Click(); });
  subscriptions_ += parts_.Command7.Clicked.Subscribe([this] { Command7_Click(); });
  subscriptions_ += parts_.ckSavMute.Clicked.Subscribe([this] { ckSavMute_Click(); });
  subscriptions_ += parts_.hscSavVolume.ValueChanged.Subscribe([this] { hscSavVolume_Change(); });
  subscriptions_ += parts_.hscSavVolume.Scrolled.Subscribe([this] { hscSavVolume_Scroll(); });
  subscriptions_ += parts_.tmPlay.Ticked.Subscribe([this] { tmPlay_Timer(); });
  subscriptions_ += parts_.Timer1.Ticked.Subscribe([this] { Timer1_Timer(); });
}

void PlaybackControl::Command1_Click() {
  if (state_.current_stream_address.empty()) {
    // The box is the same for a station without an address, which is marked all the same.
    if (!state_.current_station_name.empty()) {
      reports_.status_line.Notify(app::sentences::kNoAddress, {state_.current_station_name});
    }
    ports_.dialogs.MessageBoxW(u"Bitte zuerst eine Radiostation markieren!", u"",
                               platform::kMbIconInformation);
    return;
  }
  if (state_.details_are_stale && RefreshSelection() == StartState::kEnd) return;
  if (window_.Ended()) return;
  parts_.Timer2.SetEnabled(true);
  // For the title, which the polling fetches: the address to play is asked once more, however silent it was.
  if (cFunkhaus) cFunkhaus->TryAgain(state_.current_stream_address, stream::Wait::kBrief);
  PlayStation(true, state_.current_stream_address);
  reports_.mark.GivenUp();
}

PlaybackControl::StartState PlaybackControl::RefreshSelection() {
  const auto has_selection = [](const controls::ListView& list) {
    return list.SelectedRow() != controls::RowId::kNone;
  };
  if (parts_.lists.filtered.Visible() && has_selection(parts_.lists.filtered)) return ResolveAgain();
  if (!has_selection(parts_.lists.full)) return StartState::kContinue;
  // Cleared first, so that what becomes stale during the waits stays stale.
  state_.details_are_stale = false;
  return ResolveAgain();
}

PlaybackControl::StartState PlaybackControl::ResolveAgain() {
  Command6_Click();
  const app::Runs::Run start = starts_.Begin();
  reports_.status_line.Resolving();
  actions_.show_station_details();
  return start.Wanted() ? StartState::kContinue : StartState::kEnd;
}

void PlaybackControl::PlayStation(bool bStart, const Text& sLink) {
  // Keeps the player alive through the waits below even when a closing window releases it meanwhile.
  const std::shared_ptr<clsMFPlayer> player = cPlayer;
  if (!player) return;
  const app::Runs::Run start = starts_.Begin();
  stopped_ = false;
  state_.current_stream_address = sLink;
  has_services_ = false;
  if (bStart) reports_.mark.Opening();
  reports_.status_line.Starting(state_.current_station_name.empty() ? sLink : state_.current_station_name);
  player->MediaFileFromUrl(state_.current_stream_address);
  if (player->OpeningCancelled()) {
    ShowNothingPlaying();
    return;
  }
  reports_.status_line.Follow();
  if (state_.last_create_result != 0) {
    reports_.mark.GivenUp();
    ports_.dialogs.MessageBoxW(SystemErrorText(state_.last_create_result), u"", platform::kMbIconCritical);
    return;
  }
  if (player->CreateService()) {
    ShowServiceValues(*player);
    has_services_ = true;
  }
  if (!start.Wanted()) {
    // The item was opened after all, and would be downloaded until the next start.
    if (stopped_) player->StopMedia();
    return;
  }

  const std::optional<Text> information = InformationText(*player);
  if (!information) return reports_.status_line.NotPlayable();
  reports_.panel.ShowOpened(state_.current_station_name, *information);
  if (!bStart) return;
  parts_.Timer1.SetEnabled(true);
  cPlayer_MediaFileIsReady(true);
}

void PlaybackControl::ShowServiceValues(clsMFPlayer& player) {
  parts_.ckSavMute.SetValue(player.GetAudioSimpleMute() == 1 ? CheckValue::kChecked : CheckValue::kUnchecked);
  parts_.hscSavVolume.SetValue(player.GetAudioSimpleAudioVolume());
}

std::optional<Text> PlaybackControl::InformationText(clsMFPlayer& player) const {
  std::vector<Text> names;
  const std::int32_t count = player.GetAllMetadataNames(names);
  Text information;
  for (std::int32_t index = 0; index < count; ++index) {
    if (static_cast<std::size_t>(index) >= names.size()) return std::nullopt;
    const Text& name = names[static_cast<std::size_t>(index)];
    Text value;
    player.GetMetadata(name, value);
    information += name + u": " + value + u"\r\n";
  }
  return information;
}

void PlaybackControl::cPlayer_MediaFileIsReady(bool IsReady) {
  if (!IsReady || !cPlayer) return;
  const std::shared_ptr<clsMFPlayer> player = cPlayer;
  const std::int32_t play_state = player->PlayState();
  if (play_state != player::kPlayStateStopped && play_state != player::kPlayStateInvalid) return;
  if (!player->PlayMedia()) return reports_.status_line.NotPlayable();
  reports_.mark.Playing();
  parts_.tmPlay.SetEnabled(true);
  parts_.Label1.SetCaption(PositionText(*player) + u" Dauer: " + player->DurationHMS());
}

void PlaybackControl::cPlayer_IsCreateOK(std::int32_t lngIsOk) { state_.last_create_result = lngIsOk; }

void PlaybackControl::Command6_Click() {
  starts_.Interrupt();
  stopped_ = true;
  parts_.Timer2.SetEnabled(false);
  if (cFunkhaus) cFunkhaus->StopRecStream();
  const std::shared_ptr<clsMFPlayer> player = cPlayer;
  if (!player || player->PlayState() != player::kPlayStateRunning) {
    reports_.mark.GivenUp();
    reports_.status_line.Stopped();
    return;
  }
  parts_.tmPlay.SetEnabled(false);
  player->StopMedia();
  reports_.mark.Stopped();
  reports_.status_line.Stopped();
  reports_.panel.ShowStopped();
  ClearDisplay();
}

void PlaybackControl::ShowNothingPlaying() {
  reports_.status_line.Stopped();
  parts_.Timer2.SetEnabled(false);
  parts_.tmPlay.SetEnabled(false);
  ClearDisplay();
}

void PlaybackControl::ClearDisplay() {
  parts_.Timer1.SetEnabled(false);
  for (controls::ProgressBar& bar : parts_.ProgressBar1) HideBar(bar);
  parts_.Label1.SetCaption(u"");
}

void PlaybackControl::HideBar(controls::ProgressBar& bar) {
  bar.SetVisible(false);
  bar.SetValue(0);
}

void PlaybackControl::tmPlay_Timer() {
  const std::shared_ptr<clsMFPlayer> player = cPlayer;
  if (!player) return;
  Text caption = PositionText(*player);
  if (player->Duration() != 0) caption += u" Dauer: " + player->DurationHMS();
  parts_.Label1.SetCaption(std::move(caption));
  reports_.mark.Follow();
  if (has_services_) FollowMixer(*player);
  reports_.status_line.Follow();
}

void PlaybackControl::FollowMixer(clsMFPlayer& player) {
  const std::optional<std::int32_t> mute = player.AnsweredMute();
  const std::optional<std::int16_t> volume = player.AnsweredVolume();
  const app::ScopedFlag following(following_mixer_);
  if (mute) parts_.ckSavMute.SetValue(*mute == 1 ? CheckValue::kChecked : CheckValue::kUnchecked);
  if (volume) parts_.hscSavVolume.SetValue(*volume);
}

Text PlaybackControl::PositionText(clsMFPlayer& player) const {
  return u"Pos: " + player.CurrentPlayPositionHMS();
}

void PlaybackControl::Timer1_Timer() {
  const std::shared_ptr<clsMFPlayer> player = cPlayer;
  if (!player) return;
  auto& bars = parts_.ProgressBar1;
  const std::int32_t channels = player->GetAudioChannelCount();
  if (channels <= 1) {
    bars[0].SetVisible(true);
    bars[1].SetVisible(false);
    float peak = 0;
    if (player->GetAudioPeak(peak)) bars[0].SetValue(BarValue(peak));
    return;
  }
  bars[1].SetVisible(true);
  bars[0].SetVisible(true);
  std::vector<float> peaks;
  if (player->GetAudioChannelsPeakValues(channels, peaks) && peaks.size() >= 2) {
    bars[0].SetValue(BarValue(peaks[0]));
    bars[1].SetValue(BarValue(peaks[1]));
  }
  ports_.message_loop.ProcessPendingMessages();
}

void PlaybackControl::hscSavVolume_Change() { hscSavVolume_Scroll(); }

void PlaybackControl::hscSavVolume_Scroll() {
  if (!cPlayer || following_mixer_) return;
  const float volume = static_cast<float>(parts_.hscSavVolume.Value()) / 100.0F;
  cPlayer->SetAudioAudioVolume(std::clamp(volume, 0.0F, 1.0F));
}

void PlaybackControl::ckSavMute_Click() {
  if (cPlayer && !following_mixer_) cPlayer->SetAudioSimpleMute(parts_.ckSavMute.Checked());
}

void PlaybackControl::Command7_Click() {
  const bool opened =
      ports_.shell.ShellExecuteW(0, u"open", u"sndvol.exe", u"", u"", platform::kSwShowNormal);
  if (!opened) reports_.status_line.Notify(app::sentences::kNoMixer);
}

void PlaybackControl::Command2_Click() {
  const Text address(kStationDirectory);
  const bool opened = ports_.shell.ShellExecuteW(0, u"open", address, u"", u"", platform::kSwShowNormal);
  if (!opened) reports_.status_line.Notify(app::sentences::kNoDirectory, {address});
}

Text PlaybackControl::SystemErrorText(std::int32_t code) const {
  return ports_.system_messages.FormatMessageA(code);
}

}  // namespace ui
