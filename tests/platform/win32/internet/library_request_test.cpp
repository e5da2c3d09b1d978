#include "platform/win32/internet/library_request.h"

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>
#include <wininet.h>

#include <chrono>
#include <cstring>
#include <future>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "platform/win32/internet/web_exchange.h"
#include "tests/contracts/internet/internet_rig.h"
#include "tests/platform/win32/replaced_import.h"

// Where this program finds the library's functions.
extern "C" {
extern decltype(&HttpOpenRequestA) __imp_HttpOpenRequestA;
extern decltype(&HttpQueryInfoA) __imp_HttpQueryInfoA;
extern decltype(&HttpSendRequestA) __imp_HttpSendRequestA;
extern decltype(&InternetOpenA) __imp_InternetOpenA;
extern decltype(&InternetQueryDataAvailable) __imp_InternetQueryDataAvailable;
extern decltype(&InternetReadFile) __imp_InternetReadFile;
extern decltype(&InternetSetOptionA) __imp_InternetSetOptionA;
extern decltype(&InternetSetStatusCallbackA) __imp_InternetSetStatusCallbackA;
}

namespace platform::win32 {
namespace {

using test_support::ReplacedImport;

class LibraryRequestTest : public testing::Test {
 protected:
  std::unique_ptr<LibraryRequest> To(const std::string& target) {
    http::ExchangeOptions options;
    return std::make_unique<LibraryRequest>(reading_, options, *http::PartsOf(server_.Url(target)), place_);
  }
  /// Whether the library gives the requests' place back in time.
  bool IsReleased() {
    const std::weak_ptr<void> watched = std::exchange(place_, nullptr);
    const auto deadline = std::chrono::steady_clock::now() + kDeadline;
    while (!watched.expired() && std::chrono::steady_clock::now() < deadline) std::this_thread::yield();
    return watched.expired();
  }

  std::unique_ptr<under_test::IcyServer> owned_ = std::make_unique<under_test::IcyServer>();
  under_test::IcyServer& server_ = *owned_;
  std::shared_ptr<Reading> reading_ = std::make_shared<Reading>();
  std::shared_ptr<void> place_ = std::make_shared<int>();
};

TEST_F(LibraryRequestTest, ACancelEndsTheWaitForASilentServerAtOnceAndTheLibraryReleasesItWhenItCan) {
  server_.OnAny(Script().Hold());
  auto request = To("/");
  auto sent = std::async(std::launch::async, [&] { return request->Send("A: b\r\n"); });
  EXPECT_TRUE(server_.WaitForRequests(1, kDeadline));
  reading_->Cancel();
  ASSERT_EQ(sent.wait_for(kDeadline), std::future_status::ready) << "though the server is silent";
  EXPECT_EQ(sent.get(), static_cast<std::uint32_t>(ERROR_INTERNET_OPERATION_CANCELLED));
  request.reset();
  if (under_test::EndsSilentConnections()) {
    EXPECT_TRUE(server_.WaitForAllClosed(kDeadline));
  }
  owned_.reset();
  EXPECT_TRUE(IsReleased());
}

TEST_F(LibraryRequestTest, ACancelEndsTheWaitForABodyToo) {
  server_.OnAny(Script().Send(kOk).Send("x").Hold());
  auto request = To("/");
  EXPECT_EQ(request->Send(""), 0U);
  std::string piece;
  EXPECT_EQ(request->Read(piece), 0U);
  EXPECT_EQ(piece, "x");
  auto read = std::async(std::launch::async, [&] { return request->Read(piece); });
  EXPECT_EQ(read.wait_for(100ms), std::future_status::timeout) << "there is nothing yet";
  reading_->Cancel();
  ASSERT_EQ(read.wait_for(kDeadline), std::future_status::ready);
  EXPECT_EQ(read.get(), static_cast<std::uint32_t>(ERROR_INTERNET_OPERATION_CANCELLED));
  request.reset();
  owned_.reset();
  EXPECT_TRUE(IsReleased());
}

TEST_F(LibraryRequestTest, WhatComesWhileItIsWaitedForIsReadTogether) {
  server_.OnAny(Script().Send(kOk).Send("x").AwaitSignal("more").Send("bytes").Hold());
  auto request = To("/");
  EXPECT_EQ(request->Send(""), 0U);
  std::string piece;
  EXPECT_EQ(request->Read(piece), 0U);
  EXPECT_EQ(piece, "x");
  auto read = std::async(std::launch::async, [&] { return request->Read(piece); });
  EXPECT_EQ(read.wait_for(100ms), std::future_status::timeout) << "there is nothing yet";
  server_.Signal("more");
  if (read.wait_for(kDeadline) != std::future_status::ready) reading_->Cancel();
  EXPECT_EQ(read.get(), 0U);
  EXPECT_EQ(piece, "bytes");
}

TEST_F(LibraryRequestTest, OneThatHasEndedOrWasNeverSentIsReleased) {
  server_.OnAny(Script().Send(kOk).Send("bytes"));
  To("/");
  auto request = To("/");
  EXPECT_EQ(request->Send(""), 0U);
  std::string piece;
  std::string body;
  while (request->Read(piece) == 0 && !piece.empty()) body += piece;
  EXPECT_EQ(body, "bytes");
  request.reset();
  EXPECT_TRUE(IsReleased());
}

/// How often a request was opened.
int opened_requests = 0;

TEST_F(LibraryRequestTest, AHostWithoutANameIsAFailure) {
  http::AddressParts parts;
  parts.target = "/";
  const auto count = +[](HINTERNET, LPCSTR, LPCSTR, LPCSTR, LPCSTR, LPCSTR*, DWORD, DWORD_PTR) -> HINTERNET {
    ++opened_requests;
    return nullptr;
  };
  const ReplacedImport replaced(__imp_HttpOpenRequestA, count);
  {
    LibraryRequest request(reading_, {}, parts, place_);
    EXPECT_NE(request.Send(""), 0U);
  }
  EXPECT_TRUE(IsReleased());
  EXPECT_EQ(opened_requests, 0);
}

/// A replacement of HttpQueryInfoA that gives a block without an empty line at its end.
BOOL GiveOpenBlock(HINTERNET /*request*/, DWORD /*level*/, void* buffer, DWORD* size, DWORD* /*index*/) {
  constexpr std::string_view kBlock = "HTTP/1.1 200 OK\r\nA: b\r\n";
  if (buffer == nullptr) {
    *size = kBlock.size() + 1;
    ::SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return FALSE;
  }
  std::memcpy(buffer, kBlock.data(), kBlock.size());
  *size = kBlock.size();
  return TRUE;
}

TEST_F(LibraryRequestTest, ABlockOfHeadersMayEndWithItsLastLine) {
  const auto request = To("/");
  const ReplacedImport replaced(__imp_HttpQueryInfoA, &GiveOpenBlock);
  http::AnswerHeader header;
  EXPECT_TRUE(request->ReadHeader(header));
  EXPECT_EQ(header.Block(), "HTTP/1.1 200 OK\r\nA: b\r\n\r\n");
}

TEST_F(LibraryRequestTest, BytesOfAHeaderArriveAsTheServerSentThem) {
  std::string bytes;
  for (int code = 0x80; code < 0x100; ++code) bytes += static_cast<char>(code);
  server_.OnAny(Script().Send(Header("HTTP/1.1 200 OK", {"icy-name: " + bytes})));
  const auto request = To("/");
  EXPECT_EQ(request->Send(""), 0U);
  http::AnswerHeader header;
  EXPECT_TRUE(request->ReadHeader(header));
  EXPECT_EQ(header.Value("icy-name"), bytes);
  EXPECT_TRUE(header.Block().ends_with(bytes + "\r\n\r\n")) << "and nothing else";
}

TEST_F(LibraryRequestTest, AHeaderTakesThePlaceOfOneThatWasCut) {
  server_.OnAny(Script().Send(Header("HTTP/1.1 200 OK", {"icy-name: X"})));
  const auto request = To("/");
  EXPECT_EQ(request->Send(""), 0U);
  http::AnswerHeader header;
  EXPECT_TRUE(header.AddLine("HTTP/1.1 404 Not Found\r\n"));
  EXPECT_TRUE(header.AddLine("icy-br: 128\r\n"));
  EXPECT_TRUE(request->ReadHeader(header));
  EXPECT_EQ(header.StatusCode(), "200");
  EXPECT_EQ(header.Value("icy-br"), "");
}

TEST_F(LibraryRequestTest, BytesOfARequestAreSentAsTheyAre) {
  server_.OnAny(Script().Send(kOk));
  const auto request = To("/");
  EXPECT_EQ(request->Send("X-Name: \xFC\x80\xC3\r\n"), 0U);
  EXPECT_EQ(server_.Requests().at(0).Header("X-Name"), "\xFC\x80\xC3");
}

// What one request is sent must never reach another one, whenever some are given up.
TEST_F(LibraryRequestTest, RequestsThatAreGivenUpAtAnyMomentLeaveTheOthersAlone) {
  for (const char letter : {'a', 'b', 'c'})
    server_.On(std::string("/") + letter, Script().Send(kOk).Flood(std::string(64, letter)));
  http::ExchangeOptions options;
  const auto begin = [&](char letter) {
    options.address = server_.Url(std::string("/") + letter);
    return std::make_unique<WebExchange>(options);
  };
  const auto steady = begin('a');
  std::vector<std::byte> bytes(4096);
  std::size_t taken = 0;
  for (int round = 0; round < 60; ++round) {
    const char letter = round % 2 == 0 ? 'b' : 'c';
    auto given_up = begin(letter);
    for (int wait = 0; wait < round % 6; ++wait) given_up->Work(1ms);
    for (std::size_t count = given_up->Take(bytes); count > 0; --count)
      ASSERT_EQ(bytes[count - 1], std::byte(letter)) << round;
    given_up.reset();
    for (std::size_t count = steady->Take(bytes); count > 0; --count, ++taken)
      ASSERT_EQ(bytes[count - 1], std::byte{'a'}) << round;
    ASSERT_FALSE(steady->HasEnded());
    steady->Work(1ms);
  }
  EXPECT_GT(taken, 0U);
}

/// What is set of a library's options while it lives; passed on.
class SetOptions {
 public:
  SetOptions() { set_.clear(); }
  static bool Has(DWORD option) { return set_.contains(option); }
  /// Nothing when it was not set to a number.
  static std::optional<DWORD> Value(DWORD option) {
    return Has(option) ? std::optional(set_.at(option)) : std::nullopt;
  }

 private:
  static BOOL WINAPI Note(HINTERNET handle, DWORD option, void* value, DWORD size) {
    if (size == sizeof(DWORD)) std::memcpy(&set_[option], value, size);
    return original_(handle, option, value, size);
  }

  static inline std::map<DWORD, DWORD> set_;
  static inline const auto original_ = __imp_InternetSetOptionA;
  const ReplacedImport<decltype(&InternetSetOptionA)> replaced_{__imp_InternetSetOptionA, &Note};
};

// One attempt would be one address, by the system's documentation; Wine does not know the option.
TEST_F(LibraryRequestTest, TheNumberOfAHostsAddressesThatAreTriedIsTheLibrarysOwn) {
  const SetOptions options;
  To("/");
  EXPECT_TRUE(SetOptions::Has(INTERNET_OPTION_CONNECT_TIMEOUT));
  EXPECT_FALSE(SetOptions::Has(INTERNET_OPTION_CONNECT_RETRIES));
}

// Wine knows none of these options but the time to receive a header.
TEST_F(LibraryRequestTest, IsMadeThoughTheSystemWorksOfflineAndWaitsForASilentServerUntilItIsGivenUp) {
  const SetOptions options;
  To("/");
  EXPECT_EQ(SetOptions::Value(INTERNET_OPTION_IGNORE_OFFLINE), DWORD{TRUE});
  EXPECT_EQ(SetOptions::Value(INTERNET_OPTION_RECEIVE_TIMEOUT), INFINITE);
  EXPECT_EQ(SetOptions::Value(INTERNET_OPTION_DATA_RECEIVE_TIMEOUT), INFINITE);
}

/// The result of sending; nothing when it does not come in time.
std::optional<std::uint32_t> SentInTime(LibraryRequest& request, Reading& reading) {
  auto sent = std::async(std::launch::async, [&] { return request.Send(""); });
  const bool is_in_time = sent.wait_for(kDeadline) == std::future_status::ready;
  if (!is_in_time) reading.Cancel();
  const std::uint32_t error = sent.get();
  return is_in_time ? std::optional(error) : std::nullopt;
}

TEST_F(LibraryRequestTest, AnErrorThatTheLibraryHasAtOnceIsNotWaitedFor) {
  const auto fail = +[](HINTERNET, LPCSTR, DWORD, void*, DWORD) -> BOOL {
    ::SetLastError(ERROR_INTERNET_NAME_NOT_RESOLVED);
    return FALSE;
  };
  const auto request = To("/");
  const ReplacedImport replaced(__imp_HttpSendRequestA, fail);
  EXPECT_EQ(SentInTime(*request, *reading_), static_cast<std::uint32_t>(ERROR_INTERNET_NAME_NOT_RESOLVED));
}

TEST_F(LibraryRequestTest, WithoutReportsOfTheLibraryNothingIsSent) {
  const auto fail = +[](HINTERNET, INTERNET_STATUS_CALLBACK) { return INTERNET_INVALID_STATUS_CALLBACK; };
  std::unique_ptr<LibraryRequest> request;
  {
    const ReplacedImport replaced(__imp_InternetSetStatusCallbackA, fail);
    request = To("/");
  }
  EXPECT_EQ(SentInTime(*request, *reading_), static_cast<std::uint32_t>(ERROR_INTERNET_INTERNAL_ERROR));
  request.reset();
  EXPECT_TRUE(IsReleased());
  EXPECT_EQ(server_.Connections(), 0);
}

/// A replacement of InternetReadFile that returns FALSE with an error.
template <DWORD kError>
BOOL FailToRead(HINTERNET /*request*/, void* /*bytes*/, DWORD /*size*/, DWORD* /*count*/) {
  ::SetLastError(kError);
  return FALSE;
}

TEST_F(LibraryRequestTest, AReadThatFailsGivesNoBytes) {
  server_.OnAny(Script().Send(kOk).Send("bytes"));
  const auto request = To("/");
  EXPECT_EQ(request->Send(""), 0U);
  const ReplacedImport replaced(__imp_InternetReadFile, &FailToRead<ERROR_INTERNET_CONNECTION_RESET>);
  std::string piece = "stale";
  EXPECT_EQ(request->Read(piece), static_cast<std::uint32_t>(ERROR_INTERNET_CONNECTION_RESET));
  EXPECT_EQ(piece, "");
}

TEST_F(LibraryRequestTest, AReadThatTakesTimeIsWaitedForThoughItsQueryHasCompleted) {
  server_.OnAny(Script().Send(kOk).Send("x").AwaitSignal("more").Send("bytes").Hold());
  const auto request = To("/");
  EXPECT_EQ(request->Send(""), 0U);
  std::string piece;
  EXPECT_EQ(request->Read(piece), 0U);
  const ReplacedImport replaced(__imp_InternetReadFile, &FailToRead<ERROR_IO_PENDING>);
  auto read = std::async(std::launch::async, [&] { return request->Read(piece); });
  EXPECT_EQ(read.wait_for(100ms), std::future_status::timeout) << "its query waits";
  server_.Signal("more");
  EXPECT_EQ(read.wait_for(500ms), std::future_status::timeout) << "the read waits, and nothing completes it";
  reading_->Cancel();
  EXPECT_EQ(read.get(), static_cast<std::uint32_t>(ERROR_INTERNET_OPERATION_CANCELLED));
}

TEST_F(LibraryRequestTest, ANumberThatTheLibraryDoesNotGiveIsNotThatOfTheReadBefore) {
  server_.OnAny(Script().Send(kOk).Send("x").Hold());
  const auto request = To("/");
  EXPECT_EQ(request->Send(""), 0U);
  std::string piece;
  EXPECT_EQ(request->Read(piece), 0U);
  EXPECT_EQ(piece, "x");
  const auto say_nothing = +[](HINTERNET, DWORD*, DWORD, DWORD_PTR) -> BOOL { return TRUE; };
  const ReplacedImport replaced(__imp_InternetQueryDataAvailable, say_nothing);
  auto read = std::async(std::launch::async, [&] { return request->Read(piece); });
  EXPECT_EQ(read.wait_for(kDeadline), std::future_status::ready) << "it is the end";
  reading_->Cancel();
  EXPECT_EQ(read.get(), 0U);
  EXPECT_EQ(piece, "");
}

// An option of no handle would be one of the whole process.
TEST_F(LibraryRequestTest, WithoutASessionNoOptionIsSet) {
  const SetOptions options;
  const auto fail = +[](LPCSTR, DWORD, LPCSTR, LPCSTR, DWORD) -> HINTERNET { return nullptr; };
  const ReplacedImport replaced(__imp_InternetOpenA, fail);
  const auto request = To("/");
  EXPECT_FALSE(SetOptions::Has(INTERNET_OPTION_CONNECT_TIMEOUT));
  EXPECT_FALSE(SetOptions::Has(INTERNET_OPTION_IGNORE_OFFLINE));
  EXPECT_NE(request->Send(""), 0U);
}

}  // namespace
}  // namespace platform::win32
