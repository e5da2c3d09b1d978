#include "platform/win32/media/live_stream.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <future>
#include <iterator>
#include <string>

#include "tests/platform/win32/media/station_rig.h"

namespace platform::win32 {
namespace {

struct LiveStreamTest : StationRig {
  static std::string Loop() {
    std::ifstream file(std::filesystem::path(Named("FUNKHAUS_LOOP")), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  /// What the stream has sent first.
  static std::string Read(const LiveStream& stream, std::size_t size) {
    std::string bytes;
    while (bytes.size() < size) {
      std::string piece(size - bytes.size(), '?');
      std::promise<std::size_t> count;
      stream.Buffer()->Read(bytes.size(), std::as_writable_bytes(std::span(piece)),
                            [&count](std::size_t read) { count.set_value(read); });
      bytes += piece.substr(0, count.get_future().get());
    }
    return bytes;
  }
};

TEST_F(LiveStreamTest, IsTheSoundAloneHoweverTheStationSendsIt) {
  const std::string whole = Loop();
  ASSERT_FALSE(whole.empty());
  for (const char* path : {"/stream", "/titles", "/icy"}) {
    const LiveStream stream(Address(path), {std::chrono::seconds(15), u"test"});
    const std::string sound = Read(stream, 60'000);
    ASSERT_EQ(sound.size(), 60'000u);
    std::string expected;
    while (expected.size() < sound.size()) expected += whole;
    EXPECT_TRUE(sound == expected.substr(0, sound.size())) << path;
  }
}

TEST_F(LiveStreamTest, KnowsTheTypeOfTheSoundBetterThanTheServer) {
  const LiveStream stream(Address("/mislabelled"), {std::chrono::seconds(15), u"test"});
  ASSERT_TRUE(WaitUntil([&] { return stream.Decided(); }));
  ASSERT_TRUE(stream.Answer());
  EXPECT_EQ(stream.Answer()->content_type, "audio/mpeg");
  EXPECT_EQ(stream.Answer()->bit_rate, 320000);
}

TEST_F(LiveStreamTest, JudgesNoStationByItsFirstBytes) {
  const LiveStream stream(Address("/hesitates"), {std::chrono::seconds(15), u"test"});
  ASSERT_TRUE(WaitUntil([&] { return stream.Decided(); }));
  ASSERT_TRUE(stream.Answer());
  EXPECT_EQ(stream.Answer()->content_type, "audio/mpeg");
}

// Whoever reads may ask from within the answer, and from another thread that the answer waits for.
TEST_F(LiveStreamTest, IsNotLockedWhileItsLastReadIsAnswered) {
  const LiveStream stream(Address("/whole"), {std::chrono::seconds(15), u"test"});
  std::future<void> asked;
  std::promise<bool> answered;
  std::string piece(1'000'000, '?');
  stream.Buffer()->Read(0, std::as_writable_bytes(std::span(piece)), [](std::size_t) {});
  stream.Buffer()->Read(200'000, std::as_writable_bytes(std::span(piece)), [&](std::size_t) {
    asked = std::async(std::launch::async, [&stream] { static_cast<void>(stream.Status()); });
    answered.set_value(asked.wait_for(std::chrono::seconds(5)) == std::future_status::ready);
  });
  EXPECT_TRUE(answered.get_future().get());
}

TEST_F(LiveStreamTest, OpensASilentStationAgainAndLeavesTheOldConnection) {
  const LiveStream stream(Address("/stalls"), {std::chrono::milliseconds(300), u"test"});
  EXPECT_TRUE(WaitUntil([this] { return Ask("/count?/stalls") > 1; }));
  // Under Wine a connection that was left closes with the station's next bytes.
  EXPECT_TRUE(WaitUntil([this] { return Ask("/go") == 0 && Ask("/open") == 1; }));
}

}  // namespace
}  // namespace platform::win32
