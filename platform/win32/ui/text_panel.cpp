#include "platform/win32/ui/text_panel.h"

#include "platform/win32/base/windows_api.h"

#include <algorithm>

#include "platform/win32/base/wide.h"
#include "platform/win32/ui/shown_text.h"

namespace platform::win32 {
namespace {

constexpr int kObstacleGap = 6;
constexpr int kNarrowestLine = 40;

Scale::Font FontOf(const controls::Label& label) {
  return label.Look() == controls::LabelLook::kTitle ? Scale::Font::kBold : Scale::Font::kPlain;
}

int LineHeight(HDC context) {
  TEXTMETRICW metrics{};
  ::GetTextMetricsW(context, &metrics);
  return static_cast<int>(metrics.tmHeight);
}

/// How many units of the text's first line go into `room`: up to a blank, where there is one.
std::size_t UnitsInLine(HDC context, TextView text, int room) {
  const std::size_t paragraph = std::min(text.find(u'\n'), text.size());
  int fitting = 0;
  SIZE size{};
  ::GetTextExtentExPointW(context, WideData(text), static_cast<int>(paragraph), room, &fitting, nullptr,
                          &size);
  if (static_cast<std::size_t>(fitting) >= paragraph) return paragraph;
  const auto most = static_cast<std::size_t>(std::max(1, fitting));
  const std::size_t blank = text.substr(0, most + 1).rfind(u' ');
  return blank == TextView::npos || blank == 0 ? most : blank;
}

void DrawLine(HDC context, TextView line, const RECT& area) {
  RECT place = area;
  ::DrawTextW(context, WideData(line), static_cast<int>(line.size()), &place,
              DT_SINGLELINE | DT_NOPREFIX | DT_VCENTER | DT_END_ELLIPSIS);
}

}  // namespace

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
  if (TextOf(Handle()) == text) return;
  ShowTitle(text);
  Fit();
}

void TextPanelBinding::FollowWindow() { Fit(); }

void TextPanelBinding::SetObstacle(const PixelPlace& obstacle) {
  if (obstacle_ == obstacle) return;
  obstacle_ = obstacle;
  Fit();
}

void TextPanelBinding::Fit() {
  HDC context = ::GetDC(Handle());
  const HGDIOBJ before = ::SelectObject(context, GetScale().Get(FontOf(label_)));
  shows_all_ = LayOut(context, false);
  ::SelectObject(context, before);
  ::ReleaseDC(Handle(), context);
  if (label_.ToolTip().empty()) Around().tool_tips.Show(Handle(), shows_all_ ? Text() : TextOf(Handle()));
  ::InvalidateRect(Handle(), nullptr, TRUE);
}

int TextPanelBinding::RoomAt(int top, int line_height, int width) const {
  const bool beside = obstacle_.width > 0 && top < obstacle_.top + obstacle_.height + kObstacleGap &&
                      top + line_height > obstacle_.top - kObstacleGap;
  return beside ? obstacle_.left - kObstacleGap : width;
}

bool TextPanelBinding::LayOut(HDC context, bool paint) const {
  RECT all{};
  ::GetClientRect(Handle(), &all);
  const Text text = TextOf(Handle());
  const int line_height = LineHeight(context);
  TextView rest = text;
  for (int top = 0; !rest.empty(); top += line_height) {
    const int room = RoomAt(top, line_height, static_cast<int>(all.right));
    const std::size_t units = UnitsInLine(context, rest, std::max(room, kNarrowestLine));
    const bool last = top + 2 * line_height > all.bottom || room < kNarrowestLine;
    const RECT place{0, top, room, top + line_height};
    if (last && units < rest.size()) {
      if (paint && room >= kNarrowestLine) DrawLine(context, OnOneLine(rest), place);
      return false;
    }
    if (paint) DrawLine(context, rest.substr(0, units), place);
    const bool separated = units < rest.size() && (rest[units] == u' ' || rest[units] == u'\n');
    rest.remove_prefix(units + (separated ? 1 : 0));
  }
  return true;
}

void TextPanelBinding::Draw(const tagDRAWITEMSTRUCT& place) {
  const auto ground = reinterpret_cast<HBRUSH>(::SendMessageW(::GetParent(Handle()), WM_CTLCOLORSTATIC,
                                                              reinterpret_cast<WPARAM>(place.hDC),
                                                              reinterpret_cast<LPARAM>(Handle())));
  ::FillRect(place.hDC, &place.rcItem, ground);
  const HGDIOBJ before = ::SelectObject(place.hDC, GetScale().Get(FontOf(label_)));
  ::SetBkMode(place.hDC, TRANSPARENT);
  LayOut(place.hDC, true);
  ::SelectObject(place.hDC, before);
}

StatusStripBinding::StatusStripBinding(controls::Label& label, HWND parent, const Surroundings& around)
    : ControlBinding(label, parent, around, {L"STATIC", SS_OWNERDRAW | SS_NOPREFIX}, ForKeyboard::kNo),
      label_(label) {
  subscriptions_ += label.Changed.Subscribe([this] { Follow(); });
  FollowControl();
  Follow();
}

void StatusStripBinding::Follow() {
  const Text text = OnOneLine(label_.Caption());
  if (TextOf(Handle()) == text) return;
  ShowTitle(text);
  ::InvalidateRect(Handle(), nullptr, TRUE);
}

void StatusStripBinding::Draw(const tagDRAWITEMSTRUCT& place) {
  RECT area = place.rcItem;
  ::FillRect(place.hDC, &area, ::GetSysColorBrush(COLOR_BTNFACE));
  const RECT line{area.left, area.top, area.right, area.top + 1};
  ::FillRect(place.hDC, &line, ::GetSysColorBrush(COLOR_BTNSHADOW));
  const HGDIOBJ before = ::SelectObject(place.hDC, GetScale().Get(Scale::Font::kPlain));
  ::SetBkMode(place.hDC, TRANSPARENT);
  ::SetTextColor(place.hDC, ::GetSysColor(COLOR_BTNTEXT));
  // As far from the window's edge as the panels above.
  const int margin = static_cast<int>(area.bottom - area.top) * 5 / 12;
  DrawLine(place.hDC, TextOf(Handle()), {area.left + margin, area.top + 1, area.right - margin, area.bottom});
  ::SelectObject(place.hDC, before);
}

}  // namespace platform::win32
