#include "platform/posix/trial.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace platform::posix {
namespace {

using namespace std::chrono_literals;

constexpr auto kLong = 30s;

TEST(Trial, AnswersWhatTheActionAnswers) {
  EXPECT_TRUE(SucceedsInCopy([] { return true; }, kLong));
  EXPECT_FALSE(SucceedsInCopy([] { return false; }, kLong));
}

TEST(Trial, AnActionThatEndsTheProcessFails) {
  EXPECT_FALSE(SucceedsInCopy([]() -> bool { std::abort(); }, kLong));
  EXPECT_FALSE(SucceedsInCopy([]() -> bool { ::_exit(0); }, kLong));
}

TEST(Trial, AnActionThatNeverReturnsIsEnded) {
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(SucceedsInCopy(
      []() -> bool {
        while (true) ::pause();
      },
      100ms));
  EXPECT_LT(std::chrono::steady_clock::now() - start, kLong);
}

TEST(Trial, NothingOfTheCopyComesBack) {
  int value = 1;
  testing::internal::CaptureStderr();
  EXPECT_TRUE(SucceedsInCopy(
      [&value] {
        value = 2;
        std::fputs("noise", stderr);
        std::fflush(stderr);
        return true;
      },
      kLong));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(value, 1);
}

}  // namespace
}  // namespace platform::posix
