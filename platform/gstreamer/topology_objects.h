#pragma once
// Topologies: which stream of an item goes to which renderer.
// Not the pipeline that implements it; that is pipeline.h.

#include <memory>
#include <vector>

#include "platform/gstreamer/context.h"
#include "platform/gstreamer/media_objects.h"

namespace platform::gstreamer {

enum class Renderer : std::uint8_t { kAudio, kVideo };

/// Represents a renderer that the session creates when it needs it.
class RendererActivate : public Object {
 public:
  explicit RendererActivate(Renderer renderer);
  std::shared_ptr<Object> As(const Guid& iid) override;
  [[nodiscard]] Renderer Kind() const { return renderer_; }

 private:
  Renderer renderer_;
};

class TopologyNode : public Object {
 public:
  enum class Kind : std::uint8_t { kOutput, kSource };
  TopologyNode(Context& context, Kind kind);
  std::shared_ptr<Object> As(const Guid& iid) override;

  /// The item of a complete source node whose output goes to an audio renderer; null for any other.
  [[nodiscard]] std::shared_ptr<MediaItem> HeardItem() const;
  [[nodiscard]] const TopologyNode* Next() const { return next_.get(); }

 private:
  HResult SetUnknown(const Guid& key, const std::shared_ptr<Object>& value);
  HResult ConnectOutput(std::int32_t output, const std::shared_ptr<TopologyNode>& next, std::int32_t input);

  Kind kind_;
  std::shared_ptr<MediaSource> source_;
  std::shared_ptr<PresentationDescriptor> presentation_;
  std::shared_ptr<StreamDescriptor> stream_;
  std::shared_ptr<RendererActivate> renderer_;
  std::shared_ptr<TopologyNode> next_;
};

class Topology : public Object {
 public:
  explicit Topology(Context& context);
  std::shared_ptr<Object> As(const Guid& iid) override;

  /// The item that this topology plays; null when no branch of it is complete.
  [[nodiscard]] std::shared_ptr<MediaItem> HeardItem() const;

 private:
  [[nodiscard]] bool Holds(const TopologyNode* node) const;
  std::vector<std::shared_ptr<TopologyNode>> nodes_;
};

}  // namespace platform::gstreamer
