#include "platform/win32/media/com_calls.h"

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>
#include <objbase.h>

#include "platform/win32/media/operation_shapes.h"
#include "ports/media_interfaces.h"
#include "tests/platform/win32/media/call_rig.h"

namespace platform::win32 {
namespace {

using ComCallsTest = CallRig;

TEST_F(ComCallsTest, SlotTwoDropsTheHandleAndItsReference) {
  const auto handle = Enter(object, Interface::kMediaSession);
  EXPECT_EQ(object.references, 1);
  EXPECT_EQ(Call(handle, IUnknown::Release, {}), kSOk);
  EXPECT_EQ(object.references, 0);
  EXPECT_EQ(Call(handle, IUnknown::Release, {}), std::nullopt);
  EXPECT_NE(Enter(object, Interface::kMediaSession), handle);
}

TEST_F(ComCallsTest, AnotherInterfaceThanTheHandlesOwnIsNotCalled) {
  object.Answer(8, &GiveGuid);
  const auto descriptor = Enter(object, Interface::kPresentationDescriptor);
  Guid type;
  EXPECT_EQ(Call(descriptor, IMFMediaTypeHandler::GetMajorType, {&type}), std::nullopt);
}

TEST_F(ComCallsTest, OtherArgumentsAndOtherSlotsAreNotCalled) {
  object.Answer(3, &TakeFloat);
  const auto volume = Enter(object, Interface::kSimpleAudioVolume);
  EXPECT_EQ(Call(volume, IMFSimpleAudioVolume::SetMasterVolume, {}), std::nullopt);
  EXPECT_EQ(Call(volume, IMFSimpleAudioVolume::SetMasterVolume, {std::int32_t{1}}), std::nullopt);
  EXPECT_EQ(Call(volume, IMFSimpleAudioVolume::SetMasterVolume, {1.0f, 1.0f}), std::nullopt);
  EXPECT_EQ(calls.DispCallFunc(volume, Interface::kSimpleAudioVolume, 7, {}), std::nullopt);
  EXPECT_EQ(calls.DispCallFunc(volume, Interface::kUnknown, 1, {}), std::nullopt);
  EXPECT_EQ(calls.DispCallFunc(volume, Interface::kSimpleAudioVolume, -1, {}), std::nullopt);
  EXPECT_EQ(object.number, 0.0f);
}

TEST_F(ComCallsTest, AnUnknownHandleIsNotCalled) {
  EXPECT_EQ(Call(InterfaceHandle::kNone, IMFMediaSession::Stop, {}), std::nullopt);
  EXPECT_EQ(Call(InterfaceHandle{7}, IMFMediaSession::Stop, {}), std::nullopt);
}

TEST_F(ComCallsTest, AnObjectOutlivesACallThatDropsItsHandle) {
  static ComCallsTest* test;
  static InterfaceHandle handle;
  test = this;
  const auto drop = +[](SlotObject* self) -> HRESULT {
    test->Call(handle, IUnknown::Release, {});
    return self->references > 0 ? S_OK : E_FAIL;
  };
  object.Answer(11, drop);
  handle = Enter(object, Interface::kMediaSession);
  EXPECT_EQ(Call(handle, IMFMediaSession::Stop, {}), kSOk);
  EXPECT_EQ(object.references, 0);
}

TEST_F(ComCallsTest, AnObjectIsCreatedByItsClassAsTheInterfaceThatIsAskedFor) {
  // MMDeviceEnumerator
  const Guid clsid{0xBCDE0395, 0xE52F, 0x467C, {0x8E, 0x3D, 0xC4, 0x57, 0x92, 0x91, 0x69, 0x2E}};
  const Guid iid = IidOf(Interface::kMMDeviceEnumerator);
  ASSERT_TRUE(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)));
  auto out = InterfaceHandle::kNone;
  EXPECT_EQ(calls.CoCreateInstance(clsid, InterfaceHandle::kNone, kClsctxInprocServer, iid, out), kSOk);
  ASSERT_TRUE(table.Find(out));
  EXPECT_EQ(table.Find(out)->interface_id, Interface::kMMDeviceEnumerator);
  auto second = InterfaceHandle::kNone;
  EXPECT_EQ(calls.CoCreateInstance(clsid, InterfaceHandle{99}, kClsctxInprocServer, iid, second),
            kEInvalidArg);
  EXPECT_EQ(second, InterfaceHandle::kNone);
  table.Release(out);
  CoUninitialize();
}

TEST_F(ComCallsTest, NoObjectHasNoHandle) {
  EXPECT_EQ(table.Enter(static_cast<void*>(nullptr), Interface::kClock), InterfaceHandle::kNone);
  EXPECT_EQ(table.Count(), 0u);
  EXPECT_FALSE(table.Find(InterfaceHandle{1}));
}

TEST_F(ComCallsTest, AnUnknownClassIsNotCreated) {
  auto out = InterfaceHandle::kNone;
  EXPECT_NE(calls.CoCreateInstance(Guid{9, 9, 9, {}}, InterfaceHandle::kNone, kClsctxInprocServer,
                                   IidOf(Interface::kMMDeviceEnumerator), out),
            kSOk);
  EXPECT_EQ(out, InterfaceHandle::kNone);
  EXPECT_EQ(table.Count(), 0u);
}

}  // namespace
}  // namespace platform::win32
