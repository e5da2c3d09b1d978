#include "platform/win32/ui/scale.h"

#include "platform/win32/base/windows_api.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

namespace platform::win32 {
namespace {

// The largest font that the design-time places hold without cutting a text, by height and by the width of
// one of their captions.
constexpr double kDesignFontHeight = 17.0;
constexpr double kDesignSampleWidth = 120.0;
constexpr std::wstring_view kSample = L"Sender hinzufügen";
constexpr double kLargestFactor = 6.0;
constexpr unsigned int kUsualDots = 96;
/// One size larger.
constexpr double kTitleSize = 1.2;

LOGFONTW UsersFont(unsigned int dots) {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  ::SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, dots);
  return metrics.lfMessageFont;
}

SIZE SampleSize(HFONT font) {
  HDC context = ::GetDC(nullptr);
  const HGDIOBJ before = ::SelectObject(context, font);
  SIZE size{};
  ::GetTextExtentPoint32W(context, kSample.data(), static_cast<int>(kSample.size()), &size);
  ::SelectObject(context, before);
  ::ReleaseDC(nullptr, context);
  return size;
}

}  // namespace

Scale::~Scale() {
  former_.insert(former_.end(), {plain_, bold_, bold_italic_, title_});
  ReleaseFormerFonts();
}

void Scale::ReleaseFormerFonts() {
  for (HFONT font : former_) {
    if (font != nullptr) ::DeleteObject(font);
  }
  former_.clear();
}

bool Scale::Set(unsigned int dots_per_inch) {
  const unsigned int dots = dots_per_inch == 0 ? kUsualDots : dots_per_inch;
  LOGFONTW font = UsersFont(dots);
  const auto* bytes = reinterpret_cast<const unsigned char*>(&font);
  std::vector<unsigned char> description(bytes, bytes + sizeof font);
  if (plain_ != nullptr && dots == dots_ && description == users_font_) return false;
  dots_ = dots;
  users_font_ = std::move(description);
  former_.insert(former_.end(), {plain_, bold_, bold_italic_, title_});
  plain_ = ::CreateFontIndirectW(&font);
  font.lfWeight = FW_BOLD;
  bold_ = ::CreateFontIndirectW(&font);
  LOGFONTW title = font;
  title.lfHeight = static_cast<LONG>(std::lround(title.lfHeight * kTitleSize));
  title_ = ::CreateFontIndirectW(&title);
  font.lfItalic = TRUE;
  bold_italic_ = ::CreateFontIndirectW(&font);
  Measure();
  return true;
}

void Scale::Measure() {
  const SIZE sample = SampleSize(plain_);
  font_height_ = static_cast<int>(sample.cy);
  const double by_dots = static_cast<double>(dots_) / kUsualDots;
  const double by_font = std::max(sample.cy / kDesignFontHeight, sample.cx / kDesignSampleWidth);
  factor_ = std::clamp(std::max(by_dots, by_font), 1.0, kLargestFactor);
}

HFONT Scale::Get(Font font) const {
  switch (font) {
    case Font::kBold:
      return bold_;
    case Font::kBoldItalic:
      return bold_italic_;
    case Font::kTitle:
      return title_;
    case Font::kPlain:
      break;
  }
  return plain_;
}

int Scale::Pixels(int twips) const { return static_cast<int>(std::lround(twips * factor_ / kTwipsPerPixel)); }

int Scale::Twips(int pixels) const {
  return static_cast<int>(std::lround(pixels * kTwipsPerPixel / factor_));
}

PixelPlace Scale::Pixels(const controls::Place& place) const {
  return {Pixels(place.left), Pixels(place.top), Pixels(place.width), Pixels(place.height)};
}

}  // namespace platform::win32
