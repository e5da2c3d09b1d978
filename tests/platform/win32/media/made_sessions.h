#pragma once
// The system's media sessions as they are made, so that a test can queue reports to them. Not the adapter's
// handles of them.

#include "platform/win32/base/windows_api.h"

#include <mfapi.h>
#include <mfidl.h>

#include <cstddef>
#include <functional>
#include <vector>

#include "platform/win32/base/com_pointer.h"
#include "tests/platform/win32/media/replaced_function.h"

namespace platform::win32 {

/// Keeps each session that is made while it lives. One at a time.
class MadeSessions {
 public:
  MadeSessions() { current_ = this; }
  MadeSessions(const MadeSessions&) = delete;
  MadeSessions& operator=(const MadeSessions&) = delete;

  [[nodiscard]] std::size_t Count() const { return made_.size(); }
  [[nodiscard]] ::IMFMediaSession& At(std::size_t index) const { return *made_.at(index).Get(); }
  [[nodiscard]] ::IMFMediaSession& Latest() const { return *made_.back().Get(); }
  void Forget() { made_.clear(); }
  /// What each is given to before it is used.
  std::function<void(::IMFMediaSession&)> on_made;

 private:
  static HRESULT WINAPI Make(::IMFAttributes* attributes, ::IMFMediaSession** made) {
    const HRESULT result = current_->make_.CallOriginal(attributes, made);
    if (result != S_OK) return result;
    (*made)->AddRef();
    current_->made_.emplace_back(*made);
    if (current_->on_made) current_->on_made(**made);
    return result;
  }

  static inline MadeSessions* current_ = nullptr;
  ReplacedFunction<decltype(::MFCreateMediaSession)> make_{L"mf.dll", "MFCreateMediaSession", &Make};
  std::vector<ComPointer<::IMFMediaSession>> made_;
};

}  // namespace platform::win32
