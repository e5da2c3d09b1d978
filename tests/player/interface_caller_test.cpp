#include "player/interface_caller.h"

#include <gtest/gtest.h>

#include "player/media_ids.h"
#include "ports/media_interfaces.h"
#include "tests/player/player_fixture.h"

namespace player {
namespace {

/// Counts how often it is asked, and can refuse.
class CountingValues : public platform::values::PortablePropertyValues {
 public:
  std::int32_t CLSIDFromString(const Text& text, Guid& guid) override {
    ++parsed;
    if (refuse) guid = test_support::kAudioType;
    return refuse ? platform::kEFail : PortablePropertyValues::CLSIDFromString(text, guid);
  }
  std::int32_t StringFromIID(const Guid& guid, Text& text) override {
    return refuse ? platform::kEFail : PortablePropertyValues::StringFromIID(guid, text);
  }
  int parsed = 0;
  bool refuse = false;
};

class InterfaceCallerTest : public testing::Test {
 protected:
  InterfaceHandle NewSession() {
    InterfaceHandle session{};
    media_.MFCreateMediaSession(session);
    media_.TakeCalls();
    return session;
  }
  RecordingMedia media_;
  CountingValues values_;
  InterfaceCaller caller_{media_, values_};
};

using platform::IMFMediaSession::SetTopology;
using platform::IMFMediaSession::Stop;

TEST_F(InterfaceCallerTest, AbsentObjectIsNeverCalledAndTheEmptyResultCountsAsSuccess) {
  const CallResult result = caller_.CallInterface(InterfaceHandle::kNone, Stop);
  EXPECT_EQ(result, std::nullopt);
  EXPECT_TRUE(IsOk(result));
  EXPECT_EQ(media_.Calls(), Strings{});
  EXPECT_EQ(media_.Misuses(), Strings{});
}

TEST_F(InterfaceCallerTest, CallThatCannotBeMadeCountsAsSuccess) {
  const InterfaceHandle session = NewSession();
  media_.faults["IMFMediaSession::Stop"] = RecordingMedia::kImpossible;
  const CallResult result = caller_.CallInterface(session, Stop);
  EXPECT_EQ(result, std::nullopt);
  EXPECT_TRUE(IsOk(result));
}

TEST_F(InterfaceCallerTest, AnOperationOfAnotherInterfaceIsNoCallThoughItsSlotAndArgumentsFit) {
  const InterfaceHandle session = NewSession();
  // Slot 12 without arguments is Close of the session.
  EXPECT_EQ(caller_.CallInterface(session, platform::IMFMediaSource::Shutdown), std::nullopt);
  EXPECT_EQ(caller_.CallInterface(session, platform::IMFMediaSession::Close), platform::kSOk);
  EXPECT_EQ(media_.Misuses().size(), 1U);
}

TEST_F(InterfaceCallerTest, GivesTheOperationsOwnResult) {
  const InterfaceHandle session = NewSession();
  media_.faults["IMFMediaSession::Stop"] = platform::kEFail;
  EXPECT_EQ(caller_.CallInterface(session, Stop), platform::kEFail);
}

TEST_F(InterfaceCallerTest, OnlySOkIsSuccess) {
  EXPECT_TRUE(IsOk(platform::kSOk));
  EXPECT_FALSE(IsOk(HResult{1}));
  EXPECT_FALSE(IsOk(platform::kEFail));
}

TEST_F(InterfaceCallerTest, PassesTheArgumentsInOrder) {
  const InterfaceHandle session = NewSession();
  caller_.CallInterface(session, SetTopology, std::int32_t{7}, InterfaceHandle::kNone);
  EXPECT_EQ(media_.TakeCalls(), (Strings{"session.SetTopology(7, none)"}));
}

template <typename Operation, typename... Given>
concept Callable = requires(InterfaceCaller caller, const Operation& operation, Given... given) {
  caller.CallInterface(InterfaceHandle::kNone, operation, given...);
};

TEST_F(InterfaceCallerTest, ArgumentsOfOtherTypesOrNumberDoNotCompile) {
  using Volume = decltype(platform::IMFSimpleAudioVolume::SetMasterVolume);
  static_assert(Callable<Volume, float>);
  static_assert(!Callable<Volume, double>);
  static_assert(!Callable<Volume, int>);
  static_assert(!Callable<Volume>);
  static_assert(!Callable<Volume, float, float>);
  using Mute = decltype(platform::IMFSimpleAudioVolume::SetMute);
  static_assert(Callable<Mute, std::int32_t>);
  static_assert(!Callable<Mute, bool>);
  static_assert(!Callable<Mute, std::int64_t>);
  static_assert(!Callable<Mute, std::uint32_t>);
  using Topology = decltype(SetTopology);
  static_assert(Callable<Topology, std::int32_t, InterfaceHandle>);
  static_assert(!Callable<Topology, InterfaceHandle, std::int32_t>);
  static_assert(!Callable<Topology, std::int32_t, std::int32_t>);
  using MajorType = decltype(platform::IMFMediaTypeHandler::GetMajorType);
  static_assert(Callable<MajorType, Guid*>);
  static_assert(!Callable<MajorType, const Guid*>);
  using Query = decltype(platform::IUnknown::QueryInterface);
  static_assert(Callable<Query, Guid*, InterfaceHandle*>);
  static_assert(!Callable<Query, Guid, InterfaceHandle*>);
}

TEST_F(InterfaceCallerTest, ReleaseInterfaceOfAnAbsentObjectDoesNothing) {
  InterfaceHandle none = InterfaceHandle::kNone;
  caller_.ReleaseInterface(none);
  EXPECT_EQ(media_.Calls(), Strings{});
}

TEST_F(InterfaceCallerTest, ReleaseInterfaceClearsTheVariable) {
  InterfaceHandle session = NewSession();
  caller_.ReleaseInterface(session);
  EXPECT_EQ(session, InterfaceHandle::kNone);
  EXPECT_EQ(media_.TakeCalls(), (Strings{"session.Release()"}));
}

TEST_F(InterfaceCallerTest, ReleaseInterfaceIgnoresTheCount) {
  InterfaceHandle session = NewSession();
  media_.faults["IUnknown::Release"] = HResult{3};
  caller_.ReleaseInterface(session);
  EXPECT_EQ(session, InterfaceHandle::kNone);
}

TEST_F(InterfaceCallerTest, ReleaseInterfaceKeepsTheVariableWhenTheCallCannotBeMade) {
  InterfaceHandle session = NewSession();
  media_.faults["IUnknown::Release"] = RecordingMedia::kImpossible;
  caller_.ReleaseInterface(session);
  EXPECT_NE(session, InterfaceHandle::kNone);
}

TEST_F(InterfaceCallerTest, WhatIsLeftBehindIsReleasedOnceWhenItCanBe) {
  const InterfaceHandle session = NewSession();
  caller_.LeaveBehind(session);
  media_.faults["IUnknown::Release"] = RecordingMedia::kImpossible;
  caller_.ReleaseLeftBehind();
  EXPECT_EQ(media_.LiveHandles(), (Strings{"session"}));
  media_.faults.clear();
  caller_.ReleaseLeftBehind();
  caller_.ReleaseLeftBehind();
  EXPECT_EQ(media_.LiveHandles(), Strings{});
  EXPECT_EQ(media_.Misuses(), Strings{});
}

TEST_F(InterfaceCallerTest, GuidFromStringReadsAGuidInBraces) {
  EXPECT_EQ(caller_.GuidFromString(u"{73647561-0000-0010-8000-00aa00389b71}"), test_support::kAudioType);
}

TEST_F(InterfaceCallerTest, GuidFromStringOfAnotherLengthIsZeroWithoutAskingThePlatform) {
  EXPECT_EQ(caller_.GuidFromString(u"73647561-0000-0010-8000-00aa00389b71"), Guid{});
  EXPECT_EQ(caller_.GuidFromString(u"{73647561-0000-0010-8000-00aa00389b71} "), Guid{});
  EXPECT_EQ(caller_.GuidFromString(u""), Guid{});
  EXPECT_EQ(values_.parsed, 0);
}

TEST_F(InterfaceCallerTest, GuidFromStringOfARefusedTextIsZero) {
  EXPECT_EQ(caller_.GuidFromString(u"{7364756x-0000-0010-8000-00aa00389b71}"), Guid{});
  EXPECT_EQ(values_.parsed, 1);
  values_.refuse = true;
  EXPECT_EQ(caller_.GuidFromString(u"{73647561-0000-0010-8000-00aa00389b71}"), Guid{})
      << "whatever the platform has left in the variable";
}

TEST_F(InterfaceCallerTest, StringFromGuidIsEmptyOnFailure) {
  EXPECT_EQ(caller_.StringFromGuid(test_support::kAudioType), u"{73647561-0000-0010-8000-00AA00389B71}");
  values_.refuse = true;
  EXPECT_EQ(caller_.StringFromGuid(test_support::kAudioType), u"");
}

TEST_F(InterfaceCallerTest, CreateInterfaceMakesAnObjectInThisProcess) {
  InterfaceHandle created{};
  EXPECT_TRUE(
      caller_.CreateInterface(media_ids::kMMDeviceEnumerator, media_ids::kIMMDeviceEnumerator, created));
  EXPECT_EQ(media_.TakeCalls(),
            (Strings{"CoCreateInstance(MMDeviceEnumerator, none, 1, IMMDeviceEnumerator)"}));
  EXPECT_EQ(media_.LiveHandles(), (Strings{"enumerator"}));
  caller_.ReleaseInterface(created);
}

TEST_F(InterfaceCallerTest, CreateInterfaceThatFailsLeavesTheHandleUntouched) {
  InterfaceHandle handle{77};
  EXPECT_FALSE(caller_.CreateInterface(u"not a GUID", media_ids::kIMMDeviceEnumerator, handle));
  EXPECT_EQ(media_.TakeCalls(), (Strings{"CoCreateInstance(zero GUID, none, 1, IMMDeviceEnumerator)"}));
  EXPECT_EQ(handle, InterfaceHandle{77});
}

}  // namespace
}  // namespace player
