#pragma once
// Keeps one item playing, on a thread of its own: turns what happens into events and executes their table.
// Not the table (item_phases.h), and not the caller's side (media_item.h).
//
// The phases of an item and what follows them. item_phases.h says what each one is, and what is done.
//
//                     attempt due       it is open       it fails   source gone  heard out
//   kOpening                            kSounding        kFailed
//   kSounding                                                       kBridging    kSilent
//   kBridging         kBridgingOpening                                           kSilent
//   kBridgingOpening                    kBridgingOpened  kBridging               kReopening
//   kBridgingOpened                                      kBridging               kSounding
//   kSilent           kReopening
//   kReopening                          kSounding        kSilent
//
// Stop and close lead from each of these phases to kStopped, and the loss of a device from all but the first
// to kSilent. Start leads from kStopped and kEnded to kSilent, where an attempt is due at once; kFailed is
// final. A first attempt that only lacks a device is made once more without one. A file has no source to
// lose: when it is heard out, breaks off or cannot be opened again, its phase is kEnded.
//
// A server dies: the connection ends, breaks, or brings nothing for the stall limit while the buffer is dry.
// What is buffered is heard, and meanwhile the station is opened again, at the times of reconnect_schedule.h.
// The new connection is heard when the old sound is over, or at once when it is already over.
//
// A buffer runs dry: the sound pauses when the device is nearly empty too, and continues with the amount of
// reserve.h; the phase stays kSounding. In the bridging phases it is the end of the earlier sound.
//
// A device disappears: both pipelines are closed, and a device is searched as long as the item is to run
// (device_watch.h). Attempts wait for it. A file then continues where it was, a station with what is sent at
// that time.
//
// Stop or close: both pipelines are closed, and neither an attempt nor a search for a device follows. One
// that a hanging sound server holds up is dropped when it returns.
//
// Start: reopens what was stopped or is over, continues what was paused. What was opened without a device, to
// try the address, is dropped: it would be out of date when one is found. Pause: changes no phase; but
// nothing is reopened, and no device searched, until Start.

#include <cstdint>
#include <memory>

#include "platform/gstreamer/device_search.h"
#include "platform/gstreamer/item_phases.h"
#include "platform/gstreamer/item_pipelines.h"
#include "platform/gstreamer/item_report.h"
#include "platform/gstreamer/item_services.h"
#include "platform/gstreamer/item_state.h"
#include "platform/gstreamer/timers.h"
#include "platform/live/reconnect_schedule.h"

namespace platform::gstreamer {

class MediaSupervisor {
 public:
  MediaSupervisor(const PipelineInput& input, std::shared_ptr<ItemState> state,
                  std::shared_ptr<ItemServices> services);

  /// The thread's function; returns after the request kShutDown.
  void Run();

 private:
  using Clock = ItemState::Clock;

  // Turns what happens into events of the table.
  void OnRequest(Wanted wanted);
  void OnEvent(const PipelineEvent& event);
  void OnAttemptEvent(const PipelineEvent& event);
  void OnHeardEvent(const PipelineEvent& event);
  void OnPrerolled();
  void FinishOpening(Clock::time_point now);
  void OnAttemptFailed(HResult result, FailureCause cause);
  void OnNoDevice();
  void OnHeardFailed(const PipelineEvent& event);
  void OnDeviceGone();
  PlayingLength::State NoteLength(Pipeline& pipeline);
  void LookAtBuffer();
  void CheckTimers();

  // Executes what the table says.
  void Apply(ItemEvent event);
  void CarryOut(Action action, Phase before);
  void Open(OutputChooser::Wish wish);
  void Promote(Phase before);
  void NoteLoss();
  void AwaitSilence();
  void DropBoth();

  // The current state, and what happens next by itself.
  [[nodiscard]] ItemReport Report() const;
  [[nodiscard]] DeviceSearch::Interest Interest() const;
  [[nodiscard]] bool WaitsForBuffer() const;
  [[nodiscard]] Timer NextAttempt() const;
  [[nodiscard]] Timer StallTime() const;
  [[nodiscard]] Timer NextWake() const;

  const std::shared_ptr<ItemState> state_;
  const std::shared_ptr<ItemServices> services_;
  ItemPipelines pipelines_;
  DeviceSearch device_;
  live::ReconnectSchedule schedule_;
  Phase phase_ = Phase::kOpening;
  ItemKind kind_;  ///< an item from a server is live until it turns out to have a length
  Wanted wanted_ = Wanted::kOpened;
  std::uint64_t request_ = 0;
  FailureCause cause_;  ///< of the failure or the loss; none while all is well
};

}  // namespace platform::gstreamer
