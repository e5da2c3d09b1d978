#include "platform/qt/readable_color.h"

namespace platform::qt {
namespace {

front::Rgb FromQt(const QColor& color) {
  const auto byte = [](int part) { return static_cast<std::uint8_t>(part); };
  return {byte(color.red()), byte(color.green()), byte(color.blue())};
}

}  // namespace

QColor ToQt(const front::Rgb& color) { return {color.red, color.green, color.blue}; }

double ContrastOf(const QColor& one, const QColor& other) {
  return front::ContrastOf(FromQt(one), FromQt(other));
}

QColor Mixed(const QColor& first, const QColor& second, double part) {
  return ToQt(front::Mixed(FromQt(first), FromQt(second), part));
}

QColor Readable(const QColor& color, const QColor& ground, const QColor& text, double wanted) {
  return ToQt(front::Readable(FromQt(color), FromQt(ground), FromQt(text), wanted));
}

}  // namespace platform::qt
