#include "platform/win32/ui/text_drawing.h"

#include "platform/win32/base/windows_api.h"

#include <algorithm>

#include "platform/win32/base/wide.h"

namespace platform::win32 {
namespace {

constexpr char16_t kDots = u'\u2026';

bool IsSecondHalf(char16_t unit) { return unit >= 0xdc00 && unit <= 0xdfff; }

/// `kept` units of the text, half of them from its end, and no half of a character.
Text WithDots(TextView text, std::size_t kept) {
  std::size_t end = text.size() - kept / 2;
  std::size_t start = kept - kept / 2;
  if (end < text.size() && IsSecondHalf(text[end])) ++end;
  if (start < text.size() && IsSecondHalf(text[start])) --start;
  return Text(text.substr(0, start)) + kDots + Text(text.substr(end));
}

}  // namespace

int WidthOf(HDC context, TextView text) {
  SIZE size{};
  ::GetTextExtentPoint32W(context, WideData(text), static_cast<int>(text.size()), &size);
  return static_cast<int>(size.cx);
}

Text CutInTheMiddle(HDC context, TextView text, int room) {
  if (WidthOf(context, text) <= room) return Text(text);
  std::size_t fits = 0;
  std::size_t too_long = text.size();
  while (too_long - fits > 1) {
    const std::size_t kept = (fits + too_long) / 2;
    (WidthOf(context, WithDots(text, kept)) <= room ? fits : too_long) = kept;
  }
  return WithDots(text, fits);
}

std::size_t UnitsInLine(HDC context, TextView text, int room) {
  int fitting = 0;
  SIZE size{};
  ::GetTextExtentExPointW(context, WideData(text), static_cast<int>(text.size()), room, &fitting, nullptr,
                          &size);
  if (static_cast<std::size_t>(fitting) >= text.size()) return text.size();
  auto most = static_cast<std::size_t>(std::max(1, fitting));
  const std::size_t blank = text.substr(0, most + 1).rfind(u' ');
  if (blank != TextView::npos && blank > 0) return blank;
  // An address is read in its parts, but its beginning is none.
  const std::size_t part = text.substr(0, most).find_last_of(u"/-");
  if (part != TextView::npos && part != 0 && text[part - 1] != u'/') return part + 1;
  if (most < text.size() && IsSecondHalf(text[most])) most += most == 1 ? 1 : -1;
  return most;
}

Text WithLongWordsBroken(HDC context, TextView text, int room) {
  Text broken;
  while (!text.empty()) {
    const std::size_t blank = text.find_first_of(u" \n");
    TextView word = text.substr(0, blank);
    const TextView separator = text.substr(word.size(), 1);
    text.remove_prefix(word.size() + separator.size());
    while (WidthOf(context, word) > room) {
      const std::size_t units = UnitsInLine(context, word, room);
      if (units >= word.size()) break;
      broken += Text(word.substr(0, units)) + u'\n';
      word.remove_prefix(units);
    }
    broken += word;
    broken += separator;
  }
  return broken;
}

void DrawOnOneLine(HDC context, TextView text, const PixelPlace& area, CutAt cut) {
  const Text shown = cut == CutAt::kMiddle ? CutInTheMiddle(context, text, area.width) : Text(text);
  RECT place{area.left, area.top, area.left + area.width, area.top + area.height};
  ::DrawTextW(context, WideData(shown), static_cast<int>(shown.size()), &place,
              DT_SINGLELINE | DT_NOPREFIX | DT_VCENTER | DT_END_ELLIPSIS);
}

WindowContext::WindowContext(HWND window) : window_(window), context_(::GetDC(window)) {}

WindowContext::~WindowContext() { ::ReleaseDC(window_, context_); }

PaintBuffer::PaintBuffer(HDC target, const PixelPlace& area)
    : target_(target), area_(area), context_(::CreateCompatibleDC(target)) {
  bitmap_ = ::CreateCompatibleBitmap(target_, area.width, area.height);
  before_ = ::SelectObject(context_, bitmap_);
  ::SetViewportOrgEx(context_, -area.left, -area.top, nullptr);
}

PaintBuffer::~PaintBuffer() {
  ::BitBlt(target_, area_.left, area_.top, area_.width, area_.height, context_, area_.left, area_.top,
           SRCCOPY);
  ::SelectObject(context_, before_);
  ::DeleteObject(bitmap_);
  ::DeleteDC(context_);
}

SelectedFont::SelectedFont(HDC context, HFONT font)
    : context_(context), before_(::SelectObject(context, font)) {}

SelectedFont::~SelectedFont() { ::SelectObject(context_, before_); }

}  // namespace platform::win32
