#pragma once
// Port: the media framework's own functions, which start it and create its objects.
// Not for the operations of those objects (ports/media_interfaces.h, ports/interface_call.h).

#include <cstdint>

#include "ports/interface_call.h"

namespace platform {

/// A stream object that a byte stream can be made on; zero is none.
enum class StreamObject : std::uint32_t { kNone = 0 };
/// A window that a video stream is shown in; zero is none.
enum class WindowHandle : std::uint32_t { kNone = 0 };

inline constexpr std::int32_t kMfTopologyOutputNode = 0;        ///< MF_TOPOLOGY_OUTPUT_NODE
inline constexpr std::int32_t kMfTopologySourceStreamNode = 1;  ///< MF_TOPOLOGY_SOURCESTREAM_NODE
inline constexpr std::int32_t kMfObjectMediaSource = 0;         ///< MF_OBJECT_MEDIASOURCE
inline constexpr std::int32_t kMfObjectInvalid = 2;             ///< MF_OBJECT_INVALID
inline constexpr std::int32_t kMfResolutionMediaSource = 1;     ///< MF_RESOLUTION_MEDIASOURCE
/// MF_RESOLUTION_CONTENT_DOES_NOT_HAVE_TO_MATCH_EXTENSION_OR_MIME_TYPE
inline constexpr std::int32_t kMfResolutionContentNeedNotMatch = 16;

/// MFStartup comes first, MFShutdown last. Every object written to an `out` parameter is released once by
/// its caller; `out` is written on S_OK only. Opening an address is bounded to 10 s, during which the
/// window is painted; input that ends a wait (MessageLoop::InputEndsWait) ends it with kErrorCancelled.
/// Nothing throws. Public reference: the Media Foundation documentation of the functions of the same names.
class MediaFramework {
 public:
  virtual ~MediaFramework() = default;
  virtual HResult MFStartup(std::int32_t version, std::int32_t flags) = 0;
  virtual HResult MFShutdown() = 0;
  virtual HResult MFCreateSourceResolver(InterfaceHandle& out) = 0;
  virtual HResult MFCreateMFByteStreamOnStream(StreamObject stream, InterfaceHandle& out) = 0;
  virtual HResult MFCreateTopology(InterfaceHandle& out) = 0;
  virtual HResult MFCreateTopologyNode(std::int32_t type, InterfaceHandle& out) = 0;
  virtual HResult MFCreateMediaSession(InterfaceHandle& out) = 0;
  virtual HResult MFCreateAudioRendererActivate(InterfaceHandle& out) = 0;
  virtual HResult MFCreateVideoRendererActivate(WindowHandle window, InterfaceHandle& out) = 0;
  /// The service `service` of `object`, seen through interface `iid`.
  virtual HResult MFGetService(InterfaceHandle object, const Guid& service, const Guid& iid,
                               InterfaceHandle& out) = 0;
};

}  // namespace platform
