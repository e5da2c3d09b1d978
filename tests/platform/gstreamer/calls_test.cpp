#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <stdexcept>
#include <utility>

#include "platform/gstreamer/identifiers.h"
#include "platform/gstreamer/results.h"
#include "tests/platform/gstreamer/session_driver.h"
#include "tests/support/child_process.h"
#include "tests/support/media_files.h"

namespace gstreamer_test {
namespace {

using namespace platform;             // NOLINT: the operations' namespaces
using namespace platform::gstreamer;  // NOLINT: the identifiers
using test_support::MakeTone;
using test_support::TempFolder;

class CallsTest : public testing::Test {
 protected:
  GstMedia& Media() { return driver.Media(); }
  std::string Tone() {
    return MakeTone(folder, "t.mp3", "libmp3lame", {.seconds = 2},
                    "-metadata title=Lied -metadata artist=Wer");
  }
  TempFolder folder;
  SessionDriver driver{Unheard()};
};

TEST_F(CallsTest, NothingIsMadeBeforeTheFrameworkIsStarted) {
  test_support::FakeMessageLoop loop;
  PlainPaths paths;
  GstMedia media(loop, paths, Unheard());
  InterfaceHandle handle{};
  EXPECT_EQ(media.MFCreateSourceResolver(handle), kMfEPlatformNotInitialized);
  EXPECT_EQ(media.MFCreateTopology(handle), kMfEPlatformNotInitialized);
  EXPECT_EQ(handle, InterfaceHandle::kNone);
  EXPECT_EQ(media.MFStartup(1, 0), kSOk);
  EXPECT_EQ(media.MFCreateTopology(handle), kSOk);
  EXPECT_NE(handle, InterfaceHandle::kNone);
  EXPECT_EQ(media.MFShutdown(), kSOk);
  EXPECT_EQ(media.MFCreateTopology(handle), kMfEPlatformNotInitialized);
}

TEST_F(CallsTest, AnUnknownHandleCannotBeCalled) {
  EXPECT_EQ(Call(Media(), InterfaceHandle::kNone, IUnknown::Release), std::nullopt);
  EXPECT_EQ(Call(Media(), InterfaceHandle{4711}, IMFMediaSession::Stop), std::nullopt);
}

TEST_F(CallsTest, AReleasedHandleCannotBeCalled) {
  InterfaceHandle topology{};
  ASSERT_EQ(Media().MFCreateTopology(topology), kSOk);
  EXPECT_EQ(Call(Media(), topology, IUnknown::Release), kSOk);
  EXPECT_EQ(Call(Media(), topology, IUnknown::Release), std::nullopt);
}

TEST_F(CallsTest, AnUnknownSlotAndWrongArgumentsCannotBeCalled) {
  InterfaceHandle topology{};
  ASSERT_EQ(Media().MFCreateTopology(topology), kSOk);
  const auto call = [&](Interface interface_id, std::int32_t slot, std::span<const Argument> arguments) {
    return Media().DispCallFunc(topology, interface_id, slot, arguments);
  };
  EXPECT_EQ(call(Interface::kTopology, 99, {}), std::nullopt);
  EXPECT_EQ(call(Interface::kTopology, -1, {}), std::nullopt);
  EXPECT_EQ(call(Interface::kTopology, IMFTopology::AddNode.slot, {}), std::nullopt);
  const std::vector<Argument> number = {Argument(7)};
  EXPECT_EQ(call(Interface::kTopology, IMFTopology::AddNode.slot, number), std::nullopt);
  EXPECT_EQ(call(Interface::kUnknown, IUnknown::Release.slot, number), std::nullopt);
}

TEST_F(CallsTest, AnOperationOfAnotherInterfaceCannotBeCalledThoughItsSlotAndArgumentsFit) {
  InterfaceHandle topology{};
  InterfaceHandle node{};
  InterfaceHandle session{};
  ASSERT_EQ(Media().MFCreateTopology(topology), kSOk);
  ASSERT_EQ(Media().MFCreateTopologyNode(0, node), kSOk);
  ASSERT_EQ(Media().MFCreateMediaSession(session), kSOk);
  // Both are slot 34; the activation's takes nothing, the topology's a node.
  EXPECT_EQ(Call(Media(), topology, IMFActivate::ShutdownObject), std::nullopt);
  EXPECT_EQ(Call(Media(), session, IMFMediaSource::Shutdown), std::nullopt) << "slot 12 closes a session";
  EXPECT_EQ(Call(Media(), session, IMFMediaSession::Close), kSOk);
  EXPECT_EQ(Call(Media(), topology, IMFTopology::AddNode, node), kSOk);
}

TEST_F(CallsTest, MissingAddressesAreRefused) {
  ASSERT_EQ(driver.Open(Tone()), kSOk);
  std::int32_t* no_number = nullptr;
  std::int64_t* no_time = nullptr;
  InterfaceHandle* no_handle = nullptr;
  float* no_float = nullptr;
  const Text* no_text = nullptr;
  PropertyValue* no_value = nullptr;
  EXPECT_EQ(Call(Media(), driver.clock, IMFClock::GetState, 0, no_number), kEPointer);
  EXPECT_EQ(Call(Media(), driver.clock, IMFClock::GetCorrelatedTime, 0, no_time, no_time), kEPointer);
  EXPECT_EQ(Call(Media(), driver.session, IMFMediaSession::GetClock, no_handle), kEPointer);
  EXPECT_EQ(Call(Media(), driver.meter, IAudioMeterInformation::GetPeakValue, no_float), kEPointer);
  EXPECT_EQ(Call(Media(), driver.metadata, IMFMetadata::GetProperty, no_text, no_value), kEPointer);
  InterfaceHandle resolver{};
  ASSERT_EQ(Media().MFCreateSourceResolver(resolver), kSOk);
  EXPECT_EQ(Call(Media(), resolver, IMFSourceResolver::CreateObjectFromURL, no_text, 1,
                 InterfaceHandle::kNone, no_number, no_handle),
            kEPointer);
}

TEST_F(CallsTest, AnObjectIsSeenThroughItsInterfacesOnly) {
  ASSERT_EQ(driver.Open(Tone()), kSOk);
  InterfaceHandle view{};
  EXPECT_EQ(Call(Media(), driver.source, IUnknown::QueryInterface, &kIidUnknown, &view), kSOk);
  EXPECT_NE(view, driver.source) << "every handle is a reference of its own";
  EXPECT_EQ(Call(Media(), driver.source, IUnknown::QueryInterface, &kIidAudioMeterInformation, &view),
            kENoInterface);
  EXPECT_EQ(Media().MFGetService(driver.session, kPolicyVolumeService, kIidMetadataProvider, view),
            kENoInterface);
  EXPECT_EQ(Media().MFGetService(driver.session, kIidUnknown, kIidUnknown, view), kMfEUnsupportedService);
  EXPECT_EQ(Media().MFGetService(driver.clock, kPolicyVolumeService, kIidSimpleAudioVolume, view),
            kEInvalidArg);
}

TEST_F(CallsTest, OnlyTheDeviceEnumeratorIsMadeByClass) {
  InterfaceHandle made{};
  EXPECT_EQ(Media().CoCreateInstance(kIidUnknown, {}, kClsctxInprocServer, kIidUnknown, made),
            kClassNotRegistered);
  EXPECT_EQ(
      Media().CoCreateInstance(kClsidMMDeviceEnumerator, {}, kClsctxInprocServer, kIidMediaSource, made),
      kENoInterface);
  EXPECT_EQ(made, InterfaceHandle::kNone);
  EXPECT_EQ(Media().CoCreateInstance(kClsidMMDeviceEnumerator, {}, kClsctxInprocServer,
                                     kIidMMDeviceEnumerator, made),
            kSOk);
  InterfaceHandle device{};
  EXPECT_EQ(Call(Media(), made, IMMDeviceEnumerator::GetDefaultAudioEndpoint, 1, 1, &device), kENotFound)
      << "nothing is recorded";
}

TEST_F(CallsTest, TheProgramHasASessionAsLongAsItHasAnItem) {
  SessionDriver other(Unheard());
  EXPECT_EQ(other.meter, InterfaceHandle::kNone);
  ASSERT_EQ(driver.Open(Tone()), kSOk);
  EXPECT_NE(driver.meter, InterfaceHandle::kNone);
  const InterfaceHandle session = driver.session;
  driver.Close();
  EXPECT_EQ(driver.meter, InterfaceHandle::kNone);
  EXPECT_EQ(Call(Media(), session, IMFMediaSession::Stop), std::nullopt);
}

TEST_F(CallsTest, ASessionWithoutATopologyCannotPlay) {
  ASSERT_EQ(Media().MFCreateMediaSession(driver.session), kSOk);
  EXPECT_EQ(driver.Start(), kMfENotInitialized);
  InterfaceHandle topology{};
  ASSERT_EQ(Media().MFCreateTopology(topology), kSOk);
  EXPECT_EQ(Call(Media(), driver.session, IMFMediaSession::SetTopology, 0, topology), kEInvalidArg)
      << "empty";
  EXPECT_EQ(Call(Media(), driver.session, IMFMediaSession::SetTopology, 0, InterfaceHandle::kNone),
            kEInvalidArg);
  ASSERT_EQ(Call(Media(), driver.session, IMFMediaSession::GetClock, &driver.clock), kSOk);
  EXPECT_EQ(driver.State(), 0);
}

TEST_F(CallsTest, NothingPlaysAfterTheShutdown) {
  ASSERT_EQ(driver.Open(Tone()), kSOk);
  ASSERT_EQ(Call(Media(), driver.source, IMFMediaSource::Shutdown), kSOk);
  EXPECT_EQ(driver.Start(), kMfEShutdown);
  ASSERT_EQ(Call(Media(), driver.session, IMFMediaSession::Shutdown), kSOk);
  EXPECT_EQ(driver.Start(), kMfEShutdown);
  EXPECT_EQ(driver.State(), 0);
  EXPECT_EQ(Call(Media(), driver.session, IMFMediaSession::Shutdown), kSOk) << "again";
}

TEST_F(CallsTest, PauseNeedsSomethingThatPlays) {
  ASSERT_EQ(driver.Open(Tone()), kSOk);
  EXPECT_EQ(driver.Pause(), kMfEInvalidRequest);
  EXPECT_EQ(driver.State(), 2);
}

TEST_F(CallsTest, MetadataIsListedAndReadByName) {
  ASSERT_EQ(driver.Open(Tone()), kSOk);
  EXPECT_THAT(driver.Names(), testing::IsSupersetOf({Text(u"Title"), Text(u"Author"), Text(u"AudioCodec"),
                                                     Text(u"SampleRate"), Text(u"Channels")}));
  EXPECT_EQ(driver.Names().front(), u"Title");
  EXPECT_EQ(driver.TextProperty(u"Title"), "Lied");
  EXPECT_EQ(driver.TextProperty(u"Author"), "Wer");
  EXPECT_EQ(driver.Property(u"Title").type, PropertyType::kWideString);
  const PropertyValue rate = driver.Property(u"SampleRate");
  EXPECT_EQ(rate.type, PropertyType::kUInt32);
  EXPECT_EQ(std::get<std::int64_t>(rate.payload), 44100);
}

TEST_F(CallsTest, AnUnknownPropertyFailsAndLeavesTheValue) {
  ASSERT_EQ(driver.Open(Tone()), kSOk);
  const Text name = u"Gibtsnicht";
  PropertyValue value{PropertyType::kInt32, std::int64_t{7}};
  EXPECT_EQ(Call(Media(), driver.metadata, IMFMetadata::GetProperty, &name, &value), kMfEPropertyNotFound);
  EXPECT_EQ(value.type, PropertyType::kInt32);
}

TEST_F(CallsTest, HandlesMayOutliveTheirItem) {
  ASSERT_EQ(driver.Open(Tone()), kSOk);
  ASSERT_EQ(driver.Start(), kSOk);
  InterfaceHandle meter = std::exchange(driver.meter, InterfaceHandle::kNone);
  InterfaceHandle metadata = std::exchange(driver.metadata, InterfaceHandle::kNone);
  driver.Close();
  float peak = 1;
  EXPECT_EQ(Call(Media(), meter, IAudioMeterInformation::GetPeakValue, &peak), kSOk);
  EXPECT_EQ(peak, 0.0F);
  PropertyValue names;
  EXPECT_EQ(Call(Media(), metadata, IMFMetadata::GetAllPropertyNames, &names), kSOk);
}

/// Reads from memory.
class MemoryReader : public StreamReader {
 public:
  MemoryReader(std::string bytes, bool seekable) : bytes_(std::move(bytes)), seekable_(seekable) {}
  std::size_t Read(std::span<std::byte> buffer) override {
    const std::size_t size = std::min(buffer.size(), bytes_.size() - at_);
    std::memcpy(buffer.data(), bytes_.data() + at_, size);
    at_ += size;
    return size;
  }
  bool Seek(std::uint64_t position) override {
    if (!seekable_ || position > bytes_.size()) return false;
    at_ = static_cast<std::size_t>(position);
    return true;
  }
  std::optional<std::uint64_t> Size() override {
    return seekable_ ? std::optional<std::uint64_t>(bytes_.size()) : std::nullopt;
  }

 private:
  std::string bytes_;
  bool seekable_;
  std::size_t at_ = 0;
};

class ThrowingReader : public StreamReader {
 public:
  std::size_t Read(std::span<std::byte>) override { throw std::runtime_error("broken"); }
  bool Seek(std::uint64_t) override { throw std::runtime_error("broken"); }
  std::optional<std::uint64_t> Size() override { throw std::runtime_error("broken"); }
};

TEST_F(CallsTest, AStreamObjectIsPlayedToItsEnd) {
  const std::string sound = test_support::ReadBytes(MakeTone(folder, "t.mp3", "libmp3lame", {.seconds = 1}));
  for (const bool seekable : {true, false}) {
    const StreamObject stream = Media().RegisterStream(std::make_shared<MemoryReader>(sound, seekable));
    ASSERT_NE(stream, StreamObject::kNone);
    ASSERT_EQ(driver.OpenStream(stream), kSOk);
    Media().UnregisterStream(stream);
    ASSERT_EQ(driver.Start(), kSOk);
    EXPECT_TRUE(test_support::WaitUntil([&] { return driver.Seconds() > 0.3; }, std::chrono::seconds(3)));
    EXPECT_TRUE(test_support::WaitUntil([&] { return driver.State() == 2; }, std::chrono::seconds(5)));
    EXPECT_TRUE(driver.log.empty());
  }
}

TEST_F(CallsTest, AStreamObjectThatIsNoSoundIsUnsupported) {
  const auto text = std::make_shared<MemoryReader>("Only a few words, and no sound in them at all.", true);
  EXPECT_EQ(driver.OpenStream(Media().RegisterStream(text)), kMfEUnsupportedByteStreamType);
  EXPECT_LT(driver.OpenStream(Media().RegisterStream(std::make_shared<ThrowingReader>())), 0);
  EXPECT_EQ(driver.OpenStream(StreamObject{999}), kEInvalidArg);
  EXPECT_EQ(Media().RegisterStream(nullptr), StreamObject::kNone);
}

}  // namespace
}  // namespace gstreamer_test
