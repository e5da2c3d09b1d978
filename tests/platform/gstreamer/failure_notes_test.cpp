// How messages of elements and errors are put together, where no server or file brings about the case.
#include "platform/gstreamer/failure_notes.h"

#include <gst/pbutils/pbutils.h>
#include <gtest/gtest.h>

#include <memory>

namespace gstreamer_test {
namespace {

using platform::PlaybackFailure;
using platform::gstreamer::CapsPointer;
using platform::gstreamer::ElementPointer;
using platform::gstreamer::FailureCause;
using platform::gstreamer::FailureNotes;

struct MessageUnref {
  void operator()(GstMessage* message) const { gst_message_unref(message); }
};
using MessagePointer = std::unique_ptr<GstMessage, MessageUnref>;

class FailureNotesTest : public testing::Test {
 protected:
  FailureNotesTest() {
    gst_init(nullptr, nullptr);
    element.reset(GST_ELEMENT(gst_object_ref_sink(gst_bin_new(nullptr))));
  }
  void HearMissing(const char* caps_text) {
    const CapsPointer caps(gst_caps_from_string(caps_text));
    Hear(gst_missing_decoder_message_new(element.get(), caps.get()));
  }
  void Hear(GstMessage* raw) {
    const MessagePointer message(raw);
    notes.Hear(*message);
  }
  void HearHeaders(guint status, const char* type) {
    GstStructure* response =
        gst_structure_new("response-headers", "Content-Type", G_TYPE_STRING, type, nullptr);
    GstStructure* headers = gst_structure_new("http-headers", "http-status-code", G_TYPE_UINT, status,
                                              "response-headers", GST_TYPE_STRUCTURE, response, nullptr);
    gst_structure_free(response);
    Hear(gst_message_new_element(GST_OBJECT(element.get()), headers));
  }
  std::optional<FailureCause> CauseOf(GQuark domain, gint code) {
    GError* error = g_error_new_literal(domain, code, "text");
    const MessagePointer message(gst_message_new_error(GST_OBJECT(element.get()), error, nullptr));
    g_error_free(error);
    return notes.Explain(*message, FailureNotes::Source::kServer);
  }

  ElementPointer element;
  FailureNotes notes;
};

TEST_F(FailureNotesTest, OfSeveralMissingDecodersTheFirstIsNamed) {
  HearMissing("audio/x-wma, wmaversion=2");
  HearMissing("audio/x-ac3");
  EXPECT_EQ(notes.NoSound().package, u"gstreamer1.0-libav");
}

TEST_F(FailureNotesTest, OnlyAMessageOfAMissingDecoderIsOne) {
  const CapsPointer caps(gst_caps_from_string("audio/x-wma"));
  Hear(gst_message_new_element(GST_OBJECT(element.get()),
                               gst_structure_new("format", "detail", GST_TYPE_CAPS, caps.get(), nullptr)));
  Hear(gst_missing_uri_source_message_new(element.get(), "gopher"));
  EXPECT_EQ(notes.NoSound().failure, PlaybackFailure::kUnreadable);
}

TEST_F(FailureNotesTest, WithoutAnAnswerNothingIsExplained) {
  EXPECT_FALSE(CauseOf(GST_STREAM_ERROR, GST_STREAM_ERROR_FAILED));
  HearHeaders(0, "");
  EXPECT_FALSE(CauseOf(GST_STREAM_ERROR, GST_STREAM_ERROR_FAILED));
  HearHeaders(200, "audio/mpeg");
  EXPECT_EQ(CauseOf(GST_STREAM_ERROR, GST_STREAM_ERROR_FAILED)->failure, PlaybackFailure::kConnectionLost);
}

TEST_F(FailureNotesTest, AnErrorOfTheInstallationIsAnotherFailure) {
  HearHeaders(200, "text/html");
  EXPECT_EQ(CauseOf(GST_CORE_ERROR, GST_CORE_ERROR_NEGOTIATION)->failure, PlaybackFailure::kOther);
  EXPECT_EQ(CauseOf(GST_STREAM_ERROR, GST_STREAM_ERROR_DECODE)->failure, PlaybackFailure::kWebPage);
}

}  // namespace
}  // namespace gstreamer_test
