#include "platform/win32/media/media_library.h"

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <vector>

#include "tests/platform/win32/media/player_rig.h"

namespace platform::win32 {
namespace {

TEST(MediaLibrary, WhatTheSystemDoesNotHaveFailsAndIsNotCalled) {
  EXPECT_EQ(MediaFunction("MFCreateNothing"), nullptr);
  EXPECT_EQ(CallMedia<HRESULT()>("MFCreateNothing"), HRESULT_FROM_WIN32(ERROR_MOD_NOT_FOUND));
}

/// The libraries are away when CTest runs it; the linker's table would not even let the program start.
struct MissingMediaLibrary : testing::Test, PlayerRig {
  void SetUp() override {
    if (std::getenv("FUNKHAUS_WITHOUT_MEDIA") == nullptr) GTEST_SKIP() << "this system has the libraries";
    ASSERT_EQ(MediaFunction("MFStartup"), nullptr);
    MakePlayer();
  }
};

TEST_F(MissingMediaLibrary, IsSaidOnceAndPlayingFailsLikeAnyOther) {
  EXPECT_EQ(log.size(), 1u);
  EXPECT_EQ(media->Status().state, PlaybackState::kStopped);
  player->MediaFileFromUrl(u"http://127.0.0.1:9/");
  EXPECT_FALSE(player->IsMediaReady());
  EXPECT_FALSE(player->PlayMedia());
  EXPECT_FALSE(player->CreateService());
  EXPECT_EQ(results, std::vector<std::int32_t>{});
  EXPECT_EQ(media->Status().state, PlaybackState::kFailed);
  EXPECT_EQ(media->Status().failure, PlaybackFailure::kOther);
}

TEST_F(MissingMediaLibrary, EveryFunctionOfTheFrameworkFails) {
  InterfaceHandle made = InterfaceHandle::kNone;
  EXPECT_EQ(media->MFStartup(1, 0), kMissingMediaLibrary);
  EXPECT_EQ(media->MFCreateTopology(made), kMissingMediaLibrary);
  EXPECT_EQ(media->MFCreateTopologyNode(0, made), kMissingMediaLibrary);
  EXPECT_EQ(media->MFCreateMediaSession(made), kMissingMediaLibrary);
  EXPECT_EQ(media->MFCreateAudioRendererActivate(made), kMissingMediaLibrary);
  EXPECT_EQ(media->MFCreateVideoRendererActivate(WindowHandle::kNone, made), kMissingMediaLibrary);
  EXPECT_EQ(media->MFShutdown(), kMissingMediaLibrary);
  EXPECT_EQ(made, InterfaceHandle::kNone);
}

}  // namespace
}  // namespace platform::win32
