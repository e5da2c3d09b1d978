#include "platform/win32/ui/tool_tips.h"

#include "platform/win32/base/windows_api.h"

#include <array>

#include "platform/win32/ui/shown_text.h"
#include "platform/win32/ui/text_drawing.h"
#include "tests/platform/win32/ui/rig.h"

namespace platform::win32 {
namespace {

class Win32ToolTipsTest : public Win32WindowTest {
 protected:
  void SetUp() override {
    inventory = {{"button", &button}};
    Open();
  }
  /// The windows of a class that a window owns.
  static std::vector<HWND> OwnedBy(HWND owner) {
    std::pair<HWND, std::vector<HWND>> found{owner, {}};
    ::EnumThreadWindows(::GetCurrentThreadId(), AddOwned, reinterpret_cast<LPARAM>(&found));
    return found.second;
  }
  static BOOL CALLBACK AddOwned(HWND one, LPARAM found) {
    auto& [owner, list] = *reinterpret_cast<std::pair<HWND, std::vector<HWND>>*>(found);
    if (::GetWindow(one, GW_OWNER) == owner && IsOfClass(one, TOOLTIPS_CLASSW)) list.push_back(one);
    return TRUE;
  }
  HWND Tips() const {
    const std::vector<HWND> tips = OwnedBy(window->Handle());
    return tips.size() == 1 ? tips.front() : nullptr;
  }
  int WidestLine() const { return static_cast<int>(::SendMessageW(Tips(), TTM_GETMAXTIPWIDTH, 0, 0)); }
  Text Given() const {
    std::array<wchar_t, 4096> buffer{};
    TTTOOLINFOW tool{};
    tool.cbSize = TTTOOLINFOW_V2_SIZE;
    tool.hwnd = window->Handle();
    tool.uId = reinterpret_cast<UINT_PTR>(Of(button));
    tool.lpszText = buffer.data();
    ::SendMessageW(Tips(), TTM_GETTEXTW, buffer.size(), reinterpret_cast<LPARAM>(&tool));
    const std::wstring text = buffer.data();
    return {text.begin(), text.end()};
  }
  void SetResolution(unsigned int dots) const {
    RECT place{0, 0, 900, 700};
    ::SendMessageW(window->Handle(), WM_DPICHANGED, MAKEWPARAM(dots, dots), reinterpret_cast<LPARAM>(&place));
  }

  controls::CommandButton button;
};

TEST_F(Win32ToolTipsTest, AreAsWideAsTheResolutionAsks) {
  ASSERT_NE(Tips(), nullptr);
  EXPECT_EQ(WidestLine(), window->GetScale().Scaled(500));
  const int before = WidestLine();
  SetResolution(192);
  EXPECT_EQ(WidestLine(), window->GetScale().Scaled(500));
  EXPECT_GE(WidestLine(), before * 3 / 2);
  const auto height = [](HGDIOBJ font) {
    LOGFONTW face{};
    ::GetObjectW(font, sizeof face, &face);
    return face.lfHeight;
  };
  EXPECT_EQ(height(reinterpret_cast<HGDIOBJ>(::SendMessageW(Tips(), WM_GETFONT, 0, 0))),
            height(window->GetScale().Get(Scale::Font::kPlain)));
}

TEST_F(Win32ToolTipsTest, AddressThatIsTooWideContinuesOnTheNextLine) {
  const Text part = u"eine-lange-adresse/";
  Text address = u"http://radio.example/";
  for (int times = 0; times < 20; ++times) address += part;
  button.SetToolTip(u"Ein Hinweis");
  EXPECT_EQ(Given(), u"Ein Hinweis");
  button.SetToolTip(address);
  EXPECT_EQ(window->HintOf(button), address);
  const auto expect_lines = [this, &address] {
    const WindowContext context(Tips());
    const SelectedFont font(context.Get(), window->GetScale().Get(Scale::Font::kPlain));
    Text all;
    const Text given = Given();
    for (TextView rest = given; !rest.empty();) {
      const TextView line = rest.substr(0, rest.find(u'\n'));
      EXPECT_LE(WidthOf(context.Get(), line), WidestLine());
      all += line;
      rest.remove_prefix(std::min(rest.size(), line.size() + 1));
    }
    EXPECT_EQ(all, address) << "the whole of it";
  };
  expect_lines();
  SetResolution(192);
  expect_lines();
  EXPECT_EQ(::SendMessageW(Tips(), TTM_GETTOOLCOUNT, 0, 0), 1);
  button.SetToolTip({});
  EXPECT_EQ(::SendMessageW(Tips(), TTM_GETTOOLCOUNT, 0, 0), 0);
}

TEST_F(Win32ToolTipsTest, AreShownByTheMouseOverTheirControl) {
  button.SetToolTip(u"Ein Hinweis");
  TTTOOLINFOW tool{};
  tool.cbSize = TTTOOLINFOW_V2_SIZE;
  ASSERT_NE(::SendMessageW(Tips(), TTM_ENUMTOOLSW, 0, reinterpret_cast<LPARAM>(&tool)), 0);
  EXPECT_EQ(tool.hwnd, window->Handle());
  EXPECT_EQ(tool.uId, reinterpret_cast<UINT_PTR>(Of(button)));
  EXPECT_EQ(tool.uFlags & (TTF_IDISHWND | TTF_SUBCLASS), static_cast<UINT>(TTF_IDISHWND | TTF_SUBCLASS));
}

int closed_tips = 0;
LRESULT CALLBACK CountClosing(HWND tips, UINT message, WPARAM w, LPARAM l, UINT_PTR /*id*/,
                              DWORD_PTR /*unused*/) {
  if (message == TTM_POP || message == TTM_DELTOOLW) ++closed_tips;
  return ::DefSubclassProc(tips, message, w, l);
}

class Win32CutTextTipTest : public Win32ToolTipsTest {
 protected:
  void SetUp() override {
    label.SetLook(controls::LabelLook::kText);
    label.SetCaption(text);
    label.Move({0, 0, 1500, 300});
    inventory = {{"label", &label}, {"button", &button, nullptr, {.hint = u"Ein Hinweis"}}};
    Open();
  }
  const Text text = u"Ein Text, der so lang ist, dass er in seinem Platz nicht ganz zu sehen ist";
  controls::Label label;
};

TEST_F(Win32CutTextTipTest, TipThatIsReadStaysWhileSomethingElseOfItsLabelChanges) {
  ASSERT_EQ(window->HintOf(label), text);
  ::SetWindowSubclass(Tips(), CountClosing, 9, 0);
  closed_tips = 0;
  label.SetEnabled(false);
  label.SetEnabled(true);
  label.Move({0, 300, 1500, 300});
  EXPECT_EQ(closed_tips, 0);
  EXPECT_EQ(window->HintOf(label), text);
  label.SetCaption(u"Kurz");
  EXPECT_GT(closed_tips, 0);
  EXPECT_EQ(window->HintOf(label), u"");
  ::RemoveWindowSubclass(Tips(), CountClosing, 9);
}

TEST_F(Win32CutTextTipTest, LabelsOwnTipComesFirst) {
  label.SetToolTip(u"Mehr dazu");
  EXPECT_EQ(window->HintOf(label), u"Mehr dazu");
  label.SetToolTip(u"");
  EXPECT_EQ(window->HintOf(label), text);
}

}  // namespace
}  // namespace platform::win32
