#include "platform/gstreamer/source_pacer.h"

#include <gst/app/gstappsrc.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "platform/gstreamer/gst_pointers.h"

namespace gstreamer_test {
namespace {

using namespace std::chrono_literals;
using platform::gstreamer::ElementPointer;
using platform::gstreamer::Gathering;
using platform::gstreamer::SourcePacer;

/// A source that passes on what it is given to a sink that counts.
class SourcePacerTest : public testing::Test {
 protected:
  SourcePacerTest() {
    gst_init(nullptr, nullptr);
    pipeline_.reset(GST_ELEMENT(gst_object_ref_sink(gst_pipeline_new(nullptr))));
    source_ = gst_element_factory_make("appsrc", nullptr);
    GstElement* sink = gst_element_factory_make("fakesink", nullptr);
    g_object_set(sink, "sync", FALSE, "async", FALSE, "signal-handoffs", TRUE, nullptr);
    g_signal_connect(sink, "handoff", G_CALLBACK(+[](GstElement*, GstBuffer*, GstPad*, gpointer counted) {
                       ++*static_cast<std::atomic<int>*>(counted);
                     }),
                     &passed_);
    gst_bin_add_many(GST_BIN(pipeline_.get()), source_, sink, nullptr);
    gst_element_link(source_, sink);
  }
  ~SourcePacerTest() override {
    pacer_.Release();
    gst_element_set_state(pipeline_.get(), GST_STATE_NULL);
  }

  void Start(std::chrono::milliseconds buffered) {
    pacer_.Attach(source_, [buffered] { return buffered; });
    gst_element_set_state(pipeline_.get(), GST_STATE_PLAYING);
  }
  void Send() { gst_app_src_push_buffer(GST_APP_SRC(source_), gst_buffer_new_allocate(nullptr, 1, nullptr)); }
  bool HavePassed(int count, std::chrono::milliseconds within) {
    const auto end = std::chrono::steady_clock::now() + within;
    while (passed_ < count && std::chrono::steady_clock::now() < end) std::this_thread::sleep_for(1ms);
    return passed_ >= count;
  }
  /// A first piece, and one that comes so much later that it was waited for.
  void SendTwo() {
    Send();
    ASSERT_TRUE(HavePassed(1, 10s));
    std::this_thread::sleep_for(20ms);
    Send();
  }

  ElementPointer pipeline_;
  GstElement* source_ = nullptr;
  std::atomic<int> passed_{0};
  SourcePacer pacer_{1h};
};

TEST_F(SourcePacerTest, WaitsBeforeItAsksForMoreUntilItIsReleased) {
  Start(2s);
  SendTwo();
  EXPECT_FALSE(HavePassed(2, 50ms));
  pacer_.Release();
  EXPECT_TRUE(HavePassed(2, 10s));
}

TEST_F(SourcePacerTest, WaitsNoMoreOnceReleased) {
  Start(2s);
  pacer_.Release();
  SendTwo();
  EXPECT_TRUE(HavePassed(2, 10s));
}

TEST_F(SourcePacerTest, DoesNotWaitWhileLittleIsBuffered) {
  Start(0s);
  SendTwo();
  EXPECT_TRUE(HavePassed(2, 10s));
}

}  // namespace
}  // namespace gstreamer_test
