#include "platform/win32/media/byte_stream.h"

#include "platform/win32/base/windows_api.h"

#include <mfapi.h>
#include <mferror.h>
#include <mfidl.h>

#include <algorithm>
#include <future>
#include <list>
#include <mutex>
#include <utility>

#include "platform/win32/media/locks.h"
#include "platform/win32/media/media_library.h"

namespace platform::win32 {
namespace {

class LiveByteStream final : public ::IMFByteStream {
 public:
  LiveByteStream(std::shared_ptr<StreamBuffer> buffer, const std::string& content_type)
      : buffer_(std::move(buffer)) {
    if (CallMedia<decltype(::MFCreateAttributes)>("MFCreateAttributes", attributes_.Receive(), 1) != S_OK ||
        content_type.empty())
      return;
    const std::wstring type(content_type.begin(), content_type.end());
    attributes_->SetString(MF_BYTESTREAM_CONTENT_TYPE, type.c_str());
  }
  virtual ~LiveByteStream() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
    *out = nullptr;
    if (IsEqualIID(iid, __uuidof(::IMFAttributes)) && attributes_)
      return attributes_->QueryInterface(iid, out);
    if (!IsEqualIID(iid, __uuidof(::IMFByteStream)) && !IsEqualIID(iid, __uuidof(::IUnknown)))
      return E_NOINTERFACE;
    *out = static_cast<::IMFByteStream*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(InterlockedIncrement(&references_)); }
  ULONG STDMETHODCALLTYPE Release() override {
    const LONG left = InterlockedDecrement(&references_);
    if (left == 0) delete this;
    return static_cast<ULONG>(left);
  }

  // The last two say that it comes from its beginning to its end, so that whoever plays it does not look at
  // its end more often than it must.
  HRESULT STDMETHODCALLTYPE GetCapabilities(DWORD* capabilities) override {
    *capabilities = MFBYTESTREAM_IS_READABLE | MFBYTESTREAM_IS_SEEKABLE | MFBYTESTREAM_IS_REMOTE |
                    MFBYTESTREAM_HAS_SLOW_SEEK | MFBYTESTREAM_IS_PARTIALLY_DOWNLOADED;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetLength(QWORD* length) override {
    *length = StreamBuffer::kLength;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE SetLength(QWORD) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetCurrentPosition(QWORD* position) override {
    *position = Here().position;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE SetCurrentPosition(QWORD position) override {
    const Lock lock(mutex_);
    MoveTo(position);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE IsEndOfStream(WINBOOL* end) override {
    const QWORD position = Here().position;
    *end = position >= StreamBuffer::kLength || buffer_->IsOverAt(position);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Read(BYTE* bytes, ULONG size, ULONG* count) override {
    std::promise<std::size_t> promise;
    auto answer = promise.get_future();
    const Place begin = Here();
    buffer_->Read(begin.position, Target(bytes, size),
                  [&promise](std::size_t read) { promise.set_value(read); });
    *count = static_cast<ULONG>(answer.get());
    Advance(begin, *count);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE BeginRead(BYTE* bytes, ULONG size, ::IMFAsyncCallback* callback,
                                      ::IUnknown* state) override {
    ComPointer<::IMFAsyncResult> asked;
    const HRESULT made = CallMedia<decltype(::MFCreateAsyncResult)>("MFCreateAsyncResult", nullptr, callback,
                                                                    state, asked.Receive());
    if (made != S_OK) return made;
    AddRef();
    const ComPointer<LiveByteStream> self(this);
    const Place begin = Here();
    buffer_->Read(begin.position, Target(bytes, size), [self, asked, begin](std::size_t read) {
      self->Advance(begin, read);
      {
        const Lock lock(self->mutex_);
        self->answers_.push_back({asked, static_cast<ULONG>(read)});
      }
      CallMedia<decltype(::MFInvokeCallback)>("MFInvokeCallback", asked.Get());
    });
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE EndRead(::IMFAsyncResult* asked, ULONG* count) override {
    // The last reference to what was asked is released without the lock.
    std::list<Answer> found;
    {
      const Lock lock(mutex_);
      const auto answer =
          std::ranges::find(answers_, asked, [](const Answer& each) { return each.asked.Get(); });
      if (answer == answers_.end()) return E_INVALIDARG;
      found.splice(found.begin(), answers_, answer);
    }
    *count = found.front().count;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Write(const BYTE*, ULONG, ULONG*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE BeginWrite(const BYTE*, ULONG, ::IMFAsyncCallback*, ::IUnknown*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE EndWrite(::IMFAsyncResult*, ULONG*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Seek(MFBYTESTREAM_SEEK_ORIGIN origin, LONGLONG offset, DWORD,
                                 QWORD* position) override {
    const Lock lock(mutex_);
    const QWORD base = origin == msoCurrent ? position_ : 0;
    MoveTo(base + static_cast<QWORD>(offset));
    if (position != nullptr) *position = position_;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Flush() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE Close() override {
    // An answer that nobody fetches any more would keep its reader alive.
    std::list<Answer> unasked;
    {
      const Lock lock(mutex_);
      unasked.swap(answers_);
    }
    buffer_->EndReads();
    return S_OK;
  }

 private:
  static std::span<std::byte> Target(BYTE* bytes, ULONG size) {
    return {reinterpret_cast<std::byte*>(bytes), size};
  }
  /// A position, and how often it had been set before.
  struct Place {
    QWORD position;
    int moves;
  };
  /// A read that was answered, which keeps what was asked: another read's could have its address otherwise.
  struct Answer {
    ComPointer<::IMFAsyncResult> asked;
    ULONG count;
  };
  Place Here() {
    const Lock lock(mutex_);
    return {position_, moves_};
  }
  void MoveTo(QWORD position) {
    position_ = position;
    ++moves_;
  }
  /// After a read, unless the position was set while it waited.
  void Advance(const Place& begin, std::size_t count) {
    const Lock lock(mutex_);
    if (moves_ == begin.moves) position_ = begin.position + count;
  }

  LONG references_ = 1;
  const std::shared_ptr<StreamBuffer> buffer_;
  ComPointer<::IMFAttributes> attributes_;
  std::mutex mutex_;
  QWORD position_ = 0;
  int moves_ = 0;
  std::list<Answer> answers_;
};

}  // namespace

ComPointer<::IMFByteStream> MakeByteStream(std::shared_ptr<StreamBuffer> buffer,
                                           const std::string& content_type) {
  return ComPointer<::IMFByteStream>(new LiveByteStream(std::move(buffer), content_type));
}

}  // namespace platform::win32
