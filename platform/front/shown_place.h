#pragma once
// Where a panel is shown when its place is not wholly inside its window. Not where panels belong
// (app/forms/layout.h).

#include <algorithm>

#include "controls/control.h"

namespace platform::front {

/// On a screen that is too low for the window's smallest size a panel's place may begin above the window's
/// inside, in any unit. Its upper part is then shown, from the edge down: what is lost is at its lower end.
[[nodiscard]] inline controls::Place BelowUpperEdge(controls::Place place) {
  const int hidden = std::clamp(-place.top, 0, std::max(0, place.height));
  place.top += hidden;
  place.height -= hidden;
  return place;
}

}  // namespace platform::front
