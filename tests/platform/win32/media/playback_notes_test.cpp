#include "platform/win32/media/playback_notes.h"

#include <gtest/gtest.h>

#include "platform/win32/media/media_results.h"

namespace platform::win32 {
namespace {

TEST(PlaybackNotes, FollowTheLatestItem) {
  PlaybackNotes notes;
  EXPECT_EQ(notes.Status().state, PlaybackState::kStopped);
  const auto first = notes.Open();
  EXPECT_EQ(notes.Status().state, PlaybackState::kConnecting);
  notes.Started(first);
  EXPECT_EQ(notes.Status().state, PlaybackState::kPlaying);
  const auto second = notes.Open();
  notes.Ended(first);
  notes.Broken(first, kEFail);
  EXPECT_EQ(notes.Status().state, PlaybackState::kConnecting);
  notes.Paused(second);
  EXPECT_EQ(notes.Status().state, PlaybackState::kPaused);
  notes.GivenUp(second);
  EXPECT_EQ(notes.Status().state, PlaybackState::kStopped);
}

TEST(PlaybackNotes, AFailureStaysUntilTheNextOpening) {
  PlaybackNotes notes;
  const auto item = notes.Open();
  notes.OpeningFailed(item, PlaybackFailure::kHttpStatus, 503);
  notes.Stopped(item);
  EXPECT_EQ(notes.Status().state, PlaybackState::kFailed);
  EXPECT_EQ(notes.Status().failure, PlaybackFailure::kHttpStatus);
  EXPECT_EQ(notes.Status().http_status, 503);
  notes.Open();
  EXPECT_EQ(notes.Status().failure, PlaybackFailure::kNone);
}

TEST(PlaybackNotes, ResultsSayWhy) {
  EXPECT_EQ(FailureOf(kErrorFileNotFound), PlaybackFailure::kNotFound);
  EXPECT_EQ(FailureOf(kEAccessDenied), PlaybackFailure::kNoAccess);
  EXPECT_EQ(FailureOf(kEInvalidArg), PlaybackFailure::kBadAddress);
  EXPECT_EQ(FailureOf(kMfEUnsupportedScheme), PlaybackFailure::kBadAddress);
  EXPECT_EQ(FailureOf(kMfEUnsupportedByteStreamType), PlaybackFailure::kUnreadable);
  EXPECT_EQ(FailureOf(kMfENetTimeout), PlaybackFailure::kNoAnswer);
  EXPECT_EQ(FailureOf(kMfETopologyCodecNotFound), PlaybackFailure::kUnreadable);
  EXPECT_EQ(FailureOf(kInternetNameNotResolved), PlaybackFailure::kUnknownHost);
  for (const HResult lost :
       {kMfENetRead, kMfENetWrite, kInternetConnectionAborted, kInternetConnectionReset}) {
    EXPECT_EQ(FailureOf(lost), PlaybackFailure::kConnectionLost);
  }
  EXPECT_EQ(FailureOf(kEFail), PlaybackFailure::kOther);
}

TEST(PlaybackNotes, AMissingDeviceIsNamed) {
  // MF_E_NO_AUDIO_PLAYBACK_DEVICE, MF_E_AUDIO_PLAYBACK_DEVICE_INVALIDATED, MF_E_AUDIO_SERVICE_NOT_RUNNING,
  // AUDCLNT_E_DEVICE_INVALIDATED, AUDCLNT_E_ENDPOINT_CREATE_FAILED and AUDCLNT_E_SERVICE_NOT_RUNNING
  for (const std::uint32_t result :
       {0xC00D4E84u, 0xC00D4E86u, 0xC00D4E87u, 0x88890004u, 0x8889000Fu, 0x88890010u}) {
    PlaybackNotes notes;
    notes.Broken(notes.Open(), static_cast<HResult>(result));
    EXPECT_EQ(notes.Status().state, PlaybackState::kFailed);
    EXPECT_EQ(notes.Status().failure, PlaybackFailure::kNoSoundDevice);
  }
}

TEST(PlaybackNotes, AMissingDecoderHasTheNameOfTheFormat) {
  PlaybackNotes notes;
  notes.OpeningFailed(notes.Open(), PlaybackFailure::kNoDecoder, 0, u"AAC");
  EXPECT_EQ(notes.Status().format, u"AAC");
  notes.Open();
  EXPECT_EQ(notes.Status().format, u"");
}

TEST(NetworkFailure, IsWhatAServerOrTheWayToItHasDone) {
  for (const HResult result : {kMfENetRead, kMfENetWrite, kMfENetTimeout, kInternetConnectionAborted,
                               kInternetConnectionReset, kInternetNameNotResolved}) {
    EXPECT_TRUE(IsNetworkFailure(result)) << std::hex << result;
  }
  constexpr auto kSocketReset = static_cast<HResult>(0x80072746u);
  constexpr auto kServerError = static_cast<HResult>(0x801901F4u);
  EXPECT_TRUE(IsNetworkFailure(kSocketReset));
  EXPECT_TRUE(IsNetworkFailure(kServerError));
}

TEST(NetworkFailure, IsNoDevicesAndNoDecoders) {
  for (const HResult result : {kSOk, kEFail, kMfENoAudioPlaybackDevice, kMfEAudioPlaybackDeviceInvalidated,
                               kMfETopologyCodecNotFound, kMfEUnsupportedByteStreamType, kEAccessDenied}) {
    EXPECT_FALSE(IsNetworkFailure(result)) << std::hex << result;
  }
}

}  // namespace
}  // namespace platform::win32
