#pragma once
// Labels whose text may be longer than their place: wrapped texts, which flow around a picture, and the
// sentence along a window's lower edge. Not short captions (captioned_bindings.h).

#include <vector>

#include "controls/captioned.h"
#include "platform/front/announced_text.h"
#include "platform/front/named_lines.h"
#include "platform/win32/ui/control_binding.h"
#include "platform/win32/ui/timer_binding.h"

namespace platform::win32 {

/// What does not fit ends in dots and is the label's tooltip.
class TextPanelBinding final : public ControlBinding {
 public:
  TextPanelBinding(controls::Label& label, HWND parent, const Surroundings& around);

  /// A picture in the label's right part, in the label's pixels; lines beside it are shorter.
  void SetObstacle(const PixelPlace& obstacle);
  void Draw(const tagDRAWITEMSTRUCT& place) override;
  /// Whether the whole text is to be seen.
  [[nodiscard]] bool ShowsAll() const { return shows_all_; }

 protected:
  void FollowWindow() override;
  [[nodiscard]] Text Tip() const override;

 private:
  void Follow();
  void Fit();
  class Flow;
  enum class Paint { kNo, kYes };
  /// Whether everything has room.
  [[nodiscard]] bool LayOut(HDC context, Paint paint) const;

  controls::Label& label_;
  std::vector<front::NamedLine> lines_;
  PixelPlace obstacle_;
  bool shows_all_ = true;
};

/// A live region, whose changes it reports.
class StatusStripBinding final : public ControlBinding {
 public:
  StatusStripBinding(controls::Label& label, HWND parent, const Surroundings& around);

  /// Whether the text will be reported when it has rested.
  [[nodiscard]] bool IsToBeReported() const { return rest_.Enabled(); }
  void Draw(const tagDRAWITEMSTRUCT& place) override;

 protected:
  /// A sentence that is too long for the line.
  [[nodiscard]] Text Tip() const override;

 private:
  void Follow();
  void Announce();
  /// Of the text from both ends of the line, when that is so high.
  [[nodiscard]] static int Margin(int height) { return height * 5 / 12; }
  controls::Label& label_;
  front::AnnouncedText announced_;
  controls::Timer rest_;
  TimerBinding rest_binding_;
};

}  // namespace platform::win32
