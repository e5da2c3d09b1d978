#include "controls/form.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace controls {
namespace {

class FormTest : public testing::Test {
 protected:
  FormTest() {
    subscriptions_ += form_.QueryUnload.Subscribe([this] { Note("query"); });
    subscriptions_ += form_.Unloaded.Subscribe([this] { Note("unloaded"); });
    subscriptions_ += form_.Closed.Subscribe([this] { Note("closed"); });
    subscriptions_ += form_.Resized.Subscribe([this] { Note("resized"); });
  }
  void Note(const std::string& what) {
    log_.push_back(what + (form_.Closing() ? ", closing" : "") + (form_.IsClosed() ? ", is closed" : ""));
  }

  Form form_;
  std::vector<std::string> log_;
  Subscriptions subscriptions_;
};

using Log = std::vector<std::string>;

TEST_F(FormTest, OtherLimitsOfTheSizeAreAnnounced) {
  int changes = 0;
  const auto changed = form_.Changed.Subscribe([&] { ++changes; });
  form_.SetSmallestSize(100, 200);
  form_.SetFixedSize(true);
  EXPECT_EQ(form_.SmallestWidthIfLower(), 100) << "the usual one";
  form_.SetSmallestWidthIfLower(300);
  EXPECT_EQ(form_.SmallestWidthIfLower(), 300);
  EXPECT_EQ(form_.SmallestWidth(), 100);
  EXPECT_EQ(form_.SmallestHeight(), 200);
  EXPECT_TRUE(form_.FixedSize());
  EXPECT_EQ(changes, 4);
}

TEST_F(FormTest, ClosingAsksThenUnloadsThenIsClosed) {
  EXPECT_FALSE(form_.Closing());
  form_.Close();
  EXPECT_TRUE(form_.IsClosed());
  EXPECT_EQ(log_, (Log{"query, closing", "unloaded, closing", "closed, closing, is closed"}));
}

TEST_F(FormTest, ClosingAgainMeanwhileOrAfterwardsDoesNothing) {
  const auto again = form_.QueryUnload.Subscribe([this] { form_.Close(); });
  form_.Close();
  form_.Close();
  EXPECT_EQ(log_.size(), 3U);
}

TEST_F(FormTest, ReasonIsTheUserUnlessTheSessionEnds) {
  Form by_user;
  by_user.Close();
  EXPECT_EQ(by_user.Reason(), CloseReason::kUser);

  const auto look = form_.QueryUnload.Subscribe(
      [this] { EXPECT_EQ(form_.Reason(), CloseReason::kSessionEnd) << "readable while asking"; });
  form_.Close(CloseReason::kSessionEnd);
  EXPECT_EQ(form_.Reason(), CloseReason::kSessionEnd);
}

TEST_F(FormTest, SessionEndWhileTheUserIsAskedClosesOnce) {
  const auto end = form_.QueryUnload.Subscribe([this] { form_.Close(CloseReason::kSessionEnd); });
  form_.Close();
  EXPECT_EQ(form_.Reason(), CloseReason::kSessionEnd);
  EXPECT_EQ(log_.size(), 3U);
  form_.Close();
  EXPECT_EQ(form_.Reason(), CloseReason::kSessionEnd) << "a later request of the user changes nothing";
}

TEST_F(FormTest, ResizingKeepsThePlaceAndReportsTheNewSize) {
  form_.Move({10, 20, 300, 400});
  form_.Resize(500, 600);
  EXPECT_EQ(form_.GetPlace(), (Place{10, 20, 500, 600}));
  EXPECT_EQ(log_, Log{"resized"});
}

TEST_F(FormTest, ANegativeSizeIsRefused) {
  form_.Move({10, 20, 300, 400});
  form_.Resize(-1, 600);
  EXPECT_EQ(form_.GetPlace(), (Place{10, 20, 300, 400}));
  EXPECT_EQ(log_, Log{});
}

}  // namespace
}  // namespace controls
