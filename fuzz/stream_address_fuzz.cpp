// Feeds arbitrary addresses to the header query's way of taking them apart.

#include "fuzz/fuzz_input.h"
#include "stream/stream_address.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using fuzz::Require;
  const stream::Text address = fuzz::AsText(fuzz::AsBytes(data, size));
  const auto flags = stream::OpenFlagsOf(address);
  const auto target = stream::QueryTargetOf(address);
  if (!target) return 0;
  Require(target->flags == flags.value_or(0));
  Require(target->host.find_first_of(u":/") == stream::Text::npos);
  Require(flags || target->host.empty());
  Require(target->host.size() + target->path.size() <= 2 * address.size());
  return 0;
}
