#include "app/forms/layout.h"

#include <gtest/gtest.h>

namespace app {
namespace {

using controls::Place;

class LayoutTest : public ::testing::Test {
 protected:
  LayoutTest() {
    form1.Frame1.Move({100, 0, 8000, 3000});
    form1.Frame2.Move({60, 40, 10, 10});
    form1.SymbolListview.Move({45, 270, 10, 10});
    form1.ExplorerListFilter.Move({50, 300, 10, 10});
    form1.ProgressBar1[0].Move({0, 0, 200, 2500});
    form1.ProgressBar1[1].Move({0, 0, 210, 2500});
    form1.Frame3.Move({0, 0, 4000, 2800});
  }

  Form1 form1;
  WindowLayout layout{form1};
};

TEST_F(LayoutTest, PanelsListsAndBarsFollowTheWindow) {
  form1.form.Resize(15000, 10000);
  EXPECT_EQ(form1.Frame1.GetPlace(), (Place{100, 10000 - 3000 - 120, 8000, 3000}));
  EXPECT_EQ(form1.Frame2.GetPlace(), (Place{60, 40, 15000 - 120, 10000 - 120}));
  EXPECT_EQ(form1.SymbolListview.GetPlace(), (Place{45, 270, 14880 - 90, 9880 - 3000 - 270 - 90}));
  EXPECT_EQ(form1.ExplorerListFilter.GetPlace(), (Place{50, 300, 14880 - 90, 9880 - 3000 - 300 - 90}));
  EXPECT_EQ(form1.ProgressBar1[0].GetPlace(), (Place{100 + 8000 + 30, 6880 + 60, 200, 2500}));
  EXPECT_EQ(form1.ProgressBar1[1].GetPlace(), (Place{100 + 8000 + 200 + 60, 6880 + 60, 210, 2500}));
}

TEST_F(LayoutTest, AtExactly13600TheInformationPanelStandsBesideTheBars) {
  form1.form.Resize(13600, 10000);
  const int list_bottom = 270 + (9880 - 3000 - 270 - 90);
  EXPECT_EQ(form1.Frame3.GetPlace(), (Place{8360 + 210 + 60, list_bottom + 120, 4000, 2800}));
}

TEST_F(LayoutTest, At13599TheInformationPanelLiesOverTheListsLowerRightCorner) {
  form1.form.Resize(13599, 10000);
  const int list_bottom = 270 + (9880 - 3000 - 270 - 90);
  EXPECT_EQ(form1.Frame3.GetPlace(), (Place{13599 - 4000 - 360, list_bottom - 2800 - 200, 4000, 2800}));
}

TEST_F(LayoutTest, StepWithANegativeResultHasNoEffectAndTheNextOnesRun) {
  form1.form.Resize(15000, 10000);
  const Place list = form1.SymbolListview.GetPlace();
  const Place main_panel = form1.Frame2.GetPlace();
  form1.form.Resize(100, 200);
  EXPECT_EQ(form1.Frame2.GetPlace(), main_panel) << "its width would be negative";
  EXPECT_EQ(form1.Frame1.GetPlace().top, 200 - 3000 - 120);
  EXPECT_EQ(form1.SymbolListview.GetPlace(), list);
  EXPECT_EQ(form1.ProgressBar1[0].GetPlace().top, 200 - 3000 - 120 + 60);
  EXPECT_EQ(form1.Frame3.GetPlace().left, 100 - 4000 - 360);
}

TEST_F(LayoutTest, ListWithoutRoomKeepsItsSizeWhileTheMainPanelShrinks) {
  form1.form.Resize(15000, 10000);
  const Place list = form1.SymbolListview.GetPlace();
  form1.form.Resize(15000, 3000);
  EXPECT_EQ(form1.Frame2.GetPlace().height, 2880);
  EXPECT_EQ(form1.SymbolListview.GetPlace(), list);
}

TEST_F(LayoutTest, StatusLineStandsBelowTheInnerSizeAcrossTheWholeWidth) {
  const int height = form1.StatusLine.GetPlace().height;
  EXPECT_GT(height, 0);
  form1.form.Resize(15000, 10000);
  EXPECT_EQ(form1.StatusLine.GetPlace(), (Place{0, 10000, 15000, height}));
  form1.form.Resize(100, 200);
  EXPECT_EQ(form1.StatusLine.GetPlace(), (Place{0, 200, 100, height}));
}

TEST_F(LayoutTest, SizesOfBottomPanelBarsAndInformationPanelNeverChange) {
  for (const int width : {200, 9000, 13599, 13600, 30000}) {
    form1.form.Resize(width, width);
    EXPECT_EQ(form1.Frame1.GetPlace().width, 8000);
    EXPECT_EQ(form1.Frame3.GetPlace().height, 2800);
    EXPECT_EQ(form1.ProgressBar1[1].GetPlace().width, 210);
  }
}

}  // namespace
}  // namespace app
