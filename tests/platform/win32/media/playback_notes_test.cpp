#include "platform/win32/media/playback_notes.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

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

enum class Kind : std::uint8_t { kDevice, kDecoder, kData, kNone };

/// Results at both ends of what is one kind, and what the user is told.
struct KindOfResults {
  Kind kind;
  PlaybackFailure failure;
  std::vector<std::uint32_t> results;
};

struct ResultsByMeaning : testing::TestWithParam<KindOfResults> {};

TEST_P(ResultsByMeaning, AreOfOneKindAndHaveItsSentence) {
  const auto& [kind, failure, results] = GetParam();
  for (const std::uint32_t code : results) {
    const auto result = static_cast<HResult>(code);
    EXPECT_EQ(IsDeviceFailure(result), kind == Kind::kDevice) << std::hex << code;
    EXPECT_EQ(IsDecoderFailure(result), kind == Kind::kDecoder) << std::hex << code;
    EXPECT_EQ(IsDataFailure(result), kind == Kind::kData) << std::hex << code;
    EXPECT_EQ(FailureOf(result), failure) << std::hex << code;
    EXPECT_FALSE(IsNetworkFailure(result)) << std::hex << code;
  }
}

// The audio client's: not initialised, invalidated, unsupported format, in use, exclusive mode not allowed,
// no endpoint, no service, exclusive mode only, no time, no buffer, resources invalidated, no such effect.
const KindOfResults kOfTheAudioClient{
    Kind::kDevice,
    PlaybackFailure::kNoSoundDevice,
    {0x88890001u, 0x88890004u, 0x88890008u, 0x8889000Au, 0x8889000Eu, 0x8889000Fu, 0x88890010u, 0x88890012u,
     0x88890017u, 0x88890018u, 0x88890026u, 0x88890041u, 0x88890000u, 0x8889FFFFu}};
// No device, in use, invalidated, no service, a wrong buffer, a wrong client; no renderer.
const KindOfResults kOfTheRenderer{
    Kind::kDevice,
    PlaybackFailure::kNoSoundDevice,
    {0xC00D4E84u, 0xC00D4E85u, 0xC00D4E86u, 0xC00D4E87u, 0xC00D4E88u, 0xC00D4E89u, 0xC00D36FAu}};
const KindOfResults kOfTheDecoder{
    Kind::kDecoder,
    PlaybackFailure::kUnreadable,
    {0xC00D36B4u, 0xC00D36C4u, 0xC00D3AA0u, 0xC00D3E89u, 0xC00D3E98u, 0xC00D5212u, 0xC00D5213u, 0xC00D5214u,
     0xC00D6D60u, 0xC00D6D6Du, 0xC00D6D7Cu}};
const KindOfResults kOfTheDecryptor{Kind::kDecoder, PlaybackFailure::kOther, {0xC00D5211u}};
const KindOfResults kOfTheData{Kind::kData,
                               PlaybackFailure::kUnreadable,
                               {0xC00D36BEu, 0xC00D36CBu, 0xC00D36F0u, 0xC00D36FEu, 0xC00D3A98u, 0xC00D3A9Bu,
                                0xC00D3E86u, 0xC00D3E88u, 0xC00D3E8Cu, 0xC00D3E99u}};
// Successes, failures that say nothing, and the neighbours of what is known.
const KindOfResults kOfNothingKnown{
    Kind::kNone,
    PlaybackFailure::kOther,
    {0x00000000u, 0x08890004u, 0x80004005u, 0x8000FFFFu, 0x8888FFFFu, 0x888A0000u, 0xC00D36B3u,
     0xC00D36B5u, 0xC00D36BDu, 0xC00D36BFu, 0xC00D36C5u, 0xC00D36CAu, 0xC00D36CCu, 0xC00D36EFu,
     0xC00D36F1u, 0xC00D36F9u, 0xC00D36FBu, 0xC00D36FDu, 0xC00D36FFu, 0xC00D3A97u, 0xC00D3A9Cu,
     0xC00D3A9Fu, 0xC00D3AA1u, 0xC00D3E85u, 0xC00D3E8Au, 0xC00D3E8Bu, 0xC00D3E8Du, 0xC00D3E97u,
     0xC00D3E9Au, 0xC00D4E83u, 0xC00D4E8Au, 0xC00D5210u, 0xC00D5215u, 0xC00D6D5Fu, 0xC00D6D7Du}};

INSTANTIATE_TEST_SUITE_P(EachKind, ResultsByMeaning,
                         testing::Values(kOfTheAudioClient, kOfTheRenderer, kOfTheDecoder, kOfTheDecryptor,
                                         kOfTheData, kOfNothingKnown));

TEST(NetworkFailure, IsNoDevicesAndNoDecoders) {
  for (const HResult result :
       {kSOk, kEFail, kMfENoAudioPlaybackDevice, kMfEAudioPlaybackDeviceInvalidated, kAudioDeviceInvalidated,
        kMfETopologyCodecNotFound, kMfEUnsupportedByteStreamType, kEAccessDenied}) {
    EXPECT_FALSE(IsNetworkFailure(result)) << std::hex << result;
  }
}

}  // namespace
}  // namespace platform::win32
