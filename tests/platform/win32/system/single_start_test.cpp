#include "platform/win32/system/single_start.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <thread>

#include "tests/support/temp_folder.h"

namespace platform::win32 {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using Outcome = SingleStart::Outcome;

class Win32SingleStartTest : public testing::Test {
 protected:
  std::unique_ptr<SingleStart> Start(const std::string& argument, milliseconds limit = seconds(20)) {
    return std::make_unique<SingleStart>(place_, StartRequest{{}, argument}, limit);
  }
  /// The running start answers like this from now on.
  void AnswerWith(StartRequests& requests, bool accepts) {
    requests.Arrived = [this, &requests, accepts] {
      const auto request = requests.Next();
      ASSERT_TRUE(request);
      arguments_.push_back(request->argument);
      if (accepts) requests.Accept();
    };
  }

  test_support::TempFolder folder_;
  Text place_ = folder_.TextPath("start");
  std::vector<std::string> arguments_;
};

TEST_F(Win32SingleStartTest, TheFirstRunsAndALaterOneHandsOverItsArgument) {
  const auto first = Start("");
  ASSERT_EQ(first->Get(), Outcome::kRuns);
  AnswerWith(*first->Requests(), true);
  const auto later = Start("K\xC3\xB6rbe.m3u");
  EXPECT_EQ(later->Get(), Outcome::kHandedOver);
  EXPECT_EQ(later->Requests(), nullptr);
  EXPECT_EQ(arguments_, std::vector<std::string>{"K\xC3\xB6rbe.m3u"});
  EXPECT_EQ(first->Requests()->Next(), std::nullopt) << "it has been answered";
}

TEST_F(Win32SingleStartTest, LetterCaseOfThePlaceDoesNotCountAndAnotherPlaceIsAnother) {
  const auto first = Start("");
  AnswerWith(*first->Requests(), true);
  place_ = folder_.TextPath("START");
  EXPECT_EQ(Start("")->Get(), Outcome::kHandedOver);
  place_ = folder_.TextPath("other");
  EXPECT_EQ(Start("")->Get(), Outcome::kRuns);
}

TEST_F(Win32SingleStartTest, ARefusedStartWaitsUntilItsLimit) {
  const auto first = Start("");
  AnswerWith(*first->Requests(), false);
  EXPECT_EQ(Start("", milliseconds(200))->Get(), Outcome::kUnanswered);
  EXPECT_GT(arguments_.size(), 1U) << "it asks again";
  EXPECT_LE(arguments_.size(), 11U) << "but rests in between";
}

TEST_F(Win32SingleStartTest, AStartThatNobodyAnswersYetIsRefused) {
  const auto first = Start("");
  EXPECT_EQ(Start("", milliseconds(100))->Get(), Outcome::kUnanswered);
}

TEST_F(Win32SingleStartTest, TheNextOneTakesThePlaceOfOneThatEnds) {
  auto first = Start("");
  AnswerWith(*first->Requests(), false);
  const auto requests = first->Requests();
  requests->Arrived = [&] { static_cast<void>(requests->Next()); };
  std::thread later([this] {
    const auto second = Start("");
    EXPECT_EQ(second->Get(), Outcome::kRuns);
  });
  std::this_thread::sleep_for(milliseconds(100));
  first.reset();
  later.join();
}

TEST_F(Win32SingleStartTest, ASilentStartIsGivenUpAtTheLimit) {
  const auto first = Start("");
  Outcome outcome = Outcome::kRuns;
  // This thread processes no messages while it waits for the other one.
  std::thread([&] { outcome = Start("", milliseconds(300))->Get(); }).join();
  EXPECT_EQ(outcome, Outcome::kUnanswered);
}

TEST_F(Win32SingleStartTest, TooLongAnArgumentIsRefused) {
  const auto first = Start("");
  AnswerWith(*first->Requests(), true);
  EXPECT_EQ(Start(std::string(StartListener::kLongestRequest, 'x'))->Get(), Outcome::kHandedOver);
  EXPECT_EQ(Start(std::string(StartListener::kLongestRequest + 1, 'x'), milliseconds(100))->Get(),
            Outcome::kUnanswered);
}

}  // namespace
}  // namespace platform::win32
