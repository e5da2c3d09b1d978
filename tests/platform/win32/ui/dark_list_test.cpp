// What a list looks like while the program is dark: its rows, its header, its hint.

#include "platform/win32/base/windows_api.h"

#include "platform/win32/ui/row_painter.h"
#include "tests/platform/win32/ui/dark_looks.h"

namespace platform::win32 {
namespace {

class Win32DarkListTest : public Win32DarkLooksTest {
 protected:
  void SetUp() override {
    list.AddColumn({u"Station", 200});
    list.AddColumn({u"Genre", 100});
    list.Move({0, 0, 7500, 4500});
  }
  HWND Header() const { return reinterpret_cast<HWND>(::SendMessageW(Of(list), LVM_GETHEADER, 0, 0)); }
  RECT Caption(int column) const {
    RECT place{};
    ::SendMessageW(Header(), HDM_GETITEMRECT, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&place));
    return place;
  }

  controls::ListView list;
  Scale scale{96};
};

TEST_F(Win32DarkListTest, RowsEdgeAndGroundAreDark) {
  list.AddRow({.cells = {u"Köln"}});
  list.AddRow({.cells = {u"Bonn"}});
  list.SetMark(list.RowAt(0), controls::RowMark::kPlaying);
  Show({{"list", &list}});
  const Picture picture(Of(list));
  ExpectLightOnDark(picture, "list");
  EXPECT_EQ(picture.At(0, 50), ShownColor(COLOR_WINDOWFRAME));
  EXPECT_EQ(picture.At(1, 50), ShownColor(COLOR_WINDOW));
  EXPECT_EQ(picture.At(200, picture.Height() - 10), ShownColor(COLOR_WINDOW)) << "below the rows";
  ::SetFocus(Of(list));
  EXPECT_EQ(Picture(Of(list), Picture::AsItIs::kYes).At(0, 50), ShownColor(COLOR_HOTLIGHT));
  ::SetFocus(nullptr);
  EXPECT_EQ(Picture(Of(list), Picture::AsItIs::kYes).At(0, 50), ShownColor(COLOR_WINDOWFRAME));
  EXPECT_EQ(static_cast<Color>(::SendMessageW(Of(list), LVM_GETTEXTCOLOR, 0, 0)),
            ShownColor(COLOR_WINDOWTEXT));
  EXPECT_EQ(static_cast<Color>(::SendMessageW(Of(list), LVM_GETTEXTBKCOLOR, 0, 0)), ShownColor(COLOR_WINDOW));
}

TEST_F(Win32DarkListTest, FrameOfTheRowWithTheKeyboardIsSeenOnEveryGround) {
  constexpr int kSide = 60;
  RowPainter painter(list, icons, scale);
  const controls::ListRow row{.cells = {u""}};
  for (const bool selected : {false, true}) {
    RowLook look;
    look.area = {0, 0, 4 * kSide, kSide};
    look.selected = selected;
    look.list_has_keyboard = true;
    look.framed = true;
    Canvas canvas(4 * kSide, kSide);
    painter.Paint(canvas.Context(), row, look);
    const Color ground = canvas.At(2 * kSide, kSide / 2);
    const auto stands_out = [ground](COLORREF one) {
      return front::ContrastOf(FromSystem(one), FromSystem(ground)) >= front::kContrastOfParts;
    };
    EXPECT_GT(canvas.Count({kSide, 0, 4 * kSide, 1}, stands_out), kSide) << selected;
    look.framed = false;
    painter.Paint(canvas.Context(), row, look);
    EXPECT_EQ(canvas.Count({kSide, 0, 4 * kSide, 1}, stands_out), 0) << selected;
  }
}

TEST_F(Win32DarkListTest, HintOfAnEmptyListIsLight) {
  list.SetEmptyText(u"Noch ist kein Sender gespeichert.");
  Show({{"list", &list}});
  const Picture picture(Of(list));
  const RECT below{0, Caption(0).bottom + 4, picture.Width(), picture.Height()};
  EXPECT_GT(picture.Count(below, Is(COLOR_WINDOWTEXT)), 20);
}

TEST_F(Win32DarkListTest, HeaderIsDarkBehindItsLastColumn) {
  Show({{"list", &list}});
  HDITEMW item{};
  item.mask = HDI_WIDTH;
  item.cxy = 60;
  for (const WPARAM column : {0U, 1U})
    ::SendMessageW(Header(), HDM_SETITEMW, column, reinterpret_cast<LPARAM>(&item));
  const Picture picture(Header());
  ASSERT_LT(Caption(1).right, picture.Width() - 20);
  EXPECT_EQ(picture.At(picture.Width() - 5, 3), ShownColor(COLOR_BTNFACE));
  EXPECT_EQ(picture.At(picture.Width() - 5, picture.Height() - 1), ShownColor(COLOR_BTNSHADOW));
}

TEST_F(Win32DarkListTest, HeaderIsDarkAndShowsTheSortingAndWhatIsPressed) {
  list.AddRow({.cells = {u"Köln"}});
  Show({{"list", &list}});
  const Picture unsorted(Header());
  ExpectLightOnDark(unsorted, "header");
  EXPECT_EQ(unsorted.At(3, 3), ShownColor(COLOR_BTNFACE));
  const auto nothing = [](const auto&, const auto&) { return 0; };
  list.Sort(0, controls::SortDirection::kAscending, nothing);
  const int upwards = Picture(Header()).Count(Caption(0), IsLight);
  EXPECT_GT(upwards, unsorted.Count(Caption(0), IsLight) + 8);
  EXPECT_EQ(Picture(Header()).Count(Caption(1), IsLight), unsorted.Count(Caption(1), IsLight));
  const RECT first = Caption(0);
  ::SendMessageW(Header(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(first.left + 30, 5));
  EXPECT_EQ(Picture(Header()).At(first.left + 3, 3), FaceOf(PartState::kPressed).ground);
  ::SendMessageW(Header(), WM_LBUTTONUP, 0, MAKELPARAM(first.left + 30, 5));
}

}  // namespace
}  // namespace platform::win32
