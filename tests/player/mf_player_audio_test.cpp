// Volume, mute and peak levels.
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

#include "tests/player/player_fixture.h"

namespace player {
namespace {

using PlayerAudioTest = PlayerTest;

TEST_F(PlayerAudioTest, WithoutAnItemEverythingFailsUncalled) {
  const auto player = MakePlayer();
  float peak = 0.5f;
  std::vector<float> peaks{0.5f};
  EXPECT_FALSE(player->GetAudioPeak(peak));
  EXPECT_FALSE(player->GetAudioChannelsPeakValues(2, peaks));
  EXPECT_EQ(player->GetAudioChannelCount(), 0);
  EXPECT_EQ(player->GetAudioSimpleMute(), 0);
  EXPECT_FALSE(player->SetAudioSimpleMute(true));
  EXPECT_EQ(player->GetAudioSimpleAudioVolume(), 0);
  EXPECT_FALSE(player->SetAudioAudioVolume(1.0f));
  EXPECT_EQ(peak, 0.5f);
  EXPECT_EQ(peaks, (std::vector<float>{0.5f}));
  EXPECT_EQ(media_.TakeCalls(), Strings{});
}

TEST_F(PlayerAudioTest, PeakIsWrittenBack) {
  const auto player = MakeServedPlayer();
  media_.peak = 0.75f;
  float peak = 0.0f;
  EXPECT_TRUE(player->GetAudioPeak(peak));
  EXPECT_EQ(peak, 0.75f);
}

TEST_F(PlayerAudioTest, ChannelPeaksAreWrittenBackInOrder) {
  const auto player = MakeServedPlayer();
  media_.channel_peaks = {0.25f, 0.5f, 0.125f};
  std::vector<float> peaks;
  EXPECT_EQ(player->GetAudioChannelCount(), 3);
  EXPECT_TRUE(player->GetAudioChannelsPeakValues(3, peaks));
  EXPECT_EQ(peaks, (std::vector<float>{0.25f, 0.5f, 0.125f}));
  EXPECT_EQ(media_.TakeCalls().back(), "meter.GetChannelsPeakValues(3, out)");
}

TEST_F(PlayerAudioTest, ChannelPeaksOfAnImpossibleCountAreFalseUncalled) {
  const auto player = MakeServedPlayer();
  std::vector<float> peaks{0.5f};
  for (const std::int32_t count :
       {0, -1, std::numeric_limits<std::int32_t>::min(), 65536, std::numeric_limits<std::int32_t>::max()}) {
    EXPECT_FALSE(player->GetAudioChannelsPeakValues(count, peaks)) << count;
  }
  EXPECT_EQ(peaks, (std::vector<float>{0.5f}));
  EXPECT_EQ(media_.TakeCalls(), Strings{});
}

TEST_F(PlayerAudioTest, AsManyChannelsAsAFormatCanHaveAreAskedFor) {
  const auto player = MakeServedPlayer();
  media_.channel_peaks.assign(65535, 0.5f);
  std::vector<float> peaks;
  EXPECT_TRUE(player->GetAudioChannelsPeakValues(65535, peaks));
  EXPECT_EQ(peaks.size(), 65535U);
}

TEST_F(PlayerAudioTest, RefusedLevelsLeaveTheOutputUntouched) {
  const auto player = MakeServedPlayer();
  media_.faults["IAudioMeterInformation::GetPeakValue"] = platform::kEFail;
  media_.faults["IAudioMeterInformation::GetMeteringChannelCount"] = platform::kEFail;
  float peak = 0.5f;
  std::vector<float> peaks{0.5f};
  EXPECT_FALSE(player->GetAudioPeak(peak));
  EXPECT_FALSE(player->GetAudioChannelsPeakValues(5, peaks)) << "the meter has two channels";
  EXPECT_EQ(player->GetAudioChannelCount(), 0);
  EXPECT_EQ(peak, 0.5f);
  EXPECT_EQ(peaks, (std::vector<float>{0.5f}));
}

TEST_F(PlayerAudioTest, MuteIsSetAsOneAndZero) {
  const auto player = MakeServedPlayer();
  EXPECT_TRUE(player->SetAudioSimpleMute(true));
  EXPECT_EQ(media_.mute, 1);
  EXPECT_EQ(player->GetAudioSimpleMute(), 1);
  EXPECT_TRUE(player->SetAudioSimpleMute(false));
  EXPECT_EQ(media_.mute, 0);
  EXPECT_EQ(player->GetAudioSimpleMute(), 0);
}

TEST_F(PlayerAudioTest, OnlyExactlyOneMeansMuted) {
  const auto player = MakeServedPlayer();
  for (const std::int32_t value : {-1, 2, 255}) {
    media_.mute = value;
    EXPECT_EQ(player->GetAudioSimpleMute(), 0) << value;
  }
}

TEST_F(PlayerAudioTest, RefusedMuteIsFalseAndZero) {
  const auto player = MakeServedPlayer();
  media_.mute = 1;
  media_.faults["IMFSimpleAudioVolume::GetMute"] = platform::kEFail;
  media_.faults["IMFSimpleAudioVolume::SetMute"] = platform::kEFail;
  EXPECT_EQ(player->GetAudioSimpleMute(), 0);
  EXPECT_FALSE(player->SetAudioSimpleMute(false));
}

TEST_F(PlayerAudioTest, VolumeIsReadInHundredthsWithTiesToTheEvenNumber) {
  const auto player = MakeServedPlayer();
  const std::vector<std::pair<float, std::int16_t>> cases = {
      {0.0f, 0}, {1.0f, 100}, {0.5f, 50}, {0.125f, 12}, {0.375f, 38}, {0.29f, 29}, {0.999f, 100}};
  for (const auto& [volume, hundredths] : cases) {
    media_.volume = volume;
    EXPECT_EQ(player->GetAudioSimpleAudioVolume(), hundredths) << volume;
  }
}

TEST_F(PlayerAudioTest, AnAnswerIsDistinguishedFromNone) {
  const auto player = MakeServedPlayer();
  media_.volume = 0.0f;
  EXPECT_EQ(player->AnsweredVolume(), std::int16_t{0});
  EXPECT_EQ(player->AnsweredMute(), 0);
  media_.mute = 1;
  EXPECT_EQ(player->AnsweredMute(), 1);
  media_.volume = 1e9f;
  EXPECT_EQ(player->AnsweredVolume(), std::nullopt) << "no number can hold it";
  media_.faults["IMFSimpleAudioVolume::GetMasterVolume"] = platform::kEFail;
  media_.faults["IMFSimpleAudioVolume::GetMute"] = platform::kEFail;
  media_.volume = 0.5f;
  EXPECT_EQ(player->AnsweredVolume(), std::nullopt);
  EXPECT_EQ(player->AnsweredMute(), std::nullopt);
}

TEST_F(PlayerAudioTest, VolumeThatNoNumberCanHoldIsZero) {
  const auto player = MakeServedPlayer();
  for (const float volume :
       {1e9f, -1e9f, std::numeric_limits<float>::infinity(), std::numeric_limits<float>::quiet_NaN()}) {
    media_.volume = volume;
    EXPECT_EQ(player->GetAudioSimpleAudioVolume(), 0) << volume;
  }
}

TEST_F(PlayerAudioTest, VolumeIsPassedOnAsItIs) {
  const auto player = MakeServedPlayer();
  for (const float volume : {0.0f, 0.37f, 1.0f, 1.5f, -0.5f}) {
    EXPECT_TRUE(player->SetAudioAudioVolume(volume));
    EXPECT_EQ(media_.volume, volume);
  }
}

TEST_F(PlayerAudioTest, RefusedVolumeIsFalseAndZero) {
  const auto player = MakeServedPlayer();
  media_.faults["IMFSimpleAudioVolume::GetMasterVolume"] = platform::kEFail;
  media_.faults["IMFSimpleAudioVolume::SetMasterVolume"] = platform::kEFail;
  EXPECT_EQ(player->GetAudioSimpleAudioVolume(), 0);
  EXPECT_FALSE(player->SetAudioAudioVolume(0.5f));
}

}  // namespace
}  // namespace player
