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

// The first two are results that the system's http source may give.
TEST(NetworkFailure, HasTheResultsOfEachOfTheSystemsReaders) {
  for (const std::uint32_t result :
       {0xC00D0029u, 0xC00D2EFEu, 0xC00D0005u, 0xC00D0006u, 0xC00D000Eu, 0xC00D0013u,
        0xC00D0014u, 0xC00D0015u, 0xC00D0027u, 0xC00D0028u, 0xC00D2EE0u, 0xC00D2F00u,
        0xC00D2F06u, 0xC00D2F0Cu, 0x800C0005u, 0x800C0008u, 0x800C000Bu, 0x8007003Bu,
        0x80070040u, 0x80070079u, 0x800704CAu, 0x800704CFu, 0x800704D4u}) {
    EXPECT_TRUE(IsNetworkFailure(static_cast<HResult>(result))) << std::hex << result;
    EXPECT_EQ(FailureOf(static_cast<HResult>(result)), PlaybackFailure::kConnectionLost)
        << std::hex << result;
  }
  for (const std::uint32_t result : {0xC00D0004u, 0xC00D0007u, 0xC00D001Au, 0xC00D002Au, 0xC00D2EDFu,
                                     0xC00D2F0Du, 0x800C0100u, 0x8007003Au, 0x800704C9u, 0x800704D5u}) {
    EXPECT_FALSE(IsNetworkFailure(static_cast<HResult>(result))) << std::hex << result;
  }
}

TEST(DeviceFailure, IsTheFrameworksOrTheAudioClients) {
  for (const HResult result :
       {kMfENoAudioPlaybackDevice, kMfEAudioPlaybackDeviceInvalidated, kMfEAudioServiceNotRunning,
        kAudioDeviceInvalidated, kAudioEndpointCreateFailed, kAudioServiceNotRunning}) {
    EXPECT_TRUE(IsDeviceFailure(result)) << std::hex << result;
    EXPECT_FALSE(IsDecoderFailure(result)) << std::hex << result;
  }
  EXPECT_FALSE(IsDeviceFailure(kMfENetRead));
  EXPECT_FALSE(IsDeviceFailure(kSOk));
}

TEST(DecoderFailure, IsAMissingDecoderOrARefusal) {
  constexpr auto kNotPossibleForThatType = static_cast<HResult>(0xC00D6D6Du);
  for (const HResult result :
       {kMfETopologyCodecNotFound, kMfEUnsupportedByteStreamType, kNotPossibleForThatType}) {
    EXPECT_TRUE(IsDecoderFailure(result)) << std::hex << result;
    EXPECT_FALSE(IsDeviceFailure(result)) << std::hex << result;
  }
  EXPECT_FALSE(IsDecoderFailure(kMfENetRead));
  EXPECT_FALSE(IsDecoderFailure(kEFail));
}

TEST(NetworkFailure, IsNoDevicesAndNoDecoders) {
  for (const HResult result : {kSOk, kEFail, kMfENoAudioPlaybackDevice, kMfEAudioPlaybackDeviceInvalidated,
                               kMfETopologyCodecNotFound, kMfEUnsupportedByteStreamType, kEAccessDenied}) {
    EXPECT_FALSE(IsNetworkFailure(result)) << std::hex << result;
  }
}

}  // namespace
}  // namespace platform::win32
