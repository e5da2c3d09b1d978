// What the system's list shows of the program's: rows, columns, sorting, selection, tooltip, and what it
// paints.

#include "platform/win32/base/windows_api.h"

#include "platform/win32/ui/palette.h"
#include "platform/win32/ui/row_painter.h"
#include "tests/platform/win32/ui/canvas.h"
#include "tests/platform/win32/ui/list_rig.h"

namespace platform::win32 {
namespace {

class Win32ListFollowTest : public Win32ListTest {
 protected:
  HWND Header() const { return reinterpret_cast<HWND>(Ask(LVM_GETHEADER)); }
  std::pair<Text, int> Column(int column) const {
    std::array<wchar_t, 64> buffer{};
    HDITEMW item{};
    item.mask = HDI_TEXT | HDI_FORMAT;
    item.pszText = buffer.data();
    item.cchTextMax = static_cast<int>(buffer.size());
    ::SendMessageW(Header(), HDM_GETITEMW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&item));
    const std::wstring text = buffer.data();
    return {Text(text.begin(), text.end()), item.fmt & (HDF_SORTUP | HDF_SORTDOWN)};
  }
  void PaintAll() {
    loop.ProcessPendingMessages();
    ::UpdateWindow(Of(list));
    ASSERT_TRUE(::GetUpdateRect(Of(list), nullptr, FALSE) == 0);
  }
  void PointAt(int row, int column) const {
    RECT cell{};
    cell.top = column;
    cell.left = LVIR_BOUNDS;
    Ask(LVM_GETSUBITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&cell));
    Ask(WM_MOUSEMOVE, 0, MAKELPARAM(cell.left + 20, cell.top + 5));
  }
  Text Hint() const { return window->HintOf(list); }
  /// A dot of the list as it is painted now.
  COLORREF Seen(int left, int top) const {
    HDC const context = ::GetDC(Of(list));
    const COLORREF color = ::GetPixel(context, left, top);
    ::ReleaseDC(Of(list), context);
    return color;
  }
  static const Text& Long() {
    static const Text text = u"Ein Text, der so lang ist, dass er in keine Spalte dieser Liste ganz passt";
    return text;
  }
};

TEST_F(Win32ListFollowTest, IsOneSystemListWithWholeRowsPaintedInMemory) {
  Fill(3);
  constexpr LRESULT kWanted = LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER;
  EXPECT_EQ(Ask(LVM_GETEXTENDEDLISTVIEWSTYLE) & kWanted, kWanted);
}

TEST_F(Win32ListFollowTest, RowsAreAsHighAsTheirIconsAtEachResolution) {
  Fill(3);
  const auto height = [this] {
    const RECT row = Part(1, LVIR_BOUNDS);
    return static_cast<int>(row.bottom - row.top);
  };
  EXPECT_NEAR(height(), window->GetScale().Scaled(RowPainter::kRowHeight), 1);
  const int before = height();
  RECT larger{0, 0, 900, 700};
  ::SendMessageW(window->Handle(), WM_DPICHANGED, MAKEWPARAM(192, 192), reinterpret_cast<LPARAM>(&larger));
  EXPECT_NEAR(height(), window->GetScale().Scaled(RowPainter::kRowHeight), 1);
  EXPECT_GE(height(), before * 3 / 2);
  Ask(LVM_SETCOLUMNWIDTH, 0, 17);
  Binding().FollowScale();
  EXPECT_EQ(Ask(LVM_GETCOLUMNWIDTH, 0), window->GetScale().Scaled(200)) << "though its place is the same";
  EXPECT_EQ(Ask(WM_GETFONT), reinterpret_cast<LRESULT>(window->GetScale().Get(Scale::Font::kPlain)));
}

TEST_F(Win32ListFollowTest, ColumnsFollowTheirCaptionsAndNewOnesCome) {
  Fill(3);
  EXPECT_EQ(Column(1).first, u"Genre");
  list.SetColumnCaption(1, u"Art\nund Weise");
  EXPECT_EQ(Column(1).first, u"Art und Weise");
  list.AddColumn({u"Link", 90});
  ASSERT_EQ(::SendMessageW(Header(), HDM_GETITEMCOUNT, 0, 0), 3);
  EXPECT_EQ(Column(2).first, u"Link");
  EXPECT_GE(Ask(LVM_GETCOLUMNWIDTH, 2), window->GetScale().Scaled(90));
}

TEST_F(Win32ListFollowTest, ArrowOfTheSortingIsInOneColumnOnly) {
  Fill(3);
  const auto same = [](auto, auto) { return 0; };
  EXPECT_EQ(Column(0).second, 0);
  list.Sort(0, controls::SortDirection::kAscending, same);
  EXPECT_EQ(Column(0).second, HDF_SORTUP);
  list.Sort(0, controls::SortDirection::kDescending, same);
  EXPECT_EQ(Column(0).second, HDF_SORTDOWN);
  list.Sort(1, controls::SortDirection::kAscending, same);
  EXPECT_EQ(Column(0).second, 0);
  EXPECT_EQ(Column(1).second, HDF_SORTUP);
  EXPECT_EQ(Column(1).first, u"Genre") << "its text stays";
}

TEST_F(Win32ListFollowTest, SelectionStaysWithItsRowAndGoesWithIt) {
  Fill(10);
  list.Select(list.RowAt(4));
  list.RemoveRow(list.RowAt(0));
  EXPECT_EQ(Shown(), 3);
  list.InsertRow(0, {.cells = {u"Bonn"}});
  EXPECT_EQ(Shown(), 4);
  EXPECT_EQ(Ask(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED), 4) << "the frame as well";
  EXPECT_EQ(Ask(LVM_GETSELECTEDCOUNT), 1);
  list.Select(controls::RowId::kNone);
  EXPECT_EQ(Shown(), -1);
  list.Select(list.RowAt(2));
  list.Clear();
  EXPECT_EQ(Shown(), -1);
}

TEST_F(Win32ListFollowTest, RowThatTheProgramWantsToShowIsScrolledIntoSight) {
  Fill(300);
  list.EnsureVisible(list.RowAt(250));
  const auto top = Ask(LVM_GETTOPINDEX);
  EXPECT_LE(top, 250);
  EXPECT_GT(top + Ask(LVM_GETCOUNTPERPAGE), 250);
  list.AddRow({.cells = {u"Bonn"}});
  list.RemoveRow(list.RowAt(299));
  EXPECT_EQ(Ask(LVM_GETTOPINDEX), top) << "what comes and goes elsewhere scrolls nothing";
}

TEST_F(Win32ListFollowTest, WhatChangesIsPaintedAnew) {
  Fill(5);
  PaintAll();
  list.SetCell(list.RowAt(2), 1, u"Jazz");
  const RECT row = Part(2, LVIR_BOUNDS);
  RECT both{};
  RECT dirty = Dirty();
  EXPECT_TRUE(::IntersectRect(&both, &row, &dirty) != 0) << "a row's text";
  PaintAll();
  list.SetImageList(7);
  dirty = Dirty();
  const RECT all = Inside();
  EXPECT_TRUE(::EqualRect(&dirty, &all) != 0) << "the icons";
  PaintAll();
  list.SetToolTip(u"Alle Sender");
  EXPECT_TRUE(::GetUpdateRect(Of(list), nullptr, FALSE) == 0) << "nothing that is painted";
  list.Sort(0, controls::SortDirection::kAscending, [](auto, auto) { return 0; });
  dirty = Dirty();
  EXPECT_TRUE(::EqualRect(&dirty, &all) != 0) << "another order";
  PaintAll();
  Report(static_cast<UINT>(LVN_ODSTATECHANGED), 0);
  dirty = Dirty();
  EXPECT_TRUE(::EqualRect(&dirty, &all) != 0) << "the state of many rows";
  PaintAll();
  list.InsertRow(0, {.cells = {u"Bonn"}});
  dirty = Dirty();
  EXPECT_TRUE(::EqualRect(&dirty, &all) != 0) << "a row before others";
  PaintAll();
  list.AddRow({.cells = {u"Bonn"}});
  dirty = Dirty();
  EXPECT_LE(dirty.top, Part(6, LVIR_BOUNDS).top);
  EXPECT_GE(dirty.bottom, Part(6, LVIR_BOUNDS).bottom) << "a row behind the others";
}

TEST_F(Win32ListFollowTest, SelectedRowIsPaintedAnewFromEdgeToEdgeWhenTheKeyboardComesOrGoes) {
  Fill(5);
  ::SetFocus(Of(list));
  SelectAsUser(2);
  const auto expect_whole_row = [this](const char* when) {
    const RECT dirty = Dirty();
    EXPECT_EQ(dirty.left, 0) << when;
    EXPECT_EQ(dirty.right, Inside().right) << when;
    EXPECT_LE(dirty.top, Part(2, LVIR_BOUNDS).top) << when;
    EXPECT_GE(dirty.bottom, Part(2, LVIR_BOUNDS).bottom) << when;
    EXPECT_GT(dirty.top, Part(1, LVIR_BOUNDS).top) << when << ": not the rows around it";
    EXPECT_LT(dirty.bottom, Part(3, LVIR_BOUNDS).bottom) << when;
  };
  PaintAll();
  ::SetFocus(nullptr);
  expect_whole_row("goes");
  PaintAll();
  ::SetFocus(Of(list));
  expect_whole_row("comes");
}

TEST_F(Win32ListFollowTest, RowsArePaintedWithTheirStripesAndTheirSelection) {
  Fill(5);
  ::SetFocus(Of(list));
  list.Select(list.RowAt(2));
  PaintAll();
  // Behind the last column's text.
  const auto ground = [this](int row) {
    const RECT place = Part(row, LVIR_BOUNDS);
    return Seen(static_cast<int>(place.right) - 4, static_cast<int>(place.top) + 3);
  };
  const COLORREF usual = ::GetSysColor(COLOR_WINDOW);
  EXPECT_EQ(ground(0), usual);
  EXPECT_EQ(ground(1), StripeColor(usual, ::GetSysColor(COLOR_WINDOWTEXT), Contrast::kUsual));
  EXPECT_EQ(ground(2), ::GetSysColor(COLOR_HIGHLIGHT));
  ::SetFocus(nullptr);
  PaintAll();
  EXPECT_EQ(ground(2), SelectionInk(SelectionOf::kListWithoutKeyboard, Contrast::kUsual).ground);
  EXPECT_NE(Seen(10, static_cast<int>(Part(3, LVIR_BOUNDS).top) + 15), ground(3)) << "the initial's square";
}

/// Whether the user wants to see where the keyboard is; Wine always shows it.
bool hides_frames = false;
LRESULT CALLBACK AnswerForFrames(HWND control, UINT message, WPARAM w, LPARAM l, UINT_PTR /*id*/,
                                 DWORD_PTR /*unused*/) {
  if (message == WM_QUERYUISTATE) return hides_frames ? UISF_HIDEFOCUS : 0;
  return ::DefSubclassProc(control, message, w, l);
}

TEST_F(Win32ListFollowTest, FrameOfTheKeyboardIsPaintedOnceTheUserWantsToSeeIt) {
  Fill(5);
  ::SetFocus(Of(list));
  list.Select(list.RowAt(2));
  const RECT all = Inside();
  const auto framed = [&](DWORD_PTR row) {
    const Canvas canvas(static_cast<int>(all.right), static_cast<int>(all.bottom));
    NMLVCUSTOMDRAW step{};
    step.nmcd.hdr.hwndFrom = Of(list);
    step.nmcd.hdr.code = static_cast<UINT>(NM_CUSTOMDRAW);
    step.nmcd.dwDrawStage = CDDS_ITEMPREPAINT;
    step.nmcd.dwItemSpec = row;
    step.nmcd.hdc = canvas.Context();
    EXPECT_EQ(::SendMessageW(window->Handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&step)),
              CDRF_SKIPDEFAULT);
    const LONG top = Part(static_cast<int>(row), LVIR_BOUNDS).top;
    const COLORREF ground = canvas.At(static_cast<int>(all.right) - 5, static_cast<int>(top) + 2);
    return canvas.Count({0, top, all.right, top + 1}, [&](COLORREF one) { return one != ground; }) > 20;
  };
  ::SetWindowSubclass(Of(list), AnswerForFrames, 8, 0);
  hides_frames = true;
  EXPECT_FALSE(framed(2));
  hides_frames = false;
  EXPECT_TRUE(framed(2));
  EXPECT_FALSE(framed(3)) << "another row";
  ::SetFocus(nullptr);
  EXPECT_FALSE(framed(2)) << "the keyboard is elsewhere";
}

TEST_F(Win32ListFollowTest, IconsOfRowsAreToldToTheSystemAndUnknownRowsHaveNothing) {
  Fill(3);
  LVITEMW item{};
  item.mask = LVIF_IMAGE;
  item.iItem = 1;
  item.iImage = 99;
  Ask(LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
  EXPECT_EQ(item.iImage, -1);
  NMLVDISPINFOW wanted{};
  wanted.hdr.hwndFrom = Of(list);
  wanted.hdr.code = static_cast<UINT>(LVN_GETDISPINFOW);
  std::array<wchar_t, 8> buffer{L"alt"};
  wanted.item.mask = LVIF_TEXT | LVIF_IMAGE;
  wanted.item.pszText = buffer.data();
  wanted.item.cchTextMax = static_cast<int>(buffer.size());
  wanted.item.iImage = 99;
  const auto ask = [&] { ::SendMessageW(window->Handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&wanted)); };
  wanted.item.iItem = 3;
  ask();
  EXPECT_STREQ(buffer.data(), L"alt");
  EXPECT_EQ(wanted.item.iImage, 99);
  wanted.item.iItem = 0;
  wanted.item.cchTextMax = 0;
  ask();
  EXPECT_STREQ(buffer.data(), L"alt") << "no room for a text";
  wanted.item.mask = LVIF_IMAGE;
  wanted.item.cchTextMax = static_cast<int>(buffer.size());
  ask();
  EXPECT_STREQ(buffer.data(), L"alt") << "no text is wanted";
  EXPECT_EQ(wanted.item.iImage, -1);
}

TEST_F(Win32ListFollowTest, TooltipOfACutCellFollowsTheCellsTextAndTheColumnsWidth) {
  Fill(3);
  PointAt(1, 1);
  EXPECT_EQ(Hint(), u"");
  list.SetCell(list.RowAt(1), 1, Long());
  EXPECT_EQ(Hint(), Long()) << "while the pointer rests there";
  list.SetCell(list.RowAt(1), 1, Long() + u", neu");
  EXPECT_EQ(Hint(), Long() + u", neu");
  list.SetCell(list.RowAt(1), 1, u"Jazz");
  EXPECT_EQ(Hint(), u"");
  list.SetCell(list.RowAt(1), 0, Long());
  PointAt(1, 0);
  ASSERT_EQ(Hint(), Long());
  list.DragColumn(0, 1500);
  PointAt(1, 0);
  EXPECT_EQ(Hint(), u"") << "it is not cut any more";
}

TEST_F(Win32ListFollowTest, TooltipOfACutCellStaysWhenARowIsSelectedAndFollowsTheRows) {
  Fill(3);
  list.SetCell(list.RowAt(1), 0, Long());
  PointAt(1, 0);
  ASSERT_EQ(Hint(), Long());
  list.Select(list.RowAt(1));
  list.SetEnabled(false);
  EXPECT_EQ(Hint(), Long());
  list.AddRow({.cells = {u"Bonn"}});
  EXPECT_EQ(Hint(), Long()) << "behind the others";
  list.SetCell(list.RowAt(2), 0, Long() + u", neu");
  list.RemoveRow(list.RowAt(0));
  EXPECT_EQ(Hint(), Long() + u", neu") << "the row that is under the pointer now";
  list.Clear();
  EXPECT_EQ(Hint(), u"");
}

TEST_F(Win32ListFollowTest, ListWithRowsHasNoHintOfAnEmptyOne) {
  list.SetEmptyText(u"MMMM MMMM");
  Fill(1);
  PaintAll();
  const RECT all = Inside();
  const Canvas seen(static_cast<int>(all.right), static_cast<int>(all.bottom));
  HDC const context = ::GetDC(Of(list));
  ::BitBlt(seen.Context(), 0, 0, static_cast<int>(all.right), static_cast<int>(all.bottom), context, 0, 0,
           SRCCOPY);
  ::ReleaseDC(Of(list), context);
  EXPECT_EQ(seen.Count({0, Part(0, LVIR_BOUNDS).bottom + 1, all.right, all.bottom}, IsDark), 0);
}

TEST_F(Win32ListFollowTest, TooltipOfTheListItselfIsSeenWhereNoCellIsCut) {
  list.SetToolTip(u"Alle Sender");
  Fill(3);
  list.SetCell(list.RowAt(1), 0, Long());
  EXPECT_EQ(Hint(), u"Alle Sender");
  PointAt(1, 0);
  EXPECT_EQ(Hint(), Long());
  PointAt(2, 0);
  EXPECT_EQ(Hint(), u"Alle Sender");
}

}  // namespace
}  // namespace platform::win32
