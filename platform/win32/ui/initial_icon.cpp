#include "platform/win32/ui/initial_icon.h"

#include "platform/win32/base/windows_api.h"

// The second needs the first.
// clang-format off
#include <objidl.h>
#include <gdiplus.h>
// clang-format on

#include <algorithm>
#include <array>

#include "platform/win32/base/wide.h"
#include "platform/win32/ui/text_drawing.h"

namespace platform::win32 {
namespace {

constexpr float kLetterSize = 0.56F;
constexpr float kWidestLetter = 0.8F;
const Gdiplus::Color kWhite(255, 255, 255, 255);

WORD KindOf(char16_t unit, DWORD question) {
  WORD kind = 0;
  const auto wide = static_cast<wchar_t>(unit);
  ::GetStringTypeW(question, &wide, 1, &kind);
  return kind;
}

bool IsLetterOrDigit(char16_t unit) { return (KindOf(unit, CT_CTYPE1) & (C1_ALPHA | C1_DIGIT)) != 0; }

bool IsAccent(char16_t unit) {
  return (KindOf(unit, CT_CTYPE3) & (C3_NONSPACING | C3_DIACRITIC)) != 0 && !IsLetterOrDigit(unit);
}

Text InCase(TextView text, DWORD wanted) {
  Text changed(text.size(), u'\0');
  const int length = static_cast<int>(text.size());
  const int size = ::LCMapStringEx(LOCALE_NAME_INVARIANT, wanted, WideData(text), length,
                                   WideBuffer(changed.data()), length, nullptr, nullptr, 0);
  // A case that needs more units is none.
  return size == length ? changed : Text(text);
}

void FillGround(Gdiplus::Graphics& graphics, front::Rgb color, float side) {
  const float margin = side / 32.0F;
  const float corner = side * 0.38F;
  const float end = side - margin - corner;
  Gdiplus::GraphicsPath path;
  path.AddArc(margin, margin, corner, corner, 180, 90);
  path.AddArc(end, margin, corner, corner, 270, 90);
  path.AddArc(end, end, corner, corner, 0, 90);
  path.AddArc(margin, end, corner, corner, 90, 90);
  path.CloseFigure();
  const Gdiplus::SolidBrush brush(Gdiplus::Color(255, color.red, color.green, color.blue));
  graphics.FillPath(&brush, &path);
}

void DrawAerial(Gdiplus::Graphics& graphics, float side) {
  Gdiplus::Pen pen(kWhite, side * 0.07F);
  pen.SetStartCap(Gdiplus::LineCapRound);
  pen.SetEndCap(Gdiplus::LineCapRound);
  const Gdiplus::PointF top(side * 0.5F, side * 0.42F);
  graphics.DrawLine(&pen, top, Gdiplus::PointF(side * 0.5F, side * 0.78F));
  for (const float radius : {0.17F, 0.29F}) {
    const Gdiplus::RectF around(top.X - side * radius, top.Y - side * radius, side * radius * 2,
                                side * radius * 2);
    for (const float middle : {0.0F, 180.0F}) graphics.DrawArc(&pen, around, middle - 45.0F, 90.0F);
  }
}

/// Puts the letter into the middle; what reaches beyond a capital (accents, tails) keeps its place. False
/// when the font lacks it: an empty box would be drawn.
bool DrawLetter(Gdiplus::Graphics& graphics, const Text& initial, HFONT font, float side) {
  const WindowContext context(nullptr);
  const SelectedFont selected(context.Get(), font);
  std::array<WORD, 8> glyphs{};
  const int units = static_cast<int>(std::min(initial.size(), glyphs.size()));
  const DWORD found =
      ::GetGlyphIndicesW(context.Get(), WideData(initial), units, glyphs.data(), GGI_MARK_NONEXISTING_GLYPHS);
  constexpr WORD kMissing = 0xffff;
  if (found == GDI_ERROR || std::ranges::find(glyphs, kMissing) != glyphs.end()) return false;
  // The font that the system took, which need not be the one that was asked for.
  std::array<wchar_t, LF_FACESIZE> face{};
  ::GetTextFaceW(context.Get(), static_cast<int>(face.size()), face.data());
  const Gdiplus::FontFamily family(face.data());
  const float size = side * kLetterSize;
  const auto add = [&](Gdiplus::GraphicsPath& path, TextView text) {
    path.AddString(WideData(text), static_cast<INT>(text.size()), &family, Gdiplus::FontStyleBold, size,
                   Gdiplus::PointF(0, 0), Gdiplus::StringFormat::GenericTypographic());
  };
  Gdiplus::GraphicsPath letter;
  Gdiplus::GraphicsPath capital;
  add(letter, initial);
  add(capital, u"H");
  Gdiplus::RectF box;
  Gdiplus::RectF capitals;
  letter.GetBounds(&box);
  capital.GetBounds(&capitals);
  if (box.Width <= 0 || capitals.Height <= 0) return false;
  const float scale = std::min(1.0F, side * kWidestLetter / box.Width);
  graphics.TranslateTransform(side / 2, side / 2);
  graphics.ScaleTransform(scale, scale);
  graphics.TranslateTransform(-(box.X + box.Width / 2), -(capitals.Y + capitals.Height / 2));
  const Gdiplus::SolidBrush brush(kWhite);
  graphics.FillPath(&brush, &letter);
  return true;
}

}  // namespace

Text InitialOf(TextView name) {
  const auto first = std::ranges::find_if(name, IsLetterOrDigit);
  const auto last = first == name.end() ? first : std::find_if_not(first + 1, name.end(), IsAccent);
  return InCase(TextView(first, last), LCMAP_UPPERCASE | LCMAP_LINGUISTIC_CASING);
}

Pixels DrawInitialIcon(const Text& initial, front::Rgb color, int side, HFONT font) {
  Pixels icon{side, side, std::vector<std::uint8_t>(static_cast<std::size_t>(side) * side * 4)};
  if (!CanDraw()) return icon;
  Gdiplus::Bitmap bitmap(side, side, side * 4, PixelFormat32bppPARGB, icon.bytes.data());
  Gdiplus::Graphics graphics(&bitmap);
  graphics.SetSmoothingMode(Gdiplus::SmoothingModeAntiAlias);
  graphics.SetPixelOffsetMode(Gdiplus::PixelOffsetModeHalf);
  const auto length = static_cast<float>(side);
  FillGround(graphics, color, length);
  if (initial.empty() || !DrawLetter(graphics, initial, font, length)) DrawAerial(graphics, length);
  graphics.Flush(Gdiplus::FlushIntentionSync);
  return icon;
}

const Pixels& InitialIcons::Of(const Text& name, int side, HFONT font) {
  const Text initial = InitialOf(name);
  const front::Rgb color = front::ColorOfName(InCase(name, LCMAP_LOWERCASE));
  const auto unit = [](int number) { return static_cast<char16_t>(number); };
  const Text key = Text{unit(color.red), unit(color.green), unit(color.blue), unit(side)} + initial;
  const auto known = kept_.find(key);
  if (known != kept_.end()) return known->second;
  if (kept_.size() >= kMostKept) kept_.clear();
  return kept_[key] = DrawInitialIcon(initial, color, side, font);
}

}  // namespace platform::win32
