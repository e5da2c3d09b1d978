#pragma once
// Turns the program's lengths into pixels of a window, and has the fonts of that size. Not where things are.

#include <vector>

#include "controls/control.h"
#include "platform/win32/base/handles.h"

namespace platform::win32 {

struct PixelPlace {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  friend bool operator==(const PixelPlace&, const PixelPlace&) = default;
};

/// 15 twips are one pixel at 96 dots per inch with the font that the places were drawn for; more dots, or a
/// larger font in the user's settings, enlarge all places.
class Scale {
 public:
  /// kTitle is bold and larger.
  enum class Font { kPlain, kBold, kBoldItalic, kTitle };

  explicit Scale(unsigned int dots_per_inch) { Set(dots_per_inch); }
  ~Scale();
  Scale(const Scale&) = delete;
  Scale& operator=(const Scale&) = delete;

  /// Reads the user's font again. False: nothing has changed. The fonts from before stay until they are
  /// released, because windows still use them.
  bool Set(unsigned int dots_per_inch);
  /// To be called when every window has its new font.
  void ReleaseFormerFonts();

  [[nodiscard]] unsigned int DotsPerInch() const { return dots_; }
  [[nodiscard]] HFONT Get(Font font) const;
  [[nodiscard]] int FontHeight() const { return font_height_; }

  [[nodiscard]] int Pixels(int twips) const;
  [[nodiscard]] int Twips(int pixels) const;
  [[nodiscard]] PixelPlace Pixels(const controls::Place& place) const;
  /// A length given in pixels at 100 %.
  [[nodiscard]] int Scaled(int design_pixels) const { return Pixels(design_pixels * kTwipsPerPixel); }
  /// And back.
  [[nodiscard]] int Unscaled(int pixels) const {
    return (Twips(pixels) + kTwipsPerPixel / 2) / kTwipsPerPixel;
  }

 private:
  static constexpr int kTwipsPerPixel = 15;
  void Measure();

  unsigned int dots_ = 96;
  double factor_ = 1.0;
  int font_height_ = 0;
  HFONT plain_ = nullptr;
  HFONT bold_ = nullptr;
  HFONT bold_italic_ = nullptr;
  HFONT title_ = nullptr;
  std::vector<HFONT> former_;
  std::vector<unsigned char> users_font_;  // as the system describes it
};

}  // namespace platform::win32
