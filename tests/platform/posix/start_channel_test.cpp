#include "platform/posix/start_channel.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <filesystem>
#include <future>

#include "tests/support/child_process.h"
#include "tests/support/temp_folder.h"

namespace platform::posix {
namespace {

using namespace std::chrono_literals;

class StartChannelTest : public testing::Test {
 protected:
  static constexpr auto kLong = 30s;
  static constexpr auto kShort = 50ms;

  /// Asks in a thread of its own, as another process would.
  std::future<AskResult> Ask(const StartRequest& request = {}, std::chrono::milliseconds limit = kLong) {
    return std::async(std::launch::async,
                      [=, path = path_] { return AskRunningStart(path, request, limit); });
  }
  /// The next request, as soon as the descriptor says that there is one.
  static std::optional<StartRequest> NextOf(StartListener& listener) {
    std::optional<StartRequest> request;
    test_support::WaitUntil(
        [&] {
          if (!IsReadable(listener)) return false;
          request = listener.Next();
          return request.has_value();
        },
        kLong);
    return request;
  }
  static bool IsReadable(const StartListener& listener) {
    pollfd ready{listener.Descriptor(), POLLIN, 0};
    return ::poll(&ready, 1, 0) == 1;
  }
  /// A connection that says nothing by itself.
  [[nodiscard]] FileDescriptor Connect() const {
    FileDescriptor socket(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path_.copy(address.sun_path, sizeof(address.sun_path) - 1);
    EXPECT_EQ(::connect(socket.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
    return socket;
  }
  /// What a connection that sent `bytes` receives: its end at once means refused.
  static bool IsRefused(const FileDescriptor& socket) {
    pollfd ready{socket.Get(), POLLIN, 0};
    char answer = 0;
    return ::poll(&ready, 1, 30'000) == 1 && ::recv(socket.Get(), &answer, 1, 0) <= 0;
  }

  test_support::TempFolder folder_;
  std::string path_ = folder_.Path() / "x.socket";
};

TEST_F(StartChannelTest, RequestArrivesWithItsTokenAndItsArgument) {
  StartListener listener(path_);
  const StartRequest sent{"gnome-4711_TIME815",
                          "/tmp/Gr\xC3\xB6\xDF"
                          "e \xFF.m3u"};
  auto answer = Ask(sent);
  const auto request = NextOf(listener);
  ASSERT_TRUE(request);
  EXPECT_EQ(request->activation_token, sent.activation_token);
  EXPECT_EQ(request->argument, sent.argument);
  listener.Accept();
  EXPECT_EQ(answer.get(), AskResult::kAccepted);
  EXPECT_FALSE(listener.Next());
}

TEST_F(StartChannelTest, RequestThatIsNotAcceptedIsRefusedByTheNextCall) {
  StartListener listener(path_);
  auto answer = Ask();
  ASSERT_TRUE(NextOf(listener));
  EXPECT_FALSE(listener.Next());
  EXPECT_EQ(answer.get(), AskResult::kRefused);
  listener.Accept();  // there is nobody any more; nothing happens
}

TEST_F(StartChannelTest, SeveralRequestsAreServedOneAfterTheOther) {
  StartListener listener(path_);
  std::vector<std::future<AskResult>> answers;
  for (int start = 0; start < 5; ++start) answers.push_back(Ask());
  for (int start = 0; start < 5; ++start) {
    ASSERT_TRUE(NextOf(listener));
    listener.Accept();
  }
  for (auto& answer : answers) EXPECT_EQ(answer.get(), AskResult::kAccepted);
}

TEST_F(StartChannelTest, WithoutAListenerTheAnswerIsARefusalAtOnce) {
  EXPECT_EQ(AskRunningStart(path_, {}, kLong), AskResult::kRefused) << "no socket";
  { const StartListener gone(path_); }
  EXPECT_FALSE(std::filesystem::exists(path_)) << "the listener removes its socket";
  folder_.Write("x.socket", "no socket");
  EXPECT_EQ(AskRunningStart(path_, {}, kLong), AskResult::kRefused) << "a file of that name";
  EXPECT_EQ(AskRunningStart(folder_.Path() / "missing" / "x", {}, kLong), AskResult::kRefused);
}

TEST_F(StartChannelTest, ListenerThatDoesNotLookIsSilentUntilTheLimit) {
  const StartListener listener(path_);
  EXPECT_EQ(AskRunningStart(path_, {}, kShort), AskResult::kSilent);
}

TEST_F(StartChannelTest, ListenerThatEndsRefusesThoseWhoWait) {
  auto listener = std::make_unique<StartListener>(path_);
  auto answer = Ask();
  ASSERT_TRUE(test_support::WaitUntil([&] { return IsReadable(*listener); }, kLong));
  listener.reset();
  EXPECT_EQ(answer.get(), AskResult::kRefused);
}

TEST_F(StartChannelTest, SocketThatAKilledStartLeftIsReplaced) {
  const FileDescriptor stale(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0));
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path_.copy(address.sun_path, sizeof(address.sun_path) - 1);
  ASSERT_EQ(::bind(stale.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
  StartListener listener(path_);
  auto answer = Ask();
  ASSERT_TRUE(NextOf(listener));
  listener.Accept();
  EXPECT_EQ(answer.get(), AskResult::kAccepted);
}

TEST_F(StartChannelTest, PathMayBeLongerThanASocketsAddress) {
  path_ = folder_.Path() / std::string(120, 'a') / "x.socket";
  std::filesystem::create_directory(std::filesystem::path(path_).parent_path());
  StartListener listener(path_);
  auto answer = Ask();
  ASSERT_TRUE(NextOf(listener));
  listener.Accept();
  EXPECT_EQ(answer.get(), AskResult::kAccepted);
}

TEST_F(StartChannelTest, NobodyCanAskWhereNoSocketCanBeMade) {
  StartListener listener(folder_.Path() / "missing" / "x.socket");
  EXPECT_EQ(listener.Descriptor(), -1);
  EXPECT_FALSE(listener.Next());
  std::filesystem::create_directory(path_);
  EXPECT_EQ(StartListener(path_).Descriptor(), -1) << "a folder of that name";
  EXPECT_TRUE(std::filesystem::is_directory(path_));
}

TEST_F(StartChannelTest, OnlyItsUserMayUseTheSocket) {
  const StartListener listener(path_);
  struct stat status {};
  ASSERT_EQ(::stat(path_.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0600U);
}

TEST_F(StartChannelTest, WhatIsNoRequestIsRefused) {
  StartListener listener(path_);
  using namespace std::string_literals;
  for (const std::string& bytes :
       {"x"s, "funkhausplayer 1"s, "funkhausplayer 2\0\0"s, "funkhausplayer 1\0token"s,
        "funkhausplayer 1\0token\0argument\0more"s, std::string(100'000, 'a'),
        "funkhausplayer 1\0\0"s + std::string(100'000, 'a')}) {
    const FileDescriptor socket = Connect();
    ASSERT_EQ(::send(socket.Get(), bytes.data(), bytes.size(), MSG_NOSIGNAL),
              static_cast<ssize_t>(bytes.size()));
    ASSERT_TRUE(test_support::WaitUntil([&] { return IsReadable(listener); }, kLong));
    while (IsReadable(listener)) EXPECT_FALSE(listener.Next());
    EXPECT_TRUE(IsRefused(socket));
  }
}

TEST_F(StartChannelTest, ThoseWhoSayNothingDelayNobodyAndAreBounded) {
  StartListener listener(path_);
  std::vector<FileDescriptor> silent;
  for (std::size_t count = 0; count < 3 * StartListener::kMostWaiting; ++count) {
    silent.push_back(Connect());
    EXPECT_FALSE(listener.Next());
  }
  EXPECT_TRUE(IsRefused(silent.front())) << "too many";
  auto answer = Ask();
  ASSERT_TRUE(NextOf(listener));
  listener.Accept();
  EXPECT_EQ(answer.get(), AskResult::kAccepted);
  silent.clear();
  EXPECT_FALSE(listener.Next());
  EXPECT_FALSE(IsReadable(listener)) << "those who went wake nobody any more";
}

}  // namespace
}  // namespace platform::posix
