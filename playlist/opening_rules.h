#pragma once
// What to do with something that is dropped on the window or given when the program is started. Not doing it
// (playlist/list_opening.h).

#include <optional>

#include "app/text/text.h"
#include "controls/drop_offer.h"

namespace playlist {

struct Opening {
  enum class Kind {
    kList,  ///< a station list in a file; `target` is its path
    kLink,  ///< a new station; `target` is its link
  };
  Kind kind;
  app::Text target;
};

/// One file whose name ends in ".m3u", ".m3u8" or ".pls" in any letter case is a list; one web address is a
/// link, as an address or as the only thing in a text. Everything else is nothing, and so are several at
/// once.
[[nodiscard]] std::optional<Opening> WhatToOpen(const controls::DropOffer& offer);

/// What the offer is, briefly and on one line for the user: a file's name (up to 255 units) or the beginning
/// of an address or a text (80). Control characters become blanks.
[[nodiscard]] app::Text NameOfOffer(const controls::DropOffer& offer);

/// The last part of a path.
[[nodiscard]] app::Text FileNameOf(app::TextView path);

}  // namespace playlist
