#include "platform/win32/media/session_watch.h"

#include "platform/win32/base/windows_api.h"

#include <mfidl.h>

#include "platform/win32/base/com_pointer.h"

namespace platform::win32 {
namespace {

/// Asks for one event after the other; the session keeps it alive while one is asked for.
class SessionEvents final : public ::IMFAsyncCallback {
 public:
  SessionEvents(::IMFMediaSession& session, std::shared_ptr<PlaybackNotes> notes, PlaybackNotes::Item item,
                std::shared_ptr<SessionClosing> closing)
      : session_(&session), notes_(std::move(notes)), item_(item), closing_(std::move(closing)) {
    session.AddRef();
  }
  virtual ~SessionEvents() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
    const bool known = IsEqualIID(iid, __uuidof(::IMFAsyncCallback)) || IsEqualIID(iid, __uuidof(::IUnknown));
    *out = known ? static_cast<::IMFAsyncCallback*>(this) : nullptr;
    if (known) AddRef();
    return known ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(InterlockedIncrement(&references_)); }
  ULONG STDMETHODCALLTYPE Release() override {
    const LONG left = InterlockedDecrement(&references_);
    if (left == 0) delete this;
    return static_cast<ULONG>(left);
  }
  HRESULT STDMETHODCALLTYPE GetParameters(DWORD*, DWORD*) override { return E_NOTIMPL; }

  HRESULT STDMETHODCALLTYPE Invoke(::IMFAsyncResult* asked) override {
    ComPointer<::IMFMediaEvent> event;
    if (session_->EndGetEvent(asked, event.Receive()) != S_OK) return S_OK;
    Note(*event.Get());
    session_->BeginGetEvent(this, nullptr);
    return S_OK;
  }

 private:
  void Note(::IMFMediaEvent& event) {
    MediaEventType type = MEUnknown;
    HRESULT status = S_OK;
    if (event.GetType(&type) != S_OK || event.GetStatus(&status) != S_OK) return;
    if (FAILED(status)) {
      notes_->Broken(item_, status);
    } else if (type == MESessionEnded) {
      notes_->Ended(item_);
    }
    if (type == MESessionClosed) closing_->Closed();
  }

  LONG references_ = 1;
  const ComPointer<::IMFMediaSession> session_;
  const std::shared_ptr<PlaybackNotes> notes_;
  const PlaybackNotes::Item item_;
  const std::shared_ptr<SessionClosing> closing_;
};

}  // namespace

void SessionClosing::Closed() {
  const std::lock_guard lock(mutex_);
  closed_ = true;
  changed_.notify_all();
}

bool SessionClosing::Wait(std::chrono::milliseconds limit) {
  std::unique_lock lock(mutex_);
  return changed_.wait_for(lock, limit, [this] { return closed_; });
}

std::shared_ptr<SessionClosing> WatchSession(::IMFMediaSession& session,
                                             const std::shared_ptr<PlaybackNotes>& notes,
                                             PlaybackNotes::Item item) {
  auto closing = std::make_shared<SessionClosing>();
  const ComPointer<SessionEvents> events(new SessionEvents(session, notes, item, closing));
  session.BeginGetEvent(events.Get(), nullptr);
  return closing;
}

}  // namespace platform::win32
