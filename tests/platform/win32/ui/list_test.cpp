#include "platform/win32/base/windows_api.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "platform/win32/ui/list_menu.h"
#include "tests/platform/win32/ui/canvas.h"
#include "tests/platform/win32/ui/list_rig.h"

namespace platform::win32 {
namespace {

TEST_F(Win32ListTest, TwentyThousandRowsAreShownOnDemand) {
  Fill(20000);
  EXPECT_EQ(Ask(LVM_GETITEMCOUNT), 20000);
  EXPECT_EQ(Cell(19999, 0), u"Sender 19999");
  EXPECT_EQ(Cell(5, 1), u"Köln Bonn");
  list.RemoveRow(list.RowAt(0));
  EXPECT_EQ(Ask(LVM_GETITEMCOUNT), 19999);
  EXPECT_EQ(Cell(0, 0), u"Sender 1");
}

TEST_F(Win32ListTest, SelectionOfTheProgramIsShownAndIsNoInput) {
  Fill(10);
  int changes = 0;
  const auto count = list.SelectionChanged.Subscribe([&] { ++changes; });
  list.Select(list.RowAt(4));
  loop.ProcessPendingMessages();
  EXPECT_EQ(Shown(), 4);
  EXPECT_EQ(changes, 1);
}

TEST_F(Win32ListTest, SelectionOfTheUserReachesTheListWhenTheKeysRest) {
  Fill(10);
  SelectAsUser(3);
  SelectAsUser(6);
  EXPECT_EQ(list.SelectedRow(), controls::RowId::kNone);
  std::vector<controls::RowId> selected;
  const auto note = list.SelectionChanged.Subscribe([&] { selected.push_back(list.SelectedRow()); });
  PressKey(Of(list), VK_SHIFT);
  EXPECT_TRUE(Until([&] { return !selected.empty(); }));
  EXPECT_EQ(selected, std::vector{list.RowAt(6)});
}

TEST_F(Win32ListTest, EnterSelectsAndOpensTheShownRow) {
  Fill(10);
  SelectAsUser(2);
  controls::RowId opened = controls::RowId::kNone;
  const auto note = list.DoubleClicked.Subscribe([&](controls::RowId id) { opened = id; });
  PressKey(Of(list), VK_RETURN);
  EXPECT_TRUE(Until([&] { return opened == list.RowAt(2); }));
  EXPECT_EQ(list.SelectedRow(), list.RowAt(2));
}

TEST_F(Win32ListTest, DeleteIsForTheRowThatWasShown) {
  Fill(10);
  SelectAsUser(2);
  controls::RowId deleted = controls::RowId::kNone;
  const auto note = list.DeletePressed.Subscribe([&] { deleted = list.SelectedRow(); });
  PressKey(Of(list), VK_DELETE);
  EXPECT_TRUE(Until([&] { return deleted == list.RowAt(2); }));
}

TEST_F(Win32ListTest, RowThatWasSelectedIsPaintedAnewFromEdgeToEdge) {
  Fill(10);
  SelectAsUser(2);
  ::UpdateWindow(Of(list));
  SelectAsUser(5);
  RECT dirty{};
  ::GetUpdateRect(Of(list), &dirty, FALSE);
  RECT all{};
  ::GetClientRect(Of(list), &all);
  EXPECT_EQ(dirty.left, 0);
  EXPECT_EQ(dirty.right, all.right);
}

TEST_F(Win32ListTest, CellThatIsCutIsTheTooltipWhileThePointerIsOnIt) {
  Fill(3);
  list.SetCell(list.RowAt(1), 1,
               u"Ein Genre mit einem Namen, der in seine Spalte nicht passt, auch nicht ganz");
  list.DragColumn(1, 100);
  const auto point_at = [this](int row, int column) {
    RECT cell{};
    cell.top = column;
    cell.left = LVIR_BOUNDS;
    Ask(LVM_GETSUBITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&cell));
    Ask(WM_MOUSEMOVE, 0, MAKELPARAM(cell.left + 20, cell.top + 5));
    return window->HintOf(list);
  };
  EXPECT_EQ(point_at(1, 1), list.Cell(list.RowAt(1), 1));
  EXPECT_EQ(point_at(0, 1), u"");
  EXPECT_EQ(point_at(1, 0), u"") << "the whole name can be seen";
  EXPECT_EQ(point_at(1, 1), list.Cell(list.RowAt(1), 1));
  Ask(WM_MOUSEMOVE, 0, MAKELPARAM(50, 300));
  EXPECT_EQ(window->HintOf(list), u"") << "below the rows";
}

TEST_F(Win32ListTest, OnlyOneTooltipShowsACutCell) {
  Fill(3);
  // Wine makes the list's own when it is asked for it; this asks what there is.
  EXPECT_EQ(Ask(LVM_SETTOOLTIPS), 0);
  EXPECT_EQ(Ask(LVM_GETEXTENDEDLISTVIEWSTYLE) & (LVS_EX_INFOTIP | LVS_EX_LABELTIP), 0);
}

TEST_F(Win32ListTest, LinkThatIsCutInItsMiddleIsReadInFullInItsTooltip) {
  list.AddColumn({u"Station", 200});
  list.AddColumn({u"Link", 100, controls::SortKind::kNaturalOrder, controls::CellLook::kAddress});
  const Text link = u"http://radio.example/eine/lange/adresse/in/einer/schmalen/spalte/stream.mp3";
  list.AddRow({.cells = {u"Köln", link}});
  list.Move({0, 0, 8000, 5000});
  inventory = {{"list", &list}};
  Open();
  Ask(WM_MOUSEMOVE, 0, MAKELPARAM(230, Ask(LVM_GETITEMCOUNT) * 40));
  EXPECT_EQ(window->HintOf(list), link);
}

TEST_F(Win32ListTest, MarkOfARowIsSpokenBehindItsName) {
  Fill(3);
  list.SetMarkText(controls::RowMark::kPlaying, u"wird abgespielt");
  EXPECT_EQ(Cell(1, 0), u"Sender 1");
  list.SetMark(list.RowAt(1), controls::RowMark::kPlaying);
  EXPECT_EQ(Cell(1, 0), u"Sender 1, wird abgespielt");
  EXPECT_EQ(Cell(1, 1), u"Köln Bonn");
  EXPECT_EQ(Cell(2, 0), u"Sender 2");
  LVFINDINFOW wanted{};
  wanted.flags = LVFI_STRING | LVFI_PARTIAL;
  wanted.psz = L"Sender 1, w";
  EXPECT_EQ(Ask(LVM_FINDITEMW, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&wanted)), -1)
      << "only names are typed";
}

std::vector<std::pair<LONG, LONG>> named;
void CALLBACK NoteName(HWINEVENTHOOK /*hook*/, DWORD /*event*/, HWND /*window*/, LONG object, LONG child,
                       DWORD /*thread*/, DWORD /*time*/) {
  named.emplace_back(object, child);
}

TEST_F(Win32ListTest, ScreenReadersLearnOfAMarkThatComes) {
  Fill(3);
  loop.ProcessPendingMessages();
  named.clear();
  HWINEVENTHOOK const hook =
      ::SetWinEventHook(EVENT_OBJECT_NAMECHANGE, EVENT_OBJECT_NAMECHANGE, nullptr, NoteName,
                        ::GetCurrentProcessId(), ::GetCurrentThreadId(), WINEVENT_OUTOFCONTEXT);
  ASSERT_NE(hook, nullptr);
  list.SetMark(list.RowAt(1), controls::RowMark::kPlaying);
  EXPECT_TRUE(Until([] { return std::ranges::count(named, std::pair<LONG, LONG>(OBJID_CLIENT, 2)) > 0; }));
  ::UnhookWinEvent(hook);
}

TEST_F(Win32ListTest, TextForASmallBufferIsCutBetweenCharacters) {
  Fill(3);
  list.SetCell(list.RowAt(0), 0, u"ab\U0001F3B5");
  std::array<wchar_t, 4> buffer{};
  LVITEMW item{};
  item.pszText = buffer.data();
  item.cchTextMax = static_cast<int>(buffer.size());
  Ask(LVM_GETITEMTEXTW, 0, reinterpret_cast<LPARAM>(&item));
  EXPECT_STREQ(buffer.data(), L"ab");
}

TEST_F(Win32ListTest, GroundBelowTheRowsFollowsTheSystemsColours) {
  Fill(3);
  Ask(LVM_SETBKCOLOR, 0, RGB(1, 2, 3));
  ::SendMessageW(window->Handle(), WM_SYSCOLORCHANGE, 0, 0);
  EXPECT_EQ(static_cast<COLORREF>(Ask(LVM_GETBKCOLOR)), ::GetSysColor(COLOR_WINDOW));
}

TEST_F(Win32ListTest, HeaderShowsTheArrowOfTheSorting) {
  Fill(3);
  list.Sort(1, controls::SortDirection::kDescending, [](const auto&, const auto&) { return 0; });
  HDITEMW item{};
  item.mask = HDI_FORMAT;
  ::SendMessageW(reinterpret_cast<HWND>(Ask(LVM_GETHEADER)), HDM_GETITEMW, 1,
                 reinterpret_cast<LPARAM>(&item));
  EXPECT_TRUE((item.fmt & HDF_SORTDOWN) != 0);
}

TEST_F(Win32ListTest, TypedLettersFindARow) {
  Fill(20);
  LVFINDINFOW wanted{};
  wanted.flags = LVFI_STRING | LVFI_PARTIAL;
  wanted.psz = L"SENDER 12";
  EXPECT_EQ(Ask(LVM_FINDITEMW, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&wanted)), 12);
}

TEST_F(Win32ListTest, MenuHasTheEntriesOfTheInventory) {
  button.SetCaption(u"Löschen");
  controls::CommandButton hidden;
  hidden.SetVisible(false);
  controls::CheckBox box;
  box.SetCaption(u"Melden");
  box.SetLook(controls::CheckLook::kNone);
  box.SetValue(controls::CheckValue::kChecked);
  inventory = {{"button", &button, nullptr, {.menu = app::MenuEntry::kDeleteRow}},
               {"hidden", &hidden, nullptr, {.menu = app::MenuEntry::kClick}},
               {"box", &box, nullptr, {.menu = app::MenuEntry::kClickBelowALine}}};
  Fill(3);
  const ListMenu menu(inventory, Binding());
  ASSERT_EQ(::GetMenuItemCount(menu.Handle()), 3);  // with the line
  EXPECT_TRUE((::GetMenuState(menu.Handle(), 0, MF_BYPOSITION) & MF_GRAYED) != 0) << "no row is selected";
  EXPECT_TRUE((::GetMenuState(menu.Handle(), 2, MF_BYPOSITION) & MF_CHECKED) != 0);
  menu.ActionOf(static_cast<int>(::GetMenuItemID(menu.Handle(), 2)))();
  EXPECT_FALSE(box.Checked());
}

TEST_F(Win32ListTest, MenuCommandsAreForTheRowThatItWasOpenedOn) {
  controls::RowCommand favourite;
  favourite.SetKind(controls::RowCommandKind::kSwitch);
  favourite.SetCaption(u"Favorit");
  favourite.OfferFor = [](const controls::ListView&, controls::RowId) {
    return controls::RowOffer{.available = true, .checked = true};
  };
  std::vector<std::pair<controls::RowId, bool>> chosen;
  const auto note = favourite.Chosen.Subscribe(
      [&](const controls::RowChoice& choice) { chosen.emplace_back(choice.row, choice.checked); });
  inventory = {{"favourite",
                &favourite,
                nullptr,
                {.menu = app::MenuEntry::kForRow, .menu_caption = u"Ein & Favorit"}}};
  Fill(3);
  const ListMenu without_row(inventory, Binding());
  EXPECT_TRUE((::GetMenuState(without_row.Handle(), 0, MF_BYPOSITION) & MF_GRAYED) != 0);
  SelectAsUser(1);
  const ListMenu menu(inventory, Binding());
  EXPECT_FALSE((::GetMenuState(menu.Handle(), 0, MF_BYPOSITION) & MF_GRAYED) != 0);
  EXPECT_TRUE((::GetMenuState(menu.Handle(), 0, MF_BYPOSITION) & MF_CHECKED) != 0);
  std::array<wchar_t, 32> text{};
  ::GetMenuStringW(menu.Handle(), 0, text.data(), static_cast<int>(text.size()), MF_BYPOSITION);
  EXPECT_STREQ(text.data(), L"Ein && Favorit");
  SelectAsUser(2);
  menu.ActionOf(1)();
  EXPECT_TRUE(Until([&] { return !chosen.empty(); }));
  EXPECT_EQ(chosen, (std::vector{std::pair(list.RowAt(1), false)}));
}

TEST_F(Win32ListTest, LineStandsOnlyBelowOtherEntriesOfTheMenu) {
  button.SetCaption(u"Melden");
  controls::CommandButton below;
  below.SetCaption(u"Hilfe");
  inventory = {{"button", &button, nullptr, {.menu = app::MenuEntry::kClickBelowALine}},
               {"below", &below, nullptr, {.menu = app::MenuEntry::kClickBelowALine}}};
  Fill(1);
  const ListMenu menu(inventory, Binding());
  ASSERT_EQ(::GetMenuItemCount(menu.Handle()), 3);
  for (UINT entry = 0; entry < 3; ++entry) {
    MENUITEMINFOW item{};
    item.cbSize = sizeof item;
    item.fMask = MIIM_FTYPE;
    ::GetMenuItemInfoW(menu.Handle(), entry, TRUE, &item);
    EXPECT_EQ((item.fType & MFT_SEPARATOR) != 0, entry == 1) << entry;
  }
}

TEST_F(Win32ListTest, MenuFollowsWhatARowOffersAndRowsThatAreReplaced) {
  controls::RowCommand favourite;
  favourite.SetCaption(u"Favorit");
  favourite.OfferFor = [](const controls::ListView& of, controls::RowId id) {
    return controls::RowOffer{.available = of.Contains(id) && of.Cell(id, 1) == u"Jazz"};
  };
  inventory = {{"favourite", &favourite, nullptr, {.menu = app::MenuEntry::kForRow}}};
  Fill(3);
  SelectAsUser(1);
  const ListMenu menu(inventory, Binding());
  const auto is_enabled = [&menu] {
    return (::GetMenuState(menu.Handle(), 0, MF_BYPOSITION) & MF_GRAYED) == 0;
  };
  EXPECT_FALSE(is_enabled());
  list.SetCell(list.RowAt(1), 1, u"Jazz");
  EXPECT_TRUE(is_enabled());
  list.Clear();
  EXPECT_FALSE(is_enabled());
}

TEST_F(Win32ListTest, MenuDoesNothingForARowThatIsGone) {
  button.SetCaption(u"Löschen");
  inventory = {{"button", &button, nullptr, {.menu = app::MenuEntry::kDeleteRow}}};
  Fill(3);
  SelectAsUser(1);
  const ListMenu menu(inventory, Binding());
  int deleted = 0;
  const auto note = list.DeletePressed.Subscribe([&] { ++deleted; });
  list.RemoveRow(list.RowAt(1));
  menu.ActionOf(1)();
  loop.ProcessPendingMessages();
  EXPECT_EQ(deleted, 0);
  EXPECT_EQ(list.Count(), 2U);
}

TEST_F(Win32ListTest, MenuKeyOpensTheMenuInsideTheListThoughItsRowWasOutOfSight) {
  Fill(300);
  POINT place{};
  const auto note = Binding().MenuWanted.Subscribe([&](int left, int top) { place = {left, top}; });
  SelectAsUser(0);
  Ask(LVM_ENSUREVISIBLE, 299);
  ::SendMessageW(window->Handle(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(Of(list)), MAKELPARAM(-1, -1));
  RECT inside{};
  ::GetClientRect(Of(list), &inside);
  ::ScreenToClient(Of(list), &place);
  EXPECT_TRUE(::PtInRect(&inside, place) != 0) << place.x << ", " << place.y;
  EXPECT_EQ(Ask(LVM_GETTOPINDEX), 0) << "the row is to be seen beside its menu";
}

TEST_F(Win32ListTest, HintOfAnEmptyListIsPaintedOnFreshGroundAlsoWhenAPartIsPainted) {
  Fill(0);
  list.SetEmptyText(u"Hier ist nichts");
  loop.ProcessPendingMessages();
  ::UpdateWindow(Of(list));
  RECT all{};
  ::GetClientRect(Of(list), &all);
  Canvas seen(static_cast<int>(all.right), static_cast<int>(all.bottom));
  HDC const context = ::GetDC(Of(list));
  HBRUSH const red = ::CreateSolidBrush(RGB(255, 0, 0));
  ::FillRect(context, &all, red);
  const RECT part{0, all.bottom - 5, 5, all.bottom};
  ::InvalidateRect(Of(list), &part, FALSE);
  ::UpdateWindow(Of(list));
  ::BitBlt(seen.Context(), 0, 0, static_cast<int>(all.right), static_cast<int>(all.bottom), context, 0, 0,
           SRCCOPY);
  ::DeleteObject(red);
  ::ReleaseDC(Of(list), context);
  EXPECT_EQ(seen.Count(IsRed), 0);
  RECT header{};
  ::GetClientRect(reinterpret_cast<HWND>(Ask(LVM_GETHEADER)), &header);
  const auto dark = [&seen](LONG left, LONG top, LONG right, LONG bottom) {
    return seen.Count({left, top, right, bottom}, IsDark);
  };
  const LONG middle = (header.bottom + all.bottom) / 2;
  EXPECT_GT(dark(0, middle - 12, all.right / 2, middle + 12), 20) << "the hint stands in the middle";
  EXPECT_GT(dark(all.right / 2, middle - 12, all.right, middle + 12), 20);
  EXPECT_EQ(dark(0, header.bottom, all.right, middle - 12), 0);
  EXPECT_EQ(dark(0, middle + 12, all.right, all.bottom), 0);
  EXPECT_EQ(seen.Count({all.right / 2 - 80, middle - 12, all.right / 2 + 80, middle + 12}, IsDark),
            dark(0, middle - 12, all.right, middle + 12));
}

TEST_F(Win32ListTest, MenuHasNoEntryForAControlThatCannotHaveOne) {
  controls::TextBox field;
  inventory = {{"field", &field, nullptr, {.menu = app::MenuEntry::kOpenRow}},
               {"button", &button, nullptr, {.menu = app::MenuEntry::kForRow}}};
  Fill(1);
  const ListMenu menu(inventory, Binding());
  EXPECT_EQ(::GetMenuItemCount(menu.Handle()), 0);
}

}  // namespace
}  // namespace platform::win32
