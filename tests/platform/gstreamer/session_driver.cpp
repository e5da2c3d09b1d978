#include "tests/platform/gstreamer/session_driver.h"

#include <unistd.h>

#include <algorithm>
#include <mutex>

#include "platform/gstreamer/address.h"
#include "platform/gstreamer/identifiers.h"

namespace gstreamer_test {

using namespace platform;             // NOLINT: the operations' namespaces
using namespace platform::gstreamer;  // NOLINT: the identifiers

namespace {

bool Ok(std::optional<HResult> result) { return result == kSOk; }

}  // namespace

Text PlainPaths::FromNative(const std::string& native) { return ToText(native); }

std::string PlainPaths::ToNative(const Text& path) {
  std::string native = Utf8FromText(path);
  std::replace(native.begin(), native.end(), '\\', '/');
  return native;
}

Text ToText(const std::string& utf8) { return TextFromUtf8(utf8.c_str()); }

GstMediaOptions Unheard() {
  GstMediaOptions options;
  options.output = platform::gstreamer::SoundOutput::kNowhere;
  return options;
}

SessionDriver::SessionDriver(GstMediaOptions options) : media_(loop, paths_, WithLog(std::move(options))) {
  media_.MFStartup(1, 0);
}

SessionDriver::~SessionDriver() {
  Close();
  media_.MFShutdown();
}

GstMediaOptions SessionDriver::WithLog(GstMediaOptions options) {
  options.log = [this, mutex = std::make_shared<std::mutex>()](const std::string& line) {
    const std::lock_guard lock(*mutex);
    log.push_back(line);
  };
  return options;
}

void SessionDriver::Release(InterfaceHandle& handle) {
  if (handle == InterfaceHandle::kNone) return;
  Call(media_, handle, IUnknown::Release);
  handle = InterfaceHandle::kNone;
}

HResult SessionDriver::Resolve(const std::string& address) {
  InterfaceHandle resolver{};
  if (const HResult result = media_.MFCreateSourceResolver(resolver); result != kSOk) return result;
  const Text text = ToText(address);
  std::int32_t type = kMfObjectInvalid;
  InterfaceHandle object{};
  const auto opened = Call(media_, resolver, IMFSourceResolver::CreateObjectFromURL, &text,
                           kMfResolutionMediaSource, InterfaceHandle::kNone, &type, &object);
  Release(resolver);
  return KeepSource(opened.value_or(kEFail), type, object);
}

HResult SessionDriver::KeepSource(HResult opened, std::int32_t type, InterfaceHandle object) {
  if (opened != kSOk) return opened;
  HResult result = kEFail;
  if (type == kMfObjectMediaSource) {
    result = Call(media_, object, IUnknown::QueryInterface, &kIidMediaSource, &source).value_or(kEFail);
  }
  Release(object);
  return result;
}

HResult SessionDriver::Open(const std::string& address) {
  Close();
  if (const HResult result = Resolve(address); result != kSOk) return result;
  if (!BuildSession()) return kEFail;
  CreateService();
  return kSOk;
}

HResult SessionDriver::OpenStream(StreamObject stream) {
  Close();
  InterfaceHandle resolver{};
  InterfaceHandle bytes{};
  if (media_.MFCreateSourceResolver(resolver) != kSOk) return kEFail;
  HResult result = media_.MFCreateMFByteStreamOnStream(stream, bytes);
  std::int32_t type = kMfObjectInvalid;
  InterfaceHandle object{};
  if (result == kSOk) {
    const Text* no_address = nullptr;
    result = Call(media_, resolver, IMFSourceResolver::CreateObjectFromByteStream, bytes, no_address,
                  kMfResolutionMediaSource + kMfResolutionContentNeedNotMatch, InterfaceHandle::kNone, &type,
                  &object)
                 .value_or(kEFail);
  }
  Release(bytes);
  Release(resolver);
  result = KeepSource(result, type, object);
  if (result != kSOk) return result;
  if (!BuildSession()) return kEFail;
  CreateService();
  return kSOk;
}

bool SessionDriver::BuildSession() {
  InterfaceHandle topology{};
  std::int32_t count = 0;
  bool built = Ok(Call(media_, source, IMFMediaSource::CreatePresentationDescriptor, &presentation)) &&
               media_.MFCreateTopology(topology) == kSOk &&
               Ok(Call(media_, presentation, IMFPresentationDescriptor::GetStreamDescriptorCount, &count)) &&
               count == 1 && AddBranch(topology) && media_.MFCreateMediaSession(session) == kSOk &&
               Ok(Call(media_, session, IMFMediaSession::SetTopology, 0, topology)) &&
               Ok(Call(media_, session, IMFMediaSession::GetClock, &clock));
  Release(topology);
  return built;
}

bool SessionDriver::AddBranch(InterfaceHandle topology) {
  std::int32_t selected = 0;
  InterfaceHandle stream{};
  if (!Ok(Call(media_, presentation, IMFPresentationDescriptor::GetStreamDescriptorByIndex, 0, &selected,
               &stream))) {
    return false;
  }
  InterfaceHandle source_node{};
  InterfaceHandle output_node{};
  const bool added = selected == 1 &&
                     media_.MFCreateTopologyNode(kMfTopologySourceStreamNode, source_node) == kSOk &&
                     media_.MFCreateTopologyNode(kMfTopologyOutputNode, output_node) == kSOk &&
                     FillNodes(source_node, output_node, stream) &&
                     Ok(Call(media_, topology, IMFTopology::AddNode, source_node)) &&
                     Ok(Call(media_, topology, IMFTopology::AddNode, output_node)) &&
                     Ok(Call(media_, source_node, IMFTopologyNode::ConnectOutput, 0, output_node, 0));
  Release(output_node);
  Release(source_node);
  Release(stream);
  return added;
}

bool SessionDriver::FillNodes(InterfaceHandle source_node, InterfaceHandle output_node,
                              InterfaceHandle stream) {
  InterfaceHandle handler{};
  InterfaceHandle activate{};
  Guid major;
  const bool filled =
      Ok(Call(media_, source_node, IMFTopologyNode::SetUnknown, &kNodeSourceAttribute, source)) &&
      Ok(Call(media_, source_node, IMFTopologyNode::SetUnknown, &kNodePresentationAttribute, presentation)) &&
      Ok(Call(media_, source_node, IMFTopologyNode::SetUnknown, &kNodeStreamAttribute, stream)) &&
      Ok(Call(media_, stream, IMFStreamDescriptor::GetMediaTypeHandler, &handler)) &&
      Ok(Call(media_, handler, IMFMediaTypeHandler::GetMajorType, &major)) && major == kAudioMajorType &&
      media_.MFCreateAudioRendererActivate(activate) == kSOk &&
      Ok(Call(media_, output_node, IMFTopologyNode::SetObject, activate)) &&
      Ok(Call(media_, activate, IMFActivate::ShutdownObject));
  Release(activate);
  Release(handler);
  return filled;
}

void SessionDriver::CreateService() {
  media_.MFGetService(session, kPolicyVolumeService, kIidSimpleAudioVolume, volume);
  InterfaceHandle provider{};
  if (media_.MFGetService(session, kMetadataProviderService, kIidMetadataProvider, provider) == kSOk) {
    Call(media_, provider, IMFMetadataProvider::GetMFMetadata, presentation, 0, 0, &metadata);
    Release(provider);
  }
  FindMeter();
}

void SessionDriver::FindMeter() {
  InterfaceHandle enumerator{};
  InterfaceHandle device{};
  InterfaceHandle manager{};
  InterfaceHandle sessions{};
  std::int32_t count = 0;
  const bool found =
      media_.CoCreateInstance(kClsidMMDeviceEnumerator, InterfaceHandle::kNone, kClsctxInprocServer,
                              kIidMMDeviceEnumerator, enumerator) == kSOk &&
      Ok(Call(media_, enumerator, IMMDeviceEnumerator::GetDefaultAudioEndpoint, 0, 1, &device)) &&
      Ok(Call(media_, device, IMMDevice::Activate, &kIidAudioSessionManager2, kClsctxAll,
              InterfaceHandle::kNone, &manager)) &&
      Ok(Call(media_, manager, IAudioSessionManager2::GetSessionEnumerator, &sessions)) &&
      Ok(Call(media_, sessions, IAudioSessionEnumerator::GetCount, &count));
  for (std::int32_t index = 0; found && index < count && meter == InterfaceHandle::kNone; ++index) {
    InterfaceHandle control{};
    InterfaceHandle control2{};
    std::int32_t process = 0;
    if (!Ok(Call(media_, sessions, IAudioSessionEnumerator::GetSession, index, &control))) continue;
    Call(media_, control, IUnknown::QueryInterface, &kIidAudioSessionControl2, &control2);
    if (Ok(Call(media_, control2, IAudioSessionControl2::GetProcessId, &process)) && process == getpid()) {
      Call(media_, control2, IUnknown::QueryInterface, &kIidAudioMeterInformation, &meter);
    }
    Release(control2);
    Release(control);
  }
  for (InterfaceHandle* handle : {&sessions, &manager, &device, &enumerator}) Release(*handle);
}

void SessionDriver::Close() {
  if (session != InterfaceHandle::kNone) {
    Call(media_, session, IMFMediaSession::Stop);
    Call(media_, session, IMFMediaSession::Close);
  }
  if (source != InterfaceHandle::kNone) Call(media_, source, IMFMediaSource::Shutdown);
  for (InterfaceHandle* handle : {&source, &volume, &clock, &presentation, &metadata, &meter}) {
    Release(*handle);
  }
  if (session != InterfaceHandle::kNone) Call(media_, session, IMFMediaSession::Shutdown);
  Release(session);
}

HResult SessionDriver::Start() {
  const Guid any;
  PropertyValue from_here;
  return Call(media_, session, IMFMediaSession::Start, &any, &from_here).value_or(kEFail);
}

HResult SessionDriver::Pause() { return Call(media_, session, IMFMediaSession::Pause).value_or(kEFail); }

HResult SessionDriver::Stop() { return Call(media_, session, IMFMediaSession::Stop).value_or(kEFail); }

std::int32_t SessionDriver::State() {
  std::int32_t state = 0;
  return Ok(Call(media_, clock, IMFClock::GetState, 0, &state)) ? state : 0;
}

double SessionDriver::Seconds() {
  std::int64_t time = 0;
  std::int64_t system = 0;
  Call(media_, clock, IMFClock::GetCorrelatedTime, 0, &time, &system);
  return static_cast<double>(time) / 1e7;
}

std::optional<double> SessionDriver::DurationSeconds() {
  std::int64_t duration = 0;
  if (!Ok(Call(media_, presentation, IMFPresentationDescriptor::GetUINT64, &kDurationAttribute, &duration))) {
    return std::nullopt;
  }
  return static_cast<double>(duration) / 1e7;
}

int SessionDriver::Channels() {
  std::int32_t count = 0;
  Call(media_, meter, IAudioMeterInformation::GetMeteringChannelCount, &count);
  return count;
}

std::vector<float> SessionDriver::Peaks() {
  const int channels = Channels();
  std::vector<float> peaks(static_cast<std::size_t>(std::max(1, channels)), -1.0F);
  if (!Ok(Call(media_, meter, IAudioMeterInformation::GetChannelsPeakValues, channels, peaks.data()))) {
    return {};
  }
  return peaks;
}

float SessionDriver::Volume() {
  float value = -1.0F;
  Call(media_, volume, IMFSimpleAudioVolume::GetMasterVolume, &value);
  return value;
}

HResult SessionDriver::SetVolume(float value) {
  return Call(media_, volume, IMFSimpleAudioVolume::SetMasterVolume, value).value_or(kEFail);
}

bool SessionDriver::Mute() {
  std::int32_t value = -1;
  Call(media_, volume, IMFSimpleAudioVolume::GetMute, &value);
  return value == 1;
}

HResult SessionDriver::SetMute(bool mute) {
  return Call(media_, volume, IMFSimpleAudioVolume::SetMute, mute ? 1 : 0).value_or(kEFail);
}

std::vector<Text> SessionDriver::Names() {
  PropertyValue names;
  if (!Ok(Call(media_, metadata, IMFMetadata::GetAllPropertyNames, &names))) return {};
  return std::get<std::vector<Text>>(names.payload);
}

PropertyValue SessionDriver::Property(const Text& name) {
  PropertyValue value;
  Call(media_, metadata, IMFMetadata::GetProperty, &name, &value);
  return value;
}

std::string SessionDriver::TextProperty(const Text& name) {
  const PropertyValue value = Property(name);
  const Text* text = std::get_if<Text>(&value.payload);
  return text == nullptr ? "" : Utf8FromText(*text);
}

}  // namespace gstreamer_test
