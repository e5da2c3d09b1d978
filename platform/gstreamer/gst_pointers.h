#pragma once
// Owning pointers for GStreamer's and GLib's reference-counted and allocated things.
// Not for anything shared with C++ code of other rooms.

#include <gst/gst.h>

#include <memory>

namespace platform::gstreamer {

struct ObjectUnref {
  void operator()(void* object) const { gst_object_unref(object); }
};
struct GObjectUnref {
  void operator()(void* object) const { g_object_unref(object); }
};
struct CapsUnref {
  void operator()(GstCaps* caps) const { gst_caps_unref(caps); }
};
struct TagListUnref {
  void operator()(GstTagList* tags) const { gst_tag_list_unref(tags); }
};
struct GFree {
  void operator()(void* memory) const { g_free(memory); }
};
struct GErrorFree {
  void operator()(GError* error) const { g_error_free(error); }
};

/// For objects of GLib that are not GStreamer's.
template <typename Type>
using GObjectPointer = std::unique_ptr<Type, GObjectUnref>;
using ElementPointer = std::unique_ptr<GstElement, ObjectUnref>;
using PadPointer = std::unique_ptr<GstPad, ObjectUnref>;
using BusPointer = std::unique_ptr<GstBus, ObjectUnref>;
using ClockPointer = std::unique_ptr<GstClock, ObjectUnref>;
using CapsPointer = std::unique_ptr<GstCaps, CapsUnref>;
using TagListPointer = std::unique_ptr<GstTagList, TagListUnref>;
using GStringPointer = std::unique_ptr<char, GFree>;
using GErrorPointer = std::unique_ptr<GError, GErrorFree>;

}  // namespace platform::gstreamer
