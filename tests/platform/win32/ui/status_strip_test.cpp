// What a screen reader learns of the status line: which of its changes are reported, and when.
#include "platform/win32/base/windows_api.h"

#include <chrono>
#include <vector>

#include "platform/front/announced_text.h"
#include "platform/win32/ui/shown_text.h"
#include "platform/win32/ui/text_panel.h"
#include "tests/platform/win32/ui/canvas.h"
#include "tests/platform/win32/ui/rig.h"

namespace platform::win32 {
namespace {

/// What the status line said at each of its reports, as a screen reader reads it when it learns of one.
std::vector<Text> spoken;
void CALLBACK Speak(HWINEVENTHOOK /*hook*/, DWORD /*event*/, HWND window, LONG object, LONG child,
                    DWORD /*thread*/, DWORD /*time*/) {
  if (object == OBJID_CLIENT && child == CHILDID_SELF) spoken.push_back(TextOf(window));
}

class Win32StatusStripTest : public Win32WindowTest {
 protected:
  Win32StatusStripTest() {
    label.SetLook(controls::LabelLook::kStatusLine);
    inventory = {{"label", &label}};
    Open();
    spoken.clear();
    hook_ = ::SetWinEventHook(EVENT_OBJECT_LIVEREGIONCHANGED, EVENT_OBJECT_LIVEREGIONCHANGED, nullptr, Speak,
                              ::GetCurrentProcessId(), ::GetCurrentThreadId(), WINEVENT_OUTOFCONTEXT);
    EXPECT_NE(hook_, nullptr);
  }
  ~Win32StatusStripTest() override { ::UnhookWinEvent(hook_); }
  void Show(const Text& sentence) {
    label.SetCaption(sentence);
    loop.ProcessPendingMessages();
  }

  [[nodiscard]] const StatusStripBinding& Strip() const {
    return dynamic_cast<const StatusStripBinding&>(*window->Controls().Of(label));
  }

  using Clock = std::chrono::steady_clock;
  static constexpr std::chrono::milliseconds kRest{front::AnnouncedText::kRest};
  controls::Label label;

 private:
  HWINEVENTHOOK hook_ = nullptr;
};

TEST_F(Win32StatusStripTest, EachSentenceIsReportedOnceAndAnEmptyOneNotAtAll) {
  Show(u"Verbinde mit Radio …");
  Show(u"Verbinde mit Radio …");
  label.SetToolTip(u"anderes");
  Show(u"");
  Show(u"Gestoppt.");
  EXPECT_TRUE(Until([] { return spoken.size() >= 2; }));
  EXPECT_EQ(spoken, (std::vector<Text>{u"Verbinde mit Radio …", u"Gestoppt."}));
  EXPECT_FALSE(Strip().IsToBeReported());
}

TEST_F(Win32StatusStripTest, CountdownIsReportedWhenItBeginsAndOnceWhenItRests) {
  Show(u"Noch 3 s");
  Show(u"Noch 2 s");
  const Clock::time_point change = Clock::now() + kRest / 4;
  EXPECT_TRUE(Until([&] { return Clock::now() > change; }));
  Show(u"Noch 1 s");
  EXPECT_TRUE(Strip().IsToBeReported());
  EXPECT_TRUE(Until([] { return spoken.size() >= 2; }));
  EXPECT_GT(Clock::now() - change, kRest * 9 / 10) << "each change begins the rest anew";
  EXPECT_EQ(spoken, (std::vector<Text>{u"Noch 3 s", u"Noch 1 s"}));
  EXPECT_FALSE(Strip().IsToBeReported());
}

TEST_F(Win32StatusStripTest, OtherSentenceTakesTheCountdownsPlace) {
  for (const char16_t* sentence : {u"Noch 3 s", u"Noch 2 s", u"Gestoppt."}) Show(sentence);
  EXPECT_FALSE(Strip().IsToBeReported());
  EXPECT_TRUE(Until([] { return spoken.size() >= 2; }));
  EXPECT_EQ(spoken, (std::vector<Text>{u"Noch 3 s", u"Gestoppt."}));
}

TEST_F(Win32StatusStripTest, SentenceThatIsTooLongIsReadInFullInItsTooltip) {
  label.Move({0, 5700, 3000, 300});
  Show(u"Gestoppt.");
  EXPECT_EQ(window->HintOf(label), u"");
  const Text sentence = u"Der Sender antwortet nicht, deshalb wird in einer Weile noch einmal gefragt";
  Show(sentence);
  EXPECT_EQ(window->HintOf(label), sentence);
  label.Move({0, 5700, 9000, 300});
  EXPECT_EQ(window->HintOf(label), u"") << "it has room now";
  label.Move({0, 5700, 3000, 300});
  EXPECT_EQ(window->HintOf(label), sentence);
  label.SetToolTip(u"Ein Hinweis");
  EXPECT_EQ(window->HintOf(label), u"Ein Hinweis");
  const LRESULT part = ::SendMessageW(Strip().Handle(), WM_NCHITTEST, 0, 0);
  EXPECT_EQ(part, HTCLIENT) << "without the mouse there is no tooltip";
}

TEST_F(Win32StatusStripTest, IsPaintedWithALineAboveItsText) {
  label.Move({0, 0, 3000, 360});
  Show(u"MMMM");
  Canvas canvas(200, 24);
  DRAWITEMSTRUCT place{};
  place.hwndItem = Strip().Handle();
  place.hDC = canvas.Context();
  place.rcItem = {0, 0, 200, 24};
  ::SendMessageW(window->Handle(), WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&place));
  const auto is = [](int number) {
    return [color = ::GetSysColor(number)](COLORREF one) { return one == color; };
  };
  EXPECT_EQ(canvas.Count({0, 0, 200, 1}, is(COLOR_BTNSHADOW)), 200);
  EXPECT_EQ(canvas.Count({0, 1, 10, 24}, is(COLOR_BTNFACE)), 230) << "the margin";
  const auto first = canvas.FirstColumn({0, 1, 200, 24}, IsDark);
  EXPECT_NEAR(first.value_or(0), 10, 3);
  EXPECT_EQ(canvas.Count({100, 1, 200, 24}, is(COLOR_BTNFACE)), 2300) << "behind the text";
  ::UpdateWindow(Strip().Handle());
  label.SetCaption(u"Gestoppt.");
  EXPECT_TRUE(::GetUpdateRect(Strip().Handle(), nullptr, FALSE) != 0);
}

}  // namespace
}  // namespace platform::win32
