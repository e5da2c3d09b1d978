#include "platform/win32/media/win32_media.h"

#include "platform/win32/base/windows_api.h"

#include <mfapi.h>
#include <mfidl.h>
#include <objidl.h>

#include <algorithm>
#include <bit>
#include <chrono>
#include <cstdio>
#include <map>
#include <set>
#include <utility>

#include "platform/win32/media/com_calls.h"
#include "platform/win32/media/default_device.h"
#include "platform/win32/media/handle_table.h"
#include "platform/win32/media/media_library.h"
#include "platform/win32/media/media_opener.h"
#include "platform/win32/media/media_results.h"
#include "platform/win32/media/operation_shapes.h"
#include "platform/win32/media/playback_notes.h"
#include "platform/win32/media/renewal.h"
#include "platform/win32/media/session_watch.h"
#include "platform/win32/media/shutdown_queue.h"
#include "platform/win32/media/stall_watch.h"
#include "ports/media_interfaces.h"

// Public, but missing from the compiler's headers.
extern "C" HRESULT WINAPI MFCreateMFByteStreamOnStream(::IStream* stream, ::IMFByteStream** made);

namespace platform::win32 {
namespace {

/// The thread's COM, for as long as the adapter lives.
class ComApartment {
 public:
  ComApartment() : mine_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}
  ~ComApartment() {
    if (mine_) CoUninitialize();
  }
  ComApartment(const ComApartment&) = delete;
  ComApartment& operator=(const ComApartment&) = delete;

 private:
  bool mine_;
};

void WriteLog(const std::string& line) {
  const std::string written = "sound: " + line + "\n";
  std::fputs(written.c_str(), stderr);
  OutputDebugStringA(written.c_str());
}

DeviceSearch::Look LookOf(const Win32MediaOptions& options) {
  return options.look_for_device ? options.look_for_device : &DefaultDeviceTakesSound;
}

template <typename... Arguments>
bool Is(const Operation<Arguments...>& operation, Interface interface_id, std::int32_t slot) {
  return operation.interface_id == interface_id && operation.slot == slot;
}

}  // namespace

struct Win32Media::Impl {
  Impl(MessageLoop& loop, const Win32MediaOptions& given)
      : options(given),
        opener(loop, {given.open_deadline, {given.stall_limit, given.user_agent}, given.reader}, notes) {}
  // Openings that go on wait for reads.
  ~Impl() { ForgetItem(); }
  Impl(const Impl&) = delete;
  Impl& operator=(const Impl&) = delete;

  void Log(const std::string& line) const { options.log ? options.log(line) : WriteLog(line); }
  template <typename Made>
  HResult Enter(HRESULT result, Made* made, Interface interface_id, InterfaceHandle& out) {
    if (result == S_OK) out = table.Enter(made, interface_id);
    return result;
  }
  std::optional<HResult> Open(InterfaceHandle resolver, std::span<const Argument> arguments);
  void TakeNews();
  void Watch(std::shared_ptr<SessionWatch> session);
  [[nodiscard]] std::optional<Renewal::Loss> LossOf(const SessionWatch::News& news) const;
  [[nodiscard]] bool StationPlays() const;
  bool StationStalls();
  void KeepClock(std::int32_t slot, std::span<const Argument> arguments);
  void ForgetItem();
  void Before(Interface interface_id, std::int32_t slot);
  void After(Interface interface_id, std::int32_t slot);

  const Win32MediaOptions options;
  const ComApartment apartment;
  const std::shared_ptr<PlaybackNotes> notes = std::make_shared<PlaybackNotes>();
  MediaOpener opener;
  HandleTable table;
  ComCalls calls{table};
  ShutdownQueue shutdowns;
  Renewal renewal{table,
                  opener,
                  *notes,
                  shutdowns,
                  {options.open_deadline, [this](const std::string& line) { Log(line); }, LookOf(options)}};
  std::set<InterfaceHandle> running;  ///< sessions that were not shut down
  std::map<std::uint32_t, ComPointer<::IStream>> streams;
  std::uint32_t last_stream = 0;
  std::shared_ptr<SessionWatch> watch;  ///< of the latest session
  PlaybackNotes::Item watched = 0;      ///< its item
  StallWatch stall{options.stall_limit};
  /// It was asked to close, so nothing that it uses is shut down before it has.
  bool closing = false;
  bool other_version = false;
};

Win32Media::Win32Media(MessageLoop& loop, const Win32MediaOptions& options)
    : impl_(std::make_unique<Impl>(loop, options)) {}

Win32Media::~Win32Media() = default;

StreamObject Win32Media::RegisterStream(::IStream* stream) {
  if (stream == nullptr) return StreamObject::kNone;
  stream->AddRef();
  impl_->streams.emplace(++impl_->last_stream, ComPointer<::IStream>(stream));
  return StreamObject{impl_->last_stream};
}

void Win32Media::UnregisterStream(StreamObject stream) {
  impl_->streams.erase(static_cast<std::uint32_t>(stream));
}

HResult Win32Media::MFStartup(std::int32_t version, std::int32_t flags) {
  const HRESULT result =
      CallMedia<decltype(::MFStartup)>("MFStartup", static_cast<ULONG>(version), static_cast<DWORD>(flags));
  if (result == kMissingMediaLibrary || result == E_NOTIMPL)
    impl_->Log("The system has no media platform, so nothing can be played.");
  if (result != kMfEBadStartupVersion) return result;
  if (!std::exchange(impl_->other_version, true)) {
    impl_->Log("The system refuses version " + std::to_string(version) +
               " of its media platform; using its own.");
  }
  return CallMedia<decltype(::MFStartup)>("MFStartup", MF_VERSION, static_cast<DWORD>(flags));
}

HResult Win32Media::MFShutdown() {
  impl_->ForgetItem();
  if (impl_->shutdowns.Finish(impl_->options.close_limit))
    return CallMedia<decltype(::MFShutdown)>("MFShutdown");
  impl_->Log("The media platform stays open, because a session does not close.");
  return kSOk;
}

HResult Win32Media::MFCreateSourceResolver(InterfaceHandle& out) {
  ::IMFSourceResolver* made = nullptr;
  const HRESULT result = CallMedia<decltype(::MFCreateSourceResolver)>("MFCreateSourceResolver", &made);
  // Without one nothing can be opened, which is what was to come next.
  if (result != S_OK) {
    impl_->renewal.Forget();
    impl_->notes->OpeningFailed(impl_->notes->Open(), result);
  }
  return impl_->Enter(result, made, Interface::kSourceResolver, out);
}

HResult Win32Media::MFCreateMFByteStreamOnStream(StreamObject stream, InterfaceHandle& out) {
  const auto found = impl_->streams.find(static_cast<std::uint32_t>(stream));
  if (found == impl_->streams.end()) return kEInvalidArg;
  ::IMFByteStream* made = nullptr;
  const HRESULT result = CallMedia<decltype(::MFCreateMFByteStreamOnStream)>("MFCreateMFByteStreamOnStream",
                                                                             found->second.Get(), &made);
  return impl_->Enter(result, made, Interface::kUnknown, out);
}

HResult Win32Media::MFCreateTopology(InterfaceHandle& out) {
  ::IMFTopology* made = nullptr;
  const HRESULT result = CallMedia<decltype(::MFCreateTopology)>("MFCreateTopology", &made);
  return impl_->Enter(result, made, Interface::kTopology, out);
}

HResult Win32Media::MFCreateTopologyNode(std::int32_t type, InterfaceHandle& out) {
  ::IMFTopologyNode* made = nullptr;
  const HRESULT result = CallMedia<decltype(::MFCreateTopologyNode)>(
      "MFCreateTopologyNode", static_cast<MF_TOPOLOGY_TYPE>(type), &made);
  return impl_->Enter(result, made, Interface::kTopologyNode, out);
}

HResult Win32Media::MFCreateMediaSession(InterfaceHandle& out) {
  ::IMFMediaSession* made = nullptr;
  const HRESULT result = CallMedia<decltype(::MFCreateMediaSession)>("MFCreateMediaSession", nullptr, &made);
  if (result == S_OK) {
    impl_->renewal.Forget();
    impl_->Watch(WatchSession(*made));
  }
  const HResult entered = impl_->Enter(result, made, Interface::kMediaSession, out);
  if (entered == kSOk) impl_->running.insert(out);
  return entered;
}

HResult Win32Media::MFCreateAudioRendererActivate(InterfaceHandle& out) {
  ::IMFActivate* made = nullptr;
  const HRESULT result =
      CallMedia<decltype(::MFCreateAudioRendererActivate)>("MFCreateAudioRendererActivate", &made);
  return impl_->Enter(result, made, Interface::kActivate, out);
}

HResult Win32Media::MFCreateVideoRendererActivate(WindowHandle window, InterfaceHandle& out) {
  ::IMFActivate* made = nullptr;
  // A window's handle has 32 bits that count; the system extends them by their sign.
  const auto extended = static_cast<LONG_PTR>(static_cast<std::int32_t>(window));
  const HRESULT result = CallMedia<decltype(::MFCreateVideoRendererActivate)>(
      "MFCreateVideoRendererActivate", reinterpret_cast<HWND>(extended), &made);
  return impl_->Enter(result, made, Interface::kActivate, out);
}

HResult Win32Media::MFGetService(InterfaceHandle object, const Guid& service, const Guid& iid,
                                 InterfaceHandle& out) {
  const auto view = impl_->table.Find(object);
  if (!view) return kEInvalidArg;
  void* made = nullptr;
  const HRESULT result = CallMedia<decltype(::MFGetService)>(
      "MFGetService", view->object.Get(), std::bit_cast<GUID>(service), std::bit_cast<IID>(iid), &made);
  return impl_->Enter(result, made, InterfaceOf(iid).value_or(Interface::kUnknown), out);
}

std::optional<HResult> Win32Media::Impl::Open(InterfaceHandle resolver, std::span<const Argument> arguments) {
  const auto view = table.Find(resolver);
  const auto* shape =
      FindShape(Interface::kSourceResolver, platform::IMFSourceResolver::CreateObjectFromURL.slot);
  if (!view || view->interface_id != Interface::kSourceResolver || !Matches(*shape, arguments))
    return std::nullopt;
  const auto* address = std::get<const Text*>(arguments[0]);
  auto* type = std::get<std::int32_t*>(arguments[3]);
  auto* out = std::get<InterfaceHandle*>(arguments[4]);
  if (address == nullptr || type == nullptr || out == nullptr) return kEInvalidArg;
  renewal.Forget();
  OpenedObject opened = opener.Open(*static_cast<::IMFSourceResolver*>(view->object.Get()), *address,
                                    std::get<std::int32_t>(arguments[1]));
  if (opened.result != kSOk) return opened.result;
  *type = opened.type;
  *out = table.Enter(std::move(opened.object), Interface::kUnknown);
  return kSOk;
}

void Win32Media::Impl::Watch(std::shared_ptr<SessionWatch> session) {
  watch = std::move(session);
  watched = notes->Latest();
  closing = false;
}

void Win32Media::Impl::ForgetItem() {
  opener.EndReads();
  renewal.Forget();
}

void Win32Media::Impl::TakeNews() {
  shutdowns.Step(ShutdownQueue::Clock::now());
  if (auto renewed = renewal.Step()) Watch(std::move(renewed));
  if (!watch) return;
  const SessionWatch::News news = watch->Take();
  // What a session reports that was closed is about nothing that plays.
  const bool stalls = StationStalls();
  const bool late = renewal.StartIsLate();
  if ((!news.broken && !news.ended && !stalls && !late) || closing || watched != notes->Latest()) return;
  if (renewal.IsStarting()) {
    renewal.StartFailed(std::exchange(watch, nullptr),
                        news.broken.value_or(late ? kMfENetTimeout : kMfENetRead));
  } else if (const auto loss = LossOf(news)) {
    renewal.Begin(std::exchange(watch, nullptr), notes->Status().state, *loss);
  } else if (news.broken) {
    // Nobody is there to hear the station that is read for it.
    opener.EndReads();
    notes->Broken(watched, *news.broken);
  } else if (notes->Status().state != PlaybackState::kStopped) {
    // Stop ends reads, which is an end for what has just started.
    notes->Ended(watched);
  }
}

// A decoder that fails would fail again. What else a station's session may report is not known enough to
// leave the station silent for it: what is read by the adapter is renewed here only for a device.
std::optional<Renewal::Loss> Win32Media::Impl::LossOf(const SessionWatch::News& news) const {
  const PlaybackState state = notes->Status().state;
  const bool started =
      state == PlaybackState::kPlaying || state == PlaybackState::kPaused || state == PlaybackState::kStopped;
  if (!started || !(opener.IsLive() || opener.IsLiveOfTheSystem())) return std::nullopt;
  const HResult cause = news.broken.value_or(kSOk);
  if (IsDeviceFailure(cause)) return Renewal::Loss::kDevice;
  const bool lost = opener.IsLiveOfTheSystem() && !IsDecoderFailure(cause);
  return lost ? std::optional(Renewal::Loss::kStation) : std::nullopt;
}

bool Win32Media::Impl::StationPlays() const {
  return opener.IsLiveOfTheSystem() && watch && !closing && watched == notes->Latest() &&
         notes->Status().state == PlaybackState::kPlaying;
}

bool Win32Media::Impl::StationStalls() {
  if (!StationPlays()) {
    stall.Reset();
    return false;
  }
  LONGLONG played = 0;
  MFTIME now = 0;
  const auto clock = table.Seen(Interface::kClock);
  const bool says =
      clock && static_cast<::IMFClock*>(clock.Get())->GetCorrelatedTime(0, &played, &now) == S_OK;
  return stall.Look(says ? std::optional<std::int64_t>(played) : std::nullopt,
                    watch->IsBuffering() ? StallWatch::Source::kBuffers : StallWatch::Source::kSends,
                    StallWatch::Clock::now());
}

// The caller's clock began with the first session. A station's runs until Stop or Pause: between its loss and
// the session's report a Stop would not come otherwise.
void Win32Media::Impl::KeepClock(std::int32_t slot, std::span<const Argument> arguments) {
  if (slot == platform::IMFClock::GetState.slot) {
    auto* const state = std::get<std::int32_t*>(arguments[1]);
    if (state != nullptr && StationPlays()) *state = static_cast<std::int32_t>(ClockState::kRunning);
  } else if (slot == platform::IMFClock::GetCorrelatedTime.slot) {
    auto* const played = std::get<std::int64_t*>(arguments[1]);
    const auto session = StationPlays() ? Renewal::Session::kMayBeLost : Renewal::Session::kPlays;
    if (played != nullptr) *played = renewal.Position(*played, session);
  }
}

// A source that waits for a server's data would not shut down before it comes.
void Win32Media::Impl::Before(Interface interface_id, std::int32_t slot) {
  using namespace platform::IMFMediaSession;
  const bool ends = Is(Stop, interface_id, slot) || Is(Close, interface_id, slot) ||
                    Is(platform::IMFMediaSession::Shutdown, interface_id, slot) ||
                    Is(platform::IMFMediaSource::Shutdown, interface_id, slot);
  if (ends) opener.EndReads();
  if (Is(Start, interface_id, slot)) opener.ResumeReads();
}

void Win32Media::Impl::After(Interface interface_id, std::int32_t slot) {
  using namespace platform::IMFMediaSession;
  const auto item = notes->Latest();
  if (Is(Start, interface_id, slot)) {
    notes->Started(item);
    opener.Playing();
  }
  if (Is(Pause, interface_id, slot)) {
    notes->Paused(item);
    opener.Paused();
  }
  if (Is(Stop, interface_id, slot) || Is(Close, interface_id, slot)) notes->Stopped(item);
  // The caller shuts the session and its source down next.
  if (Is(Close, interface_id, slot) && watch) {
    closing = true;
    shutdowns.Add(watch);
    if (!watch->WaitClosed(options.close_limit)) Log("The media session does not close.");
  }
}

std::optional<HResult> Win32Media::DispCallFunc(InterfaceHandle object, Interface interface_id,
                                                std::int32_t slot, std::span<const Argument> arguments) {
  if (Is(platform::IMFSourceResolver::CreateObjectFromURL, interface_id, slot))
    return impl_->Open(object, arguments);
  const bool attribute = Is(platform::IMFPresentationDescriptor::GetUINT64, interface_id, slot);
  // The length that a live stream claims to have is none.
  const auto view = impl_->table.Find(object);
  if (attribute && view && impl_->opener.IsLive()) return kMfEAttributeNotFound;
  // What waits for a session's reports keeps it alive until it is shut down.
  if (Is(platform::IUnknown::Release, interface_id, slot) && impl_->running.contains(object))
    DispCallFunc(object, Interface::kMediaSession, platform::IMFMediaSession::Shutdown.slot, {});
  if (Is(platform::IMFMediaSession::Shutdown, interface_id, slot)) impl_->running.erase(object);
  impl_->TakeNews();
  const bool seen_so = view && view->interface_id == interface_id;
  if (const auto answer = seen_so ? impl_->renewal.Answer(interface_id, slot, arguments) : std::nullopt)
    return answer;
  if (view) impl_->Before(interface_id, slot);
  const bool shuts_down = Is(platform::IMFMediaSource::Shutdown, interface_id, slot) ||
                          Is(platform::IMFMediaSession::Shutdown, interface_id, slot);
  if (seen_so && shuts_down && impl_->closing) {
    impl_->shutdowns.Add(impl_->watch, *view);
    return kSOk;
  }
  const auto result = impl_->calls.DispCallFunc(object, interface_id, slot, arguments);
  if (result == kSOk) impl_->After(interface_id, slot);
  if (result == kSOk && interface_id == Interface::kClock) impl_->KeepClock(slot, arguments);
  return result;
}

HResult Win32Media::CoCreateInstance(const Guid& clsid, InterfaceHandle outer, std::int32_t class_context,
                                     const Guid& iid, InterfaceHandle& out) {
  return impl_->calls.CoCreateInstance(clsid, outer, class_context, iid, out);
}

PlaybackStatus Win32Media::Status() const {
  impl_->TakeNews();
  return impl_->renewal.Refine(impl_->notes->Status());
}

}  // namespace platform::win32
