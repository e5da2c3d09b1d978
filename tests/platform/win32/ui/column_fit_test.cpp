#include "platform/win32/ui/column_fit.h"

#include "platform/win32/base/windows_api.h"

#include "tests/platform/win32/ui/rig.h"

namespace platform::win32 {
namespace {

using Widths = std::vector<int>;

class Win32ColumnFitTest : public Win32WindowTest {
 protected:
  void SetUp() override {
    list.AddColumn({u"Station", 100});
    list.AddColumn({.caption = u"Link", .width = 80, .spare_room = controls::SpareRoom::kTakes});
    list.AddColumn({.caption = u"Titel", .width = 60, .spare_room = controls::SpareRoom::kTakes});
    list.AddColumn({u"Nummer", 50});
    list.Move({0, 0, 7500, 3000});
    inventory = {{"list", &list}};
    Open();
  }
  HWND Header() const { return reinterpret_cast<HWND>(::SendMessageW(Of(list), LVM_GETHEADER, 0, 0)); }
  Widths Shown() const {
    Widths widths;
    for (int column = 0; column < 4; ++column)
      widths.push_back(
          static_cast<int>(::SendMessageW(Of(list), LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column), 0)));
    return widths;
  }
  int Room() const {
    RECT all{};
    ::GetClientRect(Of(list), &all);
    return static_cast<int>(all.right);
  }
  int Edge(int column) const {
    RECT place{};
    ::SendMessageW(Header(), HDM_GETITEMRECT, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&place));
    return static_cast<int>(place.right);
  }
  void Mouse(UINT message, int across, WPARAM keys) const {
    ::SendMessageW(Header(), message, keys, MAKELPARAM(across, 8));
  }
  void Press(int column) const { Mouse(WM_LBUTTONDOWN, Edge(column) - 1, MK_LBUTTON); }

  controls::ListView list;
};

TEST_F(Win32ColumnFitTest, LinkAndTitleShareTheRoomThatTheOthersLeave) {
  const int spare = Room() - 290;
  ASSERT_GT(spare, 100);
  EXPECT_EQ(Shown(), (Widths{100, 80 + spare / 2, 60 + spare - spare / 2, 50}));
  list.Move({0, 0, 3000, 3000});
  EXPECT_EQ(Shown(), (Widths{100, 80, 60, 50})) << "no room to share";
}

TEST_F(Win32ColumnFitTest, ScrollBarThatComesTakesItsRoomFromThem) {
  const int before = Room();
  std::vector<controls::ListRow> rows(100);
  list.AddRows(std::move(rows));
  loop.ProcessPendingMessages();
  ASSERT_LT(Room(), before);
  EXPECT_EQ(Shown()[0] + Shown()[1] + Shown()[2] + Shown()[3], Room());
  EXPECT_EQ(::GetWindowLongPtrW(Of(list), GWL_STYLE) & WS_HSCROLL, 0);
}

TEST_F(Win32ColumnFitTest, DraggedColumnKeepsTheUsersWidthAndTheOthersShareTheRest) {
  const int from = Edge(1);
  const int width = Shown()[1];
  Press(1);
  Mouse(WM_MOUSEMOVE, from - 21, MK_LBUTTON);
  EXPECT_NEAR(Shown()[1], width - 20, 2) << "it follows the mouse";
  Mouse(WM_MOUSEMOVE, from - 41, MK_LBUTTON);
  EXPECT_EQ(list.Columns()[1].users_width, std::nullopt) << "while the button is down";
  Mouse(WM_LBUTTONUP, from - 41, 0);
  ASSERT_TRUE(Until([this] { return list.Columns()[1].users_width.has_value(); }));
  EXPECT_NEAR(*list.Columns()[1].users_width, width - 40, 2);
  EXPECT_EQ(Shown()[1], *list.Columns()[1].users_width);
  EXPECT_EQ(Shown()[0] + Shown()[1] + Shown()[2] + Shown()[3], Room());
  EXPECT_EQ(list.Columns()[2].users_width, std::nullopt);
  list.Move({0, 0, 8400, 3000});
  EXPECT_EQ(Shown()[1], *list.Columns()[1].users_width);
  EXPECT_EQ(Shown()[0] + Shown()[1] + Shown()[2] + Shown()[3], Room());
}

TEST_F(Win32ColumnFitTest, WidthOfTheProgramIsShown) {
  list.DragColumn(0, 180);
  EXPECT_EQ(Shown()[0], 180);
  EXPECT_EQ(Shown()[0] + Shown()[1] + Shown()[2] + Shown()[3], Room());
}

TEST_F(Win32ColumnFitTest, DoubleClickOnAnEdgeFitsTheColumnToItsTextsForGood) {
  list.AddRow({.cells = {u"Ein Sender mit einem Namen, der länger ist als alle anderen Namen", u"http"}});
  Mouse(WM_LBUTTONDBLCLK, Edge(0) - 1, MK_LBUTTON);
  ASSERT_TRUE(Until([this] { return list.Columns()[0].users_width.has_value(); }));
  EXPECT_GT(Shown()[0], 200);
  EXPECT_EQ(Shown()[0], *list.Columns()[0].users_width);
}

TEST_F(Win32ColumnFitTest, ColumnThatGetsWiderIsPaintedAnewAsAWhole) {
  list.AddRow({.cells = {u"Köln", u"http"}});
  loop.ProcessPendingMessages();
  ::UpdateWindow(Of(list));
  list.Move({0, 0, 8400, 3000});
  RECT dirty{};
  ::GetUpdateRect(Of(list), &dirty, FALSE);
  EXPECT_EQ(dirty.left, 0);
  ::UpdateWindow(Of(list));
  const int from = Edge(0);
  Press(0);
  Mouse(WM_MOUSEMOVE, from + 30, MK_LBUTTON);
  ::GetUpdateRect(Of(list), &dirty, FALSE);
  EXPECT_EQ(dirty.left, 0);
  Mouse(WM_LBUTTONUP, from + 30, 0);
}

TEST_F(Win32ColumnFitTest, PressOnAnEdgeIsNoDrag) {
  const int from = Edge(1);
  Press(1);
  Mouse(WM_LBUTTONUP, from - 1, 0);
  loop.ProcessPendingMessages();
  EXPECT_EQ(list.Columns()[1].users_width, std::nullopt);
}

TEST_F(Win32ColumnFitTest, ColumnThatChangesOnlyWhenItIsReleasedKeepsTheUsersWidthToo) {
  ::SetWindowLongPtrW(Header(), GWL_STYLE, ::GetWindowLongPtrW(Header(), GWL_STYLE) & ~HDS_FULLDRAG);
  const int from = Edge(1);
  const int width = Shown()[1];
  Press(1);
  Mouse(WM_MOUSEMOVE, from - 41, MK_LBUTTON);
  EXPECT_EQ(Shown()[1], width);
  Mouse(WM_LBUTTONUP, from - 41, 0);
  ASSERT_TRUE(Until([this] { return list.Columns()[1].users_width.has_value(); }));
  EXPECT_NEAR(*list.Columns()[1].users_width, width - 40, 2);
  EXPECT_EQ(Shown()[1], *list.Columns()[1].users_width);
}

TEST_F(Win32ColumnFitTest, WindowThatClosesInTheMiddleOfADragLosesNothing) {
  Press(1);
  Mouse(WM_MOUSEMOVE, Edge(1) + 30, MK_LBUTTON);
  form.Close();
  loop.ProcessPendingMessages();
  EXPECT_EQ(list.Columns()[1].users_width, std::nullopt);
}

TEST_F(Win32ColumnFitTest, ColumnThatComesIsFittedIn) {
  list.AddColumn({u"Neu", 70});
  const auto fifth = static_cast<int>(::SendMessageW(Of(list), LVM_GETCOLUMNWIDTH, 4, 0));
  EXPECT_EQ(fifth, 70);
  EXPECT_EQ(Shown()[0] + Shown()[1] + Shown()[2] + Shown()[3] + fifth, Room());
}

}  // namespace
}  // namespace platform::win32
