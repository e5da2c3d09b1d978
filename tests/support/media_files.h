#pragma once
// Makes sound files for a test with ffmpeg: sine tones in the formats that stations use.
// Not recordings; nothing of the source tree is read.

#include <string>

#include "tests/support/temp_folder.h"

namespace test_support {

struct Tone {
  int hertz = 440;
  double seconds = 5;
  int rate = 44100;
  int channels = 2;
  /// Peak of the sine, 0 to 1.
  double amplitude = 0.5;
};

/// Writes `name` (its ending chooses the container) with ffmpeg's encoder `codec` ("libmp3lame", "aac",
/// "libvorbis", "libopus", "flac"); `more` holds further arguments of ffmpeg, separated by single spaces.
/// Gives the file's path; throws when ffmpeg is missing or fails.
std::string MakeTone(const TempFolder& folder, const std::string& name, const std::string& codec,
                     const Tone& tone = {}, const std::string& more = "");

/// The bytes of a file; throws when there is none.
std::string ReadBytes(const std::string& path);

}  // namespace test_support
