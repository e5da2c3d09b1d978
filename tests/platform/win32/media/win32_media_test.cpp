#include "platform/win32/media/win32_media.h"

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>
#include <objbase.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "platform/win32/media/media_library.h"
#include "ports/media_interfaces.h"
#include "tests/platform/win32/media/player_rig.h"
#include "tests/platform/win32/media/replaced_function.h"
#include "tests/platform/win32/media/slot_object.h"
#include "tests/platform/win32/media/wave_file.h"
#include "tests/support/temp_folder.h"

namespace platform::win32 {
namespace {

struct MediaOfTheSystem : testing::Test, PlayerRig {
  void SetUp() override {
    if (MediaFunction("MFStartup") == nullptr) GTEST_SKIP() << "this system lacks the libraries";
    MakePlayer();
  }
};

/// The bytes of a sound of that length.
std::string WaveBytes(std::chrono::milliseconds length) {
  const test_support::TempFolder folder;
  const auto path = std::filesystem::path(folder.Path()) / "ton.wav";
  WriteWaveFile(path, length);
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// An object of the system that reads those bytes.
ComPointer<::IStream> StreamOf(const std::string& bytes) {
  HGLOBAL const memory = GlobalAlloc(GMEM_MOVEABLE, bytes.size());
  std::memcpy(GlobalLock(memory), bytes.data(), bytes.size());
  GlobalUnlock(memory);
  ComPointer<::IStream> stream;
  CreateStreamOnHGlobal(memory, TRUE, stream.Receive());
  return stream;
}

TEST_F(MediaOfTheSystem, PlaysAStreamObject) {
  const auto stream = StreamOf(WaveBytes(std::chrono::seconds(60)));
  ASSERT_TRUE(stream);
  const StreamObject object = media->RegisterStream(stream.Get());
  player->MediaFileFromIStream(object);
  ASSERT_TRUE(player->IsMediaReady());
  ASSERT_TRUE(player->PlayMedia());
  EXPECT_TRUE(WaitUntil([this] { return player->CurrentPlayPosition() > 1'000'000; }));
}

TEST_F(MediaOfTheSystem, KeepsAStreamObjectUntilItIsUnregistered) {
  SlotObject first;
  SlotObject second;
  const auto register_one = [this](SlotObject& object) {
    return media->RegisterStream(reinterpret_cast<::IStream*>(object.AsUnknown()));
  };
  const StreamObject one = register_one(first);
  const StreamObject other = register_one(second);
  EXPECT_NE(one, StreamObject::kNone);
  EXPECT_NE(one, other);
  EXPECT_EQ(first.references + second.references, 2);
  media->UnregisterStream(one);
  EXPECT_EQ(first.references, 0);
  EXPECT_EQ(second.references, 1);
  InterfaceHandle made = InterfaceHandle::kNone;
  EXPECT_EQ(media->MFCreateMFByteStreamOnStream(one, made), kEInvalidArg);
  EXPECT_EQ(made, InterfaceHandle::kNone);
  media->UnregisterStream(other);
}

TEST_F(MediaOfTheSystem, NoStreamIsNone) {
  EXPECT_EQ(media->RegisterStream(nullptr), StreamObject::kNone);
  InterfaceHandle made = InterfaceHandle::kNone;
  EXPECT_EQ(media->MFCreateMFByteStreamOnStream(StreamObject::kNone, made), kEInvalidArg);
}

TEST_F(MediaOfTheSystem, AnUnknownHandleHasNoService) {
  InterfaceHandle made = InterfaceHandle::kNone;
  EXPECT_EQ(media->MFGetService(InterfaceHandle{99}, Guid{}, Guid{}, made), kEInvalidArg);
}

TEST_F(MediaOfTheSystem, OpensNothingWithoutAPlaceForIt) {
  InterfaceHandle resolver = InterfaceHandle::kNone;
  ASSERT_EQ(media->MFCreateSourceResolver(resolver), kSOk);
  const Text address = u"C:\\ton.wav";
  std::int32_t type = 0;
  InterfaceHandle object = InterfaceHandle::kNone;
  const auto open = [&](const Text* from, std::int32_t* kind, InterfaceHandle* out) {
    const auto& operation = IMFSourceResolver::CreateObjectFromURL;
    const std::vector<Argument> list = {from, kMfResolutionMediaSource, InterfaceHandle::kNone, kind, out};
    return media->DispCallFunc(resolver, operation.interface_id, operation.slot, list);
  };
  EXPECT_EQ(open(nullptr, &type, &object), kEInvalidArg);
  EXPECT_EQ(open(&address, nullptr, &object), kEInvalidArg);
  EXPECT_EQ(open(&address, &type, nullptr), kEInvalidArg);
  EXPECT_EQ(media->Status().state, PlaybackState::kStopped);
}

std::string debugging_messages;

void WINAPI NoteDebuggingMessage(const char* message) { debugging_messages += message; }

// Nobody has asked for the lines.
TEST_F(MediaOfTheSystem, WritesItsLogToTheStandardErrorStreamAndTheDebugger) {
  const ReplacedFunction<decltype(::OutputDebugStringA)> output(L"kernel32.dll", "OutputDebugStringA",
                                                                &NoteDebuggingMessage);
  Win32MediaOptions silent = options;
  silent.log = nullptr;
  constexpr std::int32_t kNoVersion = 0x7FFFFFFF;
  testing::internal::CaptureStderr();
  Win32Media writing(loop, silent);
  EXPECT_EQ(writing.MFStartup(kNoVersion, 0), kSOk);
  const std::string line =
      "sound: The system refuses version 2147483647 of its media platform; using its own.\n";
  EXPECT_EQ(testing::internal::GetCapturedStderr(), line);
  EXPECT_EQ(debugging_messages, line);
  EXPECT_EQ(writing.MFShutdown(), kSOk);
}

}  // namespace
}  // namespace platform::win32
