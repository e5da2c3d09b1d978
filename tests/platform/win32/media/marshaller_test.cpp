#include "platform/win32/media/marshaller.h"

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>
#include <oleauto.h>
#include <propidl.h>

#include <bit>
#include <string>
#include <vector>

#include "ports/media_interfaces.h"
#include "tests/platform/win32/media/call_rig.h"
#include "tests/platform/win32/media/replaced_function.h"

namespace platform::win32 {
namespace {

using ArgumentsOfCalls = CallRig;

HRESULT STDMETHODCALLTYPE GiveFloat(SlotObject* self, float* value) {
  *value = 0.75f;
  return self->result;
}
HRESULT STDMETHODCALLTYPE GiveFloats(SlotObject* self, UINT32 count, float* values) {
  for (UINT32 at = 0; at < count; ++at) values[at] = static_cast<float>(at) + 0.5f;
  return self->result;
}
HRESULT STDMETHODCALLTYPE GiveTimes(SlotObject* self, DWORD reserved, LONGLONG* clock, LONGLONG* system) {
  self->calls.push_back(std::to_string(reserved));
  *clock = 0x123456789ABCDEF0LL;
  *system = -2;
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
HRESULT STDMETHODCALLTYPE NoteNulls(SlotObject* self, const void* first, const void* second) {
  self->calls.emplace_back(first == nullptr ? "null" : "something");
  self->calls.emplace_back(second == nullptr ? "null" : "something");
  return S_OK;
}

std::vector<VARTYPE> told_types;

HRESULT WINAPI NoteTypes(void*, ULONG_PTR, CALLCONV, VARTYPE, UINT count, VARTYPE* types, VARIANTARG** values,
                         VARIANT* answer) {
  told_types.assign(types, types + count);
  for (UINT at = 0; at < count; ++at) EXPECT_EQ(values[at]->vt, types[at]);
  answer->lVal = S_OK;
  return S_OK;
}

// Wine does without them.
TEST_F(ArgumentsOfCalls, HaveTheTypesThatTheSystemIsTold) {
  using Types = std::vector<VARTYPE>;
  const ReplacedFunction<decltype(::DispCallFunc)> call(L"oleaut32.dll", "DispCallFunc", &NoteTypes);
  const auto volume = Enter(object, Interface::kSimpleAudioVolume);
  EXPECT_EQ(Call(volume, IMFSimpleAudioVolume::SetMasterVolume, {0.25f}), kSOk);
  EXPECT_EQ(told_types, Types{VT_R4});
  const auto its_clock = Enter(other, Interface::kClock);
  std::int64_t played = 0;
  std::int64_t system = 0;
  EXPECT_EQ(Call(its_clock, IMFClock::GetCorrelatedTime, {std::int32_t{0}, &played, &system}), kSOk);
  EXPECT_EQ(told_types, (Types{VT_I4, VT_I8, VT_I8}));
}

TEST_F(ArgumentsOfCalls, AFloatGoesByValue) {
  object.Answer(3, &TakeFloat);
  const auto handle = Enter(object, Interface::kSimpleAudioVolume);
  EXPECT_EQ(Call(handle, IMFSimpleAudioVolume::SetMasterVolume, {0.25f}), kSOk);
  EXPECT_EQ(object.number, 0.25f);
}

TEST_F(ArgumentsOfCalls, AWholeNumberGoesByValue) {
  object.Answer(5, &TakeLong);
  const auto handle = Enter(object, Interface::kSimpleAudioVolume);
  EXPECT_EQ(Call(handle, IMFSimpleAudioVolume::SetMute, {std::int32_t{-7}}), kSOk);
  EXPECT_EQ(object.calls, std::vector<std::string>{"-7"});
}

TEST_F(ArgumentsOfCalls, AFloatComesBack) {
  object.Answer(4, &GiveFloat);
  const auto handle = Enter(object, Interface::kSimpleAudioVolume);
  float volume = 0;
  EXPECT_EQ(Call(handle, IMFSimpleAudioVolume::GetMasterVolume, {&volume}), kSOk);
  EXPECT_EQ(volume, 0.75f);
}

TEST_F(ArgumentsOfCalls, AsManyFloatsComeBackAsWereAskedFor) {
  object.Answer(5, &GiveFloats);
  const auto handle = Enter(object, Interface::kAudioMeterInformation);
  std::vector<float> peaks(4, -1.0f);
  EXPECT_EQ(Call(handle, IAudioMeterInformation::GetChannelsPeakValues, {std::int32_t{3}, peaks.data()}),
            kSOk);
  EXPECT_EQ(peaks, (std::vector<float>{0.5f, 1.5f, 2.5f, -1.0f}));
}

TEST_F(ArgumentsOfCalls, ACountThatNoFormatHasIsRefused) {
  object.Answer(5, &GiveFloats);
  const auto handle = Enter(object, Interface::kAudioMeterInformation);
  float peak = 0;
  for (const std::int32_t count : {-1, 0, 65536}) {
    EXPECT_EQ(Call(handle, IAudioMeterInformation::GetChannelsPeakValues, {count, &peak}), kEInvalidArg)
        << count;
  }
}

TEST_F(ArgumentsOfCalls, LongNumbersComeBackWhole) {
  object.Answer(4, &GiveTimes);
  const auto handle = Enter(object, Interface::kClock);
  std::int64_t clock = 0;
  std::int64_t system = 0;
  EXPECT_EQ(Call(handle, IMFClock::GetCorrelatedTime, {std::int32_t{0}, &clock, &system}), kSOk);
  EXPECT_EQ(clock, 0x123456789ABCDEF0LL);
  EXPECT_EQ(system, -2);
}

TEST_F(ArgumentsOfCalls, AGuidComesBackAsItIs) {
  object.Answer(8, &GiveGuid);
  object.guid = {0x01234567, 0x89AB, 0xCDEF, {1, 2, 3, 4, 5, 6, 7, 8}};
  const auto handle = Enter(object, Interface::kMediaTypeHandler);
  Guid type;
  EXPECT_EQ(Call(handle, IMFMediaTypeHandler::GetMajorType, {&type}), kSOk);
  EXPECT_EQ(type, std::bit_cast<Guid>(object.guid));
}

TEST_F(ArgumentsOfCalls, AFailureLeavesEveryVariableAsItWas) {
  object.Answer(4, &GiveTimes);
  object.result = E_FAIL;
  const auto handle = Enter(object, Interface::kClock);
  std::int64_t clock = 11;
  std::int64_t system = 12;
  EXPECT_EQ(Call(handle, IMFClock::GetCorrelatedTime, {std::int32_t{0}, &clock, &system}), kEFail);
  EXPECT_EQ(clock, 11);
  EXPECT_EQ(system, 12);
}

TEST_F(ArgumentsOfCalls, APropertyValueGoesInAsTheSystemsOwn) {
  object.Answer(9, &TakePosition);
  const auto session = Enter(object, Interface::kMediaSession);
  const Guid format;
  PropertyValue nothing;
  EXPECT_EQ(Call(session, IMFMediaSession::Start, {&format, &nothing}), kSOk);
  PropertyValue second{PropertyType::kInt64, std::int64_t{10'000'000}};
  EXPECT_EQ(Call(session, IMFMediaSession::Start, {&format, &second}), kSOk);
  EXPECT_EQ(object.calls, (std::vector<std::string>{"0 0", "20 10000000"}));
}

TEST_F(ArgumentsOfCalls, APropertyValueComesBackAndTextsGoAsWideStrings) {
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

TEST_F(ArgumentsOfCalls, WhatTheOperationDoesNotWriteStaysAsItWas) {
  object.Answer(
      8, +[](SlotObject*, GUID*) -> HRESULT { return S_OK; });
  const auto handle = Enter(object, Interface::kMediaTypeHandler);
  Guid type{1, 2, 3, {4}};
  EXPECT_EQ(Call(handle, IMFMediaTypeHandler::GetMajorType, {&type}), kSOk);
  EXPECT_EQ(type, (Guid{1, 2, 3, {4}}));
}

TEST_F(ArgumentsOfCalls, OfAnotherOperationAreNotPassed) {
  object.Answer(3, &TakeFloat);
  const OperationShape* const shape =
      FindShape(Interface::kSimpleAudioVolume, IMFSimpleAudioVolume::SetMasterVolume.slot);
  EXPECT_EQ(CallOperation(table, object.AsUnknown(), *shape, std::vector<Argument>{std::int32_t{1}}),
            std::nullopt);
}

TEST_F(ArgumentsOfCalls, AVariableThatIsLeftOutIsPassedAsNull) {
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

}  // namespace
}  // namespace platform::win32
