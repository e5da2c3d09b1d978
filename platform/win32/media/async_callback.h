#pragma once
// An object that the media framework calls when something that was begun is over. Not for what is done then.

#include <functional>

#include "platform/win32/base/com_pointer.h"

struct IMFAsyncCallback;
struct IMFAsyncResult;

namespace platform::win32 {

/// `called` runs once for each call, on a thread of the framework, and lives as long as anybody refers to the
/// object.
ComPointer<::IMFAsyncCallback> MakeAsyncCallback(std::function<void(::IMFAsyncResult&)> called);

}  // namespace platform::win32
