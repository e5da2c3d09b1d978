#pragma once
// The lines of a text that is shown in two columns (controls::LabelLook::kNamedValues). Not their places.

#include <vector>

#include "controls/captioned.h"

namespace platform::front {

struct NamedLine {
  controls::Text name;  ///< with its colon; empty for a line without one
  controls::Text value;
};

/// Name and value as one text.
[[nodiscard]] controls::Text Joined(const NamedLine& line);

/// Ends of lines are CR, LF or both; blank lines at the end are left out. A line has a name where the label's
/// look is kNamedValues and ": " follows it.
[[nodiscard]] std::vector<NamedLine> LinesOf(controls::TextView text, controls::LabelLook look);

}  // namespace platform::front
