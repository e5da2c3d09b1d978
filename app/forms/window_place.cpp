#include "app/forms/window_place.h"

#include <algorithm>

namespace app {

namespace {

/// What the user needs of the title bar.
constexpr int kGripWidth = 120;
constexpr int kGripHeight = 30;

/// How much two stretches have in common.
long long Common(long long begin, long long length, long long other_begin, long long other_length) {
  const long long end = std::min(begin + length, other_begin + other_length);
  return std::max(0LL, end - std::max(begin, other_begin));
}

long long SeenOn(const ScreenRoom& screen, const WindowPlace& place) {
  return Common(place.left, place.width, screen.left, screen.width) *
         Common(place.top, place.height, screen.top, screen.height);
}

bool CanBeGrippedOn(const ScreenRoom& screen, const WindowPlace& place) {
  return Common(place.left, place.width, screen.left, screen.width) >= std::min(place.width, kGripWidth) &&
         Common(place.top, kGripHeight, screen.top, screen.height) == kGripHeight;
}

/// The begin of a stretch that is moved inside another, which is longer.
int MovedInside(int begin, int length, int other_begin, int other_length) {
  return std::clamp(begin, other_begin, std::max(other_begin, other_begin + other_length - length));
}

}  // namespace

WindowPlace PlaceOnAScreen(const WindowPlace& place, const std::vector<ScreenRoom>& screens,
                           const FrameSize& frame) {
  if (screens.empty()) return place;
  const ScreenRoom& screen = *std::ranges::max_element(
      screens, {}, [&](const ScreenRoom& candidate) { return SeenOn(candidate, place); });
  WindowPlace fitted = place;
  fitted.width = std::min(place.width, std::max(1, screen.width - frame.width));
  fitted.height = std::min(place.height, std::max(1, screen.height - frame.height));
  const bool can_be_gripped = std::ranges::any_of(
      screens, [&](const ScreenRoom& candidate) { return CanBeGrippedOn(candidate, fitted); });
  const bool has_its_size = fitted.width == place.width && fitted.height == place.height;
  if (can_be_gripped && has_its_size) return place;
  fitted.left = MovedInside(place.left, fitted.width + frame.width, screen.left, screen.width);
  fitted.top = MovedInside(place.top, fitted.height + frame.height, screen.top, screen.height);
  return fitted;
}

}  // namespace app
