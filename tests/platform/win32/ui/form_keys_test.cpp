// What keys do in the program's window, whichever control has the keyboard.

#include "platform/win32/ui/form_keys.h"

#include "platform/win32/base/windows_api.h"

#include <array>

#include "platform/win32/ui/list_menu.h"
#include "tests/platform/win32/ui/rig.h"

namespace platform::win32 {
namespace {

class Win32FormKeysTest : public Win32WindowTest {
 protected:
  Win32FormKeysTest() {
    list.AddColumn({u"Station", 200});
    list.AddRow({.cells = {u"Köln"}});
    for (const char16_t* item : {u"Jazz", u"Rock"}) combo.AddItem(item);
    notes += button.Clicked.Subscribe([this] { ++clicks; });
  }
  void HandleAll() {
    loop.ProcessPendingMessages();
    bool done = false;
    const Lifetime lifetime;
    loop.HandOver(lifetime, [&done] { done = true; });
    ASSERT_TRUE(Until([&done] { return done; }));
  }
  void Press(HWND target, WPARAM key) {
    PressKey(target, key);
    HandleAll();
  }
  /// While it lives a key is held down beside others.
  class Held {
   public:
    explicit Held(int key) : key_(key) { Set(0x80); }
    ~Held() { Set(0); }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;

   private:
    void Set(BYTE state) const {
      std::array<BYTE, 256> keys{};
      ::GetKeyboardState(keys.data());
      keys[static_cast<std::size_t>(key_)] = state;
      ::SetKeyboardState(keys.data());
    }
    int key_;
  };
  HWND FieldOfCombo() const { return ::GetWindow(Of(combo), GW_CHILD); }

  controls::ListView list;
  controls::TextBox field;
  controls::TextBox second;
  controls::ComboBox combo;
  controls::CommandButton button;
  controls::Frame frame;
  controls::Subscriptions notes;
  int clicks = 0;
};

TEST_F(Win32FormKeysTest, EnterInAListAndInAnOpenListOfAComboBoxIsTheirs) {
  inventory = {
      {"list", &list}, {"combo", &combo}, {"button", &button, nullptr, {.key = controls::kEnterKey}}};
  Open();
  list.Select(list.RowAt(0));
  int opened = 0;
  notes += list.DoubleClicked.Subscribe([&](controls::RowId) { ++opened; });
  Press(Of(list), VK_RETURN);
  EXPECT_EQ(opened, 1);
  EXPECT_EQ(clicks, 0);
  ::SetFocus(FieldOfCombo());
  ::SendMessageW(Of(combo), CB_SHOWDROPDOWN, TRUE, 0);
  Press(FieldOfCombo(), VK_RETURN);
  EXPECT_EQ(clicks, 0);
  EXPECT_EQ(::SendMessageW(Of(combo), CB_GETDROPPEDSTATE, 0, 0), FALSE);
  Press(FieldOfCombo(), VK_RETURN);
  EXPECT_EQ(clicks, 1) << "the list is closed";
}

TEST_F(Win32FormKeysTest, EscapeClosesTheListOfAComboBoxFirst) {
  inventory = {{"combo", &combo}, {"button", &button, nullptr, {.key = controls::kEscapeKey}}};
  Open();
  ::SetFocus(FieldOfCombo());
  ::SendMessageW(Of(combo), CB_SHOWDROPDOWN, TRUE, 0);
  Press(FieldOfCombo(), VK_ESCAPE);
  EXPECT_EQ(clicks, 0);
  EXPECT_EQ(::SendMessageW(Of(combo), CB_GETDROPPEDSTATE, 0, 0), FALSE);
  Press(FieldOfCombo(), VK_ESCAPE);
  EXPECT_EQ(clicks, 1);
}

TEST_F(Win32FormKeysTest, KeyWithControlClicksItsButtonOnceHoweverLongItIsHeld) {
  inventory = {{"field", &field}, {"button", &button, nullptr, {.key = controls::WithControl(u'S')}}};
  Open();
  Press(Of(field), 'S');
  EXPECT_EQ(clicks, 0) << "the letter alone is typed";
  const Held control(VK_CONTROL);
  Press(Of(field), 'S');
  EXPECT_EQ(clicks, 1);
  ::PostMessageW(Of(field), WM_KEYDOWN, 'S', 1 | (1 << 30));
  HandleAll();
  EXPECT_EQ(clicks, 1);
  const Held shift(VK_SHIFT);
  Press(Of(field), 'S');
  EXPECT_EQ(clicks, 1) << "another key";
}

TEST_F(Win32FormKeysTest, KeysThatAFieldUsesAreItsOwnAndWorkElsewhere) {
  inventory = {
      {"field", &field}, {"list", &list}, {"button", &button, nullptr, {.key = controls::WithControl(u'V')}}};
  Open();
  const Held control(VK_CONTROL);
  Press(Of(field), 'V');
  EXPECT_EQ(clicks, 0);
  Press(Of(list), 'V');
  EXPECT_EQ(clicks, 1);
}

TEST_F(Win32FormKeysTest, KeyOfAFrameGoesToItsFirstControlThatIsReady) {
  inventory = {{"field", &field},
               {"frame", &frame, nullptr, {.key = controls::WithControl(u'F')}},
               {"second", &second, &frame},
               {"button", &button, &frame}};
  Open();
  ::SetFocus(Of(field));
  const Held control(VK_CONTROL);
  Press(Of(field), 'F');
  EXPECT_EQ(::GetFocus(), Of(second));
  second.SetEnabled(false);
  ::SetFocus(Of(field));
  Press(Of(field), 'F');
  EXPECT_EQ(::GetFocus(), Of(button));
  button.SetVisible(false);
  ::SetFocus(Of(field));
  Press(Of(field), 'F');
  EXPECT_EQ(::GetFocus(), Of(field)) << "nothing in it is ready";
}

TEST_F(Win32FormKeysTest, KeyThatADialogOvertakesIsDropped) {
  inventory = {{"field", &field}, {"button", &button, nullptr, {.key = controls::kHelpKey}}};
  Open();
  ::SendMessageW(Of(field), WM_NULL, 0, 0);
  ::PostMessageW(Of(field), WM_KEYDOWN, VK_F1, 1);
  loop.ProcessPaintMessages();
  ::EnableWindow(window->Handle(), FALSE);
  HandleAll();
  ::EnableWindow(window->Handle(), TRUE);
  EXPECT_EQ(clicks, 0);
  Press(Of(field), VK_F1);
  EXPECT_EQ(clicks, 1);
}

TEST_F(Win32FormKeysTest, KeyOfAHiddenButtonRestsUnlessItIsSaidToWork) {
  controls::CommandButton working;
  int works = 0;
  notes += working.Clicked.Subscribe([&] { ++works; });
  inventory = {{"field", &field},
               {"button", &button, nullptr, {.key = controls::WithControl(u'S')}},
               {"working",
                &working,
                nullptr,
                {.key = controls::WithControl(u'W'), .key_while_hidden = app::KeyWhileHidden::kWorks}}};
  Open();
  button.SetVisible(false);
  working.SetVisible(false);
  const Held control(VK_CONTROL);
  Press(Of(field), 'S');
  Press(Of(field), 'W');
  EXPECT_EQ(clicks, 0);
  EXPECT_EQ(works, 1);
}

int frames_wanted = 0;
LRESULT CALLBACK CountFrames(HWND control, UINT message, WPARAM w, LPARAM l, UINT_PTR /*id*/,
                             DWORD_PTR /*unused*/) {
  if (message == WM_CHANGEUISTATE && w == MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS)) ++frames_wanted;
  return ::DefSubclassProc(control, message, w, l);
}

TEST_F(Win32FormKeysTest, TabShowsWhereTheKeyboardIsFromNowOn) {
  inventory = {{"field", &field}, {"second", &second}};
  Open();
  ::SetWindowSubclass(window->Handle(), CountFrames, 9, 0);
  frames_wanted = 0;
  Press(Of(field), VK_TAB);
  EXPECT_EQ(frames_wanted, 1);
}

TEST_F(Win32FormKeysTest, TabSelectsTheTextOfTheFieldItComesTo) {
  second.SetText(u"Köln");
  inventory = {{"field", &field}, {"second", &second}};
  Open();
  ::SetFocus(Of(field));
  ::SendMessageW(Of(second), EM_SETSEL, 1, 1);
  Press(Of(field), VK_TAB);
  EXPECT_EQ(::GetFocus(), Of(second));
  EXPECT_EQ(::SendMessageW(Of(second), EM_GETSEL, 0, 0), MAKELPARAM(0, 4));
  const Held shift(VK_SHIFT);
  Press(Of(second), VK_TAB);
  EXPECT_EQ(::GetFocus(), Of(field));
}

TEST_F(Win32FormKeysTest, TabGoesNowhereWhenNothingIsReady) {
  inventory = {{"field", &field}};
  Open();
  field.SetEnabled(false);
  ::SetFocus(window->Handle());
  Press(window->Handle(), VK_TAB);
  EXPECT_EQ(::GetFocus(), window->Handle());
}

}  // namespace
}  // namespace platform::win32
