// Feeds arbitrary files to the reader of what is remembered of a window: what it accepts is within its
// bounds, comes back from being written, and has a place on a screen.

#include "app/forms/window_memory.h"
#include "fuzz/fuzz_input.h"

namespace {

using fuzz::Require;

void Check(std::string_view bytes) {
  const auto memory = app::ParseWindowMemory(bytes);
  if (!memory) return;
  Require(bytes.size() <= app::kLongestWindowMemory);
  Require(app::ParseWindowMemory(app::FormatWindowMemory(*memory)) == memory);
  if (!memory->place) return;
  const app::WindowPlace place = app::PlaceOnAScreen(*memory->place, {{0, 0, 1920, 1080}}, {20, 60});
  Require(place.width >= 1 && place.width <= 1900 && place.height >= 1 && place.height <= 1020);
  Require(place.left < 1920 && place.left + place.width > 0 && place.top >= 0 && place.top < 1080);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input = fuzz::AsBytes(data, size);
  Check(input);
  Check("Funkhausplayer window 1\n" + std::string(input) + "\n");
  return 0;
}
