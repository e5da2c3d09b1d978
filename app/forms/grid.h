#pragma once
// The grid on which the windows' controls stand. Not the places themselves.

namespace app {

/// 8 pixels, in twips: the step of the grid and the gap between neighbours.
inline constexpr int kGrid = 8 * 15;
/// Of a button and of a field; with less some styles leave out the frame of a combo box.
inline constexpr int kRowHeight = 4 * kGrid;

}  // namespace app
