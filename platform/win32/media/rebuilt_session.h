#pragma once
// A session of the adapter's own for a source that takes the place of a lost one. Not the program's sessions,
// which it builds by itself (player/mf_player.h).

#include "platform/win32/base/com_pointer.h"
#include "ports/interface_call.h"

struct IMFClock;
struct IMFMediaSession;
struct IMFMediaSource;
struct IMFTopology;

namespace platform::win32 {

struct RebuiltSession {
  HResult result = kEFail;  ///< the rest is there on S_OK
  ComPointer<::IMFMediaSession> session;
  ComPointer<::IMFClock> clock;
};

/// Adds a branch to the sound for each selected stream of sound; fails when there is none.
HResult AddSound(::IMFTopology& topology, ::IMFMediaSource& source);

/// With a topology of such branches; not started.
RebuiltSession RebuildSession(::IMFMediaSource& source);

}  // namespace platform::win32
