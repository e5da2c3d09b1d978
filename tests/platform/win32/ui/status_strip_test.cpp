// What a screen reader learns of the status line: which of its changes are reported, and when.
#include "platform/win32/base/windows_api.h"

#include <chrono>
#include <vector>

#include "platform/front/announced_text.h"
#include "platform/win32/ui/shown_text.h"
#include "platform/win32/ui/text_panel.h"
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

}  // namespace
}  // namespace platform::win32
