#include "platform/win32/media/rebuilt_session.h"

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>
#include <mfapi.h>
#include <mfidl.h>

#include <chrono>
#include <filesystem>
#include <vector>

#include "platform/win32/media/media_library.h"
#include "platform/win32/media/opening.h"
#include "tests/platform/win32/media/call_rig.h"
#include "tests/platform/win32/media/slot_object.h"
#include "tests/platform/win32/media/wave_file.h"
#include "tests/support/fakes.h"
#include "tests/support/temp_folder.h"

namespace platform::win32 {
namespace {

/// A stream of that kind; `handler` knows it.
struct DescribedStream : SlotObject {
  explicit DescribedStream(const GUID& kind) {
    handler.guid = kind;
    handler.Answer(8, &GiveGuid);
    Answer(34, &GiveHandler);
  }
  static HRESULT STDMETHODCALLTYPE GiveHandler(SlotObject* self, ::IUnknown** out) {
    *out = static_cast<DescribedStream*>(self)->handler.Reference();
    return S_OK;
  }
  SlotObject handler;
  WINBOOL selected = TRUE;
};

/// Describes its streams. One that has a result of failure cannot be had.
struct DescriptorObject : SlotObject {
  DescriptorObject() {
    Answer(33, &GiveCount);
    Answer(34, &GiveStream);
  }
  static DescriptorObject& Of(SlotObject* self) { return *static_cast<DescriptorObject*>(self); }
  static HRESULT STDMETHODCALLTYPE GiveCount(SlotObject* self, DWORD* count) {
    *count = static_cast<DWORD>(Of(self).streams.size());
    return self->result;
  }
  static HRESULT STDMETHODCALLTYPE GiveStream(SlotObject* self, DWORD index, WINBOOL* selected,
                                              ::IUnknown** out) {
    DescribedStream& stream = *Of(self).streams.at(index);
    *selected = stream.selected;
    *out = stream.result == S_OK ? stream.Reference() : nullptr;
    return stream.result;
  }
  std::vector<DescribedStream*> streams;
};

HRESULT STDMETHODCALLTYPE GiveItsDescriptor(SlotObject* self, ::IUnknown** out) {
  *out = self->result == S_OK ? static_cast<SlotObject*>(self->pointer)->Reference() : nullptr;
  return self->result;
}

struct SoundTopology : testing::Test {
  void SetUp() override {
    if (MediaFunction("MFCreateTopology") == nullptr) GTEST_SKIP() << "this system lacks the libraries";
    ASSERT_EQ(CallMedia<decltype(::MFStartup)>("MFStartup", MF_VERSION, 0), S_OK);
    ASSERT_EQ(CallMedia<decltype(::MFCreateTopology)>("MFCreateTopology", topology.Receive()), S_OK);
    source.Answer(8, &GiveItsDescriptor);
    source.pointer = &descriptor;
  }
  void TearDown() override {
    if (!topology) return;
    topology = {};
    EXPECT_EQ(CallMedia<decltype(::MFShutdown)>("MFShutdown"), S_OK);
  }
  ::IMFMediaSource& Source() { return *reinterpret_cast<::IMFMediaSource*>(source.AsUnknown()); }
  HResult Add(const std::vector<DescribedStream*>& streams) {
    descriptor.streams = streams;
    return AddSound(*topology.Get(), Source());
  }
  WORD Nodes() {
    WORD count = 0;
    EXPECT_EQ(topology->GetNodeCount(&count), S_OK);
    return count;
  }
  ComPointer<::IMFTopologyNode> Node(WORD index) {
    ComPointer<::IMFTopologyNode> node;
    EXPECT_EQ(topology->GetNode(index, node.Receive()), S_OK);
    return node;
  }
  static const void* Held(::IMFTopologyNode& node, const GUID& key) {
    ComPointer<::IUnknown> held;
    EXPECT_EQ(node.GetUnknown(key, __uuidof(::IUnknown), held.ReceiveAny()), S_OK);
    return held.Get();
  }

  // Declared before the topology, which drops its references in the end.
  SlotObject source;
  DescriptorObject descriptor;
  DescribedStream sound{MFMediaType_Audio};
  DescribedStream more_sound{MFMediaType_Audio};
  DescribedStream picture{MFMediaType_Video};
  ComPointer<::IMFTopology> topology;
};

TEST_F(SoundTopology, LeadsAStreamOfSoundToTheRenderer) {
  for (SlotObject* const object :
       {&source, static_cast<SlotObject*>(&descriptor), static_cast<SlotObject*>(&sound)})
    object->offered = __uuidof(::IUnknown);
  ASSERT_EQ(Add({&sound}), kSOk);
  ASSERT_EQ(Nodes(), 2);
  const auto from = Node(0);
  EXPECT_EQ(Held(*from.Get(), MF_TOPONODE_SOURCE), &source);
  EXPECT_EQ(Held(*from.Get(), MF_TOPONODE_PRESENTATION_DESCRIPTOR), &descriptor);
  EXPECT_EQ(Held(*from.Get(), MF_TOPONODE_STREAM_DESCRIPTOR), &sound);
  ComPointer<::IMFTopologyNode> after;
  DWORD input = 1;
  ASSERT_EQ(from->GetOutput(0, after.Receive(), &input), S_OK);
  EXPECT_EQ(input, 0u);
  EXPECT_EQ(after.Get(), Node(1).Get());
  ComPointer<::IUnknown> renderer;
  EXPECT_EQ(after->GetObject(renderer.Receive()), S_OK);
  EXPECT_TRUE(renderer);
}

TEST_F(SoundTopology, HasNothingButTheSelectedStreamsOfSound) {
  DescribedStream silent{MFMediaType_Audio};
  silent.selected = FALSE;
  ASSERT_EQ(Add({&picture, &sound, &silent, &more_sound, &picture}), kSOk);
  EXPECT_EQ(Nodes(), 4);
  EXPECT_EQ(picture.references + silent.references, 0);
}

TEST_F(SoundTopology, DoesWithoutAStreamThatCannotBeHad) {
  more_sound.result = E_FAIL;
  ASSERT_EQ(Add({&more_sound, &sound}), kSOk);
  EXPECT_EQ(Nodes(), 2);
}

TEST_F(SoundTopology, IsNoneWithoutSound) {
  EXPECT_EQ(Add({}), kEFail);
  EXPECT_EQ(Add({&picture}), kEFail);
  sound.handler.result = E_FAIL;
  EXPECT_EQ(Add({&sound}), kEFail);
  EXPECT_EQ(Nodes(), 0);
}

TEST_F(SoundTopology, IsNoneWithoutADescription) {
  source.result = E_FAIL;
  EXPECT_EQ(Add({&sound}), kEFail);
  source.result = S_OK;
  descriptor.result = E_FAIL;
  EXPECT_EQ(Add({&sound}), kEFail);
  EXPECT_EQ(Nodes(), 0);
}

using SessionOfASource = SoundTopology;

TEST_F(SessionOfASource, IsNoneWithoutSound) {
  descriptor.streams = {&picture};
  const RebuiltSession built = RebuildSession(Source());
  EXPECT_EQ(built.result, kEFail);
  EXPECT_FALSE(built.session);
  EXPECT_FALSE(built.clock);
}

TEST_F(SessionOfASource, WaitsForItsStart) {
  const test_support::TempFolder folder;
  const auto file = std::filesystem::path(folder.Path()) / "ton.wav";
  WriteWaveFile(file, std::chrono::seconds(1));
  ComPointer<::IMFSourceResolver> resolver;
  ASSERT_EQ(CallMedia<decltype(::MFCreateSourceResolver)>("MFCreateSourceResolver", resolver.Receive()),
            S_OK);
  test_support::FakeMessageLoop loop;
  const OpeningWait wait{loop, std::chrono::steady_clock::now() + std::chrono::seconds(30)};
  const OpenedObject opened = OpenAddress(*resolver.Get(), file.u16string(), kMfResolutionMediaSource, wait);
  ASSERT_EQ(opened.result, kSOk);
  ComPointer<::IMFMediaSource> wave;
  ASSERT_EQ(opened.object->QueryInterface(__uuidof(::IMFMediaSource), wave.ReceiveAny()), S_OK);
  const RebuiltSession built = RebuildSession(*wave.Get());
  ASSERT_EQ(built.result, kSOk);
  MFCLOCK_STATE state = MFCLOCK_STATE_RUNNING;
  EXPECT_EQ(built.clock->GetState(0, &state), S_OK);
  EXPECT_NE(state, MFCLOCK_STATE_RUNNING);
  EXPECT_EQ(wave->Shutdown(), S_OK);
  EXPECT_EQ(built.session->Shutdown(), S_OK);
}

}  // namespace
}  // namespace platform::win32
