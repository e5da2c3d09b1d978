#include "platform/posix/single_start.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/stat.h>

#include <filesystem>
#include <future>
#include <optional>

#include "tests/platform/posix/child_process.h"
#include "tests/support/child_process.h"
#include "tests/support/temp_folder.h"

namespace platform::posix {
namespace {

using namespace std::chrono_literals;

class SingleStartTest : public testing::Test {
 protected:
  using Outcome = SingleStart::Outcome;
  static constexpr auto kLong = 30s;
  static constexpr auto kShort = 100ms;

  [[nodiscard]] SingleStart Make(std::chrono::milliseconds limit = kLong) const {
    return {places_, {"token", "argument"}, limit};
  }
  /// A later start, which would be a process of its own.
  [[nodiscard]] std::future<Outcome> StartLater() const {
    return std::async(std::launch::async, [this] { return Make().Get(); });
  }
  static bool WaitUntilAsked(const SingleStart& start) {
    const auto asked = [&] {
      pollfd ready{start.Requests()->Descriptor(), POLLIN, 0};
      return ::poll(&ready, 1, 0) == 1;
    };
    return test_support::WaitUntil(asked, kLong);
  }
  /// Nothing when none comes. A later start connects first, which shows already, and then asks.
  static std::optional<StartRequest> WaitForRequest(const SingleStart& start) {
    std::optional<StartRequest> request;
    test_support::WaitUntil([&] { return (request = start.Requests()->Next()).has_value(); }, kLong);
    return request;
  }
  /// Refuses or accepts what is asked until `later` has its outcome.
  static Outcome Serve(SingleStart& start, std::future<Outcome>& later, bool accept) {
    test_support::WaitUntil(
        [&] {
          while (start.Requests()->Next()) {
            if (accept) start.Requests()->Accept();
          }
          return later.wait_for(0s) == std::future_status::ready;
        },
        kLong);
    return later.get();
  }

  test_support::TempFolder folder_;
  SingleStart::Places places_{folder_.Path() / "x.lock", folder_.Path() / "x.socket"};
};

TEST_F(SingleStartTest, FirstOneRunsAndCanBeAsked) {
  const SingleStart first = Make();
  EXPECT_EQ(first.Get(), Outcome::kRuns);
  ASSERT_NE(first.Requests(), nullptr);
  EXPECT_GE(first.Requests()->Descriptor(), 0);
}

TEST_F(SingleStartTest, LaterOneIsHandedOver) {
  SingleStart first = Make();
  auto later = StartLater();
  const auto request = WaitForRequest(first);
  ASSERT_TRUE(request);
  EXPECT_EQ(request->activation_token, "token");
  EXPECT_EQ(request->argument, "argument");
  first.Requests()->Accept();
  EXPECT_EQ(later.get(), Outcome::kHandedOver);
}

TEST_F(SingleStartTest, LaterOneLeavesTheFirstItsLockAndItsSocket) {
  SingleStart first = Make();
  for (int round = 0; round < 2; ++round) {
    auto later = StartLater();
    EXPECT_EQ(Serve(first, later, true), Outcome::kHandedOver);
  }
}

TEST_F(SingleStartTest, OneWhoseFirstDoesNotAnswerGivesUpAtTheLimit) {
  const SingleStart first = Make();
  const auto before = std::chrono::steady_clock::now();
  const SingleStart later = Make(kShort);
  EXPECT_GE(std::chrono::steady_clock::now() - before, kShort);
  EXPECT_EQ(later.Get(), Outcome::kUnanswered);
  EXPECT_EQ(later.Requests(), nullptr);
}

TEST_F(SingleStartTest, OneWhoseFirstHasNoSocketGivesUpAtTheLimit) {
  StartLock lock(places_.lock);
  ASSERT_EQ(lock.Try(), StartLock::State::kHeld);
  EXPECT_EQ(Make(kShort).Get(), Outcome::kUnanswered);
}

TEST_F(SingleStartTest, OneWhoseFirstIsJustStartingWaitsForItsSocket) {
  StartLock lock(places_.lock);
  ASSERT_EQ(lock.Try(), StartLock::State::kHeld);
  auto later = StartLater();
  EXPECT_EQ(later.wait_for(kShort), std::future_status::timeout);
  StartListener listener(places_.socket);
  EXPECT_TRUE(test_support::WaitUntil([&] { return listener.Next().has_value(); }, kLong));
  listener.Accept();
  EXPECT_EQ(later.get(), Outcome::kHandedOver);
}

TEST_F(SingleStartTest, OneWhoseFirstEndsMeanwhileRuns) {
  auto first = std::make_unique<SingleStart>(Make());
  auto later = StartLater();
  ASSERT_TRUE(WaitUntilAsked(*first));
  first.reset();
  EXPECT_EQ(later.get(), Outcome::kRuns);
}

TEST_F(SingleStartTest, OneWhoseFirstRefusesBecauseItEndsRunsAfterIt) {
  auto first = std::make_unique<SingleStart>(Make());
  auto later = StartLater();
  ASSERT_TRUE(WaitForRequest(*first));
  // Looking for the next one refuses this one; it may have asked again already.
  first->Requests()->Next();
  EXPECT_EQ(later.wait_for(kShort), std::future_status::timeout);
  first.reset();
  EXPECT_EQ(later.get(), Outcome::kRuns);
}

TEST_F(SingleStartTest, OneThatOnlyWasRefusedGivesUpAtTheLimit) {
  SingleStart first = Make();
  auto later = std::async(std::launch::async, [this] { return Make(kShort).Get(); });
  EXPECT_EQ(Serve(first, later, false), Outcome::kUnanswered);
}

TEST_F(SingleStartTest, AfterAFirstThatWasKilledTheNextOneRunsAndCanBeAsked) {
  const test_support::TempFolder sign;
  const std::string running = sign.Path() / "running";
  const pid_t child = ::fork();
  if (child == 0) {
    const SingleStart start = Make();
    if (start.Get() == Outcome::kRuns) ::mkdir(running.c_str(), 0700);
    while (true) ::pause();
  }
  ASSERT_TRUE(test_support::WaitUntil([&] { return std::filesystem::exists(running); }, kLong));
  EXPECT_EQ(Make(kShort).Get(), Outcome::kUnanswered);
  auto waiting = StartLater();
  EXPECT_EQ(waiting.wait_for(kShort), std::future_status::timeout);
  ::kill(child, SIGKILL);
  ASSERT_EQ(::waitpid(child, nullptr, 0), child);
  EXPECT_EQ(waiting.get(), Outcome::kRuns) << "the one that waited";

  SingleStart next = Make();
  ASSERT_EQ(next.Get(), Outcome::kRuns);
  auto later = StartLater();
  EXPECT_EQ(Serve(next, later, true), Outcome::kHandedOver);
}

TEST_F(SingleStartTest, StartsWithOtherPlacesKnowNothingOfOneAnother) {
  const SingleStart first = Make();
  const SingleStart other({folder_.Path() / "y.lock", folder_.Path() / "y.socket"}, {}, kShort);
  EXPECT_EQ(other.Get(), Outcome::kRuns);
}

TEST_F(SingleStartTest, WithoutAPlaceForTheLockEveryOneRuns) {
  places_ = {folder_.Path() / "missing" / "x.lock", folder_.Path() / "missing" / "x.socket"};
  const SingleStart first = Make();
  const SingleStart second = Make();
  EXPECT_EQ(first.Get(), Outcome::kRuns);
  EXPECT_EQ(second.Get(), Outcome::kRuns);
  EXPECT_EQ(second.Requests(), nullptr);
}

}  // namespace
}  // namespace platform::posix
