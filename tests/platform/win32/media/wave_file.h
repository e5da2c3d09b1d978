#pragma once
// Files with a sine for tests of playing. Not recordings.

#include <chrono>
#include <filesystem>

namespace platform::win32 {

/// Writes 16-bit mono sound of half the full scale at 440 Hz.
void WriteWaveFile(const std::filesystem::path& path, std::chrono::milliseconds length);

}  // namespace platform::win32
