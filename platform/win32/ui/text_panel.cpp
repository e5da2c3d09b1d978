#include "platform/win32/ui/text_panel.h"

#include "platform/win32/base/windows_api.h"

#include <algorithm>

#include "platform/win32/base/wide.h"
#include "platform/win32/ui/palette.h"
#include "platform/win32/ui/shown_text.h"
#include "platform/win32/ui/text_drawing.h"

namespace platform::win32 {
namespace {

// At 100 %.
constexpr int kObstacleGap = 6;
constexpr int kNarrowestLine = 40;
constexpr int kColumnGap = 8;
/// With less room beside the picture a line is no longer set in columns.
constexpr int kNarrowestValue = 60;
/// Names get no more than this part of the width, so that a long one leaves room for the values.
constexpr double kWidestNames = 0.5;

Scale::Font FontOf(const controls::Label& label) {
  return label.Look() == controls::LabelLook::kTitle ? Scale::Font::kTitle : Scale::Font::kPlain;
}

int LineHeight(HDC context) {
  TEXTMETRICW metrics{};
  ::GetTextMetricsW(context, &metrics);
  return static_cast<int>(metrics.tmHeight);
}

PixelPlace AreaOf(const tagDRAWITEMSTRUCT& place) {
  const RECT& area = place.rcItem;
  return {static_cast<int>(area.left), static_cast<int>(area.top), static_cast<int>(area.right - area.left),
          static_cast<int>(area.bottom - area.top)};
}

Color NameColor() {
  return FadedColor(ShownColor(COLOR_WINDOW), ShownColor(COLOR_WINDOWTEXT), UsersContrast());
}

}  // namespace

/// Lays lines below each other until the label's height ends.
class TextPanelBinding::Flow {
 public:
  Flow(const TextPanelBinding& panel, HDC context, Paint paint)
      : panel_(panel), context_(context), paint_(paint), line_height_(LineHeight(context)) {
    ::GetClientRect(panel.Handle(), &all_);
    left_ = ValuesLeft();
  }

  /// False when the line had to be cut; what follows has no room then. `rest` is the text of what follows.
  bool Place(const front::NamedLine& line, const Text& rest) {
    const int left = LeftOf(line);
    const Text whole = left > 0 ? line.value : front::Joined(line);
    if (left > 0) DrawName(line.name, left);
    TextView text = whole;
    do {
      const int room = RoomFrom(left);
      const std::size_t units = UnitsInLine(context_, text, std::max(room, Pixels(kNarrowestLine)));
      const bool unfinished = units < text.size();
      const bool too_narrow = room < Pixels(kNarrowestLine) && (unfinished || left == 0);
      if ((unfinished || !rest.empty()) && (IsLast() || too_narrow)) {
        if (room >= Pixels(kNarrowestLine)) DrawLine(Text(text) + rest, left, room);
        return false;
      }
      DrawLine(text.substr(0, units), left, room);
      const bool blank = unfinished && text[units] == u' ';
      text.remove_prefix(units + (blank ? 1 : 0));
      top_ += line_height_;
    } while (!text.empty());
    return true;
  }

 private:
  [[nodiscard]] int Pixels(int at_100_percent) const { return panel_.GetScale().Scaled(at_100_percent); }
  [[nodiscard]] bool IsLast() const { return top_ + 2 * line_height_ > all_.bottom; }

  [[nodiscard]] int RoomFrom(int left) const {
    const PixelPlace& obstacle = panel_.obstacle_;
    const int gap = Pixels(kObstacleGap);
    const bool beside = obstacle.width > 0 && top_ < obstacle.top + obstacle.height + gap &&
                        top_ + line_height_ > obstacle.top - gap;
    return (beside ? obstacle.left - gap : static_cast<int>(all_.right)) - left;
  }

  [[nodiscard]] int ValuesLeft() const {
    int widest = 0;
    for (const front::NamedLine& line : panel_.lines_) {
      widest = std::max(widest, WidthOf(context_, line.name) + Pixels(kColumnGap));
    }
    return std::min(widest, static_cast<int>(static_cast<double>(all_.right) * kWidestNames));
  }

  /// Where the line's value begins: in its column, or, where a picture leaves none, behind its name. 0 when
  /// the line has no name, or both together need more than one line there.
  [[nodiscard]] int LeftOf(const front::NamedLine& line) const {
    if (line.name.empty()) return 0;
    if (RoomFrom(left_) >= Pixels(kNarrowestValue)) return left_;
    const int behind = WidthOf(context_, line.name + u" ");
    return behind + WidthOf(context_, line.value) <= RoomFrom(0) ? behind : 0;
  }

  void DrawName(const Text& name, int left) const {
    if (paint_ == Paint::kNo) return;
    const COLORREF before = ::SetTextColor(context_, NameColor());
    DrawLine(name, 0, left == left_ ? left - Pixels(kColumnGap) / 2 : left);
    ::SetTextColor(context_, before);
  }
  void DrawLine(TextView text, int left, int room) const {
    if (paint_ == Paint::kYes) DrawOnOneLine(context_, text, {left, top_, room, line_height_});
  }

  const TextPanelBinding& panel_;
  HDC const context_;
  const Paint paint_;
  const int line_height_;
  RECT all_{};
  int left_ = 0;
  int top_ = 0;
};

TextPanelBinding::TextPanelBinding(controls::Label& label, HWND parent, const Surroundings& around)
    : ControlBinding(label, parent, around, {L"STATIC", SS_OWNERDRAW | SS_NOPREFIX | SS_NOTIFY},
                     ForKeyboard::kNo),
      label_(label) {
  SetFont(FontOf(label));
  subscriptions_ += label.Changed.Subscribe([this] { Follow(); });
  FollowControl();
  Follow();
}

void TextPanelBinding::Follow() {
  const Text text = Lines(label_.Caption());
  if (TextOf(Handle()) == text && !lines_.empty()) return;
  ShowTitle(text);
  lines_ = front::LinesOf(text, label_.Look());
  Fit();
}

void TextPanelBinding::FollowWindow() { Fit(); }

void TextPanelBinding::SetObstacle(const PixelPlace& obstacle) {
  if (obstacle_ == obstacle) return;
  obstacle_ = obstacle;
  Fit();
}

void TextPanelBinding::Fit() {
  {
    const WindowContext context(Handle());
    const SelectedFont font(context.Get(), GetScale().Get(FontOf(label_)));
    shows_all_ = LayOut(context.Get(), Paint::kNo);
  }
  Around().tool_tips.Show(Handle(), Tip());
  ::InvalidateRect(Handle(), nullptr, TRUE);
}

Text TextPanelBinding::Tip() const {
  return label_.ToolTip().empty() && !shows_all_ ? TextOf(Handle()) : ControlBinding::Tip();
}

bool TextPanelBinding::LayOut(HDC context, Paint paint) const {
  Flow flow(*this, context, paint);
  for (std::size_t index = 0; index < lines_.size(); ++index) {
    Text rest;
    for (std::size_t next = index + 1; next < lines_.size(); ++next)
      rest += u" " + front::Joined(lines_[next]);
    if (!flow.Place(lines_[index], rest)) return false;
  }
  return true;
}

void TextPanelBinding::Draw(const tagDRAWITEMSTRUCT& place) {
  const PaintBuffer buffer(place.hDC, AreaOf(place));
  HDC const context = buffer.Get();
  const auto ground = reinterpret_cast<HBRUSH>(::SendMessageW(::GetParent(Handle()), WM_CTLCOLORSTATIC,
                                                              reinterpret_cast<WPARAM>(context),
                                                              reinterpret_cast<LPARAM>(Handle())));
  ::FillRect(context, &place.rcItem, ground);
  const SelectedFont font(context, GetScale().Get(FontOf(label_)));
  ::SetBkMode(context, TRANSPARENT);
  static_cast<void>(LayOut(context, Paint::kYes));
}

StatusStripBinding::StatusStripBinding(controls::Label& label, HWND parent, const Surroundings& around)
    : ControlBinding(label, parent, around, {L"STATIC", SS_OWNERDRAW | SS_NOPREFIX | SS_NOTIFY},
                     ForKeyboard::kNo),
      label_(label),
      rest_binding_(rest_, Handle(), around.loop) {
  rest_.SetInterval(front::AnnouncedText::kRest);
  subscriptions_ += rest_.Ticked.Subscribe([this] { Announce(); });
  subscriptions_ += label.Changed.Subscribe([this] { Follow(); });
  FollowControl();
  Follow();
}

void StatusStripBinding::Follow() {
  using Turn = front::AnnouncedText::Turn;
  const Text text = OnOneLine(label_.Caption());
  if (TextOf(Handle()) == text) return;
  ShowTitle(text);
  ::InvalidateRect(Handle(), nullptr, TRUE);
  const Turn turn = announced_.Show(text);
  rest_.SetEnabled(false);
  rest_.SetEnabled(turn == Turn::kWhenItRests);
  if (turn == Turn::kNow) Announce();
}

Text StatusStripBinding::Tip() const {
  const Text own = ControlBinding::Tip();
  if (!own.empty()) return own;
  RECT all{};
  ::GetClientRect(Handle(), &all);
  const Text text = OnOneLine(label_.Caption());
  const WindowContext context(Handle());
  const SelectedFont font(context.Get(), GetScale().Get(Scale::Font::kPlain));
  const int room = static_cast<int>(all.right) - 2 * Margin(static_cast<int>(all.bottom));
  return WidthOf(context.Get(), text) > room ? text : Text();
}

// Public reference: the system's documentation of accessibility, "A screen reader isn't announcing an update
// to a status string".
void StatusStripBinding::Announce() {
  rest_.SetEnabled(false);
  ::NotifyWinEvent(EVENT_OBJECT_LIVEREGIONCHANGED, Handle(), OBJID_CLIENT, CHILDID_SELF);
}

void StatusStripBinding::Draw(const tagDRAWITEMSTRUCT& place) {
  RECT area = place.rcItem;
  const PaintBuffer buffer(place.hDC, AreaOf(place));
  HDC const context = buffer.Get();
  ::FillRect(context, &area, ShownBrush(COLOR_BTNFACE));
  const RECT line{area.left, area.top, area.right, area.top + 1};
  ::FillRect(context, &line, ShownBrush(COLOR_BTNSHADOW));
  const SelectedFont font(context, GetScale().Get(Scale::Font::kPlain));
  ::SetBkMode(context, TRANSPARENT);
  ::SetTextColor(context, ShownColor(COLOR_BTNTEXT));
  // As far from the window's edge as the panels above.
  const int height = static_cast<int>(area.bottom - area.top);
  const int margin = Margin(height);
  DrawOnOneLine(context, TextOf(Handle()),
                {margin, area.top + 1, static_cast<int>(area.right) - 2 * margin, height - 1});
}

}  // namespace platform::win32
