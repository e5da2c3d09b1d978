#include "platform/win32/media/com_calls.h"

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>
#include <oleauto.h>
#include <propidl.h>

#include <bit>
#include <string>
#include <vector>

#include "platform/win32/media/handle_table.h"
#include "platform/win32/media/operation_shapes.h"
#include "ports/media_interfaces.h"
#include "tests/platform/win32/media/slot_object.h"

namespace platform::win32 {
namespace {

struct ComCallsTest : testing::Test {
  InterfaceHandle Enter(SlotObject& of, Interface seen_as) { return table.Enter(of.Reference(), seen_as); }
  template <typename... Arguments>
  std::optional<HResult> Call(InterfaceHandle handle, const Operation<Arguments...>& operation,
                              std::vector<Argument> list) {
    return calls.DispCallFunc(handle, operation.interface_id, operation.slot, list);
  }

  // Declared before the table, which drops its references in the end.
  SlotObject object;
  SlotObject other;
  HandleTable table;
  ComCalls calls{table};
};

HRESULT STDMETHODCALLTYPE TakeFloat(SlotObject* self, float value) {
  self->number = value;
  return self->result;
}
HRESULT STDMETHODCALLTYPE GiveFloat(SlotObject* self, float* value) {
  *value = 0.75f;
  return self->result;
}
HRESULT STDMETHODCALLTYPE GiveFloats(SlotObject* self, UINT32 count, float* values) {
  for (UINT32 at = 0; at < count; ++at) values[at] = static_cast<float>(at) + 0.5f;
  return self->result;
}
HRESULT STDMETHODCALLTYPE TakeLong(SlotObject* self, LONG value) {
  self->calls.push_back(std::to_string(value));
  return self->result;
}
HRESULT STDMETHODCALLTYPE GiveTimes(SlotObject* self, DWORD reserved, LONGLONG* clock, LONGLONG* system) {
  self->calls.push_back(std::to_string(reserved));
  *clock = 0x123456789ABCDEF0LL;
  *system = -2;
  return self->result;
}
HRESULT STDMETHODCALLTYPE GiveGuid(SlotObject* self, GUID* guid) {
  *guid = self->guid;
  return self->result;
}
HRESULT STDMETHODCALLTYPE GiveIndexed(SlotObject* self, DWORD index, BOOL* selected, void** out) {
  self->calls.push_back(std::to_string(index));
  *selected = TRUE;
  *out = SUCCEEDED(self->result) ? reinterpret_cast<SlotObject*>(self->pointer)->Reference() : nullptr;
  return self->result;
}
HRESULT STDMETHODCALLTYPE SetUnknownAt(SlotObject* self, const GUID* key, ::IUnknown* value) {
  self->guid = *key;
  self->pointer = value;
  return self->result;
}
HRESULT STDMETHODCALLTYPE ActivateWith(SlotObject* self, const IID* iid, DWORD, PROPVARIANT* parameters,
                                       void** out) {
  self->guid = *iid;
  self->pointer = parameters;
  *out = self->Reference();
  return self->result;
}
HRESULT STDMETHODCALLTYPE TakePosition(SlotObject* self, const GUID* format, const PROPVARIANT* position) {
  self->guid = *format;
  self->calls.push_back(std::to_string(position->vt) + " " + std::to_string(position->hVal.QuadPart));
  return self->result;
}
HRESULT STDMETHODCALLTYPE GiveProperty(SlotObject* self, const wchar_t* name, PROPVARIANT* value) {
  self->text = name;
  self->calls.push_back(std::to_string(value->vt));
  value->vt = VT_BSTR;
  value->bstrVal = SysAllocString(L"T\u00fcr");
  return self->result;
}

TEST_F(ComCallsTest, AFloatGoesByValue) {
  object.Answer(3, &TakeFloat);
  const auto handle = Enter(object, Interface::kSimpleAudioVolume);
  EXPECT_EQ(Call(handle, IMFSimpleAudioVolume::SetMasterVolume, {0.25f}), kSOk);
  EXPECT_EQ(object.number, 0.25f);
}

TEST_F(ComCallsTest, AWholeNumberGoesByValue) {
  object.Answer(5, &TakeLong);
  const auto handle = Enter(object, Interface::kSimpleAudioVolume);
  EXPECT_EQ(Call(handle, IMFSimpleAudioVolume::SetMute, {std::int32_t{-7}}), kSOk);
  EXPECT_EQ(object.calls, std::vector<std::string>{"-7"});
}

TEST_F(ComCallsTest, AFloatComesBack) {
  object.Answer(4, &GiveFloat);
  const auto handle = Enter(object, Interface::kSimpleAudioVolume);
  float volume = 0;
  EXPECT_EQ(Call(handle, IMFSimpleAudioVolume::GetMasterVolume, {&volume}), kSOk);
  EXPECT_EQ(volume, 0.75f);
}

TEST_F(ComCallsTest, AsManyFloatsComeBackAsWereAskedFor) {
  object.Answer(5, &GiveFloats);
  const auto handle = Enter(object, Interface::kAudioMeterInformation);
  std::vector<float> peaks(4, -1.0f);
  EXPECT_EQ(Call(handle, IAudioMeterInformation::GetChannelsPeakValues, {std::int32_t{3}, peaks.data()}),
            kSOk);
  EXPECT_EQ(peaks, (std::vector<float>{0.5f, 1.5f, 2.5f, -1.0f}));
}

TEST_F(ComCallsTest, ACountThatNoFormatHasIsRefused) {
  object.Answer(5, &GiveFloats);
  const auto handle = Enter(object, Interface::kAudioMeterInformation);
  float peak = 0;
  for (const std::int32_t count : {-1, 0, 65536}) {
    EXPECT_EQ(Call(handle, IAudioMeterInformation::GetChannelsPeakValues, {count, &peak}), kEInvalidArg)
        << count;
  }
}

TEST_F(ComCallsTest, LongNumbersComeBackWhole) {
  object.Answer(4, &GiveTimes);
  const auto handle = Enter(object, Interface::kClock);
  std::int64_t clock = 0;
  std::int64_t system = 0;
  EXPECT_EQ(Call(handle, IMFClock::GetCorrelatedTime, {std::int32_t{0}, &clock, &system}), kSOk);
  EXPECT_EQ(clock, 0x123456789ABCDEF0LL);
  EXPECT_EQ(system, -2);
}

TEST_F(ComCallsTest, AGuidComesBackAsItIs) {
  object.Answer(8, &GiveGuid);
  object.guid = {0x01234567, 0x89AB, 0xCDEF, {1, 2, 3, 4, 5, 6, 7, 8}};
  const auto handle = Enter(object, Interface::kMediaTypeHandler);
  Guid type;
  EXPECT_EQ(Call(handle, IMFMediaTypeHandler::GetMajorType, {&type}), kSOk);
  EXPECT_EQ(type, std::bit_cast<Guid>(object.guid));
}

TEST_F(ComCallsTest, AFailureLeavesEveryVariableAsItWas) {
  object.Answer(4, &GiveTimes);
  object.result = E_FAIL;
  const auto handle = Enter(object, Interface::kClock);
  std::int64_t clock = 11;
  std::int64_t system = 12;
  EXPECT_EQ(Call(handle, IMFClock::GetCorrelatedTime, {std::int32_t{0}, &clock, &system}), kEFail);
  EXPECT_EQ(clock, 11);
  EXPECT_EQ(system, 12);
}

TEST_F(ComCallsTest, ANewObjectBecomesAHandleOfItsOwnInterface) {
  object.Answer(34, &GiveIndexed);
  object.pointer = &other;
  const auto handle = Enter(object, Interface::kPresentationDescriptor);
  std::int32_t selected = 0;
  auto stream = InterfaceHandle::kNone;
  EXPECT_EQ(Call(handle, IMFPresentationDescriptor::GetStreamDescriptorByIndex,
                 {std::int32_t{2}, &selected, &stream}),
            kSOk);
  EXPECT_EQ(selected, 1);
  const auto view = table.Find(stream);
  ASSERT_TRUE(view);
  EXPECT_EQ(view->interface_id, Interface::kStreamDescriptor);
  EXPECT_EQ(view->object.Get(), other.AsUnknown());
}

TEST_F(ComCallsTest, AFailureOrAnotherSuccessEntersNoObject) {
  object.Answer(34, &GiveIndexed);
  object.pointer = &other;
  const auto handle = Enter(object, Interface::kPresentationDescriptor);
  for (const HRESULT result : {E_FAIL, S_FALSE}) {
    object.result = result;
    std::int32_t selected = 5;
    auto stream = InterfaceHandle::kNone;
    EXPECT_EQ(Call(handle, IMFPresentationDescriptor::GetStreamDescriptorByIndex,
                   {std::int32_t{0}, &selected, &stream}),
              HResult{result});
    EXPECT_EQ(stream, InterfaceHandle::kNone);
    EXPECT_EQ(selected, 5);
    EXPECT_EQ(other.references, 0);
    EXPECT_EQ(table.Count(), 1u);
  }
}

TEST_F(ComCallsTest, AHandleIsPassedAsItsObject) {
  object.Answer(27, &SetUnknownAt);
  const auto handle = Enter(object, Interface::kTopologyNode);
  const auto passed = Enter(other, Interface::kMediaSource);
  const Guid key{1, 2, 3, {4}};
  EXPECT_EQ(Call(handle, IMFTopologyNode::SetUnknown, {&key, passed}), kSOk);
  EXPECT_EQ(object.pointer, other.AsUnknown());
  EXPECT_EQ(std::bit_cast<Guid>(object.guid), key);
  EXPECT_EQ(other.references, 1);
}

TEST_F(ComCallsTest, NoHandleIsPassedAsNull) {
  object.Answer(27, &SetUnknownAt);
  object.pointer = &other;
  const auto handle = Enter(object, Interface::kTopologyNode);
  const Guid key;
  EXPECT_EQ(Call(handle, IMFTopologyNode::SetUnknown, {&key, InterfaceHandle::kNone}), kSOk);
  EXPECT_EQ(object.pointer, nullptr);
}

TEST_F(ComCallsTest, AHandleThatIsPassedIsAskedForTheInterfaceThatTheOperationTakes) {
  object.Answer(34, &TakeLong);
  const auto topology = Enter(object, Interface::kTopology);
  const auto passed = Enter(other, Interface::kUnknown);
  EXPECT_EQ(Call(topology, IMFTopology::AddNode, {passed}), kEInvalidArg);
  EXPECT_TRUE(object.calls.empty());
  other.offered = std::bit_cast<IID>(IidOf(Interface::kTopologyNode));
  EXPECT_EQ(Call(topology, IMFTopology::AddNode, {passed}), kSOk);
  EXPECT_EQ(object.calls.size(), 1u);
  EXPECT_EQ(other.references, 1);
}

HRESULT STDMETHODCALLTYPE GiveOtherFace(SlotObject* self, const IID*, void** out) {
  *out = static_cast<SlotObject*>(self->pointer)->Reference();
  return S_OK;
}
HRESULT STDMETHODCALLTYPE TakeObject(SlotObject* self, void* passed) {
  self->pointer = passed;
  return S_OK;
}

TEST_F(ComCallsTest, WhatItAnswersIsWhatIsPassed) {
  SlotObject face;
  other.Answer(0, &GiveOtherFace);
  other.pointer = &face;
  object.Answer(34, &TakeObject);
  const auto topology = Enter(object, Interface::kTopology);
  EXPECT_EQ(Call(topology, IMFTopology::AddNode, {Enter(other, Interface::kUnknown)}), kSOk);
  EXPECT_EQ(object.pointer, face.AsUnknown());
  EXPECT_EQ(face.references, 0);
}

TEST_F(ComCallsTest, AnUnknownHandleAmongTheArgumentsIsRefused) {
  object.Answer(34, &TakeLong);
  const auto topology = Enter(object, Interface::kTopology);
  EXPECT_EQ(Call(topology, IMFTopology::AddNode, {InterfaceHandle{99}}), kEInvalidArg);
  EXPECT_TRUE(object.calls.empty());
}

TEST_F(ComCallsTest, AnObjectReceivedForAnIidIsOfThatInterface) {
  object.Answer(3, &ActivateWith);
  object.pointer = &other;
  const auto device = Enter(object, Interface::kMMDevice);
  const Guid iid = IidOf(Interface::kAudioSessionManager2);
  auto manager = InterfaceHandle::kNone;
  EXPECT_EQ(Call(device, IMMDevice::Activate, {&iid, std::int32_t{23}, InterfaceHandle::kNone, &manager}),
            kSOk);
  EXPECT_EQ(table.Find(manager)->interface_id, Interface::kAudioSessionManager2);
  EXPECT_EQ(object.pointer, nullptr);
  EXPECT_EQ(std::bit_cast<Guid>(object.guid), iid);
}

TEST_F(ComCallsTest, QueryInterfaceGivesASecondHandle) {
  object.offered = std::bit_cast<IID>(IidOf(Interface::kAudioSessionControl2));
  const auto control = Enter(object, Interface::kAudioSessionControl);
  const Guid iid = IidOf(Interface::kAudioSessionControl2);
  auto control2 = InterfaceHandle::kNone;
  EXPECT_EQ(Call(control, IUnknown::QueryInterface, {&iid, &control2}), kSOk);
  EXPECT_NE(control2, control);
  EXPECT_EQ(table.Find(control2)->interface_id, Interface::kAudioSessionControl2);
  EXPECT_EQ(object.references, 2);
  const Guid meter = IidOf(Interface::kAudioMeterInformation);
  EXPECT_EQ(Call(control, IUnknown::QueryInterface, {&meter, &control2}), kENoInterface);
}

TEST_F(ComCallsTest, APropertyValueGoesInAsTheSystemsOwn) {
  object.Answer(9, &TakePosition);
  const auto session = Enter(object, Interface::kMediaSession);
  const Guid format;
  PropertyValue nothing;
  EXPECT_EQ(Call(session, IMFMediaSession::Start, {&format, &nothing}), kSOk);
  PropertyValue second{PropertyType::kInt64, std::int64_t{10'000'000}};
  EXPECT_EQ(Call(session, IMFMediaSession::Start, {&format, &second}), kSOk);
  EXPECT_EQ(object.calls, (std::vector<std::string>{"0 0", "20 10000000"}));
}

TEST_F(ComCallsTest, APropertyValueComesBackAndTextsGoAsWideStrings) {
  object.Answer(7, &GiveProperty);
  const auto metadata = Enter(object, Interface::kMetadata);
  const Text name = u"\u00dcber \U0001F600";
  PropertyValue value{PropertyType::kInt32, std::int64_t{3}};
  EXPECT_EQ(Call(metadata, IMFMetadata::GetProperty, {&name, &value}), kSOk);
  EXPECT_EQ(object.text, L"\u00dcber \U0001F600");
  // The operation writes without clearing what was there, so it must find it empty.
  EXPECT_EQ(object.calls, std::vector<std::string>{"0"});
  EXPECT_EQ(value.type, PropertyType::kString);
  EXPECT_EQ(std::get<Text>(value.payload), u"T\u00fcr");
}

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

HRESULT STDMETHODCALLTYPE NoteNulls(SlotObject* self, const void* first, const void* second) {
  self->calls.emplace_back(first == nullptr ? "null" : "something");
  self->calls.emplace_back(second == nullptr ? "null" : "something");
  return S_OK;
}

TEST_F(ComCallsTest, AVariableThatIsLeftOutIsPassedAsNull) {
  struct LeftOut {
    Interface interface_id;
    std::int32_t slot;
    std::vector<Argument> list;
  };
  const std::vector<LeftOut> cases = {
      {Interface::kMediaSession,
       9,
       {static_cast<const Guid*>(nullptr), static_cast<PropertyValue*>(nullptr)}},
      {Interface::kMetadata, 7, {static_cast<const Text*>(nullptr), static_cast<PropertyValue*>(nullptr)}},
      {Interface::kUnknown, 0, {static_cast<const Guid*>(nullptr), static_cast<InterfaceHandle*>(nullptr)}},
      {Interface::kPresentationDescriptor,
       8,
       {static_cast<const Guid*>(nullptr), static_cast<std::int64_t*>(nullptr)}},
  };
  for (const LeftOut& left_out : cases) {
    object.Answer(static_cast<std::size_t>(left_out.slot), &NoteNulls);
    object.calls.clear();
    const auto handle = Enter(object, left_out.interface_id);
    EXPECT_EQ(calls.DispCallFunc(handle, left_out.interface_id, left_out.slot, left_out.list), kSOk);
    EXPECT_EQ(object.calls, (std::vector<std::string>{"null", "null"}));
  }
  object.Answer(3, &NoteNulls);
  const auto meter = Enter(object, Interface::kAudioMeterInformation);
  EXPECT_EQ(Call(meter, IAudioMeterInformation::GetPeakValue, {static_cast<float*>(nullptr)}), kSOk);
  const auto handler = Enter(object, Interface::kMediaTypeHandler);
  object.Answer(8, &NoteNulls);
  EXPECT_EQ(Call(handler, IMFMediaTypeHandler::GetMajorType, {static_cast<Guid*>(nullptr)}), kSOk);
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
