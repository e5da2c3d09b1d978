// What the user does in a list: keys, clicks, the header, and what has its turn when.

#include "platform/win32/base/windows_api.h"

#include <vector>

#include "platform/win32/ui/list_menu.h"
#include "tests/platform/win32/ui/list_rig.h"

namespace platform::win32 {
namespace {

constexpr LPARAM kHeldDown = 1 | (1 << 30);

class Win32ListInputTest : public Win32ListTest {
 protected:
  Win32ListInputTest() {
    notes += list.SelectionChanged.Subscribe([this] { selected.push_back(list.SelectedRow()); });
    notes += list.SelectedRowClicked.Subscribe([this] { ++clicked_again; });
    notes += list.DoubleClicked.Subscribe([this](controls::RowId id) { opened.push_back(id); });
    notes += list.DeletePressed.Subscribe([this] { deleted.push_back(list.SelectedRow()); });
    notes += list.HeaderClicked.Subscribe([this](int column) { headers.push_back(column); });
  }
  using Ids = std::vector<controls::RowId>;

  /// As after the last of what is queued.
  void HandleAll() {
    bool done = false;
    const Lifetime lifetime;
    loop.HandOver(lifetime, [&done] { done = true; });
    ASSERT_TRUE(Until([&done] { return done; }));
  }
  void Rest() {
    Ask(WM_TIMER, ListBinding::kRestTimer);
    HandleAll();
  }
  /// As while a dialog is open.
  void Block() const { ::EnableWindow(window->Handle(), FALSE); }
  void Unblock() const { ::EnableWindow(window->Handle(), TRUE); }
  void ClickOnHeader(int column) const {
    const auto header = reinterpret_cast<HWND>(Ask(LVM_GETHEADER));
    RECT place{};
    ::SendMessageW(header, HDM_GETITEMRECT, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&place));
    const LPARAM middle = MAKELPARAM((place.left + place.right) / 2, (place.top + place.bottom) / 2);
    ::SendMessageW(header, WM_LBUTTONDOWN, MK_LBUTTON, middle);
    ::SendMessageW(header, WM_LBUTTONUP, 0, middle);
  }

  Ids selected;
  Ids opened;
  Ids deleted;
  std::vector<int> headers;
  int clicked_again = 0;
  controls::Subscriptions notes;
};

TEST_F(Win32ListInputTest, ArrowKeysMoveTheSelection) {
  Fill(10);
  list.Select(list.RowAt(4));
  PressKey(Of(list), VK_DOWN);
  EXPECT_TRUE(Until([this] { return list.SelectedRow() == list.RowAt(5); }));
}

TEST_F(Win32ListInputTest, KeyThatIsHeldDownOpensAndDeletesOnce) {
  Fill(10);
  list.Select(list.RowAt(4));
  Ask(WM_KEYDOWN, VK_RETURN, 1);
  Ask(WM_KEYDOWN, VK_RETURN, kHeldDown);
  Ask(WM_KEYDOWN, VK_DELETE, 1);
  Ask(WM_KEYDOWN, VK_DELETE, kHeldDown);
  HandleAll();
  EXPECT_EQ(opened, Ids{list.RowAt(4)});
  EXPECT_EQ(deleted, Ids{list.RowAt(4)});
}

TEST_F(Win32ListInputTest, SelectionReachesTheListWhenTheUserRestsThoughNoKeyIsReleased) {
  Fill(10);
  SelectAsUser(3);
  Ask(WM_TIMER, 4711);
  HandleAll();
  EXPECT_TRUE(selected.empty()) << "another timer's tick is no rest";
  EXPECT_TRUE(Until([this] { return !selected.empty(); }));
  EXPECT_EQ(selected, Ids{list.RowAt(3)});
}

TEST_F(Win32ListInputTest, SelectionReachesTheListAtOnceWhenTheListLosesTheKeyboard) {
  Fill(10);
  ::SetFocus(Of(list));
  SelectAsUser(3);
  ::SetFocus(nullptr);
  HandleAll();
  EXPECT_EQ(selected, Ids{list.RowAt(3)});
}

TEST_F(Win32ListInputTest, ReturnToTheSelectedRowIsNoSelection) {
  Fill(10);
  list.Select(list.RowAt(4));
  selected.clear();
  SelectAsUser(5);
  SelectAsUser(4);
  Rest();
  EXPECT_TRUE(selected.empty());
  SelectAsUser(5);
  SelectAsUser(4);
  list.Select(list.RowAt(2));
  EXPECT_EQ(Shown(), 2) << "nothing of the user's is left to be shown";
}

TEST_F(Win32ListInputTest, SelectionWaitsForTheEndOfADialog) {
  Fill(10);
  Block();
  SelectAsUser(3);
  Rest();
  EXPECT_TRUE(selected.empty());
  Unblock();
  EXPECT_TRUE(Until([this] { return !selected.empty(); })) << "it is tried again";
  EXPECT_EQ(selected, Ids{list.RowAt(3)});
}

TEST_F(Win32ListInputTest, SelectionThatADialogOvertakesIsMadeAfterIt) {
  Fill(10);
  SelectAsUser(3);
  Ask(WM_TIMER, ListBinding::kRestTimer);
  Block();
  HandleAll();
  EXPECT_TRUE(selected.empty());
  Unblock();
  EXPECT_TRUE(Until([this] { return !selected.empty(); }));
  EXPECT_EQ(selected, Ids{list.RowAt(3)});
}

TEST_F(Win32ListInputTest, RowThatIsRemovedBeforeItsTurnIsNotSelected) {
  Fill(10);
  list.Select(list.RowAt(1));
  selected.clear();
  SelectAsUser(3);
  list.RemoveRow(list.RowAt(3));
  EXPECT_EQ(Shown(), 1) << "the list's own selection is shown again";
  Rest();
  EXPECT_TRUE(selected.empty());
}

TEST_F(Win32ListInputTest, RowOfTheUsersStaysShownThoughTheProgramSelectsAnother) {
  Fill(10);
  SelectAsUser(3);
  list.Select(list.RowAt(7));
  EXPECT_EQ(Shown(), 3);
  Rest();
  EXPECT_EQ(list.SelectedRow(), list.RowAt(3));
  list.Select(list.RowAt(7));
  EXPECT_EQ(Shown(), 7);
  Rest();
  EXPECT_EQ(list.SelectedRow(), list.RowAt(7)) << "the user's row was selected once";
}

TEST_F(Win32ListInputTest, UserMayReturnToTheSelectedRowBeforeTheOtherHadItsTurn) {
  Fill(10);
  list.Select(list.RowAt(4));
  selected.clear();
  SelectAsUser(3);
  Ask(WM_TIMER, ListBinding::kRestTimer);
  SelectAsUser(4);
  HandleAll();
  Rest();
  EXPECT_EQ(selected, (Ids{list.RowAt(3), list.RowAt(4)}));
  EXPECT_EQ(Shown(), 4);
}

TEST_F(Win32ListInputTest, ClickSelectsAtOnceAndTheNextOneIsAnotherClick) {
  Fill(10);
  Click(2);
  HandleAll();
  EXPECT_EQ(selected, Ids{list.RowAt(2)});
  EXPECT_EQ(clicked_again, 0);
  Click(2);
  HandleAll();
  EXPECT_EQ(clicked_again, 1);
  EXPECT_EQ(selected.size(), 1U);
  Click(2);
  Block();
  HandleAll();
  Unblock();
  EXPECT_EQ(clicked_again, 1) << "a dialog came before its turn";
}

TEST_F(Win32ListInputTest, ClickBelowTheRowsTakesTheSelectionAway) {
  Fill(3);
  list.Select(list.RowAt(1));
  selected.clear();
  const LPARAM below = MAKELPARAM(60, Inside().bottom - 5);
  Ask(WM_LBUTTONDOWN, MK_LBUTTON, below);
  Ask(WM_LBUTTONUP, 0, below);
  HandleAll();
  EXPECT_EQ(selected, Ids{controls::RowId::kNone});
  EXPECT_EQ(clicked_again, 0);
}

TEST_F(Win32ListInputTest, OnlyTheChoiceOfARowEndsAWait) {
  list.SetEndsWaiting(true);
  Fill(3);
  list.Select(list.RowAt(1));
  const auto ends = [this](int row) {
    LVITEMW state{};
    state.stateMask = LVIS_SELECTED;
    state.state = row < 0 ? 0U : LVIS_SELECTED;
    Ask(LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&state));
    Ask(WM_TIMER, ListBinding::kRestTimer);
    const bool seen = loop.InputEndsWait();
    HandleAll();
    return seen;
  };
  EXPECT_FALSE(ends(-1));
  EXPECT_TRUE(ends(2));
}

TEST_F(Win32ListInputTest, DoubleClickOpensTheRowAndBesideTheRowsNothing) {
  Fill(10);
  list.Select(list.RowAt(1));
  Report(static_cast<UINT>(NM_DBLCLK), -1);
  HandleAll();
  EXPECT_TRUE(opened.empty());
  EXPECT_EQ(list.SelectedRow(), list.RowAt(1));
  Report(static_cast<UINT>(NM_DBLCLK), 4);
  HandleAll();
  EXPECT_EQ(opened, Ids{list.RowAt(4)});
  EXPECT_EQ(list.SelectedRow(), list.RowAt(4));
}

TEST_F(Win32ListInputTest, NothingIsOpenedOrDeletedInsideADialogThatCameBeforeItsTurn) {
  Fill(10);
  SelectAsUser(2);
  Ask(WM_KEYDOWN, VK_RETURN, 1);
  Ask(WM_KEYDOWN, VK_DELETE, 1);
  ClickOnHeader(1);
  Block();
  HandleAll();
  Unblock();
  EXPECT_TRUE(opened.empty() && deleted.empty() && headers.empty());
}

TEST_F(Win32ListInputTest, OnlyTheRowOfTheGestureIsOpenedOrDeleted) {
  Fill(10);
  controls::RowId instead = list.RowAt(7);
  notes += list.SelectionChanged.Subscribe([&] {
    if (list.SelectedRow() != instead) list.Select(instead);
  });
  SelectAsUser(2);
  Ask(WM_KEYDOWN, VK_RETURN, 1);
  Ask(WM_KEYDOWN, VK_DELETE, 1);
  HandleAll();
  EXPECT_TRUE(opened.empty());
  EXPECT_TRUE(deleted.empty());
}

TEST_F(Win32ListInputTest, EnterOpensTheRowThatHasTheFrameWhenNoneIsSelected) {
  Fill(10);
  Ask(WM_KEYDOWN, VK_RETURN, 1);
  HandleAll();
  EXPECT_TRUE(opened.empty()) << "no row has the frame yet";
  SelectAsUser(6);
  Rest();
  LVITEMW state{};
  state.stateMask = LVIS_SELECTED;
  Ask(LVM_SETITEMSTATE, 6, reinterpret_cast<LPARAM>(&state));
  Rest();
  ASSERT_EQ(list.SelectedRow(), controls::RowId::kNone);
  Ask(WM_KEYDOWN, VK_RETURN, 1);
  HandleAll();
  EXPECT_EQ(opened, Ids{list.RowAt(6)});
  EXPECT_EQ(Shown(), 6);
}

TEST_F(Win32ListInputTest, ClickOnAHeaderReachesTheList) {
  Fill(10);
  ClickOnHeader(1);
  EXPECT_TRUE(headers.empty()) << "from the loop only";
  HandleAll();
  EXPECT_EQ(headers, std::vector<int>{1});
}

TEST_F(Win32ListInputTest, MenuKeyOpensTheMenuBesideTheRowOrInTheCornerAndAClickWhereItIs) {
  Fill(10);
  std::vector<POINT> places;
  notes += Binding().MenuWanted.Subscribe([&](int left, int top) { places.push_back({left, top}); });
  const auto want = [this](int left, int top) {
    ::SendMessageW(window->Handle(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(Of(list)),
                   MAKELPARAM(left, top));
  };
  want(123, 45);
  want(-1, -1);
  list.Select(list.RowAt(3));
  want(-1, -1);
  ASSERT_EQ(places.size(), 3U);
  EXPECT_EQ(places[0].x, 123);
  EXPECT_EQ(places[0].y, 45);
  for (POINT& place : places) ::ScreenToClient(Of(list), &place);
  EXPECT_EQ(places[1].x, 0);
  EXPECT_EQ(places[1].y, 0);
  const RECT row = Part(3, LVIR_LABEL);
  EXPECT_EQ(places[2].x, row.left);
  EXPECT_EQ(places[2].y, (row.top + row.bottom) / 2);
}

TEST_F(Win32ListInputTest, TypedLettersSearchFromTheRowAndBeginAnewAtTheEnd) {
  Fill(12);
  const auto find = [this](const wchar_t* start, int from, UINT how) {
    NMLVFINDITEMW notice{};
    notice.hdr.hwndFrom = Of(list);
    notice.hdr.code = static_cast<UINT>(LVN_ODFINDITEMW);
    notice.iStart = from;
    notice.lvfi.flags = how;
    notice.lvfi.psz = start;
    return ::SendMessageW(window->Handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&notice));
  };
  EXPECT_EQ(find(L"sender 1", 2, LVFI_PARTIAL), 10);
  EXPECT_EQ(find(L"sender 2", 5, LVFI_PARTIAL), 2);
  EXPECT_EQ(find(L"sender 2", 99, LVFI_PARTIAL), 2);
  EXPECT_EQ(find(L"sender 2", -1, LVFI_STRING), 2);
  EXPECT_EQ(find(L"Sender 11 und mehr", 0, LVFI_PARTIAL), -1);
  EXPECT_EQ(find(nullptr, 0, LVFI_PARAM), -1) << "not by a text";
  EXPECT_EQ(find(nullptr, 4, LVFI_PARTIAL), 4);
  list.Clear();
  EXPECT_EQ(find(L"s", 0, LVFI_PARTIAL), -1);
}

TEST_F(Win32ListInputTest, SelectionWaitsForTheEndOfAMenu) {
  button.SetCaption(u"Knopf");
  inventory = {{"button", &button, nullptr, {.menu = app::MenuEntry::kClick}}};
  Fill(10);
  const auto is_open = [] {
    HWND const menu = ::FindWindowW(L"#32768", nullptr);
    return menu != nullptr && ::IsWindowVisible(menu) != 0;
  };
  bool selected_inside = true;
  const Once leave(*this, is_open, [this, &selected_inside] {
    SelectAsUser(3);
    Ask(WM_TIMER, ListBinding::kRestTimer);
    loop.ProcessPendingMessages();
    selected_inside = !selected.empty();
    ::EndMenu();
  });
  ::PostMessageW(window->Handle(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(Of(list)), MAKELPARAM(50, 90));
  EXPECT_TRUE(Until([&] { return leave.Done() && !selected.empty(); }));
  EXPECT_FALSE(selected_inside);
  EXPECT_EQ(selected, Ids{list.RowAt(3)});
}

}  // namespace
}  // namespace platform::win32
