#pragma once
// A renewal whose lost session is made of the test's own objects: nothing plays, and nothing is connected to
// before a test opens an address. Not a session that plays (station_rig.h).

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>
#include <mfidl.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/win32/media/media_opener.h"
#include "platform/win32/media/renewal.h"
#include "platform/win32/media/shutdown_queue.h"
#include "ports/media_interfaces.h"
#include "tests/platform/win32/media/slot_object.h"
#include "tests/support/fakes.h"

namespace platform::win32 {

/// Notes what is done to it.
struct SessionObject : SlotObject {
  SessionObject() {
    Answer(9, &Start);
    Answer(11, &Stop);
    Answer(12, &Close);
    Answer(13, &ShutDown);
  }
  static HRESULT STDMETHODCALLTYPE Start(SlotObject* self, const GUID* format, const PROPVARIANT* from) {
    self->calls.emplace_back(IsEqualGUID(*format, GUID{}) && from->vt == VT_EMPTY ? "start" : "seek");
    return self->result;
  }
  static HRESULT STDMETHODCALLTYPE Stop(SlotObject* self) {
    self->calls.emplace_back("stop");
    return S_OK;
  }
  static HRESULT STDMETHODCALLTYPE Close(SlotObject* self) {
    self->calls.emplace_back("close");
    return S_OK;
  }
  static HRESULT STDMETHODCALLTYPE ShutDown(SlotObject* self) {
    self->calls.emplace_back("shut down");
    return S_OK;
  }
};

struct SourceObject : SlotObject {
  SourceObject() { Answer(12, &SessionObject::ShutDown); }
};

struct VolumeObject : SlotObject {
  VolumeObject() {
    Answer(3, &Set);
    Answer(4, &Get);
    Answer(5, &SetMute);
    Answer(6, &GetMute);
  }
  static VolumeObject& Of(SlotObject* self) { return *static_cast<VolumeObject*>(self); }
  static HRESULT STDMETHODCALLTYPE Set(SlotObject* self, float volume) {
    self->calls.emplace_back("volume");
    self->number = volume;
    return S_OK;
  }
  static HRESULT STDMETHODCALLTYPE Get(SlotObject* self, float* volume) {
    *volume = self->number;
    return self->result;
  }
  static HRESULT STDMETHODCALLTYPE SetMute(SlotObject* self, WINBOOL mute) {
    self->calls.emplace_back("mute");
    Of(self).mute = mute;
    return S_OK;
  }
  static HRESULT STDMETHODCALLTYPE GetMute(SlotObject* self, WINBOOL* mute) {
    *mute = Of(self).mute;
    return Of(self).mute_result;
  }
  WINBOOL mute = FALSE;
  HRESULT mute_result = S_OK;
};

struct ClockObject : SlotObject {
  ClockObject() {
    Answer(4, &GetTime);
    Answer(6, &GetState);
  }
  static ClockObject& Of(SlotObject* self) { return *static_cast<ClockObject*>(self); }
  static HRESULT STDMETHODCALLTYPE GetTime(SlotObject* self, DWORD, LONGLONG* time, MFTIME* now) {
    *time = Of(self).played;
    *now = 0;
    return Of(self).time_result;
  }
  static HRESULT STDMETHODCALLTYPE GetState(SlotObject* self, DWORD, MFCLOCK_STATE* state) {
    *state = Of(self).state;
    return self->result;
  }
  LONGLONG played = 0;
  HRESULT time_result = S_OK;
  MFCLOCK_STATE state = MFCLOCK_STATE_RUNNING;
};

/// The lost session, with its source, its clock and its volume.
struct SessionObjects {
  SessionObject session;
  SourceObject source;
  ClockObject clock;
  VolumeObject volume;
};

struct RenewalRig {
  RenewalRig() {
    session_handle = table.Enter(old.session.Reference(), Interface::kMediaSession);
    table.Enter(old.source.Reference(), Interface::kMediaSource);
    table.Enter(old.clock.Reference(), Interface::kClock);
    volume_handle = table.Enter(old.volume.Reference(), Interface::kSimpleAudioVolume);
    notes->Started(notes->Open());
  }
  RenewalRig(const RenewalRig&) = delete;
  RenewalRig& operator=(const RenewalRig&) = delete;

  void Lose(PlaybackState state = PlaybackState::kPlaying, Renewal::Loss loss = Renewal::Loss::kStation) {
    renewal->Begin(lost, state, loss);
  }
  /// The session of that watch has closed, and come to rest.
  void Close(SessionWatch& watch) {
    watch.Closed();
    const auto closed = ShutdownQueue::Clock::now();
    for (int rests = 0; rests <= 2; ++rests) shutdowns.Step(closed + rests * ShutdownQueue::kRest);
  }
  template <typename... Arguments>
  std::optional<HResult> Answer(const Operation<Arguments...>& operation,
                                const std::vector<Argument>& list = {}) {
    return renewal->Answer(operation.interface_id, operation.slot, list);
  }
  std::optional<HResult> Start() { return Answer(IMFMediaSession::Start, {&format, &here}); }
  std::optional<HResult> Pause() { return Answer(IMFMediaSession::Pause); }
  std::optional<HResult> Stop() { return Answer(IMFMediaSession::Stop); }
  std::optional<HResult> Close() { return Answer(IMFMediaSession::Close); }
  std::optional<HResult> ShutDown() { return Answer(IMFMediaSession::Shutdown); }
  /// What is answered; -1 when it is left to the session.
  float Volume() {
    float volume = -1;
    Answer(IMFSimpleAudioVolume::GetMasterVolume, {&volume});
    return volume;
  }
  std::int32_t Mute() {
    std::int32_t mute = -1;
    Answer(IMFSimpleAudioVolume::GetMute, {&mute});
    return mute;
  }
  ClockState State() {
    std::int32_t state = 0;
    Answer(IMFClock::GetState, {std::int32_t{0}, &state});
    return ClockState{state};
  }
  std::int64_t Position() {
    std::int64_t position = -1;
    std::int64_t system = -1;
    Answer(IMFClock::GetCorrelatedTime, {std::int32_t{0}, &position, &system});
    return position;
  }
  [[nodiscard]] PlaybackStatus Status() const { return renewal->Refine(notes->Status()); }

  // Declared before the table, which drops its references in the end.
  SessionObjects old;
  test_support::FakeMessageLoop message_loop;
  HandleTable table;
  ShutdownQueue shutdowns;
  InterfaceHandle session_handle = InterfaceHandle::kNone;
  InterfaceHandle volume_handle = InterfaceHandle::kNone;
  const Guid format;
  PropertyValue here;
  std::vector<std::string> steps;
  const std::shared_ptr<PlaybackNotes> notes = std::make_shared<PlaybackNotes>();
  const std::shared_ptr<SessionWatch> lost = std::make_shared<SessionWatch>();
  MediaOpenerOptions opener_options{std::chrono::seconds(10), {std::chrono::seconds(15), u"test"}, nullptr};
  std::optional<MediaOpener> opener{std::in_place, message_loop, opener_options, notes};
  RenewalOptions renewal_options{std::chrono::seconds(10),
                                 [this](const std::string& line) { steps.push_back(line); },
                                 [] { return false; }};
  std::optional<Renewal> renewal{std::in_place, table, *opener, *notes, shutdowns, renewal_options};
};

}  // namespace platform::win32
