#pragma once
// What the objects of one adapter share on the caller's thread.
// Not what the items' threads share; that is ItemServices.

#include <memory>

#include "platform/gstreamer/latest_item.h"
#include "platform/gstreamer/media_item.h"
#include "platform/gstreamer/object.h"
#include "ports/message_loop.h"
#include "ports/native_paths.h"

namespace platform::gstreamer {

struct Context {
  MessageLoop& message_loop;
  NativePaths& native_paths;
  std::shared_ptr<ItemServices> services;
  HandleTable handles;
  /// The item whose session was set up last: the program's own entry among the audio sessions.
  std::weak_ptr<MediaItem> sounding;
  LatestItem latest;
};

}  // namespace platform::gstreamer
