// A station that the system's own reader opens, and what its session reports: it needs with_sound.py.
#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>
#include <mfidl.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <thread>

#include "platform/win32/media/byte_stream.h"
#include "platform/win32/media/live_stream.h"
#include "platform/win32/media/media_opener.h"
#include "platform/win32/media/media_results.h"
#include "ports/media_interfaces.h"
#include "tests/platform/win32/media/made_sessions.h"
#include "tests/platform/win32/media/station_rig.h"

namespace platform::win32 {
namespace {

using namespace std::chrono_literals;

/// Reads a station in the place of the system, and reports what a test wishes as its source.
class ReportingReader : public AddressReader {
 public:
  OpenedObject Open(::IMFSourceResolver& resolver, const Text& address, std::int32_t flags,
                    const OpeningWait& wait) override {
    stream_.emplace(address, LiveStreamOptions{15s, u"test"});
    if (const HResult waited = wait.Until([this] { return stream_->Decided(); }); waited != kSOk)
      return {waited, kMfObjectInvalid, {}};
    const auto bytes = MakeByteStream(stream_->Buffer(), "audio/mpeg");
    OpenedObject opened = OpenByteStream(resolver, *bytes.Get(), address,
                                         flags | kMfResolutionContentNeedNotMatch, wait, nullptr);
    opened.endless = true;
    source_ = {};
    if (opened.result == kSOk)
      opened.object->QueryInterface(__uuidof(::IMFMediaSource), source_.ReceiveAny());
    return opened;
  }
  bool Report(MediaEventType type) { return source_->QueueEvent(type, GUID{}, S_OK, nullptr) == S_OK; }
  /// A source that waits for bytes would not shut down.
  void EndReads() {
    if (stream_) stream_->EndReads();
  }

 private:
  std::optional<LiveStream> stream_;
  ComPointer<::IMFMediaSource> source_;
};

/// What the sessions report can be queued to them directly.
struct WatchedStation : StationRig {
  void TearDown() override {
    sessions.Forget();
    StationRig::TearDown();
  }
  [[nodiscard]] bool SessionReports(MediaEventType type, HRESULT status) const {
    return sessions.Latest().QueueEvent(type, GUID{}, status, nullptr) == S_OK;
  }
  MadeSessions sessions;
};

struct SystemStation : WatchedStation {
  void SetUp() override {
    options.reader = reader;
    WatchedStation::SetUp();
  }
  void TearDown() override {
    reader->EndReads();
    player.reset();
    media.reset();
    WatchedStation::TearDown();
  }
  bool IsRenewed() {
    return WaitUntil([this] {
      static_cast<void>(media->Status());
      return !log.empty() && log.back() == "The lost station is opened and starts.";
    });
  }

  const std::shared_ptr<ReportingReader> reader = std::make_shared<ReportingReader>();
};

struct FailedStation : SystemStation, testing::WithParamInterface<std::uint32_t> {};

// E_UNEXPECTED says nothing, which is no reason to leave a station silent.
TEST_P(FailedStation, IsHeardAgain) {
  Play("/stream");
  EXPECT_TRUE(Heard());
  ASSERT_TRUE(SessionReports(MEError, static_cast<HRESULT>(GetParam())));
  EXPECT_TRUE(Becomes(PlaybackState::kReconnecting));
  reader->EndReads();
  EXPECT_TRUE(IsRenewed());
  EXPECT_TRUE(Becomes(PlaybackState::kPlaying));
  EXPECT_TRUE(Heard());
}

INSTANTIATE_TEST_SUITE_P(With, FailedStation, testing::Values(0xC00D0029u, 0xC00D2EFEu, 0x8000FFFFu));

/// Its network disappears without closing a connection: the source waits, and says at most that.
struct StalledStation : SystemStation {
  void SetUp() override {
    options.stall_limit = 3s;
    SystemStation::SetUp();
    Play("/stream");
    ASSERT_TRUE(Heard());
    ASSERT_FALSE(WasLost());
  }
  /// When the limit has passed.
  PlaybackStatus Later() {
    const auto until = std::chrono::steady_clock::now() + options.stall_limit + 1s;
    while (std::chrono::steady_clock::now() < until) {
      static_cast<void>(media->Status());
      std::this_thread::sleep_for(10ms);
    }
    return media->Status();
  }
  [[nodiscard]] bool WasLost() const {
    return std::ranges::any_of(
        log, [](const std::string& line) { return line.starts_with("The system has lost"); });
  }
};

TEST_F(StalledStation, IsHeardAgain) {
  ASSERT_TRUE(reader->Report(MEBufferingStarted));
  EXPECT_TRUE(Becomes(PlaybackState::kReconnecting));
  reader->EndReads();
  EXPECT_TRUE(IsRenewed());
  EXPECT_TRUE(Becomes(PlaybackState::kPlaying));
  EXPECT_TRUE(Heard());
}

TEST_F(StalledStation, ThatHasDataInTimeIsLeftAlone) {
  ASSERT_TRUE(reader->Report(MEBufferingStarted));
  ASSERT_TRUE(reader->Report(MEBufferingStopped));
  EXPECT_EQ(Later().state, PlaybackState::kPlaying);
  EXPECT_FALSE(WasLost());
  EXPECT_EQ(Ask("/count?/stream"), 1);
  EXPECT_TRUE(Heard());
}

TEST_F(StalledStation, ThatIsPausedIsLeftAlone) {
  ASSERT_TRUE(reader->Report(MEBufferingStarted));
  player->PauseMedia();
  EXPECT_EQ(Later().state, PlaybackState::kPaused);
  EXPECT_FALSE(WasLost());
  EXPECT_EQ(Ask("/count?/stream"), 1);
}

TEST_F(StalledStation, ThatWasPausedForLongContinues) {
  player->PauseMedia();
  EXPECT_EQ(Later().state, PlaybackState::kPaused);
  const auto paused_at = player->CurrentPlayPosition();
  ASSERT_TRUE(player->PlayMedia());
  EXPECT_TRUE(WaitUntil([&] { return player->CurrentPlayPosition() > paused_at + 5'000'000; }));
  EXPECT_EQ(media->Status().state, PlaybackState::kPlaying);
  EXPECT_FALSE(WasLost());
  EXPECT_TRUE(Heard());
}

TEST_F(StalledStation, ThatIsStoppedIsLeftAlone) {
  ASSERT_TRUE(reader->Report(MEBufferingStarted));
  reader->EndReads();
  player->StopMedia();
  EXPECT_EQ(Later().state, PlaybackState::kStopped);
  EXPECT_FALSE(WasLost());
  EXPECT_EQ(Ask("/count?/stream"), 1);
}

/// Stands for the system's resolver where that neither opens a station nor refuses it.
class UndecidedReader : public AddressReader {
 public:
  OpenedObject Open(::IMFSourceResolver&, const Text&, std::int32_t, const OpeningWait& wait) override {
    limit = wait.deadline - std::chrono::steady_clock::now();
    const HResult waited = wait.Until([] {
      std::this_thread::sleep_for(10ms);
      return false;
    });
    return {waited, kMfObjectInvalid, {}};
  }
  std::chrono::nanoseconds limit{};
};

struct UndecidedSystem : StationRig {
  void SetUp() override {
    options.reader = reader;
    StationRig::SetUp();
  }
  const std::shared_ptr<UndecidedReader> reader = std::make_shared<UndecidedReader>();
};

// The station takes four seconds to be opened, because Wine's parser waits for 64 KB of it.
TEST_F(UndecidedSystem, LeavesAllTheTimeForAStationThatItDoesNotOpen) {
  options.open_deadline = 7s;
  MakePlayer();
  Play("/usual");
  EXPECT_TRUE(Heard());
  EXPECT_LE(reader->limit, options.open_deadline / 2);
}

TEST_F(UndecidedSystem, HasAllTheTimeForAFile) {
  options.open_deadline = 1h;
  player.reset();
  media.reset();
  MakePlayer();
  loop.on_paint = [this] { loop.input_ends_wait = true; };
  player->MediaFileFromUrl(u"C:\\gibt es nicht.mp3");
  EXPECT_TRUE(player->OpeningCancelled());
  EXPECT_GT(reader->limit, options.open_deadline / 2);
}

using OwnStation = WatchedStation;

TEST_F(OwnStation, WhoseDecoderFailsIsReadNoLonger) {
  Play("/stream");
  EXPECT_TRUE(Heard());
  ASSERT_TRUE(SessionReports(MEError, kMfETopologyCodecNotFound));
  EXPECT_TRUE(Becomes(PlaybackState::kFailed));
  EXPECT_TRUE(Disconnected());
  EXPECT_EQ(Ask("/count?/stream"), 1);
  player->StopMedia();
  results.clear();
  Play("/stream");
  EXPECT_TRUE(Heard());
}

TEST_F(SystemStation, WhoseDecoderFailsIsNotAskedAgain) {
  Play("/stream");
  EXPECT_TRUE(Heard());
  ASSERT_TRUE(SessionReports(MEError, kMfETopologyCodecNotFound));
  EXPECT_TRUE(Becomes(PlaybackState::kFailed));
  EXPECT_EQ(media->Status().failure, PlaybackFailure::kUnreadable);
  EXPECT_EQ(Ask("/count?/stream"), 1);
}

}  // namespace
}  // namespace platform::win32
