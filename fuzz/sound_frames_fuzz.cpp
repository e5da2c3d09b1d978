// Feeds arbitrary streams to the measuring of sound: what is measured must not depend on the pieces in which
// a stream comes, only grow, and never be more than the formats can put into so many bytes.

#include "fuzz/fuzz_input.h"
#include "platform/live/sound_frames.h"

namespace {

using fuzz::Require;
using platform::live::SoundFrames;

/// The shortest frame has 7 bytes, and no frame lasts longer than four blocks of 1,024 samples at 7,350 Hz.
constexpr std::size_t kShortest = 7;
constexpr std::chrono::milliseconds kLongest{558};

void RequireSame(const SoundFrames& one, const SoundFrames& other) {
  Require(one.Sound() == other.Sound() && one.Format() == other.Format() && one.BitRate() == other.BitRate());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes = fuzz::AsBytes(data, size);
  SoundFrames whole;
  whole.Append(bytes);
  Require(whole.BitRate() >= 0);
  Require(whole.Sound() <= kLongest * static_cast<long>(size / kShortest));
  SoundFrames single;
  SoundFrames::Length before{};
  for (std::size_t at = 0; at < size; ++at) {
    single.Append(bytes.substr(at, 1));
    Require(single.Sound() >= before);
    before = single.Sound();
  }
  RequireSame(whole, single);
  return 0;
}
