#include "platform/win32/media/byte_stream.h"

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>
#include <mfapi.h>
#include <mfidl.h>

#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <string>

#include "platform/win32/media/async_callback.h"
#include "platform/win32/media/media_library.h"
#include "tests/platform/win32/media/slot_object.h"

namespace platform::win32 {
namespace {

struct ByteStream : testing::Test {
  void SetUp() override {
    if (MediaFunction("MFStartup") == nullptr) GTEST_SKIP() << "this system lacks the libraries";
    ASSERT_EQ(CallMedia<decltype(::MFStartup)>("MFStartup", MF_VERSION, 0), S_OK);
    stream = MakeByteStream(buffer, "audio/mpeg");
  }
  void TearDown() override {
    if (!stream) return;
    stream = {};
    EXPECT_EQ(CallMedia<decltype(::MFShutdown)>("MFShutdown"), S_OK);
  }
  void Append(const std::string& bytes) {
    static const std::atomic<bool> cancelled = false;
    buffer->Append(std::as_bytes(std::span(bytes)), cancelled);
  }
  std::string Read(ULONG size) {
    std::string bytes(size, '?');
    ULONG count = size + 1;
    EXPECT_EQ(stream->Read(Target(bytes), size, &count), S_OK);
    bytes.resize(count);
    return bytes;
  }
  [[nodiscard]] QWORD Position() const {
    QWORD position = 0;
    EXPECT_EQ(stream->GetCurrentPosition(&position), S_OK);
    return position;
  }
  static BYTE* Target(std::string& bytes) { return reinterpret_cast<BYTE*>(bytes.data()); }

  const std::shared_ptr<StreamBuffer> buffer = std::make_shared<StreamBuffer>();
  ComPointer<::IMFByteStream> stream;
};

/// A read that was begun, and what its end says.
struct BegunRead {
  BegunRead(::IMFByteStream& stream, ULONG size) : bytes(size, '?') {
    callback = MakeAsyncCallback([this, &stream](::IMFAsyncResult& asked) {
      result = stream.EndRead(&asked, &count);
      again = stream.EndRead(&asked, &unused);
      over.set_value();
    });
    begun = stream.BeginRead(reinterpret_cast<BYTE*>(bytes.data()), size, callback.Get(), nullptr);
  }
  bool IsOver() { return ends.wait_for(std::chrono::seconds(30)) == std::future_status::ready; }
  [[nodiscard]] std::string Given() const { return bytes.substr(0, count); }

  std::string bytes;
  ComPointer<::IMFAsyncCallback> callback;
  HRESULT begun = E_FAIL;
  HRESULT result = E_FAIL;
  HRESULT again = S_OK;
  ULONG count = 0;
  ULONG unused = 0;
  std::promise<void> over;
  std::future<void> ends = over.get_future();
};

TEST_F(ByteStream, IsReadPieceByPiece) {
  Append("abcdef");
  EXPECT_EQ(Read(4), "abcd");
  EXPECT_EQ(Position(), 4u);
  EXPECT_EQ(Read(2), "ef");
  EXPECT_EQ(Position(), 6u);
}

TEST_F(ByteStream, IsReadWithoutWaiting) {
  BegunRead first(*stream.Get(), 4);
  ASSERT_EQ(first.begun, S_OK);
  EXPECT_EQ(first.ends.wait_for(std::chrono::seconds(0)), std::future_status::timeout);
  Append("abcdefg");
  ASSERT_TRUE(first.IsOver());
  EXPECT_EQ(first.result, S_OK);
  EXPECT_EQ(first.Given(), "abcd");
  EXPECT_EQ(first.again, E_INVALIDARG);
  EXPECT_EQ(Position(), 4u);
  BegunRead second(*stream.Get(), 2);
  ASSERT_TRUE(second.IsOver());
  EXPECT_EQ(second.Given(), "ef");
  EXPECT_EQ(Position(), 6u);
}

TEST_F(ByteStream, KnowsItsReadsApart) {
  BegunRead first(*stream.Get(), 2);
  BegunRead second(*stream.Get(), 4);
  Append("ab");
  ASSERT_TRUE(first.IsOver());
  Append("cd");
  ASSERT_TRUE(second.IsOver());
  EXPECT_EQ(first.Given(), "ab");
  EXPECT_EQ(second.Given(), "abcd");
}

TEST_F(ByteStream, LivesAsLongAsAReadIsUnanswered) {
  BegunRead read(*stream.Get(), 2);
  ::IMFByteStream* const raw = stream.Get();
  raw->AddRef();
  EXPECT_GT(raw->Release(), 1u);
  Append("ab");
  ASSERT_TRUE(read.IsOver());
  EXPECT_EQ(read.Given(), "ab");
}

TEST_F(ByteStream, ThatIsClosedForgetsWhoDidNotAskForAnAnswer) {
  auto kept = std::make_shared<std::promise<void>>();
  const std::weak_ptr<std::promise<void>> reader = kept;
  auto answered = kept->get_future();
  auto callback = MakeAsyncCallback([kept](::IMFAsyncResult&) { kept->set_value(); });
  kept.reset();
  std::string bytes(2, '?');
  ASSERT_EQ(stream->BeginRead(Target(bytes), 2, callback.Get(), nullptr), S_OK);
  callback = {};
  Append("ab");
  ASSERT_EQ(answered.wait_for(std::chrono::seconds(30)), std::future_status::ready);
  EXPECT_EQ(stream->Close(), S_OK);
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
  while (!reader.expired() && std::chrono::steady_clock::now() < end) ::Sleep(1);
  EXPECT_TRUE(reader.expired());
}

TEST_F(ByteStream, IsReadFromWhereItIsSet) {
  Append("abcdef");
  QWORD position = 0;
  EXPECT_EQ(stream->Seek(msoBegin, 2, 0, &position), S_OK);
  EXPECT_EQ(position, 2u);
  EXPECT_EQ(Read(1), "c");
  EXPECT_EQ(stream->Seek(msoCurrent, 1, 0, nullptr), S_OK);
  EXPECT_EQ(Read(2), "ef");
  EXPECT_EQ(stream->SetCurrentPosition(1), S_OK);
  EXPECT_EQ(Read(2), "bc");
}

TEST_F(ByteStream, ClaimsToBeSearchableAndNearlyEndless) {
  DWORD capabilities = 0;
  EXPECT_EQ(stream->GetCapabilities(&capabilities), S_OK);
  constexpr DWORD kSearchable = MFBYTESTREAM_IS_READABLE | MFBYTESTREAM_IS_SEEKABLE;
  EXPECT_EQ(capabilities & kSearchable, kSearchable);
  QWORD length = 0;
  EXPECT_EQ(stream->GetLength(&length), S_OK);
  EXPECT_EQ(length, StreamBuffer::kLength);
  WINBOOL end = TRUE;
  EXPECT_EQ(stream->IsEndOfStream(&end), S_OK);
  EXPECT_FALSE(end);
  EXPECT_EQ(stream->SetCurrentPosition(length), S_OK);
  EXPECT_EQ(stream->IsEndOfStream(&end), S_OK);
  EXPECT_TRUE(end);
}

TEST_F(ByteStream, ThatIsClosedAnswersItsReadsWithNothing) {
  BegunRead read(*stream.Get(), 4);
  EXPECT_EQ(stream->Close(), S_OK);
  ASSERT_TRUE(read.IsOver());
  EXPECT_EQ(read.result, S_OK);
  EXPECT_EQ(read.count, 0u);
}

TEST_F(ByteStream, KnowsTheTypeOfItsContent) {
  ComPointer<::IMFAttributes> attributes;
  ASSERT_EQ(stream->QueryInterface(__uuidof(::IMFAttributes), attributes.ReceiveAny()), S_OK);
  wchar_t type[32] = {};
  EXPECT_EQ(attributes->GetString(MF_BYTESTREAM_CONTENT_TYPE, type, 32, nullptr), S_OK);
  EXPECT_STREQ(type, L"audio/mpeg");
  UINT32 count = 1;
  const auto untyped = MakeByteStream(buffer, "");
  ASSERT_EQ(untyped->QueryInterface(__uuidof(::IMFAttributes), attributes.ReceiveAny()), S_OK);
  EXPECT_EQ(attributes->GetCount(&count), S_OK);
  EXPECT_EQ(count, 0u);
}

TEST_F(ByteStream, IsCountedByWhoeverAsksForIt) {
  for (const IID& iid : {__uuidof(::IMFByteStream), __uuidof(::IUnknown)}) {
    ComPointer<::IUnknown> face;
    ASSERT_EQ(stream->QueryInterface(iid, face.ReceiveAny()), S_OK);
    EXPECT_EQ(stream->AddRef(), 3u);
    EXPECT_EQ(stream->Release(), 2u);
  }
  void* other = this;
  EXPECT_EQ(stream->QueryInterface(__uuidof(::IMFMediaSource), &other), E_NOINTERFACE);
  EXPECT_EQ(other, nullptr);
}

TEST(AsyncCallback, IsCountedByWhoeverAsksForIt) {
  int calls = 0;
  const auto callback = MakeAsyncCallback([&calls](::IMFAsyncResult&) { ++calls; });
  for (const IID& iid : {__uuidof(::IMFAsyncCallback), __uuidof(::IUnknown)}) {
    ComPointer<::IUnknown> face;
    ASSERT_EQ(callback->QueryInterface(iid, face.ReceiveAny()), S_OK);
    EXPECT_EQ(callback->AddRef(), 3u);
    EXPECT_EQ(callback->Release(), 2u);
  }
  ComPointer<::IUnknown> other;
  EXPECT_EQ(callback->QueryInterface(__uuidof(::IMFMediaSource), other.ReceiveAny()), E_NOINTERFACE);
  SlotObject asked;
  EXPECT_EQ(callback->Invoke(reinterpret_cast<::IMFAsyncResult*>(asked.AsUnknown())), S_OK);
  EXPECT_EQ(calls, 1);
}

}  // namespace
}  // namespace platform::win32
