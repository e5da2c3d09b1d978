#include "platform/gstreamer/reader_source.h"

#include <gst/app/gstappsrc.h>

#include <algorithm>
#include <utility>

namespace platform::gstreamer {
namespace {

constexpr std::size_t kLargestRead = 16384;

struct Feed {
  std::shared_ptr<StreamReader> reader;

  /// A reader that throws has nothing more to give; an exception must not reach GStreamer.
  std::size_t Read(std::span<std::byte> target) noexcept {
    try {
      return std::min(target.size(), reader->Read(target));
    } catch (...) {
      return 0;
    }
  }
  std::optional<std::uint64_t> Size() noexcept {
    try {
      return reader->Size();
    } catch (...) {
      return std::nullopt;
    }
  }
  bool Seek(std::uint64_t position) noexcept {
    try {
      return reader->Seek(position);
    } catch (...) {
      return false;
    }
  }
};

void OnNeedData(GstAppSrc* source, guint wanted, gpointer data) {
  const std::size_t size = std::clamp<std::size_t>(wanted, 1, kLargestRead);
  GstBuffer* buffer = gst_buffer_new_allocate(nullptr, size, nullptr);
  GstMapInfo map;
  if (!gst_buffer_map(buffer, &map, GST_MAP_WRITE)) {
    gst_buffer_unref(buffer);
    return;
  }
  const std::span<std::byte> target(reinterpret_cast<std::byte*>(map.data), size);
  const std::size_t read = static_cast<Feed*>(data)->Read(target);
  gst_buffer_unmap(buffer, &map);
  if (read == 0) {
    gst_buffer_unref(buffer);
    gst_app_src_end_of_stream(source);
    return;
  }
  gst_buffer_set_size(buffer, static_cast<gssize>(read));
  gst_app_src_push_buffer(source, buffer);
}

gboolean OnSeekData(GstAppSrc*, guint64 offset, gpointer data) {
  return static_cast<Feed*>(data)->Seek(offset) ? TRUE : FALSE;
}

}  // namespace

void FeedFromReader(GstElement* source, std::shared_ptr<StreamReader> reader) {
  GstAppSrc* app_source = GST_APP_SRC(source);
  auto* feed = new Feed{std::move(reader)};
  const bool seekable = feed->Seek(0);
  gst_app_src_set_stream_type(app_source,
                              seekable ? GST_APP_STREAM_TYPE_SEEKABLE : GST_APP_STREAM_TYPE_STREAM);
  if (const auto size = feed->Size()) gst_app_src_set_size(app_source, static_cast<gint64>(*size));
  GstAppSrcCallbacks callbacks{};
  callbacks.need_data = OnNeedData;
  callbacks.seek_data = OnSeekData;
  gst_app_src_set_callbacks(app_source, &callbacks, feed,
                            [](gpointer data) { delete static_cast<Feed*>(data); });
}

}  // namespace platform::gstreamer
