#include "platform/win32/internet/body_piece.h"

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>
#include <wininet.h>

#include <deque>
#include <string>
#include <utility>
#include <vector>

namespace platform::win32 {
namespace {

constexpr std::size_t kMost = 100;

/// A library that answers queries as a test says, and reads from `bytes`.
class BodyPiece : public testing::Test {
 protected:
  std::uint32_t Read(std::deque<Completion> queries) {
    wanted_.clear();
    queries_ = std::move(queries);
    const BodyOperations operations{[this] {
                                      if (queries_.empty()) return Completion{ERROR_INVALID_FUNCTION};
                                      const Completion next = queries_.front();
                                      queries_.pop_front();
                                      return next;
                                    },
                                    [this](std::size_t wanted, std::string& piece) {
                                      wanted_.push_back(wanted);
                                      piece = bytes_.substr(0, wanted);
                                      bytes_.erase(0, piece.size());
                                      return Completion{read_error_, false, piece.size()};
                                    }};
    return ReadPiece(operations, kMost, piece_);
  }

  static constexpr Completion kUnknown{0, false, 0};
  static constexpr Completion Known(std::size_t count) { return {0, true, count}; }

  std::string bytes_;
  std::string piece_ = "stale";
  std::uint32_t read_error_ = 0;
  std::deque<Completion> queries_;
  std::vector<std::size_t> wanted_;
};

TEST_F(BodyPiece, WhatIsThereIsRead) {
  bytes_ = "bytes";
  EXPECT_EQ(Read({Known(5)}), 0U);
  EXPECT_EQ(piece_, "bytes");
  bytes_ = "more";
  EXPECT_EQ(Read({{0, false, 4}}), 0U) << "after a wait";
  EXPECT_EQ(piece_, "more");
  EXPECT_EQ(wanted_, std::vector<std::size_t>{4});
}

TEST_F(BodyPiece, NoMoreIsReadAtATimeThanIsWanted) {
  bytes_ = std::string(kMost + 1, 'x');
  EXPECT_EQ(Read({Known(kMost + 1)}), 0U);
  EXPECT_EQ(piece_.size(), kMost);
}

TEST_F(BodyPiece, NothingThatIsSaidAtOnceIsTheEnd) {
  bytes_ = "none of it";
  EXPECT_EQ(Read({Known(0)}), 0U);
  EXPECT_EQ(piece_, "");
  EXPECT_EQ(Read({kUnknown, Known(0)}), 0U) << "after a wait";
  EXPECT_EQ(piece_, "");
  EXPECT_TRUE(wanted_.empty());
}

TEST_F(BodyPiece, ANumberThatIsNotKnownAfterAWaitIsAskedForAgain) {
  bytes_ = "bytes";
  EXPECT_EQ(Read({kUnknown, Known(5)}), 0U);
  EXPECT_EQ(piece_, "bytes");
}

TEST_F(BodyPiece, ANumberThatStaysUnknownIsNoEnd) {
  const std::string all = "bytes";
  bytes_ = all;
  for (const char next : all) {
    EXPECT_EQ(Read({kUnknown, kUnknown}), 0U);
    EXPECT_EQ(piece_, std::string(1, next));
    EXPECT_EQ(wanted_, std::vector<std::size_t>{1}) << "a read of more would wait for all of it";
  }
  EXPECT_EQ(Read({kUnknown, kUnknown}), 0U);
  EXPECT_EQ(piece_, "") << "the end, which the read has met";
}

TEST_F(BodyPiece, FailuresEndIt) {
  EXPECT_EQ(Read({{ERROR_INTERNET_TIMEOUT}}), static_cast<std::uint32_t>(ERROR_INTERNET_TIMEOUT));
  EXPECT_EQ(Read({kUnknown, {ERROR_INTERNET_TIMEOUT}}), static_cast<std::uint32_t>(ERROR_INTERNET_TIMEOUT));
  EXPECT_TRUE(wanted_.empty());
  read_error_ = ERROR_INTERNET_CONNECTION_RESET;
  EXPECT_EQ(Read({Known(1)}), static_cast<std::uint32_t>(ERROR_INTERNET_CONNECTION_RESET));
}

TEST_F(BodyPiece, AFailureHasACause) {
  EXPECT_EQ(CauseOf(Operation::kQuery, 0), 0U) << "its number is 0";
  for (const Operation operation : {Operation::kSend, Operation::kRead})
    EXPECT_EQ(CauseOf(operation, 0), static_cast<std::uint32_t>(ERROR_INTERNET_INTERNAL_ERROR));
  for (const Operation operation : {Operation::kSend, Operation::kQuery, Operation::kRead})
    EXPECT_EQ(CauseOf(operation, ERROR_INTERNET_TIMEOUT), static_cast<std::uint32_t>(ERROR_INTERNET_TIMEOUT));
}

}  // namespace
}  // namespace platform::win32
