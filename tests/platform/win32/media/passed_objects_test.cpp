// How objects reach operations, and come back, as handles.
#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>

#include <bit>

#include "platform/win32/media/operation_shapes.h"
#include "ports/media_interfaces.h"
#include "tests/platform/win32/media/call_rig.h"

namespace platform::win32 {
namespace {

using PassedObjects = CallRig;

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
HRESULT STDMETHODCALLTYPE GiveOtherFace(SlotObject* self, const IID*, void** out) {
  *out = static_cast<SlotObject*>(self->pointer)->Reference();
  return S_OK;
}
HRESULT STDMETHODCALLTYPE TakeObject(SlotObject* self, void* passed) {
  self->pointer = passed;
  return S_OK;
}

TEST_F(PassedObjects, ANewObjectBecomesAHandleOfItsOwnInterface) {
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

TEST_F(PassedObjects, AFailureOrAnotherSuccessEntersNoObject) {
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

TEST_F(PassedObjects, AHandleIsPassedAsItsObject) {
  object.Answer(27, &SetUnknownAt);
  const auto handle = Enter(object, Interface::kTopologyNode);
  const auto passed = Enter(other, Interface::kMediaSource);
  const Guid key{1, 2, 3, {4}};
  EXPECT_EQ(Call(handle, IMFTopologyNode::SetUnknown, {&key, passed}), kSOk);
  EXPECT_EQ(object.pointer, other.AsUnknown());
  EXPECT_EQ(std::bit_cast<Guid>(object.guid), key);
  EXPECT_EQ(other.references, 1);
}

TEST_F(PassedObjects, NoHandleIsPassedAsNull) {
  object.Answer(27, &SetUnknownAt);
  object.pointer = &other;
  const auto handle = Enter(object, Interface::kTopologyNode);
  const Guid key;
  EXPECT_EQ(Call(handle, IMFTopologyNode::SetUnknown, {&key, InterfaceHandle::kNone}), kSOk);
  EXPECT_EQ(object.pointer, nullptr);
}

TEST_F(PassedObjects, AHandleThatIsPassedIsAskedForTheInterfaceThatTheOperationTakes) {
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

TEST_F(PassedObjects, WhatItAnswersIsWhatIsPassed) {
  SlotObject face;
  other.Answer(0, &GiveOtherFace);
  other.pointer = &face;
  object.Answer(34, &TakeObject);
  const auto topology = Enter(object, Interface::kTopology);
  EXPECT_EQ(Call(topology, IMFTopology::AddNode, {Enter(other, Interface::kUnknown)}), kSOk);
  EXPECT_EQ(object.pointer, face.AsUnknown());
  EXPECT_EQ(face.references, 0);
}

TEST_F(PassedObjects, AnUnknownHandleAmongTheArgumentsIsRefused) {
  object.Answer(34, &TakeLong);
  const auto topology = Enter(object, Interface::kTopology);
  EXPECT_EQ(Call(topology, IMFTopology::AddNode, {InterfaceHandle{99}}), kEInvalidArg);
  EXPECT_TRUE(object.calls.empty());
}

TEST_F(PassedObjects, AnObjectReceivedForAnIidIsOfThatInterface) {
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

TEST_F(PassedObjects, QueryInterfaceGivesASecondHandle) {
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

}  // namespace
}  // namespace platform::win32
