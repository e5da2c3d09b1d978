#pragma once
// The buffer of a live stream as the media framework reads it. Not the connection.

#include <memory>
#include <string>

#include "platform/win32/base/com_pointer.h"
#include "platform/win32/media/stream_buffer.h"

struct IMFByteStream;

namespace platform::win32 {

/// Claims to be seekable and endless, because what plays it looks at its beginning and its end first.
ComPointer<::IMFByteStream> MakeByteStream(std::shared_ptr<StreamBuffer> buffer,
                                           const std::string& content_type);

}  // namespace platform::win32
