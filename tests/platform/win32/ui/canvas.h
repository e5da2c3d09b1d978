#pragma once
// A picture in memory that a test has painted into, and looks at. Not a window.

#include "platform/win32/base/windows_api.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace platform::win32 {

/// White at first.
class Canvas {
 public:
  Canvas(int width, int height) : width_(width), height_(height), context_(::CreateCompatibleDC(nullptr)) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    bitmap_ = ::CreateDIBSection(context_, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    pixels_ = static_cast<const std::uint32_t*>(bits);
    before_ = ::SelectObject(context_, bitmap_);
    const RECT all{0, 0, width, height};
    ::FillRect(context_, &all, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
  }
  ~Canvas() {
    ::SelectObject(context_, before_);
    ::DeleteObject(bitmap_);
    ::DeleteDC(context_);
  }
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;

  [[nodiscard]] HDC Context() const { return context_; }
  [[nodiscard]] int Width() const { return width_; }
  [[nodiscard]] int Height() const { return height_; }
  [[nodiscard]] COLORREF At(int x, int y) const {
    ::GdiFlush();
    const std::uint32_t pixel = pixels_[y * width_ + x];
    return RGB((pixel >> 16U) & 0xffU, (pixel >> 8U) & 0xffU, pixel & 0xffU);
  }

  using Kind = std::function<bool(COLORREF)>;
  /// How many pixels of a kind are in an area.
  [[nodiscard]] int Count(const RECT& area, const Kind& is) const {
    int count = 0;
    for (int y = static_cast<int>(area.top); y < area.bottom; ++y) {
      for (int x = static_cast<int>(area.left); x < area.right; ++x) count += is(At(x, y)) ? 1 : 0;
    }
    return count;
  }
  [[nodiscard]] int Count(const Kind& is) const { return Count({0, 0, width_, height_}, is); }
  /// The first column of an area that has such a pixel.
  [[nodiscard]] std::optional<int> FirstColumn(const RECT& area, const Kind& is) const {
    for (int x = static_cast<int>(area.left); x < area.right; ++x) {
      if (Count({x, area.top, x + 1, area.bottom}, is) > 0) return x;
    }
    return std::nullopt;
  }

 private:
  int width_;
  int height_;
  HDC context_;
  HBITMAP bitmap_ = nullptr;
  HGDIOBJ before_ = nullptr;
  const std::uint32_t* pixels_ = nullptr;
};

inline bool IsDark(COLORREF color) { return GetRValue(color) + GetGValue(color) + GetBValue(color) < 300; }
inline bool IsRed(COLORREF color) {
  return GetRValue(color) > 150 && GetGValue(color) < 100 && GetBValue(color) < 100;
}

}  // namespace platform::win32
