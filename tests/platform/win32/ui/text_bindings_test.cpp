// Fields, number fields and combo boxes: what the user types or chooses, and what the program writes
// meanwhile.

#include "platform/win32/ui/text_bindings.h"

#include "platform/win32/base/windows_api.h"

#include <uxtheme.h>

#include <array>
#include <vector>

#include "platform/win32/ui/shown_text.h"
#include "tests/platform/win32/ui/rig.h"

namespace platform::win32 {
namespace {

class Win32TextBindingsTest : public Win32WindowTest {
 protected:
  void HandleAll() {
    bool done = false;
    const Lifetime lifetime;
    loop.HandOver(lifetime, [&done] { done = true; });
    ASSERT_TRUE(Until([&done] { return done; }));
  }
  void Press(HWND target, WPARAM key) {
    PressKey(target, key);
    loop.ProcessPendingMessages();
    HandleAll();
  }
  static void TypeInto(HWND edit, const wchar_t* text) {
    ::SendMessageW(edit, EM_SETSEL, 0, -1);
    ::SendMessageW(edit, EM_REPLACESEL, 0, reinterpret_cast<LPARAM>(text));
  }
  void SetResolution(unsigned int dots) const {
    RECT place{0, 0, 900, 700};
    ::SendMessageW(window->Handle(), WM_DPICHANGED, MAKEWPARAM(dots, dots), reinterpret_cast<LPARAM>(&place));
  }
  static RECT PlaceOf(HWND one) {
    RECT place{};
    ::GetWindowRect(one, &place);
    return place;
  }

  controls::TextBox field;
  controls::UpDownTextBox number;
  controls::ComboBox combo;
};

TEST_F(Win32TextBindingsTest, FieldTakesTextsOfAnyLength) {
  inventory = {{"field", &field}};
  Open();
  TypeInto(Of(field), std::wstring(40'000, L'x').c_str());
  HandleAll();
  EXPECT_EQ(field.GetText().size(), 40'000U);
}

TEST_F(Win32TextBindingsTest, TextOfTheProgramIsNoTyping) {
  inventory = {{"field", &field}, {"combo", &combo}};
  Open();
  std::vector<Text> texts;
  controls::Subscriptions notes;
  notes += field.TextChanged.Subscribe([&] { texts.push_back(field.GetText()); });
  notes += combo.TextChanged.Subscribe([&] { texts.push_back(combo.GetText()); });
  field.SetText(u"a");
  combo.SetText(u"b");
  HandleAll();
  field.SetText(u"Köln");
  combo.SetText(u"Jazz");
  HandleAll();
  EXPECT_EQ(texts, (std::vector<Text>{u"a", u"b", u"Köln", u"Jazz"}));
}

TEST_F(Win32TextBindingsTest, GroundAroundAFieldsTextIsThatOfTheField) {
  field.Move({0, 0, 3000, 900});
  inventory = {{"field", &field}};
  Open();
  // The system's font leaves room around it in a larger field only.
  SetResolution(192);
  // A theme may paint there, too.
  ::SetWindowTheme(Of(field), L" ", L" ");
  const auto seen = [this](int from_edge) {
    HDC const context = ::GetWindowDC(Of(field));
    const int height = static_cast<int>(PlaceOf(Of(field)).bottom - PlaceOf(Of(field)).top);
    const RECT strip{2, 2, 100, height - 2};
    HBRUSH const red = ::CreateSolidBrush(RGB(255, 0, 0));
    ::FillRect(context, &strip, red);
    ::DeleteObject(red);
    ::SendMessageW(Of(field), WM_NCPAINT, 1, 0);
    const COLORREF color = ::GetPixel(context, 20, from_edge < 0 ? height + from_edge : from_edge);
    ::ReleaseDC(Of(field), context);
    return color;
  };
  // Inside of the system's border, which has two lines.
  for (const int line : {2, -3}) EXPECT_EQ(seen(line), ::GetSysColor(COLOR_WINDOW)) << line;
  field.SetEnabled(false);
  for (const int line : {2, -3}) EXPECT_EQ(seen(line), ::GetSysColor(COLOR_BTNFACE)) << line;
}

TEST_F(Win32TextBindingsTest, FieldIsClickedAboveAndBelowItsTextToo) {
  field.Move({0, 0, 3000, 900});
  inventory = {{"field", &field}};
  Open();
  // The system's font leaves room around it in a larger field only.
  SetResolution(192);
  const RECT place = PlaceOf(Of(field));
  for (const LONG line : {place.top + 2, place.bottom - 3, (place.top + place.bottom) / 2})
    EXPECT_EQ(::SendMessageW(Of(field), WM_NCHITTEST, 0, MAKELPARAM(place.left + 20, line)), HTCLIENT)
        << line;
}

TEST_F(Win32TextBindingsTest, ArrowsStandBehindTheirFieldAndFollowIt) {
  inventory = {{"number", &number}};
  Open();
  HWND const arrows = dynamic_cast<UpDownBinding&>(*window->Controls().Of(number)).Arrows();
  const auto expect_beside = [&] {
    const RECT behind = PlaceOf(arrows);
    const RECT before = PlaceOf(Of(number));
    EXPECT_EQ(behind.left, before.right);
    EXPECT_EQ(behind.top, before.top);
    EXPECT_EQ(behind.bottom, before.bottom);
    EXPECT_EQ(behind.right - before.left, window->GetScale().Pixels(number.GetPlace().width));
    EXPECT_EQ(behind.right - behind.left,
              ::GetSystemMetricsForDpi(SM_CXVSCROLL, window->GetScale().DotsPerInch()));
  };
  expect_beside();
  number.Move({600, 900, 2400, 450});
  expect_beside();
  SetResolution(192);
  expect_beside();
  EXPECT_TRUE(::IsWindowVisible(arrows) != 0);
  number.SetEnabled(false);
  EXPECT_FALSE(::IsWindowEnabled(arrows) != 0);
  number.SetVisible(false);
  EXPECT_FALSE(::IsWindowVisible(arrows) != 0);
}

TEST_F(Win32TextBindingsTest, ArrowsCountWithinTheirBoundsAndWithoutDots) {
  inventory = {{"number", &number}};
  Open();
  const std::array<std::array<const char16_t*, 3>, 3> steps = {
      {{u"99999", u"99999", u"99998"}, {u"0", u"1", u"0"}, {u"1999", u"2000", u"1998"}}};
  for (const auto& [start, up, down] : steps) {
    number.SetText(start);
    Press(Of(number), VK_UP);
    EXPECT_EQ(number.GetText(), up);
    number.SetText(start);
    Press(Of(number), VK_DOWN);
    EXPECT_EQ(number.GetText(), down);
  }
}

class Win32ComboBoxTest : public Win32TextBindingsTest {
 protected:
  void SetUp() override {
    for (const char16_t* item : {u"Jazz", u"Rock\nPop", u"Österreich"}) combo.AddItem(item);
    inventory = {{"combo", &combo}};
    Open();
    notes += combo.Clicked.Subscribe([this] { ++choices; });
    notes += combo.TextChanged.Subscribe([this] { texts.push_back(combo.GetText()); });
  }
  HWND Field() const { return ::GetWindow(Of(combo), GW_CHILD); }
  LRESULT Ask(UINT message, WPARAM w = 0, LPARAM l = 0) const {
    return ::SendMessageW(Of(combo), message, w, l);
  }
  void Report(WORD code) const {
    ::SendMessageW(window->Handle(), WM_COMMAND, MAKEWPARAM(0, code), reinterpret_cast<LPARAM>(Of(combo)));
  }
  /// As the user, in the open list.
  void Choose(int index) const {
    Ask(CB_SETCURSEL, static_cast<WPARAM>(index));
    Report(CBN_SELENDOK);
    Report(CBN_SELCHANGE);
  }

  int choices = 0;
  std::vector<Text> texts;
  controls::Subscriptions notes;
};

TEST_F(Win32ComboBoxTest, EntriesAreLinesOfItsListAndNewOnesCome) {
  const auto entry = [this](WPARAM index) {
    std::array<wchar_t, 64> buffer{};
    Ask(CB_GETLBTEXT, index, reinterpret_cast<LPARAM>(buffer.data()));
    const std::wstring text = buffer.data();
    return Text(text.begin(), text.end());
  };
  EXPECT_EQ(Ask(CB_GETCOUNT), 3);
  EXPECT_EQ(entry(1), u"Rock Pop");
  combo.AddItem(u"Klassik");
  EXPECT_EQ(Ask(CB_GETCOUNT), 4);
  EXPECT_EQ(entry(3), u"Klassik");
}

TEST_F(Win32ComboBoxTest, EntryThatTheProgramChoosesIsShownAndMarkedInTheList) {
  combo.SetListIndex(2);
  EXPECT_EQ(TextOf(Of(combo)), u"Österreich");
  EXPECT_EQ(Ask(CB_GETCURSEL), 2);
  HandleAll();
  EXPECT_EQ(choices, 1);
  EXPECT_EQ(combo.ListIndex(), 2) << "it is no typing";
}

TEST_F(Win32ComboBoxTest, TypedTextReachesTheProgramOnce) {
  combo.SetListIndex(0);
  texts.clear();
  TypeInto(Field(), L"Jazz und mehr");
  EXPECT_TRUE(texts.empty()) << "from the loop only";
  HandleAll();
  EXPECT_EQ(texts, std::vector<Text>{u"Jazz und mehr"});
  EXPECT_EQ(combo.ListIndex(), -1);
  EXPECT_EQ(TextOf(Of(combo)), u"Jazz und mehr");
}

int texts_set = 0;
LRESULT CALLBACK CountTexts(HWND control, UINT message, WPARAM w, LPARAM l, UINT_PTR /*id*/,
                            DWORD_PTR /*unused*/) {
  if (message == WM_SETTEXT) ++texts_set;
  return ::DefSubclassProc(control, message, w, l);
}

TEST_F(Win32ComboBoxTest, TypingIsNotWrittenOverWithWhatWasThereBefore) {
  combo.SetListIndex(0);
  ::SetWindowSubclass(Field(), CountTexts, 9, 0);
  texts_set = 0;
  TypeInto(Field(), L"Jazz und mehr");
  HandleAll();
  EXPECT_EQ(texts_set, 0);
}

TEST_F(Win32ComboBoxTest, TypingIsKeptUntilItsTurnThoughSomethingElseChanges) {
  TypeInto(Field(), L"Blues");
  combo.AddItem(u"Klassik");
  EXPECT_EQ(TextOf(Of(combo)), u"Blues");
  HandleAll();
  EXPECT_EQ(combo.GetText(), u"Blues");
  combo.SetText(u"Jazz");
  EXPECT_EQ(TextOf(Of(combo)), u"Jazz");
}

TEST_F(Win32ComboBoxTest, TextOfTheProgramReplacesWhatIsTyped) {
  TypeInto(Field(), L"Blues");
  combo.SetText(u"Jazz");
  EXPECT_EQ(TextOf(Of(combo)), u"Jazz");
  HandleAll();
  EXPECT_EQ(combo.GetText(), u"Jazz");
  EXPECT_EQ(TextOf(Of(combo)), u"Jazz");
}

TEST_F(Win32ComboBoxTest, ProgramThatAnswersTypingWithAnotherTextIsShown) {
  notes += combo.TextChanged.Subscribe([this] {
    if (combo.GetText() == u"blues") combo.SetText(u"Blues");
  });
  TypeInto(Field(), L"blues");
  HandleAll();
  EXPECT_EQ(TextOf(Of(combo)), u"Blues");
}

TEST_F(Win32ComboBoxTest, EntryThatWasChosenLastIsChosenAgainAfterTyping) {
  Choose(2);
  HandleAll();
  ASSERT_EQ(choices, 1);
  Choose(2);
  HandleAll();
  EXPECT_EQ(choices, 2);
  TypeInto(Field(), L"x");
  HandleAll();
  Choose(2);
  HandleAll();
  EXPECT_EQ(choices, 3);
  EXPECT_EQ(combo.GetText(), u"Österreich");
}

TEST_F(Win32ComboBoxTest, OpenListOnlyChoosesWhenItIsLeft) {
  Ask(CB_SHOWDROPDOWN, TRUE);
  ASSERT_EQ(Ask(CB_GETDROPPEDSTATE), TRUE);
  Ask(CB_SETCURSEL, 0);
  Report(CBN_SELCHANGE);
  HandleAll();
  EXPECT_EQ(choices, 0) << "the user is on the way to another one";
  Report(CBN_SELENDOK);
  HandleAll();
  EXPECT_EQ(choices, 1);
  Ask(CB_SHOWDROPDOWN, FALSE);
  Ask(CB_SETCURSEL, 2);
  Report(CBN_SELCHANGE);
  HandleAll();
  EXPECT_EQ(choices, 2) << "by the arrow keys";
  EXPECT_EQ(combo.GetText(), u"Österreich");
}

TEST_F(Win32ComboBoxTest, ChoiceThatADialogOvertakesIsDroppedAndNoLongerShown) {
  TypeInto(Field(), L"x");
  HandleAll();
  combo.SetListIndex(0);
  choices = 0;
  Choose(2);
  ::EnableWindow(window->Handle(), FALSE);
  HandleAll();
  ::EnableWindow(window->Handle(), TRUE);
  EXPECT_EQ(choices, 0);
  EXPECT_EQ(TextOf(Of(combo)), u"Jazz");
  EXPECT_EQ(Ask(CB_GETCURSEL), 0);
  Choose(2);
  HandleAll();
  EXPECT_EQ(choices, 1) << "the same one, later";
}

TEST_F(Win32ComboBoxTest, ChoiceIsShownUntilItsTurnThoughSomethingElseChanges) {
  Choose(2);
  combo.AddItem(u"Klassik");
  EXPECT_EQ(TextOf(Of(combo)), u"Österreich");
  HandleAll();
  EXPECT_EQ(combo.ListIndex(), 2);
}

TEST_F(Win32ComboBoxTest, ListShowsTwentyEntriesWithoutScrolling) { EXPECT_EQ(Ask(CB_GETMINVISIBLE), 20); }

TEST_F(Win32ComboBoxTest, FieldIsAsHighAsOtherFieldsAtEachResolution) {
  const auto height = [this] { return static_cast<int>(PlaceOf(Of(combo)).bottom - PlaceOf(Of(combo)).top); };
  // Wine adds two lines to the height that it is asked for.
  EXPECT_NEAR(height(), window->GetScale().Scaled(24), 2);
  SetResolution(192);
  EXPECT_NEAR(height(), window->GetScale().Scaled(24), 2);
  EXPECT_EQ(Ask(WM_GETFONT), reinterpret_cast<LRESULT>(window->GetScale().Get(Scale::Font::kPlain)));
}

}  // namespace
}  // namespace platform::win32
