// A live stream's buffer as what plays it reads it.
#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>
#include <mfapi.h>
#include <mfidl.h>

#include <array>
#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <thread>
#include <vector>

#include "platform/win32/media/async_callback.h"
#include "platform/win32/media/byte_stream.h"
#include "platform/win32/media/media_library.h"

namespace platform::win32 {
namespace {

using namespace std::chrono_literals;

struct LiveByteStream : testing::Test {
  void SetUp() override { ASSERT_EQ(CallMedia<decltype(::MFStartup)>("MFStartup", MF_VERSION, 0), S_OK); }
  void TearDown() override { EXPECT_EQ(CallMedia<decltype(::MFShutdown)>("MFShutdown"), S_OK); }
  void Append(std::size_t count) {
    const std::atomic<bool> cancelled = false;
    const std::vector<std::byte> bytes(count);
    ASSERT_TRUE(buffer->Append(bytes, cancelled));
  }
  /// What it reads, once that was answered.
  std::future<ComPointer<::IMFAsyncResult>> BeginRead(ULONG size) {
    const auto answered = std::make_shared<std::promise<ComPointer<::IMFAsyncResult>>>();
    const auto callback = MakeAsyncCallback([answered](::IMFAsyncResult& asked) {
      asked.AddRef();
      answered->set_value(ComPointer<::IMFAsyncResult>(&asked));
    });
    EXPECT_EQ(stream->BeginRead(target.data(), size, callback.Get(), nullptr), S_OK);
    return answered->get_future();
  }
  ULONG EndRead(std::future<ComPointer<::IMFAsyncResult>> begun) {
    if (begun.wait_for(10s) != std::future_status::ready) {
      ADD_FAILURE() << "the read was not answered";
      return 0;
    }
    ULONG count = 0;
    EXPECT_EQ(stream->EndRead(begun.get().Get(), &count), S_OK);
    return count;
  }
  QWORD Position() {
    QWORD position = 0;
    EXPECT_EQ(stream->GetCurrentPosition(&position), S_OK);
    return position;
  }
  bool IsAtEnd() {
    WINBOOL end = FALSE;
    EXPECT_EQ(stream->IsEndOfStream(&end), S_OK);
    return end != FALSE;
  }
  ULONG Read(ULONG size) {
    ULONG count = 0;
    EXPECT_EQ(stream->Read(target.data(), size, &count), S_OK);
    return count;
  }

  std::array<BYTE, 10'000> target{};
  const std::shared_ptr<StreamBuffer> buffer = std::make_shared<StreamBuffer>();
  const ComPointer<::IMFByteStream> stream = MakeByteStream(buffer, "audio/mpeg");
};

// By the system's documentation the last two mean that its data comes from the beginning to the end.
TEST_F(LiveByteStream, IsSomethingRemoteThatIsDownloadedInOrder) {
  DWORD capabilities = 0;
  EXPECT_EQ(stream->GetCapabilities(&capabilities), S_OK);
  EXPECT_EQ(capabilities,
            static_cast<DWORD>(MFBYTESTREAM_IS_READABLE | MFBYTESTREAM_IS_SEEKABLE | MFBYTESTREAM_IS_REMOTE |
                               MFBYTESTREAM_HAS_SLOW_SEEK | MFBYTESTREAM_IS_PARTIALLY_DOWNLOADED));
}

TEST_F(LiveByteStream, AReadThatWaitsAdvancesByWhatItGot) {
  ASSERT_EQ(stream->SetCurrentPosition(5), S_OK);
  auto begun = BeginRead(1000);
  EXPECT_EQ(Position(), 5u);
  Append(2000);
  EXPECT_EQ(EndRead(std::move(begun)), 1000u);
  EXPECT_EQ(Position(), 1005u);
}

TEST_F(LiveByteStream, WhoGoesElsewhereWhileAReadWaitsIsThereAfterwards) {
  auto begun = BeginRead(1000);
  ASSERT_EQ(stream->SetCurrentPosition(300), S_OK);
  Append(2000);
  EXPECT_EQ(EndRead(std::move(begun)), 1000u);
  EXPECT_EQ(Position(), 300u);
  begun = BeginRead(5000);
  ASSERT_EQ(stream->Seek(msoBegin, 70, 0, nullptr), S_OK);
  Append(10'000);
  EXPECT_EQ(EndRead(std::move(begun)), 5000u);
  EXPECT_EQ(Position(), 70u);
}

TEST_F(LiveByteStream, ReadsMayBeEndedInAnotherOrderThanTheyWereAnswered) {
  auto first = BeginRead(1000);
  auto second = BeginRead(2000);
  auto third = BeginRead(3000);
  Append(3000);
  for (const auto* read : {&first, &second, &third})
    ASSERT_EQ(read->wait_for(10s), std::future_status::ready);
  EXPECT_EQ(EndRead(std::move(third)), 3000u);
  EXPECT_EQ(EndRead(std::move(first)), 1000u);
  EXPECT_EQ(EndRead(std::move(second)), 2000u);
}

TEST_F(LiveByteStream, AReadThatIsCalledAdvancesToo) {
  Append(2000);
  EXPECT_EQ(Read(1500), 1500u);
  EXPECT_EQ(Position(), 1500u);
  EXPECT_FALSE(IsAtEnd());
}

TEST_F(LiveByteStream, IsOverWhenAllThatCameWasRead) {
  Append(2000);
  EXPECT_EQ(Read(1500), 1500u);
  buffer->Finish();
  EXPECT_FALSE(IsAtEnd());
  EXPECT_EQ(Read(1500), 500u);
  EXPECT_TRUE(IsAtEnd());
  EXPECT_EQ(Read(1500), 0u);
}

TEST_F(LiveByteStream, IsOverWhileNobodyReads) {
  Append(2000);
  EXPECT_FALSE(IsAtEnd());
  buffer->EndReads();
  EXPECT_TRUE(IsAtEnd());
  EXPECT_EQ(Read(1500), 0u);
  buffer->Resume();
  EXPECT_FALSE(IsAtEnd());
}

TEST_F(LiveByteStream, IsOverAtTheLengthThatItClaims) {
  QWORD length = 0;
  EXPECT_EQ(stream->GetLength(&length), S_OK);
  ASSERT_EQ(stream->SetCurrentPosition(length), S_OK);
  EXPECT_TRUE(IsAtEnd());
}

/// A result of nobody's read.
ComPointer<::IMFAsyncResult> ForeignResult() {
  ComPointer<::IMFAsyncResult> foreign;
  CallMedia<decltype(::MFCreateAsyncResult)>("MFCreateAsyncResult", nullptr, nullptr, nullptr,
                                             foreign.Receive());
  return foreign;
}

TEST_F(LiveByteStream, AReadThatWasAnsweredIsKeptUntilItIsEnded) {
  Append(2000);
  auto begun = BeginRead(1000);
  ASSERT_EQ(begun.wait_for(10s), std::future_status::ready);
  const auto asked = begun.get();
  const auto references = [&asked] {
    asked->AddRef();
    return asked->Release();
  };
  // The framework drops its own when the callback has returned.
  const auto limit = std::chrono::steady_clock::now() + 10s;
  while (references() > 2 && std::chrono::steady_clock::now() < limit) std::this_thread::yield();
  EXPECT_EQ(references(), 2u);
  ULONG count = 0;
  EXPECT_EQ(stream->EndRead(ForeignResult().Get(), &count), E_INVALIDARG);
  EXPECT_EQ(stream->EndRead(asked.Get(), &count), S_OK);
  EXPECT_EQ(count, 1000u);
  EXPECT_EQ(references(), 1u);
  EXPECT_EQ(stream->EndRead(asked.Get(), &count), E_INVALIDARG);
}

}  // namespace
}  // namespace platform::win32
