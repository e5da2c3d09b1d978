#include "ui/title_notice.h"

#include "tests/ui/desktop_fixture.h"

namespace app {
namespace {

constexpr char16_t kRemembered[] = u"C:\\Zustand\\0815.notices";
using HeadingsAndLines = std::vector<std::pair<Text, Text>>;

class TitleNoticeTest : public DesktopTest {
 protected:
  void NewTitle(const std::string& title) {
    SendTitle(u"b", title);
    Form().Timer2.Fire();
  }
};

TEST_F(TitleNoticeTest, NewTitleOfAHiddenWindowIsShownWithItsStation) {
  Start();
  Form().TitleNotices.Click();
  Play(u"b");
  Form().form.SetInSight(false);
  NewTitle("Drei - Lied C");
  EXPECT_EQ(desktop.notifications.shown, (HeadingsAndLines{{u"Drei - Lied C", u"b"}}));
  Form().Timer2.Fire();
  EXPECT_EQ(desktop.notifications.shown.size(), 1U) << "the same title is not new";
}

TEST_F(TitleNoticeTest, NothingPopsUpUnlessTheUserWantsIt) {
  Start();
  EXPECT_FALSE(Form().TitleNotices.Checked());
  Play(u"b");
  Form().form.SetInSight(false);
  NewTitle("Drei - Lied C");
  EXPECT_TRUE(desktop.notifications.shown.empty());
}

TEST_F(TitleNoticeTest, NothingIsShownWhileTheWindowIsInSightOrTheTitleEnds) {
  Start();
  Form().TitleNotices.Click();
  Play(u"b");
  NewTitle("Drei - Lied C");
  Form().form.SetInSight(false);
  NewTitle("");
  EXPECT_TRUE(desktop.notifications.shown.empty());
}

TEST_F(TitleNoticeTest, NotificationGoesWhenTheWindowIsSeenAgainAndWithStop) {
  Start();
  Form().TitleNotices.Click();
  Play(u"b");
  Form().form.SetInSight(false);
  NewTitle("Drei - Lied C");
  ASSERT_TRUE(desktop.notifications.visible);
  Form().form.SetInSight(true);
  EXPECT_FALSE(desktop.notifications.visible);
  Form().form.SetInSight(false);
  NewTitle("Vier - Lied D");
  ASSERT_TRUE(desktop.notifications.visible);
  Stop();
  EXPECT_FALSE(desktop.notifications.visible);
}

TEST_F(TitleNoticeTest, NotificationGoesWithTheProgramAndWithTheWish) {
  Start();
  Form().TitleNotices.Click();
  Play(u"b");
  Form().form.SetInSight(false);
  NewTitle("Drei - Lied C");
  Form().TitleNotices.Click();
  EXPECT_FALSE(desktop.notifications.visible);
  Form().TitleNotices.Click();
  NewTitle("Vier - Lied D");
  ASSERT_TRUE(desktop.notifications.visible);
  Form().form.Close();
  EXPECT_FALSE(desktop.notifications.visible);
}

TEST_F(TitleNoticeTest, TitleThatIsKnownAtTheStartIsShownThenAndNotAgainAtTheNextStart) {
  Start();
  Form().TitleNotices.Click();
  Select(u"b");
  Form().form.SetInSight(false);
  Form().Command1.Click();
  EXPECT_EQ(desktop.notifications.shown, (HeadingsAndLines{{u"Zwei - Lied B", u"b"}}));
  Form().Command1.Click();
  EXPECT_EQ(desktop.notifications.shown.size(), 1U);
}

TEST_F(TitleNoticeTest, WishIsRememberedInAFileOfTheProgramsOwn) {
  Start();
  Form().TitleNotices.Click();
  EXPECT_TRUE(files.files.contains(kRemembered));
  EXPECT_EQ(files.files[kOptIniPath], "");
  window.reset();
  Start();
  EXPECT_TRUE(Form().TitleNotices.Checked());
  Form().TitleNotices.Click();
  EXPECT_FALSE(files.files.contains(kRemembered));
  window.reset();
  Start();
  EXPECT_FALSE(Form().TitleNotices.Checked());
}

}  // namespace
}  // namespace app
