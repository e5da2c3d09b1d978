#include "platform/gstreamer/device_probe.h"

#include <gst/gst.h>
#include <gtest/gtest.h>

#include <utility>

#include "platform/gstreamer/gst_pointers.h"

namespace gstreamer_test {
namespace {

class Unheeded final : public platform::gstreamer::PipelineListener {
 public:
  void OnPipelineEvent(const platform::gstreamer::PipelineEvent&) override {}
  void OnTags(const GstTagList&) override {}
};

TEST(DeviceProbeTest, ASinkThatTakesNoSoundIsClosedAndReleased) {
  gst_init(nullptr, nullptr);
  GstElement* element = gst_element_factory_make("appsink", nullptr);
  ASSERT_NE(element, nullptr);
  const platform::gstreamer::CapsPointer pictures(gst_caps_new_empty_simple("video/x-raw"));
  g_object_set(element, "caps", pictures.get(), nullptr);
  platform::gstreamer::ElementPointer sink(GST_ELEMENT(gst_object_ref_sink(element)));
  ASSERT_EQ(gst_element_set_state(element, GST_STATE_READY), GST_STATE_CHANGE_SUCCESS);
  bool released = false;
  g_object_weak_ref(
      G_OBJECT(element), [](gpointer flag, GObject*) { *static_cast<bool*>(flag) = true; }, &released);
  GstState state = GST_STATE_READY;
  g_object_ref(element);
  Unheeded listener;
  EXPECT_EQ(platform::gstreamer::DeviceProbe::Create(std::move(sink), listener, 1), nullptr);
  gst_element_get_state(element, &state, nullptr, 0);
  EXPECT_EQ(state, GST_STATE_NULL);
  EXPECT_FALSE(released);
  g_object_unref(element);
  EXPECT_TRUE(released);
}

}  // namespace
}  // namespace gstreamer_test
