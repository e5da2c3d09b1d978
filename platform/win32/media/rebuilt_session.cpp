#include "platform/win32/media/rebuilt_session.h"

#include "platform/win32/base/windows_api.h"

#include <mfapi.h>
#include <mfidl.h>

#include "platform/win32/media/media_library.h"

namespace platform::win32 {
namespace {

/// What one stream's branch is made of.
struct Branch {
  ComPointer<::IMFStreamDescriptor> stream;
  ComPointer<::IMFTopologyNode> source;
  ComPointer<::IMFTopologyNode> output;
  ComPointer<::IMFActivate> renderer;
};

bool IsSound(::IMFStreamDescriptor& stream) {
  ComPointer<::IMFMediaTypeHandler> handler;
  GUID type{};
  return stream.GetMediaTypeHandler(handler.Receive()) == S_OK && handler->GetMajorType(&type) == S_OK &&
         IsEqualGUID(type, MFMediaType_Audio);
}

bool MakeNodes(Branch& branch) {
  return CallMedia<decltype(::MFCreateTopologyNode)>("MFCreateTopologyNode", MF_TOPOLOGY_SOURCESTREAM_NODE,
                                                     branch.source.Receive()) == S_OK &&
         CallMedia<decltype(::MFCreateTopologyNode)>("MFCreateTopologyNode", MF_TOPOLOGY_OUTPUT_NODE,
                                                     branch.output.Receive()) == S_OK &&
         CallMedia<decltype(::MFCreateAudioRendererActivate)>("MFCreateAudioRendererActivate",
                                                              branch.renderer.Receive()) == S_OK;
}

HResult Connect(::IMFTopology& topology, ::IMFMediaSource& source, ::IMFPresentationDescriptor& descriptor,
                Branch& branch) {
  if (!MakeNodes(branch)) return kEFail;
  const bool described =
      branch.source->SetUnknown(MF_TOPONODE_SOURCE, &source) == S_OK &&
      branch.source->SetUnknown(MF_TOPONODE_PRESENTATION_DESCRIPTOR, &descriptor) == S_OK &&
      branch.source->SetUnknown(MF_TOPONODE_STREAM_DESCRIPTOR, branch.stream.Get()) == S_OK &&
      branch.output->SetObject(branch.renderer.Get()) == S_OK;
  const bool added = described && topology.AddNode(branch.source.Get()) == S_OK &&
                     topology.AddNode(branch.output.Get()) == S_OK;
  return added ? branch.source->ConnectOutput(0, branch.output.Get(), 0) : kEFail;
}

}  // namespace

HResult AddSound(::IMFTopology& topology, ::IMFMediaSource& source) {
  ComPointer<::IMFPresentationDescriptor> descriptor;
  DWORD count = 0;
  const bool described = source.CreatePresentationDescriptor(descriptor.Receive()) == S_OK &&
                         descriptor->GetStreamDescriptorCount(&count) == S_OK;
  HResult result = kEFail;
  for (DWORD index = 0; described && index < count; ++index) {
    Branch branch;
    WINBOOL selected = FALSE;
    if (descriptor->GetStreamDescriptorByIndex(index, &selected, branch.stream.Receive()) != S_OK) continue;
    if (selected == FALSE || !IsSound(*branch.stream.Get())) continue;
    result = Connect(topology, source, *descriptor.Get(), branch);
  }
  return result;
}

RebuiltSession RebuildSession(::IMFMediaSource& source) {
  RebuiltSession built;
  ComPointer<::IMFTopology> topology;
  built.result = CallMedia<decltype(::MFCreateTopology)>("MFCreateTopology", topology.Receive());
  if (built.result == kSOk) built.result = AddSound(*topology.Get(), source);
  if (built.result != kSOk) return built;
  built.result =
      CallMedia<decltype(::MFCreateMediaSession)>("MFCreateMediaSession", nullptr, built.session.Receive());
  if (built.result == kSOk) built.result = built.session->SetTopology(0, topology.Get());
  if (built.result == kSOk) built.result = built.session->GetClock(built.clock.Receive());
  if (built.result != kSOk && built.session) built.session->Shutdown();
  return built;
}

}  // namespace platform::win32
