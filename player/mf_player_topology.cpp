// From a media source to a session: one branch per selected stream, each from a source node to a renderer.
#include <algorithm>
#include <utility>

#include "player/media_ids.h"
#include "player/mf_player.h"
#include "ports/media_interfaces.h"

namespace player {

namespace {

/// GUID texts differ in letter case only; they have no letters outside ASCII.
bool IsSameGuidText(TextView left, TextView right) {
  const auto upper = [](char16_t letter) {
    return letter >= u'a' && letter <= u'z' ? static_cast<char16_t>(letter - u'a' + u'A') : letter;
  };
  return std::ranges::equal(left, right, {}, upper, upper);
}

}  // namespace

bool clsMFPlayer::BuildSession(InterfaceHandle source) {
  InterfaceRef descriptor(caller_);
  if (!IsOk(caller_.CallInterface(source, platform::IMFMediaSource::CreatePresentationDescriptor,
                                  &descriptor.Receive()))) {
    return false;
  }
  presentation_descriptor_ = std::move(descriptor);
  InterfaceRef topology(caller_);
  if (!IsOk(ports_.framework.MFCreateTopology(topology.Receive()))) return false;
  if (!AddStreamBranches(source, topology.Get())) return false;
  InterfaceRef session(caller_);
  if (!IsOk(ports_.framework.MFCreateMediaSession(session.Receive()))) return false;
  session_ = std::move(session);
  if (!ConfigureSession(topology.Get())) {
    session_.Release();
    duration_.value = 0;
    return false;
  }
  ReadDuration();
  return true;
}

// Every stream overwrites the outcome of the one before it, so the last stream decides alone.
bool clsMFPlayer::AddStreamBranches(InterfaceHandle source, InterfaceHandle topology) {
  const InterfaceHandle descriptor = presentation_descriptor_.Get();
  std::int32_t count = 0;
  if (!IsOk(caller_.CallInterface(descriptor, platform::IMFPresentationDescriptor::GetStreamDescriptorCount,
                                  &count))) {
    return false;
  }
  bool branch_made = false;
  for (std::int32_t index = 0; index < count; ++index) {
    branch_made = AddStreamBranch(source, index, descriptor, topology);
  }
  return branch_made;
}

bool clsMFPlayer::AddStreamBranch(InterfaceHandle source, std::int32_t index, InterfaceHandle descriptor,
                                  InterfaceHandle topology) {
  InterfaceRef stream_descriptor(caller_);
  std::int32_t selected = 0;
  const CallResult result =
      caller_.CallInterface(descriptor, platform::IMFPresentationDescriptor::GetStreamDescriptorByIndex,
                            index, &selected, &stream_descriptor.Receive());
  if (!IsOk(result) || selected != 1) return false;
  InterfaceRef source_node(caller_);
  if (!CreateSourceStreamNode(source, descriptor, stream_descriptor.Get(), source_node)) return false;
  InterfaceRef output_node(caller_);
  if (!CreateOutputNode(stream_descriptor.Get(), output_node)) return false;
  return ConnectBranch(topology, source_node.Get(), output_node.Get());
}

bool clsMFPlayer::ConnectBranch(InterfaceHandle topology, InterfaceHandle source_node,
                                InterfaceHandle output_node) {
  using platform::IMFTopology::AddNode;
  using platform::IMFTopologyNode::ConnectOutput;
  return IsOk(caller_.CallInterface(topology, AddNode, source_node)) &&
         IsOk(caller_.CallInterface(topology, AddNode, output_node)) &&
         IsOk(caller_.CallInterface(source_node, ConnectOutput, std::int32_t{0}, output_node,
                                    std::int32_t{0}));
}

bool clsMFPlayer::CreateSourceStreamNode(InterfaceHandle source, InterfaceHandle descriptor,
                                         InterfaceHandle stream_descriptor, InterfaceRef& node) {
  if (!IsOk(ports_.framework.MFCreateTopologyNode(platform::kMfTopologySourceStreamNode, node.Receive()))) {
    return false;
  }
  const auto set = [&](TextView key, InterfaceHandle value) {
    const Guid guid = caller_.GuidFromString(key);
    return IsOk(caller_.CallInterface(node.Get(), platform::IMFTopologyNode::SetUnknown, &guid, value));
  };
  return set(media_ids::kMfTopoNodeSource, source) &&
         set(media_ids::kMfTopoNodePresentationDescriptor, descriptor) &&
         set(media_ids::kMfTopoNodeStreamDescriptor, stream_descriptor);
}

bool clsMFPlayer::CreateOutputNode(InterfaceHandle stream_descriptor, InterfaceRef& node) {
  InterfaceRef handler(caller_);
  if (!IsOk(caller_.CallInterface(stream_descriptor, platform::IMFStreamDescriptor::GetMediaTypeHandler,
                                  &handler.Receive()))) {
    return false;
  }
  Guid major_type;
  if (!IsOk(caller_.CallInterface(handler.Get(), platform::IMFMediaTypeHandler::GetMajorType, &major_type))) {
    return false;
  }
  InterfaceRef activation(caller_);
  if (!CreateRendererActivate(major_type, activation)) return false;

  bool made = IsOk(ports_.framework.MFCreateTopologyNode(platform::kMfTopologyOutputNode, node.Receive()));
  if (made) {
    made = IsOk(caller_.CallInterface(node.Get(), platform::IMFTopologyNode::SetObject, activation.Get()));
    if (!made) node.Release();
  }
  // An activation object that refuses to shut down is not released here; closing the item does that.
  if (!IsOk(caller_.CallInterface(activation.Get(), platform::IMFActivate::ShutdownObject))) {
    activation.LeaveBehind();
  }
  return made;
}

/// Any other type than audio and video has no renderer: true, and no activation object.
bool clsMFPlayer::CreateRendererActivate(const Guid& major_type, InterfaceRef& activation) {
  const Text type = caller_.StringFromGuid(major_type);
  if (IsSameGuidText(type, media_ids::kAudio)) {
    return IsOk(ports_.framework.MFCreateAudioRendererActivate(activation.Receive()));
  }
  if (IsSameGuidText(type, media_ids::kVideo)) {
    return IsOk(ports_.framework.MFCreateVideoRendererActivate(video_window_, activation.Receive()));
  }
  return true;
}

bool clsMFPlayer::ConfigureSession(InterfaceHandle topology) {
  if (!IsOk(caller_.CallInterface(session_.Get(), platform::IMFMediaSession::SetTopology, std::int32_t{0},
                                  topology))) {
    return false;
  }
  InterfaceRef clock(caller_);
  if (!IsOk(caller_.CallInterface(session_.Get(), platform::IMFMediaSession::GetClock, &clock.Receive()))) {
    return false;
  }
  clock_ = std::move(clock);
  return true;
}

void clsMFPlayer::ReadDuration() {
  const Guid key = caller_.GuidFromString(media_ids::kMfPdDuration);
  std::int64_t duration = duration_.value;
  const CallResult result = caller_.CallInterface(
      presentation_descriptor_.Get(), platform::IMFPresentationDescriptor::GetUINT64, &key, &duration);
  if (IsOk(result)) duration_.value = duration;
}

}  // namespace player
