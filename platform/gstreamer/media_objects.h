#pragma once
// The objects around opening an item: resolver, byte stream, source, its description.
// Not playing it; that is session_objects.h.

#include <memory>

#include "platform/gstreamer/context.h"

namespace platform::gstreamer {

class SourceResolver : public Object {
 public:
  explicit SourceResolver(Context& context);
  std::shared_ptr<Object> As(const Guid& iid) override;

 private:
  HResult Open(PipelineInput input, std::int32_t* type, InterfaceHandle* out);
  Context& context_;
};

/// A byte stream on a registered stream object.
class ByteStream : public Object {
 public:
  explicit ByteStream(std::shared_ptr<StreamReader> reader);
  std::shared_ptr<Object> As(const Guid& iid) override;
  [[nodiscard]] const std::shared_ptr<StreamReader>& Reader() const { return reader_; }

 private:
  std::shared_ptr<StreamReader> reader_;
};

class MediaSource : public Object {
 public:
  MediaSource(Context& context, std::shared_ptr<MediaItem> item);
  std::shared_ptr<Object> As(const Guid& iid) override;
  [[nodiscard]] const std::shared_ptr<MediaItem>& Item() const { return item_; }

 private:
  std::shared_ptr<MediaItem> item_;
};

class PresentationDescriptor : public Object {
 public:
  PresentationDescriptor(Context& context, std::shared_ptr<MediaItem> item);
  std::shared_ptr<Object> As(const Guid& iid) override;
  [[nodiscard]] const std::shared_ptr<MediaItem>& Item() const { return item_; }

 private:
  std::shared_ptr<MediaItem> item_;
};

/// The description of an item's one audio stream.
class StreamDescriptor : public Object {
 public:
  explicit StreamDescriptor(Context& context);
  std::shared_ptr<Object> As(const Guid& iid) override;
};

class MediaTypeHandler : public Object {
 public:
  MediaTypeHandler();
  std::shared_ptr<Object> As(const Guid& iid) override;
};

}  // namespace platform::gstreamer
