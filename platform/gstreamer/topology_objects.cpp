#include "platform/gstreamer/topology_objects.h"

#include <algorithm>

#include "platform/gstreamer/identifiers.h"
#include "ports/media_interfaces.h"

namespace platform::gstreamer {

RendererActivate::RendererActivate(Renderer renderer) : renderer_(renderer) {
  // The renderer itself belongs to the session, so there is nothing to shut down yet.
  Bind(IMFActivate::ShutdownObject, [] { return kSOk; });
}

std::shared_ptr<Object> RendererActivate::As(const Guid& iid) {
  return iid == kIidUnknown ? shared_from_this() : nullptr;
}

TopologyNode::TopologyNode(Context& context, Kind kind) : kind_(kind) {
  Bind(IMFTopologyNode::SetUnknown, [this, &context](const Guid* key, InterfaceHandle value) {
    return key == nullptr ? kEPointer : SetUnknown(*key, context.handles.Find(value));
  });
  Bind(IMFTopologyNode::SetObject, [this, &context](InterfaceHandle object) {
    renderer_ = context.handles.FindAs<RendererActivate>(object);
    return renderer_ || object == InterfaceHandle::kNone ? kSOk : kEInvalidArg;
  });
  Bind(IMFTopologyNode::ConnectOutput,
       [this, &context](std::int32_t output, InterfaceHandle next, std::int32_t input) {
         return ConnectOutput(output, context.handles.FindAs<TopologyNode>(next), input);
       });
}

std::shared_ptr<Object> TopologyNode::As(const Guid& iid) {
  return iid == kIidUnknown ? shared_from_this() : nullptr;
}

HResult TopologyNode::SetUnknown(const Guid& key, const std::shared_ptr<Object>& value) {
  if (!value) return kEInvalidArg;
  if (key == kNodeSourceAttribute) {
    source_ = std::dynamic_pointer_cast<MediaSource>(value);
    return source_ ? kSOk : kEInvalidArg;
  }
  if (key == kNodePresentationAttribute) {
    presentation_ = std::dynamic_pointer_cast<PresentationDescriptor>(value);
    return presentation_ ? kSOk : kEInvalidArg;
  }
  if (key == kNodeStreamAttribute) {
    stream_ = std::dynamic_pointer_cast<StreamDescriptor>(value);
    return stream_ ? kSOk : kEInvalidArg;
  }
  // Any attribute may be stored on a node; the others mean nothing here.
  return kSOk;
}

HResult TopologyNode::ConnectOutput(std::int32_t output, const std::shared_ptr<TopologyNode>& next,
                                    std::int32_t input) {
  if (!next || output != 0 || input != 0) return kEInvalidArg;
  if (kind_ != Kind::kSource || next->kind_ != Kind::kOutput) return kEInvalidArg;
  next_ = next;
  return kSOk;
}

std::shared_ptr<MediaItem> TopologyNode::HeardItem() const {
  if (!source_ || !presentation_ || !stream_ || !next_ || !next_->renderer_) return nullptr;
  if (next_->renderer_->Kind() != Renderer::kAudio) return nullptr;
  return source_->Item() == presentation_->Item() ? source_->Item() : nullptr;
}

Topology::Topology(Context& context) {
  Bind(IMFTopology::AddNode, [this, &context](InterfaceHandle handle) {
    const auto node = context.handles.FindAs<TopologyNode>(handle);
    if (!node || Holds(node.get())) return kEInvalidArg;
    nodes_.push_back(node);
    return kSOk;
  });
}

std::shared_ptr<Object> Topology::As(const Guid& iid) {
  return iid == kIidUnknown ? shared_from_this() : nullptr;
}

bool Topology::Holds(const TopologyNode* node) const {
  return std::any_of(nodes_.begin(), nodes_.end(), [node](const auto& held) { return held.get() == node; });
}

std::shared_ptr<MediaItem> Topology::HeardItem() const {
  for (const auto& node : nodes_) {
    const auto item = node->HeardItem();
    if (item && Holds(node->Next())) return item;
  }
  return nullptr;
}

}  // namespace platform::gstreamer
