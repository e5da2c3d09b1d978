// What fields look like while the program is dark, above all those that are disabled.

#include "platform/win32/base/windows_api.h"

#include "tests/platform/win32/ui/dark_looks.h"

namespace platform::win32 {
namespace {

class Win32DarkFieldTest : public Win32DarkLooksTest {
 protected:
  /// How many pixels are ground in one picture and text in the other.
  static int DifferentInk(const Picture& one, Color ground, const Picture& other, Color other_ground) {
    int count = 0;
    for (int y = 4; y < one.Height() - 4; ++y) {
      for (int x = 4; x < one.Width() - 4; ++x)
        count += (one.At(x, y) == ground) == (other.At(x, y) == other_ground) ? 0 : 1;
    }
    return count;
  }
  static void Select(HWND handle, int place) {
    ::SendMessageW(handle, EM_SETSEL, static_cast<WPARAM>(place), place);
    ::SendMessageW(handle, EM_SCROLLCARET, 0, 0);
  }

  controls::TextBox field;
};

TEST_F(Win32DarkFieldTest, AllOfADisabledFieldIsPaintedAgainWhenTheSystemHasPaintedInIt) {
  field.SetText(u"http://radio.example/");
  field.SetEnabled(false);
  Show({{"field", &field}});
  HWND const handle = Of(field);
  RECT all{};
  ::GetClientRect(handle, &all);
  const auto is_painted_again = [&](UINT message, WPARAM w, LPARAM l) {
    ::UpdateWindow(handle);
    ::ValidateRect(handle, nullptr);
    ::SendMessageW(handle, message, w, l);
    RECT open{};
    return ::GetUpdateRect(handle, &open, FALSE) != 0 && ::EqualRect(&open, &all) != 0;
  };
  EXPECT_TRUE(is_painted_again(EM_SETSEL, 0, 3));
  EXPECT_TRUE(is_painted_again(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"http://bonn.example/")));
  EXPECT_TRUE(is_painted_again(WM_KILLFOCUS, 0, 0));
  EXPECT_FALSE(is_painted_again(WM_GETTEXTLENGTH, 0, 0));
}

TEST_F(Win32DarkFieldTest, DisabledFieldIsTheSameWhereverItIsPainted) {
  field.SetText(u"http://radio.example/");
  field.SetEnabled(false);
  Show({{"field", &field}});
  RECT all{};
  ::GetClientRect(Of(field), &all);
  Canvas canvas(static_cast<int>(all.right), static_cast<int>(all.bottom));
  ::SendMessageW(Of(field), WM_PRINTCLIENT, reinterpret_cast<WPARAM>(canvas.Context()), PRF_CLIENT);
  EXPECT_EQ(canvas.At(canvas.Width() - 2, 2), ShownColor(COLOR_BTNFACE));
  EXPECT_GT(canvas.Count(Is(COLOR_GRAYTEXT)), 8);
  EXPECT_EQ(canvas.Count([](COLORREF one) { return one == ::GetSysColor(COLOR_GRAYTEXT); }), 0);
}

TEST_F(Win32DarkFieldTest, ScrolledTextStaysWhereItIsWhenItsFieldIsDisabled) {
  Text address = u"http://radio.example/";
  for (int times = 0; times < 12; ++times) address += u"eine-lange-adresse/";
  field.SetText(address);
  Show({{"field", &field}});
  ::SetFocus(Of(field));
  Select(Of(field), 0);
  const Picture beginning(Of(field));
  Select(Of(field), static_cast<int>(address.size()));
  ::SetFocus(nullptr);
  const Picture usual(Of(field));
  field.SetEnabled(false);
  const Picture disabled(Of(field));
  const Color ground = ShownColor(COLOR_WINDOW);
  EXPECT_GT(DifferentInk(beginning, ground, usual, ground), 60) << "it is scrolled";
  EXPECT_LT(DifferentInk(usual, ground, disabled, ShownColor(COLOR_BTNFACE)), 15);
}

TEST_F(Win32DarkFieldTest, DisabledFieldWithoutATextIsEmpty) {
  field.SetEnabled(false);
  Show({{"field", &field}});
  const Picture picture(Of(field));
  EXPECT_EQ(picture.Count({4, 4, picture.Width() - 4, picture.Height() - 4}, Is(COLOR_BTNFACE)),
            (picture.Width() - 8) * (picture.Height() - 8));
}

TEST_F(Win32DarkFieldTest, ComboBoxIsPaintedAllAroundItsFieldWhereverThatIs) {
  controls::ComboBox combo;
  Show({{"combo", &combo}});
  COMBOBOXINFO parts{};
  parts.cbSize = sizeof parts;
  ::GetComboBoxInfo(Of(combo), &parts);
  const RECT& place = parts.rcItem;
  ::SetWindowPos(parts.hwndItem, nullptr, place.left, place.top, place.right - place.left - 40,
                 place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
  HDC context = ::GetDC(Of(combo));
  ::FillRect(context, &place, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
  ::ReleaseDC(Of(combo), context);
  const Picture picture(Of(combo));
  EXPECT_EQ(picture.At(place.right - 10, picture.Height() / 2), ShownColor(COLOR_WINDOW));
}

}  // namespace
}  // namespace platform::win32
