#pragma once
// What is dragged over a window, dropped on it, or given when the program is started. Not what is done with
// it.

#include <vector>

#include "controls/text.h"

namespace controls {

/// Whoever drags something may offer it in several forms at once; the text counts only where there is neither
/// a file nor an address.
struct DropOffer {
  std::vector<Text> files;      ///< full paths, in the form that the program uses for its files
  std::vector<Text> addresses;  ///< of anything that is not a file on this machine
  Text text;
};

}  // namespace controls
