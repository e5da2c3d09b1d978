#pragma once
// Splits what a station sends as its title into artist and title. Not reading it (ui/now_playing.h).

#include "app/text/text.h"

namespace ui {

struct TitleParts {
  app::Text artist;  ///< empty when the title names none
  app::Text title;
};

/// At the first " - ", as stations write it. Where one side is missing the whole is the title. Blanks round
/// the parts are left out.
[[nodiscard]] TitleParts SplitTitle(app::TextView sent);

}  // namespace ui
