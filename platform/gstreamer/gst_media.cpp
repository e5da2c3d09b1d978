#include "platform/gstreamer/gst_media.h"

#include <iostream>
#include <map>
#include <mutex>
#include <utility>

#include "platform/gstreamer/context.h"
#include "platform/gstreamer/endpoint_objects.h"
#include "platform/gstreamer/identifiers.h"
#include "platform/gstreamer/media_objects.h"
#include "platform/gstreamer/session_objects.h"
#include "platform/gstreamer/topology_objects.h"
#include "ports/media_interfaces.h"

namespace platform::gstreamer {
namespace {

/// The caller's log until it is closed. A thread that a sound server holds up can outlive the caller.
class Log {
 public:
  explicit Log(std::function<void(const std::string&)> write) : write_(std::move(write)) {
    if (!write_) write_ = [](const std::string& line) { std::cerr << "sound: " << line << '\n'; };
  }
  void Write(const std::string& line) {
    const std::lock_guard lock(mutex_);
    if (write_) write_(line);
  }
  void Close() {
    const std::lock_guard lock(mutex_);
    write_ = nullptr;
  }

 private:
  std::mutex mutex_;
  std::function<void(const std::string&)> write_;
};

GstMediaOptions WithLog(GstMediaOptions options, const std::shared_ptr<Log>& log) {
  options.log = [log](const std::string& line) { log->Write(line); };
  return options;
}

}  // namespace

struct GstMedia::Impl {
  Impl(MessageLoop& message_loop, NativePaths& native_paths, const GstMediaOptions& options)
      : log(std::make_shared<Log>(options.log)),
        context{message_loop, native_paths, std::make_shared<ItemServices>(WithLog(options, log)),
                {},           {},           {}} {}

  /// Hands a new object out once the framework has been started.
  template <typename Type, typename... Arguments>
  HResult Make(InterfaceHandle& out, Arguments&&... arguments) {
    if (started == 0) return kMfEPlatformNotInitialized;
    return context.handles.Hand(std::make_shared<Type>(std::forward<Arguments>(arguments)...), &out);
  }

  const std::shared_ptr<Log> log;
  Context context;
  int started = 0;
  std::map<std::uint32_t, std::shared_ptr<StreamReader>> streams;
  std::uint32_t last_stream = 0;
};

GstMedia::GstMedia(MessageLoop& message_loop, NativePaths& native_paths, const GstMediaOptions& options)
    : impl_(std::make_unique<Impl>(message_loop, native_paths, options)) {}

GstMedia::~GstMedia() { impl_->log->Close(); }

void GstMedia::LoadAhead() { impl_->context.services->framework.LoadAhead(); }

StreamObject GstMedia::RegisterStream(std::shared_ptr<StreamReader> reader) {
  if (!reader) return StreamObject::kNone;
  impl_->streams.emplace(++impl_->last_stream, std::move(reader));
  return StreamObject{impl_->last_stream};
}

void GstMedia::UnregisterStream(StreamObject stream) {
  impl_->streams.erase(static_cast<std::uint32_t>(stream));
}

HResult GstMedia::MFStartup(std::int32_t, std::int32_t) {
  ++impl_->started;
  return kSOk;
}

HResult GstMedia::MFShutdown() {
  if (impl_->started > 0) --impl_->started;
  if (impl_->started > 0) return kSOk;
  if (const auto item = impl_->context.sounding.lock()) item->ShutDown();
  return kSOk;
}

HResult GstMedia::MFCreateSourceResolver(InterfaceHandle& out) {
  return impl_->Make<SourceResolver>(out, impl_->context);
}

HResult GstMedia::MFCreateMFByteStreamOnStream(StreamObject stream, InterfaceHandle& out) {
  const auto found = impl_->streams.find(static_cast<std::uint32_t>(stream));
  if (found == impl_->streams.end()) return kEInvalidArg;
  return impl_->Make<ByteStream>(out, found->second);
}

HResult GstMedia::MFCreateTopology(InterfaceHandle& out) {
  return impl_->Make<Topology>(out, impl_->context);
}

HResult GstMedia::MFCreateTopologyNode(std::int32_t type, InterfaceHandle& out) {
  using Kind = TopologyNode::Kind;
  if (type == kMfTopologyOutputNode) return impl_->Make<TopologyNode>(out, impl_->context, Kind::kOutput);
  if (type == kMfTopologySourceStreamNode) {
    return impl_->Make<TopologyNode>(out, impl_->context, Kind::kSource);
  }
  return kEInvalidArg;
}

HResult GstMedia::MFCreateMediaSession(InterfaceHandle& out) {
  return impl_->Make<MediaSession>(out, impl_->context);
}

HResult GstMedia::MFCreateAudioRendererActivate(InterfaceHandle& out) {
  return impl_->Make<RendererActivate>(out, Renderer::kAudio);
}

HResult GstMedia::MFCreateVideoRendererActivate(WindowHandle, InterfaceHandle& out) {
  return impl_->Make<RendererActivate>(out, Renderer::kVideo);
}

HResult GstMedia::MFGetService(InterfaceHandle object, const Guid& service, const Guid& iid,
                               InterfaceHandle& out) {
  if (impl_->started == 0) return kMfEPlatformNotInitialized;
  const auto session = impl_->context.handles.FindAs<MediaSession>(object);
  return session ? session->GetService(service, iid, &out) : kEInvalidArg;
}

std::optional<HResult> GstMedia::DispCallFunc(InterfaceHandle object, Interface interface_id,
                                              std::int32_t slot, std::span<const Argument> arguments) {
  // The reference keeps the object alive inside its own call, whatever the caller does in a repaint.
  const auto target = impl_->context.handles.Find(object);
  if (!target) return std::nullopt;
  if (interface_id != Interface::kUnknown) return target->Call(interface_id, slot, arguments);
  OperationTable common;
  common.Bind(IUnknown::QueryInterface, [this, &target](const Guid* iid, InterfaceHandle* out) {
    if (iid == nullptr) return kEPointer;
    const auto view = target->As(*iid);
    return view ? impl_->context.handles.Hand(view, out) : kENoInterface;
  });
  common.Bind(IUnknown::Release, [this, object] {
    impl_->context.handles.Release(object);
    return kSOk;
  });
  return common.Call(interface_id, slot, arguments);
}

HResult GstMedia::CoCreateInstance(const Guid& clsid, InterfaceHandle, std::int32_t, const Guid& iid,
                                   InterfaceHandle& out) {
  if (clsid != kClsidMMDeviceEnumerator) return kClassNotRegistered;
  const auto view = std::make_shared<DeviceEnumerator>(impl_->context)->As(iid);
  return view ? impl_->context.handles.Hand(view, &out) : kENoInterface;
}

PlaybackStatus GstMedia::Status() const { return impl_->context.latest.Status(); }

}  // namespace platform::gstreamer
