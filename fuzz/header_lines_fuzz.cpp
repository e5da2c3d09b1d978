// Feeds arbitrary header blocks to the look-up of values, for every name.

#include "app/text/text_helpers.h"
#include "fuzz/fuzz_input.h"
#include "stream/header_lines.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using fuzz::Require;
  const stream::Text block = fuzz::AsText(fuzz::AsBytes(data, size));
  const std::vector<stream::Text> lines = app::Split(block, stream::kCrLf);
  for (std::int32_t name = -1; name <= stream::kHeaderNameCount; ++name) {
    const stream::Text values = stream::HeaderValues(lines, name);
    Require(values.size() <= block.size());
    Require(!stream::HeaderName(name).empty() || values.empty());
    constexpr std::int32_t kIcyUrl = 7;
    Require(name == kIcyUrl || values.find(u':') == stream::Text::npos);
  }
  return 0;
}
