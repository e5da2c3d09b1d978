#include "tests/support/recording_media.h"

#include <gtest/gtest.h>

#include "ports/media_interfaces.h"

namespace test_support {
namespace {

using platform::InterfaceHandle;
using Strings = std::vector<std::string>;

std::optional<platform::HResult> Release(RecordingMedia& media, InterfaceHandle handle) {
  return media.DispCallFunc(handle, platform::Interface::kUnknown, platform::IUnknown::Release.slot, {});
}

TEST(RecordingMedia, KnowsWhatHasNotBeenReleased) {
  RecordingMedia media;
  InterfaceHandle first{};
  InterfaceHandle second{};
  media.MFCreateTopology(first);
  media.MFCreateTopology(second);
  EXPECT_EQ(media.LiveHandles(), (Strings{"topology", "topology#2"}));
  Release(media, first);
  EXPECT_EQ(media.LiveHandles(), (Strings{"topology#2"}));
  EXPECT_EQ(media.Misuses(), Strings{});
}

TEST(RecordingMedia, ASecondReleaseIsAMisuse) {
  RecordingMedia media;
  InterfaceHandle topology{};
  media.MFCreateTopology(topology);
  Release(media, topology);
  Release(media, topology);
  EXPECT_EQ(media.Misuses(), (Strings{"use of released topology"}));
}

TEST(RecordingMedia, AnUnknownHandleIsAMisuse) {
  RecordingMedia media;
  EXPECT_EQ(Release(media, InterfaceHandle{99}), std::nullopt);
  EXPECT_EQ(media.Misuses().size(), 1u);
}

TEST(RecordingMedia, AReleaseThatCannotBeMadeReleasesNothing) {
  RecordingMedia media;
  InterfaceHandle topology{};
  media.MFCreateTopology(topology);
  media.faults["IUnknown::Release"] = RecordingMedia::kImpossible;
  EXPECT_EQ(Release(media, topology), std::nullopt);
  EXPECT_EQ(media.LiveHandles().size(), 1u);
}

TEST(RecordingMedia, FailsExactlyTheCallWithTheNumber) {
  RecordingMedia media;
  media.fault_at = 2;
  media.fault = platform::kEFail;
  InterfaceHandle out{};
  EXPECT_EQ(media.MFCreateTopology(out), platform::kSOk);
  out = {};
  EXPECT_EQ(media.MFCreateTopology(out), platform::kEFail);
  EXPECT_EQ(out, InterfaceHandle::kNone);
  EXPECT_EQ(media.MFCreateTopology(out), platform::kSOk);
}

TEST(RecordingMedia, WrongArgumentTypesAreAMisuse) {
  RecordingMedia media;
  InterfaceHandle session{};
  media.MFCreateMediaSession(session);
  const platform::Argument wrong[] = {platform::Argument(1.0f)};
  EXPECT_EQ(media.DispCallFunc(session, platform::Interface::kMediaSession,
                               platform::IMFMediaSession::Stop.slot, wrong),
            std::nullopt);
  EXPECT_EQ(media.Misuses(), (Strings{"impossible call session.Stop(1.000000)"}));
}

}  // namespace
}  // namespace test_support
