#include "ui/users_guide.h"

#include "app/state/status_sentences.h"
#include "tests/support/fake_notices.h"
#include "tests/support/feature_rig.h"

namespace ui {
namespace {

using Notices = std::vector<test_support::FakeNotices::Notice>;

class UsersGuideTest : public test_support::FeatureTest {
 protected:
  void Press(const platform::Text& address) {
    const UsersGuide guide(form.ShowGuide, shell, notices, address);
    form.ShowGuide.Click();
  }

  test_support::FakeNotices notices;
};

TEST_F(UsersGuideTest, IsOpenedByTheDesktop) {
  Press(u"file:///usr/share/doc/handbuch.md");
  ASSERT_EQ(shell.launches.size(), 1U);
  EXPECT_EQ(shell.launches[0].verb, u"open");
  EXPECT_EQ(shell.launches[0].file, u"file:///usr/share/doc/handbuch.md");
  EXPECT_EQ(shell.launches[0].show, 1);
  EXPECT_TRUE(notices.notices.empty());
}

TEST_F(UsersGuideTest, MissingGuideIsReported) {
  Press(u"");
  EXPECT_TRUE(shell.launches.empty());
  EXPECT_EQ(notices.notices, (Notices{{platform::Text(app::sentences::kNoGuide), {}}}));
}

TEST_F(UsersGuideTest, GuideThatNothingOpensIsReportedWithItsAddress) {
  shell.starts = false;
  Press(u"file:///handbuch.md");
  EXPECT_EQ(notices.notices,
            (Notices{{platform::Text(app::sentences::kGuideNotOpened), {u"file:///handbuch.md"}}}));
}

}  // namespace
}  // namespace ui
