#pragma once
// What is dragged over a window, dropped on it, or given to a start of the program. Not what becomes of it.

#include <vector>

#include "controls/text.h"

namespace controls {

/// Whoever drags something may offer it in several forms at once; the text counts only where there is neither
/// a file nor an address.
struct DropOffer {
  std::vector<Text> files;      ///< full paths, in the form that the program's files go by
  std::vector<Text> addresses;  ///< of anything that is no file of this machine
  Text text;
};

}  // namespace controls
