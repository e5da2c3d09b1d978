#include "ui/information_panel.h"

#include "tests/support/feature_rig.h"

namespace ui {
namespace {

using platform::Text;

class InformationPanelTest : public test_support::FeatureTest {
 protected:
  void GivePicture(const Text& station) {
    files.files[u"C:\\Programme\\Funkhaus\\RadioJPG\\" + station + u".jpg"] = "jpg";
  }

  InformationPanel panel{{.Frame3 = form.Frame3,
                          .Label4 = form.Label4,
                          .Label3 = form.Label3,
                          .Image1 = form.Image1,
                          .CmdInfoClose = form.CmdInfoClose},
                         {.environment = environment, .files = files, .icons = icons}};
};

TEST_F(InformationPanelTest, TitleShowsThePanel) {
  panel.ShowTitle(u"Lied");
  EXPECT_TRUE(form.Frame3.Visible());
  EXPECT_EQ(form.Label4.Caption(), u"Lied");
}

TEST_F(InformationPanelTest, NoTitleIsSaidInThePanelWhichStaysAsItIs) {
  for (const bool visible : {false, true}) {
    form.Frame3.SetVisible(visible);
    form.Label4.SetCaption(u"Lied");
    panel.ShowNoTitle();
    EXPECT_EQ(form.Label4.Caption(), u"Keine Info!");
    EXPECT_EQ(form.Frame3.Visible(), visible);
  }
}

TEST_F(InformationPanelTest,
       PictureOfASelectedStationShowsThePanelAndIsFittedIntoItsLowerRightWithItsAspect) {
  GivePicture(u"A");
  icons.picture_width = 30000;
  icons.picture_height = 15000;
  form.Label3.SetCaption(u"alt");
  panel.ShowSelected(u"A");
  EXPECT_TRUE(form.Frame3.Visible());
  EXPECT_TRUE(form.Image1.Visible());
  EXPECT_EQ(form.Label3.Caption(), u"");
  EXPECT_EQ(icons.picture_paths[form.Image1.Picture()], u"C:\\Programme\\Funkhaus\\RadioJPG\\A.jpg");
  const controls::Place picture = form.Image1.GetPlace();
  const controls::Place frame = form.Frame3.GetPlace();
  EXPECT_GT(picture.width, 0);
  EXPECT_NEAR(picture.width, 2 * picture.height, 2);
  EXPECT_GE(picture.left, frame.width / 2);
  EXPECT_EQ(picture.left, frame.width - picture.width);
  EXPECT_EQ(picture.top, frame.height - picture.height - 30);
  EXPECT_GE(picture.top, form.Label4.GetPlace().top + form.Label4.GetPlace().height);
}

TEST_F(InformationPanelTest, SelectedStationWithoutAPictureHidesAndClearsTheImageAndLeavesThePanel) {
  GivePicture(u"A");
  panel.ShowSelected(u"A");
  ASSERT_EQ(icons.live_pictures, 1);
  for (const bool visible : {true, false}) {
    form.Frame3.SetVisible(visible);
    form.Label3.SetCaption(u"alt");
    panel.ShowSelected(u"B");
    EXPECT_FALSE(form.Image1.Visible());
    EXPECT_EQ(form.Image1.Picture(), 0U);
    EXPECT_EQ(form.Label3.Caption(), u"");
    EXPECT_EQ(form.Frame3.Visible(), visible);
    EXPECT_EQ(icons.live_pictures, 0);
  }
}

TEST_F(InformationPanelTest, TallPictureKeepsItsAspectToo) {
  GivePicture(u"A");
  icons.picture_width = 15000;
  icons.picture_height = 30000;
  panel.ShowSelected(u"A");
  const controls::Place picture = form.Image1.GetPlace();
  EXPECT_GT(picture.width, 0);
  EXPECT_NEAR(picture.height, 2 * picture.width, 2);
  EXPECT_LE(picture.top + picture.height, form.Frame3.GetPlace().height);
}

TEST_F(InformationPanelTest, PictureIsReleasedWhenTheNextStationsIsShown) {
  for (const char16_t* name : {u"A", u"B"}) GivePicture(name);
  for (const char16_t* name : {u"A", u"B", u"A"}) {
    panel.ShowSelected(name);
    EXPECT_EQ(icons.live_pictures, 1);
    EXPECT_EQ(icons.picture_paths[form.Image1.Picture()],
              u"C:\\Programme\\Funkhaus\\RadioJPG\\" + Text(name) + u".jpg");
  }
}

TEST_F(InformationPanelTest, PictureThatCannotBeDecodedLeavesNoneOfTheStationBefore) {
  GivePicture(u"A");
  GivePicture(u"B");
  icons.loadable = [](const Text& path) { return path.ends_with(u"B.jpg"); };
  panel.ShowSelected(u"B");
  panel.ShowSelected(u"A");
  EXPECT_EQ(form.Image1.Picture(), 0U);
  EXPECT_EQ(icons.live_pictures, 0);
}

TEST_F(InformationPanelTest, OpenedStationShowsThePanelItsInformationAndItsPicture) {
  GivePicture(u"A");
  panel.ShowOpened(u"A", u"Genre: Rock");
  EXPECT_TRUE(form.Frame3.Visible());
  EXPECT_TRUE(form.Image1.Visible());
  EXPECT_NE(form.Image1.Picture(), 0U);
  EXPECT_EQ(form.Label3.Caption(), u"Genre: Rock");
}

TEST_F(InformationPanelTest, OpenedStationWithoutAPictureLeavesTheImageAsItWas) {
  form.Image1.SetVisible(true);
  form.Image1.SetPicture(99);
  panel.ShowOpened(u"A", u"");
  EXPECT_TRUE(form.Image1.Visible());
  EXPECT_EQ(form.Image1.Picture(), 99U);
  form.Image1.SetVisible(false);
  panel.ShowOpened(u"A", u"");
  EXPECT_FALSE(form.Image1.Visible());
}

TEST_F(InformationPanelTest, StopHidesThePanelAndEmptiesItsInformation) {
  panel.ShowOpened(u"A", u"Genre: Rock");
  panel.ShowTitle(u"Lied");
  panel.ShowStopped();
  EXPECT_FALSE(form.Frame3.Visible());
  EXPECT_EQ(form.Label3.Caption(), u"");
  EXPECT_EQ(form.Label4.Caption(), u"Lied") << "the title stays for the next time";
}

TEST_F(InformationPanelTest, CanBeClosed) {
  panel.ShowTitle(u"Lied");
  form.CmdInfoClose.Click();
  EXPECT_FALSE(form.Frame3.Visible());
}

}  // namespace
}  // namespace ui
