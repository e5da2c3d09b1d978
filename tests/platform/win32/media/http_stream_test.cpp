// One connection to a station: it needs with_sound.py.
#include "platform/win32/media/http_stream.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <span>
#include <string>

#include "tests/platform/win32/media/station_rig.h"

namespace platform::win32 {
namespace {

struct HttpStreamTest : StationRig {
  [[nodiscard]] std::shared_ptr<HttpStream> Open(const std::string& path) const {
    return HttpStream::Open(Address(path), u"test", buffer);
  }
  const std::shared_ptr<StreamBuffer> buffer = std::make_shared<StreamBuffer>();
};

TEST_F(HttpStreamTest, AFullBufferIsNotTheServersSilence) {
  const std::atomic<bool> cancelled = false;
  const std::string full(StreamBuffer::kMostAhead, 'x');
  ASSERT_TRUE(buffer->Append(std::as_bytes(std::span(full)), cancelled));
  const auto stream = Open("/stream");
  ASSERT_TRUE(WaitUntil([&] { return stream->Answer().has_value(); }));
  const auto later = HttpStream::Clock::now();
  EXPECT_TRUE(WaitUntil([&] { return stream->LatestNews() > later; }));
  EXPECT_FALSE(stream->Over());
  stream->Cancel();
  EXPECT_TRUE(WaitUntil([&] { return stream->Over(); }));
  const auto over = HttpStream::Clock::now();
  EXPECT_LT(stream->LatestNews(), over);
}

TEST_F(HttpStreamTest, IsNewsOfTheServerWheneverSomethingComes) {
  const auto begun = HttpStream::Clock::now();
  const auto stream = Open("/stream");
  ASSERT_TRUE(WaitUntil([&] { return stream->Answer().has_value(); }));
  const auto answered = HttpStream::Clock::now();
  EXPECT_GT(stream->LatestNews(), begun);
  EXPECT_TRUE(WaitUntil([&] { return stream->LatestNews() > answered; }));
  stream->Cancel();
}

TEST_F(HttpStreamTest, ThatIsCancelledEndsAndIsNotWhole) {
  const auto stream = Open("/whole");
  stream->Cancel();
  EXPECT_TRUE(WaitUntil([&] { return stream->Over(); }));
  EXPECT_FALSE(stream->Complete());
}

TEST_F(HttpStreamTest, KnowsWhetherAllThatWasPromisedHasCome) {
  const auto whole = Open("/whole");
  EXPECT_TRUE(WaitUntil([&] { return whole->Over(); }));
  EXPECT_TRUE(whole->Complete());
  const auto cut = Open("/cut");
  EXPECT_TRUE(WaitUntil([&] { return cut->Over(); }));
  EXPECT_FALSE(cut->Complete());
  EXPECT_EQ(cut->Failure(), PlaybackFailure::kConnectionLost);
}

TEST_F(HttpStreamTest, EndsWithTheReadsOfItsBuffer) {
  buffer->EndReads();
  const auto stream = Open("/stream");
  EXPECT_TRUE(WaitUntil([&] { return stream->Over(); }));
  EXPECT_TRUE(Disconnected());
}

TEST_F(HttpStreamTest, KnowsItsTypeInSmallLettersWithoutParameters) {
  const auto stream = Open("/shouted");
  ASSERT_TRUE(WaitUntil([&] { return stream->Answer().has_value(); }));
  EXPECT_EQ(stream->Answer()->content_type, "audio/x-any");
  stream->Cancel();
}

TEST_F(HttpStreamTest, SaysWhoAsks) {
  const auto stream = HttpStream::Open(Address("/stream"), u"4711/1.0", buffer);
  ASSERT_TRUE(WaitUntil([&] { return stream->Answer().has_value(); }));
  EXPECT_EQ(Ask("/agent"), 4711);
  stream->Cancel();
}

TEST_F(HttpStreamTest, DoesNotWaitForAnAnswerForever) {
  const auto stream = HttpStream::Open(Address("/silent"), u"test", buffer, std::chrono::milliseconds(300));
  EXPECT_TRUE(WaitUntil([&] { return stream->Over(); }));
  EXPECT_EQ(stream->Failure(), PlaybackFailure::kNoAnswer);
  EXPECT_EQ(stream->Status(), 0);
}

TEST_F(HttpStreamTest, WithoutAnAddressIsOverAtOnce) {
  const auto stream = HttpStream::Open(u"nirgends", u"test", buffer);
  EXPECT_TRUE(WaitUntil([&] { return stream->Over(); }));
  EXPECT_EQ(stream->Failure(), PlaybackFailure::kBadAddress);
  EXPECT_FALSE(stream->Answer());
}

}  // namespace
}  // namespace platform::win32
